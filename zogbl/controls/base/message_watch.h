/// \file
/// Looking at a thread's messages before their windows get them.
#pragma once

#include <afxwin.h>

/// While a drag or a popup lasts, its control must hear of Esc and of clicks that go to other windows. Such a control
/// has a watch, and begins and ends it.
class MessageWatch {
public:
    MessageWatch() = default;
    MessageWatch(const MessageWatch&) = delete;
    MessageWatch& operator=(const MessageWatch&) = delete;

    /// From now on OnMessage is called for each message that the thread takes from its queue.
    /// \return FALSE if the system refuses it
    BOOL Begin();
    void End();
    BOOL IsActive() const { return m_isActive; }

protected:
    virtual ~MessageWatch() { End(); }
    /// May end the watch, and the object with it. It must not throw.
    /// \return TRUE: nobody else gets the message
    virtual BOOL OnMessage(const MSG& message) = 0;

private:
    static LRESULT CALLBACK Hook(int code, WPARAM removed, LPARAM message);

    BOOL m_isActive = FALSE;
    MessageWatch* m_older = nullptr;
};
