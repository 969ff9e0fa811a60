// The field for dates and times: by keys and clicks on real windows, and as a screen reader hears it.
#include "dates_test.h"

#include <zogbl/date_time.h>

namespace {

/// < > ^ v the arrows; [ ] Home and End; ~ Esc; \ Backspace; ! Del; @ Ctrl+A, & Ctrl+C, % Ctrl+V; # Enter; $ the focus
/// goes; * Alt+Down; _ the space. Others are typed.
void Press(CWnd& control, const std::string& keys)
{
    const std::map<char, std::pair<UINT, int>> named = {
        {'<', {VK_LEFT, 0}}, {'>', {VK_RIGHT, 0}},  {'^', {VK_UP, 0}},    {'v', {VK_DOWN, 0}},   {'[', {VK_HOME, 0}},
        {']', {VK_END, 0}},  {'~', {VK_ESCAPE, 0}}, {'\\', {VK_BACK, 0}}, {'!', {VK_DELETE, 0}}, {'#', {VK_RETURN, 0}},
        {'@', {'A', 2}},     {'&', {'C', 2}},       {'%', {'V', 2}}};
    const HWND window = control.m_hWnd; // the control may end meanwhile
    for (const char key : keys) {
        if (!::IsWindow(window))
            return;
        const auto found = named.find(key);
        const char typed = key == '_' ? ' ' : key;
        if (key == '$') {
            control.GetParent()->SetFocus();
        } else if (key == '*') {
            ::SendMessageA(window, WM_SYSKEYDOWN, VK_DOWN, 1 << 29);
        } else if (found != named.end()) {
            PressKey(control, found->second.first, found->second.second);
        } else {
            PressKey(control, static_cast<BYTE>(VkKeyScanA(typed)));
            ::SendMessageA(window, WM_CHAR, static_cast<BYTE>(typed), 1);
        }
    }
}

constexpr DWORD kStyle = WS_VISIBLE | WS_TABSTOP;
constexpr DWORD kShowNone = CZoDateTimeWnd::kShowNone, kSpin = CZoDateTimeWnd::kSpin;
enum Part { kDay = 1, kMonth, kYear, kCheck, kUp, kDown };
using Heard = std::vector<std::pair<DWORD, LONG>>;

class DateTime : public ProductTest {
protected:
    DateTime()
    {
        m_parent.m_describe = [this](NMHDR& header, LRESULT&) -> std::string {
            const auto& change = reinterpret_cast<const ZoDateTimeChange&>(header);
            EXPECT_EQ(7u, header.idFrom);
            return header.code == ZON_DATE_TIME_DROPDOWN  ? "open"
                   : header.code == ZON_DATE_TIME_CLOSEUP ? "closed"
                   : change.isNone                        ? "none"
                                   : Written(change.time).substr(0, 10) + (change.isClamped ? "!" : "");
        };
    }
    void Make(DWORD style, CWnd* parent = nullptr)
    {
        m_date.DestroyWindow();
        ASSERT_TRUE(m_date.Create(style | kStyle, CRect(0, 0, 150, 24), parent != nullptr ? parent : &m_parent, 7));
        ASSERT_TRUE(m_date.SetFormat("dd.MM.yyyy") && m_date.SetTime(At("2023-04-07 12:34:00")));
        m_date.SetFocus();
        m_parent.Told();
    }
    /// \param rows "KEYS = SHOWN = TOLD | ...", from 7 April 2023 each
    void ExpectRows(const char* rows)
    {
        for (const std::string& row : Split(rows, '|')) {
            SCOPED_TRACE(row);
            m_parent.SetFocus();
            m_date.SetTime(At("2023-04-07 12:34:00"));
            m_date.SetFocus();
            m_parent.Told();
            const auto columns = Split(row, '=');
            Press(m_date, columns[0]);
            EXPECT_TRUE(WaitUntil([&] { return !m_date.GetButton().IsOpen(); }));
            EXPECT_EQ(columns[1] + "=" + columns[2], std::string(m_date.GetShownText()) + "=" + m_parent.Told());
            SYSTEMTIME time = {};
            m_date.GetTime(time);
            EXPECT_EQ(12 * 60 + 34, time.wHour * 60 + time.wMinute);
            EXPECT_EQ(nullptr, ::GetCapture());
        }
    }
    ZoPart Described(int part) const
    {
        ZoPart description;
        EXPECT_TRUE(m_date.DescribePart(part, description)) << part;
        return description;
    }
    CPoint CenterOf(int part) const { return Described(part).area.CenterPoint(); }

