// ZoProvision, run as a person would, on the fixture "plain": product "Plain" 7.12 of the company "Zo Tests".

#include <zogbl/global_config.h>

#include "product/registered_product.h"
#include "support/test.h"

namespace {

constexpr DWORD kMachine = ZO_MODE_LOCAL_MACHINE;
constexpr char kLanguages[] = "Software\\Zo Tests\\Plain\\7.12\\Users\\tester\\Modules\\Fixture\\7.12\\Languages";

std::string OwnFolder()
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path - 1);
    const std::string own(path);
    return own.substr(0, own.rfind('\\') + 1);
}

/// Runs the program. \return its exit code.
DWORD Provision(const std::string& arguments)
{
    std::string command = "\"" + OwnFolder() + "ZoProvision.exe\" " + arguments;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        return 1000;
    DWORD code = 1001;
    if (WaitForSingleObject(process.hProcess, 30000) == WAIT_OBJECT_0)
        GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

std::string Plain() { return " \"" + OwnFolder() + "fixture_plain.DLL\""; }

class ProvisionTest : public testing::Test {
protected:
    void SetUp() override { Clear(); }
    void TearDown() override { Clear(); }
    void Clear()
    {
        Provision("--remove" + Plain());
        Provision("--remove");
        m_config.DeleteSection(kMachine, "Software", "Zo Tests");
    }
    bool HasKey(LPCSTR parent, LPCSTR name)
    {
        BOOL exists = FALSE;
        m_config.DoesSubkeyExist(kMachine, parent, name, exists);
        return exists;
    }
    std::set<std::string> Languages()
    {
        std::set<std::string> list;
        const auto collect = [](void* context, LPCSTR name, const void* data, DWORD) {
            static_cast<std::set<std::string>*>(context)->insert(std::string(name) + "=" +
                                                                 std::to_string(ZoEnumeratedNumber(data)));
            return DWORD{0};
        };
        m_config.EnumValues(kMachine, kLanguages, collect, &list);
        return list;
    }

    CZoGlobalConfig m_config;
};

} // namespace

TEST_F(ProvisionTest, ExitCodesTellWhatHappened)
{
    EXPECT_EQ(0u, Provision("--help"));
    for (const char* wrong : {"--nonsense", "--user", "--user a\\b", "--languages", "--languages 0409,",
                              "--languages xyz", "--current 12345", "--languages 0409 --current 0407"})
        EXPECT_EQ(2u, Provision(wrong)) << wrong;
    EXPECT_EQ(1u, Provision("--languages 0409,041f")) << "Turkish has no library";
    EXPECT_EQ(1u, Provision("\"" + OwnFolder() + "fixture_nameless.DLL\"")) << "names no module";
    EXPECT_EQ(1u, Provision("no-such-file.exe"));
    EXPECT_EQ(1u, Provision("\"" + OwnFolder() + "fixture_bare.DLL\"")) << "names no product";
    EXPECT_FALSE(HasKey("Software", "Zo Tests"));
}

TEST_F(ProvisionTest, RegistersAndChangesNothingThatIsThere)
{
    const std::string user = "--user tester --languages 0409,0407";
    ASSERT_EQ(0u, Provision(user + Plain()));
    EXPECT_EQ((std::set<std::string>{"0409=1", "0407=0"}), Languages()) << "the first one given is current";
    DWORD access = 9;
    const CString module = "Software\\Zo Tests\\Plain\\7.12\\Users\\tester\\Modules\\Fixture\\7.12";
    EXPECT_EQ(0u, m_config.GetValue(kMachine, module, "Access", access, 9));
    EXPECT_EQ(0u, access);

    ASSERT_EQ(0u, m_config.SetValue(kMachine, module, "Access", 5));
    ASSERT_EQ(0u, m_config.SetValue(kMachine, kLanguages, "0409", DWORD{0}));
    ASSERT_EQ(0u, m_config.SetValue(kMachine, kLanguages, "0407", DWORD{1}));
    ASSERT_EQ(0u, Provision(user + Plain()));
    EXPECT_EQ(0u, m_config.GetValue(kMachine, module, "Access", access, 9));
    EXPECT_EQ(5u, access);
    DWORD flag = 9;
    EXPECT_EQ(0u, m_config.GetValue(kMachine, kLanguages, "0407", flag, 9));
    EXPECT_EQ(1u, flag) << "the user's choice stands";

    ASSERT_EQ(0u, Provision("--user tester --languages 0409" + Plain()));
    EXPECT_EQ(std::set<std::string>{"0409=1"}, Languages()) << "a language taken away is no longer listed";
}

TEST_F(ProvisionTest, LibraryStaysAsLongAsAProductNeedsIt)
{
    constexpr char kSuite[] = "Software\\Zo,Inc.\\Brixel Suite\\3.9\\Users\\tester\\Modules";
    ASSERT_EQ(0u, Provision("--user tester" + Plain()));
    ASSERT_EQ(0u, Provision("--user tester"));
    EXPECT_TRUE(HasKey(kSuite, "GlobalModule"));
    EXPECT_TRUE(HasKey(kSuite, "Workbench"));
    static constexpr struct {
        LPCSTR module;
        DWORD access;
        LPCSTR fileName;
    } templates[] = {
        {"VIEWBrixel", 1, "ZOVIEWER.DLL"}, {"DATABrixel", 7, "ZODATA.DLL"}, {"TELEBrixel", 15, "ZOPHONE.DLL"}};
    for (const auto& library : templates) {
        const CString key = CString(kSuite) + "\\" + library.module + "\\3.9";
        DWORD access = 0;
        char fileName[40];
        EXPECT_EQ(0u, m_config.GetValue(kMachine, key, "Access", access, 0));
        EXPECT_EQ(library.access, access) << library.module;
        EXPECT_EQ(0u, m_config.GetValue(kMachine, key, "Template", fileName, sizeof fileName, ""));
        EXPECT_STREQ(library.fileName, fileName);
    }
    EXPECT_EQ(0u, Provision("--remove"));
    EXPECT_FALSE(HasKey(kSuite, "Workbench"));
    EXPECT_TRUE(HasKey(kSuite, "GlobalModule")) << "the other product needs it";
    EXPECT_EQ(0u, Provision("--remove" + Plain()));
    EXPECT_FALSE(HasKey("Software", "Zo,Inc."));
    EXPECT_FALSE(HasKey("Software", "Zo Tests"));
}

