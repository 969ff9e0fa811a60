/// \file
/// The About dialog.
#pragma once

#include <zogbl/dialog.h>

/// The About dialog of the suite's programs: icon, product, version and copyright, and a button for the trace.
///
/// The texts come from the version resource of the executable. If that cannot be read (see CZoVersionResource), the
/// name is that of the application object, and there is no version and no copyright. The button opens the settings of
/// the trace: the user's level, the detection of modems, and the trace files beside the executable, for reading.
class ZOGBL_API CZoAboutDialog : public CZoDialog {
public:
    /// \param iconId icon, found through the framework's resource chain; if there is none, its place stays empty
    /// \param parent null: the main window of the thread
    explicit CZoAboutDialog(UINT iconId, CWnd* parent = nullptr);

protected:
    BOOL OnInitDialog() override;
    void ReloadTexts() override;
    afx_msg void OnTraceSettings();
    DECLARE_MESSAGE_MAP()

private:
    void ShowProgram();

    UINT m_nIconId;
};
