/// \file
/// The owner of a modal window.
#pragma once

#include <afxwin.h>

#include <utility>

/// Keeps the user from a window while it lives.
class DisabledWindow {
public:
    explicit DisabledWindow(HWND window)
        : m_window(window), m_disabled(window != nullptr && !::EnableWindow(window, FALSE))
    {
    }
    ~DisabledWindow() { Release(); }
    DisabledWindow(const DisabledWindow&) = delete;
    DisabledWindow& operator=(const DisabledWindow&) = delete;
    void Release()
    {
        if (std::exchange(m_disabled, FALSE))
            ::EnableWindow(m_window, TRUE);
    }

private:
    HWND m_window;
    BOOL m_disabled;
};

/// The top-level window that a modal one belongs to. \param parent null: the window of the thread's main window and its
/// popups that was active last. \return null when there is none
inline HWND FindModalOwner(const CWnd* parent)
{
    HWND owner = parent != nullptr ? parent->m_hWnd : nullptr;
    while (owner != nullptr && (::GetWindowLong(owner, GWL_STYLE) & WS_CHILD) != 0)
        owner = ::GetParent(owner);
    const CWnd* main = AfxGetMainWnd();
    if (owner != nullptr || parent != nullptr || main == nullptr)
        return owner;
    const HWND popup = ::GetLastActivePopup(main->m_hWnd);
    return ::IsWindowVisible(popup) ? popup : main->m_hWnd;
}

/// The window at the top of the owners of \p owner, which must not be used meanwhile either; null when that is itself.
inline HWND FindTopOwner(HWND owner)
{
    HWND top = owner;
    for (HWND next = owner; next != nullptr; next = ::GetWindow(next, GW_OWNER))
        top = next;
    return top != owner ? top : nullptr;
}

/// Disables the owner, and the window at the top of its owners, while the modal window is there, and gives it the
/// activation back. The window is hidden, not destroyed, before this ends, so that the owner is enabled while it can
/// still become the active one.
class ModalOwner {
public:
    explicit ModalOwner(const CWnd* parent)
        : m_owner(FindModalOwner(parent)), m_disabledTop(FindTopOwner(m_owner)), m_disabledOwner(m_owner)
    {
    }
    ~ModalOwner() { Release(nullptr); }
    ModalOwner(const ModalOwner&) = delete;
    ModalOwner& operator=(const ModalOwner&) = delete;

    HWND GetHandle() const { return m_owner; } ///< a top-level window or null
    /// Hides \p modal, null when there is none, and gives the owner back to the user.
    void Release(HWND modal)
    {
        if (modal != nullptr)
            ::SetWindowPos(modal, nullptr, 0, 0, 0, 0,
                           SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
        m_disabledTop.Release();
        m_disabledOwner.Release();
        if (modal != nullptr && m_owner != nullptr && ::GetActiveWindow() == modal)
            ::SetActiveWindow(m_owner);
    }

private:
    HWND m_owner;
    DisabledWindow m_disabledTop;
    DisabledWindow m_disabledOwner;
};
