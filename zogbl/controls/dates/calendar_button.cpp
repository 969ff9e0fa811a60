#include <zogbl/calendar_button.h>

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/resource_ids.h>

#include "calendar_texts.h"
#include "controls/base/popup.h"
#include "controls/drawing/arrow.h"
#include "controls/drawing/item_painting.h"

#include "common/without_throwing.h"

#include <new>
#include <utility>

#include <oleacc.h>

IMPLEMENT_DYNAMIC(CZoCalendarButton, CZoControl)

/// The calendar's window, while it is open.
class CZoCalendarButton::Popup final : public ControlPopup::Client {
public:
    explicit Popup(CZoCalendarButton& button) : m_button(button) {}
    ~Popup() = default;

    ControlPopup m_window{*this};

private:
    void OnPopupClosed() override { m_button.OnClosed(); }

    CZoCalendarButton& m_button;
};

namespace {

/// Around text and arrow, inside the edge.
int Margin() { return CZoGlobalGDIData::Scale(3); }
int ArrowWidth() { return CZoGlobalGDIData::Scale(7) + 2 * Margin(); }

bool IsSameDay(const SYSTEMTIME& one, const SYSTEMTIME& other)
{
    return one.wYear == other.wYear && one.wMonth == other.wMonth && one.wDay == other.wDay;
}

} // namespace

CZoCalendarButton::CZoCalendarButton() = default;

CZoCalendarButton::~CZoCalendarButton()
{
    DestroyWindow(); // while the overrides of this class still answer
    delete m_pPopup;
}

// The date ------------------------------------------------------------------------------------------------------------

SYSTEMTIME CZoCalendarButton::GetFirst() const { return m_isOpen ? m_first : m_calendar.GetFirst(); }
SYSTEMTIME CZoCalendarButton::GetLast() const { return m_isOpen ? m_last : m_calendar.GetLast(); }

BOOL CZoCalendarButton::SetSpan(const SYSTEMTIME& first, const SYSTEMTIME& last)
{
    const bool isSpan = m_hWnd == nullptr || (GetStyle() & CZoCalendar::kSpan) != 0;
    const SYSTEMTIME firstBefore = GetFirst();
    const SYSTEMTIME lastBefore = GetLast();
    if ((!isSpan && !IsSameDay(first, last)) || !m_calendar.SetSpan(first, last))
        return FALSE;
    m_first = m_calendar.GetFirst();
    m_last = m_calendar.GetLast();
    if (m_hWnd != nullptr && !(IsSameDay(m_first, firstBefore) && IsSameDay(m_last, lastBefore))) {
        Invalidate(FALSE);
        RaiseEvent(EVENT_OBJECT_NAMECHANGE);
    }
    return TRUE;
}

CString CZoCalendarButton::DateText(DWORD format) const
{
    return SpanText(DayOf(GetFirst()), DayOf(GetLast()), format);
}

// Opening and closing -------------------------------------------------------------------------------------------------

BOOL CZoCalendarButton::Open()
{
    if (m_isOpen || m_hWnd == nullptr)
        return m_isOpen;
    const Life life(this);
    TakeFocus();
    LRESULT refused = 0;
    if (life.IsOver() || !HasFocus() || !Notify(ZON_CALENDAR_OPENING, nullptr, &refused) || refused != 0 || m_isOpen)
        return !life.IsOver() && m_isOpen;
    if (m_pPopup == nullptr)
        m_pPopup = new (std::nothrow) Popup(*this);
    if (m_pPopup == nullptr)
        return FALSE;
    m_first = m_calendar.GetFirst();
    m_last = m_calendar.GetLast();
    m_calendar.SetSpan(m_first, m_last); // shows its month
    const DWORD style = GetStyle() & CZoCalendar::kAllStyles;
    m_isOpen = m_pPopup->m_window.Open(*this, m_calendar, style, CZoCalendar::GetIdealSize(GetFontHandle(), style),
                                       GetKeyboardOwner());
    if (!m_isOpen)
        return FALSE;
    WithoutThrowing([this] { m_calendar.SetWindowText(LabelText()); });
    Invalidate(FALSE);
    RaiseEvent(EVENT_OBJECT_STATECHANGE);
    return TRUE;
}

