/// \file
/// A field for a date or a time.
#pragma once

#include <zogbl/calendar_button.h>
#include <zogbl/date_time_fields.h>

/// What ZON_DATE_TIME_CHANGED tells.
struct ZoDateTimeChange {
    NMHDR header;
    SYSTEMTIME time; ///< the value now, also if there is none
    BOOL isNone;     ///< there is no date: the check box is off
    BOOL isClamped;  ///< What was typed is no such date, as 31.04., or not in the range: this is the nearest.
};

/// The user has given another date or time, or none. It comes once an act: a field typed to its end and left, a step,
/// a choice, a paste.
constexpr UINT ZON_DATE_TIME_CHANGED = ZON_FIRST - 40;
/// The calendar opens, or was closed. If a date was chosen, ZON_DATE_TIME_CHANGED has come before.
constexpr UINT ZON_DATE_TIME_DROPDOWN = ZON_FIRST - 41;
constexpr UINT ZON_DATE_TIME_CLOSEUP = ZON_FIRST - 42;

/// A date, a time or both, in fields that are typed, or moved by keys, the wheel, a spin button or a calendar. The
/// fields stand in the order of a format, from left to right.
///
///     m_due.Create(WS_VISIBLE | WS_TABSTOP | CZoDateTimeWnd::kShowNone, area, this, IDC_DUE);
///     m_due.SetRange(&today, nullptr);
///     ...
///     case ZON_DATE_TIME_CHANGED: // WM_NOTIFY
///         Show(reinterpret_cast<const ZoDateTimeChange*>(header)->time);
///
/// The value is a date that exists, within the range, at every moment. A field that is typed may wait for the others:
/// see CZoDateTimeFields. What waits is settled when the last field or the control is left, and by Enter in a dialog;
/// Esc takes it back.
///
/// In a dialog template it wants the extended style WS_EX_CLIENTEDGE; Create gives it. At the beginning it has the
/// present moment. What the program sets is not notified. Keyboard focus begins at the first field.
///
/// Parts: the fields that can be typed, in their order, from 1; then the check box, if it has one; then the upper and
/// the lower half of the spin button, if it has one. The calendar's button is a window of its own.
class ZOGBL_API CZoDateTimeWnd : public CZoControl {
    DECLARE_DYNAMIC(CZoDateTimeWnd)
public:
    /// Styles, beside those of windows. The numbers are those of the system's date picker.
    enum Style : DWORD {
        kShortDate = 0x00, ///< in the user's own format, as the next two
        kSpin = 0x01,      ///< a spin button; else, if there is a date, a button that opens a calendar
        kShowNone = 0x02,  ///< a check box, without whose mark there is no date; if it goes, there is one
        kLongDate = 0x04,
        kTime = 0x09, ///< with a spin button
    };
    enum Command {
        kPrevious = 1,
        kNext,
        kUp,
        kDown,
        kLeast,
        kMost,
        kTakeBack,
        kDeleteLast,
        kNone,
        kCopy,
        kPaste,
        kAll
    };
    /// Besides: digits, letters of names and what stands between the fields; "+" and "-", if they do not stand there,
    /// step; Space switches the check box. F4, Alt+Down open the calendar, which then obeys the keys of
    /// CZoCalendarButton. At both ends Left and Right go around.
    static constexpr ZoKey kKeys[] = {
        {VK_LEFT, ZoKey::kNone, kPrevious},   {VK_RIGHT, ZoKey::kNone, kNext},      {VK_UP, ZoKey::kNone, kUp},
        {VK_DOWN, ZoKey::kNone, kDown},       {VK_HOME, ZoKey::kNone, kLeast},      {VK_END, ZoKey::kNone, kMost},
        {VK_ESCAPE, ZoKey::kNone, kTakeBack}, {VK_BACK, ZoKey::kNone, kDeleteLast}, {VK_DELETE, ZoKey::kNone, kNone},
        {'C', ZoKey::kControl, kCopy},        {VK_INSERT, ZoKey::kControl, kCopy},  {'V', ZoKey::kControl, kPaste},
        {VK_INSERT, ZoKey::kShift, kPaste},   {'A', ZoKey::kControl, kAll}};

    /// All members but GetIdealSize work without a window; then the format of the style is the short date.

    /// \param format as GetDateFormat and GetTimeFormat take it, at most 255 bytes; null: that of the style, which
    /// follows the user's settings \return FALSE, changing nothing: it is too long, or has no field that can be typed
    BOOL SetFormat(LPCSTR format);
    LPCSTR GetFormat() const { return m_fields.GetFormat(); }

