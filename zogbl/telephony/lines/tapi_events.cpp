// What the service tells, and answering.
#include <zogbl/tapi_interface.h>

#include <common/double_byte.h>
#include <common/without_throwing.h>

#include "tapi_binding.h"
#include "tapi_records.h"
#include "tapi_state.h"

#include <algorithm>

namespace {

// What an open line is to tell of: every state but the closing of devices and changes of the dialing rules, and every
// state of addresses.
constexpr DWORD kLineStates = 0x00BFFBFF;
constexpr DWORD kAddressStates = 0x000001FF;

constexpr char kBlocked[] = "**BLOCKED**";
constexpr size_t kCallerTextSize = 260;

constexpr struct {
    DWORD mode;
    const char* text;
} kDisconnectTexts[] = {
    {LINEDISCONNECTMODE_NORMAL, "Remote Party Disconnected"},
    {LINEDISCONNECTMODE_UNKNOWN, "Disconnected: Unknown reason"},
    {LINEDISCONNECTMODE_REJECT, "Remote Party rejected call"},
    {LINEDISCONNECTMODE_PICKUP, "Disconnected: Local phone picked up"},
    {LINEDISCONNECTMODE_FORWARDED, "Disconnected: Forwarded"},
    {LINEDISCONNECTMODE_BUSY, "Disconnected: Busy"},
    {LINEDISCONNECTMODE_NOANSWER, "Disconnected: No Answer"},
    {LINEDISCONNECTMODE_BADADDRESS, "Disconnected: Bad Address"},
    {LINEDISCONNECTMODE_UNREACHABLE, "Disconnected: Unreachable"},
    {LINEDISCONNECTMODE_CONGESTION, "Disconnected: Congestion"},
    {LINEDISCONNECTMODE_INCOMPATIBLE, "Disconnected: Incompatible"},
    {LINEDISCONNECTMODE_UNAVAIL, "Disconnected: Unavail"},
    {LINEDISCONNECTMODE_NODIALTONE, "Disconnected: No Dial Tone"},
};

const char* DisconnectText(DWORD mode)
{
    const auto* entry = std::find_if(std::begin(kDisconnectTexts), std::end(kDisconnectTexts),
                                     [mode](const auto& candidate) { return candidate.mode == mode; });
    return entry != std::end(kDisconnectTexts) ? entry->text : "Disconnected: LINECALLSTATE; Bad Reason";
}

/// A text of the caller's identity, cut to what a buffer of kCallerTextSize holds.
CString CallerText(const LINECALLINFO& info, DWORD size, DWORD offset)
{
    const RecordPart part = GetRecordPart(info, offsetof(LINECALLINFO, dwCallTreatment), size, offset);
    size_t length = 0;
    for (size_t width; length < part.TextLength(); length += width) {
        width = CharacterWidth(part.bytes + length, part.TextLength() - length);
        if (length + width > (std::min)(part.TextLength(), kCallerTextSize - 1))
            break;
    }
    return CString(part.bytes, static_cast<int>(length));
}

} // namespace

// Answering

BOOL CZoTAPIInterface::EnableCallAnswer(BOOL bEnable)
{
    OutputDebugStringA(">EnableCallAnswer\n");
    if (m_hLineApp == 0 && !InitializeTAPI(nullptr)) {
        OutputDebugStringA(">EnableCallAnswer InitializeTAPI failed\n");
        return FALSE;
    }
    if (m_dwNumDevs < 1 && !HandleNoDevicesInstalled()) {
        OutputDebugStringA(">EnableCallAnswer Nodevices installed\n");
        return FALSE;
    }
    if (!bEnable) {
        OutputDebugStringA(">EnableCallAnswer DISABLING!\n");
        return CloseAnswerLine();
    }
    OutputDebugStringA(">EnableCallAnswer ENABLING!\n");
    m_dwAPIVersion = ZolineNegotiateAPIVersion(m_dwDeviceID);
    if (m_dwAPIVersion == 0) {
        OutputDebugStringA(">EnableCallAnswer ZOTAPI_ERROR_UNSUPPORTEDLINEVERSION\n");
        return RecordError(ZOTAPI_ERROR_UNSUPPORTEDLINEVERSION);
    }
    const LocalPointer<LINEDEVCAPS> caps(ZolineGetDevCaps(nullptr, m_dwDeviceID, m_dwAPIVersion));
    if (caps == nullptr) {
        OutputDebugStringA(">EnableCallAnswer lpLineDevCaps == NULL\n");
        return FALSE;
    }
    if ((caps->dwBearerModes & LINEBEARERMODE_VOICE) == 0) {
        OutputDebugStringA(">EnableCallAnswer NOVOICE == NULL\n");
        return RecordError(ZOTAPI_ERROR_NOVOICE);
    }
    if ((caps->dwMediaModes & m_dwMediaModes) == 0) {
        OutputDebugStringA(">EnableCallAnswer NOMODEM\n");
        return RecordError(ZOTAPI_ERROR_NOMODEM);
    }
    CloseAnswerLine(); // or its handle would be lost
    return OpenAnswerLine();
}

