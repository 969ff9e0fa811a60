// The calendar: mouse, lists of months and years, the clock.
#include <zogbl/calendar.h>

#include "controls/base/day.h"
#include "controls/base/day_text.h"

#include "common/without_throwing.h"

#include <algorithm>
#include <utility>

namespace {

constexpr UINT_PTR kClockTimer = 1;
constexpr UINT kLookEach = 10 * 1000; // milliseconds, at most
constexpr UINT_PTR kRepeatTimer = 2;  // while an arrow is held down
constexpr UINT kRepeatFirst = 400;
constexpr UINT kRepeatEach = 150;
constexpr int kListedYears = 7; // before and behind the one shown

UINT UntilMidnight()
{
    SYSTEMTIME now = {};
    ::GetLocalTime(&now);
    const UINT passed = ((now.wHour * 60U + now.wMinute) * 60U + now.wSecond) * 1000U + now.wMilliseconds;
    return 24U * 60 * 60 * 1000 - passed;
}

} // namespace

// Clicks and drags ----------------------------------------------------------------------------------------------------

void CZoCalendar::Press(CPoint point, bool keepsAnchor)
{
    const Life life(this);
    TakeFocus();
    if (life.IsOver())
        return;
    const int part = FindPart(point);
    if (part == 0 || !CanDo(part))
        return;
    if (part == kMonth || part == kYear) {
        OpenList(part);
        return;
    }
    if (!BeginDrag())
        return;
    m_selectionBefore = m_selection;
    m_monthBefore = m_month;
    m_nPressed = part;
    InvalidatePart(part);
    if (part <= kDays) {
        Select(MovedTo(DayAt(part), keepsAnchor), m_month); // the days stay under the mouse
    } else if (part != kToday) {
        Show(AddMonths(m_month, part == kNext ? 1 : -1));
        SetTimer(kRepeatTimer, kRepeatFirst);
    }
}

void CZoCalendar::OnDragMove(CPoint point)
{
    const int part = FindPart(point);
    if (m_nPressed <= kDays && part != 0 && part <= kDays && CanDo(part))
        Select(MovedTo(DayAt(part), true), m_month);
}

/// What a drag has begun, whichever way it ends.
void CZoCalendar::Release()
{
    KillTimer(kRepeatTimer);
    InvalidatePart(std::exchange(m_nPressed, 0));
}

void CZoCalendar::OnDragEnd(CPoint point)
{
    const int pressed = m_nPressed;
    Release();
    if (pressed <= kDays) {
        Show(m_selection.moving);
        NotifySelection(ZON_CALENDAR_CHOSEN, m_selectionBefore);
    } else if (pressed == kToday && FindPart(point) == kToday && CanDo(kToday)) {
        Choose({m_today, m_today});
    }
}

void CZoCalendar::OnDragUndo()
{
    Release();
    Select(m_selectionBefore, m_monthBefore);
}

BOOL CZoCalendar::DoPartAction(int part)
{
    if (part < 1 || part > kToday || (part <= kDays && !IsInYears(DayAt(part))) || !CanDo(part))
        return FALSE;
    UndoDrag();
    switch (part) {
    case kPrevious:
    case kNext:
        Show(AddMonths(m_month, part == kNext ? 1 : -1));
        return TRUE;
    case kMonth:
    case kYear: { // the caller must not wait until the list is closed
        const CPoint point = AreaOf(part).CenterPoint();
        return m_hWnd != nullptr && PostMessage(WM_LBUTTONDOWN, 0, MAKELPARAM(point.x, point.y));
    }
    default: {
        const Day day = part == kToday ? m_today : DayAt(part);
        Choose({day, day});
        return TRUE;
    }
    }
}

void CZoCalendar::Turn(int delta)
{
    m_nWheel += delta;
    const int steps = m_nWheel / WHEEL_DELTA;
    m_nWheel %= WHEEL_DELTA;
    if (steps != 0)
        Show(AddMonths(m_month, -steps));
}

