/// \file
/// Conversions between unsigned 32-bit numbers and texts.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

/// Reads a decimal number as strtoul does: white space, a sign, digits up to the first other character. There is no
/// hexadecimal prefix. Null, and a text without a number, give 0.
///
///   more than 32 bits  4294967295
///   with a minus sign  4294967296 less the number: "-1" gives 4294967295; more than 32 bits give 1
ZOGBL_API unsigned long StringToDWord(const char* text);

/// The decimal text of \p value; empty only if memory has run out.
ZOGBL_API CString DWordToString(unsigned long value);

/// The text of \p value in \p base, 2 to 36; digits above 9 are lower-case letters. Empty if the base is another or
/// memory has run out.
ZOGBL_API CString DWordToBaseString(unsigned long value, int base);
