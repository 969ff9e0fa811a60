// Common controls but for lists, trees and bars.
#include "common_controls_library.h"
#include "owner_draw.h"

IMPLEMENT_DYNAMIC(CHeaderCtrl, CWnd)
IMPLEMENT_DYNAMIC(CTabCtrl, CWnd)
IMPLEMENT_DYNAMIC(CSpinButtonCtrl, CWnd)
IMPLEMENT_DYNAMIC(CProgressCtrl, CWnd)
IMPLEMENT_DYNAMIC(CSliderCtrl, CWnd)

// Header --------------------------------------------------------------------------------------------------------------

BOOL CHeaderCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommonControl(*this, WC_HEADERA, dwStyle, rect, pParentWnd, nID);
}

CImageList* CHeaderCtrl::SetImageList(CImageList* pImageList)
{
    return CImageList::FromHandle(AfxSend<HIMAGELIST>(this, HDM_SETIMAGELIST, 0, SafeHandle(pImageList)));
}

CImageList* CHeaderCtrl::GetImageList() const
{
    return CImageList::FromHandle(AfxSend<HIMAGELIST>(this, HDM_GETIMAGELIST));
}

BOOL CHeaderCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return AskToDraw(*this, message, lParam, pResult) || CWnd::OnChildNotify(message, wParam, lParam, pResult);
}

// Tabs ----------------------------------------------------------------------------------------------------------------

BOOL CTabCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommonControl(*this, WC_TABCONTROLA, dwStyle, rect, pParentWnd, nID);
}

LONG CTabCtrl::InsertItem(UINT nMask, int nItem, LPCSTR lpszItem, int nImage, LPARAM lParam)
{
    TCITEMA item = {};
    item.mask = nMask;
    item.pszText = const_cast<LPSTR>(lpszItem);
    item.iImage = nImage;
    item.lParam = lParam;
    return InsertItem(nItem, &item);
}

CSize CTabCtrl::SetItemSize(CSize size)
{
    return AfxSend<DWORD>(this, TCM_SETITEMSIZE, 0, MAKELPARAM(size.cx, size.cy));
}

CImageList* CTabCtrl::SetImageList(CImageList* pImageList)
{
    return CImageList::FromHandle(AfxSend<HIMAGELIST>(this, TCM_SETIMAGELIST, 0, SafeHandle(pImageList)));
}

CImageList* CTabCtrl::GetImageList() const
{
    return CImageList::FromHandle(AfxSend<HIMAGELIST>(this, TCM_GETIMAGELIST));
}

CToolTipCtrl* CTabCtrl::GetToolTips() const
{
    return static_cast<CToolTipCtrl*>(CWnd::FromHandle(AfxSend<HWND>(this, TCM_GETTOOLTIPS)));
}

void CTabCtrl::SetToolTips(CToolTipCtrl* pWndTip) { AfxSend(this, TCM_SETTOOLTIPS, AfxGetSafeHwnd(pWndTip)); }

BOOL CTabCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return AskToDraw(*this, message, lParam, pResult) || CWnd::OnChildNotify(message, wParam, lParam, pResult);
}

// Numbers within a range ----------------------------------------------------------------------------------------------

BOOL CSpinButtonCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommonControl(*this, UPDOWN_CLASSA, dwStyle, rect, pParentWnd, nID);
}

void CSpinButtonCtrl::GetRange(int& lower, int& upper) const
{
    const DWORD range = GetRange();
    lower = static_cast<short>(HIWORD(range));
    upper = static_cast<short>(LOWORD(range));
}

BOOL CProgressCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommonControl(*this, PROGRESS_CLASSA, dwStyle, rect, pParentWnd, nID);
}

void CProgressCtrl::GetRange(int& nLower, int& nUpper) const
{
    PBRANGE range = {};
    AfxSend(this, PBM_GETRANGE, FALSE, &range);
    nLower = range.iLow;
    nUpper = range.iHigh;
}

BOOL CSliderCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommonControl(*this, TRACKBAR_CLASSA, dwStyle, rect, pParentWnd, nID);
}
