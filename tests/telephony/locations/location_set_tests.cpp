// Locations as an editor changes them: two editors at once, writing that fails.
#include "location_fixture.h"

#include "telephony/locations/location_set.h"

namespace {

class LocationSetTest : public LocationTest {
protected:
    LocationSetTest()
    {
        for (const DWORD index : {0, 2, 3})
            Save(index, ("kept " + std::to_string(index)).c_str());
        CZoLocationItemList().SetCurrentIndex(2);
        EXPECT_EQ(0u, m_set.Load());
    }
    static Values Saved(DWORD index)
    {
        Item item(index);
        return item.LoadByIndex(index) == 0 ? Contents(item) : Values();
    }

    LocationSet m_set;
    int m_failed = -2;
};

} // namespace

TEST_F(LocationSetTest, WritesWhatWasChangedAndNothingElse)
{
    EXPECT_TRUE(!m_set.IsChanged() && m_set.GetCurrent() == 1);
    const Values before = Saved(3);
    m_set.GetAt(0).m_csaPhoneNumbers[7] = "555-0100";
    m_set.Remove(1);
    EXPECT_EQ(0, m_set.GetCurrent());
    EXPECT_EQ(2, m_set.Add());
    EXPECT_EQ(1u, m_set.GetAt(2).m_dwIndex);
    const std::string letter = IsDoubleByte() ? "\x83\x5C" : "\xFC", capital = IsDoubleByte() ? letter : "\xDC";
    const std::string name = "B" + letter + "ro";
    m_set.GetAt(2).m_csLocationName = name.c_str();
    EXPECT_EQ(2, m_set.FindName(("b" + capital + "RO").c_str()));
    EXPECT_EQ(-1, m_set.FindName(name.c_str(), 2));
    EXPECT_TRUE(Saved(1).empty() && m_set.IsChanged()) << "nothing is written yet";
    EXPECT_EQ(0u, m_set.Save(m_failed));
    EXPECT_FALSE(m_set.IsChanged());
    EXPECT_EQ(Contents(m_set.GetAt(0)), Saved(0));
    EXPECT_EQ(name, Saved(1)[1].second);
    EXPECT_TRUE(Saved(2).empty());
    EXPECT_EQ(before, Saved(3));
    EXPECT_EQ(0u, CZoLocationItemList().GetCurrentIndex());
    while (m_set.GetCount() > 0)
        m_set.Remove(0);
    EXPECT_EQ(0u, m_set.Save(m_failed));
    EXPECT_EQ(ZO_NO_LOCATION, CZoLocationItemList().GetCurrentIndex());
}

TEST_F(LocationSetTest, HoldsAHundredWithTheLongestTexts)
{
    while (m_set.GetCount() < LocationSet::kMost) {
        const int position = m_set.Add();
        ASSERT_GE(position, 0);
        Fill(m_set.GetAt(position), "new", 255);
    }
    EXPECT_EQ(-1, m_set.Add());
    EXPECT_EQ(0u, m_set.Save(m_failed));
    LocationSet again;
    EXPECT_EQ(0u, again.Load());
    ASSERT_EQ(LocationSet::kMost, again.GetCount());
    std::set<Values> contents, expected;
    for (int i = 0; i < LocationSet::kMost; ++i) {
        contents.insert(Contents(again.GetAt(i)));
        expected.insert(Contents(m_set.GetAt(i)));
    }
    EXPECT_EQ(expected, contents);
}

TEST_F(LocationSetTest, TwoEditorsLoseNothing)
{
    LocationSet other;
    EXPECT_EQ(0u, other.Load());
    m_set.GetAt(0).m_csCity = "ours";
    m_set.GetAt(0).m_csaPhoneAreas[2] = "22";
    m_set.GetAt(2).m_csState = "changed here, removed there";
    m_set.GetAt(m_set.Add()).m_csLocationName = "our new one";
    m_set.SetCurrent(3);
    other.GetAt(0).m_csCity = other.GetAt(0).m_csDept = "theirs";
    other.GetAt(0).m_csaPhoneAreas[3] = "33";
    other.GetAt(other.Add()).m_csLocationName = "their new one";
    other.Remove(2);
    EXPECT_EQ(0u, other.Save(m_failed));
    EXPECT_EQ(0u, m_set.Save(m_failed));
    Item merged(0);
    EXPECT_EQ(0u, merged.LoadByIndex(0));
    EXPECT_STREQ("ours", merged.m_csCity);
    EXPECT_STREQ("theirs", merged.m_csDept);
    EXPECT_EQ("22 33", std::string(merged.m_csaPhoneAreas[2]) + " " + merged.m_csaPhoneAreas[3].GetString());
    EXPECT_EQ(Contents(m_set.GetAt(2)), Saved(3));
    EXPECT_EQ("their new one", Saved(1)[1].second);
    EXPECT_EQ("our new one", Saved(4)[1].second);
    EXPECT_EQ(4u, CZoLocationItemList().GetCurrentIndex()) << "the new one, which has got another index";
}

TEST_F(LocationSetTest, KeepsAllThatCouldNotBeWritten)
{
    const Values before = Saved(0);
    const auto use = [&](const FaultRun& run) {
        LocationSet set;
        EXPECT_EQ(0u, set.Load());
        set.GetAt(0).m_csCity = "changed";
        set.GetAt(set.Add()).m_csLocationName = "new";
        const Values changed = Contents(set.GetAt(0)), added = Contents(set.GetAt(3));
        int failed = -1;
        const DWORD status = run.Act([&] { return set.Save(failed); });
        EXPECT_TRUE(status == 0 || run.Fired());
        EXPECT_TRUE(status == 0 ? failed == -1 : failed >= -1 && failed < set.GetCount()) << failed;
        if (status != 0 && failed == 0) {
            EXPECT_TRUE(Saved(0) == before || run.persistent); // nothing can be put back either
        }
        EXPECT_EQ(0u, set.Save(failed));
        EXPECT_EQ(changed, Saved(0));
        EXPECT_EQ("new", Saved(set.GetAt(3).m_dwIndex)[1].second);
        set.Remove(3);
        Item first(0);
        Fill(first, "kept 0", 40);
        CopyLocation(set.GetAt(0), first);
        EXPECT_EQ(0u, set.Save(failed));
        EXPECT_EQ(before, Saved(0));
    };
    RegistryFaults registry;
    RunFaultActs(registry, use, {.stride = 23});
    AllocationFaults memory;
    RunFaultActs(memory, use, {.stride = 53});
}
