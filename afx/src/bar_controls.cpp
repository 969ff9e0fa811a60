// The system's controls for tool bars and status bars, and the tool tip control.
#include "common_controls_library.h"
#include "owner_draw.h"

IMPLEMENT_DYNAMIC(CToolBarCtrl, CWnd)
IMPLEMENT_DYNAMIC(CStatusBarCtrl, CWnd)
IMPLEMENT_DYNAMIC(CToolTipCtrl, CWnd)

// Tool bar ------------------------------------------------------------------------------------------------------------

BOOL CToolBarCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    if (!CreateCommonControl(*this, TOOLBARCLASSNAMEA, dwStyle, rect, pParentWnd, nID))
        return FALSE;
    SetButtonStructSize(sizeof(TBBUTTON));
    return TRUE;
}

int CToolBarCtrl::AddBitmap(int nNumButtons, CBitmap* pBitmap)
{
    if (pBitmap == nullptr)
        return -1;
    TBADDBITMAP bitmap = {nullptr, reinterpret_cast<UINT_PTR>(pBitmap->m_hObject)};
    return AfxSend<int>(this, TB_ADDBITMAP, nNumButtons, &bitmap);
}

int CToolBarCtrl::AddBitmap(int nNumButtons, UINT nBitmapID)
{
    TBADDBITMAP bitmap = {AfxFindResourceHandle(MAKEINTRESOURCE(nBitmapID), RT_BITMAP), nBitmapID};
    return AfxSend<int>(this, TB_ADDBITMAP, nNumButtons, &bitmap);
}

CImageList* CToolBarCtrl::SetImageList(CImageList* pImageList)
{
    return CImageList::FromHandle(AfxSend<HIMAGELIST>(this, TB_SETIMAGELIST, 0, SafeHandle(pImageList)));
}

CImageList* CToolBarCtrl::GetImageList() const
{
    return CImageList::FromHandle(AfxSend<HIMAGELIST>(this, TB_GETIMAGELIST));
}

CImageList* CToolBarCtrl::SetDisabledImageList(CImageList* pImageList)
{
    return CImageList::FromHandle(AfxSend<HIMAGELIST>(this, TB_SETDISABLEDIMAGELIST, 0, SafeHandle(pImageList)));
}

CImageList* CToolBarCtrl::GetDisabledImageList() const
{
    return CImageList::FromHandle(AfxSend<HIMAGELIST>(this, TB_GETDISABLEDIMAGELIST));
}

CToolTipCtrl* CToolBarCtrl::GetToolTips() const
{
    return static_cast<CToolTipCtrl*>(CWnd::FromHandle(AfxSend<HWND>(this, TB_GETTOOLTIPS)));
}

void CToolBarCtrl::SetToolTips(CToolTipCtrl* pTip) { AfxSend(this, TB_SETTOOLTIPS, AfxGetSafeHwnd(pTip)); }

// Status bar ----------------------------------------------------------------------------------------------------------

BOOL CStatusBarCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommonControl(*this, STATUSCLASSNAMEA, dwStyle, rect, pParentWnd, nID);
}

int CStatusBarCtrl::GetTextLength(int nPane, int* pType) const
{
    const DWORD answer = AfxSend<DWORD>(this, SB_GETTEXTLENGTH, nPane);
    if (pType != nullptr)
        *pType = HIWORD(answer);
    return LOWORD(answer);
}

CString CStatusBarCtrl::GetText(int nPane, int* pType) const
{
    int type = 0;
    const int length = GetTextLength(nPane, &type);
    if (pType != nullptr)
        *pType = type;
    CString text;
    if ((type & SBT_OWNERDRAW) != 0 || length == 0)
        return text;
    const DWORD copied = AfxSend<DWORD>(this, SB_GETTEXT, nPane, text.GetBuffer(length));
    text.ReleaseBuffer(LOWORD(copied));
    return text;
}

BOOL CStatusBarCtrl::GetBorders(int& nHorz, int& nVert, int& nSpacing) const
{
    int borders[3] = {};
    const BOOL result = GetBorders(borders);
    nHorz = borders[0];
    nVert = borders[1];
    nSpacing = borders[2];
    return result;
}

