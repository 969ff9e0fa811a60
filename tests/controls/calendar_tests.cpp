// The calendar, driven as a person would.
#include "controls/calendar_test.h"

#include "controls/base/day.h"
#include "support/product_test.h"

#include <random>

namespace {

class Calendar : public ProductTest {
protected:
    void Make(DWORD style = 0, DWORD parentStyleEx = 0)
    {
        m_calendar.reset();
        m_parent = std::make_unique<ControlParent>(parentStyleEx);
        m_calendar = std::make_unique<CZoCalendar>();
        ASSERT_TRUE(m_calendar->Create(style | WS_VISIBLE | WS_TABSTOP, CRect(0, 0, 1, 1), m_parent.get(), 5));
        const CSize size = m_calendar->GetIdealSize();
        m_calendar->SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        m_parent->m_describe = [this](NMHDR& header, LRESULT&) { return DescribeSelection(header); };
        m_calendar->SetFocus();
    }
    std::string Selected() const { return Span(m_calendar->GetFirst(), m_calendar->GetLast()); }
    CPoint Place(int part) const
    {
        ZoPart description;
        EXPECT_TRUE(m_calendar->DescribePart(part, description)) << part;
        return description.area.CenterPoint();
    }
    int PartOf(const SYSTEMTIME& day) const
    {
        SYSTEMTIME at = {};
        for (int part = 1; part <= CZoCalendar::kDays; ++part) {
            if (m_calendar->GetPartDay(part, at) && Text(at) == Text(day))
                return part;
        }
        return 0;
    }
    CPoint Place(const SYSTEMTIME& day) const { return Place(PartOf(day)); }

    const Clock m_clock{{2024, 3, 0, 15, 10, 0, 0, 0}};
    const UserWeeks m_weeks;
    std::unique_ptr<ControlParent> m_parent;
    std::unique_ptr<CZoCalendar> m_calendar;
};

constexpr DWORD kSpan = CZoCalendar::kSpan;

} // namespace

