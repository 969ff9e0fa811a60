/// \file
/// Telephone lines, through the Windows Telephony API (TAPI32.DLL, line side).
#pragma once

#include <zogbl/export.h>

#include <afxcoll.h>

#ifndef TAPI_CURRENT_VERSION
#define TAPI_CURRENT_VERSION 0x00010004
#endif
#include <tapi.h>

/// Codes that GetLastTAPIError gives. Each row gives: the style that GetLastTAPIErrorFlags returns; "box" and the style
/// of the message box, if different; the cause. Unless the object is silent, a box tells the user. Its text is string
/// number (20553 - code).
constexpr DWORD ZOTAPI_ERROR_NONE = 0;
constexpr DWORD ZOTAPI_ERROR_REINIT = 1; ///< 0x10; LINEERR_REINIT from lineInitialize, and again 5 seconds later
constexpr DWORD ZOTAPI_ERROR_CALLINPROGRESS = 2;         ///< 0x10; GrabThePort while a call is in progress
constexpr DWORD ZOTAPI_ERROR_UNSUPPORTEDLINEVERSION = 3; ///< 0x10; no version can be negotiated for the device
constexpr DWORD ZOTAPI_ERROR_NOVOICE = 4;                ///< 0x10; the line has no voice bearer mode
constexpr DWORD ZOTAPI_ERROR_NOMODEM = 5;                ///< 0x10; the line has none of the media modes wanted
constexpr DWORD ZOTAPI_ERROR_NOMAKECALL = 6;             ///< 0x10; the line cannot make calls
constexpr DWORD ZOTAPI_ERROR_ALLOCATED = 7;              ///< 0x10; another program has the port
constexpr DWORD ZOTAPI_ERROR_LINEOPEN = 8;            ///< 0x10; the line cannot be opened, or gives no address status
constexpr DWORD ZOTAPI_ERROR_ADDRESSUNAVAIL = 9;      ///< 0x10; address 0 cannot place a call now
constexpr DWORD ZOTAPI_ERROR_NOMEM = 10;              ///< 0x10; no memory, here or in the service
constexpr DWORD ZOTAPI_ERROR_MAKECALL = 11;           ///< 0x10; no call was made, or it brings no port
constexpr DWORD ZOTAPI_ERROR_UNHANDLED = 12;          ///< any other error of the service; no box, style unchanged
constexpr DWORD ZOTAPI_ERROR_INIFILECORRUPT = 13;     ///< 0x40, box 0x24; dialing card or location is not valid
constexpr DWORD ZOTAPI_ERROR_NODRIVER = 14;           ///< 0x10; LINEERR_NODRIVER
constexpr DWORD ZOTAPI_ERROR_NOMULTIPLEINSTANCE = 15; ///< 0x10; LINEERR_NOMULTIPLEINSTANCE
constexpr DWORD ZOTAPI_ERROR_OPERATIONFAILED = 16;    ///< 0x10; LINEERR_OPERATIONFAILED
constexpr DWORD ZOTAPI_ERROR_RESOURCEUNAVAIL = 17;    ///< 0x10, box 0x45; LINEERR_RESOURCEUNAVAIL
constexpr DWORD ZOTAPI_ERROR_NODEVICES = 18;    ///< 0x14; no line devices. 0x10 if adding a modem could not be started
constexpr DWORD ZOTAPI_ERROR_INVALADDRESS = 21; ///< 0x10; shown if an address cannot be translated; becomes 12
constexpr DWORD ZOTAPI_ERROR_LINECLOSED = 22;   ///< 0x30; the service closed the line
constexpr DWORD ZOTAPI_ERROR_INIFILECORRUPT_SILENT = 25; ///< 0x40; code 13 in a silent object
constexpr DWORD ZOTAPI_ERROR_ANSWERLINEOPEN = 26;        ///< 0x40; the line cannot be opened for answering
// 19, 20, 23, 24 and their strings are reserved.

/// Value of EnumerateTAPIDeviceLines's own error argument.
constexpr DWORD ZOTAPI_ENUM_FAILED = 100;

/// Results of WaitForReply and WaitForCallState besides those of the service.
constexpr LONG WAITERR_WAITABORTED = 1;
constexpr LONG WAITERR_WAITTIMEDOUT = 2;

