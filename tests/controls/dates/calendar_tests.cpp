// The calendar, driven as a person would.
#include "dates_test.h"

#include "controls/base/day.h"

namespace {

constexpr DWORD kSpan = CZoCalendar::kSpan;

class Calendar : public ProductTest {
protected:
    void Make(DWORD style = 0, DWORD parentStyleEx = 0)
    {
        m_calendar.reset();
        m_parent = std::make_unique<ControlParent>(parentStyleEx);
        m_calendar = std::make_unique<CZoCalendar>();
        ASSERT_TRUE(m_calendar->Create(style | WS_VISIBLE | WS_TABSTOP, CRect(0, 0, 1, 1), m_parent.get(), 5));
        m_calendar->MoveWindow(CRect(CPoint(0, 0), m_calendar->GetIdealSize()));
        m_parent->m_describe = [](NMHDR& header, LRESULT&) { return DescribeSelection(header); };
        m_calendar->SetFocus();
    }
    std::string Selected() const { return Span(m_calendar->GetFirst(), m_calendar->GetLast()); }
    std::string Shown() const { return Written(m_calendar->GetShownMonth()).substr(0, 7); }
    /// What was told since, and what month is shown.
    std::string Told() { return m_parent->Told() + " in " + Shown(); }

    CRect Area(int part) const
    {
        ZoPart description;
        EXPECT_TRUE(m_calendar->DescribePart(part, description)) << part;
        return description.area;
    }
    int PartOf(const char* day) const
    {
        SYSTEMTIME at = {};
        for (int part = 1; part <= CZoCalendar::kDays; ++part) {
            if (m_calendar->GetPartDay(part, at) && Written(at) == day)
                return part;
        }
        return 0;
    }
    void Mouse(UINT message, int part, WPARAM keys = MK_LBUTTON)
    {
        SendMouse(*m_calendar, message, part != 0 ? Area(part).CenterPoint() : CPoint(-5, -5), keys);
    }
    void Press(int part, WPARAM keys = MK_LBUTTON) { Mouse(WM_LBUTTONDOWN, part, keys); }
    void Press(const char* day, WPARAM keys = MK_LBUTTON) { Press(PartOf(day), keys); }
    void Move(const char* day) { Mouse(WM_MOUSEMOVE, PartOf(day)); }
    std::string Release(int part = 0) ///< 0: outside \return as Told
    {
        Mouse(WM_LBUTTONUP, part, 0);
        return Told();
    }
    std::string ClickOn(int part) ///< \return as Told
    {
        Press(part);
        return Release(part);
    }
    std::string ClickOn(const char* day) { return ClickOn(PartOf(day)); }
    void Wheel(int by) { m_calendar->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, by)); }

    const Clock m_clock{{2024, 3, 0, 15, 10, 0, 0, 0}};
    const UserWeeks m_weeks;
    std::unique_ptr<ControlParent> m_parent;
    std::unique_ptr<CZoCalendar> m_calendar;
};

} // namespace

