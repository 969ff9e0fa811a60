/// \file
/// The language libraries beside the test program, of the class library or of another module.
#pragma once

#include "support/test.h"

#include <initializer_list>
#include <map>

namespace zo_test {

struct Language {
    const char* name; ///< the system's abbreviation, and the end of the library's name
    WORD id;
    UINT codePage; ///< of systems in this language
};

inline constexpr Language kLanguages[] = {
    {"DEU", 0x0407, 1252}, {"ENU", 0x0409, 1252}, {"ESP", 0x040A, 1252}, {"FRA", 0x040C, 1252}, {"JPN", 0x0411, 932},
};

inline BOOL CALLBACK CollectStrings(HMODULE library, LPCSTR, LPSTR name, LONG_PTR strings)
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

/// All strings of a library, by number.
inline std::map<UINT, std::wstring> StringsOf(HMODULE library)
{
    std::map<UINT, std::wstring> strings;
    EnumResourceNamesA(library, RT_STRING, &CollectStrings, reinterpret_cast<LONG_PTR>(&strings));
    return strings;
}

inline BOOL CALLBACK TakeLanguage(HMODULE, LPCSTR, LPCSTR, WORD language, LONG_PTR found)
{
    *reinterpret_cast<WORD*>(found) = language;
    return TRUE;
}

struct KnownText {
    const char* language;
    UINT number; ///< of a string or of a command of the menu
    const wchar_t* text;
};

/// A test for each language, with the library of a module loaded.
class LanguageLibrary : public testing::TestWithParam<Language> {
protected:
    /// \param module the five letters that the names of its libraries begin with
    explicit LanguageLibrary(const char* module = "ZOGBL") : m_module(module) {}

    void SetUp() override
    {
        m_library = LoadLibraryA((ProgramFolder() + m_module + GetParam().name + ".DLL").c_str());
        ASSERT_NE(nullptr, m_library);
    }
    void TearDown() override { FreeLibrary(m_library); }

    /// The language of a resource.
    WORD LanguageOf(LPCSTR type, WORD number) const
    {
        WORD language = 0;
        EnumResourceLanguagesA(m_library, type, MAKEINTRESOURCEA(number), &TakeLanguage,
                               reinterpret_cast<LONG_PTR>(&language));
        return language;
    }

    /// Sees that the library has those of the texts that are of its language.
    /// \param menuNumber a menu in which the texts that are no strings stand
    void ExpectTexts(std::initializer_list<KnownText> texts, WORD menuNumber = 0) const
    {
        const HMENU menu = LoadMenuA(m_library, MAKEINTRESOURCEA(menuNumber));
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

    const std::string m_module;
    HMODULE m_library = nullptr;
};

inline std::string LanguageName(const testing::TestParamInfo<Language>& info) { return info.param.name; }

} // namespace zo_test
