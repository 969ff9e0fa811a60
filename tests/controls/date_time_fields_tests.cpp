// Dates in fields, as keys change them: without a window, by tables.
#include "support/test.h"

#include <zogbl/date_time_fields.h>

#include <random>

namespace {

constexpr LCID kGerman = 0x407, kEnglish = 0x409, kPolish = 0x415, kJapanese = 0x411;

SYSTEMTIME At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    SYSTEMTIME time = {};
    for (const auto& [part, number] : {std::pair{&time.wYear, year},
                                       {&time.wMonth, month},
                                       {&time.wDay, day},
                                       {&time.wHour, hour},
                                       {&time.wMinute, minute},
                                       {&time.wSecond, second}})
        *part = static_cast<WORD>(number);
    return time;
}

/// "2024-02-29", and with a time "2024-02-29 12:30:00".
SYSTEMTIME At(const char* text)
{
    int n[6] = {};
    sscanf(text, "%d-%d-%d %d:%d:%d", &n[0], &n[1], &n[2], &n[3], &n[4], &n[5]);
    return At(n[0], n[1], n[2], n[3], n[4], n[5]);
}
std::string Written(const SYSTEMTIME& time)
{
    char text[40];
    snprintf(text, sizeof text, "%d-%02d-%02d %02d:%02d:%02d", time.wYear, time.wMonth, time.wDay, time.wHour,
             time.wMinute, time.wSecond);
    std::string written = text;
    return written.substr(0, written.size() - (written.ends_with(" 00:00:00") ? 9 : 0));
}

std::string Shown(const CZoDateTimeFields& fields)
{
    char text[CZoDateTimeFields::kWholeSize];
    fields.GetWholeText(text);
    return text;
}

/// < > a field back, on; ^ v a step; [ ] the least, most; \b the last digit; ~ taken back; $ settled; others are typed.
void Press(CZoDateTimeFields& fields, const char* keys)
{
    for (; *keys != '\0'; ++keys) {
        const char character[] = {*keys, '\0'};
        switch (*keys) {
        case '<':
        case '>':
            fields.MoveBy(*keys == '<' ? -1 : 1);
            break;
        case '^':
        case 'v':
            fields.Step(*keys == '^' ? 1 : -1);
            break;
        case '[':
        case ']':
            fields.GoToEnd(*keys == ']');
            break;
        case '\b':
            fields.DeleteLast();
            break;
        case '~':
            fields.TakeBack();
            break;
        case '$':
            fields.Settle();
            break;
        default:
            fields.Type(character);
            break;
        }
    }
}

void Expect(CZoDateTimeFields& fields, const char* keys, const char* shown, const char* value)
{
    EXPECT_EQ(shown, Shown(fields)) << keys;
    EXPECT_EQ(value, Written(fields.GetTime())) << keys;
}

} // namespace

