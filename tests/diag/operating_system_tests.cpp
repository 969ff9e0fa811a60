#include <zogbl/operating_system.h>

#include "support/registered_product.h"
#include "support/test.h"

using System = CZoGlobalOperatingSystem;

namespace {

class UserInformation : public testing::Test {
protected:
    UserInformation()
    {
        DWORD size = sizeof m_user;
        GetUserNameA(m_user, &size);
        GetComputerNameA(m_computer, &(size = sizeof m_computer));
    }
    void Register(LPCSTR name, const std::string& text)
    {
        LPCSTR key = "Software\\Zo,Inc.\\Brixel Suite\\3.9\\RegistrationInfo";
        ASSERT_EQ(0u, m_product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, key, name, text.c_str()));
    }

    RegisteredProduct m_product;
    char m_user[200] = "";
    char m_computer[200] = "";
};

const TestRegistryKey* g_userKey;

/// A group is only ever compared with the administrators'.
BOOL WINAPI EqualAdministrators(PSID group, PSID other)
{
    BYTE administrators[] = {1, 2, 0, 0, 0, 0, 0, 5, 32, 0, 0, 0, 0x20, 2, 0, 0}; // S-1-5-32-544
    return EqualSid(administrators, other) && EqualSid(group, other);
}

/// Looks into the test's key in place of the real user's.
LSTATUS WINAPI OpenUserKey(HKEY root, LPCSTR path, DWORD options, REGSAM access, HKEY* key)
{
    const std::string own = (root == HKEY_CURRENT_USER ? g_userKey->Path() + "\\" : "") + path;
    return RegOpenKeyExA(root, own.c_str(), options, access, key);
}

} // namespace

TEST(OperatingSystem, TellsTheFamilyAndVersion)
{
    static constexpr DWORD kExpected[][3] = {
        {ZO_OS_WIN32S, 3, 10}, {ZO_OS_WIN95, 4, 10}, {ZO_OS_NT, 4, 0}, {ZO_OS_NT, 6, 2}}; // as told without a manifest
    const auto& [type, major, minor] = kExpected[static_cast<int>(Family())];
    FaultSource faults("version");
    const ZO_FAULTY_CALL(GetVersionExA) version(faults, kZogbl, FALSE);
    for (const bool isKnown : {true, false}) {
        EXPECT_EQ(type, System::GetType());
        EXPECT_EQ(isKnown ? major : 0, System::GetMajorVersion());
        EXPECT_EQ(isKnown ? minor : 0, System::GetMinorVersion());
        faults.Arm(1, true);
    }
}

TEST_F(UserInformation, RegisteredInformation)
{
    const std::string longest(255, 'o');
    Register("Organization", longest);
    Register("Distributor", std::string(256, 'd'));
    const char* const expected[] = {"", longest.c_str(), "", ""}; // absent, there, too long, no such kind
    FaultSource faults("version resource");
    const ZO_FAULTY_CALL(GetFileVersionInfoSizeA) size(faults, kZogbl, 0);
    for (UINT kind = 0; kind < std::size(expected); ++kind) {
        EXPECT_STREQ(expected[kind], System::GetRegisteredInfo(kind));
        faults.Arm(1, true);
        EXPECT_STREQ("", System::GetRegisteredInfo(kind));
        EXPECT_EQ(kind <= ZO_REGISTERED_DISTRIBUTOR, faults.Calls()) << "nobody looks for what has no name";
        faults.Disarm();
    }
}

TEST_F(UserInformation, Platform)
{
    const std::pair<const char*, DWORD> cases[] = {{"i386", 1}, {"alpha", 2}, {"Mips", 3},
                                                   {"PPC", 0},  {nullptr, 0}, {"i386 and many more", 0}};
    for (const auto& [processor, platform] : cases) {
        SetEnvironmentVariableA("CPU", processor);
        EXPECT_EQ(IsNt() ? platform : ZO_PLATFORM_INTEL, System::GetPlatform());
    }
    SetEnvironmentVariableA("CPU", nullptr);
}

