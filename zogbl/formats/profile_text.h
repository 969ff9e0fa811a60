/// \file
/// What the texts of profile entries stand for.
#pragma once

#include <windows.h>

#include <string_view>

/// The next part of \p text between any of the characters in \p delimiters; empty when there is none left. \p text is
/// moved behind it. Characters of two bytes count as one, in the delimiters too.
std::string_view NextToken(LPCSTR& text, LPCSTR delimiters);

/// White space, a sign, decimal digits up to the first other character; 0 without digits. What exceeds 32 bits wraps
/// around, so that a number comes back whether it was written with a sign or without.
DWORD ReadNumber(std::string_view text);

/// Reads the numbers that a structured value consists of, up to \p count. Those that are missing stay as they are.
void ReadNumbers(LPCSTR text, LONG* numbers, size_t count);
template <size_t COUNT> void ReadNumbers(LPCSTR text, LONG (&numbers)[COUNT]) { ReadNumbers(text, numbers, COUNT); }

/// Hexadecimal digits up to the first other character; an X drops what came before it.
DWORD ReadHexadecimal(LPCSTR text);

/// Whether the text is one of the words for TRUE.
bool ReadBoolean(LPCSTR text);