TEST_F(Calendar, ObeysKeysAndNotifiesOnce)
{
    const std::map<std::string, UINT> keys = {{"Left", VK_LEFT}, {"Right", VK_RIGHT}, {"Up", VK_UP},
                                              {"Down", VK_DOWN}, {"PgUp", VK_PRIOR},  {"PgDn", VK_NEXT},
                                              {"Home", VK_HOME}, {"End", VK_END},     {"-", VK_SUBTRACT},
                                              {"+", VK_ADD},     {"A", 'A'}};
    const SYSTEMTIME least = At("1601-01-03"), most = At("9999-12-20");
    // From, key, to; spans have up to 40 days.
    std::istringstream rows(R"(2024-03-15 Left 2024-03-14  2024-02-29 Right 2024-03-01  2024-03-01 Up 2024-02-23
        2024-12-31 Down 2025-01-07  2024-03-31 PgUp 2024-02-29  2024-01-31 PgDn 2024-02-29
        2024-02-29 Ctrl+PgUp 2023-02-28  2024-02-29 Ctrl+PgDn 2025-02-28  2024-02-29 Shift+PgUp 2023-02-28
        2024-02-29 Shift+PgDn 2025-02-28  2024-02-02 - 2023-02-02  2024-02-02 + 2025-02-02
        2024-02-02 Home 2024-02-01  2024-02-02 End 2024-02-29  1999-02-02 Ctrl+Home 2024-03-15
        2024-02-01 Home 2024-02-01  2024-02-02 Shift+Right 2024-02-03  2024-02-02 Ctrl+Right 2024-02-02
        2024-02-02 A 2024-02-02  1601-01-03 Left 1601-01-03  1601-01-03 Ctrl+PgUp 1601-01-03
        1601-01-03 Home 1601-01-03  1601-01-05 Up 1601-01-03  9999-12-20 Right 9999-12-20
        9999-12-20 End 9999-12-20  9999-06-01 + 9999-12-20
        2024-02-02..2024-02-05 Right 2024-02-06  2024-02-02..2024-02-05 Shift+Right 2024-02-02..2024-02-06
        2024-02-02..2024-02-05 Shift+Up 2024-01-29..2024-02-02  2024-02-02..2024-02-05 Left 2024-02-04
        2024-02-02..2024-02-05 Shift+End 2024-02-02..2024-02-29
        2024-02-02..2024-02-05 Shift+PgDn 2024-02-02..2024-03-12  2024-02-05 Left 2024-02-04)");
    Make();
    for (std::string from, key, to; rows >> from >> key >> to;) {
        SCOPED_TRACE(from + " " + key);
        if (from.size() > 10 && m_calendar->GetStyle() % 4 == 0)
            Make(kSpan);
        ASSERT_TRUE(m_calendar->SetRange(&least, &most) && m_calendar->SetLongestSpan(40));
        ASSERT_TRUE(m_calendar->SetSpan(At(from), At(from.substr(from.size() - 10))));
        EXPECT_EQ("", m_parent->Told()) << "by the program";
        const auto pressed = Split(key.size() > 1 ? key : "Add", '+');
        const int modifiers = pressed.size() == 1 ? 0 : key[0] == 'S' ? ZoKey::kShift : ZoKey::kControl;
        PressKey(*m_calendar, keys.at(key.size() > 1 ? pressed.back() : key), modifiers);
        EXPECT_EQ(to, Selected());
        EXPECT_EQ(from != to ? to + " changed" : "", m_parent->Told());
        EXPECT_NE(0, m_calendar->GetFocusedPart());
    }
    PressKey(*m_calendar, VK_SPACE);
    PressKey(*m_calendar, VK_RETURN);
    EXPECT_EQ("2024-02-04 chosen as before 2024-02-04 chosen as before", m_parent->Told());
    EXPECT_EQ(DLGC_WANTARROWS | DLGC_WANTCHARS, m_calendar->SendMessage(WM_GETDLGCODE));
}

