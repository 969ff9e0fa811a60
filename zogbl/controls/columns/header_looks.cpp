// How a header looks, and what screen readers are told of it.
#include <zogbl/header.h>

#include <zogbl/effects.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include <oleacc.h>

namespace {

using Sort = CZoHeaderButton::Sort;

} // namespace

// Looks ---------------------------------------------------------------------------------------------------------------

void CZoHeaderWnd::OnDraw(CDC* dc, const CRect& dirty)
{
    const bool isDisabled = !IsWindowEnabled();
    const int focused = IsFocusShown() ? FocusedColumn() : -1;
    CRect rest = GetClientArea();
    rest.left = GetTotalWidth() - m_nScroll;
    if (!rest.IsRectEmpty()) {
        dc->FillSolidRect(rest, ::GetSysColor(COLOR_3DFACE));
        ZoDrawEdge(*dc, rest, ZoEdge::kRaised);
    }
    for (int i = 0; i < GetColumnCount(); ++i) {
        CRect common;
        const CRect area = GetColumnArea(i);
        if (!common.IntersectRect(area, dirty))
            continue;
        const bool isPressed = i == m_nDragged && (m_bPressed || m_drag == Drag::kMove);
        const int saved = dc->SaveDC();
        dc->IntersectClipRect(area);
        m_columns[i].button.Draw(dc, area,
                                 (isPressed ? CZoHeaderButton::kPressed : 0U) |
                                     (i == focused ? CZoHeaderButton::kFocused : 0U) |
                                     (isDisabled ? CZoHeaderButton::kDisabled : 0U));
        dc->RestoreDC(saved);
    }
    if (const int mark = DropMark(); mark >= 0)
        dc->FillSolidRect(CRect(mark - 1, 0, mark + 1, rest.bottom), ::GetSysColor(COLOR_HIGHLIGHT));
}

// Screen readers ------------------------------------------------------------------------------------------------------

int CZoHeaderWnd::GetPartCount() const { return GetColumnCount(); }
int CZoHeaderWnd::FindPart(CPoint point) const { return ColumnIn(point) + 1; }
int CZoHeaderWnd::GetFocusedPart() const { return FocusedColumn() + 1; }

BOOL CZoHeaderWnd::DescribePart(int part, ZoPart& description) const
{
    if (!CZoControl::DescribePart(0, description) || part < 0 || part > GetColumnCount())
        return FALSE;
    if (part == 0) {
        description.role = ROLE_SYSTEM_LIST;
        if (description.name.IsEmpty())
            ZoGblLoadString(ZO_IDS_HEADER_NAME, description.name);
        return TRUE;
    }
    const int column = part - 1;
    const CZoHeaderButton& button = m_columns[column].button;
    const CRect client = description.area;
    description.name = button.m_csText;
    description.role = ROLE_SYSTEM_COLUMNHEADER;
    if (button.m_sort != Sort::kNone)
        ZoGblLoadString(button.m_sort == Sort::kAscending ? ZO_IDS_HEADER_ASCENDING : ZO_IDS_HEADER_DESCENDING,
                        description.description);
    if (!HasFlag(column, CZoHeaderButton::kNoPush))
        ZoGblLoadString(ZO_IDS_HEADER_PUSH, description.action);
    const CRect area = GetColumnArea(column);
    description.area.IntersectRect(area, client);
    description.state &= ~STATE_SYSTEM_FOCUSED;
    if (HasFocus() && column == FocusedColumn())
        description.state |= STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED;
    if (description.area.IsRectEmpty())
        description.state |= STATE_SYSTEM_INVISIBLE | (button.m_nWidth > 0 ? STATE_SYSTEM_OFFSCREEN : 0);
    if (column == m_nDragged && m_bPressed)
        description.state |= STATE_SYSTEM_PRESSED;
    return TRUE;
}