BOOL CZoTAPIInterface::CloseAnswerLine()
{
    if (m_hAnswerLine == 0)
        return TRUE;
    BOOL accepted = FALSE;
    LONG result;
    do {
        result = tapi::lineClose(m_hAnswerLine);
        if (!HandleLineErr(result))
            break;
        accepted = TRUE;
    } while (result != 0);
    m_hAnswerLine = 0;
    OutputDebugStringA("Line Closed.\n");
    return accepted;
}

BOOL CZoTAPIInterface::OpenAnswerLine()
{
    BOOL accepted = FALSE;
    LONG result;
    do {
        result = tapi::lineOpen(m_hLineApp, m_dwDeviceID, &m_hAnswerLine, m_dwAPIVersion, 0,
                                reinterpret_cast<DWORD_PTR>(this), LINECALLPRIVILEGE_OWNER, m_dwMediaModes, nullptr);
        if (result == static_cast<LONG>(LINEERR_ALLOCATED)) {
            OutputDebugStringA(">EnableCallAnswer LINEERR_ALLOCATED\n");
            RecordError(ZOTAPI_ERROR_ALLOCATED);
            return accepted;
        }
        const bool nothingWritten = result == 0 && m_hAnswerLine == 0;
        if (nothingWritten || !HandleLineErr(result)) {
            OutputDebugStringA(">EnableCallAnswer lineopen failed!\n");
            HangupCall();
            RecordError(ZOTAPI_ERROR_ANSWERLINEOPEN, MB_ICONINFORMATION);
            return accepted;
        }
        accepted = TRUE;
    } while (result != 0);
    if (!SetStatusMessages(m_hAnswerLine))
        OutputDebugStringA(">EnableCallAnswer unhandled problem!\n");
    return TRUE;
}

/// Asks a line to tell of its states. \return FALSE when it refuses.
BOOL CZoTAPIInterface::SetStatusMessages(HLINE line)
{
    for (;;) {
        const LONG result = tapi::lineSetStatusMessages(line, kLineStates, kAddressStates);
        if (!HandleLineErr(result))
            return FALSE;
        if (result == 0)
            return TRUE;
    }
}

void CZoTAPIInterface::RetrieveCallerIDInfo()
{
    if (!WithoutThrowing<CMemoryException>([this] { ReadCallerID(); })) {
        m_strCallerID.Empty();
        m_strCallerName.Empty();
        HandleNoMem();
    }
}

void CZoTAPIInterface::ReadCallerID()
{
    m_strCallerID.Empty();
    m_strCallerName.Empty();
    const LocalPointer<LINECALLINFO> info(ZolineGetCallInfo(nullptr, m_hCall));
    if (info == nullptr)
        return;
    const DWORD flags = info->dwCallerIDFlags;
    if ((flags & (LINECALLPARTYID_ADDRESS | LINECALLPARTYID_PARTIAL)) != 0)
        m_strCallerID = CallerText(*info, info->dwCallerIDSize, info->dwCallerIDOffset);
    if ((flags & LINECALLPARTYID_NAME) != 0)
        m_strCallerName = CallerText(*info, info->dwCallerIDNameSize, info->dwCallerIDNameOffset);
    if ((flags & LINECALLPARTYID_BLOCKED) != 0) { // whatever was delivered besides
        m_strCallerID = kBlocked;
        m_strCallerName = kBlocked;
    }
}

// The callback

