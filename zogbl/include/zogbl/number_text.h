/// \file
/// Conversions between unsigned 32-bit numbers and their text.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

/// Reads a decimal number as strtoul does. White space and a sign may stand before it; reading stops at the first
/// character that is no digit; there is no hexadecimal prefix. Null, and a text without a number, give 0.
///
///     more than 32 bits    4294967295
///     with a minus sign    4294967296 less the number: "-1" gives 4294967295, more than 32 bits give 1
ZOGBL_API unsigned long StringToDWord(const char* text);

/// The decimal text of \p value; empty only when memory has run out.
ZOGBL_API CString DWordToString(unsigned long value);

/// The text of \p value in \p base, 2 to 36, digits above 9 as lower-case letters. Empty for another base, and when
/// memory has run out.
ZOGBL_API CString DWordToBaseString(unsigned long value, int base);
