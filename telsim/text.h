/// \file
/// Texts for the lists of calls and misuses.
#pragma once

#include <windows.h>

#include <string>

namespace telsim {

/// As std::printf.
__attribute__((format(gnu_printf, 1, 2))) std::string Format(const char* format, ...);

/// A text argument, in quotes; "null" or "unreadable" when it is not one.
std::string Quoted(const char* text);

} // namespace telsim
