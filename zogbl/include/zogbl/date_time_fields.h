/// \file
/// A date or a time in fields, while it is typed.
#pragma once

#include <zogbl/export.h>

#include <windows.h>

/// A date, a time or both, in the fields of a format, without a window. CZoDateTimeWnd shows one.
///
/// The value is a date that exists, within the range, at every moment. A field that is typed may wait for the others:
/// it is shown as typed, and the value stays until all together are such a date. So 31.03. can be typed over 07.04.
/// When the last field is left, or by Settle, the nearest date is taken.
///
///     CZoDateTimeFields fields;
///     fields.SetFormat("dd.MM.yyyy", LOCALE_USER_DEFAULT);
///     for (LPCSTR typed : {"3", "1", "0", "3"})   // the value changes once
///         fields.Type(typed);
///
/// Years are those of the Gregorian calendar, 1601 to 9999. Texts are in the system's ANSI code page.
class ZOGBL_API CZoDateTimeFields {
public:
    enum class Kind : BYTE {
        kText, ///< between the fields
        kYear,
        kMonth,
        kDay,
        kHour,
        kHour12,
        kMinute,
        kSecond,
        kHalf,    ///< of the day: AM or PM
        kWeekday, ///< this and the era follow the date, and cannot be typed
        kEra
    };
    static constexpr int kFormatSize = 256; ///< bytes of the longest format, its terminator included
    static constexpr int kMostPieces = 40;  ///< fields, and texts between them
    static constexpr int kTextSize = 256;   ///< bytes of the longest piece, its terminator included
    static constexpr int kWholeSize = 2048; ///< the same of the whole text, which is cut there

    CZoDateTimeFields(); ///< now, in the user's short date

    /// \param format as GetDateFormat and GetTimeFormat take it, of dates, times or both. Of each kind of field the
    /// first one can be typed, and further ones follow it \param locale of the names
    /// \return FALSE, changing nothing: it is null, too long, or has no field that can be typed
    BOOL SetFormat(LPCSTR format, LCID locale);
    LPCSTR GetFormat() const { return m_format; }
    BOOL HasDate() const { return m_hasDate; } ///< year, month or day
    BOOL HasTime() const { return m_hasTime; } ///< hour, minute or second

    // Pieces: fields and the texts between them, from 0. Other numbers are texts without a character

    int GetCount() const { return m_layout.count; }
    Kind GetKind(int piece) const { return PieceAt(piece).kind; }
    BOOL IsField(int piece) const { return PieceAt(piece).canBeTyped; } ///< that can be typed
    /// As it is shown: as typed, while it waits. \param text at least kTextSize bytes
    void GetText(int piece, LPSTR text) const;
    /// The same, if the value were \p time.
    void GetText(int piece, const SYSTEMTIME& time, LPSTR text) const;
    void GetWholeText(LPSTR text) const; ///< \param text at least kWholeSize bytes

    // Value. Where the format has no time, a range is one of days, and the value keeps its time of day. Else it is one
    // of dates with their times. Milliseconds stay as they were set; no bound counts them.

    const SYSTEMTIME& GetTime() const { return m_time; }
    /// Drops what is typed. \return FALSE, changing nothing: there is no such date, or it lies outside of the range
    BOOL SetTime(const SYSTEMTIME& time);
    /// A value outside, that of the beginning too, becomes the nearest one; what is typed is dropped.
    /// \param least, most null: no bound \return FALSE, changing nothing: there is no such date, or \p most lies before
    /// \p least
    BOOL SetRange(const SYSTEMTIME* least, const SYSTEMTIME* most);
    const SYSTEMTIME& GetLeast() const { return m_least; }
    const SYSTEMTIME& GetMost() const { return m_most; }

    // Acts of the user

    int GetCurrent() const { return m_current; } ///< the piece that is typed in
    void MoveTo(int piece);                      ///< nothing if it is no field
    void MoveBy(int by);                         ///< by so many fields, around the ends
    int GetFirst() const;
    int GetLast() const;
    /// Types a character. Digits that make the field whole move on to the next one; so does a character of the text
    /// between the fields. In a name, and in AM or PM, a letter takes the next that begins with it.
    /// \param character of one byte or two, with a terminator; digits of full width are digits, too
    /// \return FALSE: it is of no use here, and nothing has changed
    BOOL Type(LPCSTR character);
    BOOL DeleteLast(); ///< the last digit of the field. \return FALSE: none is typed
    /// To the next or previous number of the field, around its ends. The day is that of the month, or its last.
    void Step(int by);
    void GoToEnd(BOOL most); ///< to the least or most number of the field
    /// The value takes date and time, or the nearest that the range allows; nothing if there is no such date.
    void Choose(const SYSTEMTIME& time);
    /// Takes a whole date or time as a text: in the order of the format, or as year, month and day. Numbers, names,
    /// and the words of the format are understood, separators passed over. Parts that the format lacks stay.
    /// \return FALSE, changing nothing: it is no such text, or not within the range
    BOOL Paste(LPCSTR text);

    BOOL IsWaiting() const; ///< whether something is shown that the value has not
    void TakeBack();        ///< The value is shown again.
    void Settle();          ///< The value becomes what is shown, or the nearest that exists and is allowed.

    /// What acts have done since it was asked last.
    struct Outcome {
        BOOL isTaken;   ///< the value was taken from the fields, also if it is the same
        BOOL isClamped; ///< what was typed is no such date or not allowed: the nearest was taken
    };
    Outcome TakeOutcome();

private:
    struct Piece {
        Kind kind;
        bool canBeTyped;
        short start;  // of a text; of others 0
        short length; // of a text; of others, how many letters the format has
    };
    struct Layout {
        Piece pieces[kMostPieces];
        int count;
        char texts[kFormatSize];
        int used; // bytes of texts
        bool AddText(LPCSTR text, int length);
        bool AddField(Kind kind, int letters);
    };

    static bool Read(LPCSTR format, Layout& layout);
    const Piece& PieceAt(int piece) const;
    const Piece& Current() const { return m_layout.pieces[m_current]; }
    bool IsReal(const SYSTEMTIME& time) const;
    SYSTEMTIME Nearest(const SYSTEMTIME& time) const;
    ULONGLONG KeyOf(const SYSTEMTIME& time) const;
    void Take(const SYSTEMTIME& time);
    void Enter(int number);
    void EnterTyped();
    bool TypeDigit(char digit);
    bool TypeLetter(LPCSTR letter);
    bool IsSeparator(LPCSTR character) const;
    bool TakeNumber(Kind kind, int number);
    void GetName(Kind kind, int number, int letters, LPSTR text) const;

    char m_format[kFormatSize];
    Layout m_layout;
    LCID m_locale;
    bool m_hasDate = false, m_hasTime = false;
    SYSTEMTIME m_time;
    SYSTEMTIME m_draft; // what is shown, without the digits of the current field; its day may be none of its month
    SYSTEMTIME m_least, m_most;
    int m_current = 0;
    char m_typed[5] = "";      // digits of the current field
    bool m_hasMovedOn = false; // by itself, with the last character
    Outcome m_outcome = {};
};
