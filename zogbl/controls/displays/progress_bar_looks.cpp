// Progress bars: how they are drawn.
#include <zogbl/progress_bar.h>

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "common/without_throwing.h"
#include "controls/drawing/item_painting.h"

#include <algorithm>

namespace {

constexpr int kGap = 2; // pixels between two blocks

ItemColors BarColors(CZoProgressBar::State state)
{
    if (state != CZoProgressBar::State::kFailed)
        return {::GetSysColor(COLOR_HIGHLIGHTTEXT), ::GetSysColor(COLOR_HIGHLIGHT)};
    if (CZoGlobalGDIData::IsHighContrast())
        return {::GetSysColor(COLOR_3DFACE), ::GetSysColor(COLOR_BTNTEXT)};
    return {RGB(255, 255, 255), RGB(192, 0, 0)};
}

} // namespace

BOOL CZoProgressBar::PreCreateWindow(CREATESTRUCT& cs)
{
    cs.dwExStyle |= WS_EX_STATICEDGE;
    return CZoControl::PreCreateWindow(cs);
}

void CZoProgressBar::OnLayout()
{
    const CRect area = m_hWnd != nullptr ? GetClientArea() : CRect();
    m_nLength = (GetStyle() & kVertical) != 0 ? area.Height() : area.Width();
    FindSame();
    UpdateShown();
    RunTimer();
}

/// Finds what is to be shown now, and lets what differs from the shown be drawn.
void CZoProgressBar::UpdateShown()
{
    if (m_hWnd == nullptr)
        return;
    WithoutThrowing([&] { // without memory the text stays until the next change
        const CString text = GetShownText();
        if (text == m_strText)
            return;
        if (text.IsEmpty() != m_strText.IsEmpty())
            Invalidate(FALSE); // blocks become one piece
        InvalidateRect(GetTextPlace(m_strText), FALSE);
        InvalidateRect(GetTextPlace(text), FALSE);
        m_strText = text;
    });
    const CRect before = m_rcFilled, now = GetFilled();
    m_rcFilled = now;
    const CRect both((std::min)(before.left, now.left), (std::min)(before.top, now.top),
                     (std::max)(before.right, now.right), (std::max)(before.bottom, now.bottom));
    for (const CRect& strip : {CRect(both.left, both.top, (std::max)(before.left, now.left), both.bottom),
                               CRect(both.left, both.top, both.right, (std::max)(before.top, now.top)),
                               CRect((std::min)(before.right, now.right), both.top, both.right, both.bottom),
                               CRect(both.left, (std::min)(before.bottom, now.bottom), both.right, both.bottom)}) {
        if (!strip.IsRectEmpty())
            InvalidateRect(strip, FALSE);
    }
}

CRect CZoProgressBar::GetTextPlace(const CString& text) const
{
    CRect place = GetClientArea();
    const CSize size = WindowFontDC(m_hWnd, GetFontHandle()).GetTextExtent(text);
    const int aside = size.cy / 2; // that letters may overhang
    place.DeflateRect((place.Width() - size.cx) / 2 - aside, 0);
    return text.IsEmpty() ? CRect() : place;
}

CRect CZoProgressBar::GetFilled() const
{
    CRect filled = GetClientArea();
    const bool isVertical = (GetStyle() & kVertical) != 0;
    const int length = isVertical ? filled.Height() : filled.Width();
    int from = 0;
    int to = GetPixels(m_nPosition);
    if (m_bUnknown) {
        const int block = (std::max)(length / 5, 1);
        const int way = (std::max)(length - block, 1);
        const int moved = m_nBlock * (std::max)(length / 40, 1) % (2 * way);
        from = moved < way ? moved : 2 * way - moved;
        to = from + block;
    } else if ((GetStyle() & kSmooth) == 0 && m_strText.IsEmpty() && to < length) {
        to = to / BlockLength() * BlockLength();
    }
    if (isVertical) {
        filled.top = filled.bottom - to;
        filled.bottom -= from;
    } else {
        filled.right = filled.left + to;
        filled.left += from;
    }
    return filled;
}

/// Of a block and the gap behind it, by the bar's height as in the system's.
int CZoProgressBar::BlockLength() const
{
    const CRect area = GetClientArea();
    const int height = (GetStyle() & kVertical) != 0 ? area.Width() : area.Height();
    return (std::max)(::MulDiv(height, 2, 3), 1) + kGap;
}

CString CZoProgressBar::GetShownText()
{
    CString text;
    switch (m_textMode) {
    case TextMode::kPercent:
        text = PercentText();
        break;
    case TextMode::kWindow:
        GetWindowText(text);
        break;
    case TextMode::kRemaining:
        text = GetRemainingText();
        break;
    default:
        break;
    }
    return text;
}

CString CZoProgressBar::PercentText() const
{
    CString text, format;
    if (!m_bUnknown && ZoGblLoadString(ZO_IDS_PERCENT, format))
        text.Format(format, GetPercent());
    return text;
}

void CZoProgressBar::OnDraw(CDC* dc, const CRect& dirty)
{
    const ItemColors ground = {::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_3DFACE)};
    const ItemColors bar = BarColors(m_state);
    dc->FillSolidRect(dirty, ground.background);
    if (m_state != State::kPaused)
        DrawBar(dc, m_rcFilled, bar.background);
    else if ((m_rcFilled.left + m_rcFilled.top) % 2 == 0) // the pattern stays where it is when the bar moves
        ZoDrawHatch(*dc, m_rcFilled, bar.background, ground.background);
    else
        ZoDrawHatch(*dc, m_rcFilled, ground.background, bar.background);
    DrawShownText(dc, ground, bar);
    RunTimer();
}

/// The bar's part of the text has the bar's colours. On a hatch neither could be read: there it has a ground.
void CZoProgressBar::DrawShownText(CDC* dc, const ItemColors& ground, const ItemColors& bar) const
{
    const bool isPlain = m_state != State::kPaused;
    const bool isDisabled = !IsWindowEnabled();
    for (const bool isOnBar : {false, true}) {
        const int saved = m_strText.IsEmpty() ? 0 : dc->SaveDC();
        if (saved == 0)
            return;
        if (isOnBar && isPlain)
            dc->IntersectClipRect(m_rcFilled);
        else if (isPlain)
            dc->ExcludeClipRect(m_rcFilled);
        const ItemColors& colors = isOnBar && isPlain ? bar : ground;
        dc->SetTextColor(isDisabled ? CZoGlobalGDIData::GetDisabledColor(colors.text, colors.background) : colors.text);
        dc->SetBkColor(colors.background);
        dc->SetBkMode(isPlain ? TRANSPARENT : OPAQUE);
        CRect place = GetClientArea();
        dc->DrawText(m_strText, &place, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
        dc->RestoreDC(saved);
    }
}

void CZoProgressBar::DrawBar(CDC* dc, const CRect& filled, COLORREF color) const
{
    if ((GetStyle() & kSmooth) != 0 || !m_strText.IsEmpty()) { // across gaps a text could not be read
        dc->FillSolidRect(filled, color);
        return;
    }
    const int length = BlockLength();
    if ((GetStyle() & kVertical) != 0) {
        for (int bottom = filled.bottom; bottom > filled.top; bottom -= length)
            dc->FillSolidRect(CRect(filled.left, (std::max)(bottom - length + kGap, static_cast<int>(filled.top)),
                                    filled.right, bottom),
                              color);
        return;
    }
    for (int left = filled.left; left < filled.right; left += length)
        dc->FillSolidRect(
            CRect(left, filled.top, (std::min)(left + length - kGap, static_cast<int>(filled.right)), filled.bottom),
            color);
}
