/// \file
/// The numbers and the names of a date's fields.
#pragma once

#include <zogbl/date_time_fields.h>

/// What a field can have. A day may be none of its month.
struct NumberBounds {
    int least;
    int most;
};
NumberBounds BoundsOf(CZoDateTimeFields::Kind kind);

int NumberIn(const SYSTEMTIME& time, CZoDateTimeFields::Kind kind); ///< 0 for pieces that are no fields
/// Puts a number within the bounds. An hour of 12 stays in its half of the day; 0 and 13 to 23 are hours of the day.
void PutNumber(SYSTEMTIME& time, CZoDateTimeFields::Kind kind, int number);

/// The number that digits mean in a field. A year of two lies in the window that the user has chosen.
/// \return -1: none within the bounds
int NumberOfDigits(CZoDateTimeFields::Kind kind, LPCSTR digits);

/// Whether it is shown as a name. \param letters of the format
inline bool HasName(CZoDateTimeFields::Kind kind, int letters)
{
    return kind == CZoDateTimeFields::Kind::kHalf || (kind == CZoDateTimeFields::Kind::kMonth && letters >= 3);
}

// Names are at most CZoDateTimeFields::kTextSize bytes long, in the system's ANSI code page; empty if there is none.

/// \param besideDay in the case that it has there, which in some languages is another one
void GetMonthName(LCID locale, int month, bool isShort, bool besideDay, LPSTR name);
/// "AM" or "PM", if the locale has no names for them.
void GetHalfName(LCID locale, int half, LPSTR name);