    /// A field that waits is dropped. \return FALSE, changing nothing: there is no such date, or it lies outside of the
    /// range
    BOOL SetTime(const SYSTEMTIME& time);
    /// \return FALSE: there is no date; \p time is the one that comes with the mark of the check box
    BOOL GetTime(SYSTEMTIME& time) const;
    BOOL SetNone(); ///< \return FALSE: it has no check box
    BOOL IsNone() const { return m_isNone; }
    /// A value outside, that of the beginning too, becomes the nearest one. Where the format has no time, whole days
    /// count.
    /// \param least, most null: no bound \return FALSE, changing nothing: there is no such date, or \p most lies before
    /// \p least
    BOOL SetRange(const SYSTEMTIME* least, const SYSTEMTIME* most);
    const SYSTEMTIME& GetLeast() const { return m_fields.GetLeast(); }
    const SYSTEMTIME& GetMost() const { return m_fields.GetMost(); }
    /// What stands there if there is no date. \param text at most 79 bytes of it; null: "No date" or "No time", in the
    /// user's language
    void SetNoneText(LPCSTR text);

    CString GetShownText() const; ///< as the user sees it. Throws CMemoryException*
    BOOL IsWaiting() const { return m_fields.IsWaiting(); }
    /// Settles what waits, as if the user left the control. \return FALSE: the control is gone
    BOOL Settle();
    /// The whole text, and a date as text: see CZoDateTimeFields::Paste. \return FALSE: nothing has changed; for
    /// PasteText also if the control is gone
    BOOL CopyText() const;
    BOOL PasteText();

    CZoCalendarButton& GetButton() { return m_button; } ///< for the looks of its calendar
    /// Of the window, in pixels, at which no date is cut.
    CSize GetIdealSize() const;

    int GetPartCount() const override;
    BOOL DescribePart(int part, ZoPart& description) const override;
    int FindPart(CPoint point) const override;
    int GetFocusedPart() const override;
    BOOL DoPartAction(int part) override;

protected:
    BOOL PreCreateWindow(CREATESTRUCT& cs) override; ///< gives it a sunken edge
    void PreSubclassWindow() override;
    void OnDraw(CDC* dc, const CRect& dirty) override;
    void OnLayout() override;
    void OnReloadTexts() override;
    void OnDragMove(CPoint point) override;
    void OnDragEnd(CPoint point) override;
    void OnDragUndo() override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Moment;

    bool HasStyle(DWORD style) const;
    bool HasMark() const { return HasStyle(kShowNone); }
    int FieldCount() const;
    int PartOfPiece(int piece) const;
    int PieceOfPart(int part) const;
    int CheckPart() const;
    int SpinPart() const;
    bool IsNoneShown() const { return m_isNone && !m_fields.IsWaiting(); }
    void FollowStyle();
    CRect ButtonArea() const;
    CRect CheckArea() const;
    CRect TextArea() const;
    CRect AreaOf(int part) const;
    CRect AreaOfPiece(int piece) const;
    int PieceNear(CPoint point) const;
    void Measure();
    CString NoneText() const;
    void DrawFields(CDC* dc) const;

    bool Show(const Moment& before);
    BOOL Tell(const Moment& before);
    template <class ACT> BOOL Act(ACT act);
    BOOL SetMark(BOOL isSet);
    BOOL Obey(int command);
    void OnCharacter(char character);
    void Press(CPoint point);
    void StopSpin();
    void OnWheel(int delta);
    void OnKey(UINT message, WPARAM key);
    LRESULT OnDialogAsks(const MSG* message);
    BOOL OnCalendar(const NMHDR& header);

    CZoDateTimeFields m_fields;
    CZoCalendarButton m_button;
    char m_szFormat[CZoDateTimeFields::kFormatSize] = ""; // empty: that of the style
    char m_szNone[80] = "";                               // empty: the language's
    BOOL m_isClicked = FALSE;                             // the focus comes by a click on a field
    BOOL m_isKeyDone = FALSE;                             // the character of the key means nothing more
    BOOL m_isNone = FALSE;
    BOOL m_areAllSelected = FALSE;
    char m_lead = '\0';                                   // of a character of two bytes, until the second comes
    int m_nWheel = 0;                                     // of a step of the wheel
    int m_nPressed = 0;                                   // the half of the spin button that is held down
    BOOL m_isOver = FALSE;                                // the mouse is over it
    int m_line = 0;                                       // the height of a line of text
    int m_edges[CZoDateTimeFields::kMostPieces + 1] = {}; // where the pieces begin and end, from the first one's
};
