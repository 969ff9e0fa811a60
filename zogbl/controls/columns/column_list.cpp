#include <zogbl/column_list.h>

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "common/without_throwing.h"
#include "controls/base/tip.h"
#include "controls/drawing/item_painting.h"
#include "controls/drawing/unmirrored.h"

#include <algorithm>

#include <oleacc.h>

IMPLEMENT_DYNAMIC(CZoColumnList, CZoControl)

CZoColumnList::CZoColumnList() : m_header(*this) {}

CZoColumnList::~CZoColumnList()
{
    DestroyWindow(); // before the header's object
    delete m_pTip;
}

int CZoColumnList::CompareRows(const void* first, const void* second, int column) const
{
    return ::lstrcmpiA(GetCellText(first, column), GetCellText(second, column));
}

CSize CZoColumnList::GetPictureSize(int) const { return CSize(); }
void CZoColumnList::DrawPicture(CDC*, CPoint, const void*, int) const {}

// Rows ----------------------------------------------------------------------------------------------------------------

const void* CZoColumnList::GetRow(int row) const { return IsRow(row) ? m_rows[row] : nullptr; }

int CZoColumnList::FindRow(const void* data) const
{
    int row = GetRowCount() - 1;
    while (row >= 0 && m_rows[row] != data)
        --row;
    return row;
}

void CZoColumnList::Sort(CPtrArray& rows, int column, CZoHeaderButton::Sort sort) const
{
    if (sort == CZoHeaderButton::Sort::kNone)
        return;
    const bool isDown = sort == CZoHeaderButton::Sort::kDescending;
    std::stable_sort(rows.GetData(), rows.GetData() + rows.GetSize(), [&](const void* first, const void* second) {
        return isDown ? CompareRows(second, first, column) < 0 : CompareRows(first, second, column) < 0;
    });
}

BOOL CZoColumnList::TakeRows(const CPtrArray& rows, int column, CZoHeaderButton::Sort sort)
{
    const void* selected = GetRow(m_nSelected);
    const BOOL taken = WithoutThrowing([&] {
        CPtrArray sorted; // for comparing may throw in the middle
        sorted.Copy(rows);
        Sort(sorted, column, sort);
        m_rows.Copy(sorted);
    });
    if (!taken)
        return FALSE;
    m_nSelected = selected != nullptr ? FindRow(selected) : -1;
    OnRowsChanged();
    return TRUE;
}

void CZoColumnList::OnRowsChanged()
{
    if (m_hWnd != nullptr)
        Relayout();
    RaiseEvent(EVENT_OBJECT_REORDER);
}

BOOL CZoColumnList::SetRows(const CPtrArray& rows)
{
    const int column = m_header.GetSortColumn();
    return TakeRows(rows, column, column >= 0 ? m_header.GetColumn(column)->m_sort : CZoHeaderButton::Sort::kNone);
}

BOOL CZoColumnList::SortBy(int column, CZoHeaderButton::Sort sort)
{
    if (m_header.GetColumn(column) == nullptr || !TakeRows(m_rows, column, sort))
        return FALSE;
    m_header.SetSort(column, sort);
    EnsureVisible(m_nSelected);
    return TRUE;
}

int CZoColumnList::AddRow(const void* data)
{
    const int column = m_header.GetSortColumn();
    const auto place = [&] {
        if (column < 0)
            return GetRowCount();
        const bool isDown = m_header.GetColumn(column)->m_sort == CZoHeaderButton::Sort::kDescending;
        void* const* begin = m_rows.GetData();
        void* const* found =
            std::upper_bound(begin, begin + m_rows.GetSize(), data, [&](const void* added, const void* row) {
                return isDown ? CompareRows(row, added, column) < 0 : CompareRows(added, row, column) < 0;
            });
        return static_cast<int>(found - begin);
    };
    int row = -1;
    const BOOL added = WithoutThrowing([&] {
        row = place();
        m_rows.InsertAt(row, const_cast<void*>(data)); // it is only handed back
    });
    if (!added)
        return -1;
    m_nSelected += m_nSelected >= row;
    OnRowsChanged();
    return row;
}

BOOL CZoColumnList::RemoveRow(int row)
{
    if (!IsRow(row))
        return FALSE;
    m_rows.RemoveAt(row);
    m_nSelected = row == m_nSelected ? -1 : m_nSelected - (m_nSelected > row);
    OnRowsChanged();
    return TRUE;
}

void CZoColumnList::UpdateRow(int row)
{
    if (m_hWnd != nullptr && IsRow(row))
        InvalidateRect(GetRowArea(row), FALSE);
}

BOOL CZoColumnList::SetCurSel(int row)
{
    if (row != -1 && !IsRow(row))
        return FALSE;
    if (row == m_nSelected)
        return TRUE;
    UpdateRow(m_nSelected);
    UpdateRow(row);
    m_nSelected = row;
    EnsureVisible(row);
    if (HasFocus() && row >= 0)
        RaiseEvent(EVENT_OBJECT_FOCUS, row + 1);
    RaiseEvent(EVENT_OBJECT_SELECTION, row + 1);
    return TRUE;
}

void CZoColumnList::OnReloadTexts()
{
    m_header.OnReloadTexts();
    SetRows(m_rows);
}

// Looks ---------------------------------------------------------------------------------------------------------------

BOOL CZoColumnList::PreCreateWindow(CREATESTRUCT& cs)
{
    cs.style |= WS_CLIPCHILDREN;
    return CZoControl::PreCreateWindow(cs);
}

