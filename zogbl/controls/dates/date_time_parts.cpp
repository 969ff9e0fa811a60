#include "date_time_parts.h"

#include <cstdlib>
#include <cstring>

using Kind = CZoDateTimeFields::Kind;

namespace {

/// The last year of two digits is that of this one's century or the one before.
int TwoDigitYearMost()
{
    constexpr int kUsual = 2029;
    constexpr CALTYPE kReturnNumber = 0x20000000;
    // It came with Windows 98.
    const auto ask = reinterpret_cast<decltype(::GetCalendarInfoA)*>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "GetCalendarInfoA")));
    DWORD most = 0;
    return ask != nullptr &&
                   ask(LOCALE_USER_DEFAULT, CAL_GREGORIAN, CAL_ITWODIGITYEARMAX | kReturnNumber, nullptr, 0, &most) != 0
               ? static_cast<int>(most)
               : kUsual;
}

void GetLocaleText(LCID locale, LCTYPE type, LPSTR text)
{
    if (::GetLocaleInfoA(locale, type | LOCALE_USE_CP_ACP, text, CZoDateTimeFields::kTextSize) == 0)
        *text = '\0';
}

} // namespace

int NumberIn(const SYSTEMTIME& time, Kind kind)
{
    switch (kind) {
    case Kind::kYear:
        return time.wYear;
    case Kind::kMonth:
        return time.wMonth;
    case Kind::kDay:
        return time.wDay;
    case Kind::kHour:
        return time.wHour;
    case Kind::kHour12:
        return (time.wHour + 11) % 12 + 1;
    case Kind::kMinute:
        return time.wMinute;
    case Kind::kSecond:
        return time.wSecond;
    case Kind::kHalf:
        return time.wHour / 12;
    default:
        return 0;
    }
}

void PutNumber(SYSTEMTIME& time, Kind kind, int number)
{
    const auto value = static_cast<WORD>(number);
    const int half = time.wHour / 12 * 12;
    switch (kind) {
    case Kind::kYear:
        time.wYear = value;
        break;
    case Kind::kMonth:
        time.wMonth = value;
        break;
    case Kind::kDay:
        time.wDay = value;
        break;
    case Kind::kHour:
        time.wHour = value;
        break;
    case Kind::kHour12: // 0 and from 13 on it is an hour of the whole day
        time.wHour = static_cast<WORD>(number >= 1 && number <= 12 ? number % 12 + half : number);
        break;
    case Kind::kMinute:
        time.wMinute = value;
        break;
    case Kind::kSecond:
        time.wSecond = value;
        break;
    case Kind::kHalf:
        time.wHour = static_cast<WORD>(time.wHour % 12 + number * 12);
        break;
    default:
        break;
    }
}

NumberBounds BoundsOf(Kind kind)
{
    switch (kind) {
    case Kind::kYear:
        return {1601, 9999};
    case Kind::kMonth:
        return {1, 12};
    case Kind::kDay:
        return {1, 31};
    case Kind::kHour:
    case Kind::kHour12:
        return {0, 23};
    case Kind::kMinute:
    case Kind::kSecond:
        return {0, 59};
    default:
        return {0, 1};
    }
}

int NumberOfDigits(Kind kind, LPCSTR digits)
{
    const auto count = std::strlen(digits);
    int number = std::atoi(digits);
    if (kind == Kind::kYear && count >= 1 && count <= 2) {
        const int most = TwoDigitYearMost();
        number += most / 100 * 100;
        if (number > most)
            number -= 100;
    }
    const NumberBounds bounds = BoundsOf(kind);
    return count == 0 || number < bounds.least || number > bounds.most ? -1 : number;
}

void GetMonthName(LCID locale, int month, bool isShort, bool besideDay, LPSTR name)
{
    constexpr size_t kDay = 2; // digits
    SYSTEMTIME time = {2000, static_cast<WORD>(month), 0, 1, 0, 0, 0, 0};
    const char* const format = isShort ? "ddMMM" : "ddMMMM"; // the system knows the case by the day
    if (::GetDateFormatA(locale, LOCALE_USE_CP_ACP, &time, format + (besideDay ? 0 : kDay), name,
                         CZoDateTimeFields::kTextSize) == 0)
        *name = '\0';
    else if (besideDay)
        std::memmove(name, name + kDay, std::strlen(name + kDay) + 1);
}

void GetHalfName(LCID locale, int half, LPSTR name)
{
    GetLocaleText(locale, half == 0 ? LOCALE_S1159 : LOCALE_S2359, name);
    if (*name == '\0')
        std::strcpy(name, half == 0 ? "AM" : "PM");
}
