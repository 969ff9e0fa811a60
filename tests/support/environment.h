/// \file
/// Where the test program runs: architecture, family of Windows, code page.
///
/// Each test program runs in several environments (see cmake/Tests.cmake). A case that is for some of them only says so
/// at its beginning:
///
///     ZO_ONLY_IN(Family() == WindowsFamily::kWin32s, "keeps its settings below HKEY_CLASSES_ROOT only there");
#pragma once

#include <gtest/gtest.h>

#include <afx.h>

#include <string>

namespace zo_test {

enum class WindowsFamily { kWin32s, kWindows95, kWindowsNt4, kWindows10 };

/// The family that GetVersion tells of; Windows NT from version 5 on counts as Windows 10.
WindowsFamily Family();
/// Windows NT of any version.
inline bool IsNt() { return Family() >= WindowsFamily::kWindowsNt4; }
/// The Japanese system: characters of two bytes, code page 932.
inline bool IsDoubleByte() { return GetACP() == 932; }
/// TRUE under Wine, FALSE on the real system.
bool IsWine();

/// The environment's name as the build system writes it, for example "x86.win98" or
/// "x64.win10-932-dpi144".
std::string EnvironmentName();

/// The test program's folder, with a backslash at its end.
std::string ProgramFolder();

} // namespace zo_test

/// Skips the test unless \p condition holds. \param reason why it is for these environments only.
#define ZO_ONLY_IN(condition, reason)                                                                                  \
    do {                                                                                                               \
        if (!(condition))                                                                                              \
            GTEST_SKIP() << "not for " << zo_test::EnvironmentName() << ": " << (reason);                              \
    } while (false)
