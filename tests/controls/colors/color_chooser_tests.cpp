// The grid of colours: names, keys, mouse, the user's custom colours, screen readers, faults.
#include "color_kit.h"

namespace {

const ZoNamedColor kOwn[] = {{RGB(1, 1, 1), ZO_IDS_COLOR_OPEN}, {RGB(2, 2, 2), 0}, {kRed, ZO_IDS_COLOR_RED}};

class ColorChooser : public ColorTest {
protected:
    /// Seven rows of 20 pixels, with all parts and no custom colours; cells are as wide.
    void Make(ControlParent* parent = nullptr)
    {
        m_chooser.DestroyWindow();
        ASSERT_TRUE(m_chooser.Create(kAll, CRect(0, 0, 160, 140), parent != nullptr ? parent : &m_parent, 5));
    }
    void Play(const std::string& script) { ::Play(m_chooser, script); }
    std::string Kept()
    {
        char text[200];
        m_product.Config().GetValue(ZO_MODE_LOCAL_MACHINE, m_product.UserKey() + "\\Colors", "CustomColors", text,
                                    sizeof text, "");
        return text;
    }
    void Keep(const std::string& text)
    {
        m_product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, m_product.UserKey() + "\\Colors", "CustomColors",
                                    text.c_str());
    }
    static std::string Repeat(const char* text, int count)
    {
        std::string all;
        while (count-- > 0)
            all += text;
        return all;
    }
    /// Names of parts: "Black|White".
    std::string Names(std::initializer_list<int> parts)
    {
        std::string all;
        for (const int part : parts)
            all += (all.empty() ? "" : "|") + Reader(m_chooser).Name(part);
        return all;
    }

    CZoColorChooser m_chooser;
};

} // namespace

TEST_F(ColorChooser, NamesItsColoursFromDarkToPale)
{
    Make();
    Reader reader(m_chooser);
    EXPECT_EQ("Automatic|Black|Brown|Dark magenta|Orange|Light blue|White|Pale magenta|More...",
              Names({1, 2, 4, 9, 12, 24, 26, 33, kMorePart}));
    EXPECT_STREQ("Dark red (128, 0, 0)", ZoGetColorText(RGB(128, 0, 0)));
    EXPECT_STREQ("1, 2, 3", ZoGetColorText(RGB(1, 2, 3)));
    EXPECT_STREQ("Automatic", ZoGetColorText(CLR_DEFAULT));
    ChangeLanguage(kGerman);
    EXPECT_EQ("Hellrot|Weitere...", Names({19, kMorePart}));
    EXPECT_EQ("Schwarz (0, 0, 0)", reader.Value());
}

TEST_F(ColorChooser, ObeysKeys)
{
    const struct {
        const char* keys;
        int focused, moves;
        const char* told;
    } kRows[] = {{"k39", 3, 1, ""}, // right, left, up, down, end, home, space, Enter
                 {"k37 k37", 1, 1, ""},
                 {"k38 k38", 1, 1, ""},
                 {"k40", 10, 1, ""},
                 {"k39 k38 k40", 2, 3, ""},
                 {"k40 k40 k40 k40 k40", kMorePart, 4, ""},
                 {"k35 k35", kMorePart, 1, ""},
                 {"k35 k38", 26, 2, ""},
                 {"k35 k39 k37", 33, 2, ""},
                 {"k35 k36", 1, 2, ""},
                 {"k39 k40 k32", 11, 2, "Red"},
                 {"k39 k13 k13", 3, 1, "Dark red"},
                 {"k36 k32", 1, 1, "Automatic"},
                 {"k32 k9 k27 k115", 2, 0, ""},
                 {"tr", 11, 1, ""},
                 {"tbr", 4, 1, ""},
                 {"tdd", 5, 2, ""},
                 {"tbrp", 27, 2, ""},
                 {"tx", 2, 0, ""},
                 {"k37 ta", 1, 1, ""},
                 {"tred k32", 11, 1, "Red"},
                 {"tre k39 td", 3, 3, ""}}; // forgotten
    for (const auto& row : kRows) {
        Make();
        m_chooser.SetColor(kBlack);
        m_chooser.SetFocus();
        const Events events(m_chooser);
        Play(row.keys);
        EXPECT_EQ(row.focused, m_chooser.GetFocusedPart()) << row.keys;
        EXPECT_EQ(row.moves, Events::Count(EVENT_OBJECT_FOCUS)) << row.keys;
        EXPECT_EQ(row.told, m_parent.Told()) << row.keys;
    }
    Make();
    m_chooser.SetFocus();
    Play("tpale k32");
    m_chooser.SendMessage(WM_CHAR, ' ');
    Play("ty");
    EXPECT_EQ(29, m_chooser.GetFocusedPart());
    Play("k32");
    m_chooser.SendMessage(WM_CHAR, ' '); // which the key has become, too
    EXPECT_EQ("Pale yellow", m_parent.Told());
    Play("tr"); // not the beginning of " r"
    EXPECT_EQ(11, m_chooser.GetFocusedPart());
    Play("tp");
    m_parent.SetFocus(); // forgets it
    m_chooser.SetFocus();
    Play("tr");
    EXPECT_EQ(11, m_chooser.GetFocusedPart());
    for (const DWORD direction : {0L, WS_EX_LAYOUTRTL}) { // by the eye
        ControlParent parent(direction);
        Make(&parent);
        m_chooser.SetColor(kRed);
        m_chooser.SetFocus();
        Play("k39");
        EXPECT_EQ(direction == 0 ? 12 : 10, m_chooser.GetFocusedPart());
        m_chooser.DestroyWindow();
    }
}

