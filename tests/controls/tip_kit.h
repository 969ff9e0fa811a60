/// \file
/// The tips of controls.
#pragma once

#include "controls/control_kit.h"

#include <commctrl.h>

/// The tip that this thread shows; empty if there is none.
inline std::string ShownTip()
{
    char text[2000] = "";
    for (HWND tip = nullptr; (tip = ::FindWindowExA(nullptr, tip, TOOLTIPS_CLASSA, nullptr)) != nullptr;) {
        if (::GetWindowThreadProcessId(tip, nullptr) == ::GetCurrentThreadId() && ::IsWindowVisible(tip))
            ::GetWindowTextA(tip, text, sizeof text);
    }
    return text;
}
/// The tip that comes if the mouse rests at a point of a control, where it stays; empty if none comes.
/// \param tries a late move of the real mouse may come between
inline std::string TipOver(CWnd& control, CPoint point, int tries = 8)
{
    CPoint place = point;
    control.ClientToScreen(&place);
    ::SetCursorPos(place.x, place.y);
    for (int i = 0; i < tries && ShownTip().empty(); ++i) {
        SendMouse(control, WM_MOUSEMOVE, point);
        const DWORD start = ::GetTickCount();
        WaitUntil([=] { return !ShownTip().empty() || ::GetTickCount() - start > 800; });
    }
    return ShownTip();
}
