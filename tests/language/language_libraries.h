/// \file
/// The language libraries beside the test program.
#pragma once

#include "support/test.h"

namespace zo_test {

struct Language {
    const char* name; ///< the system's abbreviation, and the end of the library's name
    WORD id;
    UINT codePage; ///< of systems in this language
};

inline constexpr Language kLanguages[] = {
    {"DEU", 0x0407, 1252}, {"ENU", 0x0409, 1252}, {"ESP", 0x040A, 1252}, {"FRA", 0x040C, 1252}, {"JPN", 0x0411, 932},
};

/// A test for each language, with the library loaded.
class LanguageLibrary : public testing::TestWithParam<Language> {
protected:
    void SetUp() override
    {
        m_library = LoadLibraryA((ProgramFolder() + "ZOGBL" + GetParam().name + ".DLL").c_str());
        ASSERT_NE(nullptr, m_library);
    }
    void TearDown() override { FreeLibrary(m_library); }

    HMODULE m_library = nullptr;
};

inline std::string LanguageName(const testing::TestParamInfo<Language>& info) { return info.param.name; }

} // namespace zo_test