TEST(DateTimeFields, AreTypedInEveryOrder)
{
    const struct {
        const char *format, *before, *keys, *shown, *value;
    } kRows[] = {
        // 31.03. over 07.04., and 29.02.2024 over 2023
        {"dd.MM.yyyy", "2024-04-07", "31", "31.04.2024", "2024-04-07"},
        {"dd.MM.yyyy", "2024-04-07", "3103", "31.03.2024", "2024-03-31"},
        {"dd.MM.yyyy", "2023-04-07", "29022024", "29.02.2024", "2024-02-29"},
        {"dd.yyyy.MM", "2023-04-07", "29202402", "29.2024.02", "2024-02-29"},
        {"MM/dd/yyyy", "2023-04-07", "02292024", "02/29/2024", "2024-02-29"},
        {"MM/yyyy/dd", "2023-04-30", "02202429", "02/2024/29", "2024-02-29"},
        {"yyyy-MM-dd", "2023-04-30", "20240229", "2024-02-29", "2024-02-29"},
        {"yyyy-dd-MM", "2023-04-07", "20242902", "2024-29-02", "2024-02-29"},
        {"dd.MM.yyyy", "2023-04-07", ">>2024<02<<29", "29.02.2024", "2024-02-29"},
        // what waits is settled when the last field is left, and taken back by Esc
        {"dd.MM.yyyy", "2023-04-07", "29022023", "29.02.2023", "2023-04-29"},
        {"dd.MM.yyyy", "2023-04-07", "29022023>", "28.02.2023", "2023-02-28"},
        {"dd.MM.yyyy", "2023-04-07", "29022023<", "28.02.2023", "2023-02-28"},
        {"dd.MM.yyyy", "2023-04-07", "31$", "30.04.2023", "2023-04-30"},
        {"dd.MM.yyyy", "2023-04-07", "31~", "07.04.2023", "2023-04-07"},
        {"dd.MM.yyyy", "2023-04-07", "31>>>", "30.04.2023", "2023-04-30"},
        {"dd.MM.yyyy", "2023-04-07", "31^", "31.05.2023", "2023-05-31"},
        {"dd.MM.yyyy", "2023-04-07", "31v", "31.03.2023", "2023-03-31"},
        {"dd.MM.yyyy", "2023-04-07", "1", "1.04.2023", "2023-04-07"},
        {"dd.MM.yyyy", "2023-04-07", "1~", "07.04.2023", "2023-04-07"},
        {"dd.MM.yyyy", "2023-04-07", "1>", "01.04.2023", "2023-04-01"},
        {"dd.MM.yyyy", "2023-04-07", "1\b2$", "02.04.2023", "2023-04-02"},
        // a digit without a place is passed over; one that leaves no place for another moves on
        {"d.M.yyyy", "2023-04-07", "9", "9.4.2023", "2023-04-09"},
        {"d.M.yyyy", "2023-04-07", "99", "9.9.2023", "2023-09-09"},
        {"d.M.yyyy", "2023-04-07", "0", "0.4.2023", "2023-04-07"},
        {"d.M.yyyy", "2023-04-07", "00", "0.4.2023", "2023-04-07"},
        {"d.M.yyyy", "2023-04-07", "0>", "7.4.2023", "2023-04-07"},
        {"d.M.yyyy", "2023-04-07", "32", "3.4.2023", "2023-04-07"},
        {"d.M.yyyy", "2023-04-07", ">13", "7.1.2023", "2023-04-07"},
        // what stands between the fields moves on, but not twice
        {"d.M.yyyy", "2023-04-07", "1.2.2024", "1.2.2024", "2024-02-01"},
        {"dd.MM.yyyy", "2023-04-07", "31.03.2024.", "31.03.2024", "2024-03-31"},
        {"d MMMM yyyy", "2023-04-07", "31 3 24$", "31 March 2024", "2024-03-31"},
        {"yyyy-M-d", "2023-04-07", "2024-3-31", "2024-3-31", "2024-03-31"},
        {"d.M.yyyy", "2023-04-07", "..5$", "7.4.2005", "2005-04-07"},
        // years of two digits
        {"dd.MM.y", "2023-04-07", ">>5$", "07.04.5", "2005-04-07"},
        {"dd.MM.yyyy", "2023-04-07", ">>99$", "07.04.1999", "1999-04-07"},
        {"dd.MM.yyyy", "2023-04-07", ">>199$", "07.04.2023", "2023-04-07"},
        {"dd.MM.yyyy", "2023-04-07", ">>1600$", "07.04.2023", "2023-04-07"},
        {"dd.MM.yyyy", "2023-04-07", ">>1601", "07.04.1601", "1601-04-07"},
        // names
        {"MMMM d", "2023-04-07", "j", "June 7", "2023-06-07"},
        {"MMMM d", "2023-04-07", "jj", "July 7", "2023-07-07"},
        {"MMMM d", "2023-04-07", "jjj", "January 7", "2023-01-07"},
        {"MMM d", "2023-04-07", "x", "Apr 7", "2023-04-07"},
        {"MMM d", "2023-03-31", "f", "Feb 31", "2023-03-31"},
        {"MMM d", "2023-03-31", "f>5", "Feb 5", "2023-02-05"},
        // times
        {"HH:mm:ss", "2023-04-07 23:59:58", "7:5:3$", "07:05:03", "2023-04-07 07:05:03"},
        {"HH:mm:ss", "2023-04-07 23:59:58", "24", "2:59:58", "2023-04-07 23:59:58"},
        {"h:mm tt", "2023-04-07 23:59:00", "3", "3:59 PM", "2023-04-07 15:59:00"},
        {"h:mm tt", "2023-04-07 23:59:00", "12:", "12:59 PM", "2023-04-07 12:59:00"},
        {"h:mm tt", "2023-04-07 23:59:00", "12>a", "12:59 AM", "2023-04-07 00:59:00"},
        {"h:mm tt", "2023-04-07 11:59:00", "15", "3:59 PM", "2023-04-07 15:59:00"},
        {"h:mm tt", "2023-04-07 11:59:00", "0>", "12:59 AM", "2023-04-07 00:59:00"},
        {"h:mm t", "2023-04-07 11:59:00", ">>p", "11:59 P", "2023-04-07 23:59:00"},
        {"h:mm t", "2023-04-07 11:59:00", ">>1", "11:59 A", "2023-04-07 11:59:00"},
        // steps go around; the day is the last of its month
        {"dd.MM.yyyy", "2023-04-30", "^", "01.04.2023", "2023-04-01"},
        {"dd.MM.yyyy", "2023-04-01", "v", "30.04.2023", "2023-04-30"},
        {"dd.MM.yyyy", "2023-01-31", ">^", "28.02.2023", "2023-02-28"},
        {"dd.MM.yyyy", "2023-12-31", ">^", "31.01.2023", "2023-01-31"},
        {"dd.MM.yyyy", "9999-12-31", ">>^", "31.12.1601", "1601-12-31"},
        {"dd.MM.yyyy", "2024-02-29", ">>^", "28.02.2025", "2025-02-28"},
        {"dd.MM.yyyy", "2024-02-29", "[", "01.02.2024", "2024-02-01"},
        {"dd.MM.yyyy", "2024-02-01", "]", "29.02.2024", "2024-02-29"},
        {"HH:mm", "2023-04-07 23:59:00", "^", "00:59", "2023-04-07 00:59:00"},
        {"HH:mm", "2023-04-07 23:59:00", ">^", "23:00", "2023-04-07 23:00:00"},
        {"h:mm tt", "2023-04-07 11:00:00", "^", "12:00 PM", "2023-04-07 12:00:00"},
        {"h:mm tt", "2023-04-07 11:00:00", "<^", "11:00 PM", "2023-04-07 23:00:00"},
        // weekday and second occurrence follow
        {"dddd, d. MM (MMM)", "2023-04-07", "8", "Saturday, 8. 04 (Apr)", "2023-04-08"},
        {"dddd, d. MM (MMM)", "2023-04-07", "<>", "Friday, 7. 04 (Apr)", "2023-04-07"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.format);
        CZoDateTimeFields fields;
        ASSERT_TRUE(fields.SetFormat(row.format, kEnglish));
        ASSERT_TRUE(fields.SetTime(At(row.before)));
        Press(fields, row.keys);
        Expect(fields, row.keys, row.shown, row.value);
    }
}