void CALLBACK CZoTAPIInterface::lineCallbackFunc(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance,
                                                 DWORD_PTR dwParam1, DWORD_PTR dwParam2, DWORD_PTR dwParam3)
{
    try {
        if (dwCallbackInstance != 0) {
            reinterpret_cast<CZoTAPIInterface*>(dwCallbackInstance)
                ->Dispatch(hDevice, dwMsg, dwCallbackInstance, dwParam1, dwParam2, dwParam3);
            return;
        }
        if (dwMsg != LINE_LINEDEVSTATE && dwMsg != LINE_CREATE) {
            OutputDebugStringA("lineCallbackFunc message ignored\n");
            return;
        }
        const CPtrArray& interfaces = GetTapiState().m_interfaces; // which objects may leave meanwhile
        for (INT_PTR i = interfaces.GetSize(); i-- > 0;) {
            if (i < interfaces.GetSize())
                static_cast<CZoTAPIInterface*>(interfaces.GetAt(i))
                    ->Dispatch(hDevice, dwMsg, dwCallbackInstance, dwParam1, dwParam2, dwParam3);
        }
    } catch (CException* e) {
        e->Delete();
    } catch (...) {
        // A derived class's; the service could not do anything with it.
        OutputDebugStringA("lineCallbackFunc: an event handler has thrown an exception\n");
    }
}

void CZoTAPIInterface::Dispatch(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                                DWORD_PTR dwParam2, DWORD_PTR dwParam3)
{
    switch (dwMsg) {
    case LINE_CALLINFO:
        DoLineCallInfo(hDevice, dwMsg, dwCallbackInstance, dwParam1, dwParam2, dwParam3);
        break;
    case LINE_CALLSTATE:
        DoLineCallState(hDevice, dwMsg, dwCallbackInstance, dwParam1, dwParam2, dwParam3);
        break;
    case LINE_CLOSE:
        DoLineClose(hDevice, dwMsg, dwCallbackInstance, dwParam1, dwParam2, dwParam3);
        break;
    case LINE_LINEDEVSTATE:
        DoLineDevState(hDevice, dwMsg, dwCallbackInstance, dwParam1, dwParam2, dwParam3);
        break;
    case LINE_REPLY:
        DoLineReply(hDevice, dwMsg, dwCallbackInstance, dwParam1, dwParam2, dwParam3);
        break;
    case LINE_CREATE:
        DoLineCreate(hDevice, dwMsg, dwCallbackInstance, dwParam1, dwParam2, dwParam3);
        break;
    default:
        OutputDebugStringA("lineCallbackFunc message ignored\n");
    }
}

// Events

void CZoTAPIInterface::DoLineReply(DWORD, DWORD, DWORD_PTR, DWORD_PTR dwParam1, DWORD_PTR dwParam2, DWORD_PTR)
{
    const auto request = static_cast<LONG>(dwParam1);
    const auto result = static_cast<LONG>(dwParam2);
    if (result == 0)
        OutputDebugStringA("LINE_REPLY: successfully replied.\n");
    if (request == m_lRequestID) {
        m_bReplyReceived = TRUE;
        m_lReplyResult = result;
    } else {
        GetTapiState().m_earlyReply = {this, request, result};
    }
}

void CZoTAPIInterface::DoLineClose(DWORD, DWORD, DWORD_PTR, DWORD_PTR, DWORD_PTR, DWORD_PTR)
{
    if (m_hLine != 0)
        m_hLine = 0;
    else
        m_hAnswerLine = 0;
    m_hCall = 0;
    RecordError(ZOTAPI_ERROR_LINECLOSED, MB_ICONWARNING);
    HangupCall(); // finds no line, so the call stays in progress until ShutdownTAPI: callers tell the two apart by that
}

void CZoTAPIInterface::DoLineCreate(DWORD, DWORD, DWORD_PTR, DWORD_PTR dwParam1, DWORD_PTR, DWORD_PTR)
{
    if (m_dwNumDevs <= dwParam1)
        m_dwNumDevs = static_cast<DWORD>(dwParam1) + 1;
}

void CZoTAPIInterface::DoLineCallInfo(DWORD hDevice, DWORD, DWORD_PTR, DWORD_PTR dwParam1, DWORD_PTR, DWORD_PTR)
{
    if (m_hLine != 0 || m_hAnswerLine == 0 || m_hCall == 0 || hDevice != m_hCall ||
        (dwParam1 & LINECALLINFOSTATE_CALLERID) == 0)
        return;
    OutputDebugStringA("\n\nCallerID info changed!\n\n");
    RetrieveCallerIDInfo();
}

