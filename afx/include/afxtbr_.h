/// \file
/// Application framework: the system's controls for tool bars and status bars. Included by afxcmn.h.
#pragma once

#include <afxsnd_.h>

#include <commctrl.h>

class CBitmap;
class CImageList;
class CToolTipCtrl;

/// A row of buttons that send commands. Buttons are named by their command (nID) or by their place (nIndex). What
/// CreateWindowEx has made without Create wants SetButtonStructSize before anything else.
class AFX_API CToolBarCtrl : public CWnd {
    DECLARE_DYNAMIC(CToolBarCtrl)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // Buttons
    void SetButtonStructSize(int nSize) { AfxSend(this, TB_BUTTONSTRUCTSIZE, nSize); }
    BOOL AddButtons(int nNumButtons, TBBUTTON* lpButtons)
    {
        return AfxSend<BOOL>(this, TB_ADDBUTTONS, nNumButtons, lpButtons);
    }
    BOOL InsertButton(int nIndex, TBBUTTON* lpButton) { return AfxSend<BOOL>(this, TB_INSERTBUTTON, nIndex, lpButton); }
    BOOL DeleteButton(int nIndex) { return AfxSend<BOOL>(this, TB_DELETEBUTTON, nIndex); }
    BOOL GetButton(int nIndex, TBBUTTON* lpButton) const { return AfxSend<BOOL>(this, TB_GETBUTTON, nIndex, lpButton); }
    int GetButtonCount() const { return AfxSend<int>(this, TB_BUTTONCOUNT); }
    UINT CommandToIndex(UINT nID) const { return AfxSend<UINT>(this, TB_COMMANDTOINDEX, nID); } ///< -1: none
    BOOL SetCmdID(int nIndex, UINT nID) { return AfxSend<BOOL>(this, TB_SETCMDID, nIndex, nID); }
    void Customize() { AfxSend(this, TB_CUSTOMIZE); } ///< the system's own dialog

    // The state of a button
    BOOL EnableButton(int nID, BOOL bEnable = TRUE) { return SetFlag(TB_ENABLEBUTTON, nID, bEnable); }
    BOOL CheckButton(int nID, BOOL bCheck = TRUE) { return SetFlag(TB_CHECKBUTTON, nID, bCheck); }
    BOOL PressButton(int nID, BOOL bPress = TRUE) { return SetFlag(TB_PRESSBUTTON, nID, bPress); }
    BOOL HideButton(int nID, BOOL bHide = TRUE) { return SetFlag(TB_HIDEBUTTON, nID, bHide); }
    BOOL Indeterminate(int nID, BOOL bIndeterminate = TRUE) { return SetFlag(TB_INDETERMINATE, nID, bIndeterminate); }
    BOOL IsButtonEnabled(int nID) const { return AfxSend<BOOL>(this, TB_ISBUTTONENABLED, nID); }
    BOOL IsButtonChecked(int nID) const { return AfxSend<BOOL>(this, TB_ISBUTTONCHECKED, nID); }
    BOOL IsButtonPressed(int nID) const { return AfxSend<BOOL>(this, TB_ISBUTTONPRESSED, nID); }
    BOOL IsButtonHidden(int nID) const { return AfxSend<BOOL>(this, TB_ISBUTTONHIDDEN, nID); }
    BOOL IsButtonIndeterminate(int nID) const { return AfxSend<BOOL>(this, TB_ISBUTTONINDETERMINATE, nID); }
    int GetState(int nID) const
    {
        return AfxSend<int>(this, TB_GETSTATE, nID);
    } ///< of TBSTATE_ bits; -1: no such button
    BOOL SetState(int nID, UINT nState) { return AfxSend<BOOL>(this, TB_SETSTATE, nID, MAKELPARAM(nState, 0)); }

    // Pictures and texts. \return the number of the first one, -1 on failure
    int AddBitmap(int nNumButtons, CBitmap* pBitmap); ///< which must outlive the bar
    /// A resource found through the resource chain.
    int AddBitmap(int nNumButtons, UINT nBitmapID);
    /// \param lpszStrings each ends with a zero, the last with two
    int AddStrings(LPCSTR lpszStrings) { return AfxSend<int>(this, TB_ADDSTRING, 0, lpszStrings); }
    CImageList* SetImageList(CImageList* pImageList); ///< 4.70; stays the caller's. \return the one before
    CImageList* GetImageList() const;
    CImageList* SetDisabledImageList(CImageList* pImageList);
    CImageList* GetDisabledImageList() const;

