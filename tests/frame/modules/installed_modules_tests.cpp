// The list of installed modules, in the registry.
#include "plugin_fixture.h"

#include <zogbl/installed_modules.h>

namespace {

using Names = std::vector<std::string>;

class InstalledModules : public ModulesTest {
protected:
    DWORD Access(LPCSTR module)
    {
        DWORD access = 0;
        m_product.Config().GetValue(kMode, KeyOf(module), "Access", access, 77);
        return access;
    }
    static Names FileNames(const CZoInstalledModules& modules, DWORD mask)
    {
        CStringArray names;
        names.Add("before");
        modules.GetTemplateFileNames(names, mask);
        Names result;
        for (INT_PTR i = 0; i < names.GetSize(); ++i)
            result.emplace_back(names[i]);
        return result;
    }
};

} // namespace

TEST_F(InstalledModules, AreListedWithTheirFlagsAndFiles)
{
    EXPECT_EQ(Names(), FileNames(CZoInstalledModules(TRUE), 0)) << "there is no key yet";
    const std::string longest(260, 'x');
    // In the order of the registry, which sorts names.
    Install("DATABrixel", 7, nullptr);
    Install("FAX32Brixel", {}, "fax.DLL");
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
        const std::pair<DWORD, Names> masks[] = {{1, {longest, "view.DLL"}},
                                                 {9, {longest}},
                                                 {6, {"", ""}}, // data and telephone: their bit 0 is cleared
                                                 {4, {"", "", ""}},
                                                 {0x8000, {}}};
        for (const auto& [mask, expected] : masks)
            EXPECT_EQ(expected, FileNames(modules, mask)) << mask;
        EXPECT_EQ(6u, FileNames(modules, 0).size());
        EXPECT_TRUE(modules.IsTemplateInstalled(ZO_MODULE_VIEW));
        for (const DWORD other : {ZO_MODULE_VIDEO, ZO_MODULE_TELE, ZO_MODULE_FAX, ZO_MODULE_DATA, DWORD{0}, DWORD{401}})
            EXPECT_FALSE(modules.IsTemplateInstalled(other)) << other;
    }
    modules.RemoveAll();
    EXPECT_EQ(Names(), FileNames(modules, 0));
    if (Family() != WindowsFamily::kWin32s) { // where values have no types; those of another count as missing
        m_product.Config().SetValue(kMode, KeyOf("DATABrixel"), "Access", "text");
        m_product.Config().SetValue(kMode, KeyOf("viewbrixel"), "Template", DWORD{5});
        EXPECT_EQ(Names({longest, "", "", "", ""}), FileNames(CZoInstalledModules(TRUE), 0));
    }
    RemoveUsers();
    EXPECT_FALSE(modules.Load());
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
        {ZO_MODULE_TELE, "TELEBrixel", 3, FALSE, 0},  {ZO_MODULE_TELE, "telebrixel", 1, TRUE, 15},
        {ZO_MODULE_TELE, "TELEBrixel", 14, TRUE, 14}, {ZO_MODULE_VIDEO, "VIDEOBrixel", 5, TRUE, 1},
        {ZO_MODULE_FAX, "FAX32Brixel", 1, TRUE, 15},  {ZO_MODULE_VIEW, "VIEWBrixel", 9, TRUE, 1},
        {ZO_MODULE_DATA, "DATABrixel", 1, TRUE, 7},   {ZO_MODULE_DATA, "VIEWBrixel", 9, FALSE, 9},
        {12345, "VIEWBrixel", 9, FALSE, 9},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.identifier << ", " << row.module << ", on " << row.on);
        Clear();
        Install(row.module, row.before, "module.DLL");
        const CZoInstalledModules modules(TRUE);
        const BOOL installed = modules.IsTemplateInstalled(row.identifier);
        modules.SetTemplateInstalled(row.identifier, row.on);
        EXPECT_EQ(row.after, Access(row.module));
        EXPECT_EQ(installed, modules.IsTemplateInstalled(row.identifier)) << "the list itself stays as it was";
    }
}

TEST_F(InstalledModules, SurviveMissingMemoryAndARegistryThatFails)
{
    const Names both = {"data.DLL", "view.DLL"};
    Install("DATABrixel", 7, "data.DLL");
    Install("VIEWBrixel", 1, "view.DLL");
    const CZoInstalledModules whole(TRUE);
    const auto load = [&](const FaultRun& run) {
        CZoInstalledModules modules;
        const BOOL loaded = modules.Load();
        run.Stop();
        const Names names = FileNames(modules, 1);
        if (run.source.Name() == "registry") { // what could be read counts
            EXPECT_TRUE(std::includes(both.begin(), both.end(), names.begin(), names.end())) << names.size();
        } else {
            EXPECT_EQ(loaded ? both : Names(), names);
        }
        EXPECT_TRUE(run.Fired() || names == both);
    };
    const auto list = [&](const FaultRun& run) {
        CStringArray names;
        whole.GetTemplateFileNames(names, 1);
        EXPECT_EQ(run.Fired() ? 0 : 2, names.GetSize());
    };
    const auto switchOn = [&](const FaultRun& run) { // the flags are as before or as after
        Install("DATABrixel", 1, nullptr);
        run.Act([&] { whole.SetTemplateInstalled(ZO_MODULE_DATA, TRUE); });
        EXPECT_TRUE(Access("DATABrixel") == 7 || (run.Fired() && Access("DATABrixel") == 1));
    };
    RunFaultLoop<AllocationFaults>(load);
    RunFaultLoop<AllocationFaults>(list);
    RunFaultActs<AllocationFaults>(switchOn);
    Install("DATABrixel", 7, nullptr);
    RunFaultLoop<RegistryFaults>(load);
    RunFaultActs<RegistryFaults>(switchOn);
}