void CZoTAPIInterface::DoLineDevState(DWORD hDevice, DWORD, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                                      DWORD_PTR dwParam2, DWORD_PTR dwParam3)
{
    switch (dwParam1) {
    case LINEDEVSTATE_RINGING:
        OutputDebugStringA("Line Ringing.\n");
        break;
    case LINEDEVSTATE_DISCONNECTED:
    case LINEDEVSTATE_OUTOFSERVICE:
    case LINEDEVSTATE_MAINTENANCE:
        HangupCall();
        break;
    case LINEDEVSTATE_REINIT: // of the service; a soft one stands for the event that it names
        if (dwParam2 == 0) {
            ShutdownTAPI();
        } else if (dwParam2 == LINE_LINEDEVSTATE) {
            OutputDebugStringA("Soft REINIT: LINE_LINEDEVSTATE.\n");
            DoLineDevState(hDevice, LINE_LINEDEVSTATE, dwCallbackInstance, dwParam3, 0, 0);
        } else if (dwParam2 == LINE_CREATE) {
            OutputDebugStringA("Soft REINIT: LINE_CREATE.\n");
            DoLineCreate(hDevice, LINE_CREATE, dwCallbackInstance, dwParam3, 0, 0);
        } else {
            OutputDebugStringA("Ignoring soft REINIT\n");
        }
        break;
    case LINEDEVSTATE_TRANSLATECHANGE:
        break;
    case LINEDEVSTATE_REMOVED:
        OutputDebugStringA("A Line device has been removed; no action taken.\n");
        break;
    default:
        OutputDebugStringA("Unhandled LINEDEVSTATE message\n");
    }
}

void CZoTAPIInterface::DoLineCallState(DWORD hDevice, DWORD, DWORD_PTR, DWORD_PTR dwParam1, DWORD_PTR dwParam2,
                                       DWORD_PTR dwParam3)
{
    m_dwCallState = static_cast<DWORD>(dwParam1);
    m_bCallStateChanged = TRUE;
    switch (dwParam3) {
    case 0:
        break;
    case LINECALLPRIVILEGE_MONITOR:
        OutputDebugStringA("line given monitor privilege; closing\n");
        return;
    case LINECALLPRIVILEGE_OWNER:
        OutputDebugStringA("line given owner privilege, storing call handle\n");
        m_hCall = hDevice;
        break;
    default:
        OutputDebugStringA("Unknown LINECALLPRIVILEGE message: closing\n");
        return;
    }
    switch (dwParam1) {
    case LINECALLSTATE_IDLE:
        OutputDebugStringA("Line idle\n");
        HangupCall();
        break;
    case LINECALLSTATE_DIALTONE:
        OutputDebugStringA("Dial Tone\n");
        break;
    case LINECALLSTATE_DIALING:
        OutputDebugStringA("Dialing\n");
        break;
    case LINECALLSTATE_RINGBACK:
        OutputDebugStringA("RingBack\n");
        break;
    case LINECALLSTATE_BUSY:
        OutputDebugStringA("Line busy, shutting down\n");
        HangupCall();
        break;
    case LINECALLSTATE_SPECIALINFO:
        OutputDebugStringA("Special Info, probably couldn't dial number\n");
        HangupCall();
        break;
    case LINECALLSTATE_PROCEEDING:
        OutputDebugStringA("Proceeding\n");
        break;
    case LINECALLSTATE_CONNECTED:
        OutputDebugStringA("\n\nConnected!\n\n");
        OnConnected();
        break;
    case LINECALLSTATE_DISCONNECTED:
        OutputDebugStringA(DisconnectText(static_cast<DWORD>(dwParam2)));
        OutputDebugStringA("\n");
        HangupCall();
        break;
    default: // offering, accepted, on hold ...
        OutputDebugStringA("Unhandled LINECALLSTATE message\n");
    }
}

void CZoTAPIInterface::OnConnected()
{
    if (m_bConnected) {
        OutputDebugStringA("Already Connected!\n");
        return;
    }
    m_bConnected = TRUE;
    const LocalPointer<VARSTRING> id(GetPortHandle());
    if (id == nullptr)
        return;
    const RecordPart part = GetString(*id);
    HANDLE port = nullptr;
    if (part.size < sizeof port)
        return;
    std::memcpy(&port, part.bytes, sizeof port);
    if (port == nullptr)
        return;
    OutputDebugStringA("Connected!  Starting communications!\n");
    m_hComm = port;
    OutputDebugStringA("\nJust set m_hComm.\n");
    if (GetFileType(m_hComm) != FILE_TYPE_CHAR)
        OutputDebugStringA("File handle is not a comm handle.\n"); // callers may know better, so it is kept
}
