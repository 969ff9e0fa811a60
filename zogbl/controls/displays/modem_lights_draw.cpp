// The modem's lights: measures, drawing, and what screen readers are told.
#include <zogbl/modem_lights.h>

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/trans_bmp.h>

#include "controls/base/tip.h"
#include "controls/drawing/bitmap_dc.h"
#include "controls/drawing/plain_layout.h"

#include <algorithm>
#include <memory>
#include <utility>

#include <oleacc.h>

namespace {

constexpr int kGap = 3; // at 96 dots an inch
constexpr COLORREF kClear = RGB(255, 0, 255);

/// A dark light and a lit one, side by side. Throws CResourceException*
void DrawPictures(CDC& dc, int size)
{
    const bool isPlain = CZoGlobalGDIData::IsHighContrast();
    dc.FillSolidRect(0, 0, 2 * size, size, kClear);
    CPen edge(PS_SOLID, 1, ::GetSysColor(isPlain ? COLOR_BTNTEXT : COLOR_3DSHADOW));
    CPen none(PS_NULL, 0, COLORREF{0});
    CBrush dark(isPlain ? ::GetSysColor(COLOR_3DFACE) : RGB(96, 0, 0));
    CBrush lit(isPlain ? ::GetSysColor(COLOR_BTNTEXT) : RGB(255, 32, 16));
    CBrush shine(RGB(255, 208, 192));
    const int saved = dc.SaveDC();
    for (int i = 0; i < 2; ++i) {
        dc.SelectObject(&edge);
        dc.SelectObject(i == 0 ? &dark : &lit);
        dc.Ellipse(i * size, 0, (i + 1) * size, size);
        if (i == 0 || isPlain)
            continue;
        dc.SelectObject(&none);
        dc.SelectObject(&shine);
        const int left = i * size + size / 4;
        dc.Ellipse(left, size / 4, left + size / 3 + 1, size / 4 + size / 3 + 1);
    }
    dc.RestoreDC(saved);
}

} // namespace

// Measures ------------------------------------------------------------------------------------------------------------

CZoModemLights::Measures CZoModemLights::Measure() const
{
    Measures measures = {};
    const HDC dc = ::GetDC(nullptr);
    const HGDIOBJ before = ::SelectObject(dc, GetFontHandle());
    TEXTMETRICA metrics = {};
    ::GetTextMetricsA(dc, &metrics);
    measures.textHeight = static_cast<int>(metrics.tmHeight);
    const int size = (std::max)(static_cast<int>(metrics.tmAscent), 7) | 1; // odd: it has a middle
    measures.picture =
        m_pPictures != nullptr ? CSize(m_pPictures->GetCellWidth(), m_pPictures->GetCellHeight()) : CSize(size, size);
    const int gap = CZoGlobalGDIData::Scale(kGap);
    int width = measures.picture.cx;
    for (int i = 0; i < m_nShown; ++i) {
        const LPCSTR caption = CaptionOf(m_shown[i]);
        CSize extent;
        ::GetTextExtentPoint32A(dc, caption, lstrlenA(caption), &extent);
        width = (std::max)(width, static_cast<int>(extent.cx));
    }
    ::SelectObject(dc, before);
    ::ReleaseDC(nullptr, dc);
    measures.cell = CSize(width + 2 * gap, measures.picture.cy + gap + measures.textHeight);
    return measures;
}

CSize CZoModemLights::GetBestSize() const
{
    const Measures measures = Measure();
    return CSize(measures.cell.cx * m_nShown, measures.cell.cy + 2 * CZoGlobalGDIData::Scale(kGap));
}

void CZoModemLights::OnLayout()
{
    delete std::exchange(m_pOwnPictures, nullptr); // of another size or other colours
    m_measures = Measure();
    if (m_pTip != nullptr)
        m_pTip->Hide(*this);
}

/// From the left, as wide as it is best or as there is room for all; in the middle of the height.
CRect CZoModemLights::GetCell(int part) const
{
    const CRect area = GetClientArea();
    const int width = (std::min)(static_cast<int>(m_measures.cell.cx), area.Width() / (std::max)(m_nShown, 1));
    const int top = (std::max)((area.Height() - static_cast<int>(m_measures.cell.cy)) / 2, 0);
    return CRect(CPoint((part - 1) * width, top), CSize(width, m_measures.cell.cy));
}

