// What the user does with a list.
#include <zogbl/column_list.h>

#include "common/without_throwing.h"
#include "controls/base/tip.h"
#include "controls/drawing/item_painting.h"

#include <algorithm>

// The header ----------------------------------------------------------------------------------------------------------

void CZoColumnList::Header::OnColumnsChanged()
{
    CZoHeaderWnd::OnColumnsChanged();
    if (m_list.m_hWnd != nullptr)
        m_list.Relayout();
}

void CZoColumnList::Header::OnColumnFocused(int column)
{
    const CRect area = GetColumnArea(column);
    const int width = GetClientArea().Width();
    if (area.left < 0 || area.Width() > width)
        m_list.SetLeft(m_list.m_nLeft + area.left);
    else if (area.right > width)
        m_list.SetLeft(m_list.m_nLeft + area.right - width);
}

LRESULT CZoColumnList::Header::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_KEYDOWN && (wParam == VK_F6 || wParam == VK_ESCAPE)) {
        ::SetFocus(m_list.m_hWnd);
        return 0;
    }
    if (message == WM_SETFOCUS)
        OnColumnFocused(GetFocusedPart() - 1);           // which may be out of sight
    if (message == WM_GETDLGCODE && wParam == VK_ESCAPE) // it does not end the dialog
        return DLGC_WANTALLKEYS;
    return CZoHeaderWnd::WindowProc(message, wParam, lParam);
}

LRESULT CZoColumnList::OnHeader(const ZoHeaderNotice& notice)
{
    using Sort = CZoHeaderButton::Sort;
    if (notice.header.code == ZON_HEADER_FIT)
        return ResultOr(0, [&] { return WidthOf(notice.column); });
    ZoHeaderNotice copy = notice;
    LRESULT answer = 0;
    if (!Notify(notice.header.code, &copy.header, &answer) || answer != 0 || notice.header.code != ZON_HEADER_PUSHED)
        return answer;
    const CZoHeaderButton* button = m_header.GetColumn(notice.column);
    if (button != nullptr) {
        const bool isDownFirst = (button->m_flags & CZoHeaderButton::kDescendingFirst) != 0;
        const Sort first = isDownFirst ? Sort::kDescending : Sort::kAscending;
        const Sort second = isDownFirst ? Sort::kAscending : Sort::kDescending;
        SortBy(notice.column, button->m_sort == first ? second : first);
    }
    return answer;
}

// Keys and mouse ------------------------------------------------------------------------------------------------------

void CZoColumnList::Choose(int row)
{
    row = (std::min)(row, GetRowCount() - 1);
    if (row < 0)
        return;
    EnsureVisible(row);
    if (row == m_nSelected)
        return;
    SetCurSel(row);
    NotifyCommand(LBN_SELCHANGE);
}

void CZoColumnList::Obey(int command)
{
    const int page = PageRows() - 1;
    m_typed.Forget();
    switch (command) {
    case kUp:
        Choose((std::max)(m_nSelected - 1, 0));
        break;
    case kDown:
        Choose(m_nSelected + 1);
        break;
    case kPageUp:
        Choose((std::max)(m_nSelected > m_nTop ? m_nTop : m_nSelected - page, 0));
        break;
    case kPageDown:
        Choose(m_nSelected < m_nTop + page ? m_nTop + page : m_nSelected + page);
        break;
    case kFirst:
        Choose(0);
        break;
    case kLast:
        Choose(GetRowCount() - 1);
        break;
    case kLeft:
        OnScroll(SB_HORZ, SB_LINELEFT);
        break;
    case kRight:
        OnScroll(SB_HORZ, SB_LINERIGHT);
        break;
    case kToHeader:
        if (m_header.m_hWnd != nullptr && m_header.GetTotalWidth() > 0)
            m_header.SetFocus();
        break;
    case kFitAll:
        for (int i = 0; i < m_header.GetColumnCount(); ++i) {
            if (m_header.GetColumn(i)->m_nWidth > 0 &&
                (m_header.GetColumn(i)->m_flags & CZoHeaderButton::kFixedWidth) == 0)
                m_header.FitColumn(i);
        }
        break;
    default:
        break;
    }
}

