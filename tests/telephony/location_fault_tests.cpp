// Locations when memory, the registry or the product fail.
#include "location_fixture.h"
#include "support/test.h"

namespace {

constexpr char kLibrary[] = "ZOGBLBRX.DLL";

/// Statuses that tell of a failure, for all kinds of faults.
bool IsDocumented(DWORD status)
{
    const DWORD codes[] = {ZoErrOutOfMemory,   ZoErrMemoryException, ZoErrNoMemory,
                           ZoErrObjectInvalid, ZoErrNoValueName,     RegistryFaults::kError};
    return std::find(std::begin(codes), std::end(codes), status) != std::end(codes);
}

class LocationFaults : public LocationTest {
protected:
    LocationFaults()
    {
        for (Item* item : {&m_first, &m_second, &m_changed})
            Fill(*item, item == &m_changed ? "new" : "old", 60);
        EXPECT_EQ(0u, m_second.SaveByIndex());
    }
    /// Makes location 1 what it was, and 2, which nothing here changes, the current one.
    void Prepare() { ASSERT_EQ(0u, m_first.SaveByIndex() | CZoLocationItemList().SetCurrentIndex(2)); }
    /// Whether a record is as \p expected or gone without a rest.
    bool IsWholeOrGone(const Item& expected)
    {
        Item item(0);
        if (item.LoadByIndex(expected.m_dwIndex) == 0)
            return Contents(item) == Contents(expected);
        CString name;
        name.Format("%08lu", expected.m_dwIndex);
        BOOL exists = TRUE;
        return m_config.DoesSubkeyExist(kMode, m_key, name, exists) == 0 && !exists;
    }

    Item m_first{1}, m_second{2}, m_changed{1};

public:
    /// An operation, and what must hold when it is over. Its own faults are over by then.
    struct Operation {
        const char* name;
        bool changes; // the registry
        void (*run)(LocationFaults& test, const FaultRun& run);
    };
    static const Operation kOperations[7];

    void RunAll(FaultSource& faults)
    {
        FaultLoopOptions options;
        options.stride = 31; // about 60 like values
        for (const Operation& operation : kOperations) {
            SCOPED_TRACE(operation.name);
            faults.Disarm();
            Prepare();
            RunFaultLoop(
                faults,
                [&](const FaultRun& run) {
                    if (operation.changes) {
                        run.Stop();
                        Prepare();
                        faults.Arm(run.number, run.persistent);
                    }
                    operation.run(*this, run);
                },
                options);
            EXPECT_EQ(0u, Item(0).LoadByIndex(2));
        }
    }
    static void Check(const FaultRun& run, DWORD status)
    {
        run.Stop();
        EXPECT_TRUE(status == 0 || (run.Fired() && IsDocumented(status))) << std::hex << status;
    }
};

const LocationFaults::Operation LocationFaults::kOperations[7] = {
    {"load", false,
     [](LocationFaults& test, const FaultRun& run) {
         Item item(0);
         const DWORD status = item.LoadCurrentLocation();
         Check(run, status);
         EXPECT_EQ(status == 0, Contents(item) == Contents(test.m_second));
     }},
    {"load all", false,
     [](LocationFaults& test, const FaultRun& run) {
         CZoLocationItemList list;
         const DWORD status = list.LoadAllItems();
         Check(run, status);
         EXPECT_TRUE(status == 0 ? list.GetCount() == 2 : list.GetCount() < 2);
         if (list.GetCount() > 0) {
             EXPECT_EQ(Contents(test.m_first), Contents(*list.GetAt(0)));
         }
     }},
    {"save", true,
     [](LocationFaults& test, const FaultRun& run) {
         const DWORD status = test.m_changed.SaveByIndex();
         Check(run, status);
         if (status == 0) {
             Item item(0);
             EXPECT_EQ(0u, item.LoadByIndex(1));
             EXPECT_EQ(Contents(test.m_changed), Contents(item));
         } else if (!run.persistent) { // else the record could not be deleted either
             EXPECT_TRUE(test.IsWholeOrGone(test.m_first));
         }
     }},
    {"choose", true,
     [](LocationFaults&, const FaultRun& run) {
         CZoLocationItemList list;
         const DWORD status = list.SetCurrentIndex(1);
         Check(run, status);
         EXPECT_EQ(status == 0 ? 1u : 2u, list.GetCurrentIndex());
     }},
    {"ask", false,
     [](LocationFaults&, const FaultRun& run) {
         const DWORD index = CZoLocationItemList().GetCurrentIndex();
         run.Stop();
         EXPECT_TRUE(index == 2 || (run.Fired() && (index == 0 || index == ZO_NO_LOCATION))) << index;
     }},
    {"delete", true,
     [](LocationFaults& test, const FaultRun& run) {
         run.Stop();
         CZoLocationItemList list;
         CZoLocationItem* item = list.GetNewLocation();
         item->m_dwIndex = 1;
         item->m_csLocationName = "old";
         run.source.Arm(run.number, run.persistent);
         EXPECT_TRUE(list.DeleteByName("old"));
         run.Stop();
         EXPECT_EQ(0, list.GetCount());
         // On Win32s each value is a key: deleting that stops on its way leaves those that it has not come to.
         EXPECT_TRUE(test.IsWholeOrGone(test.m_first) || Family() == WindowsFamily::kWin32s);
     }},
    {"exist", false,
     [](LocationFaults&, const FaultRun& run) {
         CZoLocationRegistry registry;
         const BOOL exists = registry.DoesIndexExist(1);
         run.Stop();
         EXPECT_TRUE(exists || run.Fired());
         // The first allocation is the gateway's, which is not made a second time.
         EXPECT_TRUE(registry.SetDataIndex(1) == 0 || run.number == 1) << "valid again";
     }},
};

} // namespace

