#include <zogbl/header.h>

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/resource_lookup.h>

#include "common/without_throwing.h"
#include "controls/base/tip.h"
#include "controls/drawing/item_painting.h"

#include <algorithm>
#include <utility>

IMPLEMENT_DYNAMIC(CZoHeaderWnd, CZoControl)

namespace {

using Sort = CZoHeaderButton::Sort;

constexpr int kDividerWidth = 10; // to either side, as the system's; pixels on a screen of 96 dots an inch
constexpr int kLeastPush = 4;     // a divider takes at most this part of its column

bool IsValid(const CZoHeaderButton& button)
{
    return button.m_nWidth >= 0 && button.m_nWidth <= CZoHeaderButton::kMostWidth && button.m_nLeastWidth >= 0 &&
           button.m_nLeastWidth <= CZoHeaderButton::kMostWidth;
}

/// What a column's width becomes when it is to be \p width.
int Allowed(const CZoHeaderButton& button, int width)
{
    if (width == 0 || (button.m_flags & CZoHeaderButton::kFixedWidth) != 0)
        return width;
    return std::clamp<int>(width, button.GetLeastWidth(), CZoHeaderButton::kMostWidth);
}

/// The button as a header holds it. Throws CMemoryException*
CZoHeaderButton Completed(CZoHeaderButton button)
{
    button.m_nWidth = Allowed(button, button.m_nWidth);
    if (button.m_nTextId != 0)
        ZoGblLoadString(button.m_nTextId, button.m_csText);
    return button;
}

} // namespace

CZoHeaderWnd::CZoHeaderWnd() = default;

CZoHeaderWnd::~CZoHeaderWnd()
{
    DestroyWindow(); // while a drag can still be undone
    delete m_pTip;
}

// Columns -------------------------------------------------------------------------------------------------------------

/// Programs may change columns in the middle of a drag. \return FALSE: the header is gone
BOOL CZoHeaderWnd::EndDrag()
{
    const Life life(this);
    UndoDrag();
    return !life.IsOver();
}

void CZoHeaderWnd::RaiseOrder()
{
    OnColumnsChanged();
    RaiseEvent(EVENT_OBJECT_REORDER);
}

int CZoHeaderWnd::InsertColumn(int at, const CZoHeaderButton& button)
{
    if (at < 0 || GetColumnCount() >= kMostColumns || !IsValid(button) || !EndDrag())
        return -1;
    at = (std::min)(at, GetColumnCount());
    if (!WithoutThrowing([&] { m_columns.InsertAt(at, {Completed(button), at}); }))
        return -1;
    for (int i = 0; i < GetColumnCount(); ++i)
        m_columns[i].position += i != at && m_columns[i].position >= at;
    m_nFocused += m_nFocused >= at && GetColumnCount() > 1;
    RaiseOrder();
    return at;
}

BOOL CZoHeaderWnd::RemoveColumn(int column)
{
    if (!IsColumn(column) || !EndDrag() || !IsColumn(column))
        return FALSE;
    const int position = m_columns[column].position;
    m_columns.RemoveAt(column);
    for (int i = 0; i < GetColumnCount(); ++i)
        m_columns[i].position -= m_columns[i].position > position;
    m_nFocused -= m_nFocused > column;
    RaiseOrder();
    return TRUE;
}

const CZoHeaderButton* CZoHeaderWnd::GetColumn(int column) const
{
    return IsColumn(column) ? &m_columns[column].button : nullptr;
}

BOOL CZoHeaderWnd::SetColumn(int column, const CZoHeaderButton& button)
{
    if (!IsColumn(column) || !IsValid(button) || !EndDrag() || !IsColumn(column))
        return FALSE;
    const CString before = m_columns[column].button.m_csText;
    if (!WithoutThrowing([&] { m_columns[column].button = Completed(button); }))
        return FALSE;
    OnColumnsChanged();
    if (before != m_columns[column].button.m_csText)
        RaiseEvent(EVENT_OBJECT_NAMECHANGE, column + 1);
    return TRUE;
}

