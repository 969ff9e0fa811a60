// Strings: what looks at characters.
#include <afx.h>

#include <common/double_byte.h>

#include <cstring>
#include <mbstring.h>
#include <utility>

namespace {

LPCSTR TextOf(LPCSTR text) { return text != nullptr ? text : ""; }

/// Position of \p found in \p text; -1 for null.
int PositionIn(LPCSTR text, LPCSTR found) { return found != nullptr ? static_cast<int>(found - text) : -1; }

bool IsSpace(UINT character) { return _ismbcspace(character) != 0; }

/// Whether a character is in a set.
class IsOneOf {
public:
    explicit IsOneOf(LPCSTR set) : m_set(TextOf(set)) {}
    bool operator()(UINT character) const
    {
        LPCSTR at = m_set;
        while (*at != '\0' && CharacterAt(at) != character)
            at = NextCharacter(at);
        return *at != '\0';
    }

private:
    LPCSTR m_set;
};

/// The text of one character, that of one byte.
struct Single {
    explicit Single(char ch) : text{ch, '\0'} {}
    char text[2];
};

/// The first character for which \p is answers \p answer, else the end.
template <class IS> LPCSTR FirstThat(LPCSTR text, const IS& is, bool answer)
{
    while (*text != '\0' && is(CharacterAt(text)) != answer)
        text = NextCharacter(text);
    return text;
}

/// The end of the text without the last characters for which \p is answers true.
template <class IS> LPCSTR EndWithout(LPCSTR text, const IS& is)
{
    LPCSTR end = text;
    while (*text != '\0') {
        const bool isLeftOut = is(CharacterAt(text));
        text = NextCharacter(text);
        if (!isLeftOut)
            end = text;
    }
    return end;
}

} // namespace

int CString::Find(char ch, int nStart) const
{
    if (nStart < 0 || nStart >= GetLength())
        return -1;
    if (ch == '\0')
        return nStart + static_cast<int>(std::strlen(m_pchData + nStart));
    return PositionIn(m_pchData, FindText(m_pchData + nStart, static_cast<size_t>(GetLength() - nStart), &ch, 1));
}

int CString::Find(LPCSTR lpszSub, int nStart) const
{
    if (nStart < 0 || nStart > GetLength())
        return -1;
    const LPCSTR wanted = TextOf(lpszSub);
    return PositionIn(m_pchData, FindText(m_pchData + nStart, static_cast<size_t>(GetLength() - nStart), wanted,
                                          std::strlen(wanted)));
}

int CString::ReverseFind(char ch) const { return PositionIn(m_pchData, FindLastCharacter(m_pchData, ch)); }

int CString::FindOneOf(LPCSTR lpszCharSet) const
{
    const LPCSTR found = FirstThat(m_pchData, IsOneOf(lpszCharSet), true);
    return *found != '\0' ? PositionIn(m_pchData, found) : -1;
}

CString CString::SpanIncluding(LPCSTR lpszCharSet) const
{
    return Left(PositionIn(m_pchData, FirstThat(m_pchData, IsOneOf(lpszCharSet), false)));
}

CString CString::SpanExcluding(LPCSTR lpszCharSet) const
{
    return Left(PositionIn(m_pchData, FirstThat(m_pchData, IsOneOf(lpszCharSet), true)));
}

CString& CString::MakeUpper() { return MapCase(GetBuffer(), &_mbsupr), *this; }
CString& CString::MakeLower() { return MapCase(GetBuffer(), &_mbslwr), *this; }

CString& CString::MakeReverse()
{
    CString reversed;
    LPSTR to = reversed.GetBufferSetLength(GetLength()) + GetLength();
    for (LPCSTR from = m_pchData; to > static_cast<LPCSTR>(reversed);) {
        const size_t width = CharacterWidth(from);
        to -= width;
        std::memcpy(to, from, width);
        from += width;
    }
    return *this = std::move(reversed);
}

CString& CString::TrimLeft() { return Delete(0, PositionIn(m_pchData, FirstThat(m_pchData, IsSpace, false))), *this; }
CString& CString::TrimLeft(char ch) { return TrimLeft(Single(ch).text); }
CString& CString::TrimLeft(LPCSTR lpszCharSet)
{
    return Delete(0, PositionIn(m_pchData, FirstThat(m_pchData, IsOneOf(lpszCharSet), false))), *this;
}

CString& CString::TrimRight() { return Truncate(PositionIn(m_pchData, EndWithout(m_pchData, IsSpace))), *this; }
CString& CString::TrimRight(char ch) { return TrimRight(Single(ch).text); }
CString& CString::TrimRight(LPCSTR lpszCharSet)
{
    return Truncate(PositionIn(m_pchData, EndWithout(m_pchData, IsOneOf(lpszCharSet)))), *this;
}

int CString::Replace(char chOld, char chNew) { return Replace(Single(chOld).text, Single(chNew).text); }
int CString::Remove(char ch) { return Replace(Single(ch).text, ""); }

int CString::Replace(LPCSTR lpszOld, LPCSTR lpszNew)
{
    const size_t oldLength = std::strlen(TextOf(lpszOld));
    const auto newLength = static_cast<int>(std::strlen(TextOf(lpszNew)));
    const LPCSTR end = m_pchData + GetLength();
    LPCSTR from = m_pchData;
    const auto next = [&] { return FindText(from, static_cast<size_t>(end - from), lpszOld, oldLength); };
    LPCSTR at = oldLength > 0 ? next() : nullptr;
    if (at == nullptr)
        return 0;
    CString result;
    result.Preallocate(GetLength());
    int count = 0;
    for (; at != nullptr; at = next()) {
        result.Append(from, static_cast<int>(at - from));
        result.Append(lpszNew, newLength);
        from = at + oldLength;
        ++count;
    }
    result.Append(from, static_cast<int>(end - from));
    *this = std::move(result);
    return count;
}

void CString::AnsiToOem()
{
    LPSTR text = GetBuffer();
    ::CharToOemBuffA(text, text, static_cast<DWORD>(GetLength()));
}

void CString::OemToAnsi()
{
    LPSTR text = GetBuffer();
    ::OemToCharBuffA(text, text, static_cast<DWORD>(GetLength()));
}
