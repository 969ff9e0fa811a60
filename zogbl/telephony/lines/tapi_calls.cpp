// Calls that make a modem's port available.
#include <zogbl/tapi_interface.h>

#include "tapi_binding.h"
#include "tapi_records.h"
#include "tapi_state.h"

#include <algorithm>
#include <utility>

namespace {

constexpr DWORD kCallStateTimeout = 30000; // milliseconds

// The fixed part of call parameters of version 1.x; the header's structure goes on with the fields of later ones.
constexpr DWORD kCallParamsSize = offsetof(LINECALLPARAMS, dwDevSpecificOffset) + sizeof(DWORD);
static_assert(kCallParamsSize == 112);

} // namespace

// Waiting

HLINE CZoTAPIInterface::LineInUse() const { return m_hLine != 0 ? m_hLine : m_hAnswerLine; }

/// Whether a wait for news of \p line has nothing left to wait for.
BOOL CZoTAPIInterface::IsWaitOver(HLINE line, BOOL aborted) const
{
    const bool closed = line != 0 && m_hLine != line && m_hAnswerLine != line;
    return aborted || closed || !m_bCallInProgress;
}

LONG CZoTAPIInterface::WaitForReply(LONG lRequestID) { return AwaitReply(lRequestID, LineInUse()); }
LONG CZoTAPIInterface::WaitForCallState(DWORD dwCallState) { return AwaitCallState(dwCallState, LineInUse()); }

/// \param line the one that the request was made for: once it is closed, the wait is over.
LONG CZoTAPIInterface::AwaitReply(LONG lRequestID, HLINE line)
{
    TapiState& state = GetTapiState();
    const EarlyReply early = std::exchange(state.m_earlyReply, EarlyReply{});
    state.m_bAbortReply = FALSE;
    if (lRequestID <= 0) {
        state.m_bAbortReply = TRUE;
        return lRequestID;
    }
    m_lRequestID = lRequestID;
    m_bReplyReceived = early.object == this && early.request == lRequestID;
    m_lReplyResult = m_bReplyReceived ? early.result : static_cast<LONG>(LINEERR_OPERATIONFAILED);
    for (;;) {
        const BOOL pumped = m_bReplyReceived || PumpMessage(IsWaitOver(line, FALSE) ? 0 : kWaitSlice);
        if (IsWaitOver(line, state.m_bAbortReply || !pumped)) {
            state.m_bAbortReply = TRUE;
            return WAITERR_WAITABORTED;
        }
        if (m_bReplyReceived) {
            state.m_bAbortReply = TRUE;
            return m_lReplyResult;
        }
    }
}

/// \param line as AwaitReply's
LONG CZoTAPIInterface::AwaitCallState(DWORD dwCallState, HLINE line)
{
    TapiState& state = GetTapiState();
    state.m_bAbortCallState = FALSE;
    m_bCallStateChanged = FALSE;
    const DWORD start = GetTickCount();
    LONG result = 0;
    while (dwCallState == 0 || m_dwCallState != dwCallState) {
        const DWORD elapsed = GetTickCount() - start;
        const DWORD left = elapsed <= kCallStateTimeout ? kCallStateTimeout + 1 - elapsed : 0;
        const BOOL pumped = PumpMessage(IsWaitOver(line, FALSE) ? 0 : (std::min)(kWaitSlice, left));
        if (dwCallState == 0 && m_bCallStateChanged)
            break;
        if (IsWaitOver(line, state.m_bAbortCallState || !pumped)) {
            OutputDebugStringA("WAITABORTED\n");
            result = WAITERR_WAITABORTED;
            break;
        }
        if (GetTickCount() - start > kCallStateTimeout) {
            OutputDebugStringA("WAITTIMEDOUT\n");
            result = WAITERR_WAITTIMEDOUT;
            break;
        }
    }
    state.m_bAbortCallState = TRUE;
    return result;
}

// Taking the port

