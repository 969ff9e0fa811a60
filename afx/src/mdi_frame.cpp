#include <afxwin.h>

IMPLEMENT_DYNCREATE(CMDIFrameWnd, CFrameWnd)

BOOL CMDIFrameWnd::OnCreateClient(CREATESTRUCT* lpcs, CCreateContext*) { return CreateClient(lpcs, nullptr); }

BOOL CMDIFrameWnd::CreateClient(CREATESTRUCT*, HMENU hWindowMenu)
{
    CLIENTCREATESTRUCT client = {hWindowMenu, AFX_IDM_FIRST_MDICHILD};
    m_hWndMDIClient = ::CreateWindowEx(
        WS_EX_CLIENTEDGE, "MDICLIENT", nullptr,
        WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | WS_HSCROLL | WS_VSCROLL, 0, 0, 0, 0, m_hWnd,
        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(AFX_IDW_PANE_FIRST)), AfxGetInstanceHandle(), &client);
    return m_hWndMDIClient != nullptr;
}

CMDIChildWnd* CMDIFrameWnd::MDIGetActive(BOOL* pbMaximized) const
{
    BOOL maximized = FALSE;
    const auto child = reinterpret_cast<HWND>(
        ::SendMessage(m_hWndMDIClient, WM_MDIGETACTIVE, 0, reinterpret_cast<LPARAM>(&maximized)));
    if (pbMaximized != nullptr)
        *pbMaximized = maximized;
    return DYNAMIC_DOWNCAST(CMDIChildWnd, FromHandlePermanent(child));
}

CFrameWnd* CMDIFrameWnd::GetActiveFrame()
{
    CMDIChildWnd* child = MDIGetActive();
    return child != nullptr ? child : static_cast<CFrameWnd*>(this);
}

BOOL CMDIFrameWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo)
{
    CMDIChildWnd* child = MDIGetActive();
    return (child != nullptr && child->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo)) ||
           CFrameWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

BOOL CMDIFrameWnd::PreTranslateMessage(MSG* pMsg)
{
    return CFrameWnd::PreTranslateMessage(pMsg) ||
           (m_hWndMDIClient != nullptr && ::TranslateMDISysAccel(m_hWndMDIClient, pMsg));
}

LRESULT CMDIFrameWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_SIZE) // RecalcLayout leaves room for the bars, which the system would take
        return ::DefWindowProc(m_hWnd, message, wParam, lParam);
    return ::DefFrameProc(m_hWnd, m_hWndMDIClient, message, wParam, lParam);
}
