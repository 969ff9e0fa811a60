// Dates in fields, as keys change them: without a window, by tables.
#include "dates_test.h"

#include <zogbl/date_time_fields.h>

namespace {

constexpr LCID kPolish = 0x415, kFrench = 0x40C, kJapanese = 0x411;

std::string Shown(const CZoDateTimeFields& fields)
{
    char text[CZoDateTimeFields::kWholeSize];
    fields.GetWholeText(text);
    return text;
}

/// < > a field back, on; ^ v a step; [ ] the least, most; # the last digit; ~ taken back; $ settled; others are typed.
void Press(CZoDateTimeFields& fields, const std::string& keys)
{
    const std::map<char, std::function<void()>> acts = {
        {'<', [&] { fields.MoveBy(-1); }},     {'>', [&] { fields.MoveBy(1); }},
        {'^', [&] { fields.Step(1); }},        {'v', [&] { fields.Step(-1); }},
        {'[', [&] { fields.GoToEnd(FALSE); }}, {']', [&] { fields.GoToEnd(TRUE); }},
        {'#', [&] { fields.DeleteLast(); }},   {'~', [&] { fields.TakeBack(); }},
        {'$', [&] { fields.Settle(); }}};
    for (const char key : keys) {
        const auto act = acts.find(key);
        if (act != acts.end())
            act->second();
        else
            fields.Type(std::string(1, key).c_str());
    }
}

/// \param tables "FORMAT @ BEFORE @ LEAST @ MOST | KEYS = SHOWN = VALUE | ... ; FORMAT ...", also without a range
void ExpectTyped(
    const char* tables, const std::function<void(CZoDateTimeFields&)>& then = [](auto&) {})
{
    for (const std::string& table : Split(tables, ';')) {
        auto rows = Split(table, '|');
        const auto head = Split(rows[0], '@');
        rows.erase(rows.begin());
        CZoDateTimeFields fields;
        ASSERT_TRUE(fields.SetFormat(head[0].c_str(), kEnglish));
        const SYSTEMTIME least = At(head.size() > 2 ? head[2] : "1601-01-01");
        const SYSTEMTIME most = At(head.size() > 2 ? head[3] : "9999-12-31 23:59:59");
        ASSERT_TRUE(fields.SetRange(&least, &most));
        for (const std::string& row : rows) {
            SCOPED_TRACE(head[0] + ": " + row);
            const auto columns = Split(row, '=');
            fields.MoveTo(fields.GetFirst());
            ASSERT_TRUE(fields.SetTime(At(head[1])));
            Press(fields, columns[0]);
            EXPECT_EQ(columns[1], Shown(fields));
            EXPECT_EQ(columns[2], Written(fields.GetTime()));
        }
        then(fields);
    }
}

} // namespace

