// ZoProvision, run as a person would, on the fixture "plain": product "Plain" 7.12 of the company "Zo Tests".

#include <zogbl/global_config.h>
#include <zogbl/version_resource.h>

#include "support/registered_product.h"
#include "support/test.h"

namespace {

constexpr DWORD kMachine = ZO_MODE_LOCAL_MACHINE;
constexpr char kUsers[] = "Software\\Zo Tests\\Plain\\7.12\\Users";
constexpr char kModule[] = "Software\\Zo Tests\\Plain\\7.12\\Users\\tester\\Modules\\Fixture\\7.12";
constexpr char kSuite[] = "Software\\Zo,Inc.\\Brixel Suite\\3.9\\Users\\tester\\Modules";
const CString s_languages = CString(kModule) + "\\Languages";

/// Runs the program. \return its exit code.
DWORD Provision(const std::string& arguments) { return RunProgram("ZoProvision.exe " + arguments); }

/// A file of the build, as an argument.
std::string Built(const std::string& name) { return " \"" + ProgramFolder() + name + "\""; }
const std::string s_plain = Built("fixture_plain.DLL");

BOOL CALLBACK CloseVisible(HWND window, LPARAM)
{
    return !IsWindowVisible(window) || PostMessageA(window, WM_CLOSE, 0, 0);
}

int s_boxes = 0; // that were answered

/// Closes a main window, and says OK to what it asks.
BOOL CALLBACK CloseAndAnswer(HWND window, LPARAM)
{
    const HWND ok = GetDlgItem(window, IDOK);
    if (!IsWindowVisible(window) || !IsWindowEnabled(window))
        return TRUE;
    s_boxes += ok != nullptr;
    return ok != nullptr ? SendMessageA(ok, BM_CLICK, 0, 0) == 0 : PostMessageA(window, WM_CLOSE, 0, 0);
}

class ProvisionTest : public testing::Test {
protected:
    ProvisionTest() { Clear(); }
    ~ProvisionTest() override { Clear(); }
    void Clear()
    {
        Provision("--remove" + s_plain);
        Provision("--remove");
        m_config.DeleteSection(kMachine, "Software", "Zo Tests");
    }
    bool HasKey(LPCSTR parent, LPCSTR name)
    {
        BOOL exists = FALSE;
        m_config.DoesSubkeyExist(kMachine, parent, name, exists);
        return exists;
    }
    /// Runs the program, and sees what is registered then: users of the product, companies, modules of the suite.
    void Run(const std::string& arguments, const std::string& registered, DWORD code = 0)
    {
        SCOPED_TRACE(arguments);
        EXPECT_EQ(code, Provision(arguments));
        std::string names;
        for (const auto& [parent, name] : {std::pair{kUsers, "tester"},
                                           {kUsers, "other"},
                                           {"Software", "Zo Tests"},
                                           {"Software", "Zo,Inc."},
                                           {kSuite, "GlobalModule"},
                                           {kSuite, "Workbench"}}) {
            names += HasKey(parent, name) ? std::string(name) + "|" : "";
        }
        EXPECT_EQ(registered, names);
    }
    /// The languages of the user "tester", each with its mark.
    std::set<std::string> Languages()
    {
        std::set<std::string> list;
        const auto collect = [](void* context, LPCSTR name, const void* data, DWORD) {
            static_cast<std::set<std::string>*>(context)->insert(name +
                                                                 ("=" + std::to_string(ZoEnumeratedNumber(data))));
            return DWORD{0};
        };
        m_config.EnumValues(kMachine, s_languages, collect, &list);
        return list;
    }
    DWORD Access(const CString& module)
    {
        DWORD access = 0;
        m_config.GetValue(kMachine, module, "Access", access, 99);
        return access;
    }

    CZoGlobalConfig m_config;
};

} // namespace

