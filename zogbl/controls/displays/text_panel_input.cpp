// Text panels: keys, mouse, tips, screen readers.
#include <zogbl/text_panel.h>

#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "controls/base/tip.h"

#include <utility>

#include <oleacc.h>

namespace {

constexpr LPARAM kIsRepeated = 0x40000000; // of WM_KEYDOWN

} // namespace

// Keys ----------------------------------------------------------------------------------------------------------------

/// The first pane that is shown, from \p pane on. \return 0: none
int CZoTextPanel::FindShown(int pane, int step) const
{
    while (IsPane(pane) && At(pane).area.IsRectEmpty())
        pane += step;
    return IsPane(pane) ? pane : 0;
}

void CZoTextPanel::FocusPane(int pane)
{
    if (pane == 0 || pane == m_nFocused)
        return;
    for (const int changed : {std::exchange(m_nFocused, pane), pane})
        InvalidateRect(At(changed).area, FALSE);
    RaiseEvent(EVENT_OBJECT_FOCUS, PartOf(pane));
}

void CZoTextPanel::TakeKeyboard()
{
    if (m_hWnd == nullptr)
        return;
    SendMessage(WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS));
    SetFocus();
}

BOOL CZoTextPanel::OnKey(UINT key, BOOL isRepeated)
{
    switch (CommandOf(kKeys, key)) {
    case kPrevious:
        FocusPane(FindShown(m_nFocused - 1, -1));
        return TRUE;
    case kNext:
        FocusPane(FindShown(m_nFocused + 1, 1));
        return TRUE;
    case kFirst:
        FocusPane(FindShown(1, 1));
        return TRUE;
    case kLast:
        FocusPane(FindShown(m_nPanes, -1));
        return TRUE;
    case kPress:
        return isRepeated || Press(m_nFocused);
    case kLeave: {
        const bool isThere = ::IsWindow(m_hBefore) && ::IsWindowVisible(m_hBefore) && ::IsWindowEnabled(m_hBefore);
        ::SetFocus(isThere ? m_hBefore : ::GetParent(m_hWnd));
        return TRUE;
    }
    default:
        return FALSE;
    }
}

// Mouse ---------------------------------------------------------------------------------------------------------------

/// \return FALSE if it is no button that is shown. Then nothing has happened; else the control may be gone
BOOL CZoTextPanel::Press(int pane)
{
    if (!IsPane(pane) || !At(pane).format.isButton || At(pane).area.IsRectEmpty() || !IsWindowEnabled())
        return FALSE;
    ZoNotifyPane notification = {{}, pane};
    Notify(ZON_PANE_PRESSED, &notification.header);
    return TRUE;
}

void CZoTextPanel::SetDown(BOOL isDown)
{
    if (m_bDown == isDown)
        return;
    m_bDown = isDown;
    InvalidateRect(At(m_nPressed).area, FALSE);
    RaiseEvent(EVENT_OBJECT_STATECHANGE, PartOf(m_nPressed));
}

void CZoTextPanel::OnDragMove(CPoint point) { SetDown(GetPaneAt(point) == m_nPressed); }
void CZoTextPanel::OnDragUndo() { SetDown(FALSE); }

void CZoTextPanel::OnDragEnd(CPoint point)
{
    SetDown(FALSE);
    if (GetPaneAt(point) == m_nPressed)
        Press(m_nPressed);
}

// Screen readers ------------------------------------------------------------------------------------------------------

int CZoTextPanel::GetPartCount() const { return m_nPanes > 1 ? m_nPanes : 0; }
int CZoTextPanel::FindPart(CPoint point) const { return PartOf(GetPaneAt(point)); }
int CZoTextPanel::GetFocusedPart() const { return PartOf(m_nFocused); }
BOOL CZoTextPanel::DoPartAction(int part) { return Press(part == 0 && m_nPanes == 1 ? 1 : part); }