TEST_F(Calendar, ObeysKeysAndNotifiesOnce)
{
    const SYSTEMTIME least = Date(1601, 1, 3), most = Date(9999, 12, 20);
    const struct {
        DWORD style;
        SYSTEMTIME first, last;
        UINT key;
        int modifiers;
        const char* selected;
        const char* told; // but for the span
    } kRows[] = {
        {0, Date(2024, 3, 15), Date(2024, 3, 15), VK_LEFT, 0, "2024-03-14", "changed"},
        {0, Date(2024, 2, 29), Date(2024, 2, 29), VK_RIGHT, 0, "2024-03-01", "changed"},
        {0, Date(2024, 3, 1), Date(2024, 3, 1), VK_UP, 0, "2024-02-23", "changed"},
        {0, Date(2024, 12, 31), Date(2024, 12, 31), VK_DOWN, 0, "2025-01-07", "changed"},
        {0, Date(2024, 3, 31), Date(2024, 3, 31), VK_PRIOR, 0, "2024-02-29", "changed"},
        {0, Date(2024, 1, 31), Date(2024, 1, 31), VK_NEXT, 0, "2024-02-29", "changed"},
        {0, Date(2024, 2, 29), Date(2024, 2, 29), VK_PRIOR, kControl, "2023-02-28", "changed"},
        {0, Date(2024, 2, 29), Date(2024, 2, 29), VK_NEXT, kControl, "2025-02-28", "changed"},
        {0, Date(2024, 2, 29), Date(2024, 2, 29), VK_PRIOR, kShift, "2023-02-28", "changed"},
        {0, Date(2024, 2, 29), Date(2024, 2, 29), VK_NEXT, kShift, "2025-02-28", "changed"},
        {0, Date(2024, 2, 2), Date(2024, 2, 2), VK_SUBTRACT, 0, "2023-02-02", "changed"},
        {0, Date(2024, 2, 2), Date(2024, 2, 2), VK_ADD, 0, "2025-02-02", "changed"},
        {0, Date(2024, 2, 2), Date(2024, 2, 2), VK_HOME, 0, "2024-02-01", "changed"},
        {0, Date(2024, 2, 2), Date(2024, 2, 2), VK_END, 0, "2024-02-29", "changed"},
        {0, Date(1999, 2, 2), Date(1999, 2, 2), VK_HOME, kControl, "2024-03-15", "changed"},
        {0, Date(2024, 2, 1), Date(2024, 2, 1), VK_HOME, 0, "2024-02-01", ""},
        {0, Date(2024, 2, 1), Date(2024, 2, 1), VK_SPACE, 0, "2024-02-01", "chosen as before"},
        {0, Date(2024, 2, 1), Date(2024, 2, 1), VK_RETURN, 0, "2024-02-01", "chosen as before"},
        {0, Date(2024, 2, 2), Date(2024, 2, 2), VK_RIGHT, kShift, "2024-02-03", "changed"},
        {0, Date(2024, 2, 2), Date(2024, 2, 2), VK_RIGHT, kControl, "2024-02-02", ""},
        {0, Date(2024, 2, 2), Date(2024, 2, 2), 'A', 0, "2024-02-02", ""},
        // The ends of the range
        {0, least, least, VK_LEFT, 0, "1601-01-03", ""},
        {0, least, least, VK_PRIOR, kControl, "1601-01-03", ""},
        {0, least, least, VK_HOME, 0, "1601-01-03", ""},
        {0, Date(1601, 1, 5), Date(1601, 1, 5), VK_UP, 0, "1601-01-03", "changed"},
        {0, most, most, VK_RIGHT, 0, "9999-12-20", ""},
        {0, most, most, VK_END, 0, "9999-12-20", ""},
        {0, Date(9999, 6, 1), Date(9999, 6, 1), VK_ADD, 0, "9999-12-20", "changed"},
        // Spans
        {kSpan, Date(2024, 2, 2), Date(2024, 2, 5), VK_RIGHT, 0, "2024-02-06", "changed"},
        {kSpan, Date(2024, 2, 2), Date(2024, 2, 5), VK_RIGHT, kShift, "2024-02-02..2024-02-06", "changed"},
        {kSpan, Date(2024, 2, 2), Date(2024, 2, 5), VK_UP, kShift, "2024-01-29..2024-02-02", "changed"},
        {kSpan, Date(2024, 2, 2), Date(2024, 2, 5), VK_END, kShift, "2024-02-02..2024-02-29", "changed"},
        {kSpan, Date(2024, 2, 2), Date(2024, 2, 5), VK_NEXT, kShift, "2024-02-02..2024-03-12", "changed"},
        {kSpan, Date(2024, 2, 2), Date(2024, 2, 5), VK_SPACE, 0, "2024-02-02..2024-02-05", "chosen as before"},
        {kSpan, Date(2024, 2, 2), Date(2024, 2, 5), VK_LEFT, 0, "2024-02-04", "changed"},
    };
    DWORD style = 1;
    for (const auto& row : kRows) {
        SCOPED_TRACE(Span(row.first, row.last) + " key " + std::to_string(row.key) + " " +
                     std::to_string(row.modifiers));
        if (std::exchange(style, row.style) != row.style) {
            Make(row.style);
            ASSERT_TRUE(m_calendar->SetRange(&least, &most));
            ASSERT_TRUE(m_calendar->SetLongestSpan(40));
        }
        ASSERT_TRUE(m_calendar->SetSpan(row.first, row.last));
        EXPECT_EQ("", m_parent->Told()) << "by the program";
        PressKey(*m_calendar, row.key, row.modifiers);
        EXPECT_EQ(row.selected, Selected());
        EXPECT_EQ(*row.told != '\0' ? std::string(row.selected) + " " + row.told : "", m_parent->Told());
        EXPECT_NE(0, m_calendar->GetFocusedPart());
    }
    EXPECT_EQ(DLGC_WANTARROWS | DLGC_WANTCHARS, m_calendar->SendMessage(WM_GETDLGCODE));
}

