#include "day_text.h"

namespace {

constexpr int kLongest = 256; // bytes of a text; the system's limits are below

} // namespace

CString DayText(Day day, DWORD format)
{
    const SYSTEMTIME time = TimeOf(day);
    char text[kLongest] = "";
    ::GetDateFormatA(LOCALE_USER_DEFAULT, format | LOCALE_USE_CP_ACP, &time, nullptr, text, sizeof text);
    return text;
}

CString DayText(Day day, LPCSTR picture)
{
    const SYSTEMTIME time = TimeOf(day);
    char text[kLongest] = "";
    ::GetDateFormatA(LOCALE_USER_DEFAULT, LOCALE_USE_CP_ACP, &time, picture, text, sizeof text);
    return text;
}

CString LocaleText(LCTYPE what)
{
    char text[kLongest] = "";
    ::GetLocaleInfoA(LOCALE_USER_DEFAULT, what | LOCALE_USE_CP_ACP, text, sizeof text);
    return text;
}

int LocaleNumber(LCTYPE what)
{
    char digit[8] = "";
    const int length = ::GetLocaleInfoA(LOCALE_USER_DEFAULT, what, digit, sizeof digit);
    return length > 0 && digit[0] >= '0' && digit[0] <= '9' ? digit[0] - '0' : 0;
}
