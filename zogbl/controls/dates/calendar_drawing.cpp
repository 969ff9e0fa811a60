// The calendar: what it looks like.
#include <zogbl/calendar.h>

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>

#include "calendar_texts.h"
#include "controls/drawing/arrow.h"
#include "controls/drawing/item_painting.h"

#include <algorithm>

namespace {

constexpr int kRows = CZoCalendar::kDays / CZoCalendar::kColumns;
constexpr UINT kInMiddle = DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;

struct Inks {
    explicit Inks(bool isEnabled)
        : day{::GetSysColor(COLOR_WINDOWTEXT), ::GetSysColor(COLOR_WINDOW)},
          heading{::GetSysColor(isEnabled ? COLOR_CAPTIONTEXT : COLOR_INACTIVECAPTIONTEXT),
                  ::GetSysColor(isEnabled ? COLOR_ACTIVECAPTION : COLOR_INACTIVECAPTION)},
          grey(CZoGlobalGDIData::GetDisabledColor(day.text, day.background)), selected{
                                                                                  ::GetSysColor(COLOR_HIGHLIGHTTEXT),
                                                                                  ::GetSysColor(COLOR_HIGHLIGHT)}
    {
        if (!isEnabled) {
            selected = {day.background, grey};
            day.text = grey;
        }
    }

    ItemColors day, heading;
    COLORREF grey;
    ItemColors selected;
};

void DrawCentred(CDC* dc, const CString& text, CRect area, COLORREF color)
{
    dc->SetTextColor(color);
    dc->DrawText(text, &area, kInMiddle);
}

} // namespace

void CZoCalendar::OnDraw(CDC* dc, const CRect& dirty)
{
    const Inks inks(IsWindowEnabled() != FALSE);
    const auto isDirty = [&](const CRect& area) { return CRect().IntersectRect(&area, &dirty) != FALSE; };
    dc->FillSolidRect(dirty, inks.day.background);
    const CRect first = CellArea(0, 0);
    if (isDirty(CRect(0, 0, GetClientArea().right, first.top))) {
        DrawHeading(dc);
        DrawNames(dc);
    }
    if (HasStyle(kWeekNumbers) && dirty.left < first.left)
        DrawWeekNumbers(dc);
    for (int part = 1; part <= kDays; ++part) {
        if (IsInYears(DayAt(part)) && isDirty(AreaOf(part)))
            DrawDay(dc, part);
    }
    if (isDirty(AreaOf(kToday)))
        DrawToday(dc);
}

void CZoCalendar::DrawHeading(CDC* dc) const
{
    const Inks inks(IsWindowEnabled() != FALSE);
    CRect area = AreaOf(kPrevious);
    area.right = AreaOf(kNext).right;
    dc->FillSolidRect(area, inks.heading.background);
    for (const int part : {kPrevious, kNext}) {
        if (!CanDo(part))
            continue;
        const bool isPressed = m_nPressed == part;
        if (isPressed)
            dc->FillSolidRect(AreaOf(part), inks.heading.text);
        DrawArrow(dc, AreaOf(part), part == kNext ? ArrowTo::kRight : ArrowTo::kLeft,
                  isPressed ? inks.heading.background : inks.heading.text);
    }
    area.left = AreaOf(kPrevious).right;
    area.right = AreaOf(kNext).left;
    const HGDIOBJ before = m_hBold != nullptr ? ::SelectObject(*dc, m_hBold) : nullptr;
    DrawCentred(dc, HeadingText(m_month), area, inks.heading.text);
    if (before != nullptr)
        ::SelectObject(*dc, before);
}

void CZoCalendar::DrawNames(CDC* dc) const
{
    const Inks inks(IsWindowEnabled() != FALSE);
    for (int column = 0; column < kColumns; ++column)
        DrawCentred(dc, ShortWeekdayText((m_nFirstWeekday + column) % kColumns), CellArea(-1, column), inks.day.text);
    const CRect last = CellArea(-1, kColumns - 1);
    dc->FillSolidRect(CRect(CellArea(-1, 0).left, last.bottom - 1, last.right, last.bottom), inks.day.text);
}

