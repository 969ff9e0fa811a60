// The grid of colours: names, keys, mouse, the user's custom colours, screen readers, faults.
#include "controls/control_kit.h"
#include "support/product_test.h"

#include <zogbl/color_chooser.h>
#include <zogbl/language_support.h>
#include <zogbl/resource_ids.h>

#include <afxdlgs.h>

namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255), kRed = RGB(255, 0, 0);
constexpr DWORD kAll = WS_VISIBLE | WS_TABSTOP | CZoColorChooser::kAutomatic | CZoColorChooser::kMore;
constexpr int kMorePart = 34; // without custom colours

class ColorChooser : public ProductTest {
protected:
    ColorChooser()
    {
        std::fill_n(CColorDialog::GetSavedCustomColors(), 16, kWhite);
        m_parent.m_describe = [](NMHDR& header, LRESULT&) -> std::string {
            return header.code == ZON_COLOR_CHANGED && header.idFrom == 5
                       ? (LPCSTR)ZoGetColorName(reinterpret_cast<ZoColorNotification&>(header).color)
                       : "";
        };
    }
    /// Seven rows of 20 pixels, with all parts and no custom colours; cells are as wide.
    void Make(DWORD style = kAll, int rows = 7, ControlParent* parent = nullptr)
    {
        m_chooser.DestroyWindow();
        ASSERT_TRUE(m_chooser.Create(style, CRect(0, 0, 160, 20 * rows), parent != nullptr ? parent : &m_parent, 5));
    }
    static CPoint CellAt(int column, int row) { return {20 * column + 10, 20 * row + 10}; }
    void Type(const char* text)
    {
        for (; *text != '\0'; ++text)
            m_chooser.SendMessage(WM_CHAR, static_cast<BYTE>(*text));
    }
    std::string Kept()
    {
        char text[200];
        m_product.Config().GetValue(ZO_MODE_LOCAL_MACHINE, m_product.UserKey(), "CustomColors", text, sizeof text, "");
        return text;
    }
    void Keep(const std::string& text)
    {
        m_product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, m_product.UserKey(), "CustomColors", text.c_str());
    }
    static std::string Repeat(const char* text, int count)
    {
        std::string all;
        while (count-- > 0)
            all += text;
        return all;
    }

    ControlParent m_parent;
    CZoColorChooser m_chooser;
};

} // namespace

TEST_F(ColorChooser, NamesItsColoursFromDarkToPale)
{
    Make();
    Reader reader(m_chooser);
    EXPECT_EQ("Automatic|Black|Brown|Dark magenta|Orange|Light blue|White|Pale magenta|More...",
              reader.Name(1) + "|" + reader.Name(2) + "|" + reader.Name(4) + "|" + reader.Name(9) + "|" +
                  reader.Name(12) + "|" + reader.Name(24) + "|" + reader.Name(26) + "|" + reader.Name(33) + "|" +
                  reader.Name(kMorePart));
    std::set<std::string> names;
    for (int part = 2; part < kMorePart; ++part) {
        names.insert(reader.Name(part));
        int rgb[3] = {};
        ASSERT_EQ(3, std::sscanf(reader.Value(part).c_str(), "%d, %d, %d", &rgb[0], &rgb[1], &rgb[2]));
        int above[3] = {-1, -1, -1};
        if (part >= 10)
            std::sscanf(reader.Value(part - 8).c_str(), "%d, %d, %d", &above[0], &above[1], &above[2]);
        EXPECT_GT(rgb[0] + rgb[1] + rgb[2], above[0] + above[1] + above[2]) << "is lighter: " << reader.Name(part);
    }
    EXPECT_EQ(32u, names.size());
    EXPECT_STREQ("Dark red (128, 0, 0)", ZoGetColorText(RGB(128, 0, 0)));
    EXPECT_STREQ("1, 2, 3", ZoGetColorText(RGB(1, 2, 3)));
    EXPECT_STREQ("Automatic", ZoGetColorText(CLR_DEFAULT));
    ChangeLanguage(kGerman);
    EXPECT_EQ("Hellrot", reader.Name(19));
    EXPECT_EQ("Weitere...", reader.Name(kMorePart));
    EXPECT_EQ("Schwarz (0, 0, 0)", reader.Value());
}