bool CZoHeaderWnd::StoreWidth(int column, int width)
{
    CZoHeaderButton& button = m_columns[column].button;
    width = Allowed(button, width);
    if (button.m_nWidth == width)
        return false;
    button.m_nWidth = width;
    OnColumnsChanged();
    return true;
}

BOOL CZoHeaderWnd::SetWidth(int column, int width)
{
    if (!IsColumn(column) || width < 0 || width > CZoHeaderButton::kMostWidth || !EndDrag() || !IsColumn(column))
        return FALSE;
    StoreWidth(column, width);
    return TRUE;
}

/// \return the width for the widest text; -1: the header is gone, or the number is another column's now
int CZoHeaderWnd::AskForFit(int column)
{
    LRESULT content = 0;
    const int count = GetColumnCount();
    if (m_hWnd != nullptr && !Tell(ZON_HEADER_FIT, column, &content))
        return -1;
    if (GetColumnCount() != count)
        return -1;
    const int title = m_columns[column].button.GetFitWidth(WindowFontDC(m_hWnd, GetFontHandle()));
    return static_cast<int>(std::clamp<LRESULT>(content, title, CZoHeaderButton::kMostWidth));
}

BOOL CZoHeaderWnd::FitColumn(int column)
{
    if (!IsColumn(column) || !EndDrag() || !IsColumn(column))
        return FALSE;
    const int width = AskForFit(column);
    if (width >= 0)
        StoreWidth(column, width);
    return width >= 0;
}

BOOL CZoHeaderWnd::SetSort(int column, Sort sort)
{
    if (column != -1 && !IsColumn(column))
        return FALSE;
    for (int i = 0; i < GetColumnCount(); ++i) {
        Sort& shown = m_columns[i].button.m_sort;
        const Sort wanted = i == column ? sort : Sort::kNone;
        if (shown == wanted)
            continue;
        shown = wanted;
        if (m_hWnd != nullptr)
            InvalidateRect(GetColumnArea(i), FALSE);
        RaiseEvent(EVENT_OBJECT_DESCRIPTIONCHANGE, i + 1);
    }
    return TRUE;
}

int CZoHeaderWnd::GetSortColumn() const
{
    int column = GetColumnCount() - 1;
    while (column >= 0 && m_columns[column].button.m_sort == Sort::kNone)
        --column;
    return column;
}

void CZoHeaderWnd::OnReloadTexts()
{
    for (int i = 0; i < GetColumnCount(); ++i) {
        CZoHeaderButton& button = m_columns[i].button;
        if (button.m_nTextId != 0)
            WithoutThrowing([&] { ZoGblLoadString(button.m_nTextId, button.m_csText); });
    }
    OnColumnsChanged();
}

void CZoHeaderWnd::OnColumnsChanged()
{
    if (m_pTip != nullptr)
        m_pTip->Hide(*this);
    if (m_hWnd != nullptr)
        Invalidate(FALSE);
}

void CZoHeaderWnd::OnColumnFocused(int) {}

// Order ---------------------------------------------------------------------------------------------------------------

int CZoHeaderWnd::GetPosition(int column) const { return IsColumn(column) ? m_columns[column].position : -1; }

int CZoHeaderWnd::GetColumnAt(int position) const
{
    int column = GetColumnCount() - 1;
    while (column >= 0 && m_columns[column].position != position)
        --column;
    return column;
}

bool CZoHeaderWnd::StorePosition(int column, int position)
{
    const int before = m_columns[column].position;
    if (before == position)
        return false;
    for (int i = 0; i < GetColumnCount(); ++i) {
        int& other = m_columns[i].position;
        if (before < position && other > before && other <= position)
            --other;
        else if (position < before && other >= position && other < before)
            ++other;
    }
    m_columns[column].position = position;
    RaiseOrder();
    return true;
}

BOOL CZoHeaderWnd::SetPosition(int column, int position)
{
    if (!IsColumn(column) || !IsColumn(position) || !EndDrag() || !IsColumn(column) || !IsColumn(position))
        return FALSE;
    StorePosition(column, position);
    return TRUE;
}

