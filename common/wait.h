/// \file
/// Waiting while the windows stay alive.
#pragma once

#include <windows.h>

/// Handles the messages that wait, those that painting causes included.
inline void Settle()
{
    MSG message;
    while (::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&message);
        ::DispatchMessage(&message);
    }
}

/// Waits, at most half a minute, until \p condition holds. \return whether it does.
template <class CONDITION> bool WaitUntil(CONDITION condition)
{
    constexpr DWORD kPatience = 30000; // milliseconds
    constexpr DWORD kPause = 10;
    for (const DWORD start = ::GetTickCount(); ::GetTickCount() - start < kPatience;) {
        if (condition())
            return true;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, kPause, QS_ALLINPUT);
        Settle();
    }
    return condition();
}