TEST_F(ColorChooser, ObeysKeys)
{
    const struct {
        std::vector<UINT> keys;
        const char* typed;
        int focused;
        const char* told;
    } kRows[] = {{{VK_RIGHT}, "", 3, ""},
                 {{VK_LEFT, VK_LEFT}, "", 1, ""},
                 {{VK_UP, VK_UP}, "", 1, ""},
                 {{VK_DOWN}, "", 10, ""},
                 {{VK_RIGHT, VK_UP, VK_DOWN}, "", 2, ""},
                 {{VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN}, "", kMorePart, ""},
                 {{VK_END}, "", kMorePart, ""},
                 {{VK_END, VK_UP}, "", 26, ""},
                 {{VK_END, VK_RIGHT, VK_LEFT}, "", 33, ""},
                 {{VK_END, VK_HOME}, "", 1, ""},
                 {{VK_RIGHT, VK_DOWN, VK_SPACE}, "", 11, "Red"},
                 {{VK_RIGHT, VK_RETURN, VK_RETURN}, "", 3, "Dark red"},
                 {{VK_HOME, VK_SPACE}, "", 1, "Automatic"},
                 {{VK_SPACE}, "", 2, ""},
                 {{VK_TAB, VK_ESCAPE, VK_F4}, "", 2, ""},
                 {{}, "r", 11, ""},
                 {{}, "b", 4, ""},
                 {{}, "br", 4, ""},
                 {{}, "dd", 5, ""},
                 {{}, "brp", 27, ""},
                 {{}, "x", 2, ""},
                 {{}, "PAle Y", 29, ""},
                 {{}, "red ", 11, ""},
                 {{VK_LEFT}, "a", 1, ""}};
    for (const auto& row : kRows) {
        Make();
        m_chooser.SetColor(RGB(0, 0, 0));
        m_chooser.SetFocus();
        std::string keys = row.typed;
        Events events(m_chooser);
        int before = m_chooser.GetFocusedPart(), moved = 0;
        for (const UINT key : row.keys) {
            keys += " " + std::to_string(key);
            PressKey(m_chooser, key);
            moved += std::exchange(before, m_chooser.GetFocusedPart()) != m_chooser.GetFocusedPart();
        }
        EXPECT_EQ(moved, Events::Count(EVENT_OBJECT_FOCUS)) << keys;
        for (const char* letter = row.typed; *letter != '\0'; ++letter)
            Type(std::string(1, *letter).c_str());
        EXPECT_EQ(row.focused, m_chooser.GetFocusedPart()) << keys;
        EXPECT_EQ(row.told, m_parent.Told()) << keys;
    }
    Make(); // a space chooses, unless a name that is typed goes on with one
    m_chooser.SetFocus();
    Type("pale");
    PressKey(m_chooser, VK_SPACE);
    Type(" y");
    EXPECT_EQ(29, m_chooser.GetFocusedPart());
    PressKey(m_chooser, VK_SPACE);
    EXPECT_EQ("Pale yellow", m_parent.Told());
    Type("re");
    PressKey(m_chooser, VK_RIGHT); // forgets it
    Type("d");
    EXPECT_EQ(3, m_chooser.GetFocusedPart());
    for (const DWORD direction : {0L, WS_EX_LAYOUTRTL}) { // by the eye
        ControlParent parent(direction);
        Make(kAll, 7, &parent);
        m_chooser.SetColor(kRed);
        m_chooser.SetFocus();
        PressKey(m_chooser, VK_RIGHT);
        EXPECT_EQ(direction == 0 ? 12 : 10, m_chooser.GetFocusedPart());
        m_chooser.DestroyWindow();
    }
}

