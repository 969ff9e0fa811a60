/// \file
/// Application framework: frame windows. Included by afxwin.h.
#pragma once

#include <afxwnd_.h>

class CControlBar;

/// Styles of a frame, for PreCreateWindow and LoadFrame: its title names the document, behind the program's name or
/// before it.
#define FWS_ADDTOTITLE 0x00008000
#define FWS_PREFIXTITLE 0x00004000

/// A main window, or with a view in it the window of a document. Deletes itself when its window goes; when it is the
/// main window of its thread, the thread ends. Commands go to the active view first, then to the frame, then to the
/// application. Bars at its edges lay themselves out, and the pane with the number AFX_IDW_PANE_FIRST fills the rest.
class AFX_API CFrameWnd : public CWnd {
    DECLARE_DYNCREATE(CFrameWnd)
public:
    /// \param lpszMenuName menu resource found through the resource chain; null for none
    BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle = WS_OVERLAPPEDWINDOW,
                const RECT& rect = rectDefault, CWnd* pParentWnd = nullptr, LPCSTR lpszMenuName = nullptr,
                DWORD dwExStyle = 0, CCreateContext* pContext = nullptr);
    /// Creates the window with what has that number and is there: icon, menu, accelerators; of the string the first
    /// part is the title.
    virtual BOOL LoadFrame(UINT nIDResource, DWORD dwDefaultStyle = WS_OVERLAPPEDWINDOW | FWS_ADDTOTITLE,
                           CWnd* pParentWnd = nullptr, CCreateContext* pContext = nullptr);
    /// \return FALSE: there is no such resource, and the table in force stays
    BOOL LoadAccelTable(LPCSTR lpszResourceName);

    static const RECT rectDefault; ///< lets the system choose place and size

    /// Shows the frame. \param nCmdShow of ShowWindow; -1: an icon is restored, and else the frame shown as it is
    virtual void ActivateFrame(int nCmdShow = -1);
    virtual CFrameWnd* GetActiveFrame() { return this; }
    CView* GetActiveView() const { return m_pViewActive; }
    virtual CDocument* GetActiveDocument();
    void SetActiveView(CView* pViewNew, BOOL bNotify = TRUE);
    /// Called for WM_CREATE: makes the view that \p pContext asks for. Nothing is to be made when it is null.
    virtual BOOL OnCreateClient(CREATESTRUCT* lpcs, CCreateContext* pContext);
    /// \return the view, null on failure
    CWnd* CreateView(CCreateContext* pContext, UINT nID = AFX_IDW_PANE_FIRST);
    /// Gives the view its initial update and shows the frame, by ActivateFrame.
    void InitialUpdateFrame(CDocument* pDoc, BOOL bMakeVisible);

    void SetTitle(LPCSTR lpszTitle) { m_strTitle = lpszTitle; } ///< shown by the next OnUpdateFrameTitle
    const CString& GetTitle() const { return m_strTitle; }
    /// With the style FWS_ADDTOTITLE: shows the title, and with \p bAddToTitle the document's.
    virtual void OnUpdateFrameTitle(BOOL bAddToTitle);

    /// Lays out the bars and lets the pane fill the rest.
    virtual void RecalcLayout(BOOL bNotify = TRUE);
    /// \param bDelay the layout is done when the frame is next idle
    void ShowControlBar(CControlBar* pBar, BOOL bShow, BOOL bDelay);
    CControlBar* GetControlBar(UINT nID); ///< null if there is none with that number

    virtual CWnd* GetMessageBar(); ///< whose text is the message line: the child AFX_IDW_STATUS_BAR, null without one
    void SetMessageText(LPCSTR lpszText);
    void SetMessageText(UINT nID);
    /// The message of a command: the first part of the string with its number; empty if there is none.
    virtual void GetMessageString(UINT nID, CString& rMessage) const;

    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override;
    BOOL PreTranslateMessage(MSG* pMsg) override; ///< the keys of its accelerators

    BOOL m_bAutoMenuEnable = TRUE; ///< menu items without update handler: disabled if nothing would answer the command

protected:
    /// Registers a window class with the icon of that number. \return its name, null on failure
    static LPCSTR FrameWindowClass(UINT nIDResource);
    void PostNcDestroy() override;
    afx_msg int OnCreate(CREATESTRUCT* lpCreateStruct);
    afx_msg void OnClose();
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnInitMenuPopup(CMenu* pPopupMenu, UINT nIndex, BOOL bSysMenu);
    afx_msg void OnMenuSelect(UINT nItemID, UINT nFlags, HMENU hSysMenu);
    afx_msg LRESULT OnSetMessageString(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnIdleUpdateCmdUI(WPARAM wParam, LPARAM lParam);
    /// Shows or hides the bar of that number. Without one the command goes on; if nobody behind the frame answers it,
    /// its menu item is disabled.
    afx_msg BOOL OnBarCheck(UINT nID);
    afx_msg void OnUpdateControlBarMenu(CCmdUI* pCmdUI);
    afx_msg BOOL OnToolTipText(UINT nID, NMHDR* pNMHDR, LRESULT* pResult); ///< the second part of a command's string
    DECLARE_MESSAGE_MAP()

    HACCEL m_hAccelTable = nullptr;

private:
    CView* m_pViewActive = nullptr;
    CString m_strTitle;
    BOOL m_bLayoutDelayed = FALSE;
    BOOL m_bInRecalcLayout = FALSE;
};