TEST(DateTimeFields, AreTypedInEveryOrder)
{
    ExpectTyped(R"(dd.MM.yyyy @ 2023-04-07
        | 31=31.04.2023=2023-04-07 | 3103=31.03.2023=2023-03-31 | 29022024=29.02.2024=2024-02-29
        | >>2024<02<<29=29.02.2024=2024-02-29
        ; dd.yyyy.MM @ 2023-04-07 | 29202402=29.2024.02=2024-02-29
        ; MM/dd/yyyy @ 2023-04-07 | 02292024=02/29/2024=2024-02-29
        ; MM/yyyy/dd @ 2023-04-30 | 02202429=02/2024/29=2024-02-29
        ; yyyy-MM-dd @ 2023-04-30 | 20240229=2024-02-29=2024-02-29 | 2024-3-31=2024-03-31=2024-03-31
        ; yyyy-dd-MM @ 2023-04-07 | 20242902=2024-29-02=2024-02-29)");
    // What waits is settled when the last field is left, and taken back.
    ExpectTyped(R"(dd.MM.yyyy @ 2023-04-07
        | 29022023=29.02.2023=2023-04-29 | 29022023>=28.02.2023=2023-02-28 | 29022023<=28.02.2023=2023-02-28
        | 31$=30.04.2023=2023-04-30 | 31~=07.04.2023=2023-04-07 | 31>>=30.04.2023=2023-04-30
        | 31^=31.05.2023=2023-05-31 | 31v=31.03.2023=2023-03-31 | 1=1.04.2023=2023-04-07
        | 1~=07.04.2023=2023-04-07 | 1>=01.04.2023=2023-04-01 | 1#2$=02.04.2023=2023-04-02
        | >>202#$=07.04.2020=2020-04-07)");
    // What stands between the fields moves on, but not twice.
    ExpectTyped(R"(dd.MM.yyyy @ 2023-04-07
        | 31.03.2024.=31.03.2024=2024-03-31 | 1.2.2024=01.02.2024=2024-02-01 | ..5$=07.04.2005=2005-04-07
        | >>99$=07.04.1999=1999-04-07 | >>199$=07.04.2023=2023-04-07 | >>1600$=07.04.2023=2023-04-07
        | >>1601=07.04.1601=1601-04-07 | [=01.04.2023=2023-04-01 | ]=30.04.2023=2023-04-30)");
    // A digit without a place is passed over; one that leaves no place for another moves on.
    ExpectTyped(R"(d.M.y @ 2023-04-07
        | 9=9.4.23=2023-04-09 | 99=9.9.23=2023-09-09 | 0=0.4.23=2023-04-07 | 00=0.4.23=2023-04-07
        | 0>=7.4.23=2023-04-07 | 32=3.4.23=2023-04-07 | >13=7.1.23=2023-04-07 | >>5$=7.4.5=2005-04-07
        ; d MMMM yyyy @ 2023-04-07 | 31 3 24$=31 March 2024=2024-03-31
        ; MMM d @ 2023-03-31 | f=Feb 31=2023-03-31 | f>5=Feb 5=2023-02-05 | x=Mar 31=2023-03-31
        ; MMMM d @ 2023-04-07
        | j=June 7=2023-06-07 | jj=July 7=2023-07-07 | jjj=January 7=2023-01-07 | J=June 7=2023-06-07
        ; HH:mm:ss @ 2023-04-07 23:59:58
        | 7:5:3$=07:05:03=2023-04-07 07:05:03 | 24=2:59:58=2023-04-07 23:59:58
        | ^=00:59:58=2023-04-07 00:59:58 | >^=23:00:58=2023-04-07 23:00:58
        ; h:mm tt @ 2023-04-07 23:59:00
        | 3=3:59 PM=2023-04-07 15:59:00 | 12:=12:59 PM=2023-04-07 12:59:00 | 12>a=12:59 AM=2023-04-07 00:59:00
        | 15=3:59 PM=2023-04-07 15:59:00 | 0>=12:59 AM=2023-04-07 00:59:00 | ^=12:59 AM=2023-04-07 00:59:00
        | <^=11:59 AM=2023-04-07 11:59:00 | <1=11:59 PM=2023-04-07 23:59:00
        ; h t @ 2023-04-07 11:00:00 | >p=11 P=2023-04-07 23:00:00 | ^=12 P=2023-04-07 12:00:00)");
    // Steps go around; the day is the last of its month. The weekday and another field of the same kind follow.
    ExpectTyped(R"(d.M.yyyy @ 2023-01-31
        | ^=1.1.2023=2023-01-01 | >^=28.2.2023=2023-02-28 | >v=31.12.2023=2023-12-31
        ; d.M.yyyy @ 9999-12-01 | v=31.12.9999=9999-12-31 | >>^=1.12.1601=1601-12-01
        ; yyyy-M-d @ 2024-02-29 | ^=2025-2-28=2025-02-28 | >>]=2024-2-29=2024-02-29
        ; dddd, d. MM (MMM) @ 2023-04-07
        | 8=Saturday, 8. 04 (Apr)=2023-04-08 | >>^=Saturday, 8. 04 (Apr)=2023-04-08)");
    DWORD most = 0; // of the user's window for years of two digits
    GetCalendarInfoA(LOCALE_USER_DEFAULT, CAL_GREGORIAN, CAL_ITWODIGITYEARMAX | 0x20000000, nullptr, 0, &most);
    for (const auto& [year, expected] : {std::pair{most, most}, {most + 1, most - 99}}) {
        CZoDateTimeFields fields;
        ASSERT_TRUE(fields.SetFormat("yy", kEnglish));
        Press(fields, std::to_string(year % 100));
        EXPECT_EQ(expected, fields.GetTime().wYear);
    }
}