TEST(DateTimeFields, HaveYearsInTheWindowOfTheUser)
{
    DWORD most = 0;
    ASSERT_NE(
        0, GetCalendarInfoA(LOCALE_USER_DEFAULT, CAL_GREGORIAN, CAL_ITWODIGITYEARMAX | 0x20000000, nullptr, 0, &most));
    for (const auto& [year, expected] : {std::pair{most, most}, {most + 1, most - 99}}) {
        for (const char* format : {"yy", "yyyy"}) {
            CZoDateTimeFields fields;
            ASSERT_TRUE(fields.SetFormat(format, kEnglish));
            Press(fields, (std::to_string(year % 100) + "$").c_str());
            EXPECT_EQ(expected, fields.GetTime().wYear) << format;
        }
    }
}

TEST(DateTimeFields, StayInTheirRange)
{
    const struct {
        const char *format, *least, *most, *before, *keys, *shown, *value;
    } kRows[] = {
        {"dd.MM.yyyy", "2024-01-15", "2025-01-14", "2025-01-10", "20", "20.01.2025", "2025-01-10"},
        {"dd.MM.yyyy", "2024-01-15", "2025-01-14", "2025-01-10", "20012024", "20.01.2024", "2024-01-20"},
        {"dd.MM.yyyy", "2024-01-15", "2025-01-14", "2025-01-10", "20$", "14.01.2025", "2025-01-14"},
        {"dd.MM.yyyy", "2024-01-15", "2025-01-14", "2025-01-10", ">>2099>", "14.01.2025", "2025-01-14"},
        {"dd.MM.yyyy", "2024-01-15", "2025-01-14", "2025-01-14", "^", "01.01.2025", "2025-01-01"},
        {"dd.MM.yyyy", "2024-01-15", "2024-01-20", "2024-01-20", "^", "15.01.2024", "2024-01-15"},
        {"dd.MM.yyyy", "2024-01-15", "2024-01-20", "2024-01-20", ">^", "20.01.2024", "2024-01-20"},
        {"dd.MM.yyyy", "2024-06-10", "2025-06-05", "2024-12-24", ">>^", "05.06.2025", "2025-06-05"},
        {"dd.MM.yyyy", "2024-06-10", "2025-06-05", "2024-12-24", ">[", "24.06.2024", "2024-06-24"},
        {"HH:mm", "2024-01-15 08:00:00", "2024-01-15 17:00:00", "2024-01-15 16:30:00", "^", "17:00",
         "2024-01-15 17:00:00"},
        {"HH:mm", "2024-01-15 08:00:00", "2024-01-15 17:00:00", "2024-01-15 17:00:00", "^", "08:00",
         "2024-01-15 08:00:00"},
        {"HH:mm", "2024-01-15 22:00:00", "2024-01-16 06:00:00", "2024-01-15 23:00:00", "^", "22:00",
         "2024-01-15 22:00:00"},
        {"dd.MM.yyyy", "2024-01-15 22:00:00", "2024-01-16 06:00:00", "2024-01-16 23:00:00", "^", "15.01.2024",
         "2024-01-15 23:00:00"}, // whole days
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(std::string(row.least) + " to " + row.most);
        CZoDateTimeFields fields;
        ASSERT_TRUE(fields.SetFormat(row.format, kGerman));
        const SYSTEMTIME least = At(row.least), most = At(row.most);
        ASSERT_TRUE(fields.SetRange(&least, &most));
        ASSERT_TRUE(fields.SetTime(At(row.before)));
        Press(fields, row.keys);
        Expect(fields, row.keys, row.shown, row.value);
        EXPECT_FALSE(fields.SetRange(&most, &least));
        SYSTEMTIME never = At("2024-02-30");
        EXPECT_FALSE(fields.SetRange(&never, nullptr) || fields.SetRange(nullptr, &never));
        EXPECT_FALSE(fields.SetTime(At("1999-01-01")));
        EXPECT_EQ(row.value, Written(fields.GetTime()));
        const SYSTEMTIME late = At("3000-05-05");
        ASSERT_TRUE(fields.SetRange(&late, nullptr));
        EXPECT_EQ("3000-05-05", Written(fields.GetTime()).substr(0, 10)) << "the nearest";
    }
}