void CZoCalendarButton::Close()
{
    if (m_isOpen)
        m_pPopup->m_window.Close();
}

void CZoCalendarButton::Toggle()
{
    if (m_isOpen)
        Close();
    else
        Open();
}

/// The calendar has no window any more.
void CZoCalendarButton::OnClosed()
{
    const BOOL isChosen = std::exchange(m_isChosen, FALSE);
    if (!isChosen)
        m_calendar.SetSpan(m_first, m_last);
    m_isOpen = FALSE;
    ZoCalendarNotify notify = {};
    notify.first = m_calendar.GetFirst();
    notify.last = m_calendar.GetLast();
    const bool isOther = !IsSameDay(notify.first, m_first) || !IsSameDay(notify.last, m_last);
    notify.isChanged = isChosen && isOther; // else a new range has moved it
    notify.isChosen = isChosen;
    Invalidate(FALSE);
    RaiseEvent(EVENT_OBJECT_STATECHANGE);
    if (isOther)
        RaiseEvent(EVENT_OBJECT_NAMECHANGE);
    if (HasFocus() && GetKeyboardOwner() == nullptr)
        RaiseEvent(EVENT_OBJECT_FOCUS); // it was in the calendar
    Notify(notify.isChanged ? ZON_CALENDAR_PICKED : ZON_CALENDAR_CLOSED, &notify.header);
}

BOOL CZoCalendarButton::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (!m_isOpen || header->hwndFrom != m_calendar.m_hWnd)
        return CZoControl::OnNotify(wParam, lParam, result);
    if (header->code == ZON_CALENDAR_CHOSEN) {
        m_isChosen = TRUE;
        Close();
    }
    return TRUE; // the button may be gone
}

// Keys ----------------------------------------------------------------------------------------------------------------

BOOL CZoCalendarButton::HandleKey(UINT message, WPARAM key)
{
    if (message == WM_SYSKEYDOWN) {
        if (key != VK_DOWN && key != VK_UP)
            return FALSE;
        Toggle();
        return TRUE;
    }
    switch (CommandOf(kKeys, static_cast<UINT>(key))) {
    case kToggle:
        Toggle();
        return TRUE;
    case kOpen:
        if (m_isOpen)
            break;
        Open();
        return TRUE;
    case kCancel:
        if (!m_isOpen)
            break;
        Close();
        return TRUE;
    default:
        break;
    }
    return m_isOpen && m_calendar.HandleKey(static_cast<UINT>(key));
}

LRESULT CZoCalendarButton::ForDialog(LPARAM message) const
{
    if (!m_isOpen)
        return 0;
    const auto* asked = reinterpret_cast<const MSG*>(message);
    const bool isTab = asked != nullptr && asked->message == WM_KEYDOWN && asked->wParam == VK_TAB;
    return isTab ? DLGC_WANTARROWS | DLGC_WANTCHARS : DLGC_WANTALLKEYS | DLGC_WANTCHARS;
}

LRESULT CZoCalendarButton::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_GETDLGCODE:
        return ForDialog(lParam);
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        Toggle();
        return 0;
    case WM_KEYDOWN:
        if (HandleKey(message, wParam))
            return 0;
        break;
    case WM_SYSKEYDOWN: {
        // The system must see it, too: Alt alone would open the menu.
        const Life life(this);
        const LRESULT result = CZoControl::WindowProc(message, wParam, lParam);
        if (!life.IsOver())
            HandleKey(message, wParam);
        return result;
    }
    case WM_MOUSEWHEEL:
        if (m_isOpen)
            return m_calendar.SendMessage(message, wParam, lParam);
        break;
    case WM_ENABLE:
    case WM_SHOWWINDOW:
        if (wParam)
            break;
        [[fallthrough]];
    case WM_KILLFOCUS:
    case WM_CANCELMODE:
    case WM_DESTROY: {
        const Life life(this);
        Close();
        if (life.IsOver())
            return 0;
        break;
    }
    default:
        break;
    }
    return CZoControl::WindowProc(message, wParam, lParam);
}

