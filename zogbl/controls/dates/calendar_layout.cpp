// The calendar: where what lies.
#include <zogbl/calendar.h>

#include <zogbl/gdi_data.h>

#include "calendar_texts.h"
#include "controls/drawing/item_painting.h"

#include "common/without_throwing.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int kColumns = CZoCalendar::kColumns;
constexpr int kRows = CZoCalendar::kDays / kColumns;

HFONT MakeBold(HFONT font)
{
    LOGFONTA description = {};
    if (::GetObjectA(font, sizeof description, &description) == 0)
        return nullptr;
    description.lfWeight = FW_BOLD;
    description.lfWidth = 0; // that of the font as it comes
    return ::CreateFontIndirectA(&description);
}

/// Heights of rows and widths of columns at which nothing is cut, in pixels.
struct Measures {
    Measures(int line, int cell, int pad) : line(line), cell(cell), pad(pad) {}
    Measures(HFONT font, HFONT bold) : Measures(1, 1, CZoGlobalGDIData::Scale(2))
    {
        const HDC dc = ::GetDC(nullptr);
        const HGDIOBJ before = ::SelectObject(dc, font);
        TEXTMETRICA metrics = {};
        if (::GetTextMetricsA(dc, &metrics))
            line = metrics.tmHeight;
        WithoutThrowing([&] { MeasureTexts(dc, bold); });
        ::SelectObject(dc, before);
        ::ReleaseDC(nullptr, dc);
    }

    int Heading() const { return line + 4 * pad; }
    int Row() const { return line + 2 * pad; }
    int Bottom(bool hasToday) const { return hasToday ? line + 4 * pad : pad; }
    CSize Size(bool hasWeeks, bool hasToday) const
    {
        return {(kColumns + hasWeeks) * cell + 2 * pad, Heading() + (1 + kRows) * Row() + Bottom(hasToday)};
    }

    int line, cell, pad;

private:
    void MeasureTexts(HDC dc, HFONT bold)
    {
        const auto width = [dc](const CString& text) {
            SIZE size = {};
            ::GetTextExtentPoint32A(dc, text, text.GetLength(), &size);
            return static_cast<int>(size.cx);
        };
        for (int weekday = 0; weekday < kColumns; ++weekday)
            cell = (std::max)(cell, width(ShortWeekdayText(weekday)) + 3 * pad);
        int line = width(TodayText(std::chrono::year(2000) / 12 / 28)) + cell;
        if (bold != nullptr)
            ::SelectObject(dc, bold);
        cell = (std::max)(cell, width("88") + 4 * pad);
        for (unsigned month = 1; month <= 12; ++month) {
            const Day day = std::chrono::year(2000) / static_cast<int>(month) / 1;
            line = (std::max)(line, width(HeadingText(day)) + 2 * Heading());
        }
        cell = (std::max)(cell, (line + kColumns - 1) / kColumns); // both lines have room
    }
};

} // namespace

CSize CZoCalendar::GetIdealSize() const
{
    return Measures(m_nLine, m_nCell, m_nPad).Size(HasStyle(kWeekNumbers), !HasStyle(kNoToday));
}

CSize CZoCalendar::GetIdealSize(HFONT font, DWORD style)
{
    const HFONT bold = MakeBold(font);
    const Measures measures(font, bold);
    ::DeleteObject(bold);
    return measures.Size((style & kWeekNumbers) != 0, (style & kNoToday) == 0);
}

void CZoCalendar::OnLayout()
{
    UndoDrag();
    ::DeleteObject(std::exchange(m_hBold, MakeBold(GetFontHandle())));
    const Measures measures(GetFontHandle(), m_hBold);
    m_nLine = measures.line;
    m_nCell = measures.cell;
    m_nPad = measures.pad;
    m_nFirstWeekday = LocaleNumber(LOCALE_IFIRSTDAYOFWEEK) % kColumns;
    m_nWeekRule = LocaleNumber(LOCALE_IFIRSTWEEKOFYEAR);
    if (!HasStyle(kSpan) && m_selection.anchor != m_selection.moving)
        m_selection = {m_selection.First(), m_selection.First()};
}

/// From the ideal size to the present one.
CRect CZoCalendar::Stretch(int left, int top, int right, int bottom) const
{
    const CSize ideal = GetIdealSize();
    const CRect area = GetClientArea();
    return {left * area.Width() / ideal.cx, top * area.Height() / ideal.cy, right * area.Width() / ideal.cx,
            bottom * area.Height() / ideal.cy};
}

/// \param row -1: the names of the weekdays \param column -1: the week numbers
CRect CZoCalendar::CellArea(int row, int column) const
{
    const Measures measures(m_nLine, m_nCell, m_nPad);
    const int left = measures.pad + (column + HasStyle(kWeekNumbers)) * measures.cell;
    const int top = measures.Heading() + (row + 1) * measures.Row();
    return Stretch(left, top, left + measures.cell, top + measures.Row());
}

CRect CZoCalendar::AreaOf(int part) const
{
    const Measures measures(m_nLine, m_nCell, m_nPad);
    const CSize ideal = GetIdealSize();
    switch (part) {
    case kPrevious:
        return Stretch(0, 0, measures.Heading(), measures.Heading());
    case kNext:
        return Stretch(ideal.cx - measures.Heading(), 0, ideal.cx, measures.Heading());
    case kMonth:
    case kYear: {
        // The year stands at one end of the heading, which is in the middle; the rest is the month.
        const CString heading = HeadingText(m_month);
        const CString year = YearText(m_month);
        const int at = heading.Find(year);
        WindowFontDC dc(m_hWnd);
        const HGDIOBJ before = ::SelectObject(dc, m_hBold != nullptr ? m_hBold : GetFontHandle());
        const int width = dc.GetTextExtent(heading).cx;
        const int yearWidth = at >= 0 ? static_cast<int>(dc.GetTextExtent(year).cx) : 0;
        ::SelectObject(dc, before);
        CRect area = Stretch(measures.Heading(), 0, ideal.cx - measures.Heading(), measures.Heading());
        const int left = (area.left + area.right - width) / 2;
        const bool isYearFirst = at == 0;
        const int border = isYearFirst ? left + yearWidth : left + width - yearWidth;
        if ((part == kYear) == isYearFirst)
            area.right = (std::max)(area.left, (std::min)(area.right, static_cast<LONG>(border)));
        else
            area.left = (std::min)(area.right, (std::max)(area.left, static_cast<LONG>(border)));
        return area;
    }
    case kToday:
        return HasStyle(kNoToday) ? CRect() : Stretch(0, ideal.cy - measures.Bottom(true), ideal.cx, ideal.cy);
    default:
        return CellArea((part - 1) / kColumns, (part - 1) % kColumns);
    }
}

int CZoCalendar::FindPart(CPoint point) const
{
    return ResultOr(0, [&] {
        for (int part = 1; part <= kToday; ++part) {
            if (AreaOf(part).PtInRect(point))
                return part > kDays || IsInYears(DayAt(part)) ? part : 0;
        }
        return 0;
    });
}

void CZoCalendar::InvalidatePart(int part)
{
    if (m_hWnd == nullptr || part == 0)
        return;
    const CRect area = ResultOr(GetClientArea(), [&] { return AreaOf(part); });
    InvalidateRect(area, FALSE);
}
