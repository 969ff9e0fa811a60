// The texts of the Workbench and of the sample libraries, in their own language libraries.
#include "support/language_libraries.h"
#include "support/test.h"

#include "template_ids.h"
#include "workbench_ids.h"

namespace {

class WorkbenchTexts : public LanguageLibrary {
protected:
    WorkbenchTexts() : LanguageLibrary("ZOWOR") {}
};

INSTANTIATE_TEST_SUITE_P(Languages, WorkbenchTexts, testing::ValuesIn(kLanguages), &LanguageName);

} // namespace

/// What is in the library does not depend on the machine that it was built or is loaded on.
TEST_P(WorkbenchTexts, HaveTheirLanguageAndLetters)
{
    EXPECT_EQ(GetParam().id, LanguageOf(RT_MENU, ZO_IDR_WORKBENCH_MENU));
    EXPECT_EQ(GetParam().id, LanguageOf(RT_MENU, ZO_IDR_SHELL_MENU));
    ExpectTexts(
        {
            {"DEU", ZO_IDS_PAGE_COUNTRIES, L"L\u00E4nder und Sprachen"},
            {"DEU", ZO_ID_VIEW_COUNTRIES, L"&L\u00E4nder"},
            {"ENU", ZO_IDS_PAGE_LANGUAGE, L"Language"},
            {"ESP", ZO_IDS_PAGE_COUNTRIES, L"Pa\u00EDses e idiomas"},
            {"ESP", ZO_ID_VIEW_COUNTRIES, L"&Pa\u00EDses"},
            {"FRA", ZO_IDS_PAGE_MAILBOXES, L"Bo\u00EEtes aux lettres"},
            {"FRA", ZO_ID_APP_ABOUT, L"Affiche la version et les droits d'auteur.\n\u00C0 propos"},
            {"JPN", ZO_IDS_PAGE_LANGUAGE, L"\u8A00\u8A9E"},
            {"JPN", ZO_ID_APP_EXIT,
             L"\u30D7\u30ED\u30B0\u30E9\u30E0\u3092\u7D42\u4E86\u3057\u307E\u3059\u3002\n\u7D42\u4E86"},
            {"JPN", ZO_ID_VIEW_LINES, L"\u56DE\u7DDA(&I)"},
        },
        ZO_IDR_WORKBENCH_MENU);
}

TEST_P(WorkbenchTexts, AreBesideThoseOfTheSampleLibraries)
{
    const auto own = StringsOf(m_library);
    for (const char* module : {"ZOVIE", "ZODAT", "ZOPHO"}) {
        const HMODULE library = LoadLibraryA((ProgramFolder() + module + GetParam().name + ".DLL").c_str());
        const auto strings = StringsOf(library);
        FreeLibrary(library);
        EXPECT_EQ(1u, strings.count(ZO_IDS_VIEWER_TYPE)) << module;
        for (const auto& string : strings)
            EXPECT_EQ(0u, own.count(string.first)) << "both have " << string.first;
    }
}
