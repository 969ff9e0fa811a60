// A tool bar's buttons: keys, mouse, menus.
#include "tool_bar_strip.h"

#include <common/without_throwing.h>

#include "controls/base/tip.h"

#include <utility>

namespace {

constexpr LPARAM kIsRepeated = 0x40000000; // of WM_KEYDOWN

} // namespace

// Keys ----------------------------------------------------------------------------------------------------------------

BOOL ToolBarStrip::TakeKeyboard()
{
    if (!IsWindowVisible() || !IsWindowEnabled() || m_parts.empty())
        return FALSE;
    SendMessage(WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS));
    SetFocus();
    return TRUE;
}

void ToolBarStrip::LeaveKeyboard()
{
    if (!HasFocus())
        return;
    const bool isThere = ::IsWindow(m_hBefore) && ::IsWindowVisible(m_hBefore) && ::IsWindowEnabled(m_hBefore);
    ::SetFocus(isThere ? m_hBefore : AfxGetSafeHwnd(m_bar.GetOwner()));
}

void ToolBarStrip::FocusPart(int part)
{
    if (!IsPart(part) || part == m_nFocused)
        return;
    InvalidatePart(std::exchange(m_nFocused, part));
    InvalidatePart(part);
    ShowMessage(part);
    RaiseEvent(EVENT_OBJECT_FOCUS, part);
}

BOOL ToolBarStrip::OnKey(UINT key, BOOL isRepeated)
{
    switch (CommandOf(CZoToolBar::kKeys, key)) {
    case CZoToolBar::kPrevious:
        FocusPart(m_nFocused - 1);
        return TRUE;
    case CZoToolBar::kNext:
        FocusPart(m_nFocused + 1);
        return TRUE;
    case CZoToolBar::kFirst:
        FocusPart(1);
        return TRUE;
    case CZoToolBar::kLast:
        FocusPart(GetPartCount());
        return TRUE;
    case CZoToolBar::kPress:
        return isRepeated || Press(m_nFocused);
    case CZoToolBar::kOpen:
        return IsPart(m_nFocused) && At(m_nFocused).button < 0 && Press(m_nFocused);
    case CZoToolBar::kLeave:
        LeaveKeyboard();
        return TRUE;
    default:
        return FALSE;
    }
}

// Commands ------------------------------------------------------------------------------------------------------------

/// The frame's message for the button; 0: its idle message.
void ToolBarStrip::ShowMessage(int part)
{
    CFrameWnd* frame = m_bar.GetFrame();
    if (frame == nullptr)
        return;
    const UINT command = GetCommand(part);
    WithoutThrowing([&] { frame->SetMessageText(command != 0 ? command : AFX_IDS_IDLEMESSAGE); });
}

/// \return FALSE: nothing was pressed. Else the bar may be gone
BOOL ToolBarStrip::Press(int part)
{
    if (!IsPart(part) || !IsWindowEnabled())
        return FALSE;
    if (At(part).button < 0) {
        OpenMore();
        return TRUE;
    }
    const Life life(this);
    const UINT command = GetCommand(part);
    if (CFrameWnd* frame = m_bar.GetFrame()) // the states are those of the last idle moment
        WithoutThrowing([&] { UpdateStates(*frame, TRUE); });
    const int button = life.IsOver() ? -1 : m_content.Find(command);
    if (button < 0 || !m_states[button].isEnabled)
        return FALSE;
    Send(command);
    return TRUE;
}

void ToolBarStrip::Send(UINT command)
{
    const Life life(this);
    LeaveKeyboard(); // first: the command may put the focus elsewhere
    if (!life.IsOver())
        ::SendMessageA(AfxGetSafeHwnd(m_bar.GetOwner()), WM_COMMAND, command, 0);
}

/// On the screen, below a part.
CPoint ToolBarStrip::MenuPlace(int part) const
{
    CRect area = IsPart(part) ? At(part).area : GetClientArea();
    ClientToScreen(&area);
    return {IsMirrored() ? area.right : area.left, area.bottom};
}

UINT ToolBarStrip::GetMenuFlags() const { return IsMirrored() ? TPM_RIGHTALIGN | TPM_LAYOUTRTL : 0U; }

/// The menu of the buttons that have no room. The frame sets its items' states.
void ToolBarStrip::OpenMore()
{
    const HMENU menu = ::CreatePopupMenu();
    const BOOL isFilled = WithoutThrowing([&] {
        for (const int button : m_hidden) {
            const UINT command = button >= 0 ? m_content.GetButton(button).command : 0;
            CString name = ToolName(command);
            for (int i = name.GetLength() - 1; i >= 0; --i) {
                if (name[i] == '&')
                    name.Insert(i, '&');
            }
            const State state = button >= 0 ? m_states[button] : State();
            ::AppendMenuA(menu,
                          button < 0 ? static_cast<UINT>(MF_SEPARATOR)
                                     : (state.isEnabled ? 0U : MF_GRAYED) | (state.check == 1 ? MF_CHECKED : 0U),
                          command, name);
        }
    });
    const Life life(this);
    const CPoint place = MenuPlace(GetPartCount());
    const CFrameWnd* frame = m_bar.GetFrame();
    m_nPressed = GetPartCount();
    SetDown(TRUE);
    const UINT flags = TPM_RETURNCMD | GetMenuFlags();
    const int chosen = isFilled ? ::TrackPopupMenu(menu, flags, place.x, place.y, 0,
                                                   frame != nullptr ? frame->m_hWnd : m_hWnd, nullptr)
                                : 0;
    ::DestroyMenu(menu);
    if (life.IsOver())
        return;
    SetDown(FALSE);
    m_nPressed = 0;
    if (m_content.Find(static_cast<UINT>(chosen)) >= 0)
        Send(static_cast<UINT>(chosen));
}

