/// \file
/// Application framework: headers of columns, and tabs. Included by afxcmn.h.
#pragma once

#include <afxsnd_.h>

#include <commctrl.h>

class CImageList;
class CToolTipCtrl;

/// The headings of columns. An item with HDF_OWNERDRAW is drawn by DrawItem.
class AFX_API CHeaderCtrl : public CWnd {
    DECLARE_DYNAMIC(CHeaderCtrl)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetItemCount() const { return AfxSend<int>(this, HDM_GETITEMCOUNT); } ///< -1 on failure
    BOOL GetItem(int nPos, HDITEMA* pHeaderItem) const { return AfxSend<BOOL>(this, HDM_GETITEM, nPos, pHeaderItem); }
    BOOL SetItem(int nPos, HDITEMA* pHeaderItem) { return AfxSend<BOOL>(this, HDM_SETITEM, nPos, pHeaderItem); }
    /// \return its position, -1 on failure
    int InsertItem(int nPos, HDITEMA* phdi) { return AfxSend<int>(this, HDM_INSERTITEM, nPos, phdi); }
    BOOL DeleteItem(int nPos) { return AfxSend<BOOL>(this, HDM_DELETEITEM, nPos); }
    BOOL Layout(HDLAYOUT* pHeaderLayout) { return AfxSend<BOOL>(this, HDM_LAYOUT, 0, pHeaderLayout); }
    int HitTest(HDHITTESTINFO* phdhti) { return AfxSend<int>(this, HDM_HITTEST, 0, phdhti); } ///< -1: no item
    // 4.70
    BOOL GetItemRect(int nIndex, LPRECT lpRect) const { return AfxSend<BOOL>(this, HDM_GETITEMRECT, nIndex, lpRect); }
    int OrderToIndex(int nOrder) const { return AfxSend<int>(this, HDM_ORDERTOINDEX, nOrder); }
    /// The items as they stand from left to right; \p iCount -1: as many as there are
    BOOL GetOrderArray(LPINT piArray, int iCount = -1) const
    {
        return AfxSend<BOOL>(this, HDM_GETORDERARRAY, iCount == -1 ? GetItemCount() : iCount, piArray);
    }
    BOOL SetOrderArray(int iCount, LPINT piArray) { return AfxSend<BOOL>(this, HDM_SETORDERARRAY, iCount, piArray); }
    CImageList* SetImageList(CImageList* pImageList); ///< stays the caller's. \return the one before
    CImageList* GetImageList() const;

    virtual void DrawItem(LPDRAWITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

/// Tabs above a place for pages. With TCS_OWNERDRAWFIXED DrawItem draws them.
class AFX_API CTabCtrl : public CWnd {
    DECLARE_DYNAMIC(CTabCtrl)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    /// \return its position, -1 on failure
    LONG InsertItem(int nItem, TCITEMA* pTabCtrlItem)
    {
        return AfxSend<LONG>(this, TCM_INSERTITEM, nItem, pTabCtrlItem);
    }
    LONG InsertItem(int nItem, LPCSTR lpszItem) { return InsertItem(TCIF_TEXT, nItem, lpszItem, 0, 0); }
    LONG InsertItem(int nItem, LPCSTR lpszItem, int nImage)
    {
        return InsertItem(TCIF_TEXT | TCIF_IMAGE, nItem, lpszItem, nImage, 0);
    }
    LONG InsertItem(UINT nMask, int nItem, LPCSTR lpszItem, int nImage, LPARAM lParam);
    BOOL DeleteItem(int nItem) { return AfxSend<BOOL>(this, TCM_DELETEITEM, nItem); }
    BOOL DeleteAllItems() { return AfxSend<BOOL>(this, TCM_DELETEALLITEMS); }
    int GetItemCount() const { return AfxSend<int>(this, TCM_GETITEMCOUNT); }
    BOOL GetItem(int nItem, TCITEMA* pTabCtrlItem) const
    {
        return AfxSend<BOOL>(this, TCM_GETITEM, nItem, pTabCtrlItem);
    }
    BOOL SetItem(int nItem, TCITEMA* pTabCtrlItem) { return AfxSend<BOOL>(this, TCM_SETITEM, nItem, pTabCtrlItem); }
    BOOL GetItemRect(int nItem, LPRECT lpRect) const { return AfxSend<BOOL>(this, TCM_GETITEMRECT, nItem, lpRect); }
    int GetCurSel() const { return AfxSend<int>(this, TCM_GETCURSEL); }
    int SetCurSel(int nItem)
    {
        return AfxSend<int>(this, TCM_SETCURSEL, nItem);
    } ///< not notified. \return the one before
    int GetCurFocus() const { return AfxSend<int>(this, TCM_GETCURFOCUS); }
    void SetCurFocus(int nItem) { AfxSend(this, TCM_SETCURFOCUS, nItem); }
    /// \param bLarger TRUE: from the place of the page to the whole; FALSE: back
    void AdjustRect(BOOL bLarger, LPRECT lpRect) { AfxSend(this, TCM_ADJUSTRECT, bLarger, lpRect); }
    CSize SetItemSize(CSize size); ///< \return the one before
    void SetPadding(CSize size) { AfxSend(this, TCM_SETPADDING, 0, MAKELPARAM(size.cx, size.cy)); }
    int GetRowCount() const { return AfxSend<int>(this, TCM_GETROWCOUNT); }
    int HitTest(TCHITTESTINFO* pHitTestInfo) const { return AfxSend<int>(this, TCM_HITTEST, 0, pHitTestInfo); }
    CImageList* SetImageList(CImageList* pImageList); ///< stays the caller's. \return the one before
    CImageList* GetImageList() const;
    CToolTipCtrl* GetToolTips() const;
    void SetToolTips(CToolTipCtrl* pWndTip);

    virtual void DrawItem(LPDRAWITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};
