#include "support/test.h"

#include <zogbl/operating_system.h>

TEST(OperatingSystem, TellsTheFamilyAndVersion)
{
    static constexpr DWORD kExpected[][3] = {
        {ZO_OS_WIN32S, 3, 10}, {ZO_OS_WIN95, 4, 10}, {ZO_OS_NT, 4, 0}, {ZO_OS_NT, 6, 2}}; // as told without a manifest
    const auto& [type, major, minor] = kExpected[static_cast<int>(Family())];
    FaultSource faults("version");
    const ZO_FAULTY_CALL(GetVersionExA) version(faults, "ZOGBLBRX.DLL", FALSE);
    for (const bool isKnown : {true, false}) {
        EXPECT_EQ(type, CZoGlobalOperatingSystem::GetType());
        EXPECT_EQ(isKnown ? major : 0, CZoGlobalOperatingSystem::GetMajorVersion());
        EXPECT_EQ(isKnown ? minor : 0, CZoGlobalOperatingSystem::GetMinorVersion());
        faults.Arm(1, true);
    }
}
