/// \file
/// A month to choose a day in, or a span of days.
#pragma once

#include <zogbl/control.h>

#include <chrono>

/// What the calendar's notifications and those of the calendar button tell.
struct ZoCalendarNotify {
    NMHDR header;
    SYSTEMTIME first; ///< the selected day, or the first of the span
    SYSTEMTIME last;  ///< the last of the span
    BOOL isChanged;   ///< FALSE: the act has left the selection as it was
    BOOL isChosen;    ///< FALSE: the selection was moved, or the calendar of a button closed without a choice
};

/// The user has moved the selection by keys. It is another one than before.
constexpr UINT ZON_CALENDAR_CHANGED = ZON_FIRST - 20;
/// The user has chosen: by a click on a day or on the line with today, at the end of a drag, by Space or Enter, through
/// a screen reader. The choice may be what was selected before: see isChanged.
constexpr UINT ZON_CALENDAR_CHOSEN = ZON_FIRST - 21;

/// A month of days. It has the names of months and days, the first day of the week and the rule for week numbers from
/// the user's locale; its other texts are in the user's language. Days are those from 1 January 1601 to 31 December
/// 9999. At the beginning today is selected and shown.
///
///     m_calendar.Create(WS_VISIBLE | WS_TABSTOP | CZoCalendar::kWeekNumbers, area, this, IDC_DAY);
///     m_calendar.SetRange(&today, nullptr);              // nothing before today
///     ...
///     case ZON_CALENDAR_CHANGED:                         // WM_NOTIFY: each act of the user sends one of these two
///     case ZON_CALENDAR_CHOSEN:
///         Show(reinterpret_cast<const ZoCalendarNotify*>(header)->first);
///
/// A click on the month's or the year's name opens a list of months or years. That list, the arrows beside them and the
/// wheel show another month and leave the selection as it is; nothing is notified. So in a span calendar one may click
/// on its first day, go some months on, and click on the last with Shift.
///
/// Today moves on by itself: at midnight, and within ten seconds after the clock was set. It does so at once if the
/// frame or dialog, which alone the system tells, calls SendMessageToDescendants(WM_TIMECHANGE) in its OnTimeChange.
///
/// Parts: days 1 to 42, in rows of 7, then those of Part. All members but GetIdealSize() work without a window. What
/// the program sets is not notified.
class ZOGBL_API CZoCalendar : public CZoControl {
    DECLARE_DYNAMIC(CZoCalendar)
public:
    /// Styles, beside those of windows. The numbers are those of the system's month calendar.
    enum Style : DWORD {
        kSpan = 0x02,        ///< a span of days; else one day
        kWeekNumbers = 0x04, ///< beside each row
        kNoTodayMark = 0x08, ///< no frame around today
        kNoToday = 0x10      ///< no line at the bottom that says what day today is, and selects it
    };
    static constexpr DWORD kAllStyles = kSpan | kWeekNumbers | kNoTodayMark | kNoToday;

    static constexpr int kColumns = 7;
    enum Part {
        kDays = 42,
        kPrevious, ///< arrows
        kNext,
        kMonth, ///< the names in the heading
        kYear,
        kToday ///< the line at the bottom
    };

    /// What keys do. The day that moves is the selected one, or the end of the span that was moved last.
    enum Command {
        kDayBack = 1,
        kDayOn,
        kWeekBack,
        kWeekOn,
        kMonthBack, ///< the same day of that month, or its last
        kMonthOn,
        kYearBack,
        kYearOn,
        kMonthFirst, ///< the first day of the month
        kMonthLast,
        kGoToday,
        kChoose,       ///< sends ZON_CALENDAR_CHOSEN; the others move
        kExtend = 0x40 ///< added: in a span calendar the span's other end stays; in others it is ignored
    };
    static constexpr ZoKey kKeys[] = {{VK_LEFT, ZoKey::kNone, kDayBack},
                                      {VK_RIGHT, ZoKey::kNone, kDayOn},
                                      {VK_UP, ZoKey::kNone, kWeekBack},
                                      {VK_DOWN, ZoKey::kNone, kWeekOn},
                                      {VK_PRIOR, ZoKey::kNone, kMonthBack},
                                      {VK_NEXT, ZoKey::kNone, kMonthOn},
                                      {VK_PRIOR, ZoKey::kControl, kYearBack},
                                      {VK_NEXT, ZoKey::kControl, kYearOn},
                                      {VK_SUBTRACT, ZoKey::kNone, kYearBack},
                                      {VK_ADD, ZoKey::kNone, kYearOn},
                                      {VK_OEM_MINUS, ZoKey::kNone, kYearBack},
                                      {VK_OEM_PLUS, ZoKey::kNone, kYearOn},
                                      {VK_OEM_PLUS, ZoKey::kShift, kYearOn},
                                      {VK_HOME, ZoKey::kNone, kMonthFirst},
                                      {VK_END, ZoKey::kNone, kMonthLast},
                                      {VK_HOME, ZoKey::kControl, kGoToday},
                                      {VK_SPACE, ZoKey::kNone, kChoose},
                                      {VK_RETURN, ZoKey::kNone, kChoose},
                                      {VK_LEFT, ZoKey::kShift, kDayBack | kExtend},
                                      {VK_RIGHT, ZoKey::kShift, kDayOn | kExtend},
                                      {VK_UP, ZoKey::kShift, kWeekBack | kExtend},
                                      {VK_DOWN, ZoKey::kShift, kWeekOn | kExtend},
                                      {VK_PRIOR, ZoKey::kShift, kYearBack | kExtend},
                                      {VK_NEXT, ZoKey::kShift, kYearOn | kExtend},
                                      {VK_HOME, ZoKey::kShift, kMonthFirst | kExtend},
                                      {VK_END, ZoKey::kShift, kMonthLast | kExtend}};

