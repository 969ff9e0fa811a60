#include <zogbl/operating_system.h>

#include "support/environment.h"

#include <gtest/gtest.h>

TEST(OperatingSystem, TellsTheFamilyAndVersion)
{
    const struct {
        zo_test::WindowsFamily family;
        DWORD type;
        DWORD major;
    } cases[] = {
        {zo_test::WindowsFamily::kWin32s, ZO_OS_WIN32S, 3},
        {zo_test::WindowsFamily::kWindows95, ZO_OS_WIN95, 4},
        {zo_test::WindowsFamily::kWindowsNt4, ZO_OS_NT, 4},
        {zo_test::WindowsFamily::kWindows10, ZO_OS_NT, 6}, // as told to a program without a manifest
    };
    for (const auto& c : cases) {
        if (c.family == zo_test::Family()) {
            EXPECT_EQ(c.type, CZoGlobalOperatingSystem::GetType());
            EXPECT_EQ(c.major, CZoGlobalOperatingSystem::GetMajorVersion());
        }
    }
}
