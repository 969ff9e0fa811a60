// The list of installed modules, in the registry.
#include "product/registered_product.h"
#include "support/test.h"

#include <zogbl/installed_modules.h>

namespace {

constexpr DWORD kMode = ZO_MODE_LOCAL_MACHINE;
constexpr DWORD kNone = 0xFFFFFFFE; // no such value

class InstalledModules : public testing::Test {
protected:
    InstalledModules()
    {
        CZoVersionResource version;
        EXPECT_TRUE(version.ExtractVersionInfo());
        m_key = version.GetInstalledModulesKey();
        m_product.Config().DeleteSection(kMode, m_key, nullptr);
    }

    CString KeyOf(LPCSTR module) const { return m_key + "\\" + module + "\\3.9"; }
    void Install(LPCSTR module, DWORD access, LPCSTR fileName)
    {
        EXPECT_EQ(0u, m_product.Config().CreateKey(kMode, KeyOf(module)));
        if (access != kNone) {
            EXPECT_EQ(0u, m_product.Config().SetValue(kMode, KeyOf(module), "Access", access));
        }
        if (fileName != nullptr) {
            EXPECT_EQ(0u, m_product.Config().SetValue(kMode, KeyOf(module), "Template", fileName));
        }
    }
    DWORD Access(LPCSTR module)
    {
        DWORD access = 0;
        m_product.Config().GetValue(kMode, KeyOf(module), "Access", access, kNone);
        return access;
    }
    static std::vector<std::string> FileNames(const CZoInstalledModules& modules, DWORD mask)
    {
        CStringArray names;
        names.Add("before");
        modules.GetTemplateFileNames(names, mask);
        std::vector<std::string> result;
        for (INT_PTR i = 0; i < names.GetSize(); ++i)
            result.emplace_back(names[i]);
        return result;
    }

    /// The flags are as before or as after.
    void RunSwitchFaults(FaultSource& faults, const CZoInstalledModules& modules)
    {
        Install("DATABrixel", 1, nullptr);
        RunFaultLoop(faults, [&](const FaultRun& run) {
            modules.SetTemplateInstalled(ZO_MODULE_DATA, TRUE);
            const bool failed = run.Fired();
            run.Stop();
            EXPECT_TRUE(Access("DATABrixel") == 7 || (failed && Access("DATABrixel") == 1));
            Install("DATABrixel", 1, nullptr);
        });
    }

    RegisteredProduct m_product;
    CString m_key;
};

using Names = std::vector<std::string>;

} // namespace

TEST_F(InstalledModules, AreListedWithTheirFlagsAndFiles)
{
    EXPECT_EQ(Names(), FileNames(CZoInstalledModules(TRUE), 0)) << "there is no key yet";
    const std::string longest(260, 'x');
    // In the order of the registry, which sorts names.
    Install("DATABrixel", 7, nullptr);
    Install("FAX32Brixel", kNone, "fax.DLL");
    Install("Longest", 9, longest.c_str());
    Install("Other", 4, "other.DLL");
    Install("TELEBrixel", 15, "");
    Install("TooLong", 1, (longest + "x").c_str());
    Install("viewbrixel", 1, "view.DLL");
    m_product.Config().CreateKey(kMode, m_key + "\\VIDEOBrixel\\3.8");
    m_product.Config().SetValue(kMode, m_key + "\\VIDEOBrixel\\3.8", "Access", DWORD{1});

    CZoInstalledModules modules;
    EXPECT_EQ(Names(), FileNames(modules, 0)) << "not read yet";
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(modules.Load());
        static const std::pair<DWORD, Names> masks[] = {
            {1, {longest, "view.DLL"}}, {9, {longest}}, {6, {"", ""}}, // data and telephone: their bit 0 is cleared
            {4, {"", "", ""}},          {0x8000, {}},
        };
        for (const auto& [mask, expected] : masks)
            EXPECT_EQ(expected, FileNames(modules, mask)) << mask;
        EXPECT_EQ(6u, FileNames(modules, 0).size());
        static constexpr std::pair<DWORD, BOOL> known[] = {
            {ZO_MODULE_VIDEO, FALSE},
            {ZO_MODULE_TELE, FALSE},
            {ZO_MODULE_FAX, FALSE},
            {ZO_MODULE_VIEW, TRUE},
            {ZO_MODULE_DATA, FALSE},
            {0, FALSE},
            {401, FALSE},
        };
        for (const auto& [identifier, installed] : known)
            EXPECT_EQ(installed, modules.IsTemplateInstalled(identifier)) << identifier;
    }
    modules.RemoveAll();
    EXPECT_EQ(Names(), FileNames(modules, 0));
    m_product.Config().DeleteSection(kMode, m_product.RootKey() + "\\Users", nullptr);
    EXPECT_FALSE(modules.Load()) << "a product without users has no settings";
}