TEST_F(Calendar, ObeysTheMouse)
{
    Make(kSpan);
    EXPECT_EQ("2024-03-20 chosen in 2024-03", ClickOn("2024-03-20"));
    EXPECT_EQ("2024-03-20 chosen as before in 2024-03", ClickOn("2024-03-20"));
    Press("2024-04-02"); // a day of the neighbour: its month comes when the button goes up
    EXPECT_EQ(" in 2024-03", Told());
    EXPECT_EQ("2024-04-02 chosen in 2024-04", Release());
    Press("2024-04-20"), Move("2024-04-25"), Move("2024-04-11");
    PressKey(*m_calendar, VK_RIGHT); // no keys meanwhile
    EXPECT_EQ("2024-04-11..2024-04-20 in 2024-04", Selected() + Told());
    EXPECT_EQ("2024-04-11..2024-04-20 chosen in 2024-04", Release());
    Press("2024-04-27", MK_LBUTTON | MK_SHIFT);
    EXPECT_EQ("2024-04-20..2024-04-27 chosen in 2024-04", Release());
    const std::function<void()> kEnds[] = {[&] { PressKey(*m_calendar, VK_ESCAPE); },
                                           [] { ::ReleaseCapture(); },
                                           [&] { m_calendar->EnableWindow(FALSE); },
                                           [&] { m_calendar->ShowWindow(SW_HIDE); },
                                           [&] { m_calendar->SetSpan(At("2024-04-20"), At("2024-04-27")); },
                                           [&] { m_calendar->SetRange(nullptr, nullptr); },
                                           [&] { m_calendar->SendMessage(WM_SETTINGCHANGE); }};
    for (const auto& end : kEnds) {
        Press("2024-04-02"), Move("2024-05-03"), Wheel(-120);
        EXPECT_EQ(" in 2024-05", Told()) << "a drag goes on over other months";
        end();
        EXPECT_EQ(nullptr, ::GetCapture());
        EXPECT_EQ(" in 2024-04", Release());
        EXPECT_EQ("2024-04-20..2024-04-27", Selected());
        m_calendar->EnableWindow(TRUE);
        m_calendar->ShowWindow(SW_SHOW);
    }

    // Arrows, wheel and lists show months; none of them changes the selection.
    EXPECT_EQ(" in 2024-03", ClickOn(CZoCalendar::kPrevious));
    EXPECT_EQ(0, m_calendar->GetFocusedPart());
    EXPECT_FALSE(m_calendar->KillTimer(2)) << "no timer is left";
    Wheel(60), Wheel(60);
    EXPECT_EQ(" in 2024-02", Told()) << "half steps add up";
    Press(CZoCalendar::kNext);
    EXPECT_TRUE(WaitUntil([&] { return Shown() >= "2024-05"; })) << "held down";
    Move("2024-06-03"), Release();
    for (const auto& [part, key, shown] : {std::tuple(CZoCalendar::kMonth, VK_DOWN, "01"),
                                           {CZoCalendar::kYear, VK_DOWN, "2017-01"},
                                           {CZoCalendar::kMonth, VK_ESCAPE, "2017-01"}}) {
        const InMenu menu({InMenu::Key(static_cast<UINT>(key)), InMenu::Key(VK_RETURN)});
        Press(part);
        EXPECT_EQ(shown, Shown().substr(7 - std::strlen(shown)));
    }
    EXPECT_EQ("2024-04-20..2024-04-27 in 2017-01", Selected() + Told());
    EXPECT_EQ("2024-03-15 chosen in 2024-03", ClickOn(CZoCalendar::kToday));
    Press(CZoCalendar::kToday);
    EXPECT_EQ(" in 2024-03", Release(1)) << "released elsewhere";
    m_calendar->SetSpan(At("2024-03-03"), At("2024-03-05"));
    Press("2024-03-20");
    m_calendar->ModifyStyle(kSpan, 0);
    EXPECT_EQ("2024-03-03", Selected());
    EXPECT_FALSE(m_calendar->SetSpan(At("2024-03-03"), At("2024-03-05")));
    Press("2024-03-04"), Move("2024-03-06");
    EXPECT_EQ("2024-03-06 chosen in 2024-03", Release());

    m_parent->m_describe = [&](NMHDR&, LRESULT&) { return m_calendar.reset(), "gone"; };
    Press("2024-03-20");
    SendMouse(*m_calendar, WM_LBUTTONUP, {50, 50});
    EXPECT_EQ("gone", m_parent->Told());
    Make();
    const InMenu menu({[&](HWND) { m_calendar.reset(); }});
    SendMouse(*m_calendar, WM_LBUTTONDOWN, Area(CZoCalendar::kYear).CenterPoint());
    EXPECT_TRUE(m_calendar == nullptr && ::FindWindowA("#32768", nullptr) == nullptr);
}

