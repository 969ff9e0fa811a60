#include "location_fixture.h"
#include "support/test.h"

#include <zogbl/resource_ids.h>

namespace {

bool IsWin32s() { return Family() == WindowsFamily::kWin32s; }

using Locations = LocationTest;

/// A list with locations of these names and indexes.
void AddAll(CZoLocationItemList& list, const std::vector<std::pair<DWORD, const char*>>& entries)
{
    for (const auto& [index, name] : entries) {
        CZoLocationItem* item = list.GetNewLocation();
        ASSERT_NE(nullptr, item);
        item->m_dwIndex = index;
        item->m_csLocationName = name;
    }
}

/// What is protected.
struct OpenRegistry : CZoLocationRegistry {
    using CZoLocationRegistry::LoadSection, CZoLocationRegistry::LoadIndex;
};

// A product whose name is too long

constexpr LPCSTR kUsersKey = "Software\\Zo,Inc.\\Brixel Suite\\3.9\\Users";
std::string g_productName;
constexpr DWORD kNameRoom = 2000;
DWORD g_recordSize = 0;

/// Asks for room behind the record, where the name is put.
DWORD WINAPI RoomForName(LPCSTR file, DWORD* ignored)
{
    g_recordSize = GetFileVersionInfoSizeA(file, ignored);
    return g_recordSize + kNameRoom;
}

/// Tells the product's name, and for the rest what the system tells.
BOOL WINAPI QueryLongName(LPCVOID block, LPCSTR path, LPVOID* value, UINT* length)
{
    if (std::strstr(path, "\\ProductName") == nullptr)
        return VerQueryValueA(const_cast<LPVOID>(block), const_cast<LPSTR>(path), value, length);
    char* room = static_cast<char*>(const_cast<void*>(block)) + g_recordSize;
    room[g_productName.copy(room, kNameRoom - 1)] = '\0';
    *value = room;
    *length = static_cast<UINT>(g_productName.size() + 1);
    return TRUE;
}

// The key of the users of that product: not every system takes so long a path.
LONG WINAPI OpenUsers(HKEY root, LPCSTR, DWORD options, REGSAM access, HKEY* key)
{
    return RegOpenKeyExA(root, kUsersKey, options, access, key);
}
LONG WINAPI OpenUsersOld(HKEY root, LPCSTR, HKEY* key) { return RegOpenKeyA(root, kUsersKey, key); }

} // namespace

TEST_F(Locations, StandInTheRegistryUnderTheirNames)
{
    Registry registry;
    ASSERT_TRUE(registry.IsClassDataValid());
    EXPECT_EQ(ZO_MODE_LOCAL_MACHINE, registry.GetAccessMode());
    EXPECT_EQ(0u, registry.GetDataIndex());
    EXPECT_EQ(0u, registry.SetDataIndex(3));
    const CString record = RecordKey("00000003");
    EXPECT_STREQ(record, registry.GetSection());
    EXPECT_FALSE(registry.DoesIndexExist(3));
    CString text;
    char stored[99];
    for (const TextField& field : kTexts) {
        text = "before";
        EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, (registry.*field.get)(text));
        EXPECT_STREQ("", text);
        EXPECT_EQ(0u, (registry.*field.set)(field.name));
        EXPECT_EQ(0u, m_config.GetValue(kMode, record, field.name, stored, sizeof stored, nullptr));
        EXPECT_STREQ(field.name, stored);
        EXPECT_EQ(0u, (registry.*field.get)(text));
        EXPECT_STREQ(field.name, text);
    }
    for (DWORD kind = 0; kind < 10; ++kind) {
        const std::string name = kind < 8 ? kKinds[kind] : "Home2"; // what is no kind is the second at home
        const std::string value = std::to_string(kind);
        EXPECT_EQ(0u, registry.SetPhoneArea(kind, value.c_str()) | registry.SetPhoneNumber(kind, value.c_str()));
        for (const std::string& stem : {"Area" + name, "Phone" + name}) {
            EXPECT_EQ(0u, m_config.GetValue(kMode, record, stem.c_str(), stored, sizeof stored, nullptr));
            EXPECT_EQ(value, stored);
        }
        EXPECT_EQ(0u, registry.GetPhoneNumber(kind, text) | registry.GetPhoneArea(kind, text));
        EXPECT_STREQ(value.c_str(), text);
    }
    UINT index = 9;
    DWORD enabled = 9;
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, registry.GetCountryIndex(index));
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, registry.GetTAPIDialing(enabled));
    EXPECT_EQ(0u, index | enabled);
    EXPECT_EQ(0u, registry.SetCountryIndex(276) | registry.SetAddressCountryIndex(44) | registry.SetTAPIDialing(2));
    DWORD value = 0;
    EXPECT_EQ(0u, m_config.GetValue(kMode, record, "AddressCountryIndex", value, 0));
    EXPECT_EQ(0u, registry.GetCountryIndex(index) | registry.GetTAPIDialing(enabled));
    EXPECT_TRUE(value == 44 && index == 276 && enabled == 2) << value << " " << index << " " << enabled;

    EXPECT_EQ(0u, registry.SetDataIndex(5));
    EXPECT_TRUE(registry.DoesIndexExist(3));
    EXPECT_EQ(0u, m_config.DeleteEntry(kMode, record, "CountryCode"));
    EXPECT_FALSE(registry.DoesIndexExist(3)) << "the key alone is no record";
    EXPECT_STREQ(RecordKey("00000005"), registry.GetSection());
    EXPECT_EQ(0u, registry.DeleteIndex(3));
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, registry.DeleteIndex(3));
    EXPECT_STREQ(RecordKey("00000005"), registry.GetSection());
    EXPECT_EQ(5u, registry.GetDataIndex());
    ExpectSlots(6, &OpenRegistry::IsClassDataValid, &OpenRegistry::LoadSection, &OpenRegistry::LoadIndex);
}

