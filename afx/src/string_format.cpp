// Strings: what formats them and loads them.
#include <afxwin.h>

#include <cstdio>
#include <memory>
#include <utility>

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
    *this = std::move(result); // the arguments may be parts of what this string was
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

void AFX_CDECL CString::AppendFormat(LPCSTR lpszFormat, ...)
{
    CString addend;
    va_list args;
    va_start(args, lpszFormat);
    addend.FormatV(lpszFormat, args);
    va_end(args);
    *this += addend;
}

void AFX_CDECL CString::AppendFormat(UINT nFormatID, ...)
{
    CString format, addend;
    format.LoadString(nFormatID);
    va_list args;
    va_start(args, nFormatID);
    addend.FormatV(format, args);
    va_end(args);
    *this += addend;
}

namespace {

struct LocalFreeing {
    void operator()(char* memory) const { ::LocalFree(memory); }
};

/// A message of the system's kind, made of \p format.
CString MessageOf(LPCSTR format, va_list args)
{
    char* text = nullptr;
    const DWORD length =
        ::FormatMessageA(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER, format != nullptr ? format : "",
                         0, 0, reinterpret_cast<LPSTR>(&text), 0, &args);
    const std::unique_ptr<char, LocalFreeing> freeing(text);
    if (length == 0 && (::GetLastError() == ERROR_NOT_ENOUGH_MEMORY || ::GetLastError() == ERROR_OUTOFMEMORY))
        AfxThrowMemoryException();
    return {text, static_cast<int>(length)};
}

} // namespace

void AFX_CDECL CString::FormatMessage(LPCSTR lpszFormat, ...)
{
    va_list args;
    va_start(args, lpszFormat);
    *this = MessageOf(lpszFormat, args);
    va_end(args);
}

void AFX_CDECL CString::FormatMessage(UINT nFormatID, ...)
{
    CString format;
    format.LoadString(nFormatID);
    va_list args;
    va_start(args, nFormatID);
    *this = MessageOf(format, args);
    va_end(args);
}

BOOL CString::LoadString(UINT nID)
{
    char usual[256];
    int length = AfxLoadString(nID, usual, sizeof usual);
    if (length < static_cast<int>(sizeof usual) - 2) { // a text that was cut may be one byte short of the room
        SetString(usual, length);
        return length > 0;
    }
    CString text;
    for (int capacity = 2 * sizeof usual;; capacity *= 2) {
        length = AfxLoadString(nID, text.GetBuffer(capacity), static_cast<UINT>(capacity) + 1);
        text.ReleaseBuffer(length);
        if (length < capacity - 1)
            break;
    }
    text.FreeExtra();
    *this = std::move(text);
    return TRUE;
}

BOOL CString::GetEnvironmentVariable(LPCSTR lpszVar)
{
    CString value;
    DWORD length = ::GetEnvironmentVariableA(lpszVar, nullptr, 0);
    const BOOL isThere = length > 0;
    for (DWORD room = 0; length > room;) { // then it is what is needed, with the terminator
        room = length;
        length = ::GetEnvironmentVariableA(lpszVar, value.GetBuffer(static_cast<int>(room)), room);
    }
    value.ReleaseBuffer(static_cast<int>(length));
    *this = std::move(value);
    return isThere;
}

BOOL AFXAPI AfxExtractSubString(CString& rString, LPCSTR lpszFullString, int iSubString, char chSep)
{
    const CString all = lpszFullString; // which may be rString
    rString.Empty();
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