/// Uses one telephone line device through TAPI32.DLL. That library is loaded only by the first call that needs it: so a
/// program also runs on a machine without telephony.
///
/// The class takes the line's port for a caller that talks to the modem itself, hangs up, listens for incoming calls,
/// lists the devices, opens the service's dialogs and translates numbers.
///
///     CZoTAPIInterface line(mainWindow, mainWindow, LINEMEDIAMODE_DATAMODEM, FALSE);
///     line.SetTAPILineDeviceID(0);
///     if (line.GrabThePort()) {
///         ... ReadFile, WriteFile on line.m_hComm ...
///         line.HangupCall();
///     } else if (line.m_bCallInProgress && line.GetLastTAPIError() != ZOTAPI_ERROR_CALLINPROGRESS) {
///         line.ShutdownTAPI(); // or the next attempt fails as well
///     }
///
/// To watch for calls: SetTAPILineDeviceID, EnableCallAnswer(TRUE), handle the events in a derived class,
/// EnableCallAnswer(FALSE). This class does not answer calls. A derived class that does must set m_bCallInProgress
/// before it asks the service to answer. Otherwise every wait for the call ends at once, and HangupCall does nothing.
///
/// Each function of TAPI32.DLL is looked up at its first call. If it or the library is missing, that call and all later
/// ones fail with LINEERR_OPERATIONUNAVAIL.
///
/// The service answers through window messages. An operation that waits for an answer takes messages from the thread's
/// queue and dispatches them: the events below, and anything else in the program, can happen during the wait. An object
/// belongs to the thread that initialised it. This thread must have a message loop. A wait ends as aborted if
///   - no call is in progress (m_bCallInProgress), or the call is hung up;
///   - its line is closed;
///   - another wait of the same kind has ended meanwhile, in any object of the process;
///   - WM_QUIT arrives, which is left for the program's own loop.
///
/// The debugger gets one text for each state. The last error is kept, as a code and a message-box style, until it is
/// asked for. Nothing is thrown; without memory the code is ZOTAPI_ERROR_NOMEM.
///
/// A copy has the values of all members, but the service knows an initialised object by its address. So of such an
/// object and its copies use only the object itself, and set m_hLineApp of the copies to 0 before they are destroyed.
/// Shut an object down (ShutdownTAPI) before you assign another one to it.
class ZOGBL_API CZoTAPIInterface {
public:
    /// \param hMainWnd, hDialogWnd the program's main window, and the owner of boxes and dialogs; a handle of no window
    /// counts as null
    /// \param dwMediaModes LINEMEDIAMODE_ flags, usually LINEMEDIAMODE_DATAMODEM
    /// \param bSilent no box is shown
    CZoTAPIInterface(HWND hMainWnd, HWND hDialogWnd, DWORD dwMediaModes, BOOL bSilent);
    CZoTAPIInterface(const CZoTAPIInterface&) = default;
    CZoTAPIInterface& operator=(const CZoTAPIInterface&) = default;
    /// Hangs up, closes the lines and leaves the service.
    virtual ~CZoTAPIInterface();

    /// Registers with the service. If the object is initialised, it forgets its call and lines without closing them and
    /// returns TRUE: this is prescribed.
    /// \param hInst null: the instance handle of the framework's module state
    /// \return FALSE when called within itself, and on failure (1, 10, 12 to 18, 25)
    virtual BOOL InitializeTAPI(HINSTANCE hInst);
    /// Hangs up, closes the port and leaves the service, which closes the lines. \return TRUE, even if the service
    /// refuses
    virtual BOOL ShutdownTAPI();
    /// Opens the line with the right to own its calls, or closes it. Initialises if necessary. A line that is open for
    /// answering is closed and opened again.
    /// \return FALSE if initialising failed, there is no device (18), or
    ///   opening  the device does not fit (3, 4, 5), another program has it (7), it cannot be opened (26; a call in
    ///            progress was hung up), or a question to the service failed (its code)
    ///   closing  the service refused; the line counts as closed all the same
    /// If the user asks to try again and a later attempt fails, the result of opening is TRUE: check m_hAnswerLine.
    virtual BOOL EnableCallAnswer(BOOL bEnable);
    /// Opens the device of SetTAPILineDeviceID and places a call without a number. This gives the modem's port,
    /// m_hComm. Initialises if necessary. Waits for the service without a time limit.
    /// \return
    ///   TRUE   m_hComm is valid
    ///   FALSE  initialising failed, 2 to 11, 18, or the code of a question to the service that failed
    ///
    /// Code 2: a call was in progress before; nothing changed. All other codes: the line is closed. If
    /// m_bCallInProgress is TRUE then (the device was asked but its line not opened, or the service closed the line),
    /// call ShutdownTAPI, or the next GrabThePort fails with 2.
    virtual BOOL GrabThePort();
    /// Closes the port, drops and deallocates the call, and closes the line that GrabThePort opened. A call of the
    /// answer line is ended in the same way, but that line stays open. Does nothing without a line, without a call in
    /// progress, or within itself.
    ///
    /// Waits for the service, but for the idle state at most 30 seconds. If the service closes the line meanwhile, the
    /// wait ends. \return TRUE
    virtual BOOL HangupCall();