    CZoCalendar();
    ~CZoCalendar() override;

    // Of a SYSTEMTIME year, month and day count. What a getter returns also has its weekday; its time is 0 o'clock.

    /// Selects a day, or a span, and shows its last month. \return FALSE, changing nothing: there is no such day, it
    /// lies outside of the range, \p last lies before \p first, or the span is too long for this calendar
    BOOL SetDate(const SYSTEMTIME& day) { return SetSpan(day, day); }
    BOOL SetSpan(const SYSTEMTIME& first, const SYSTEMTIME& last);
    SYSTEMTIME GetDate() const { return GetFirst(); }
    SYSTEMTIME GetFirst() const;
    SYSTEMTIME GetLast() const; ///< without kSpan the same day

    /// The days that can be chosen; null: the first or the last day that there is. A selection outside is moved to the
    /// nearest day of the range, a span loses what lies outside.
    /// \return FALSE, changing nothing: there is no such day, or \p most lies before \p least
    BOOL SetRange(const SYSTEMTIME* least, const SYSTEMTIME* most);
    SYSTEMTIME GetLeast() const;
    SYSTEMTIME GetMost() const;
    /// Of a span: how many days it may have; any number at the beginning. A longer selection loses its last days.
    /// \return FALSE, changing nothing, if \p days is below 1
    BOOL SetLongestSpan(int days);

    /// Shows another month. \return FALSE, changing nothing, if there is none such in the range
    BOOL ShowMonth(int year, int month);
    SYSTEMTIME GetShownMonth() const; ///< its first day

    /// Marks a day, as one on which something happens: it is shown in bold with a dot, and screen readers say so.
    /// \return FALSE, changing nothing: there is no such day, or memory has run out
    BOOL MarkDay(const SYSTEMTIME& day, BOOL isMarked);
    void ClearMarks();
    /// Derived classes may answer by rules of their own. It is asked at each drawing of the day.
    virtual BOOL IsMarked(const SYSTEMTIME& day) const;

    /// The day of one of the parts 1 to 42. \return FALSE, changing nothing: there is no such day, or no such part
    BOOL GetPartDay(int part, SYSTEMTIME& day) const;

    /// The client area at which nothing is cut and nothing stretched, in pixels. At others all is stretched, and text
    /// that has no room is cut.
    CSize GetIdealSize() const;
    /// \param style of the calendar to be
    static CSize GetIdealSize(HFONT font, DWORD style);

    /// Obeys a key that the keyboard's owner got. It may send a notification.
    /// \param key VK_... of WM_KEYDOWN \return FALSE: it is none of kKeys, with the modifiers that are held down
    BOOL HandleKey(UINT key);

    int GetPartCount() const override;
    BOOL DescribePart(int part, ZoPart& description) const override;
    int FindPart(CPoint point) const override;
    int GetFocusedPart() const override; ///< 0 if the selected day is not shown
    BOOL DoPartAction(int part) override;

protected:
    void OnDraw(CDC* dc, const CRect& dirty) override;
    void OnLayout() override;
    void OnDragMove(CPoint point) override;
    void OnDragEnd(CPoint point) override;
    void OnDragUndo() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void PreSubclassWindow() override;

private:
    using Day = std::chrono::sys_days;
    /// From one day to another, which may lie before it. Keys move the second.
    struct Selection {
        Day anchor, moving;
        Day First() const { return anchor < moving ? anchor : moving; }
        Day Last() const { return anchor < moving ? moving : anchor; }
        bool Has(Day day) const { return day >= First() && day <= Last(); }
        bool operator==(const Selection&) const = default;
    };

    bool HasStyle(DWORD style) const { return m_hWnd != nullptr && (GetStyle() & style) != 0; }
    bool IsAllowed(Day day) const { return day >= m_least && day <= m_most; }
    Day Nearest(Day day) const; ///< that is allowed
    bool CanShow(Day month) const;
    bool CanDo(int part) const;
    Day DayAt(int part) const;
    int PartOf(Day day) const;

    Selection MovedTo(Day day, bool keepsAnchor) const;
    void Select(const Selection& selection, Day shown);
    void Show(Day day) { Select(m_selection, day); }
    BOOL NotifySelection(UINT code, const Selection& before);
    BOOL Choose(const Selection& selection);
    void Obey(int command);
    void Press(CPoint point, bool keepsAnchor);
    void Release();
    void Turn(int delta);
    void OpenList(int part);
    void LookAtClock();

    CRect AreaOf(int part) const;
    CRect CellArea(int row, int column) const;
    CRect Stretch(int left, int top, int right, int bottom) const;
    void InvalidatePart(int part);
    void DescribeDay(int part, ZoPart& description) const;
    void DrawHeading(CDC* dc) const;
    void DrawNames(CDC* dc) const;
    void DrawWeekNumbers(CDC* dc) const;
    void DrawDay(CDC* dc, int part) const;
    void DrawToday(CDC* dc) const;

    Selection m_selection;
    Selection m_selectionBefore; // the drag
    Day m_month;                 // the first day of the one shown
    Day m_monthBefore;
    Day m_least, m_most;
    Day m_today;
    int m_nLongestSpan;
    int m_nPressed = 0;  // the part in which a drag began, or whose list is open
    int m_nWheel = 0;    // has turned so far, of a step
    CDWordArray m_marks; // ascending; days behind the first day that there is
    // By the locale and the font:
    int m_nFirstWeekday = 0; // 0: Monday
    int m_nWeekRule = 0;
    int m_nLine = 1; // the height of a line of text
    int m_nCell = 1; // the width of a day
    int m_nPad = 1;
    HFONT m_hBold = nullptr;
};