// Mouse ---------------------------------------------------------------------------------------------------------------

void ToolBarStrip::SetHot(int part)
{
    if (part == m_nHot)
        return;
    InvalidatePart(std::exchange(m_nHot, part));
    InvalidatePart(part);
    ShowMessage(part != 0 || !HasFocus() ? part : m_nFocused);
}

void ToolBarStrip::SetDown(BOOL isDown)
{
    if (m_bDown == isDown)
        return;
    m_bDown = isDown;
    InvalidatePart(m_nPressed);
    if (IsPart(m_nPressed))
        RaiseEvent(EVENT_OBJECT_STATECHANGE, m_nPressed);
}

/// Where an unlocked bar can be dragged: its handle and what has no button.
bool ToolBarStrip::IsOverHandle(CPoint point) const { return !m_content.isLocked && FindPart(point) == 0; }

void ToolBarStrip::OnButtonDown(CPoint point)
{
    const int part = FindPart(point);
    if (part != 0 && At(part).button < 0) {
        OpenMore();
    } else if (part != 0 ? StateOf(part).isEnabled : IsOverHandle(point)) {
        if (!BeginDrag())
            return;
        m_bWasAtBottom = m_bar.IsAtBottom();
        m_nPressed = part != 0 ? part : kDocking;
        SetDown(part != 0);
    }
}

/// An unlocked bar goes to the edge that the pointer is nearer to.
void ToolBarStrip::OnDragMove(CPoint point)
{
    const CWnd* owner = m_bar.GetParent();
    if (m_nPressed > 0) {
        SetDown(FindPart(point) == m_nPressed);
    } else if (m_nPressed == kDocking && owner != nullptr) {
        CRect area;
        owner->GetClientRect(&area);
        ::MapWindowPoints(m_hWnd, owner->m_hWnd, &point, 1);
        const BOOL isAtBottom = point.y > area.Height() / 2;
        if (isAtBottom != m_bar.IsAtBottom())
            m_bar.SetAtBottom(isAtBottom);
    }
}

void ToolBarStrip::OnDragUndo()
{
    SetDown(FALSE);
    if (std::exchange(m_nPressed, 0) == kDocking && m_bWasAtBottom != m_bar.IsAtBottom())
        m_bar.SetAtBottom(m_bWasAtBottom);
}

void ToolBarStrip::OnDragEnd(CPoint point)
{
    SetDown(FALSE);
    const int part = std::exchange(m_nPressed, 0);
    if (part > 0 && FindPart(point) == part)
        Press(part);
    else if (part == kDocking && m_bWasAtBottom != m_bar.IsAtBottom())
        m_bar.KeepOrTell();
}

void ToolBarStrip::OnMouseMove(CPoint point)
{
    if (IsDragging())
        return;
    TRACKMOUSEEVENT leaving = {sizeof leaving, TME_LEAVE, m_hWnd, 0};
    if (m_nHot == 0)
        ::TrackMouseEvent(&leaving);
    SetHot(FindPart(point));
}

// Messages ------------------------------------------------------------------------------------------------------------

/// Its keys are no accelerators of the frame while it has the keyboard; F6 may lead on to another bar.
BOOL ToolBarStrip::PreTranslateMessage(MSG* message)
{
    if (message->message != WM_KEYDOWN || message->hwnd != m_hWnd || message->wParam == VK_F6 ||
        CommandOf(CZoToolBar::kKeys, static_cast<UINT>(message->wParam)) == 0)
        return CZoControl::PreTranslateMessage(message);
    ::SendMessageA(m_hWnd, WM_KEYDOWN, message->wParam, message->lParam);
    return TRUE;
}

LRESULT ToolBarStrip::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const CPoint point(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) {
        const int part = FindPart(point);
        ControlTip::Follow(m_pTip, *this, part != 0 && !IsDragging() ? part : ControlTip::kNone, message, wParam,
                           lParam);
    }
    switch (message) {
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTALLKEYS;
    case WM_KEYDOWN:
        if (OnKey(static_cast<UINT>(wParam), (lParam & kIsRepeated) != 0))
            return 0;
        break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        OnButtonDown(point);
        return 0;
    case WM_MOUSEMOVE:
        OnMouseMove(point);
        break;
    case WM_MOUSELEAVE:
        SetHot(0);
        return 0;
    case WM_CONTEXTMENU: {
        const Life life(this);
        const int chosen = m_bar.AskMenu(lParam != -1 ? point : MenuPlace(HasFocus() ? m_nFocused : 0));
        if (!life.IsOver())
            m_bar.OnMenu(chosen);
        return 0;
    }
    case WM_SETCURSOR: {
        CPoint pointer;
        ::GetCursorPos(&pointer);
        ScreenToClient(&pointer);
        if (LOWORD(lParam) != HTCLIENT || !IsOverHandle(pointer))
            break;
        ::SetCursor(::LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_SIZEALL)));
        return TRUE;
    }
    case WM_SETFOCUS:
        if (wParam != 0) // it does not come back from another program
            m_hBefore = reinterpret_cast<HWND>(wParam);
        ShowMessage(m_nFocused);
        break;
    case WM_KILLFOCUS:
        ShowMessage(0);
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
