// The calendar's arithmetic, against the system's and against a count by hand.
#include "support/test.h"

#include "controls/base/day.h"

#include <random>

namespace {

SYSTEMTIME Date(int year, int month, int day)
{
    SYSTEMTIME time = {};
    time.wYear = static_cast<WORD>(year);
    time.wMonth = static_cast<WORD>(month);
    time.wDay = static_cast<WORD>(day);
    return time;
}
Day At(int year, int month, int day) { return DayOf(Date(year, month, day)); }

/// The week's number by its definition: weeks are counted from the one in which the year's first weeks begins.
int CountedWeek(Day day, int firstWeekday, WeekRule rule)
{
    for (int year = TimeOf(day).wYear + 1;; --year) {
        const Day newYear = std::chrono::year(year) / 1 / 1;
        Day first = newYear - std::chrono::days(6);
        const auto daysOfYear = [&] { return DaysBetween(newYear, first) + 7; }; // of that week in the new year
        const int least = rule == WeekRule::kWithFirstDay ? 1 : rule == WeekRule::kFirstWhole ? 7 : 4;
        while (WeekdayOf(first) != firstWeekday || daysOfYear() < least)
            first += std::chrono::days(1);
        if (first <= day)
            return DaysBetween(first, day) / 7 + 1;
    }
}

} // namespace

TEST(Days, EqualTheSystems)
{
    std::mt19937 random(1601);
    for (int i = 0; i < 10000; ++i) {
        SYSTEMTIME time = Date(1601 + static_cast<int>(random() % 8399), 1 + static_cast<int>(random() % 12),
                               1 + static_cast<int>(random() % 31));
        FILETIME file;
        // Wine takes a 29 February in each year, and makes another day of it.
        SYSTEMTIME back = {};
        const bool exists =
            SystemTimeToFileTime(&time, &file) && FileTimeToSystemTime(&file, &back) && back.wDay == time.wDay;
        ASSERT_EQ(exists, IsDay(time)) << time.wYear << "-" << time.wMonth << "-" << time.wDay;
        if (!exists)
            continue;
        const SYSTEMTIME ours = TimeOf(DayOf(time));
        ASSERT_EQ(0, std::memcmp(&back, &ours, sizeof ours)) << time.wYear << "-" << time.wMonth << "-" << time.wDay;
        for (const WeekRule rule : {WeekRule::kWithFirstDay, WeekRule::kFirstWhole, WeekRule::kWithFourDays}) {
            for (int first = 0; first < 7; ++first)
                ASSERT_EQ(CountedWeek(DayOf(time), first, rule), WeekNumber(DayOf(time), first, rule))
                    << time.wYear << "-" << time.wMonth << "-" << time.wDay << " " << first;
        }
    }
}

TEST(Days, AtTheirBorders)
{
    for (const SYSTEMTIME& wrong :
         {Date(1600, 12, 31), Date(10000, 1, 1), Date(2023, 2, 29), Date(1900, 2, 29), Date(2024, 13, 1),
          Date(2024, 0, 1), Date(2024, 4, 31), Date(2024, 1, 0), Date(65535, 65535, 65535)})
        EXPECT_FALSE(IsDay(wrong)) << wrong.wYear << "-" << wrong.wMonth << "-" << wrong.wDay;
    EXPECT_TRUE(IsDay(Date(1601, 1, 1)) && IsDay(Date(9999, 12, 31)) && IsDay(Date(2000, 2, 29)));
    EXPECT_FALSE(IsInYears(FirstDay() - std::chrono::days(1)) || IsInYears(LastDay() + std::chrono::days(1)));

    const struct {
        Day from;
        int months;
        Day to;
    } kMoves[] = {{At(2024, 1, 31), 1, At(2024, 2, 29)},    {At(2023, 1, 31), 1, At(2023, 2, 28)},
                  {At(2024, 2, 29), 12, At(2025, 2, 28)},   {At(2024, 3, 31), -1, At(2024, 2, 29)},
                  {At(9999, 12, 5), 1, At(9999, 12, 31)},   {At(1601, 1, 20), -1, At(1601, 1, 1)},
                  {At(1601, 12, 31), -11, At(1601, 1, 31)}, {At(2024, 12, 31), 2, At(2025, 2, 28)}};
    for (const auto& move : kMoves)
        EXPECT_EQ(move.to, AddMonths(move.from, move.months)) << DaysBetween(FirstDay(), move.from);

    // The first of January 2027 is a Friday. By ISO 8601 it lies in the last week of 2026, which has 53.
    EXPECT_EQ(53, WeekNumber(At(2027, 1, 1), 0, WeekRule::kWithFourDays));
    EXPECT_EQ(1, WeekNumber(At(2027, 1, 1), 6, WeekRule::kWithFirstDay));
    EXPECT_EQ(52, WeekNumber(At(2027, 1, 1), 6, WeekRule::kFirstWhole));
    EXPECT_EQ(1, WeekNumber(LastDay(), 0, WeekRule::kWithFirstDay)); // Friday; the week ends in the next year
}
