#include "dialog_driver.h"

#include <afxwin.h>

#include <algorithm>
#include <utility>

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

/// The keyboard has a key down while this lives.
class HeldKey {
public:
    HeldKey(int key, bool held) : m_key(key), m_held(held)
    {
        if (m_held)
            Set(0x80);
    }
    ~HeldKey()
    {
        if (m_held)
            Set(0);
    }
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;

private:
    void Set(BYTE state) const
    {
        BYTE keys[256] = {};
        GetKeyboardState(keys);
        keys[m_key] = state;
        SetKeyboardState(keys);
    }

    int m_key;
    bool m_held;
};

} // namespace

DialogDriver* DialogDriver::s_driver = nullptr;

DialogDriver::DialogDriver(std::vector<Act> acts) : m_acts(std::move(acts))
{
    EXPECT_EQ(nullptr, s_driver) << "two drivers at once";
    s_driver = this;
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
        const auto& met = s_driver->m_met;
        if (std::find(met.begin(), met.end(), window) == met.end()) {
            s_driver->Meet(window);
            return;
        }
    }
    if (!open.empty() && s_driver->m_running == 0 && s_driver->m_next == s_driver->m_acts.size()) {
        ADD_FAILURE() << "open still after the last act: " << Describe(open.front());
        CloseAnyhow(open.front());
    }
}

void DialogDriver::Meet(HWND window)
{
    m_met.push_back(window);
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

DialogDriver::Act AnswerBox(std::string text, int button)
{
    return [text = std::move(text), button](HWND box) {
        EXPECT_EQ(text, BoxText(box));
        Press(box, button);
    };
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

void ClickAt(HWND control, int x, int y)
{
    SendMessageA(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    SendMessageA(control, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

void Choose(HWND dialog, int list, int row)
{
    const HWND control = GetDlgItem(dialog, list);
    char name[16] = "";
    GetClassNameA(control, name, sizeof name);
    const bool combo = lstrcmpiA(name, "ComboBox") == 0;
    EXPECT_EQ(row, SendMessageA(control, combo ? CB_SETCURSEL : LB_SETCURSEL, static_cast<WPARAM>(row), 0));
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(list, combo ? CBN_SELCHANGE : LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(control));
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
    const HeldKey shift(VK_SHIFT, (modifiers & kShift) != 0);
    const HeldKey control(VK_CONTROL, (modifiers & kControl) != 0);
    const HWND focus = GetFocus();
    PostMessageA(focus != nullptr ? focus : dialog, WM_KEYDOWN, virtualKey, 1);
    DeliverKeys(dialog);
    if (IsWindow(focus) && GetFocus() == focus) {
        PostMessageA(focus, WM_KEYUP, virtualKey, static_cast<LPARAM>(0xC0000001));
        DeliverKeys(dialog);
    }
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

} // namespace zo_test
