/// \file
/// The tips of displays.
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
/// The tip that comes if the mouse rests at a point of a control, where it stays.
inline std::string TipOver(CWnd& control, CPoint point)
{
    CPoint place = point;
    control.ClientToScreen(&place);
    ::SetCursorPos(place.x, place.y);
    SendMouse(control, WM_MOUSEMOVE, point);
    EXPECT_TRUE(WaitUntil([] { return !ShownTip().empty(); }));
    return ShownTip();
}
