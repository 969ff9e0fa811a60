#include <afxext.h>

#include "common_controls_library.h"

IMPLEMENT_DYNAMIC(CControlBar, CWnd)

BEGIN_MESSAGE_MAP(CControlBar, CWnd)
    ON_MESSAGE(WM_SIZEPARENT, OnSizeParent)
    ON_MESSAGE(WM_IDLEUPDATECMDUI, OnIdleUpdateCmdUI)
END_MESSAGE_MAP()

CControlBar::~CControlBar()
{
    m_bAutoDelete = FALSE; // the end has begun
    DestroyWindow();
}

BOOL CControlBar::CreateBar(LPCSTR lpszClassName, DWORD dwStyle, DWORD dwControlStyle, CWnd* pParentWnd, UINT nID)
{
    constexpr DWORD kBarStyles = CBRS_ALIGN_ANY | CBRS_BORDER_ANY | CBRS_TOOLTIPS;
    LoadCommonControls();
    m_dwBarStyle = dwStyle & kBarStyles;
    return CWnd::Create(lpszClassName, nullptr, (dwStyle & ~kBarStyles) | dwControlStyle | WS_CLIPSIBLINGS,
                        CRect(0, 0, 0, 0), pParentWnd, nID);
}

void CControlBar::PostNcDestroy()
{
    if (m_bAutoDelete)
        delete this;
}

LRESULT CControlBar::OnSizeParent(WPARAM, LPARAM lParam)
{
    auto* layout = reinterpret_cast<AFX_SIZEPARENTPARAMS*>(lParam);
    if ((GetStyle() & WS_VISIBLE) == 0 || (m_dwBarStyle & CBRS_ALIGN_ANY) == 0)
        return 0;
    RECT& rest = layout->rect;
    const CSize wanted = CalcFixedLayout(layout->bStretch, TRUE);
    const int width = layout->bStretch ? rest.right - rest.left : (std::min<int>)(wanted.cx, rest.right - rest.left);
    const int height = (std::min<int>)(wanted.cy, rest.bottom - rest.top);
    const bool top = (m_dwBarStyle & CBRS_ALIGN_TOP) != 0;
    const int y = top ? rest.top : rest.bottom - height;
    if (layout->hDWP != nullptr)
        layout->hDWP = ::DeferWindowPos(layout->hDWP, m_hWnd, nullptr, rest.left, y, (std::max)(width, 0),
                                        (std::max)(height, 0), SWP_NOACTIVATE | SWP_NOZORDER);
    (top ? rest.top : rest.bottom) += top ? height : -height;
    layout->sizeTotal.cx = (std::max<LONG>)(layout->sizeTotal.cx, width);
    layout->sizeTotal.cy += height;
    return 0;
}

LRESULT CControlBar::OnIdleUpdateCmdUI(WPARAM wParam, LPARAM)
{
    CFrameWnd* frame = DYNAMIC_DOWNCAST(CFrameWnd, GetOwner());
    if (frame == nullptr)
        frame = GetParentFrame();
    if (frame != nullptr && IsWindowVisible())
        OnUpdateCmdUI(frame, static_cast<BOOL>(wParam));
    return 0;
}
