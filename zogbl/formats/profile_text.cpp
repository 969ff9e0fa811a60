#include "profile_text.h"

#include "ground/bounded_text.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

bool IsOneOf(LPCSTR character, LPCSTR set)
{
    const size_t width = CharacterWidth(character);
    for (; *set != '\0'; set += CharacterWidth(set)) {
        if (CharacterWidth(set) == width && std::memcmp(set, character, width) == 0)
            return true;
    }
    return false;
}

constexpr bool IsWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

} // namespace

std::string_view NextToken(LPCSTR& text, LPCSTR delimiters)
{
    while (*text != '\0' && IsOneOf(text, delimiters))
        text += CharacterWidth(text);
    const LPCSTR token = text;
    while (*text != '\0' && !IsOneOf(text, delimiters))
        text += CharacterWidth(text);
    return {token, static_cast<size_t>(text - token)};
}

DWORD ReadNumber(std::string_view text)
{
    auto at = std::find_if_not(text.begin(), text.end(), IsWhiteSpace);
    const bool hasSign = at != text.end() && (*at == '-' || *at == '+');
    const bool isNegative = hasSign && *at == '-';
    DWORD number = 0;
    for (at += hasSign; at != text.end() && IsDigit(*at); ++at)
        number = number * 10 + static_cast<DWORD>(*at - '0');
    return isNegative ? 0 - number : number;
}

void ReadNumbers(LPCSTR text, LONG* numbers, size_t count)
{
    for (size_t i = 0; i < count; ++i) {
        const std::string_view token = NextToken(text, " ,:;/|\\");
        if (token.empty())
            return;
        numbers[i] = static_cast<LONG>(ReadNumber(token));
    }
}

DWORD ReadHexadecimal(LPCSTR text)
{
    while (*text == ' ' || *text == '\t')
        ++text;
    DWORD number = 0;
    for (;; ++text) {
        if (IsDigit(*text))
            number = number * 16 + static_cast<DWORD>(*text - '0');
        else if (*text >= 'A' && *text <= 'F')
            number = number * 16 + static_cast<DWORD>(*text - 'A' + 10);
        else if (*text >= 'a' && *text <= 'f')
            number = number * 16 + static_cast<DWORD>(*text - 'a' + 10);
        else if (*text == 'X' || *text == 'x')
            number = 0;
        else
            return number;
    }
}

bool ReadBoolean(LPCSTR text)
{
    constexpr LPCSTR kTrue[] = {"1", "TRUE", "SET", "YES", "ON", "OK"};
    return std::any_of(std::begin(kTrue), std::end(kTrue), [=](LPCSTR word) { return _stricmp(word, text) == 0; });
}
