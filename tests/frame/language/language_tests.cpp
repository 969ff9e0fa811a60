#include <zogbl/country_code.h>
#include <zogbl/gdi_data.h>
#include <zogbl/module_language.h>
#include <zogbl/resource_lookup.h>

#include "host_ids.h"
#include "language_driver.h"

#include <thread>

namespace {

class Language : public testing::Test {
protected:
    Language() { EXPECT_TRUE(ZoGblGetLanguageLCID() == 0 && !ZoGblGetLanguageDLL()) << "left loaded by another test"; }

    /// Whether the list says that English is current, German is not, or the other way round.
    void ExpectStored(DWORD language) const
    {
        EXPECT_EQ(language == kEnglish, StoredFlag(m_product, kEnglish));
        EXPECT_EQ(language == kGerman, StoredFlag(m_product, kGerman));
    }

    RegisteredProduct m_product;
};

} // namespace

TEST_F(Language, LoadsAreCounted)
{
    EXPECT_TRUE(ZoGblLoadLanguageDLL() && ZoGblLoadLanguageDLL());
    EXPECT_EQ(kEnglish, ZoGblGetLanguageLCID());
    const HINSTANCE library = ZoGblGetLanguageDLL();
    EXPECT_EQ(GetModuleHandleA("ZOGBLENU.DLL"), library);
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
    EXPECT_EQ(library, ZoGblGetLanguageDLL());
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
    EXPECT_EQ(nullptr, ZoGblGetLanguageDLL());
    EXPECT_EQ(0u, ZoGblGetLanguageLCID());
    EXPECT_EQ(nullptr, GetModuleHandleA("ZOGBLENU.DLL")) << "really gone";

    EXPECT_TRUE(ZoGblDumpLanguageDLL()); // count -1: a release too many is made up for by a load
    EXPECT_TRUE(ZoGblLoadLanguageDLL()); // count 0, and nothing is loaded
    EXPECT_EQ(nullptr, ZoGblGetLanguageDLL());
    const LoadedLanguage loaded;
    EXPECT_NE(nullptr, ZoGblGetLanguageDLL());
}

TEST_F(Language, CurrentOneIsTheFirstMarkedWithOne)
{
    struct Value {
        LPCSTR name;
        DWORD number;
        LPCSTR text = nullptr; // in place of the number
    };
    const bool isText = Family() == WindowsFamily::kWin32s; // every value, and any but "0" marks a language there
    const struct {
        std::vector<Value> list;
        DWORD expected; // 0: none is loaded
    } cases[] = {
        {{{"0409", 1}, {"0407", 0}}, kEnglish},
        {{{"0409", 0}, {"0407", 1}}, kGerman},
        {{{"0409", isText ? 0u : 2u}, {"0407", 1}}, kGerman},
        {{{"0409", 1}, {"0407", isText ? 0u : 2u}}, kEnglish},
        {{{"0409", 0}, {"0407", 0x101}}, kGerman}, // one byte counts
        {{{"!not a language", 0, "1"}, {"00000409", 0, "0"}, {"00030407", 0, "yes"}}, kGerman},
        {{{"0407", 0}}, kGerman}, // none is marked: the first one listed
        {{{"041f", 1}}, 0},       // without a library
        {{}, 0},
    };
    CZoGlobalConfig& config = m_product.Config();
    const CString key = m_product.LanguagesKey();
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        m_product.RemoveLanguages();
        EXPECT_FALSE(ZoGblLoadLanguageDLL()) << "no key";
        EXPECT_EQ(0u, config.CreateKey(ZO_MODE_LOCAL_MACHINE, key));
        for (const auto& [name, number, text] : c.list)
            EXPECT_EQ(0u, text != nullptr ? config.SetValue(ZO_MODE_LOCAL_MACHINE, key, name, text)
                                          : config.SetValue(ZO_MODE_LOCAL_MACHINE, key, name, number));
        if (!isText && c.expected == kGerman) // data that is no flag at all
            config.SetAnyValueType(ZO_MODE_LOCAL_MACHINE, key, "0411", "\1\0\0\0", 4, REG_BINARY);
        EXPECT_EQ(c.expected != 0, ZoGblLoadLanguageDLL() != FALSE);
        EXPECT_EQ(c.expected, ZoGblGetLanguageLCID());
        if (c.expected == 0)
            continue;
        EXPECT_STREQ(c.expected == kGerman ? "Deutschland" : "Germany",
                     GetGlobalCountryList()->FindByIndex(276)->GetName());
        EXPECT_TRUE(ZoGblDumpLanguageDLL());
        EXPECT_EQ(nullptr, ZoGblGetLanguageDLL()) << "the failures were not counted";
    }
    EXPECT_TRUE(CZoLanguageSupport().EnumerateAvailableLanguages("Software\\No such key")) << "which is no error";
}

