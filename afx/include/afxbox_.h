/// \file
/// Application framework: list boxes and combo boxes. Included by afxctl_.h.
#pragma once

#include <afxsnd_.h>

/// A list box. An owner-drawn one draws itself: derive from it and override DrawItem. Where an item is not there or
/// memory is missing, the answer is LB_ERR or LB_ERRSPACE.
class AFX_API CListBox : public CWnd {
    DECLARE_DYNAMIC(CListBox)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // Items; of an owner-drawn box without texts the data of an item stands in the place of its text
    int GetCount() const { return AfxSend<int>(this, LB_GETCOUNT); }
    int AddString(LPCSTR lpszItem) { return AfxSend<int>(this, LB_ADDSTRING, 0, lpszItem); } ///< \return its place
    int InsertString(int nIndex, LPCSTR lpszItem) { return AfxSend<int>(this, LB_INSERTSTRING, nIndex, lpszItem); }
    int DeleteString(UINT nIndex) { return AfxSend<int>(this, LB_DELETESTRING, nIndex); } ///< \return how many are left
    void ResetContent() { AfxSend(this, LB_RESETCONTENT); }
    int InitStorage(int nItems, UINT nBytes) { return AfxSend<int>(this, LB_INITSTORAGE, nItems, nBytes); }
    int GetText(int nIndex, LPSTR lpszBuffer) const { return AfxSend<int>(this, LB_GETTEXT, nIndex, lpszBuffer); }
    void GetText(int nIndex, CString& rString) const; ///< empty if there is no such item
    int GetTextLen(int nIndex) const { return AfxSend<int>(this, LB_GETTEXTLEN, nIndex); }
    DWORD_PTR GetItemData(int nIndex) const { return AfxSend<DWORD_PTR>(this, LB_GETITEMDATA, nIndex); }
    int SetItemData(int nIndex, DWORD_PTR dwItemData) { return AfxSend<int>(this, LB_SETITEMDATA, nIndex, dwItemData); }
    void* GetItemDataPtr(int nIndex) const { return AfxSend<void*>(this, LB_GETITEMDATA, nIndex); }
    int SetItemDataPtr(int nIndex, void* pData) { return AfxSend<int>(this, LB_SETITEMDATA, nIndex, pData); }

    // Search, from behind an item (-1: from the first) once round
    int FindString(int nStartAfter, LPCSTR lpszItem) const
    {
        return AfxSend<int>(this, LB_FINDSTRING, nStartAfter, lpszItem);
    }
    int FindStringExact(int nIndexStart, LPCSTR lpszFind) const
    {
        return AfxSend<int>(this, LB_FINDSTRINGEXACT, nIndexStart, lpszFind);
    }
    int SelectString(int nStartAfter, LPCSTR lpszItem)
    {
        return AfxSend<int>(this, LB_SELECTSTRING, nStartAfter, lpszItem);
    }

    // Selection of one
    int GetCurSel() const { return AfxSend<int>(this, LB_GETCURSEL); }
    int SetCurSel(int nSelect) { return AfxSend<int>(this, LB_SETCURSEL, nSelect); } ///< -1: none, which answers LB_ERR

    // Selection of several
    int GetSel(int nIndex) const { return AfxSend<int>(this, LB_GETSEL, nIndex); } ///< \return positive if selected
    int SetSel(int nIndex, BOOL bSelect = TRUE) { return AfxSend<int>(this, LB_SETSEL, bSelect, nIndex); } ///< -1: all
    int GetSelCount() const { return AfxSend<int>(this, LB_GETSELCOUNT); }
    int GetSelItems(int nMaxItems, LPINT rgIndex) const
    {
        return AfxSend<int>(this, LB_GETSELITEMS, nMaxItems, rgIndex);
    }
    int SelItemRange(BOOL bSelect, int nFirstItem, int nLastItem)
    {
        return AfxSend<int>(this, LB_SELITEMRANGE, bSelect, MAKELPARAM(nFirstItem, nLastItem));
    }
    int GetAnchorIndex() const { return AfxSend<int>(this, LB_GETANCHORINDEX); }
    void SetAnchorIndex(int nIndex) { AfxSend(this, LB_SETANCHORINDEX, nIndex); }
    int GetCaretIndex() const { return AfxSend<int>(this, LB_GETCARETINDEX); }
    /// \param bScroll TRUE: until the item is wholly visible; FALSE: until a part of it is
    int SetCaretIndex(int nIndex, BOOL bScroll = TRUE)
    {
        return AfxSend<int>(this, LB_SETCARETINDEX, nIndex, MAKELPARAM(!bScroll, 0));
    }

