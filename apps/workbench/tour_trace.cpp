// The tour's steps of the trace.
#include "tour_steps.h"

bool Tour::OpenTrace()
{
    CZoTrace::SetRegTraceLevel(CZoTrace::kImmediateLevel); // told to all windows, ours among them
    const bool opened = WaitUntil([this] { return !Trace().GetFileName().IsEmpty(); });
    return m_report.Step("trace", opened, Trace().GetFileName());
}

bool Tour::WriteTrace()
{
    Trace().Output("%s has %d pages\r\n", "the Workbench", MainFrame::GetPageCount());
    Trace().OutputBlock("ATZ\r\nOK\r\n", 9);
    const CString text = ReadTrace();
    const int at = text.Find("the Workbench has");
    CString line = at < 0 ? CString("(nothing)") : text.Mid(at);
    line.Replace("\r\n", " | ");
    return m_report.Step("trace", line.Find("A  T  Z  0D 0A O  K  0D 0A") > 0, line);
}

/// Starts another Workbench and changes the level here: it must arrive there, and be told in the file that both
/// share.
bool Tour::SecondProcess()
{
    Program second;
    if (!second.Start("ZoWorkbench.exe", "/quiet") || !WaitUntil([this] { return Trace().GetOpenCount() == 2; }))
        return m_report.Step("second process", false, "it did not join the trace");
    constexpr WORD kOtherLevel = CZoTrace::kImmediateLevel + 2;
    CZoTrace::SetRegTraceLevel(kOtherLevel);
    CString told;
    told.Format("process %lu: level %d -> %d", second.GetId(), CZoTrace::kImmediateLevel, kOtherLevel);
    const bool arrived = WaitUntil([&] { return ReadTrace().Find(told) >= 0; });
    if (!m_report.Step("second process", arrived, told))
        return false;
    second.AskToClose();
    const int code = second.WaitForEnd();
    CString result;
    result.Format("ended with %d, the trace is open %lu time", code, Trace().GetOpenCount());
    return m_report.Step("second process", code == 0 && Trace().GetOpenCount() == 1, result);
}

bool Tour::CloseTrace()
{
    m_tracePath = Trace().GetFileName();
    CZoTrace::SetRegTraceLevel(0);
    const bool closed = WaitUntil([this] { return Trace().GetFileName().IsEmpty(); });
    const CString text = ReadTrace();
    const int at = text.Find(" - Stopped ");
    return m_report.Step("trace", closed && at > 0,
                         at > 0 ? text.Mid(at + 3, text.Find("\r\n", at) - at - 3) : CString("still open"));
}

/// What the trace file holds of this start, as another program would read it.
CString Tour::ReadTrace()
{
    if (!Trace().GetFileName().IsEmpty())
        m_tracePath = Trace().GetFileName();
    CFile file(m_tracePath, CFile::modeRead | CFile::shareDenyNone);
    const int length = static_cast<int>(file.GetLength());
    CString text;
    file.Read(text.GetBuffer(length), static_cast<UINT>(length));
    text.ReleaseBuffer(length);
    int start = 0;
    for (int next = 0; (next = text.Find(" - Started ", next)) >= 0; ++next)
        start = next;
    return text.Mid(start);
}
