// What a window is asked and told beside its messages.
#include "thread_state.h"

#include <algorithm>

// Places for SetWindowPos ---------------------------------------------------------------------------------------------

namespace {

/// Stands for a place among the windows; no window has its handle.
struct Place : CWnd {
    explicit Place(HWND place) { m_hWnd = place; }
    ~Place() override { m_hWnd = nullptr; } // nothing is to be destroyed
};

const Place s_top(HWND_TOP);
const Place s_bottom(HWND_BOTTOM);
const Place s_topMost(HWND_TOPMOST);
const Place s_noTopMost(HWND_NOTOPMOST);

} // namespace

const CWnd& CWnd::wndTop = s_top;
const CWnd& CWnd::wndBottom = s_bottom;
const CWnd& CWnd::wndTopMost = s_topMost;
const CWnd& CWnd::wndNoTopMost = s_noTopMost;

// Styles, text, font --------------------------------------------------------------------------------------------------

namespace {

BOOL ModifyBits(HWND window, int index, DWORD remove, DWORD add, UINT flags)
{
    const auto present = static_cast<DWORD>(::GetWindowLong(window, index));
    const DWORD wanted = (present & ~remove) | add;
    if (wanted == present)
        return FALSE;
    ::SetWindowLong(window, index, static_cast<LONG>(wanted));
    if (flags != 0)
        ::SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | flags);
    return TRUE;
}

} // namespace

BOOL CWnd::ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    return ModifyBits(m_hWnd, GWL_STYLE, dwRemove, dwAdd, nFlags);
}

BOOL CWnd::ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    return ModifyBits(m_hWnd, GWL_EXSTYLE, dwRemove, dwAdd, nFlags);
}

void CWnd::SetFont(CFont* pFont, BOOL bRedraw)
{
    SendMessage(WM_SETFONT, pFont != nullptr ? reinterpret_cast<WPARAM>(pFont->m_hObject) : 0, MAKELPARAM(bRedraw, 0));
}

CFont* CWnd::GetFont() const { return CFont::FromHandle(reinterpret_cast<HFONT>(SendMessage(WM_GETFONT))); }

HICON CWnd::SetIcon(HICON hIcon, BOOL bBigIcon)
{
    return reinterpret_cast<HICON>(
        SendMessage(WM_SETICON, bBigIcon ? ICON_BIG : ICON_SMALL, reinterpret_cast<LPARAM>(hIcon)));
}

CMenu* CWnd::GetMenu() const { return CMenu::FromHandle(::GetMenu(m_hWnd)); }

BOOL CWnd::SetMenu(CMenu* pMenu) { return ::SetMenu(m_hWnd, pMenu != nullptr ? pMenu->m_hMenu : nullptr); }

CMenu* CWnd::GetSystemMenu(BOOL bRevert) const { return CMenu::FromHandle(::GetSystemMenu(m_hWnd, bRevert)); }

int CWnd::GetDlgItemText(int nID, CString& rString) const
{
    rString.Empty();
    const HWND control = ::GetDlgItem(m_hWnd, nID);
    if (control != nullptr)
        FromHandle(control)->GetWindowText(rString);
    return rString.GetLength();
}

void CWnd::GetWindowText(CString& rString) const
{
    const int length = ::GetWindowTextLength(m_hWnd);
    const int copied = ::GetWindowText(m_hWnd, rString.GetBuffer(length), length + 1);
    rString.ReleaseBuffer(copied);
}

// Place ---------------------------------------------------------------------------------------------------------------

void CWnd::MoveWindow(LPCRECT lpRect, BOOL bRepaint)
{
    MoveWindow(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top, bRepaint);
}

