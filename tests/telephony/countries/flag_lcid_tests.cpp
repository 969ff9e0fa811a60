// Locale entries and their list.
#include "support/product_test.h"

#include <zogbl/flag_lcid.h>

namespace {

constexpr DWORD kUnknown = 0x0BFF;

std::wstring WideName(DWORD lcid, LCTYPE item)
{
    wchar_t text[128] = L"";
    GetLocaleInfoW(lcid, item, text, _countof(text));
    return text;
}

/// In the system's code page, whatever the locale's is.
std::string SystemName(DWORD lcid, LCTYPE item)
{
    char text[256] = "";
    WideCharToMultiByte(CP_ACP, 0, WideName(lcid, item).c_str(), -1, text, sizeof text, nullptr, nullptr);
    return text;
}

using Locales = ProductTest;

} // namespace

TEST_F(Locales, AreNamedAsTheModeSays)
{
    constexpr LCTYPE kParts[][2] = {
        {LOCALE_SNATIVELANGNAME, 0},
        {LOCALE_SLANGUAGE, 0},
        {LOCALE_SENGLANGUAGE, 0},
        {LOCALE_SNATIVELANGNAME, LOCALE_SNATIVECTRYNAME},
        {LOCALE_SLANGUAGE, LOCALE_SCOUNTRY},
        {LOCALE_SENGLANGUAGE, LOCALE_SENGCOUNTRY},
        {LOCALE_SENGLANGUAGE, 0},
        {LOCALE_SENGLANGUAGE, 0},
    };
    CZoFlagLcid changing(kGerman, 0);
    wchar_t wide[192];
    for (const DWORD lcid : {kGerman, DWORD{0x040C}, DWORD{0x0411}, DWORD{0x0419}}) { // of three code pages
        changing.SetLcidValue(lcid);
        for (DWORD mode = 0; mode < _countof(kParts); ++mode) {
            SCOPED_TRACE(std::to_string(lcid) + " mode " + std::to_string(mode));
            const auto [first, second] = kParts[mode];
            std::string name = SystemName(lcid, first);
            std::wstring wideName = WideName(lcid, first);
            if (second != 0) {
                name += " - " + SystemName(lcid, second);
                wideName += L" - " + WideName(lcid, second);
            }
            EXPECT_TRUE(changing.SetTextMode(mode));
            for (const CZoFlagLcid& locale : {changing, CZoFlagLcid(lcid, mode)}) {
                EXPECT_STREQ(name.c_str(), locale.GetName());
                EXPECT_TRUE(locale.GetWideName(wide, _countof(wide)));
                EXPECT_EQ(wideName, wide);
                EXPECT_FALSE(locale.GetWideName(wide, static_cast<int>(wideName.size())));
                EXPECT_EQ(L'\0', wide[0]) << "no room";
            }
            EXPECT_STREQ("", CZoFlagLcid(kUnknown, mode).GetName());
        }
    }
    EXPECT_STREQ("German - Germany", CZoFlagLcid(kGerman, 5).GetName());
    changing.SetLcidValue(0);
    EXPECT_FALSE(changing.SetTextMode(0));
    EXPECT_STREQ("", changing.GetName());
    EXPECT_FALSE(changing.GetWideName(wide, _countof(wide)));
    EXPECT_TRUE(changing.SetFlagIndex(211));
    EXPECT_FALSE(changing.SetFlagIndex(212));
    EXPECT_EQ(0u, changing.GetFlagIndex());
}

TEST_F(Locales, HaveTheFlagThatIsKnown)
{
    CZoFlagLcidList list(1);
    ASSERT_GE(list.GetKnownCount(), 250);
    DWORD known = 0;
    for (int i = 0; i < list.GetKnownCount(); ++i) {
        if (LOWORD(list.GetKnownCode(i)) == kGerman)
            known = list.GetKnownCode(i);
    }
    const struct {
        DWORD code;
        bool byTable;
        DWORD status;
        UINT flag; // of the entry, if there is one
    } cases[] = {
        {kGerman, true, 0, HIWORD(known)},
        {kGerman, false, 0, 0},
        {kGerman | 211u << 16, false, 0, 211},
        {kGerman | 212u << 16, false, ZoErrBadData, 0},
        {0x1C09, true, 0, 0}, // below, in a list that knows no flags
        {kUnknown, true, ZoErrBadData, 0},
        {0, true, ZoErrBadData, 0},
    };
    CZoFlagLcidList blind;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.code);
        CZoFlagLcidList& target = c.code == 0x1C09 ? blind : list;
        const int before = target.GetCount();
        EXPECT_EQ(c.status, c.byTable ? target.AddLcidCode(c.code, 5) : target.AddNewItem(c.code, 5));
        ASSERT_EQ(before + (c.status == 0), target.GetCount());
        if (c.status == 0) {
            EXPECT_EQ(LOWORD(c.code), target.GetAt(before)->GetLcidValue());
            EXPECT_EQ(c.flag, target.GetAt(before)->GetFlagIndex());
        }
    }
    EXPECT_NE(0u, HIWORD(known));
    list.SetTextMode(2);
    EXPECT_STREQ("German", list.GetAt(0)->GetName());
    EXPECT_EQ(0u, list.FreeData());
    EXPECT_EQ(0, list.GetCount());
    EXPECT_GE(list.GetKnownCount(), 250) << "codes stay";
}

TEST_F(Locales, WithoutMemoryOrSystemAreRefusedWhole)
{
    const auto body = [](const FaultRun& run) {
        CZoFlagLcidList list;
        const DWORD loaded = list.LoadData();
        const DWORD added = list.AddLcidCode(kGerman, 5);
        const int count = list.GetCount();
        list.SetTextMode(2);
        run.Stop();
        for (const DWORD status : {loaded, added}) {
            EXPECT_TRUE(status == 0 || (run.Fired() && (status == ZoErrOutOfMemory || status == ZoErrMemoryException ||
                                                        status == ZoErrResourceNotFound || status == ZoErrBadData)))
                << std::hex << status;
        }
        EXPECT_TRUE(loaded == 0 || added == 0 || run.persistent) << "one fault, one failure";
        ASSERT_EQ(added == 0 ? 1 : 0, count);
        if (added == 0) {
            const CString& name = list.GetAt(0)->GetName();
            EXPECT_TRUE(run.Fired() ? !name.IsEmpty() || run.source.Name() == "system" : name == "German") << name;
        }
    };
    AllocationFaults memory;
    RunFaultLoop(memory, body);
    FaultSource system("system");
    ZO_FAULTY_CALL(GetLocaleInfoA) info(system, "ZOGBLBRX.DLL", 0, ERROR_INVALID_PARAMETER);
    ZO_FAULTY_CALL(LoadResource) load(system, "ZOGBLBRX.DLL", nullptr, ERROR_RESOURCE_DATA_NOT_FOUND);
    RunFaultLoop(system, body);
}
