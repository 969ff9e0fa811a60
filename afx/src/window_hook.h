/// \file
/// Catches a window at the moment it begins to exist, so that its CWnd sees every message, the first ones included.
#pragma once

#include <afxwin.h>

struct AfxWindowHook {
    /// The next window that the thread creates becomes the one of \p window.
    explicit AfxWindowHook(CWnd* window);
    ~AfxWindowHook();
    AfxWindowHook(const AfxWindowHook&) = delete;
    AfxWindowHook& operator=(const AfxWindowHook&) = delete;

    bool IsSet() const { return m_hook != nullptr; } ///< else a window would begin without its object: make none
    bool HasCaught() const { return m_caught; }      ///< whether the window began to exist

private:
    static LRESULT CALLBACK Procedure(int code, WPARAM wParam, LPARAM lParam);

    HHOOK m_hook;
    CWnd* m_window;
    bool m_caught = false;
};
