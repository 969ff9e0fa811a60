/// \file
/// What the line interfaces of a process share.
#pragma once

#include <zogbl/tapi_interface.h>

/// A reply that came before the function that asked for it had returned the request's number. Nobody waits for it yet.
struct EarlyReply {
    const CZoTAPIInterface* object;
    LONG request;
    LONG result;
};

struct TapiState {
    /// Set by whatever wait of its kind ends. A wait that runs within another one so ends that too.
    BOOL m_bAbortReply = FALSE;
    BOOL m_bAbortCallState = FALSE;
    EarlyReply m_earlyReply = {};
    /// CZoTAPIInterface* that are initialised: news of the service as a whole name no object.
    CPtrArray m_interfaces;

    /// \return FALSE when memory lacks.
    BOOL Enter(CZoTAPIInterface* object);
    void Leave(CZoTAPIInterface* object);
};

TapiState& GetTapiState();

// Milliseconds slept at a time while no message comes. Whatever ends a wait comes as a message of the thread, so that
// waking up in between would be for nothing.
constexpr DWORD kWaitSlice = 5000;

/// Takes one message from the thread's queue and dispatches it, or sleeps until one comes, at most \p milliseconds.
/// \return FALSE on WM_QUIT, which is left in the queue.
BOOL PumpMessage(DWORD milliseconds = kWaitSlice);
