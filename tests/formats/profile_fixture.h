/// \file
/// Profile files for tests.
#pragma once

#include "support/test.h"

#include <zogbl/mem_ini_file.h>

/// A profile file of the test's own, and an object for its section "S".
class ProfileTest : public testing::Test {
protected:
    ProfileTest()
    {
        m_profile.SetFileName(FilePath().c_str());
        m_profile.SetSection("S");
    }

    std::string FilePath() const { return m_folder.Path("test.ini"); }
    /// Makes the file anew; the system forgets what it had read of the old one.
    void Write(const std::string& bytes)
    {
        m_folder.Write("test.ini", bytes);
        m_profile.FlushCache();
    }

    TestFolder m_folder;
    struct : CZoIniFile {
        using CZoIniFile::m_uInput;
    } m_profile;
};

using Texts = std::vector<std::string>;

inline Texts ToVector(const CStringArray& array)
{
    Texts texts;
    for (INT_PTR i = 0; i < array.GetSize(); ++i)
        texts.emplace_back(array[i]);
    return texts;
}
