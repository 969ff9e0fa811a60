/// \file
/// Application framework: bars at the edges of a frame. Included by afxext.h.
#pragma once

#include <afxwin.h>

#include <commctrl.h>

/// Styles of bars, given to Create with those of windows: the edge of the frame, lines around the bar, and how the
/// buttons tell what they do.
#define CBRS_ALIGN_TOP 0x2000
#define CBRS_ALIGN_BOTTOM 0x8000
#define CBRS_ALIGN_ANY 0xA000
#define CBRS_BORDER_TOP 0x0200
#define CBRS_BORDER_BOTTOM 0x0800
#define CBRS_BORDER_ANY 0x0A00
#define CBRS_TOOLTIPS 0x0010
#define CBRS_TOP (CBRS_ALIGN_TOP | CBRS_BORDER_TOP | CBRS_BORDER_BOTTOM)
#define CBRS_BOTTOM (CBRS_ALIGN_BOTTOM | CBRS_BORDER_TOP | CBRS_BORDER_BOTTOM)

/// What travels with WM_SIZEPARENT: a child that lays itself out takes its part from \c rect.
struct AFX_SIZEPARENTPARAMS {
    HDWP hDWP;      ///< for DeferWindowPos; null: nothing is moved, only sizes are asked for
    RECT rect;      ///< what is left of the parent's client area
    SIZE sizeTotal; ///< what has been taken, in both directions
    BOOL bStretch;  ///< bars take the whole edge
};

/// A bar: a child of a frame that lays itself out at the frame's top or bottom edge, and shows the state of its
/// commands when the program is idle.
class AFX_API CControlBar : public CWnd {
    DECLARE_DYNAMIC(CControlBar)
public:
    ~CControlBar() override;

    DWORD GetBarStyle() const { return m_dwBarStyle; } ///< CBRS_...
    /// Takes effect at the frame's next RecalcLayout.
    void SetBarStyle(DWORD dwStyle) { m_dwBarStyle = dwStyle; }
    /// The size that the bar wants. \param bStretch as wide as there is room \param bHorz always TRUE here
    virtual CSize CalcFixedLayout(BOOL bStretch, BOOL bHorz) = 0;
    /// Lets \p pTarget set the state of the bar's commands. \param bDisableIfNoHndler as in CCmdUI::DoUpdate
    virtual void OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler) = 0;

    BOOL m_bAutoDelete = FALSE; ///< the object deletes itself with its window

protected:
    /// Creates the bar's window, of a class of the system's common controls, without the bar's own styles.
    BOOL CreateBar(LPCSTR lpszClassName, DWORD dwStyle, DWORD dwControlStyle, CWnd* pParentWnd, UINT nID);
    void PostNcDestroy() override;
    afx_msg LRESULT OnSizeParent(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnIdleUpdateCmdUI(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    DWORD m_dwBarStyle = 0;
};

/// A bar of buttons with pictures; each stands for a command. Buttons are named by their position.
class AFX_API CToolBar : public CControlBar {
    DECLARE_DYNAMIC(CToolBar)
public:
    ~CToolBar() override;

    BOOL Create(CWnd* pParentWnd, DWORD dwStyle = WS_CHILD | WS_VISIBLE | CBRS_TOP, UINT nID = AFX_IDW_TOOLBAR);
    /// \param dwCtrlStyle of the control, such as TBSTYLE_FLAT
    BOOL CreateEx(CWnd* pParentWnd, DWORD dwCtrlStyle, DWORD dwStyle = WS_CHILD | WS_VISIBLE | CBRS_TOP,
                  UINT nID = AFX_IDW_TOOLBAR);

    /// Sets buttons, sizes and pictures by the resource of type TOOLBAR (241) and the bitmap of that number. The
    /// resource is a row of 16-bit numbers: 1, width and height of a picture, number of buttons, their commands.
    BOOL LoadToolBar(LPCSTR lpszResourceName);
    BOOL LoadToolBar(UINT nIDResource) { return LoadToolBar(MAKEINTRESOURCE(nIDResource)); }
    /// One picture beside the other; the greys of a button's face, edges and shadow become the system's, anew when they
    /// change: the name must live as long as the bar.
    BOOL LoadBitmap(LPCSTR lpszResourceName);
    BOOL LoadBitmap(UINT nIDResource) { return LoadBitmap(MAKEINTRESOURCE(nIDResource)); }
    /// The same with a bitmap of the caller's, which then belongs to the bar, unless this fails.
    BOOL SetBitmap(HBITMAP hbmImageWell);
    /// \param sizeButton at least the picture's and 7 by 6 pixels
    void SetSizes(SIZE sizeButton, SIZE sizeImage);
    /// \param lpIDArray commands and ID_SEPARATOR, each command with the next picture; null: buttons without number
    BOOL SetButtons(const UINT* lpIDArray, int nIDCount);

    int GetCount() const { return static_cast<int>(SendMessage(TB_BUTTONCOUNT)); }
    int CommandToIndex(UINT nIDFind) const; ///< -1 if no button has that command
    UINT GetItemID(int nIndex) const;       ///< ID_SEPARATOR for a gap, and if there is no such button
    void GetItemRect(int nIndex, LPRECT lpRect) const;
    /// Style and state in one number: TBSTYLE_..., and TBSTATE_... in the high word. Bits of the state are those of
    /// the system, TBSTATE_ENABLED among them.
    UINT GetButtonStyle(int nIndex) const;
    void SetButtonStyle(int nIndex, UINT nStyle);
    void GetButtonInfo(int nIndex, UINT& nID, UINT& nStyle, int& iImage) const;
    /// \param iImage the picture's number, for a gap its width in pixels
    void SetButtonInfo(int nIndex, UINT nID, UINT nStyle, int iImage);

    CSize CalcFixedLayout(BOOL bStretch, BOOL bHorz) override;
    void OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler) override;

protected:
    afx_msg void OnSysColorChange();
    DECLARE_MESSAGE_MAP()

private:
    bool GetButton(int index, TBBUTTON& button) const;
    void SetButton(int index, const TBBUTTON& button);

    HBITMAP m_hbmImageWell = nullptr;
    LPCSTR m_lpszBitmap = nullptr; // the resource, to be loaded anew; null for a caller's bitmap
    CSize m_sizeImage{16, 15};
    CSize m_sizeButton{23, 22};
};