/// The part of the first row from one on and around that begins with a text; 0: there is none.
int CZoColumnList::FindTyped(int column, int from, LPCSTR text) const
{
    const int count = GetRowCount();
    for (int i = 0; i < count && m_header.GetColumn(column) != nullptr; ++i) {
        const int row = (from + i) % count;
        if (CZoTypeAhead::Begins(GetCellText(m_rows[row], column), text))
            return row + 1;
    }
    return 0;
}

void CZoColumnList::OnTyped(UINT character)
{
    if (!m_typed.Type(character))
        return;
    const auto find = [this](LPCSTR text, bool isNext) {
        const int from = m_nSelected >= 0 ? m_nSelected + isNext : 0;
        const int found = FindTyped(m_header.GetSortColumn(), from, text);
        return found != 0 ? found : FindTyped(0, from, text);
    };
    Choose(ResultOr(0, [&] { return m_typed.Find(find); }) - 1);
}

void CZoColumnList::OnButtonDown(CPoint point, BOOL isDouble)
{
    const Life life(this);
    m_typed.Forget();
    TakeFocus();
    const int row = life.IsOver() ? -1 : FindPart(point) - 1;
    if (row < 0)
        return;
    Choose(row);
    if (isDouble && !life.IsOver())
        NotifyCommand(LBN_DBLCLK);
}

void CZoColumnList::HideTip()
{
    if (m_pTip != nullptr)
        m_pTip->Hide(*this);
}

/// Over a text that is shortened there is a tip.
void CZoColumnList::FollowMouse(UINT message, WPARAM wParam, LPARAM lParam)
{
    const CPoint point(lParam);
    const int row = FindPart(point) - 1;
    const int column = m_header.FindPart(CPoint(point.x, 0)) - 1;
    ControlTip::Place place;
    if (IsRow(row) && column >= 0) {
        const CString text = GetCellText(m_rows[row], column);
        CRect cell = m_header.GetColumnArea(column);
        if (WindowFontDC(m_hWnd, GetFontHandle()).GetTextExtent(text).cx > cell.Width() - WidthBeside(column)) {
            const CRect area = GetRowArea(row);
            cell = CRect(cell.left, area.top, cell.right, area.bottom);
            place = {row * CZoHeaderWnd::kMostColumns + column + 1, cell, text};
        }
    }
    ControlTip::Follow(m_pTip, *this, place, message, wParam, lParam);
}

LRESULT CZoColumnList::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST)
        WithoutThrowing([&] { FollowMouse(message, wParam, lParam); });
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        OnButtonDown(CPoint(lParam), message == WM_LBUTTONDBLCLK);
        return 0;
    case WM_MOUSEWHEEL:
        OnWheel(static_cast<short>(HIWORD(wParam)));
        return 0;
    case WM_HSCROLL:
    case WM_VSCROLL:
        OnScroll(message == WM_VSCROLL ? SB_VERT : SB_HORZ, LOWORD(wParam));
        return 0;
    case WM_KEYDOWN:
        if (const int command = CommandOf(kKeys, static_cast<UINT>(wParam)); command != 0) {
            Obey(command);
            return 0;
        }
        break;
    case WM_CHAR:
        OnTyped(static_cast<UINT>(wParam));
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_NOTIFY: {
        const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
        if (m_header.m_hWnd != nullptr && header.hwndFrom == m_header.m_hWnd)
            return OnHeader(reinterpret_cast<const ZoHeaderNotice&>(header));
        break;
    }
    case WM_DESTROY:
        if (m_pTip != nullptr)
            m_pTip->Destroy();
        break;
    default:
        break;
    }
    const Life life(this);
    const LRESULT result = CZoControl::WindowProc(message, wParam, lParam);
    if (life.IsOver() || m_hWnd == nullptr)
        return result;
    switch (message) {
    case WM_ENABLE:
        if (m_header.m_hWnd != nullptr)
            m_header.EnableWindow(static_cast<BOOL>(wParam));
        break;
    case WM_SETFOCUS:
        NotifyCommand(LBN_SETFOCUS);
        break;
    case WM_KILLFOCUS:
        m_typed.Forget();
        NotifyCommand(LBN_KILLFOCUS);
        break;
    default:
        break;
    }
    return result;
}