TEST_F(ProvisionTest, ExitCodesTellWhatHappened)
{
    EXPECT_EQ(0u, Provision("--help"));
    for (const char* wrong :
         {"--nonsense", "--user", "--user a\\b", "--languages", "--languages 0409,", "--languages xyz",
          "--languages 10409", "--current 12345", "--languages 0409 --current 0407"})
        EXPECT_EQ(2u, Provision(wrong)) << wrong;
    EXPECT_EQ(1u, Provision("--languages 0409,041f")) << "Turkish has no library";
    EXPECT_EQ(1u, Provision(Built("fixture_nameless.DLL"))) << "names no module";
    EXPECT_EQ(1u, Provision("no-such-file.exe"));
    EXPECT_EQ(1u, Provision(Built("fixture_bare.DLL"))) << "names no product";
    EXPECT_FALSE(HasKey("Software", "Zo Tests"));
}

TEST_F(ProvisionTest, RegistersAndChangesNothingThatIsThere)
{
    using List = std::set<std::string>;
    const std::string user = "--user tester --languages 0409,0407";
    ASSERT_EQ(0u, Provision(user + s_plain));
    EXPECT_EQ((List{"0409=1", "0407=0"}), Languages()) << "the first one given is current";
    EXPECT_EQ(0u, Access(kModule));
    ASSERT_EQ(0u, m_config.SetValue(kMachine, kModule, "Access", 5));
    ASSERT_EQ(0u, m_config.SetValue(kMachine, s_languages, "0409", DWORD{0}));
    ASSERT_EQ(0u, m_config.SetValue(kMachine, s_languages, "0407", DWORD{1}));
    ASSERT_EQ(0u, Provision(user + s_plain));
    EXPECT_EQ(5u, Access(kModule));
    EXPECT_EQ((List{"0409=0", "0407=1"}), Languages()) << "the user's choice stands";
    ASSERT_EQ(0u, Provision("--user tester --languages 0409" + s_plain));
    EXPECT_EQ(List{"0409=1"}, Languages()) << "a language taken away is no longer listed";
}

TEST_F(ProvisionTest, LibraryStaysAsLongAsAProductNeedsIt)
{
    Run("--user tester" + s_plain, "tester|Zo Tests|Zo,Inc.|GlobalModule|");
    Run("--user tester", "tester|Zo Tests|Zo,Inc.|GlobalModule|Workbench|");
    const std::tuple<LPCSTR, DWORD, LPCSTR> templates[] = {
        {"VIEWBrixel", 1, "ZOVIEWER.DLL"}, {"DATABrixel", 7, "ZODATA.DLL"}, {"TELEBrixel", 15, "ZOPHONE.DLL"}};
    for (const auto& [module, access, fileName] : templates) {
        const CString key = CString(kSuite) + "\\" + module + "\\3.9";
        EXPECT_EQ(access, Access(key)) << module;
        char name[40];
        EXPECT_EQ(0u, m_config.GetValue(kMachine, key, "Template", name, sizeof name, ""));
        EXPECT_STREQ(fileName, name);
    }
    Run("--remove", "tester|Zo Tests|Zo,Inc.|GlobalModule|");
    Run("--remove" + s_plain, "");
}

TEST_F(ProvisionTest, InstallationsOfAProductShareItsSettings)
{
    const TestFolder other;
    const std::string copy = other.Path("fixture_plain.DLL"), all = "tester|Zo Tests|Zo,Inc.|GlobalModule|";
    ASSERT_TRUE(CopyFileA((ProgramFolder() + "fixture_plain.DLL").c_str(), copy.c_str(), TRUE));
    for (const std::string& module : {s_plain, " \"" + copy + "\"", s_plain}) // the last once more, which counts once
        Run("--user tester" + module, all);
    for (int round = 0; round < 2; ++round) // the second time it is not registered any more
        Run("--remove" + s_plain, all);
    Run("--remove \"" + copy + "\"", "");
}