    // Events. Each takes the arguments of the service's callback. An override must call the base's operation: waits end
    // by what it stores.

    /// Stores the result of the request that a wait is for.
    virtual void DoLineReply(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                             DWORD_PTR dwParam2, DWORD_PTR dwParam3);
    /// The service closed a line: the last error becomes ZOTAPI_ERROR_LINECLOSED. Always forgets the call. Also forgets
    /// the line that GrabThePort opened or, if there is none, the answer line. \p hDevice is not looked at. Prescribed.
    /// The call stays in progress until ShutdownTAPI, or until a waiting HangupCall ends.
    virtual void DoLineClose(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                             DWORD_PTR dwParam2, DWORD_PTR dwParam3);
    /// Hangs up if the device is disconnected, out of service or under maintenance. Shuts down if the service asks for
    /// a new start; if it asks for a soft one, the event that it names is handled.
    virtual void DoLineDevState(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                                DWORD_PTR dwParam2, DWORD_PTR dwParam3);
    /// Stores the state. What else it does depends on \p dwParam3, this program's privilege for the call:
    ///   0                        unchanged: acts on the state
    ///   LINECALLPRIVILEGE_OWNER  stores the call, then acts on the state
    ///   any other                nothing
    /// It acts on these states:
    ///   connected                                      gets the port into m_hComm
    ///   busy, special information, disconnected, idle  hangs up
    virtual void DoLineCallState(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                                 DWORD_PTR dwParam2, DWORD_PTR dwParam3);
    /// Counts a new device: m_dwNumDevs becomes at least its ID plus 1.
    virtual void DoLineCreate(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                              DWORD_PTR dwParam2, DWORD_PTR dwParam3);
    /// If the caller's identity of the current call changed, reads it; but only while the answer line is open and no
    /// line of GrabThePort is.
    virtual void DoLineCallInfo(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                                DWORD_PTR dwParam2, DWORD_PTR dwParam3);

    void SetTAPILineDeviceID(DWORD dwDeviceID) { m_dwDeviceID = dwDeviceID; }
    /// Reads the device's configuration into m_lpDevConfig, unless one is there, and lets the user edit it. It stays in
    /// the object and is not applied to the device. On failure the present one stays; if the device gives none, there
    /// is none.
    /// \param bNoDialog only reads
    void PreConfigureDevice(HWND hOwner, DWORD dwDeviceID, BOOL bNoDialog);
    /// Appends the name of each usable device, "Line Unnamed" if it has no name. Other devices are left out, so
    /// positions may differ from device IDs. Initialises if necessary.
    /// \param pNames null: the devices are only counted
    /// \param dwError receives 0, or ZOTAPI_ENUM_FAILED if initialising failed or there is no memory for a name (10).
    /// The names before it stay.
    /// \param pRegKeys may be null. Receives for each name the device's registry key, or an empty text.
    /// \return number of names appended
    DWORD EnumerateTAPIDeviceLines(CStringArray* pNames, DWORD& dwError, CStringArray* pRegKeys);
    DWORD GetLastTAPIError();      ///< \return the last code, which is then forgotten
    DWORD GetLastTAPIErrorFlags(); ///< \return its message-box style; then 0x10 until the next error
    /// Shows the service's dialing properties. Initialises if necessary. \return always FALSE, as is prescribed
    BOOL DisplaylineTranslateDialog();
    /// Translates an address such as "+1 (425) 5550100" into the digits that a modem dials from here. Initialises if
    /// necessary.
    /// \param pOut null, or a local block to use; the operation owns it from then on
    /// \param dwTranslateOptions LINETRANSLATEOPTION_ flags; LINETRANSLATEOPTION_CANCELCALLWAITING is always added
    /// \return a local block that the caller frees with LocalFree; null on failure. For an address that the service
    /// does not understand, the user sees 21, but the code is 12.
    LINETRANSLATEOUTPUT* TranslateCanonicalToDialable(LINETRANSLATEOUTPUT* pOut, DWORD dwDeviceID,
                                                      DWORD dwTranslateOptions, const char* pszAddress);

protected:
    /// The service's callback. The instance is the object. Events of the whole service come without an instance and go
    /// to every initialised object. Exceptions end here.
    static void CALLBACK lineCallbackFunc(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                                          DWORD_PTR dwParam2, DWORD_PTR dwParam3);

