/// \file
/// The suite's dialog for files.
#pragma once

#include <zogbl/dialog.h>
#include <zogbl/file_form.h>

/// Asks for the name of a file, to open it or to save to it. What the user can type, what is checked and the controls
/// of a template: see CZoFileForm. A template also has IDOK and IDCANCEL.
///
///     CZoFileOpen dialog(TRUE, 0, "txt", nullptr, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST, "Texts\0*.txt\0");
///     if (dialog.DoModal() == IDOK)
///         Load(dialog.GetPathName());
///
/// A template with WS_THICKFRAME, as the default one, can be made larger: the list of files follows to the right and
/// down, the other controls follow its edges. The size is kept for the user.
class ZOGBL_API CZoFileOpen : public CZoDialog, public CZoFileForm {
public:
    /// \param templateId 0: the default template (ZO_IDD_FILE_OPEN)
    /// \param open, defaultExtension, fileName, flags, filter as CZoFileForm's
    /// \param parent null: the main window of the thread
    explicit CZoFileOpen(BOOL open, UINT templateId = 0, LPCSTR defaultExtension = nullptr, LPCSTR fileName = nullptr,
                         DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCSTR filter = nullptr,
                         CWnd* parent = nullptr);
    ~CZoFileOpen() override;

    /// \return
    ///   IDOK      lpstrFile holds the path
    ///   IDCANCEL  lpstrFile is unchanged
    ///   -1        the dialog cannot be made, memory has run out, or lpstrFile is null or nMaxFile 0
    INT_PTR DoModal() override;

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnNameTaken() override;
    void OnFileChosen() override;
    void ReloadTexts() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Prepare();
};
