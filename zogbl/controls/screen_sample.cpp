#include <zogbl/screen_sample.h>

#include <common/without_throwing.h>
#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/resource_ids.h>

#include "colors.h"
#include "controls/drawing/item_painting.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include <oleacc.h>

IMPLEMENT_DYNAMIC(CZoScreenSample, CZoControl)

namespace {

constexpr int kButton = 13; // a radio button, at 96 dots an inch
constexpr int kMargin = 3;  // around it, and around the contrast

/// The luminance that WCAG 2 prescribes, 0 to 1.
double LuminanceOf(COLORREF color)
{
    const auto light = [](BYTE part) {
        const double share = part / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * light(GetRValue(color)) + 0.7152 * light(GetGValue(color)) + 0.0722 * light(GetBValue(color));
}

/// \return 0 if it is null or too long
int CountLines(LPCSTR text)
{
    constexpr size_t kLongest = CZoScreenSample::kLongestText;
    if (text == nullptr || ::strnlen(text, kLongest + 1) > kLongest)
        return 0;
    return static_cast<int>(std::count(text, text + std::strlen(text), '\n')) + 1;
}

/// The height of a line, and the width of a text.
CSize Measure(HFONT font, LPCSTR text)
{
    const HDC screen = ::GetDC(nullptr);
    const HGDIOBJ before = ::SelectObject(screen, font);
    TEXTMETRICA metrics = {};
    CSize size;
    ::GetTextMetricsA(screen, &metrics);
    ::GetTextExtentPoint32A(screen, text, lstrlenA(text), &size);
    ::SelectObject(screen, before);
    ::ReleaseDC(nullptr, screen);
    return {size.cx, (std::max<LONG>)(metrics.tmHeight + metrics.tmExternalLeading, 1)};
}

} // namespace

int CZoScreenSample::GetContrast(COLORREF ink, COLORREF paper)
{
    const auto [darker, lighter] = std::minmax({LuminanceOf(ink), LuminanceOf(paper)});
    constexpr double kNoise = 1e-6; // of the calculation: 21 is 21
    return static_cast<int>((lighter + 0.05) / (darker + 0.05) * 100 + kNoise);
}

// Areas ---------------------------------------------------------------------------------------------------------------

int CZoScreenSample::AddArea(LPCSTR name, LPCSTR text, COLORREF ink, COLORREF paper)
{
    const int lines = CountLines(text);
    if (CountLines(name) == 0 || lines == 0 || !IsPlainColor(ink) || !IsPlainColor(paper) ||
        GetAreaCount() >= kMostAreas)
        return -1;
    if (!WithoutThrowing([&] { m_areas.Add({name, text, ink, paper, lines}); }))
        return -1;
    if (m_nChosen < 0)
        m_nChosen = 0;
    if (m_hWnd != nullptr)
        Relayout();
    return GetAreaCount() - 1;
}

void CZoScreenSample::RemoveAreas()
{
    m_areas.RemoveAll();
    m_nChosen = -1;
    if (m_hWnd != nullptr)
        Relayout();
}

BOOL CZoScreenSample::SetColors(int area, COLORREF ink, COLORREF paper)
{
    if (!IsArea(area) || !IsPlainColor(ink) || !IsPlainColor(paper))
        return FALSE;
    Area& changed = m_areas[area];
    const bool isSame = changed.ink == ink && changed.paper == paper;
    changed.ink = ink;
    changed.paper = paper;
    if (!isSame && m_hWnd != nullptr) {
        InvalidateArea(area);
        RaiseEvent(EVENT_OBJECT_VALUECHANGE, area + 1);
    }
    return TRUE;
}

BOOL CZoScreenSample::GetColors(int area, COLORREF& ink, COLORREF& paper) const
{
    if (!IsArea(area))
        return FALSE;
    ink = m_areas[area].ink;
    paper = m_areas[area].paper;
    return TRUE;
}

BOOL CZoScreenSample::SetText(int area, LPCSTR text)
{
    const int lines = CountLines(text);
    if (!IsArea(area) || lines == 0 || !WithoutThrowing([&] { m_areas[area].text = text; }))
        return FALSE;
    m_areas[area].lines = lines;
    if (m_hWnd != nullptr) {
        Relayout();
        RaiseEvent(EVENT_OBJECT_DESCRIPTIONCHANGE, area + 1);
    }
    return TRUE;
}

void CZoScreenSample::SetSampleFont(HFONT font)
{
    m_hSampleFont = font;
    if (m_hWnd != nullptr)
        Relayout();
}

BOOL CZoScreenSample::ChooseArea(int area)
{
    if (!IsArea(area))
        return FALSE;
    if (area != m_nChosen)
        SetChosen(area);
    return TRUE;
}

void CZoScreenSample::SetChosen(int area)
{
    const int before = std::exchange(m_nChosen, area);
    if (m_hWnd == nullptr)
        return;
    InvalidateArea(before);
    InvalidateArea(area);
    if (HasFocus())
        RaiseEvent(EVENT_OBJECT_FOCUS, area + 1);
    RaiseEvent(EVENT_OBJECT_SELECTION, area + 1);
}

/// \return FALSE: the control is gone
BOOL CZoScreenSample::ChooseByUser(int area)
{
    area = (std::max)(0, (std::min)(area, GetAreaCount() - 1));
    if (area == m_nChosen || !IsArea(area))
        return TRUE;
    SetChosen(area);
    ZoSampleNotification notification = {};
    notification.area = area;
    return Notify(ZON_SAMPLE_CHOSEN, &notification.header);
}

// Parts ---------------------------------------------------------------------------------------------------------------

void CZoScreenSample::PreSubclassWindow()
{
    CZoControl::PreSubclassWindow();
    OnLayout();
}

void CZoScreenSample::OnLayout()
{
    m_nMargin = CZoGlobalGDIData::Scale(kMargin);
    m_nButton = CZoGlobalGDIData::Scale(kButton);
    m_nLineHeight = Measure(GetSampleFont(), "").cy;
    ::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, m_szDecimal, sizeof m_szDecimal);
    const CSize text = Measure(GetFontHandle(), "00.0 : 1");
    m_nTextHeight = text.cy;
    m_screen = GetClientArea();
    m_nWidth = m_screen.right;
    m_screen.left += m_nButton + 2 * m_nMargin;
    if ((GetStyle() & kNoContrast) == 0)
        m_screen.right -= text.cx + 2 * m_nMargin;
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

int CZoScreenSample::FindPart(CPoint point) const
{
    int area = GetAreaCount() - 1;
    while (area >= 0 && !GetAreaRow(area).PtInRect(point))
        --area;
    return area + 1;
}

CString CZoScreenSample::GetContrastText(const Area& area) const
{
    const int contrast = GetContrast(area.ink, area.paper);
    CString text;
    text.Format("%d%s%d", contrast / 100, m_szDecimal, contrast / 10 % 10);
    return text;
}

BOOL CZoScreenSample::DescribePart(int part, ZoPart& description) const
{
    if (part < 0 || part > GetPartCount() || !CZoControl::DescribePart(0, description))
        return FALSE;
    if (part == 0) {
        description.role = ROLE_SYSTEM_LIST;
        return TRUE;
    }
    const Area& area = m_areas[part - 1];
    const bool isChosen = part - 1 == m_nChosen;
    description.name = area.name;
    description.value.Format(LoadColorText(ZO_IDS_SAMPLE_COLORS), (LPCSTR)ZoGetColorText(area.ink),
                             (LPCSTR)ZoGetColorText(area.paper), (LPCSTR)GetContrastText(area));
    description.description = area.text;
    description.action = LoadColorText(ZO_IDS_COLOR_CHOOSE);
    description.role = ROLE_SYSTEM_RADIOBUTTON;
    description.state &= STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_UNAVAILABLE;
    description.state |= STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE |
                         (isChosen ? STATE_SYSTEM_SELECTED | STATE_SYSTEM_CHECKED : 0) |
                         (isChosen && HasFocus() ? STATE_SYSTEM_FOCUSED : 0);
    description.area = GetAreaRow(part - 1);
    return TRUE;
}

BOOL CZoScreenSample::DoPartAction(int part)
{
    if (!IsArea(part - 1))
        return FALSE;
    ChooseByUser(part - 1);
    return TRUE;
}

LRESULT CZoScreenSample::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS;
    case WM_KEYDOWN: {
        const int last = GetAreaCount() - 1;
        const int command = CommandOf(kKeys, static_cast<UINT>(wParam));
        if (command != 0) {
            ChooseByUser(command == kPrevious ? m_nChosen - 1
                         : command == kNext   ? m_nChosen + 1
                         : command == kFirst  ? 0
                                              : last);
            return 0;
        }
        break;
    }
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: {
        const Life life(this);
        TakeFocus();
        if (life.IsOver() || m_hWnd == nullptr)
            return 0;
        const int part = FindPart(CPoint(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))));
        if (part != 0)
            ChooseByUser(part - 1);
        return 0;
    }
    default:
        break;
    }
    return CZoControl::WindowProc(message, wParam, lParam);
}

// Looks ---------------------------------------------------------------------------------------------------------------

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