TEST_F(LocationFaults, MissingMemoryIsAStatus)
{
    AllocationFaults memory;
    RunAll(memory);
    Prepare();
    Save(0, "zero");
    RunFaultLoop(memory, [](const FaultRun& run) {
        CZoLocationItemList list;
        const CZoLocationItem* item = list.GetNewLocation();
        EXPECT_TRUE(item != nullptr || run.Fired());
        EXPECT_EQ(item != nullptr, list.GetCount() == 1);
        EXPECT_TRUE(item == nullptr || item->m_dwIndex == 3) << "no index that is taken";
    });
}

TEST_F(LocationFaults, RegistryErrorsAreStatuses)
{
    RegistryFaults faults;
    RunAll(faults);
}

TEST_F(LocationFaults, AFailedWriteRemovesTheRecord)
{
    FaultSource faults("write");
    const ZO_FAULTY_CALL(RegSetValueExA) set(faults, kLibrary, ERROR_DISK_FULL);
    const ZO_FAULTY_CALL(RegSetValueA) setOld(faults, kLibrary, ERROR_DISK_FULL);
    RunFaultLoop(faults, [&](const FaultRun& run) {
        run.Stop();
        Prepare();
        faults.Arm(run.number, run.persistent);
        const DWORD status = m_changed.SaveByIndex();
        run.Stop();
        EXPECT_EQ(run.Fired() ? DWORD{ERROR_DISK_FULL} : 0u, status);
        BOOL exists = FALSE;
        EXPECT_EQ(0u, m_config.DoesSubkeyExist(kMode, m_key, "00000001", exists));
        EXPECT_EQ(!run.Fired(), exists != FALSE);
    });
}

TEST_F(LocationFaults, WithoutProductOrStringNothingIsDone)
{
    FaultSource product("product"), strings("string");
    const ZO_FAULTY_CALL(GetModuleFileNameA) name(product, kLibrary, 0);
    const ZO_FAULTY_CALL(GetFileVersionInfoSizeA) size(product, kLibrary, 0);
    const ZO_FAULTY_CALL(GetFileVersionInfoA) info(product, kLibrary, FALSE);
    const ZO_FAULTY_CALL(LoadStringA) load(strings, kLibrary, 0);
    for (FaultSource* faults : {&product, &strings})
        RunAll(*faults);
    Prepare();
    product.Arm(1, true);
    Item item(1);
    CZoLocationRegistry registry;
    EXPECT_FALSE(registry.IsClassDataValid());
    DWORD index = 0;
    for (const DWORD status : {registry.SetDataIndex(1), registry.GetCurrentIndex(index), registry.SetCurrentIndex(1),
                               registry.DeleteIndex(1), item.LoadByIndex(1), item.SaveByIndex()})
        EXPECT_EQ(ZoErrObjectInvalid, status);
    EXPECT_EQ(ZO_NO_LOCATION, index);
    EXPECT_EQ(ZoErrOutOfMemory, CZoLocationItemList().LoadAllItems());
    product.Disarm();
    EXPECT_TRUE(IsWholeOrGone(m_first));
    EXPECT_EQ(0u, item.LoadByIndex(1)) << "was not touched";
}