void CZoCalendar::DrawWeekNumbers(CDC* dc) const
{
    const COLORREF color = IsWindowEnabled() ? ::GetSysColor(COLOR_BTNTEXT) : ::GetSysColor(COLOR_GRAYTEXT);
    CRect column = CellArea(0, -1);
    column.left = 0;
    column.bottom = CellArea(kRows - 1, -1).bottom;
    dc->FillSolidRect(column, ::GetSysColor(COLOR_3DFACE));
    for (int row = 0; row < kRows; ++row) {
        const Day day = DayAt(row * kColumns + 1);
        if (!IsInYears(day) && !IsInYears(day + std::chrono::days(kColumns - 1)))
            continue;
        CString number;
        number.Format("%d", WeekNumber(day, m_nFirstWeekday, static_cast<WeekRule>(m_nWeekRule)));
        DrawCentred(dc, number, CellArea(row, -1), color);
    }
}

void CZoCalendar::DrawDay(CDC* dc, int part) const
{
    const Inks inks(IsWindowEnabled() != FALSE);
    const Day day = DayAt(part);
    const SYSTEMTIME date = TimeOf(day);
    const CRect area = AreaOf(part);
    ItemColors colors = inks.day;
    if (m_selection.Has(day))
        colors = inks.selected;
    else if (FirstOfMonth(day) != m_month || !IsAllowed(day))
        colors.text = inks.grey;
    dc->FillSolidRect(area, colors.background);
    CString number;
    number.Format("%d", date.wDay);
    const bool isMarked = IsMarked(date) != FALSE;
    const HGDIOBJ before = m_hBold != nullptr && isMarked ? ::SelectObject(*dc, m_hBold) : nullptr;
    DrawCentred(dc, number, area, colors.text);
    if (!IsAllowed(day)) { // struck out
        const int width = dc->GetTextExtent(number).cx + CZoGlobalGDIData::Scale(2);
        const CPoint middle = area.CenterPoint();
        dc->FillSolidRect(middle.x - width / 2, middle.y, width, 1, colors.text);
    }
    if (before != nullptr)
        ::SelectObject(*dc, before);
    if (isMarked) { // not each font has a bold face that can be told from the plain one
        const int dot = CZoGlobalGDIData::Scale(3);
        dc->FillSolidRect(area.right - dot - m_nPad, area.top + m_nPad, dot, dot, colors.text);
    }
    CRect frame = area;
    if (day == m_today && !HasStyle(kNoTodayMark))
        dc->Draw3dRect(frame, colors.text, colors.text);
    if (day == m_selection.moving && IsFocusShown()) {
        frame.DeflateRect(1, 1);
        const SelectedColors pair(*dc, colors);
        ZoDrawFocus(*dc, frame);
    }
}

void CZoCalendar::DrawToday(CDC* dc) const
{
    const Inks inks(IsWindowEnabled() != FALSE);
    const CRect area = AreaOf(kToday);
    const ItemColors colors = m_nPressed == kToday ? inks.selected : inks.day;
    dc->FillSolidRect(area, colors.background);
    const CString text = TodayText(m_today);
    const int box = HasStyle(kNoTodayMark) ? 0 : m_nLine * 3 / 2;
    CRect place = area;
    place.left += (std::max)((area.Width() - dc->GetTextExtent(text).cx - box - 2 * m_nPad) / 2, LONG{0});
    const COLORREF color = IsAllowed(m_today) ? colors.text : inks.grey;
    if (box != 0) { // what the frame means
        dc->Draw3dRect(place.left, area.CenterPoint().y - m_nLine / 2, box, m_nLine, color, color);
        place.left += box + 2 * m_nPad;
    }
    dc->SetTextColor(color);
    dc->DrawText(text, &place, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}
