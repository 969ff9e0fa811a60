#include <afxdlgs.h>

#include "modal_owner.h"
#include "system_function.h"
#include "thread_state.h"

#include <cstring>
#include <utility>

IMPLEMENT_DYNAMIC(CPropertySheet, CWnd)

BEGIN_MESSAGE_MAP(CPropertySheet, CWnd)
    ON_WM_CLOSE()
    ON_MESSAGE(PSM_PRESSBUTTON, OnPressButton)
    ON_MESSAGE(WM_NULL, OnWake)
END_MESSAGE_MAP()

namespace {

/// The system's library of sheets, loaded when the first one is shown; it stays, for its window classes do.
template <class FUNCTION> FUNCTION* OfSheets(LPCSTR name) { return FindSystemFunction<FUNCTION>("comctl32.dll", name); }

INT_PTR ShowSheet(const PROPSHEETHEADERA* header)
{
    const auto show = OfSheets<decltype(PropertySheetA)>("PropertySheetA");
    return show != nullptr ? show(header) : -1;
}

} // namespace

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
    const auto make = OfSheets<decltype(CreatePropertySheetPageA)>("CreatePropertySheetPageA");
    const auto destroy = OfSheets<decltype(DestroyPropertySheetPage)>("DestroyPropertySheetPage");
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
        CPropertyPage* page = GetPage(nPage);
        page->m_bRemoved = true; // nobody asks for its data
        SendMessage(PSM_REMOVEPAGE, static_cast<WPARAM>(nPage));
        page->m_bRemoved = false;
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

// Beginning -----------------------------------------------------------------------------------------------------------

/// The sheet whose window is being made.
struct CPropertySheet::Making {
    explicit Making(CPropertySheet* sheet) : sheet(sheet), outer(std::exchange(s_innermost, this)) {}
    ~Making() { s_innermost = outer; }
    Making(const Making&) = delete;
    Making& operator=(const Making&) = delete;

    static inline Making* s_innermost = nullptr;
    CPropertySheet* sheet;
    Making* outer;
    bool attached = false; // then the end of the window is the end of the object's work
};

int CALLBACK CPropertySheet::SheetProcedure(HWND hWnd, UINT message, LPARAM)
{
    Making* making = Making::s_innermost;
    if (message != PSCB_INITIALIZED || making == nullptr || making->attached)
        return 0;
    CPropertySheet* sheet = making->sheet;
    try {
        making->attached = sheet->SubclassWindow(hWnd);
        sheet->SetStyles();
        sheet->OnInitDialog();
    } catch (CException* e) { // which must not pass through the system
        e->Delete();
        sheet->EndDialog(-1);
    }
    return 0;
}

/// \return null if no window came of it; only if it was attached the object may be gone then
HWND CPropertySheet::Make(HWND owner)
{
    const INT_PTR kPageSize = PROPSHEETPAGEA_V1_SIZE; // as the pages say, for the oldest system
    CArray<BYTE, BYTE> pages;
    pages.SetSize(GetPageCount() * kPageSize);
    for (int i = 0; i < GetPageCount(); ++i)
        std::memcpy(pages.GetData() + i * kPageSize, &GetPage(i)->Prepare(), kPageSize);
    m_psh.hwndParent = owner;
    m_psh.pszCaption = m_strCaption;
    m_psh.nPages = static_cast<UINT>(GetPageCount());
    m_psh.ppsp = reinterpret_cast<LPCPROPSHEETPAGEA>(pages.GetData());
    m_bEnded = false;
    m_nModalResult = IDCANCEL;
    const INT_PTR made = ShowSheet(&m_psh);
    const HWND window = made != 0 && made != -1 ? reinterpret_cast<HWND>(made) : nullptr;
    if (window == nullptr || FromHandlePermanent(window) == this)
        return window;
    ::DestroyWindow(window);
    return nullptr;
}

