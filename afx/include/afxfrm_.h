/// \file
/// Application framework: frame windows. Included by afxwin.h.
#pragma once

#include <afxwnd_.h>

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
    DECLARE_MESSAGE_MAP()

private:
    CView* m_pViewActive = nullptr;
};
