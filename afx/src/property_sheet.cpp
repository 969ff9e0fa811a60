#include <afxdlgs.h>

#include "command_route.h"
#include "system_function.h"
#include "thread_state.h"

#include <iterator>

IMPLEMENT_DYNAMIC(CPropertySheet, CWnd)

BEGIN_MESSAGE_MAP(CPropertySheet, CWnd)
    ON_WM_CLOSE()
    ON_MESSAGE(PSM_PRESSBUTTON, OnPressButton)
    ON_MESSAGE(WM_NULL, OnWake)
END_MESSAGE_MAP()

CPropertySheet::CPropertySheet(LPCSTR pszCaption, CWnd* pParentWnd, UINT iSelectPage)
    : m_strCaption(pszCaption), m_pParentWnd(pParentWnd)
{
    m_psh.dwSize = PROPSHEETHEADERA_V1_SIZE;
    m_psh.dwFlags = PSH_PROPSHEETPAGE | PSH_USECALLBACK | PSH_MODELESS;
    m_psh.nStartPage = iSelectPage;
    m_psh.pfnCallback = &CPropertySheet::SheetProcedure;
}

CPropertySheet::CPropertySheet(UINT nIDCaption, CWnd* pParentWnd, UINT iSelectPage)
    : CPropertySheet(MAKEINTRESOURCE(nIDCaption), pParentWnd, iSelectPage)
{
}

CPropertySheet::~CPropertySheet()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
}

CPropertySheet* CPropertySheet::Of(HWND page)
{
    CWnd* parent = FromHandlePermanent(::GetParent(page));
    return parent != nullptr && parent->IsKindOf(RUNTIME_CLASS(CPropertySheet)) ? static_cast<CPropertySheet*>(parent)
                                                                                : nullptr;
}

// Pages ---------------------------------------------------------------------------------------------------------------

void CPropertySheet::AddPage(CPropertyPage* pPage)
{
    const INT_PTR index = m_pages.Add(pPage);
    if (m_hWnd == nullptr)
        return;
    const auto make =
        FindSystemFunction<decltype(CreatePropertySheetPageA)>("comctl32.dll", "CreatePropertySheetPageA");
    const auto destroy =
        FindSystemFunction<decltype(DestroyPropertySheetPage)>("comctl32.dll", "DestroyPropertySheetPage");
    const HPROPSHEETPAGE page = make != nullptr ? make(&pPage->Prepare()) : nullptr;
    if (page != nullptr && SendMessage(PSM_ADDPAGE, 0, reinterpret_cast<LPARAM>(page)) != 0)
        return;
    if (page != nullptr && destroy != nullptr)
        destroy(page);
    m_pages.RemoveAt(index);
    AfxThrowResourceException();
}

void CPropertySheet::RemovePage(CPropertyPage* pPage) { RemovePage(GetPageIndex(pPage)); }

void CPropertySheet::RemovePage(int nPage)
{
    if (nPage < 0 || nPage >= GetPageCount())
        return;
    if (m_hWnd != nullptr) {
        SendMessage(PSM_REMOVEPAGE, static_cast<WPARAM>(nPage));
        PostMessage(WM_NULL);
    }
    m_pages.RemoveAt(nPage);
}

int CPropertySheet::GetPageIndex(const CPropertyPage* pPage) const
{
    int index = GetPageCount();
    while (--index >= 0 && GetPage(index) != pPage) {
    }
    return index;
}

int CPropertySheet::GetActiveIndex() const
{
    const auto tab = m_hWnd != nullptr ? reinterpret_cast<HWND>(SendMessage(PSM_GETTABCONTROL)) : nullptr;
    return tab != nullptr ? static_cast<int>(::SendMessage(tab, TCM_GETCURSEL, 0, 0)) : -1;
}

CPropertyPage* CPropertySheet::GetActivePage() const
{
    const int index = GetActiveIndex();
    return index >= 0 && index < GetPageCount() ? GetPage(index) : nullptr;
}

