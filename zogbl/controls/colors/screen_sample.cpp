#include <zogbl/screen_sample.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "colors.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <oleacc.h>

IMPLEMENT_DYNAMIC(CZoScreenSample, CZoControl)

namespace {

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
    const int length = text != nullptr ? lstrlenA(text) : -1;
    if (length < 0 || length > CZoScreenSample::kLongestText)
        return 0;
    return static_cast<int>(std::count(text, text + length, '\n')) + 1;
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
    if (!IsArea(area) || lines == 0)
        return FALSE;
    if (m_areas[area].text == text)
        return TRUE;
    if (!WithoutThrowing([&] { m_areas[area].text = text; }))
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
        if (const int part = FindPart(CPoint(lParam)); part != 0)
            ChooseByUser(part - 1);
        return 0;
    }
    default:
        break;
    }
    return CZoControl::WindowProc(message, wParam, lParam);
}
