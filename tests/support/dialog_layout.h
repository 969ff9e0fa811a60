/// \file
/// Dialogs measured and walked through, as they stand on the screen.
#pragma once

#include <afxwin.h>

#include <string>
#include <vector>

namespace zo_test {

/// A control of a dialog.
struct DialogControl {
    HWND window;
    int id;
    RECT place; // in the dialog
    bool isStatic;
    bool isButton;
    bool isSpin;
    DWORD kind; // of its class: SS_ or BS_
    DWORD style;
    std::wstring text;

    bool IsGroupBox() const { return isButton && kind == BS_GROUPBOX; }
    bool IsPicture() const
    {
        return isStatic && (kind == SS_ICON || kind == SS_BITMAP || (kind >= SS_BLACKRECT && kind <= SS_WHITEFRAME) ||
                            (kind >= SS_ETCHEDHORZ && kind <= SS_ETCHEDFRAME));
    }
    /// May have others on it.
    bool IsFrame() const { return IsGroupBox() || (IsPicture() && kind != SS_ICON && kind != SS_BITMAP); }
};

/// In the order of Tab.
std::vector<DialogControl> ControlsOf(HWND dialog);

/// Expects that the control has room for its text.
void ExpectFits(const DialogControl& control);
/// Expects that title and texts fit, no control lies outside or over another. Hidden controls count as long as the
/// dialog itself is hidden.
void ExpectTidy(HWND dialog);

/// Goes through an open dialog by Tab, and back by Shift+Tab. Expects that each stop comes once a round, that the way
/// back is the same, and that at each stop one button is the default one, if the dialog has buttons at all. \return the
/// numbers of a round's stops, from the first
std::vector<int> ExpectTabRounds(HWND dialog, int steps = 200);

} // namespace zo_test
