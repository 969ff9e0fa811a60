// Text panels: their panes, and how they are laid out and drawn.
#include <zogbl/text_panel.h>

#include <zogbl/gdi_data.h>

#include "common/without_throwing.h"
#include "controls/base/tip.h"
#include "controls/drawing/item_painting.h"

#include <algorithm>
#include <new>

IMPLEMENT_DYNAMIC(CZoTextPanel, CZoControl)

namespace {

// Pixels at 96 dots an inch.
constexpr int kGap = 2;         // between two panes
constexpr int kPadding = 3;     // between the edge and what is in it, left and right
constexpr int kLinePadding = 2; // above and below
constexpr int kIconGap = 4;     // between the picture and the text
constexpr int kWidest = 32767;  // that a text counts as

bool IsGood(const ZoPane& pane)
{
    using Width = ZoPane::Width;
    const bool isShared = pane.width == Width::kShared;
    return (isShared || pane.width == Width::kFixed || pane.width == Width::kFitted) &&
           pane.size >= (isShared ? 1 : 0) && pane.size <= ZoPane::kMostSize &&
           (pane.alignment == DT_LEFT || pane.alignment == DT_CENTER || pane.alignment == DT_RIGHT);
}

/// \return an empty size if it is no icon
CSize SizeOf(HICON icon)
{
    ICONINFO parts = {};
    if (!::GetIconInfo(icon, &parts))
        return CSize(0, 0);
    BITMAP mask = {};
    ::GetObjectA(parts.hbmMask, sizeof mask, &mask);
    const bool isMono = parts.hbmColor == nullptr; // its mask is two pictures, one above the other
    ::DeleteObject(parts.hbmMask);
    ::DeleteObject(parts.hbmColor);
    return CSize(mask.bmWidth, isMono ? mask.bmHeight / 2 : mask.bmHeight);
}

} // namespace

CZoTextPanel::~CZoTextPanel()
{
    DestroyWindow(); // which still asks for the panes
    delete m_pTip;
    if (m_pPanes != &m_first)
        delete[] m_pPanes;
}

// Panes ---------------------------------------------------------------------------------------------------------------

BOOL CZoTextPanel::SetPanes(const ZoPane* panes, int count)
{
    if (panes == nullptr || count < 1 || count > kMostPanes || !std::all_of(panes, panes + count, &IsGood))
        return FALSE;
    Pane* made = count > 1 ? new (std::nothrow) Pane[static_cast<size_t>(count)] : &m_first;
    if (made == nullptr)
        return FALSE;
    UndoDrag();
    for (int i = 0; i < count; ++i) {
        if (i < m_nPanes && made != m_pPanes) { // texts are shared: no memory is wanted
            made[i].text = m_pPanes[i].text;
            made[i].icon = m_pPanes[i].icon;
            made[i].iconSize = m_pPanes[i].iconSize;
        }
        made[i].format = panes[i];
    }
    if (m_pPanes != &m_first && m_pPanes != made)
        delete[] m_pPanes;
    const bool isOther = count != m_nPanes;
    m_pPanes = made;
    m_nPanes = count;
    m_nFocused = (std::min)(m_nFocused, count);
    if (m_hWnd != nullptr)
        Relayout();
    if (isOther)
        RaiseEvent(EVENT_OBJECT_REORDER);
    return TRUE;
}

BOOL CZoTextPanel::GetPane(int pane, ZoPane& format) const
{
    if (IsPane(pane))
        format = At(pane).format;
    return IsPane(pane);
}

CString CZoTextPanel::GetPaneText(int pane) const
{
    CString text;
    if (pane > 1 && IsPane(pane))
        text = At(pane).text;
    else if (pane == 1 && m_hWnd != nullptr)
        GetWindowText(text);
    return text;
}

BOOL CZoTextPanel::HasText(int pane, LPCSTR text) const
{
    return WithoutThrowing([&] { return GetPaneText(pane) == text; });
}

BOOL CZoTextPanel::SetPaneText(int pane, LPCSTR text)
{
    if (text == nullptr || !IsPane(pane) || (pane == 1 && m_hWnd == nullptr))
        return FALSE;
    if (pane == 1)
        return ::SetWindowTextA(m_hWnd, text);
    if (HasText(pane, text))
        return TRUE;
    if (!WithoutThrowing([&] { At(pane).text = CString(text); }))
        return FALSE;
    OnTextChanged(pane);
    return TRUE;
}

void CZoTextPanel::OnTextChanged(int pane)
{
    if (m_hWnd == nullptr)
        return;
    Measure(pane);
    if (At(pane).format.width == ZoPane::Width::kFitted)
        LayOut();
    InvalidateRect(GetInside(pane), FALSE);
    if (m_pTip != nullptr && m_pTip->GetPart() == pane)
        m_pTip->Hide(*this);
    RaiseEvent(EVENT_OBJECT_NAMECHANGE, PartOf(pane));
}

