/// \file
/// Application framework: geometry, drawing, windows, controls, dialogs, threads, the application.
#pragma once

#include <afx.h>
#include <afxcoll.h>
#include <afxmsg_.h>
#include <afxres.h>

class CDataExchange;
class CDC;
class CDocTemplate;
class CDocument;
class CDynLinkLibrary;
class CFrameWnd;
class CView;
class CWinApp;
class CWinThread;
class CWnd;
struct CCreateContext;

// ---------------------------------------------------------------------------------------------------------------------
// Module state

/// The state that all modules of the process share. Until AfxWinInit the instance is the program: a host without an
/// application object never calls it.
struct AFX_MODULE_STATE {
    CWinApp* m_pCurrentWinApp = nullptr;
    HINSTANCE m_hCurrentInstanceHandle = ::GetModuleHandleA(nullptr);
    HINSTANCE m_hCurrentResourceHandle = m_hCurrentInstanceHandle;
    LPCSTR m_lpszCurrentAppName = nullptr;
    CRuntimeClass* m_pClassList = nullptr;     ///< classes of the application, or of the module being loaded
    CDynLinkLibrary* m_pLibraryList = nullptr; ///< extension libraries, the newest first
    int (*m_pfnMessageBox)(HWND, LPCSTR, LPCSTR, UINT) = nullptr;
};

AFX_API AFX_MODULE_STATE* AFXAPI AfxGetModuleState();

/// Starts the framework in a program with its own main function. \return FALSE on failure.
AFX_API BOOL AFXAPI AfxWinInit(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPSTR lpCmdLine, int nCmdShow);
/// The body of WinMain: starts the framework, then runs the application object. \return the process's exit code.
AFX_API int AFXAPI AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPSTR lpCmdLine, int nCmdShow);

inline CWinApp* AFXAPI AfxGetApp() { return AfxGetModuleState()->m_pCurrentWinApp; }
inline HINSTANCE AFXAPI AfxGetInstanceHandle() { return AfxGetModuleState()->m_hCurrentInstanceHandle; }
inline HINSTANCE AFXAPI AfxGetResourceHandle() { return AfxGetModuleState()->m_hCurrentResourceHandle; }
inline void AFXAPI AfxSetResourceHandle(HINSTANCE h) { AfxGetModuleState()->m_hCurrentResourceHandle = h; }
inline LPCSTR AFXAPI AfxGetAppName() { return AfxGetModuleState()->m_lpszCurrentAppName; }
AFX_API CWinThread* AFXAPI AfxGetThread();
AFX_API CWnd* AFXAPI AfxGetMainWnd();

/// The module that holds a resource: the resource handle's module, then the extension libraries of the chain, the
/// framework's own last. \return the resource handle when none has it.
AFX_API HINSTANCE AFXAPI AfxFindResourceHandle(LPCSTR lpszName, LPCSTR lpszType);
/// The module that holds a string, in the same order: the string itself, not only its block of 16. Null if none has it.
AFX_API HINSTANCE AFXAPI AfxFindStringResourceHandle(UINT nID);

/// Part \p iSubString, counted from 0, of a text whose parts \p chSep separates.
/// \return FALSE, with \p rString empty, when there are fewer.
AFX_API BOOL AFXAPI AfxExtractSubString(CString& rString, LPCSTR lpszFullString, int iSubString, char chSep = '\n');

/// Puts a string resource into \p rString, with \p lpsz1 and \p lpsz2 in the places of its "%1" and "%2".
AFX_API void AFXAPI AfxFormatString1(CString& rString, UINT nIDS, LPCSTR lpsz1);
AFX_API void AFXAPI AfxFormatString2(CString& rString, UINT nIDS, LPCSTR lpsz1, LPCSTR lpsz2);

/// Shows a message box over the main window, titled with the application's name, by the application's DoMessageBox.
/// \param nIDHelp help context; 0 for none in particular
AFX_API int AFXAPI AfxMessageBox(LPCSTR lpszText, UINT nType = MB_OK, UINT nIDHelp = 0);
/// \param nIDHelp help context; -1 for the number of the text
AFX_API int AFXAPI AfxMessageBox(UINT nIDPrompt, UINT nType = MB_OK, UINT nIDHelp = static_cast<UINT>(-1));