BOOL CZoHeaderWnd::SetOrder(const int* columns, int count)
{
    if (!EndDrag() || count != GetColumnCount() || (columns == nullptr && count > 0))
        return FALSE;
    bool isThere[kMostColumns] = {};
    for (int i = 0; i < count; ++i) {
        if (!IsColumn(columns[i]) || isThere[columns[i]])
            return FALSE;
        isThere[columns[i]] = true;
    }
    for (int i = 0; i < count; ++i)
        m_columns[columns[i]].position = i;
    RaiseOrder();
    return TRUE;
}

/// The next column that is shown, from a position on; -1: there is none.
int CZoHeaderWnd::NextShown(int position, int step) const
{
    do {
        position += step;
    } while (IsColumn(position) && m_columns[GetColumnAt(position)].button.m_nWidth == 0);
    return GetColumnAt(position);
}

// Place ---------------------------------------------------------------------------------------------------------------

CRect CZoHeaderWnd::GetColumnArea(int column) const
{
    CRect area;
    if (!IsColumn(column))
        return area;
    int left = -m_nScroll;
    for (int i = 0; i < GetColumnCount(); ++i) {
        if (m_columns[i].position < m_columns[column].position)
            left += m_columns[i].button.m_nWidth;
    }
    const int height = m_hWnd != nullptr ? GetClientArea().Height() : 0;
    area.SetRect(left, 0, left + m_columns[column].button.m_nWidth, height);
    return area;
}

int CZoHeaderWnd::GetTotalWidth() const
{
    int width = 0;
    for (int i = 0; i < GetColumnCount(); ++i)
        width += m_columns[i].button.m_nWidth;
    return width;
}

/// The column whose area has the point; -1: none.
int CZoHeaderWnd::ColumnIn(CPoint point) const
{
    int column = GetColumnCount() - 1;
    while (column >= 0 && !GetColumnArea(column).PtInRect(point))
        --column;
    return column;
}

int CZoHeaderWnd::HitTest(CPoint point, Place& place) const
{
    place = Place::kNowhere;
    if (m_hWnd == nullptr || !GetClientArea().PtInRect(point))
        return -1;
    const auto resizable = [this](int column) { return column >= 0 && !HasFlag(column, CZoHeaderButton::kFixedWidth); };
    const int wide = CZoGlobalGDIData::Scale(kDividerWidth);
    const int column = ColumnIn(point);
    if (column < 0) {
        const int last = NextShown(GetColumnCount(), -1);
        const int behind = resizable(last) ? point.x - GetColumnArea(last).right : -1;
        const bool isDivider = behind >= 0 && behind < wide;
        place = isDivider ? Place::kDivider : Place::kNowhere;
        return isDivider ? last : -1;
    }
    const CRect area = GetColumnArea(column);
    const int divider = (std::min)(wide, area.Width() / kLeastPush);
    const int before = NextShown(m_columns[column].position, -1);
    place = Place::kDivider;
    if (point.x < area.left + divider && resizable(before))
        return before;
    if (point.x < area.right - divider || !resizable(column))
        place = Place::kButton;
    return column;
}

int CZoHeaderWnd::GetIdealHeight() const
{
    const int text = WindowFontDC(m_hWnd, GetFontHandle()).GetLineHeight();
    int icon = 0;
    for (int i = 0; i < GetColumnCount() && icon == 0; ++i)
        icon = m_columns[i].button.m_hIcon != nullptr ? ::GetSystemMetrics(SM_CYSMICON) : 0;
    return (std::max)(text, icon) + 2 * (ZO_EDGE_WIDTH + CZoGlobalGDIData::Scale(1));
}

void CZoHeaderWnd::SetScrollPosition(int pixels)
{
    pixels = std::clamp(pixels, 0, int{kMostColumns} * CZoHeaderButton::kMostWidth);
    if (std::exchange(m_nScroll, pixels) == pixels)
        return;
    if (m_hWnd != nullptr)
        Invalidate(FALSE);
}
