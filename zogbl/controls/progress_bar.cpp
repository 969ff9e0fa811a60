#include <zogbl/progress_bar.h>

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "controls/drawing/item_painting.h"

#include <algorithm>
#include <utility>

#include <oleacc.h>

IMPLEMENT_DYNAMIC(CZoProgressBar, CZoControl)

namespace {

constexpr UINT_PTR kTimer = 1;
constexpr UINT kMoveEach = 50; // milliseconds, as all times here
constexpr UINT kShowEach = 1000;
constexpr DWORD kTellEach = 100;
constexpr DWORD kEstimateEach = 5000;
constexpr int kLeastPercent = 5; // for an estimate
constexpr int kGap = 2;          // pixels between two blocks

ULONGLONG Distance(LONGLONG from, LONGLONG to) { return static_cast<ULONGLONG>(to) - static_cast<ULONGLONG>(from); }

/// \p done of \p whole as a part of \p length, rounded down: all of it only if all is done.
int Part(ULONGLONG done, ULONGLONG whole, int length)
{
    if (done == whole)
        return length;
    while (whole > MAXDWORD) { // digits are lost that no pixel shows
        whole >>= 1;
        done >>= 1;
    }
    const int part = static_cast<int>(done * static_cast<ULONGLONG>(length) / whole);
    return (std::max)((std::min)(part, length - 1), 0);
}

ItemColors BarColors(CZoProgressBar::State state)
{
    if (state != CZoProgressBar::State::kFailed)
        return {::GetSysColor(COLOR_HIGHLIGHTTEXT), ::GetSysColor(COLOR_HIGHLIGHT)};
    if (CZoGlobalGDIData::IsHighContrast())
        return {::GetSysColor(COLOR_3DFACE), ::GetSysColor(COLOR_BTNTEXT)};
    return {RGB(255, 255, 255), RGB(192, 0, 0)};
}

} // namespace

// Values --------------------------------------------------------------------------------------------------------------

BOOL CZoProgressBar::SetRange(LONGLONG lower, LONGLONG upper)
{
    if (upper <= lower)
        return FALSE;
    m_nLower = lower;
    m_nUpper = upper;
    m_nPosition = lower;
    m_dwBegun = m_dwPaused = m_dwEstimated = ::GetTickCount();
    m_nRemaining = -1;
    m_nPercentTold = -1;
    OnVisibleChange();
    return TRUE;
}

bool CZoProgressBar::IsBeyond(LONGLONG by) const
{
    return by < 0 ? Distance(m_nLower, m_nPosition) < Distance(by, 0)
                  : Distance(m_nPosition, m_nUpper) < static_cast<ULONGLONG>(by);
}

LONGLONG CZoProgressBar::OffsetPosition(LONGLONG by)
{
    const LONGLONG end = by < 0 ? m_nLower : m_nUpper;
    return SetPosition(IsBeyond(by) ? end : m_nPosition + by);
}

LONGLONG CZoProgressBar::SetStep(LONGLONG step) { return std::exchange(m_nStep, step); }

LONGLONG CZoProgressBar::StepIt()
{
    if (!IsBeyond(m_nStep))
        return SetPosition(m_nPosition + m_nStep);
    const ULONGLONG range = Distance(m_nLower, m_nUpper);
    if (m_nStep < 0) {
        const ULONGLONG rest = Distance(m_nStep, 0) - Distance(m_nLower, m_nPosition);
        return SetPosition(static_cast<LONGLONG>(static_cast<ULONGLONG>(m_nUpper) - rest % range));
    }
    const ULONGLONG rest = static_cast<ULONGLONG>(m_nStep) - Distance(m_nPosition, m_nUpper);
    return SetPosition(static_cast<LONGLONG>(static_cast<ULONGLONG>(m_nLower) + rest % range));
}

int CZoProgressBar::GetPercent() const { return m_bUnknown ? -1 : GetPercent(m_nPosition); }

int CZoProgressBar::GetPercent(LONGLONG position) const
{
    return Part(Distance(m_nLower, position), Distance(m_nLower, m_nUpper), 100);
}

int CZoProgressBar::GetPixels(LONGLONG position) const
{
    const CRect area = m_hWnd != nullptr ? GetClientArea() : CRect();
    const int length = (GetStyle() & kVertical) != 0 ? area.Height() : area.Width();
    return Part(Distance(m_nLower, position), Distance(m_nLower, m_nUpper), length);
}

void CZoProgressBar::SetUnknown(BOOL isUnknown)
{
    if (m_bUnknown == isUnknown)
        return;
    m_bUnknown = isUnknown;
    m_nBlock = 0;
    RaiseEvent(EVENT_OBJECT_STATECHANGE);
    Relayout();
}

void CZoProgressBar::SetState(State state)
{
    if (m_state == state)
        return;
    const DWORD now = ::GetTickCount();
    if (m_state == State::kRunning)
        m_dwPaused = now;
    m_state = state;
    if (state == State::kRunning) { // the pause is no part of the work
        m_dwBegun += now - m_dwPaused;
        m_dwEstimated += now - m_dwPaused;
    }
    RaiseEvent(EVENT_OBJECT_STATECHANGE);
    Relayout();
}

