#include "line_page.h"

#include "workbench_ids.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

namespace {

constexpr UINT kPoll = 100;           // milliseconds between two looks at the port
constexpr DWORD kTransferTime = 5000; // milliseconds for bytes to go out
constexpr int kMostReceived = 256 * 1024;
constexpr int kMostShown = 4 * 1024; // wrapping long lines takes its time
constexpr int kMargin = 8;
constexpr int kListHeight = 120;

enum ControlId : UINT {
    kDevicesId = 100,
    kTakePortId,
    kHangUpId,
    kAnswerId,
    kTerminalId,
    kCommandId,
    kSendId,
    kLogId,
    kLightsId
};

CString StateName(DWORD_PTR state)
{
    static constexpr std::pair<DWORD, LPCSTR> names[] = {
        {LINECALLSTATE_IDLE, "IDLE"},         {LINECALLSTATE_OFFERING, "OFFERING"},
        {LINECALLSTATE_ACCEPTED, "ACCEPTED"}, {LINECALLSTATE_DIALTONE, "DIALTONE"},
        {LINECALLSTATE_DIALING, "DIALING"},   {LINECALLSTATE_PROCEEDING, "PROCEEDING"},
        {LINECALLSTATE_BUSY, "BUSY"},         {LINECALLSTATE_CONNECTED, "CONNECTED"},
        {LINECALLSTATE_ONHOLD, "ONHOLD"},     {LINECALLSTATE_DISCONNECTED, "DISCONNECTED"},
    };
    for (const auto& [value, name] : names) {
        if (value == state)
            return name;
    }
    CString number;
    number.Format("0x%lX", static_cast<unsigned long>(state));
    return number;
}

/// The name in a device's capabilities, which have it behind their fixed part.
CString NameOf(const LINEDEVCAPS& caps)
{
    constexpr DWORD kCapsSize = offsetof(LINEDEVCAPS, dwLineFeatures);
    const DWORD size = caps.dwLineNameSize;
    const DWORD offset = caps.dwLineNameOffset;
    const bool isText = caps.dwStringFormat == STRINGFORMAT_ASCII && size != 0 && offset >= kCapsSize &&
                        offset <= caps.dwUsedSize && size <= caps.dwUsedSize - offset;
    const char* text = isText ? reinterpret_cast<const char*>(&caps) + offset : "";
    const CString name(text, isText ? static_cast<int>(strnlen(text, size)) : 0);
    return name.IsEmpty() ? CString("Line Unnamed") : name;
}

} // namespace

// The line ------------------------------------------------------------------------------------------------------------

WorkbenchLine::WorkbenchLine(LinePage& page)
    : CZoTAPIInterface(nullptr, nullptr, LINEMEDIAMODE_DATAMODEM, FALSE), m_page(page)
{
}

void WorkbenchLine::ListDevices(CStringArray& names, CDWordArray& ids)
{
    if (m_hLineApp == 0 && !InitializeTAPI(nullptr))
        return;
    // EnumerateTAPIDeviceLines has the names alone, and to ask for the identifiers afterwards would show a device's
    // boxes once more.
    for (DWORD id = 0; id < m_dwNumDevs; ++id) {
        const DWORD version = ZolineNegotiateAPIVersion(id);
        LINEDEVCAPS* caps = version != 0 ? ZolineGetDevCaps(nullptr, id, version) : nullptr;
        if (caps == nullptr)
            continue;
        names.Add(NameOf(*caps));
        ids.Add(id);
        ::LocalFree(caps);
    }
}

void WorkbenchLine::DoLineCallState(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                                    DWORD_PTR dwParam2, DWORD_PTR dwParam3)
{
    m_page.Log(StateName(dwParam1));
    if (dwParam1 == LINECALLSTATE_DISCONNECTED || dwParam1 == LINECALLSTATE_IDLE)
        m_page.LeavePort();
    CZoTAPIInterface::DoLineCallState(hDevice, dwMsg, dwCallbackInstance, dwParam1, dwParam2, dwParam3);
}

