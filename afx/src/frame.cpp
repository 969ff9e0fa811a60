#include <afxext.h>

#include <commctrl.h>

IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)

BEGIN_MESSAGE_MAP(CFrameWnd, CWnd)
    ON_WM_CREATE()
    ON_WM_CLOSE()
    ON_WM_SETFOCUS()
    ON_WM_SIZE()
    ON_WM_INITMENUPOPUP()
    ON_WM_MENUSELECT()
    ON_MESSAGE(WM_SETMESSAGESTRING, OnSetMessageString)
    ON_MESSAGE(WM_IDLEUPDATECMDUI, OnIdleUpdateCmdUI)
    ON_COMMAND_EX(ID_VIEW_TOOLBAR, OnBarCheck)
    ON_COMMAND_EX(ID_VIEW_STATUS_BAR, OnBarCheck)
    ON_UPDATE_COMMAND_UI(ID_VIEW_TOOLBAR, OnUpdateControlBarMenu)
    ON_UPDATE_COMMAND_UI(ID_VIEW_STATUS_BAR, OnUpdateControlBarMenu)
    ON_NOTIFY_EX_RANGE(TTN_GETDISPINFOA, 0, 0xFFFF, OnToolTipText)
END_MESSAGE_MAP()

const RECT CFrameWnd::rectDefault = {CW_USEDEFAULT, CW_USEDEFAULT, 0, 0};

// Creation ------------------------------------------------------------------------------------------------------------

BOOL CFrameWnd::Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                       LPCSTR lpszMenuName, DWORD dwExStyle, CCreateContext* pContext)
{
    HMENU menu = nullptr;
    if (lpszMenuName != nullptr) {
        menu = ::LoadMenu(AfxFindResourceHandle(lpszMenuName, RT_MENU), lpszMenuName);
        if (menu == nullptr) {
            PostNcDestroy();
            return FALSE;
        }
    }
    try {
        if (lpszWindowName != nullptr)
            m_strTitle = lpszWindowName;
    } catch (CMemoryException*) {
        ::DestroyMenu(menu);
        PostNcDestroy();
        throw;
    }
    // A window that could not be made leaves the menu to us, one that was made and has gone took it along.
    const BOOL made =
        CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top, rect.right - rect.left,
                 rect.bottom - rect.top, AfxGetSafeHwnd(pParentWnd), menu, pContext);
    if (!made && menu != nullptr && ::IsMenu(menu))
        ::DestroyMenu(menu);
    return made;
}

BOOL CFrameWnd::LoadAccelTable(LPCSTR lpszResourceName)
{
    const HINSTANCE module = AfxFindResourceHandle(lpszResourceName, RT_ACCELERATOR);
    const HACCEL table = ::LoadAccelerators(module, lpszResourceName);
    if (table != nullptr)
        m_hAccelTable = table; // the system frees it with its module
    return table != nullptr;
}

LPCSTR CFrameWnd::FrameWindowClass(UINT nIDResource)
{
    const LPCSTR name = MAKEINTRESOURCE(nIDResource);
    const HICON icon = ::LoadIcon(AfxFindResourceHandle(name, RT_GROUP_ICON), name);
    try {
        return AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursor(nullptr, IDC_ARROW),
                                   reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1),
                                   icon != nullptr ? icon : ::LoadIcon(nullptr, IDI_APPLICATION));
    } catch (CResourceException* e) {
        e->Delete();
        return nullptr;
    }
}

BOOL CFrameWnd::LoadFrame(UINT nIDResource, DWORD dwDefaultStyle, CWnd* pParentWnd, CCreateContext* pContext)
{
    const LPCSTR name = MAKEINTRESOURCE(nIDResource);
    const bool hasMenu = ::FindResource(AfxFindResourceHandle(name, RT_MENU), name, RT_MENU) != nullptr;
    CString title;
    try {
        GetMessageString(nIDResource, title);
    } catch (CMemoryException*) {
        PostNcDestroy();
        throw;
    }
    LoadAccelTable(name);
    return Create(FrameWindowClass(nIDResource), title, dwDefaultStyle, rectDefault, pParentWnd,
                  hasMenu ? name : nullptr, 0, pContext);
}

int CFrameWnd::OnCreate(CREATESTRUCT* lpCreateStruct)
{
    if (CWnd::OnCreate(lpCreateStruct) == -1)
        return -1;
    void* context = lpCreateStruct->lpCreateParams;
    if ((lpCreateStruct->dwExStyle & WS_EX_MDICHILD) != 0) // comes wrapped by the MDI client
        context = reinterpret_cast<void*>(static_cast<const MDICREATESTRUCT*>(context)->lParam);
    return OnCreateClient(lpCreateStruct, static_cast<CCreateContext*>(context)) ? 0 : -1;
}

BOOL CFrameWnd::OnCreateClient(CREATESTRUCT*, CCreateContext* pContext)
{
    return pContext == nullptr || pContext->m_pNewViewClass == nullptr || CreateView(pContext) != nullptr;
}

