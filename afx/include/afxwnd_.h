/// \file
/// Application framework: windows. Included by afxwin.h.
#pragma once

#include <afxcmd_.h>
#include <afxgeo_.h>

class CFont;
class CListBox;
class CMenu;
class CRgn;
class CScrollBar;
struct tagTOOLINFOA; // TOOLINFO of the system's commctrl.h

/// The handle of the window of \p pWnd; null without window, and for a null pointer.
AFX_API HWND AFXAPI AfxGetSafeHwnd(const CWnd* pWnd);

/// Idle work of RunModalLoop that is left out, or done (MLF_SHOWONIDLE: the window is shown only then).
#define MLF_NOIDLEMSG 0x0001
#define MLF_NOKICKIDLE 0x0002
#define MLF_SHOWONIDLE 0x0004

/// A window. The permanent map leads from a handle to its CWnd from the moment the window begins to exist; FromHandle
/// makes temporary objects for handles that have none, which live until the thread is next idle in its main loop.
/// Where a CWnd* names another window, null stands for none.
class AFX_API CWnd : public CCmdTarget {
    DECLARE_DYNCREATE(CWnd)
public:
    CWnd() = default;
    ~CWnd() override; ///< destroys the window if it still exists

    // Handle
    HWND GetSafeHwnd() const { return AfxGetSafeHwnd(this); } ///< also of a null pointer
    operator HWND() const { return m_hWnd; }
    bool operator==(const CWnd& wnd) const { return m_hWnd == wnd.m_hWnd; }
    static CWnd* AFXAPI FromHandle(HWND hWnd);
    static CWnd* AFXAPI FromHandlePermanent(HWND hWnd);
    static void AFXAPI DeleteTempMap();
    BOOL Attach(HWND hWndNew); ///< \return FALSE for a null handle, and for an object that has a window already
    HWND Detach();
    BOOL SubclassWindow(HWND hWnd); ///< \return FALSE for the same, as all that creates a window
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    HWND UnsubclassWindow();