void CWnd::CenterWindow(CWnd* pAlternateOwner)
{
    const HWND owner = pAlternateOwner != nullptr ? pAlternateOwner->m_hWnd : ::GetWindow(m_hWnd, GW_OWNER);
    const CWnd* parent = (GetStyle() & WS_CHILD) != 0 ? GetParent() : nullptr;
    CRect work; // what the window stays within, on the screen
    if (parent != nullptr) {
        parent->GetClientRect(&work);
        parent->ClientToScreen(&work);
    } else {
        ::SystemParametersInfo(SPI_GETWORKAREA, 0, &work, 0);
    }
    CRect area = work;
    if (owner != nullptr && ::IsWindowVisible(owner) && !::IsIconic(owner))
        ::GetWindowRect(owner, &area);
    CRect own;
    GetWindowRect(&own);
    const int x = (area.left + area.right - own.Width()) / 2;
    const int y = (area.top + area.bottom - own.Height()) / 2;
    own.MoveToXY((std::max<int>)(work.left, (std::min<int>)(x, work.right - own.Width())),
                 (std::max<int>)(work.top, (std::min<int>)(y, work.bottom - own.Height())));
    if (parent != nullptr)
        parent->ScreenToClient(&own);
    ::SetWindowPos(m_hWnd, nullptr, own.left, own.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL CWnd::GetWindowPlacement(WINDOWPLACEMENT* lpwndpl) const
{
    lpwndpl->length = sizeof *lpwndpl;
    return ::GetWindowPlacement(m_hWnd, lpwndpl);
}

void CWnd::CalcWindowRect(LPRECT lpClientRect, UINT nAdjustType)
{
    const DWORD edge = nAdjustType == adjustBorder ? WS_EX_CLIENTEDGE : 0;
    ::AdjustWindowRectEx(lpClientRect, GetStyle(), ::GetMenu(m_hWnd) != nullptr && (GetStyle() & WS_CHILD) == 0,
                         GetExStyle() & ~edge);
}

void CWnd::MapWindowPoints(CWnd* pwndTo, LPRECT lpRect) const
{
    ::MapWindowPoints(m_hWnd, AfxGetSafeHwnd(pwndTo), reinterpret_cast<LPPOINT>(lpRect), 2);
    if (lpRect->left > lpRect->right) // one of the two is mirrored
        std::swap(lpRect->left, lpRect->right);
}

void CWnd::ScreenToClient(LPRECT lpRect) const
{
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(lpRect), 2);
    if (lpRect->left > lpRect->right)
        std::swap(lpRect->left, lpRect->right);
}

// Painting and scrolling ----------------------------------------------------------------------------------------------

namespace {

/// The object of a window's device context, which is given back if there is no memory for one.
CDC* ContextOf(HWND window, HDC handle)
{
    try {
        return CDC::FromHandle(handle);
    } catch (CMemoryException*) {
        ::ReleaseDC(window, handle);
        throw;
    }
}

} // namespace

CDC* CWnd::GetDC() { return ContextOf(m_hWnd, ::GetDC(m_hWnd)); }
CDC* CWnd::GetWindowDC() { return ContextOf(m_hWnd, ::GetWindowDC(m_hWnd)); }
int CWnd::ReleaseDC(CDC* pDC) { return pDC != nullptr ? ::ReleaseDC(m_hWnd, pDC->m_hDC) : 0; }

void CWnd::Print(CDC* pDC, DWORD dwFlags) const
{
    SendMessage(WM_PRINT, reinterpret_cast<WPARAM>(pDC->m_hDC), static_cast<LPARAM>(dwFlags));
}

BOOL CWnd::SetScrollInfo(int nBar, SCROLLINFO* lpScrollInfo, BOOL bRedraw)
{
    lpScrollInfo->cbSize = sizeof *lpScrollInfo;
    ::SetScrollInfo(m_hWnd, nBar, lpScrollInfo, bRedraw);
    return TRUE;
}

BOOL CWnd::GetScrollInfo(int nBar, SCROLLINFO* lpScrollInfo, UINT nMask)
{
    lpScrollInfo->cbSize = sizeof *lpScrollInfo;
    lpScrollInfo->fMask = nMask;
    return ::GetScrollInfo(m_hWnd, nBar, lpScrollInfo);
}

int CWnd::GetScrollLimit(int nBar) const
{
    SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_PAGE | SIF_RANGE;
    ::GetScrollInfo(m_hWnd, nBar, &info);
    return info.nMax - (std::max)(static_cast<int>(info.nPage) - 1, 0);
}

// Other windows -------------------------------------------------------------------------------------------------------

CFrameWnd* CWnd::GetParentFrame() const
{
    for (HWND parent = ::GetParent(m_hWnd); parent != nullptr; parent = ::GetParent(parent)) {
        CWnd* window = FromHandlePermanent(parent);
        if (window != nullptr && window->IsKindOf(RUNTIME_CLASS(CFrameWnd)))
            return static_cast<CFrameWnd*>(window);
    }
    return nullptr;
}

CFrameWnd* CWnd::GetTopLevelFrame() const
{
    const CWnd* window = this;
    CFrameWnd* frame = nullptr;
    if (IsKindOf(RUNTIME_CLASS(CFrameWnd)))
        frame = const_cast<CFrameWnd*>(static_cast<const CFrameWnd*>(window));
    for (CFrameWnd* outer = GetParentFrame(); outer != nullptr; outer = outer->GetParentFrame())
        frame = outer;
    return frame;
}

CWnd* CWnd::GetTopLevelParent() const
{
    HWND top = m_hWnd;
    for (HWND next = top; next != nullptr; next = ::GetParent(next)) // of a popup its owner
        top = next;
    return FromHandle(top);
}

CWnd* CWnd::GetParentOwner() const
{
    HWND window = m_hWnd;
    while (window != nullptr && (::GetWindowLong(window, GWL_STYLE) & WS_CHILD) != 0)
        window = ::GetParent(window);
    return FromHandle(window);
}

namespace {

HWND FindDescendant(HWND window, int id, BOOL onlyPermanent)
{
    const HWND own = ::GetDlgItem(window, id);
    if (own != nullptr && (!onlyPermanent || CWnd::FromHandlePermanent(own) != nullptr))
        return own;
    for (HWND child = ::GetWindow(window, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (const HWND found = FindDescendant(child, id, onlyPermanent))
            return found;
    }
    return nullptr;
}

} // namespace

CWnd* CWnd::GetDescendantWindow(int nID, BOOL bOnlyPerm) const
{
    return FromHandle(FindDescendant(m_hWnd, nID, bOnlyPerm));
}

int CWnd::GetCheckedRadioButton(int nIDFirstButton, int nIDLastButton) const
{
    for (int id = nIDFirstButton; id <= nIDLastButton; ++id) {
        if (IsDlgButtonChecked(id) != BST_UNCHECKED)
            return id;
    }
    return 0;
}

namespace {

void SendToDescendants(HWND parent, UINT message, WPARAM wParam, LPARAM lParam, BOOL deep, BOOL onlyPermanent)
{
    for (HWND child = ::GetWindow(parent, GW_CHILD); child != nullptr;) {
        const HWND next = ::GetWindow(child, GW_HWNDNEXT); // before the child, which may go
        if (!onlyPermanent || CWnd::FromHandlePermanent(child) != nullptr)
            ::SendMessage(child, message, wParam, lParam);
        if (deep && ::IsWindow(child))
            SendToDescendants(child, message, wParam, lParam, deep, onlyPermanent);
        child = ::IsWindow(next) ? next : nullptr;
    }
}

} // namespace

void CWnd::SendMessageToDescendants(UINT message, WPARAM wParam, LPARAM lParam, BOOL bDeep, BOOL bOnlyPerm)
{
    SendToDescendants(m_hWnd, message, wParam, lParam, bDeep, bOnlyPerm);
}