BOOL CZoTextPanel::SetPaneIcon(int pane, HICON icon)
{
    const CSize size = icon != nullptr ? SizeOf(icon) : CSize(0, 0);
    if (!IsPane(pane) || (icon != nullptr && size.cx == 0))
        return FALSE;
    if (At(pane).icon == icon)
        return TRUE;
    At(pane).icon = icon;
    At(pane).iconSize = size;
    if (m_hWnd != nullptr) {
        LayOut();
        InvalidateRect(GetInside(pane), FALSE);
    }
    return TRUE;
}

/// As the panel shows it.
CString CZoTextPanel::GetShownText(int pane) const
{
    CString text = GetPaneText(pane);
    for (int i = 0; i < text.GetLength(); ++i) {
        if (text[i] > 0 && text[i] < ' ') // no second half of a character
            text.SetAt(i, ' ');
    }
    return text;
}

// Places --------------------------------------------------------------------------------------------------------------

void CZoTextPanel::PreSubclassWindow()
{
    CZoControl::PreSubclassWindow();
    OnLayout(); // a window of a template has its size and its text already
}

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
        m_pTip->Hide(*this); // its place may be another
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

CRect CZoTextPanel::GetTextArea(int pane) const
{
    CRect area = GetInside(pane);
    area.DeflateRect(CZoGlobalGDIData::Scale(kPadding), 0);
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

// Looks ---------------------------------------------------------------------------------------------------------------

void CZoTextPanel::OnDraw(CDC* dc, const CRect& dirty)
{
    const SelectedColors colors(*dc, {::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_3DFACE)});
    dc->FillSolidRect(dirty, ::GetSysColor(COLOR_3DFACE));
    for (int pane = 1; pane <= m_nPanes; ++pane) {
        if (CRect common; common.IntersectRect(&At(pane).area, &dirty))
            DrawPane(dc, pane);
    }
    CRect grip = GetGrip();
    if (CRect common; common.IntersectRect(&grip, &dirty))
        dc->DrawFrameControl(&grip, DFC_SCROLL, DFCS_SCROLLSIZEGRIP);
}

void CZoTextPanel::DrawPane(CDC* dc, int pane) const
{
    ZoEdge edge = At(pane).format.edge;
    const int width = ZoGetEdgeWidth(edge);
    if (width > 0 && m_bDown && pane == m_nPressed)
        edge = width == 1 ? ZoEdge::kThinSunken : ZoEdge::kSunken;
    if (width > 0)
        ZoDrawEdge(*dc, At(pane).area, edge);
    DrawContents(dc, pane);
    if (IsFocusShown() && pane == m_nFocused)
        ZoDrawFocus(*dc, GetInside(pane));
}

void CZoTextPanel::DrawContents(CDC* dc, int pane) const
{
    const Pane& item = At(pane);
    const CString text = GetShownText(pane);
    CRect place = GetTextArea(pane);
    CRect inside = GetInside(pane);
    inside.DeflateRect(CZoGlobalGDIData::Scale(kPadding), 0);
    if (m_bDown && pane == m_nPressed) {
        place.OffsetRect(1, 1);
        inside.OffsetRect(1, 1);
    }
    const bool isAlone = text.IsEmpty() || (IsPaneShortened(pane) && place.Width() < dc->GetTextExtent("...").cx);
    if (item.icon != nullptr) {
        const int room = inside.Width() - item.iconSize.cx;
        if (isAlone && item.format.alignment != DT_LEFT)
            inside.left += item.format.alignment == DT_RIGHT ? room : room / 2;
        DrawIcon(dc, inside, item);
    }
    if (item.icon != nullptr && isAlone)
        return;
    const UINT format = item.format.alignment | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;
    const CString shown = IsPaneShortened(pane) ? ZoShortenText(*dc, text, place.Width(), item.format.shorten) : text;
    if (IsWindowEnabled())
        dc->DrawText(shown, shown.GetLength(), &place, format);
    else
        ZoDrawDisabledText(*dc, place, shown, shown.GetLength(), format);
}

/// At the left end of \p area, in the middle, cut to it; never mirrored.
void CZoTextPanel::DrawIcon(CDC* dc, CRect area, const Pane& item) const
{
    const int above = (area.Height() - item.iconSize.cy) / 2;
    const int saved = area.IsRectEmpty() ? 0 : dc->SaveDC();
    if (saved == 0)
        return;
    dc->IntersectClipRect(area);
    area.top += above;
    area.right = area.left + item.iconSize.cx;
    area.bottom = area.top + item.iconSize.cy;
    if (const DWORD layout = dc->GetLayout(); layout != GDI_ERROR && (layout & LAYOUT_RTL) != 0) {
        CPoint corner(area.right - 1, area.top); // to the left as the eye has it
        dc->LPtoDP(&corner);
        dc->SetLayout(0);
        dc->DPtoLP(&corner);
        area = CRect(corner, item.iconSize);
    }
    if (IsWindowEnabled())
        ::DrawIconEx(*dc, area.left, area.top, item.icon, 0, 0, 0, nullptr, DI_NORMAL);
    else
        ZoDrawDisabledIcon(*dc, area, item.icon);
    dc->RestoreDC(saved);
}
