/// \file
/// Texts with edges, alone or side by side as a status bar.
#pragma once

#include <zogbl/control.h>
#include <zogbl/effects.h>

class ControlTip;

/// One pane of a text panel: its width and its looks.
struct ZoPane {
    enum class Width {
        kShared, ///< a share of what the others leave
        kFixed,
        kFitted ///< as its picture and its text want it; without both, as its least width
    };
    static constexpr int kMostSize = 10000;

    Width width = Width::kShared;
    /// Up to kMostSize. kShared: its share, at least 1. Else pixels on a screen of 96 dots an inch: kFixed: its width,
    /// edge included; kFitted: its least width. A pane of no width is not shown.
    int size = 1;
    UINT alignment = DT_LEFT; ///< or DT_CENTER, DT_RIGHT: of the text beside the picture
    ZoShorten shorten = ZoShorten::kEnd;
    ZoEdge edge = ZoEdge::kThinSunken;
    BOOL isButton = FALSE; ///< can be pressed
};

/// ZON_PANE_PRESSED: a button was pressed by the mouse, a key or a screen reader.
constexpr UINT ZON_PANE_PRESSED = ZON_FIRST - 120;
struct ZoNotifyPane {
    NMHDR header;
    int pane;
};

/// One or more panes, each with a text, a picture and an edge. A text without room is shortened; then a tip shows the
/// whole. The text that is shown already is not drawn again.
///
///     const ZoPane kPanes[] = {{}, {ZoPane::Width::kFitted, 60}};
///     m_status.Create(WS_VISIBLE | CZoTextPanel::kSizeGrip, CRect(), this, AFX_IDW_STATUS_BAR);
///     m_status.SetPanes(kPanes, 2);
///     m_status.SetPaneText(2, "OVR");
///     m_status.SetWindowText("Ready"); // pane 1
///
/// The parent gives it its place (GetBestHeight), and passes F6 on by TakeKeyboard. At the beginning there is
/// one pane, with the values that a ZoPane begins with. To screen readers a single pane is a text, several are a status
/// bar. Line ends and tabs in a text are shown as spaces. Panes are numbered from 1, as the parts.
class ZOGBL_API CZoTextPanel : public CZoControl {
    DECLARE_DYNAMIC(CZoTextPanel)
public:
    static constexpr int kMostPanes = 64;
    enum Style : DWORD {
        kSizeGrip = 0x20 ///< in the last corner, while the parent's size can be changed by the mouse
    };
    enum Command { kPrevious = 1, kNext, kFirst, kLast, kPress, kLeave };
    static constexpr ZoKey kKeys[] = {
        {VK_LEFT, ZoKey::kNone, kPrevious}, {VK_RIGHT, ZoKey::kNone, kNext},   {VK_UP, ZoKey::kNone, kPrevious},
        {VK_DOWN, ZoKey::kNone, kNext},     {VK_HOME, ZoKey::kNone, kFirst},   {VK_END, ZoKey::kNone, kLast},
        {VK_SPACE, ZoKey::kNone, kPress},   {VK_RETURN, ZoKey::kNone, kPress}, // in a button
        {VK_F6, ZoKey::kNone, kLeave},      {VK_ESCAPE, ZoKey::kNone, kLeave}, // to where the focus came from
    };

    CZoTextPanel() = default;
    ~CZoTextPanel() override;

    /// Gives it other panes. A pane keeps its text and its picture if there was one of that number.
    /// \param count 1 to kMostPanes
    /// \return FALSE, changing nothing: a value is out of bounds, or memory has run out
    BOOL SetPanes(const ZoPane* panes, int count);
    int GetPaneCount() const { return m_nPanes; }
    BOOL GetPane(int pane, ZoPane& format) const; ///< \return FALSE, changing nothing, if there is no such pane

    /// The text of pane 1 is the window's text.
    /// \return FALSE, changing nothing: \p text is null, there is no such pane or no window, or memory has run out
    BOOL SetPaneText(int pane, LPCSTR text);
    CString GetPaneText(int pane) const; ///< empty if there is no such pane. Throws CMemoryException*
    /// Shown in its own size before the text; alone if there is no room even for "...".
    /// \param icon the caller's; must live as long as it is shown. Null: none
    /// \return FALSE, changing nothing: there is no such pane, or it is no icon
    BOOL SetPaneIcon(int pane, HICON icon);

    CRect GetPaneArea(int pane) const; ///< in client coordinates; empty if it is not shown
    int GetPaneAt(CPoint point) const; ///< in client coordinates \return 0 if none is there
    BOOL IsPaneShortened(int pane) const;
    int GetBestHeight() const; ///< for one line in its font, and the highest picture, in pixels

    /// Takes the focus as after a key, and shows it.
    void TakeKeyboard();

    int GetPartCount() const override;
    BOOL DescribePart(int part, ZoPart& description) const override;
    int FindPart(CPoint point) const override;
    int GetFocusedPart() const override;
    BOOL DoPartAction(int part) override;

protected:
    void OnDraw(CDC* dc, const CRect& dirty) override;
    void OnLayout() override;
    void OnDragMove(CPoint point) override;
    void OnDragEnd(CPoint point) override;
    void OnDragUndo() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Pane {
        ZoPane format;
        CString text; // not of the first
        HICON icon = nullptr;
        CSize iconSize = CSize(0, 0);
        int textWidth = 0;
        CRect area;
    };

    BOOL IsPane(int pane) const { return pane >= 1 && pane <= m_nPanes; }
    Pane& At(int pane) const { return m_pPanes[pane - 1]; }
    int PartOf(int pane) const { return m_nPanes > 1 ? pane : 0; } // a single one is the control itself
    CString GetShownText(int pane) const;
    BOOL HasText(int pane, LPCSTR text) const;
    void Measure(int pane);
    int GetWantedWidth(int pane) const;
    void LayOut();
    void OnTextChanged(int pane);
    CRect GetInside(int pane) const;
    CRect GetContents(int pane) const;
    CRect GetTextArea(int pane) const;
    CRect GetGrip() const;
    void DrawPane(CDC* dc, int pane) const;
    void DrawContents(CDC* dc, int pane) const;
    void DrawIcon(CDC* dc, CRect area, const Pane& item) const;

    int FindShown(int pane, int step) const;
    BOOL OnKey(UINT key, BOOL isRepeated);
    void FocusPane(int pane);
    void SetDown(BOOL isDown);
    BOOL Press(int pane);

    Pane m_first;
    Pane* m_pPanes = &m_first;
    int m_nPanes = 1;
    int m_nFocused = 1;
    int m_nPressed = 0;       // by the mouse, while it is held down
    BOOL m_bDown = FALSE;     // and over that pane
    HWND m_hBefore = nullptr; // had the focus before
    ControlTip* m_pTip = nullptr;
};