TEST(DateTimeFields, StayInTheirRange)
{
    // Whole days, where there is no time.
    ExpectTyped(R"(dd.MM.yyyy @ 2025-01-10 @ 2024-01-15 @ 2025-01-14
        | 20=20.01.2025=2025-01-10 | 20012024=20.01.2024=2024-01-20 | 20$=14.01.2025=2025-01-14
        | >>2099>=14.01.2025=2025-01-14 | ]^=01.01.2025=2025-01-01
        ; dd.MM.yyyy @ 2024-01-20 23:00:00 @ 2024-01-15 22:00:00 @ 2024-01-20 06:00:00
        | ^=15.01.2024=2024-01-15 23:00:00 | >^=20.01.2024=2024-01-20 23:00:00
        ; d.M.y @ 2024-12-24 @ 2024-06-10 @ 2025-06-05 | >>^=5.6.25=2025-06-05 | >[=24.6.24=2024-06-24
        ; HH:mm @ 2024-01-15 16:30:00 @ 2024-01-15 08:00:00 @ 2024-01-15 17:00:00
        | ^=17:00=2024-01-15 17:00:00 | ^^=08:00=2024-01-15 08:00:00
        ; HH:mm @ 2024-01-15 23:00:00 @ 2024-01-15 22:00:00 @ 2024-01-16 06:00:00
        | ^=22:00=2024-01-15 22:00:00)",
                [](CZoDateTimeFields& fields) {
                    const SYSTEMTIME least = fields.GetLeast(), most = fields.GetMost(), before = fields.GetTime();
                    const SYSTEMTIME never = At("2024-02-30"), late = At("3000-05-05");
                    EXPECT_FALSE(fields.SetRange(&most, &least) || fields.SetRange(&never, nullptr) ||
                                 fields.SetRange(nullptr, &never) || fields.SetTime(At("1999-01-01")) ||
                                 fields.SetTime(never) || fields.SetTime({2024, 1, 0, 16, 0, 0, 0, 1000}));
                    fields.Choose(never);
                    fields.Choose({2024, 1, 0, 16, 99, 0, 0, 0});
                    EXPECT_EQ(Written(before), Written(fields.GetTime()));
                    fields.Type("1");
                    ASSERT_TRUE(fields.SetRange(&late, nullptr) && !fields.IsWaiting());
                    EXPECT_EQ("3000-05-05", Written(fields.GetTime()).substr(0, 10)) << "the nearest";
                    EXPECT_EQ(1, fields.GetTime().wDayOfWeek);
                    fields.SetRange(nullptr, nullptr);
                });
    CZoDateTimeFields fields; // of the beginning is the present moment, or the nearest
    const SYSTEMTIME now = fields.GetTime(), least = At("3000-05-05 10:00:00"), most = At("3000-05-05 12:00:00");
    ASSERT_TRUE(fields.SetRange(&least, &most));
    EXPECT_EQ(Written({3000, 5, 0, 5, now.wHour, now.wMinute, now.wSecond, 0}), Written(fields.GetTime()));
    ASSERT_TRUE(fields.SetTime({3000, 5, 0, 5, 23, 0, 0, 7}) && fields.SetFormat("d HH", kEnglish));
    EXPECT_EQ("3000-05-05 12:00:00", Written(fields.GetTime())) << "the time of day counts now";
    EXPECT_EQ(7, fields.GetTime().wMilliseconds);
}

