#include "event_queue.h"

#include <utility>

namespace telsim {

namespace {

constexpr char kClassName[] = "Simulated telephony events";
constexpr UINT kEventMessage = WM_APP;
constexpr UINT_PTR kTimer = 1;

/// The module that this code is in.
HINSTANCE ThisModule()
{
    MEMORY_BASIC_INFORMATION memory = {};
    VirtualQuery(reinterpret_cast<const void*>(&ThisModule), &memory, sizeof memory);
    return static_cast<HINSTANCE>(memory.AllocationBase);
}

/// The class goes when its last window has gone: the library may be unloaded, and loaded again elsewhere.
int g_windows = 0;

} // namespace

EventQueue::EventQueue()
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = &EventQueue::WindowProc;
    windowClass.hInstance = ThisModule();
    windowClass.lpszClassName = kClassName;
    RegisterClassA(&windowClass); // fails when it is there already
    m_window = CreateWindowA(kClassName, "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, windowClass.hInstance, nullptr);
    if (m_window == nullptr)
        return;
    ++g_windows;
    SetWindowLongPtrA(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

EventQueue::~EventQueue()
{
    if (m_window == nullptr)
        return;
    SetWindowLongPtrA(m_window, GWLP_USERDATA, 0);
    DestroyWindow(m_window);
    if (--g_windows == 0)
        UnregisterClassA(kClassName, ThisModule());
}

void EventQueue::Post(DWORD delay, std::function<void()> event)
{
    if (delay == 0) {
        MakeReady(std::move(event));
        return;
    }
    const DWORD due = GetTickCount() + delay;
    auto place = m_later.begin();
    while (place != m_later.end() && static_cast<LONG>(place->due - due) <= 0)
        ++place;
    m_later.insert(place, Later{due, std::move(event)});
    SetTimerForNext();
}

void EventQueue::MakeReady(std::function<void()> event)
{
    m_ready.push_back(std::move(event));
    PostMessageA(m_window, kEventMessage, 0, 0);
}

void EventQueue::SetTimerForNext()
{
    if (m_later.empty()) {
        KillTimer(m_window, kTimer);
        return;
    }
    const auto rest = static_cast<LONG>(m_later.front().due - GetTickCount());
    SetTimer(m_window, kTimer, rest > 0 ? static_cast<UINT>(rest) : 1, nullptr);
}

void EventQueue::OnTimer()
{
    const DWORD now = GetTickCount();
    while (!m_later.empty() && static_cast<LONG>(m_later.front().due - now) <= 0) {
        MakeReady(std::move(m_later.front().event));
        m_later.pop_front();
    }
    SetTimerForNext();
}

LRESULT CALLBACK EventQueue::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* self = reinterpret_cast<EventQueue*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (self == nullptr || (message != kEventMessage && message != WM_TIMER))
        return DefWindowProcA(window, message, wParam, lParam);
    try {
        if (message == WM_TIMER) {
            self->OnTimer();
        } else if (!self->m_ready.empty()) {
            const std::function<void()> event = std::move(self->m_ready.front());
            self->m_ready.pop_front();
            event(); // which may have destroyed the queue
        }
    } catch (...) {
        OutputDebugStringA("telsim: an event could not be delivered\n");
    }
    return 0;
}

} // namespace telsim
