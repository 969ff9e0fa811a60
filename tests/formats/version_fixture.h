/// \file
/// Modules with version records for tests, and their products.
#pragma once

#include "support/test.h"

#include <zogbl/global_config.h>
#include <zogbl/version_resource.h>

/// Products of the company "Zo Tests", gone after each test.
class VersionResource : public testing::Test {
protected:
    static constexpr DWORD kMachine = ZO_MODE_LOCAL_MACHINE;
    static constexpr char kCompanyKey[] = "Software\\Zo Tests";

    VersionResource() { m_config.DeleteSection(kMachine, "Software", "Zo Tests"); }
    ~VersionResource() override { m_config.DeleteSection(kMachine, "Software", "Zo Tests"); }

    static CString OwnUser()
    {
        char name[260] = {};
        DWORD size = sizeof name;
        return GetUserNameA(name, &size) ? name : "SYSTEM";
    }
    /// A module of the fixtures, which lie beside the test program.
    static CString Fixture(LPCSTR name)
    {
        char path[MAX_PATH] = {};
        GetModuleFileNameA(nullptr, path, sizeof path - 1);
        const CString own(path);
        return own.Left(own.ReverseFind('\\') + 1) + "fixture_" + name + ".DLL";
    }
    static CString UsersKey(LPCSTR product) { return CString(kCompanyKey) + "\\" + product + "\\7.12\\Users"; }
    void AddUser(LPCSTR product, const CString& user)
    {
        ASSERT_EQ(0u, m_config.CreateKey(kMachine, UsersKey(product) + "\\" + user));
    }
    static void ExpectEmpty(CZoVersionResource& version)
    {
        for (WORD i = 0; i < 10; ++i)
            EXPECT_STREQ("", version.GetStandardValue(i)) << i;
        for (const CString& key :
             {version.GetBrixelsRootKey(), version.GetModuleRootKey(), version.GetInstalledModulesKey(),
              version.GetPhoneListsKey(), version.GetSpeedDialListsKey(), version.GetFaxOnDemandListsKey(),
              version.GetUsersKey(), version.GetCurrentUserKey()})
            EXPECT_STREQ("", key);
    }

    CZoGlobalConfig m_config;
    CZoVersionResource m_version;
};
