/// \file
/// Days as texts, in the user's locale.
#pragma once

#include "day.h"

#include <afxwin.h>

// Empty if the system refuses it. They throw CMemoryException*.

CString DayText(Day day, DWORD format);   ///< \param format DATE_SHORTDATE or DATE_LONGDATE
CString DayText(Day day, LPCSTR picture); ///< \param picture as GetDateFormat takes it: "dd MMM"
/// \param what LOCALE_S...
CString LocaleText(LCTYPE what);
/// \param what LOCALE_I..., a number of one digit
int LocaleNumber(LCTYPE what);
/// \param weekday from Monday (0)
inline CString WeekdayText(int weekday) { return LocaleText(LOCALE_SDAYNAME1 + static_cast<LCTYPE>(weekday)); }
inline CString ShortWeekdayText(int weekday)
{
    return LocaleText(LOCALE_SABBREVDAYNAME1 + static_cast<LCTYPE>(weekday));
}
