/// \file
/// The header over the columns of a list.
#pragma once

#include <zogbl/control.h>

class ControlTip;

/// A column's button in a header: what it shows, and what the user may do with it. Colours and font are the header's.
class ZOGBL_API CZoHeaderButton {
public:
    enum class Align { kLeft, kCenter, kRight };
    enum class Sort { kNone, kAscending, kDescending };
    enum Flag : UINT {
        kFixedWidth = 1,     ///< the user cannot change the width
        kNoPush = 2,         ///< it is no button, only a title
        kDescendingFirst = 4 ///< the first push sorts from the largest to the smallest
    };
    enum : int { kMostWidth = 0x7FFF };

    CZoHeaderButton() = default;
    /// \param text throws CMemoryException*
    CZoHeaderButton(LPCSTR text, int width, Align align = Align::kLeft, UINT flags = 0);
    /// \param textId a string that the header loads when it takes the button, and again with each language
    CZoHeaderButton(UINT textId, int width, Align align = Align::kLeft, UINT flags = 0);

    int GetLeastWidth() const; ///< to which the user can make it narrower
    /// In pixels, so that text, picture and arrow have room. \param dc has the header's font
    int GetFitWidth(HDC dc) const;
    BOOL IsShortened(HDC dc) const; ///< whether the text has no room. \param dc has the header's font
    /// Where text begins and ends in a column, in pixels from its edges: for what is drawn below.
    static int GetMargin();
    UINT GetTextFormat() const; ///< DT_LEFT, DT_CENTER or DT_RIGHT

    enum State : UINT { kPressed = 1, kFocused = 2, kDisabled = 4 };
    /// \param dc has the header's font \param state State flags. May throw CMemoryException*
    void Draw(CDC* dc, const CRect& area, UINT state) const;

    CString m_csText;
    UINT m_nTextId = 0;    ///< 0: m_csText is the caller's, who sets it anew in a new language
    int m_nWidth = 0;      ///< in pixels, to kMostWidth; 0 hides the column
    int m_nLeastWidth = 0; ///< in pixels; 0: 16, or as many as are as long on this screen
    Align m_align = Align::kLeft;
    Sort m_sort = Sort::kNone; ///< the arrow
    UINT m_flags = 0;          ///< Flag
    HICON m_hIcon = nullptr;   ///< beside the text, in the size of small icons; stays the caller's; null: none

private:
    int GetWidthWith(HDC dc, bool hasArrow) const;
};

/// What the header's notifications tell.
struct ZoHeaderNotice {
    NMHDR header;
    int column;
    int width;    ///< the column's, in pixels
    int position; ///< the column's in the order on the screen, from 0
};

// Notifications by WM_NOTIFY, with a ZoHeaderNotice. Only the user's acts send them, each one, but for ...SIZING.

constexpr UINT ZON_HEADER_PUSHED = ZON_FIRST - 60; ///< the button was pushed
constexpr UINT ZON_HEADER_SIZED = ZON_FIRST - 61;  ///< the width was changed
constexpr UINT ZON_HEADER_MOVED = ZON_FIRST - 62;  ///< the column has another position
/// The width changes in a drag, for those who follow at once. If the drag is given up, the last one has the old width.
constexpr UINT ZON_HEADER_SIZING = ZON_FIRST - 63;
/// How wide is the widest text below the title? Answer its width in pixels, margins included; 0: there is none.
constexpr UINT ZON_HEADER_FIT = ZON_FIRST - 64;

/// Titles of columns. One that has no room is shortened, and a tip shows the whole of it. The user drags their
/// dividers, gives a column the width of its widest text by a double click on its divider, pushes them to sort, and
/// moves them if the header has the style kMovable. It shows an arrow where it is told to (SetSort); sorting is the
/// parent's. CZoColumnList is a list with such a header.
///
///     m_header.Create(WS_VISIBLE | WS_TABSTOP | CZoHeaderWnd::kMovable, area, this, IDC_HEADER);
///     m_header.InsertColumn(0, {ZO_IDS_NAME, CZoGlobalGDIData::Scale(160)});
///     m_header.InsertColumn(1, {ZO_IDS_SIZE, CZoGlobalGDIData::Scale(80), CZoHeaderButton::Align::kRight});
///     ... ON_NOTIFY(ZON_HEADER_PUSHED, IDC_HEADER, OnPushed)
///
/// A column keeps its number wherever it is moved; a position is its place on the screen, from 0. Columns can be made
/// before the window. The programmer's changes notify nobody and give up a drag of the user.
///
/// With the style WS_TABSTOP it takes the focus and obeys keys. Screen readers hear of a list of column headers with
/// their order of sorting; a part's number is the column's plus 1.
class ZOGBL_API CZoHeaderWnd : public CZoControl {
    DECLARE_DYNAMIC(CZoHeaderWnd)
public:
    enum Style : DWORD { kMovable = 0x40 }; ///< the number is that of the system's header
    enum : int { kMostColumns = 256 };

    enum Command {
        kPrevious = 1, ///< the column before has the focus
        kNext,
        kFirst,
        kLast,
        kPush,
        kNarrower, ///< by kWidthStep, down to the least width
        kWider,
        kFit,
        kMoveBack, ///< to the place of the column before, if columns are movable
        kMoveOn
    };
    static constexpr ZoKey kKeys[] = {
        {VK_LEFT, ZoKey::kNone, kPrevious},
        {VK_RIGHT, ZoKey::kNone, kNext},
        {VK_HOME, ZoKey::kNone, kFirst},
        {VK_END, ZoKey::kNone, kLast},
        {VK_SPACE, ZoKey::kNone, kPush},
        {VK_RETURN, ZoKey::kNone, kPush},
        {VK_LEFT, ZoKey::kControl, kNarrower},
        {VK_RIGHT, ZoKey::kControl, kWider},
        {VK_ADD, ZoKey::kControl, kFit},
        {VK_LEFT, ZoKey::kControl | ZoKey::kShift, kMoveBack},
        {VK_RIGHT, ZoKey::kControl | ZoKey::kShift, kMoveOn},
    };
    enum : int { kWidthStep = 8 }; ///< pixels on a screen of 96 dots an inch

