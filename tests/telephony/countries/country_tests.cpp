#include "support/product_test.h"

#include <zogbl/country_code.h>
#include <zogbl/flag_lcid.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include <cctype>
#include <mbstring.h>

namespace {

int CompareNames(const char* first, const char* second)
{
    return _mbsicmp(reinterpret_cast<const unsigned char*>(first), reinterpret_cast<const unsigned char*>(second));
}

/// The global list in one language.
class Countries : public ProductTest, public testing::WithParamInterface<DWORD> {
protected:
    static void ExpectSorted(const CZoCountryCodeList& list)
    {
        for (int i = 1; i < list.GetCount(); ++i) {
            const CString& name = list.GetAt(i)->GetName();
            EXPECT_LE(CompareNames(list.GetAt(i - 1)->GetName(), name), 0) << (LPCSTR)name;
        }
    }

    CZoCountryCodeList* const m_list = (ChangeLanguage(GetParam()), GetGlobalCountryList());
};

constexpr DWORD kLanguages[] = {0x0409, 0x0407, 0x040C, 0x040A, 0x0411};

std::string LanguageName(const testing::TestParamInfo<DWORD>& info)
{
    constexpr const char* names[] = {"English", "German", "French", "Spanish", "Japanese"};
    return names[info.index];
}

INSTANTIATE_TEST_SUITE_P(Languages, Countries, testing::ValuesIn(kLanguages), &LanguageName);

/// A text in the system's code page; empty when that lacks a letter of it.
std::string Narrow(const wchar_t* text)
{
    char bytes[256] = {};
    BOOL isReplaced = FALSE;
    WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text, -1, bytes, sizeof bytes, nullptr, &isReplaced);
    return isReplaced ? "" : bytes;
}

std::set<DWORD> g_systemLocales;

BOOL CALLBACK CollectLocale(LPSTR id)
{
    g_systemLocales.insert(std::strtoul(id, nullptr, 16) & 0xFFFF);
    return TRUE;
}

constexpr DWORD Word(DWORD low, DWORD high) { return low | high << 16; }

} // namespace

TEST_P(Countries, AreAllThereNamedAndSorted)
{
    ASSERT_GE(m_list->GetCount(), 250);
    std::set<UINT> indexes;
    for (int i = 0; i < m_list->GetCount(); ++i) {
        const CZoCountryCode* country = m_list->GetAt(i);
        EXPECT_FALSE(country->GetName().IsEmpty()) << country->GetStringIndex();
        EXPECT_TRUE(indexes.insert(country->GetCountryIndex()).second) << (LPCSTR)country->GetName();
    }
    ExpectSorted(*m_list);
}

TEST_P(Countries, AreFoundByIndexCodeAndName)
{
    const auto language = std::find(std::begin(kLanguages), std::end(kLanguages), GetParam()) - std::begin(kLanguages);
    const struct {
        WORD index;
        const char* code;
        UINT prefix;
        const wchar_t* names[std::size(kLanguages)];
    } cases[] = {
        {276, "49", 0, {L"Germany", L"Deutschland", L"Allemagne", L"Alemania", L"\u30C9\u30A4\u30C4"}},
        {392, "81", 0, {L"Japan", L"Japan", L"Japon", L"Jap\u00F3n", L"\u65E5\u672C"}},
        {40,
         "43",
         0,
         {L"Austria", L"\u00D6sterreich", L"Autriche", L"Austria", L"\u30AA\u30FC\u30B9\u30C8\u30EA\u30A2"}},
        {44, "242", 1, {L"Bahamas", L"Bahamas", L"Bahamas", L"Bahamas", L"\u30D0\u30CF\u30DE"}},
        // In Japanese, one with a byte like a backslash.
        {983, "383", 0, {L"Kosovo", L"Kosovo", L"Kosovo", L"Kosovo", L"\u30B3\u30BD\u30DC"}},
    };
    ZoCountryTextMap names;
    ZoCountryTextMap codes;
    ASSERT_TRUE(GetCountryCodeMap(names));
    ASSERT_TRUE(GetCountryPhoneCodeMap(codes));
    EXPECT_EQ(m_list->GetCount(), names.GetCount());
    EXPECT_EQ(m_list->GetCount(), codes.GetCount());
    for (const auto& c : cases) {
        const std::string name = Narrow(c.names[language]);
        CString text;
        CString sameText;
        EXPECT_TRUE(GetCountryNameFromCode(c.index, text)) << c.index;
        EXPECT_TRUE(names.Lookup(c.index, sameText));
        EXPECT_STREQ(text, sameText);
        if (!name.empty()) {
            EXPECT_STREQ(name.c_str(), text);
        }
        EXPECT_TRUE(codes.Lookup(c.index, text));
        EXPECT_STREQ(c.code, text);
        GetCountryPhoneCode(c.index, text);
        EXPECT_STREQ(c.code, text);
        UINT prefix = 99;
        EXPECT_TRUE(GetCountryPrefix(c.index, prefix));
        EXPECT_EQ(c.prefix, prefix);
    }
    CString unchanged = "unchanged";
    UINT prefix = 99;
    EXPECT_FALSE(GetCountryNameFromCode(60000, unchanged));
    EXPECT_STREQ("unchanged", unchanged);
    EXPECT_FALSE(GetCountryPrefix(static_cast<WORD>(60000), prefix));
    GetCountryPhoneCode(60000, unchanged);
    EXPECT_STREQ("", unchanged);
    EXPECT_FALSE(GetCountryPrefix(CString("044"), prefix)) << "exact text";
    EXPECT_FALSE(GetCountryPrefix(CString(""), prefix));
    EXPECT_EQ(99u, prefix);
    // The Bahamas and the Congo: the first by name, which is the Congo in Japanese.
    EXPECT_TRUE(GetCountryPrefix(CString("242"), prefix));
    EXPECT_EQ(GetParam() == 0x0411 && IsDoubleByte() ? 0u : 1u, prefix);
}

