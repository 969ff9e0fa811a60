/// \file
/// The window that drops down from a control.
#pragma once

#include "message_watch.h"

#include <zogbl/control.h>

/// Holds one control and shows it beside another, the owner, without taking the focus: keys go to the owner, or to the
/// window that has the keyboard for it, which hands them on as it sees fit. It stays in the work area of the screen.
/// Screen readers hear that its content has the focus; that the owner has it again, that one says.
///
/// It closes by Close; if a mouse button goes down elsewhere in the thread's windows; if another window or program
/// comes to the front, or the owner loses the focus; and if the owner is hidden, disabled, moved or destroyed. A click
/// on the owner is swallowed, so that it does not open the popup again; others go on.
class ControlPopup : public CWnd, private MessageWatch {
public:
    /// Hears of the end, however it came. The popup is closed then, and may be deleted or opened again.
    class Client {
    public:
        virtual void OnPopupClosed() = 0;

    protected:
        ~Client() = default;
    };

    explicit ControlPopup(Client& client) : m_client(client) {}
    ~ControlPopup() override;

    /// Opens it below the owner or its keyboard's owner, above if there is no room, in the owner's direction.
    /// \param content has no window yet; it gets one, and its notifications go to the owner's own window
    /// \param size of the content, in pixels \return FALSE: nothing is open
    /// \param keyboard has the focus for the owner; null: the owner itself
    BOOL Open(CWnd& owner, CZoControl& content, DWORD contentStyle, CSize size, HWND keyboard = nullptr);
    void Close() { DestroyWindow(); }
    BOOL IsOpen() const { return m_hWnd != nullptr; }

protected:
    BOOL OnMessage(const MSG& message) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void PostNcDestroy() override;

private:
    CRect PlaceFor(CSize size) const;
    CRect GetContentArea() const;
    void LookAtOwner();

    Client& m_client;
    HWND m_owner = nullptr;
    HWND m_keyboard = nullptr; // its own, if nobody else's
    CRect m_area;              // of that window on the screen, when it opened
};
