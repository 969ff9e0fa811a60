#include "support/test.h"
#include "version_fixture.h"

TEST_F(VersionResource, GivesTextsNumbersAndKeys)
{
    AddUser("Plain", OwnUser());
    ASSERT_TRUE(m_version.ExtractVersionInfo(Fixture("plain")));

    EXPECT_STREQ("Zo Tests", m_version.GetStandardValue(1));
    EXPECT_STREQ("4.3.2.1", m_version.GetStandardValue(3));
    EXPECT_STREQ("Fixture", m_version.GetInternalName());
    EXPECT_STREQ("Plain", m_version.GetStandardValue(7));
    EXPECT_STREQ("", m_version.GetStandardValue(0)) << "a text that the module lacks";
    EXPECT_STREQ("", m_version.GetStandardValue(9)) << "beyond the nine texts";

    DWORD ms = 0;
    DWORD ls = 0;
    m_version.GetProductVersionMajorMinor(ms, ls);
    EXPECT_EQ(MAKELONG(12, 7), static_cast<LONG>(ms));
    EXPECT_EQ(MAKELONG(5, 0), static_cast<LONG>(ls));
    m_version.GetFileVersionMajorMinor(ms, ls);
    EXPECT_EQ(MAKELONG(3, 4), static_cast<LONG>(ms));
    EXPECT_EQ(MAKELONG(1, 2), static_cast<LONG>(ls));
    EXPECT_TRUE(m_version.IsModuleDebug());
    EXPECT_TRUE(m_version.IsModulePatched());
    EXPECT_FALSE(m_version.IsModulePrerelease());
    EXPECT_TRUE(m_version.IsModuleEXE());
    EXPECT_FALSE(m_version.IsModuleDLL());
    EXPECT_FALSE(m_version.IsModuleDriver());

    const CString root = CString(kCompanyKey) + "\\Plain\\7.12";
    const CString user = root + "\\Users\\" + OwnUser();
    EXPECT_STREQ(root, m_version.GetBrixelsRootKey());
    EXPECT_STREQ(root + "\\Users", m_version.GetUsersKey());
    EXPECT_STREQ(user, m_version.GetCurrentUserKey());
    EXPECT_STREQ(user + "\\Modules", m_version.GetInstalledModulesKey());
    EXPECT_STREQ(user + "\\Modules\\Fixture\\7.12", m_version.GetModuleRootKey());
    EXPECT_STREQ(user + "\\PhoneLists", m_version.GetPhoneListsKey());
    EXPECT_STREQ(user + "\\SpeedDialLists", m_version.GetSpeedDialListsKey());
    EXPECT_STREQ(user + "\\FaxOnDemandLists", m_version.GetFaxOnDemandListsKey());
}

TEST_F(VersionResource, DriverAnswersToEveryModuleType)
{
    AddUser("Driver", OwnUser());
    ASSERT_TRUE(m_version.ExtractVersionInfo(Fixture("driver")));
    EXPECT_TRUE(m_version.IsModuleEXE());
    EXPECT_TRUE(m_version.IsModuleDLL());
    EXPECT_TRUE(m_version.IsModuleDriver());
    EXPECT_TRUE(m_version.IsModulePrerelease());
}

TEST_F(VersionResource, LacksInternalName)
{
    AddUser("Nameless", OwnUser());
    ASSERT_TRUE(m_version.ExtractVersionInfo(Fixture("nameless")));
    EXPECT_STREQ(UsersKey("Nameless") + "\\" + OwnUser() + "\\Modules\\\\7.12", m_version.GetModuleRootKey());
}

TEST_F(VersionResource, ReadsEveryTranslation)
{
    AddUser("Polyglot", OwnUser());
    AddUser("Polyglot DE", OwnUser());
    ASSERT_TRUE(m_version.ExtractVersionInfo(Fixture("polyglot")));
    DWORD translations[3] = {1, 2, 3};
    WORD count = 0;
    m_version.GetTranslationTableArray(translations, count);
    EXPECT_EQ(3, count);
    EXPECT_EQ(1u, translations[0]) << "the array is not written";

    EXPECT_FALSE(m_version.ExtractLanguageStandardValues(MAKELONG(0x0409, 932))) << "not in the table";
    EXPECT_STREQ("Polyglot", m_version.GetStandardValue(7));

    ASSERT_TRUE(m_version.ExtractLanguageStandardValues(MAKELONG(0x0407, 1252)));
    EXPECT_STREQ("Polyglot DE", m_version.GetStandardValue(7));
    EXPECT_STREQ("Alle Rechte", m_version.GetLegalCopyright());
    EXPECT_STREQ("Fixture", m_version.GetInternalName()) << "a text that this translation lacks stays";
    EXPECT_STREQ(UsersKey("Polyglot DE"), m_version.GetUsersKey());
}