TEST_P(Countries, OfOneIndexAreTheFirstByName)
{
    // Germany's index once more, under the names of the first and the last country.
    const UINT first = m_list->GetAt(0)->GetStringIndex();
    const UINT last = m_list->GetAt(m_list->GetCount() - 1)->GetStringIndex();
    ASSERT_EQ(0u, m_list->AddCountry(Word(last, 0), Word(7, 777), 276));
    ASSERT_EQ(0u, m_list->AddCountry(Word(first, 0), Word(8, 888), 276));
    CString text;
    EXPECT_TRUE(GetCountryNameFromCode(276, text));
    EXPECT_STREQ(m_list->GetAt(0)->GetName(), text);
    GetCountryPhoneCode(276, text);
    EXPECT_STREQ("888", text);
    UINT prefix = 0;
    EXPECT_TRUE(GetCountryPrefix(static_cast<WORD>(276), prefix));
    EXPECT_EQ(8u, prefix);
    m_list->FreeData(); // filled anew when it is next asked for
}

/// The system's own telephony service knows countries too, from a list in the registry (the service itself gives way to
/// the simulated one here); what differs is listed in docs/countries.md.
TEST_P(Countries, HaveTheCodesThatTheTelephonyServiceKnows)
{
    if (GetParam() != 0x0409)
        GTEST_SKIP() << "the service knows the English names";
    const CString list = "Software\\Microsoft\\Windows\\CurrentVersion\\Telephony\\Country List";
    std::vector<std::string> subkeys;
    const auto collect = [](void* names, const char* name) -> DWORD {
        static_cast<std::vector<std::string>*>(names)->emplace_back(name);
        return 0;
    };
    CZoGlobalConfig& registry = m_product.Config();
    if (registry.EnumEntries(ZO_MODE_LOCAL_MACHINE, list, collect, &subkeys) != 0)
        GTEST_SKIP() << "no telephony service here";

    // Its figures are older than the last change of these.
    const std::set<std::string> changed = {"Mayotte", "Christmas Island", "Northern Mariana Islands", "American Samoa",
                                           "Tajikistan"};
    std::map<std::string, const CZoCountryCode*> countries;
    for (int i = 0; i < m_list->GetCount(); ++i)
        countries[std::string(m_list->GetAt(i)->GetName())] = m_list->GetAt(i);
    int compared = 0;
    for (const std::string& subkey : subkeys) {
        const CString key = list + "\\" + subkey.c_str();
        char name[MAX_PATH] = "";
        DWORD code = 0;
        EXPECT_EQ(0u, registry.GetValue(ZO_MODE_LOCAL_MACHINE, key, "Name", name, sizeof name, nullptr));
        EXPECT_EQ(0u, registry.GetValue(ZO_MODE_LOCAL_MACHINE, key, "CountryCode", code, 0));
        const auto found = countries.find(name);
        if (found == countries.end() || changed.contains(name))
            continue;
        // The service gives all of the North American plan the code 1; here, members have it as their prefix.
        const CZoCountryCode& ours = *found->second;
        EXPECT_EQ(code, ours.GetDialingPrefix() != 0 ? ours.GetDialingPrefix() : ours.GetCountryCode()) << name;
        ++compared;
    }
    EXPECT_GE(compared, 150);
}