BOOL CPropertySheet::SetActivePage(int nPage)
{
    if (m_hWnd != nullptr)
        return static_cast<BOOL>(SendMessage(PSM_SETCURSEL, static_cast<WPARAM>(nPage)));
    m_psh.nStartPage = static_cast<UINT>(nPage);
    return TRUE;
}

BOOL CPropertySheet::SetActivePage(CPropertyPage* pPage)
{
    const int index = GetPageIndex(pPage);
    return index >= 0 && SetActivePage(index);
}

void CPropertySheet::SetTitle(LPCSTR lpszText, UINT nStyle)
{
    m_strCaption = lpszText;
    m_psh.dwFlags = (m_psh.dwFlags & ~static_cast<DWORD>(PSH_PROPTITLE)) | nStyle;
    if (m_hWnd != nullptr)
        SendMessage(PSM_SETTITLE, nStyle, reinterpret_cast<LPARAM>(LPCSTR(m_strCaption)));
}

/// Told so, a sheet with tabs would let Enter press a button that nobody sees.
void CPropertySheet::TellWizard(UINT message, LPARAM lParam) const
{
    if (m_hWnd != nullptr && (m_psh.dwFlags & PSH_WIZARD) != 0)
        SendMessage(message, 0, lParam);
}

// End -----------------------------------------------------------------------------------------------------------------

bool CPropertySheet::HasEnded() const
{
    // A sheet without a loop of its own says by the lack of a page that OK or Cancel have closed it.
    return m_bEnded || SendMessage(PSM_GETCURRENTPAGEHWND) == 0;
}

INT_PTR CPropertySheet::RunUntilClosed()
{
    while (m_bModalRunning && !HasEnded()) {
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
    const int id = LOWORD(wParam);
    if (id != IDOK && id != IDCANCEL && id != ID_WIZFINISH)
        return CWnd::OnCommand(wParam, lParam);
    m_nModalResult = id; // only the newest systems can be asked how a sheet was closed
    const HWND window = m_hWnd;
    if (!CWnd::OnCommand(wParam, lParam))
        Default();
    if (::IsWindow(window) && !HasEnded()) // a page keeps it open
        m_nModalResult = IDCANCEL;
    ::PostMessage(window, WM_NULL, 0, 0);
    return TRUE;
}

void CPropertySheet::OnClose()
{
    m_nModalResult = IDCANCEL;
    const HWND window = m_hWnd;
    Default();
    ::PostMessage(window, WM_NULL, 0, 0);
}

/// What is pressed so goes the way of what is clicked.
LRESULT CPropertySheet::OnPressButton(WPARAM wParam, LPARAM)
{
    constexpr int kButtons[] = {ID_WIZBACK, ID_WIZNEXT, ID_WIZFINISH, IDOK, ID_APPLY_NOW, IDCANCEL, IDHELP};
    if (wParam < std::size(kButtons))
        SendMessage(WM_COMMAND, static_cast<WPARAM>(kButtons[wParam]));
    return 0;
}

/// After what may have closed the sheet: wakes the loop of a modal one, ends one without a loop.
LRESULT CPropertySheet::OnWake(WPARAM, LPARAM)
{
    if (m_bModeless && HasEnded())
        DestroyWindow();
    return 0;
}

void CPropertySheet::EndDialog(int nEndID)
{
    m_bEnded = true;
    EndModalLoop(nEndID);
    if (m_bModeless)
        PostMessage(WM_NULL);
}

BOOL CPropertySheet::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo)
{
    return CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo) || RouteToOwner(*this, nID, nCode, pExtra, pHandlerInfo);
}

BOOL CPropertySheet::PreTranslateMessage(MSG* pMsg)
{
    return CWnd::PreTranslateMessage(pMsg) || SendMessage(PSM_ISDIALOGMESSAGE, 0, reinterpret_cast<LPARAM>(pMsg)) != 0;
}
