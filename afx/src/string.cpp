#include <afxwin.h>

#include <common/double_byte.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <mbstring.h>

namespace {

struct StringHeader {
    volatile LONG references; // -1: the shared empty string, never counted
    int length;
    int capacity;

    LPSTR Text() { return reinterpret_cast<LPSTR>(this + 1); }
};

struct {
    StringHeader header;
    char terminator[sizeof(int)];
} g_emptyString = {{-1, 0, 0}, {}};

StringHeader* HeaderOf(LPSTR text) { return reinterpret_cast<StringHeader*>(text) - 1; }

LPSTR EmptyText() { return g_emptyString.header.Text(); }

/// An unshared, terminated buffer for \p length characters.
LPSTR AllocateText(int length)
{
    if (length <= 0)
        return EmptyText();
    if (length > INT_MAX - 64)
        AfxThrowMemoryException();
    auto* header = static_cast<StringHeader*>(AfxAllocMemory(sizeof(StringHeader) + static_cast<size_t>(length) + 1));
    *header = {1, length, length};
    header->Text()[length] = '\0';
    return header->Text();
}

LPSTR AllocateCopy(LPCSTR text, int length)
{
    LPSTR copy = AllocateText(length);
    if (length > 0)
        std::memcpy(copy, text, static_cast<size_t>(length));
    return copy;
}

LPSTR Share(LPSTR text) noexcept
{
    if (HeaderOf(text)->references > 0)
        InterlockedIncrement(&HeaderOf(text)->references);
    return text;
}

void Release(LPSTR text) noexcept
{
    if (HeaderOf(text)->references > 0 && InterlockedDecrement(&HeaderOf(text)->references) == 0)
        AfxFreeMemory(HeaderOf(text));
}

int LengthOf(LPCSTR text)
{
    const size_t length = text != nullptr ? std::strlen(text) : 0;
    if (length > INT_MAX - 64)
        AfxThrowMemoryException();
    return static_cast<int>(length);
}

/// Position of \p found in \p text; -1 for null.
int PositionIn(LPCSTR text, LPCSTR found) { return found != nullptr ? static_cast<int>(found - text) : -1; }

bool IsSpace(LPCSTR text) { return _ismbcspace(CharacterAt(text)) != 0; }

} // namespace

CString::CString() noexcept : m_pchData(EmptyText()) {}
CString::CString(const CString& stringSrc) noexcept : m_pchData(Share(stringSrc.m_pchData)) {}
CString::CString(CString&& stringSrc) noexcept : m_pchData(stringSrc.m_pchData) { stringSrc.m_pchData = EmptyText(); }

CString::CString(char ch, int nRepeat) : m_pchData(AllocateText(nRepeat))
{
    if (nRepeat > 0)
        std::memset(m_pchData, ch, static_cast<size_t>(nRepeat));
}

CString::CString(LPCSTR lpsz) : m_pchData(EmptyText())
{
    if (lpsz != nullptr && IS_INTRESOURCE(lpsz))
        LoadString(LOWORD(reinterpret_cast<UINT_PTR>(lpsz)));
    else
        m_pchData = AllocateCopy(lpsz, LengthOf(lpsz));
}

CString::CString(LPCSTR lpch, int nLength) : m_pchData(AllocateCopy(lpch, nLength)) {}

CString::~CString() { Release(m_pchData); }

CString& CString::operator=(const CString& stringSrc) noexcept
{
    LPSTR text = Share(stringSrc.m_pchData);
    Release(m_pchData);
    m_pchData = text;
    return *this;
}

CString& CString::operator=(CString&& stringSrc) noexcept
{
    std::swap(m_pchData, stringSrc.m_pchData);
    return *this;
}

CString& CString::operator=(LPCSTR lpsz) { return *this = CString(lpsz, LengthOf(lpsz)); }
CString& CString::operator=(char ch) { return *this = CString(ch); }

int CString::GetLength() const noexcept { return HeaderOf(m_pchData)->length; }

void CString::Empty() noexcept
{
    Release(m_pchData);
    m_pchData = EmptyText();
}

void CString::SetAt(int nIndex, char ch)
{
    GetBuffer(GetLength());
    m_pchData[nIndex] = ch;
}

