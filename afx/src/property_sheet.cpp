#include <afxdlgs.h>

#include "modal_owner.h"
#include "thread_state.h"

#include <cstring>
#include <utility>

IMPLEMENT_DYNAMIC(CPropertyPage, CDialog)
IMPLEMENT_DYNAMIC(CPropertySheet, CWnd)

BEGIN_MESSAGE_MAP(CPropertySheet, CWnd)
    ON_WM_CLOSE()
END_MESSAGE_MAP()

namespace {

/// The system's library of sheets, loaded when the first one is shown; it stays, for its window classes do.
class SheetLibrary {
public:
    static INT_PTR Show(const PROPSHEETHEADERA* header)
    {
        static const auto s_show = reinterpret_cast<decltype(&PropertySheetA)>(
            reinterpret_cast<void*>(::GetProcAddress(::LoadLibrary("comctl32.dll"), "PropertySheetA")));
        return s_show != nullptr ? s_show(header) : -1;
    }
};

} // namespace

// The page ------------------------------------------------------------------------------------------------------------

CPropertyPage::CPropertyPage(UINT nIDTemplate)
{
    m_psp.dwSize = PROPSHEETPAGEA_V1_SIZE;
    m_psp.pszTemplate = MAKEINTRESOURCE(nIDTemplate);
    m_psp.pfnDlgProc = &CPropertyPage::PageProcedure;
    m_psp.lParam = reinterpret_cast<LPARAM>(this);
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
    if (CWnd* sheet = CWnd::FromHandlePermanent(::GetParent(hWnd)))
        sheet->EndModalLoop(-1);
    return FALSE;
}

void CPropertyPage::SetModified(BOOL bChanged)
{
    if (m_hWnd != nullptr)
        ::SendMessage(::GetParent(m_hWnd), bChanged ? PSM_CHANGED : PSM_UNCHANGED, reinterpret_cast<WPARAM>(m_hWnd), 0);
}

void CPropertyPage::CancelToClose() { ::SendMessage(::GetParent(m_hWnd), PSM_CANCELTOCLOSE, 0, 0); }

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

BOOL CPropertyPage::PreTranslateMessage(MSG* pMsg)
{
    return CWnd::PreTranslateMessage(pMsg); // NOLINT(bugprone-parent-virtual-call): keys are the sheet's business
}

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
        *pResult = OnApply() ? PSNRET_NOERROR : PSNRET_INVALID_NOCHANGEPAGE;
        break;
    case static_cast<UINT>(PSN_RESET):
        OnReset();
        break;
    case static_cast<UINT>(PSN_QUERYCANCEL):
        *pResult = !OnQueryCancel();
        break;
    default:
        return CDialog::OnNotify(wParam, lParam, pResult);
    }
    return TRUE;
}

// The sheet -----------------------------------------------------------------------------------------------------------

namespace {

CPropertySheet* s_beginning = nullptr; // whose window is being made

} // namespace

CPropertySheet::CPropertySheet(LPCSTR pszCaption, CWnd* pParentWnd, UINT iSelectPage)
    : m_strCaption(pszCaption), m_pParentWnd(pParentWnd)
{
    m_psh.dwSize = PROPSHEETHEADERA_V1_SIZE;
    m_psh.dwFlags = PSH_PROPSHEETPAGE | PSH_USECALLBACK | PSH_MODELESS;
    m_psh.nStartPage = iSelectPage;
    m_psh.pfnCallback = &CPropertySheet::SheetProcedure;
}

CPropertySheet::~CPropertySheet()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
}

void CPropertySheet::AddPage(CPropertyPage* pPage) { m_pages.Add(pPage); }

int CPropertySheet::GetActiveIndex() const
{
    const HWND tab = m_hWnd != nullptr ? TabControl() : nullptr;
    return tab != nullptr ? static_cast<int>(::SendMessage(tab, TCM_GETCURSEL, 0, 0)) : -1;
}

BOOL CPropertySheet::SetActivePage(int nPage)
{
    if (m_hWnd != nullptr)
        return static_cast<BOOL>(SendMessage(PSM_SETCURSEL, static_cast<WPARAM>(nPage)));
    m_psh.nStartPage = static_cast<UINT>(nPage);
    return TRUE;
}

int CALLBACK CPropertySheet::SheetProcedure(HWND hWnd, UINT message, LPARAM)
{
    CPropertySheet* sheet = s_beginning;
    if (message != PSCB_INITIALIZED || sheet == nullptr || sheet->m_hWnd != nullptr)
        return 0;
    try {
        if (sheet->SubclassWindow(hWnd))
            sheet->OnInitDialog();
    } catch (CException* e) { // which must not pass through the system
        e->Delete();
        sheet->EndModalLoop(-1);
    }
    return 0;
}

INT_PTR CPropertySheet::DoModal()
{
    const INT_PTR kPageSize = PROPSHEETPAGEA_V1_SIZE; // as the pages say, for the oldest system
    CArray<BYTE, BYTE> pages;
    pages.SetSize(GetPageCount() * kPageSize);
    for (int i = 0; i < GetPageCount(); ++i)
        std::memcpy(pages.GetData() + i * kPageSize, &GetPage(i)->m_psp, kPageSize);
    ModalOwner owner(m_pParentWnd);
    m_psh.hwndParent = owner.GetHandle();
    m_psh.pszCaption = m_strCaption;
    m_psh.nPages = static_cast<UINT>(GetPageCount());
    m_psh.ppsp = reinterpret_cast<LPCPROPSHEETPAGEA>(pages.GetData());
    m_bModalRunning = TRUE; // from here on, for a page may end the sheet at once
    m_nModalResult = IDCANCEL;
    CPropertySheet* const outer = std::exchange(s_beginning, this);
    const INT_PTR made = SheetLibrary::Show(&m_psh);
    s_beginning = outer;
    const HWND window = made != 0 && made != -1 ? reinterpret_cast<HWND>(made) : nullptr;
    const INT_PTR result = window != nullptr && m_hWnd == window ? RunUntilClosed() : -1;
    m_bModalRunning = FALSE;
    owner.Release(window);
    if (window != nullptr)
        ::DestroyWindow(window);
    return result;
}

INT_PTR CPropertySheet::RunUntilClosed()
{
    // A sheet without a loop of its own says by the lack of a page that OK or Cancel have closed it.
    while (m_bModalRunning && SendMessage(PSM_GETCURRENTPAGEHWND) != 0) {
        MSG message;
        if (!PumpOneMessage(&message)) {
            ::PostQuitMessage(static_cast<int>(message.wParam)); // for the loop that this one runs in
            return -1;
        }
    }
    return m_nModalResult;
}

BOOL CPropertySheet::OnCommand(WPARAM wParam, LPARAM lParam)
{
    // Only the newest systems can be asked how a sheet was closed.
    if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)
        m_nModalResult = LOWORD(wParam);
    return CWnd::OnCommand(wParam, lParam);
}

void CPropertySheet::OnClose()
{
    m_nModalResult = IDCANCEL;
    Default();
}

void CPropertySheet::EndDialog(int nEndID) { EndModalLoop(nEndID); }

BOOL CPropertySheet::PreTranslateMessage(MSG* pMsg)
{
    return CWnd::PreTranslateMessage(pMsg) || SendMessage(PSM_ISDIALOGMESSAGE, 0, reinterpret_cast<LPARAM>(pMsg)) != 0;
}
