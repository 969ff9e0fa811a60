// Locations when memory, the registry or the product fail.
#include "location_fixture.h"
#include "support/test.h"

namespace {

class LocationFaults : public LocationTest {
protected:
    LocationFaults()
    {
        for (Item* item : {&m_first, &m_second, &m_changed})
            Fill(*item, item == &m_changed ? "new" : "old", 60);
        EXPECT_EQ(0u, m_second.SaveByIndex());
    }
    /// Makes location 0 what it was, and 2, which nothing here changes, the current one.
    void Prepare() { ASSERT_EQ(0u, m_first.SaveByIndex() | CZoLocationItemList().SetCurrentIndex(2)); }
    /// Whether location 0 is as it was or gone without a rest.
    bool IsWholeOrGone()
    {
        Item item(9);
        BOOL exists = TRUE;
        return item.LoadByIndex(0) == 0 ? Contents(item) == Contents(m_first)
                                        : m_config.DoesSubkeyExist(kMode, m_key, "00000000", exists) == 0 && !exists;
    }
    /// Every operation under each fault of \p faults.
    void RunAll(FaultSource& faults)
    {
        const std::set<DWORD> documented = {ZoErrOutOfMemory,   ZoErrMemoryException, ZoErrNoMemory,
                                            ZoErrObjectInvalid, ZoErrNoValueName,     RegistryFaults::kError};
        const auto loop = [&](const char* name, const std::function<DWORD(const FaultRun&)>& operation) {
            SCOPED_TRACE(name);
            const auto body = [&](const FaultRun& run) {
                Prepare();
                const DWORD status = operation(run);
                EXPECT_TRUE(status == 0 || (run.Fired() && documented.contains(status))) << std::hex << status;
            };
            RunFaultActs(faults, body, {.stride = 31}); // about 60 like values
            EXPECT_EQ(0u, Item(0).LoadByIndex(2));
        };
        loop("load", [&](const FaultRun& run) {
            Item item(0);
            const DWORD status = run.Act([&] { return item.LoadCurrentLocation(); });
            EXPECT_EQ(status == 0, Contents(item) == Contents(m_second));
            return status;
        });
        loop("load all", [&](const FaultRun& run) {
            CZoLocationItemList list;
            const DWORD status = run.Act([&] { return list.LoadAllItems(); });
            EXPECT_TRUE(status == 0 ? list.GetCount() == 2 : list.GetCount() < 2);
            EXPECT_TRUE(list.GetCount() == 0 || Contents(m_first) == Contents(*list.GetAt(0)));
            return status;
        });
        loop("save", [&](const FaultRun& run) {
            const DWORD status = run.Act([&] { return m_changed.SaveByIndex(); });
            Item item(9);
            EXPECT_TRUE(status == 0 ? item.LoadByIndex(0) == 0 && Contents(item) == Contents(m_changed)
                                    : IsWholeOrGone() || run.persistent) // it could not be deleted either
                << status;
            return status;
        });
        loop("choose", [&](const FaultRun& run) {
            const DWORD status = run.Act([] { return CZoLocationItemList().SetCurrentIndex(0); });
            EXPECT_EQ(status == 0 ? 0u : 2u, CZoLocationItemList().GetCurrentIndex());
            return status;
        });
        loop("ask", [&](const FaultRun& run) {
            const DWORD index = run.Act([] { return CZoLocationItemList().GetCurrentIndex(); });
            EXPECT_TRUE(index == 2 || (run.Fired() && (index == 0 || index == ZO_NO_LOCATION))) << index;
            return 0;
        });
        loop("delete", [&](const FaultRun& run) {
            CZoLocationItemList list;
            CZoLocationItem* item = list.GetNewLocation();
            item->m_dwIndex = 0;
            item->m_csLocationName = "old";
            EXPECT_TRUE(run.Act([&] { return list.DeleteByName("old"); }));
            EXPECT_EQ(0, list.GetCount());
            // On Win32s each value is a key: deleting that stops on its way leaves those that it has not come to.
            EXPECT_TRUE(IsWholeOrGone() || Family() == WindowsFamily::kWin32s);
            return 0;
        });
        loop("exist", [&](const FaultRun& run) {
            std::optional<Registry> registry;
            EXPECT_TRUE(run.Act([&] { return registry.emplace().DoesIndexExist(0); }) || run.Fired());
            // The first allocation is the gateway's, which is not made a second time.
            EXPECT_TRUE(registry->SetDataIndex(0) == 0 || run.number == 1) << "valid again";
            return 0;
        });
        loop("make", [&](const FaultRun& run) {
            CZoLocationItemList list;
            const CZoLocationItem* item = run.Act([&] { return list.GetNewLocation(); });
            EXPECT_TRUE(item != nullptr ? item->m_dwIndex == 1 : run.Fired()) << "no index that is taken";
            EXPECT_EQ(item != nullptr, list.GetCount() == 1);
            return 0;
        });
    }

    Item m_first{0}, m_second{2}, m_changed{0};
};

} // namespace

TEST_F(LocationFaults, OfMemoryAndRegistryAreStatuses)
{
    AllocationFaults memory;
    RegistryFaults registry;
    RunAll(memory);
    RunAll(registry);
}

TEST_F(LocationFaults, WithoutProductOrStringNothingIsDone)
{
    ProductFaults product;
    StringFaults strings;
    RunAll(product);
    RunAll(strings);
    Prepare();
    product.Arm(1, true);
    Item item(0);
    Registry registry;
    EXPECT_FALSE(registry.IsClassDataValid());
    DWORD index = 0;
    for (const DWORD status : {registry.SetDataIndex(0), registry.GetCurrentIndex(index), registry.SetCurrentIndex(0),
                               registry.DeleteIndex(0), item.LoadByIndex(0), item.SaveByIndex()})
        EXPECT_EQ(ZoErrObjectInvalid, status);
    EXPECT_EQ(ZO_NO_LOCATION, index);
    EXPECT_EQ(ZoErrOutOfMemory, CZoLocationItemList().LoadAllItems());
    product.Disarm();
    EXPECT_EQ(0u, item.LoadByIndex(0)) << "was not touched";
    EXPECT_EQ(Contents(m_first), Contents(item));
}
