#include <zogbl/date_time_fields.h>

#include "common/double_byte.h"
#include "controls/base/day.h"
#include "date_time_parts.h"

#include <algorithm>
#include <cstdio>
#include <utility>

using Kind = CZoDateTimeFields::Kind;

namespace {

constexpr struct {
    char letter;
    Kind kind;
} kLetters[] = {{'y', Kind::kYear},   {'M', Kind::kMonth},  {'d', Kind::kDay},
                {'H', Kind::kHour},   {'h', Kind::kHour12}, {'m', Kind::kMinute},
                {'s', Kind::kSecond}, {'t', Kind::kHalf},   {'g', Kind::kEra}};

SYSTEMTIME MakeTime(Day day, WORD hour, WORD minute, WORD second)
{
    SYSTEMTIME time = TimeOf(day);
    time.wHour = hour;
    time.wMinute = minute;
    time.wSecond = second;
    return time;
}

bool IsWhole(const SYSTEMTIME& time)
{
    return IsDay(time) && time.wHour < 24 && time.wMinute < 60 && time.wSecond < 60 && time.wMilliseconds < 1000;
}

} // namespace

// Format --------------------------------------------------------------------------------------------------------------

CZoDateTimeFields::CZoDateTimeFields()
{
    GetLocalTime(&m_time);
    SetRange(nullptr, nullptr);
    m_draft = m_time;
    char format[kFormatSize] = "";
    if (::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE | LOCALE_USE_CP_ACP, format, sizeof format) == 0 ||
        !SetFormat(format, LOCALE_USER_DEFAULT))
        SetFormat("yyyy-MM-dd", LOCALE_USER_DEFAULT);
}

bool CZoDateTimeFields::Layout::AddText(LPCSTR text, int length)
{
    if (length == 0)
        return true;
    if (used + length > kFormatSize)
        return false;
    if (count == 0 || pieces[count - 1].kind != Kind::kText) {
        if (count == kMostPieces)
            return false;
        pieces[count++] = {Kind::kText, false, static_cast<short>(used), 0};
    }
    std::copy_n(text, length, texts + used);
    used += length;
    pieces[count - 1].length = static_cast<short>(pieces[count - 1].length + length);
    return true;
}

bool CZoDateTimeFields::Layout::AddField(Kind kind, int letters)
{
    if (count == kMostPieces)
        return false;
    if (kind == Kind::kDay && letters >= 3)
        kind = Kind::kWeekday;
    const bool canBeTyped = kind != Kind::kWeekday && kind != Kind::kEra &&
                            std::none_of(pieces, pieces + count, [=](const Piece& p) { return p.kind == kind; });
    pieces[count++] = {kind, canBeTyped, 0, static_cast<short>(letters)};
    return true;
}

bool CZoDateTimeFields::Read(LPCSTR format, Layout& layout)
{
    bool isQuoted = false;
    for (LPCSTR at = format; *at != '\0';) {
        const auto width = static_cast<int>(CharacterWidth(at));
        const auto* letter = std::find_if(std::begin(kLetters), std::end(kLetters),
                                          [=](const auto& entry) { return entry.letter == *at; });
        if (*at == '\'') {
            if (isQuoted && at[1] == '\'') { // stands for one
                if (!layout.AddText(at++, 1))
                    return false;
            } else {
                isQuoted = !isQuoted;
            }
            ++at;
        } else if (isQuoted || letter == std::end(kLetters)) {
            if (!layout.AddText(at, width))
                return false;
            at += width;
        } else {
            int letters = 1;
            while (at[letters] == *at)
                ++letters;
            if (!layout.AddField(letter->kind, letters))
                return false;
            at += letters;
        }
    }
    return std::any_of(layout.pieces, layout.pieces + layout.count,
                       [](const Piece& piece) { return piece.canBeTyped; });
}

BOOL CZoDateTimeFields::SetFormat(LPCSTR format, LCID locale)
{
    Layout layout = {};
    if (format == nullptr || std::strlen(format) >= kFormatSize || !Read(format, layout))
        return FALSE;
    const auto has = [&](auto... kinds) {
        return std::any_of(layout.pieces, layout.pieces + layout.count,
                           [=](const Piece& piece) { return ((piece.kind == kinds) || ...); });
    };
    std::memmove(m_format, format, std::strlen(format) + 1);
    m_layout = layout;
    m_locale = locale;
    m_hasDate = has(Kind::kYear, Kind::kMonth, Kind::kDay);
    m_hasTime = has(Kind::kHour, Kind::kHour12, Kind::kMinute, Kind::kSecond, Kind::kHalf);
    m_current = GetFirst();
    m_time = Nearest(m_time); // the range may mean something else now
    TakeBack();
    return TRUE;
}

// Text ----------------------------------------------------------------------------------------------------------------

/// A month or a half of the day. \param number as NumberIn gives it
void CZoDateTimeFields::GetName(Kind kind, int number, int letters, LPSTR text) const
{
    if (kind == Kind::kHalf) {
        GetHalfName(m_locale, number, text);
        if (letters == 1)
            text[*text != '\0' ? CharacterWidth(text) : 0] = '\0';
        return;
    }
    const bool hasDay = std::any_of(m_layout.pieces, m_layout.pieces + m_layout.count,
                                    [](const Piece& piece) { return piece.kind == Kind::kDay; });
    GetMonthName(m_locale, number, letters == 3, hasDay, text);
}