// Looks ---------------------------------------------------------------------------------------------------------------

CSize CZoCalendarButton::GetIdealSize() const
{
    CSize text(0, 0);
    WithoutThrowing([&] {
        WindowFontDC dc(m_hWnd);
        const HGDIOBJ before = ::SelectObject(dc, GetFontHandle());
        text = CSize(0, dc.GetMetrics().tmHeight);
        if ((GetStyle() & kShowDate) != 0)
            text.cx = dc.GetTextExtent(DateText(DATE_SHORTDATE)).cx + Margin();
        ::SelectObject(dc, before);
    });
    return {text.cx + ArrowWidth() + 2 * ZO_EDGE_WIDTH, text.cy + 2 * Margin() + 2 * ZO_EDGE_WIDTH};
}

void CZoCalendarButton::OnDraw(CDC* dc, const CRect&)
{
    const bool isEnabled = IsWindowEnabled() != FALSE;
    const ItemColors colors = {::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_3DFACE)};
    CRect area = GetClientArea();
    dc->FillSolidRect(area, colors.background);
    ZoDrawEdge(*dc, area, m_isOpen ? ZoEdge::kSunken : ZoEdge::kRaised);
    area.DeflateRect(ZO_EDGE_WIDTH, ZO_EDGE_WIDTH);
    const bool showsDate = (GetStyle() & kShowDate) != 0;
    CRect arrow = area;
    if (showsDate)
        arrow.left = arrow.right - ArrowWidth();
    DrawArrow(dc, arrow, ArrowTo::kDown,
              isEnabled ? colors.text : CZoGlobalGDIData::GetDisabledColor(colors.text, colors.background));
    if (showsDate) {
        const CString text = DateText(DATE_SHORTDATE);
        const CRect place(area.left + Margin(), area.top, arrow.left, area.bottom);
        dc->SetTextColor(colors.text);
        if (isEnabled)
            ZoDrawShortenedText(*dc, place, text, DT_LEFT | DT_VCENTER, ZoShorten::kEnd);
        else
            ZoDrawDisabledText(*dc, place, ZoShortenText(*dc, text, place.Width(), ZoShorten::kEnd), -1,
                               DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    }
    if (IsFocusShown() && GetKeyboardOwner() == nullptr) {
        area.DeflateRect(1, 1);
        const SelectedColors pair(*dc, colors);
        ZoDrawFocus(*dc, area);
    }
}

// Screen readers ------------------------------------------------------------------------------------------------------

/// The label before the button, or its window's text.
CString CZoCalendarButton::LabelText() const
{
    ZoPart label;
    CZoControl::DescribePart(0, label);
    return label.name;
}

BOOL CZoCalendarButton::DescribePart(int part, ZoPart& description) const
{
    if (!CZoControl::DescribePart(part, description))
        return FALSE;
    description.role = ROLE_SYSTEM_BUTTONDROPDOWN;
    description.state |= STATE_SYSTEM_HASPOPUP | (m_isOpen ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED);
    const CString date = DateText(DATE_LONGDATE);
    description.name += (description.name.IsEmpty() ? "" : " ") + date;
    description.action = CalendarText(m_isOpen ? ZO_IDS_CALENDAR_CLOSE : ZO_IDS_CALENDAR_OPEN);
    return TRUE;
}

BOOL CZoCalendarButton::DoPartAction(int part)
{
    if (part != 0)
        return FALSE;
    Toggle();
    return TRUE;
}