BOOL CZoTextPanel::DescribePart(int part, ZoPart& description) const
{
    if (part < 0 || part > GetPartCount() || !CZoControl::DescribePart(0, description))
        return FALSE;
    if (part == 0 && m_nPanes > 1) {
        description.name.Empty(); // not the first pane's text
        description.role = ROLE_SYSTEM_STATUSBAR;
        return TRUE;
    }
    const int pane = part == 0 ? 1 : part;
    const bool isButton = At(pane).format.isButton != FALSE;
    description.name = GetShownText(pane);
    description.role = isButton ? ROLE_SYSTEM_PUSHBUTTON : ROLE_SYSTEM_STATICTEXT;
    if (isButton)
        ZoGblLoadString(ZO_IDS_ACTION_PRESS, description.action);
    else
        description.state |= STATE_SYSTEM_READONLY;
    if (pane == m_nPressed && m_bDown)
        description.state |= STATE_SYSTEM_PRESSED;
    if (part == 0)
        return TRUE;
    description.area = At(pane).area;
    description.state &= ~(STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED);
    if (At(pane).area.IsRectEmpty())
        description.state |= STATE_SYSTEM_INVISIBLE;
    else if (IsWindowEnabled())
        description.state |= STATE_SYSTEM_FOCUSABLE | (HasFocus() && pane == m_nFocused ? STATE_SYSTEM_FOCUSED : 0);
    return TRUE;
}

// Messages ------------------------------------------------------------------------------------------------------------

LRESULT CZoTextPanel::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const CPoint point(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) {
        const int pane = GetPaneAt(point);
        const int told = IsPaneShortened(pane) && !IsDragging() ? PartOf(pane) : ControlTip::kNone;
        ControlTip::Follow(m_pTip, *this, told, message, wParam, lParam);
    }
    switch (message) {
    case WM_SETTEXT: {
        if (lParam != 0 && HasText(1, reinterpret_cast<LPCSTR>(lParam)))
            return TRUE;
        const LRESULT result = CWnd::WindowProc(message, wParam, lParam); // the base would draw all anew
        OnTextChanged(1);
        return result;
    }
    case WM_GETDLGCODE: {
        const auto* key = reinterpret_cast<const MSG*>(lParam);
        const bool isPress = key != nullptr && key->message == WM_KEYDOWN && key->wParam == VK_RETURN;
        return (m_nPanes > 1 ? DLGC_WANTARROWS : 0) |
               (isPress && At(m_nFocused).format.isButton ? DLGC_WANTMESSAGE : 0);
    }
    case WM_KEYDOWN:
        if (OnKey(static_cast<UINT>(wParam), (lParam & kIsRepeated) != 0))
            return 0;
        break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: {
        const int pane = GetPaneAt(point);
        if (IsPane(pane) && At(pane).format.isButton && BeginDrag()) {
            m_nPressed = pane;
            SetDown(TRUE);
            return 0;
        }
        break;
    }
    case WM_NCHITTEST: {
        CPoint place = point;
        ScreenToClient(&place);
        if (GetGrip().PtInRect(place))
            return IsMirrored() ? HTBOTTOMLEFT : HTBOTTOMRIGHT;
        break;
    }
    case WM_NCLBUTTONDOWN:
        if (wParam == HTBOTTOMLEFT || wParam == HTBOTTOMRIGHT) // the parent's corner
            return ::SendMessageA(::GetParent(m_hWnd), message, wParam, lParam);
        break;
    case WM_SETFOCUS:
        if (wParam != 0) // it does not come back from another program
            m_hBefore = reinterpret_cast<HWND>(wParam);
        if (At(m_nFocused).area.IsRectEmpty())
            m_nFocused = (FindShown(1, 1) != 0) ? FindShown(1, 1) : 1;
        break;
    case WM_DESTROY:
        if (m_pTip != nullptr)
            m_pTip->Destroy();
        break;
    default:
        break;
    }
    return CZoControl::WindowProc(message, wParam, lParam);
}