BOOL CZoTAPIInterface::GrabThePort()
{
    if (m_bCallInProgress)
        return RecordError(ZOTAPI_ERROR_CALLINPROGRESS);
    if (m_hLineApp == 0) {
        OutputDebugStringA("<GrabThePort:Calling InitializeTAPI!\n");
        if (!InitializeTAPI(nullptr))
            return FALSE;
    }
    if (m_dwNumDevs < 1 && !HandleNoDevicesInstalled())
        return FALSE;
    m_bCallInProgress = TRUE;
    m_dwAPIVersion = ZolineNegotiateAPIVersion(m_dwDeviceID);
    if (m_dwAPIVersion == 0)
        return FailGrab(ZOTAPI_ERROR_UNSUPPORTEDLINEVERSION);
    const LocalPointer<LINEDEVCAPS> caps(ZolineGetDevCaps(nullptr, m_dwDeviceID, m_dwAPIVersion));
    if (caps == nullptr)
        return FailGrab(ZOTAPI_ERROR_NONE);
    if ((caps->dwBearerModes & LINEBEARERMODE_VOICE) == 0)
        return FailGrab(ZOTAPI_ERROR_NOVOICE);
    if ((caps->dwMediaModes & m_dwMediaModes) == 0)
        return FailGrab(ZOTAPI_ERROR_NOMODEM);
    if ((caps->dwLineFeatures & LINEFEATURE_MAKECALL) == 0)
        return FailGrab(ZOTAPI_ERROR_NOMAKECALL);
    if (!OpenLineForCall() || !PlaceCall() || !WaitForPort())
        return FALSE;
    OutputDebugStringA("\n\nLineMakecall Success!!!\n\n");
    return TRUE;
}

/// Ends GrabThePort. \param code ZOTAPI_ERROR_NONE when the reason is recorded already. \return FALSE
BOOL CZoTAPIInterface::FailGrab(DWORD code)
{
    HangupCall();
    return code != ZOTAPI_ERROR_NONE ? RecordError(code) : FALSE;
}

BOOL CZoTAPIInterface::OpenLineForCall()
{
    LONG result;
    do {
        m_hLine = 0;
        result = tapi::lineOpen(m_hLineApp, m_dwDeviceID, &m_hLine, m_dwAPIVersion, 0,
                                reinterpret_cast<DWORD_PTR>(this), LINECALLPRIVILEGE_NONE, m_dwMediaModes, nullptr);
        if (result == static_cast<LONG>(LINEERR_ALLOCATED))
            return FailGrab(ZOTAPI_ERROR_ALLOCATED);
        if (!HandleLineErr(result))
            return FailGrab(ZOTAPI_ERROR_LINEOPEN);
    } while (result != 0);
    if (m_hLine != 0)
        SetStatusMessages(m_hLine); // without them the call works as well
    if (m_hLine == 0)               // nothing was written, or the line was closed since
        return FailGrab(ZOTAPI_ERROR_LINEOPEN);

    const LocalPointer<LINEADDRESSSTATUS> status(ZolineGetAddressStatus(nullptr, m_hLine, 0));
    if (status == nullptr)
        return FailGrab(ZOTAPI_ERROR_LINEOPEN);
    if ((status->dwAddressFeatures & LINEADDRFEATURE_MAKECALL) == 0) {
        OutputDebugStringA("This line is not available to place a call.\n");
        return FailGrab(ZOTAPI_ERROR_ADDRESSUNAVAIL);
    }
    // Asked for, since some services want it, but not looked at.
    const LocalPointer<LINEADDRESSCAPS> caps(ZolineGetAddressCaps(nullptr, m_dwDeviceID, 0, m_dwAPIVersion, 0));
    return caps != nullptr ? TRUE : FailGrab(ZOTAPI_ERROR_NONE);
}

BOOL CZoTAPIInterface::PlaceCall()
{
    const LocalPointer<LINECALLPARAMS> params(CreateCallParams(nullptr, nullptr));
    if (params == nullptr)
        return FailGrab(ZOTAPI_ERROR_NOMEM);
    m_hCall = 0;
    GetTapiState().m_earlyReply = {};
    const HLINE line = m_hLine;
    const LONG result = AwaitReply(tapi::lineMakeCall(line, &m_hCall, nullptr, 0, params.get()), line);
    if (result != 0 || m_hCall == 0)
        return FailGrab(ZOTAPI_ERROR_MAKECALL);
    return TRUE;
}

/// Waits until the connected state has brought the port.
BOOL CZoTAPIInterface::WaitForPort()
{
    const HLINE line = m_hLine;
    while (m_hComm == INVALID_HANDLE_VALUE) {
        // Once connected without a port, there will be none.
        const BOOL over = m_bConnected || !PumpMessage();
        if (m_hComm == INVALID_HANDLE_VALUE && IsWaitOver(line, over))
            return FailGrab(ZOTAPI_ERROR_MAKECALL);
    }
    return TRUE;
}

