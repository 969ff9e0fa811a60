#include "support/test.h"

#include <zogbl/operating_system.h>

TEST(OperatingSystem, TellsTheFamilyAndVersion)
{
    const struct {
        WindowsFamily family;
        DWORD type;
        DWORD major;
        DWORD minor;
    } cases[] = {
        {WindowsFamily::kWin32s, ZO_OS_WIN32S, 3, 10},
        {WindowsFamily::kWindows95, ZO_OS_WIN95, 4, 10},
        {WindowsFamily::kWindowsNt4, ZO_OS_NT, 4, 0},
        {WindowsFamily::kWindows10, ZO_OS_NT, 6, 2}, // as told to a program without a manifest
    };
    int matching = 0;
    for (const auto& c : cases) {
        if (c.family != Family())
            continue;
        ++matching;
        EXPECT_EQ(c.type, CZoGlobalOperatingSystem::GetType());
        EXPECT_EQ(c.major, CZoGlobalOperatingSystem::GetMajorVersion());
        EXPECT_EQ(c.minor, CZoGlobalOperatingSystem::GetMinorVersion());
    }
    EXPECT_EQ(1, matching);
}

TEST(OperatingSystem, FamilyIsKnownEvenWithoutVersion)
{
    FaultSource faults("version");
    const ZO_FAULTY_CALL(GetVersionExA) version(faults, "ZOGBLBRX.DLL", FALSE);
    const DWORD type = CZoGlobalOperatingSystem::GetType();
    faults.Arm(1, true);
    EXPECT_EQ(0u, CZoGlobalOperatingSystem::GetMajorVersion());
    EXPECT_EQ(0u, CZoGlobalOperatingSystem::GetMinorVersion());
    EXPECT_EQ(type, CZoGlobalOperatingSystem::GetType());
}
