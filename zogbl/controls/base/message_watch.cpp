#include "message_watch.h"

namespace {

thread_local MessageWatch* t_newest = nullptr;
thread_local HHOOK t_hook = nullptr; // while there is a watch

} // namespace

BOOL MessageWatch::Begin()
{
    if (m_isActive)
        return TRUE;
    if (t_hook == nullptr)
        t_hook = ::SetWindowsHookEx(WH_GETMESSAGE, &Hook, nullptr, ::GetCurrentThreadId());
    if (t_hook == nullptr)
        return FALSE;
    m_older = t_newest;
    t_newest = this;
    return m_isActive = TRUE;
}

void MessageWatch::End()
{
    if (!m_isActive)
        return;
    m_isActive = FALSE;
    MessageWatch** link = &t_newest;
    while (*link != this)
        link = &(*link)->m_older;
    *link = m_older;
    if (t_newest == nullptr) {
        ::UnhookWindowsHookEx(t_hook);
        t_hook = nullptr;
    }
}

LRESULT CALLBACK MessageWatch::Hook(int code, WPARAM removed, LPARAM message)
{
    auto* taken = reinterpret_cast<MSG*>(message);
    // The newest one alone: a popup that opens during a drag has the say until it closes.
    if (code == HC_ACTION && (removed & PM_REMOVE) != 0 && t_newest != nullptr && t_newest->OnMessage(*taken))
        taken->message = WM_NULL;
    return ::CallNextHookEx(nullptr, code, removed, message);
}