TEST_F(Language, SpecificOneIsLoadedMarkedAndWritten)
{
    m_product.SetLanguage(kTurkish, 0);
    CZoLanguageSupport support;
    char userDefault[4] = {};
    GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SABBREVLANGNAME, userDefault, sizeof userDefault);
    EXPECT_STREQ(userDefault, support.GetLocaleName()) << "nothing is loaded";
    ASSERT_TRUE(support.LoadCurrentLanguage(LibraryPath()));
    EXPECT_STREQ("ENU", support.GetLocaleName());
    EXPECT_TRUE(support.LoadSpecificLanguage(kEnglish, "nowhere", TRUE)) << "loaded already";
    for (const DWORD language : {DWORD{0x10407} /* sort bits match none */, DWORD{0x0999} /* unlisted */, kTurkish})
        EXPECT_FALSE(support.LoadSpecificLanguage(language, LibraryPath(), TRUE)) << std::hex << language;
    EXPECT_FALSE(support.LoadSpecificLanguage(kGerman, "nowhere", TRUE)) << "no version resource";
    EXPECT_EQ(kEnglish, support.GetLCID());
    EXPECT_NE(nullptr, support.GetLibraryHandle());
    ExpectStored(kEnglish);

    EXPECT_TRUE(support.LoadSpecificLanguage(kGerman, LibraryPath(), FALSE));
    EXPECT_EQ(kGerman, support.GetLCID());
    EXPECT_EQ(GetModuleHandleA("ZOGBLDEU.DLL"), support.GetLibraryHandle());
    EXPECT_EQ(nullptr, GetModuleHandleA("ZOGBLENU.DLL")) << "the one before is freed";
    ExpectStored(kEnglish); // not written
    for (const DWORD language : {kEnglish, kGerman, kEnglish, kGerman}) {
        EXPECT_TRUE(support.LoadSpecificLanguage(language, LibraryPath(), TRUE));
        ExpectStored(language);
        EXPECT_TRUE(support.LoadCurrentLanguage(LibraryPath())); // by the marks of the list
        EXPECT_EQ(language, support.GetLCID()) << "the mark of the one before is gone";
    }

    // Of two marks the last one goes, and the first is found.
    for (const DWORD language : {kEnglish, kGerman, kJapanese})
        m_product.SetLanguage(language, language != kJapanese);
    CZoLanguageSupport marked;
    ASSERT_TRUE(marked.LoadCurrentLanguage(LibraryPath()));
    const DWORD first = marked.GetLCID();
    EXPECT_TRUE(marked.LoadSpecificLanguage(kJapanese, LibraryPath(), FALSE));
    EXPECT_TRUE(marked.LoadCurrentLanguage(LibraryPath()));
    EXPECT_EQ(first, marked.GetLCID());

    // Prescribed: an object that has loaded nothing yet loses its list if there is no library.
    m_product.MakeCurrent(kTurkish);
    CZoLanguageSupport empty;
    EXPECT_FALSE(empty.LoadCurrentLanguage(LibraryPath()));
    EXPECT_FALSE(empty.LoadSpecificLanguage(kEnglish, LibraryPath(), FALSE));
}

TEST_F(Language, NamesOfFiles)
{
    CZoLanguageSupport support;
    const std::tuple<LPCSTR, DWORD, LPCSTR> libraries[] = {
        {"ZOGBLBRX.DLL", kGerman, "ZOGBLDEU.DLL"}, {"zogbl", kJapanese, "zogblJPN.DLL"}, {"AB", 0x040C, "ABFRA.DLL"}};
    CString result;
    for (const auto& [file, language, library] : libraries) {
        EXPECT_TRUE(support.BuildLanguageModuleFilename(file, language, result));
        EXPECT_STREQ(library, result);
    }
    const char* const names[][2] = {
        {"C:\\Suite\\ZOGBLBRX.DLL", "ZOGBLBRX.DLL"},
        {"C:ZOGBLBRX.DLL", "ZOGBLBRX.DLL"},
        {"ZOGBLBRX.DLL", "ZOGBLBRX.DLL"},
        {"C:\\Suite\\", ""},
        {"C:\\\x95\x5C.DLL", IsDoubleByte() ? "\x95\x5C.DLL" : ".DLL"},
        {"", ""},
    };
    for (const auto& [path, name] : names) {
        support.ExtractFilenameFromPath(path, result);
        EXPECT_STREQ(name, result) << path;
    }
}

