// What becomes of the service's errors.
#include <zogbl/tapi_interface.h>

#include <zogbl/message_box.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "tapi_binding.h"

namespace {

constexpr int kTextSize = 512; // of a box, in bytes

/// Whether the program is about to end: then every box closes by itself.
bool IsQuitting()
{
    MSG message;
    return PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE) != FALSE;
}

} // namespace

BOOL CZoTAPIInterface::HandleLineErr(LONG lLineErr)
{
    if (lLineErr >= 0)
        return lLineErr == 0; // a request's number is no result yet
    switch (static_cast<DWORD>(lLineErr)) {
    case LINEERR_INIFILECORRUPT:
    case LINEERR_INVALCARD:
    case LINEERR_INVALLOCATION:
        return HandleIniFileCorrupt();
    case LINEERR_NODRIVER:
        return HandleNoDriver();
    case LINEERR_NOMEM:
        return HandleNoMem();
    case LINEERR_OPERATIONFAILED:
        return HandleOperationFailed();
    case LINEERR_RESOURCEUNAVAIL:
        return HandleResourceUnavail();
    case LINEERR_REINIT:
        return HandleReInit();
    case LINEERR_NOMULTIPLEINSTANCE:
        return HandleNoMultipleInstance();
    default:
        m_dwLastError = ZOTAPI_ERROR_UNHANDLED;
        return FALSE;
    }
}

/// \return FALSE, so that an operation can end with it.
BOOL CZoTAPIInterface::RecordError(DWORD code, DWORD flags, DWORD boxStyle)
{
    m_dwLastError = code;
    m_dwLastErrorFlags = flags;
    DisplayTAPIErrorBox(code, boxStyle);
    return FALSE;
}

BOOL CZoTAPIInterface::HandleIniFileCorrupt()
{
    m_dwLastError = ZOTAPI_ERROR_INIFILECORRUPT;
    m_dwLastErrorFlags = MB_ICONINFORMATION;
    if (m_bSilent) {
        m_dwLastError = ZOTAPI_ERROR_INIFILECORRUPT_SILENT;
        return FALSE;
    }
    // A box with Yes and No cannot answer Cancel: both buttons lead to the dialog and to another attempt. This is
    // prescribed. Only without a box to answer is it over.
    const int answer = DisplayTAPIErrorBox(ZOTAPI_ERROR_INIFILECORRUPT, MB_YESNO | MB_ICONQUESTION);
    if (answer == IDCANCEL || answer == 0 || IsQuitting())
        return FALSE;
    tapi::lineTranslateDialog(m_hLineApp, 0, tapi::kVersion, m_hDialogWnd, nullptr);
    return TRUE;
}

BOOL CZoTAPIInterface::HandleNoDriver() { return RecordError(ZOTAPI_ERROR_NODRIVER); }
BOOL CZoTAPIInterface::HandleNoMultipleInstance() { return RecordError(ZOTAPI_ERROR_NOMULTIPLEINSTANCE); }
BOOL CZoTAPIInterface::HandleNoMem() { return RecordError(ZOTAPI_ERROR_NOMEM); }
BOOL CZoTAPIInterface::HandleOperationFailed() { return RecordError(ZOTAPI_ERROR_OPERATIONFAILED); }

BOOL CZoTAPIInterface::HandleResourceUnavail()
{
    m_dwLastError = ZOTAPI_ERROR_RESOURCEUNAVAIL;
    m_dwLastErrorFlags = MB_ICONSTOP;
    return DisplayTAPIErrorBox(ZOTAPI_ERROR_RESOURCEUNAVAIL, MB_RETRYCANCEL | MB_ICONINFORMATION) == IDRETRY;
}

BOOL CZoTAPIInterface::HandleNoDevicesInstalled()
{
    constexpr DWORD kStyle = MB_YESNO | MB_ICONSTOP;
    m_dwLastError = ZOTAPI_ERROR_NODEVICES;
    m_dwLastErrorFlags = kStyle;
    // The user adds a modem while the caller gives up: a missing device never leads to another attempt.
    return DisplayTAPIErrorBox(ZOTAPI_ERROR_NODEVICES, kStyle) == IDYES ? LaunchModemControlPanelAdd() : FALSE;
}

BOOL CZoTAPIInterface::HandleReInit()
{
    ShutdownTAPI();
    return FALSE;
}

BOOL CZoTAPIInterface::LaunchModemControlPanelAdd()
{
    char commandLine[] = "CONTROL.EXE MODEM.CPL,,ADD";
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, commandLine, nullptr, nullptr, FALSE, NORMAL_PRIORITY_CLASS, nullptr, nullptr,
                        &startup, &process))
        return RecordError(m_dwLastError);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    return FALSE;
}

int CZoTAPIInterface::DisplayTAPIErrorBox(DWORD dwError, DWORD dwStyle)
{
    if (m_bSilent)
        return 0;
    // Without allocation, for this may be about missing memory.
    char text[kTextSize] = "";
    const UINT id = ZO_IDS_TAPI_ERROR_BASE - dwError;
    const HINSTANCE module = ZoGblFindStringModule(id);
    if (module != nullptr)
        LoadStringA(module, id, text, sizeof text);
    return ZoMessageBox(m_hDialogWnd, text, nullptr, dwStyle);
}
