#include <afx.h>

#include <common/double_byte.h>

#include <algorithm>
#include <climits>
#include <cstring>

namespace {

constexpr int kMostLength = INT_MAX - 64;
constexpr int kLeastGrowth = 16;

struct StringHeader {
    volatile LONG references; // -1: the shared empty string, never counted
    int length;
    int capacity; // less than 0: in a block, so many bytes behind its beginning

    LPSTR Text() { return reinterpret_cast<LPSTR>(this + 1); }
};

/// The beginning of a block of texts.
struct BlockHeader {
    volatile LONG references; // texts in use; while it is being filled, kFilling more than those that were released
};
constexpr LONG kFilling = LONG_MAX / 2;

struct {
    StringHeader header;
    char terminator[sizeof(int)];
} g_emptyString = {{-1, 0, 0}, {}};

StringHeader* HeaderOf(LPSTR text) { return reinterpret_cast<StringHeader*>(text) - 1; }

LPSTR EmptyText() { return g_emptyString.header.Text(); }

/// An unshared, terminated buffer for \p capacity characters.
LPSTR AllocateText(int capacity, int length)
{
    if (capacity <= 0)
        return EmptyText();
    if (capacity > kMostLength)
        AfxThrowMemoryException();
    auto* header = static_cast<StringHeader*>(AfxAllocMemory(sizeof(StringHeader) + static_cast<size_t>(capacity) + 1));
    *header = {1, length, capacity};
    header->Text()[length] = '\0';
    return header->Text();
}

void CopyBytes(LPSTR to, LPCSTR from, int count)
{
    if (count > 0)
        std::memcpy(to, from, static_cast<size_t>(count));
}

LPSTR AllocateCopy(LPCSTR text, int length)
{
    LPSTR copy = AllocateText(length, length);
    CopyBytes(copy, text, length);
    return copy;
}

LPSTR Share(LPSTR text) noexcept
{
    if (HeaderOf(text)->references > 0)
        InterlockedIncrement(&HeaderOf(text)->references);
    return text;
}

void AddReferences(BlockHeader* block, LONG count) noexcept
{
    if (InterlockedExchangeAdd(&block->references, count) + count == 0)
        AfxFreeMemory(block);
}

void Release(LPSTR text) noexcept
{
    StringHeader* header = HeaderOf(text);
    if (header->references <= 0 || InterlockedDecrement(&header->references) != 0)
        return;
    if (header->capacity < 0)
        AddReferences(reinterpret_cast<BlockHeader*>(reinterpret_cast<char*>(header) + header->capacity), -1);
    else
        AfxFreeMemory(header);
}

int LengthOf(LPCSTR text)
{
    const size_t length = text != nullptr ? std::strlen(text) : 0;
    if (length > kMostLength)
        AfxThrowMemoryException();
    return static_cast<int>(length);
}

/// What \p length says if there is a text, at least 0.
int LengthOf(LPCSTR text, int length) { return text != nullptr ? (std::max)(0, length) : 0; }

} // namespace

CString::CString() noexcept : m_pchData(EmptyText()) {}
CString::CString(const CString& stringSrc) noexcept : m_pchData(Share(stringSrc.m_pchData)) {}
CString::CString(CString&& stringSrc) noexcept : m_pchData(stringSrc.m_pchData) { stringSrc.m_pchData = EmptyText(); }

CString::CString(char ch, int nRepeat) : m_pchData(AllocateText(nRepeat, nRepeat))
{
    std::memset(m_pchData, ch, static_cast<size_t>(GetLength()));
}

CString::CString(LPCSTR lpsz) : m_pchData(EmptyText())
{
    if (lpsz != nullptr && IS_INTRESOURCE(lpsz))
        LoadString(LOWORD(reinterpret_cast<UINT_PTR>(lpsz)));
    else
        m_pchData = AllocateCopy(lpsz, LengthOf(lpsz));
}

CString::CString(LPCSTR lpch, int nLength) : m_pchData(AllocateCopy(lpch, LengthOf(lpch, nLength))) {}

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

CString& CString::operator=(LPCSTR lpsz) { return SetString(lpsz, LengthOf(lpsz)), *this; }
CString& CString::operator=(char ch) { return SetString(&ch, 1), *this; }

void CString::SetString(LPCSTR lpch, int nLength)
{
    nLength = LengthOf(lpch, nLength);
    if (CanHold(nLength)) {
        std::memmove(m_pchData, lpch, static_cast<size_t>(nLength)); // it may be a part of this string
        SetLength(nLength);
    } else {
        LPSTR text = AllocateCopy(lpch, nLength);
        Release(m_pchData);
        m_pchData = text;
    }
}

