#include <zogbl/calendar.h>

#include "controls/base/day.h"

#include "common/without_throwing.h"

#include <algorithm>
#include <limits>
#include <utility>

IMPLEMENT_DYNAMIC(CZoCalendar, CZoControl)

using std::chrono::days;

namespace {

Day MonthsOn(Day month, int count) { return FirstOfMonth(AddMonths(month, count)); }

/// The place of a day among the marks, or where it would be.
INT_PTR FindMark(const CDWordArray& marks, DWORD day)
{
    INT_PTR from = 0;
    for (INT_PTR to = marks.GetSize(); from < to;) {
        const INT_PTR middle = (from + to) / 2;
        if (marks[middle] < day)
            from = middle + 1;
        else
            to = middle;
    }
    return from;
}

DWORD MarkOf(const SYSTEMTIME& day) { return static_cast<DWORD>(DaysBetween(FirstDay(), DayOf(day))); }

} // namespace

CZoCalendar::CZoCalendar()
    : m_selection{Today(), Today()}, m_month(FirstOfMonth(Today())), m_least(FirstDay()), m_most(LastDay()),
      m_today(Today()), m_nLongestSpan((std::numeric_limits<int>::max)())
{
}

CZoCalendar::~CZoCalendar()
{
    DestroyWindow(); // while the overrides of this class still answer
    ::DeleteObject(m_hBold);
}

// Selection and range -------------------------------------------------------------------------------------------------

SYSTEMTIME CZoCalendar::GetFirst() const { return TimeOf(m_selection.First()); }
SYSTEMTIME CZoCalendar::GetLast() const { return TimeOf(m_selection.Last()); }
SYSTEMTIME CZoCalendar::GetLeast() const { return TimeOf(m_least); }
SYSTEMTIME CZoCalendar::GetMost() const { return TimeOf(m_most); }
SYSTEMTIME CZoCalendar::GetShownMonth() const { return TimeOf(m_month); }

Day CZoCalendar::Nearest(Day day) const { return (std::max)(m_least, (std::min)(day, m_most)); }

BOOL CZoCalendar::SetSpan(const SYSTEMTIME& first, const SYSTEMTIME& last)
{
    if (!IsDay(first) || !IsDay(last))
        return FALSE;
    const Selection span = {DayOf(first), DayOf(last)};
    const int between = DaysBetween(span.anchor, span.moving);
    if (between < 0 || between >= m_nLongestSpan || (between > 0 && m_hWnd != nullptr && !HasStyle(kSpan)) ||
        !IsAllowed(span.anchor) || !IsAllowed(span.moving))
        return FALSE;
    UndoDrag();
    Select(span, span.moving);
    return TRUE;
}

BOOL CZoCalendar::SetRange(const SYSTEMTIME* least, const SYSTEMTIME* most)
{
    if ((least != nullptr && !IsDay(*least)) || (most != nullptr && !IsDay(*most)))
        return FALSE;
    const Day from = least != nullptr ? DayOf(*least) : FirstDay();
    const Day to = most != nullptr ? DayOf(*most) : LastDay();
    if (to < from)
        return FALSE;
    UndoDrag();
    m_least = from;
    m_most = to;
    Select({Nearest(m_selection.anchor), Nearest(m_selection.moving)}, m_month);
    if (m_hWnd != nullptr)
        Invalidate(FALSE);
    return TRUE;
}

BOOL CZoCalendar::SetLongestSpan(int longest)
{
    if (longest < 1)
        return FALSE;
    UndoDrag();
    m_nLongestSpan = longest;
    if (DaysBetween(m_selection.First(), m_selection.Last()) >= longest)
        Select({m_selection.First(), m_selection.First() + days(longest - 1)}, m_month);
    return TRUE;
}

CZoCalendar::Selection CZoCalendar::MovedTo(Day day, bool keepsAnchor) const
{
    const Day to = Nearest(day);
    if (!keepsAnchor || !HasStyle(kSpan))
        return {to, to};
    const int between = DaysBetween(m_selection.anchor, to);
    const int longest = m_nLongestSpan - 1;
    return {m_selection.anchor, m_selection.anchor + days((std::max)(-longest, (std::min)(between, longest)))};
}

/// Also shows the month of a day, or the nearest that has days in the range.
void CZoCalendar::Select(const Selection& selection, Day shown)
{
    const Selection before = std::exchange(m_selection, selection);
    const Day month = FirstOfMonth(Nearest(shown));
    const bool isOtherMonth = std::exchange(m_month, month) != month;
    if (m_hWnd == nullptr || (!isOtherMonth && before == selection))
        return;
    for (int part = 1; part <= kYear; ++part) {
        const Day day = DayAt(part);
        if (isOtherMonth || before.Has(day) != selection.Has(day) ||
            (day == before.moving) != (day == selection.moving))
            InvalidatePart(part);
    }
    if (isOtherMonth) {
        Invalidate(FALSE); // week numbers too
        RaiseEvent(EVENT_OBJECT_NAMECHANGE, kMonth);
    }
    if (before == selection)
        return;
    const int focused = GetFocusedPart();
    if (HasFocus() && focused != 0)
        RaiseEvent(EVENT_OBJECT_FOCUS, focused);
    if (selection.anchor == selection.moving)
        RaiseEvent(EVENT_OBJECT_SELECTION, focused);
    else
        RaiseEvent(EVENT_OBJECT_SELECTIONWITHIN);
}