void CZoProgressBar::SetTextMode(TextMode mode)
{
    m_textMode = mode;
    Relayout();
}

// The time that is left -----------------------------------------------------------------------------------------------

void CZoProgressBar::Estimate()
{
    const DWORD now = ::GetTickCount();
    const DWORD since = now - m_dwBegun;
    if (m_bUnknown || m_state != State::kRunning || GetPercent(m_nPosition) < kLeastPercent || since < kEstimateEach ||
        (m_nRemaining >= 0 && now - m_dwEstimated < kEstimateEach))
        return;
    const auto done = static_cast<double>(Distance(m_nLower, m_nPosition));
    const auto left = static_cast<double>(Distance(m_nPosition, m_nUpper));
    m_nRemaining = static_cast<LONGLONG>(since * (left / done));
    m_dwEstimated = now;
}

BOOL CZoProgressBar::GetRemainingTime(DWORD& seconds)
{
    Estimate();
    if (m_bUnknown || m_state != State::kRunning || m_nRemaining < 0 || m_nPosition == m_nUpper)
        return FALSE;
    const LONGLONG left = m_nRemaining - (::GetTickCount() - m_dwEstimated);
    seconds = static_cast<DWORD>((std::max)(left, LONGLONG{0}) / 1000);
    return TRUE;
}

CString CZoProgressBar::GetRemainingText()
{
    constexpr DWORD kMinute = 60, kHour = 3600;
    CString text;
    DWORD seconds = 0;
    if (!GetRemainingTime(seconds))
        return text;
    DWORD count = seconds / 5 * 5 + 5; // in steps, for nobody reads each second
    UINT id = ZO_IDS_REMAINING_SECONDS;
    if (seconds >= kHour + kHour / 2) {
        count = (seconds + kHour / 2) / kHour;
        id = ZO_IDS_REMAINING_HOURS;
    } else if (seconds >= kHour - kMinute / 2) {
        id = ZO_IDS_REMAINING_HOUR;
    } else if (seconds >= kMinute + kMinute / 2) {
        count = (seconds + kMinute / 2) / kMinute;
        id = ZO_IDS_REMAINING_MINUTES;
    } else if (count >= kMinute) {
        id = ZO_IDS_REMAINING_MINUTE;
    }
    CString format;
    if (ZoGblLoadString(id, format))
        text.Format(format, static_cast<unsigned>(count));
    return text;
}

// Looks ---------------------------------------------------------------------------------------------------------------

BOOL CZoProgressBar::PreCreateWindow(CREATESTRUCT& cs)
{
    cs.dwExStyle |= WS_EX_STATICEDGE;
    return CZoControl::PreCreateWindow(cs);
}

void CZoProgressBar::OnLayout()
{
    FindSame();
    RunTimer();
}

/// Finds the positions that look as the present one, so that SetPosition need not ask.
void CZoProgressBar::FindSame()
{
    const int pixels = GetPixels(m_nPosition);
    const int percent = GetPercent(m_nPosition);
    const auto isSame = [=, this](LONGLONG position) {
        return GetPixels(position) == pixels && GetPercent(position) == percent;
    };
    const auto last = [&](LONGLONG end) { // of the same, on the way to that end
        LONGLONG same = m_nPosition;
        if (isSame(end))
            return end;
        for (;;) {
            const bool isUp = end > same;
            const ULONGLONG half = (isUp ? Distance(same, end) : Distance(end, same)) / 2;
            if (half == 0)
                return same;
            const LONGLONG middle = static_cast<LONGLONG>(static_cast<ULONGLONG>(same) + (isUp ? half : 0 - half));
            (isSame(middle) ? same : end) = middle;
        }
    };
    m_nSameFrom = last(m_nLower);
    m_nSameTo = last(m_nUpper);
}

void CZoProgressBar::OnVisibleChange()
{
    m_nPosition = (std::max)(m_nLower, (std::min)(m_nPosition, m_nUpper));
    FindSame();
    if (m_hWnd == nullptr)
        return;
    Estimate();
    if (!m_bUnknown)
        Invalidate(FALSE);
    const int percent = GetPercent();
    const DWORD now = ::GetTickCount();
    if (percent >= 0 && percent != m_nPercentTold && (percent == 100 || now - m_dwTold >= kTellEach)) {
        m_nPercentTold = percent;
        m_dwTold = now;
        RaiseEvent(EVENT_OBJECT_VALUECHANGE);
    }
}

CRect CZoProgressBar::GetFilled() const
{
    CRect filled = GetClientArea();
    const bool isVertical = (GetStyle() & kVertical) != 0;
    const int length = isVertical ? filled.Height() : filled.Width();
    int from = 0;
    int to = GetPixels(m_nPosition);
    if (m_bUnknown) {
        const int block = (std::max)(length / 5, 1);
        const int way = (std::max)(length - block, 1);
        const int moved = m_nBlock * (std::max)(length / 40, 1) % (2 * way);
        from = moved < way ? moved : 2 * way - moved;
        to = from + block;
    } else if ((GetStyle() & kSmooth) == 0 && to < length) {
        to = to / BlockLength() * BlockLength();
    }
    if (isVertical) {
        filled.top = filled.bottom - to;
        filled.bottom -= from;
    } else {
        filled.right = filled.left + to;
        filled.left += from;
    }
    return filled;
}

