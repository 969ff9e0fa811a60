// Making and ending line interfaces; what needs no line.
#include <zogbl/tapi_interface.h>

#include "tapi_binding.h"
#include "tapi_records.h"
#include "tapi_state.h"

#include <afxwin.h>

#include <algorithm>
#include <utility>

namespace {

constexpr char kApplicationName[] = "Zo, Inc. Brixels";
constexpr DWORD kReinitPause = 5000; // milliseconds

/// The window, if it is one; else the debugger is told and it counts as none.
HWND WindowOrNull(HWND window, const char* complaint)
{
    if (window != nullptr && IsWindow(window))
        return window;
    OutputDebugStringA(complaint);
    return nullptr;
}

/// Takes messages for a while. WM_QUIT ends it early.
void Pause(DWORD milliseconds)
{
    const DWORD start = GetTickCount();
    for (DWORD elapsed = 0; elapsed < milliseconds; elapsed = GetTickCount() - start) {
        if (!PumpMessage((std::min)(kWaitSlice, milliseconds - elapsed)))
            return;
    }
}

} // namespace

CZoTAPIInterface::CZoTAPIInterface(HWND hMainWnd, HWND hDialogWnd, DWORD dwMediaModes, BOOL bSilent)
    : m_dwMediaModes(dwMediaModes), m_hMainWnd(WindowOrNull(hMainWnd, "Main window unavailable.\n")),
      m_hDialogWnd(WindowOrNull(hDialogWnd, "Dialog window unavailable.\n")), m_hLineApp(0), m_dwNumDevs(0),
      m_dwReserved1(0), m_bShuttingDown(FALSE), m_bHangingUp(FALSE), m_bInitializing(FALSE), m_bCallInProgress(FALSE),
      m_bSilent(bSilent), m_hCall(0), m_hLine(0), m_hAnswerLine(0), m_hComm(INVALID_HANDLE_VALUE),
      m_dwReserved2(0), m_adwReserved{}, m_dwDeviceID(0xFFFFFFFF), m_dwAPIVersion(0),
      m_dwCallState(0), m_szReserved1{}, m_szReserved2{}, m_bConnected(FALSE), m_lpDevConfig(nullptr),
      m_dwDevConfigSize(0), m_bReplyReceived(FALSE), m_lRequestID(0), m_lReplyResult(0), m_bCallStateChanged(FALSE),
      m_dwLastError(ZOTAPI_ERROR_NONE), m_dwLastErrorFlags(MB_ICONSTOP)
{
}

CZoTAPIInterface::~CZoTAPIInterface()
{
    if (m_hLineApp == 0)
        return;
    if (m_hLine != 0)
        CZoTAPIInterface::HangupCall();
    if (m_hAnswerLine != 0)
        CZoTAPIInterface::EnableCallAnswer(FALSE);
    CZoTAPIInterface::ShutdownTAPI();
}

BOOL CZoTAPIInterface::InitializeTAPI(HINSTANCE hInst)
{
    if (m_hLineApp != 0) {
        // Forgotten, not closed: callers start over in this way.
        m_hCall = 0;
        m_hLine = 0;
        m_hAnswerLine = 0;
        return TRUE;
    }
    if (m_bInitializing)
        return FALSE;
    m_bInitializing = TRUE;
    const BOOL initialized = GetTapiState().Enter(this) ? Initialize(hInst) : HandleNoMem();
    if (!initialized)
        GetTapiState().Leave(this);
    m_bInitializing = FALSE;
    return initialized;
}

BOOL CZoTAPIInterface::Initialize(HINSTANCE hInst)
{
    const HINSTANCE instance = hInst != nullptr ? hInst : AfxGetInstanceHandle();
    for (bool waited = false;;) {
        const LONG result =
            tapi::lineInitialize(&m_hLineApp, instance, &lineCallbackFunc, kApplicationName, &m_dwNumDevs);
        switch (static_cast<DWORD>(result)) {
        case LINEERR_REINIT: // other programs have to let go of the service first
            if (waited)
                return RecordError(ZOTAPI_ERROR_REINIT);
            waited = true;
            Pause(kReinitPause);
            break;
        case LINEERR_NODEVICE:
            if (!HandleNoDevicesInstalled()) {
                OutputDebugStringA("No devices installed.\n");
                return FALSE;
            }
            break;
        default:
            if (!HandleLineErr(result))
                return FALSE;
            if (result != 0)
                break;
            if (m_hLineApp == 0) { // success, but nothing was written
                m_dwLastError = ZOTAPI_ERROR_UNHANDLED;
                return FALSE;
            }
            m_hCall = 0;
            m_hLine = 0;
            m_hAnswerLine = 0;
            OutputDebugStringA("Tapi initialized.\n");
            return TRUE;
        }
    }
}

BOOL CZoTAPIInterface::ShutdownTAPI()
{
    if (m_hLineApp == 0 || m_bShuttingDown)
        return TRUE;
    m_bShuttingDown = TRUE;
    HangupCall();
    LONG result;
    do
        result = tapi::lineShutdown(m_hLineApp);
    while (HandleLineErr(result) && result != 0);
    ClosePort(); // of a call that ended without HangupCall
    m_bCallInProgress = FALSE;
    m_bConnected = FALSE;
    m_hLineApp = 0;
    m_hCall = 0;
    m_hLine = 0;
    m_hAnswerLine = 0;
    m_bShuttingDown = FALSE;
    GetTapiState().Leave(this);
    OutputDebugStringA("TAPI uninitialized.\n");
    return TRUE;
}

void CZoTAPIInterface::ClosePort()
{
    if (m_hComm != INVALID_HANDLE_VALUE)
        CloseHandle(std::exchange(m_hComm, INVALID_HANDLE_VALUE));
}

DWORD CZoTAPIInterface::GetLastTAPIError() { return std::exchange(m_dwLastError, ZOTAPI_ERROR_NONE); }

DWORD CZoTAPIInterface::GetLastTAPIErrorFlags() { return std::exchange(m_dwLastErrorFlags, DWORD{MB_ICONSTOP}); }

BOOL CZoTAPIInterface::DisplaylineTranslateDialog()
{
    if (m_hLineApp == 0 && !InitializeTAPI(nullptr)) {
        OutputDebugStringA(">EnableCallAnswer InitializeTAPI failed\n");
        return FALSE;
    }
    tapi::lineTranslateDialog(m_hLineApp, 0, tapi::kVersion, m_hDialogWnd, nullptr);
    return FALSE;
}

LINETRANSLATEOUTPUT* CZoTAPIInterface::TranslateCanonicalToDialable(LINETRANSLATEOUTPUT* pOut, DWORD dwDeviceID,
                                                                    DWORD dwTranslateOptions, const char* pszAddress)
{
    LocalPointer<LINETRANSLATEOUTPUT> given(pOut);
    if (m_hLineApp == 0 && !InitializeTAPI(nullptr)) {
        OutputDebugStringA(">TranslateCanonicalToDialable failed!\n");
        return nullptr;
    }
    return ZolineTranslateAddress(given.release(), dwDeviceID, tapi::kVersion, dwTranslateOptions, pszAddress);
}