BOOL CZoCalendar::NotifySelection(UINT code, const Selection& before)
{
    ZoCalendarNotify notify = {};
    notify.first = GetFirst();
    notify.last = GetLast();
    notify.isChanged = before.First() != m_selection.First() || before.Last() != m_selection.Last();
    notify.isChosen = code == ZON_CALENDAR_CHOSEN;
    return Notify(code, &notify.header);
}

BOOL CZoCalendar::Choose(const Selection& selection)
{
    const Selection before = m_selection;
    Select(selection, selection.moving);
    return NotifySelection(ZON_CALENDAR_CHOSEN, before);
}

// Months --------------------------------------------------------------------------------------------------------------

bool CZoCalendar::CanShow(Day month) const { return LastOfMonth(month) >= m_least && month <= m_most; }

BOOL CZoCalendar::ShowMonth(int year, int month)
{
    SYSTEMTIME first = {};
    first.wYear = static_cast<WORD>(year);
    first.wMonth = static_cast<WORD>(month);
    first.wDay = 1;
    if (first.wYear != year || first.wMonth != month || !IsDay(first) || !CanShow(DayOf(first)))
        return FALSE;
    UndoDrag();
    Show(DayOf(first));
    return TRUE;
}

/// Days of the month before come first, a whole week if the month begins with a week.
Day CZoCalendar::DayAt(int part) const { return FirstOfWeek(m_month - days(1), m_nFirstWeekday) + days(part - 1); }

int CZoCalendar::PartOf(Day day) const
{
    const int place = DaysBetween(DayAt(1), day);
    return place >= 0 && place < kDays ? place + 1 : 0;
}

bool CZoCalendar::CanDo(int part) const
{
    switch (part) {
    case kPrevious:
    case kNext: {
        const Day month = MonthsOn(m_month, part == kNext ? 1 : -1);
        return month != m_month && CanShow(month); // there is none before the first and behind the last
    }
    case kMonth:
    case kYear:
        return true;
    case kToday:
        return IsAllowed(m_today);
    default:
        return IsAllowed(DayAt(part));
    }
}

BOOL CZoCalendar::GetPartDay(int part, SYSTEMTIME& day) const
{
    if (part < 1 || part > kDays || !IsInYears(DayAt(part)))
        return FALSE;
    day = TimeOf(DayAt(part));
    return TRUE;
}

BOOL CZoCalendar::MarkDay(const SYSTEMTIME& day, BOOL isMarked)
{
    if (!IsDay(day))
        return FALSE;
    const INT_PTR at = FindMark(m_marks, MarkOf(day));
    const bool wasMarked = at < m_marks.GetSize() && m_marks[at] == MarkOf(day);
    if (wasMarked == (isMarked != FALSE))
        return TRUE;
    if (!isMarked)
        m_marks.RemoveAt(at);
    else if (!WithoutThrowing([&] { m_marks.InsertAt(at, MarkOf(day)); }))
        return FALSE;
    InvalidatePart(PartOf(DayOf(day)));
    return TRUE;
}

void CZoCalendar::ClearMarks()
{
    m_marks.RemoveAll();
    if (m_hWnd != nullptr)
        Invalidate(FALSE);
}

BOOL CZoCalendar::IsMarked(const SYSTEMTIME& day) const
{
    if (!IsDay(day))
        return FALSE;
    const INT_PTR at = FindMark(m_marks, MarkOf(day));
    return at < m_marks.GetSize() && m_marks[at] == MarkOf(day);
}

// Keys ----------------------------------------------------------------------------------------------------------------

BOOL CZoCalendar::HandleKey(UINT key)
{
    const int command = CommandOf(kKeys, key);
    if (command == 0)
        return FALSE;
    if (!IsDragging())
        Obey(command);
    return TRUE;
}

void CZoCalendar::Obey(int command)
{
    Day to = m_selection.moving;
    switch (command & ~kExtend) {
    case kDayBack:
        to -= days(1);
        break;
    case kDayOn:
        to += days(1);
        break;
    case kWeekBack:
        to -= days(7);
        break;
    case kWeekOn:
        to += days(7);
        break;
    case kMonthBack:
        to = AddMonths(to, -1);
        break;
    case kMonthOn:
        to = AddMonths(to, 1);
        break;
    case kYearBack:
        to = AddMonths(to, -12);
        break;
    case kYearOn:
        to = AddMonths(to, 12);
        break;
    case kMonthFirst:
        to = FirstOfMonth(to);
        break;
    case kMonthLast:
        to = LastOfMonth(to);
        break;
    case kGoToday:
        to = m_today;
        break;
    default:
        Choose(m_selection);
        return;
    }
    const Selection before = m_selection;
    const Selection selection = MovedTo(to, (command & kExtend) != 0);
    Select(selection, selection.moving);
    if (selection.First() != before.First() || selection.Last() != before.Last())
        NotifySelection(ZON_CALENDAR_CHANGED, before);
}
