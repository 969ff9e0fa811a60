// The strings of the language libraries, as callers get them.
#include "support/language_libraries.h"
#include "support/test.h"

#include <zogbl/resource_ids.h>

namespace {

class Strings : public LanguageLibrary {};

INSTANTIATE_TEST_SUITE_P(Languages, Strings, testing::ValuesIn(kLanguages), &LanguageName);

} // namespace

TEST_P(Strings, AreOfTheLanguageThatTheLibraryIsNamedAfter)
{
    char name[4] = {};
    GetLocaleInfoA(GetParam().id, LOCALE_SABBREVLANGNAME, name, sizeof name);
    EXPECT_STREQ(GetParam().name, name);
    EXPECT_EQ(GetParam().id, LanguageOf(RT_DIALOG, ZO_IDD_LANGUAGE_SELECTION));
}

TEST_P(Strings, AreThoseOfTheOthersAndFitTheirBuffers)
{
    const HMODULE english = LoadLibraryA((ProgramFolder() + "ZOGBLENU.DLL").c_str());
    const auto expected = StringsOf(english);
    FreeLibrary(english);
    const auto strings = StringsOf(m_library);
    ASSERT_GE(strings.size(), 300u);
    EXPECT_TRUE(std::equal(strings.begin(), strings.end(), expected.begin(), expected.end(),
                           [](const auto& left, const auto& right) { return left.first == right.first; }))
        << "other numbers than in English";
    for (const auto& [id, text] : strings) {
        SCOPED_TRACE(testing::Message() << id << ": " << text);
        char bytes[256];
        BOOL isReplaced = FALSE;
        const int size = WideCharToMultiByte(GetParam().codePage, WC_NO_BEST_FIT_CHARS, text.c_str(), -1, bytes,
                                             sizeof bytes, nullptr, &isReplaced);
        EXPECT_NE(0, size) << "too long";
        EXPECT_FALSE(isReplaced);
        if (GetACP() != GetParam().codePage)
            continue;
        char loaded[256];
        LoadStringA(m_library, id, loaded, sizeof loaded);
        EXPECT_STREQ(bytes, loaded);
    }
}

/// What is in the library does not depend on the machine that it was built or is loaded on.
TEST_P(Strings, HaveTheirLetters)
{
    constexpr UINT kJapan = 16158; // its place in the list of countries
    ExpectTexts({
        {"DEU", ZO_IDS_SHEET_CLOSE, L"Schlie\u00DFen"},
        {"ENU", ZO_IDS_SHEET_CLOSE, L"Close"},
        {"ENU", kJapan, L"Japan"},
        {"ESP", kJapan, L"Jap\u00F3n"},
        {"FRA", kJapan, L"Japon"},
        {"FRA", ZO_IDS_CREATE_FOLDER, L"%s\n\nCe dossier n'existe pas. Voulez-vous le cr\u00E9er ?"},
        {"JPN", ZO_IDS_SHEET_CLOSE, L"\u9589\u3058\u308B"},
        {"JPN", kJapan, L"\u65E5\u672C"},
    });
}
