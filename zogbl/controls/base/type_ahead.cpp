#include <zogbl/type_ahead.h>

#include <common/double_byte.h>

#include <algorithm>
#include <cstring>

namespace {

constexpr UINT kBackspace = 8;
constexpr UINT kFirstPrintable = 32;
constexpr UINT kLastPrintable = 255;

} // namespace

BOOL CZoTypeAhead::Type(UINT character)
{
    if (character == kBackspace)
        Forget();
    if (character < kFirstPrintable || character > kLastPrintable)
        return FALSE;
    if (std::strlen(m_szTyped) > kLongest)
        Forget();
    const size_t length = std::strlen(m_szTyped);
    m_szTyped[length] = static_cast<char>(character);
    m_szTyped[length + 1] = '\0';
    return TRUE;
}

BOOL CZoTypeAhead::IsHalf() const
{
    LPCSTR last = PreviousCharacter(m_szTyped, m_szTyped + std::strlen(m_szTyped));
    return IsLeadByte(last[0]) && last[1] == '\0';
}

BOOL CZoTypeAhead::IsOneCharacter() const { return NextCharacter(m_szTyped)[0] == '\0'; }

void CZoTypeAhead::KeepLastCharacter()
{
    LPCSTR last = PreviousCharacter(m_szTyped, m_szTyped + std::strlen(m_szTyped));
    std::memmove(m_szTyped, last, std::strlen(last) + 1);
}

BOOL CZoTypeAhead::Begins(LPCSTR name, LPCSTR text)
{
    const int length = lstrlenA(text);
    if (length == 0)
        return TRUE;
    const int compared = (std::min)(length, lstrlenA(name));
    return CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, text, length, name, compared) == CSTR_EQUAL;
}