TEST(DateTimeFields, ArePastedAsText)
{
    const struct {
        LCID locale;
        const char *format, *text, *value; // null: refused
    } kRows[] = {
        {kGerman, "dd.MM.yyyy", "31.03.2024", "2024-03-31 12:30:00"},
        {kGerman, "dd.MM.yyyy", " 1/2/24 ", "2024-02-01 12:30:00"},
        {kGerman, "dd.MM.yyyy", "2024-03-31", "2024-03-31 12:30:00"},
        {kGerman, "dd.MM.yyyy", "2024-03-31T23:59:58", "2024-03-31 12:30:00"},
        {kGerman, "dd.MM.yyyy", "Sonntag, 31. Dezember 2023", "2023-12-31 12:30:00"},
        {kGerman, "dd.MM.yyyy", "29.02.2023", nullptr},
        {kGerman, "dd.MM.yyyy", "31.03.", nullptr},
        {kGerman, "dd.MM.yyyy", "1.2.3.4", nullptr},
        {kGerman, "dd.MM.yyyy", "1.2.300", nullptr},
        {kGerman, "dd.MM.yyyy", "1.2.20240", nullptr},
        {kGerman, "dd.MM.yyyy", "um 31.03.2024", nullptr},
        {kGerman, "dd.MM.yyyy", "", nullptr},
        {kGerman, "'am 'dd.MM.yyyy", "am 31.03.2024", "2024-03-31 12:30:00"},
        {kGerman, "dd.MM.yyyy HH:mm:ss", "31.03.2024 8:15", "2024-03-31 08:15:00"},
        {kEnglish, "M/d/yyyy", "3/31/2024", "2024-03-31 12:30:00"},
        {kEnglish, "M/d/yyyy", "sun, MAR 31, 2024", "2024-03-31 12:30:00"},
        {kEnglish, "M/d/yyyy", "Marching 31, 2024", nullptr},
        {kEnglish, "dddd, MMMM dd, yyyy", "31 March 2024", "2024-03-31 12:30:00"},
        {kEnglish, "h:mm tt", "8:15 PM", "2024-01-01 20:15:00"},
        {kEnglish, "h:mm tt", "12:15 am", "2024-01-01 00:15:00"},
        {kEnglish, "h:mm tt", "20:15", "2024-01-01 20:15:00"},
        {kEnglish, "h:mm tt", "25:15", nullptr},
        {kEnglish, "HH:mm", "2024", nullptr},
    };
    for (const auto& row : kRows) {
        CZoDateTimeFields fields;
        ASSERT_TRUE(fields.SetFormat(row.format, row.locale));
        ASSERT_TRUE(fields.SetTime(At("2024-01-01 12:30:00")));
        EXPECT_EQ(row.value != nullptr, fields.Paste(row.text)) << row.text;
        EXPECT_EQ(row.value != nullptr ? row.value : "2024-01-01 12:30:00", Written(fields.GetTime())) << row.text;
    }
    CZoDateTimeFields fields;
    EXPECT_FALSE(fields.Paste(nullptr) || fields.Paste(std::string(65536, '1').c_str()) ||
                 fields.Paste(std::string(65536, ' ').c_str()));
}