/// Lets all boxes of AfxMessageBox be shown by \p pfnMessageBox, which does what the system's MessageBox does; null: by
/// the system. An application that overrides DoMessageBox comes first.
typedef int (*AFX_MESSAGE_BOX)(HWND hWnd, LPCSTR lpszText, LPCSTR lpszCaption, UINT nType);
AFX_API void AFXAPI AfxSetMessageBox(AFX_MESSAGE_BOX pfnMessageBox);

/// Registers (once) a window class with the given style, cursor, brush and icon. \return its name; throws
/// CResourceException* on failure.
AFX_API LPCSTR AFXAPI AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor = nullptr, HBRUSH hbrBackground = nullptr,
                                          HICON hIcon = nullptr);
AFX_API BOOL AFXAPI AfxRegisterClass(WNDCLASS* lpWndClass);
/// The window procedure of every window that belongs to a CWnd.
AFX_API LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam);

// ---------------------------------------------------------------------------------------------------------------------
// Geometry

class CSize : public SIZE {
public:
    CSize() : SIZE{0, 0} {}
    CSize(int initCX, int initCY) : SIZE{initCX, initCY} {}
};

class CRect : public RECT {
public:
    CRect() : RECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
    CRect(const RECT& srcRect) : RECT(srcRect) {}

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }
};

// ---------------------------------------------------------------------------------------------------------------------
// Drawing

/// A drawing object: owns its handle, if it has one, and deletes it.
class AFX_API CGdiObject : public CObject {
    DECLARE_DYNAMIC(CGdiObject)
public:
    CGdiObject() = default;
    ~CGdiObject() override;
    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    BOOL Attach(HGDIOBJ hObject);
    HGDIOBJ Detach();
    BOOL DeleteObject();
    /// Describes the object in at most \p nCount bytes. \return the bytes written, 0 on failure
    int GetObject(int nCount, LPVOID lpObject) const { return ::GetObject(m_hObject, nCount, lpObject); }

    HGDIOBJ m_hObject = nullptr;
};

/// A bitmap. An object that holds one already lets go of it only by Detach or DeleteObject.
class AFX_API CBitmap : public CGdiObject {
    DECLARE_DYNAMIC(CBitmap)
public:
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
    /// Loads a resource found through the resource chain.
    BOOL LoadBitmap(LPCSTR lpszResourceName);
    BOOL LoadBitmap(UINT nIDResource) { return LoadBitmap(MAKEINTRESOURCE(nIDResource)); }
    BOOL CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits)
    {
        return Attach(::CreateBitmap(nWidth, nHeight, nPlanes, nBitcount, lpBits));
    }
    BOOL CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight);
};

/// A device context.
class AFX_API CDC : public CObject {
    DECLARE_DYNAMIC(CDC)
public:
    CDC() = default;
    ~CDC() override;
    BOOL Attach(HDC hDC);
    HDC Detach();
    HDC GetSafeHdc() const { return m_hDC; }
    BOOL DeleteDC();

    HGDIOBJ SelectObject(HGDIOBJ hObject) { return ::SelectObject(m_hDC, hObject); }
    COLORREF SetTextColor(COLORREF crColor) { return ::SetTextColor(m_hDC, crColor); }
    int SetBkMode(int nBkMode) { return ::SetBkMode(m_hDC, nBkMode); }
    int DrawText(LPCSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat)
    {
        return ::DrawText(m_hDC, lpszString, nCount, lpRect, nFormat);
    }
    CSize GetTextExtent(LPCSTR lpszString, int nCount) const;

    HDC m_hDC = nullptr;
};

/// The client area of a window, between construction and destruction. Throws CResourceException* on failure.
class AFX_API CClientDC : public CDC {
    DECLARE_DYNAMIC(CClientDC)
public:
    explicit CClientDC(CWnd* pWnd);
    ~CClientDC() override;

private:
    HWND m_hWnd;
};

/// Painting in answer to WM_PAINT.
class AFX_API CPaintDC : public CDC {
    DECLARE_DYNAMIC(CPaintDC)
public:
    explicit CPaintDC(CWnd* pWnd);
    ~CPaintDC() override;
    PAINTSTRUCT m_ps;

private:
    HWND m_hWnd;
};

