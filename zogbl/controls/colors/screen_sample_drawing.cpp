#include <zogbl/screen_sample.h>

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>

#include "controls/drawing/item_painting.h"

#include <algorithm>

namespace {

constexpr int kButton = 13; // a radio button, at 96 dots an inch
constexpr int kMargin = 3;  // around it, and around the contrast

int LineHeightOf(const WindowFontDC& dc) { return (std::max)(dc.GetLineHeight(), 1); }

} // namespace

void CZoScreenSample::OnLayout()
{
    m_nMargin = CZoGlobalGDIData::Scale(kMargin);
    m_nButton = CZoGlobalGDIData::Scale(kButton);
    m_nLineHeight = LineHeightOf(WindowFontDC(m_hWnd, GetSampleFont()));
    ::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, m_szDecimal, sizeof m_szDecimal);
    const WindowFontDC dc(m_hWnd, GetFontHandle());
    m_nTextHeight = LineHeightOf(dc);
    m_screen = GetClientArea();
    m_nWidth = m_screen.right;
    m_screen.left += m_nButton + 2 * m_nMargin;
    if ((GetStyle() & kNoContrast) == 0)
        m_screen.right -= dc.GetTextExtent("00.0 : 1").cx + 2 * m_nMargin;
    m_screen.DeflateRect(ZO_EDGE_WIDTH, ZO_EDGE_WIDTH);
}

/// From the left edge of the control to the right one.
CRect CZoScreenSample::GetAreaRow(int area) const
{
    int above = 0;
    int all = 0;
    for (int i = 0; i < GetAreaCount(); ++i) {
        above += i < area ? m_areas[i].lines : 0;
        all += m_areas[i].lines;
    }
    const int height = (std::max<int>)(m_screen.Height(), 0);
    const bool hasRoom = static_cast<LONGLONG>(all) * m_nLineHeight <= height;
    const auto topOf = [&](int lines) { return hasRoom ? lines * m_nLineHeight : ::MulDiv(height, lines, all); };
    const bool isLast = area == GetAreaCount() - 1;
    return {0, m_screen.top + topOf(above), m_nWidth,
            m_screen.top + (isLast ? height : topOf(above + m_areas[area].lines))};
}

void CZoScreenSample::InvalidateArea(int area)
{
    if (IsArea(area))
        InvalidateRect(GetAreaRow(area), FALSE);
}

void CZoScreenSample::OnDraw(CDC* dc, const CRect& dirty)
{
    dc->FillSolidRect(dirty, ::GetSysColor(COLOR_3DFACE));
    if (m_screen.Width() <= 0 || m_screen.Height() <= 0)
        return;
    CRect edge = m_screen;
    edge.InflateRect(ZO_EDGE_WIDTH, ZO_EDGE_WIDTH);
    ZoDrawEdge(*dc, edge, ZoEdge::kSunken);
    if (GetAreaCount() == 0)
        dc->FillSolidRect(m_screen, ::GetSysColor(COLOR_WINDOW));
    DrawSamples(dc, dirty);
    DrawFrame(dc, dirty);
}

void CZoScreenSample::DrawSamples(CDC* dc, const CRect& dirty)
{
    const HGDIOBJ before = m_hSampleFont != nullptr ? ::SelectObject(*dc, m_hSampleFont) : nullptr;
    CRect common;
    for (int i = 0; i < GetAreaCount(); ++i) {
        const Area& area = m_areas[i];
        CRect sample = GetAreaRow(i);
        if (!common.IntersectRect(sample, dirty))
            continue;
        sample.left = m_screen.left;
        sample.right = m_screen.right;
        const SelectedColors colors(*dc, {area.ink, area.paper});
        dc->FillSolidRect(sample, area.paper);
        sample.left += m_nMargin;
        dc->DrawText(area.text, &sample, DT_NOPREFIX | DT_EXPANDTABS | DT_EXTERNALLEADING);
    }
    if (before != nullptr)
        ::SelectObject(*dc, before);
}

/// The buttons at the left and the contrasts at the right.
void CZoScreenSample::DrawFrame(CDC* dc, const CRect& dirty)
{
    const SelectedColors colors(*dc, {::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_3DFACE)});
    const BOOL isEnabled = IsWindowEnabled();
    const BOOL hasContrast = m_screen.right + ZO_EDGE_WIDTH < m_nWidth;
    CRect common;
    for (int i = 0; i < GetAreaCount(); ++i) {
        CRect line = GetAreaRow(i); // the first one of the area
        if (!common.IntersectRect(line, dirty))
            continue;
        line.bottom = (std::min)(line.bottom, line.top + (std::max)(m_nLineHeight, m_nTextHeight));
        const int side = (std::min)(m_nButton, static_cast<int>(line.Height()));
        CRect button(CPoint(m_nMargin, line.top + (line.Height() - side) / 2), CSize(side, side));
        dc->DrawFrameControl(&button, DFC_BUTTON,
                             DFCS_BUTTONRADIO | (i == m_nChosen ? DFCS_CHECKED : 0) | (isEnabled ? 0 : DFCS_INACTIVE));
        if (i == m_nChosen && IsFocusShown()) {
            button.InflateRect(2, 2);
            ZoDrawFocus(*dc, button);
        }
        if (!hasContrast)
            continue;
        constexpr UINT kFormat = DT_SINGLELINE | DT_RIGHT | DT_VCENTER | DT_NOPREFIX;
        const CString text = GetContrastText(m_areas[i]) + " : 1";
        line.left = m_screen.right + ZO_EDGE_WIDTH;
        line.right -= m_nMargin;
        if (isEnabled)
            dc->DrawText(text, &line, kFormat);
        else
            ZoDrawDisabledText(*dc, line, text, -1, kFormat);
    }
}