    // Places
    int GetTopIndex() const { return AfxSend<int>(this, LB_GETTOPINDEX); }
    int SetTopIndex(int nIndex) { return AfxSend<int>(this, LB_SETTOPINDEX, nIndex); }
    int GetItemRect(int nIndex, LPRECT lpRect) const { return AfxSend<int>(this, LB_GETITEMRECT, nIndex, lpRect); }
    int GetItemHeight(int nIndex) const { return AfxSend<int>(this, LB_GETITEMHEIGHT, nIndex); }
    /// \param nIndex 0 if all have one height
    int SetItemHeight(int nIndex, UINT cyItemHeight)
    {
        return AfxSend<int>(this, LB_SETITEMHEIGHT, nIndex, MAKELPARAM(cyItemHeight, 0));
    }
    void SetColumnWidth(int cxWidth) { AfxSend(this, LB_SETCOLUMNWIDTH, cxWidth); }
    int GetHorizontalExtent() const { return AfxSend<int>(this, LB_GETHORIZONTALEXTENT); }
    void SetHorizontalExtent(int cxExtent) { AfxSend(this, LB_SETHORIZONTALEXTENT, cxExtent); }
    /// The item nearest to a point of the client area, and whether that is outside the client area.
    UINT ItemFromPoint(CPoint pt, BOOL& bOutside) const;

    // What an owner-drawn box is asked
    virtual void DrawItem(LPDRAWITEMSTRUCT) {}
    virtual void MeasureItem(LPMEASUREITEMSTRUCT) {}
    /// \return -1, 0 or 1: whether the first item stands before, with or behind the second.
    virtual int CompareItem(LPCOMPAREITEMSTRUCT) { return 0; }
    virtual void DeleteItem(LPDELETEITEMSTRUCT) {}
    /// What a key does, with LBS_WANTKEYBOARDINPUT (of boxes without texts also CharToItem). \return -2: all is done;
    /// -1: as the system does; else the item for which to do that
    virtual int VKeyToItem(UINT, UINT) { return -1; }
    virtual int CharToItem(UINT, UINT) { return -1; }

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

/// A combo box: a list and a field above it. What is said of list boxes holds for it, with CB_ERR and CB_ERRSPACE.
class AFX_API CComboBox : public CWnd {
    DECLARE_DYNAMIC(CComboBox)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // Items
    int GetCount() const { return AfxSend<int>(this, CB_GETCOUNT); }
    int AddString(LPCSTR lpszString) { return AfxSend<int>(this, CB_ADDSTRING, 0, lpszString); }
    int InsertString(int nIndex, LPCSTR lpszString) { return AfxSend<int>(this, CB_INSERTSTRING, nIndex, lpszString); }
    int DeleteString(UINT nIndex) { return AfxSend<int>(this, CB_DELETESTRING, nIndex); }
    void ResetContent() { AfxSend(this, CB_RESETCONTENT); }
    int InitStorage(int nItems, UINT nBytes) { return AfxSend<int>(this, CB_INITSTORAGE, nItems, nBytes); }
    int GetLBText(int nIndex, LPSTR lpszText) const { return AfxSend<int>(this, CB_GETLBTEXT, nIndex, lpszText); }
    void GetLBText(int nIndex, CString& rString) const; ///< empty if there is no such item
    int GetLBTextLen(int nIndex) const { return AfxSend<int>(this, CB_GETLBTEXTLEN, nIndex); }
    DWORD_PTR GetItemData(int nIndex) const { return AfxSend<DWORD_PTR>(this, CB_GETITEMDATA, nIndex); }
    int SetItemData(int nIndex, DWORD_PTR dwItemData) { return AfxSend<int>(this, CB_SETITEMDATA, nIndex, dwItemData); }
    void* GetItemDataPtr(int nIndex) const { return AfxSend<void*>(this, CB_GETITEMDATA, nIndex); }
    int SetItemDataPtr(int nIndex, void* pData) { return AfxSend<int>(this, CB_SETITEMDATA, nIndex, pData); }
    int FindString(int nStartAfter, LPCSTR lpszString) const
    {
        return AfxSend<int>(this, CB_FINDSTRING, nStartAfter, lpszString);
    }
    int FindStringExact(int nIndexStart, LPCSTR lpszFind) const
    {
        return AfxSend<int>(this, CB_FINDSTRINGEXACT, nIndexStart, lpszFind);
    }
    int SelectString(int nStartAfter, LPCSTR lpszString)
    {
        return AfxSend<int>(this, CB_SELECTSTRING, nStartAfter, lpszString);
    }
    int GetCurSel() const { return AfxSend<int>(this, CB_GETCURSEL); }
    int SetCurSel(int nSelect) { return AfxSend<int>(this, CB_SETCURSEL, nSelect); }

