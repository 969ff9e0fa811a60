/// \file
/// Application framework: command targets and windows. Included by afxwin.h.
#pragma once

#include <afxmsg_.h>

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
