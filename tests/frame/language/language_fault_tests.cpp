// Start-up when memory and system calls fail: version resource, language load, country list.
#include "host_ids.h"
#include "language_driver.h"

#include <zogbl/country_code.h>
#include <zogbl/module_language.h>
#include <zogbl/resource_lookup.h>

namespace {

class LanguageFaults : public testing::Test {
protected:
    LanguageFaults() { const LoadedLanguage once; } // what the process makes once: fonts, window class, country list

    /// For loops whose runs load each of the 250 names anew.
    static constexpr FaultLoopOptions kManyRuns = {.maximumRuns = 3000};
    /// Either the language is loaded with all that belongs to it, or nothing is and the next attempt works.
    static void LoadUnderFaults(const FaultRun& run)
    {
        const BOOL loaded = ZoGblLoadLanguageDLL();
        run.Stop();
        EXPECT_EQ(loaded != FALSE, ZoGblGetLanguageDLL() != nullptr);
        EXPECT_EQ(loaded ? kEnglish : 0u, ZoGblGetLanguageLCID());
        EXPECT_TRUE(loaded ? ZoGblDumpLanguageDLL() : run.Fired());
        EXPECT_EQ(nullptr, ZoGblGetLanguageDLL());
    }

    const RegisteredProduct m_product;
};

} // namespace

TEST_F(LanguageFaults, LanguageIsLoadedWholeOrNotAtAll)
{
    RunFaultLoop<AllocationFaults>(&LoadUnderFaults, kManyRuns);
    EXPECT_EQ(250, GetGlobalCountryList()->GetCount());
    ProductFaults faults;
    const ZO_FAULTY_CALL(VerQueryValueA) value(faults, kZogbl, FALSE);
    const ZO_FAULTY_CALL(GlobalAlloc) allocate(faults, kZogbl, nullptr);
    const ZO_FAULTY_CALL(GlobalLock) lock(faults, kZogbl, nullptr);
    const ZO_FAULTY_CALL(GetUserNameA) user(faults, kZogbl, FALSE);
    const ZO_FAULTY_CALL(LoadLibraryA) load(faults, kZogbl, nullptr, ERROR_MOD_NOT_FOUND);
    const ZO_FAULTY_CALL(GetLocaleInfoA) locale(faults, kZogbl, 0);
    const ZO_FAULTY_CALL(CreateWindowExA) create(faults, "ZOAFX.DLL", nullptr); // the hidden window
    RunFaultLoop(faults, &LoadUnderFaults);
}

TEST_F(LanguageFaults, CountryListIsWholeOnceThereIsMemory)
{
    const LoadedLanguage loaded;
    const auto countAgain = [](const FaultRun& run) {
        GetGlobalCountryList()->FreeData();
        const int count = GetGlobalCountryList()->GetCount();
        run.Stop();
        EXPECT_TRUE(count == 250 || (run.Fired() && count == 0)) << count;
        EXPECT_EQ(250, GetGlobalCountryList()->GetCount()) << "at the next asking";
    };
    const auto load = [](const FaultRun& run) {
        CZoCountryCodeList list;
        const DWORD status = list.LoadData();
        run.Stop();
        // The sort does without memory of its own.
        EXPECT_TRUE(status == 0 || (run.Fired() && (status == ZoErrOutOfMemory || status == ZoErrMemoryException)))
            << status;
        EXPECT_EQ(status == 0, list.GetCount() == 250);
        for (int i = 0; i < list.GetCount(); ++i)
            EXPECT_FALSE(list.GetAt(i)->GetName().IsEmpty()) << "a country without its name";
    };
    RunFaultLoop<AllocationFaults>(countAgain, kManyRuns);
    RunFaultLoop<AllocationFaults>(load, kManyRuns);
}

TEST_F(LanguageFaults, CountryListIsNeverInTwoLanguages)
{
    const LoadedLanguage loaded;
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
        EXPECT_STREQ("Deutschland", list->FindByIndex(276)->GetName());
    }
    FreeLibrary(german);
    EXPECT_EQ(0u, list->ReloadNames());
}

TEST_F(LanguageFaults, VersionAndOwnTextsAreReadWholeOrNotAtAll)
{
    const LoadedLanguage loaded;
    RunFaultLoop<AllocationFaults>([](const FaultRun& run) {
        CZoVersionResource version;
        const BOOL extracted = version.ExtractVersionInfo(ZoGblGetInstanceHandle());
        EXPECT_NE(run.Fired(), extracted != FALSE);
        EXPECT_EQ(extracted != FALSE, !version.GetCurrentUserKey().IsEmpty());
        EXPECT_EQ(extracted != FALSE, !version.GetModuleRootKey().IsEmpty());
        EXPECT_EQ(extracted != FALSE, version.GetInternalName() == "GlobalModule");
    });
    RunFaultLoop<AllocationFaults>([](const FaultRun& run) {
        CZoModuleLanguage own;
        const BOOL found = own.Load(AfxGetInstanceHandle());
        EXPECT_NE(run.Fired(), found != FALSE);
        EXPECT_EQ(own.GetLibraryHandle(), ZoGblFindStringModule(ZO_IDS_HOST_TEXT));
    });
}