TEST_F(Language, OtherThreadsSeeTheSameLibraryAndLeaveTheLastReleaseToItsOwn)
{
    ASSERT_TRUE(ZoGblLoadLanguageDLL() && ZoGblLoadLanguageDLL());
    std::thread([library = ZoGblGetLanguageDLL(), list = GetGlobalCountryList()] {
        EXPECT_TRUE(library != nullptr && ZoGblGetLanguageDLL() == library);
        EXPECT_EQ(kEnglish, ZoGblGetLanguageLCID());
        EXPECT_EQ(list, GetGlobalCountryList());
        EXPECT_TRUE(ZoGblDumpLanguageDLL());
        EXPECT_FALSE(ZoGblDumpLanguageDLL()) << "would have to destroy a window of the other thread";
    }).join();
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
    EXPECT_EQ(nullptr, ZoGblGetLanguageDLL());
}

TEST_F(Language, ResourcesComeFromTheChainFirst)
{
    CString text = "before";
    EXPECT_FALSE(ZoGblLoadString(ZO_IDS_COUNTRY_FIRST, text));
    EXPECT_STREQ("", text);
    EXPECT_EQ(nullptr, ZoGblLockResource(MAKEINTRESOURCEA(ZO_IDR_COUNTRY_TABLE), RT_RCDATA));

    const LoadedLanguage loaded;
    const auto load = [&](UINT id) { return ZoGblLoadString(id, text) ? std::string(text) : "(none)"; };
    EXPECT_EQ("&Tools", load(ZO_IDS_TOOL_LIST));
    EXPECT_EQ("SOFTWARE\\Zo,Inc.", load(ZO_IDS_REG_SECTION)) << "the library's own table";
    const HINSTANCE german = LoadLibraryA("ZOGBLDEU.DLL"), overrides = LoadLibraryA("fixture_overrides.DLL");
    ASSERT_TRUE(german != nullptr && overrides != nullptr);
    {
        // A module with one string of a block: the others still come from the language library. See overrides.rc.
        const CDynLinkLibrary overriding(overrides, overrides);
        EXPECT_EQ("State", load(ZO_IDS_TOOL_LIST));
        EXPECT_EQ("&Remove", load(ZO_IDS_TOOL_REMOVE));
        // And a long one comes whole, on double-byte systems too.
        const size_t length = IsDoubleByte() ? 401 : 201;
        EXPECT_EQ(length, load(60000).size());
        EXPECT_TRUE(text.LoadString(60000));
        EXPECT_EQ(length, std::string(text).size());
    }
    {
        const CDynLinkLibrary older(german, german);
        EXPECT_EQ("E&xtras", load(ZO_IDS_TOOL_LIST));
        EXPECT_EQ(german, ZoGblFindResourceModule(MAKEINTRESOURCEA(ZO_IDR_COUNTRY_TABLE), RT_RCDATA));
        const CDynLinkLibrary overriding(overrides, overrides); // hides no others of the chain either
        EXPECT_EQ("State", load(ZO_IDS_TOOL_LIST));
        EXPECT_EQ("Ent&fernen", load(ZO_IDS_TOOL_REMOVE));
        EXPECT_EQ(german, ZoGblFindStringModule(ZO_IDS_TOOL_REMOVE));
    }
    EXPECT_EQ("&Tools", load(ZO_IDS_TOOL_LIST));
    FreeLibrary(german);
    FreeLibrary(overrides);
    EXPECT_EQ(nullptr, ZoGblFindStringModule(60000)) << "nobody's now";
}

