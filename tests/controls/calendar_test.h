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

/// The library takes American English for the user's locale, with numbers of the calendar as the test sets them.
class UserLocale {
public:
    explicit UserLocale(char firstWeekday = '6', char weekRule = '0')
    {
        s_firstWeekday = firstWeekday;
        s_weekRule = weekRule;
        s_this = this;
    }
    void Set(char firstWeekday, char weekRule) const
    {
        s_firstWeekday = firstWeekday;
        s_weekRule = weekRule;
    }

private:
    static constexpr LCID kEnglishLocale = 0x0409;
    static int WINAPI Info(LCID, LCTYPE what, LPSTR text, int size)
    {
        if ((what & 0xFFFF) != LOCALE_IFIRSTDAYOFWEEK && (what & 0xFFFF) != LOCALE_IFIRSTWEEKOFYEAR)
            return s_this->m_info.Original<int WINAPI(LCID, LCTYPE, LPSTR, int)>()(kEnglishLocale, what, text, size);
        text[0] = (what & 0xFFFF) == LOCALE_IFIRSTDAYOFWEEK ? s_firstWeekday : s_weekRule;
        text[1] = '\0';
        return 2;
    }
    static int WINAPI Format(LCID, DWORD flags, const SYSTEMTIME* date, LPCSTR picture, LPSTR text, int size)
    {
        return s_this->m_format.Original<int WINAPI(LCID, DWORD, const SYSTEMTIME*, LPCSTR, LPSTR, int)>()(
            kEnglishLocale, flags, date, picture, text, size);
    }
    static inline char s_firstWeekday, s_weekRule;
    static inline UserLocale* s_this;
    const ImportPatch m_info{kZogbl, "GetLocaleInfoA", &Info};
    const ImportPatch m_format{kZogbl, "GetDateFormatA", &Format};
};

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