// ---------------------------------------------------------------------------------------------------------------------
// Command targets

/// What a command-update handler changes: a menu item.
class AFX_API CCmdUI {
public:
    virtual ~CCmdUI() = default;
    virtual void Enable(BOOL bOn = TRUE);
    virtual void SetCheck(int nCheck = 1);
    virtual void SetText(LPCSTR lpszText);

    UINT m_nID = 0;
    UINT m_nIndex = 0; ///< position in the menu
    HMENU m_hMenu = nullptr;
};

/// Anything that has a message map.
class AFX_API CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)
public:
    /// Looks for a handler of a command and calls it. \param nCode CN_COMMAND, CN_UPDATE_COMMAND_UI, or a control's
    /// notification code, with WM_NOTIFY in the high word if it came by that message. \param pExtra as in AFX_CALL.
    /// \return whether there was a handler.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo);

protected:
    static const AFX_MSGMAP* AFXAPI GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
    /// Calls the handler of the first entry for the message in this class's map or a base class's.
    BOOL DispatchMessageMap(UINT nMessage, UINT nCode, UINT nID, AFX_CALL& call);
};

/// Shows the hourglass for the life of the object.
class CWaitCursor {
public:
    CWaitCursor() : m_hOld(::SetCursor(::LoadCursor(nullptr, IDC_WAIT))) {}
    ~CWaitCursor() { ::SetCursor(m_hOld); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;

private:
    HCURSOR m_hOld;
};

// ---------------------------------------------------------------------------------------------------------------------
// Windows

/// A window. The permanent map leads from a handle to its CWnd from the moment the window begins to exist; FromHandle
/// makes temporary objects for handles that have none, which live until the thread is next idle.
class AFX_API CWnd : public CCmdTarget {
    DECLARE_DYNCREATE(CWnd)
public:
    CWnd() = default;
    ~CWnd() override; ///< destroys the window if it still exists

    HWND GetSafeHwnd() const { return m_hWnd; }
    static CWnd* AFXAPI FromHandle(HWND hWnd);
    static CWnd* AFXAPI FromHandlePermanent(HWND hWnd);
    BOOL Attach(HWND hWndNew);
    HWND Detach();
    BOOL SubclassWindow(HWND hWnd);
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    HWND UnsubclassWindow();

    virtual BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                        UINT nID);
    /// When no window comes of it, PostNcDestroy has been called: an object that deletes itself is gone.
    BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, int x, int y, int nWidth,
                  int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam = nullptr);
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs);
    virtual BOOL DestroyWindow();

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::SendMessage(m_hWnd, message, wParam, lParam);
    }
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::PostMessage(m_hWnd, message, wParam, lParam);
    }
    void SetWindowText(LPCSTR lpszString) { ::SetWindowText(m_hWnd, lpszString); }
    void GetWindowText(CString& rString) const;
    BOOL ShowWindow(int nCmdShow) { return ::ShowWindow(m_hWnd, nCmdShow); }
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    void Invalidate(BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, bErase); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL EnableWindow(BOOL bEnable = TRUE) { return ::EnableWindow(m_hWnd, bEnable); }
    void MoveWindow(LPCRECT lpRect, BOOL bRepaint = TRUE);
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE)
    {
        ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
    }
    void GetClientRect(LPRECT lpRect) const { ::GetClientRect(m_hWnd, lpRect); }
    void GetWindowRect(LPRECT lpRect) const { ::GetWindowRect(m_hWnd, lpRect); }
    void CenterWindow(CWnd* pAlternateOwner = nullptr);
    CWnd* GetDlgItem(int nID) const { return FromHandle(::GetDlgItem(m_hWnd, nID)); }
    void SetDlgItemText(int nID, LPCSTR lpszString) { ::SetDlgItemText(m_hWnd, nID, lpszString); }
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* GetFocus() { return FromHandle(::GetFocus()); }
    /// \param nElapse in milliseconds. \return 0 on failure.
    UINT_PTR SetTimer(UINT_PTR nIDEvent, UINT nElapse) { return ::SetTimer(m_hWnd, nIDEvent, nElapse, nullptr); }
    BOOL KillTimer(UINT_PTR nIDEvent) { return ::KillTimer(m_hWnd, nIDEvent); }

    BOOL SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags)
    {
        return ::SetWindowPos(m_hWnd, pWndInsertAfter != nullptr ? pWndInsertAfter->m_hWnd : nullptr, x, y, cx, cy,
                              nFlags);
    }
    /// Exchanges data between members and controls by DoDataExchange; TRUE moves it from the controls. What the
    /// controls notify meanwhile does not reach the window's handlers, for the members are not complete.
    /// \return FALSE when the exchange failed, which the user has been told of, and when one is going on already
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);
    /// The nearest frame that this window lies in, null when there is none.
    CFrameWnd* GetParentFrame() const;

    virtual BOOL PreTranslateMessage(MSG* pMsg);
    /// Runs messages until EndModalLoop. \return the result given there; -1 when the thread is told to quit meanwhile.
    int RunModalLoop();
    virtual void EndModalLoop(int nResult);

    HWND m_hWnd = nullptr;

