/// \file
/// Telephone lines, through the Windows Telephony API (TAPI32.DLL, line side).
#pragma once

#include <zogbl/export.h>

#include <afxcoll.h>

#ifndef TAPI_CURRENT_VERSION
#define TAPI_CURRENT_VERSION 0x00010004
#endif
#include <tapi.h>

/// Codes of CZoTAPIInterface, as GetLastTAPIError answers. Behind each stand the message-box style that belongs to it,
/// as GetLastTAPIErrorFlags answers, and when it is set. Unless the object is silent a box tells the user: its text is
/// string 20553 less the code, its style the one given, except where a code has another style for its box.
constexpr DWORD ZOTAPI_ERROR_NONE = 0;
constexpr DWORD ZOTAPI_ERROR_REINIT = 1;         ///< 0x10; lineInitialize asks to wait, and again 5 seconds later
constexpr DWORD ZOTAPI_ERROR_CALLINPROGRESS = 2; ///< 0x10; GrabThePort while a call is in progress
constexpr DWORD ZOTAPI_ERROR_UNSUPPORTEDLINEVERSION = 3; ///< 0x10; no version can be negotiated for the device
constexpr DWORD ZOTAPI_ERROR_NOVOICE = 4;                ///< 0x10; the line has no voice bearer mode
constexpr DWORD ZOTAPI_ERROR_NOMODEM = 5;                ///< 0x10; the line has none of the media modes wanted
constexpr DWORD ZOTAPI_ERROR_NOMAKECALL = 6;             ///< 0x10; the line cannot make calls
constexpr DWORD ZOTAPI_ERROR_ALLOCATED = 7;              ///< 0x10; another program has the port
constexpr DWORD ZOTAPI_ERROR_LINEOPEN = 8;               ///< 0x10; the line cannot be opened or tells no address status
constexpr DWORD ZOTAPI_ERROR_ADDRESSUNAVAIL = 9;         ///< 0x10; address 0 cannot place a call now
constexpr DWORD ZOTAPI_ERROR_NOMEM = 10;                 ///< 0x10; out of memory, here or in the service
constexpr DWORD ZOTAPI_ERROR_MAKECALL = 11;              ///< 0x10; no call, or none that leads to a port
constexpr DWORD ZOTAPI_ERROR_UNHANDLED = 12;             ///< any other error of the service; flags unchanged, no box
constexpr DWORD ZOTAPI_ERROR_INIFILECORRUPT = 13;        ///< 0x40, box 0x24; dialing card or location out of order
constexpr DWORD ZOTAPI_ERROR_NODRIVER = 14;              ///< 0x10; LINEERR_NODRIVER
constexpr DWORD ZOTAPI_ERROR_NOMULTIPLEINSTANCE = 15;    ///< 0x10; LINEERR_NOMULTIPLEINSTANCE
constexpr DWORD ZOTAPI_ERROR_OPERATIONFAILED = 16;       ///< 0x10; LINEERR_OPERATIONFAILED
constexpr DWORD ZOTAPI_ERROR_RESOURCEUNAVAIL = 17;       ///< 0x10, box 0x45; LINEERR_RESOURCEUNAVAIL
constexpr DWORD ZOTAPI_ERROR_NODEVICES = 18; ///< 0x14; no line devices; 0x10 once adding a modem could not be started
constexpr DWORD ZOTAPI_ERROR_INVALADDRESS = 21; ///< 0x10; shown for an address that cannot be translated; then 12
constexpr DWORD ZOTAPI_ERROR_LINECLOSED = 22;   ///< 0x30; the service closed the line
constexpr DWORD ZOTAPI_ERROR_INIFILECORRUPT_SILENT = 25; ///< 0x40; code 13 in a silent object
constexpr DWORD ZOTAPI_ERROR_ANSWERLINEOPEN = 26;        ///< 0x40; the line cannot be opened for answering
// 19, 20, 23 and 24 are reserved, and so are their strings.

/// What EnumerateTAPIDeviceLines reports in its own error argument.
constexpr DWORD ZOTAPI_ENUM_FAILED = 100;

/// Results of WaitForReply and WaitForCallState beside those of the service.
constexpr LONG WAITERR_WAITABORTED = 1;
constexpr LONG WAITERR_WAITTIMEDOUT = 2;

