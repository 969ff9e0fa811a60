/// \file
/// Days of the calendar, as the controls for dates count them: 1 January 1601 to 31 December 9999.
#pragma once

#include <windows.h>

#include <chrono>

/// A day. It may lie outside the years of the controls, as the days of a week at their border do.
using Day = std::chrono::sys_days;

Day FirstDay();
Day LastDay();
inline bool IsInYears(Day day) { return day >= FirstDay() && day <= LastDay(); }

/// Whether these are year, month and day of a day in those years. Weekday and time are not looked at.
bool IsDay(const SYSTEMTIME& time);
Day DayOf(const SYSTEMTIME& time); ///< \p time is one
/// Year, month, day and weekday; the time is 0 o'clock.
SYSTEMTIME TimeOf(Day day);
/// The user's day, by the clock of the system.
Day Today();

/// The same day of another month. If that month is shorter, its last day; outside of the years, the first or last day.
Day AddMonths(Day day, int months);
Day FirstOfMonth(Day day);
Day LastOfMonth(Day day);
int DaysBetween(Day from, Day to); ///< positive if \p to is later

/// Days from Monday (0) to Sunday (6), as the system counts in LOCALE_IFIRSTDAYOFWEEK.
int WeekdayOf(Day day);
Day FirstOfWeek(Day day, int firstWeekday);

/// LOCALE_IFIRSTWEEKOFYEAR
enum class WeekRule { kWithFirstDay = 0, kFirstWhole = 1, kWithFourDays = 2 };
/// The number of the week that \p day lies in. A week has one number, also where the year ends in it.
int WeekNumber(Day day, int firstWeekday, WeekRule rule);
