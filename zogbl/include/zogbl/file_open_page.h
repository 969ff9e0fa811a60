/// \file
/// The page of a property sheet on which a file is chosen.
#pragma once

#include <zogbl/file_form.h>
#include <zogbl/property_sheet.h>

/// The form for files as a page of a sheet. What the user can type, what is checked and the controls of a template: see
/// CZoFileForm. Apply and OK take the name, if the user has chosen one; if it cannot be taken the sheet stays. Without
/// a change, the name to begin with is not checked and lpstrFile stays as it is, as it does on Cancel.
///
///     CZoFileOpenPage page(TRUE, 0, "txt", settings.file, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST, filter);
///     sheet.AddPage(&page);
///     if (sheet.DoModal() == IDOK)
///         settings.file = page.GetPathName();
class ZOGBL_API CZoFileOpenPage : public CZoPropertyPage, public CZoFileForm {
public:
    /// \param templateId 0: the default template (ZO_IDD_FILE_PAGE)
    /// \param open, defaultExtension, fileName, flags, filter as CZoFileForm's
    explicit CZoFileOpenPage(BOOL open, UINT templateId = 0, LPCSTR defaultExtension = nullptr,
                             LPCSTR fileName = nullptr, DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                             LPCSTR filter = nullptr);
    ~CZoFileOpenPage() override;

    BOOL OnApply() override;

protected:
    BOOL OnInitDialog() override;
    void OnNameTaken() override;
    void ReloadTexts() override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    int m_nButton = PSBTN_OK; // that asked for the name last
};