/// Of a block and the gap behind it, by the bar's height as in the system's.
int CZoProgressBar::BlockLength() const
{
    const CRect area = GetClientArea();
    const int height = (GetStyle() & kVertical) != 0 ? area.Width() : area.Height();
    return (std::max)(height * 2 / 3, 1) + kGap;
}

CString CZoProgressBar::GetShownText()
{
    CString text;
    switch (m_textMode) {
    case TextMode::kPercent:
        text = PercentText();
        break;
    case TextMode::kWindow:
        GetWindowText(text);
        break;
    case TextMode::kRemaining:
        text = GetRemainingText();
        break;
    default:
        break;
    }
    return text;
}

CString CZoProgressBar::PercentText() const
{
    CString text, format;
    if (!m_bUnknown && ZoGblLoadString(ZO_IDS_PERCENT, format))
        text.Format(format, GetPercent());
    return text;
}

void CZoProgressBar::OnDraw(CDC* dc, const CRect&)
{
    const CRect area = GetClientArea();
    const CRect filled = GetFilled();
    const ItemColors ground = {::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_3DFACE)};
    const ItemColors bar = BarColors(m_state);
    const bool isDisabled = !IsWindowEnabled();
    dc->FillSolidRect(area, ground.background);
    if (m_state == State::kPaused)
        ZoDrawHatch(*dc, filled, bar.background, ground.background);
    else
        DrawBar(dc, filled, bar.background);
    const CString text = GetShownText();
    if (!text.IsEmpty()) {
        // The bar's part of the text has the bar's colours. On a hatch neither could be read: there it has a ground.
        const bool isPlain = m_state != State::kPaused;
        for (const bool isOnBar : {false, true}) {
            const int saved = dc->SaveDC();
            if (isOnBar && isPlain)
                dc->IntersectClipRect(filled);
            else if (isPlain)
                dc->ExcludeClipRect(filled);
            const ItemColors& colors = isOnBar && isPlain ? bar : ground;
            dc->SetTextColor(isDisabled ? CZoGlobalGDIData::GetDisabledColor(colors.text, colors.background)
                                        : colors.text);
            dc->SetBkColor(colors.background);
            dc->SetBkMode(isPlain ? TRANSPARENT : OPAQUE);
            CRect place = area;
            dc->DrawText(text, &place, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
            dc->RestoreDC(saved);
        }
    }
    RunTimer();
}

void CZoProgressBar::DrawBar(CDC* dc, const CRect& filled, COLORREF color) const
{
    if ((GetStyle() & kSmooth) != 0) {
        dc->FillSolidRect(filled, color);
        return;
    }
    const int length = BlockLength();
    if ((GetStyle() & kVertical) != 0) {
        for (int bottom = filled.bottom; bottom > filled.top; bottom -= length)
            dc->FillSolidRect(CRect(filled.left, (std::max)(bottom - length + kGap, static_cast<int>(filled.top)),
                                    filled.right, bottom),
                              color);
        return;
    }
    for (int left = filled.left; left < filled.right; left += length)
        dc->FillSolidRect(
            CRect(left, filled.top, (std::min)(left + length - kGap, static_cast<int>(filled.right)), filled.bottom),
            color);
}

// Screen readers and messages -----------------------------------------------------------------------------------------

BOOL CZoProgressBar::DescribePart(int part, ZoPart& description) const
{
    if (!CZoControl::DescribePart(part, description))
        return FALSE;
    description.role = ROLE_SYSTEM_PROGRESSBAR;
    description.state |= STATE_SYSTEM_READONLY | (m_bUnknown ? STATE_SYSTEM_BUSY : 0);
    description.value = PercentText();
    return TRUE;
}

/// Runs while something moves by itself and somebody can see it. Begun anew it would wait anew, so it is not.
void CZoProgressBar::RunTimer()
{
    if (m_hWnd == nullptr)
        return;
    UINT each = 0;
    if (::IsWindowVisible(m_hWnd) && m_state == State::kRunning)
        each = m_bUnknown ? kMoveEach : m_textMode == TextMode::kRemaining ? kShowEach : 0;
    if (each == m_nTimerEach)
        return;
    if (each == 0)
        ::KillTimer(m_hWnd, kTimer);
    else if (::SetTimer(m_hWnd, kTimer, each, nullptr) == 0)
        each = 0; // the next drawing tries again
    m_nTimerEach = each;
}

LRESULT CZoProgressBar::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_TIMER && wParam == kTimer) {
        RunTimer(); // it stops if nobody can see the bar; the next drawing starts it again
        if (m_nTimerEach != 0) {
            ++m_nBlock;
            Estimate();
            Invalidate(FALSE);
        }
        return 0;
    }
    if (message == WM_DESTROY)
        m_nTimerEach = 0; // it goes with the window
    return CZoControl::WindowProc(message, wParam, lParam);
}