TEST_P(Countries, FillBoxesWithoutTakingTheFocus)
{
    CWnd parent;
    ASSERT_TRUE(
        parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 200, 200, nullptr, nullptr));
    CListBox list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWFIXED, CRect(0, 0, 100, 100), &parent, 1));
    list.AddString("stale");
    list.SetFocus();
    EXPECT_EQ(0u, m_list->AddToListBox(&list));
    EXPECT_EQ(list.m_hWnd, GetFocus());
    EXPECT_EQ(m_list->GetCount(), list.GetCount());
    EXPECT_EQ(0, list.GetCurSel());
    CZoCountryCodeList none;
    EXPECT_EQ(0u, none.AddToListBox(&list));
    EXPECT_EQ(0, list.GetCount());
    EXPECT_EQ(LB_ERR, list.GetCurSel());
}

TEST_P(Countries, TakeNewNamesButStayTheSameObjects)
{
    const CZoCountryCode* germany = m_list->FindByIndex(276);
    ASSERT_NE(nullptr, germany);
    const bool wasEnglish = GetParam() == 0x0409;
    ChangeLanguage(wasEnglish ? 0x0407 : 0x0409);
    EXPECT_EQ(germany, m_list->FindByIndex(276));
    EXPECT_STREQ(wasEnglish ? "Deutschland" : "Germany", germany->GetName());
    ExpectSorted(*m_list);
}

TEST_P(Countries, WithoutMemoryAreUnknown)
{
    AllocationFaults faults;
    const FaultLoopOptions options = {.stride = 7};
    RunFaultLoop(
        faults,
        [&](const FaultRun& run) {
            CString name;
            CString code;
            ZoCountryTextMap codes;
            const BOOL named = GetCountryNameFromCode(276, name);
            GetCountryPhoneCode(276, code);
            const BOOL mapped = GetCountryPhoneCodeMap(codes);
            const CZoCountryCodeList list(1);
            run.Stop();
            ExpectSorted(list);
            EXPECT_TRUE(run.Fired() || (named && mapped && code == "49"));
            EXPECT_EQ(named != FALSE, name == m_list->FindByIndex(276)->GetName());
            EXPECT_TRUE(code.IsEmpty() || code == "49");
            EXPECT_EQ(mapped ? m_list->GetCount() : 0, static_cast<int>(codes.GetCount()));
        },
        options);
    RunFaultActs(faults,
                 [&](const FaultRun& run) {
                     CZoCountryCodeList list;
                     run.Act([&] { return list.LoadData(); });
                     ExpectSorted(list);
                 },
                 {.stride = 97});
}

TEST_P(Countries, RefuseRecordsOutOfRangeAndKeepTheOthers)
{
    CZoCountryCodeList list;
    EXPECT_EQ(0u, list.AddCountry(Word(16045, 0), Word(1, 2), Word(3, 0xFFFF)));
    EXPECT_EQ(0u, list.AddCountry(Word(16303, 211), Word(0xFFFF, 0xFFFF), 0xFFFF));
    for (const DWORD bad : {Word(16044, 0), Word(16304, 0), Word(16045, 212), Word(0, 0)})
        EXPECT_EQ(ZoErrBadData, list.AddCountry(bad, 0, 0)) << bad;
    ASSERT_EQ(2, list.GetCount());
    const CZoCountryCode* country = list.FindByIndex(3);
    ASSERT_NE(nullptr, country);
    EXPECT_EQ(1u, country->GetDialingPrefix());
    EXPECT_EQ(2u, country->GetCountryCode());
    EXPECT_EQ(0u, country->GetFlagIndex());
    EXPECT_EQ(211u, list.FindByIndex(0xFFFF)->GetFlagIndex());

    // Two of one index and equal names keep their order, and lookups find the first.
    EXPECT_EQ(0u, list.AddCountry(Word(16045, 7), Word(9, 2), 3));
    EXPECT_EQ(country, list.FindByIndex(3));

    CZoCountryCode changed(Word(16045, 5), 0, 0);
    EXPECT_FALSE(changed.SetStringIndex(16304));
    EXPECT_EQ(0u, changed.GetStringIndex());
    EXPECT_STREQ("", changed.GetName());
    EXPECT_FALSE(changed.SetFlagIndex(212));
    EXPECT_EQ(0u, changed.GetFlagIndex());
    EXPECT_TRUE(changed.SetFlagIndex(211));
}