CString& CString::operator+=(const CString& string)
{
    if (!string.IsEmpty()) {
        const CString addend(string); // survives the change of this string, should it be the same one
        const int length = GetLength();
        if (addend.GetLength() > INT_MAX - 64 - length)
            AfxThrowMemoryException();
        const int total = length + addend.GetLength();
        if (HeaderOf(m_pchData)->references != 1 || HeaderOf(m_pchData)->capacity < total)
            GetBuffer((std::max)(total, length < INT_MAX / 2 ? length + length / 2 : total));
        std::memcpy(m_pchData + length, addend.m_pchData, static_cast<size_t>(addend.GetLength()));
        ReleaseBuffer(total);
    }
    return *this;
}

CString& CString::operator+=(LPCSTR lpsz) { return *this += CString(lpsz, LengthOf(lpsz)); }
CString& CString::operator+=(char ch) { return *this += CString(ch); }

CString AFXAPI operator+(const CString& string1, const CString& string2)
{
    CString sum(string1);
    sum += string2;
    return sum;
}

CString AFXAPI operator+(const CString& string, LPCSTR lpsz) { return string + CString(lpsz, LengthOf(lpsz)); }
CString AFXAPI operator+(LPCSTR lpsz, const CString& string) { return CString(lpsz, LengthOf(lpsz)) + string; }
CString AFXAPI operator+(const CString& string, char ch) { return string + CString(ch); }

int CString::Compare(LPCSTR lpsz) const { return CompareCharacters(m_pchData, lpsz); }
int CString::CompareNoCase(LPCSTR lpsz) const { return CompareCharactersNoCase(m_pchData, lpsz); }
int CString::Collate(LPCSTR lpsz) const
{
    return CompareStringA(LOCALE_USER_DEFAULT, 0, m_pchData, -1, lpsz, -1) - CSTR_EQUAL;
}

CString CString::Mid(int nFirst) const { return Mid(nFirst, GetLength()); }

CString CString::Mid(int nFirst, int nCount) const
{
    nFirst = (std::max)(0, (std::min)(nFirst, GetLength()));
    nCount = (std::max)(0, (std::min)(nCount, GetLength() - nFirst));
    if (nCount == GetLength())
        return *this;
    return {m_pchData + nFirst, nCount};
}

CString CString::Left(int nCount) const { return Mid(0, nCount); }
CString CString::Right(int nCount) const
{
    nCount = (std::max)(0, (std::min)(nCount, GetLength()));
    return Mid(GetLength() - nCount, nCount);
}

int CString::Find(char ch, int nStart) const
{
    if (nStart < 0 || nStart >= GetLength())
        return -1;
    return PositionIn(m_pchData, FindCharacter(m_pchData + nStart, ch));
}

int CString::Find(LPCSTR lpszSub, int nStart) const
{
    if (nStart < 0 || nStart > GetLength())
        return -1;
    return PositionIn(m_pchData, FindText(m_pchData + nStart, lpszSub != nullptr ? lpszSub : ""));
}

int CString::ReverseFind(char ch) const { return PositionIn(m_pchData, FindLastCharacter(m_pchData, ch)); }

int CString::FindOneOf(LPCSTR lpszCharSet) const
{
    for (LPCSTR at = m_pchData; *at != '\0'; at = NextCharacter(at)) {
        for (LPCSTR wanted = lpszCharSet; *wanted != '\0'; wanted = NextCharacter(wanted)) {
            if (CharacterAt(at) == CharacterAt(wanted))
                return PositionIn(m_pchData, at);
        }
    }
    return -1;
}

void CString::MakeUpper() { MapCase(GetBuffer(GetLength()), &_mbsupr); }
void CString::MakeLower() { MapCase(GetBuffer(GetLength()), &_mbslwr); }

void CString::TrimLeft()
{
    LPCSTR first = m_pchData;
    while (IsSpace(first))
        first = NextCharacter(first);
    *this = Mid(PositionIn(m_pchData, first));
}

void CString::TrimRight()
{
    LPCSTR blanksFrom = nullptr; // start of the run of blanks that may turn out to be the last
    for (LPCSTR p = m_pchData; *p != '\0'; p = NextCharacter(p)) {
        if (!IsSpace(p))
            blanksFrom = nullptr;
        else if (blanksFrom == nullptr)
            blanksFrom = p;
    }
    if (blanksFrom != nullptr)
        *this = Left(PositionIn(m_pchData, blanksFrom));
}

