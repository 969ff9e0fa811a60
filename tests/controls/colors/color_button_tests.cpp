// The button that drops a grid of colours down.
#include "color_kit.h"

namespace {

class ColorButton : public ColorTest {
protected:
    void Make(DWORD style = kAll)
    {
        m_button.DestroyWindow();
        m_button.SetColor(kBlack);
        ASSERT_TRUE(m_button.Create(style, CRect(10, 10, 130, 34), &m_parent, 5));
        m_button.SetFocus();
    }
    void Play(const std::string& script) { ::Play(m_button, script); }
    void PressWithAlt(UINT key) { m_button.SendMessage(WM_SYSKEYDOWN, key, 1 << 29); }
    /// Clicks a part of the open grid.
    void Choose(int part)
    {
        CPoint point = Reader(m_button.GetChooser()).Area(part).CenterPoint();
        m_button.GetChooser().ScreenToClient(&point);
        Click(m_button.GetChooser(), point);
    }
    int Focused() { return m_button.GetChooser().GetFocusedPart(); }

    CZoColorButton m_button;
};

} // namespace

TEST_F(ColorButton, ClosesItsGridOnceInEachWay)
{
    ControlParent other;
    PlainFont font;
    const struct {
        const char* name;
        std::function<void()> act;
        bool keepsFocus;
        const char* told;
    } kWays[] = {
        {"choice by a click", [&] { Choose(11); }, true, "Red"},
        {"choice by a key", [&] { Play("k39 k13"); }, true, "Dark red"},
        {"the colour it has", [&] { Play("k32"); }, true, ""},
        {"Esc", [&] { Play("k39 k27"); }, true, ""},
        {"Alt+Up", [&] { PressWithAlt(VK_UP); }, true, ""},
        {"F4", [&] { Play("k115"); }, true, ""},
        {"click on the button", [&] { Play("c5,5"); }, true, ""},
        {"click on the parent", [&] { Click(m_parent, CPoint(300, 280)); }, true, ""},
        {"click on another window", [&] { Click(other, CPoint(300, 280)); }, true, ""},
        {"another control", [&] { other.SetFocus(); }, false, ""},
        {"another program", [&] { m_button.GetChooser().GetParent()->SendMessage(WM_ACTIVATEAPP, FALSE); }, true, ""},
        {"disabled", [&] { m_button.EnableWindow(FALSE); }, false, ""},
        {"hidden", [&] { m_button.ShowWindow(SW_HIDE); }, false, ""},
        {"moved", [&] { m_button.MoveWindow(20, 20, 120, 24); }, true, ""},
        {"parent moved", [&] { m_parent.MoveWindow(90, 90, 400, 300); }, true, ""},
        {"destroyed", [&] { m_button.DestroyWindow(); }, false, ""},
        {"action", [&] { m_button.DoPartAction(0); }, true, ""},
        {"mode", [&] { m_button.SendMessage(WM_CANCELMODE); }, true, ""},
        {"font", [&] { m_button.SetFont(&font); }, true, ""},
        {"program", [&] { m_button.Close(); }, true, ""},
    };
    for (const auto& way : kWays) {
        SCOPED_TRACE(way.name);
        m_parent.MoveWindow(50, 50, 400, 300);
        Make();
        ASSERT_TRUE(m_button.Open());
        EXPECT_EQ(m_button.m_hWnd, ::GetFocus());
        const Events events(m_button);
        way.act();
        EXPECT_TRUE(WaitUntil([&] { return !m_button.IsOpen(); }));
        PumpWaiting();
        EXPECT_EQ(way.name == std::string("disabled") ? 2 : 1, Events::Count(EVENT_OBJECT_STATECHANGE));
        EXPECT_EQ(way.told, m_parent.Told());
        EXPECT_EQ(way.keepsFocus, ::GetFocus() == m_button.m_hWnd && m_button.m_hWnd != nullptr);
        EXPECT_EQ(nullptr, ::GetCapture());
        EXPECT_FALSE(m_button.IsOpen());
        m_button.EnableWindow(TRUE);
        m_button.ShowWindow(SW_SHOW);
    }
}

