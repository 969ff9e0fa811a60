#include "report.h"

#include <afxtempl.h>

namespace {

/// The text in UTF-8, which every other program reads the same.
CString ToUtf8(const CString& text)
{
    CArray<wchar_t> wide;
    wide.SetSize(text.GetLength() + 1);
    const int wideLength = ::MultiByteToWideChar(CP_ACP, 0, text, text.GetLength(), wide.GetData(), text.GetLength());
    CString utf8;
    const int capacity = 3 * wideLength;
    const int length = ::WideCharToMultiByte(CP_UTF8, 0, wide.GetData(), wideLength, utf8.GetBuffer(capacity), capacity,
                                             nullptr, nullptr);
    utf8.ReleaseBuffer(length);
    return utf8;
}

} // namespace

Report::Report(LPCSTR path) : m_file(path, CFile::modeCreate | CFile::modeWrite | CFile::shareDenyWrite) {}

bool Report::Step(LPCSTR step, bool succeeded, const CString& result)
{
    CString line;
    line.Format("%-8s%-18s%s", succeeded ? "ok" : "FAILED", step, (LPCSTR)result);
    Line(line);
    return succeeded;
}

void Report::Line(const CString& text)
{
    const CString line = ToUtf8(text + "\r\n");
    m_file.Write((LPCSTR)line, static_cast<UINT>(line.GetLength()));
    DWORD written = 0; // a program with windows has an output only if its parent gave it one
    ::WriteFile(::GetStdHandle(STD_OUTPUT_HANDLE), (LPCSTR)line, static_cast<DWORD>(line.GetLength()), &written,
                nullptr);
}
