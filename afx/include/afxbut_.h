/// \file
/// Application framework: static texts, buttons and scroll bars. Included by afxctl_.h.
#pragma once

#include <afxsnd_.h>

/// A text, a picture (SS_BITMAP, SS_ICON), a frame, or what DrawItem draws (SS_OWNERDRAW). Pictures stay the caller's.
class AFX_API CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)
public:
    virtual BOOL Create(LPCSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID = 0xFFFF);

    /// \return the picture before
    HBITMAP SetBitmap(HBITMAP hBitmap) { return AfxSend<HBITMAP>(this, STM_SETIMAGE, IMAGE_BITMAP, hBitmap); }
    HBITMAP GetBitmap() const { return AfxSend<HBITMAP>(this, STM_GETIMAGE, IMAGE_BITMAP); }
    HICON SetIcon(HICON hIcon) { return AfxSend<HICON>(this, STM_SETIMAGE, IMAGE_ICON, hIcon); }
    HICON GetIcon() const { return AfxSend<HICON>(this, STM_GETIMAGE, IMAGE_ICON); }

    virtual void DrawItem(LPDRAWITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

/// A push button, check box, radio button or group box, by its style; BS_OWNERDRAW: what DrawItem draws. Pictures
/// (BS_BITMAP, BS_ICON) stay the caller's.
class AFX_API CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)
public:
    virtual BOOL Create(LPCSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    UINT GetState() const { return AfxSend<UINT>(this, BM_GETSTATE); } ///< of BST_ bits
    void SetState(BOOL bHighlight) { AfxSend(this, BM_SETSTATE, bHighlight); }
    int GetCheck() const { return AfxSend<int>(this, BM_GETCHECK); }
    void SetCheck(int nCheck) { AfxSend(this, BM_SETCHECK, nCheck); }
    UINT GetButtonStyle() const { return GetStyle() & 0xFF; } ///< the BS_ style alone
    void SetButtonStyle(UINT nStyle, BOOL bRedraw = TRUE) { AfxSend(this, BM_SETSTYLE, nStyle, bRedraw); }
    /// \return the picture before
    HBITMAP SetBitmap(HBITMAP hBitmap) { return AfxSend<HBITMAP>(this, BM_SETIMAGE, IMAGE_BITMAP, hBitmap); }
    HBITMAP GetBitmap() const { return AfxSend<HBITMAP>(this, BM_GETIMAGE, IMAGE_BITMAP); }
    HICON SetIcon(HICON hIcon) { return AfxSend<HICON>(this, BM_SETIMAGE, IMAGE_ICON, hIcon); }
    HICON GetIcon() const { return AfxSend<HICON>(this, BM_GETIMAGE, IMAGE_ICON); }

    virtual void DrawItem(LPDRAWITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

/// A scroll bar that is a window, not part of a border.
class AFX_API CScrollBar : public CWnd {
    DECLARE_DYNAMIC(CScrollBar)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetScrollPos() const { return ::GetScrollPos(m_hWnd, SB_CTL); }
    /// \return the position before
    int SetScrollPos(int nPos, BOOL bRedraw = TRUE) { return ::SetScrollPos(m_hWnd, SB_CTL, nPos, bRedraw); }
    void GetScrollRange(LPINT lpMinPos, LPINT lpMaxPos) const { CWnd::GetScrollRange(SB_CTL, lpMinPos, lpMaxPos); }
    void SetScrollRange(int nMinPos, int nMaxPos, BOOL bRedraw = TRUE)
    {
        CWnd::SetScrollRange(SB_CTL, nMinPos, nMaxPos, bRedraw);
    }
    void ShowScrollBar(BOOL bShow = TRUE) { CWnd::ShowScrollBar(SB_CTL, bShow); }
    BOOL EnableScrollBar(UINT nArrowFlags = ESB_ENABLE_BOTH) { return CWnd::EnableScrollBar(SB_CTL, nArrowFlags); }
    BOOL SetScrollInfo(LPSCROLLINFO lpScrollInfo, BOOL bRedraw = TRUE)
    {
        return CWnd::SetScrollInfo(SB_CTL, lpScrollInfo, bRedraw);
    }
    BOOL GetScrollInfo(LPSCROLLINFO lpScrollInfo, UINT nMask = SIF_ALL)
    {
        return CWnd::GetScrollInfo(SB_CTL, lpScrollInfo, nMask);
    }
    int GetScrollLimit() const { return CWnd::GetScrollLimit(SB_CTL); }
};
