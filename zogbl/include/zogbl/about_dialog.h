/// \file
/// What a program of the suite says of itself.
#pragma once

#include <zogbl/dialog.h>

/// Shows a program's icon and, from the version resource of the executable, product, version and copyright; a program whose
/// version resource cannot be read (see CZoVersionResource) is named as the application object is. A button opens the
/// settings of the trace: the user's level, and the trace files beside the executable, to be looked at.
class ZOGBL_API CZoAboutDialog : public CZoDialog {
public:
    /// \param iconId icon to be found through the framework's resource chain; without one the place stays empty
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