    // Creation and end
    virtual BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                        UINT nID);
    /// When no window comes of it, PostNcDestroy has been called: an object that deletes itself is gone.
    BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, int x, int y, int nWidth,
                  int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam = nullptr);
    BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                  CWnd* pParentWnd, UINT nID, LPVOID lpParam = nullptr);
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs);
    virtual BOOL DestroyWindow();

    // Messages
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::SendMessage(m_hWnd, message, wParam, lParam);
    }
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::PostMessage(m_hWnd, message, wParam, lParam);
    }
    /// \param bDeep also to the children's children \param bOnlyPerm only to windows that have a permanent object
    void SendMessageToDescendants(UINT message, WPARAM wParam = 0, LPARAM lParam = 0, BOOL bDeep = TRUE,
                                  BOOL bOnlyPerm = FALSE);
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    BOOL IsDialogMessage(LPMSG lpMsg) { return ::IsDialogMessage(m_hWnd, lpMsg); }
    /// Runs messages until EndModalLoop. While none waits, the window gets WM_KICKIDLE and its parent WM_ENTERIDLE.
    /// \return the result given there; -1 when the thread is told to quit meanwhile.
    int RunModalLoop(DWORD dwFlags = 0);
    virtual BOOL ContinueModal() { return m_bModalRunning; } ///< asked by RunModalLoop after each message
    virtual void EndModalLoop(int nResult);

    // Styles, text, font
    DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLong(m_hWnd, GWL_STYLE)); }
    DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLong(m_hWnd, GWL_EXSTYLE)); }
    /// \param nFlags further ones of SetWindowPos, which is called if they are not 0, so that the border is drawn anew
    /// \return FALSE: all was so already
    BOOL ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    BOOL ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    void SetWindowText(LPCSTR lpszString) { ::SetWindowText(m_hWnd, lpszString); }
    void GetWindowText(CString& rString) const;
    int GetWindowText(LPSTR lpszStringBuf, int nMaxCount) const
    {
        return ::GetWindowText(m_hWnd, lpszStringBuf, nMaxCount);
    }
    int GetWindowTextLength() const { return ::GetWindowTextLength(m_hWnd); }
    void SetFont(CFont* pFont, BOOL bRedraw = TRUE); ///< null: the system font
    CFont* GetFont() const;                          ///< null: the system font
    HICON SetIcon(HICON hIcon, BOOL bBigIcon);
    CMenu* GetMenu() const;
    /// The menu then belongs to the window; the one before belongs to nobody.
    BOOL SetMenu(CMenu* pMenu);
    CMenu* GetSystemMenu(BOOL bRevert) const;
    void DrawMenuBar() { ::DrawMenuBar(m_hWnd); }

    // State
    BOOL ShowWindow(int nCmdShow) { return ::ShowWindow(m_hWnd, nCmdShow); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL EnableWindow(BOOL bEnable = TRUE) { return ::EnableWindow(m_hWnd, bEnable); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    BOOL IsIconic() const { return ::IsIconic(m_hWnd); }
    BOOL IsZoomed() const { return ::IsZoomed(m_hWnd); }
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* AFXAPI GetFocus() { return FromHandle(::GetFocus()); }
    CWnd* SetActiveWindow() { return FromHandle(::SetActiveWindow(m_hWnd)); }
    static CWnd* AFXAPI GetActiveWindow() { return FromHandle(::GetActiveWindow()); }
    BOOL SetForegroundWindow() { return ::SetForegroundWindow(m_hWnd); }
    static CWnd* AFXAPI GetForegroundWindow() { return FromHandle(::GetForegroundWindow()); }
    CWnd* SetCapture() { return FromHandle(::SetCapture(m_hWnd)); }
    static CWnd* AFXAPI GetCapture() { return FromHandle(::GetCapture()); }
    BOOL FlashWindow(BOOL bInvert) { return ::FlashWindow(m_hWnd, bInvert); }
    /// \param nElapse in milliseconds. \return 0 on failure.
    UINT_PTR SetTimer(UINT_PTR nIDEvent, UINT nElapse, TIMERPROC lpfnTimer = nullptr)
    {
        return ::SetTimer(m_hWnd, nIDEvent, nElapse, lpfnTimer);
    }
    BOOL KillTimer(UINT_PTR nIDEvent) { return ::KillTimer(m_hWnd, nIDEvent); }

    // Place
    void MoveWindow(LPCRECT lpRect, BOOL bRepaint = TRUE);
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE)
    {
        ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
    }
    /// \param pWndInsertAfter also one of wndTop, wndBottom, wndTopMost, wndNoTopMost
    BOOL SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags)
    {
        return ::SetWindowPos(m_hWnd, AfxGetSafeHwnd(pWndInsertAfter), x, y, cx, cy, nFlags);
    }
    void BringWindowToTop() { ::BringWindowToTop(m_hWnd); }
    void GetClientRect(LPRECT lpRect) const { ::GetClientRect(m_hWnd, lpRect); }
    void GetWindowRect(LPRECT lpRect) const { ::GetWindowRect(m_hWnd, lpRect); }
    BOOL GetWindowPlacement(WINDOWPLACEMENT* lpwndpl) const;
    BOOL SetWindowPlacement(const WINDOWPLACEMENT* lpwndpl) { return ::SetWindowPlacement(m_hWnd, lpwndpl); }
    int SetWindowRgn(HRGN hRgn, BOOL bRedraw) { return ::SetWindowRgn(m_hWnd, hRgn, bRedraw); }
    void CenterWindow(CWnd* pAlternateOwner = nullptr);
    enum AdjustType { adjustBorder = 0, adjustOutside = 1 };
    /// Makes the rectangle of a client area that of its window. \param nAdjustType adjustOutside: with the sunken edge
    virtual void CalcWindowRect(LPRECT lpClientRect, UINT nAdjustType = adjustBorder);
    enum RepositionFlags { reposDefault = 0, reposQuery = 1, reposExtra = 2 };
    /// Lets the children with numbers \p nIDFirst to \p nIDLast lay themselves out by WM_SIZEPARENT, and gives the
    /// child \p nIDLeftOver what is left. \param nFlag reposQuery: nothing is moved, \p lpRectParam gets what would be
    /// left; reposExtra: its four numbers are margins of what is left \param lpRectClient null: the client area
    void RepositionBars(UINT nIDFirst, UINT nIDLast, UINT nIDLeftOver, UINT nFlag = reposDefault,
                        LPRECT lpRectParam = nullptr, LPCRECT lpRectClient = nullptr, BOOL bStretch = TRUE);
    void ClientToScreen(LPPOINT lpPoint) const { ::ClientToScreen(m_hWnd, lpPoint); }
    void ClientToScreen(LPRECT lpRect) const { MapWindowPoints(nullptr, lpRect); }
    void ScreenToClient(LPPOINT lpPoint) const { ::ScreenToClient(m_hWnd, lpPoint); }
    void ScreenToClient(LPRECT lpRect) const;
    void MapWindowPoints(CWnd* pwndTo, LPPOINT lpPoint, UINT nCount) const
    {
        ::MapWindowPoints(m_hWnd, AfxGetSafeHwnd(pwndTo), lpPoint, nCount);
    }
    /// Between windows of different direction left and right change places: the rectangle stays normalised.
    void MapWindowPoints(CWnd* pwndTo, LPRECT lpRect) const;

    // Painting
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    void Invalidate(BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, bErase); }
    void InvalidateRect(LPCRECT lpRect, BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, lpRect, bErase); }
    void ValidateRect(LPCRECT lpRect) { ::ValidateRect(m_hWnd, lpRect); }
    BOOL GetUpdateRect(LPRECT lpRect, BOOL bErase = FALSE) { return ::GetUpdateRect(m_hWnd, lpRect, bErase); }
    BOOL RedrawWindow(LPCRECT lpRectUpdate = nullptr, HRGN hrgnUpdate = nullptr,
                      UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE)
    {
        return ::RedrawWindow(m_hWnd, lpRectUpdate, hrgnUpdate, flags);
    }
    void SetRedraw(BOOL bRedraw = TRUE) { SendMessage(WM_SETREDRAW, static_cast<WPARAM>(bRedraw)); }
    CDC* GetDC();       ///< a temporary object; give it back by ReleaseDC
    CDC* GetWindowDC(); ///< the same, border included
    int ReleaseDC(CDC* pDC);
    void Print(CDC* pDC, DWORD dwFlags) const;
    void HideCaret() { ::HideCaret(m_hWnd); }
    void ShowCaret() { ::ShowCaret(m_hWnd); }
    static void AFXAPI SetCaretPos(POINT point) { ::SetCaretPos(point.x, point.y); }
    void CreateSolidCaret(int nWidth, int nHeight) { ::CreateCaret(m_hWnd, nullptr, nWidth, nHeight); }

    // Scrolling
    void ScrollWindow(int xAmount, int yAmount, LPCRECT lpRect = nullptr, LPCRECT lpClipRect = nullptr)
    {
        ::ScrollWindow(m_hWnd, xAmount, yAmount, lpRect, lpClipRect);
    }
    int SetScrollPos(int nBar, int nPos, BOOL bRedraw = TRUE) { return ::SetScrollPos(m_hWnd, nBar, nPos, bRedraw); }
    int GetScrollPos(int nBar) const { return ::GetScrollPos(m_hWnd, nBar); }
    void SetScrollRange(int nBar, int nMinPos, int nMaxPos, BOOL bRedraw = TRUE)
    {
        ::SetScrollRange(m_hWnd, nBar, nMinPos, nMaxPos, bRedraw);
    }
    void GetScrollRange(int nBar, LPINT lpMinPos, LPINT lpMaxPos) const
    {
        ::GetScrollRange(m_hWnd, nBar, lpMinPos, lpMaxPos);
    }
    /// Sets the size in \p lpScrollInfo.
    BOOL SetScrollInfo(int nBar, SCROLLINFO* lpScrollInfo, BOOL bRedraw = TRUE);
    BOOL GetScrollInfo(int nBar, SCROLLINFO* lpScrollInfo, UINT nMask = SIF_ALL);
    int GetScrollLimit(int nBar) const; ///< the last position that can be scrolled to
    BOOL EnableScrollBar(int nSBFlags, UINT nArrowFlags = ESB_ENABLE_BOTH)
    {
        return ::EnableScrollBar(m_hWnd, static_cast<UINT>(nSBFlags), nArrowFlags);
    }
    void ShowScrollBar(UINT nBar, BOOL bShow = TRUE) { ::ShowScrollBar(m_hWnd, static_cast<int>(nBar), bShow); }
    virtual CScrollBar* GetScrollBarCtrl(int) const { return nullptr; } ///< a control that stands for the border's bar

    // Other windows
    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    /// \return the parent before
    CWnd* SetParent(CWnd* pWndNewParent) { return FromHandle(::SetParent(m_hWnd, AfxGetSafeHwnd(pWndNewParent))); }
    CWnd* GetOwner() const { return m_hWndOwner != nullptr ? FromHandle(m_hWndOwner) : GetParent(); }
    void SetOwner(CWnd* pOwnerWnd) { m_hWndOwner = AfxGetSafeHwnd(pOwnerWnd); } ///< null: the parent
    CWnd* GetWindow(UINT nCmd) const { return FromHandle(::GetWindow(m_hWnd, nCmd)); }
    CWnd* GetTopWindow() const { return FromHandle(::GetTopWindow(m_hWnd)); }
    CWnd* GetLastActivePopup() const { return FromHandle(::GetLastActivePopup(m_hWnd)); }
    BOOL IsChild(const CWnd* pWnd) const { return ::IsChild(m_hWnd, AfxGetSafeHwnd(pWnd)); }
    CWnd* ChildWindowFromPoint(POINT point) const { return FromHandle(::ChildWindowFromPoint(m_hWnd, point)); }
    static CWnd* AFXAPI WindowFromPoint(POINT point) { return FromHandle(::WindowFromPoint(point)); }
    static CWnd* AFXAPI GetDesktopWindow() { return FromHandle(::GetDesktopWindow()); }
    CFrameWnd* GetParentFrame() const; ///< the nearest frame that this window lies in, null when there is none
    CWnd* GetTopLevelParent() const;   ///< the first of its parents and owners, itself included, that has none
    CFrameWnd* GetTopLevelFrame() const;
    CWnd* GetParentOwner() const; ///< the nearest window that is no child, itself included

    // Dialog items
    CWnd* GetDlgItem(int nID) const { return FromHandle(::GetDlgItem(m_hWnd, nID)); }
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    int SetDlgCtrlID(int nID) { return static_cast<int>(::SetWindowLongPtr(m_hWnd, GWLP_ID, nID)); }
    CWnd* GetDescendantWindow(int nID, BOOL bOnlyPerm = FALSE) const; ///< children first, then their children
    LRESULT SendDlgItemMessage(int nID, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return ::SendDlgItemMessage(m_hWnd, nID, message, wParam, lParam);
    }
    void SetDlgItemText(int nID, LPCSTR lpszString) { ::SetDlgItemText(m_hWnd, nID, lpszString); }
    int GetDlgItemText(int nID, CString& rString) const;
    int GetDlgItemText(int nID, LPSTR lpStr, int nMaxCount) const
    {
        return static_cast<int>(::GetDlgItemText(m_hWnd, nID, lpStr, nMaxCount));
    }
    void SetDlgItemInt(int nID, UINT nValue, BOOL bSigned = TRUE) { ::SetDlgItemInt(m_hWnd, nID, nValue, bSigned); }
    UINT GetDlgItemInt(int nID, BOOL* lpTrans = nullptr, BOOL bSigned = TRUE) const
    {
        return ::GetDlgItemInt(m_hWnd, nID, lpTrans, bSigned);
    }
    void CheckDlgButton(int nIDButton, UINT nCheck) { ::CheckDlgButton(m_hWnd, nIDButton, nCheck); }
    UINT IsDlgButtonChecked(int nIDButton) const { return ::IsDlgButtonChecked(m_hWnd, nIDButton); }
    void CheckRadioButton(int nIDFirstButton, int nIDLastButton, int nIDCheckButton)
    {
        ::CheckRadioButton(m_hWnd, nIDFirstButton, nIDLastButton, nIDCheckButton);
    }
    int GetCheckedRadioButton(int nIDFirstButton, int nIDLastButton) const; ///< \return 0 when none is checked
    CWnd* GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious = FALSE) const
    {
        return FromHandle(::GetNextDlgTabItem(m_hWnd, AfxGetSafeHwnd(pWndCtl), bPrevious));
    }
    CWnd* GetNextDlgGroupItem(CWnd* pWndCtl, BOOL bPrevious = FALSE) const
    {
        return FromHandle(::GetNextDlgGroupItem(m_hWnd, AfxGetSafeHwnd(pWndCtl), bPrevious));
    }
    /// Exchanges data between members and controls by DoDataExchange; TRUE moves it from the controls. What the
    /// controls notify meanwhile does not reach the window's handlers, for the members are not complete.
    /// WM_NOTIFY does: by it they ask as well.
    /// \return FALSE when the exchange failed, which the user has been told of, and when one is going on already
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);
    /// Asks for the state of each child that stands for a command: the child itself if it has a reflected handler, else
    /// \p pTarget, as CCmdUI::DoUpdate does. \param bDisableIfNoHndler concerns buttons alone
    void UpdateDialogControls(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);

    // Tool tips
    /// Shows tips, while the mouse rests, for the parts of this window that OnToolHitTest finds. The window is asked
    /// for each text by TTN_NEEDTEXT, with 0 for the number of the control; a text that lpszText names must stay valid
    /// until the next one is asked for. Where windows lie within each other, the innermost one with tips decides alone.
    /// \return whether tips are shown now
    BOOL EnableToolTips(BOOL bEnable = TRUE);
    static void AFXAPI CancelToolTips(BOOL bKeys = FALSE); ///< takes the tip that is shown away. \p bKeys has no effect
    /// A mouse message on its way to this window or one within; also keys, which take the tip away. PreTranslateMessage
    /// calls it.
    void FilterToolTipMessage(MSG* pMsg);
    /// Finds the tool at a point of the client area: by default a child window that has a number and is visible.
    /// \param pTI gets the tool, but for its cbSize, which says what there is room for; may be null
    /// \return the number of the control, -1 if there is no tool
    virtual INT_PTR OnToolHitTest(CPoint point, tagTOOLINFOA* pTI) const;

    HWND m_hWnd = nullptr;
    HWND m_hWndOwner = nullptr; ///< of SetOwner

    static const CWnd& wndTop; ///< these four are for SetWindowPos alone
    static const CWnd& wndBottom;
    static const CWnd& wndTopMost;
    static const CWnd& wndNoTopMost;

