// The tour's steps of lines and modems.
#include "tour_steps.h"

namespace {

/// A control function of the simulated service; null when it is another.
template <class FUNCTION> FUNCTION* Simulated(LPCSTR name)
{
    return reinterpret_cast<FUNCTION*>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandle("TAPI32.DLL"), name)));
}

} // namespace

/// Lists the line devices and takes the port of the first one.
bool Tour::TakeLine()
{
    Lines().GetLine().m_bSilent = TRUE; // nobody is there to answer a box
    Lines().Refresh();
    const DWORD devices = Lines().GetLine().m_dwNumDevs;
    const auto getText = Simulated<DWORD WINAPI(DWORD, char*, DWORD)>("TelsimGetText");
    CString calls;
    if (getText != nullptr) {
        constexpr DWORD kCalls = 1; // the list of calls
        const DWORD size = getText(kCalls, nullptr, 0);
        getText(kCalls, calls.GetBuffer(static_cast<int>(size)), size);
        calls.ReleaseBuffer();
    }
    const auto asked = static_cast<DWORD>(calls.Replace("lineGetDevCaps(", ""));
    const BOOL taken = Lines().TakePort();
    CString result;
    result.Format("%lu devices, asked %lu times, port %s, error %lu", devices, asked, taken ? "taken" : "not taken",
                  Lines().GetLine().GetLastTAPIError());
    return m_report.Step("line", taken && (getText == nullptr || asked == devices), result);
}

/// A line that is refused, and one that the service closes, leave the next attempt alone.
bool Tour::RefusedLine()
{
    const auto configure = Simulated<BOOL WINAPI(DWORD, LPCSTR, LPCSTR)>("TelsimConfigureLine");
    const auto close = Simulated<BOOL WINAPI(DWORD)>("TelsimCloseLine");
    if (configure == nullptr || close == nullptr)
        return m_report.Step("refused", true, "not the simulated service: nobody refuses a line");
    const CZoTAPIInterface& line = Lines().GetLine();
    configure(line.m_dwDeviceID, "allocated", "1");
    const BOOL refused = !Lines().TakePort() && Lines().GetLine().GetLastTAPIError() == ZOTAPI_ERROR_ALLOCATED;
    configure(line.m_dwDeviceID, "allocated", "0");
    const bool closed =
        Lines().TakePort() && close(line.m_hLine) && WaitUntil([&] { return line.m_hComm == INVALID_HANDLE_VALUE; });
    const BOOL taken = Lines().TakePort();
    Lines().HangUp();
    CString result;
    result.Format("%s, %s, then %s", refused ? "refused" : "not refused", closed ? "closed" : "not closed",
                  taken ? "taken" : "not taken");
    return m_report.Step("refused", refused && closed && taken, result);
}

/// Sends a command to the modem and waits for its answer.
bool Tour::Command(LPCSTR command, LPCSTR answer)
{
    Lines().ForgetReceived();
    const bool answered =
        Lines().Send(CString(command) + "\r") && WaitUntil([&] { return Lines().GetReceived().Find(answer) >= 0; });
    CString text = Lines().GetReceived();
    text.Replace("\r", "");
    text.Replace("\n", " ");
    return m_report.Step("modem", answered, text);
}

/// The other side echoes: 64 KB must come back unchanged.
bool Tour::Echo()
{
    constexpr int kSize = 64 * 1024;
    CString sent;
    char* bytes = sent.GetBufferSetLength(kSize);
    for (int i = 0; i < kSize; ++i)
        bytes[i] = static_cast<char>('A' + (i + i / 26) % 26);
    Settle();
    Lines().ForgetReceived();
    bool whole = true;
    for (int at = 0; whole && at < kSize; at += 4096) {
        whole = Lines().Send(sent.Mid(at, 4096)) &&
                WaitUntil([&] { return Lines().Receive() == 0 && Lines().GetReceived().GetLength() >= at + 4096; });
    }
    CString result;
    result.Format("%d bytes sent, %d came back%s", kSize, Lines().GetReceived().GetLength(),
                  Lines().GetReceived() == sent ? ", the same" : "");
    return m_report.Step("echo", whole && Lines().GetReceived() == sent, result);
}

bool Tour::HangUpLine()
{
    Lines().HangUp();
    const bool released = Lines().GetLine().m_hComm == INVALID_HANDLE_VALUE && Lines().GetLine().m_hCall == 0;
    return m_report.Step("hang up", released, "the port is free again");
}

/// The other side hangs up while the port is taken: the port goes by itself.
bool Tour::RemoteHangUp()
{
    const auto hangUp = Simulated<BOOL WINAPI(DWORD)>("TelsimHangUp");
    if (hangUp == nullptr)
        return m_report.Step("remote", true, "not the simulated service: nobody hangs up");
    const CZoTAPIInterface& line = Lines().GetLine();
    const bool gone =
        Lines().TakePort() && hangUp(line.m_hCall) && WaitUntil([&] { return line.m_hComm == INVALID_HANDLE_VALUE; });
    return m_report.Step("remote", gone && IsLogged("Remote Party Disconnected"),
                         gone ? "the other side hung up, the port is free again" : "the port is still taken");
}

bool Tour::IsLogged(LPCSTR text)
{
    return WaitUntil([&] { return Lines().GetLog().Find(text) >= 0; });
}

/// Somebody calls, then somebody who withholds the number; both hang up.
bool Tour::WatchForCalls()
{
    const auto offer = Simulated<DWORD WINAPI(DWORD, LPCSTR, LPCSTR, DWORD)>("TelsimOfferCall");
    const auto hangUp = Simulated<BOOL WINAPI(DWORD)>("TelsimHangUp");
    if (offer == nullptr || hangUp == nullptr)
        return m_report.Step("answer", true, "not the simulated service: nobody calls");
    if (!Lines().Answer(TRUE))
        return m_report.Step("answer", false, "the line cannot be opened");
    const CZoTAPIInterface& line = Lines().GetLine();
    CString callers;
    bool told = true;
    for (const DWORD flags : {LINECALLPARTYID_ADDRESS | LINECALLPARTYID_NAME, LINECALLPARTYID_BLOCKED}) {
        const DWORD call = offer(line.m_dwDeviceID, "5550199", "Jane Doe", flags);
        told = told && WaitUntil([&] { return !line.m_strCallerID.IsEmpty(); });
        callers += line.m_strCallerID + ", " + line.m_strCallerName + "; ";
        hangUp(call);
        told = told && WaitUntil([&] { return line.m_dwCallState == LINECALLSTATE_IDLE; });
        Lines().GetLine().m_strCallerID.Empty();
    }
    told = told && IsLogged("Line Ringing.") && IsLogged("CallerID info changed!");
    Lines().Answer(FALSE);
    return m_report.Step("answer", told && callers == "5550199, Jane Doe; **BLOCKED**, **BLOCKED**; ", callers);
}
