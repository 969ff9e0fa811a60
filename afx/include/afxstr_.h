/// \file
/// Application framework: strings. Included by afx.h.
#pragma once

#include <afx.h>

#include <compare>
#include <cstring>

/// Text of the system's ANSI code page. One pointer to a reference-counted buffer: copies share it until one is
/// changed. A string that is changed keeps its buffer if that is large enough; one that is appended to grows by half at
/// least. Operations that need memory throw CMemoryException* and then leave the string as it was.
///
/// Positions and lengths count bytes. Searching, comparing, trimming and case mapping step by whole characters, so
/// double-byte text is never cut in the middle; Left, Mid, Right, Insert and Delete cut where they are told. Sets of
/// characters are texts that hold them. A null pointer is the empty text. Positions and lengths that reach beyond the
/// text are taken as its beginning or end, if nothing else is said.
class AFX_API CString {
public:
    CString() noexcept;
    CString(const CString& stringSrc) noexcept;
    CString(CString&& stringSrc) noexcept;
    CString(char ch, int nRepeat = 1);
    /// A pointer whose high part is zero names a string resource.
    CString(LPCSTR lpsz);
    CString(LPCSTR lpch, int nLength);
    ~CString();

    CString& operator=(const CString& stringSrc) noexcept;
    CString& operator=(CString&& stringSrc) noexcept;
    CString& operator=(LPCSTR lpsz);
    CString& operator=(char ch);
    void SetString(LPCSTR lpsz) { *this = lpsz; }
    void SetString(LPCSTR lpch, int nLength);

    int GetLength() const noexcept;
    BOOL IsEmpty() const noexcept { return GetLength() == 0; }
    /// Makes the string empty, and frees its buffer.
    void Empty() noexcept;
    /// \p nIndex from 0 to the length: there the terminator is.
    char GetAt(int nIndex) const { return m_pchData[nIndex]; }
    char operator[](int nIndex) const { return m_pchData[nIndex]; }
    /// \p nIndex from 0 to the length, without that.
    void SetAt(int nIndex, char ch);
    operator LPCSTR() const noexcept { return m_pchData; }
    LPCSTR GetString() const noexcept { return m_pchData; }

    CString& operator+=(const CString& string);
    CString& operator+=(LPCSTR lpsz);
    CString& operator+=(char ch);
    void Append(LPCSTR lpsz) { *this += lpsz; }
    void Append(LPCSTR lpch, int nLength);
    void AppendChar(char ch) { *this += ch; }
    friend AFX_API CString AFXAPI operator+(const CString& string1, const CString& string2);
    friend AFX_API CString AFXAPI operator+(const CString& string, LPCSTR lpsz);
    friend AFX_API CString AFXAPI operator+(LPCSTR lpsz, const CString& string);
    friend AFX_API CString AFXAPI operator+(const CString& string, char ch);
    friend AFX_API CString AFXAPI operator+(char ch, const CString& string);

    int Compare(LPCSTR lpsz) const;       ///< byte values of whole characters; less than 0, 0, or more
    int CompareNoCase(LPCSTR lpsz) const; ///< the same, case ignored
    int Collate(LPCSTR lpsz) const;       ///< by the user's locale
    int CollateNoCase(LPCSTR lpsz) const; ///< the same, case ignored

    CString Mid(int nFirst) const;
    CString Mid(int nFirst, int nCount) const;
    CString Left(int nCount) const;
    CString Right(int nCount) const;
    /// The text up to the first character that is not in the set, and up to the first one that is.
    CString SpanIncluding(LPCSTR lpszCharSet) const;
    CString SpanExcluding(LPCSTR lpszCharSet) const;

    /// Position of the first match at or after \p nStart; -1 when there is none, or \p nStart is outside the text. The
    /// empty text is found at \p nStart.
    int Find(char ch, int nStart = 0) const;
    int Find(LPCSTR lpszSub, int nStart = 0) const;
    int ReverseFind(char ch) const; ///< of the last match
    int FindOneOf(LPCSTR lpszCharSet) const;

    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();
    /// Remove blanks, tabs and line ends; or the character given, or those of a set.
    CString& Trim() { return TrimRight().TrimLeft(); }
    CString& Trim(char ch) { return TrimRight(ch).TrimLeft(ch); }
    CString& Trim(LPCSTR lpszCharSet) { return TrimRight(lpszCharSet).TrimLeft(lpszCharSet); }
    CString& TrimLeft();
    CString& TrimLeft(char ch);
    CString& TrimLeft(LPCSTR lpszCharSet);
    CString& TrimRight();
    CString& TrimRight(char ch);
    CString& TrimRight(LPCSTR lpszCharSet);
    /// Replaces every match; the empty text matches nothing. \return the number of replacements.
    int Replace(char chOld, char chNew);
    int Replace(LPCSTR lpszOld, LPCSTR lpszNew);
    /// Removes every \p ch. \return how many there were
    int Remove(char ch);
    /// Inserts before the byte at \p nIndex. \return the new length
    int Insert(int nIndex, char ch);
    int Insert(int nIndex, LPCSTR lpsz);
    /// \return the new length
    int Delete(int nIndex, int nCount = 1);
    void Truncate(int nNewLength);