TEST_F(ColorButton, OpensByEachKeyAndClick)
{
    const struct {
        const char* name;
        std::function<void()> act;
        bool opens;
    } kWays[] = {{"F4", [&] { Play("k115"); }, true},
                 {"Space", [&] { Play("k32"); }, true},
                 {"Alt+Down", [&] { PressWithAlt(VK_DOWN); }, true},
                 {"click", [&] { Play("c60,5"); }, true},
                 {"action", [&] { m_button.DoPartAction(0); }, true},
                 {"arrows, a letter, Enter, Esc", [&] { Play("k40 k39 tr k13 k27"); }, false},
                 {"Alt+Up", [&] { PressWithAlt(VK_UP); }, false}};
    for (const auto& way : kWays) {
        Make();
        way.act();
        EXPECT_EQ(way.opens, m_button.IsOpen() != FALSE) << way.name;
        EXPECT_EQ(kBlack, m_button.GetColor()) << way.name;
        EXPECT_EQ(m_button.m_hWnd, ::GetFocus());
    }
    EXPECT_EQ("", m_parent.Told());
    m_button.EnableWindow(FALSE);
    EXPECT_FALSE(m_button.Open());
    Make(WS_TABSTOP);
    EXPECT_FALSE(m_button.Open()) << "hidden";
    Make(WS_VISIBLE);
    ASSERT_TRUE(m_button.Open() && m_button.Open());
    EXPECT_EQ(32, m_button.GetChooser().GetPartCount()) << "without the styles";
    constexpr ZoNamedColor kOwn = {kRed, 0};
    EXPECT_TRUE(m_button.SetColors(&kOwn, 1, 1) && !m_button.IsOpen());
}

TEST_F(ColorButton, HandsItsKeysToTheGrid)
{
    Make();
    m_button.SetColor(kRed);
    ASSERT_TRUE(m_button.Open());
    const Events events(m_button.GetChooser());
    Play("k40 tw");
    EXPECT_EQ("focus 19, focus 26", HeardText());
    // The mouse leads it, but only if it moves.
    SendMouse(m_button.GetChooser(), WM_MOUSEMOVE, CPoint(5, 5));
    EXPECT_EQ(1, Focused());
    Play("k40");
    SendMouse(m_button.GetChooser(), WM_MOUSEMOVE, CPoint(5, 5));
    EXPECT_EQ(2, Focused());
    // As in a dialog: Esc is the grid's, Tab leads on.
    MSG key = {m_button, WM_KEYDOWN, VK_ESCAPE, 1, 0, {}};
    const auto code = [&] { return m_button.SendMessage(WM_GETDLGCODE, key.wParam, reinterpret_cast<LPARAM>(&key)); };
    EXPECT_NE(0, code() & DLGC_WANTALLKEYS);
    key.wParam = VK_TAB;
    EXPECT_EQ(0, code() & (DLGC_WANTALLKEYS | DLGC_WANTTAB));
    m_button.Close();
    EXPECT_EQ(DLGC_BUTTON, code());

    const DialogDriver driver{[&](HWND window) {
                                  EXPECT_FALSE(m_button.IsOpen());
                                  SetDlgItemInt(window, 706, 77, FALSE); // red
                                  Press(window, IDOK);
                              },
                              [](HWND window) { Press(window, IDCANCEL); }};
    Play("k115 k35 k32");
    EXPECT_EQ("77, 0, 0", m_parent.Told());
    EXPECT_EQ(m_button.m_hWnd, ::GetFocus());
    ASSERT_TRUE(m_button.Open());
    EXPECT_EQ(kMorePart, Focused()) << "a colour that is not in the grid";
    Play("k13");
    EXPECT_EQ("", m_parent.Told());
    EXPECT_EQ(m_button.m_hWnd, ::GetFocus());
    EXPECT_EQ(RGB(77, 0, 0), m_button.GetColor());
}