    ControlParent m_parent;
    CZoDateTimeWnd m_date;
};

} // namespace

TEST_F(DateTime, NotifiesEachActOnce)
{
    Make(0);
    ExpectRows(R"(31=31.04.2023= | 3103=31.03.2023=2023-03-31 | 31$=30.04.2023=2023-04-30! | 31~$=07.04.2023=
        | 07042023$=07.04.2023= | 29022024=29.02.2024=2023-04-29 2024-02-29 | 8=08.04.2023=2023-04-08
        | 1$=01.04.2023=2023-04-01 | 1\2>=02.04.2023=2023-04-02 | ^v=07.04.2023=2023-04-08 2023-04-07
        | +-=07.04.2023=2023-04-08 2023-04-07 | []]=30.04.2023=2023-04-01 2023-04-30 | <]=07.04.9999=9999-04-07
        | >>>>^=07.05.2023=2023-05-07 | !_q=07.04.2023= | @31=31.04.2023= | >@1>>=01.04.2023=2023-04-01)");
    Make(kShowNone);
    ExpectRows(R"(!=No date=none | !!=No date=none | __=07.04.2023=none 2023-04-07 | 31_=31.04.2023= | 31__=No date=none
        | !1=1.04.2023=none | !1~=No date=none | !1$=01.04.2023=none 2023-04-01 | !7>=07.04.2023=none 2023-04-07
        | !^^=08.04.2023=none 2023-04-07 2023-04-08)");
    const SYSTEMTIME least = At("2023-04-03"), most = At("2023-05-20"); // and the calendar's acts
    ASSERT_TRUE(m_date.SetRange(&least, &most));
    ExpectRows(R"(*>#=08.04.2023=open 2023-04-08 closed | *>_=08.04.2023=open 2023-04-08 closed
        | *#=07.04.2023=open closed | *>>~=07.04.2023=open closed | *>>*=07.04.2023=open closed
        | *5~=07.04.2023=open closed | *<<<<<#=03.04.2023=open 2023-04-03 closed
        | 31*~=30.04.2023=2023-04-30! open closed | !*>#=08.04.2023=none open 2023-04-08 closed
        | !*#=07.04.2023=none open 2023-04-07 closed | !*~=No date=none open closed
        | *$=07.04.2023=open closed)");
    m_date.SetFocus();
    Click(m_date.GetButton(), CPoint(3, 3));
    EXPECT_TRUE(m_date.GetButton().IsOpen() && m_date.m_hWnd == ::GetFocus());
    EXPECT_EQ("2023-04-03", Written(m_date.GetButton().GetCalendar().GetLeast()));
    m_date.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 120)); // the calendar's
    EXPECT_STREQ("07.04.2023", m_date.GetShownText());
    m_date.EnableWindow(FALSE);
    EXPECT_TRUE(WaitUntil([&] { return !m_date.GetButton().IsOpen(); }));
    EXPECT_FALSE(::IsWindowEnabled(m_date.GetButton()));

    const auto expectEnd = [&](UINT code, std::initializer_list<const char*> acts) {
        for (const char* keys : acts) {
            ExpectEndByNotification<CZoDateTimeWnd>(
                m_parent, code,
                [&](CZoDateTimeWnd& date) {
                    ASSERT_TRUE(date.Create(kStyle, CRect(0, 40, 150, 64), &m_parent, 9));
                    ASSERT_TRUE(date.SetFormat("dd.MM.yyyy") && date.SetTime(At("2023-04-07")));
                    date.SetFocus();
                },
                {[&](CZoDateTimeWnd& date) { Press(date, keys); }});
        }
    };
    expectEnd(ZON_DATE_TIME_DROPDOWN, {"*"});
    expectEnd(ZON_DATE_TIME_CHANGED, {"*>#", "5", "31$", "^"});
    expectEnd(ZON_DATE_TIME_CLOSEUP, {"*~"});
}

