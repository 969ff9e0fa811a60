#include <zogbl/gdi_data.h>
#include <zogbl/resource_lookup.h>

#include "language_driver.h"
#include "product/registered_product.h"
#include "support/test.h"

#include <thread>

namespace {

CString FileNameOf(HINSTANCE module)
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(module, path, sizeof path - 1);
    const CString whole(path);
    return whole.Mid(whole.ReverseFind('\\') + 1);
}

class Language : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(0u, ZoGblGetLanguageLCID()) << "left loaded by another test";
        ASSERT_EQ(nullptr, ZoGblGetLanguageDLL());
    }

    DWORD StoredFlag(LPCSTR name)
    {
        DWORD flag = 99;
        m_product.Config().GetValue(ZO_MODE_LOCAL_MACHINE, m_product.LanguagesKey(), name, flag, 98);
        return flag;
    }

    RegisteredProduct m_product;
};

} // namespace

TEST_F(Language, LoadsAreCounted)
{
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
    EXPECT_EQ(0x0409u, ZoGblGetLanguageLCID());
    const HINSTANCE library = ZoGblGetLanguageDLL();
    EXPECT_STREQ("ZOGBLENU.DLL", FileNameOf(library));
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
    EXPECT_EQ(library, ZoGblGetLanguageDLL());
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
    EXPECT_EQ(nullptr, ZoGblGetLanguageDLL());
    EXPECT_EQ(0u, ZoGblGetLanguageLCID());
    EXPECT_EQ(nullptr, GetModuleHandleA("ZOGBLENU.DLL")) << "really gone";
}

TEST_F(Language, ReleaseTooManyIsMadeUpForByALoad)
{
    EXPECT_TRUE(ZoGblDumpLanguageDLL()); // count -1
    EXPECT_TRUE(ZoGblLoadLanguageDLL()); // count 0, and nothing is loaded
    EXPECT_EQ(nullptr, ZoGblGetLanguageDLL());
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
    EXPECT_NE(nullptr, ZoGblGetLanguageDLL());
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
    EXPECT_EQ(nullptr, ZoGblGetLanguageDLL());
}

TEST_F(Language, CurrentOneIsTheFirstMarkedWithOne)
{
    const struct {
        DWORD english;
        DWORD german;
        DWORD expected;
    } cases[] = {
        {1, 0, 0x0409}, {0, 1, 0x0407}, {2, 1, 0x0407}, {1, 2, 0x0409}, {0, 0x101, 0x0407 /* one byte of it counts */},
    };
    for (const auto& c : cases) {
        if (Family() == WindowsFamily::kWin32s && (c.english > 1 || c.german > 1))
            continue; // every value is text there, and any text but "0" marks a language
        m_product.SetLanguage(0x0409, c.english);
        m_product.SetLanguage(0x0407, c.german);
        ASSERT_TRUE(ZoGblLoadLanguageDLL());
        EXPECT_EQ(c.expected, ZoGblGetLanguageLCID()) << c.english << ' ' << c.german;
        EXPECT_STREQ(c.expected == kGerman ? "Deutschland" : "Germany",
                     GetGlobalCountryList()->FindByIndex(276)->GetName());
        ZoGblDumpLanguageDLL();
    }
}

TEST_F(Language, NoneMarkedMeansTheFirstOneListed)
{
    m_product.SetLanguage(0x0409, 0);
    m_product.SetLanguage(0x0407, 0);
    struct First {
        static DWORD Take(void* context, LPCSTR name, const void*, DWORD)
        {
            *static_cast<DWORD*>(context) = std::strtoul(name, nullptr, 16);
            return 1;
        }
    };
    DWORD first = 0;
    m_product.Config().EnumValues(ZO_MODE_LOCAL_MACHINE, m_product.LanguagesKey(), &First::Take, &first);
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    EXPECT_EQ(first, ZoGblGetLanguageLCID());
    ZoGblDumpLanguageDLL();
}

TEST_F(Language, TextsAndStrangeValuesInTheList)
{
    CZoGlobalConfig& config = m_product.Config();
    const CString key = m_product.LanguagesKey();
    m_product.RemoveLanguages();
    ASSERT_EQ(0u, config.SetValue(ZO_MODE_LOCAL_MACHINE, key, "!not a language", "1"));
    ASSERT_EQ(0u, config.SetValue(ZO_MODE_LOCAL_MACHINE, key, "0409", "0"));
    ASSERT_EQ(0u, config.SetValue(ZO_MODE_LOCAL_MACHINE, key, "00030407", "yes")); // its lower half counts
    ASSERT_EQ(0u, config.SetAnyValueType(ZO_MODE_LOCAL_MACHINE, key, "0411", "\1\0\0\0", 4, REG_BINARY));
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    EXPECT_EQ(0x0407u, ZoGblGetLanguageLCID());
    ZoGblDumpLanguageDLL();
}

