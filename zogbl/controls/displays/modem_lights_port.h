/// \file
/// Asking a port for its lines without waiting for the answer.
#pragma once

#include "ground/system_handle.h"

/// Asks in a thread of its own. On a handle that is not for overlapped use, the question waits behind a pending read;
/// then there is no answer, and nobody waits for it.
class PortWatch {
public:
    enum class Answer : LONG {
        kNone,    ///< nothing was asked since the last answer was taken
        kPending, ///< there is no answer yet
        kLines,   ///< MS_..._ON
        kError    ///< the port failed
    };

    /// \param port stays the caller's \param status gets 0 or why there is none \return null then
    static PortWatch* Begin(HANDLE port, DWORD& status);
    /// The object may not be used any more. It and its thread end when the pending question is answered.
    void End();

    void Ask(); ///< not while an answer is pending
    /// \param value gets the lines or the error
    Answer Take(DWORD& value);

private:
    explicit PortWatch(HANDLE port) : m_port(port) {}
    ~PortWatch() = default;
    static DWORD WINAPI Run(LPVOID watch);
    void Release();

    HANDLE m_port;
    SystemHandle m_asked;        // an event
    HMODULE m_library = nullptr; // stays loaded for the thread
    LONG m_references = 2;       // the owner and the thread
    LONG m_isOver = FALSE;
    LONG m_answer = static_cast<LONG>(Answer::kNone);
    DWORD m_value = 0;
};