TEST_F(Calendar, RefusesWhatIsNoDateAndKeepsToTheRange)
{
    Make(kSpan);
    CZoCalendar& calendar = *m_calendar;
    calendar.SetSpan(At("2024-03-10"), At("2024-03-20"));
    const SYSTEMTIME wrong = At("2023-02-29"), least = At("2024-03-12"), most = At("2024-03-18");
    EXPECT_FALSE(calendar.SetDate(wrong) || calendar.SetSpan(At("2024-03-02"), wrong) ||
                 calendar.SetSpan(At("2024-03-02"), At("2024-03-01")) || calendar.SetRange(&wrong, nullptr) ||
                 calendar.SetRange(&most, &least) || calendar.SetLongestSpan(0) || calendar.MarkDay(wrong, TRUE) ||
                 calendar.ShowMonth(2024, 13) || calendar.ShowMonth(65536 + 2024, 2) || calendar.ShowMonth(1600, 12));
    EXPECT_EQ("2024-03-10..2024-03-20", Selected());
    EXPECT_TRUE(calendar.SetLongestSpan(10));
    EXPECT_EQ("2024-03-10..2024-03-19", Selected());
    EXPECT_TRUE(calendar.SetLongestSpan(8));
    EXPECT_EQ("2024-03-10..2024-03-17", Selected());
    EXPECT_FALSE(calendar.SetSpan(At("2024-03-01"), At("2024-03-09")));
    EXPECT_TRUE(calendar.SetRange(&least, &most));
    EXPECT_EQ("2024-03-12..2024-03-17", Selected());
    EXPECT_TRUE(calendar.ShowMonth(2024, 3));
    EXPECT_FALSE(calendar.SetDate(At("2024-03-19")) || calendar.SetSpan(most, At("2024-03-19")) ||
                 calendar.ShowMonth(2024, 4) || calendar.ShowMonth(2024, 2));
    EXPECT_EQ(" in 2024-03", ClickOn("2024-03-19"));
    for (const int part : {CZoCalendar::kPrevious, CZoCalendar::kNext})
        EXPECT_EQ(" in 2024-03", ClickOn(part)) << "the whole range lies in it";
    for (const int part : {CZoCalendar::kMonth, CZoCalendar::kYear}) {
        int enabled = 0;
        const auto count = [&](HWND window) {
            const auto list = reinterpret_cast<HMENU>(::SendMessageA(window, MN_GETHMENU, 0, 0));
            for (int i = 0; i < ::GetMenuItemCount(list); ++i)
                enabled += (::GetMenuState(list, static_cast<UINT>(i), MF_BYPOSITION) & MF_GRAYED) == 0;
        };
        const InMenu menu({count, InMenu::Key(VK_ESCAPE)});
        Press(part);
        EXPECT_EQ(1, enabled) << part;
    }
    const SYSTEMTIME later = At("2025-01-01");
    EXPECT_TRUE(calendar.SetSpan(most, most) && calendar.SetRange(&later, nullptr));
    EXPECT_EQ("2025-01-01 in 2025-01", Selected() + Told());
    EXPECT_NE(S_OK, Reader(calendar)->accDoDefaultAction(Reader::Part(CZoCalendar::kToday)));

    EXPECT_TRUE(calendar.SetRange(nullptr, nullptr) && calendar.SetDate(At("9999-12-31")));
    SYSTEMTIME day = {};
    EXPECT_FALSE(calendar.GetPartDay(42, day) || calendar.FindPart(Area(42).CenterPoint()) != 0) << "no such day";
    EXPECT_EQ(STATE_SYSTEM_UNAVAILABLE | STATE_SYSTEM_INVISIBLE, Reader(calendar).State(42));
    Wheel(-1200);
    EXPECT_EQ(" in 9999-12", ClickOn(CZoCalendar::kNext));
    EXPECT_TRUE(calendar.SetDate(At("1601-01-01")));
    PressKey(calendar, VK_LEFT), PictureOf(calendar);
    EXPECT_EQ("1601-01-01 in 1601-01", Selected() + ClickOn(CZoCalendar::kPrevious));
}

