/// \file
/// Application framework: tree views. Included by afxcmn.h.
#pragma once

#include <afxsnd_.h>

#include <commctrl.h>

class CEdit;
class CImageList;

/// A tree of items, each with a text and two pictures: for the selected item and for others. Where an item is not there
/// the answer is null, or FALSE.
class AFX_API CTreeCtrl : public CWnd {
    DECLARE_DYNAMIC(CTreeCtrl)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // Items
    HTREEITEM InsertItem(TVINSERTSTRUCTA* lpInsertStruct)
    {
        return AfxSend<HTREEITEM>(this, TVM_INSERTITEM, 0, lpInsertStruct);
    }
    HTREEITEM InsertItem(UINT nMask, LPCSTR lpszItem, int nImage, int nSelectedImage, UINT nState, UINT nStateMask,
                         LPARAM lParam, HTREEITEM hParent, HTREEITEM hInsertAfter);
    HTREEITEM InsertItem(LPCSTR lpszItem, HTREEITEM hParent = TVI_ROOT, HTREEITEM hInsertAfter = TVI_LAST)
    {
        return InsertItem(TVIF_TEXT, lpszItem, 0, 0, 0, 0, 0, hParent, hInsertAfter);
    }
    HTREEITEM InsertItem(LPCSTR lpszItem, int nImage, int nSelectedImage, HTREEITEM hParent = TVI_ROOT,
                         HTREEITEM hInsertAfter = TVI_LAST)
    {
        return InsertItem(TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE, lpszItem, nImage, nSelectedImage, 0, 0, 0,
                          hParent, hInsertAfter);
    }
    BOOL DeleteItem(HTREEITEM hItem) { return AfxSend<BOOL>(this, TVM_DELETEITEM, 0, hItem); }
    BOOL DeleteAllItems() { return DeleteItem(TVI_ROOT); }
    UINT GetCount() const { return AfxSend<UINT>(this, TVM_GETCOUNT); }
    BOOL GetItem(TVITEMA* pItem) const { return AfxSend<BOOL>(this, TVM_GETITEM, 0, pItem); }
    BOOL SetItem(TVITEMA* pItem) { return AfxSend<BOOL>(this, TVM_SETITEM, 0, pItem); }
    BOOL SetItem(HTREEITEM hItem, UINT nMask, LPCSTR lpszItem, int nImage, int nSelectedImage, UINT nState,
                 UINT nStateMask, LPARAM lParam);
    CString GetItemText(HTREEITEM hItem) const;
    BOOL SetItemText(HTREEITEM hItem, LPCSTR lpszItem) { return SetItem(hItem, TVIF_TEXT, lpszItem, 0, 0, 0, 0, 0); }
    BOOL GetItemImage(HTREEITEM hItem, int& nImage, int& nSelectedImage) const;
    BOOL SetItemImage(HTREEITEM hItem, int nImage, int nSelectedImage)
    {
        return SetItem(hItem, TVIF_IMAGE | TVIF_SELECTEDIMAGE, nullptr, nImage, nSelectedImage, 0, 0, 0);
    }
    UINT GetItemState(HTREEITEM hItem, UINT nStateMask) const; ///< of TVIS_ bits
    BOOL SetItemState(HTREEITEM hItem, UINT nState, UINT nStateMask)
    {
        return SetItem(hItem, TVIF_STATE, nullptr, 0, 0, nState, nStateMask, 0);
    }
    DWORD_PTR GetItemData(HTREEITEM hItem) const;
    BOOL SetItemData(HTREEITEM hItem, DWORD_PTR dwData)
    {
        return SetItem(hItem, TVIF_PARAM, nullptr, 0, 0, 0, 0, static_cast<LPARAM>(dwData));
    }
    BOOL ItemHasChildren(HTREEITEM hItem) const; ///< as the button before it shows
    BOOL GetCheck(HTREEITEM hItem) const;        ///< with TVS_CHECKBOXES, of 4.71
    BOOL SetCheck(HTREEITEM hItem, BOOL fCheck = TRUE);

    // Ways through the tree
    /// \param nCode one of TVGN_...
    HTREEITEM GetNextItem(HTREEITEM hItem, UINT nCode) const
    {
        return AfxSend<HTREEITEM>(this, TVM_GETNEXTITEM, nCode, hItem);
    }
    HTREEITEM GetRootItem() const { return GetNextItem(nullptr, TVGN_ROOT); }
    HTREEITEM GetChildItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_CHILD); }
    HTREEITEM GetNextSiblingItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_NEXT); }
    HTREEITEM GetPrevSiblingItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_PREVIOUS); }
    HTREEITEM GetParentItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_PARENT); }
    HTREEITEM GetFirstVisibleItem() const { return GetNextItem(nullptr, TVGN_FIRSTVISIBLE); }
    HTREEITEM GetNextVisibleItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_NEXTVISIBLE); }
    HTREEITEM GetPrevVisibleItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_PREVIOUSVISIBLE); }
    HTREEITEM GetSelectedItem() const { return GetNextItem(nullptr, TVGN_CARET); }
    HTREEITEM GetDropHilightItem() const { return GetNextItem(nullptr, TVGN_DROPHILITE); }

    // Selection and what is visible
    BOOL Select(HTREEITEM hItem, UINT nCode) { return AfxSend<BOOL>(this, TVM_SELECTITEM, nCode, hItem); }
    BOOL SelectItem(HTREEITEM hItem) { return Select(hItem, TVGN_CARET); } ///< null: none
    BOOL SelectDropTarget(HTREEITEM hItem) { return Select(hItem, TVGN_DROPHILITE); }
    /// \param nCode of TVE_...
    BOOL Expand(HTREEITEM hItem, UINT nCode) { return AfxSend<BOOL>(this, TVM_EXPAND, nCode, hItem); }
    BOOL EnsureVisible(HTREEITEM hItem) { return AfxSend<BOOL>(this, TVM_ENSUREVISIBLE, 0, hItem); }
    UINT GetVisibleCount() const { return AfxSend<UINT>(this, TVM_GETVISIBLECOUNT); }
    /// \param bTextOnly FALSE: the whole row. \return FALSE if it is not visible
    BOOL GetItemRect(HTREEITEM hItem, LPRECT lpRect, BOOL bTextOnly) const;
    /// \param pFlags gets where on the item, of TVHT_ bits; may be null
    HTREEITEM HitTest(CPoint pt, UINT* pFlags = nullptr) const;
    HTREEITEM HitTest(TVHITTESTINFO* pHitTestInfo) const
    {
        return AfxSend<HTREEITEM>(this, TVM_HITTEST, 0, pHitTestInfo);
    }

    // Order
    BOOL SortChildren(HTREEITEM hItem) { return AfxSend<BOOL>(this, TVM_SORTCHILDREN, 0, hItem); } ///< by their texts
    /// An exception that lpfnCompare throws is thrown on when the system has ended the sort; the order is then any.
    BOOL SortChildrenCB(LPTVSORTCB pSort);

    // Labels; the control owns the field in which one is edited
    CEdit* EditLabel(HTREEITEM hItem); ///< null if it cannot be edited
    CEdit* GetEditControl() const;

    // Looks
    CImageList* SetImageList(CImageList* pImageList,
                             int nImageListType);        ///< stays the caller's. \return the one before
    CImageList* GetImageList(UINT nImageListType) const; ///< \p nImageListType one of TVSIL_...
    UINT GetIndent() const { return AfxSend<UINT>(this, TVM_GETINDENT); }
    void SetIndent(UINT nIndent) { AfxSend(this, TVM_SETINDENT, nIndent); }
};