TEST_F(Language, WithoutListOrLibraryNothingIsLoadedOrCounted)
{
    m_product.RemoveLanguages();
    EXPECT_FALSE(ZoGblLoadLanguageDLL()) << "no key";
    EXPECT_TRUE(CZoLanguageSupport().EnumerateAvailableLanguages("Software\\No such key")) << "but that is no error";
    m_product.Config().CreateKey(ZO_MODE_LOCAL_MACHINE, m_product.LanguagesKey());
    EXPECT_FALSE(ZoGblLoadLanguageDLL()) << "no language";
    m_product.SetLanguage(0x041F, 1);
    EXPECT_FALSE(ZoGblLoadLanguageDLL()) << "Turkish has no library";
    EXPECT_EQ(nullptr, ZoGblGetLanguageDLL());
    EXPECT_EQ(0u, ZoGblGetLanguageLCID());
    m_product.SetLanguage(0x041F, 0);
    m_product.SetLanguage(0x0409, 1);
    EXPECT_TRUE(ZoGblLoadLanguageDLL()) << "the failures were not counted";
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
    EXPECT_EQ(nullptr, ZoGblGetLanguageDLL());
}

TEST_F(Language, SpecificOneIsLoadedMarkedAndWritten)
{
    CZoLanguageSupport support;
    char userDefault[4] = {};
    GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SABBREVLANGNAME, userDefault, sizeof userDefault);
    EXPECT_STREQ(userDefault, support.GetLocaleName()) << "nothing is loaded";
    ASSERT_TRUE(support.LoadCurrentLanguage(LibraryPath()));
    EXPECT_STREQ("ENU", support.GetLocaleName());
    EXPECT_TRUE(support.LoadSpecificLanguage(0x0409, "nowhere", TRUE)) << "loaded already";
    EXPECT_FALSE(support.LoadSpecificLanguage(0x10407, LibraryPath(), TRUE)) << "sort bits match no language";
    EXPECT_FALSE(support.LoadSpecificLanguage(0x041F, LibraryPath(), TRUE)) << "not in the list";
    EXPECT_FALSE(support.LoadSpecificLanguage(0x0407, "nowhere", TRUE)) << "no version resource";
    EXPECT_EQ(0x0409u, support.GetLCID());

    EXPECT_TRUE(support.LoadSpecificLanguage(0x0407, LibraryPath(), FALSE));
    EXPECT_EQ(0x0407u, support.GetLCID());
    EXPECT_STREQ("ZOGBLDEU.DLL", FileNameOf(support.GetLibraryHandle()));
    EXPECT_EQ(nullptr, GetModuleHandleA("ZOGBLENU.DLL")) << "the one before is freed";
    EXPECT_EQ(1u, StoredFlag("0409")) << "not written";
    EXPECT_EQ(0u, StoredFlag("0407"));

    for (const DWORD language : {kEnglish, kGerman, kEnglish, kGerman}) {
        EXPECT_TRUE(support.LoadSpecificLanguage(language, LibraryPath(), TRUE));
        EXPECT_EQ(language == kEnglish, StoredFlag("0409"));
        EXPECT_EQ(language == kGerman, StoredFlag("0407"));
        EXPECT_TRUE(support.LoadCurrentLanguage(LibraryPath())); // by the marks of the list
        EXPECT_EQ(language, support.GetLCID()) << "the mark of the one before is gone";
    }

    // Of two marks the last one goes, and the first is found.
    for (const DWORD language : {kEnglish, kGerman, DWORD{0x0411}})
        m_product.SetLanguage(language, language != 0x0411);
    CZoLanguageSupport marked;
    ASSERT_TRUE(marked.LoadCurrentLanguage(LibraryPath()));
    const DWORD first = marked.GetLCID();
    EXPECT_TRUE(marked.LoadSpecificLanguage(0x0411, LibraryPath(), FALSE));
    EXPECT_TRUE(marked.LoadCurrentLanguage(LibraryPath()));
    EXPECT_EQ(first, marked.GetLCID());
}