TEST_F(Locations, CurrentOneIsKeptBesideTheRecords)
{
    CZoLocationItemList list;
    Item item(9);
    EXPECT_EQ(ZO_NO_LOCATION, list.GetCurrentIndex());
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, item.LoadCurrentLocation());
    EXPECT_EQ(9u, item.m_dwIndex);
    Save(4, "home");
    Registry registry;
    EXPECT_EQ(0u, registry.SetDataIndex(7) | registry.SetCurrentIndex(4));
    DWORD index = 0;
    EXPECT_EQ(0u, registry.GetCurrentIndex(index));
    EXPECT_EQ(4u, index);
    EXPECT_STREQ(RecordKey("00000007"), registry.GetSection());
    EXPECT_EQ(4u, list.GetCurrentIndex());
    EXPECT_EQ(0u, item.LoadCurrentLocation());
    EXPECT_EQ(4u, item.m_dwIndex);
    EXPECT_EQ(0u, list.SetCurrentIndex(5));
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, item.LoadCurrentLocation());
    EXPECT_EQ(5u, item.m_dwIndex);
    EXPECT_EQ(0u, list.LoadAllItems());
    EXPECT_EQ(1, list.GetCount()) << "the value that names the current one is no record";
}

TEST_F(Locations, ARecordThatLacksAnyValueStopsTheLoading)
{
    Save(1, "first");
    Save(2, "second");
    Save(3, "third");
    Item second(2);
    Fill(second, "second", 40);
    const Values stored = Contents(second);
    for (size_t i = 0; i < stored.size(); ++i) {
        SCOPED_TRACE(stored[i].first);
        ASSERT_EQ(0u, m_config.DeleteEntry(kMode, RecordKey("00000002"), stored[i].first.c_str()));
        Item item(8);
        Fill(item, "old", 40);
        Values expected = Contents(item);
        EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, item.LoadByIndex(2));
        EXPECT_EQ(2u, item.m_dwIndex);
        constexpr size_t kPhones = 23; // members before them stay as they were, behind the missing value
        expected[i].second = i == 0 || i == 2 || i == 12 ? "0" : "";
        if (i >= kPhones)
            expected.resize(i);
        std::copy_n(stored.begin(), i, expected.begin());
        EXPECT_EQ(expected, Contents(item));

        CZoLocationItemList list;
        EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, list.LoadAllItems());
        ASSERT_EQ(1, list.GetCount());
        EXPECT_EQ(1u, list.GetFirstItem()->m_dwIndex);
        EXPECT_EQ(0u, list.GetNewLocation()->m_dwIndex);
        EXPECT_EQ(2u, list.GetUniqueIndex());
        EXPECT_EQ(4u, list.GetNewLocation()->m_dwIndex) << "2 and 3 have records, read or not";
        CZoLocationItemList readable;
        EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, readable.LoadReadableItems());
        ASSERT_EQ(2, readable.GetCount());
        EXPECT_EQ(3u, readable.GetAt(1)->m_dwIndex);
        ASSERT_EQ(0u, second.SaveByIndex());
    }
}