int CString::Replace(LPCSTR lpszOld, LPCSTR lpszNew)
{
    const int oldLength = LengthOf(lpszOld);
    if (oldLength == 0)
        return 0;
    int count = 0;
    CString result;
    int from = 0;
    for (int at = Find(lpszOld); at >= 0; at = Find(lpszOld, from)) {
        result += Mid(from, at - from) + lpszNew;
        from = at + oldLength;
        ++count;
    }
    if (count > 0)
        *this = result + Mid(from);
    return count;
}

void AFX_CDECL CString::Format(LPCSTR lpszFormat, ...)
{
    va_list args;
    va_start(args, lpszFormat);
    FormatV(lpszFormat, args);
    va_end(args);
}

void AFX_CDECL CString::Format(UINT nFormatID, ...)
{
    CString format;
    format.LoadString(nFormatID);
    va_list args;
    va_start(args, nFormatID);
    FormatV(format, args);
    va_end(args);
}

void CString::FormatV(LPCSTR lpszFormat, va_list argList)
{
    va_list measured;
    va_copy(measured, argList);
    const int length = _vscprintf(lpszFormat, measured);
    va_end(measured);
    CString result;
    if (length > 0) {
        _vsnprintf(result.GetBuffer(length), static_cast<size_t>(length) + 1, lpszFormat, argList);
        result.ReleaseBuffer(length);
    }
    *this = result;
}

BOOL CString::LoadString(UINT nID)
{
    for (int capacity = 256;; capacity *= 2) {
        const int length = AfxLoadString(nID, GetBuffer(capacity), static_cast<UINT>(capacity) + 1);
        ReleaseBuffer(length);
        if (length < capacity - 1) // a text that was cut may be one byte short of the capacity
            return length > 0;
    }
}

LPSTR CString::GetBuffer(int nMinBufLength)
{
    StringHeader* header = HeaderOf(m_pchData);
    if (header->references != 1 || header->capacity < nMinBufLength) {
        const int length = header->length;
        LPSTR text = AllocateText((std::max)((std::max)(nMinBufLength, length), 1));
        std::memcpy(text, m_pchData, static_cast<size_t>(length) + 1);
        HeaderOf(text)->length = length;
        Release(m_pchData);
        m_pchData = text;
    }
    return m_pchData;
}

LPSTR CString::GetBufferSetLength(int nNewLength)
{
    GetBuffer(nNewLength);
    ReleaseBuffer(nNewLength);
    return m_pchData;
}

void CString::ReleaseBuffer(int nNewLength)
{
    StringHeader* header = HeaderOf(m_pchData);
    if (header->references != 1)
        return; // the shared empty string: there is nothing that could have been written
    header->length = nNewLength < 0 ? LengthOf(m_pchData) : (std::min)(nNewLength, header->capacity);
    m_pchData[header->length] = '\0';
}

BOOL AFXAPI AfxExtractSubString(CString& rString, LPCSTR lpszFullString, int iSubString, char chSep)
{
    rString.Empty();
    const CString all = lpszFullString;
    int begin = 0;
    for (; iSubString > 0; --iSubString) {
        begin = all.Find(chSep, begin) + 1;
        if (begin == 0)
            return FALSE;
    }
    const int end = all.Find(chSep, begin);
    rString = end < 0 ? all.Mid(begin) : all.Mid(begin, end - begin);
    return lpszFullString != nullptr;
}

void AFXAPI AfxFormatString1(CString& rString, UINT nIDS, LPCSTR lpsz1)
{
    AfxFormatString2(rString, nIDS, lpsz1, "%2"); // which stays as it is
}

void AFXAPI AfxFormatString2(CString& rString, UINT nIDS, LPCSTR lpsz1, LPCSTR lpsz2)
{
    CString format;
    format.LoadString(nIDS);
    CString text;
    int from = 0;
    for (int at = format.Find('%'); at >= 0; at = format.Find('%', at + 1)) {
        const char place = format.GetAt(at + 1); // at the end, the terminator
        if (place != '1' && place != '2')
            continue;
        text += format.Mid(from, at - from);
        text += place == '1' ? lpsz1 : lpsz2;
        from = at + 2;
    }
    rString = text + format.Mid(from);
}

int AFXAPI AfxLoadString(UINT nID, LPSTR lpszBuf, UINT nMaxBuf)
{
    const HINSTANCE module = AfxFindStringResourceHandle(nID);
    const int length = module != nullptr ? ::LoadStringA(module, nID, lpszBuf, static_cast<int>(nMaxBuf)) : 0;
    if (length == 0 && nMaxBuf > 0)
        lpszBuf[0] = '\0';
    return length;
}
