/// \file
/// The operating system and who uses it.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

/// Families of Windows, as CZoGlobalOperatingSystem::GetType answers.
constexpr DWORD ZO_OS_WIN32S = 1; ///< 32-bit programs on 16-bit Windows
constexpr DWORD ZO_OS_NT = 2;     ///< Windows NT and its successors
constexpr DWORD ZO_OS_WIN95 = 3;  ///< Windows 95, 98, Me

/// Processors, as CZoGlobalOperatingSystem::GetPlatform answers.
constexpr DWORD ZO_PLATFORM_UNKNOWN = 0;
constexpr DWORD ZO_PLATFORM_INTEL = 1; ///< x86
constexpr DWORD ZO_PLATFORM_ALPHA = 2;
constexpr DWORD ZO_PLATFORM_MIPS = 3;

/// What CZoGlobalOperatingSystem::GetRegisteredInfo is asked for.
constexpr UINT ZO_REGISTERED_OWNER = 0;
constexpr UINT ZO_REGISTERED_ORGANIZATION = 1;
constexpr UINT ZO_REGISTERED_DISTRIBUTOR = 2;

/// Questions about the operating system. Stateless: each call asks the system afresh. Nothing is thrown; texts that
/// cannot be found out, for want of memory too, are empty.
class ZOGBL_API CZoGlobalOperatingSystem {
public:
    /// The family, from GetVersion: one of the ZO_OS_ values and never another.
    static DWORD GetType();
    /// The version numbers that GetVersionEx reports; 0 if it fails.
    static DWORD GetMajorVersion();
    static DWORD GetMinorVersion();

    /// The processor, a ZO_PLATFORM_ value. Windows NT: what the environment variable CPU says - i386, ALPHA or MIPS,
    /// case ignored -; elsewhere Intel's.
    static DWORD GetPlatform();

    // The names of the next and of GetComputerNameA end in A whatever a caller's windows.h makes of them.

    /// The user's name. Win32s: the registered owner. Windows NT: the account of the process. Windows 95: the first of
    /// these that is not empty: "Default First Name", a blank and "Default Last Name" of Microsoft's user information;
    /// the registered owner of Microsoft's developer set-up; the suite's registered owner; the network logon.
    /// Each text of at most 95 characters.
    static CString GetUserNameA();
    /// The name with which the user has logged on; where the system tells none, GetUserNameA. Win32s: the registered
    /// owner.
    static CString GetUserReal();
    /// Windows NT: the domain of the process's account. Win32s: the registered owner, as there is no domain that
    /// could be told. Windows 95: empty.
    static CString GetDomainName();
    /// The computer's name; empty on Win32s.
    static CString GetComputerNameA();
    /// Whether the process's account belongs to the local administrators, even if the process may not use their rights
    /// at the moment (it was not started as administrator); FALSE on other systems than Windows NT, and for an account
    /// of so many groups that their list exceeds 1024 bytes.
    static BOOL HasAdminRights();

    /// What the suite was registered with, a text of at most 255 characters. \param kind a ZO_REGISTERED_ value;
    /// another one gives an empty text. So does a program whose version resource gives no keys.
    static CString GetRegisteredInfo(UINT kind);
};
