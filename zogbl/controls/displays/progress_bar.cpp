// Progress bars: values, the time that is left, screen readers.
#include <zogbl/progress_bar.h>

#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

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
    return Part(Distance(m_nLower, position), Distance(m_nLower, m_nUpper), m_nLength);
}

void CZoProgressBar::SetUnknown(BOOL isUnknown)
{
    if (m_bUnknown == (isUnknown != FALSE))
        return;
    m_bUnknown = isUnknown != FALSE;
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
    RaiseEvent(EVENT_OBJECT_DESCRIPTIONCHANGE);
    Relayout();
}

void CZoProgressBar::SetTextMode(TextMode mode)
{
    m_textMode = mode;
    Relayout();
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
    UpdateShown();
    TellReaders();
    if (IsUntold())
        RunTimer();
}

/// Whether screen readers know another percentage.
bool CZoProgressBar::IsUntold() const { return !m_bUnknown && GetPercent() != m_nPercentTold; }

void CZoProgressBar::TellReaders()
{
    const DWORD now = ::GetTickCount();
    if (!IsUntold() || (GetPercent() != 100 && now - m_dwTold < kTellEach))
        return;
    m_nPercentTold = GetPercent();
    m_dwTold = now;
    RaiseEvent(EVENT_OBJECT_VALUECHANGE);
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
    if (m_bUnknown || m_state != State::kRunning || m_nRemaining < 0 || m_nPosition == m_nUpper ||
        GetPercent(m_nPosition) < kLeastPercent)
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

// Screen readers and messages -----------------------------------------------------------------------------------------

BOOL CZoProgressBar::DescribePart(int part, ZoPart& description) const
{
    if (!CZoControl::DescribePart(part, description))
        return FALSE;
    description.role = ROLE_SYSTEM_PROGRESSBAR;
    description.state |= STATE_SYSTEM_READONLY | (m_bUnknown ? STATE_SYSTEM_BUSY : 0);
    description.value = PercentText();
    if (m_state != State::kRunning)
        ZoGblLoadString(m_state == State::kPaused ? ZO_IDS_PROGRESS_PAUSED : ZO_IDS_PROGRESS_FAILED,
                        description.description);
    else if (m_textMode == TextMode::kRemaining)
        description.description = m_strText;
    return TRUE;
}

/// Runs while something moves by itself and somebody can see it. Begun anew it would wait anew, so it is not.
void CZoProgressBar::RunTimer()
{
    if (m_hWnd == nullptr)
        return;
    UINT each = 0;
    if (::IsWindowVisible(m_hWnd) && IsUntold())
        each = kTellEach;
    else if (::IsWindowVisible(m_hWnd) && m_state == State::kRunning)
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
        TellReaders();
        RunTimer(); // it stops if nobody can see the bar; the next drawing starts it again
        if (m_nTimerEach != 0) {
            ++m_nBlock;
            UpdateShown();
        }
        return 0;
    }
    if (message == WM_DESTROY)
        m_nTimerEach = 0; // it goes with the window
    const LRESULT result = CZoControl::WindowProc(message, wParam, lParam);
    if (message == WM_SETTEXT)
        UpdateShown();
    return result;
}
