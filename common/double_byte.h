/// \file
/// Walks through texts of the system's ANSI code page, in which a character has one byte or two.
///
/// A text that was cut at a fixed size may end in the first half of a character. Here a lead byte with the text's end
/// behind it is a character of one byte. The run-time library's functions take the terminator for its second half, and
/// go on behind it.
#pragma once

#include <windows.h>

#include <cctype>
#include <cstring>
#include <mbstring.h>

/// Whether \p byte begins a character of two bytes. No code page has lead bytes below 0x80.
inline bool IsLeadByte(char byte)
{
    return static_cast<BYTE>(byte) >= 0x80 && IsDBCSLeadByte(static_cast<BYTE>(byte)) != FALSE;
}

/// The bytes of the character at \p text, which must not be its end: 2 for a lead byte with another byte behind it.
inline size_t CharacterWidth(LPCSTR text) { return IsLeadByte(text[0]) && text[1] != '\0' ? 2 : 1; }

/// The same for a text without a terminator, of which \p left bytes are left, at least 1.
inline size_t CharacterWidth(LPCSTR text, size_t left) { return left > 1 ? CharacterWidth(text) : 1; }

/// The character behind the one at \p text; the end stays where it is.
inline LPCSTR NextCharacter(LPCSTR text) { return *text != '\0' ? text + CharacterWidth(text) : text; }

/// The character before the one at \p at, in the text that begins at \p start; at its beginning, \p start.
inline LPCSTR PreviousCharacter(LPCSTR start, LPCSTR at)
{
    LPCSTR previous = start;
    for (LPCSTR next = start; next < at; next = NextCharacter(next))
        previous = next;
    return previous;
}

/// The character at \p text as a number: the byte, or the lead byte in the high byte and the second in the low one; 0
/// at the end.
inline UINT CharacterAt(LPCSTR text)
{
    const UINT first = static_cast<BYTE>(text[0]);
    return first != 0 && CharacterWidth(text) == 2 ? first << 8 | static_cast<BYTE>(text[1]) : first;
}

/// Whether the byte at \p at is the second half of a character, in a text in which one begins at \p start.
inline bool IsSecondHalf(LPCSTR start, LPCSTR at)
{
    LPCSTR leads = at; // lead bytes in a row are pairs, but for the last of an odd number
    while (leads > start && IsLeadByte(leads[-1]))
        --leads;
    return (at - leads) % 2 != 0;
}

/// The first place at which the characters of \p text go on with those of \p wanted, both of so many bytes. The empty
/// text is found at once. \return null if there is none
inline LPCSTR FindText(LPCSTR text, size_t length, LPCSTR wanted, size_t wantedLength)
{
    if (wantedLength == 0)
        return text;
    const LPCSTR wantedLast = wanted + wantedLength - 1;
    const bool endsInHalf = IsLeadByte(*wantedLast) && !IsSecondHalf(wanted, wantedLast);
    const LPCSTR end = text + length;
    LPCSTR start = text; // of a character, not behind the place that is looked at
    for (LPCSTR at = text; static_cast<size_t>(end - at) >= wantedLength; ++at) {
        at = static_cast<LPCSTR>(std::memchr(at, wanted[0], static_cast<size_t>(end - at) - wantedLength + 1));
        if (at == nullptr)
            return nullptr;
        if (at[wantedLength - 1] != *wantedLast || std::memcmp(at, wanted, wantedLength) != 0 ||
            (endsInHalf && at + wantedLength != end))
            continue;
        if (!IsSecondHalf(start, at))
            return at;
        start = at + 1;
    }
    return nullptr;
}

/// The first character of one byte that is \p wanted; '\0' finds the end. \return null if there is none
inline LPCSTR FindCharacter(LPCSTR text, char wanted)
{
    const size_t length = std::strlen(text);
    return wanted != '\0' ? FindText(text, length, &wanted, 1) : text + length;
}

/// The last one.
inline LPCSTR FindLastCharacter(LPCSTR text, char wanted)
{
    LPCSTR found = nullptr;
    for (; *text != '\0'; text = NextCharacter(text)) {
        if (CharacterAt(text) == static_cast<BYTE>(wanted))
            found = text;
    }
    return wanted == '\0' ? text : found;
}

/// The number of a character of a double-byte code page, without regard to case.
inline UINT LowerCase(UINT character)
{
    return character > 0xFF ? _mbctolower(character) : static_cast<UINT>(std::tolower(static_cast<int>(character)));
}

/// Compares the numbers of the characters. \return -1, 0 or 1
inline int CompareCharacters(LPCSTR first, LPCSTR second)
{
    size_t at = 0;
    for (; first[at] == second[at]; ++at) {
        if (first[at] == '\0')
            return 0;
    }
    if (IsSecondHalf(first, first + at))
        --at;
    return CharacterAt(first + at) < CharacterAt(second + at) ? -1 : 1;
}
/// The same without regard to case. Where all characters have one byte the order is the run-time library's: it has no
/// second half to look for. \return less than 0, 0, or more
/// \param doubleByte whether the system has characters of two bytes; who compares many asks once
inline int CompareCharactersNoCase(LPCSTR first, LPCSTR second, bool doubleByte)
{
    if (!doubleByte)
        return _stricmp(first, second);
    for (;; first = NextCharacter(first), second = NextCharacter(second)) {
        const UINT character1 = LowerCase(CharacterAt(first));
        const UINT character2 = LowerCase(CharacterAt(second));
        if (character1 != character2)
            return character1 < character2 ? -1 : 1;
        if (character1 == 0)
            return 0;
    }
}

inline int CompareCharactersNoCase(LPCSTR first, LPCSTR second)
{
    return CompareCharactersNoCase(first, second, GetSystemMetrics(SM_DBCSENABLED) != 0);
}

/// Changes the case of a text by \p map, _mbsupr or _mbslwr. Half a character at its end stays as it is.
inline void MapCase(LPSTR text, unsigned char*(__cdecl* map)(unsigned char*))
{
    LPSTR end = text;
    while (*end != '\0' && !(IsLeadByte(*end) && end[1] == '\0'))
        end += CharacterWidth(end);
    const char half = *end;
    *end = '\0';
    map(reinterpret_cast<unsigned char*>(text));
    *end = half;
}