TEST_F(Calendar, IsThereWithoutAWindow)
{
    CZoCalendar calendar;
    ZoPart part;
    EXPECT_TRUE(calendar.SetSpan(At("2024-04-01"), At("2024-04-03")) && calendar.DescribePart(0, part));
    EXPECT_FALSE(calendar.DoPartAction(CZoCalendar::kMonth));
    SYSTEMTIME day = {};
    EXPECT_TRUE(calendar.GetPartDay(1, day)); // a whole week before a month that begins with a week
    EXPECT_EQ("2024-03-25", Written(day));
    for (const int days : {3, 2, 1})
        EXPECT_TRUE(calendar.MarkDay(Date(2024, 4, days), TRUE));
    EXPECT_TRUE(calendar.MarkDay(At("2024-04-02"), FALSE) && calendar.MarkDay(At("2024-04-02"), FALSE));
    EXPECT_TRUE(calendar.IsMarked(At("2024-04-01")) && !calendar.IsMarked(At("2024-04-02")) &&
                calendar.IsMarked(At("2024-04-03")));
    calendar.ClearMarks();
    EXPECT_FALSE(calendar.IsMarked(At("2024-04-03")));
}

TEST_F(Calendar, FollowsTheClock)
{
    Make();
    Reader reader(*m_calendar);
    const auto todayIs = [&](const SYSTEMTIME& day) {
        return reader.Name(CZoCalendar::kToday) == "Today: " + LocaleText(day, DATE_SHORTDATE);
    };
    EXPECT_TRUE(todayIs(At("2024-03-15")));
    m_clock.Set({2024, 3, 0, 15, 23, 59, 59, 700});
    m_calendar->SendMessage(WM_TIMECHANGE);
    ScreenOf(*m_calendar);
    m_clock.Set({2024, 3, 0, 16, 0, 0, 0, 0});
    const Events events(*m_calendar);
    const DWORD start = ::GetTickCount();
    EXPECT_TRUE(WaitUntil([&] { return todayIs(At("2024-03-16")); })) << "at midnight";
    EXPECT_LT(::GetTickCount() - start, 8000u) << "not by the look each ten seconds";
    EXPECT_EQ((std::pair{EVENT_OBJECT_NAMECHANGE + 0UL, LONG{CZoCalendar::kToday}}), Events::Heard().at(0));
    EXPECT_EQ("|Today", reader.Description(PartOf("2024-03-15")) + "|" + reader.Description(PartOf("2024-03-16")));
    EXPECT_TRUE(AreEqual(*PictureOf(*m_calendar), *ScreenOf(*m_calendar)));
    m_clock.Set({2030, 1, 0, 2, 9, 0, 0, 0});
    m_calendar->SendMessage(WM_TIMECHANGE);
    EXPECT_TRUE(todayIs(At("2030-01-02")));
}

