#include "popup.h"

#include <common/without_throwing.h>

#include <algorithm>

namespace {

constexpr UINT_PTR kTimer = 1; // while it is open: a control is not told that a window above it is moved or hidden
constexpr UINT kLookEach = 50; // milliseconds

/// The part of the screen at \p area that programs may use.
CRect WorkAreaAt(const CRect& area)
{
    CRect work;
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    // Several screens came with Windows 98 and 2000.
    const HMODULE user = ::GetModuleHandleA("user32.dll");
    const auto find = reinterpret_cast<decltype(::MonitorFromRect)*>(
        reinterpret_cast<void*>(::GetProcAddress(user, "MonitorFromRect")));
    const auto describe = reinterpret_cast<decltype(::GetMonitorInfoA)*>(
        reinterpret_cast<void*>(::GetProcAddress(user, "GetMonitorInfoA")));
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    if (find != nullptr && describe != nullptr && describe(find(&area, MONITOR_DEFAULTTONEAREST), &monitor))
        work = monitor.rcWork;
    return work;
}

bool IsButtonDown(UINT message)
{
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
    case WM_XBUTTONDOWN:
    case WM_XBUTTONDBLCLK:
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
    case WM_NCRBUTTONDOWN:
    case WM_NCRBUTTONDBLCLK:
    case WM_NCMBUTTONDOWN:
    case WM_NCMBUTTONDBLCLK:
    case WM_NCXBUTTONDOWN:
    case WM_NCXBUTTONDBLCLK:
        return true;
    default:
        return false;
    }
}

} // namespace

ControlPopup::~ControlPopup()
{
    End();
    DestroyWindow();
}

BOOL ControlPopup::Open(CWnd& owner, CZoControl& content, DWORD contentStyle, CSize size, HWND keyboard)
{
    if (IsOpen() || !CZoControl::RegisterControlClass())
        return FALSE;
    m_owner = owner.m_hWnd;
    m_keyboard = keyboard != nullptr ? keyboard : m_owner;
    ::GetWindowRect(m_keyboard, &m_area);
    const DWORD style = WS_POPUP | WS_BORDER;
    const DWORD styleEx =
        WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | (owner.GetExStyle() & static_cast<DWORD>(WS_EX_LAYOUTRTL));
    CRect frame(CPoint(0, 0), size);
    ::AdjustWindowRectEx(&frame, style, FALSE, styleEx);
    const CRect place = PlaceFor(frame.Size());
    content.SetKeyboardOwner(m_keyboard);
    const BOOL opened = WithoutThrowing([&] {
        return CreateEx(styleEx, ZO_CONTROL_CLASS, "", style, place, owner.GetTopLevelParent(), 0) &&
               content.Create(contentStyle | WS_CHILD | WS_VISIBLE, GetContentArea(), this, 0) &&
               SetTimer(kTimer, kLookEach) != 0 && Begin();
    });
    if (!opened) {
        DestroyWindow();
        return FALSE;
    }
    content.SendMessage(WM_SETFONT, static_cast<WPARAM>(owner.SendMessage(WM_GETFONT)), FALSE);
    SetWindowPos(nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOZORDER | SWP_SHOWWINDOW);
    content.RaiseEvent(EVENT_OBJECT_FOCUS, content.GetFocusedPart());
    return TRUE;
}

CRect ControlPopup::GetContentArea() const
{
    CRect area;
    GetClientRect(&area);
    return area;
}

CRect ControlPopup::PlaceFor(CSize size) const
{
    const CRect work = WorkAreaAt(m_area);
    const bool isMirrored =
        (static_cast<DWORD>(::GetWindowLongA(m_owner, GWL_EXSTYLE)) & static_cast<DWORD>(WS_EX_LAYOUTRTL)) != 0;
    CPoint corner(isMirrored ? m_area.right - size.cx : m_area.left, m_area.bottom);
    if (corner.y + size.cy > work.bottom && m_area.top - size.cy >= work.top)
        corner.y = m_area.top - size.cy;
    corner.x = (std::max)((std::min)(corner.x, work.right - size.cx), work.left);
    corner.y = (std::max)((std::min)(corner.y, work.bottom - size.cy), work.top);
    return CRect(corner, size);
}

void ControlPopup::PostNcDestroy()
{
    if (!IsActive()) // it was not opened, or its object ends
        return;
    End();
    m_client.OnPopupClosed(); // which may delete this object
}

void ControlPopup::LookAtOwner()
{
    CRect area;
    if (!::GetWindowRect(m_keyboard, &area) || area != m_area || !::IsWindowVisible(m_owner) ||
        !::IsWindowEnabled(m_owner) || ::GetFocus() != m_keyboard)
        Close();
}

BOOL ControlPopup::OnMessage(const MSG& message)
{
    if (!IsButtonDown(message.message) || message.hwnd == m_hWnd || ::IsChild(m_hWnd, message.hwnd))
        return FALSE;
    const BOOL isOwner = message.hwnd == m_owner;
    Close();
    return isOwner;
}

BOOL ControlPopup::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    *result = ::SendMessageA(m_owner, WM_NOTIFY, wParam, lParam);
    return TRUE;
}

BOOL ControlPopup::OnCommand(WPARAM wParam, LPARAM lParam)
{
    ::SendMessageA(m_owner, WM_COMMAND, wParam, lParam);
    return TRUE;
}

LRESULT ControlPopup::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    case WM_TIMER:
        LookAtOwner();
        return 0;
    case WM_ACTIVATEAPP:
        if (!wParam) {
            Close();
            return 0;
        }
        break;
    default:
        break;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}
