/// \file
/// Modal windows driven as a person would: by clicks and keys on real windows.
#pragma once

#include <gtest/gtest.h>

#include <afxwin.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace zo_test {

/// Hands each modal window of the test's thread (dialog, sheet, message box) to the next act, in the order in which
/// they open; also one that an act itself makes open, while that act runs. An act closes its window, or makes somebody
/// close it. A window that nobody expects, or that is open still after the last act, is a failure and is closed.
/// Destroyed, the driver expects all acts to have had their window; an act that is null stands for no window. One at a
/// time.
class DialogDriver {
public:
    using Act = std::function<void(HWND window)>;

    /// \param anyAct for all windows behind those of the acts: see AnyDialogDriver
    explicit DialogDriver(std::vector<Act> acts, Act anyAct = nullptr);
    DialogDriver(std::initializer_list<Act> acts) : DialogDriver(std::vector<Act>(acts)) {}
    ~DialogDriver();
    DialogDriver(const DialogDriver&) = delete;
    DialogDriver& operator=(const DialogDriver&) = delete;

private:
    static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD);
    void Meet(HWND window);
    void FindOpen(HWND window);

    static DialogDriver* s_driver;
    std::vector<Act> m_acts;
    const Act m_anyAct;
    size_t m_told = 0; // answers given to windows that anyAct leaves open
    size_t m_next = 0;
    int m_running = 0; // acts that have begun and not returned
    std::vector<HWND> m_met;
    UINT_PTR m_timer;
};

/// For loops of faults, in which windows open or do not: each that opens is handed to the act, and one that is open
/// still is told Cancel, No and OK in turn. The act must not fail where a control is missing: see Command.
struct AnyDialogDriver : DialogDriver {
    explicit AnyDialogDriver(Act act) : DialogDriver(std::vector<Act>(), std::move(act)) {}
};

/// Acts that press a button, and the one that expects a message box with this text before it does.
DialogDriver::Act Pressing(int button);
DialogDriver::Act AnswerBox(std::string text, int button);
/// The same, or no act if \p text is empty.
DialogDriver::Act AnswerBoxIfAny(std::string text, int button);
/// The ways in which a person gives a dialog up: the button, the key, and the window's own.
std::vector<DialogDriver::Act> WaysToGiveUp();

/// The text of a window, of any length; of a message box what it says, of a control its own.
std::string TextOf(HWND window);
std::string TextOf(HWND dialog, int control);
/// What a message box says.
std::string BoxText(HWND box);

/// Clicks a button that is visible and enabled; anything else is a failure.
void Press(HWND dialog, int button);
/// Tells a dialog of a control's notification, by default that of a button's click, whether or not a person could.
void Command(HWND dialog, int control, int notification = 0);
/// Clicks into a control, in pixels from its upper left corner.
void ClickAt(HWND control, int x, int y);
/// Selects a row of a list box or an entry of a combo box, and lets the dialog know.
void Choose(HWND dialog, int list, int row);
/// Chooses a row of a list box and clicks it twice.
void DoubleClick(HWND dialog, int list, int row);
/// The row or entry chosen, -1 if none is.
int ChosenRow(HWND dialog, int list);
/// A row of a list box or an entry of a combo box, "" if there is no such.
std::string RowText(HWND dialog, int list, int row);
/// The first row that begins with a text, -1 if there is none.
int RowOf(HWND dialog, int list, const std::string& beginning);
/// The rows from \p from on, each with a '|' behind it.
std::string RowsOf(HWND dialog, int list, int from = 0);

bool IsEnabled(HWND dialog, int control);
bool IsChecked(HWND dialog, int button);
/// A window's or a control's place on the screen.
CRect AreaOf(HWND window);
CRect AreaOf(HWND dialog, int control);

/// The page that a sheet shows.
HWND PageOf(HWND sheet);
/// Goes to another page. \return that page, null if the one before stays.
HWND ShowPage(HWND sheet, int page);

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
/// Expects the focus on the first of these controls, and that Tab takes it to each next one.
void ExpectTabOrder(HWND dialog, std::initializer_list<int> controls);

} // namespace zo_test
