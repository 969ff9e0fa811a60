/// \file
/// The page of a wizard on which a file is chosen.
#pragma once

#include <zogbl/file_form.h>
#include <zogbl/wizard.h>

/// The form for files as a page of a wizard. What the user can type, what is checked and the controls of a template:
/// see CZoFileForm. Next takes the name; if it cannot be taken the page stays.
///
///     CZoFileOpenWizardPage page(TRUE, 0, "txt", nullptr, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST, filter);
///     wizard.AddPage(&page);
///     if (wizard.DoModal() == IDOK)
///         Import(page.GetPathName());
class ZOGBL_API CZoFileOpenWizardPage : public CZoWizardPage, public CZoFileForm {
public:
    /// \param templateId 0: the default template (ZO_IDD_FILE_PAGE)
    /// \param open, defaultExtension, fileName, flags, filter as CZoFileForm's
    explicit CZoFileOpenWizardPage(BOOL open, UINT templateId = 0, LPCSTR defaultExtension = nullptr,
                                   LPCSTR fileName = nullptr, DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                                   LPCSTR filter = nullptr);
    ~CZoFileOpenWizardPage() override;

protected:
    BOOL OnInitDialog() override;
    /// A name is missing. In the list of folders it is no fault: Enter opens a folder there.
    int FindFault(CString& reason) override;
    BOOL OnNext() override;
    void OnNameTaken() override;
    void OnFileChosen() override;
    void ReloadTexts() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};
