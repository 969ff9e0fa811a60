/// \file
/// The settings of the trace.
#pragma once

#include <zogbl/dialog.h>

/// Sets the user's trace level (CZoTrace::SetRegTraceLevel, which tells all programs) and whether modems are detected
/// through the telephony service, and shows the trace files beside the executable in the system's notepad.
class TraceSettingsDialog : public CZoDialog {
public:
    explicit TraceSettingsDialog(CWnd* parent);

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;
    afx_msg void EnableControls();
    afx_msg void OnView();
    DECLARE_MESSAGE_MAP()

private:
    HWND List() const;
    void FillList();

    BOOL m_bTracing = FALSE;
    UINT m_nLevel = 1; // while tracing
    BOOL m_bNoAutoDetect = FALSE;
};
