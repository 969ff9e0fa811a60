// The suite's message box, driven by keys and clicks.
#include "support/product_test.h"
#include "support/test.h"

#include <zogbl/message_box.h>
#include <zogbl/resource_ids.h>

namespace {

constexpr int kText = 0xFFFF;

class MessageBoxTest : public ProductTest {};

/// The buttons of a box from left to right: each text and, behind it, what pressing it would answer.
std::string ButtonsOf(HWND box)
{
    std::string buttons;
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (GetDlgCtrlID(child) != ZO_IDC_BOX_ICON && GetDlgCtrlID(child) != kText)
            buttons += TextOf(child) + std::to_string(GetDlgCtrlID(child)) + ' ';
    }
    return buttons;
}

std::string Clipboard()
{
    std::string text;
    if (OpenClipboard(nullptr)) {
        if (const HANDLE memory = GetClipboardData(CF_TEXT))
            text = static_cast<const char*>(GlobalLock(memory));
        CloseClipboard();
    }
    return text;
}

} // namespace

TEST_F(MessageBoxTest, IsOfItsType)
{
    struct : CWnd {
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
        {
            helps += message == WM_HELP;
            return CWnd::WindowProc(message, wParam, lParam);
        }
        int helps = 0;
    } owner;
    ASSERT_TRUE(owner.CreateEx(0, "Static", "owner", WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr, nullptr));
    static UINT s_sound;
    static int s_brought;
    const ImportPatch sound(
        "ZOGBLBRX.DLL", "MessageBeep", +[](UINT type) WINAPI -> BOOL { return s_sound = type, TRUE; });
    const ImportPatch foreground(
        "ZOGBLBRX.DLL", "SetForegroundWindow", +[](HWND) WINAPI -> BOOL { return ++s_brought, TRUE; });
    const struct {
        long type;
        const char* buttons;
        int focus;
        int escape; // 0: does not close it
    } rows[] = {
        {MB_OK | MB_ICONSTOP | MB_RIGHT, "OK1 ", IDOK, IDOK},
        {MB_OKCANCEL | MB_ICONQUESTION | MB_RTLREADING, "OK1 Cancel2 ", IDOK, IDCANCEL},
        {MB_OKCANCEL | MB_DEFBUTTON2 | MB_TOPMOST, "OK1 Cancel2 ", IDCANCEL, IDCANCEL},
        {MB_ABORTRETRYIGNORE | MB_DEFBUTTON3 | MB_SYSTEMMODAL, "&Abort3 &Retry4 &Ignore5 ", IDIGNORE, 0},
        {MB_YESNOCANCEL | MB_ICONEXCLAMATION | MB_SETFOREGROUND, "&Yes6 &No7 Cancel2 ", IDYES, IDCANCEL},
        {MB_YESNO | MB_DEFBUTTON2 | MB_ICONINFORMATION, "&Yes6 &No7 ", IDNO, 0},
        {MB_RETRYCANCEL | MB_DEFBUTTON4, "&Retry4 Cancel2 ", IDRETRY, IDCANCEL},
        {MB_CANCELTRYCONTINUE | MB_DEFBUTTON2, "Cancel2 &Try Again10 &Continue11 ", IDTRYAGAIN, IDCANCEL},
        {MB_YESNO | MB_HELP, "&Yes6 &No7 &Help9 ", IDYES, 0},
    };
    for (const auto& row : rows) {
        for (const UINT key : {VK_RETURN, VK_ESCAPE}) {
            SCOPED_TRACE(testing::Message() << row.type << " " << key);
            const bool stays = key == VK_ESCAPE && row.escape == 0;
            const auto isOfType = [&](long flags) { return (row.type & flags) != 0; };
            s_brought = owner.helps = 0;
            const DialogDriver driver{[&](HWND box) {
                EXPECT_EQ("Title", TextOf(box));
                EXPECT_EQ("one\ntwo & three", BoxText(box));
                EXPECT_EQ(row.buttons, ButtonsOf(box));
                EXPECT_EQ(row.focus, FocusOf(box));
                EXPECT_EQ(row.focus, LOWORD(SendMessageA(box, DM_GETDEFID, 0, 0)));
                EXPECT_EQ(isOfType(MB_ICONMASK), SendDlgItemMessageA(box, ZO_IDC_BOX_ICON, STM_GETICON, 0, 0) != 0);
                EXPECT_EQ(row.type & MB_ICONMASK, s_sound);
                EXPECT_EQ(row.escape == 0, (GetMenuState(GetSystemMenu(box, FALSE), SC_CLOSE, 0) & MF_GRAYED) != 0);
                const HWND text = GetDlgItem(box, kText);
                EXPECT_EQ(isOfType(MB_RIGHT), (GetWindowLongA(text, GWL_STYLE) & SS_RIGHT) != 0);
                EXPECT_EQ(isOfType(MB_RTLREADING), (GetWindowLongA(text, GWL_EXSTYLE) & WS_EX_RTLREADING) != 0);
                EXPECT_EQ(isOfType(MB_TOPMOST | MB_SYSTEMMODAL),
                          (GetWindowLongA(box, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0);
                EXPECT_EQ(isOfType(MB_SETFOREGROUND) ? 1 : 0, s_brought);
                Command(box, IDHELP);
                EXPECT_EQ(1, owner.helps);
                Key(box, key);
                EXPECT_EQ(stays, IsWindowVisible(box) != FALSE);
                if (stays)
                    Press(box, row.focus);
            }};
            const int answer = ZoMessageBox(owner.m_hWnd, "one\ntwo & three", "Title", static_cast<UINT>(row.type));
            EXPECT_EQ(key == VK_ESCAPE && !stays ? row.escape : row.focus, answer);
        }
    }
}

TEST_F(MessageBoxTest, SpeaksTheLanguageOfTheUser)
{
    const auto expect = [](const char* title, const char* buttons, char key) -> DialogDriver::Act {
        return [=](HWND box) {
            EXPECT_EQ(title, TextOf(box));
            EXPECT_EQ(buttons, ButtonsOf(box));
            AccessKey(box, key);
        };
    };
    const DialogDriver driver{expect("Title", "&Yes6 &No7 Cancel2 ", 'n'), expect("Error", "&Retry4 Cancel2 ", 'r'),
                              expect("Fehler", "&Ja6 &Nein7 Abbrechen2 ", 'j'),
                              expect(AfxGetAppName(), "&Wiederholen4 Abbrechen2 ", 'w')};
    EXPECT_EQ(IDNO, ZoMessageBox(nullptr, "text", "Title", MB_YESNOCANCEL));
    EXPECT_EQ(IDRETRY, ZoMessageBox(nullptr, nullptr, nullptr, MB_RETRYCANCEL));
    ChangeLanguage(kGerman);
    EXPECT_EQ(IDYES, ZoMessageBox(nullptr, "text", nullptr, MB_YESNOCANCEL));
    EXPECT_EQ(IDRETRY, AfxMessageBox("text", MB_RETRYCANCEL)) << "the framework's too";
}

TEST_F(MessageBoxTest, IsAsLargeAsItsTextAndInTheMiddleOfItsOwner)
{
    CWnd owner, other;
    ASSERT_TRUE(owner.CreateEx(0, "Static", "owner", WS_POPUP | WS_VISIBLE, 100, 80, 640, 480, nullptr, nullptr));
    ASSERT_TRUE(other.CreateEx(0, "Static", "other", WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr, nullptr));
    CRect work;
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    std::string lines;
    for (int i = 0; i < 400; ++i)
        lines += "line\n";
    const std::string texts[] = {"this & that, wider than two buttons", "more\nthan\ntwo\nlines",
                                 "C:\\" + std::string(250, 'w'), lines};
    CRect before;
    for (const std::string& text : texts) {
        const DialogDriver driver{[&](HWND box) {
            EXPECT_FALSE(IsWindowEnabled(owner.m_hWnd));
            EXPECT_TRUE(IsWindowEnabled(other.m_hWnd));
            const CRect area = AreaOf(box);
            EXPECT_EQ(text, BoxText(box));
            EXPECT_NEAR(2 * 100 + 640, area.left + area.right, 2);
            EXPECT_GE(area.top, work.top);
            EXPECT_LE(area.bottom, work.bottom);
            EXPECT_GT(area.Height(), before.Height()) << "taller than the one before";
            before = area;
            CRect needed(0, 0, AreaOf(box, kText).Width(), 0);
            const HDC dc = GetDC(box);
            SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageA(box, WM_GETFONT, 0, 0)));
            DrawTextA(dc, text.c_str(), -1, needed, DT_CALCRECT | DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX);
            ReleaseDC(box, dc);
            EXPECT_TRUE(text == lines || needed.bottom <= AreaOf(box, kText).Height());
            CRect inside;
            GetClientRect(box, &inside);
            MapWindowPoints(box, nullptr, reinterpret_cast<POINT*>(&inside), 2);
            for (const int id : {kText, IDYES, IDNO}) {
                const CRect part = AreaOf(box, id);
                EXPECT_TRUE(part.left >= inside.left && part.right <= inside.right && part.bottom <= inside.bottom);
            }
            EXPECT_EQ(AreaOf(box, IDYES).Width(), AreaOf(box, IDNO).Width());
            EXPECT_GE(AreaOf(box, IDYES).top, AreaOf(box, kText).bottom);
            Press(box, IDYES);
        }};
        EXPECT_EQ(IDYES, ZoMessageBox(owner.m_hWnd, text.c_str(), "Title", MB_YESNO | MB_ICONQUESTION));
        EXPECT_TRUE(IsWindowEnabled(owner.m_hWnd));
    }
    for (const BOOL enabled : {TRUE, FALSE}) {
        ::EnableWindow(other.m_hWnd, enabled);
        const DialogDriver driver{[&](HWND box) {
            EXPECT_FALSE(IsWindowEnabled(owner.m_hWnd) || IsWindowEnabled(other.m_hWnd));
            Press(box, IDOK);
        }};
        EXPECT_EQ(IDOK, ZoMessageBox(nullptr, "all", "Title", MB_TASKMODAL));
        EXPECT_TRUE(IsWindowEnabled(owner.m_hWnd));
        EXPECT_EQ(enabled, IsWindowEnabled(other.m_hWnd)) << "as it was";
        EXPECT_NE(nullptr, GetActiveWindow()) << "keys go somewhere";
    }
    int width = 0;
    for (const std::string& title : {std::string("T"), std::string(50, 'T'), std::string(500, 'T')}) {
        const DialogDriver titled{[&](HWND box) {
            const CRect area = AreaOf(box);
            EXPECT_GT(area.Width(), width);
            EXPECT_TRUE(area.left >= work.left && area.right <= work.right);
            EXPECT_GE(AreaOf(box, IDOK).top, AreaOf(box, ZO_IDC_BOX_ICON).bottom);
            width = area.Width();
            Press(box, IDOK);
        }};
        EXPECT_EQ(IDOK, ZoMessageBox(owner.m_hWnd, "text", title.c_str(), MB_ICONSTOP));
    }
}

