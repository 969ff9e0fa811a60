/// \file
/// What the tests of the controls for dates share: dates as texts, a clock, the user's locale, keys in a menu.
#pragma once

#include "controls/control_kit.h"

#include <zogbl/calendar.h>

namespace zo_test {

inline SYSTEMTIME Date(int year, int month, int day)
{
    SYSTEMTIME time = {};
    time.wYear = static_cast<WORD>(year);
    time.wMonth = static_cast<WORD>(month);
    time.wDay = static_cast<WORD>(day);
    return time;
}
/// \param text "2024-02-29", and anything behind it
inline SYSTEMTIME DateOf(const std::string& text)
{
    return Date(std::stoi(text), std::stoi(text.substr(5)), std::stoi(text.substr(8)));
}
inline std::string Text(const SYSTEMTIME& day)
{
    char text[32];
    wsprintfA(text, "%04d-%02d-%02d", day.wYear, day.wMonth, day.wDay);
    return text;
}
inline std::string Span(const SYSTEMTIME& first, const SYSTEMTIME& last)
{
    return Text(first) == Text(last) ? Text(first) : Text(first) + ".." + Text(last);
}

/// A calendar's notification, for ControlParent.
inline std::string DescribeSelection(const NMHDR& header)
{
    const auto& notify = reinterpret_cast<const ZoCalendarNotify&>(header);
    if (header.code != ZON_CALENDAR_CHANGED && header.code != ZON_CALENDAR_CHOSEN)
        return "";
    return Span(notify.first, notify.last) + (header.code == ZON_CALENDAR_CHANGED ? " changed" : " chosen") +
           (notify.isChanged ? "" : " as before");
}

/// The time of day of the library, while it lives.
class Clock {
public:
    explicit Clock(const SYSTEMTIME& now) { s_now = now; }
    void Set(const SYSTEMTIME& now) const { s_now = now; }

private:
    static void WINAPI Now(SYSTEMTIME* now) { *now = s_now; }
    static inline SYSTEMTIME s_now;
    const ImportPatch m_patch{kZogbl, "GetLocalTime", &Now};
};

/// The user's first weekday and rule for weeks, as digits, while it lives.
class UserWeeks {
public:
    void Set(char firstWeekday, char rule) const { s_first = firstWeekday, s_rule = rule; }

private:
    static int WINAPI Info(LCID locale, LCTYPE what, LPSTR text, int size)
    {
        const LCTYPE number = what & 0xFFFF;
        if (number != LOCALE_IFIRSTDAYOFWEEK && number != LOCALE_IFIRSTWEEKOFYEAR)
            return ::GetLocaleInfoA(locale, what, text, size);
        text[0] = number == LOCALE_IFIRSTDAYOFWEEK ? s_first : s_rule;
        text[1] = '\0';
        return 2;
    }
    static inline char s_first = '6', s_rule = '0';
    const ImportPatch m_patch{kZogbl, "GetLocaleInfoA", &Info};
};

/// A day in the user's locale. \param format DATE_...
inline std::string LocaleText(const SYSTEMTIME& day, DWORD format)
{
    char text[80] = "";
    ::GetDateFormatA(LOCALE_USER_DEFAULT, format, &day, nullptr, text, sizeof text);
    return text;
}

/// Keys for the menu that opens while it lives.
class ListKeys {
public:
    explicit ListKeys(std::vector<UINT> keys)
    {
        s_keys = std::move(keys);
        m_timer = ::SetTimer(nullptr, 0, 20, &Press);
    }
    ~ListKeys() { ::KillTimer(nullptr, m_timer); }
    ListKeys(const ListKeys&) = delete;
    ListKeys& operator=(const ListKeys&) = delete;

private:
    static void CALLBACK Press(HWND, UINT, UINT_PTR, DWORD)
    {
        const HWND menu = ::FindWindowA("#32768", nullptr);
        if (menu == nullptr || s_keys.empty())
            return;
        ::PostMessageA(menu, WM_KEYDOWN, s_keys.front(), 1);
        s_keys.erase(s_keys.begin());
    }
    static inline std::vector<UINT> s_keys;
    UINT_PTR m_timer;
};

} // namespace zo_test