TEST_F(Language, FontsAreMadeOnce)
{
    const LoadedLanguage loaded;
    const HFONT bold = CZoGlobalGDIData::GetBoldFont();
    LOGFONTA description = {};
    ASSERT_NE(0, GetObjectA(bold, sizeof description, &description));
    EXPECT_EQ(FW_BOLD, description.lfWeight);
    ASSERT_NE(0, GetObjectA(CZoGlobalGDIData::GetThinFont(), sizeof description, &description));
    EXPECT_EQ(FW_NORMAL, description.lfWeight);
    // On double-byte systems the face is that of a dialog template in the language library.
    EXPECT_STREQ(GetSystemMetrics(SM_DBCSENABLED) ? "MS Shell Dlg" : "MS Sans Serif", description.lfFaceName);
    const HDC screen = GetDC(nullptr);
    EXPECT_EQ(-MulDiv(8, GetDeviceCaps(screen, LOGPIXELSY), 72), description.lfHeight);
    ReleaseDC(nullptr, screen);
    EXPECT_TRUE(ZoGblDumpLanguageDLL() && ZoGblLoadLanguageDLL());
    EXPECT_EQ(bold, CZoGlobalGDIData::GetBoldFont()) << "controls hold them";
}

TEST_F(Language, NoviceModeIsTheUsersOwn)
{
    CZoGlobalConfig& config = m_product.Config();
    EXPECT_EQ(0, ZoGblGetRegNoviceMode()) << "not there";
    for (const int mode : {1, -5, 0}) {
        ZoGblSetRegNoviceMode(mode);
        EXPECT_EQ(mode, ZoGblGetRegNoviceMode());
    }
    BOOL isStored = FALSE;
    EXPECT_EQ(0u, config.DoesEntryExist(ZO_MODE_LOCAL_MACHINE, m_product.UserKey(), "NoviceMode", isStored));
    EXPECT_TRUE(isStored);
    if (Family() != WindowsFamily::kWin32s) { // where every value is text
        ASSERT_EQ(0u, config.SetValue(ZO_MODE_LOCAL_MACHINE, m_product.UserKey(), "NoviceMode", "1"));
        EXPECT_EQ(0, ZoGblGetRegNoviceMode()) << "of the wrong type";
    }
    config.DeleteSection(ZO_MODE_LOCAL_MACHINE, "Software\\Zo,Inc.\\Brixel Suite\\3.9", "Users");
    ZoGblSetRegNoviceMode(1);
    EXPECT_EQ(0, ZoGblGetRegNoviceMode()) << "no user, no settings";
}

TEST_F(Language, OwnTextsOfAModuleFollowThatOfTheProcess)
{
    CZoModuleLanguage own;
    const HINSTANCE program = AfxGetInstanceHandle();
    EXPECT_FALSE(own.Load(program)) << "the process has no language";
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    EXPECT_FALSE(own.Load(GetModuleHandleA("kernel32.dll"))) << "it has no such library";
    EXPECT_EQ(nullptr, own.GetLibraryHandle());
    const auto shown = [&] {
        CString text;
        EXPECT_EQ(own.GetLibraryHandle(), ZoGblFindStringModule(ZO_IDS_HOST_TEXT));
        EXPECT_TRUE(text.LoadString(ZO_IDS_HOST_TEXT));
        return text;
    };
    EXPECT_TRUE(own.Load(program));
    EXPECT_STREQ("ENU", shown());
    EXPECT_TRUE(own.Load(program)) << "once more";

    constexpr DWORD kFrench = 0x040C; // the tests have no library of it
    for (const auto& [language, text] : {std::pair{kGerman, "DEU"}, {kFrench, "DEU"}, {kEnglish, "ENU"}}) {
        ZoGblDumpLanguageDLL();
        m_product.MakeCurrent(language);
        ASSERT_TRUE(ZoGblLoadLanguageDLL());
        EXPECT_EQ(language, ZoGblGetLanguageLCID());
        EXPECT_STREQ(text, shown());
    }
    EXPECT_EQ(nullptr, GetModuleHandleA("FRAMEDEU.DLL")) << "the one before is freed";
    own.Unload();
    EXPECT_EQ(nullptr, own.GetLibraryHandle());
    EXPECT_EQ(nullptr, GetModuleHandleA("FRAMEENU.DLL"));
    EXPECT_EQ(nullptr, ZoGblFindStringModule(ZO_IDS_HOST_TEXT));
    own.Unload();
    ZoGblDumpLanguageDLL();
}
