#include <zogbl/operating_system.h>

#include <environment.h>

#include <gtest/gtest.h>

TEST(OperatingSystem, TellsTheFamilyAndVersion)
{
    const struct {
        zotest::Family family;
        DWORD type;
        DWORD major;
    } cases[] = {
        {zotest::Family::Win32s, ZO_OS_WIN32S, 3},
        {zotest::Family::Win98, ZO_OS_WIN95, 4},
        {zotest::Family::NT4, ZO_OS_NT, 4},
        {zotest::Family::Win10, ZO_OS_NT, 10},
    };
    for (const auto& c : cases) {
        if (c.family == zotest::CurrentFamily()) {
            EXPECT_EQ(c.type, CZoGlobalOperatingSystem::GetType());
            EXPECT_EQ(c.major, CZoGlobalOperatingSystem::GetMajorVersion());
        }
    }
}