TEST_F(VersionResource, FailsAndIsEmpty)
{
    EXPECT_FALSE(m_version.ExtractVersionInfo(Fixture("plain"))) << "a product without users";
    ExpectEmpty(m_version);

    AddUser("Plain", OwnUser());
    AddUser("Untranslated", OwnUser());
    for (const CString& file : {Fixture("untranslated"), Fixture("bare"), Fixture("missing"), CString()}) {
        ASSERT_TRUE(m_version.ExtractVersionInfo(Fixture("plain")));
        EXPECT_FALSE(m_version.ExtractVersionInfo(file)) << (LPCSTR)file;
        ExpectEmpty(m_version);
    }
    EXPECT_FALSE(m_version.ExtractVersionInfo(static_cast<const char*>(nullptr)));
    EXPECT_FALSE(m_version.ExtractVersionInfo(reinterpret_cast<HINSTANCE>(0x10))) << "no such module";
    ExpectEmpty(m_version);
}

TEST_F(VersionResource, NewUserGetsCopyOfFirstUser)
{
    AddUser("Plain", "anybody");
    const CString first = UsersKey("Plain") + "\\anybody";
    ASSERT_EQ(0u, m_config.SetValue(kMachine, first + "\\Modules", "Folder", "C:\\Fax"));
    ASSERT_EQ(0u, m_config.SetValue(kMachine, first, "NoviceMode", 1));

    ASSERT_TRUE(m_version.ExtractVersionInfo(Fixture("plain")));
    EXPECT_STREQ(UsersKey("Plain") + "\\" + OwnUser(), m_version.GetCurrentUserKey());
    char folder[16];
    EXPECT_EQ(0u, m_config.GetValue(kMachine, m_version.GetInstalledModulesKey(), "Folder", folder, sizeof folder, ""));
    EXPECT_STREQ("C:\\Fax", folder);
    DWORD mode = 0;
    EXPECT_EQ(0u, m_config.GetValue(kMachine, m_version.GetCurrentUserKey(), "NoviceMode", mode, 0));
    EXPECT_EQ(1u, mode);
}

TEST_F(VersionResource, NobodyLoggedOnIsSystem)
{
    AddUser("Plain", "SYSTEM");
    FaultSource faults("user");
    const ZO_FAULTY_CALL(GetUserNameA) user(faults, "ZOGBLBRX.DLL", FALSE);
    faults.Arm(1, true);
    ASSERT_TRUE(m_version.ExtractVersionInfo(Fixture("plain")));
    EXPECT_STREQ(UsersKey("Plain") + "\\SYSTEM", m_version.GetCurrentUserKey());
}

TEST_F(VersionResource, UserWhoseKeyCannotBeSeenIsNotOverwritten)
{
    AddUser("Plain", OwnUser());
    AddUser("Plain", "a");
    AllocationFaults faults;
    RunFaultLoop(faults, [&](const FaultRun& run) {
        run.Stop();
        ASSERT_EQ(0u, m_config.SetValue(kMachine, UsersKey("Plain") + "\\a", "Mine", "no"));
        ASSERT_EQ(0u, m_config.SetValue(kMachine, UsersKey("Plain") + "\\" + OwnUser(), "Mine", "yes"));
        const CString fixture = Fixture("plain");
        if (run.number > 0)
            run.source.Arm(run.number, run.persistent);
        m_version.ExtractVersionInfo(fixture);
        run.Stop();
        char mine[8];
        EXPECT_EQ(0u, m_config.GetValue(kMachine, UsersKey("Plain") + "\\" + OwnUser(), "Mine", mine, sizeof mine, ""));
        EXPECT_STREQ("yes", mine);
        m_version.ExtractVersionInfo(""); // lets go of what it holds, which is no leak
    });
}

TEST_F(VersionResource, FailedCopyLeavesFirstUsersKeys)
{
    ASSERT_GT(OwnUser().GetLength(), 1);
    AddUser("Plain", "a");
    // A key that fits at the first user, but not where the path to the user is longer.
    constexpr int kLongestDestination = 259;
    const CString first = UsersKey("Plain") + "\\a\\";
    ASSERT_EQ(0u, m_config.SetValue(kMachine, first + "Fits", "Text", "half"));
    ASSERT_EQ(0u, m_config.CreateKey(kMachine, first + CString('x', kLongestDestination - first.GetLength())));

    ASSERT_TRUE(m_version.ExtractVersionInfo(Fixture("plain")));
    EXPECT_STREQ(UsersKey("Plain") + "\\a", m_version.GetCurrentUserKey());
    BOOL exists = TRUE;
    EXPECT_EQ(0u, m_config.DoesSubkeyExist(kMachine, UsersKey("Plain"), OwnUser(), exists));
    EXPECT_FALSE(exists) << "half of the settings would be taken for the user's own";
}
