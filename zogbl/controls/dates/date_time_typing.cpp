#include <zogbl/date_time_fields.h>

#include <zogbl/type_ahead.h>

#include "common/double_byte.h"
#include "controls/base/day.h"
#include "date_time_parts.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

using Kind = CZoDateTimeFields::Kind;

int CZoDateTimeFields::GetFirst() const
{
    int piece = 0;
    while (!IsField(piece))
        ++piece;
    return piece;
}

int CZoDateTimeFields::GetLast() const
{
    int piece = GetCount() - 1;
    while (!IsField(piece))
        --piece;
    return piece;
}

/// Puts a number into the field. The value follows if there is such a date, else the field waits.
void CZoDateTimeFields::Enter(int number)
{
    m_typed[0] = '\0';
    PutNumber(m_draft, Current().kind, number);
    if (IsReal(m_draft))
        Take(m_draft);
}

void CZoDateTimeFields::EnterTyped()
{
    m_hasMovedOn = false;
    if (m_typed[0] == '\0')
        return;
    const int number = NumberOfDigits(Current().kind, m_typed);
    m_typed[0] = '\0';
    if (number >= 0)
        Enter(number);
}

void CZoDateTimeFields::MoveTo(int piece)
{
    if (!IsField(piece))
        return;
    EnterTyped();
    if (m_current == GetLast() && piece != m_current)
        Settle();
    m_current = piece;
}

void CZoDateTimeFields::MoveBy(int by)
{
    const auto fields = std::count_if(m_layout.pieces, m_layout.pieces + GetCount(),
                                      [](const Piece& piece) { return piece.canBeTyped; });
    int piece = m_current;
    for (int left = by % static_cast<int>(fields); left != 0; left -= by > 0 ? 1 : -1) {
        do {
            piece = (piece + GetCount() + (by > 0 ? 1 : -1)) % GetCount();
        } while (!IsField(piece));
    }
    MoveTo(piece);
}

bool CZoDateTimeFields::TypeDigit(char digit)
{
    const Kind kind = Current().kind;
    const size_t most = kind == Kind::kYear && Current().length >= 3 ? 4 : 2;
    const NumberBounds bounds = BoundsOf(kind);
    char typed[sizeof m_typed];
    std::strcpy(typed, m_typed);
    const size_t count = std::strlen(typed) + 1;
    typed[count - 1] = digit;
    typed[count] = '\0';
    const int number = std::atoi(typed);
    if (kind == Kind::kHalf || number > bounds.most || (count == most && NumberOfDigits(kind, typed) < 0))
        return false;
    std::strcpy(m_typed, typed);
    if (count < most && (kind == Kind::kYear || number * 10 <= bounds.most))
        return true;
    EnterTyped(); // no other digit has a place
    if (m_current != GetLast()) {
        MoveBy(1);
        m_hasMovedOn = true;
    }
    return true;
}

bool CZoDateTimeFields::TypeLetter(LPCSTR letter)
{
    const Piece& piece = Current();
    if (!HasName(piece.kind, piece.length))
        return false;
    const NumberBounds bounds = BoundsOf(piece.kind);
    const int count = bounds.most - bounds.least + 1;
    const int present = NumberIn(m_draft, piece.kind);
    for (int i = 1; i <= count; ++i) {
        const int number = (present - bounds.least + i) % count + bounds.least;
        char name[kTextSize];
        GetName(piece.kind, number, piece.length, name);
        if (!CZoTypeAhead::Begins(name, letter))
            continue;
        Enter(number);
        return true;
    }
    return false;
}

/// Whether it leads from the field to the next one.
bool CZoDateTimeFields::IsSeparator(LPCSTR character) const
{
    const auto isIn = [&](int piece) {
        char text[kTextSize] = "";
        if (GetKind(piece) == Kind::kText)
            GetText(piece, text);
        return FindText(text, std::strlen(text), character, std::strlen(character)) != nullptr;
    };
    if (*character == ' ')
        return m_typed[0] != '\0' || m_hasMovedOn; // else it may mean something else
    return std::strchr(".,:;/", *character) != nullptr || isIn(m_current + 1) || isIn(m_current - 1);
}

BOOL CZoDateTimeFields::Type(LPCSTR character)
{
    char narrow[4] = "";
    if (CharacterWidth(character) == 2 &&
        ::LCMapStringA(LOCALE_SYSTEM_DEFAULT, LCMAP_HALFWIDTH, character, -1, narrow, sizeof narrow) != 0)
        character = narrow;
    if (*character >= '0' && *character <= '9')
        return TypeDigit(*character);
    if (*character == '\0')
        return FALSE;
    if (!IsSeparator(character))
        return TypeLetter(character);
    if (m_hasMovedOn)
        m_hasMovedOn = false; // the field that it ends is left already
    else if (m_current != GetLast())
        MoveBy(1);
    else
        Settle();
    return TRUE;
}

BOOL CZoDateTimeFields::DeleteLast()
{
    const size_t count = std::strlen(m_typed);
    if (count == 0)
        return FALSE;
    m_typed[count - 1] = '\0';
    return TRUE;
}

void CZoDateTimeFields::Step(int by)
{
    EnterTyped();
    const Kind kind = Current().kind == Kind::kHour12 ? Kind::kHour : Current().kind; // noon is one step as any other
    NumberBounds bounds = BoundsOf(kind);
    if (kind == Kind::kDay) {
        SYSTEMTIME first = m_draft;
        first.wDay = 1;
        bounds.most = TimeOf(LastOfMonth(DayOf(first))).wDay;
    }
    const int count = bounds.most - bounds.least + 1;
    int number = (std::min)(NumberIn(m_draft, kind), bounds.most);
    for (int i = 0; i < count; ++i) {
        number = (number - bounds.least + by % count + count) % count + bounds.least;
        if (TakeNumber(kind, number))
            return;
    }
    Settle();
}

void CZoDateTimeFields::GoToEnd(BOOL most)
{
    EnterTyped();
    const Kind kind = Current().kind == Kind::kHour12 ? Kind::kHour : Current().kind;
    const NumberBounds bounds = BoundsOf(kind);
    for (int i = bounds.least; i <= bounds.most; ++i) {
        if (TakeNumber(kind, most ? bounds.most + bounds.least - i : i))
            return;
    }
    Settle();
}

BOOL CZoDateTimeFields::IsWaiting() const
{
    return m_typed[0] != '\0' || std::memcmp(&m_draft, &m_time, sizeof m_time) != 0;
}

void CZoDateTimeFields::TakeBack()
{
    m_typed[0] = '\0';
    m_hasMovedOn = false;
    m_draft = m_time;
}

void CZoDateTimeFields::Settle()
{
    EnterTyped();
    if (!IsWaiting())
        return;
    Take(m_draft);
    m_outcome.isClamped = TRUE;
}

CZoDateTimeFields::Outcome CZoDateTimeFields::TakeOutcome() { return std::exchange(m_outcome, {}); }