TEST_F(Locations, ValuesThatAreNotAsTheyShouldBeStopTheLoading)
{
    Save(2, "second");
    const CString record = RecordKey("00000002");
    const CString tooLong('x', 256);
    Item item(0);
    EXPECT_EQ(0u, m_config.SetValue(kMode, record, "PhonePager", tooLong));
    EXPECT_EQ(DWORD{ERROR_MORE_DATA}, item.LoadByIndex(2));
    EXPECT_EQ(8, item.m_csaPhoneAreas.GetSize());
    EXPECT_EQ(7, item.m_csaPhoneNumbers.GetSize());
    Save(2, "second");
    EXPECT_EQ(0u, item.LoadByIndex(2));
    EXPECT_EQ(8, item.m_csaPhoneNumbers.GetSize()) << "no second set behind the first";
    if (IsWin32s())
        return; // all values are texts
    EXPECT_EQ(0u, m_config.SetValue(kMode, record, "City", 5));
    EXPECT_EQ(ZoErrWrongValueType, item.LoadByIndex(2));
    EXPECT_EQ(0u, m_config.SetValue(kMode, record, "CountryIndex", "276"));
    EXPECT_EQ(ZoErrWrongValueType, item.LoadByIndex(2));
}

TEST_F(Locations, TextsThatCannotBeReadBackAreNotSaved)
{
    Save(2, "second", 255);
    Item longest(2);
    Fill(longest, "second", 255);
    constexpr size_t kMembers = std::size(kTexts);
    for (size_t i = 0; i < kMembers + 2 * ZO_PHONE_KINDS; ++i) {
        SCOPED_TRACE(i);
        Item item(2), stored(0);
        Fill(item, "new", 255);
        const size_t phone = i - kMembers; // of both arrays
        CStringArray& phones = phone < ZO_PHONE_KINDS ? item.m_csaPhoneAreas : item.m_csaPhoneNumbers;
        (i < kMembers ? item.*kTexts[i].member : phones[phone % ZO_PHONE_KINDS]) += "x";
        EXPECT_EQ(DWORD{ERROR_MORE_DATA}, item.SaveByIndex());
        EXPECT_EQ(0u, stored.LoadByIndex(2));
        EXPECT_EQ(Contents(longest), Contents(stored)) << "as it was";
    }
}

TEST_F(Locations, WhatAnItemLacksIsWrittenEmptyAndFlagsAreOneOrNothing)
{
    Item item(6);
    for (const BOOL flag : {0, 1, 2, -1}) {
        item.m_bTAPIDialing = flag;
        EXPECT_EQ(0u, item.SaveByIndex());
        DWORD written = 9;
        EXPECT_EQ(0u, m_config.GetValue(kMode, RecordKey("00000006"), "TAPIDialingEnabled", written, 9));
        EXPECT_EQ(flag == 1 ? 1u : 0u, written);
    }
    EXPECT_EQ(0u, m_config.SetValue(kMode, RecordKey("00000006"), "TAPIDialingEnabled", 0x200));
    item.m_csaPhoneNumbers.Add("555");
    Item loaded(0);
    EXPECT_EQ(0u, loaded.LoadByIndex(6));
    EXPECT_EQ(TRUE, loaded.m_bTAPIDialing);
    EXPECT_EQ(8, loaded.m_csaPhoneAreas.GetSize());
    loaded.ClearData();
    EXPECT_EQ(Contents(Item(0)), Contents(loaded));
    EXPECT_EQ(0u, loaded.m_dwIndex | loaded.m_csaPhoneAreas.GetSize() | loaded.m_csaPhoneNumbers.GetSize());
}

TEST_F(Locations, OnlySubkeysOfDigitsAreRecords)
{
    CZoLocationItemList list;
    EXPECT_EQ(0u, list.LoadAllItems()) << "nothing was saved yet";
    EXPECT_EQ(nullptr, list.GetFirstItem());
    Save(12, "twelve");
    for (const char* name : {"Office", "1x", "-1", "+1", " 1", "0000000x", "\x83\x31"})
        EXPECT_EQ(0u, m_config.CreateKey(kMode, RecordKey(name))) << name;
    EXPECT_EQ(0u, list.LoadAllItems());
    ASSERT_EQ(1, list.GetCount());
    EXPECT_STREQ("twelve", list.GetAt(0)->m_csLocationName.Left(6));
    EXPECT_EQ(0u, m_config.CreateKey(kMode, RecordKey("99999999999"))); // no number of 32 bits
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, list.LoadAllItems()) << "a record without values";
    EXPECT_EQ(2, list.GetCount()) << "added to what was there";
}

