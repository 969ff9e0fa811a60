#include "message_pump.h"

#include <common/without_throwing.h>

namespace {

constexpr DWORD kLongestPump = 50; // milliseconds

void Dispatch(CDialog& dialog, MSG& message)
{
    CWinThread* thread = AfxGetThread(); // null in a host without an application object
    if (thread != nullptr ? thread->PreTranslateMessage(&message)
                          : dialog.m_hWnd != nullptr && dialog.IsDialogMessage(&message))
        return;
    ::TranslateMessage(&message);
    ::DispatchMessage(&message);
}

} // namespace

BOOL PumpMessages(CDialog& dialog, const BOOL& isEnough)
{
    const DWORD begun = ::GetTickCount();
    MSG message;
    while (!isEnough && ::GetTickCount() - begun < kLongestPump && ::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam)); // for the loop that waits for it
            return FALSE;
        }
        WithoutThrowing([&] { Dispatch(dialog, message); });
    }
    return TRUE;
}
