// Tips for parts of windows.
#include "common_controls_library.h"
#include "thread_state.h"

namespace {

/// A tool of the tip control, in the form of the oldest library.
TOOLINFOA ToolOf(HWND window, UINT_PTR id)
{
    TOOLINFOA tool = {};
    tool.cbSize = TTTOOLINFOA_V1_SIZE;
    tool.hwnd = window;
    tool.uId = id;
    return tool;
}

void SendTool(HWND control, UINT message, TOOLINFOA& tool)
{
    ::SendMessage(control, message, 0, reinterpret_cast<LPARAM>(&tool));
}

/// The window whose activity a tip of \p window depends on.
HWND TopOf(HWND window)
{
    while ((::GetWindowLong(window, GWL_STYLE) & WS_CHILD) != 0)
        window = ::GetParent(window);
    return window;
}

/// The thread's tip control, made anew for another owner. \return null on failure
HWND TipControl(ThreadTips& tips, HWND owner)
{
    if (tips.control != nullptr && ::GetWindow(tips.control, GW_OWNER) == owner)
        return tips.control;
    if (tips.control != nullptr)
        ::DestroyWindow(tips.control);
    LoadCommonControls();
    tips = {::CreateWindowEx(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP, CW_USEDEFAULT, CW_USEDEFAULT,
                             CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr, AfxGetInstanceHandle(), nullptr)};
    return tips.control;
}

/// Takes the tool out of the control, and its tip with it. It counts as found still: no tip until the mouse leaves it.
void Silence(const ThreadTips& tips)
{
    if (tips.window == nullptr)
        return;
    TOOLINFOA tool = ToolOf(tips.window, tips.id);
    SendTool(tips.control, TTM_DELTOOL, tool);
}

/// Where the mouse is on the screen, by its message.
CPoint PlaceOf(const MSG& message)
{
    CPoint point(message.lParam);
    if (message.message == WM_MOUSEMOVE)
        ::ClientToScreen(message.hwnd, &point);
    return point;
}

} // namespace

BOOL CWnd::EnableToolTips(BOOL bEnable)
{
    m_bToolTips = bEnable != FALSE;
    const ThreadState* state = FindThreadState();
    if (!bEnable && m_hWnd != nullptr && state != nullptr && state->tips.window == m_hWnd)
        CancelToolTips();
    return m_bToolTips;
}

void AFXAPI CWnd::CancelToolTips(BOOL)
{
    ThreadTips& tips = GetThreadState()->tips;
    Silence(tips);
    tips = {tips.control};
}

void CWnd::FilterToolTipMessage(MSG* pMsg)
{
    switch (pMsg->message) {
    case WM_MOUSEMOVE:
    case WM_NCMOUSEMOVE:
        if (m_bToolTips)
            ShowToolTip(*pMsg);
        break;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        CancelToolTips(TRUE);
        break;
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_NCLBUTTONDOWN:
    case WM_NCRBUTTONDOWN:
    case WM_NCMBUTTONDOWN:
        Silence(GetThreadState()->tips);
        break;
    default:
        break;
    }
}

void CWnd::ShowToolTip(const MSG& message)
{
    for (HWND inner = message.hwnd; inner != nullptr && inner != m_hWnd; inner = ::GetParent(inner)) {
        const CWnd* window = FromHandlePermanent(inner);
        if (window != nullptr && window->m_bToolTips)
            return; // which has decided already
    }
    CPoint point = PlaceOf(message);
    const CPoint place = point;
    ScreenToClient(&point);
    TOOLINFOA tool = ToolOf(m_hWnd, 0);
    tool.lpszText = LPSTR_TEXTCALLBACKA;
    const INT_PTR hit = OnToolHitTest(point, &tool);
    if (hit == -1) {
        CancelToolTips();
        return;
    }
    ThreadTips& tips = GetThreadState()->tips;
    const bool isNew = tips.window != m_hWnd || tips.hit != hit || tips.id != tool.uId;
    if (isNew)
        CancelToolTips();
    const HWND control = TipControl(tips, TopOf(m_hWnd));
    if (control == nullptr)
        return;
    tips = {control, m_hWnd, hit, tool.uId};
    SendTool(control, isNew ? TTM_ADDTOOL : TTM_NEWTOOLRECT, tool);
    MSG relayed = message;
    relayed.message = WM_MOUSEMOVE;
    relayed.hwnd = (tool.uFlags & TTF_IDISHWND) != 0 ? reinterpret_cast<HWND>(tool.uId) : m_hWnd;
    point = place;
    ::ScreenToClient(relayed.hwnd, &point);
    relayed.lParam = MAKELPARAM(point.x, point.y);
    ::SendMessage(control, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
}

namespace {

/// The visible child of \p window at a point of the screen; one that the mouse passes through, as it does through the
/// frame of a group, only if there is no other. \return null: none
HWND ChildAt(HWND window, CPoint point)
{
    HWND passed = nullptr;
    for (HWND child = ::GetWindow(window, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        CRect area;
        ::GetWindowRect(child, &area);
        if ((::GetWindowLong(child, GWL_STYLE) & WS_VISIBLE) == 0 || !area.PtInRect(point))
            continue;
        if (::SendMessage(child, WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y)) != HTTRANSPARENT)
            return child;
        if (passed == nullptr)
            passed = child;
    }
    return passed;
}

} // namespace

INT_PTR CWnd::OnToolHitTest(CPoint point, tagTOOLINFOA* pTI) const
{
    CRect client;
    GetClientRect(&client);
    CPoint place = point;
    ClientToScreen(&place);
    const HWND child = client.PtInRect(point) ? ChildAt(m_hWnd, place) : nullptr;
    const int id = child != nullptr ? ::GetDlgCtrlID(child) : -1;
    if (id == -1 || id == 0xFFFF) // as texts have
        return -1;
    if (pTI != nullptr) {
        pTI->hwnd = m_hWnd;
        pTI->uId = reinterpret_cast<UINT_PTR>(child);
        pTI->lpszText = LPSTR_TEXTCALLBACKA;
        pTI->uFlags |= TTF_IDISHWND;
    }
    return id;
}