TEST_F(DateTime, ObeysTheMouse)
{
    Make(kSpin | kShowNone);
    m_parent.SetFocus();
    const Events events(m_date);
    Click(m_date, CenterOf(kMonth));
    EXPECT_EQ((Heard{{EVENT_OBJECT_FOCUS, 0}, {EVENT_OBJECT_FOCUS, kMonth}}), Events::Heard()); // the first: the system
    Click(m_date, CenterOf(kUp));
    EXPECT_EQ("2023-05-07", m_parent.Told());
    SendMouse(m_date, WM_LBUTTONDBLCLK, CenterOf(kDown), MK_LBUTTON); // held down
    EXPECT_EQ("2023-04-07", m_parent.Told());
    EXPECT_EQ(STATE_SYSTEM_PRESSED, Described(kDown).state);
    std::string told;
    EXPECT_TRUE(WaitUntil([&] { return (told += m_parent.Told()).size() >= 20; }));
    EXPECT_EQ("2023-03-072023-02-07", told.substr(0, 20));
    SendMouse(m_date, WM_MOUSEMOVE, CPoint(1, 1), MK_LBUTTON); // no longer over it
    m_parent.Told();
    m_date.SendMessage(WM_TIMER, 1);
    PressKey(m_date, VK_ESCAPE);
    EXPECT_EQ("", m_parent.Told()) << "what was told stays";
    m_date.SendMessage(WM_TIMER, 1); // one that was on its way
    EXPECT_FALSE(::GetCapture() != nullptr || m_date.KillTimer(1));
    SendMouse(m_date, WM_LBUTTONDOWN, CenterOf(kUp), MK_LBUTTON);
    m_date.ModifyStyle(kSpin, 0);
    EXPECT_FALSE(::GetCapture() != nullptr || m_date.KillTimer(1)) << "the spin button is gone";

    Make(kSpin | kShowNone);
    Press(m_date, ">");
    for (const int delta : {60, 180, -120})
        m_date.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, delta));
    Click(m_date, CenterOf(kCheck));
    Click(m_date, CenterOf(kCheck));
    EXPECT_EQ("2023-06-07 2023-05-07 none 2023-05-07", m_parent.Told());
    m_date.SetTime(At("2023-02-07"));
    Click(m_date, CenterOf(kDay));
    Press(m_date, "30");
    Click(m_date, CenterOf(kYear));
    EXPECT_EQ("", m_parent.Told()) << "the last field is not left";
    Click(m_date, CenterOf(kDay));
    EXPECT_EQ("2023-02-28!", m_parent.Told());
}

TEST_F(DateTime, CopiesAndPastes)
{
    Make(kShowNone);
    Press(m_date, "31&"); // 31.04. is copied as it is shown, and cannot be pasted
    ASSERT_TRUE(m_date.SetTime(At("2023-01-01")));
    Press(m_date, "%");
    EXPECT_EQ("", m_parent.Told());
    const std::string huge(65536, '1');
    for (const auto& [text, told] : {std::pair{"31.03.2024", "2024-03-31"},
                                     {"2024-03-31", ""},
                                     {huge.c_str(), ""},
                                     {"yesterday", ""},
                                     {"1/2/3", "2003-02-01"}}) {
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, strlen(text) + 1);
        strcpy(static_cast<char*>(GlobalLock(memory)), text);
        GlobalUnlock(memory);
        ASSERT_TRUE(OpenClipboard(m_parent) && EmptyClipboard() && SetClipboardData(CF_TEXT, memory) &&
                    CloseClipboard());
        Press(m_date, "%");
        EXPECT_EQ(told, m_parent.Told()) << text;
    }
    ASSERT_TRUE(m_date.SetNone());
    EXPECT_FALSE(m_date.CopyText()) << "nothing to copy";
    Press(m_date, "%");
    EXPECT_EQ("2003-02-01", m_parent.Told());
    EXPECT_TRUE(OpenClipboard(m_parent) && EmptyClipboard() && CloseClipboard());
    EXPECT_FALSE(m_date.PasteText());
}