// Lists ---------------------------------------------------------------------------------------------------------------

void CZoCalendar::OpenList(int part)
{
    const SYSTEMTIME shown = TimeOf(m_month);
    const HMENU menu = ::CreatePopupMenu();
    const auto add = [&](int number, LPCSTR text, bool isShown, bool canBeShown) {
        ::AppendMenuA(menu, (isShown ? MF_CHECKED : 0U) | (canBeShown ? 0U : MF_GRAYED), static_cast<UINT_PTR>(number),
                      text);
    };
    const BOOL isFilled = WithoutThrowing([&] {
        if (part == kMonth) {
            for (int month = 1; month <= 12; ++month)
                add(month, LocaleText(LOCALE_SMONTHNAME1 + static_cast<LCTYPE>(month - 1)), month == shown.wMonth,
                    CanShow(AddMonths(m_month, month - shown.wMonth)));
            return;
        }
        const int last = (std::min)(shown.wYear + kListedYears, int{TimeOf(m_most).wYear});
        for (int year = (std::max)(shown.wYear - kListedYears, int{TimeOf(m_least).wYear}); year <= last; ++year) {
            CString text;
            text.Format("%d", year);
            add(year, text, year == shown.wYear, true);
        }
    });
    CRect area = AreaOf(part);
    ClientToScreen(&area);
    const UINT flags = TPM_RETURNCMD | TPM_NONOTIFY | (IsMirrored() ? TPM_RIGHTALIGN | TPM_LAYOUTRTL : 0U);
    const Life life(this);
    m_nPressed = part;
    const int chosen =
        isFilled ? ::TrackPopupMenu(menu, flags, IsMirrored() ? area.right : area.left, area.bottom, 0, m_hWnd, nullptr)
                 : 0;
    ::DestroyMenu(menu);
    if (life.IsOver())
        return;
    m_nPressed = 0;
    if (chosen == 0)
        return;
    Show(AddMonths(m_month, part == kMonth ? chosen - TimeOf(m_month).wMonth : (chosen - TimeOf(m_month).wYear) * 12));
}

// The clock -----------------------------------------------------------------------------------------------------------

void CZoCalendar::LookAtClock()
{
    const Day today = Today();
    if (today != m_today) {
        for (const Day day : {std::exchange(m_today, today), today})
            InvalidatePart(PartOf(day));
        InvalidatePart(kToday);
        RaiseEvent(EVENT_OBJECT_NAMECHANGE, kToday);
    }
    SetTimer(kClockTimer, (std::min)(UntilMidnight(), kLookEach)); // the clock may be set meanwhile
}

// Messages ------------------------------------------------------------------------------------------------------------

void CZoCalendar::PreSubclassWindow()
{
    CZoControl::PreSubclassWindow();
    LookAtClock();
}

LRESULT CZoCalendar::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_KEYDOWN:
        if (HandleKey(static_cast<UINT>(wParam)))
            return 0;
        break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        Press(CPoint(lParam), (wParam & MK_SHIFT) != 0);
        return 0;
    case WM_MOUSEWHEEL:
        Turn(static_cast<short>(HIWORD(wParam)));
        return 0;
    case WM_DESTROY:
        if (m_nPressed == kMonth || m_nPressed == kYear)
            ::EndMenu(); // which the system leaves open
        break;
    case WM_TIMECHANGE:
        LookAtClock();
        return 0;
    case WM_TIMER:
        if (wParam == kClockTimer) {
            LookAtClock();
        } else if (wParam == kRepeatTimer && m_nPressed > kDays && CanDo(m_nPressed)) {
            Show(AddMonths(m_month, m_nPressed == kNext ? 1 : -1));
            SetTimer(kRepeatTimer, kRepeatEach);
        }
        return 0;
    default:
        break;
    }
    return CZoControl::WindowProc(message, wParam, lParam);
}