CRect CZoModemLights::GetPicturePlace(const CRect& cell) const
{
    return CRect(CPoint(cell.left + (cell.Width() - m_measures.picture.cx) / 2, cell.top), m_measures.picture);
}

// Drawing -------------------------------------------------------------------------------------------------------------

BOOL CZoModemLights::SetPictures(CZoTransBmp* pictures)
{
    if (pictures != nullptr && (pictures->GetCellWidth() == 0 || pictures->GetWidth() / pictures->GetCellWidth() != 2 ||
                                pictures->GetCellHeight() == 0))
        return FALSE;
    m_pPictures = pictures;
    if (m_hWnd != nullptr)
        Relayout();
    return TRUE;
}

/// \return null if there are none. Throws CResourceException*, CMemoryException*
CZoTransBmp* CZoModemLights::GetPictures()
{
    if (m_pPictures != nullptr)
        return m_pPictures;
    if (m_pOwnPictures == nullptr) {
        auto made = std::make_unique<CZoTransBmp>(2, 1);
        const int size = m_measures.picture.cx;
        CClientDC screen(nullptr);
        if (!made->CreateCompatibleBitmap(&screen, 2 * size, size))
            return nullptr;
        const BitmapDC target(screen, *made);
        if (!target.IsReady())
            return nullptr;
        CDC dc;
        dc.SetOutputDC(target);
        dc.SetAttribDC(target);
        DrawPictures(dc, size);
        made->SetTransparentColor(kClear);
        m_pOwnPictures = made.release();
    }
    return m_pOwnPictures;
}

void CZoModemLights::OnDraw(CDC* dc, const CRect& dirty)
{
    RunTimer(); // which stopped while nobody could see the lights
    dc->FillSolidRect(dirty, ::GetSysColor(COLOR_3DFACE));
    dc->SetTextColor(::GetSysColor(COLOR_BTNTEXT));
    dc->SetBkColor(::GetSysColor(COLOR_3DFACE));
    CZoTransBmp* pictures = GetPictures();
    for (int part = 1; part <= m_nShown; ++part) {
        const CRect cell = GetCell(part);
        CRect common;
        if (common.IntersectRect(&cell, &dirty))
            DrawLight(dc, pictures, m_shown[part - 1], cell);
    }
}

void CZoModemLights::DrawLight(CDC* dc, CZoTransBmp* pictures, Light light, const CRect& cell)
{
    CRect place = GetPicturePlace(cell);
    CRect text(cell.left, cell.bottom - m_measures.textHeight, cell.right, cell.bottom);
    const LPCSTR caption = CaptionOf(light);
    if (IsWindowEnabled())
        ZoDrawShortenedText(*dc, text, caption, DT_CENTER | DT_TOP, ZoShorten::kEnd);
    else
        ZoDrawDisabledText(*dc, text, caption, -1, DT_CENTER | DT_TOP | DT_SINGLELINE | DT_NOPREFIX);
    if (pictures == nullptr)
        return;
    const int rows = pictures->GetHeight() / pictures->GetCellHeight();
    const PlainLayout layout(*dc, {&place});
    pictures->DrawCellTrans(*dc, place.left, place.top, IsLit(light) ? 1 : 0,
                            (std::min)(static_cast<int>(light), rows - 1));
}

// Screen readers ------------------------------------------------------------------------------------------------------

int CZoModemLights::GetPartCount() const { return m_nShown; }

int CZoModemLights::FindPart(CPoint point) const
{
    for (int part = 1; part <= m_nShown; ++part) {
        if (GetCell(part).PtInRect(point))
            return part;
    }
    return 0;
}

BOOL CZoModemLights::DescribePart(int part, ZoPart& description) const
{
    if (part == 0) {
        CZoControl::DescribePart(0, description);
        description.role = ROLE_SYSTEM_GROUPING;
        return TRUE;
    }
    if (part < 0 || part > m_nShown)
        return FALSE;
    const Light light = m_shown[part - 1];
    description.name = NameOf(light);
    description.role = ROLE_SYSTEM_INDICATOR;
    description.state = STATE_SYSTEM_READONLY | (IsLit(light) ? STATE_SYSTEM_CHECKED : 0) |
                        (IsWindowEnabled() ? 0 : STATE_SYSTEM_UNAVAILABLE);
    description.area = GetCell(part);
    return TRUE;
}