TEST_F(DateTime, IsRead)
{
    CWnd label;
    ASSERT_TRUE(label.Create("STATIC", "&Due:", WS_CHILD | WS_VISIBLE, CRect(0, 100, 50, 120), &m_parent, 4));
    Make(kShowNone | kSpin);
    m_date.SetWindowPos(&label, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    Reader reader(m_date);
    const auto describe = [&](LONG part) {
        return reader.Name(part) + "=" + reader.Value(part) + "=" + reader.Action(part) + "=" +
               std::to_string(reader.Role(part)) + "=" + std::to_string(reader.State(part) / STATE_SYSTEM_CHECKED);
    };
    const std::string kParts[] = {"Due:=" + LocaleText(At("2023-04-07"), DATE_LONGDATE) + "==52=65536",
                                  "Day=07=Go to=52=65536",
                                  "Month=04=Go to=52=65536",
                                  "Year=2023=Go to=52=65536",
                                  "Give a date==Uncheck=44=1",
                                  "Up==Press=43=0",
                                  "Down==Press=43=0"};
    ASSERT_EQ(static_cast<LONG>(std::size(kParts)) - 1, reader.Count());
    for (LONG part = 0; part <= reader.Count(); ++part) {
        EXPECT_EQ(kParts[part], describe(part));
        EXPECT_EQ(part, part == 0 ? 0 : reader.At(reader.Area(part).CenterPoint()));
    }
    EXPECT_EQ(1, reader.Focus());
    EXPECT_EQ(-1, reader.Role(7));
    const Events events(m_date);
    const std::pair<const char*, Heard> kActs[] = {
        {"3", {}},
        {"1", {{EVENT_OBJECT_FOCUS, kMonth}}},
        {"~", {{EVENT_OBJECT_VALUECHANGE, 0}}},
        {">", {{EVENT_OBJECT_FOCUS, kYear}}},
        {"^", {{EVENT_OBJECT_VALUECHANGE, 0}}},
        {"!", {{EVENT_OBJECT_STATECHANGE, kCheck}, {EVENT_OBJECT_FOCUS, 0}, {EVENT_OBJECT_VALUECHANGE, 0}}},
        {"!", {}}};
    for (const auto& [keys, heard] : kActs) {
        Press(m_date, keys);
        EXPECT_EQ(heard, Events::Heard()) << keys;
    }
    EXPECT_EQ("No date", reader.Value());
    EXPECT_EQ("Give a date==Check=44=0", describe(kCheck));
    EXPECT_EQ(STATE_SYSTEM_INVISIBLE, reader.State(kDay));
    m_parent.Told();
    for (const LONG part : {kCheck, kUp, kMonth})
        EXPECT_EQ(S_OK, reader->accDoDefaultAction(Reader::Part(part)));
    EXPECT_EQ(kMonth, reader.Focus());
    EXPECT_EQ("2024-04-07 2025-04-07", m_parent.Told());
    Press(m_date, "<31");
    EXPECT_EQ("31.04.2025", reader.Value()) << "as typed";
    m_date.ModifyStyle(kSpin, 0);
    Press(m_date, "~*");
    Events::Heard();
    Press(m_date, "~");
    EXPECT_EQ((Heard{{EVENT_OBJECT_FOCUS, kMonth}}), Events::Heard()) << "it was in the calendar";
    m_date.SetFormat("MM.yyyy");
    EXPECT_EQ(1, Events::Count(EVENT_OBJECT_VALUECHANGE));
}

TEST_F(DateTime, WorksInADialog)
{
    Make(0);
    const auto isWanted = [&](UINT key) {
        MSG message = {m_date.m_hWnd, WM_KEYDOWN, key, 0, 0, {}};
        const LRESULT code = m_date.SendMessage(WM_GETDLGCODE, key, reinterpret_cast<LPARAM>(&message));
        return (code & (DLGC_WANTMESSAGE | DLGC_WANTTAB)) != 0;
    };
    EXPECT_FALSE(isWanted(VK_ESCAPE));
    Press(m_date, "31");
    EXPECT_TRUE(isWanted(VK_ESCAPE));
    EXPECT_EQ("", m_parent.Told());
    EXPECT_FALSE(isWanted(VK_RETURN));
    EXPECT_EQ("2023-04-30!", m_parent.Told()) << "the dialog may end";
    Press(m_date, "*");
    EXPECT_TRUE(isWanted(VK_RETURN) && !isWanted(VK_TAB));
    for (const auto& [style, type] : {std::pair{CZoDateTimeWnd::kTime, LOCALE_STIMEFORMAT},
                                      {CZoDateTimeWnd::kLongDate, LOCALE_SLONGDATE},
                                      {CZoDateTimeWnd::kShortDate, LOCALE_SSHORTDATE}}) {
        Make(style | WS_DISABLED);
        char format[80] = "";
        GetLocaleInfoA(LOCALE_USER_DEFAULT, type, format, sizeof format);
        EXPECT_TRUE(m_date.SetFormat(nullptr));
        EXPECT_STREQ(format, m_date.GetFormat());
        EXPECT_EQ(style == CZoDateTimeWnd::kTime, m_date.GetButton().m_hWnd == nullptr);
        EXPECT_FALSE(::IsWindowEnabled(m_date.GetButton()));
        EXPECT_FALSE(m_date.SetFormat("") || m_date.SetNone() || m_date.SetTime(At("2023-02-29")));
        EXPECT_STREQ(format, m_date.GetFormat());
    }
    Make(kShowNone);
    m_date.SetNoneText(("1" + std::string(65536, '\x83')).c_str());
    Press(m_date, "31");
    EXPECT_TRUE(m_date.SetNone());
    EXPECT_EQ(79, m_date.GetShownText().GetLength()) << "and no half of a character";
    m_date.SetNoneText(("12" + std::string(65536, '\x83')).c_str());
    EXPECT_EQ(IsDoubleByte() ? 78 : 79, m_date.GetShownText().GetLength());
    m_date.ModifyStyle(kShowNone, 0);
    EXPECT_FALSE(m_date.IsNone()) << "there is no check box to bring it back";
    Make(0);
    const CSize ideal = m_date.GetIdealSize();
    EXPECT_TRUE(ideal.cx > 60 && ideal.cx < 150 && ideal.cy > 14 && ideal.cy < 40) << ideal.cx << "x" << ideal.cy;
    m_date.ShowWindow(SW_HIDE);
    Press(m_date, "5");
    EXPECT_EQ("2023-04-05", m_parent.Told());
    ASSERT_TRUE(m_date.SetFormat("MMMM d") && m_date.SetTime(At("2023-05-07")));
    const CPoint before = CenterOf(2);
    ASSERT_TRUE(m_date.SetTime(At("2023-09-07")));
    EXPECT_EQ(!IsDoubleByte(), CenterOf(2).x > before.x) << "behind a longer name";
    ASSERT_TRUE(m_date.SetFormat(nullptr) && !m_date.IsWaiting());
    Press(m_date, "1");
    m_date.SendMessage(WM_SETTINGCHANGE);
    EXPECT_TRUE(m_date.IsWaiting()) << "nothing of its format has changed";
}

TEST_F(DateTime, IsDrawn)
{
    constexpr COLORREF kPaper = RGB(0, 0, 120), kInk = RGB(250, 250, 0), kGray = RGB(0, 200, 0),
                       kChosen = RGB(200, 0, 0);
    const Scheme scheme{
        {COLOR_WINDOW, kPaper}, {COLOR_WINDOWTEXT, kInk}, {COLOR_HIGHLIGHT, kChosen}, {COLOR_GRAYTEXT, kGray}};
    PlainFont font;
    const auto count = [&](int part, COLORREF color) { return PictureOf(m_date)->Count(color, Described(part).area); };
    const auto isHigherAtRight = [&](const Canvas& picture) { // the mark
        const CRect box = Described(kCheck).area;
        const CPoint middle = box.CenterPoint();
        return picture.Count(kInk, CRect(middle.x, box.top, box.right, middle.y)) >
               picture.Count(kInk, CRect(box.left, box.top, middle.x, middle.y));
    };
    for (const DWORD direction : {0L, WS_EX_LAYOUTRTL}) {
        ControlParent parent(direction);
        Make(kShowNone | kSpin, &parent);
        m_date.SetFont(&font);
        EXPECT_EQ(direction == 0, CenterOf(kDay).x < CenterOf(kYear).x) << "mirrored coordinates: the same to the eye";
        EXPECT_TRUE(count(kDay, kChosen) > 20 && count(kMonth, kChosen) == 0 && count(kMonth, kInk) > 5);
        PressKey(m_date, VK_RIGHT);
        EXPECT_TRUE(count(kMonth, kChosen) > 20 && count(kDay, kChosen) == 0);
        PressKey(m_date, 'A', ZoKey::kControl);
        EXPECT_TRUE(count(kDay, kChosen) > 20 && count(kYear, kChosen) > 20);
        EXPECT_EQ(21, count(kCheck, kInk)) << "the mark";
        EXPECT_TRUE(isHigherAtRight(*PictureOf(m_date)));
        EXPECT_EQ(direction == 0, isHigherAtRight(*ScreenOf(m_date))) << "in its own coordinates";
        parent.SetFocus();
        EXPECT_EQ(0, count(kDay, kChosen));
        m_date.SetTime(At("2028-11-28"));
        EXPECT_TRUE(direction != 0 || AreEqual(*PictureOf(m_date), *ScreenOf(m_date)));
        m_date.SetNone();
        EXPECT_TRUE(direction != 0 || AreEqual(*PictureOf(m_date), *ScreenOf(m_date)));
        m_date.SetTime(At("2023-04-07"));
        m_date.EnableWindow(FALSE);
        EXPECT_TRUE(count(kDay, kGray) > 5 && count(kDay, kInk) == 0);
        m_date.EnableWindow(TRUE);
        m_date.MoveWindow(0, 0, 76, 24); // room for a field alone: it is the one with the focus
        m_date.SetFocus();
        EXPECT_GT(count(kDay, kChosen), 20);
        PressKey(m_date, direction == 0 ? VK_LEFT : VK_RIGHT);
        EXPECT_GT(count(direction == 0 ? kYear : kMonth, kChosen), 20);
        m_date.DestroyWindow();
    }
}