TEST_F(Calendar, ObeysTheMouse)
{
    Make(kSpan);
    m_calendar->SetDate(Date(2024, 3, 15));
    const auto press = [&](const SYSTEMTIME& day, WPARAM shift = 0) {
        SendMouse(*m_calendar, WM_LBUTTONDOWN, Place(day), MK_LBUTTON | shift);
    };
    const auto move = [&](const SYSTEMTIME& day) { SendMouse(*m_calendar, WM_MOUSEMOVE, Place(day), MK_LBUTTON); };
    const auto release = [&](CPoint point) { SendMouse(*m_calendar, WM_LBUTTONUP, point); };

    Click(*m_calendar, Place(Date(2024, 3, 20)));
    EXPECT_EQ("2024-03-20 chosen", m_parent->Told());
    Click(*m_calendar, Place(Date(2024, 3, 20)));
    EXPECT_EQ("2024-03-20 chosen as before", m_parent->Told());
    press(Date(2024, 4, 2)); // a day of the neighbour: its month comes when the button goes up
    EXPECT_EQ("2024-03-01", Text(m_calendar->GetShownMonth()));
    release(Place(Date(2024, 4, 2)));
    EXPECT_EQ("2024-04-02 chosen", m_parent->Told());
    EXPECT_EQ("2024-04-01", Text(m_calendar->GetShownMonth()));

    press(Date(2024, 4, 20));
    move(Date(2024, 4, 25));
    move(Date(2024, 4, 11));
    EXPECT_EQ("2024-04-11..2024-04-20", Selected());
    PressKey(*m_calendar, VK_RIGHT);
    EXPECT_EQ("2024-04-11..2024-04-20", Selected()) << "no keys meanwhile";
    EXPECT_EQ("", m_parent->Told());
    release({-5, -5});
    EXPECT_EQ("2024-04-11..2024-04-20 chosen", m_parent->Told());
    press(Date(2024, 4, 27), MK_SHIFT);
    release({-5, -5});
    EXPECT_EQ("2024-04-20..2024-04-27 chosen", m_parent->Told());
    const std::function<void()> kEnds[] = {[&] { PressKey(*m_calendar, VK_ESCAPE); }, [] { ::ReleaseCapture(); },
                                           [&] { m_calendar->EnableWindow(FALSE); }};
    for (const auto& end : kEnds) {
        press(Date(2024, 4, 2));
        move(Date(2024, 5, 3));
        m_calendar->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -120));
        EXPECT_EQ("2024-05-01", Text(m_calendar->GetShownMonth())) << "a drag goes on over other months";
        end();
        EXPECT_EQ("2024-04-20..2024-04-27", Selected());
        EXPECT_EQ("2024-04-01", Text(m_calendar->GetShownMonth()));
        release(Place(Date(2024, 4, 2)));
        EXPECT_EQ("", m_parent->Told());
        EXPECT_EQ(nullptr, ::GetCapture());
        m_calendar->EnableWindow(TRUE);
    }

    // Arrows, wheel and lists show months; none of them changes the selection.
    Click(*m_calendar, Place(CZoCalendar::kPrevious));
    EXPECT_EQ("2024-03-01", Text(m_calendar->GetShownMonth()));
    EXPECT_EQ(0, m_calendar->GetFocusedPart());
    EXPECT_FALSE(m_calendar->KillTimer(2)) << "no timer is left";
    m_calendar->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 60));
    m_calendar->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 60));
    EXPECT_EQ("2024-02-01", Text(m_calendar->GetShownMonth())) << "half steps add up";
    SendMouse(*m_calendar, WM_LBUTTONDOWN, Place(CZoCalendar::kNext), MK_LBUTTON);
    EXPECT_TRUE(WaitUntil([&] { return Text(m_calendar->GetShownMonth()) >= "2024-05-01"; })) << "held down";
    release({-5, -5});
    const struct {
        int part;
        std::vector<UINT> keys;
        const char* shown;
    } kLists[] = {{CZoCalendar::kMonth, {VK_HOME, VK_DOWN, VK_RETURN}, "02-01"},
                  {CZoCalendar::kYear, {VK_HOME, VK_RETURN}, "2017-02-01"},
                  {CZoCalendar::kMonth, {VK_ESCAPE}, "2017-02-01"}};
    for (const auto& row : kLists) {
        ListKeys keys(row.keys);
        Click(*m_calendar, Place(row.part));
        EXPECT_EQ(row.shown, Text(m_calendar->GetShownMonth()).substr(10 - std::strlen(row.shown)));
    }
    EXPECT_EQ("2024-04-20..2024-04-27", Selected());
    EXPECT_EQ("", m_parent->Told());

    Click(*m_calendar, Place(CZoCalendar::kToday));
    EXPECT_EQ("2024-03-15 chosen", m_parent->Told());
    SendMouse(*m_calendar, WM_LBUTTONDOWN, Place(CZoCalendar::kToday), MK_LBUTTON);
    release(Place(1));
    EXPECT_EQ("", m_parent->Told()) << "released elsewhere";
    m_calendar->ModifyStyle(kSpan, 0);
    press(Date(2024, 3, 4));
    move(Date(2024, 3, 6));
    release(Place(Date(2024, 3, 6)));
    EXPECT_EQ("2024-03-06 chosen", m_parent->Told());

    m_parent->m_describe = [&](NMHDR&, LRESULT&) {
        m_calendar.reset();
        return "gone";
    };
    Click(*m_calendar, Place(Date(2024, 3, 20)));
    EXPECT_EQ("gone", m_parent->Told());
}