    /// Handles every result of the service. \return TRUE to go on: the call succeeded, or must be tried again
    BOOL HandleLineErr(LONG lLineErr);
    /// 13: asks, then opens the dialing properties, whatever the answer; TRUE. FALSE if silent (25), no box was shown,
    /// or WM_QUIT arrived.
    BOOL HandleIniFileCorrupt();
    BOOL HandleNoDriver();             ///< 14; FALSE
    BOOL HandleNoMultipleInstance();   ///< 15; FALSE
    BOOL HandleNoMem();                ///< 10; FALSE
    BOOL HandleOperationFailed();      ///< 16; FALSE
    BOOL HandleResourceUnavail();      ///< 17; TRUE if the user wants to try again
    BOOL HandleNoDevicesInstalled();   ///< 18; offers to add a modem; FALSE
    BOOL HandleReInit();               ///< the service wants a new start: shuts down; FALSE
    BOOL LaunchModemControlPanelAdd(); ///< always FALSE: the modem is not there yet
    /// Shows the text of a code, unless silent. \return the button; 0 if no box was shown
    int DisplayTAPIErrorBox(DWORD dwError, DWORD dwStyle);

    /// A zeroed local block of at least \p size bytes. Its first double word is its size. It is \p p if that is large
    /// enough, else a new block, and \p p is freed.
    /// \param label for the debugger
    /// \return null, with \p p freed, if there is no memory (10); null, with \p p untouched, if it is not a local block
    /// or has no bytes
    void* ZoCheckAndReAllocBuffer(void* p, UINT size, const char* label);

    // Wrappers. Each grows its record, the given one or a new one, until the service has room in it. \return the
    // record, which the caller frees with LocalFree, or null, with the record freed. In a returned record everything
    // behind the part that the service used is zero; the reader checks whether its parts lie within.

    /// \return the version; 0 on failure
    DWORD ZolineNegotiateAPIVersion(DWORD dwDeviceID);
    LINEDEVCAPS* ZolineGetDevCaps(LINEDEVCAPS* p, DWORD dwDeviceID, DWORD dwAPIVersion);
    LINEADDRESSSTATUS* ZolineGetAddressStatus(LINEADDRESSSTATUS* p, HLINE hLine, DWORD dwAddressID);
    LINECALLSTATUS* ZolineGetCallStatus(LINECALLSTATUS* p, HCALL hCall);
    LINECALLINFO* ZolineGetCallInfo(LINECALLINFO* p, HCALL hCall);
    LINETRANSLATEOUTPUT* ZolineTranslateAddress(LINETRANSLATEOUTPUT* p, DWORD dwDeviceID, DWORD dwAPIVersion,
                                                DWORD dwTranslateOptions, const char* pszAddress);
    LINEADDRESSCAPS* ZolineGetAddressCaps(LINEADDRESSCAPS* p, DWORD dwDeviceID, DWORD dwAddressID, DWORD dwAPIVersion,
                                          DWORD dwExtVersion);

    /// Call parameters that ask for the bare modem.
    /// \param pszAddress shown for the call; null counts as empty
    /// \return as the wrappers above
    LINECALLPARAMS* CreateCallParams(LINECALLPARAMS* p, const char* pszAddress);
    /// Waits for the reply to a request, without a time limit.
    /// \param lRequestID result of the request; an error or 0 is returned at once
    /// \return the reply's result, or WAITERR_WAITABORTED
    LONG WaitForReply(LONG lRequestID);
    /// Waits for a call state; if \p dwCallState is 0, for any change.
    /// \return
    ///   0                     the state has come; at once if the call has it
    ///   WAITERR_WAITABORTED   the wait was aborted (the reasons stand at the class)
    ///   WAITERR_WAITTIMEDOUT  30 seconds have passed
    LONG WaitForCallState(DWORD dwCallState);
    /// Reads the caller's number and name. Both are "**BLOCKED**" if they are withheld.
    void RetrieveCallerIDInfo();

public:
    // State. Callers read it, derived classes change it. The order is part of the interface.

