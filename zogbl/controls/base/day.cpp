#include "day.h"

using std::chrono::days;
using std::chrono::year;
using std::chrono::year_month_day;

namespace {

year_month_day DateOf(const SYSTEMTIME& time)
{
    return {year(time.wYear), std::chrono::month(time.wMonth), std::chrono::day(time.wDay)};
}

} // namespace

Day FirstDay() { return year(1601) / 1 / 1; }
Day LastDay() { return year(9999) / 12 / 31; }

bool IsDay(const SYSTEMTIME& time)
{
    return time.wMonth <= 12 && time.wDay <= 31 && time.wYear <= 9999 && DateOf(time).ok() && IsInYears(DayOf(time));
}

Day DayOf(const SYSTEMTIME& time) { return DateOf(time); }

SYSTEMTIME TimeOf(Day day)
{
    const year_month_day date = day;
    SYSTEMTIME time = {};
    time.wYear = static_cast<WORD>(static_cast<int>(date.year()));
    time.wMonth = static_cast<WORD>(static_cast<unsigned>(date.month()));
    time.wDay = static_cast<WORD>(static_cast<unsigned>(date.day()));
    time.wDayOfWeek = static_cast<WORD>(std::chrono::weekday(day).c_encoding()); // from Sunday
    return time;
}

Day Today()
{
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    return DayOf(now);
}

Day AddMonths(Day day, int months)
{
    const year_month_day date = day;
    const year_month_day moved = date + std::chrono::months(months);
    const Day first = moved.year() / moved.month() / 1;
    if (first < FirstDay())
        return FirstDay();
    if (first > LastDay())
        return LastDay();
    return moved.ok() ? Day(moved) : LastOfMonth(first);
}

Day FirstOfMonth(Day day)
{
    const year_month_day date = day;
    return date.year() / date.month() / 1;
}

Day LastOfMonth(Day day)
{
    const year_month_day date = day;
    return date.year() / date.month() / std::chrono::last;
}

int DaysBetween(Day from, Day to) { return static_cast<int>((to - from).count()); }

int WeekdayOf(Day day) { return static_cast<int>(std::chrono::weekday(day).iso_encoding()) - 1; }

Day FirstOfWeek(Day day, int firstWeekday) { return day - days((WeekdayOf(day) + 7 - firstWeekday) % 7); }

int WeekNumber(Day day, int firstWeekday, WeekRule rule)
{
    // The week belongs to the year of its last, first or fourth day, and is the one in which the n-th such weekday of
    // that year lies.
    const int deciding = rule == WeekRule::kWithFirstDay ? 6 : rule == WeekRule::kFirstWhole ? 0 : 3;
    const Day decides = FirstOfWeek(day, firstWeekday) + days(deciding);
    const Day newYear = year_month_day(decides).year() / 1 / 1;
    return DaysBetween(newYear, decides) / 7 + 1;
}
