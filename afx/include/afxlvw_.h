/// \file
/// Application framework: list views. Included by afxcmn.h.
#pragma once

#include <afxsnd_.h>

#include <commctrl.h>

class CEdit;
class CHeaderCtrl;
class CImageList;

/// Items with texts and pictures, as rows with columns (LVS_REPORT), as icons or as a list. Column 0 is the item
/// itself. With LVS_OWNERDRAWFIXED DrawItem draws the rows.
class AFX_API CListCtrl : public CWnd {
    DECLARE_DYNAMIC(CListCtrl)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // Columns; deleting one moves those behind it
    int InsertColumn(int nCol, const LVCOLUMNA* pColumn) { return AfxSend<int>(this, LVM_INSERTCOLUMN, nCol, pColumn); }
    /// \param nWidth in pixels; -1: 0 at first \param nSubItem -1: none is named
    int InsertColumn(int nCol, LPCSTR lpszColumnHeading, int nFormat = LVCFMT_LEFT, int nWidth = -1, int nSubItem = -1);
    BOOL DeleteColumn(int nCol) { return AfxSend<BOOL>(this, LVM_DELETECOLUMN, nCol); }
    BOOL GetColumn(int nCol, LVCOLUMNA* pColumn) const { return AfxSend<BOOL>(this, LVM_GETCOLUMN, nCol, pColumn); }
    BOOL SetColumn(int nCol, const LVCOLUMNA* pColumn) { return AfxSend<BOOL>(this, LVM_SETCOLUMN, nCol, pColumn); }
    int GetColumnWidth(int nCol) const { return AfxSend<int>(this, LVM_GETCOLUMNWIDTH, nCol); }
    /// \param cx in pixels, or LVSCW_AUTOSIZE, LVSCW_AUTOSIZE_USEHEADER
    BOOL SetColumnWidth(int nCol, int cx) { return AfxSend<BOOL>(this, LVM_SETCOLUMNWIDTH, nCol, MAKELPARAM(cx, 0)); }
    BOOL GetColumnOrderArray(LPINT piArray, int iCount = -1) const; ///< 4.70; -1: all columns
    BOOL SetColumnOrderArray(int iCount, LPINT piArray)
    {
        return AfxSend<BOOL>(this, LVM_SETCOLUMNORDERARRAY, iCount, piArray);
    }
    CHeaderCtrl* GetHeaderCtrl() const; ///< 4.70; null without columns

    // Items
    int GetItemCount() const { return AfxSend<int>(this, LVM_GETITEMCOUNT); }
    void SetItemCount(int nItems) { AfxSend(this, LVM_SETITEMCOUNT, nItems); } ///< that there will be
    /// \return its number, -1 on failure
    int InsertItem(const LVITEMA* pItem) { return AfxSend<int>(this, LVM_INSERTITEM, 0, pItem); }
    int InsertItem(int nItem, LPCSTR lpszItem) { return InsertItem(LVIF_TEXT, nItem, lpszItem, 0, 0, 0, 0); }
    int InsertItem(int nItem, LPCSTR lpszItem, int nImage)
    {
        return InsertItem(LVIF_TEXT | LVIF_IMAGE, nItem, lpszItem, 0, 0, nImage, 0);
    }
    int InsertItem(UINT nMask, int nItem, LPCSTR lpszItem, UINT nState, UINT nStateMask, int nImage, LPARAM lParam);
    BOOL DeleteItem(int nItem) { return AfxSend<BOOL>(this, LVM_DELETEITEM, nItem); }
    BOOL DeleteAllItems() { return AfxSend<BOOL>(this, LVM_DELETEALLITEMS); }
    BOOL GetItem(LVITEMA* pItem) const { return AfxSend<BOOL>(this, LVM_GETITEM, 0, pItem); }
    BOOL SetItem(const LVITEMA* pItem) { return AfxSend<BOOL>(this, LVM_SETITEM, 0, pItem); }
    BOOL SetItem(int nItem, int nSubItem, UINT nMask, LPCSTR lpszItem, int nImage, UINT nState, UINT nStateMask,
                 LPARAM lParam);
    CString GetItemText(int nItem, int nSubItem) const;
    /// \return the characters copied
    int GetItemText(int nItem, int nSubItem, LPSTR lpszText, int nLen) const;
    BOOL SetItemText(int nItem, int nSubItem, LPCSTR lpszText);
    DWORD_PTR GetItemData(int nItem) const;
    BOOL SetItemData(int nItem, DWORD_PTR dwData)
    {
        return SetItem(nItem, 0, LVIF_PARAM, nullptr, 0, 0, 0, static_cast<LPARAM>(dwData));
    }
    UINT GetItemState(int nItem, UINT nMask) const { return AfxSend<UINT>(this, LVM_GETITEMSTATE, nItem, nMask); }
    BOOL SetItemState(int nItem, UINT nState, UINT nMask); ///< item -1: all
    BOOL GetCheck(int nItem) const;                        ///< with LVS_EX_CHECKBOXES
    BOOL SetCheck(int nItem, BOOL fCheck = TRUE);