TEST_F(Calendar, RefusesWhatIsNoDateAndKeepsToTheRange)
{
    Make(kSpan);
    m_calendar->SetSpan(Date(2024, 3, 10), Date(2024, 3, 20));
    const SYSTEMTIME wrong = Date(2023, 2, 29), least = Date(2024, 3, 12), most = Date(2024, 3, 18);
    EXPECT_FALSE(m_calendar->SetDate(wrong) || m_calendar->SetSpan(Date(2024, 3, 2), wrong) ||
                 m_calendar->SetSpan(Date(2024, 3, 2), Date(2024, 3, 1)) || m_calendar->SetRange(&wrong, nullptr) ||
                 m_calendar->SetRange(&most, &least) || m_calendar->SetLongestSpan(0) ||
                 m_calendar->MarkDay(wrong, TRUE) || m_calendar->ShowMonth(2024, 13) ||
                 m_calendar->ShowMonth(65536 + 2024, 2) || m_calendar->ShowMonth(1600, 12));
    EXPECT_EQ("2024-03-10..2024-03-20", Selected());
    EXPECT_TRUE(m_calendar->SetLongestSpan(8));
    EXPECT_EQ("2024-03-10..2024-03-17", Selected());
    EXPECT_FALSE(m_calendar->SetSpan(Date(2024, 3, 1), Date(2024, 3, 9)));
    EXPECT_TRUE(m_calendar->SetRange(&least, &most));
    EXPECT_EQ("2024-03-12..2024-03-17", Selected());
    EXPECT_FALSE(m_calendar->SetDate(Date(2024, 3, 19)) || m_calendar->ShowMonth(2024, 4) ||
                 m_calendar->ShowMonth(2024, 2));
    Click(*m_calendar, Place(Date(2024, 3, 19)));
    for (const int part : {CZoCalendar::kPrevious, CZoCalendar::kNext})
        Click(*m_calendar, Place(part));
    EXPECT_EQ("2024-03-01", Text(m_calendar->GetShownMonth())) << "the whole range lies in it";
    EXPECT_EQ("", m_parent->Told());
    const SYSTEMTIME later = Date(2025, 1, 1);
    EXPECT_TRUE(m_calendar->SetRange(&later, nullptr));
    EXPECT_EQ("2025-01-01", Selected());
    EXPECT_FALSE(Reader(*m_calendar)->accDoDefaultAction(Reader::Part(CZoCalendar::kToday)) == S_OK);

    EXPECT_TRUE(m_calendar->SetRange(nullptr, nullptr));
    EXPECT_TRUE(m_calendar->ShowMonth(9999, 12) && m_calendar->SetDate(Date(9999, 12, 31)));
    EXPECT_EQ(0, m_calendar->FindPart(Place(42))) << "there is no such day";
    EXPECT_EQ(STATE_SYSTEM_UNAVAILABLE | STATE_SYSTEM_INVISIBLE, Reader(*m_calendar).State(42));
    Click(*m_calendar, Place(CZoCalendar::kNext));
    m_calendar->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -1200));
    EXPECT_EQ("9999-12-01", Text(m_calendar->GetShownMonth()));
    EXPECT_TRUE(m_calendar->SetDate(Date(1601, 1, 1)));
    PressKey(*m_calendar, VK_LEFT);
    Click(*m_calendar, Place(CZoCalendar::kPrevious));
    EXPECT_EQ("1601-01-01", Selected());
    PictureOf(*m_calendar);
}

