/// \file
/// Application framework: controls. Included by afxwin.h.
#pragma once

#include <afxwnd_.h>

class AFX_API CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)
public:
    BOOL Create(LPCSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID = 0xFFFF);
};

/// A push button, check box or radio button, by its style.
class AFX_API CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)
public:
    BOOL Create(LPCSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int nCheck) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck)); }
};

class AFX_API CEdit : public CWnd {
    DECLARE_DYNAMIC(CEdit)
public:
    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    /// Selects characters, and scrolls to the end of the selection.
    void SetSel(int nStartChar, int nEndChar)
    {
        SendMessage(EM_SETSEL, static_cast<WPARAM>(nStartChar), nEndChar);
        SendMessage(EM_SCROLLCARET);
    }
};

/// A list box. An owner-drawn one draws itself: derive from it and override DrawItem.
class AFX_API CListBox : public CWnd {
    DECLARE_DYNAMIC(CListBox)
public:
    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetCount() const { return static_cast<int>(SendMessage(LB_GETCOUNT)); }
    int GetCurSel() const { return static_cast<int>(SendMessage(LB_GETCURSEL)); }
    int SetCurSel(int nSelect) { return static_cast<int>(SendMessage(LB_SETCURSEL, static_cast<WPARAM>(nSelect))); }
    int AddString(LPCSTR lpszItem)
    {
        return static_cast<int>(SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(lpszItem)));
    }
    void ResetContent() { SendMessage(LB_RESETCONTENT); }
    void* GetItemDataPtr(int nIndex) const;
    int SetItemHeight(int nIndex, UINT cyItemHeight)
    {
        return static_cast<int>(SendMessage(LB_SETITEMHEIGHT, static_cast<WPARAM>(nIndex), cyItemHeight));
    }

    virtual void DrawItem(DRAWITEMSTRUCT* lpDrawItemStruct);
    virtual void MeasureItem(MEASUREITEMSTRUCT* lpMeasureItemStruct);
    /// \return -1, 0 or 1: whether the first item stands before, with or behind the second.
    virtual int CompareItem(COMPAREITEMSTRUCT* lpCompareItemStruct);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

class AFX_API CComboBox : public CWnd {
    DECLARE_DYNAMIC(CComboBox)
public:
    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetCount() const { return static_cast<int>(SendMessage(CB_GETCOUNT)); }
    int GetCurSel() const { return static_cast<int>(SendMessage(CB_GETCURSEL)); }
    int SetCurSel(int nSelect) { return static_cast<int>(SendMessage(CB_SETCURSEL, static_cast<WPARAM>(nSelect))); }
    int AddString(LPCSTR lpszString)
    {
        return static_cast<int>(SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(lpszString)));
    }
    void ResetContent() { SendMessage(CB_RESETCONTENT); }
    void* GetItemDataPtr(int nIndex) const;
};

/// A scroll bar that is a window, not part of a border.
class AFX_API CScrollBar : public CWnd {
    DECLARE_DYNAMIC(CScrollBar)
public:
    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
};