TEST_F(InstalledModules, WithValuesOfAnotherTypeCountAsWithout)
{
    ZO_ONLY_IN(Family() != WindowsFamily::kWin32s, "values have no types there");
    Install("DATABrixel", 1, "data.DLL");
    Install("VIEWBrixel", 1, "view.DLL");
    m_product.Config().SetValue(kMode, KeyOf("DATABrixel"), "Access", "text");
    m_product.Config().SetValue(kMode, KeyOf("VIEWBrixel"), "Template", DWORD{5});
    EXPECT_EQ(Names{""}, FileNames(CZoInstalledModules(TRUE), 0));
}

TEST_F(InstalledModules, CanBeSwitchedOffButNotOn)
{
    static constexpr struct {
        DWORD identifier;
        LPCSTR module;
        DWORD before;
        BOOL on;
        DWORD after;
    } rows[] = {
        {ZO_MODULE_TELE, "TELEBrixel", 3, TRUE, 15},
        {ZO_MODULE_TELE, "TELEBrixel", 3, FALSE, 0},
        {ZO_MODULE_TELE, "telebrixel", 1, TRUE, 15},
        {ZO_MODULE_TELE, "TELEBrixel", 14, TRUE, 14},
        {ZO_MODULE_TELE, "TELEBrixel", 14, FALSE, 14},
        {ZO_MODULE_VIDEO, "VIDEOBrixel", 5, TRUE, 1},
        {ZO_MODULE_FAX, "FAX32Brixel", 1, TRUE, 15},
        {ZO_MODULE_VIEW, "VIEWBrixel", 9, TRUE, 1},
        {ZO_MODULE_DATA, "DATABrixel", 1, TRUE, 7},
        {ZO_MODULE_DATA, "VIEWBrixel", 9, FALSE, 9},
        {12345, "VIEWBrixel", 9, FALSE, 9},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.identifier << ", " << row.module << ", on " << row.on);
        m_product.Config().DeleteSection(kMode, m_key, nullptr);
        Install(row.module, row.before, "module.DLL");
        const CZoInstalledModules modules(TRUE);
        const BOOL installed = modules.IsTemplateInstalled(row.identifier);
        modules.SetTemplateInstalled(row.identifier, row.on);
        EXPECT_EQ(row.after, Access(row.module));
        EXPECT_EQ(installed, modules.IsTemplateInstalled(row.identifier)) << "the list itself stays as it was";
    }
}

TEST_F(InstalledModules, SurviveMissingMemory)
{
    Install("DATABrixel", 7, "data.DLL");
    Install("VIEWBrixel", 1, "view.DLL");
    const CZoInstalledModules whole(TRUE);
    AllocationFaults faults;
    RunFaultLoop(faults, [&](const FaultRun& run) {
        CZoInstalledModules modules;
        const BOOL loaded = modules.Load();
        const bool failed = run.Fired();
        run.Stop();
        EXPECT_EQ(loaded ? Names({"data.DLL", "view.DLL"}) : Names(), FileNames(modules, 0));
        EXPECT_TRUE(loaded || failed);
    });
    RunFaultLoop(faults, [&](const FaultRun& run) {
        CStringArray names;
        whole.GetTemplateFileNames(names, 1);
        EXPECT_EQ(run.Fired() ? 0 : 2, names.GetSize());
    });
    RunSwitchFaults(faults, whole);
}

TEST_F(InstalledModules, SurviveARegistryThatFails)
{
    Install("DATABrixel", 7, "data.DLL");
    Install("VIEWBrixel", 1, "view.DLL");
    const CZoInstalledModules whole(TRUE);
    RegistryFaults faults;
    RunFaultLoop(faults, [&](const FaultRun& run) {
        CZoInstalledModules modules;
        modules.Load();
        const bool failed = run.Fired();
        run.Stop();
        const Names names = FileNames(modules, 1);
        for (const std::string& name : names)
            EXPECT_TRUE(name == "data.DLL" || name == "view.DLL") << name;
        EXPECT_TRUE(failed || names.size() == 2);
    });
    RunSwitchFaults(faults, whole);
}
