#include "report.h"

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
    const CString line = text + "\r\n";
    m_file.Write((LPCSTR)line, static_cast<UINT>(line.GetLength()));
    DWORD written = 0; // a program with windows has an output only if its parent gave it one
    ::WriteFile(::GetStdHandle(STD_OUTPUT_HANDLE), (LPCSTR)line, static_cast<DWORD>(line.GetLength()), &written, nullptr);
}