void WorkbenchLine::DoLineCallInfo(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                                   DWORD_PTR dwParam2, DWORD_PTR dwParam3)
{
    CZoTAPIInterface::DoLineCallInfo(hDevice, dwMsg, dwCallbackInstance, dwParam1, dwParam2, dwParam3);
    if ((dwParam1 & LINECALLINFOSTATE_CALLERID) != 0)
        m_page.Log(m_strCallerID + ", " + m_strCallerName);
}

// The page ------------------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(LinePage, Page)
    ON_WM_TIMER()
    ON_WM_DESTROY()
    ON_CBN_SELCHANGE(kDevicesId, OnDevice)
    ON_BN_CLICKED(kTakePortId, OnTakePort)
    ON_BN_CLICKED(kHangUpId, OnHangUp)
    ON_BN_CLICKED(kAnswerId, OnAnswer)
    ON_BN_CLICKED(kSendId, OnSend)
END_MESSAGE_MAP()

LinePage::LinePage() : m_line(*this) {}

UINT LinePage::GetTitleId() const { return ZO_IDS_PAGE_LINES; }
UINT LinePage::GetCommandId() const { return ZO_ID_VIEW_LINES; }

void LinePage::CreateControls()
{
    const CRect nowhere;
    constexpr DWORD button = WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON;
    m_devices.Create(WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, nowhere, this, kDevicesId);
    m_takePort.Create("", button, nowhere, this, kTakePortId);
    m_hangUp.Create("", button, nowhere, this, kHangUpId);
    m_answer.Create("", WS_VISIBLE | WS_TABSTOP | BS_AUTOCHECKBOX, nowhere, this, kAnswerId);
    m_lights.Create(WS_VISIBLE, nowhere, this, kLightsId);
    m_terminal.Create(this, kTerminalId);
    m_command.Create(WS_VISIBLE | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL, nowhere, this, kCommandId);
    m_send.Create("", button, nowhere, this, kSendId);
    m_log.Create(this, kLogId);
    m_command.SetWindowText("ATZ");
    m_event = ::CreateEvent(nullptr, TRUE, FALSE, nullptr);
    m_line.m_hMainWnd = m_line.m_hDialogWnd = m_hWnd;
    SetTimer(1, kPoll);
}

void LinePage::OnDestroy()
{
    HangUp();
    m_line.EnableCallAnswer(FALSE);
    m_line.ShutdownTAPI();
    ::CloseHandle(std::exchange(m_event, nullptr));
    Page::OnDestroy();
}

void LinePage::Reload()
{
    const std::pair<CWnd*, UINT> texts[] = {{&m_takePort, ZO_IDS_LINE_TAKE_PORT},
                                            {&m_hangUp, ZO_IDS_LINE_HANG_UP},
                                            {&m_answer, ZO_IDS_LINE_ANSWER},
                                            {&m_send, ZO_IDS_LINE_SEND}};
    for (const auto& [control, text] : texts)
        control->SetWindowText(Text(text));
    EnableControls();
    LayOutAgain();
}

/// Lists the devices when the page is first shown: asking for them starts the telephony service.
void LinePage::Refresh()
{
    if (m_deviceIds.GetSize() == 0) {
        CStringArray names;
        m_line.ListDevices(names, m_deviceIds);
        m_devices.ResetContent();
        for (INT_PTR i = 0; i < names.GetSize(); ++i)
            m_devices.AddString(names[i]);
        m_devices.SetCurSel(0);
        OnDevice();
    }
    ShowState();
}

/// Shows what has come from the modem, and what can be done now.
void LinePage::ShowState()
{
    if (!m_unshown.IsEmpty())
        AppendTo(m_terminal, m_unshown);
    m_unshown.Empty();
    EnableControls();
}

