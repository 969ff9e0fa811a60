// The button that drops a grid of colours down.
#include "controls/control_kit.h"
#include "support/product_test.h"

#include <common/without_throwing.h>
#include <zogbl/color_button.h>
#include <zogbl/language_support.h>

#include <afxdlgs.h>

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr DWORD kAll = WS_VISIBLE | WS_TABSTOP | CZoColorButton::kAutomatic | CZoColorButton::kMore;

std::string Describe(NMHDR& header, LRESULT&)
{
    return header.code == ZON_COLOR_CHANGED && header.idFrom == 5
               ? (LPCSTR)ZoGetColorName(reinterpret_cast<ZoColorNotification&>(header).color)
               : "";
}

class ColorButton : public ProductTest {
protected:
    ColorButton()
    {
        std::fill_n(CColorDialog::GetSavedCustomColors(), 16, RGB(255, 255, 255));
        m_parent.m_describe = &Describe;
    }
    void Make(ControlParent* parent = nullptr, DWORD style = kAll)
    {
        m_button.DestroyWindow();
        m_button.SetColor(RGB(0, 0, 0));
        ASSERT_TRUE(m_button.Create(style, CRect(10, 10, 130, 34), parent != nullptr ? parent : &m_parent, 5));
        m_button.SetFocus();
    }
    /// Clicks a part of the open grid.
    void Choose(int part)
    {
        CRect area = Reader(m_button.GetChooser()).Area(part);
        CPoint point = area.CenterPoint();
        m_button.GetChooser().ScreenToClient(&point);
        Click(m_button.GetChooser(), point);
    }
    int Focused() { return m_button.GetChooser().GetFocusedPart(); }

    ControlParent m_parent;
    CZoColorButton m_button;
};

} // namespace

TEST_F(ColorButton, ClosesItsGridOnceInEachWay)
{
    ControlParent other;
    CRect work, popup, common;
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    const struct {
        const char* name;
        std::function<void()> act;
        const char* told;
        bool keepsFocus;
    } kWays[] = {
        {"choice by a click", [&] { Choose(11); }, "Red", true},
        {"choice by a key", [&] { PressKey(m_button, VK_RIGHT), PressKey(m_button, VK_RETURN); }, "Dark red", true},
        {"the colour it has", [&] { PressKey(m_button, VK_SPACE); }, "", true},
        {"Esc", [&] { PressKey(m_button, VK_RIGHT), PressKey(m_button, VK_ESCAPE); }, "", true},
        {"Alt+Up", [&] { m_button.SendMessage(WM_SYSKEYDOWN, VK_UP, 1 << 29); }, "", true},
        {"F4", [&] { PressKey(m_button, VK_F4); }, "", true},
        {"click on the button", [&] { Click(m_button, CPoint(5, 5)); }, "", true},
        {"click on the parent", [&] { Click(m_parent, CPoint(300, 280)); }, "", true},
        {"click on another window", [&] { Click(other, CPoint(300, 280)); }, "", true},
        {"another control", [&] { other.SetFocus(); }, "", false},
        {"another program", [&] { m_button.GetChooser().GetParent()->SendMessage(WM_ACTIVATEAPP, FALSE); }, "", true},
        {"disabled", [&] { m_button.EnableWindow(FALSE); }, "", false},
        {"hidden", [&] { m_button.ShowWindow(SW_HIDE); }, "", false},
        {"moved", [&] { m_button.MoveWindow(20, 20, 120, 24); }, "", true},
        {"parent moved", [&] { m_parent.MoveWindow(90, 90, 400, 300); }, "", true},
        {"destroyed", [&] { m_button.DestroyWindow(); }, "", false},
        {"action", [&] { m_button.DoPartAction(0); }, "", true},
        {"mode", [&] { m_button.SendMessage(WM_CANCELMODE); }, "", true},
        {"program", [&] { m_button.Close(); }, "", true},
    };
    for (const CPoint corner : {CPoint(work.left, work.top), CPoint(work.right - 140, work.top),
                                CPoint(work.left, work.bottom - 44), CPoint(work.right - 140, work.bottom - 44)}) {
        for (const auto& way : kWays) {
            SCOPED_TRACE(way.name);
            m_parent.MoveWindow(corner.x, corner.y, 400, 300);
            Make();
            ASSERT_TRUE(m_button.Open());
            EXPECT_EQ(m_button.m_hWnd, ::GetFocus());
            m_button.GetChooser().GetParent()->GetWindowRect(&popup);
            EXPECT_TRUE(common.UnionRect(&work, &popup) && common == work);
            const Events events(m_button);
            way.act();
            EXPECT_TRUE(WaitUntil([&] { return !m_button.IsOpen(); }));
            PumpWaiting();
            const int changes = Events::Count(EVENT_OBJECT_STATECHANGE);
            EXPECT_EQ(way.name == std::string("disabled") ? 2 : 1, changes);
            EXPECT_EQ(way.told, m_parent.Told());
            EXPECT_EQ(way.keepsFocus, ::GetFocus() == m_button.m_hWnd && m_button.m_hWnd != nullptr);
            EXPECT_EQ(nullptr, ::GetCapture());
            EXPECT_FALSE(m_button.IsOpen());
            m_button.EnableWindow(TRUE);
            m_button.ShowWindow(SW_SHOW);
        }
    }
}