protected:
    friend struct AfxMessageDelivery;

    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// A control gets a message back that it caused its parent to receive. \return whether the control dealt with it.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual void DoDataExchange(CDataExchange*) {}
    virtual void PreSubclassWindow() {}
    virtual void PostNcDestroy() {}
    /// The default handling of the message at hand, for handlers that add to it.
    LRESULT Default();

    afx_msg int OnCreate(CREATESTRUCT*) { return static_cast<int>(Default()); }
    afx_msg void OnDestroy() { Default(); }
    afx_msg void OnClose() { Default(); }
    afx_msg void OnPaint() { Default(); }
    afx_msg void OnSize(UINT, int, int) { Default(); }
    afx_msg void OnSetFocus(CWnd*) { Default(); }
    afx_msg void OnGetMinMaxInfo(MINMAXINFO*) { Default(); }
    afx_msg void OnTimer(UINT_PTR) { Default(); }
    afx_msg void OnInitMenuPopup(HMENU hMenu, UINT nIndex, BOOL bSysMenu);
    afx_msg void OnNcDestroy();
    DECLARE_MESSAGE_MAP()

    BOOL m_bModalRunning = FALSE; // until EndModalLoop
    int m_nModalResult = 0;

private:
    WNDPROC m_pfnSuper = nullptr; // the procedure of the window's own class, behind the framework's
    BOOL m_bExchanging = FALSE;   // in UpdateData
};

// ---------------------------------------------------------------------------------------------------------------------
// Controls

class AFX_API CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)
public:
    BOOL Create(LPCSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID = 0xFFFF);
};

/// A push button, check box or radio button, by its style.
class AFX_API CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)
public:
    BOOL Create(LPCSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int nCheck) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck)); }
};

class AFX_API CEdit : public CWnd {
    DECLARE_DYNAMIC(CEdit)
public:
    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    /// Selects characters, and scrolls to the end of the selection.
    void SetSel(int nStartChar, int nEndChar)
    {
        SendMessage(EM_SETSEL, static_cast<WPARAM>(nStartChar), nEndChar);
        SendMessage(EM_SCROLLCARET);
    }
};

/// A list box. An owner-drawn one draws itself: derive from it and override DrawItem.
class AFX_API CListBox : public CWnd {
    DECLARE_DYNAMIC(CListBox)
public:
    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetCount() const { return static_cast<int>(SendMessage(LB_GETCOUNT)); }
    int GetCurSel() const { return static_cast<int>(SendMessage(LB_GETCURSEL)); }
    int SetCurSel(int nSelect) { return static_cast<int>(SendMessage(LB_SETCURSEL, static_cast<WPARAM>(nSelect))); }
    int AddString(LPCSTR lpszItem)
    {
        return static_cast<int>(SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(lpszItem)));
    }
    void ResetContent() { SendMessage(LB_RESETCONTENT); }
    void* GetItemDataPtr(int nIndex) const;
    int SetItemHeight(int nIndex, UINT cyItemHeight)
    {
        return static_cast<int>(SendMessage(LB_SETITEMHEIGHT, static_cast<WPARAM>(nIndex), cyItemHeight));
    }

    virtual void DrawItem(DRAWITEMSTRUCT* lpDrawItemStruct);
    virtual void MeasureItem(MEASUREITEMSTRUCT* lpMeasureItemStruct);
    /// \return -1, 0 or 1: whether the first item stands before, with or behind the second.
    virtual int CompareItem(COMPAREITEMSTRUCT* lpCompareItemStruct);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

