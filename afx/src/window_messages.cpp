// Messages on their way to a window's handlers, and the modal loop.
#include "thread_state.h"

#include <utility>

struct AfxMessageDelivery {
    static LRESULT ToWindow(CWnd* window, const MSG& message)
    {
        return window->WindowProc(message.message, message.wParam, message.lParam);
    }
};

LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam)
{
    ThreadState* state = FindThreadState();
    CWnd* window = state != nullptr ? state->windows.FindPermanent(hWnd) : nullptr;
    if (window == nullptr)
        return ::DefWindowProc(hWnd, nMsg, wParam, lParam);

    const MSG message = {hWnd, nMsg, wParam, lParam, 0, {}};
    const MSG outer = std::exchange(state->lastMessage, message);
    LRESULT result;
    try {
        result = AfxMessageDelivery::ToWindow(window, message);
    } catch (CException* e) { // none may pass the system's frames below
        result = state->thread != nullptr ? state->thread->ProcessWndProcException(e, &message)
                                          : AnswerFailedMessage(e, &message);
        e->Delete();
    }
    state->lastMessage = outer;
    return result;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    return OnWndMsg(message, wParam, lParam, &result) ? result : DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return m_pfnSuper != nullptr ? ::CallWindowProc(m_pfnSuper, m_hWnd, message, wParam, lParam)
                                 : ::DefWindowProc(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default()
{
    const MSG message = GetThreadState()->lastMessage;
    return DefWindowProc(message.message, message.wParam, message.lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message == WM_COMMAND && OnCommand(wParam, lParam)) {
        *pResult = 1;
        return TRUE;
    }
    if (message == WM_NOTIFY && lParam != 0 && OnNotify(wParam, lParam, pResult))
        return TRUE;
    if (message == WM_COMMAND || message == WM_NOTIFY)
        return FALSE;

    AFX_CALL call;
    call.wParam = wParam;
    call.lParam = lParam;
    if (DispatchMessageMap(message, 0, 0, call)) {
        *pResult = call.lResult;
        return TRUE;
    }

    HWND control = nullptr; // the messages by which a parent draws for a control go back to the control
    switch (message) {
    case WM_DRAWITEM:
        control = reinterpret_cast<DRAWITEMSTRUCT*>(lParam)->hwndItem;
        break;
    case WM_COMPAREITEM:
        control = reinterpret_cast<COMPAREITEMSTRUCT*>(lParam)->hwndItem;
        break;
    case WM_MEASUREITEM:
        control = ::GetDlgItem(m_hWnd, static_cast<int>(wParam));
        break;
    default:
        return FALSE;
    }
    CWnd* child = control != nullptr ? FromHandlePermanent(control) : nullptr;
    return child != nullptr && child->OnChildNotify(message, wParam, lParam, pResult);
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const UINT id = LOWORD(wParam);
    const int code = lParam != 0 ? HIWORD(wParam) : CN_COMMAND;
    if (CWnd* control = FromHandlePermanent(reinterpret_cast<HWND>(lParam))) {
        LRESULT result = 0;
        if (control->OnChildNotify(WM_COMMAND, wParam, lParam, &result))
            return TRUE;
    }
    if (lParam != 0 && m_bExchanging)
        return TRUE;
    return OnCmdMsg(id, code, nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    auto* header = reinterpret_cast<NMHDR*>(lParam);
    if (CWnd* control = FromHandlePermanent(header->hwndFrom)) {
        if (control->OnChildNotify(WM_NOTIFY, wParam, lParam, pResult))
            return TRUE;
    }
    AFX_NOTIFY notify = {pResult, header};
    return OnCmdMsg(static_cast<UINT>(header->idFrom), MAKELONG(header->code, WM_NOTIFY), &notify, nullptr);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    UINT code = 0;
    AFX_CALL call;
    call.wParam = wParam;
    call.lParam = lParam;
    AFX_NOTIFY notify = {pResult, nullptr};
    if (message == WM_COMMAND) {
        code = HIWORD(wParam);
    } else if (message == WM_NOTIFY) {
        notify.pNMHDR = reinterpret_cast<NMHDR*>(lParam);
        code = notify.pNMHDR->code;
        call.pExtra = &notify;
    }
    if (!DispatchMessageMap(message + WM_REFLECT_BASE, code, 0, call))
        return FALSE;
    if (message != WM_NOTIFY)
        *pResult = call.lResult;
    return TRUE;
}

void CWnd::OnInitMenuPopup(HMENU hMenu, UINT, BOOL bSysMenu)
{
    if (bSysMenu) {
        Default();
        return;
    }
    const int count = ::GetMenuItemCount(hMenu);
    for (int index = 0; index < count; ++index) {
        const UINT id = ::GetMenuItemID(hMenu, index);
        if (id == 0 || id == static_cast<UINT>(-1)) // a separator, a popup
            continue;
        CCmdUI item;
        item.m_nID = id;
        item.m_nIndex = static_cast<UINT>(index);
        item.m_hMenu = hMenu;
        if (!OnCmdMsg(id, static_cast<int>(CN_UPDATE_COMMAND_UI), &item, nullptr))
            item.Enable(OnCmdMsg(id, CN_COMMAND, nullptr, &item)); // grey what nothing would answer
    }
}

BOOL CWnd::PreTranslateMessage(MSG*) { return FALSE; }

int CWnd::RunModalLoop()
{
    m_bModalRunning = TRUE;
    if (!IsWindowVisible()) {
        ShowWindow(SW_SHOWNORMAL);
        UpdateWindow();
    }
    while (m_bModalRunning) {
        MSG message;
        if (!PumpOneMessage(&message)) {
            ::PostQuitMessage(static_cast<int>(message.wParam)); // for the loop that this one runs in
            m_bModalRunning = FALSE;
            return -1;
        }
        if (m_bModalRunning)
            IdleUntilMessage();
    }
    return m_nModalResult;
}

void CWnd::EndModalLoop(int nResult)
{
    m_nModalResult = nResult;
    if (std::exchange(m_bModalRunning, FALSE))
        PostMessage(WM_NULL); // wakes the loop
}
