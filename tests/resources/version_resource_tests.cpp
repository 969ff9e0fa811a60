#include "version_fixture.h"

TEST_F(VersionResource, GivesTextsNumbersAndKeys)
{
    AddUser("Plain");
    ASSERT_TRUE(Extract("plain"));

    // Number 0 is a text that the module lacks; there is no number 9.
    const std::vector<CString> texts = {"", "Zo Tests", "", "4.3.2.1", "Fixture", "", "", "Plain", "7.12", ""};
    for (WORD i = 0; i < texts.size(); ++i)
        EXPECT_STREQ(texts[i], m_version.GetStandardValue(i)) << i;

    DWORD ms[2] = {}, ls[2] = {};
    m_version.GetProductVersionMajorMinor(ms[0], ls[0]);
    m_version.GetFileVersionMajorMinor(ms[1], ls[1]);
    EXPECT_TRUE(ms[0] == 0x7000C && ls[0] == 5 && ms[1] == 0x40003 && ls[1] == 0x20001);
    EXPECT_TRUE(m_version.IsModuleDebug() && m_version.IsModulePatched() && m_version.IsModuleEXE());
    EXPECT_FALSE(m_version.IsModulePrerelease() || m_version.IsModuleDLL() || m_version.IsModuleDriver());

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

TEST_F(VersionResource, DriverAnswersToEveryModuleTypeAndNamelessOnesHaveAKey)
{
    AddUser("Nameless");
    ASSERT_TRUE(Extract("nameless"));
    EXPECT_TRUE(m_version.IsModuleEXE() && m_version.IsModuleDLL() && m_version.IsModuleDriver());
    EXPECT_TRUE(m_version.IsModulePrerelease());
    EXPECT_STREQ(UsersKey("Nameless") + "\\" + OwnUser() + "\\Modules\\\\7.12", m_version.GetModuleRootKey());
}

TEST_F(VersionResource, ReadsEveryTranslation)
{
    AddUser("Polyglot");
    AddUser("Polyglot DE");
    ASSERT_TRUE(Extract("polyglot"));
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
    EXPECT_FALSE(Extract("plain")) << "a product without users";
    ExpectEmpty(m_version);

    AddUser("Plain");
    for (const CString& file : {Fixture("bare"), Fixture("missing"), CString()}) {
        ASSERT_TRUE(Extract("plain"));
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
    Set("anybody\\Modules", "Folder", "C:\\Fax");
    Set("anybody", "Mode", "1");
    FaultSource faults("nobody logged on");
    const ZO_FAULTY_CALL(GetUserNameA) name(faults, "ZOGBLBRX.DLL", FALSE);
    for (const CString& user : {OwnUser(), CString("SYSTEM")}) {
        ASSERT_TRUE(Extract("plain"));
        EXPECT_STREQ(UsersKey("Plain") + "\\" + user, m_version.GetCurrentUserKey());
        EXPECT_EQ("C:\\Fax", Setting(user + "\\Modules", "Folder"));
        EXPECT_EQ("1", Setting(user, "Mode"));
        faults.Arm(1, true);
    }
}

TEST_F(VersionResource, UserWhoseKeyCannotBeSeenIsNotOverwritten)
{
    AddUser("Plain");
    AddUser("Plain", "a");
    RunFaultActs<AllocationFaults>([&](const FaultRun& run) {
        Set("a", "Mine", "no");
        Set(OwnUser(), "Mine", "yes");
        const CString fixture = Fixture("plain");
        run.Act([&] { return m_version.ExtractVersionInfo(fixture); });
        EXPECT_EQ("yes", Setting(OwnUser(), "Mine"));
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
    Set("a\\Fits", "Text", "half");
    ASSERT_EQ(0u, m_config.CreateKey(kMachine, first + CString('x', kLongestDestination - first.GetLength())));

    ASSERT_TRUE(Extract("plain"));
    EXPECT_STREQ(UsersKey("Plain") + "\\a", m_version.GetCurrentUserKey());
    BOOL exists = TRUE;
    EXPECT_EQ(0u, m_config.DoesSubkeyExist(kMachine, UsersKey("Plain"), OwnUser(), exists));
    EXPECT_FALSE(exists) << "half of the settings would be taken for the user's own";
}