class AFX_API CComboBox : public CWnd {
    DECLARE_DYNAMIC(CComboBox)
public:
    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetCount() const { return static_cast<int>(SendMessage(CB_GETCOUNT)); }
    int GetCurSel() const { return static_cast<int>(SendMessage(CB_GETCURSEL)); }
    int SetCurSel(int nSelect) { return static_cast<int>(SendMessage(CB_SETCURSEL, static_cast<WPARAM>(nSelect))); }
    int AddString(LPCSTR lpszString)
    {
        return static_cast<int>(SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(lpszString)));
    }
    void ResetContent() { SendMessage(CB_RESETCONTENT); }
    void* GetItemDataPtr(int nIndex) const;
};

// ---------------------------------------------------------------------------------------------------------------------
// Frames and dialogs

/// A main window, or with a view in it the window of a document. Deletes itself when its window goes; when it is the
/// main window of its thread, the thread ends. Commands go to the active view first, then to the frame, then to the
/// application.
class AFX_API CFrameWnd : public CWnd {
    DECLARE_DYNCREATE(CFrameWnd)
public:
    BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                HMENU hMenu, DWORD dwExStyle = 0, CCreateContext* pContext = nullptr);
    /// Creates the window with the icon of that number.
    virtual BOOL LoadFrame(UINT nIDResource, DWORD dwDefaultStyle = WS_OVERLAPPEDWINDOW, CWnd* pParentWnd = nullptr,
                           CCreateContext* pContext = nullptr);

    static const RECT rectDefault; ///< lets the system choose place and size

    virtual CFrameWnd* GetActiveFrame() { return this; }
    CView* GetActiveView() const { return m_pViewActive; }
    virtual CDocument* GetActiveDocument();
    void SetActiveView(CView* pViewNew, BOOL bNotify = TRUE);
    /// Called for WM_CREATE: makes the view that \p pContext asks for. Nothing is to be made when it is null.
    virtual BOOL OnCreateClient(CREATESTRUCT* lpcs, CCreateContext* pContext);
    /// \return the view, null on failure
    CWnd* CreateView(CCreateContext* pContext, UINT nID = AFX_IDW_PANE_FIRST);
    /// Sends all views their initial update and shows the frame.
    void InitialUpdateFrame(CDocument* pDoc, BOOL bMakeVisible);
    virtual void OnUpdateFrameTitle(BOOL) {}        ///< shows the document's title if \p bAddToTitle
    virtual void RecalcLayout(BOOL bNotify = TRUE); ///< lets the active view fill the frame

    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override;

protected:
    /// Registers a window class with the icon of that number. \return its name, null on failure
    static LPCSTR FrameWindowClass(UINT nIDResource);
    void PostNcDestroy() override;
    afx_msg int OnCreate(CREATESTRUCT* lpCreateStruct);
    afx_msg void OnClose();
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    DECLARE_MESSAGE_MAP()

private:
    CView* m_pViewActive = nullptr;
};

/// A dialog from a template resource, found through the resource chain, or from a template in memory.
class AFX_API CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)
public:
    CDialog() = default;
    explicit CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    ~CDialog() override;

    /// The template must live until DoModal has returned.
    BOOL InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr);
    /// Shows the dialog, its owner disabled, until EndDialog. \return the result given there, -1 when the dialog could
    /// not be made.
    virtual INT_PTR DoModal();
    /// Also in OnInitDialog: then the dialog is not shown.
    void EndDialog(int nResult);

    /// Fills the controls by UpdateData. \return TRUE unless the override gave the focus to a control.
    virtual BOOL OnInitDialog();

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    virtual void OnOK(); ///< takes over the controls' data by UpdateData; if that fails the dialog stays
    virtual void OnCancel();
    afx_msg LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    LPCSTR m_lpszTemplateName = nullptr;
    LPCDLGTEMPLATE m_lpDialogTemplate = nullptr;
    CWnd* m_pParentWnd = nullptr;
};

