#include "calendar_texts.h"

#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

CString CalendarText(UINT id)
{
    CString text;
    ZoGblLoadString(id, text);
    return text;
}

CString TodayText(Day today)
{
    const CString date = DayText(today, DATE_SHORTDATE);
    CString text;
    text.Format(CalendarText(ZO_IDS_CALENDAR_TODAY), static_cast<LPCSTR>(date));
    return text.IsEmpty() ? date : text; // no language library
}

CString HeadingText(Day month)
{
    CString picture = LocaleText(LOCALE_SYEARMONTH); // systems before Windows 2000 have none
    if (picture.IsEmpty())
        picture = "MMMM yyyy";
    return DayText(month, static_cast<LPCSTR>(picture));
}

CString YearText(Day month) { return DayText(month, "yyyy"); }

CString SpanText(Day first, Day last, DWORD format)
{
    if (first == last)
        return DayText(first, format);
    CString text;
    text.Format(CalendarText(ZO_IDS_CALENDAR_SPAN), static_cast<LPCSTR>(DayText(first, format)),
                static_cast<LPCSTR>(DayText(last, format)));
    return text;
}
