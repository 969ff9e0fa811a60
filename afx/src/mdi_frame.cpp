#include <afxwin.h>

IMPLEMENT_DYNCREATE(CMDIFrameWnd, CFrameWnd)

BEGIN_MESSAGE_MAP(CMDIFrameWnd, CFrameWnd)
    ON_WM_CREATE()
END_MESSAGE_MAP()

int CMDIFrameWnd::OnCreate(CREATESTRUCT* lpCreateStruct)
{
    if (CFrameWnd::OnCreate(lpCreateStruct) != 0)
        return -1;
    return CreateClient(lpCreateStruct, nullptr) ? 0 : -1;
}

BOOL CMDIFrameWnd::CreateClient(CREATESTRUCT*, HMENU hWindowMenu)
{
    CLIENTCREATESTRUCT client = {hWindowMenu, AFX_IDM_FIRST_MDICHILD};
    m_hWndMDIClient = ::CreateWindowEx(
        WS_EX_CLIENTEDGE, "MDICLIENT", nullptr,
        WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | WS_HSCROLL | WS_VSCROLL, 0, 0, 0, 0, m_hWnd,
        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(AFX_IDW_PANE_FIRST)), AfxGetInstanceHandle(), &client);
    return m_hWndMDIClient != nullptr;
}

BOOL CMDIFrameWnd::PreTranslateMessage(MSG* pMsg)
{
    return CFrameWnd::PreTranslateMessage(pMsg) ||
           (m_hWndMDIClient != nullptr && ::TranslateMDISysAccel(m_hWndMDIClient, pMsg));
}

LRESULT CMDIFrameWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::DefFrameProc(m_hWnd, m_hWndMDIClient, message, wParam, lParam);
}
