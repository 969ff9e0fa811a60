#include "trace_page.h"

#include "workbench_ids.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr char kTraceName[] = "Workbench";
constexpr UINT kRefresh = 500; // milliseconds
constexpr int kMostShown = 24 * 1024;
constexpr int kMargin = 8;
constexpr int kListHeight = 120; // of the level's list when it is open

enum ControlId : UINT {
    kLevelId = ZO_IDC_TRACE_PAGE_LEVEL,
    kPauseId = ZO_IDC_TRACE_PAGE_PAUSE,
    kStampsId = ZO_IDC_TRACE_PAGE_STAMPS,
    kWriteLineId = ZO_IDC_TRACE_PAGE_WRITE_LINE,
    kWriteBlockId = ZO_IDC_TRACE_PAGE_WRITE_BLOCK,
    kFlushId = ZO_IDC_TRACE_PAGE_FLUSH,
    kViewId = ZO_IDC_TRACE_PAGE_VIEW
};

/// The levels that the list offers. A level in between, set elsewhere, shows as the one below.
constexpr struct {
    WORD level;
    UINT text;
} kLevels[] = {
    {0, ZO_IDS_TRACE_LEVEL_OFF},
    {1, ZO_IDS_TRACE_LEVEL_ON},
    {CZoTrace::kImmediateLevel, ZO_IDS_TRACE_LEVEL_IMMEDIATE},
};

/// The last lines of a file that others write to.
CString ReadEnd(CFile& file, ULONGLONG length)
{
    const int count = static_cast<int>((std::min<ULONGLONG>)(length, kMostShown));
    CString text;
    file.Seek(-static_cast<LONGLONG>(count), CFile::end);
    const UINT read = file.Read(text.GetBuffer(count), static_cast<UINT>(count));
    text.ReleaseBuffer(static_cast<int>(read));
    return length > static_cast<ULONGLONG>(count) ? text.Mid(text.Find('\n') + 1) : text;
}

} // namespace

BEGIN_MESSAGE_MAP(TracePage, Page)
    ON_WM_TIMER()
    ON_CBN_SELCHANGE(kLevelId, OnLevel)
    ON_BN_CLICKED(kPauseId, OnPause)
    ON_BN_CLICKED(kStampsId, OnStamps)
    ON_BN_CLICKED(kWriteLineId, OnWriteLine)
    ON_BN_CLICKED(kWriteBlockId, OnWriteBlock)
    ON_BN_CLICKED(kFlushId, OnFlush)
END_MESSAGE_MAP()

UINT TracePage::GetTitleId() const { return ZO_IDS_PAGE_TRACE; }
UINT TracePage::GetCommandId() const { return ZO_ID_VIEW_TRACE; }

void TracePage::CreateControls()
{
    const CRect nowhere;
    constexpr DWORD button = WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON;
    constexpr DWORD checkBox = WS_VISIBLE | WS_TABSTOP | BS_AUTOCHECKBOX;
    m_levelLabel.Create("", WS_VISIBLE | SS_LEFT | SS_NOPREFIX, nowhere, this);
    m_level.Create(WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, nowhere, this, kLevelId);
    m_pause.Create("", checkBox, nowhere, this, kPauseId);
    m_stamps.Create("", checkBox, nowhere, this, kStampsId);
    m_writeLine.Create("", button, nowhere, this, kWriteLineId);
    m_writeBlock.Create("", button, nowhere, this, kWriteBlockId);
    m_flush.Create("", button, nowhere, this, kFlushId);
    m_view.Create(this, kViewId);
    m_state.Create("", WS_VISIBLE | SS_LEFT | SS_NOPREFIX, nowhere, this);
    m_stamps.SetCheck(BST_CHECKED);
    SetTimer(1, kRefresh);
    OpenTrace(CZoTrace::GetRegTraceLevel());
}

void TracePage::Reload()
{
    const std::pair<CWnd*, UINT> texts[] = {
        {&m_levelLabel, ZO_IDS_TRACE_LEVEL},       {&m_pause, ZO_IDS_TRACE_PAUSE},
        {&m_stamps, ZO_IDS_TRACE_STAMPS},          {&m_writeLine, ZO_IDS_TRACE_WRITE_LINE},
        {&m_writeBlock, ZO_IDS_TRACE_WRITE_BLOCK}, {&m_flush, ZO_IDS_TRACE_FLUSH}};
    for (const auto& [control, text] : texts)
        control->SetWindowText(Text(text));
    m_level.ResetContent();
    for (const auto& entry : kLevels)
        m_level.AddString(Text(entry.text));
    Refresh();
    LayOutAgain();
}