TEST_F(ColorChooser, ObeysTheMouse)
{
    Make();
    m_chooser.SetColor(RGB(0, 0, 0));
    Click(m_chooser, CellAt(1, 2));
    EXPECT_EQ("Red", m_parent.Told());
    EXPECT_EQ(m_chooser.m_hWnd, ::GetFocus());
    Click(m_chooser, CellAt(1, 2));
    Click(m_chooser, CellAt(3, 6));
    EXPECT_EQ("", m_parent.Told()) << "the same, and the line of the name";
    SendMouse(m_chooser, WM_MOUSEMOVE, CellAt(3, 3));
    EXPECT_EQ(11, m_chooser.GetFocusedPart()) << "not in a window that drops down";
    const struct {
        const char* name;
        std::function<void()> end;
        const char* told;
    } kEnds[] = {{"released elsewhere", [&] { SendMouse(m_chooser, WM_LBUTTONUP, CellAt(2, 3)); }, "Light orange"},
                 {"released outside", [&] { SendMouse(m_chooser, WM_LBUTTONUP, CPoint(500, 5)); }, ""},
                 {"Esc", [&] { PressKey(m_chooser, VK_ESCAPE); }, ""},
                 {"capture", [&] { ::ReleaseCapture(); }, ""},
                 {"disabled", [&] { m_chooser.EnableWindow(FALSE); }, ""}};
    for (const auto& row : kEnds) {
        m_chooser.SetColor(RGB(0, 0, 0));
        m_chooser.SendMessage(WM_KEYDOWN, VK_HOME);
        SendMouse(m_chooser, WM_LBUTTONDOWN, CellAt(1, 1), MK_LBUTTON);
        EXPECT_EQ(3, m_chooser.GetFocusedPart());
        SendMouse(m_chooser, WM_MOUSEMOVE, CellAt(2, 3), MK_LBUTTON);
        EXPECT_EQ(20, m_chooser.GetFocusedPart());
        row.end();
        EXPECT_EQ(row.told, m_parent.Told()) << row.name;
        EXPECT_EQ(row.told[0] != '\0' ? 20 : 1, m_chooser.GetFocusedPart()) << row.name;
        EXPECT_EQ(nullptr, ::GetCapture()) << row.name;
        m_chooser.EnableWindow(TRUE);
    }
}