TEST(DateTimeFields, RefuseWhatIsNoFieldNorCharacter)
{
    CZoDateTimeFields fields;
    ASSERT_TRUE(fields.SetFormat("dd.MM.yyyy", kEnglish) && fields.SetTime(At("2023-05-15")));
    for (const int piece : {INT_MIN, -1, fields.GetCount(), INT_MAX}) {
        char text[CZoDateTimeFields::kTextSize] = "x";
        fields.GetText(piece, text);
        fields.MoveTo(piece);
        EXPECT_TRUE(*text == '\0' && !fields.IsField(piece) && fields.GetCurrent() == 0) << piece;
    }
    EXPECT_FALSE(fields.Type("") || fields.IsWaiting() || fields.GetCurrent() != 0);
    for (const auto& [by, day, current] : {std::tuple(INT_MAX, 16, 2), {INT_MIN, 14, 2}, {32, 15, 4}}) {
        fields.MoveTo(0);
        fields.Step(by);
        fields.MoveBy(by);
        EXPECT_EQ(std::pair(day, current), std::pair(int{fields.GetTime().wDay}, fields.GetCurrent())) << by;
    }
    ASSERT_TRUE(fields.SetFormat(("d '" + std::string(250, 'x') + "'").c_str(), kEnglish));
    EXPECT_EQ("15 " + std::string(250, 'x'), Shown(fields));
    const std::string before = fields.GetFormat(), tooLong(256, 'd'), huge(65536, 'x');
    std::string many = "d";
    while (many.size() < 120)
        many += "'x'gg"; // more pieces than there is room for
    for (const char* wrong : {"", "'dd'", "dddd gg", tooLong.c_str(), huge.c_str(), many.c_str(), LPCSTR(nullptr)})
        EXPECT_FALSE(fields.SetFormat(wrong, kGerman));
    EXPECT_EQ(before, fields.GetFormat());
}

TEST(DateTimeFields, ArePastedAsText)
{
    const struct {
        LCID locale;
        const char *format, *rows; // "TEXT = VALUE | ..."; no value: it is refused
    } kTables[] = {
        {kGerman, "dd.MM.yyyy",
         R"(31.03.2024=2024-03-31 12:30:00 | 1/2/24=2024-02-01 12:30:00 | 2024-03-31=2024-03-31 12:30:00
            | 2024-03-31T23:59:58=2024-03-31 12:30:00 | Sonntag, 31. Dezember 2023=2023-12-31 12:30:00
            | 29.02.2023= | 31.03.= | 1.2.3.4= | 1.2.300= | 1.2.20240= | um 31.03.2024= | = | 1.2.3.4.5.6.7.8.9=)"},
        {kGerman, "'am 'd.M.yyyy", "am 31.03.2024=2024-03-31 12:30:00 | am am 31= | ama 31.03.2024="},
        {kGerman, "dd.MM.yyyy HH:mm:ss", "31.03.2024 8:15=2024-03-31 08:15:00 | 31.03.2024 8="},
        {kEnglish, "M/d/yyyy",
         R"(3/31/2024=2024-03-31 12:30:00 | sun, MAR 31, 2024=2024-03-31 12:30:00 | Marching 31, 2024=
            | 31 March 2024=2024-03-31 12:30:00)"},
        {kPolish, "d.M.yyyy", "31 marca 2024=2024-03-31 12:30:00 | 31 marzec 2024=2024-03-31 12:30:00"},
        {kEnglish, "h:mm tt",
         R"(8:15 PM=2024-01-01 20:15:00 | 12:15 am=2024-01-01 00:15:00 | 20:15=2024-01-01 20:15:00 | 25:15= | 2024=)"},
    };
    for (const auto& table : kTables) {
        for (const std::string& row : Split(table.rows, '|')) {
            const auto columns = Split(row, '=');
            CZoDateTimeFields fields;
            ASSERT_TRUE(fields.SetFormat(table.format, table.locale) && fields.SetTime(At("2024-01-01 12:30:00")));
            EXPECT_EQ(!columns[1].empty(), fields.Paste(columns[0].c_str())) << row;
            EXPECT_EQ(columns[1].empty() ? "2024-01-01 12:30:00" : columns[1], Written(fields.GetTime())) << row;
            EXPECT_FALSE(fields.Paste(nullptr) || fields.Paste(std::string(65536, '1').c_str()));
        }
    }
}