TEST_F(ColorChooser, ObeysTheMouse)
{
    Make();
    m_chooser.SetColor(kBlack);
    Play("c30,50");
    EXPECT_EQ("Red", m_parent.Told());
    EXPECT_EQ(m_chooser.m_hWnd, ::GetFocus());
    Play("c30,50 c70,130");
    EXPECT_EQ("", m_parent.Told()) << "the same, and the line of the name";
    Play("m70,70");
    EXPECT_EQ(11, m_chooser.GetFocusedPart()) << "not in a window that drops down";
    const struct {
        const char* name;
        std::function<void()> end;
        const char* told;
        int focused;
    } kEnds[] = {{"released elsewhere", [&] { Play("u50,70"); }, "Light orange", 20},
                 {"released outside", [&] { Play("u500,5"); }, "", 1},
                 {"Esc", [&] { PressKey(m_chooser, VK_ESCAPE); }, "", 1},
                 {"capture", [&] { ::ReleaseCapture(); }, "", 1},
                 {"disabled", [&] { m_chooser.EnableWindow(FALSE); }, "", 1},
                 {"other colours", [&] { m_chooser.SetColors(kOwn, 3, 2); }, "", 5}};
    for (const auto& row : kEnds) {
        m_chooser.SetColor(kBlack);
        Play("k36 d30,30");
        EXPECT_EQ(3, m_chooser.GetFocusedPart());
        Play("m50,70");
        EXPECT_EQ(20, m_chooser.GetFocusedPart());
        row.end();
        EXPECT_EQ(row.told, m_parent.Told()) << row.name;
        EXPECT_EQ(row.focused, m_chooser.GetFocusedPart()) << row.name;
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
    EXPECT_TRUE(m_chooser.GetColor() == kBlack && m_chooser.SetColor(kBlack));
    EXPECT_EQ("", HeardText());
    EXPECT_TRUE(m_chooser.SetColor(RGB(1, 2, 3)));
    EXPECT_EQ("selection 34, value 0", HeardText());
    EXPECT_EQ(kMorePart, m_chooser.GetFocusedPart()) << "a colour that is not in the grid";
    EXPECT_TRUE(m_chooser.SetColor(CLR_DEFAULT) && m_chooser.SetAutomaticColor(COLOR_WINDOW));
    EXPECT_FALSE(m_chooser.SetAutomaticColor(-1) || m_chooser.SetAutomaticColor(COLOR_MENUBAR + 1));
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), m_chooser.GetShownColor());
    EXPECT_EQ("", m_parent.Told()) << "by the program";

    const ZoNamedColor kBad[] = {{kRed, 0}, {CLR_DEFAULT, 0}};
    const std::vector<ZoNamedColor> most(257, kOwn[0]);
    EXPECT_FALSE(m_chooser.SetColors(nullptr, 3, 1) || m_chooser.SetColors(kOwn, 0, 1) ||
                 m_chooser.SetColors(kOwn, 3, 0) || m_chooser.SetColors(kOwn, 3, 4) ||
                 m_chooser.SetColors(kBad, 2, 1) || m_chooser.SetColors(most.data(), 257, 8));
    EXPECT_EQ(kMorePart, m_chooser.GetPartCount());
    EXPECT_TRUE(m_chooser.SetColors(kOwn, 3, 2));
    EXPECT_EQ("Open|2, 2, 2|Red|More...", Names({2, 3, 4, 5}));
    Play("k40");
    EXPECT_EQ(2, m_chooser.GetFocusedPart());
    m_chooser.ModifyStyle(CZoColorChooser::kAutomatic | CZoColorChooser::kMore, 0);
    EXPECT_EQ("Open|2, 2, 2|Red|", Names({1, 2, 3, 4}));
    EXPECT_EQ(0, Reader(m_chooser).State(3) & STATE_SYSTEM_SELECTED) << "automatic is not there";
    EXPECT_TRUE(m_chooser.SetColors(most.data(), 256, 1));
    PictureOf(m_chooser); // rows of no height
}