TEST_F(ColorButton, OpensByEachKeyAndClick)
{
    const struct {
        const char* name;
        std::function<void()> act;
        bool opens;
    } kWays[] = {{"F4", [&] { PressKey(m_button, VK_F4); }, true},
                 {"Space", [&] { PressKey(m_button, VK_SPACE); }, true},
                 {"Alt+Down", [&] { m_button.SendMessage(WM_SYSKEYDOWN, VK_DOWN, 1 << 29); }, true},
                 {"click",
                  [&] {
                      Click(m_button, {60, 5});
                  },
                  true},
                 {"action", [&] { m_button.DoPartAction(0); }, true},
                 {"arrows", [&] { PressKey(m_button, VK_DOWN), PressKey(m_button, VK_RIGHT); }, false},
                 {"letter", [&] { m_button.SendMessage(WM_CHAR, 'r'); }, false},
                 {"Enter", [&] { PressKey(m_button, VK_RETURN); }, false},
                 {"Alt+Up", [&] { m_button.SendMessage(WM_SYSKEYDOWN, VK_UP, 1 << 29); }, false},
                 {"Esc", [&] { PressKey(m_button, VK_ESCAPE); }, false}};
    for (const auto& way : kWays) {
        Make();
        way.act();
        EXPECT_EQ(way.opens, m_button.IsOpen() != FALSE) << way.name;
        EXPECT_EQ(RGB(0, 0, 0), m_button.GetColor()) << way.name;
        EXPECT_EQ(m_button.m_hWnd, ::GetFocus());
    }
    EXPECT_EQ("", m_parent.Told());
    m_button.EnableWindow(FALSE);
    EXPECT_FALSE(m_button.Open());
    Make(nullptr, WS_TABSTOP);
    EXPECT_FALSE(m_button.Open()) << "hidden";
    Make(nullptr, WS_VISIBLE);
    ASSERT_TRUE(m_button.Open() && m_button.Open());
    EXPECT_EQ(32, m_button.GetChooser().GetPartCount()) << "without the styles";
}