TEST_F(ColorButton, DrawsItsColourAndName)
{
    const Scheme scheme{{COLOR_3DFACE, kFace}, {COLOR_BTNTEXT, kText}};
    PlainFont font;
    Make();
    m_button.SetFont(&font);
    m_button.SetColor(kRed);
    auto picture = PictureOf(m_button);
    EXPECT_EQ(kRed, picture->At(12, 12));
    EXPECT_GT(picture->Count(kText, {30, 0, 90, 24}), 10) << "the name";
    EXPECT_EQ(16, picture->Count(kText, {100, 8, 114, 16})) << "rows of 7, 5, 3 and 1";
    EXPECT_TRUE(AreEqual(*ScreenOf(m_button), *picture));
    ASSERT_TRUE(m_button.Open());
    EXPECT_FALSE(AreEqual(*ScreenOf(m_button), *picture)) << "pushed";
    m_button.Close();
    EXPECT_TRUE(AreEqual(*ScreenOf(m_button), *picture));
    m_button.SetColor(CLR_DEFAULT);
    m_button.SetAutomaticColor(COLOR_BTNTEXT);
    EXPECT_EQ(kText, ScreenOf(m_button)->At(12, 12));
    m_button.EnableWindow(FALSE);
    EXPECT_EQ(0, PictureOf(m_button)->Count(kText, {30, 0, 114, 24}));
    m_button.EnableWindow(TRUE);
    m_button.SetColor(kRed);
    m_button.MoveWindow(10, 10, 60, 24);
    EXPECT_EQ(kRed, PictureOf(m_button)->At(30, 12)) << "no room for the name";
    const auto openAndClose = [&] {
        EXPECT_TRUE(m_button.Open());
        PictureOf(m_button.GetChooser());
        m_button.Close();
    };
    openAndClose();
    ZO_EXPECT_NO_LEAK(openAndClose());
}

TEST_F(ColorButton, TellsScreenReaders)
{
    Make();
    m_button.SetWindowText("Ink");
    Reader reader(m_button);
    const auto all = [&] { return reader.Name() + "|" + reader.Value() + "|" + reader.Action(); };
    EXPECT_EQ("Ink|Black (0, 0, 0)|Open", all());
    constexpr LONG kPlain = STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED | STATE_SYSTEM_HASPOPUP;
    EXPECT_EQ(kPlain | STATE_SYSTEM_COLLAPSED, reader.State());
    ASSERT_TRUE(m_button.Open());
    EXPECT_EQ(kPlain | STATE_SYSTEM_EXPANDED, reader.State());
    EXPECT_EQ("Ink|Black (0, 0, 0)|Close", all());
    const Events events(m_button);
    EXPECT_EQ(S_OK, Reader(m_button.GetChooser())->accDoDefaultAction(Reader::Part(12)));
    EXPECT_EQ("Orange", m_parent.Told());
    EXPECT_TRUE(m_button.SetColor(kRed) && m_button.SetColor(kRed));
    EXPECT_FALSE(m_button.SetColor(CLR_INVALID));
    EXPECT_EQ("state 0, value 0, value 0", HeardText());
}

TEST_F(ColorButton, MayBeDestroyedInTheSystemsDialog)
{
    auto button = std::make_unique<CZoColorButton>();
    ASSERT_TRUE(button->Create(kAll, CRect(0, 0, 100, 24), &m_parent, 5) && button->Open());
    EndInDialog(button, button->GetChooser());
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
        EXPECT_TRUE(!made || (button.Open() && button.GetChooser().GetPartCount() == kMorePart));
    };
    RunFaultLoop<AllocationFaults>(body);
    RunFaultLoop<RegistryFaults>(body);
    RunFaultLoop<DrawingFaults>(body);
}