/// One telephone line device: takes its port for a caller that talks to the modem itself, hangs up, listens for
/// incoming calls, lists the devices, opens the service's dialogs, and translates numbers.
///
///     CZoTAPIInterface line(mainWindow, mainWindow, LINEMEDIAMODE_DATAMODEM, FALSE);
///     line.SetTAPILineDeviceID(0);
///     if (line.GrabThePort()) {
///         ... ReadFile, WriteFile on line.m_hComm ...
///         line.HangupCall();
///     } else if (line.m_bCallInProgress) {
///         line.ShutdownTAPI(); // or the next attempt fails as well
///     }
///
/// To watch for calls: SetTAPILineDeviceID, EnableCallAnswer(TRUE), handle the events in a derived class,
/// EnableCallAnswer(FALSE). This class answers none of them. A derived class that does sets m_bCallInProgress before it
/// asks the service to answer: otherwise every wait for the call ends at once, and HangupCall does nothing.
///
/// TAPI32.DLL is loaded by the first call that needs it, and each of its functions is looked up at its first call. What
/// is missing fails with LINEERR_OPERATIONUNAVAIL from then on; a machine without telephony can use everything else.
///
/// The service answers through window messages. Operations that wait for an answer take messages from the thread's
/// queue and dispatch them, so the events below, and whatever else the program does, happen within such a wait. An
/// object belongs to the thread that initialised it, which must have a message loop. A wait ends as aborted if no call
/// is in progress (m_bCallInProgress) or the call is hung up, if its line is closed, if another wait for the same kind
/// of thing ended meanwhile in any object of the process, and if WM_QUIT arrives, which is left for the program's own
/// loop.
///
/// Progress is told to the debugger, one text for each state. Errors are kept as a code and a message-box style until
/// they are asked for. Nothing is thrown; when memory lacks, the code is ZOTAPI_ERROR_NOMEM.
///
/// Copying copies every member. Only one of the copies of an object that is initialised may be used and destroyed as
/// such.
class ZOGBL_API CZoTAPIInterface {
public:
    /// \param hMainWnd, hDialogWnd the program's main window, and the owner of boxes and dialogs; what is no window
    /// counts as null. \param dwMediaModes LINEMEDIAMODE_ flags, as a rule LINEMEDIAMODE_DATAMODEM. \param bSilent
    /// shows no box
    CZoTAPIInterface(HWND hMainWnd, HWND hDialogWnd, DWORD dwMediaModes, BOOL bSilent);
    CZoTAPIInterface(const CZoTAPIInterface&) = default;
    CZoTAPIInterface& operator=(const CZoTAPIInterface&) = default;
    /// Hangs up, closes the lines and leaves the service.
    virtual ~CZoTAPIInterface();

    /// Registers with the service. \param hInst null: the instance handle of the framework's module state.
    /// An object that is initialised already forgets its call and lines, without closing them, and answers TRUE: this
    /// is prescribed. FALSE within itself and on failure (1, 10, 12 to 18, 25).
    virtual BOOL InitializeTAPI(HINSTANCE hInst);
    /// Hangs up, closes the port and leaves the service, which closes the lines. \return TRUE, whatever the service
    /// says
    virtual BOOL ShutdownTAPI();
    /// Opens the line, with the right to own its calls, or closes it. Initialises if need be. A line that was open for
    /// answering is closed before it is opened anew.
    /// \return TRUE once the service, or the user by asking to try again, has accepted one attempt: even if a later one
    /// failed, so look at m_hAnswerLine. FALSE: initialising failed; no device (18); 3, 4, 5, 7, 26, or the code of
    /// what could not be asked. Closing: FALSE when the service refused; the line counts as closed all the same.
    virtual BOOL EnableCallAnswer(BOOL bEnable);
    /// Opens the device of SetTAPILineDeviceID and places a call without a number, which makes the modem's port
    /// available as m_hComm. Initialises if need be. Waits without limit for the service.
    /// \return TRUE with m_hComm valid. FALSE: initialising failed; 2 to 11, 18; the codes of what could not be asked.
    /// After FALSE the line is closed, except after 2, which changes nothing. If the device was asked but its line not
    /// opened, and if the service closed the line, the call stays in progress, so that the next GrabThePort fails with
    /// 2. So after FALSE look at m_bCallInProgress: ShutdownTAPI ends it.
    virtual BOOL GrabThePort();
    /// Closes the port, drops and deallocates the call and closes the line that GrabThePort opened. A call of the
    /// answer line is ended in the same way, but that line stays open. Without a line, or without a call in progress,
    /// or within itself, it does nothing. Waits for the service, for the idle state at most 30 seconds; a line that the
    /// service closes meanwhile is not waited for. \return TRUE
    virtual BOOL HangupCall();