/// One exchange of a dialog's data, handed to the DDX_ and DDV_ functions.
class AFX_API CDataExchange {
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate) : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}

    /// Each DDX_ function begins with one of these: the control is the one that a failure from here on concerns.
    /// \return the control; a dialog without it throws CResourceException*
    HWND PrepareCtrl(int nIDC);
    HWND PrepareEditCtrl(int nIDC);
    /// Ends the exchange, after the user was told why: gives the focus to the control prepared last, all of its text
    /// selected if it is an edit field, and throws CUserException*.
    [[noreturn]] void Fail();

    BOOL m_bSaveAndValidate; ///< TRUE: from the controls to the members
    CWnd* m_pDlgWnd;

private:
    friend AFX_API void AFXAPI DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars);

    HWND m_hWndLastControl = nullptr;
    BOOL m_bEditLastControl = FALSE;
};

AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
/// Whole numbers in decimal digits, with blanks around them and, for the signed types, a sign. Anything else, and what
/// the type cannot hold, fails the exchange.
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, int& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, UINT& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, long& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, DWORD& value);
/// The selected item of a list box or combo box; -1 for none.
AFX_API void AFXAPI DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index);
AFX_API void AFXAPI DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);
AFX_API void AFXAPI DDX_Check(CDataExchange* pDX, int nIDC, int& value);
/// The buttons of a group, whose first one is \p nIDC, are numbered from 0; -1 when none is checked.
AFX_API void AFXAPI DDX_Radio(CDataExchange* pDX, int nIDC, int& value);
/// Makes \p rControl the window of the control, if it is not yet.
AFX_API void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);

/// Fails the exchange for a text of more than \p nChars bytes. Loading, it keeps the edit field prepared last from
/// taking more.
AFX_API void AFXAPI DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars);

// ---------------------------------------------------------------------------------------------------------------------
// Threads and the application

/// A thread with a message loop. The suite runs on the main thread alone.
class AFX_API CWinThread : public CCmdTarget {
    DECLARE_DYNAMIC(CWinThread)
public:
    CWinThread() = default;

    virtual BOOL InitInstance();
    virtual int Run();
    virtual int ExitInstance();
    /// \param lCount number of calls since the last message. \return TRUE to be called again.
    virtual BOOL OnIdle(LONG lCount);
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    /// Fetches and dispatches one message. \return FALSE for WM_QUIT.
    virtual BOOL PumpMessage();
    /// Called with an exception that a message handler let go; the message then counts as answered with the result.
    virtual LRESULT ProcessWndProcException(CException* e, const MSG* pMsg);

    CWnd* m_pMainWnd = nullptr;
    MSG m_msgCur = {};
};

/// The application object: a program defines exactly one, at file scope.
class AFX_API CWinApp : public CWinThread {
    DECLARE_DYNAMIC(CWinApp)
public:
    explicit CWinApp(LPCSTR lpszAppName = nullptr);
    ~CWinApp() override;

    int ExitInstance() override;
    HICON LoadIcon(UINT nIDResource) const;
    /// Shows what AfxMessageBox was asked for. \param nIDPrompt help context, 0 for none in particular
    virtual int DoMessageBox(LPCSTR lpszPrompt, UINT nType, UINT nIDPrompt);

    /// Enters a type of documents in the list; the application owns it from here on.
    void AddDocTemplate(CDocTemplate* pTemplate);
    POSITION GetFirstDocTemplatePosition() const;
    /// \param pos is set to null behind the last one.
    CDocTemplate* GetNextDocTemplate(POSITION& pos) const;
    void CloseAllDocuments(BOOL bEndSession);
    /// Lets each document ask whether to save it. \return FALSE as soon as one must stay open.
    virtual BOOL SaveAllModified();

    LPCSTR m_pszAppName;
    /// The help file in force, at first the program's path with ".HLP". From malloc: whoever puts another in its place
    /// frees the one before.
    LPCSTR m_pszHelpFilePath = nullptr;
    HINSTANCE m_hInstance = nullptr;
    LPSTR m_lpCmdLine = nullptr;
    int m_nCmdShow = SW_SHOWNORMAL;

private:
    CPtrArray m_docTemplates;
};

#include <afxdoc_.h>