    // Selection and search
    /// \param nItem behind which to look; -1: from the first \param nFlags of LVNI_... \return -1 if there is none
    int GetNextItem(int nItem, int nFlags) const
    {
        return AfxSend<int>(this, LVM_GETNEXTITEM, nItem, MAKELPARAM(nFlags, 0));
    }
    POSITION GetFirstSelectedItemPosition() const; ///< null: none is selected
    int GetNextSelectedItem(POSITION& pos) const;  ///< \return the item at \p pos, which goes on to the next
    UINT GetSelectedCount() const { return AfxSend<UINT>(this, LVM_GETSELECTEDCOUNT); }
    int GetSelectionMark() const { return AfxSend<int>(this, LVM_GETSELECTIONMARK); } ///< 4.71
    int SetSelectionMark(int iIndex) { return AfxSend<int>(this, LVM_SETSELECTIONMARK, 0, iIndex); }
    /// From behind \p nStart; -1: from the first. \return -1 if there is none
    int FindItem(const LVFINDINFOA* pFindInfo, int nStart = -1) const
    {
        return AfxSend<int>(this, LVM_FINDITEM, nStart, pFindInfo);
    }
    int HitTest(LVHITTESTINFO* pHitTestInfo) const { return AfxSend<int>(this, LVM_HITTEST, 0, pHitTestInfo); }
    /// \param pFlags gets where on the item, of LVHT_ bits; may be null
    int HitTest(CPoint pt, UINT* pFlags = nullptr) const;
    int SubItemHitTest(LVHITTESTINFO* pInfo) const
    {
        return AfxSend<int>(this, LVM_SUBITEMHITTEST, 0, pInfo);
    } ///< 4.70

    // Places
    int GetTopIndex() const { return AfxSend<int>(this, LVM_GETTOPINDEX); }
    int GetCountPerPage() const { return AfxSend<int>(this, LVM_GETCOUNTPERPAGE); }
    /// \param nCode LVIR_BOUNDS, LVIR_ICON, LVIR_LABEL or LVIR_SELECTBOUNDS
    BOOL GetItemRect(int nItem, LPRECT lpRect, UINT nCode) const;
    BOOL GetSubItemRect(int iItem, int iSubItem, int nArea, CRect& ref) const; ///< 4.70
    BOOL EnsureVisible(int nItem, BOOL bPartialOK)
    {
        return AfxSend<BOOL>(this, LVM_ENSUREVISIBLE, nItem, MAKELPARAM(bPartialOK, 0));
    }
    BOOL Scroll(CSize size) { return AfxSend<BOOL>(this, LVM_SCROLL, size.cx, size.cy); }
    BOOL RedrawItems(int nFirst, int nLast) { return AfxSend<BOOL>(this, LVM_REDRAWITEMS, nFirst, nLast); }
    BOOL Update(int nItem) { return AfxSend<BOOL>(this, LVM_UPDATE, nItem); }
    BOOL Arrange(UINT nCode) { return AfxSend<BOOL>(this, LVM_ARRANGE, nCode); }
    int GetStringWidth(LPCSTR lpsz) const { return AfxSend<int>(this, LVM_GETSTRINGWIDTH, 0, lpsz); }

    /// Sorts by the items' data. An exception that \p pfnCompare throws is thrown on when the system has ended the
    /// sort; the order is then any.
    BOOL SortItems(PFNLVCOMPARE pfnCompare, DWORD_PTR dwData);

    // Labels; the control owns the field in which one is edited
    CEdit* EditLabel(int nItem); ///< null if it cannot be edited
    CEdit* GetEditControl() const;

    // Looks
    CImageList* SetImageList(CImageList* pImageList, int nImageList); ///< stays the caller's, with LVS_SHAREIMAGELISTS
    CImageList* GetImageList(int nImageList) const;                   ///< \p nImageList one of LVSIL_...
    COLORREF GetBkColor() const { return AfxSend<COLORREF>(this, LVM_GETBKCOLOR); }
    BOOL SetBkColor(COLORREF cr) { return AfxSend<BOOL>(this, LVM_SETBKCOLOR, 0, cr); }
    COLORREF GetTextColor() const { return AfxSend<COLORREF>(this, LVM_GETTEXTCOLOR); }
    BOOL SetTextColor(COLORREF cr) { return AfxSend<BOOL>(this, LVM_SETTEXTCOLOR, 0, cr); }
    COLORREF GetTextBkColor() const { return AfxSend<COLORREF>(this, LVM_GETTEXTBKCOLOR); }
    BOOL SetTextBkColor(COLORREF cr) { return AfxSend<BOOL>(this, LVM_SETTEXTBKCOLOR, 0, cr); }
    DWORD GetExtendedStyle() const { return AfxSend<DWORD>(this, LVM_GETEXTENDEDLISTVIEWSTYLE); } ///< 4.70
    DWORD SetExtendedStyle(DWORD dwNewStyle)
    {
        return AfxSend<DWORD>(this, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, dwNewStyle);
    }

    virtual void DrawItem(LPDRAWITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};