TEST_F(Calendar, TellsScreenReadersWhatItShows)
{
    Make(kSpan | CZoCalendar::kWeekNumbers);
    m_calendar->SetWindowText("Delivery");
    m_calendar->MarkDay(At("2024-03-14"), TRUE);
    const SYSTEMTIME least = At("2024-02-28");
    m_calendar->SetRange(&least, nullptr);
    Reader reader(*m_calendar);
    EXPECT_EQ(ROLE_SYSTEM_TABLE, reader.Role());
    EXPECT_EQ(CZoCalendar::kToday, reader.Count());
    EXPECT_EQ("Delivery: " + LocaleText(At("2024-03-15"), DATE_LONGDATE), reader.Name() + ": " + reader.Value());
    constexpr LONG kDay = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
    const struct {
        const char* day;
        LONG state;
        const char* description;
    } kDays[] = {
        {"2024-02-27", STATE_SYSTEM_UNAVAILABLE, "Week 9"},
        {"2024-02-28", kDay, "Week 9"},
        {"2024-03-14", kDay, "Marked, Week 11"},
        {"2024-03-15", kDay | STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED, "Today, Week 11"},
    };
    for (const auto& row : kDays) {
        const int part = PartOf(row.day);
        EXPECT_EQ(LocaleText(At(row.day), DATE_LONGDATE), reader.Name(part));
        EXPECT_EQ(ROLE_SYSTEM_CELL, reader.Role(part));
        EXPECT_EQ(row.state, reader.State(part)) << row.description;
        EXPECT_EQ(row.description, reader.Description(part));
        EXPECT_EQ(row.state == STATE_SYSTEM_UNAVAILABLE ? "" : "Choose", reader.Action(part));
        EXPECT_EQ(part, reader.At(reader.Area(part).CenterPoint()));
    }
    EXPECT_EQ("Previous month|Next month|2024", reader.Name(43) + "|" + reader.Name(44) + "|" + reader.Name(46));
    EXPECT_EQ(IsDoubleByte(), reader.Area(46).left < reader.Area(45).left) << "in the order of the locale";

    // One focus a move, and nothing where nothing changes.
    const Events events(*m_calendar);
    using Heard = std::vector<std::pair<DWORD, LONG>>;
    PressKey(*m_calendar, VK_DOWN);
    const int part = PartOf("2024-03-22");
    EXPECT_EQ((Heard{{EVENT_OBJECT_FOCUS, part}, {EVENT_OBJECT_SELECTION, part}}), Events::Heard());
    PressKey(*m_calendar, VK_NEXT);
    EXPECT_EQ((std::pair{EVENT_OBJECT_NAMECHANGE + 0UL, LONG{CZoCalendar::kMonth}}), Events::Heard().front());
    PressKey(*m_calendar, VK_RIGHT, ZoKey::kShift);
    EXPECT_EQ(EVENT_OBJECT_SELECTIONWITHIN + 0UL, Events::Heard().back().first);
    m_parent->SetFocus();
    Events::Heard();
    m_calendar->SetDate(At("9999-12-31"));
    EXPECT_EQ(0, Events::Count(EVENT_OBJECT_FOCUS)) << "it has not the focus";
    EXPECT_EQ(kDay | STATE_SYSTEM_SELECTED, reader.State(PartOf("9999-12-31")));
    m_calendar->SetFocus();
    Events::Heard(), m_parent->Told();
    PressKey(*m_calendar, VK_RIGHT);
    EXPECT_EQ(Heard(), Events::Heard());
    EXPECT_EQ(S_OK, reader->accDoDefaultAction(Reader::Part(43)));
    EXPECT_EQ(S_OK, reader->accDoDefaultAction(Reader::Part(42)));
    EXPECT_EQ("9999-12-11 chosen in 9999-12", Told());
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, reader->accDoDefaultAction(Reader::Part(44)));
}

TEST_F(Calendar, CountsWeeksAsTheLocale)
{
    Make(CZoCalendar::kWeekNumbers);
    for (int i = 0; i < 21; ++i) {
        const int first = i / 3, rule = i % 3;
        m_weeks.Set(static_cast<char>('0' + first), static_cast<char>('0' + rule));
        m_calendar->SendMessage(WM_SETTINGCHANGE);
        m_calendar->SetDate(Date(2020 + first, 1 + rule, 1));
        SYSTEMTIME day = {};
        ASSERT_TRUE(m_calendar->GetPartDay(8, day));
        EXPECT_EQ(first, WeekdayOf(DayOf(day)));
        EXPECT_EQ("Week " + std::to_string(WeekNumber(DayOf(day), first, static_cast<WeekRule>(rule))),
                  Reader(*m_calendar).Description(8));
    }
}