TEST_F(ProvisionTest, RemovesAUserOrAllOfTheProduct)
{
    Run("--user tester" + s_plain, "tester|Zo Tests|Zo,Inc.|GlobalModule|");
    Run("--user other" + s_plain, "tester|other|Zo Tests|Zo,Inc.|GlobalModule|");
    Run("--remove --user tester" + s_plain, "other|Zo Tests|Zo,Inc.|GlobalModule|");
    Run("--remove" + s_plain, ""); // with the keys above it that became empty
    Run("--remove" + s_plain, ""); // nothing left to remove
    ASSERT_EQ(0u, m_config.CreateKey(kMachine, "Software\\Zo Tests\\Another Product"));
    Run("--user tester" + s_plain, "tester|Zo Tests|Zo,Inc.|GlobalModule|");
    Run("--remove" + s_plain, "Zo Tests|");
    EXPECT_TRUE(HasKey("Software\\Zo Tests", "Another Product"));
}

TEST_F(ProvisionTest, WhatCouldNotBeRemovedCanBeRemovedAgain)
{
    // A name that has no form in the code page stops the deletion.
    constexpr wchar_t kStuck[] = L"Software\\Zo Tests\\Plain\\7.12\\Users\\tester\\\xD7\x5D0";
    const std::string all = "tester|Zo Tests|Zo,Inc.|GlobalModule|";
    Run("--user tester" + s_plain, all);
    HKEY stuck = nullptr;
    ASSERT_EQ(0, RegCreateKeyExW(HKEY_LOCAL_MACHINE, kStuck, 0, nullptr, 0, KEY_READ | KEY_WOW64_32KEY, nullptr, &stuck,
                                 nullptr));
    RegCloseKey(stuck);
    for (const char* remove : {"--remove --user tester", "--remove", "--remove --user tester", "--remove"})
        Run(remove + s_plain, all, 1);
    EXPECT_EQ(0, RegDeleteKeyExW(HKEY_LOCAL_MACHINE, kStuck, KEY_WOW64_32KEY, 0));
    Run("--remove" + s_plain, "");
}

TEST(Workbench, TakesNoLibraryFromTheCurrentFolder)
{
    RegisteredProduct product;
    product.RemoveLanguages();
    product.SetLanguage(0x0410, 1); // Italian, for which the product has no library
    const TestFolder folder;
    for (const std::string module : {"ZOGBL", "ZOWOR"}) {
        const std::string library = folder.Path(module + "ITA.DLL");
        ASSERT_TRUE(CopyFileA((ProgramFolder() + module + "ENU.DLL").c_str(), library.c_str(), TRUE));
    }
    const auto closeAll = [](DWORD thread) { EnumThreadWindows(thread, &CloseVisible, 0); };
    const DWORD code = RunProgram("ZoWorkbench.exe /quiet", folder.Path(), closeAll);
    ZO_WINE_GAP("an empty folder in SetDllDirectory is taken for none", EXPECT_EQ(1u, code)
                                                                            << "it found a language library");
}

TEST_F(ProvisionTest, AWorkbenchAsksBeforeItLeavesAndKeepsItsWindowsUnlessItIsQuiet)
{
    Provision("--languages 0409 --current 0409");
    const HMODULE workbench = LoadLibraryExA("ZoWorkbench.exe", nullptr, DONT_RESOLVE_DLL_REFERENCES);
    CZoVersionResource product;
    EXPECT_TRUE(product.ExtractVersionInfo(workbench));
    FreeLibrary(workbench);
    const auto close = [](DWORD thread) { EnumThreadWindows(thread, &CloseAndAnswer, 0); };
    for (const bool isQuiet : {true, false}) {
        s_boxes = 0;
        EXPECT_EQ(0u, RunProgram(isQuiet ? "ZoWorkbench.exe /quiet" : "ZoWorkbench.exe", "", close));
        EXPECT_EQ(isQuiet, s_boxes == 0);
        EXPECT_EQ(!isQuiet, HasKey(product.GetCurrentUserKey(), "Workbench"));
    }
}
