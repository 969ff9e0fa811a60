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

/// What is in memory: "[section]key=value;key=value;[section]..."
struct MemoryView : CZoMemIniFile {
    static std::string Of(const CZoMemIniFile& memory)
    {
        const CStringArray& sections = memory.*&MemoryView::m_sectionOrder;
        CString text;
        for (INT_PTR i = 0; i < sections.GetSize(); ++i) {
            text += "[" + sections[i] + "]";
            CObject* object = nullptr;
            (memory.*&MemoryView::m_sections).Lookup(sections[i], object);
            const auto* record = static_cast<SectionRecord*>(object);
            for (INT_PTR k = 0; record != nullptr && k < record->m_keyOrder.GetSize(); ++k) {
                CString value = "(none)";
                record->m_values.Lookup(record->m_keyOrder[k], value);
                text += record->m_keyOrder[k] + "=" + value + ";";
            }
        }
        return std::string(text);
    }
    static void AddNullSection(CZoMemIniFile& memory, const char* section)
    {
        (memory.*&MemoryView::m_sectionOrder).Add(section);
        (memory.*&MemoryView::m_sections).SetAt(section, nullptr);
    }
};