TEST_F(Calendar, DrawsEachStateAndOnlyWhatIsDirty)
{
    Make(kSpan | CZoCalendar::kWeekNumbers);
    m_calendar->SetSpan(At("2024-03-18"), At("2024-03-19"));
    const SYSTEMTIME least = At("2024-03-05");
    ASSERT_TRUE(m_calendar->SetRange(&least, nullptr) && m_calendar->MarkDay(At("2024-03-21"), TRUE));
    CRect dot = Area(PartOf("2024-03-21")), line = Area(PartOf("2024-03-01"));
    dot = CRect(dot.right - 7, dot.top, dot.right, dot.top + 7);
    line = CRect(line.left, line.CenterPoint().y, line.right, line.CenterPoint().y + 1);
    for (const COLORREF paper : {RGB(250, 250, 250), RGB(5, 5, 5)}) {
        const COLORREF ink = paper ^ 0xFFFFFF, grey = RGB(90, 140, 90), blue = RGB(0, 0, 160), gold = RGB(255, 255, 0);
        const Scheme scheme{{COLOR_WINDOW, paper},
                            {COLOR_WINDOWTEXT, ink},
                            {COLOR_GRAYTEXT, grey},
                            {COLOR_HIGHLIGHT, blue},
                            {COLOR_HIGHLIGHTTEXT, gold}};
        const auto picture = ScreenOf(*m_calendar);
        const auto count = [&](const char* day, COLORREF color) { return picture->Count(color, Area(PartOf(day))); };
        EXPECT_GT(count("2024-03-20", ink), 0);
        EXPECT_GT(count("2024-04-02", grey), 0);
        EXPECT_EQ(0, count("2024-04-02", ink));
        EXPECT_GT(count("2024-03-18", blue), 100);
        EXPECT_EQ(0, count("2024-03-18", paper));
        EXPECT_GT(count("2024-03-15", ink), count("2024-03-16", ink) + 40) << "today's frame";
        EXPECT_LT(count("2024-03-18", gold), count("2024-03-19", gold)) << "focus";
        EXPECT_TRUE(picture->Count(ink, dot) > 3 && picture->Count(grey, line) > 8) << "marked, and struck out";
    }
    // What changes is drawn, and is right: the screen is what a whole drawing is.
    const std::function<void()> kChanges[] = {[&] { PressKey(*m_calendar, VK_LEFT); },
                                              [&] { PressKey(*m_calendar, VK_DOWN, ZoKey::kShift); },
                                              [&] { m_calendar->MarkDay(At("2024-03-12"), TRUE); },
                                              [&] { Press(CZoCalendar::kNext); },
                                              [&] { PressKey(*m_calendar, VK_ESCAPE); },
                                              [&] { m_parent->SetFocus(); },
                                              [&] { m_calendar->EnableWindow(FALSE); }};
    for (const auto& change : kChanges) {
        const auto before = ScreenOf(*m_calendar);
        change();
        const auto after = ScreenOf(*m_calendar);
        EXPECT_TRUE(AreEqual(*PictureOf(*m_calendar), *after)) << &change - kChanges;
        EXPECT_FALSE(AreEqual(*before, *after)) << &change - kChanges;
    }
}

TEST_F(Calendar, RunsFromRightToLeft)
{
    Make(0, WS_EX_LAYOUTRTL);
    PressKey(*m_calendar, VK_LEFT);
    EXPECT_EQ("2024-03-16 changed in 2024-03", Told());
    Reader reader(*m_calendar);
    EXPECT_GT(reader.Area(1).left, reader.Area(2).left);
    EXPECT_EQ("2024-03-08 chosen in 2024-03", ClickOn("2024-03-08"));
}