protected:
    friend struct AfxMessageDelivery;

    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// A control gets a message back that it caused its parent to receive. \return whether the control dealt with it.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// What OnChildNotify does by default: looks for a reflected handler of the message in the control's map.
    BOOL ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// Gives the message at hand back to this control. \return whether the control dealt with it.
    BOOL SendChildNotifyLastMsg(LRESULT* pResult = nullptr);
    /// The same for the control \p hWndChild, if it has an object.
    static BOOL AFXAPI ReflectLastMsg(HWND hWndChild, LRESULT* pResult = nullptr);
    virtual void DoDataExchange(CDataExchange*) {}
    virtual void PreSubclassWindow() {}
    virtual void PostNcDestroy() {}
    /// The default handling of the message at hand, for handlers that add to it.
    LRESULT Default();

    // Handlers of messages: each does what the window's class does with the message.
    afx_msg BOOL OnNcCreate(LPCREATESTRUCT);
    afx_msg int OnCreate(LPCREATESTRUCT);
    afx_msg void OnClose();
    afx_msg BOOL OnQueryEndSession();
    afx_msg void OnEndSession(BOOL bEnding);
    afx_msg void OnDestroy();
    afx_msg void OnNcDestroy(); ///< the object's handle is gone afterwards; calls PostNcDestroy

    afx_msg void OnMove(int x, int y);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnSizing(UINT nSide, LPRECT lpRect);
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* lpMMI);
    afx_msg void OnWindowPosChanging(WINDOWPOS* lpwndpos);
    afx_msg void OnWindowPosChanged(WINDOWPOS* lpwndpos);
    afx_msg void OnShowWindow(BOOL bShow, UINT nStatus);
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg void OnStyleChanged(int nStyleType, LPSTYLESTRUCT lpStyleStruct);
    afx_msg void OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized);
    afx_msg void OnActivateApp(BOOL bActive, DWORD dwThreadID);
    afx_msg BOOL OnNcActivate(BOOL bActive);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnNcPaint();
    afx_msg void OnNcCalcSize(BOOL bCalcValidRects, NCCALCSIZE_PARAMS* lpncsp);
    afx_msg LRESULT OnNcHitTest(CPoint point);

    afx_msg UINT OnGetDlgCode();
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnSysKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnSysKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnSysChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnRButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnMButtonDown(UINT nFlags, CPoint point);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt); ///< \p pt on the screen
    afx_msg void OnMouseLeave();
    afx_msg int OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message);
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    afx_msg void OnCaptureChanged(CWnd* pWnd);
    afx_msg void OnCancelMode();
    afx_msg void OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar); ///< to the scroll bar control first
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnTimer(UINT_PTR nIDEvent);

    afx_msg void OnSysCommand(UINT nID, LPARAM lParam);
    afx_msg void OnInitMenu(CMenu* pMenu);
    afx_msg void OnInitMenuPopup(CMenu* pPopupMenu, UINT nIndex, BOOL bSysMenu);
    afx_msg void OnMenuSelect(UINT nItemID, UINT nFlags, HMENU hSysMenu);
    afx_msg void OnEnterIdle(UINT nWhy, CWnd* pWho);
    afx_msg void OnContextMenu(CWnd* pWnd, CPoint pos); ///< \p pos on the screen; -1, -1 by key
    afx_msg BOOL OnHelpInfo(HELPINFO* lpHelpInfo);

    // These offer the message to the control first.
    afx_msg void OnDrawItem(int nIDCtl, LPDRAWITEMSTRUCT lpDrawItemStruct);
    afx_msg void OnMeasureItem(int nIDCtl, LPMEASUREITEMSTRUCT lpMeasureItemStruct);
    afx_msg int OnCompareItem(int nIDCtl, LPCOMPAREITEMSTRUCT lpCompareItemStruct);
    afx_msg void OnDeleteItem(int nIDCtl, LPDELETEITEMSTRUCT lpDeleteItemStruct);
    afx_msg HBRUSH OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor); ///< \p nCtlColor one of CTLCOLOR_...
    afx_msg int OnVKeyToItem(UINT nKey, CListBox* pListBox, UINT nIndex);
    afx_msg int OnCharToItem(UINT nKey, CListBox* pListBox, UINT nIndex);
    afx_msg void OnParentNotify(UINT message, LPARAM lParam);

    afx_msg void OnSysColorChange(); ///< a window that is no child passes it on to its children, as it does the next
    afx_msg void OnSettingChange(UINT uFlags, LPCSTR lpszSection);
    afx_msg void OnFontChange();
    afx_msg void OnTimeChange();
    afx_msg BOOL OnQueryNewPalette();
    afx_msg void OnPaletteChanged(CWnd* pFocusWnd);
    DECLARE_MESSAGE_MAP()

    BOOL m_bModalRunning = FALSE; // until EndModalLoop
    int m_nModalResult = 0;

private:
    LRESULT ReflectOrDefault();
    BOOL ReflectToControl(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    void ShowToolTip(const MSG& message);

    WNDPROC m_pfnSuper = nullptr; // the procedure of the window's own class, behind the framework's
    BOOL m_bExchanging = FALSE;   // in UpdateData
    BOOL m_bToolTips = FALSE;     // by EnableToolTips
};

/// Asks \p pTarget for the state of each of a popup menu's items, as CCmdUI::DoUpdate does.
AFX_API void AFXAPI AfxUpdateMenu(CMenu* pMenu, CCmdTarget* pTarget, BOOL bDisableIfNoHndler);