TEST_F(ColorChooser, ChecksValues)
{
    Make();
    const Events events(m_chooser);
    for (const COLORREF bad : {COLORREF{CLR_INVALID}, COLORREF{PALETTERGB(1, 2, 3)}, COLORREF{PALETTEINDEX(3)}})
        EXPECT_FALSE(m_chooser.SetColor(bad));
    EXPECT_EQ(RGB(0, 0, 0), m_chooser.GetColor());
    EXPECT_TRUE(m_chooser.SetColor(RGB(0, 0, 0)));
    EXPECT_TRUE(Events::Heard().empty());
    EXPECT_TRUE(m_chooser.SetColor(RGB(1, 2, 3)));
    EXPECT_EQ((std::vector<std::pair<DWORD, LONG>>{{EVENT_OBJECT_SELECTION, kMorePart}, {EVENT_OBJECT_VALUECHANGE, 0}}),
              Events::Heard());
    EXPECT_EQ(kMorePart, m_chooser.GetFocusedPart()) << "a colour that is not in the grid";
    EXPECT_TRUE(m_chooser.SetColor(CLR_DEFAULT) && m_chooser.SetAutomaticColor(COLOR_WINDOW));
    EXPECT_FALSE(m_chooser.SetAutomaticColor(-1) || m_chooser.SetAutomaticColor(99));
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), m_chooser.GetShownColor());
    EXPECT_EQ("", m_parent.Told()) << "by the program";

    const ZoNamedColor kOwn[] = {{RGB(1, 1, 1), ZO_IDS_COLOR_OPEN}, {RGB(2, 2, 2), 0}, {kRed, ZO_IDS_COLOR_RED}};
    const ZoNamedColor kBad[] = {{kRed, 0}, {CLR_DEFAULT, 0}};
    const std::vector<ZoNamedColor> most(257, kOwn[0]);
    EXPECT_FALSE(m_chooser.SetColors(nullptr, 3, 1) || m_chooser.SetColors(kOwn, 0, 1) ||
                 m_chooser.SetColors(kOwn, 3, 0) || m_chooser.SetColors(kOwn, 3, 4) ||
                 m_chooser.SetColors(kBad, 2, 1) || m_chooser.SetColors(most.data(), 257, 8));
    EXPECT_EQ(kMorePart, m_chooser.GetPartCount());
    EXPECT_TRUE(m_chooser.SetColors(kOwn, 3, 2));
    Reader reader(m_chooser);
    EXPECT_EQ("Open|2, 2, 2|Red|5",
              reader.Name(2) + "|" + reader.Name(3) + "|" + reader.Name(4) + "|" + std::to_string(reader.Count()));
    PressKey(m_chooser, VK_DOWN);
    EXPECT_EQ(2, m_chooser.GetFocusedPart());
    EXPECT_TRUE(m_chooser.SetColors(most.data(), 256, 1));
    PictureOf(m_chooser); // rows of no height
}

TEST_F(ColorChooser, KeepsCustomColours)
{
    Keep(Repeat("ffffff ", 3) + "010203 ff0000 " + Repeat("ffffff ", 10) + "0A0b0C");
    Make();
    Reader reader(m_chooser);
    EXPECT_EQ(kMorePart + 3, reader.Count());
    EXPECT_EQ("Custom color 1|1, 2, 3|Custom color 3|10, 11, 12",
              reader.Name(34) + "|" + reader.Value(34) + "|" + reader.Name(36) + "|" + reader.Value(36));
    m_chooser.SetColor(RGB(10, 11, 12));
    EXPECT_EQ(36, m_chooser.GetFocusedPart());
    m_chooser.SetFocus();
    m_chooser.SetColor(RGB(7, 8, 9));
    {
        const DialogDriver driver{[&](HWND window) {
            EXPECT_EQ(m_parent.m_hWnd, ::GetWindow(window, GW_OWNER));
            SendMessageA(window, WM_COMMAND, 719, 0); // "define custom colours", and "add" of the colour shown
            SendMessageA(window, WM_COMMAND, 712, 0);
            Press(window, IDCANCEL);
        }};
        PressKey(m_chooser, VK_END);
        PressKey(m_chooser, VK_RETURN);
    }
    EXPECT_EQ("", m_parent.Told());
    EXPECT_EQ("070809 ffffff ffffff 010203 ", Kept().substr(0, 28)) << "on Cancel too";
    EXPECT_EQ(kMorePart + 4, reader.Count());
    EXPECT_EQ(34, m_chooser.GetFocusedPart()) << "it is one of them now";
    EXPECT_EQ(m_chooser.m_hWnd, ::GetFocus());
    const std::string kept = Kept();
    std::fill_n(CColorDialog::GetSavedCustomColors(), 16, kWhite); // as in another program
    Make();
    EXPECT_EQ("7, 8, 9", Reader(m_chooser).Value(34));

    for (const std::string& damaged :
         {kept.substr(1), kept + "0", kept + " ", "+70809" + kept.substr(6), "0x7080" + kept.substr(6),
          kept.substr(0, 6) + "-" + kept.substr(7), std::string("red"), std::string(300, 'f'), std::string()}) {
        std::fill_n(CColorDialog::GetSavedCustomColors(), 16, kWhite);
        Keep(damaged);
        Make();
        EXPECT_EQ(kMorePart, Reader(m_chooser).Count()) << damaged;
    }
    // The colours of the grid are unharmed, and a choice in the dialog is one notification.
    const DialogDriver driver{[&](HWND window) { Press(window, IDOK); },
                              [&](HWND window) {
                                  SetDlgItemInt(window, 706, 77, FALSE); // red
                                  Press(window, IDOK);
                              }};
    m_chooser.DoPartAction(kMorePart);
    EXPECT_EQ("", m_parent.Told()) << "the same colour";
    m_chooser.DoPartAction(kMorePart);
    EXPECT_EQ("77, 8, 9", m_parent.Told());
}

