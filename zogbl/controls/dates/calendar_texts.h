/// \file
/// Texts of the controls for dates. They all throw CMemoryException*.
#pragma once

#include "controls/base/day_text.h"

/// A text of the user's language.
CString CalendarText(UINT id);
/// "Today: 14.03.2026"
CString TodayText(Day today);
/// The month and the year, in the order of the locale.
CString HeadingText(Day month);
CString YearText(Day month);
/// One day, or "14.03.2026 to 03.04.2026". \param format as of DayText
CString SpanText(Day first, Day last, DWORD format);
