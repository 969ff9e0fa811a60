/// \file
/// Which family of Windows the process runs on.
#pragma once

#include <zogbl/export.h>

#include <windows.h>

/// Families of Windows, as CZoGlobalOperatingSystem::GetType answers.
constexpr DWORD ZO_OS_WIN32S = 1; ///< 32-bit programs on 16-bit Windows
constexpr DWORD ZO_OS_NT = 2;     ///< Windows NT and its successors
constexpr DWORD ZO_OS_WIN95 = 3;  ///< Windows 95, 98, Me

/// Questions about the operating system. Stateless: each call asks the system afresh.
class ZOGBL_API CZoGlobalOperatingSystem {
public:
    /// The family, from GetVersion: one of the ZO_OS_ values and never another.
    static DWORD GetType();
    /// The version numbers that GetVersionEx reports; 0 if it fails.
    static DWORD GetMajorVersion();
    static DWORD GetMinorVersion();
};