TEST_F(ColorButton, HandsItsKeysToTheGrid)
{
    Make();
    m_button.SetColor(kRed);
    ASSERT_TRUE(m_button.Open());
    const Events events(m_button.GetChooser());
    PressKey(m_button, VK_DOWN);
    m_button.SendMessage(WM_CHAR, 'w');
    EXPECT_EQ((std::vector<std::pair<DWORD, LONG>>{{EVENT_OBJECT_FOCUS, 19}, {EVENT_OBJECT_FOCUS, 26}}),
              Events::Heard());
    // The mouse leads it, but only if it moves.
    SendMouse(m_button.GetChooser(), WM_MOUSEMOVE, CPoint(5, 5));
    EXPECT_EQ(1, Focused());
    PressKey(m_button, VK_DOWN);
    SendMouse(m_button.GetChooser(), WM_MOUSEMOVE, CPoint(5, 5));
    EXPECT_EQ(2, Focused());
    // As in a dialog: Esc is the grid's, Tab leads on.
    MSG key = {m_button, WM_KEYDOWN, VK_ESCAPE, 1, 0, {}};
    const auto code = [&] { return m_button.SendMessage(WM_GETDLGCODE, key.wParam, reinterpret_cast<LPARAM>(&key)); };
    EXPECT_NE(0, code() & DLGC_WANTALLKEYS);
    key.wParam = VK_TAB;
    EXPECT_EQ(0, code() & (DLGC_WANTALLKEYS | DLGC_WANTTAB));
    key.wParam = VK_ESCAPE;
    m_button.Close();
    EXPECT_EQ(DLGC_BUTTON, code());
}

TEST_F(ColorButton, AsksTheSystemsDialog)
{
    Make();
    ASSERT_TRUE(m_button.Open());
    const DialogDriver driver{[&](HWND window) {
                                  EXPECT_FALSE(m_button.IsOpen());
                                  SetDlgItemInt(window, 706, 77, FALSE); // red
                                  Press(window, IDOK);
                              },
                              [](HWND window) { Press(window, IDCANCEL); }};
    PressKey(m_button, VK_END);
    PressKey(m_button, VK_SPACE);
    EXPECT_EQ("77, 0, 0", m_parent.Told());
    EXPECT_EQ(m_button.m_hWnd, ::GetFocus());
    ASSERT_TRUE(m_button.Open());
    EXPECT_EQ(34, Focused()) << "a colour that is not in the grid";
    PressKey(m_button, VK_RETURN);
    EXPECT_EQ("", m_parent.Told());
    EXPECT_EQ(m_button.m_hWnd, ::GetFocus());
    EXPECT_EQ(RGB(77, 0, 0), m_button.GetColor());
}

TEST_F(ColorButton, DrawsItsColourAndName)
{
    const Scheme scheme{{COLOR_3DFACE, RGB(180, 180, 180)}, {COLOR_BTNTEXT, RGB(10, 60, 10)}};
    PlainFont font;
    Make();
    m_button.SetFont(&font);
    m_button.SetColor(kRed);
    auto picture = PictureOf(m_button);
    EXPECT_EQ(kRed, picture->At(12, 12));
    EXPECT_GT(picture->Count(RGB(10, 60, 10), {30, 0, 90, 24}), 10) << "the name";
    const int arrow = picture->Count(RGB(10, 60, 10), {100, 8, 114, 16});
    EXPECT_EQ(16, arrow) << "rows of 7, 5, 3 and 1";
    EXPECT_TRUE(AreEqual(*ScreenOf(m_button), *picture));
    ASSERT_TRUE(m_button.Open());
    EXPECT_FALSE(AreEqual(*ScreenOf(m_button), *picture)) << "pushed";
    m_button.Close();
    EXPECT_TRUE(AreEqual(*ScreenOf(m_button), *picture));
    m_button.SetColor(CLR_DEFAULT);
    m_button.SetAutomaticColor(COLOR_BTNTEXT);
    picture = ScreenOf(m_button);
    EXPECT_EQ(RGB(10, 60, 10), picture->At(12, 12));
    m_button.EnableWindow(FALSE);
    EXPECT_EQ(0, PictureOf(m_button)->Count(RGB(10, 60, 10), {30, 0, 114, 24}));
    m_button.EnableWindow(TRUE);
    m_button.SetColor(kRed);
    m_button.MoveWindow(10, 10, 60, 24);
    EXPECT_EQ(kRed, PictureOf(m_button)->At(30, 12)) << "no room for the name";

    EXPECT_TRUE(m_button.Open());
    PictureOf(m_button.GetChooser());
    m_button.Close();
    ZO_EXPECT_NO_LEAK(m_button.Open(); PictureOf(m_button.GetChooser()); m_button.Close());
}

