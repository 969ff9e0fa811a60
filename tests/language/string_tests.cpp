// The strings and menus of the language libraries, as callers get them.
#include "language_libraries.h"
#include "support/test.h"

#include <zogbl/resource_ids.h>

namespace {

class Strings : public LanguageLibrary {};

INSTANTIATE_TEST_SUITE_P(Languages, Strings, testing::ValuesIn(kLanguages), &LanguageName);

BOOL CALLBACK CollectStrings(HMODULE library, LPCSTR, LPSTR name, LONG_PTR strings)
{
    const UINT first = (static_cast<UINT>(reinterpret_cast<ULONG_PTR>(name)) - 1) * 16;
    for (UINT id = first; id < first + 16; ++id) {
        wchar_t text[1024];
        const int length = LoadStringW(library, id, text, 1024);
        if (length > 0)
            (*reinterpret_cast<std::map<UINT, std::wstring>*>(strings))[id] = text;
    }
    return TRUE;
}

std::map<UINT, std::wstring> StringsOf(HMODULE library)
{
    std::map<UINT, std::wstring> strings;
    EnumResourceNamesA(library, RT_STRING, &CollectStrings, reinterpret_cast<LONG_PTR>(&strings));
    return strings;
}

BOOL CALLBACK TakeLanguage(HMODULE, LPCSTR, LPCSTR, WORD language, LONG_PTR found)
{
    *reinterpret_cast<WORD*>(found) = language;
    return TRUE;
}

struct KnownText {
    const char* language;
    UINT string;
    const wchar_t* text;
};

} // namespace

TEST_P(Strings, AreOfTheLanguageThatTheLibraryIsNamedAfter)
{
    char name[4] = {};
    GetLocaleInfoA(GetParam().id, LOCALE_SABBREVLANGNAME, name, sizeof name);
    EXPECT_STREQ(GetParam().name, name);
    WORD language = 0;
    EnumResourceLanguagesA(m_library, RT_MENU, MAKEINTRESOURCEA(ZO_IDR_WORKBENCH_MENU), &TakeLanguage,
                           reinterpret_cast<LONG_PTR>(&language));
    EXPECT_EQ(GetParam().id, language);
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
TEST_P(Strings, AndMenusHaveTheirLetters)
{
    constexpr UINT kJapan = 16158; // its place in the list of countries
    const KnownText texts[] = {
        {"DEU", ZO_IDS_PAGE_COUNTRIES, L"L\u00E4nder und Sprachen"},
        {"DEU", ZO_ID_VIEW_COUNTRIES, L"&L\u00E4nder"},
        {"ENU", ZO_IDS_PAGE_LANGUAGE, L"Language"},
        {"ENU", kJapan, L"Japan"},
        {"ESP", ZO_IDS_PAGE_COUNTRIES, L"Pa\u00EDses e idiomas"},
        {"ESP", ZO_ID_VIEW_COUNTRIES, L"&Pa\u00EDses"},
        {"ESP", kJapan, L"Jap\u00F3n"},
        {"FRA", ZO_IDS_PAGE_MAILBOXES, L"Bo\u00EEtes aux lettres"},
        {"FRA", ZO_ID_APP_ABOUT, L"\u00C0 &propos de Zo Workbench..."},
        {"FRA", kJapan, L"Japon"},
        {"JPN", ZO_IDS_PAGE_LANGUAGE, L"\u8A00\u8A9E"},
        {"JPN", ZO_ID_APP_EXIT, L"\u7D42\u4E86(&X)\tAlt+F4"},
        {"JPN", ZO_ID_VIEW_LINES, L"\u56DE\u7DDA(&I)"},
        {"JPN", kJapan, L"\u65E5\u672C"},
    };
    const HMENU menu = LoadMenuA(m_library, MAKEINTRESOURCEA(ZO_IDR_WORKBENCH_MENU));
    ASSERT_NE(nullptr, menu);
    const auto strings = StringsOf(m_library);
    for (const auto& [language, number, expected] : texts) {
        if (std::string(language) != GetParam().name)
            continue;
        const auto string = strings.find(number);
        wchar_t item[64] = {};
        GetMenuStringW(menu, number, item, 64, MF_BYCOMMAND);
        EXPECT_EQ(std::wstring(expected), string != strings.end() ? string->second : item) << number;
    }
    DestroyMenu(menu);
}