    CZoHeaderWnd();
    ~CZoHeaderWnd() override;

    // Columns. What says BOOL answers FALSE, changing nothing, for a column that is not there.

    int GetColumnCount() const { return static_cast<int>(m_columns.GetSize()); }
    /// \param at its number, and its position; those from there on move up. Too large: behind the last
    /// \return the number; -1, changing nothing: there are kMostColumns, a width is out of range, there is no memory
    int InsertColumn(int at, const CZoHeaderButton& button);
    BOOL RemoveColumn(int column);                      ///< The numbers behind it move down.
    const CZoHeaderButton* GetColumn(int column) const; ///< \return null if there is none; valid until columns change
    BOOL SetColumn(int column, const CZoHeaderButton& button); ///< \return FALSE also for a width out of range
    /// \param width 0 to kMostWidth. 0 hides the column; else it becomes at least its least width
    BOOL SetWidth(int column, int width);
    /// As wide as its widest text, which the parent is asked for (ZON_HEADER_FIT).
    /// \return FALSE also if that destroyed the header, or added or removed columns: nothing is fitted then
    BOOL FitColumn(int column);
    /// Shows the arrow in that column alone. \param column -1: in none
    BOOL SetSort(int column, CZoHeaderButton::Sort sort);
    int GetSortColumn() const; ///< \return -1: none

    // Order

    int GetPosition(int column) const;          ///< \return -1 if there is none
    int GetColumnAt(int position) const;        ///< \return -1 if there is none
    BOOL SetPosition(int column, int position); ///< \return FALSE also if there is no such position
    /// \param columns \p count numbers, as they stand from left to right \return FALSE: not each column once
    BOOL SetOrder(const int* columns, int count);

    // Record of widths, order and sorting, to be kept in the registry

    CString GetRecord() const; ///< Widths are as on a screen of 96 dots an inch. Throws CMemoryException*
    /// \return FALSE, changing nothing: damaged, of another version, or of another number of columns
    BOOL SetRecord(LPCSTR record);

    // Place

    CRect GetColumnArea(int column) const; ///< in client coordinates; empty for a hidden one
    int GetTotalWidth() const;
    enum class Place { kNowhere, kButton, kDivider };
    /// \param place gets what is there. The divider is the one that changes the width of the column returned; a fixed
    /// column has none \return -1 if no column is there
    int HitTest(CPoint point, Place& place) const;
    int GetIdealHeight() const; ///< for the font, in pixels
    /// The first pixel of the columns that is shown, from 0. Who scrolls a list sets it.
    void SetScrollPosition(int pixels);
    int GetScrollPosition() const { return m_nScroll; }

    int GetPartCount() const override;
    BOOL DescribePart(int part, ZoPart& description) const override;
    int FindPart(CPoint point) const override;
    int GetFocusedPart() const override;
    BOOL DoPartAction(int part) override; ///< pushes it

protected:
    /// Something of the columns has changed, by the programmer or the user. The base draws all anew.
    virtual void OnColumnsChanged();
    /// The keyboard has gone to this column. The base does nothing.
    virtual void OnColumnFocused(int column);

    void OnDraw(CDC* dc, const CRect& dirty) override;
    void OnReloadTexts() override;
    void OnDragMove(CPoint point) override;
    void OnDragEnd(CPoint point) override;
    void OnDragUndo() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Column {
        CZoHeaderButton button;
        int position;
    };
    enum class Drag { kNone, kPush, kMove, kWidth };

    bool IsColumn(int column) const { return column >= 0 && column < GetColumnCount(); }
    bool HasFlag(int column, UINT flag) const { return (m_columns[column].button.m_flags & flag) != 0; }
    int NextShown(int position, int step) const;
    int ColumnIn(CPoint point) const;
    int FocusedColumn() const;
    void RaiseOrder();
    BOOL EndDrag();

    bool StoreWidth(int column, int width);
    bool StorePosition(int column, int position);
    BOOL Tell(UINT code, int column, LRESULT* answer = nullptr);
    int AskForFit(int column);
    void ChangeWidth(int column, int width);
    void ChangePosition(int column, int position);
    void FitByUser(int column);
    void Obey(int command);
    void Focus(int column);
    void OnButtonDown(CPoint point, BOOL isDouble);
    BOOL OnSetCursor(LPARAM hit) const;
    void FollowMouse(UINT message, WPARAM wParam, LPARAM lParam);
    int WidthAt(CPoint point) const;
    int DropPositionAt(CPoint point) const;
    int DropMark() const;
    BOOL IsOnPushed(CPoint point) const;

    CArray<Column> m_columns;
    int m_nScroll = 0;
    int m_nFocused = 0; // has the keyboard when the header has it; may be no column
    Drag m_drag = Drag::kNone;
    int m_nDragged = -1;      // the column
    CPoint m_grip;            // where the drag began
    int m_nWidthBefore = 0;   // of the column dragged
    BOOL m_bPressed = FALSE;  // the mouse is over the button pushed
    int m_nDropPosition = -1; // where the column would go
    ControlTip* m_pTip = nullptr;
};
