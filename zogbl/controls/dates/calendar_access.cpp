// The calendar: what screen readers hear of it.
#include <zogbl/calendar.h>

#include <zogbl/resource_ids.h>

#include "calendar_texts.h"

#include <oleacc.h>

int CZoCalendar::GetPartCount() const { return HasStyle(kNoToday) ? kToday - 1 : kToday; }
int CZoCalendar::GetFocusedPart() const { return PartOf(m_selection.moving); }

BOOL CZoCalendar::DescribePart(int part, ZoPart& description) const
{
    if (part == 0) {
        if (!CZoControl::DescribePart(part, description))
            return FALSE;
        description.role = ROLE_SYSTEM_TABLE;
        description.value = SpanText(m_selection.First(), m_selection.Last(), DATE_LONGDATE);
        return TRUE;
    }
    if (part < 1 || part > GetPartCount())
        return FALSE;
    const bool canDo = IsWindowEnabled() && CanDo(part);
    description.area = AreaOf(part);
    description.state = canDo ? 0 : STATE_SYSTEM_UNAVAILABLE;
    if (part <= kDays) {
        DescribeDay(part, description);
        return TRUE;
    }
    description.role = part == kMonth || part == kYear ? ROLE_SYSTEM_BUTTONMENU : ROLE_SYSTEM_PUSHBUTTON;
    switch (part) {
    case kPrevious:
    case kNext:
        description.name = CalendarText(part == kNext ? ZO_IDS_CALENDAR_NEXT : ZO_IDS_CALENDAR_PREVIOUS);
        break;
    case kMonth:
        description.name = LocaleText(LOCALE_SMONTHNAME1 + TimeOf(m_month).wMonth - 1U);
        break;
    case kYear:
        description.name = YearText(m_month);
        break;
    default:
        description.name = TodayText(m_today);
        break;
    }
    if (canDo)
        description.action = CalendarText(part == kToday                    ? ZO_IDS_CALENDAR_CHOOSE
                                          : part == kMonth || part == kYear ? ZO_IDS_CALENDAR_OPEN
                                                                            : ZO_IDS_CALENDAR_SHOW);
    return TRUE;
}

void CZoCalendar::DescribeDay(int part, ZoPart& description) const
{
    description.role = ROLE_SYSTEM_CELL;
    const Day day = DayAt(part);
    if (!IsInYears(day)) {
        description.state |= STATE_SYSTEM_INVISIBLE;
        return;
    }
    description.name = DayText(day, DATE_LONGDATE);
    const auto tell = [&](const CString& what) {
        description.description += (description.description.IsEmpty() ? "" : ", ") + what;
    };
    const CString weekday = WeekdayText(WeekdayOf(day)); // which not each locale has in its date
    if (description.name.Find(weekday) < 0)
        tell(weekday);
    if (day == m_today && !HasStyle(kNoTodayMark))
        tell(CalendarText(ZO_IDS_CALENDAR_IS_TODAY));
    if (IsMarked(TimeOf(day)))
        tell(CalendarText(ZO_IDS_CALENDAR_MARKED));
    if (HasStyle(kWeekNumbers)) {
        CString week;
        week.Format(CalendarText(ZO_IDS_CALENDAR_WEEK),
                    WeekNumber(day, m_nFirstWeekday, static_cast<WeekRule>(m_nWeekRule)));
        tell(week);
    }
    if ((description.state & STATE_SYSTEM_UNAVAILABLE) == 0) {
        description.state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
        description.action = CalendarText(ZO_IDS_CALENDAR_CHOOSE);
    }
    if (m_selection.Has(day))
        description.state |= STATE_SYSTEM_SELECTED;
    if (day == m_selection.moving && HasFocus())
        description.state |= STATE_SYSTEM_FOCUSED;
}
