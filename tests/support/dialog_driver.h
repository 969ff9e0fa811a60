/// \file
/// Modal windows driven as a person would: by clicks and keys on real windows.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace zo_test {

/// Hands each modal window of the test's thread (dialog, sheet, message box) to the next act, in the order in which
/// they open; also one that an act itself makes open, while that act runs. An act closes its window, or makes somebody
/// close it. A window that nobody expects, or that is open still after the last act, is a failure and is closed.
/// Destroyed, the driver expects all acts to have had their window. One at a time.
class DialogDriver {
public:
    using Act = std::function<void(HWND window)>;

    explicit DialogDriver(std::vector<Act> acts);
    DialogDriver(std::initializer_list<Act> acts) : DialogDriver(std::vector<Act>(acts)) {}
    ~DialogDriver();
    DialogDriver(const DialogDriver&) = delete;
    DialogDriver& operator=(const DialogDriver&) = delete;

private:
    static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD);
    void Meet(HWND window);

    static DialogDriver* s_driver;
    std::vector<Act> m_acts;
    size_t m_next = 0;
    int m_running = 0; // acts that have begun and not returned
    std::vector<HWND> m_met;
    UINT_PTR m_timer;
};

/// An act that expects a message box with this text and presses the button of that number.
DialogDriver::Act AnswerBox(std::string text, int button);

/// The text of a window, of any length; of a message box what it says, of a control its own.
std::string TextOf(HWND window);
std::string TextOf(HWND dialog, int control);
/// What a message box says.
std::string BoxText(HWND box);

/// Clicks a button that is visible and enabled; anything else is a failure.
void Press(HWND dialog, int button);
/// Clicks into a control, in pixels from its upper left corner.
void ClickAt(HWND control, int x, int y);
/// Selects a row of a list box or an entry of a combo box, and lets the dialog know.
void Choose(HWND dialog, int list, int row);

/// Gives a control the focus, selects what it holds and types over it; control characters are typed as they are.
void Type(HWND dialog, int control, const std::string& text);

/// What Key adds to the key.
enum Modifier { kNoModifier = 0, kShift = 1, kControl = 2 };
/// Presses and releases a key where the focus is. It goes through the key handling of the windows, \p dialog the last.
void Key(HWND dialog, UINT virtualKey, int modifiers = kNoModifier);
/// Alt and a letter.
void AccessKey(HWND dialog, char letter);
/// The number of the control that has the focus, -1 when it is none of the dialog's.
int FocusOf(HWND dialog);

} // namespace zo_test