    // The field
    DWORD GetEditSel() const { return AfxSend<DWORD>(this, CB_GETEDITSEL); } ///< as CEdit::GetSel
    BOOL SetEditSel(int nStartChar, int nEndChar) ///< CB_ERR in a drop-down list, which has no edit control
    {
        return AfxSend<BOOL>(this, CB_SETEDITSEL, 0, MAKELPARAM(nStartChar, nEndChar));
    }
    BOOL LimitText(int nMaxChars) { return AfxSend<BOOL>(this, CB_LIMITTEXT, nMaxChars); }
    void Clear() { AfxSend(this, WM_CLEAR); }
    void Copy() { AfxSend(this, WM_COPY); }
    void Cut() { AfxSend(this, WM_CUT); }
    void Paste() { AfxSend(this, WM_PASTE); }

    // The list
    void ShowDropDown(BOOL bShowIt = TRUE) { AfxSend(this, CB_SHOWDROPDOWN, bShowIt); }
    BOOL GetDroppedState() const { return AfxSend<BOOL>(this, CB_GETDROPPEDSTATE); }
    void GetDroppedControlRect(LPRECT lprect) const { AfxSend(this, CB_GETDROPPEDCONTROLRECT, 0, lprect); }
    int GetDroppedWidth() const { return AfxSend<int>(this, CB_GETDROPPEDWIDTH); }
    int SetDroppedWidth(UINT nWidth) { return AfxSend<int>(this, CB_SETDROPPEDWIDTH, nWidth); } ///< at least
    int SetExtendedUI(BOOL bExtended = TRUE) { return AfxSend<int>(this, CB_SETEXTENDEDUI, bExtended); }
    BOOL GetExtendedUI() const { return AfxSend<BOOL>(this, CB_GETEXTENDEDUI); }
    int GetTopIndex() const { return AfxSend<int>(this, CB_GETTOPINDEX); }
    int SetTopIndex(int nIndex) { return AfxSend<int>(this, CB_SETTOPINDEX, nIndex); }
    int GetItemHeight(int nIndex) const { return AfxSend<int>(this, CB_GETITEMHEIGHT, nIndex); } ///< -1: the field
    int SetItemHeight(int nIndex, UINT cyItemHeight)
    {
        return AfxSend<int>(this, CB_SETITEMHEIGHT, nIndex, MAKELPARAM(cyItemHeight, 0));
    }
    UINT GetHorizontalExtent() const { return AfxSend<UINT>(this, CB_GETHORIZONTALEXTENT); }
    void SetHorizontalExtent(UINT nExtent) { AfxSend(this, CB_SETHORIZONTALEXTENT, nExtent); }

    // What an owner-drawn box is asked; item -1 is the field
    virtual void DrawItem(LPDRAWITEMSTRUCT) {}
    virtual void MeasureItem(LPMEASUREITEMSTRUCT) {}
    virtual int CompareItem(LPCOMPAREITEMSTRUCT) { return 0; }
    virtual void DeleteItem(LPDELETEITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};
