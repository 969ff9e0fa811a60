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
    static CString Fixture(LPCSTR name) { return (ProgramFolder() + "fixture_" + name + ".DLL").c_str(); }
    static CString UsersKey(LPCSTR product) { return CString(kCompanyKey) + "\\" + product + "\\7.12\\Users"; }
    void AddUser(LPCSTR product, const CString& user = OwnUser())
    {
        ASSERT_EQ(0u, m_config.CreateKey(kMachine, UsersKey(product) + "\\" + user));
    }
    /// A value of a user of "Plain", or of a key below.
    std::string Setting(const CString& user, LPCSTR name)
    {
        char text[16] = "";
        m_config.GetValue(kMachine, UsersKey("Plain") + "\\" + user, name, text, sizeof text, "");
        return text;
    }
    void Set(const CString& user, LPCSTR name, LPCSTR text)
    {
        ASSERT_EQ(0u, m_config.SetValue(kMachine, UsersKey("Plain") + "\\" + user, name, text));
    }
    BOOL Extract(LPCSTR fixture) { return m_version.ExtractVersionInfo(Fixture(fixture)); }
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