TEST_F(ColorChooser, DrawsEachState)
{
    const Scheme scheme{{COLOR_3DFACE, RGB(180, 180, 180)}, {COLOR_BTNTEXT, RGB(10, 60, 10)},
                        {COLOR_HIGHLIGHT, RGB(0, 0, 200)},  {COLOR_HIGHLIGHTTEXT, RGB(255, 255, 0)},
                        {COLOR_3DSHADOW, RGB(90, 90, 90)},  {COLOR_WINDOWTEXT, RGB(60, 70, 80)}};
    PlainFont font;
    Make();
    m_chooser.SetFont(&font);
    m_chooser.SetColor(kRed);
    auto picture = PictureOf(m_chooser);
    EXPECT_EQ(kRed, picture->At(30, 50));
    EXPECT_EQ(RGB(90, 90, 90), picture->At(23, 43)) << "border";
    EXPECT_EQ(RGB(0, 0, 200), picture->At(21, 41)) << "chosen";
    EXPECT_EQ(RGB(180, 180, 180), picture->At(41, 41));
    EXPECT_EQ(RGB(255, 128, 0), picture->At(50, 50));
    EXPECT_EQ(RGB(60, 70, 80), picture->At(10, 10)) << "automatic";
    EXPECT_GT(picture->Count(RGB(10, 60, 10), {20, 0, 160, 20}), 20);
    EXPECT_GT(picture->Count(RGB(10, 60, 10), {0, 120, 160, 140}), 20) << "the name";
    m_chooser.SetColor(RGB(1, 2, 3)); // in no part, as the next
    picture = PictureOf(m_chooser);
    m_chooser.SetColor(RGB(4, 5, 6));
    EXPECT_FALSE(AreEqual(*picture, *ScreenOf(m_chooser)));
    m_chooser.SetColor(CLR_DEFAULT);
    EXPECT_GT(PictureOf(m_chooser)->Count(RGB(255, 255, 0), {20, 0, 160, 20}), 20) << "the pair of the selection";
    EXPECT_TRUE(AreEqual(*ScreenOf(m_chooser), *PictureOf(m_chooser)));
    m_chooser.SetFocus();
    m_chooser.UpdateWindow();
    PressKey(m_chooser, VK_DOWN); // only what changes is drawn again
    EXPECT_TRUE(AreEqual(*ScreenOf(m_chooser), *PictureOf(m_chooser)));
    EXPECT_EQ(1, PictureOf(m_chooser)->Count(RGB(10, 60, 10), {0, 20, 2, 21})) << "the dotted frame";
    m_chooser.EnableWindow(FALSE);
    picture = PictureOf(m_chooser);
    EXPECT_EQ(0, picture->Count(RGB(10, 60, 10), {20, 0, 160, 20}));
    EXPECT_TRUE(picture->At(50, 50) == RGB(180, 180, 180) || picture->At(51, 50) == RGB(180, 180, 180)) << "hatched";
    m_chooser.EnableWindow(TRUE);

    Reader reader(m_chooser);
    ResizeAtRandom(m_chooser, CSize(300, 200), [&] {
        CRect area = reader.Area(kMorePart);
        m_chooser.ScreenToClient(&area);
        ASSERT_TRUE(area.IsRectEmpty() || m_chooser.FindPart(area.CenterPoint()) == kMorePart);
    });
}