TEST_F(Locations, AreFoundByNameIndexAndCountryAndFillABox)
{
    CZoLocationItemList list;
    AddAll(list, {{7, "Home"}, {8, "Office"}, {9, "off"}, {8, ""}, {5, "\x83\x5C\x83\x41"}});
    list.GetAt(1)->m_dwCountryIndex = list.GetAt(2)->m_dwCountryIndex = 276;
    const struct {
        const char* name;
        int prefix;
        int position; // -1: none, as for half a character
    } cases[] = {
        {"home", 0, 0},
        {"HOM", 0, -1},
        {"Off", 0, 2},
        {"Off", 1, 1},
        {"Offices", 1, -1},
        {"off", -1, 1},
        {"", 0, 3},
        {"", 1, 0},
        {nullptr, 1, -1},
        {"\x83\x5C", 1, 4},
        {"\x83", 1, IsDoubleByte() ? -1 : 4},
    };
    for (const auto& [name, prefix, position] : cases) {
        EXPECT_EQ(position < 0 ? nullptr : list.GetAt(position), list.FindByName(name, prefix))
            << (name != nullptr ? name : "(null)") << prefix;
    }
    EXPECT_EQ(list.GetAt(0), list.GetFirstItem());
    EXPECT_EQ(list.GetAt(1), list.FindByIndex(8));
    EXPECT_EQ(nullptr, list.FindByIndex(6));
    EXPECT_EQ(list.GetAt(1), list.FindByCountryIndex(276));
    EXPECT_EQ(nullptr, list.FindByCountryIndex(1));
    EXPECT_EQ(0u, list.GetUniqueIndex()) << "the smallest that is free";
    CWnd parent;
    ASSERT_TRUE(parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr));
    CListBox box;
    ASSERT_TRUE(box.Create(LBS_OWNERDRAWFIXED, CRect(0, 0, 9, 9), &parent, 1));
    box.AddString("stale");
    list.AddItemsToListBox(&box);
    ASSERT_EQ(list.GetCount(), box.GetCount());
    for (int i = 0; i < list.GetCount(); ++i)
        EXPECT_EQ(list.GetAt(i), box.GetItemDataPtr(i));
    EXPECT_EQ(LB_ERR, box.GetCurSel());
}

TEST_F(Locations, AreDeletedByTheBeginningOfTheirNames)
{
    CZoLocationItemList list;
    AddAll(list, {{8, "Office"}, {9, "off"}});
    list.SaveAllItems();
    AddAll(list, {{7, "Home"}});
    Registry registry;
    EXPECT_TRUE(registry.DoesIndexExist(8));
    for (const char* none : {static_cast<const char*>(nullptr), "", "Offices"})
        EXPECT_FALSE(list.DeleteByName(none));
    EXPECT_TRUE(list.DeleteByName("Off"));
    EXPECT_EQ(nullptr, list.FindByIndex(8));
    EXPECT_EQ(2, list.GetCount());
    EXPECT_FALSE(registry.DoesIndexExist(8));
    EXPECT_TRUE(registry.DoesIndexExist(9));
    EXPECT_TRUE(list.DeleteByName("home")) << "was never saved";
    EXPECT_EQ(1, list.GetCount());
}

TEST_F(Locations, AKeyThatDoesNotFitIsNotCutShort)
{
    const ImportPatch size("ZOGBLBRX.DLL", "GetFileVersionInfoSizeA", &RoomForName);
    const ImportPatch query("ZOGBLBRX.DLL", "VerQueryValueA", &QueryLongName);
    const ImportPatch open("ZOGBLBRX.DLL", "RegOpenKeyExA", &OpenUsers);
    const ImportPatch openOld("ZOGBLBRX.DLL", "RegOpenKeyA", &OpenUsersOld);
    const int fixedLength = m_key.GetLength() - CString("Brixel Suite").GetLength();
    constexpr int kMostLength = 1023;
    const struct {
        int length; // of the key of the locations
        BOOL section, record;
    } cases[] = {{kMostLength - 9, TRUE, TRUE},
                 {kMostLength - 8, TRUE, FALSE},
                 {kMostLength, TRUE, FALSE},
                 {kMostLength + 1, FALSE, FALSE}};
    for (const auto& c : cases) {
        g_productName.assign(static_cast<size_t>(c.length - fixedLength), 'p');
        OpenRegistry registry;
        EXPECT_EQ(c.record, registry.IsClassDataValid()) << c.length;
        EXPECT_EQ(c.record ? 0u : ZoErrObjectInvalid, registry.SetDataIndex(3)) << c.length;
        if (!c.record) {
            EXPECT_EQ(ZoErrObjectInvalid, registry.SetCity("x")) << c.length;
        }
        EXPECT_EQ(c.section, registry.LoadSection()) << c.length;
        EXPECT_EQ(c.section, std::strlen(registry.GetSection()) == static_cast<size_t>(c.length));
    }
}