int CString::GetLength() const noexcept { return HeaderOf(m_pchData)->length; }
int CString::GetAllocLength() const noexcept
{
    const int capacity = HeaderOf(m_pchData)->capacity;
    return capacity >= 0 ? capacity : GetLength();
}

/// Whether the string alone has the buffer, and it is large enough; the empty text needs none.
BOOL CString::CanHold(int nLength) const noexcept
{
    return nLength > 0 && HeaderOf(m_pchData)->references == 1 && HeaderOf(m_pchData)->capacity >= nLength;
}

void CString::SetLength(int nLength) noexcept
{
    HeaderOf(m_pchData)->length = nLength;
    m_pchData[nLength] = '\0';
}

void CString::Empty() noexcept
{
    Release(m_pchData);
    m_pchData = EmptyText();
}

void CString::SetAt(int nIndex, char ch)
{
    ASSERT(nIndex >= 0 && nIndex < GetLength());
    GetBuffer()[nIndex] = ch;
}

CString& CString::operator+=(const CString& string) { return Append(string, string.GetLength()), *this; }
CString& CString::operator+=(LPCSTR lpsz) { return Append(lpsz, LengthOf(lpsz)), *this; }

CString& CString::operator+=(char ch)
{
    const int length = GetLength();
    if (CanHold(length + 1)) {
        m_pchData[length] = ch;
        SetLength(length + 1);
    } else {
        Splice(length, 0, &ch, 1);
    }
    return *this;
}

void CString::Append(LPCSTR lpch, int nLength)
{
    nLength = LengthOf(lpch, nLength);
    const int length = GetLength();
    if (nLength <= kMostLength - length && CanHold(length + nLength)) { // also for a part of this string: it ends here
        CopyBytes(m_pchData + length, lpch, nLength);
        SetLength(length + nLength);
    } else {
        Splice(length, 0, lpch, nLength);
    }
}

namespace {

template <class ADDEND> CString Sum(CString string, const ADDEND& addend)
{
    string += addend;
    return string;
}

} // namespace

CString AFXAPI operator+(const CString& string1, const CString& string2) { return Sum(string1, string2); }
CString AFXAPI operator+(const CString& string, LPCSTR lpsz) { return Sum(string, lpsz); }
CString AFXAPI operator+(LPCSTR lpsz, const CString& string) { return Sum({lpsz, LengthOf(lpsz)}, string); }
CString AFXAPI operator+(const CString& string, char ch) { return Sum(string, ch); }
CString AFXAPI operator+(char ch, const CString& string) { return Sum(ch, string); }

int CString::Insert(int nIndex, char ch)
{
    Splice((std::clamp)(nIndex, 0, GetLength()), 0, &ch, 1);
    return GetLength();
}

int CString::Insert(int nIndex, LPCSTR lpsz)
{
    Splice((std::clamp)(nIndex, 0, GetLength()), 0, lpsz, LengthOf(lpsz));
    return GetLength();
}

int CString::Delete(int nIndex, int nCount)
{
    nIndex = (std::clamp)(nIndex, 0, GetLength());
    Splice(nIndex, (std::clamp)(nCount, 0, GetLength() - nIndex), nullptr, 0);
    return GetLength();
}

void CString::Truncate(int nNewLength) { Delete(nNewLength, GetLength()); }

/// Puts \p nLength characters, which may be some of this string's, in the place of \p nCount. Both are in range.
void CString::Splice(int nIndex, int nCount, LPCSTR lpch, int nLength)
{
    if (nCount == 0 && nLength == 0)
        return;
    const int length = GetLength();
    const int rest = length - nIndex - nCount;
    if (nLength > kMostLength - (length - nCount))
        AfxThrowMemoryException();
    const int total = length - nCount + nLength;
    const bool isOwn = lpch >= m_pchData && lpch <= m_pchData + length;
    if (CanHold(total) && !isOwn) {
        if (rest > 0)
            std::memmove(m_pchData + nIndex + nLength, m_pchData + nIndex + nCount, static_cast<size_t>(rest));
        CopyBytes(m_pchData + nIndex, lpch, nLength);
        SetLength(total);
        return;
    }
    int capacity = total;
    if (HeaderOf(m_pchData)->references == 1 && total > GetAllocLength()) // it grows, and may go on growing
        capacity = (std::max)(total, (std::min)(GetAllocLength(), kMostLength / 2) / 2 * 3 + kLeastGrowth);
    LPSTR text = AllocateText(capacity, total);
    CopyBytes(text, m_pchData, nIndex);
    CopyBytes(text + nIndex, lpch, nLength);
    CopyBytes(text + nIndex + nLength, m_pchData + nIndex + nCount, rest);
    Release(m_pchData);
    m_pchData = text;
}