LINECALLPARAMS* CZoTAPIInterface::CreateCallParams(LINECALLPARAMS* p, const char* pszAddress)
{
    const char* address = pszAddress != nullptr ? pszAddress : "";
    const size_t addressSize = std::strlen(address) + 1;
    auto* params = static_cast<LINECALLPARAMS*>(
        ZoCheckAndReAllocBuffer(p, static_cast<UINT>(kCallParamsSize + addressSize), "CreateCallParams: "));
    if (params == nullptr)
        return nullptr;
    // Pass-through without a number: that is what hands the bare modem to the program.
    params->dwBearerMode = LINEBEARERMODE_PASSTHROUGH;
    params->dwMediaMode = m_dwMediaModes;
    params->dwCallParamFlags = LINECALLPARAMFLAGS_IDLE;
    params->dwAddressMode = LINEADDRESSMODE_ADDRESSID;
    params->dwAddressID = 0;
    params->dwDisplayableAddressSize = static_cast<DWORD>(addressSize);
    params->dwDisplayableAddressOffset = kCallParamsSize;
    std::memcpy(reinterpret_cast<char*>(params) + kCallParamsSize, address, addressSize);
    return params;
}

// Hanging up

BOOL CZoTAPIInterface::HangupCall()
{
    if (m_hLine == 0 && (m_hAnswerLine == 0 || m_hCall == 0))
        return TRUE;
    HLINE& line = m_hLine != 0 ? m_hLine : m_hAnswerLine;
    if (m_bHangingUp || !m_bCallInProgress)
        return TRUE;
    m_bHangingUp = TRUE;
    OutputDebugStringA("Stopping Call in progress\n");
    ClosePort();
    if (m_hCall != 0)
        DropCall();
    // It is m_hLine that counts: the answer line stays open until EnableCallAnswer closes it.
    if (line != 0 && m_hLine != 0) {
        LONG result;
        do
            result = tapi::lineClose(line);
        while (HandleLineErr(result) && result != 0);
        OutputDebugStringA("Line Closed.\n");
        line = 0;
    }
    m_hCall = 0;
    m_bConnected = FALSE;
    m_bCallInProgress = FALSE;
    m_bHangingUp = FALSE;
    OutputDebugStringA("Call stopped\n");
    return TRUE;
}

void CZoTAPIInterface::DropCall()
{
    const HLINE line = LineInUse(); // boxes and waits below may bring the news that it is closed
    const LocalPointer<LINECALLSTATUS> status(ZolineGetCallStatus(nullptr, m_hCall));
    if (status == nullptr) {
        m_bHangingUp = FALSE;
        m_bCallInProgress = FALSE;
    } else if (status->dwCallState != LINECALLSTATE_IDLE) {
        LONG result;
        do {
            GetTapiState().m_earlyReply = {};
            result = AwaitReply(tapi::lineDrop(m_hCall, nullptr, 0), line);
        } while (result != WAITERR_WAITABORTED && result != WAITERR_WAITTIMEDOUT && result != 0 &&
                 result != static_cast<LONG>(LINEERR_INVALCALLSTATE) && HandleLineErr(result) && m_hCall != 0);
        if (result == WAITERR_WAITTIMEDOUT)
            OutputDebugStringA("Call timed out in WaitForReply.\n");
        else if (result == WAITERR_WAITABORTED)
            OutputDebugStringA("lineDrop: WAITERR_WAITABORTED.\n");
        result = AwaitCallState(LINECALLSTATE_IDLE, line);
        if (result == WAITERR_WAITTIMEDOUT)
            OutputDebugStringA("Call timed out waiting for IDLE state.\n");
        else if (result == WAITERR_WAITABORTED)
            OutputDebugStringA("WAITERR_WAITABORTED while waiting for IDLE state.\n");
        OutputDebugStringA("Call Dropped.\n");
    }
    if (m_hCall != 0) { // the service may have closed the line meanwhile
        LONG result;
        do
            result = tapi::lineDeallocateCall(m_hCall);
        while (HandleLineErr(result) && result != 0);
    }
    m_strCallerID.Empty();
    m_strCallerName.Empty();
    OutputDebugStringA("Call Deallocated.\n");
}
