#include "dialog_driver.h"

#include <commctrl.h>

#include <algorithm>

namespace zo_test {

namespace {

constexpr UINT kLookEvery = 10; // milliseconds
constexpr int kBoxText = 0xFFFF;

BOOL CALLBACK NoteModal(HWND window, LPARAM found)
{
    char name[16] = "";
    GetClassNameA(window, name, sizeof name);
    if (lstrcmpA(name, "#32770") == 0 && IsWindowVisible(window) && IsWindowEnabled(window))
        reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
    return TRUE;
}

std::string Describe(HWND window) { return "\"" + TextOf(window) + "\": " + BoxText(window); }

void CloseAnyhow(HWND window)
{
    for (const int button : {IDCANCEL, IDNO, IDABORT, IDOK}) {
        if (IsWindow(window))
            SendMessageA(window, WM_COMMAND, static_cast<WPARAM>(button),
                         reinterpret_cast<LPARAM>(GetDlgItem(window, button)));
    }
}

/// Delivers the keys that wait, as the loop of the modal window would.
void DeliverKeys(HWND dialog)
{
    for (MSG message; PeekMessageA(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE);) {
        bool taken = false;
        for (HWND window = message.hwnd; window != nullptr && !taken; window = GetParent(window)) {
            CWnd* framework = CWnd::FromHandlePermanent(window);
            taken = framework != nullptr && framework->PreTranslateMessage(&message);
        }
        if (taken || (IsWindow(dialog) && IsDialogMessageA(dialog, &message)))
            continue;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

/// Sends a message to a list box, or its like to a combo box.
LRESULT TellList(HWND dialog, int list, UINT ofList, UINT ofCombo, WPARAM wParam = 0, const void* lParam = nullptr)
{
    char name[16] = "";
    GetClassNameA(GetDlgItem(dialog, list), name, sizeof name);
    return SendDlgItemMessageA(dialog, list, lstrcmpiA(name, "ComboBox") == 0 ? ofCombo : ofList, wParam,
                               reinterpret_cast<LPARAM>(lParam));
}

} // namespace

DialogDriver* DialogDriver::s_driver = nullptr;

DialogDriver::DialogDriver(std::vector<Act> acts, Act anyAct) : m_acts(std::move(acts)), m_anyAct(std::move(anyAct))
{
    EXPECT_EQ(nullptr, s_driver) << "two drivers at once";
    s_driver = this;
    m_acts.erase(std::remove(m_acts.begin(), m_acts.end(), nullptr), m_acts.end());
    m_timer = SetTimer(nullptr, 0, kLookEvery, &DialogDriver::Look);
}

DialogDriver::~DialogDriver()
{
    KillTimer(nullptr, m_timer);
    s_driver = nullptr;
    EXPECT_EQ(m_acts.size(), m_next) << "fewer windows opened than there are acts";
}

void CALLBACK DialogDriver::Look(HWND, UINT, UINT_PTR, DWORD)
{
    if (s_driver == nullptr)
        return;
    std::vector<HWND> open;
    EnumThreadWindows(GetCurrentThreadId(), &NoteModal, reinterpret_cast<LPARAM>(&open));
    for (HWND window : open) {
        auto& met = s_driver->m_met;
        if (std::find(met.begin(), met.end(), window) == met.end()) {
            met.push_back(window);
            s_driver->Meet(window);
            return;
        }
    }
    if (!open.empty())
        s_driver->FindOpen(open.front());
}

void DialogDriver::FindOpen(HWND window)
{
    static constexpr int kButtons[] = {IDCANCEL, IDNO, IDOK};
    if (m_anyAct != nullptr) {
        Command(window, kButtons[m_told++ % std::size(kButtons)]);
    } else if (m_running == 0 && m_next == m_acts.size()) {
        ADD_FAILURE() << "open still after the last act: " << Describe(window);
        CloseAnyhow(window);
    }
}

void DialogDriver::Meet(HWND window)
{
    if (m_anyAct != nullptr)
        return m_anyAct(window);
    if (m_next == m_acts.size()) {
        ADD_FAILURE() << "nobody expects " << Describe(window);
        CloseAnyhow(window);
        return;
    }
    const Act act = m_acts[m_next++];
    ++m_running;
    act(window);
    --m_running;
}

DialogDriver::Act Pressing(int button)
{
    return [button](HWND dialog) { Press(dialog, button); };
}

DialogDriver::Act AnswerBox(std::string text, int button)
{
    return [text = std::move(text), button](HWND box) {
        EXPECT_EQ(text, BoxText(box));
        Press(box, button);
        if (IsWindowVisible(box)) // another box, without that button: who waits for it goes on
            EndDialog(box, button);
    };
}

DialogDriver::Act AnswerBoxIfAny(std::string text, int button)
{
    return text.empty() ? nullptr : AnswerBox(std::move(text), button);
}

std::vector<DialogDriver::Act> WaysToGiveUp()
{
    return {Pressing(IDCANCEL), [](HWND dialog) { Key(dialog, VK_ESCAPE); },
            [](HWND dialog) { SendMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); }};
}

std::string TextOf(HWND window)
{
    std::string text(static_cast<size_t>(SendMessageA(window, WM_GETTEXTLENGTH, 0, 0)) + 1, '\0');
    text.resize(
        static_cast<size_t>(SendMessageA(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::string TextOf(HWND dialog, int control) { return TextOf(GetDlgItem(dialog, control)); }

std::string BoxText(HWND box) { return TextOf(box, kBoxText); }

void Press(HWND dialog, int button)
{
    const HWND control = GetDlgItem(dialog, button);
    if (control == nullptr || !IsWindowVisible(control) || !IsWindowEnabled(control)) {
        ADD_FAILURE() << "button " << button << " cannot be pressed in " << Describe(dialog);
        return;
    }
    SendMessageA(control, BM_CLICK, 0, 0);
}

void Command(HWND dialog, int control, int notification)
{
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(control, notification),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, control)));
}

void ClickAt(HWND control, int x, int y)
{
    SendMessageA(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    SendMessageA(control, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

void Choose(HWND dialog, int list, int row)
{
    static_assert(LBN_SELCHANGE == CBN_SELCHANGE);
    EXPECT_EQ(row, TellList(dialog, list, LB_SETCURSEL, CB_SETCURSEL, static_cast<WPARAM>(row)));
    Command(dialog, list, LBN_SELCHANGE);
}

void DoubleClick(HWND dialog, int list, int row)
{
    Choose(dialog, list, row);
    Command(dialog, list, LBN_DBLCLK);
}

int ChosenRow(HWND dialog, int list) { return static_cast<int>(TellList(dialog, list, LB_GETCURSEL, CB_GETCURSEL)); }

std::string RowText(HWND dialog, int list, int row)
{
    char text[600] = "";
    TellList(dialog, list, LB_GETTEXT, CB_GETLBTEXT, static_cast<WPARAM>(row), text);
    return text;
}

int RowOf(HWND dialog, int list, const std::string& beginning)
{
    constexpr auto kFromTheFirst = static_cast<WPARAM>(-1);
    return static_cast<int>(TellList(dialog, list, LB_FINDSTRING, CB_FINDSTRING, kFromTheFirst, beginning.c_str()));
}

std::string RowsOf(HWND dialog, int list, int from)
{
    std::string rows;
    for (int row = from; row < TellList(dialog, list, LB_GETCOUNT, CB_GETCOUNT); ++row)
        rows += RowText(dialog, list, row) + "|";
    return rows;
}

bool IsEnabled(HWND dialog, int control) { return IsWindowEnabled(GetDlgItem(dialog, control)) != FALSE; }
bool IsChecked(HWND dialog, int button) { return SendDlgItemMessageA(dialog, button, BM_GETCHECK, 0, 0) != 0; }

CRect AreaOf(HWND window)
{
    CRect area;
    GetWindowRect(window, &area);
    return area;
}

CRect AreaOf(HWND dialog, int control) { return AreaOf(GetDlgItem(dialog, control)); }

HWND PageOf(HWND sheet) { return reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETCURRENTPAGEHWND, 0, 0)); }

HWND ShowPage(HWND sheet, int page)
{
    return SendMessageA(sheet, PSM_SETCURSEL, static_cast<WPARAM>(page), 0) != 0 ? PageOf(sheet) : nullptr;
}

void Type(HWND dialog, int control, const std::string& text)
{
    const HWND edit = GetDlgItem(dialog, control);
    SetFocus(edit);
    SendMessageA(edit, EM_SETSEL, 0, -1);
    if (text.empty())
        SendMessageA(edit, WM_CLEAR, 0, 0);
    for (const char c : text)
        SendMessageA(edit, WM_CHAR, static_cast<BYTE>(c), 1);
}

void Key(HWND dialog, UINT virtualKey, int modifiers)
{
    BYTE released[256], held[256];
    GetKeyboardState(released);
    std::copy_n(released, std::size(held), held);
    held[VK_SHIFT] = (modifiers & kShift) != 0 ? 0x80 : 0;
    held[VK_CONTROL] = (modifiers & kControl) != 0 ? 0x80 : 0;
    SetKeyboardState(held);
    const HWND focus = GetFocus();
    PostMessageA(focus != nullptr ? focus : dialog, WM_KEYDOWN, virtualKey, 1);
    DeliverKeys(dialog);
    if (IsWindow(focus) && GetFocus() == focus) {
        PostMessageA(focus, WM_KEYUP, virtualKey, static_cast<LPARAM>(0xC0000001));
        DeliverKeys(dialog);
    }
    SetKeyboardState(released);
}

void AccessKey(HWND dialog, char letter)
{
    constexpr LPARAM kAlt = 1 << 29;
    const HWND focus = GetFocus();
    PostMessageA(focus != nullptr ? focus : dialog, WM_SYSCHAR, static_cast<BYTE>(letter), kAlt | 1);
    DeliverKeys(dialog);
}

int FocusOf(HWND dialog)
{
    const HWND focus = GetFocus();
    return focus != nullptr && IsChild(dialog, focus) ? GetDlgCtrlID(focus) : -1;
}

void ExpectTabOrder(HWND dialog, std::initializer_list<int> controls)
{
    for (const int& control : controls) {
        if (&control != controls.begin())
            Key(dialog, VK_TAB);
        EXPECT_EQ(control, FocusOf(dialog)) << "control " << &control - controls.begin() << " of the order";
    }
}

} // namespace zo_test
