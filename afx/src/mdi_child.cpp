#include <afxwin.h>

IMPLEMENT_DYNCREATE(CMDIChildWnd, CFrameWnd)

BEGIN_MESSAGE_MAP(CMDIChildWnd, CFrameWnd)
    ON_MESSAGE(WM_MDIACTIVATE, OnMDIActivate)
END_MESSAGE_MAP()

BOOL CMDIChildWnd::Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                          CMDIFrameWnd* pParentWnd, CCreateContext* pContext)
{
    if (pParentWnd == nullptr)
        pParentWnd = DYNAMIC_DOWNCAST(CMDIFrameWnd, AfxGetMainWnd());
    if (pParentWnd == nullptr) {
        PostNcDestroy();
        return FALSE;
    }
    // The system asks the MDI client for such a window when it sees the style; its creation parameter is ours.
    return CreateEx(WS_EX_MDICHILD, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect.left, rect.top,
                    rect.right - rect.left, rect.bottom - rect.top, pParentWnd->m_hWndMDIClient, nullptr, pContext);
}

BOOL CMDIChildWnd::LoadFrame(UINT nIDResource, DWORD dwDefaultStyle, CWnd* pParentWnd, CCreateContext* pContext)
{
    LoadAccelTable(MAKEINTRESOURCE(nIDResource));
    return Create(FrameWindowClass(nIDResource), nullptr, dwDefaultStyle, rectDefault,
                  DYNAMIC_DOWNCAST(CMDIFrameWnd, pParentWnd), pContext);
}

CMDIFrameWnd* CMDIChildWnd::GetMDIFrame() const
{
    return DYNAMIC_DOWNCAST(CMDIFrameWnd, FromHandlePermanent(::GetParent(::GetParent(m_hWnd))));
}

void CMDIChildWnd::MDIActivate()
{
    ::SendMessage(::GetParent(m_hWnd), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(m_hWnd), 0);
}

BOOL CMDIChildWnd::DestroyWindow()
{
    if (m_hWnd == nullptr)
        return FALSE;
    const HWND handle = m_hWnd;
    ::SendMessage(::GetParent(handle), WM_MDIDESTROY, reinterpret_cast<WPARAM>(handle), 0); // the object is gone now
    return !::IsWindow(handle);
}

LRESULT CMDIChildWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::DefMDIChildProc(m_hWnd, message, wParam, lParam);
}

LRESULT CMDIChildWnd::OnMDIActivate(WPARAM, LPARAM lParam)
{
    const LRESULT result = Default();
    CView* view = GetActiveView();
    if (view != nullptr)
        view->OnActivateView(lParam == reinterpret_cast<LPARAM>(m_hWnd), view, view);
    return result;
}

void CMDIChildWnd::OnUpdateFrameTitle(BOOL bAddToTitle)
{
    const CDocument* document = bAddToTitle ? GetActiveDocument() : nullptr;
    if (document != nullptr)
        SetWindowText(document->GetTitle());
}