TEST(DateTimeFields, AreShownAsTheSystemShowsThem)
{
    std::mt19937 random(1601);
    const char* const kDates[] = {"dd.MM.yyyy",
                                  "d/M/yy",
                                  "yyyy-MM-dd",
                                  "dddd, d. MMMM yyyy",
                                  "ddd dd MMM",
                                  "MMMM yyyy",
                                  "d 'de' MMMM 'de' yyyy",
                                  "'d'' 'MM'''",
                                  "y, M",
                                  "yyyyMMdd ddd"};
    const char* const kTimes[] = {"HH:mm:ss", "h:m:s tt", "hh.mm t", "H'h'mm"};
    for (const LCID locale : {kGerman, kEnglish, kPolish, static_cast<LCID>(0x40C), static_cast<LCID>(0x40A)}) {
        for (int i = 0; i < 200; ++i) {
            const auto number = [&](unsigned most) { return static_cast<int>(random() % most); };
            SYSTEMTIME time =
                At(1601 + number(8399), 1 + number(12), 1 + number(28), number(24), number(60), number(60));
            const auto check = [&](const char* format, auto ask) {
                CZoDateTimeFields fields;
                ASSERT_TRUE(fields.SetFormat(format, locale)) << format;
                ASSERT_TRUE(fields.SetTime(time));
                char system[256] = "";
                ask(locale, LOCALE_USE_CP_ACP, &time, format, system, 256);
                if (*format == 'y' && format[1] == ',' && system[0] == '0')
                    return; // by the documentation it has no leading zero
                ASSERT_EQ(system, Shown(fields)) << format << " " << locale;
            };
            check(kDates[number(std::size(kDates))], &GetDateFormatA);
            char half[16] = ""; // the system shows nothing where a locale has no name for the halves of a day
            GetLocaleInfoA(locale, LOCALE_S1159, half, sizeof half);
            check(kTimes[number(std::size(kTimes)) / (half[0] != '\0' ? 1 : 4)], &GetTimeFormatA);
        }
    }
    CZoDateTimeFields fields;
    const std::string before = fields.GetFormat();
    const std::string tooLong(256, 'd'), huge(65536, 'x');
    for (const char* wrong : {"", "'dd'", "dddd gg", tooLong.c_str(), huge.c_str()})
        EXPECT_FALSE(fields.SetFormat(wrong, kGerman));
    std::string many = "d";
    while (many.size() < 120)
        many += "'x'gg"; // more pieces than there is room for
    EXPECT_FALSE(fields.SetFormat(many.c_str(), kGerman) || fields.SetFormat(nullptr, kGerman));
    EXPECT_EQ(before, fields.GetFormat());
}