CWnd* CFrameWnd::CreateView(CCreateContext* pContext, UINT nID)
{
    auto* view = static_cast<CWnd*>(pContext->m_pNewViewClass->CreateObject());
    if (view == nullptr)
        return nullptr;
    if (!view->CreateEx(WS_EX_CLIENTEDGE, nullptr, nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, m_hWnd,
                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)), pContext))
        return nullptr; // the view has deleted itself
    return view;
}

void CFrameWnd::ActivateFrame(int nCmdShow)
{
    const int usual = IsIconic() ? SW_RESTORE : SW_SHOW;
    ShowWindow(nCmdShow != -1 ? nCmdShow : usual);
    UpdateWindow();
}

void CFrameWnd::InitialUpdateFrame(CDocument* pDoc, BOOL bMakeVisible)
{
    const CWnd* pane = FromHandlePermanent(::GetDlgItem(m_hWnd, AFX_IDW_PANE_FIRST));
    CView* view = DYNAMIC_DOWNCAST(CView, const_cast<CWnd*>(pane));
    if (view != nullptr) {
        SetActiveView(view, FALSE);
        view->OnInitialUpdate();
    }
    OnUpdateFrameTitle(pDoc != nullptr);
    RecalcLayout();
    if (bMakeVisible)
        ActivateFrame();
    if (view != nullptr && bMakeVisible)
        view->OnActivateView(TRUE, view, view);
}

// The active view -----------------------------------------------------------------------------------------------------

CDocument* CFrameWnd::GetActiveDocument() { return m_pViewActive != nullptr ? m_pViewActive->GetDocument() : nullptr; }

void CFrameWnd::SetActiveView(CView* pViewNew, BOOL bNotify)
{
    CView* previous = m_pViewActive;
    if (previous == pViewNew)
        return;
    m_pViewActive = nullptr; // for whoever asks meanwhile
    if (previous != nullptr)
        previous->OnActivateView(FALSE, pViewNew, previous);
    m_pViewActive = pViewNew;
    if (pViewNew != nullptr && bNotify)
        pViewNew->OnActivateView(TRUE, pViewNew, previous);
}

BOOL CFrameWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo)
{
    if (m_pViewActive != nullptr && m_pViewActive->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    // Where there is no such bar, OnBarCheck answers nothing: others are asked.
    const bool isOfBar = nID == ID_VIEW_TOOLBAR || nID == ID_VIEW_STATUS_BAR;
    const bool isAsked = pHandlerInfo != nullptr && nCode == CN_COMMAND;
    const bool isVain = isAsked && isOfBar && GetControlBar(nID) == nullptr;
    if (!isVain && CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    CWinApp* app = AfxGetApp();
    return app != nullptr && app->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

// Messages ------------------------------------------------------------------------------------------------------------

BOOL CFrameWnd::PreTranslateMessage(MSG* pMsg)
{
    if (CWnd::PreTranslateMessage(pMsg))
        return TRUE;
    if (m_hAccelTable == nullptr || pMsg->message < WM_KEYFIRST || pMsg->message > WM_KEYLAST)
        return FALSE;
    // The command of a document's window goes its way from the main window, which asks the active document first.
    const CWnd* target = (GetExStyle() & WS_EX_MDICHILD) != 0 ? GetParentFrame() : this;
    return ::TranslateAccelerator(AfxGetSafeHwnd(target), m_hAccelTable, pMsg) != 0;
}

void CFrameWnd::OnSize(UINT nType, int cx, int cy)
{
    CWnd::OnSize(nType, cx, cy);
    if (nType != SIZE_MINIMIZED)
        RecalcLayout();
}

void CFrameWnd::OnSetFocus(CWnd* pOldWnd)
{
    CWnd::OnSetFocus(pOldWnd);
    if (m_pViewActive != nullptr)
        m_pViewActive->SetFocus();
}

void CFrameWnd::OnClose()
{
    CDocument* document = GetActiveDocument();
    if (document != nullptr && !document->CanCloseFrame(this))
        return;
    if (AfxGetMainWnd() == this && AfxGetApp() != nullptr && !AfxGetApp()->SaveAllModified())
        return;
    if (document != nullptr && document->m_bAutoDelete) {
        POSITION position = document->GetFirstViewPosition();
        document->GetNextView(position);
        if (position == nullptr) { // this frame shows its only view
            document->OnCloseDocument();
            return;
        }
    }
    DestroyWindow();
}

void CFrameWnd::OnInitMenuPopup(CMenu* pPopupMenu, UINT nIndex, BOOL bSysMenu)
{
    CWnd::OnInitMenuPopup(pPopupMenu, nIndex, bSysMenu);
    if (!bSysMenu)
        AfxUpdateMenu(pPopupMenu, this, m_bAutoMenuEnable);
}

void CFrameWnd::PostNcDestroy() { delete this; }
