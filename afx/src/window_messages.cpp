// Messages on their way to a window's handlers, and the modal loop.
#include "thread_state.h"

#include <commctrl.h>

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
    if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) { // one entry serves them all
        call.nID = message - WM_CTLCOLORMSGBOX;
        if (DispatchMessageMap(WM_CTLCOLOR, 0, 0, call)) {
            *pResult = call.lResult;
            return TRUE;
        }
    }
    return ReflectToControl(message, wParam, lParam, pResult);
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
    const bool ofTip = header->code <= TTN_FIRST && header->code >= TTN_LAST; // from a tool, not a control
    return OnCmdMsg(ofTip ? 0 : static_cast<UINT>(header->idFrom), MAKELONG(header->code, WM_NOTIFY), &notify, nullptr);
}

BOOL CWnd::PreTranslateMessage(MSG* pMsg)
{
    FilterToolTipMessage(pMsg);
    return FALSE;
}

int CWnd::RunModalLoop(DWORD dwFlags)
{
    m_bModalRunning = TRUE;
    bool hidden = !IsWindowVisible();
    const auto show = [&] {
        if (std::exchange(hidden, false)) {
            ShowWindow(SW_SHOWNORMAL);
            UpdateWindow();
        }
    };
    if ((dwFlags & MLF_SHOWONIDLE) == 0)
        show();
    const HWND parent = ::GetParent(m_hWnd);
    do {
        MSG message;
        for (LONG count = 0; !::PeekMessage(&message, nullptr, 0, 0, PM_NOREMOVE); ++count) {
            show();
            if (count == 0 && parent != nullptr && (dwFlags & MLF_NOIDLEMSG) == 0)
                ::SendMessage(parent, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(m_hWnd));
            if ((dwFlags & MLF_NOKICKIDLE) != 0 || SendMessage(WM_KICKIDLE, MSGF_DIALOGBOX, count) == 0)
                break;
        }
        if (!PumpOneMessage(&message)) {
            ::PostQuitMessage(static_cast<int>(message.wParam)); // for the loop that this one runs in
            m_bModalRunning = FALSE;
            return -1;
        }
    } while (ContinueModal());
    return m_nModalResult;
}

void CWnd::EndModalLoop(int nResult)
{
    m_nModalResult = nResult;
    if (std::exchange(m_bModalRunning, FALSE))
        PostMessage(WM_NULL); // wakes the loop
}