int CString::Compare(LPCSTR lpsz) const { return CompareCharacters(m_pchData, lpsz != nullptr ? lpsz : ""); }
int CString::CompareNoCase(LPCSTR lpsz) const
{
    return CompareCharactersNoCase(m_pchData, lpsz != nullptr ? lpsz : "");
}

namespace {

int CompareByLocale(LPCSTR text1, LPCSTR text2, DWORD flags)
{
    return CompareStringA(LOCALE_USER_DEFAULT, flags, text1, -1, text2 != nullptr ? text2 : "", -1) - CSTR_EQUAL;
}

} // namespace

int CString::Collate(LPCSTR lpsz) const { return CompareByLocale(m_pchData, lpsz, 0); }
int CString::CollateNoCase(LPCSTR lpsz) const { return CompareByLocale(m_pchData, lpsz, NORM_IGNORECASE); }

CString CString::Mid(int nFirst) const { return Mid(nFirst, GetLength()); }

CString CString::Mid(int nFirst, int nCount) const
{
    nFirst = (std::clamp)(nFirst, 0, GetLength());
    nCount = (std::clamp)(nCount, 0, GetLength() - nFirst);
    if (nCount == GetLength())
        return *this;
    return {m_pchData + nFirst, nCount};
}

CString CString::Left(int nCount) const { return Mid(0, nCount); }
CString CString::Right(int nCount) const { return Mid(GetLength() - (std::clamp)(nCount, 0, GetLength())); }

LPSTR CString::GetBuffer(int nMinBufLength)
{
    StringHeader* header = HeaderOf(m_pchData);
    if (header->references != 1 || header->capacity < nMinBufLength)
        Reallocate((std::max)({nMinBufLength, header->length, 1}));
    return m_pchData;
}

void CString::Reallocate(int nCapacity)
{
    LPSTR text = AllocateText(nCapacity, GetLength());
    CopyBytes(text, m_pchData, GetLength());
    Release(m_pchData);
    m_pchData = text;
}

LPSTR CString::GetBufferSetLength(int nNewLength)
{
    GetBuffer(nNewLength);
    ReleaseBuffer(nNewLength);
    return m_pchData;
}

void CString::ReleaseBuffer(int nNewLength)
{
    if (HeaderOf(m_pchData)->references != 1)
        return; // the shared empty string: there is nothing that could have been written
    SetLength(nNewLength < 0 ? LengthOf(m_pchData) : (std::min)(nNewLength, GetAllocLength()));
}

void CString::Preallocate(int nLength) { GetBuffer(nLength); }

void CString::FreeExtra()
{
    if (HeaderOf(m_pchData)->references == 1 && GetAllocLength() > GetLength())
        Reallocate(GetLength());
}

// Several in one allocation -------------------------------------------------------------------------------------------

CStringBlock::CStringBlock(int nStrings, int nLength)
{
    constexpr size_t kMostForEach = sizeof(StringHeader) + alignof(StringHeader); // beside its characters
    const size_t most = (INT_MAX - sizeof(BlockHeader)) / kMostForEach;           // offsets are numbers of type int
    const auto strings = static_cast<size_t>(nStrings);
    if (strings > most || static_cast<size_t>(nLength) > (most - strings) * kMostForEach)
        AfxThrowMemoryException();
    m_nUsed = sizeof(BlockHeader);
    m_nSize = m_nUsed + strings * kMostForEach + static_cast<size_t>(nLength);
    m_pBlock = ::new (AfxAllocMemory(m_nSize)) BlockHeader{kFilling};
}

CStringBlock::~CStringBlock() { AddReferences(static_cast<BlockHeader*>(m_pBlock), m_nStrings - kFilling); }

CString CStringBlock::Make(LPCSTR lpch, int nLength)
{
    nLength = LengthOf(lpch, nLength);
    const size_t end = sizeof(StringHeader) + static_cast<size_t>(nLength) + 1;
    const size_t needed = (end + alignof(StringHeader) - 1) / alignof(StringHeader) * alignof(StringHeader);
    if (nLength == 0 || needed > m_nSize - m_nUsed)
        return {lpch, nLength};
    auto* header = ::new (static_cast<char*>(m_pBlock) + m_nUsed) StringHeader{1, nLength, -static_cast<int>(m_nUsed)};
    std::memcpy(header->Text(), lpch, static_cast<size_t>(nLength));
    header->Text()[nLength] = '\0';
    m_nUsed += needed;
    ++m_nStrings;
    CString string;
    string.m_pchData = header->Text();
    return string;
}