INT_PTR CPropertySheet::DoModal()
{
    ModalOwner owner(m_pParentWnd);
    m_bModeless = false;
    m_dwStyle = static_cast<DWORD>(-1);
    m_bModalRunning = TRUE; // from here on, for a page may end the sheet at once
    const Making making(this);
    const INT_PTR result = Make(owner.GetHandle()) != nullptr ? RunUntilClosed() : -1;
    m_bModalRunning = FALSE;
    owner.Release(m_hWnd);
    DestroyWindow();
    return result;
}

BOOL CPropertySheet::Create(CWnd* pParentWnd, DWORD dwStyle, DWORD dwExStyle)
{
    m_bModeless = true;
    m_dwStyle = dwStyle;
    m_dwExStyle = dwExStyle;
    const Making making(this);
    HWND window;
    try {
        window = Make(pParentWnd != nullptr ? pParentWnd->m_hWnd : nullptr);
    } catch (CException*) {
        PostNcDestroy();
        throw;
    }
    if (window == nullptr && !making.attached)
        PostNcDestroy();
    if (window != nullptr && m_bEnded)
        ::DestroyWindow(window);
    else if (window != nullptr)
        HideButtons();
    return ::IsWindow(window);
}

void CPropertySheet::SetStyles()
{
    const auto tab = reinterpret_cast<HWND>(SendMessage(PSM_GETTABCONTROL));
    if (!m_bStacked && tab != nullptr)
        ::SetWindowLong(tab, GWL_STYLE, ::GetWindowLong(tab, GWL_STYLE) & ~TCS_MULTILINE);
    if (m_dwStyle == static_cast<DWORD>(-1))
        return;
    CRect client;
    GetClientRect(&client);
    ::AdjustWindowRectEx(&client, m_dwStyle, FALSE, m_dwExStyle);
    ::SetWindowLong(m_hWnd, GWL_STYLE, static_cast<LONG>(m_dwStyle & ~static_cast<DWORD>(WS_VISIBLE)));
    ::SetWindowLong(m_hWnd, GWL_EXSTYLE, static_cast<LONG>(m_dwExStyle));
    if ((m_dwStyle & WS_CHILD) != 0)
        ::SetParent(m_hWnd, m_psh.hwndParent);
    SetWindowPos(nullptr, 0, 0, client.Width(), client.Height(),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void CPropertySheet::HideButtons()
{
    if ((m_psh.dwFlags & PSH_WIZARD) != 0)
        return;
    for (const int id : {IDOK, IDCANCEL, ID_APPLY_NOW, IDHELP}) {
        const HWND button = ::GetDlgItem(m_hWnd, id);
        ::ShowWindow(button, SW_HIDE);
        if (id != IDCANCEL) // which stands for Escape and the system menu
            ::EnableWindow(button, FALSE);
    }
    CRect tab, window, client;
    ::GetWindowRect(reinterpret_cast<HWND>(SendMessage(PSM_GETTABCONTROL)), &tab);
    GetWindowRect(&window);
    GetClientRect(&client);
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(&tab), 2);
    SetWindowPos(nullptr, 0, 0, window.Width(), window.Height() - (client.bottom - tab.bottom - tab.left),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
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

LRESULT CPropertySheet::OnPressButton(WPARAM wParam, LPARAM)
{
    if (wParam == PSBTN_OK)
        m_nModalResult = IDOK;
    else if (wParam == PSBTN_FINISH)
        m_nModalResult = ID_WIZFINISH;
    else if (wParam == PSBTN_CANCEL)
        m_nModalResult = IDCANCEL;
    const HWND window = m_hWnd;
    const LRESULT result = Default();
    ::PostMessage(window, WM_NULL, 0, 0);
    return result;
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

BOOL CPropertySheet::PreTranslateMessage(MSG* pMsg)
{
    return CWnd::PreTranslateMessage(pMsg) || SendMessage(PSM_ISDIALOGMESSAGE, 0, reinterpret_cast<LPARAM>(pMsg)) != 0;
}