TEST(DateTimeFields, AreShownAsTheSystemShowsThem)
{
    std::mt19937 random(1601);
    const auto formats =
        Split("dd.MM.yyyy|d/M/yy|yyyy-MM-dd|dddd, d. MMMM yyyy|ddd dd MMM|MMMM yyyy|d 'de' MMMM 'de' yyyy|"
              "'d'' 'MM'''|yyyyMMdd ddd|HH:mm:ss|H'h'mm|h:m:s tt|hh.mm t",
              '|');
    for (int i = 0; i < 1000; ++i) {
        const size_t which = random() % formats.size();
        // Where a locale has no name for the halves of a day the system shows nothing.
        const LCID locale = which > 10 ? kEnglish : std::array{LCID{kGerman}, LCID{kEnglish}, kPolish, kFrench}[i % 4];
        const SYSTEMTIME time = AnyTime(random);
        CZoDateTimeFields fields;
        ASSERT_TRUE(fields.SetFormat(formats[which].c_str(), locale));
        if (!fields.SetTime(time))
            continue; // there is no such day
        char system[256] = "";
        (which < 9 ? GetDateFormatA : GetTimeFormatA)(locale, LOCALE_USE_CP_ACP, &time, formats[which].c_str(), system,
                                                      sizeof system);
        ASSERT_EQ(system, Shown(fields)) << formats[which] << " " << locale;
    }
}

TEST(DateTimeFields, KeepCharactersOfTwoBytesWhole)
{
    if (!IsDBCSLeadByte(0x93))
        GTEST_SKIP() << "a system of one byte";
    CZoDateTimeFields fields;
    // Year, month and day by their signs, and one whose second byte is 'd'.
    ASSERT_TRUE(fields.SetFormat("yyyy\x94\x4EM\x8C\x8E\x64\x93\xFA \x83\x64", kJapanese));
    ASSERT_TRUE(fields.SetTime(At("2023-04-07")));
    EXPECT_EQ("2023\x94\x4E\x34\x8C\x8E\x37\x93\xFA \x83\x64", Shown(fields));
    for (const char* typed : {"\x82\x51", "\x82\x4F", "2", "4", "\x82\x51", "\x8C\x8E", "2", "9"}) // full width, too
        EXPECT_TRUE(fields.Type(typed)) << typed;
    EXPECT_EQ("2024-02-29", Written(fields.GetTime()));
    EXPECT_FALSE(fields.Type("\x88\x9F"));
    EXPECT_TRUE(fields.Paste("\x82\x51\x82\x4F\x82\x51\x82\x50\x94\x4E\x31\x32\x8C\x8E\x33\x31\x93\xFA"));
    EXPECT_EQ("2021-12-31", Written(fields.GetTime()));
    EXPECT_FALSE(fields.Paste("2021\x94\x4E\x31\x32\x8C\x8E\x33\x31\x88\x9F"));
}

TEST(DateTimeFields, AreRealAtEveryMoment)
{
    std::mt19937 random(29);
    const std::string keys = "0123456789012345678901234567890123456789<>^v[]#~$./: ajdm";
    for (const char* format : {"dd.MM.yyyy", "MM/dd/yy", "yyyy-M-d", "d. MMMM yyyy HH:mm", "h:mm:ss tt"}) {
        CZoDateTimeFields fields;
        const SYSTEMTIME least = At("1999-03-17 10:00:00"), most = At("2031-10-05 11:00:00");
        ASSERT_TRUE(fields.SetFormat(format, kEnglish) && fields.SetRange(&least, &most));
        for (int i = 0; i < 20000; ++i) {
            const bool waited = fields.IsWaiting();
            const std::string before = Written(fields.GetTime());
            Press(fields, std::string(1, keys[random() % keys.size()]));
            CZoDateTimeFields other(fields);
            ASSERT_TRUE(other.SetTime(fields.GetTime())) << format << " " << i; // it exists, and is allowed
            ASSERT_TRUE(fields.IsWaiting() || Shown(other) == Shown(fields)) << format << " " << i;
            const auto outcome = fields.TakeOutcome();
            ASSERT_TRUE(outcome.isTaken || before == Written(fields.GetTime()));
            ASSERT_TRUE(waited || !outcome.isClamped);
        }
    }
}
