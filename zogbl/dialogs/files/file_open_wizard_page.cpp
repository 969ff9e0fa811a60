#include <zogbl/file_open_wizard_page.h>

#include <zogbl/resource_ids.h>

CZoFileOpenWizardPage::CZoFileOpenWizardPage(BOOL open, UINT templateId, LPCSTR defaultExtension, LPCSTR fileName,
                                             DWORD flags, LPCSTR filter)
    : CZoWizardPage(templateId != 0 ? templateId : ZO_IDD_FILE_PAGE),
      CZoFileForm(static_cast<CWnd&>(*this), open, defaultExtension, fileName, flags, filter)
{
}

CZoFileOpenWizardPage::~CZoFileOpenWizardPage() = default;

BOOL CZoFileOpenWizardPage::OnInitDialog()
{
    CZoWizardPage::OnInitDialog();
    if (!BeginForm())
        AfxThrowMemoryException(); // the wizard stays where it is
    return TRUE;
}

int CZoFileOpenWizardPage::FindFault(CString&)
{
    const HWND name = ::GetDlgItem(m_hWnd, ZO_IDC_FILE_NAME), folders = ::GetDlgItem(m_hWnd, ZO_IDC_FILE_FOLDERS);
    const bool isInFolders = folders != nullptr && ::GetFocus() == folders;
    return isInFolders || ::GetWindowTextLengthA(name) > 0 ? 0 : ZO_IDC_FILE_NAME;
}

BOOL CZoFileOpenWizardPage::OnNext() { return TakeName() && CZoWizardPage::OnNext(); }

void CZoFileOpenWizardPage::OnNameTaken() { OnOK(); } // Next once more

void CZoFileOpenWizardPage::OnFileChosen() { OnOK(); }

void CZoFileOpenWizardPage::ReloadTexts()
{
    CZoWizardPage::ReloadTexts();
    ReloadFormTexts();
}

LRESULT CZoFileOpenWizardPage::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    return HandleFormMessage(message, wParam, lParam, result) ? result
                                                              : CZoWizardPage::WindowProc(message, wParam, lParam);
}