/// A screen reader. Its arguments are the button and its grid.
ZO_CHILD(ReadsTheColours)
{
    ::CoInitialize(nullptr);
    {
        const auto window = [&](int i) { return reinterpret_cast<HWND>(ULONG_PTR{std::stoul(child.Argument(i))}); };
        Reader button(window(0)), grid(window(1));
        child.Report(button.Name() + "|" + button.Value() + "|" + button.Action() + "|" + grid.Name(12) + "|" +
                     grid.Value(12));
        EXPECT_EQ(S_OK, grid->accDoDefaultAction(Reader::Part(12)));
    }
    ::CoUninitialize();
}

TEST_F(ColorButton, TellsScreenReaders)
{
    Make();
    m_button.SetWindowText("Ink");
    Reader reader(m_button);
    EXPECT_EQ("Ink|Black (0, 0, 0)|Open", reader.Name() + "|" + reader.Value() + "|" + reader.Action());
    EXPECT_EQ(ROLE_SYSTEM_BUTTONDROPDOWNGRID, reader.Role());
    constexpr LONG kPlain = STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED | STATE_SYSTEM_HASPOPUP;
    EXPECT_EQ(kPlain | STATE_SYSTEM_COLLAPSED, reader.State());
    ASSERT_TRUE(m_button.Open());
    EXPECT_EQ(kPlain | STATE_SYSTEM_EXPANDED, reader.State());
    const auto number = [](CWnd& window) { return std::to_string(HandleToULong(window.m_hWnd)); };
    const Events events(m_button);
    ChildProcess process("ReadsTheColours", {number(m_button), number(m_button.GetChooser())});
    process.Finish();
    EXPECT_EQ(std::vector<std::string>{"Ink|Black (0, 0, 0)|Close|Orange|255, 128, 0"}, process.Reports());
    EXPECT_EQ("Orange", m_parent.Told());
    EXPECT_EQ((std::vector<std::pair<DWORD, LONG>>{{EVENT_OBJECT_STATECHANGE, 0}, {EVENT_OBJECT_VALUECHANGE, 0}}),
              Events::Heard());
    EXPECT_TRUE(m_button.SetColor(kRed) && m_button.SetColor(kRed));
    EXPECT_FALSE(m_button.SetColor(CLR_INVALID));
    EXPECT_EQ(1, Events::Count(EVENT_OBJECT_VALUECHANGE));
}

TEST_F(ColorButton, MayBeDestroyedByWhatItTells)
{
    const auto make = [this](CZoColorButton& button) {
        ASSERT_TRUE(button.Create(kAll, CRect(0, 0, 100, 24), &m_parent, 5));
        button.SetFocus();
        ASSERT_TRUE(button.Open());
        PressKey(button, VK_RIGHT);
    };
    ExpectEndByNotification<CZoColorButton>(m_parent, ZON_COLOR_CHANGED, make,
                                            {[](CZoColorButton& button) { button.SendMessage(WM_KEYDOWN, VK_SPACE); },
                                             [](CZoColorButton& button) { Click(button.GetChooser(), CPoint(5, 5)); },
                                             [](CZoColorButton& button) { button.GetChooser().DoPartAction(1); }});
    auto button = std::make_unique<CZoColorButton>();
    make(*button);
    const DialogDriver driver{[&](HWND window) {
        button.reset(); // while the dialog is open
        Press(window, IDOK);
    }};
    button->GetChooser().DoPartAction(34);
}

TEST_F(ColorButton, SurvivesFaults)
{
    const auto body = [&](const FaultRun& run) {
        CZoColorButton button;
        const BOOL made = WithoutThrowing([&] { return button.Create(kAll, CRect(0, 0, 100, 24), &m_parent, 5); });
        const BOOL opened = made && button.Open();
        run.Stop();
        EXPECT_EQ(opened, button.IsOpen());
        button.Close();
        EXPECT_FALSE(button.IsOpen());
        if (made) {
            EXPECT_TRUE(button.Open());
            EXPECT_EQ(34, button.GetChooser().GetPartCount());
        }
    };
    RunFaultLoop<AllocationFaults>(body);
    RunFaultLoop<RegistryFaults>(body);
    RunFaultLoop<DrawingFaults>(body);
}
