/// \file
/// A button that opens a calendar.
#pragma once

#include <zogbl/calendar.h>

/// The button opens the calendar, or closes it. Sent before it opens: set its date and range now, if they depend on the
/// moment. An answer other than 0: it stays closed.
constexpr UINT ZON_CALENDAR_OPENING = ZON_FIRST - 30;
/// The calendar was closed by the choice of another date than the button had. Sent with ZoCalendarNotify.
constexpr UINT ZON_CALENDAR_PICKED = ZON_FIRST - 31;
/// The calendar was closed, and the date is as it was. Sent with ZoCalendarNotify.
constexpr UINT ZON_CALENDAR_CLOSED = ZON_FIRST - 32;

/// A button that opens a calendar below itself, or above if there is no room. The calendar closes by a choice, by Esc,
/// by a click elsewhere, and if the button is moved, hidden, disabled or loses the focus, which it has all the time.
///
///     m_until.Create(WS_VISIBLE | WS_TABSTOP | CZoCalendarButton::kShowDate, area, this, IDC_UNTIL);
///     m_until.GetCalendar().SetRange(&today, nullptr);
///     m_until.SetDate(nextWeek);
///     ...
///     case ZON_CALENDAR_PICKED: // WM_NOTIFY
///         Show(reinterpret_cast<const ZoCalendarNotify*>(header)->first);
///
/// Each time that it was open, one of ZON_CALENDAR_PICKED and ZON_CALENDAR_CLOSED comes, behind the closing, also if it
/// closes because the button is destroyed.
///
/// As a part of another control: the control makes a button without kShowDate and without WS_TABSTOP as its child, and
/// calls SetKeyboardOwner(m_hWnd) for it. Then the button never takes the focus; the calendar opens below that control
/// and closes if that control loses the focus.
///
///   - The control passes each WM_KEYDOWN to HandleKey first. It passes each WM_SYSKEYDOWN to the system, which would
///     open the menu at the end of Alt+Down else, and then to HandleKey. While IsOpen() it passes WM_MOUSEWHEEL to the
///     button's window.
///   - At ZON_CALENDAR_OPENING it calls SetDate with its own date, at ZON_CALENDAR_PICKED it takes the new one.
///   - While it is open, the control answers WM_GETDLGCODE by ForDialog(lParam), so that a dialog leaves it Enter and
///     Esc.
class ZOGBL_API CZoCalendarButton : public CZoControl {
    DECLARE_DYNAMIC(CZoCalendarButton)
public:
    /// Styles, beside those of windows and of CZoCalendar: those are the calendar's.
    enum Style : DWORD {
        kShowDate = 0x100 ///< the button shows the date; else an arrow alone
    };
    enum Command { kToggle = 1, kCancel, kOpen };
    /// Besides, Alt+Down and Alt+Up toggle. While it is open, the keys of CZoCalendar are obeyed; of those Enter and
    /// Space choose.
    static constexpr ZoKey kKeys[] = {{VK_F4, ZoKey::kNone, kToggle},
                                      {VK_SPACE, ZoKey::kNone, kOpen},     // if it is closed
                                      {VK_ESCAPE, ZoKey::kNone, kCancel}}; // if it is open

    CZoCalendarButton();
    ~CZoCalendarButton() override;

    /// What opens. Its range, longest span and marks belong to the button's date, too. Its selection is the button's
    /// date; while it is open, it may be another.
    CZoCalendar& GetCalendar() { return m_calendar; }

    /// As those of CZoCalendar. While it is open, Set changes what stays if nothing is chosen, and what is selected.
    BOOL SetDate(const SYSTEMTIME& day) { return SetSpan(day, day); }
    BOOL SetSpan(const SYSTEMTIME& first, const SYSTEMTIME& last);
    SYSTEMTIME GetDate() const { return GetFirst(); }
    SYSTEMTIME GetFirst() const;
    SYSTEMTIME GetLast() const;

    /// Opens the calendar as a click does, with ZON_CALENDAR_OPENING. \return FALSE: it is not open now, or the button
    /// is gone
    BOOL Open();
    void Close(); ///< without a choice, with ZON_CALENDAR_CLOSED; nothing if it is closed
    BOOL IsOpen() const { return m_isOpen; }

    /// Obeys a key that its keyboard's owner got. It may close the calendar and send its notifications.
    /// \param message WM_KEYDOWN or WM_SYSKEYDOWN \return FALSE: it is no key of the button or of its open calendar
    BOOL HandleKey(UINT message, WPARAM key);
    /// The answer to WM_GETDLGCODE, by the message that the dialog asks for.
    LRESULT ForDialog(LPARAM message) const;

    CSize GetIdealSize() const; ///< at which nothing is cut; of the window, in pixels

    BOOL DescribePart(int part, ZoPart& description) const override;
    BOOL DoPartAction(int part) override;

protected:
    void OnDraw(CDC* dc, const CRect& dirty) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    class Popup;
    friend class Popup;

    CString DateText(DWORD format) const;
    CString LabelText() const;
    void Toggle();
    void OnClosed();

    CZoCalendar m_calendar;
    Popup* m_pPopup = nullptr; // null until it is opened for the first time
    BOOL m_isOpen = FALSE;
    BOOL m_isChosen = FALSE;
    SYSTEMTIME m_first = {}; // while it is open: what stays if nothing is chosen
    SYSTEMTIME m_last = {};
};
