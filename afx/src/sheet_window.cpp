// The window of a property sheet: how it is made.
#include <afxdlgs.h>

#include "common_controls_library.h"
#include "modal_owner.h"
#include "system_function.h"

#include <cstring>
#include <utility>

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
    LoadCommonControls(); // also for those in pages
    const auto show = FindSystemFunction<decltype(PropertySheetA)>("comctl32.dll", "PropertySheetA");
    const INT_PTR made = show != nullptr ? show(&m_psh) : -1;
    const HWND window = made != 0 && made != -1 ? reinterpret_cast<HWND>(made) : nullptr;
    if (window == nullptr || FromHandlePermanent(window) == this)
        return window;
    ::DestroyWindow(window);
    return nullptr;
}

INT_PTR CPropertySheet::DoModal()
{
    if (m_hWnd != nullptr)
        return -1;
    ModalOwner owner(m_pParentWnd);
    m_bModeless = false;
    m_dwStyle = static_cast<DWORD>(-1);
    m_bModalRunning = TRUE; // from here on, for a page may end the sheet at once
    const Making making(this);
    const auto end = [&] {
        m_bModalRunning = FALSE;
        owner.Release(m_hWnd);
        DestroyWindow();
    };
    INT_PTR result = -1;
    try {
        if (Make(owner.GetHandle()) != nullptr)
            result = RunUntilClosed();
    } catch (CException*) {
        end();
        throw;
    }
    end();
    return result;
}

BOOL CPropertySheet::Create(CWnd* pParentWnd, DWORD dwStyle, DWORD dwExStyle)
{
    if (m_hWnd != nullptr)
        return FALSE;
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
    if (window != nullptr && HasEnded())
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
