/// \file
/// The owner of a modal window.
#pragma once

#include <afxwin.h>

/// Disables the owner while the modal window is there, and gives it the activation back. The window is hidden, not
/// destroyed, before this ends, so that the owner is enabled while it can still become the active one.
class ModalOwner {
public:
    /// \param parent null: the main window of the thread
    explicit ModalOwner(CWnd* parent)
    {
        if (parent == nullptr)
            parent = AfxGetMainWnd();
        m_owner = parent != nullptr ? parent->m_hWnd : nullptr;
        while (m_owner != nullptr && (::GetWindowLong(m_owner, GWL_STYLE) & WS_CHILD) != 0)
            m_owner = ::GetParent(m_owner);
        m_disabled = m_owner != nullptr && !::EnableWindow(m_owner, FALSE);
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
        if (m_disabled)
            ::EnableWindow(m_owner, TRUE);
        m_disabled = FALSE;
        if (modal != nullptr && m_owner != nullptr && ::GetActiveWindow() == modal)
            ::SetActiveWindow(m_owner);
    }

private:
    HWND m_owner;
    BOOL m_disabled;
};