void CZoColumnList::DrawCell(CDC* dc, int row, int column, CRect cell, COLORREF color) const
{
    const int margin = CZoHeaderButton::GetMargin();
    cell.DeflateRect(margin, 0);
    if (cell.Width() <= 0)
        return;
    if (const CSize picture = GetPictureSize(column); picture.cx > 0) {
        const UnmirroredPictures unmirrored(dc);
        const int saved = dc->SaveDC();
        dc->IntersectClipRect(cell);
        DrawPicture(dc, CPoint(cell.left, (cell.top + cell.bottom - picture.cy) / 2), m_rows[row], column);
        dc->RestoreDC(saved);
    }
    cell.left += WidthBeside(column) - 2 * margin;
    const UINT format = m_header.GetColumn(column)->GetTextFormat() | DT_VCENTER;
    dc->SetTextColor(color);
    ZoDrawShortenedText(*dc, cell, GetCellText(m_rows[row], column), format, ZoShorten::kEnd);
}

void CZoColumnList::DrawRow(CDC* dc, int row, const CRect& area, const CRect& dirty) const
{
    const bool isSelected = row == m_nSelected;
    DRAWITEMSTRUCT state = {};
    state.hwndItem = m_hWnd;
    state.itemState = isSelected ? ODS_SELECTED : 0U;
    const ItemColors colors = ColorsOf(state);
    dc->FillSolidRect(area, colors.background);
    for (int i = 0; i < m_header.GetColumnCount(); ++i) {
        CRect cell = m_header.GetColumnArea(i);
        cell.top = area.top;
        cell.bottom = area.bottom;
        CRect common;
        if (common.IntersectRect(cell, dirty))
            DrawCell(dc, row, i, cell, colors.text);
    }
    if (isSelected && IsFocusShown()) {
        const SelectedColors selected(*dc, colors);
        ZoDrawFocus(*dc, area);
    }
}

void CZoColumnList::OnDraw(CDC* dc, const CRect& dirty)
{
    CRect rest = GetRowsArea();
    const int first =
        (std::max)(m_nTop, m_nTop + (static_cast<int>(dirty.top) - static_cast<int>(rest.top)) / m_nRowHeight);
    for (int row = first; row < GetRowCount(); ++row) {
        CRect area = GetRowArea(row);
        if (area.top >= dirty.bottom)
            break;
        DrawRow(dc, row, area, dirty);
    }
    rest.top += (GetRowCount() - m_nTop) * m_nRowHeight;
    if (rest.top < rest.bottom)
        dc->FillSolidRect(rest, ::GetSysColor(COLOR_WINDOW));
}

/// Of a column's picture and margins.
int CZoColumnList::WidthBeside(int column) const
{
    const int picture = GetPictureSize(column).cx;
    return picture + (picture > 0 ? 3 : 2) * CZoHeaderButton::GetMargin();
}

/// Of its widest text, with what is beside it.
int CZoColumnList::WidthOf(int column) const
{
    const WindowFontDC dc(m_hWnd, GetFontHandle());
    const int beside = WidthBeside(column);
    int width = 0;
    for (int row = 0; row < GetRowCount(); ++row) {
        const CString text = GetCellText(m_rows[row], column);
        width = (std::max<int>)(width, dc.GetTextExtent(text).cx + beside);
    }
    return width;
}

// Screen readers ------------------------------------------------------------------------------------------------------

int CZoColumnList::GetPartCount() const { return GetRowCount(); }
int CZoColumnList::GetFocusedPart() const { return m_nSelected + 1; }

int CZoColumnList::FindPart(CPoint point) const
{
    const CRect rows = GetRowsArea();
    const int row = rows.PtInRect(point) ? m_nTop + (point.y - rows.top) / m_nRowHeight : -1;
    return IsRow(row) ? row + 1 : 0;
}

/// All columns that are shown, in their order, with their names.
CString CZoColumnList::RowText(int row) const
{
    CString format, between, all;
    ZoGblLoadString(ZO_IDS_LIST_CELL, format);
    ZoGblLoadString(ZO_IDS_LIST_BETWEEN, between);
    for (int position = 0; position < m_header.GetColumnCount(); ++position) {
        const int column = m_header.GetColumnAt(position);
        const CZoHeaderButton& title = *m_header.GetColumn(column);
        CString cell = GetCellText(m_rows[row], column);
        if (title.m_nWidth == 0 || cell.IsEmpty())
            continue;
        if (!title.m_csText.IsEmpty() && !format.IsEmpty())
            cell.Format(format, static_cast<LPCSTR>(title.m_csText), static_cast<LPCSTR>(cell));
        if (all.IsEmpty() || between.IsEmpty())
            all += cell;
        else
            all.Format(between, static_cast<LPCSTR>(all), static_cast<LPCSTR>(cell));
    }
    return all;
}

BOOL CZoColumnList::DescribePart(int part, ZoPart& description) const
{
    if (!CZoControl::DescribePart(0, description) || part < 0 || part > GetRowCount())
        return FALSE;
    if (part == 0) {
        description.role = ROLE_SYSTEM_LIST;
        return TRUE;
    }
    const int row = part - 1;
    description.name = RowText(row);
    description.role = ROLE_SYSTEM_LISTITEM;
    ZoGblLoadString(ZO_IDS_LIST_SELECT, description.action);
    description.area.IntersectRect(GetRowArea(row), GetRowsArea());
    description.state |= STATE_SYSTEM_SELECTABLE;
    if (row == m_nSelected)
        description.state |= STATE_SYSTEM_SELECTED;
    else
        description.state &= ~STATE_SYSTEM_FOCUSED;
    if (description.area.IsRectEmpty())
        description.state |= STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN;
    return TRUE;
}

BOOL CZoColumnList::DoPartAction(int part)
{
    if (!IsRow(part - 1))
        return FALSE;
    Choose(part - 1);
    return TRUE;
}
