// Text panels: their panes, and how they are drawn.
#include <zogbl/text_panel.h>

#include "common/without_throwing.h"
#include "controls/base/tip.h"
#include "controls/drawing/item_painting.h"
#include "controls/drawing/plain_layout.h"

#include <algorithm>
#include <new>

IMPLEMENT_DYNAMIC(CZoTextPanel, CZoControl)

namespace {

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
    if (m_pTip != nullptr && m_pTip->GetPart() == PartOf(pane))
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
    const int moved = m_bDown && pane == m_nPressed ? 1 : 0;
    const CRect place = GetTextArea(pane) + CPoint(moved, moved);
    CRect inside = GetContents(pane) + CPoint(moved, moved);
    const bool isAlone = text.IsEmpty() || (IsPaneShortened(pane) && place.Width() < dc->GetTextExtent("...").cx);
    if (item.icon != nullptr) {
        const int room = (std::max)(static_cast<int>(inside.Width() - item.iconSize.cx), 0);
        if (isAlone && item.format.alignment != DT_LEFT)
            inside.left += item.format.alignment == DT_RIGHT ? room : room / 2;
        DrawIcon(dc, inside, item);
    }
    if (item.icon != nullptr && isAlone)
        return;
    const UINT format = item.format.alignment | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;
    const CString shown = IsPaneShortened(pane) ? ZoShortenText(*dc, text, place.Width(), item.format.shorten) : text;
    if (IsWindowEnabled())
        dc->DrawText(shown, shown.GetLength(), CRect(place), format);
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
    area = CRect(CPoint(area.left, area.top + above), item.iconSize);
    const PlainLayout layout(*dc, {&area});
    if (IsWindowEnabled())
        ::DrawIconEx(*dc, area.left, area.top, item.icon, 0, 0, 0, nullptr, DI_NORMAL);
    else
        ZoDrawDisabledIcon(*dc, area, item.icon);
    dc->RestoreDC(saved);
}