    DWORD m_dwMediaModes;     ///< wanted, LINEMEDIAMODE_
    HWND m_hMainWnd;          ///< or null
    HWND m_hDialogWnd;        ///< owner of boxes and dialogs, or null
    HLINEAPP m_hLineApp;      ///< 0: not initialised
    DWORD m_dwNumDevs;        ///< line devices
    DWORD m_dwReserved1;      ///< 0
    BOOL m_bShuttingDown;     ///< within ShutdownTAPI
    BOOL m_bHangingUp;        ///< within HangupCall
    BOOL m_bInitializing;     ///< within InitializeTAPI
    BOOL m_bCallInProgress;   ///< set by GrabThePort, or by a derived class that answers; cleared by HangupCall and
                              ///< ShutdownTAPI, which ends waits
    BOOL m_bSilent;           ///< shows no box
    HCALL m_hCall;            ///< the call, or 0
    HLINE m_hLine;            ///< opened by GrabThePort, or 0
    HLINE m_hAnswerLine;      ///< opened by EnableCallAnswer, or 0
    HANDLE m_hComm;           ///< the modem's port, or INVALID_HANDLE_VALUE
    DWORD m_dwReserved2;      ///< 0; from here on for derived classes
    DWORD m_adwReserved[10];  ///< 0
    DWORD m_dwDeviceID;       ///< 0xFFFFFFFF at first
    DWORD m_dwAPIVersion;     ///< negotiated for the device
    DWORD m_dwCallState;      ///< the last, LINECALLSTATE_
    char m_szReserved1[1024]; ///< zero at first; for derived classes
    char m_szReserved2[1024]; ///< zero at first; for derived classes
    BOOL m_bConnected;        ///< the connected state was handled
    BYTE* m_lpDevConfig;      ///< configuration, a local block; copies share it, whoever made the object frees it
    DWORD m_dwDevConfigSize;  ///< its size in bytes
    BOOL m_bReplyReceived;    ///< the reply to the request came
    LONG m_lRequestID;        ///< of the request that a wait is for
    LONG m_lReplyResult;      ///< of its reply
    BOOL m_bCallStateChanged; ///< since WaitForCallState began
    CString m_strCallerID;    ///< number of the caller
    CString m_strCallerName;  ///< name of the caller
    DWORD m_dwLastError;      ///< ZOTAPI_ERROR_
    DWORD m_dwLastErrorFlags; ///< message-box style

private:
    BOOL Initialize(HINSTANCE hInst);
    BOOL RecordError(DWORD code, DWORD flags, DWORD boxStyle);
    BOOL RecordError(DWORD code, DWORD flags = MB_ICONSTOP) { return RecordError(code, flags, flags); }
    BOOL FailGrab(DWORD code);
    BOOL OpenLineForCall();
    BOOL WaitForPort();
    BOOL PlaceCall();
    void DropCall();
    HLINE LineInUse() const;
    BOOL IsWaitOver(HLINE line, BOOL aborted) const;
    LONG AwaitReply(LONG lRequestID, HLINE line);
    LONG AwaitCallState(DWORD dwCallState, HLINE line);
    BOOL OpenAnswerLine();
    BOOL CloseAnswerLine();
    BOOL SetStatusMessages(HLINE line);
    void OnConnected();
    void ClosePort();
    void ReadCallerID();
    void Dispatch(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1, DWORD_PTR dwParam2,
                  DWORD_PTR dwParam3);
    template <class RECORD, class CALL> RECORD* FillRecord(RECORD* p, UINT firstSize, const char* label, CALL call);
    VARSTRING* GetPortHandle();
    VARSTRING* GetDeviceConfig(DWORD dwDeviceID);
    VARSTRING* EditDeviceConfig(HWND hOwner, DWORD dwDeviceID);
    BOOL StoreDeviceConfig(const VARSTRING& config, const char* label);
};