void LinePage::Layout(int width, int height)
{
    const int line = LineHeight();
    const int row = line + 10;
    const auto widthOf = [](CWnd& control) {
        CString text;
        control.GetWindowText(text);
        return (std::max)(TextWidth(text) + 24, 80);
    };
    int left = kMargin;
    int top = kMargin;
    m_devices.MoveWindow(left, top + 1, 200, kListHeight);
    left += 200 + kMargin;
    for (CButton* button : {&m_takePort, &m_hangUp, &m_answer}) {
        button->MoveWindow(left, top, widthOf(*button), row);
        left += widthOf(*button) + kMargin;
    }
    const CSize lights = m_lights.GetBestSize();
    const bool isBeside = left + lights.cx + kMargin <= width;
    top += row + kMargin;
    m_lights.MoveWindow(isBeside ? width - kMargin - lights.cx : kMargin, isBeside ? kMargin / 2 : top, lights.cx,
                        lights.cy);
    top = isBeside ? (std::max)(top, kMargin + static_cast<int>(lights.cy)) : top + lights.cy + kMargin;
    const int logHeight = (std::max)(height / 4, 3 * line);
    const int sendTop = height - logHeight - row - 2 * kMargin;
    m_terminal.MoveWindow(kMargin, top, width - 2 * kMargin, sendTop - kMargin - top);
    const int sendWidth = widthOf(m_send);
    m_command.MoveWindow(kMargin, sendTop, width - 3 * kMargin - sendWidth, row);
    m_send.MoveWindow(width - kMargin - sendWidth, sendTop, sendWidth, row);
    m_log.MoveWindow(kMargin, height - logHeight - kMargin, width - 2 * kMargin, logHeight);
}

void LinePage::EnableControls()
{
    const bool hasPort = m_line.m_hComm != INVALID_HANDLE_VALUE;
    const bool hasDevice = m_deviceIds.GetSize() > 0;
    m_devices.EnableWindow(!hasPort && !m_isBusy);
    m_takePort.EnableWindow(hasDevice && !hasPort && !m_isBusy);
    m_answer.EnableWindow(hasDevice && !m_isBusy);
    m_answer.SetCheck(m_line.m_hAnswerLine != 0 ? BST_CHECKED : BST_UNCHECKED);
    m_hangUp.EnableWindow(hasPort);
    m_send.EnableWindow(hasPort);
    m_command.EnableWindow(hasPort);
    ShowLights();
}

/// Lets the lights follow the port, once for each. A port that has no lines, as a simulated one, is let go again.
void LinePage::ShowLights()
{
    const HANDLE port = m_line.m_hComm;
    if (port == m_lit)
        return;
    m_lit = port;
    const bool hasPort = port != INVALID_HANDLE_VALUE;
    for (const auto light : {CZoModemLights::kOH, CZoModemLights::kTR, CZoModemLights::kRTS})
        m_lights.SetLight(light, hasPort); // a call without a number: the modem is off the hook, the port is ready
    if (hasPort)
        m_lights.Attach(port);
    else
        m_lights.Detach();
}

void LinePage::AppendTo(CEdit& view, const CString& text)
{
    CString shown;
    view.GetWindowText(shown);
    shown = (shown + text).Right(kMostShown);
    view.SetWindowText(shown);
    view.SetSel(shown.GetLength(), shown.GetLength());
}

void LinePage::Log(const CString& text)
{
    const CString line = text + "\n";
    m_debugTexts.Add(line, static_cast<size_t>(line.GetLength()));
}

/// Brings the debug texts into lines; blank ones, which set texts apart in a debugger's window, are left out.
void LinePage::TakeDebugTexts()
{
    const CString texts = m_debugTexts.Take();
    CString lines;
    for (int start = 0; start < texts.GetLength();) {
        int end = texts.Find('\n', start);
        if (end < 0)
            end = texts.GetLength();
        if (end > start)
            lines += texts.Mid(start, end - start) + "\r\n";
        start = end + 1;
    }
    if (lines.IsEmpty())
        return;
    m_logged = (m_logged + lines).Right(kMostShown);
    AppendTo(m_log, lines);
}

// The call ------------------------------------------------------------------------------------------------------------

void LinePage::OnDevice()
{
    const int chosen = m_devices.GetCurSel();
    if (chosen >= 0)
        m_line.SetTAPILineDeviceID(m_deviceIds[chosen]);
}

BOOL LinePage::TakePort()
{
    m_isBusy = true; // the wait lets messages through, clicks among them
    EnableControls();
    const BOOL taken = m_line.GrabThePort() && PreparePort();
    m_isBusy = false;
    EndFailedCall();
    EnableControls();
    return taken;
}

