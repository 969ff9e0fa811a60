#include "font_controls.h"

#include <zogbl/gdi_data.h>

#include "controls/drawing/item_painting.h"
#include "font_scripts.h"

namespace {

/// Paper in a printer.
void DrawSheet(CDC& dc, const CRect& area)
{
    CPen pen(PS_SOLID, 1, dc.GetTextColor());
    const int old = dc.SaveDC();
    dc.SelectObject(&pen);
    dc.SelectStockObject(NULL_BRUSH);
    const int left = area.left + area.Width() / 6, right = area.right - area.Width() / 3;
    const int top = area.top + area.Height() / 6, middle = area.CenterPoint().y;
    dc.Rectangle(left + (right - left) / 4, top, right - (right - left) / 4 + 1, middle + 1);
    dc.Rectangle(left, middle, right + 1, area.bottom - area.Height() / 6);
    dc.RestoreDC(old);
}

} // namespace

void CZoFontDialog::FaceList::DrawItem(LPDRAWITEMSTRUCT item)
{
    if (item->itemID >= static_cast<UINT>(GetCount()))
        return;
    const FontFamily& family = m_families[item->itemData];
    const CRect area = item->rcItem;
    const SelectedColors colors(item->hDC, ColorsOf(*item));
    CDC* dc = CDC::FromHandle(item->hDC);
    dc->SetTextAlign(TA_LEFT | TA_TOP);
    const int gap = CZoGlobalGDIData::Scale(3), width = CZoGlobalGDIData::Scale(16);
    dc->ExtTextOut(area.left + gap + width + gap, area.top, ETO_OPAQUE | ETO_CLIPPED, &area, family.name,
                   static_cast<UINT>(family.name.GetLength()), nullptr);
    if (family.kind == FontKind::kTrueType)
        dc->ExtTextOut(area.left + gap, area.top, ETO_CLIPPED, &area, "TT", 2, nullptr);
    else if (family.kind == FontKind::kDevice)
        DrawSheet(*dc, CRect(CPoint(area.left + gap, area.top), CSize(width, area.Height())));
    if ((item->itemState & ODS_FOCUS) != 0)
        dc->DrawFocusRect(&area);
}

void CZoFontDialog::Sample::DrawItem(LPDRAWITEMSTRUCT item)
{
    const CRect area = item->rcItem;
    CDC* dc = CDC::FromHandle(item->hDC);
    dc->FillSolidRect(&area, ::GetSysColor(COLOR_3DFACE));
    BOOL isSizeGood = FALSE;
    LOGFONT font = m_dialog.ReadFont(isSizeGood);
    font.lfEscapement = font.lfOrientation = 0;
    CFont shown;
    if (!shown.CreateFontIndirect(&font))
        return;
    const COLORREF color = m_dialog.m_colorButton.GetShownColor();
    const int old = dc->SaveDC();
    dc->IntersectClipRect(&area);
    dc->SelectObject(&shown);
    dc->SetBkMode(TRANSPARENT);
    dc->SetTextColor((m_dialog.m_flags & kEffects) != 0 ? color : ::GetSysColor(COLOR_BTNTEXT));
    CRect line = area;
    ::DrawTextW(item->hDC, SampleOf(font.lfCharSet), -1, &line, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    dc->RestoreDC(old);
}
