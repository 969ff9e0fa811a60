#include "date_time_act.h"

#include <algorithm>
#include <climits>
#include <utility>

namespace {

constexpr UINT_PTR kTimer = 1;                   // while the spin button is held down
constexpr UINT kFirstStep = 400, kNextStep = 80; // milliseconds

} // namespace

// Mouse ---------------------------------------------------------------------------------------------------------------

int CZoDateTimeWnd::PieceNear(CPoint point) const
{
    int nearest = m_fields.GetFirst();
    int least = INT_MAX;
    for (int i = 0; i < m_fields.GetCount(); ++i) {
        const CRect area = AreaOfPiece(i);
        const int distance =
            point.x < area.left ? area.left - point.x : (std::max)(static_cast<int>(point.x - area.right), 0);
        if (!m_fields.IsField(i) || distance >= least)
            continue;
        least = distance;
        nearest = i;
    }
    return nearest;
}

void CZoDateTimeWnd::Press(CPoint point)
{
    const Life life(this);
    const int part = FindPart(point);
    const int spin = SpinPart();
    const bool isSpin = spin != 0 && part >= spin;
    const bool isCheck = part != 0 && part == CheckPart();
    if (!isSpin && !isCheck && !IsNoneShown() && !Act([&] { m_fields.MoveTo(PieceNear(point)); }))
        return;
    m_isClicked = TRUE; // the focus stays at that field
    TakeFocus();
    if (life.IsOver() || m_hWnd == nullptr)
        return;
    m_isClicked = FALSE;
    if (isCheck) {
        SetMark(m_isNone);
    } else if (isSpin) {
        if (BeginDrag()) {
            m_nPressed = part;
            m_isOver = TRUE;
            SetTimer(kTimer, kFirstStep);
            InvalidateRect(ButtonArea(), FALSE);
        }
        Obey(part == spin ? kUp : kDown);
    }
}

void CZoDateTimeWnd::OnDragMove(CPoint point)
{
    if (std::exchange(m_isOver, AreaOf(m_nPressed).PtInRect(point)) != m_isOver)
        InvalidateRect(ButtonArea(), FALSE);
}

void CZoDateTimeWnd::OnDragEnd(CPoint) { StopSpin(); }
void CZoDateTimeWnd::OnDragUndo() { StopSpin(); } // each step has been told, and stays

void CZoDateTimeWnd::StopSpin()
{
    KillTimer(kTimer);
    m_nPressed = 0;
    InvalidateRect(ButtonArea(), FALSE);
}

void CZoDateTimeWnd::OnWheel(int delta)
{
    m_nWheel += delta;
    const int steps = m_nWheel / WHEEL_DELTA;
    m_nWheel %= WHEEL_DELTA;
    if (steps != 0 && IsNoneShown())
        SetMark(TRUE);
    else if (steps != 0)
        Act([=, this] { m_fields.Step(steps); });
}

// The calendar --------------------------------------------------------------------------------------------------------

/// \return what the button gets for an answer
BOOL CZoDateTimeWnd::OnCalendar(const NMHDR& header)
{
    const auto& notify = reinterpret_cast<const ZoCalendarNotify&>(header); // but for the opening
    switch (header.code) {
    case ZON_CALENDAR_OPENING:
        if (!Settle() || !Notify(ZON_DATE_TIME_DROPDOWN))
            return TRUE;
        m_button.GetCalendar().SetRange(&m_fields.GetLeast(), &m_fields.GetMost());
        m_button.SetDate(m_fields.GetTime());
        return FALSE;
    case ZON_CALENDAR_PICKED:
    case ZON_CALENDAR_CLOSED:
        if (HasFocus())
            RaiseEvent(EVENT_OBJECT_FOCUS, GetFocusedPart());
        if (notify.isChosen && !Act([&] {
                SYSTEMTIME time = m_fields.GetTime();
                time.wYear = notify.first.wYear;
                time.wMonth = notify.first.wMonth;
                time.wDay = notify.first.wDay;
                m_fields.Choose(time);
            }))
            return FALSE;
        Notify(ZON_DATE_TIME_CLOSEUP);
        return FALSE;
    default:
        return FALSE;
    }
}

BOOL CZoDateTimeWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (m_button.m_hWnd == nullptr || header->hwndFrom != m_button.m_hWnd)
        return CZoControl::OnNotify(wParam, lParam, result);
    *result = OnCalendar(*header);
    return TRUE;
}

// Messages ------------------------------------------------------------------------------------------------------------

BOOL CZoDateTimeWnd::DoPartAction(int part)
{
    const int piece = PieceOfPart(part);
    if (piece >= 0) {
        const Life life(this);
        if (Act([=, this] { m_fields.MoveTo(piece); })) {
            m_isClicked = TRUE;
            TakeFocus();
        }
        if (!life.IsOver())
            m_isClicked = FALSE;
        return TRUE;
    }
    if (part <= 0 || part > GetPartCount())
        return FALSE;
    if (part == CheckPart())
        SetMark(m_isNone);
    else
        Obey(part == SpinPart() ? kUp : kDown);
    return TRUE;
}

LRESULT CZoDateTimeWnd::OnDialogAsks(const MSG* message)
{
    LRESULT code = DLGC_WANTARROWS | DLGC_WANTCHARS;
    if (m_button.IsOpen())
        return code | m_button.ForDialog(reinterpret_cast<LPARAM>(message));
    if (message == nullptr || message->message != WM_KEYDOWN)
        return code;
    if (message->wParam == VK_ESCAPE && IsWaiting())
        code |= DLGC_WANTMESSAGE; // it takes back, and does not close the dialog
    else if (message->wParam == VK_RETURN)
        Settle(); // the dialog may end, and the focus stays here
    return code;
}

LRESULT CZoDateTimeWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_GETDLGCODE:
        return OnDialogAsks(reinterpret_cast<const MSG*>(lParam));
    case WM_KEYDOWN:
        OnKey(message, wParam);
        return 0;
    case WM_SYSKEYDOWN: {
        const Life life(this);
        const LRESULT result = CZoControl::WindowProc(message, wParam, lParam); // Alt alone opens the menu
        if (!life.IsOver())
            OnKey(message, wParam);
        return result;
    }
    case WM_CHAR:
        OnCharacter(static_cast<char>(wParam));
        return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        Press(CPoint(lParam));
        return 0;
    case WM_MOUSEWHEEL:
        if (m_button.IsOpen())
            return m_button.SendMessage(message, wParam, lParam);
        OnWheel(static_cast<short>(HIWORD(wParam)));
        return 0;
    case WM_TIMER:
        if (wParam != kTimer || m_nPressed == 0)
            break;
        SetTimer(kTimer, kNextStep);
        if (m_isOver)
            Obey(m_nPressed == SpinPart() ? kUp : kDown);
        return 0;
    case WM_COPY:
        CopyText();
        return 0;
    case WM_PASTE:
        PasteText();
        return 0;
    case WM_ENABLE:
        if (m_button.m_hWnd != nullptr)
            m_button.EnableWindow(static_cast<BOOL>(wParam));
        break;
    case WM_SETFOCUS:
        m_lead = '\0';
        m_areAllSelected = FALSE;
        if (!m_isClicked)
            m_fields.MoveTo(m_fields.GetFirst());
        break;
    case WM_KILLFOCUS:
        if (!Settle())
            return 0;
        break;
    default:
        break;
    }
    return CZoControl::WindowProc(message, wParam, lParam);
}