const CZoDateTimeFields::Piece& CZoDateTimeFields::PieceAt(int piece) const
{
    static constexpr Piece kNone = {};
    return piece >= 0 && piece < GetCount() ? m_layout.pieces[piece] : kNone;
}

void CZoDateTimeFields::GetText(int index, const SYSTEMTIME& time, LPSTR text) const
{
    const Piece& piece = PieceAt(index);
    const int number = NumberIn(time, piece.kind);
    *text = '\0';
    switch (piece.kind) {
    case Kind::kText:
        std::copy_n(m_layout.texts + piece.start, piece.length, text);
        text[piece.length] = '\0';
        break;
    case Kind::kWeekday:
    case Kind::kEra: {
        const SYSTEMTIME real = Nearest(time);
        const char* const format = piece.kind == Kind::kEra ? "gg" : piece.length == 3 ? "ddd" : "dddd";
        if (::GetDateFormatA(m_locale, LOCALE_USE_CP_ACP, &real, format, text, kTextSize) == 0)
            *text = '\0';
        break;
    }
    case Kind::kYear:
        std::snprintf(text, kTextSize,
                      piece.length == 1   ? "%d"
                      : piece.length == 2 ? "%02d"
                                          : "%04d",
                      piece.length <= 2 ? number % 100 : number);
        break;
    default:
        if (HasName(piece.kind, piece.length))
            GetName(piece.kind, number, piece.length, text);
        if (*text == '\0')
            std::snprintf(text, kTextSize, piece.length == 1 ? "%d" : "%02d", number);
        break;
    }
}

void CZoDateTimeFields::GetText(int piece, LPSTR text) const
{
    if (piece == m_current && m_typed[0] != '\0')
        std::strcpy(text, m_typed);
    else
        GetText(piece, m_draft, text);
}

void CZoDateTimeFields::GetWholeText(LPSTR text) const
{
    int length = 0;
    for (int i = 0; i < GetCount(); ++i) {
        char piece[kTextSize];
        GetText(i, piece);
        const auto more = static_cast<int>(std::strlen(piece));
        if (length + more >= kWholeSize)
            break;
        std::copy_n(piece, more, text + length);
        length += more;
    }
    text[length] = '\0';
}

// Value ---------------------------------------------------------------------------------------------------------------

/// Orders what the range compares.
ULONGLONG CZoDateTimeFields::KeyOf(const SYSTEMTIME& time) const
{
    const ULONGLONG day = (time.wYear * 16U + time.wMonth) * 32U + time.wDay;
    const unsigned second = (time.wHour * 60U + time.wMinute) * 60U + time.wSecond;
    return day << 32 | (m_hasTime ? second : 0);
}

bool CZoDateTimeFields::IsReal(const SYSTEMTIME& time) const
{
    return IsWhole(time) && KeyOf(time) >= KeyOf(m_least) && KeyOf(time) <= KeyOf(m_most);
}

SYSTEMTIME CZoDateTimeFields::Nearest(const SYSTEMTIME& time) const
{
    SYSTEMTIME first = time;
    first.wDay = 1;
    const SYSTEMTIME last = TimeOf(LastOfMonth(DayOf(first)));
    SYSTEMTIME nearest = time;
    nearest.wDay = (std::min)(time.wDay, last.wDay);
    if (!IsReal(nearest)) {
        const SYSTEMTIME& bound = KeyOf(nearest) < KeyOf(m_least) ? m_least : m_most;
        const SYSTEMTIME before = nearest;
        nearest = bound;
        if (!m_hasTime)
            nearest = MakeTime(DayOf(bound), before.wHour, before.wMinute, before.wSecond);
        nearest.wMilliseconds = before.wMilliseconds;
    }
    nearest.wDayOfWeek = TimeOf(DayOf(nearest)).wDayOfWeek;
    return nearest;
}

BOOL CZoDateTimeFields::SetTime(const SYSTEMTIME& time)
{
    if (!IsReal(time))
        return FALSE;
    m_time = Nearest(time); // with its weekday
    TakeBack();
    return TRUE;
}

BOOL CZoDateTimeFields::SetRange(const SYSTEMTIME* least, const SYSTEMTIME* most)
{
    const SYSTEMTIME from = least != nullptr ? *least : MakeTime(FirstDay(), 0, 0, 0);
    const SYSTEMTIME to = most != nullptr ? *most : MakeTime(LastDay(), 23, 59, 59);
    const auto key = [](const SYSTEMTIME& time) {
        return std::pair(DayOf(time), (time.wHour * 60 + time.wMinute) * 60 + time.wSecond);
    };
    if (!IsWhole(from) || !IsWhole(to) || key(to) < key(from))
        return FALSE;
    m_least = from;
    m_most = to;
    m_time = Nearest(m_time);
    TakeBack();
    return TRUE;
}

void CZoDateTimeFields::Take(const SYSTEMTIME& time)
{
    m_time = Nearest(time);
    TakeBack();
    m_outcome.isTaken = TRUE;
}

void CZoDateTimeFields::Choose(const SYSTEMTIME& time)
{
    if (IsWhole(time))
        Take(time);
}

bool CZoDateTimeFields::TakeNumber(Kind kind, int number)
{
    SYSTEMTIME moved = m_draft;
    PutNumber(moved, kind, number);
    const SYSTEMTIME nearest = Nearest(moved);
    // A range that allows only another number of this field, or of a longer part, has no place for this one.
    if (NumberIn(nearest, kind) != number || (!m_hasDate && DayOf(nearest) != DayOf(m_time)))
        return false;
    Take(nearest);
    return true;
}
