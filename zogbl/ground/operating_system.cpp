#include <zogbl/operating_system.h>

namespace {

/// The version record, of 148 bytes as all families know it.
bool ReadVersion(OSVERSIONINFOA& version)
{
    static_assert(sizeof version == 148);
    version = {};
    version.dwOSVersionInfoSize = sizeof version;
    return GetVersionExA(&version) != FALSE;
}

} // namespace

DWORD CZoGlobalOperatingSystem::GetType()
{
    const DWORD version = GetVersion();
    const bool isNT = (version & 0x80000000) == 0;
    if (isNT)
        return ZO_OS_NT;
    return LOBYTE(version) < 4 ? ZO_OS_WIN32S : ZO_OS_WIN95;
}

DWORD CZoGlobalOperatingSystem::GetMajorVersion()
{
    OSVERSIONINFOA version;
    return ReadVersion(version) ? version.dwMajorVersion : 0;
}

DWORD CZoGlobalOperatingSystem::GetMinorVersion()
{
    OSVERSIONINFOA version;
    return ReadVersion(version) ? version.dwMinorVersion : 0;
}
