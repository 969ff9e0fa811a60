#include <afxdlgs.h>

#include <utility>

IMPLEMENT_DYNAMIC(CPropertyPage, CDialog)

BEGIN_MESSAGE_MAP(CPropertyPage, CDialog)
    ON_WM_CLOSE()
END_MESSAGE_MAP()

CPropertyPage::CPropertyPage(LPCSTR lpszTemplateName, UINT nIDCaption)
{
    m_lpszTemplateName = lpszTemplateName;
    m_psp.dwSize = PROPSHEETPAGEA_V1_SIZE;
    m_psp.pszTemplate = lpszTemplateName;
    m_psp.pfnDlgProc = &CPropertyPage::PageProcedure;
    m_psp.lParam = reinterpret_cast<LPARAM>(this);
    if (nIDCaption != 0 && m_strCaption.LoadString(nIDCaption)) {
        m_psp.dwFlags |= PSP_USETITLE;
        m_psp.pszTitle = m_strCaption;
    }
}

CPropertyPage::CPropertyPage(UINT nIDTemplate, UINT nIDCaption)
    : CPropertyPage(MAKEINTRESOURCE(nIDTemplate), nIDCaption)
{
}

const PROPSHEETPAGEA& CPropertyPage::Prepare()
{
    if ((m_psp.dwFlags & PSP_DLGINDIRECT) == 0)
        m_psp.hInstance = AfxFindResourceHandle(m_psp.pszTemplate, RT_DIALOG);
    return m_psp;
}

INT_PTR CALLBACK CPropertyPage::PageProcedure(HWND hWnd, UINT message, WPARAM, LPARAM lParam)
{
    // Everything later is offered to the object before it comes here.
    if (message != WM_INITDIALOG)
        return FALSE;
    auto* page = reinterpret_cast<CPropertyPage*>(reinterpret_cast<PROPSHEETPAGEA*>(lParam)->lParam);
    page->m_bShownBefore = false;
    try {
        return page->SubclassWindow(hWnd) && page->OnInitDialog();
    } catch (CException* e) { // which must not pass through the system
        e->Delete();
    }
    if (CPropertySheet* sheet = CPropertySheet::Of(hWnd))
        sheet->EndDialog(-1);
    return FALSE;
}

void CPropertyPage::SetModified(BOOL bChanged)
{
    if (m_hWnd != nullptr)
        ::SendMessage(::GetParent(m_hWnd), bChanged ? PSM_CHANGED : PSM_UNCHANGED, reinterpret_cast<WPARAM>(m_hWnd), 0);
}

void CPropertyPage::CancelToClose() { ::SendMessage(::GetParent(m_hWnd), PSM_CANCELTOCLOSE, 0, 0); }

LRESULT CPropertyPage::QuerySiblings(WPARAM wParam, LPARAM lParam)
{
    return m_hWnd != nullptr ? ::SendMessage(::GetParent(m_hWnd), PSM_QUERYSIBLINGS, wParam, lParam) : 0;
}

BOOL CPropertyPage::OnSetActive()
{
    // OnInitDialog has filled the controls for the first time.
    return std::exchange(m_bShownBefore, true) ? UpdateData(FALSE) : TRUE;
}

BOOL CPropertyPage::OnKillActive() { return UpdateData(TRUE); }

BOOL CPropertyPage::OnApply()
{
    OnOK();
    return TRUE;
}

void CPropertyPage::OnReset() { OnCancel(); }
BOOL CPropertyPage::OnQueryCancel() { return TRUE; }
void CPropertyPage::OnOK() { SetModified(FALSE); }
void CPropertyPage::OnCancel() {}

/// The system only knows pages of its own resources by their numbers, and old ones none.
LRESULT CPropertyPage::AnswerWizard(LRESULT page)
{
    CPropertySheet* sheet = CPropertySheet::Of(m_hWnd);
    if (page == 0 || page == -1 || sheet == nullptr)
        return page;
    for (int i = 0; i < sheet->GetPageCount(); ++i) {
        if (sheet->GetPage(i)->m_lpszTemplateName == MAKEINTRESOURCE(page)) {
            sheet->SetActivePage(i);
            break;
        }
    }
    return -1;
}

/// Keys must not go to a button or to the page that was shown before.
void CPropertyPage::AskForFocus()
{
    HWND control = ::GetFocus();
    if (control == nullptr || !::IsChild(m_hWnd, control))
        control = ::GetNextDlgTabItem(m_hWnd, nullptr, FALSE);
    if (control != nullptr) // once the system has shown the page, and moved the focus
        ::PostMessage(::GetParent(m_hWnd), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
}

void CPropertyPage::OnClose() { ::PostMessage(::GetParent(m_hWnd), PSM_PRESSBUTTON, PSBTN_CANCEL, 0); }

BOOL CPropertyPage::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (header->hwndFrom != ::GetParent(m_hWnd))
        return CDialog::OnNotify(wParam, lParam, pResult);
    switch (header->code) {
    case static_cast<UINT>(PSN_SETACTIVE):
        *pResult = OnSetActive() ? 0 : -1;
        break;
    case static_cast<UINT>(PSN_KILLACTIVE):
        *pResult = !OnKillActive();
        break;
    case static_cast<UINT>(PSN_APPLY):
        *pResult = OnApply() ? PSNRET_NOERROR : PSNRET_INVALID;
        if (*pResult != PSNRET_NOERROR)
            AskForFocus();
        break;
    case static_cast<UINT>(PSN_RESET):
        OnReset();
        break;
    case static_cast<UINT>(PSN_QUERYCANCEL):
        *pResult = !OnQueryCancel();
        break;
    case static_cast<UINT>(PSN_WIZBACK):
        *pResult = AnswerWizard(OnWizardBack());
        break;
    case static_cast<UINT>(PSN_WIZNEXT):
        *pResult = AnswerWizard(OnWizardNext());
        break;
    case static_cast<UINT>(PSN_WIZFINISH):
        *pResult = !OnWizardFinish();
        break;
    default:
        return CDialog::OnNotify(wParam, lParam, pResult);
    }
    return TRUE;
}