    /// Formats as sprintf does. Pass a CString argument as (LPCSTR). The arguments may be parts of this string.
    void AFX_CDECL Format(LPCSTR lpszFormat, ...) __attribute__((format(printf, 2, 3)));
    void AFX_CDECL Format(UINT nFormatID, ...);
    void FormatV(LPCSTR lpszFormat, va_list argList);
    void AFX_CDECL AppendFormat(LPCSTR lpszFormat, ...) __attribute__((format(printf, 2, 3)));
    void AFX_CDECL AppendFormat(UINT nFormatID, ...);
    /// Formats as the system's messages: "%1" is the first argument, "%1!d!" the first as a number. Without memory it
    /// throws; what cannot be formatted leaves the string empty.
    void AFX_CDECL FormatMessage(LPCSTR lpszFormat, ...);
    void AFX_CDECL FormatMessage(UINT nFormatID, ...);

    /// Loads a string resource through the framework's resource chain. \return FALSE, leaving the string empty, when
    /// there is none.
    BOOL LoadString(UINT nID);
    /// The value of an environment variable. \return FALSE, leaving the string empty, when there is none
    BOOL GetEnvironmentVariable(LPCSTR lpszVar);
    /// Between the system's ANSI code page and its OEM code page, that of the console.
    void AnsiToOem();
    void OemToAnsi();

    /// A writable buffer of at least \p nMinBufLength characters and a terminator, the present text in it; follow with
    /// ReleaseBuffer. Until then the string is not to be copied.
    LPSTR GetBuffer(int nMinBufLength = 0);
    LPSTR GetBufferSetLength(int nNewLength);
    /// Ends direct access; a length of -1 takes the text up to its terminator.
    void ReleaseBuffer(int nNewLength = -1);
    /// Makes the buffer large enough for \p nLength characters.
    void Preallocate(int nLength);
    int GetAllocLength() const noexcept; ///< the characters that the buffer has room for
    /// Gives back what the buffer has beyond the text.
    void FreeExtra();

private:
    friend class CStringBlock;

    BOOL CanHold(int nLength) const noexcept;
    void SetLength(int nLength) noexcept;
    void Reallocate(int nCapacity);
    void Splice(int nIndex, int nCount, LPCSTR lpch, int nLength);

    LPSTR m_pchData; // behind a header with the reference count, the length and the capacity
};

/// Makes strings whose texts lie in one allocation, which is faster than one for each. They are as other strings; one
/// that is changed moves to a buffer of its own. The allocation is freed when neither this object nor any of the
/// strings or their copies needs it any longer.
///
/// This class is an addition to what the framework documents. Who builds with others, too, asks for the macro.
#define AFX_STRING_BLOCK
class AFX_API CStringBlock {
public:
    /// Has room for \p nStrings strings, together \p nLength characters long; neither is negative. Throws
    /// CMemoryException*.
    CStringBlock(int nStrings, int nLength);
    ~CStringBlock();
    CStringBlock(const CStringBlock&) = delete;
    CStringBlock& operator=(const CStringBlock&) = delete;

    /// A string with \p nLength characters from \p lpch. If there is no room left, it has a buffer of its own from the
    /// beginning, for which memory may be missing: throws CMemoryException* then.
    CString Make(LPCSTR lpch, int nLength);

private:
    void* m_pBlock;
    size_t m_nSize;
    size_t m_nUsed;
    LONG m_nStrings = 0;
};

// Of these the compiler makes all comparisons of a string with a string or a text, in either order.
// The same characters are the same bytes; only an order needs to know where characters begin.
inline bool operator==(const CString& s1, LPCSTR s2) { return std::strcmp(s1, s2 != nullptr ? s2 : "") == 0; }
inline bool operator==(const CString& s1, const CString& s2) { return s1 == static_cast<LPCSTR>(s2); }
inline std::strong_ordering operator<=>(const CString& s1, const CString& s2) { return s1.Compare(s2) <=> 0; }
inline std::strong_ordering operator<=>(const CString& s1, LPCSTR s2) { return s1.Compare(s2) <=> 0; }

/// Loads a string resource found through the resource chain. \param nMaxBuf size of \p lpszBuf in characters.
/// \return the number of characters copied, 0 when there is no such string.
AFX_API int AFXAPI AfxLoadString(UINT nID, LPSTR lpszBuf, UINT nMaxBuf = 256);
