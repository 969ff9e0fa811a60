// Start-up when memory and system calls fail: version resource, language load, country list.
#include <zogbl/country_code.h>
#include <zogbl/module.h>
#include <zogbl/version_resource.h>

#include "product/registered_product.h"
#include "support/test.h"

namespace {

constexpr char kLibrary[] = "ZOGBLBRX.DLL";

/// Either the language is loaded with all that belongs to it, or nothing is and the next attempt works.
void LoadUnderFaults(const FaultRun& run)
{
    const BOOL loaded = ZoGblLoadLanguageDLL();
    run.Stop();
    EXPECT_EQ(loaded != FALSE, ZoGblGetLanguageDLL() != nullptr);
    EXPECT_EQ(loaded ? 0x0409u : 0u, ZoGblGetLanguageLCID());
    if (!run.Fired()) {
        EXPECT_TRUE(loaded);
    }
    if (loaded) {
        EXPECT_TRUE(ZoGblDumpLanguageDLL());
    }
    EXPECT_EQ(nullptr, ZoGblGetLanguageDLL());
}

/// Loops whose runs load each of the 250 names anew.
void RunLongAllocationLoop(void (*body)(const FaultRun&))
{
    AllocationFaults faults;
    FaultLoopOptions options;
    options.maximumRuns = 3000;
    RunFaultLoop(faults, body, options);
}

} // namespace

TEST(LanguageFaults, LoadWithoutMemory)
{
    const RegisteredProduct product;
    ASSERT_TRUE(ZoGblLoadLanguageDLL()); // what the process makes once: fonts, window class, country list
    ZoGblDumpLanguageDLL();
    RunLongAllocationLoop(&LoadUnderFaults);
    EXPECT_EQ(250, GetGlobalCountryList()->GetCount());
}

TEST(LanguageFaults, CountryListIsWholeOnceThereIsMemory)
{
    const RegisteredProduct product;
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    RunLongAllocationLoop([](const FaultRun& run) {
        GetGlobalCountryList()->FreeData();
        const int count = GetGlobalCountryList()->GetCount();
        run.Stop();
        EXPECT_TRUE(count == 250 || (run.Fired() && count == 0)) << count;
        EXPECT_EQ(250, GetGlobalCountryList()->GetCount()) << "at the next asking";
    });
    ZoGblDumpLanguageDLL();
}

TEST(LanguageFaults, CountryListIsNeverInTwoLanguages)
{
    const RegisteredProduct product;
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    CZoCountryCodeList* list = GetGlobalCountryList();
    const auto names = [list] {
        std::vector<std::string> all;
        for (int i = 0; i < list->GetCount(); ++i)
            all.emplace_back(list->GetAt(i)->GetName());
        return all;
    };
    const std::vector<std::string> english = names();
    const HINSTANCE german = LoadLibraryA("ZOGBLDEU.DLL");
    ASSERT_NE(nullptr, german);
    {
        const CDynLinkLibrary overriding(german, german);
        AllocationFaults faults;
        faults.Arm(100, true);
        EXPECT_EQ(ZoErrMemoryException, list->ReloadNames());
        faults.Disarm();
        EXPECT_TRUE(list->AreNamesOutdated());
        EXPECT_EQ(english, names());
        EXPECT_EQ(list, GetGlobalCountryList()); // asking for the list tries again
        EXPECT_FALSE(list->AreNamesOutdated());
        EXPECT_STREQ("Deutschland", list->FindByIndex(276)->GetName());
    }
    FreeLibrary(german);
    EXPECT_EQ(0u, list->ReloadNames());
    EXPECT_EQ(english, names());
    ZoGblDumpLanguageDLL();
}

TEST(LanguageFaults, LoadWithoutTheSystem)
{
    const RegisteredProduct product;
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    ZoGblDumpLanguageDLL();
    FaultSource faults("system");
    const ZO_FAULTY_CALL(GetModuleFileNameA) fileName(faults, kLibrary, 0);
    const ZO_FAULTY_CALL(GetFileVersionInfoSizeA) size(faults, kLibrary, 0);
    const ZO_FAULTY_CALL(GetFileVersionInfoA) info(faults, kLibrary, FALSE);
    const ZO_FAULTY_CALL(VerQueryValueA) value(faults, kLibrary, FALSE);
    const ZO_FAULTY_CALL(GlobalAlloc) allocate(faults, kLibrary, nullptr);
    const ZO_FAULTY_CALL(GlobalLock) lock(faults, kLibrary, nullptr);
    const ZO_FAULTY_CALL(GetUserNameA) user(faults, kLibrary, FALSE);
    const ZO_FAULTY_CALL(LoadLibraryA) load(faults, kLibrary, nullptr, ERROR_MOD_NOT_FOUND);
    const ZO_FAULTY_CALL(GetLocaleInfoA) locale(faults, kLibrary, 0);
    const ZO_FAULTY_CALL(CreateWindowExA) create(faults, "ZOAFX.DLL", nullptr); // the hidden window
    RunFaultLoop(faults, &LoadUnderFaults);
}

TEST(LanguageFaults, VersionResourceWithoutMemory)
{
    const RegisteredProduct product;
    AllocationFaults faults;
    RunFaultLoop(faults, [](const FaultRun& run) {
        CZoVersionResource version;
        const BOOL extracted = version.ExtractVersionInfo(ZoGblGetInstanceHandle());
        run.Stop();
        if (!run.Fired()) {
            EXPECT_TRUE(extracted);
        }
        EXPECT_EQ(extracted != FALSE, !version.GetCurrentUserKey().IsEmpty());
        EXPECT_EQ(extracted != FALSE, !version.GetModuleRootKey().IsEmpty());
        EXPECT_EQ(extracted != FALSE, version.GetInternalName() == "GlobalModule");
    });
}

TEST(LanguageFaults, CountryListWithoutMemory)
{
    const RegisteredProduct product;
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    RunLongAllocationLoop([](const FaultRun& run) {
        CZoCountryCodeList list;
        const DWORD status = list.LoadData();
        run.Stop();
        if (run.Fired()) {
            EXPECT_TRUE(status == ZoErrOutOfMemory || status == ZoErrMemoryException) << std::hex << status;
        } else {
            EXPECT_EQ(0u, status);
        }
        EXPECT_EQ(status == 0, list.GetCount() == GetGlobalCountryList()->GetCount());
        for (int i = 0; i < list.GetCount(); ++i)
            EXPECT_FALSE(list.GetAt(i)->GetName().IsEmpty()) << "a country without its name";
    });

    RunLongAllocationLoop([](const FaultRun& run) {
        ZoCountryTextMap map;
        const BOOL filled = GetCountryCodeMap(map);
        run.Stop();
        EXPECT_EQ(!run.Fired(), filled != FALSE);
        EXPECT_EQ(filled ? GetGlobalCountryList()->GetCount() : 0, static_cast<int>(map.GetCount()));
    });
    ZoGblDumpLanguageDLL();
}
