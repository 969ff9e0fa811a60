// Text panels: where their panes lie.
#include <zogbl/text_panel.h>

#include <zogbl/gdi_data.h>

#include "common/without_throwing.h"
#include "controls/base/tip.h"
#include "controls/drawing/item_painting.h"

#include <algorithm>

namespace {

// Pixels at 96 dots an inch.
constexpr int kGap = 2;         // between two panes
constexpr int kPadding = 3;     // between the edge and what is in it, left and right
constexpr int kLinePadding = 2; // above and below
constexpr int kIconGap = 4;     // between the picture and the text
constexpr int kWidest = 32767;  // that a text counts as

} // namespace

void CZoTextPanel::OnLayout()
{
    for (int pane = 1; pane <= m_nPanes; ++pane)
        Measure(pane);
    LayOut();
}

void CZoTextPanel::Measure(int pane)
{
    const WindowFontDC dc(m_hWnd, GetFontHandle());
    const int width = ResultOr(kWidest, [&]() -> int { return dc.GetTextExtent(GetShownText(pane)).cx; });
    At(pane).textWidth = (std::min)(width, kWidest);
}

int CZoTextPanel::GetWantedWidth(int pane) const
{
    using Width = ZoPane::Width;
    const Pane& item = At(pane);
    int width = CZoGlobalGDIData::Scale(item.format.size);
    if (item.format.width == Width::kFitted && (item.icon != nullptr || item.textWidth > 0)) {
        const int between = item.icon != nullptr && item.textWidth > 0 ? CZoGlobalGDIData::Scale(kIconGap) : 0;
        const int aside = ZoGetEdgeWidth(item.format.edge) + CZoGlobalGDIData::Scale(kPadding);
        width = (std::max)(width, static_cast<int>(2 * aside + item.iconSize.cx + between + item.textWidth));
    }
    return item.format.width != Width::kShared ? width : 0;
}

void CZoTextPanel::LayOut()
{
    const CRect client = GetClientArea();
    const int gap = CZoGlobalGDIData::Scale(kGap);
    int wanted = 0, shares = 0, shown = 0;
    for (int pane = 1; pane <= m_nPanes; ++pane) {
        const int width = GetWantedWidth(pane);
        const int share = At(pane).format.width == ZoPane::Width::kShared ? At(pane).format.size : 0;
        wanted += width;
        shares += share;
        shown += width > 0 || share > 0;
    }
    const int most = (std::max)(client.Width() - GetGrip().Width() - gap * (shown - 1), 0);
    const int taken = (std::min)(wanted, most); // without room for all, each gets less, and shares are nothing
    int wantedBefore = 0, sharesBefore = 0, left = 0;
    const auto part = [](int whole, int from, int to, int of) {
        return of > 0 ? ::MulDiv(whole, to, of) - ::MulDiv(whole, from, of) : 0;
    };
    for (int pane = 1; pane <= m_nPanes; ++pane) {
        Pane& item = At(pane);
        const int wantedSoFar = wantedBefore + GetWantedWidth(pane);
        const int sharesSoFar = sharesBefore + (item.format.width == ZoPane::Width::kShared ? item.format.size : 0);
        const int width =
            part(taken, wantedBefore, wantedSoFar, wanted) + part(most - taken, sharesBefore, sharesSoFar, shares);
        wantedBefore = wantedSoFar;
        sharesBefore = sharesSoFar;
        CRect area(left, client.top, left + width, client.bottom);
        if (width == 0)
            area.SetRectEmpty();
        else
            left += width + gap;
        if (area == item.area)
            continue;
        InvalidateRect(item.area, FALSE);
        InvalidateRect(area, FALSE);
        item.area = area;
    }
    if (m_pTip != nullptr)
        m_pTip->Hide(*this);                             // its place may be another
    if (HasFocus() && At(m_nFocused).area.IsRectEmpty()) // it would be out of sight
        FocusPane(FindShown(m_nFocused, -1) != 0 ? FindShown(m_nFocused, -1) : FindShown(m_nFocused, 1));
}

CRect CZoTextPanel::GetPaneArea(int pane) const { return IsPane(pane) ? At(pane).area : CRect(); }

int CZoTextPanel::GetPaneAt(CPoint point) const
{
    for (int pane = 1; pane <= m_nPanes; ++pane) {
        if (At(pane).area.PtInRect(point))
            return pane;
    }
    return 0;
}

/// Within the edge.
CRect CZoTextPanel::GetInside(int pane) const
{
    CRect inside = At(pane).area;
    const int edge = ZoGetEdgeWidth(At(pane).format.edge);
    inside.DeflateRect(edge, edge);
    return inside;
}

CRect CZoTextPanel::GetContents(int pane) const
{
    CRect area = GetInside(pane);
    area.DeflateRect(CZoGlobalGDIData::Scale(kPadding), 0);
    return area;
}

CRect CZoTextPanel::GetTextArea(int pane) const
{
    CRect area = GetContents(pane);
    if (At(pane).icon != nullptr)
        area.left += At(pane).iconSize.cx + CZoGlobalGDIData::Scale(kIconGap);
    return area;
}

BOOL CZoTextPanel::IsPaneShortened(int pane) const
{
    return IsPane(pane) && !At(pane).area.IsRectEmpty() && At(pane).textWidth > 0 &&
           At(pane).textWidth > GetTextArea(pane).Width();
}

int CZoTextPanel::GetBestHeight() const
{
    int best = 0;
    const int line = WindowFontDC(m_hWnd, GetFontHandle()).GetLineHeight();
    for (int pane = 1; pane <= m_nPanes; ++pane) {
        const int inside = (std::max)(line, static_cast<int>(At(pane).iconSize.cy));
        best = (std::max)(best, inside + 2 * ZoGetEdgeWidth(At(pane).format.edge));
    }
    return best + 2 * CZoGlobalGDIData::Scale(kLinePadding);
}

CRect CZoTextPanel::GetGrip() const
{
    const HWND parent = ::GetParent(m_hWnd);
    const CRect client = GetClientArea();
    if ((GetStyle() & kSizeGrip) == 0 || (::GetWindowLongA(parent, GWL_STYLE) & WS_THICKFRAME) == 0 ||
        ::IsZoomed(parent))
        return CRect();
    return CRect(client.right - ::GetSystemMetrics(SM_CXVSCROLL), client.bottom - ::GetSystemMetrics(SM_CYHSCROLL),
                 client.right, client.bottom);
}