TEST_F(ProvisionTest, InstallationsOfAProductShareItsSettings)
{
    const TestFolder other;
    const std::string copy = other.Path("fixture_plain.DLL");
    ASSERT_TRUE(CopyFileA((OwnFolder() + "fixture_plain.DLL").c_str(), copy.c_str(), TRUE));
    ASSERT_EQ(0u, Provision("--user tester" + Plain()));
    ASSERT_EQ(0u, Provision("--user tester \"" + copy + "\""));
    ASSERT_EQ(0u, Provision("--user tester" + Plain())) << "once more, which counts once";
    for (int round = 0; round < 2; ++round) { // the second time it is not registered any more
        EXPECT_EQ(0u, Provision("--remove" + Plain()));
        EXPECT_TRUE(HasKey("Software\\Zo Tests\\Plain\\7.12\\Users", "tester"));
        EXPECT_TRUE(HasKey("Software", "Zo,Inc.")) << "the library is in use";
    }
    EXPECT_EQ(0u, Provision("--remove \"" + copy + "\""));
    EXPECT_FALSE(HasKey("Software", "Zo Tests"));
    EXPECT_FALSE(HasKey("Software", "Zo,Inc."));
}

TEST_F(ProvisionTest, RemovesAUserOrAllOfTheProduct)
{
    ASSERT_EQ(0u, Provision("--user tester" + Plain()));
    ASSERT_EQ(0u, Provision("--user other" + Plain()));
    EXPECT_EQ(0u, Provision("--remove --user tester" + Plain()));
    EXPECT_FALSE(HasKey("Software\\Zo Tests\\Plain\\7.12\\Users", "tester"));
    EXPECT_TRUE(HasKey("Software\\Zo Tests\\Plain\\7.12\\Users", "other"));
    EXPECT_EQ(0u, Provision("--remove" + Plain()));
    EXPECT_FALSE(HasKey("Software", "Zo Tests")) << "with the keys above it that became empty";
    EXPECT_EQ(0u, Provision("--remove" + Plain())) << "nothing left to remove";

    ASSERT_EQ(0u, m_config.CreateKey(kMachine, "Software\\Zo Tests\\Another Product"));
    ASSERT_EQ(0u, Provision("--user tester" + Plain()));
    EXPECT_EQ(0u, Provision("--remove" + Plain()));
    EXPECT_TRUE(HasKey("Software\\Zo Tests", "Another Product"));
}

TEST_F(ProvisionTest, WhatCouldNotBeRemovedCanBeRemovedAgain)
{
    // A name that has no form in the code page stops the deletion.
    constexpr wchar_t kStuck[] = L"Software\\Zo Tests\\Plain\\7.12\\Users\\tester\\\xD7\x5D0";
    ASSERT_EQ(0u, Provision("--user tester" + Plain()));
    HKEY stuck = nullptr;
    ASSERT_EQ(0, RegCreateKeyExW(HKEY_LOCAL_MACHINE, kStuck, 0, nullptr, 0, KEY_READ | KEY_WOW64_32KEY, nullptr, &stuck,
                                 nullptr));
    RegCloseKey(stuck);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(1u, Provision("--remove --user tester" + Plain()));
        EXPECT_EQ(1u, Provision("--remove" + Plain()));
        EXPECT_TRUE(HasKey("Software\\Zo Tests\\Plain\\7.12\\Users", "tester"));
    }
    EXPECT_EQ(0, RegDeleteKeyExW(HKEY_LOCAL_MACHINE, kStuck, KEY_WOW64_32KEY, 0));
    EXPECT_EQ(0u, Provision("--remove" + Plain()));
    EXPECT_FALSE(HasKey("Software", "Zo Tests"));
}

namespace {

BOOL CALLBACK CloseVisible(HWND window, LPARAM)
{
    if (IsWindowVisible(window))
        PostMessageA(window, WM_CLOSE, 0, 0);
    return TRUE;
}

} // namespace

TEST(Workbench, TakesNoLibraryFromTheCurrentFolder)
{
    RegisteredProduct product;
    product.RemoveLanguages();
    product.SetLanguage(0x0410, 1); // Italian, for which the product has no library
    const TestFolder folder;
    ASSERT_TRUE(CopyFileA((OwnFolder() + "ZOGBLENU.DLL").c_str(), folder.Path("ZOGBLITA.DLL").c_str(), TRUE));
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    ASSERT_TRUE(CreateProcessA((OwnFolder() + "ZoWorkbench.exe").c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                               folder.Path().c_str(), &startup, &process));
    for (int tries = 0; tries < 300 && WaitForSingleObject(process.hProcess, 100) == WAIT_TIMEOUT; ++tries)
        EnumThreadWindows(process.dwThreadId, &CloseVisible, 0);
    DWORD code = 1000;
    GetExitCodeProcess(process.hProcess, &code);
    ZO_WINE_GAP("an empty folder in SetDllDirectory is taken for none", EXPECT_EQ(1u, code)
                                                                            << "it found a language library");
    TerminateProcess(process.hProcess, 2); // if it hangs
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}