TEST_F(ColorChooser, KeepsCustomColours)
{
    Keep(Repeat("ffffff ", 3) + "010203 ff0000 " + Repeat("ffffff ", 10) + "0A0b0C");
    Make();
    Reader reader(m_chooser);
    EXPECT_EQ(kMorePart + 3, reader.Count());
    EXPECT_EQ("Custom color 1|Custom color 3", Names({34, 36}));
    EXPECT_EQ("1, 2, 3|10, 11, 12", reader.Value(34) + "|" + reader.Value(36));
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
        Play("k35 k13");
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
    constexpr COLORREF kMark = RGB(0, 0, 200), kOnMark = RGB(255, 255, 0), kBorder = RGB(90, 90, 90);
    const Scheme scheme{{COLOR_3DFACE, kFace},     {COLOR_BTNTEXT, kText},         {COLOR_HIGHLIGHT, kMark},
                        {COLOR_3DSHADOW, kBorder}, {COLOR_HIGHLIGHTTEXT, kOnMark}, {COLOR_WINDOWTEXT, RGB(60, 70, 80)}};
    PlainFont font;
    Make();
    m_chooser.SetFont(&font);
    m_chooser.SetColor(kRed);
    const CRect automatic(20, 0, 160, 20), line(0, 121, 160, 140);
    auto picture = PictureOf(m_chooser);
    EXPECT_EQ(kRed, picture->At(30, 50));
    EXPECT_EQ(kBorder, picture->At(23, 43));
    EXPECT_EQ(kMark, picture->At(21, 41)) << "chosen";
    EXPECT_EQ(kFace, picture->At(41, 41));
    EXPECT_EQ(RGB(255, 128, 0), picture->At(50, 50));
    EXPECT_EQ(RGB(60, 70, 80), picture->At(10, 10)) << "automatic";
    EXPECT_GT(picture->Count(kText, automatic), 20);
    const int name = picture->Count(kText, line);
    EXPECT_GT(name, 20);
    Play("k36");
    EXPECT_EQ(name, PictureOf(m_chooser)->Count(kText, line))
        << "the colour chosen, as long as the keyboard is elsewhere";
    m_chooser.SetColor(RGB(1, 2, 3)); // in no part, as the next
    picture = PictureOf(m_chooser);
    m_chooser.SetColor(RGB(4, 5, 6));
    EXPECT_FALSE(AreEqual(*picture, *ScreenOf(m_chooser)));
    m_chooser.SetColor(CLR_DEFAULT);
    EXPECT_GT(PictureOf(m_chooser)->Count(kOnMark, automatic), 20) << "the pair of the selection";
    m_chooser.SetFocus();
    ScreenOf(m_chooser);
    Play("k40"); // only what changes is drawn again
    EXPECT_TRUE(AreEqual(*ScreenOf(m_chooser), *PictureOf(m_chooser)));
    EXPECT_EQ(1, PictureOf(m_chooser)->Count(kText, {0, 20, 2, 21})) << "the dotted frame";
    m_chooser.EnableWindow(FALSE);
    picture = PictureOf(m_chooser);
    EXPECT_EQ(0, picture->Count(kText, automatic));
    EXPECT_TRUE(picture->At(50, 50) == kFace || picture->At(51, 50) == kFace) << "hatched";
}

TEST_F(ColorChooser, TellsScreenReaders)
{
    Make();
    Reader reader(m_chooser);
    constexpr LONG kPlain = STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_SELECTABLE;
    EXPECT_EQ(kPlain | STATE_SYSTEM_SELECTED, reader.State(2));
    m_chooser.SetFocus();
    EXPECT_EQ("Choose|0, 0, 0", reader.Action(2) + "|" + reader.Value(2));
    EXPECT_EQ(ROLE_SYSTEM_PUSHBUTTON, reader.Role(1));
    EXPECT_EQ(ROLE_SYSTEM_CELL, reader.Role(2));
    EXPECT_EQ(kPlain | STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED, reader.State(2));
    EXPECT_EQ(kPlain, reader.State(3));
    EXPECT_EQ(2, reader.Focus());
    EXPECT_EQ(3, reader.At(reader.Area(3).CenterPoint()));
    const Events events(m_chooser);
    EXPECT_EQ(S_OK, reader->accDoDefaultAction(Reader::Part(11)));
    EXPECT_EQ("Red", m_parent.Told());
    EXPECT_EQ("selection 11, value 0", HeardText());
    EXPECT_EQ(2, reader.Focus()) << "it does not move under the user's hands";
    m_chooser.EnableWindow(FALSE);
    EXPECT_EQ(kPlain | STATE_SYSTEM_SELECTED | STATE_SYSTEM_UNAVAILABLE, reader.State(11));
}

TEST_F(ColorChooser, MayBeDestroyedInTheSystemsDialog)
{
    auto chooser = std::make_unique<CZoColorChooser>();
    ASSERT_TRUE(chooser->Create(kAll, CRect(0, 0, 160, 140), &m_parent, 5));
    EndInDialog(chooser, *chooser);
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