    // Events. Each takes the values of the service's callback.

    /// Notes the result of the request that is being waited for.
    virtual void DoLineReply(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                             DWORD_PTR dwParam2, DWORD_PTR dwParam3);
    /// The service closed a line: forgets the call and the line that GrabThePort opened or, if there is none, the
    /// answer line (22). The call stays in progress until ShutdownTAPI, or until the end of HangupCall if that is
    /// waiting.
    virtual void DoLineClose(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                             DWORD_PTR dwParam2, DWORD_PTR dwParam3);
    /// Hangs up if the device is disconnected, out of service or under maintenance; shuts down if the service asks for
    /// a new start.
    virtual void DoLineDevState(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                                DWORD_PTR dwParam2, DWORD_PTR dwParam3);
    /// Keeps the state and, with the owner's privilege, the call. Connected: gets the port into m_hComm; busy, at
    /// special information, disconnected or idle: hangs up. For a call that is only monitored the state alone is kept.
    virtual void DoLineCallState(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                                 DWORD_PTR dwParam2, DWORD_PTR dwParam3);
    /// Counts a new device: m_dwNumDevs reaches to it.
    virtual void DoLineCreate(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                              DWORD_PTR dwParam2, DWORD_PTR dwParam3);
    /// Reads who calls, if the call is the current one and the answer line alone is open.
    virtual void DoLineCallInfo(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                                DWORD_PTR dwParam2, DWORD_PTR dwParam3);

    void SetTAPILineDeviceID(DWORD dwDeviceID) { m_dwDeviceID = dwDeviceID; }
    /// Fetches the device's configuration into m_lpDevConfig, unless one is there already, and lets the user edit it.
    /// It is kept in the object, not applied to the device. On failure what was there stays. A device that tells none
    /// leaves none. \param bNoDialog fetches only
    void PreConfigureDevice(HWND hOwner, DWORD dwDeviceID, BOOL bNoDialog);
    /// Appends the name of each device that can be used, "Line Unnamed" for one without a name. Devices that cannot are
    /// left out, so positions need not be device IDs. Initialises if need be.
    /// \param pNames may be null: they are counted only. \param pRegKeys may be null; for each name the device's
    /// registry key, or an empty text
    /// \param dwError 0, or ZOTAPI_ENUM_FAILED: initialising failed, or (10) memory lacked for a name; those before
    /// stay
    /// \return the number of names appended
    DWORD EnumerateTAPIDeviceLines(CStringArray* pNames, DWORD& dwError, CStringArray* pRegKeys);
    DWORD GetLastTAPIError();      ///< \return the last code, which is then forgotten
    DWORD GetLastTAPIErrorFlags(); ///< \return its message-box style; 0x10 from then on
    /// Shows the service's dialing properties. Initialises if need be. \return FALSE in every case, as is prescribed
    BOOL DisplaylineTranslateDialog();
    /// Translates an address, as "+1 (425) 5550100", to what a modem dials from here. Initialises if need be.
    /// \param pOut null, or a local block to use, which is the operation's from then on
    /// \param dwTranslateOptions LINETRANSLATEOPTION_ flags; LINETRANSLATEOPTION_CANCELCALLWAITING is always added
    /// \return a local block for the caller to free with LocalFree; null on failure. An address that the service does
    /// not understand is shown to the user as 21, but leaves 12.
    LINETRANSLATEOUTPUT* TranslateCanonicalToDialable(LINETRANSLATEOUTPUT* pOut, DWORD dwDeviceID,
                                                      DWORD dwTranslateOptions, const char* pszAddress);

protected:
    /// The service's callback. The instance is the object; events that concern the service as a whole come without one
    /// and go to every initialised object. Exceptions end here.
    static void CALLBACK lineCallbackFunc(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                                          DWORD_PTR dwParam2, DWORD_PTR dwParam3);