void LinePage::HangUp()
{
    LeavePort();
    m_line.HangupCall();
    EndFailedCall();
    EnableControls();
}

/// A line that was refused, or that the service has closed, leaves its call in progress, and no port could be taken
/// until the interface has left the service. Calls that come in are watched for as before.
void LinePage::EndFailedCall()
{
    if (m_isBusy || m_line.m_bHangingUp || !m_line.m_bCallInProgress || m_line.m_hLine != 0)
        return;
    const bool answering = m_line.m_hAnswerLine != 0;
    m_line.ShutdownTAPI();
    if (answering)
        Answer(TRUE);
}

BOOL LinePage::Answer(BOOL enable)
{
    const BOOL done = m_line.EnableCallAnswer(enable);
    EnableControls();
    return done;
}

void LinePage::OnTakePort() { TakePort(); }
void LinePage::OnHangUp() { HangUp(); }
void LinePage::OnAnswer() { Answer(m_answer.GetCheck() == BST_CHECKED); }

void LinePage::OnSend()
{
    CString command;
    m_command.GetWindowText(command);
    Send(command + "\r");
    m_command.SetFocus();
    m_command.SetSel(0, -1);
}

// The port ------------------------------------------------------------------------------------------------------------

/// Eight bits without parity; a write takes a bounded time.
BOOL LinePage::PreparePort()
{
    DCB dcb = {};
    dcb.DCBlength = sizeof dcb;
    if (!::GetCommState(m_line.m_hComm, &dcb))
        return FALSE;
    dcb.BaudRate = CBR_57600;
    dcb.ByteSize = 8;
    dcb.Parity = NOPARITY;
    dcb.StopBits = ONESTOPBIT;
    dcb.fBinary = TRUE;
    COMMTIMEOUTS timeouts = {};
    timeouts.WriteTotalTimeoutConstant = kTransferTime;
    return ::SetCommState(m_line.m_hComm, &dcb) && ::SetCommTimeouts(m_line.m_hComm, &timeouts);
}

BOOL LinePage::Transfer(bool write, char* bytes, DWORD size, DWORD& transferred)
{
    transferred = 0;
    const HANDLE port = m_line.m_hComm;
    if (port == INVALID_HANDLE_VALUE)
        return FALSE;
    OVERLAPPED overlapped = {};
    overlapped.hEvent = m_event;
    const BOOL started = write ? ::WriteFile(port, bytes, size, nullptr, &overlapped)
                               : ::ReadFile(port, bytes, size, nullptr, &overlapped);
    return (started || ::GetLastError() == ERROR_IO_PENDING) &&
           ::GetOverlappedResult(port, &overlapped, &transferred, TRUE);
}

BOOL LinePage::Send(const CString& bytes)
{
    CString copy(bytes);
    const int length = copy.GetLength();
    DWORD written = 0;
    m_lights.ReportSent();
    return Transfer(true, copy.GetBuffer(length), static_cast<DWORD>(length), written) &&
           written == static_cast<DWORD>(length);
}

int LinePage::Receive()
{
    // Only what is there already: a read of more would wait.
    char bytes[4096];
    DWORD errors = 0;
    COMSTAT state = {};
    if (m_line.m_hComm == INVALID_HANDLE_VALUE || !::ClearCommError(m_line.m_hComm, &errors, &state))
        return 0;
    const DWORD waiting = (std::min)(state.cbInQue, static_cast<DWORD>(sizeof bytes));
    DWORD read = 0;
    if (waiting == 0 || !Transfer(false, bytes, waiting, read) || read == 0)
        return 0;
    m_lights.ReportReceived();
    const CString text(bytes, static_cast<int>(read));
    m_received = (m_received + text).Right(kMostReceived);
    m_unshown = (m_unshown + text).Right(kMostShown);
    return static_cast<int>(read);
}

void LinePage::OnTimer(UINT_PTR)
{
    EndFailedCall();
    Receive();
    TakeDebugTexts();
    if (IsWindowVisible())
        ShowState();
}