TEST_F(Calendar, FollowsTheClock)
{
    Make();
    m_clock.Set({2024, 3, 0, 15, 23, 59, 59, 700});
    m_calendar->SendMessage(WM_TIMECHANGE);
    Reader reader(*m_calendar);
    const int part = PartOf(Date(2024, 3, 15));
    EXPECT_EQ("Today", reader.Description(part));
    EXPECT_EQ("Today: " + LocaleText(Date(2024, 3, 15), DATE_SHORTDATE), reader.Name(CZoCalendar::kToday));
    ScreenOf(*m_calendar);
    const std::string tomorrow = "Today: " + LocaleText(Date(2024, 3, 16), DATE_SHORTDATE);
    m_clock.Set({2024, 3, 0, 16, 0, 0, 0, 0});
    EXPECT_TRUE(WaitUntil([&] { return reader.Name(CZoCalendar::kToday) == tomorrow; })) << "at midnight";
    EXPECT_EQ("", reader.Description(part));
    EXPECT_EQ("Today", reader.Description(part + 1));
    EXPECT_TRUE(AreEqual(*PictureOf(*m_calendar), *ScreenOf(*m_calendar)));
    m_clock.Set({2030, 1, 0, 2, 9, 0, 0, 0});
    m_calendar->SendMessage(WM_TIMECHANGE);
    PressKey(*m_calendar, VK_HOME, kControl);
    EXPECT_EQ("2030-01-02", Selected());
}