BOOL CStatusBarCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return AskToDraw(*this, message, lParam, pResult) || CWnd::OnChildNotify(message, wParam, lParam, pResult);
}

// Tool tips -----------------------------------------------------------------------------------------------------------

namespace {

/// A tool as the control knows it, in the form of the oldest library.
TOOLINFOA Tool(const CWnd* window, UINT_PTR id, LPCSTR text = nullptr, LPCRECT area = nullptr)
{
    TOOLINFOA tool = {};
    tool.cbSize = TTTOOLINFOA_V1_SIZE;
    if (id != 0) {
        tool.hwnd = AfxGetSafeHwnd(window);
        tool.uId = id;
    } else { // the window itself
        tool.uFlags = TTF_IDISHWND;
        tool.hwnd = ::GetParent(AfxGetSafeHwnd(window));
        tool.uId = reinterpret_cast<UINT_PTR>(AfxGetSafeHwnd(window));
    }
    if (area != nullptr)
        tool.rect = *area;
    tool.lpszText = const_cast<LPSTR>(text);
    return tool;
}

/// The same with a string of the resource chain for its text.
TOOLINFOA Tool(const CWnd* window, UINT_PTR id, UINT text, LPCRECT area = nullptr)
{
    TOOLINFOA tool = Tool(window, id, MAKEINTRESOURCE(text), area);
    tool.hinst = AfxFindStringResourceHandle(text);
    return tool;
}

} // namespace

BOOL CToolTipCtrl::Create(CWnd* pParentWnd, DWORD dwStyle)
{
    LoadCommonControls();
    return CreateEx(0, TOOLTIPS_CLASSA, nullptr, WS_POPUP | dwStyle, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                    CW_USEDEFAULT, AfxGetSafeHwnd(pParentWnd), nullptr);
}

BOOL CToolTipCtrl::AddTool(CWnd* pWnd, LPCSTR lpszText, LPCRECT lpRectTool, UINT_PTR nIDTool)
{
    TOOLINFOA tool = Tool(pWnd, nIDTool, lpszText, lpRectTool);
    return AfxSend<BOOL>(this, TTM_ADDTOOL, 0, &tool);
}

BOOL CToolTipCtrl::AddTool(CWnd* pWnd, UINT nIDText, LPCRECT lpRectTool, UINT_PTR nIDTool)
{
    TOOLINFOA tool = Tool(pWnd, nIDTool, nIDText, lpRectTool);
    return AfxSend<BOOL>(this, TTM_ADDTOOL, 0, &tool);
}

void CToolTipCtrl::DelTool(CWnd* pWnd, UINT_PTR nIDTool)
{
    TOOLINFOA tool = Tool(pWnd, nIDTool);
    AfxSend(this, TTM_DELTOOL, 0, &tool);
}

void CToolTipCtrl::UpdateTipText(LPCSTR lpszText, CWnd* pWnd, UINT_PTR nIDTool)
{
    TOOLINFOA tool = Tool(pWnd, nIDTool, lpszText);
    AfxSend(this, TTM_UPDATETIPTEXT, 0, &tool);
}

void CToolTipCtrl::UpdateTipText(UINT nIDText, CWnd* pWnd, UINT_PTR nIDTool)
{
    TOOLINFOA tool = Tool(pWnd, nIDTool, nIDText);
    AfxSend(this, TTM_UPDATETIPTEXT, 0, &tool);
}

void CToolTipCtrl::SetToolRect(CWnd* pWnd, UINT_PTR nIDTool, LPCRECT lpRect)
{
    TOOLINFOA tool = Tool(pWnd, nIDTool, nullptr, lpRect);
    AfxSend(this, TTM_NEWTOOLRECT, 0, &tool);
}

void CToolTipCtrl::GetText(CString& str, CWnd* pWnd, UINT_PTR nIDTool) const
{
    constexpr int kRoom = 80; // the most that the oldest library writes
    LPSTR text = str.GetBuffer(kRoom);
    text[0] = '\0';
    TOOLINFOA tool = Tool(pWnd, nIDTool, text);
    AfxSend(this, TTM_GETTEXT, kRoom, &tool);
    str.ReleaseBuffer();
}