TEST(DateTimeFields, KeepCharactersOfTwoBytesWhole)
{
    if (!IsDBCSLeadByte(0x93))
        GTEST_SKIP() << "a system of one byte";
    CZoDateTimeFields fields;
    // Year, month and day by their signs, whose second bytes are 'N', 0x8E and 0xFA; a sign whose second byte is 'd'.
    ASSERT_TRUE(fields.SetFormat("yyyy\x94\x4EM\x8C\x8E"
                                 "d\x93\xFA \x83\x64",
                                 kJapanese));
    ASSERT_TRUE(fields.SetTime(At("2023-04-07")));
    EXPECT_EQ("2023\x94\x4E"
              "4\x8C\x8E"
              "7\x93\xFA \x83\x64",
              Shown(fields));
    for (const char* typed : {"\x82\x51", "\x82\x4F", "2", "4", "\x82\x51", "\x8C\x8E", "2", "9"}) // full width, too
        EXPECT_TRUE(fields.Type(typed)) << typed;
    EXPECT_EQ("2024-02-29", Written(fields.GetTime()));
    EXPECT_FALSE(fields.Type("\x83\x64") && fields.Type("\x88\x9F"));
    EXPECT_TRUE(fields.Paste("\x82\x51\x82\x4F\x82\x51\x82\x50\x94\x4E"
                             "12\x8C\x8E"
                             "31\x93\xFA"));
    EXPECT_EQ("2021-12-31", Written(fields.GetTime()));
    EXPECT_FALSE(fields.Paste("2021\x94\x4E"
                              "12\x8C\x8E"
                              "31\x88\x9F"));
}

TEST(DateTimeFields, AreRealAtEveryMoment)
{
    std::mt19937 random(29);
    const std::string keys = "0123456789012345678901234567890123456789<>^v[]\b~$./: ajdm";
    for (const char* format : {"dd.MM.yyyy", "MM/dd/yy", "yyyy-M-d", "d. MMMM yyyy HH:mm", "h:mm:ss tt"}) {
        CZoDateTimeFields fields;
        ASSERT_TRUE(fields.SetFormat(format, kEnglish));
        const SYSTEMTIME least = At("1999-03-17 10:00:00"), most = At("2031-10-05 11:00:00");
        ASSERT_TRUE(fields.SetRange(&least, &most));
        for (int i = 0; i < 20000; ++i) {
            const char key[] = {keys[random() % keys.size()], '\0'};
            const bool waited = fields.IsWaiting();
            const std::string before = Written(fields.GetTime());
            Press(fields, key);
            CZoDateTimeFields other(fields);
            ASSERT_TRUE(other.SetTime(fields.GetTime())) << format << " " << i; // it exists, and is allowed
            if (!fields.IsWaiting()) {
                ASSERT_EQ(Shown(other), Shown(fields)) << format << " " << i;
            }
            const auto outcome = fields.TakeOutcome();
            ASSERT_TRUE(outcome.isTaken || before == Written(fields.GetTime()));
            ASSERT_TRUE(waited || !outcome.isClamped);
        }
    }
}
