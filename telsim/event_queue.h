/// \file
/// Things that happen to an application, on its own thread.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <list>

namespace telsim {

/// A hidden window of the thread that makes it. An event is a posted message, or a timer first and then a message; so
/// it happens while the thread takes messages from its queue, and waiting for it costs nothing. Each event has a
/// message of its own: an event that itself takes messages lets the next ones happen.
class EventQueue {
public:
    EventQueue();
    /// What has not happened by now never does. An event may destroy its own queue.
    ~EventQueue();
    EventQueue(const EventQueue&) = delete;
    EventQueue& operator=(const EventQueue&) = delete;

    /// FALSE when the window could not be made.
    bool IsOpen() const { return m_window != nullptr; }
    /// \param delay milliseconds. Events of equal time happen in the order of the calls.
    void Post(DWORD delay, std::function<void()> event);
    size_t Count() const { return m_ready.size() + m_later.size(); }

private:
    struct Later {
        DWORD due; // GetTickCount
        std::function<void()> event;
    };

    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void MakeReady(std::function<void()> event);
    void OnTimer();
    void SetTimerForNext();

    HWND m_window;
    std::deque<std::function<void()>> m_ready; // as many as messages are under way
    std::list<Later> m_later;                  // by time
};

} // namespace telsim