void TracePage::Layout(int width, int height)
{
    const int line = LineHeight();
    const int row = line + 10;
    int left = kMargin;
    const auto place = [&](CWnd& control, int controlWidth, int top, int controlHeight) {
        control.MoveWindow(left, top, controlWidth, controlHeight);
        left += controlWidth + kMargin;
    };
    const auto widthOf = [](CWnd& control) {
        CString text;
        control.GetWindowText(text);
        return TextWidth(text);
    };
    int levelWidth = 0;
    for (const auto& entry : kLevels)
        levelWidth = (std::max)(levelWidth, TextWidth(Text(entry.text)));

    int top = kMargin;
    place(m_levelLabel, widthOf(m_levelLabel), top + (row - line) / 2, line);
    place(m_level, levelWidth + 32, top + 1, kListHeight);
    place(m_pause, widthOf(m_pause) + 24, top, row);
    place(m_stamps, widthOf(m_stamps) + 24, top, row);

    top += row + kMargin;
    left = kMargin;
    for (CButton* button : {&m_writeLine, &m_writeBlock, &m_flush})
        place(*button, (std::max)(widthOf(*button) + 24, 90), top, row);

    top += row + kMargin;
    const int bottom = height - line - kMargin;
    m_view.MoveWindow(kMargin, top, width - 2 * kMargin, bottom - kMargin / 2 - top);
    m_state.MoveWindow(kMargin, bottom, width - 2 * kMargin, line);
}

// The trace -----------------------------------------------------------------------------------------------------------

void TracePage::OpenTrace(WORD level)
{
    if (level > 0 && m_trace.Open(kTraceName, level, TRUE))
        m_trace.Output("process %lu: hello\r\n", ::GetCurrentProcessId());
}

void TracePage::ChangeLevel(WORD previous, WORD level)
{
    m_trace.Output("process %lu: level %d -> %d\r\n", ::GetCurrentProcessId(), previous, level);
    if (level == 0)
        m_trace.Close();
    else if (m_trace.GetFileName().IsEmpty())
        OpenTrace(level);
    else
        m_trace.SetLevel(level);
    if (level > 0 && m_pause.GetCheck() == BST_CHECKED)
        m_trace.Pause();
    Refresh();
}

void TracePage::OnLevel()
{
    const int chosen = m_level.GetCurSel();
    if (chosen >= 0)
        CZoTrace::SetRegTraceLevel(kLevels[chosen].level); // comes back as a broadcast, here as in other processes
}

void TracePage::OnPause()
{
    if (m_pause.GetCheck() == BST_CHECKED)
        m_trace.Pause();
    else
        m_trace.Resume();
}

void TracePage::OnStamps() { m_trace.EnableTimeStamp(m_stamps.GetCheck() == BST_CHECKED); }

void TracePage::OnWriteLine()
{
    m_trace.Output("process %lu: line %d\r\n", ::GetCurrentProcessId(), ++m_linesWritten);
    ShowFile();
}

void TracePage::OnWriteBlock()
{
    SYSTEMTIME now;
    ::GetLocalTime(&now);
    m_trace.OutputBlock(&now, sizeof now);
    ShowFile();
}

void TracePage::OnFlush()
{
    m_trace.Flush();
    ShowFile();
}

// What is shown -------------------------------------------------------------------------------------------------------

void TracePage::OnTimer(UINT_PTR)
{
    if (IsWindowVisible())
        Refresh();
}

void TracePage::Refresh()
{
    const CString path = m_trace.GetFileName();
    const bool isOpen = !path.IsEmpty();
    CString state;
    if (isOpen)
        state.Format(Text(ZO_IDS_TRACE_STATE_OPEN), (LPCSTR)path, m_trace.GetLevel(), m_trace.GetOpenCount());
    else
        state = Text(CZoTrace::GetRegTraceLevel() == 0 ? ZO_IDS_TRACE_STATE_OFF : ZO_IDS_TRACE_STATE_FAILED);
    CString shown;
    m_state.GetWindowText(shown);
    if (shown != state)
        m_state.SetWindowText(state);

    int entry = 0;
    while (entry + 1 < static_cast<int>(std::size(kLevels)) && m_trace.GetLevel() >= kLevels[entry + 1].level)
        ++entry;
    if (!m_level.SendMessage(CB_GETDROPPEDSTATE) && m_level.GetCurSel() != entry)
        m_level.SetCurSel(entry);
    for (CWnd* control : {static_cast<CWnd*>(&m_writeLine), static_cast<CWnd*>(&m_writeBlock),
                          static_cast<CWnd*>(&m_flush), static_cast<CWnd*>(&m_pause)})
        control->EnableWindow(isOpen);
    ShowFile();
}

void TracePage::ShowFile()
{
    const CString path = m_trace.GetFileName();
    CFile file;
    if (path.IsEmpty() || !file.Open(path, CFile::modeRead | CFile::shareDenyNone))
        return; // what was there last stays readable
    try {
        const ULONGLONG length = file.GetLength();
        if (length != m_shownLength) {
            const CString end = ReadEnd(file, length);
            m_view.SetWindowText(end);
            m_view.SetSel(end.GetLength(), end.GetLength());
            m_shownLength = length;
        }
    } catch (CFileException* e) {
        e->Delete(); // the next time
    }
}
