/// \file
/// What the framework keeps for each thread: windows belong to the thread that made them.
#pragma once

#include <afxwin.h>

/// Windows by handle. Permanent objects belong to their makers; temporary ones to the map.
class WindowMap {
public:
    ~WindowMap() { DeleteTemporary(); }

    CWnd* FindPermanent(HWND handle) const
    {
        CWnd* window = nullptr;
        return m_permanent.Lookup(handle, window) ? window : nullptr;
    }
    void SetPermanent(HWND handle, CWnd* window) { m_permanent.SetAt(handle, window); }
    void RemovePermanent(HWND handle) { m_permanent.RemoveKey(handle); }

    /// The object of \p handle, a temporary one if it has none.
    CWnd* FromHandle(HWND handle);
    void DeleteTemporary();

private:
    CMap<HWND, HWND, CWnd*, CWnd*> m_permanent;
    CMap<HWND, HWND, CWnd*, CWnd*> m_temporary;
};

struct AfxWindowHook;

struct ThreadState {
    CWinThread* thread = nullptr;
    MSG lastMessage = {};                ///< being handled, for CWnd::Default
    AfxWindowHook* windowHook = nullptr; ///< waits for the next window to be created
    WindowMap windows;
};

/// The calling thread's state; null when it has none, and then it has no windows either.
ThreadState* FindThreadState();
/// The calling thread's state, made on first use.
ThreadState* GetThreadState();

/// Waits for a message, offers it to the windows and dispatches it. \return FALSE for WM_QUIT, left in \p message.
BOOL PumpOneMessage(MSG* message);
/// Calls the thread's OnIdle for as long as it asks for it and no message waits.
void IdleUntilMessage();
/// The result of a message whose handler failed with \p e; tells the user of it.
LRESULT AnswerFailedMessage(CException* e, const MSG* message);
