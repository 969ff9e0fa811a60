#include <zogbl/color_chooser.h>

#include <common/without_throwing.h>
#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/resource_ids.h>

#include "colors.h"
#include "controls/drawing/item_painting.h"

#include <algorithm>

namespace {

constexpr int kMargin = 3; // of a swatch or a text in its cell, at 96 dots an inch

} // namespace

CSize CZoColorChooser::GetIdealSize(CWnd* like)
{
    if (m_hWnd == nullptr)
        ReadCustomColors();
    const CWnd* model = like != nullptr ? like : this;
    auto font = model->m_hWnd != nullptr ? reinterpret_cast<HFONT>(model->SendMessage(WM_GETFONT)) : nullptr;
    const int margins = 2 * CZoGlobalGDIData::Scale(kMargin);
    const HDC screen = ::GetDC(nullptr);
    const HGDIOBJ before = ::SelectObject(screen, font != nullptr ? font : GetFontHandle());
    TEXTMETRICA metrics = {};
    ::GetTextMetricsA(screen, &metrics);
    const int cell = static_cast<int>(metrics.tmHeight) + margins;
    int width = m_nColumns * cell;
    WithoutThrowing([&] {
        const auto measure = [&](const CString& text, int beside) {
            CSize size;
            ::GetTextExtentPoint32A(screen, text, text.GetLength(), &size);
            width = (std::max)(width, static_cast<int>(size.cx) + beside + 2 * margins);
        };
        for (int i = 0; i < m_nColors; ++i)
            measure(TextOf(m_pColors[i].color, GetColorName(m_pColors[i].color)), 0);
        measure(LoadColorText(ZO_IDS_COLOR_AUTOMATIC), cell);
        measure(LoadColorText(ZO_IDS_COLOR_MORE), 0);
    });
    ::SelectObject(screen, before);
    ::ReleaseDC(nullptr, screen);
    return {width, GetRowCount(model->m_hWnd != nullptr ? model->GetStyle() : 0) * cell};
}

BOOL CZoColorChooser::IsFocusMarked(int part) const
{
    return part == m_nFocused && (IsFocusShown() || HasStyle(kDropDown));
}

/// Also the line with the name.
void CZoColorChooser::InvalidatePart(int part)
{
    if (part != 0)
        InvalidateRect(GetPartArea(part), FALSE);
    InvalidateRect(GetRowArea(GetRowCount(GetStyle()) - 1), FALSE);
}

void CZoColorChooser::OnLayout()
{
    if (m_nFocused > GetPartCount())
        m_nFocused = 1; // the style has changed
}

void CZoColorChooser::OnDraw(CDC* dc, const CRect& dirty)
{
    const COLORREF border = SwatchBorder();
    const int shown = FindColor(m_color);
    CRect common;
    dc->FillSolidRect(dirty, ::GetSysColor(COLOR_3DFACE));
    for (int part = 1; part <= GetPartCount(); ++part) {
        if (common.IntersectRect(GetPartArea(part), dirty))
            DrawPart(dc, part, part == shown, border);
    }
    const CRect line = GetRowArea(GetRowCount(GetStyle()) - 1);
    if (!common.IntersectRect(line, dirty))
        return;
    const int named = HasFocus() ? m_nFocused : shown;
    const COLORREF color = named != 0 ? GetPartColor(named) : m_color;
    const SelectedColors colors(*dc, {::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_3DFACE)});
    DrawText(dc, line, color == CLR_INVALID ? GetColorText() : TextOf(color, GetPartName(named)));
}

void CZoColorChooser::DrawPart(CDC* dc, int part, BOOL isPresent, COLORREF border) const
{
    const CRect area = GetPartArea(part);
    const COLORREF color = GetPartColor(part);
    const int margin = CZoGlobalGDIData::Scale(kMargin);
    const ItemColors pair = isPresent ? ItemColors{::GetSysColor(COLOR_HIGHLIGHTTEXT), ::GetSysColor(COLOR_HIGHLIGHT)}
                                      : ItemColors{::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_3DFACE)};
    const SelectedColors colors(*dc, pair);
    if (isPresent)
        dc->FillSolidRect(area, pair.background);
    CRect swatch = area;
    swatch.DeflateRect(margin, margin);
    CRect text = area;
    if (color == CLR_DEFAULT) {
        swatch.right = (std::min)(swatch.right, swatch.left + swatch.Height());
        text.left = swatch.right;
    }
    if (color != CLR_INVALID)
        DrawSwatch(dc, swatch, color == CLR_DEFAULT ? ::GetSysColor(m_nAutomatic) : color, border, !IsWindowEnabled());
    if (!IsPlainColor(color))
        DrawText(dc, text, GetPartName(part));
    if (IsFocusMarked(part))
        ZoDrawFocus(*dc, area);
}

void CZoColorChooser::DrawText(CDC* dc, CRect area, LPCSTR text) const
{
    area.DeflateRect(2 * CZoGlobalGDIData::Scale(kMargin), 0);
    if (!IsWindowEnabled())
        ZoDrawDisabledText(*dc, area, text, -1, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    else
        ZoDrawShortenedText(*dc, area, text, DT_VCENTER, ZoShorten::kEnd);
}
