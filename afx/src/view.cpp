#include <afxwin.h>

IMPLEMENT_DYNAMIC(CView, CWnd)

BEGIN_MESSAGE_MAP(CView, CWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_PAINT()
END_MESSAGE_MAP()

CView::~CView()
{
    if (m_pDocument != nullptr)
        m_pDocument->RemoveView(this);
}

BOOL CView::PreCreateWindow(CREATESTRUCT& cs)
{
    if (cs.lpszClass == nullptr)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ::LoadCursor(nullptr, IDC_ARROW),
                                           reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
    return CWnd::PreCreateWindow(cs);
}

int CView::OnCreate(CREATESTRUCT* lpCreateStruct)
{
    if (CWnd::OnCreate(lpCreateStruct) == -1)
        return -1;
    const auto* context = static_cast<const CCreateContext*>(lpCreateStruct->lpCreateParams);
    if (context != nullptr && context->m_pCurrentDoc != nullptr)
        context->m_pCurrentDoc->AddView(this);
    return 0;
}

void CView::OnDestroy()
{
    CFrameWnd* frame = GetParentFrame();
    if (frame != nullptr && frame->GetActiveView() == this)
        frame->SetActiveView(nullptr);
    CWnd::OnDestroy();
}

void CView::OnPaint()
{
    CPaintDC dc(this);
    OnPrepareDC(&dc);
    OnDraw(&dc);
}

void CView::OnUpdate(CView*, LPARAM, CObject*) { Invalidate(); }

void CView::OnActivateView(BOOL bActivate, CView*, CView*)
{
    if (bActivate && ::GetFocus() != m_hWnd && !::IsChild(m_hWnd, ::GetFocus()))
        SetFocus();
}

BOOL CView::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo)
{
    return CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo) ||
           (m_pDocument != nullptr && m_pDocument->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo));
}

void CView::PostNcDestroy() { delete this; }