TEST_F(Language, MissingLibraryLeavesTheLoadedOne)
{
    m_product.SetLanguage(0x041F, 0);
    CZoLanguageSupport support;
    ASSERT_TRUE(support.LoadCurrentLanguage(LibraryPath()));
    const HINSTANCE loaded = support.GetLibraryHandle();
    EXPECT_FALSE(support.LoadSpecificLanguage(0x041F, LibraryPath(), TRUE));
    EXPECT_EQ(loaded, support.GetLibraryHandle());
    EXPECT_EQ(0x0409u, support.GetLCID());
    EXPECT_EQ(1u, StoredFlag("0409"));
    EXPECT_TRUE(support.LoadSpecificLanguage(0x0407, LibraryPath(), FALSE)) << "the list is still there";

    // Prescribed: an object that has loaded nothing yet loses its list.
    m_product.MakeCurrent(0x041F);
    CZoLanguageSupport empty;
    EXPECT_FALSE(empty.LoadCurrentLanguage(LibraryPath()));
    EXPECT_FALSE(empty.LoadSpecificLanguage(kEnglish, LibraryPath(), FALSE));
    EXPECT_TRUE(empty.EnumerateAvailableLanguages("Software\\Zo,Inc.\\nothing")) << "an empty list is one too";
}

TEST_F(Language, NamesOfFiles)
{
    CZoLanguageSupport support;
    const struct {
        const char* file;
        DWORD language;
        const char* library;
    } libraries[] = {
        {"ZOGBLBRX.DLL", 0x0409, "ZOGBLENU.DLL"},
        {"ZOGBLBRX.DLL", 0x0407, "ZOGBLDEU.DLL"},
        {"zogbl", 0x0411, "zogblJPN.DLL"},
        {"AB", 0x040C, "ABFRA.DLL"},
    };
    CString result;
    for (const auto& c : libraries) {
        EXPECT_TRUE(support.BuildLanguageModuleFilename(c.file, c.language, result));
        EXPECT_STREQ(c.library, result);
    }
    const char* const names[][2] = {
        {"C:\\Suite\\ZOGBLBRX.DLL", "ZOGBLBRX.DLL"},
        {"C:ZOGBLBRX.DLL", "ZOGBLBRX.DLL"},
        {"ZOGBLBRX.DLL", "ZOGBLBRX.DLL"},
        {"C:\\Suite\\", ""},
        {"", ""},
    };
    for (const auto& [path, name] : names) {
        support.ExtractFilenameFromPath(path, result);
        EXPECT_STREQ(name, result) << path;
    }
    if (IsDoubleByte()) { // the second byte of a character may look like a backslash
        support.ExtractFilenameFromPath("C:\\\x95\x5C.DLL", result);
        EXPECT_STREQ("\x95\x5C.DLL", result);
    }
}

TEST_F(Language, OtherThreadsSeeTheSameLibrary)
{
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    HINSTANCE seen = nullptr;
    DWORD language = 0;
    CZoCountryCodeList* list = nullptr;
    std::thread([&] {
        seen = ZoGblGetLanguageDLL();
        language = ZoGblGetLanguageLCID();
        list = GetGlobalCountryList();
    }).join();
    EXPECT_EQ(ZoGblGetLanguageDLL(), seen);
    EXPECT_EQ(0x0409u, language);
    EXPECT_EQ(GetGlobalCountryList(), list);
    ZoGblDumpLanguageDLL();
}

TEST_F(Language, LastReleaseIsTheOwnThreads)
{
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    BOOL first = FALSE;
    BOOL last = TRUE;
    std::thread([&] {
        first = ZoGblDumpLanguageDLL();
        last = ZoGblDumpLanguageDLL(); // would have to destroy a window of the other thread
    }).join();
    EXPECT_TRUE(first);
    EXPECT_FALSE(last);
    EXPECT_NE(nullptr, ZoGblGetLanguageDLL());
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
    EXPECT_EQ(nullptr, ZoGblGetLanguageDLL());
}