    /// Every result of the service comes here. \return TRUE to go on: the call succeeded, or it is to be tried again.
    BOOL HandleLineErr(LONG lLineErr);
    /// 13; asks, and opens the dialing properties whatever the answer; TRUE. FALSE: silent (25), no box, or WM_QUIT
    /// came.
    BOOL HandleIniFileCorrupt();
    BOOL HandleNoDriver();             ///< 14; FALSE
    BOOL HandleNoMultipleInstance();   ///< 15; FALSE
    BOOL HandleNoMem();                ///< 10; FALSE
    BOOL HandleOperationFailed();      ///< 16; FALSE
    BOOL HandleResourceUnavail();      ///< 17; TRUE when the user wants to try again
    BOOL HandleNoDevicesInstalled();   ///< 18; offers to add a modem; FALSE
    BOOL HandleReInit();               ///< the service wants a new start: shuts down; FALSE
    BOOL LaunchModemControlPanelAdd(); ///< FALSE, for the modem is not there yet
    /// Shows the text of a code, unless silent. \return the button; 0 when no box could be shown.
    int DisplayTAPIErrorBox(DWORD dwError, DWORD dwStyle);

    /// A zeroed local block of at least \p size bytes, its size in the first double word: \p p if it is large enough,
    /// or else a new one in its place. \return null, with \p p freed, when memory lacks (10); null, with \p p
    /// untouched, when that is no local block or an empty one. \param label for the debugger
    void* ZoCheckAndReAllocBuffer(void* p, UINT size, const char* label);

    // Wrappers that grow their record, given or new, until the service has room in it. They return it for the caller to
    // free with LocalFree, or null, with the record freed. Of a record that is returned, all behind what the service
    // has used is zero; whether its parts lie within, the reader checks.

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

    /// Call parameters that ask for the bare modem. \param pszAddress shown for the call; null counts as empty.
    /// \return as the wrappers above
    LINECALLPARAMS* CreateCallParams(LINECALLPARAMS* p, const char* pszAddress);
    /// Waits, without limit, for the reply to a request. \param lRequestID as the function returned it: an error or 0
    /// is returned at once. \return the reply's result, or WAITERR_WAITABORTED
    LONG WaitForReply(LONG lRequestID);
    /// Waits for a call state, or for any change when \p dwCallState is 0. \return 0, at once if that is the state
    /// already; WAITERR_WAITABORTED; or after 30 seconds WAITERR_WAITTIMEDOUT
    LONG WaitForCallState(DWORD dwCallState);
    /// Reads the caller's number and name; "**BLOCKED**" for both when they are withheld.
    void RetrieveCallerIDInfo();

public:
    // State. Callers read it, derived classes change it; the order is part of the interface.

    DWORD m_dwMediaModes;     ///< wanted, LINEMEDIAMODE_
    HWND m_hMainWnd;          ///< or null
    HWND m_hDialogWnd;        ///< owner of boxes and dialogs, or null
    HLINEAPP m_hLineApp;      ///< 0: not initialised
    DWORD m_dwNumDevs;        ///< line devices
    DWORD m_dwReserved1;      ///< 0
    BOOL m_bShuttingDown;     ///< within ShutdownTAPI
    BOOL m_bHangingUp;        ///< within HangupCall
    BOOL m_bInitializing;     ///< within InitializeTAPI
    BOOL m_bCallInProgress;   ///< GrabThePort, or who answers, to HangupCall or ShutdownTAPI; clearing it ends waits
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
    BYTE* m_lpDevConfig;      ///< configuration, a local block; copies share it, so whoever made the object frees it
    DWORD m_dwDevConfigSize;  ///< its size in bytes
    BOOL m_bReplyReceived;    ///< the reply that is waited for came
    LONG m_lRequestID;        ///< of the request that is waited for
    LONG m_lReplyResult;      ///< of its reply
    BOOL m_bCallStateChanged; ///< since WaitForCallState began
    CString m_strCallerID;    ///< number of who calls
    CString m_strCallerName;  ///< name of who calls
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