TEST_F(MessageBoxTest, IsCopiedByKey)
{
    const std::string line(27, '-');
    const std::string copy = line + "\r\nTitle\r\n" + line + "\r\none\r\ntwo & three\r\n" + line +
                             "\r\nYes   No   Cancel   \r\n" + line + "\r\n";
    for (const UINT key : {UINT{'C'}, UINT{VK_INSERT}, UINT{0}}) {
        const DialogDriver driver{[&](HWND box) {
            OpenClipboard(nullptr);
            EmptyClipboard();
            CloseClipboard();
            Key(box, 'C');
            EXPECT_EQ("", Clipboard());
            if (key != 0)
                Key(box, key, kControl);
            else
                SendMessageA(box, WM_COPY, 0, 0);
            EXPECT_EQ(copy, Clipboard());
            Key(box, VK_ESCAPE);
        }};
        EXPECT_EQ(IDCANCEL, ZoMessageBox(nullptr, "one\ntwo & three", "Title", MB_YESNOCANCEL));
    }
}

TEST_F(MessageBoxTest, LeavesToTheSystemWhatItCannotShow)
{
    static UINT s_type;
    static int s_count;
    s_count = 0;
    const ImportPatch system(
        "ZOGBLBRX.DLL", "MessageBoxA", +[](HWND, LPCSTR, LPCSTR, UINT type) WINAPI -> int {
            s_type = type;
            return ++s_count, 77;
        });
    for (const UINT type : {UINT{MB_OK | MB_SERVICE_NOTIFICATION}, UINT{7}}) {
        EXPECT_EQ(77, ZoMessageBox(nullptr, "text", "Title", type));
        EXPECT_EQ(type, s_type);
    }
    {
        s_count = 0;
        const DialogDriver driver{[](HWND box) { DestroyWindow(box); }};
        EXPECT_EQ(0, ZoMessageBox(nullptr, "text", "Title", MB_OK));
        EXPECT_EQ(0, s_count) << "what was destroyed does not come back";
    }
    ZoGblDumpLanguageDLL();
    EXPECT_EQ(77, ZoMessageBox(nullptr, "text", "Title", MB_OK)) << "without the language library";
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
    AllocationFaults memory;
    RunFaultLoop(memory, [&](const FaultRun& run) {
        s_count = 0;
        const AnyDialogDriver driver([](HWND box) { Command(box, IDOK); });
        const int answer = ZoMessageBox(nullptr, "text", "Title", MB_OK);
        EXPECT_EQ(s_count == 0 ? IDOK : 77, answer);
        EXPECT_TRUE(run.Fired() || s_count == 0);
    });
}
