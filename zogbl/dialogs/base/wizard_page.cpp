#include <zogbl/wizard.h>

#include "dialog_resource.h"

CZoWizardPage::CZoWizardPage(UINT templateId) : CZoDialog(templateId), m_nTemplateId(templateId) {}

CZoWizardPage::~CZoWizardPage() = default;

BOOL CZoWizardPage::IsSkipped() { return FALSE; }

CZoWizardPage* CZoWizardPage::ChooseNext() { return nullptr; }

void CZoWizardPage::OnShow() {}

int CZoWizardPage::FindFault(CString&) { return 0; }

BOOL CZoWizardPage::OnNext() { return UpdateData(TRUE); }

void CZoWizardPage::ReloadTexts() { CZoDialog::ReloadTexts(); }

// Fields of several lines send keys of the dialog to their page.

void CZoWizardPage::OnOK() { m_pSheet->SendMessage(WM_COMMAND, IDOK); }

void CZoWizardPage::OnCancel() { m_pSheet->SendMessage(WM_COMMAND, IDCANCEL); }

LRESULT CZoWizardPage::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const LRESULT result = CZoDialog::WindowProc(message, wParam, lParam);
    if (message == WM_COMMAND && lParam != 0 && m_pSheet != nullptr && m_pSheet->m_hWnd != nullptr)
        m_pSheet->OnPageCommand(this, HIWORD(wParam), reinterpret_cast<HWND>(lParam));
    return result;
}
