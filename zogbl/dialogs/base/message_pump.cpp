#include "message_pump.h"

#include <common/without_throwing.h>

namespace {

constexpr DWORD kLongestPump = 50; // milliseconds, for messages, and for timers

constexpr struct {
    UINT first, last;
} kInput[] = {{WM_KEYFIRST, WM_KEYLAST}, {WM_NCMOUSEMOVE, WM_NCMBUTTONDBLCLK}, {WM_MOUSEFIRST, WM_MOUSELAST}};

void Dispatch(CDialog& dialog, MSG& message)
{
    CWinThread* thread = AfxGetThread(); // null in a host without an application object
    if (thread != nullptr ? thread->PreTranslateMessage(&message)
                          : dialog.m_hWnd != nullptr && dialog.IsDialogMessage(&message))
        return;
    ::TranslateMessage(&message);
    ::DispatchMessage(&message);
}

/// Messages of a window, or of all, as long as there are some and the time is not over. \return FALSE: to quit
BOOL Pump(CDialog& dialog, const BOOL& isEnough, DWORD begun, HWND window, UINT first, UINT last)
{
    MSG message;
    while (!isEnough && ::GetTickCount() - begun < kLongestPump &&
           ::PeekMessage(&message, window, first, last, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam)); // for the loop that waits for it
            return FALSE;
        }
        WithoutThrowing([&] { Dispatch(dialog, message); });
    }
    return TRUE;
}

} // namespace

BOOL PumpMessages(CDialog& dialog, const CWnd& bar, const BOOL& isEnough)
{
    const DWORD begun = ::GetTickCount();
    for (const auto& [first, last] : kInput) {
        if (!Pump(dialog, isEnough, begun, nullptr, first, last))
            return FALSE;
    }
    if (!Pump(dialog, isEnough, begun, nullptr, 0, 0))
        return FALSE;
    if (dialog.m_hWnd == nullptr)
        return TRUE;
    Pump(dialog, isEnough, ::GetTickCount(), bar.m_hWnd, WM_TIMER, WM_TIMER);
    ::RedrawWindow(dialog.m_hWnd, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    return TRUE;
}
