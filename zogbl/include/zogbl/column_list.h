/// \file
/// A list with columns.
#pragma once

#include <zogbl/header.h>
#include <zogbl/type_ahead.h>

#include <afxcoll.h>

/// Rows of several columns under a header that scrolls with them. The user sorts them by a push on a column, changes
/// widths and, with the style CZoHeaderWnd::kMovable, the order of columns. It tells its parent what a list box tells:
/// LBN_SELCHANGE, LBN_DBLCLK, LBN_SETFOCUS and LBN_KILLFOCUS by WM_COMMAND; and passes on the header's notifications,
/// but for ZON_HEADER_FIT, which it answers. A text that has no room is shortened, and a tip shows the whole of it.
///
/// A row is an object of the program's. A derived class says what stands in its columns:
///
///     class FileList : public CZoColumnList {
///         CString GetCellText(const void* row, int column) const override
///         {
///             const auto* file = static_cast<const File*>(row);
///             return column == 0 ? file->name : SizeText(file->size);
///         }
///     };
///     m_list.Create(WS_VISIBLE | WS_TABSTOP | WS_BORDER, area, this, IDC_FILES);
///     m_list.GetHeader().InsertColumn(0, {ZO_IDS_NAME, CZoGlobalGDIData::Scale(160)});
///     m_list.SetRows(files);
///     m_list.SortBy(0, CZoHeaderButton::Sort::kAscending);
///
/// Typing selects the next row that begins with the typed text in the sorted column or, if none does, in the first one;
/// if there is none either, the last character begins a new text. F6 takes the keyboard to the header and back. Screen
/// readers get each row with all its columns and their names, as they stand: "Name: report.txt; Size: 12 KB". A part's
/// number is the row's plus 1.
///
/// When the language changes it asks for all texts again and sorts anew.
class ZOGBL_API CZoColumnList : public CZoControl {
    DECLARE_DYNAMIC(CZoColumnList)
public:
    enum Style : DWORD { kMovable = CZoHeaderWnd::kMovable }; ///< of its header

    enum Command { kUp = 1, kDown, kPageUp, kPageDown, kFirst, kLast, kLeft, kRight, kToHeader, kFitAll };
    static constexpr ZoKey kKeys[] = {
        {VK_UP, ZoKey::kNone, kUp},         {VK_DOWN, ZoKey::kNone, kDown},   {VK_PRIOR, ZoKey::kNone, kPageUp},
        {VK_NEXT, ZoKey::kNone, kPageDown}, {VK_HOME, ZoKey::kNone, kFirst},  {VK_END, ZoKey::kNone, kLast},
        {VK_LEFT, ZoKey::kNone, kLeft},                                       ///< scrolls
        {VK_RIGHT, ZoKey::kNone, kRight},   {VK_F6, ZoKey::kNone, kToHeader}, ///< from there F6 and Esc lead back
        {VK_ADD, ZoKey::kControl, kFitAll},
    };

    CZoColumnList();
    ~CZoColumnList() override;

    /// The header, whose window the list makes and places. Columns can be made before the list's window. What its
    /// record says of sorting holds from the next SetRows on.
    CZoHeaderWnd& GetHeader() { return m_header; }
    const CZoHeaderWnd& GetHeader() const { return m_header; }

    // Rows. They are in the order of sorting as soon as there is one. Nothing here notifies the parent.

    int GetRowCount() const { return static_cast<int>(m_rows.GetSize()); }
    const void* GetRow(int row) const;   ///< null if there is none
    int FindRow(const void* data) const; ///< \return -1 if it is not there
    /// Takes these rows in place of all. A row that was selected stays so.
    /// \return FALSE, changing nothing: there is no memory
    BOOL SetRows(const CPtrArray& rows);
    int AddRow(const void* data); ///< \return its number; -1, changing nothing: there is no memory
    BOOL RemoveRow(int row);      ///< \return FALSE if there is none
    void UpdateRow(int row);      ///< draws it anew; the order stays

    int GetCurSel() const { return m_nSelected; } ///< -1: none
    BOOL SetCurSel(int row);                      ///< -1: none. \return FALSE, changing nothing, if there is none
    void EnsureVisible(int row);
    int GetTopRow() const { return m_nTop; }

    /// Sorts, and shows the arrow. Rows that are equal keep their order.
    /// \param sort kNone: the rows stay as they are, and new ones go to the end
    /// \return FALSE, changing nothing: there is no such column or no memory
    BOOL SortBy(int column, CZoHeaderButton::Sort sort);

    CRect GetRowArea(int row) const; ///< in client coordinates, also where it is not to be seen; empty: there is none
    int GetRowHeight() const { return m_nRowHeight; } ///< in pixels

    int GetPartCount() const override;
    BOOL DescribePart(int part, ZoPart& description) const override;
    int FindPart(CPoint point) const override;
    int GetFocusedPart() const override;
    BOOL DoPartAction(int part) override; ///< selects it, as the user

protected:
    /// May throw CMemoryException*, as all of these.
    virtual CString GetCellText(const void* row, int column) const = 0;
    /// Which comes first. The base compares the texts in the user's language, case ignored.
    /// \return less than 0, 0 or more
    virtual int CompareRows(const void* first, const void* second, int column) const;
    virtual CSize GetPictureSize(int column) const; ///< of the pictures before the column's texts; 0 by 0: none
    virtual void DrawPicture(CDC* dc, CPoint at, const void* row, int column) const;

    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    void OnDraw(CDC* dc, const CRect& dirty) override;
    void OnLayout() override;
    void OnReloadTexts() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    class ZOGBL_API Header : public CZoHeaderWnd {
    public:
        explicit Header(CZoColumnList& list) : m_list(list) {}
        using CZoHeaderWnd::OnReloadTexts;

    protected:
        void OnColumnsChanged() override;
        void OnColumnFocused(int column) override;
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    private:
        CZoColumnList& m_list;
    };

    bool IsRow(int row) const { return row >= 0 && row < GetRowCount(); }
    CRect GetRowsArea() const;
    int RowsIn(int height) const;
    int PageRows() const;
    bool IsSorted() const;
    void Sort(CPtrArray& rows, int column, CZoHeaderButton::Sort sort) const;
    BOOL TakeRows(const CPtrArray& rows, int column, CZoHeaderButton::Sort sort);
    void OnRowsChanged();
    void PlaceHeader();
    void SetBars();
    void SetTop(int row);
    void SetLeft(int pixels);
    void OnScroll(int bar, int code);
    void OnWheel(int delta);
    void DrawRow(CDC* dc, int row, const CRect& area, const CRect& dirty) const;
    void DrawCell(CDC* dc, int row, int column, CRect cell, COLORREF color) const;
    int WidthBeside(int column) const;
    int WidthOf(int column) const;
    CString RowText(int row) const;
    int FindTyped(int column, int from, LPCSTR text) const;
    void OnTyped(UINT character);
    void Choose(int row);
    void Obey(int command);
    void OnButtonDown(CPoint point, BOOL isDouble);
    void HideTip();
    void FollowMouse(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnHeader(const ZoHeaderNotice& notice);

    Header m_header;
    CPtrArray m_rows;
    int m_nSelected = -1;
    int m_nTop = 0;  // the first row shown
    int m_nLeft = 0; // the first pixel shown
    int m_nRowHeight = 1;
    int m_nWheel = 0; // what the wheel has turned beyond a whole row
    CZoTypeAhead m_typed;
    ControlTip* m_pTip = nullptr;
};
