/// \file
/// What the tests of the controls for dates share: dates as texts, a clock, the user's locale, keys in a menu.
#pragma once

#include "controls/control_kit.h"
#include "support/product_test.h"

#include <zogbl/calendar.h>

#include <random>
#include <sstream>

namespace zo_test {

inline SYSTEMTIME Date(int year, int month, int day)
{
    return {static_cast<WORD>(year), static_cast<WORD>(month), 0, static_cast<WORD>(day), 0, 0, 0, 0};
}
inline SYSTEMTIME Date(const SYSTEMTIME& time) { return Date(time.wYear, time.wMonth, time.wDay); }
/// "2024-02-29", or "2024-02-29 12:30:00".
inline SYSTEMTIME At(const std::string& text)
{
    SYSTEMTIME time = {};
    sscanf(text.c_str(), "%hu-%hu-%hu %hu:%hu:%hu", &time.wYear, &time.wMonth, &time.wDay, &time.wHour, &time.wMinute,
           &time.wSecond);
    return time;
}
inline std::string Written(const SYSTEMTIME& time)
{
    char text[40];
    wsprintfA(text, "%d-%02d-%02d %02d:%02d:%02d", time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute,
              time.wSecond);
    const std::string written = text;
    return written.ends_with(" 00:00:00") ? written.substr(0, 10) : written;
}
inline std::string Span(const SYSTEMTIME& first, const SYSTEMTIME& last)
{
    return Written(first) + (Written(first) == Written(last) ? "" : ".." + Written(last));
}
/// A day in the user's locale. \param format DATE_...
inline std::string LocaleText(const SYSTEMTIME& day, DWORD format)
{
    char text[80] = "";
    ::GetDateFormatA(LOCALE_USER_DEFAULT, format, &day, nullptr, text, sizeof text);
    return text;
}

inline int AnyNumber(std::mt19937& random, int least, int most)
{
    return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
}
/// It may be one that does not exist.
inline SYSTEMTIME AnyTime(std::mt19937& random)
{
    const auto part = [&](int least, int most) { return static_cast<WORD>(AnyNumber(random, least, most)); };
    const WORD year = random() % 10 == 0 ? part(1753, 9999) : part(1990, 2040);
    return {year, part(1, 12), 0, part(1, 31), part(0, 23), part(0, 59), part(0, 59), 0};
}

/// The parts of a row, without the blanks at their ends.
inline std::vector<std::string> Split(const std::string& row, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(row + separator);
    for (std::string part; std::getline(stream, part, separator);) {
        part.erase(0, part.find_first_not_of(" \n"));
        parts.push_back(part.substr(0, part.find_last_not_of(" \n") + 1));
    }
    return parts;
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

/// What is done in the menu that opens while it lives.
class InMenu {
public:
    explicit InMenu(std::vector<std::function<void(HWND)>> acts)
    {
        s_acts = std::move(acts);
        m_timer = ::SetTimer(nullptr, 0, 20, &Act);
    }
    ~InMenu() { ::KillTimer(nullptr, m_timer); }
    InMenu(const InMenu&) = delete;
    InMenu& operator=(const InMenu&) = delete;

    static std::function<void(HWND)> Key(UINT key)
    {
        return [key](HWND menu) { ::PostMessageA(menu, WM_KEYDOWN, key, 1); };
    }

private:
    static void CALLBACK Act(HWND, UINT, UINT_PTR, DWORD)
    {
        const HWND menu = ::FindWindowA("#32768", nullptr);
        if (menu == nullptr || s_acts.empty())
            return;
        const auto act = s_acts.front();
        s_acts.erase(s_acts.begin());
        act(menu);
    }
    static inline std::vector<std::function<void(HWND)>> s_acts;
    UINT_PTR m_timer;
};

} // namespace zo_test