TEST_F(ColorChooser, TellsScreenReaders)
{
    CWnd label;
    ASSERT_TRUE(label.Create("STATIC", "&Ink:", WS_CHILD | WS_VISIBLE, CRect(0, 200, 50, 220), &m_parent, 4));
    Make();
    m_chooser.SetFocus();
    Reader reader(m_chooser);
    EXPECT_EQ("Ink:|Black (0, 0, 0)|Choose|0, 0, 0",
              reader.Name() + "|" + reader.Value() + "|" + reader.Action(2) + "|" + reader.Value(2));
    EXPECT_EQ(ROLE_SYSTEM_TABLE, reader.Role());
    EXPECT_EQ(ROLE_SYSTEM_PUSHBUTTON, reader.Role(1));
    EXPECT_EQ(ROLE_SYSTEM_CELL, reader.Role(2));
    constexpr LONG kPlain = STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_SELECTABLE;
    EXPECT_EQ(kPlain | STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED, reader.State(2));
    EXPECT_EQ(kPlain, reader.State(3));
    EXPECT_EQ(2, reader.Focus());
    EXPECT_EQ(3, reader.At(reader.Area(3).CenterPoint()));
    const Events events(m_chooser);
    EXPECT_EQ(S_OK, reader->accDoDefaultAction(Reader::Part(11)));
    EXPECT_EQ("Red", m_parent.Told());
    EXPECT_EQ((std::vector<std::pair<DWORD, LONG>>{{EVENT_OBJECT_SELECTION, 11}, {EVENT_OBJECT_VALUECHANGE, 0}}),
              Events::Heard());
    m_chooser.EnableWindow(FALSE);
    EXPECT_EQ(kPlain | STATE_SYSTEM_SELECTED | STATE_SYSTEM_UNAVAILABLE, reader.State(11));
}

TEST_F(ColorChooser, MayBeDestroyedByWhatItTells)
{
    const auto make = [this](CZoColorChooser& chooser) {
        ASSERT_TRUE(chooser.Create(kAll, CRect(0, 0, 160, 140), &m_parent, 5));
    };
    ExpectEndByNotification<CZoColorChooser>(m_parent, ZON_COLOR_CHANGED, make,
                                             {[](CZoColorChooser& chooser) {
                                                  PressKey(chooser, VK_RIGHT);
                                                  chooser.SendMessage(WM_KEYDOWN, VK_SPACE);
                                              },
                                              [](CZoColorChooser& chooser) { Click(chooser, CellAt(1, 2)); },
                                              [](CZoColorChooser& chooser) { chooser.DoPartAction(11); }});
    auto chooser = std::make_unique<CZoColorChooser>();
    make(*chooser);
    const DialogDriver driver{[&](HWND window) {
        chooser.reset(); // while the dialog is open
        Press(window, IDOK);
    }};
    chooser->DoPartAction(kMorePart);
}

TEST_F(ColorChooser, SurvivesFaults)
{
    Keep("010203 " + Repeat("ffffff ", 14) + "ffffff");
    Make();
    const auto whole = PictureOf(m_chooser);
    const auto body = [&](const FaultRun& run) {
        m_chooser.DestroyWindow();
        const BOOL made = m_chooser.Create(kAll, CRect(0, 0, 160, 140), &m_parent, 5);
        if (made)
            m_chooser.UpdateWindow();
        run.Stop();
        if (made) {
            m_chooser.Invalidate();
            EXPECT_EQ(m_chooser.GetPartCount() == kMorePart + 1, AreEqual(*whole, *ScreenOf(m_chooser)));
        }
        EXPECT_EQ(made, m_chooser.m_hWnd != nullptr);
    };
    RunFaultLoop<RegistryFaults>(body);
    RunFaultLoop<StringFaults>(body);
}