TEST_F(Language, ResourcesComeFromTheChainFirst)
{
    CString text = "before";
    EXPECT_FALSE(ZoGblLoadString(ZO_IDS_COUNTRY_FIRST, text));
    EXPECT_STREQ("", text);
    EXPECT_EQ(nullptr, ZoGblLockResource(MAKEINTRESOURCEA(ZO_IDR_COUNTRY_TABLE), RT_RCDATA));

    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    EXPECT_TRUE(ZoGblLoadString(ZO_IDS_COLUMN_COUNTRY, text));
    EXPECT_STREQ("Country", text);
    EXPECT_TRUE(ZoGblLoadString(ZO_IDS_REG_SECTION, text));
    EXPECT_STREQ("SOFTWARE\\Zo,Inc.", text) << "the library's own table";

    const HINSTANCE german = LoadLibraryA("ZOGBLDEU.DLL");
    ASSERT_NE(nullptr, german);
    {
        const CDynLinkLibrary overriding(german, german);
        EXPECT_TRUE(ZoGblLoadString(ZO_IDS_COLUMN_COUNTRY, text));
        EXPECT_STREQ("Land", text);
        EXPECT_EQ(german, ZoGblFindResourceModule(MAKEINTRESOURCEA(ZO_IDR_COUNTRY_TABLE), RT_RCDATA));
    }
    EXPECT_TRUE(ZoGblLoadString(ZO_IDS_COLUMN_COUNTRY, text));
    EXPECT_STREQ("Country", text);

    // A module with one string of a block: the others still come from the language library. See overrides.rc.
    const HINSTANCE overrides = LoadLibraryA("fixture_overrides.DLL");
    ASSERT_NE(nullptr, overrides);
    {
        const CDynLinkLibrary overriding(overrides, overrides);
        EXPECT_TRUE(ZoGblLoadString(ZO_IDS_COLUMN_COUNTRY, text));
        EXPECT_STREQ("State", text);
        EXPECT_TRUE(ZoGblLoadString(ZO_IDS_COLUMN_CODE, text));
        EXPECT_STREQ("Code", text);
        // And a long one comes whole, on double-byte systems too.
        EXPECT_TRUE(ZoGblLoadString(60000, text));
        const int length = IsDoubleByte() ? 401 : 201;
        EXPECT_EQ(length, text.GetLength());
        CString framework;
        EXPECT_TRUE(framework.LoadString(60000));
        EXPECT_EQ(length, framework.GetLength());
    }
    {
        // Nor does it hide those of another module of the chain.
        const CDynLinkLibrary older(german, german);
        const CDynLinkLibrary overriding(overrides, overrides);
        EXPECT_TRUE(ZoGblLoadString(ZO_IDS_COLUMN_COUNTRY, text));
        EXPECT_STREQ("State", text);
        EXPECT_TRUE(ZoGblLoadString(ZO_IDS_COLUMN_CODE, text));
        EXPECT_STREQ("Vorwahl", text);
        EXPECT_EQ(german, ZoGblFindStringModule(ZO_IDS_COLUMN_CODE));
        EXPECT_TRUE(text.LoadString(ZO_IDS_COLUMN_CODE)); // as the framework's boxes do
        EXPECT_STREQ("Vorwahl", text);
    }
    FreeLibrary(german);
    FreeLibrary(overrides);
    EXPECT_EQ(nullptr, ZoGblFindStringModule(60000)) << "nobody's now";
    ZoGblDumpLanguageDLL();
}

TEST_F(Language, FontsAreMadeOnce)
{
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
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
    ZoGblDumpLanguageDLL();
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    EXPECT_EQ(bold, CZoGlobalGDIData::GetBoldFont()) << "controls hold them";
    ZoGblDumpLanguageDLL();
}

TEST_F(Language, NoviceModeIsTheUsersOwn)
{
    CZoGlobalConfig& config = m_product.Config();
    EXPECT_EQ(0, ZoGblGetRegNoviceMode()) << "not there";
    for (const int mode : {1, -5, 0}) {
        ZoGblSetRegNoviceMode(mode);
        EXPECT_EQ(mode, ZoGblGetRegNoviceMode());
        DWORD stored = 99;
        EXPECT_EQ(0u, config.GetValue(ZO_MODE_LOCAL_MACHINE, m_product.UserKey(), "NoviceMode", stored, 98));
        EXPECT_EQ(static_cast<DWORD>(mode), stored);
    }
    if (Family() != WindowsFamily::kWin32s) { // where every value is text
        ASSERT_EQ(0u, config.SetValue(ZO_MODE_LOCAL_MACHINE, m_product.UserKey(), "NoviceMode", "1"));
        EXPECT_EQ(0, ZoGblGetRegNoviceMode()) << "of the wrong type";
    }
    config.DeleteSection(ZO_MODE_LOCAL_MACHINE, "Software\\Zo,Inc.\\Brixel Suite\\3.9", "Users");
    ZoGblSetRegNoviceMode(1);
    EXPECT_EQ(0, ZoGblGetRegNoviceMode()) << "no user, no settings";
}
