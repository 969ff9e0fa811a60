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
    const auto font = model->m_hWnd != nullptr ? reinterpret_cast<HFONT>(model->SendMessage(WM_GETFONT)) : nullptr;
    const int margins = 2 * CZoGlobalGDIData::Scale(kMargin);
    const WindowFontDC dc(nullptr, font != nullptr ? font : GetFontHandle());
    const int cell = static_cast<int>(dc.GetMetrics().tmHeight) + margins;
    int width = m_nColumns * cell;
    WithoutThrowing([&] {
        const auto measure = [&](const CString& text, int beside) {
            width = (std::max)(width, static_cast<int>(dc.GetTextExtent(text).cx) + beside + 2 * margins);
        };
        for (int i = 0; i < m_nColors; ++i)
            measure(TextOf(m_pColors[i].color, GetColorName(m_pColors[i].color)), 0);
        measure(LoadColorText(ZO_IDS_COLOR_AUTOMATIC), cell);
        measure(LoadColorText(ZO_IDS_COLOR_MORE), 0);
    });
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
    InvalidateRect(GetRowArea(GetRowCount(m_dwParts) - 1), FALSE);
}

void CZoColorChooser::OnLayout()
{
    m_dwParts = GetStyle() & (kAutomatic | kMore | kDropDown);
    m_size = GetClientArea().Size();
    m_nMargin = CZoGlobalGDIData::Scale(kMargin);
    m_nBorder = SwatchBorder();
    m_nLine = -1;
    if (m_nFocused > GetPartCount())
        m_nFocused = 1; // the style has changed
}

/// Texts are looked for in several modules, so the last ones are kept. \param named the part whose name the line has
void CZoColorChooser::LoadTexts(int named)
{
    if (m_nLine == named)
        return;
    BOOL isLoaded = m_nLine >= 0 || (LoadColorText(ZO_IDS_COLOR_AUTOMATIC, m_csAutomatic) &&
                                     LoadColorText(ZO_IDS_COLOR_MORE, m_csMore));
    const bool isPart = named != 0 && GetPartColor(named) != CLR_INVALID;
    const COLORREF color = isPart ? GetPartColor(named) : m_color;
    CString name;
    isLoaded = (isPart ? NamePart(named, name) : NameColor(color, name)) && isLoaded;
    m_csLine = TextOf(color, name);
    m_nLine = isLoaded ? named : -1; // what could not be loaded is tried again
}

void CZoColorChooser::OnDraw(CDC* dc, const CRect& dirty)
{
    const BOOL isEnabled = IsWindowEnabled();
    const int shown = FindColor(m_color);
    CRect common;
    dc->FillSolidRect(dirty, ::GetSysColor(COLOR_3DFACE));
    LoadTexts(HasFocus() ? m_nFocused : shown);
    const int count = GetPartCount();
    for (int part = 1; part <= count; ++part) {
        const CRect area = GetPartArea(part);
        if (common.IntersectRect(area, dirty))
            DrawPart(dc, area, part, part == shown, isEnabled);
    }
    const CRect line = GetRowArea(GetRowCount(m_dwParts) - 1);
    if (!common.IntersectRect(line, dirty))
        return;
    dc->FillSolidRect(CRect(line.left + m_nMargin, line.top, line.right - m_nMargin, line.top + 1),
                      ::GetSysColor(m_nBorder));
    const SelectedColors colors(*dc, {::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_3DFACE)});
    DrawText(dc, line, m_csLine, isEnabled);
}

void CZoColorChooser::DrawPart(CDC* dc, const CRect& area, int part, BOOL isPresent, BOOL isEnabled) const
{
    const COLORREF color = GetPartColor(part);
    const ItemColors pair = isPresent ? ItemColors{::GetSysColor(COLOR_HIGHLIGHTTEXT), ::GetSysColor(COLOR_HIGHLIGHT)}
                                      : ItemColors{::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_3DFACE)};
    if (isPresent)
        dc->FillSolidRect(area, pair.background);
    CRect swatch = area;
    swatch.DeflateRect(m_nMargin, m_nMargin);
    CRect text = area;
    if (color == CLR_DEFAULT) {
        swatch.right = (std::min)(swatch.right, swatch.left + swatch.Height());
        text.left = swatch.right;
    }
    if (color != CLR_INVALID)
        DrawSwatch(dc, swatch, color == CLR_DEFAULT ? ::GetSysColor(m_nAutomatic) : color, m_nBorder, !isEnabled);
    if (IsPlainColor(color) && part != m_nFocused)
        return;
    const SelectedColors colors(*dc, pair);
    if (!IsPlainColor(color))
        DrawText(dc, text, color == CLR_DEFAULT ? m_csAutomatic : m_csMore, isEnabled);
    if (IsFocusMarked(part))
        ZoDrawFocus(*dc, area);
}

void CZoColorChooser::DrawText(CDC* dc, CRect area, LPCSTR text, BOOL isEnabled) const
{
    area.DeflateRect(2 * m_nMargin, 0);
    if (!isEnabled)
        ZoDrawDisabledText(*dc, area, text, -1, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    else
        ZoDrawShortenedText(*dc, area, text, DT_VCENTER, ZoShorten::kEnd);
}