TEST_F(UserInformation, ComesFromTheAccountOnWindowsNt)
{
    ZO_ONLY_IN(IsNt(), "the others know no accounts");
    const std::pair<CString (*)(), const char*> texts[] = {{&System::GetUserNameA, m_user},
                                                           {&System::GetDomainName, m_computer}, // of this machine
                                                           {&System::GetComputerNameA, m_computer}};
    FaultSource faults("account");
    const ZO_FAULTY_CALL(OpenProcessToken) open(faults, kZogbl, FALSE);
    const ZO_FAULTY_CALL(GetTokenInformation) information(faults, kZogbl, FALSE);
    const ZO_FAULTY_CALL(LookupAccountSidA) lookUp(faults, kZogbl, FALSE);
    const ZO_FAULTY_CALL(AllocateAndInitializeSid) allocate(faults, kZogbl, FALSE);
    const ZO_FAULTY_CALL(GetComputerNameA) name(faults, kZogbl, FALSE);
    for (const auto& text : texts) {
        RunFaultLoop(faults, [&](const FaultRun& run) {
            const CString answer = text.first();
            EXPECT_STREQ(run.Fired() ? "" : text.second, answer);
        });
    }
    RunFaultLoop(faults, [](const FaultRun& run) {
        const BOOL rights = System::HasAdminRights(); // which all accounts of Wine have
        EXPECT_EQ(!run.Fired(), rights);
    });
    {
        const ImportPatch compare(kZogbl, "EqualSid", &EqualAdministrators);
        EXPECT_TRUE(System::HasAdminRights());
    }
    const ZO_FAULTY_CALL(EqualSid) equal(faults, kZogbl, FALSE);
    faults.Arm(4, true); // behind the token's calls and the administrators' identifier
    EXPECT_FALSE(System::HasAdminRights()) << "in none of the groups";
}

TEST_F(UserInformation, ComesFromOtherPlacesElsewhere)
{
    Register("Owner", "An Owner");
    const bool isWin32s = Family() == WindowsFamily::kWin32s;
    EXPECT_STREQ(isWin32s ? "An Owner" : m_user, System::GetUserReal());
    EXPECT_STREQ(isWin32s ? "" : m_computer, System::GetComputerNameA());
    if (!IsNt()) {
        EXPECT_STREQ(isWin32s ? "An Owner" : "", System::GetDomainName());
        EXPECT_FALSE(System::HasAdminRights());
        EXPECT_TRUE(!isWin32s || System::GetUserNameA() == "An Owner");
    }
    const CString user = System::GetUserNameA();
    RunFaultLoop<AllocationFaults>([&](const FaultRun& run) {
        const CString answers[] = {System::GetUserNameA(), System::GetUserReal(), System::GetDomainName(),
                                   System::GetComputerNameA(), System::GetRegisteredInfo(ZO_REGISTERED_OWNER)};
        run.Stop();
        EXPECT_TRUE(answers[0] == user || (run.Fired() && answers[0].IsEmpty()));
    });
}

TEST_F(UserInformation, ComesFromManyPlacesOnWindows95)
{
    ZO_ONLY_IN(System::GetType() == ZO_OS_WIN95, "the others ask one");
    LPCSTR const person = "Software\\Microsoft\\User Information";
    LPCSTR const values[][2] = {{person, "Default First Name"},
                                {person, "Default Last Name"},
                                {"Software\\Microsoft\\Developer\\Setup", "RegisteredOwner"},
                                {"Network\\Logon", "UserName"}};
    const std::string longest(95, 'x'), tooLong(96, 'x');
    LPCSTR const cases[][6] = {// the values' texts, null for none; the suite's owner; the answer
                               {"Ann", "Other", "Developer", "Logon", "Owner", "Ann Other"},
                               {"Ann", nullptr, "Developer", "Logon", "Owner", "Ann "},
                               {"", "Other", "Developer", "Logon", "Owner", "Developer"},
                               {tooLong.c_str(), "Other", longest.c_str(), "Logon", "Owner", longest.c_str()},
                               {nullptr, nullptr, nullptr, "Logon", "Owner", "Owner"},
                               {nullptr, nullptr, "", "Logon", "", "Logon"},
                               {nullptr, nullptr, nullptr, nullptr, "", ""}};
    FaultSource faults("name");
    const ZO_FAULTY_CALL(GetUserNameA) nobody(faults, kZogbl, FALSE);
    const ImportPatch redirection(kZogbl, "RegOpenKeyExA", &OpenUserKey);
    for (const auto& c : cases) {
        const TestRegistryKey userKey;
        g_userKey = &userKey;
        for (size_t i = 0; i < std::size(values); ++i) {
            if (c[i] != nullptr)
                userKey.SetText(values[i][0], values[i][1], c[i]);
        }
        Register("Owner", c[4]);
        EXPECT_STREQ(c[5], System::GetUserNameA());
        faults.Arm(1, false);
        EXPECT_STREQ(c[5], System::GetUserReal()) << "where the system tells none";
        faults.Disarm();
    }
}
