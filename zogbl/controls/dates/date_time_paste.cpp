#include <zogbl/date_time_fields.h>

#include <zogbl/type_ahead.h>

#include "common/double_byte.h"
#include "date_time_parts.h"

#include <algorithm>
#include <cstring>
#include <iterator>

using Kind = CZoDateTimeFields::Kind;

namespace {

constexpr Kind kFromYear[] = {Kind::kYear, Kind::kMonth, Kind::kDay, Kind::kHour, Kind::kMinute, Kind::kSecond};

bool IsDigit(char character) { return character >= '0' && character <= '9'; }
bool IsLetter(LPCSTR text) { return CharacterWidth(text) == 2 || ::IsCharAlphaA(*text); }

/// What stands in a text.
class PastedText {
public:
    static constexpr int kMost = 8;

    /// \param words that may stand there besides: of \p length bytes
    PastedText(LCID locale, LPCSTR words, size_t length) : m_locale(locale), m_words(words), m_length(length) {}

    /// \return false: there is something that no date has
    bool Read(LPCSTR text)
    {
        for (LPCSTR at = text; *at != '\0';) {
            size_t length = NameAt(at);
            if (length == 0 && IsDigit(*at)) {
                while (IsDigit(at[length]))
                    ++length;
                if (count == kMost || length >= sizeof numbers[0])
                    return false;
                std::copy_n(at, length, numbers[count++]);
            } else if (length == 0 && IsLetter(at)) {
                length = WordAt(at);
                if (length == 0)
                    return false;
            }
            at += length != 0 ? length : 1;
        }
        return true;
    }

    char numbers[kMost][5] = {}; // digits
    int count = 0;
    int month = -1; // as a name; -1: none
    int half = -1;

private:
    /// The bytes of \p name, if the text goes on with it; a word goes on with no other letter.
    static size_t LengthOf(LPCSTR name, LPCSTR text)
    {
        const size_t length = std::strlen(name);
        char beginning[CZoDateTimeFields::kTextSize];
        if (length == 0 || length > std::strlen(text) || std::all_of(name, name + length, &IsDigit))
            return 0;
        std::copy_n(text, length, beginning);
        beginning[length] = '\0';
        const bool goesOn = CharacterWidth(text + length) == 1 && ::IsCharAlphaA(text[length]);
        return !goesOn && CZoTypeAhead::Begins(beginning, name) ? length : 0;
    }

    /// A month, a weekday or a half of the day in any of its forms, the longest that fits. \return its bytes
    size_t NameAt(LPCSTR text)
    {
        char name[CZoDateTimeFields::kTextSize];
        size_t longest = 0;
        const auto look = [&](int* part, int number) {
            const size_t length = LengthOf(name, text);
            if (length > longest && part != nullptr)
                *part = number;
            longest = (std::max)(longest, length);
        };
        for (int number = 1; number <= 12; ++number) {
            for (const bool isShort : {false, true}) {
                for (const bool besideDay : {false, true}) {
                    GetMonthName(m_locale, number, isShort, besideDay, name);
                    look(&month, number);
                }
            }
        }
        for (int number : {0, 1}) {
            GetHalfName(m_locale, number, name);
            look(&half, number);
        }
        for (LCTYPE day = 0; day < 7; ++day) {
            for (const LCTYPE type : {LOCALE_SDAYNAME1 + day, LOCALE_SABBREVDAYNAME1 + day}) {
                if (::GetLocaleInfoA(m_locale, type | LOCALE_USE_CP_ACP, name, sizeof name) != 0)
                    look(nullptr, 0);
            }
        }
        return longest;
    }

    /// \return the bytes of a word that may stand there; 0: it may not
    size_t WordAt(LPCSTR text) const
    {
        size_t length = CharacterWidth(text);
        while (CharacterWidth(text) == 1 && CharacterWidth(text + length) == 1 && ::IsCharAlphaA(text[length]))
            ++length;
        const bool isOfTime = length == 1 && *text == 'T'; // as in 2026-03-31T12:00
        return isOfTime || FindText(m_words, m_length, text, length) != nullptr ? length : 0;
    }

    const LCID m_locale;
    const LPCSTR m_words;
    const size_t m_length;
};

} // namespace

BOOL CZoDateTimeFields::Paste(LPCSTR text)
{
    char narrow[kTextSize];
    PastedText pasted(m_locale, m_layout.texts, static_cast<size_t>(m_layout.used));
    if (text == nullptr || std::strlen(text) >= sizeof narrow)
        return FALSE;
    if (::GetSystemMetrics(SM_DBCSENABLED) != 0 &&
        ::LCMapStringA(LOCALE_SYSTEM_DEFAULT, LCMAP_HALFWIDTH, text, -1, narrow, sizeof narrow) != 0)
        text = narrow;
    if (!pasted.Read(text))
        return FALSE;

    const bool isFromYear = std::strlen(pasted.numbers[0]) == 4 && GetKind(GetFirst()) != Kind::kYear && m_hasDate;
    Kind order[kMostPieces];
    int count = 0;
    const auto expect = [&](Kind kind) {
        if (kind != Kind::kHalf && (kind != Kind::kMonth || pasted.month < 0))
            order[count++] = kind;
    };
    if (isFromYear)
        std::for_each(std::begin(kFromYear), std::begin(kFromYear) + (m_hasTime ? 6 : 3), expect);
    for (int i = 0; i < GetCount() && !isFromYear; ++i) {
        if (IsField(i))
            expect(GetKind(i));
    }
    const bool lacksSeconds = count == pasted.count + 1 && order[count - 1] == Kind::kSecond;
    const bool hasTimeBesides = isFromYear && !m_hasTime && pasted.count > count;
    if (pasted.count != count && !lacksSeconds && !hasTimeBesides)
        return FALSE;

    SYSTEMTIME time = m_time;
    if (pasted.month >= 0)
        PutNumber(time, Kind::kMonth, pasted.month);
    for (int i = 0; i < count; ++i) {
        const Kind kind = order[i] == Kind::kHour12 ? Kind::kHour : order[i];
        int number = lacksSeconds && i == count - 1 ? 0 : NumberOfDigits(kind, pasted.numbers[i]);
        if (number < 0)
            return FALSE;
        if (kind == Kind::kHour && pasted.half >= 0 && number >= 1 && number <= 12)
            number = number % 12 + pasted.half * 12;
        PutNumber(time, kind, number);
    }
    if (!IsReal(time))
        return FALSE;
    Take(time);
    return TRUE;
}
