// Where a list's rows and its header stand.
#include <zogbl/column_list.h>

#include <zogbl/gdi_data.h>

#include "common/without_throwing.h"
#include "controls/drawing/item_painting.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int kBetweenRows = 4; // pixels above and below a picture or a text, together
constexpr int kScrollStep = 16; // to the side; pixels on a screen of 96 dots an inch
constexpr UINT kHeaderId = 1;

} // namespace

// Place ---------------------------------------------------------------------------------------------------------------

/// The area below the header.
CRect CZoColumnList::GetRowsArea() const
{
    CRect area = GetClientArea();
    if (m_header.m_hWnd != nullptr) {
        CRect header;
        m_header.GetClientRect(&header);
        area.top = (std::min)(header.bottom, area.bottom);
    }
    return area;
}

CRect CZoColumnList::GetRowArea(int row) const
{
    CRect area;
    if (IsRow(row) && m_hWnd != nullptr) {
        area = GetRowsArea();
        area.top += (row - m_nTop) * m_nRowHeight;
        area.bottom = area.top + m_nRowHeight;
    }
    return area;
}

int CZoColumnList::RowsIn(int height) const { return (std::max)(height / m_nRowHeight, 1); }
int CZoColumnList::PageRows() const { return RowsIn(GetRowsArea().Height()); }

void CZoColumnList::PlaceHeader()
{
    const CRect client = GetClientArea();
    if (m_header.m_hWnd == nullptr) {
        ModifyStyle(0, WS_CLIPCHILDREN); // of a window from a template
        const DWORD style = WS_VISIBLE | (GetStyle() & kMovable);
        if (!WithoutThrowing([&] { return m_header.Create(style, CRect(), this, kHeaderId); }))
            return; // the next layout tries again
    }
    if (m_header.SendMessage(WM_GETFONT) != SendMessage(WM_GETFONT))
        m_header.SendMessage(WM_SETFONT, static_cast<WPARAM>(SendMessage(WM_GETFONT)), TRUE);
    m_header.MoveWindow(0, 0, client.Width(), (std::min)(m_header.GetIdealHeight(), client.Height()));
    if (m_header.IsWindowEnabled() != IsWindowEnabled())
        m_header.EnableWindow(IsWindowEnabled());
}

void CZoColumnList::OnLayout()
{
    HideTip(); // its place may be another
    int height = WindowFontDC(m_hWnd, GetFontHandle()).GetLineHeight();
    for (int i = 0; i < m_header.GetColumnCount(); ++i)
        height = (std::max<int>)(height, GetPictureSize(i).cy);
    m_nRowHeight = height + kBetweenRows;
    PlaceHeader();
    SetBars(); // if one comes or goes the size changes, and all this is done in between
    SetTop(m_nTop);
    SetLeft(m_nLeft);
}

/// A bar takes room that the other may need. So what both of them do follows from the size without them, not from
/// which of them is there now.
void CZoColumnList::SetBars()
{
    const int barWidth = ::GetSystemMetrics(SM_CXVSCROLL);
    const int barHeight = ::GetSystemMetrics(SM_CYHSCROLL);
    const int columns = m_header.GetTotalWidth();
    int width = GetClientArea().Width() + ((GetStyle() & WS_VSCROLL) != 0 ? barWidth : 0);
    int height = GetRowsArea().Height() + ((GetStyle() & WS_HSCROLL) != 0 ? barHeight : 0);
    const auto needsBar = [&] { return RowsIn(height) < GetRowCount(); };
    if (columns > width - (needsBar() ? barWidth : 0))
        height -= barHeight;
    if (needsBar())
        width -= barWidth;
    SCROLLINFO info = {};
    info.fMask = SIF_RANGE | SIF_PAGE;
    info.nMax = (std::max)(GetRowCount() - 1, 0);
    info.nPage = static_cast<UINT>(RowsIn(height));
    SetScrollInfo(SB_VERT, &info);
    info.nMax = (std::max)(columns - 1, 0);
    info.nPage = static_cast<UINT>((std::max)(width, 0));
    SetScrollInfo(SB_HORZ, &info);
}

void CZoColumnList::SetTop(int row)
{
    row = (std::max)((std::min)(row, GetRowCount() - PageRows()), 0);
    if (GetScrollPos(SB_VERT) != row) // which draws the bar
        SetScrollPos(SB_VERT, row);
    const int moved = (std::exchange(m_nTop, row) - row) * m_nRowHeight;
    if (moved == 0)
        return;
    HideTip();
    const CRect rows = GetRowsArea();
    ScrollWindow(0, moved, rows, rows);
}

void CZoColumnList::SetLeft(int pixels)
{
    pixels = (std::max)((std::min)(pixels, m_header.GetTotalWidth() - GetClientArea().Width()), 0);
    if (GetScrollPos(SB_HORZ) != pixels)
        SetScrollPos(SB_HORZ, pixels);
    m_header.SetScrollPosition(pixels);
    const int moved = std::exchange(m_nLeft, pixels) - pixels;
    if (moved == 0)
        return;
    HideTip();
    const CRect rows = GetRowsArea();
    ScrollWindow(moved, 0, rows, rows);
}

void CZoColumnList::EnsureVisible(int row)
{
    if (m_hWnd == nullptr || !IsRow(row))
        return;
    if (row < m_nTop)
        SetTop(row);
    else if (row >= m_nTop + PageRows())
        SetTop(row - PageRows() + 1);
}

void CZoColumnList::OnScroll(int bar, int code)
{
    SCROLLINFO info = {};
    GetScrollInfo(bar, &info);
    const int step = bar == SB_VERT ? 1 : CZoGlobalGDIData::Scale(kScrollStep);
    int position = info.nPos;
    switch (code) {
    case SB_LINEUP:
        position -= step;
        break;
    case SB_LINEDOWN:
        position += step;
        break;
    case SB_PAGEUP:
        position -= static_cast<int>(info.nPage);
        break;
    case SB_PAGEDOWN:
        position += static_cast<int>(info.nPage);
        break;
    case SB_TOP:
        position = 0;
        break;
    case SB_BOTTOM:
        position = info.nMax;
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        position = info.nTrackPos;
        break;
    default:
        return;
    }
    if (bar == SB_VERT)
        SetTop(position);
    else
        SetLeft(position);
}

void CZoColumnList::OnWheel(int delta)
{
    UINT lines = 3;
    ::SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const int rows = (std::min)(lines, static_cast<UINT>(PageRows())); // also if it is to be a page
    m_nWheel += delta * rows;
    SetTop(m_nTop - m_nWheel / WHEEL_DELTA);
    m_nWheel %= WHEEL_DELTA;
}