TEST_F(Calendar, TellsScreenReadersWhatItShows)
{
    Make(kSpan | CZoCalendar::kWeekNumbers);
    m_calendar->SetWindowText("Delivery");
    m_calendar->MarkDay(Date(2024, 3, 14), TRUE);
    const SYSTEMTIME least = Date(2024, 2, 28);
    m_calendar->SetRange(&least, nullptr);
    Reader reader(*m_calendar);
    EXPECT_EQ(ROLE_SYSTEM_TABLE, reader.Role());
    EXPECT_EQ(CZoCalendar::kToday, reader.Count());
    EXPECT_EQ("Delivery", reader.Name());
    EXPECT_EQ(LocaleText(Date(2024, 3, 15), DATE_LONGDATE), reader.Value());
    constexpr LONG kDay = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
    const struct {
        SYSTEMTIME day;
        LONG state;
        const char *description, *action;
    } kDays[] = {
        {Date(2024, 2, 27), STATE_SYSTEM_UNAVAILABLE, "Week 9", ""},
        {Date(2024, 2, 28), kDay, "Week 9", "Choose"},
        {Date(2024, 3, 14), kDay, "Marked, Week 11", "Choose"},
        {Date(2024, 3, 15), kDay | STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED, "Today, Week 11", "Choose"},
    };
    for (const auto& row : kDays) {
        const int part = PartOf(row.day);
        EXPECT_EQ(LocaleText(row.day, DATE_LONGDATE), reader.Name(part));
        EXPECT_EQ(ROLE_SYSTEM_CELL, reader.Role(part));
        EXPECT_EQ(row.state, reader.State(part)) << row.description;
        EXPECT_EQ(row.description, reader.Description(part));
        EXPECT_EQ(row.action, reader.Action(part));
        EXPECT_EQ(part, reader.At(reader.Area(part).CenterPoint()));
    }
    EXPECT_EQ("Previous month|Next month|2024", reader.Name(43) + "|" + reader.Name(44) + "|" + reader.Name(46));
    EXPECT_EQ(IsDoubleByte(), reader.Area(46).left < reader.Area(45).left) << "in the order of the locale";

    // One focus a move, and nothing where nothing changes.
    const Events events(*m_calendar);
    using Heard = std::vector<std::pair<DWORD, LONG>>;
    PressKey(*m_calendar, VK_DOWN);
    const int part = PartOf(Date(2024, 3, 22));
    EXPECT_EQ((Heard{{EVENT_OBJECT_FOCUS, part}, {EVENT_OBJECT_SELECTION, part}}), Events::Heard());
    PressKey(*m_calendar, VK_NEXT);
    EXPECT_EQ(1, Events::Count(EVENT_OBJECT_FOCUS)) << "of another month";
    PressKey(*m_calendar, VK_RIGHT, kShift);
    EXPECT_EQ(EVENT_OBJECT_SELECTIONWITHIN + 0UL, Events::Heard().back().first);
    m_calendar->SetRange(nullptr, nullptr);
    m_calendar->SetDate(Date(9999, 12, 31));
    m_parent->Told();
    Events::Heard();
    PressKey(*m_calendar, VK_RIGHT);
    EXPECT_EQ(Heard(), Events::Heard());
    EXPECT_EQ(S_OK, reader->accDoDefaultAction(Reader::Part(43)));
    EXPECT_EQ(S_OK, reader->accDoDefaultAction(Reader::Part(42)));
    EXPECT_EQ("9999-12-11 chosen", m_parent->Told());
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, reader->accDoDefaultAction(Reader::Part(44)));
}

TEST_F(Calendar, CountsWeeksAsTheLocale)
{
    Make(CZoCalendar::kWeekNumbers);
    for (const char first : {'0', '1', '2', '3', '4', '5', '6'}) {
        for (const char rule : {'0', '1', '2'}) {
            m_weeks.Set(first, rule);
            m_calendar->SendMessage(WM_SETTINGCHANGE);
            m_calendar->SetDate(Date(2024 + first - '0', 1 + rule - '0', 1));
            SYSTEMTIME day = {};
            ASSERT_TRUE(m_calendar->GetPartDay(8, day));
            EXPECT_EQ(first - '0', WeekdayOf(DayOf(day)));
            EXPECT_EQ("Week " + std::to_string(WeekNumber(DayOf(day), first - '0', static_cast<WeekRule>(rule - '0'))),
                      Reader(*m_calendar).Description(8));
        }
    }
}