    // Sizes and places
    BOOL SetBitmapSize(CSize size) { return AfxSend<BOOL>(this, TB_SETBITMAPSIZE, 0, MAKELPARAM(size.cx, size.cy)); }
    BOOL SetButtonSize(CSize size) { return AfxSend<BOOL>(this, TB_SETBUTTONSIZE, 0, MAKELPARAM(size.cx, size.cy)); }
    DWORD GetButtonSize() const { return AfxSend<DWORD>(this, TB_GETBUTTONSIZE); } ///< width in the low word; 4.70
    void AutoSize() { AfxSend(this, TB_AUTOSIZE); }
    BOOL GetItemRect(int nIndex, LPRECT lpRect) const { return AfxSend<BOOL>(this, TB_GETITEMRECT, nIndex, lpRect); }
    BOOL GetRect(int nID, LPRECT lpRect) const { return AfxSend<BOOL>(this, TB_GETRECT, nID, lpRect); } ///< 4.70
    int GetRows() const { return AfxSend<int>(this, TB_GETROWS); }
    /// 4.70. \return the button's place; negative: -1 - that of a separator, or no button
    int HitTest(LPPOINT ppt) const { return AfxSend<int>(this, TB_HITTEST, 0, ppt); }

    void SetOwner(CWnd* pWnd) { AfxSend(this, TB_SETPARENT, AfxGetSafeHwnd(pWnd)); } ///< who gets the notifications
    CToolTipCtrl* GetToolTips() const;                                               ///< null without TBSTYLE_TOOLTIPS
    void SetToolTips(CToolTipCtrl* pTip);

private:
    BOOL SetFlag(UINT message, int id, BOOL on) { return AfxSend<BOOL>(this, message, id, MAKELPARAM(on, 0)); }
};

/// A row of panes with texts. A pane of type SBT_OWNERDRAW is drawn by DrawItem, its text being any value.
class AFX_API CStatusBarCtrl : public CWnd {
    DECLARE_DYNAMIC(CStatusBarCtrl)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    /// \param pWidths right edges in pixels; -1: up to the bar's right edge
    BOOL SetParts(int nParts, int* pWidths) { return AfxSend<BOOL>(this, SB_SETPARTS, nParts, pWidths); }
    int GetParts(int nParts, int* pParts) const
    {
        return AfxSend<int>(this, SB_GETPARTS, nParts, pParts);
    } ///< \return all
    /// \param nPane up to 255 \param nType 0, SBT_NOBORDERS, SBT_POPOUT or SBT_OWNERDRAW
    BOOL SetText(LPCSTR lpszText, int nPane, int nType)
    {
        return AfxSend<BOOL>(this, SB_SETTEXT, nPane | nType, lpszText);
    }
    /// \param pType gets the type; may be null. Of an owner-drawn pane the text is empty
    CString GetText(int nPane, int* pType = nullptr) const;
    int GetTextLength(int nPane, int* pType = nullptr) const;
    BOOL GetRect(int nPane, LPRECT lpRect) const { return AfxSend<BOOL>(this, SB_GETRECT, nPane, lpRect); }
    BOOL GetBorders(int* pBorders) const { return AfxSend<BOOL>(this, SB_GETBORDERS, 0, pBorders); } ///< three of them
    BOOL GetBorders(int& nHorz, int& nVert, int& nSpacing) const;
    void SetMinHeight(int nMin) { AfxSend(this, SB_SETMINHEIGHT, nMin); }
    /// One text (SB_SIMPLEID) in place of the panes.
    BOOL SetSimple(BOOL bSimple = TRUE) { return AfxSend<BOOL>(this, SB_SIMPLE, bSimple); }
    BOOL IsSimple() const { return AfxSend<BOOL>(this, SB_ISSIMPLE); }                             ///< 4.70
    BOOL SetIcon(int nPane, HICON hIcon) { return AfxSend<BOOL>(this, SB_SETICON, nPane, hIcon); } ///< 4.71

    virtual void DrawItem(LPDRAWITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};
