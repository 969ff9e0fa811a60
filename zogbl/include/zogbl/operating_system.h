/// \file
/// The operating system and its user.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

/// Families of Windows, results of CZoGlobalOperatingSystem::GetType.
constexpr DWORD ZO_OS_WIN32S = 1; ///< 32-bit programs on 16-bit Windows
constexpr DWORD ZO_OS_NT = 2;     ///< Windows NT and its successors
constexpr DWORD ZO_OS_WIN95 = 3;  ///< Windows 95, 98, Me

/// Processors, results of CZoGlobalOperatingSystem::GetPlatform.
constexpr DWORD ZO_PLATFORM_UNKNOWN = 0;
constexpr DWORD ZO_PLATFORM_INTEL = 1; ///< x86
constexpr DWORD ZO_PLATFORM_ALPHA = 2;
constexpr DWORD ZO_PLATFORM_MIPS = 3;

/// Argument of CZoGlobalOperatingSystem::GetRegisteredInfo.
constexpr UINT ZO_REGISTERED_OWNER = 0;
constexpr UINT ZO_REGISTERED_ORGANIZATION = 1;
constexpr UINT ZO_REGISTERED_DISTRIBUTOR = 2;

/// Answers questions about the operating system. It has no state: each call asks the system again. Nothing is thrown. A
/// text is empty if it cannot be found out or memory has run out.
class ZOGBL_API CZoGlobalOperatingSystem {
public:
    /// The family, from GetVersion; always a ZO_OS_ value.
    static DWORD GetType();
    /// Version numbers from GetVersionEx; 0 if that fails.
    static DWORD GetMajorVersion();
    static DWORD GetMinorVersion();

    /// The processor, a ZO_PLATFORM_ value. On Windows NT from the environment variable CPU: i386, ALPHA or MIPS, case
    /// ignored; anything else, or no variable, is unknown. Elsewhere ZO_PLATFORM_INTEL.
    static DWORD GetPlatform();

    // GetUserNameA and GetComputerNameA are declared with the A, so their names do not depend on windows.h.

    /// The user's name:
    ///   Win32s      the registered owner of the suite
    ///   Windows NT  the account of the process
    ///   Windows 95  the first of these that is not empty: "Default First Name", a blank and "Default Last Name" of
    ///               Microsoft's user information; the registered owner of Microsoft's developer set-up; the suite's
    ///               registered owner; the network logon. Of the system's settings, a text of more than 95 bytes counts
    ///               as empty.
    static CString GetUserNameA();
    /// The name with which the user has logged on; GetUserNameA if the system tells none. Win32s: the registered owner.
    static CString GetUserReal();
    /// The domain of the process's account on Windows NT; empty on Windows 95. Win32s: the registered owner, because
    /// there is no domain.
    static CString GetDomainName();
    /// The computer's name; empty on Win32s.
    static CString GetComputerNameA();
    /// Whether the process's account belongs to the local administrators, even if the process may not use their rights
    /// now because it was not started as administrator. FALSE on systems other than Windows NT, and for an account
    /// whose list of groups exceeds 1024 bytes.
    static BOOL HasAdminRights();

    /// The suite's registered owner, organization or distributor. Empty if there is no such text, it has more than 255
    /// bytes, or the version resource of the program gives no keys.
    /// \param kind a ZO_REGISTERED_ value; for any other the text is empty
    static CString GetRegisteredInfo(UINT kind);
};