TEST_P(Countries, LoadFromAnyTableAsFarAsItIsGood)
{
    // Tables of a host, in place of the language library's.
    const struct {
        const char* module;
        DWORD status;
        int count;
    } cases[] = {
        {"fixture_table_bad.DLL", ZoErrBadData, 2}, // the third of four records names no string
        {"fixture_table_endless.DLL", 0, 2},        // no record says that it is the last
    };
    for (const auto& c : cases) {
        const HINSTANCE module = LoadLibraryA(c.module);
        ASSERT_NE(nullptr, module) << c.module;
        {
            const CDynLinkLibrary host(module, module);
            CZoCountryCodeList list;
            EXPECT_EQ(c.status, list.LoadData()) << c.module;
            EXPECT_EQ(c.count, list.GetCount()) << c.module;
            CZoFlagLcidList locales(1);
            EXPECT_EQ(0, locales.GetKnownCount()) << "never another library's than the countries";
        }
        FreeLibrary(module);
    }
}

TEST_P(Countries, HaveFlagsInTheBitmapAndLocalesInTheTable)
{
    const LPCSTR name = MAKEINTRESOURCEA(ZO_IDB_FLAGS);
    const Canvas flags(LoadBitmapA(ZoGblFindResourceModule(name, RT_BITMAP), name));
    EXPECT_EQ(0, flags.Size().cx % ZO_FLAG_COLUMNS);
    EXPECT_EQ(0, flags.Size().cy % ZO_FLAG_ROWS);
    const int cellWidth = flags.Size().cx / ZO_FLAG_COLUMNS;
    const int cellHeight = flags.Size().cy / ZO_FLAG_ROWS;
    EXPECT_NE(0, cellWidth * cellHeight);
    for (int i = 0; i < m_list->GetCount(); ++i) {
        const int cell = static_cast<int>(m_list->GetAt(i)->GetFlagIndex());
        const int left = cell % ZO_FLAG_COLUMNS * cellWidth;
        const int top = cell / ZO_FLAG_COLUMNS * cellHeight;
        constexpr COLORREF kNoFlag = RGB(255, 0, 255);
        EXPECT_NE(kNoFlag, flags.At(left + cellWidth / 2, top + cellHeight / 2)) << cell;
        EXPECT_EQ(kNoFlag, flags.At(left, top)) << "a flag leaves its cell's corner free: " << cell;
    }
    DWORD size = 0;
    const auto* table =
        static_cast<const DWORD*>(ZoGblLockResource(MAKEINTRESOURCEA(ZO_IDR_FLAG_TABLE), RT_RCDATA, &size));
    ASSERT_NE(nullptr, table);
    std::set<DWORD> locales;
    for (; *table != 0; ++table) {
        EXPECT_LT(HIWORD(*table), ZO_FLAG_COUNT);
        EXPECT_TRUE(locales.insert(LOWORD(*table)).second) << std::hex << *table;
    }
    g_systemLocales.clear();
    EnumSystemLocalesA(&CollectLocale, LCID_INSTALLED);
    EXPECT_GE(g_systemLocales.size(), 100u);
    for (const DWORD id : g_systemLocales) {
        char country[8] = {};
        const int length = GetLocaleInfoA(id, LOCALE_SISO3166CTRYNAME, country, sizeof country);
        if (length == 3 && std::isalpha(static_cast<unsigned char>(country[0]))) { // a country, not a region
            EXPECT_EQ(1u, locales.count(id)) << "no flag for locale " << std::hex << id;
        }
    }
}

TEST(CountriesWithoutLanguage, ListsAreThereButEmpty)
{
    CZoCountryCodeList list;
    EXPECT_EQ(ZoErrResourceNotFound, list.LoadData());
    EXPECT_EQ(0, list.GetCount());
    EXPECT_EQ(0u, list.FreeData());
    CZoFlagLcidList locales;
    EXPECT_EQ(ZoErrResourceNotFound, locales.LoadData());
    EXPECT_EQ(0, locales.GetKnownCount());
    EXPECT_EQ(0u, locales.AddLcidCode(kGerman, 2)) << "flag 0 will do";
}