TEST_F(Calendar, DrawsEachStateAndOnlyWhatIsDirty)
{
    Make(kSpan);
    m_calendar->SetSpan(Date(2024, 3, 18), Date(2024, 3, 19));
    for (const COLORREF paper : {RGB(250, 250, 250), RGB(5, 5, 5)}) {
        const COLORREF ink = paper ^ 0xFFFFFF, grey = RGB(90, 140, 90), selected = RGB(0, 0, 160);
        const Scheme scheme{{COLOR_WINDOW, paper},
                            {COLOR_WINDOWTEXT, ink},
                            {COLOR_GRAYTEXT, grey},
                            {COLOR_HIGHLIGHT, selected},
                            {COLOR_HIGHLIGHTTEXT, RGB(255, 255, 0)}};
        const auto picture = ScreenOf(*m_calendar);
        const auto count = [&](const SYSTEMTIME& day, COLORREF color) {
            ZoPart part;
            m_calendar->DescribePart(PartOf(day), part);
            return picture->Count(color, part.area);
        };
        EXPECT_GT(count(Date(2024, 3, 20), ink), 0);
        EXPECT_GT(count(Date(2024, 2, 28), grey), 0);
        EXPECT_EQ(0, count(Date(2024, 2, 28), ink));
        EXPECT_GT(count(Date(2024, 3, 18), selected), 100);
        EXPECT_EQ(0, count(Date(2024, 3, 18), paper));
        EXPECT_GT(count(Date(2024, 3, 15), ink), count(Date(2024, 3, 16), ink) + 40) << "today's frame";
        EXPECT_LT(count(Date(2024, 3, 18), RGB(255, 255, 0)), count(Date(2024, 3, 19), RGB(255, 255, 0))) << "focus";
    }
    // What changes is drawn, and is right: the screen is what a whole drawing is.
    const std::function<void()> kChanges[] = {
        [&] { PressKey(*m_calendar, VK_LEFT); },
        [&] { PressKey(*m_calendar, VK_DOWN, kShift); },
        [&] { m_calendar->MarkDay(Date(2024, 3, 12), TRUE); },
        [&] { SendMouse(*m_calendar, WM_LBUTTONDOWN, Place(CZoCalendar::kNext), MK_LBUTTON); },
        [&] { PressKey(*m_calendar, VK_ESCAPE); },
        [&] { m_parent->SetFocus(); },
        [&] { m_calendar->EnableWindow(FALSE); },
        [&] { m_calendar->SetRange(nullptr, nullptr); },
    };
    for (const auto& change : kChanges) {
        const auto before = ScreenOf(*m_calendar);
        change();
        const auto after = ScreenOf(*m_calendar);
        EXPECT_TRUE(AreEqual(*PictureOf(*m_calendar), *after)) << &change - kChanges;
        EXPECT_TRUE(&change == std::end(kChanges) - 1 || !AreEqual(*before, *after)) << &change - kChanges;
    }
    std::mt19937 random(3);
    const Reader reader(*m_calendar);
    const ProcessCounts counts = ProcessCounts::Take();
    for (int i = 0; i < 1000; ++i) {
        m_calendar->MoveWindow(0, 0, static_cast<int>(random() % 400), static_cast<int>(random() % 300));
        m_calendar->UpdateWindow();
        m_calendar->FindPart(CPoint(static_cast<int>(random() % 400), 0));
    }
    m_calendar->MoveWindow(0, 0, 0, 0);
    reader.Name(1);
    EXPECT_EQ(counts, ProcessCounts::Take());
}

TEST_F(Calendar, RunsFromRightToLeft)
{
    Make(0, WS_EX_LAYOUTRTL);
    m_calendar->SetDate(Date(2024, 3, 20));
    PressKey(*m_calendar, VK_LEFT);
    EXPECT_EQ("2024-03-21 changed", m_parent->Told());
    Reader reader(*m_calendar);
    EXPECT_GT(reader.Area(1).left, reader.Area(2).left);
    Click(*m_calendar, Place(PartOf(Date(2024, 3, 8))));
    EXPECT_EQ("2024-03-08 chosen", m_parent->Told());
}

TEST_F(Calendar, SurvivesFaults)
{
    Make(CZoCalendar::kWeekNumbers);
    m_calendar->MarkDay(Date(2024, 3, 12), TRUE);
    const auto whole = ScreenOf(*m_calendar);
    const CPoint day = Place(20);
    const auto body = [&](const FaultRun& run) {
        CZoCalendar made;
        made.Create(WS_VISIBLE, CRect(0, 0, 200, 200), m_parent.get(), 8);
        m_calendar->SendMessage(WM_SETTINGCHANGE);
        m_calendar->MarkDay(Date(2024, 3, 13), TRUE);
        ScreenOf(*m_calendar);
        Click(*m_calendar, day);
        run.Stop();
        m_calendar->MarkDay(Date(2024, 3, 13), FALSE);
        m_calendar->SendMessage(WM_SETTINGCHANGE);
        m_calendar->SetDate(Date(2024, 3, 15));
        EXPECT_TRUE(AreEqual(*whole, *ScreenOf(*m_calendar)));
    };
    RunFaultLoop<DrawingFaults>(body);
    RunFaultLoop<AllocationFaults>(body, {2000, 7});
}
