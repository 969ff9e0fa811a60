#include <zogbl/mem_ini_file.h>

#include <common/without_throwing.h>
#include <zogbl/file_functions.h>

#include "profile_lines.h"

#include <cstdio>
#include <memory>
#include <typeinfo>
#include <utility>

namespace {

/// Runs what needs memory. \return its result, or ZO_INI_OUT_OF_MEMORY
template <class OPERATION> DWORD Guarded(OPERATION operation) { return ResultOr(ZO_INI_OUT_OF_MEMORY, operation); }

INT_PTR FindFirst(const CStringArray& names, LPCSTR name)
{
    for (INT_PTR i = 0; i < names.GetSize(); ++i) {
        if (names[i] == name)
            return i;
    }
    return -1;
}

void RemoveFirst(CStringArray& names, LPCSTR name)
{
    const INT_PTR index = FindFirst(names, name);
    if (index >= 0)
        names.RemoveAt(index);
}

constexpr size_t kValueSize = ZO_INI_VALUE_SIZE - 1; // of a value in memory, terminator included

// What a list of names certainly holds, in bytes; it may hold a little more.
constexpr size_t kRoomForNames = ZO_INI_VALUE_SIZE - 8;

bool IsEntry(const ProfileLine& line) { return line.hasValue && !line.name.empty(); }

/// Whether a read of the entry gives the line's value. It gives that of the first line of a name, and cuts long ones.
bool IsEntryAsRead(const ProfileLine& line)
{
    return IsEntry(line) && line.isFirst && !line.hasBlanks && line.value.size() + 2 < kValueSize;
}

std::string_view ViewOf(const CString& text) { return {text, static_cast<size_t>(text.GetLength())}; }

CString TextOf(std::string_view text) { return {text.data(), static_cast<int>(text.size())}; }

#ifdef AFX_STRING_BLOCK
using TextBlock = CStringBlock;
#else // a framework that has none: each text for itself
struct TextBlock {
    TextBlock(int, int) {}
    CString Make(LPCSTR text, int length) { return {text, length}; }
};
#endif

CString TextOf(std::string_view text, TextBlock& block)
{
    return block.Make(text.data(), static_cast<int>(text.size()));
}

/// Makes sure that there is a file to write to.
bool ProvideFile(LPCSTR name, BOOL create)
{
    unsigned long exists = 0;
    const DWORD status = CZoGlobalFileFunctions::Exists(name, exists);
    if (exists != 0)
        return true;
    // Only what is certainly missing, for creating empties a file that is there.
    const bool isMissing = status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND;
    return create && isMissing && CZoGlobalFileFunctions::Create(name) == ERROR_SUCCESS;
}

} // namespace

/// Sets a value and lists its key once more. Throws CMemoryException* and has changed nothing then.
void CZoMemIniFile::SectionRecord::Add(CString key, CString value)
{
    const INT_PTR index = m_keyOrder.GetSize();
    m_keyOrder.SetSize(index + 1);
    try {
        m_values[key] = std::move(value);
    } catch (CMemoryException*) {
        m_keyOrder.RemoveAt(index);
        throw;
    }
    m_keyOrder[index] = std::move(key); // the text that the map has too; CStringArray::Add would copy it
}

CZoMemIniFile::CZoMemIniFile() { m_sections.InitHashTable(kHashTableSize, FALSE); }
CZoMemIniFile::~CZoMemIniFile() { CleanupAllMaps(); }

void CZoMemIniFile::CleanupAllMaps()
{
    for (POSITION position = m_sections.GetStartPosition(); position != nullptr;) {
        CString name;
        CObject* record = nullptr;
        m_sections.GetNextAssoc(position, name, record);
        delete record;
    }
    m_sections.RemoveAll();
    m_sectionOrder.RemoveAll();
}

/// \return whether the section is known. \p record may be null all the same.
BOOL CZoMemIniFile::FindSection(const char* section, SectionRecord*& record) const
{
    CObject* object = nullptr;
    const BOOL known = m_sections.Lookup(section, object);
    record = static_cast<SectionRecord*>(object);
    return known;
}

/// Takes over \p record and lists the section; a record that it had before is deleted. Throws CMemoryException* and has
/// changed nothing then, the record still being the caller's.
void CZoMemIniFile::AddSection(const CString& section, SectionRecord* record)
{
    const INT_PTR index = m_sectionOrder.GetSize();
    m_sectionOrder.SetSize(index + 1);
    m_sectionOrder[index] = section; // shares the text, which CStringArray::Add would copy
    try {
        delete std::exchange(m_sections[section], record);
    } catch (CMemoryException*) {
        m_sectionOrder.RemoveAt(index);
        throw;
    }
}

// File ----------------------------------------------------------------------------------------------------------------

DWORD CZoMemIniFile::LoadIniFile(const char* fileName, CMapStringToString* substitutions)
{
    if (fileName == nullptr)
        return ZO_INI_NULL_FILE_NAME;
    unsigned long exists = 0;
    CZoGlobalFileFunctions::Exists(fileName, exists);
    if (exists != 0)
        SetFileName(fileName);
    CleanupAllMaps();
    CStringArray sections;
    const DWORD status = EnumerateSections(&sections);
    if (status != ZO_INI_SUCCESS)
        return status;
    ProfileLines lines;
    for (INT_PTR i = 0; i < sections.GetSize(); ++i) {
        // A section for which memory does not suffice is left out as a whole.
        Guarded([&] { return LoadSection(sections[i], substitutions, lines), ZO_INI_SUCCESS; });
    }
    return status;
}

/// Whether the operations on entries may be another class's.
bool CZoMemIniFile::IsDerived() const { return typeid(*this) != typeid(CZoMemIniFile); }

/// Reads the current section's lines. \return false: the lines do not tell the entries
bool CZoMemIniFile::ReadLines(ProfileLines& lines) const
{
    // The system takes blanks off a section's name when it is asked for an entry, and leaves them when for all lines.
    const std::string_view name = m_szSection;
    const bool hasBlanks = !name.empty() && (IsBlank(name.front()) || IsBlank(name.back()));
    return !IsDerived() && !hasBlanks && lines.Read(m_szSection, m_szFileName);
}

void CZoMemIniFile::LoadSection(const CString& section, CMapStringToString* substitutions, ProfileLines& lines)
{
    if (SetSection(section) != ZO_INI_SUCCESS)
        return;
    auto record = std::make_unique<SectionRecord>();
    const auto add = [&](CString key, CString value) {
        if (substitutions != nullptr)
            record->Add(SubstituteString(substitutions, key), SubstituteString(substitutions, value));
        else
            record->Add(std::move(key), std::move(value));
    };
    const auto addRead = [&](const CString& key) {
        char value[kValueSize];
        const DWORD status = DoString(key, TRUE, "", value, sizeof value);
        if (status == ZO_INI_SUCCESS || status == ZO_INI_NOT_FOUND)
            add(key, value);
    };
    const bool hasLines = ReadLines(lines);
    if (hasLines && lines.GetNamesSize() < kRoomForNames) {
        // At once instead of growing on the way, and one by one.
        const auto count = static_cast<int>(lines.Get().size());
        record->m_keyOrder.SetSize(0, count);
        TextBlock block(2 * count, static_cast<int>(lines.GetLength()));
        for (const ProfileLine& line : lines.Get()) {
            if (IsEntryAsRead(line))
                add(TextOf(line.name, block), TextOf(line.value, block));
            else if (IsEntry(line))
                addRead(TextOf(line.name));
        }
        if (record->m_keyOrder.IsEmpty())
            return;
    } else {
        CStringArray keys;
        if (EnumerateKeys(&keys) != ZO_INI_SUCCESS)
            return;
        size_t hint = 0;
        for (INT_PTR i = 0; i < keys.GetSize(); ++i) {
            const ProfileLine* line = hasLines ? lines.Find(ViewOf(keys[i]), hint) : nullptr;
            if (line != nullptr && IsEntryAsRead(*line))
                add(keys[i], TextOf(line->value));
            else
                addRead(keys[i]);
        }
    }
    AddSection(section, record.get());
    record.release();
}

CString CZoMemIniFile::SubstituteString(CMapStringToString* substitutions, const char* text)
{
    CString trimmed(text);
    trimmed.TrimLeft();
    trimmed.TrimRight();
    if (trimmed[0] != '%' || trimmed[1] == '%')
        return trimmed;
    const int end = trimmed.Find('%', 1);
    const CString name = end >= 0 ? trimmed.Mid(1, end - 1) : trimmed.Mid(1);
    CString value;
    return substitutions->Lookup(name, value) ? value : trimmed;
}

DWORD CZoMemIniFile::SaveIniFile(BOOL create)
{
    if (!ProvideFile(m_szFileName, create))
        return ZO_INI_NO_FILE;
    ProfileLines lines;
    for (INT_PTR i = 0; i < m_sectionOrder.GetSize(); ++i) {
        SectionRecord* record = nullptr;
        if (!FindSection(m_sectionOrder[i], record) || record == nullptr)
            continue;
        if (SetSection(m_sectionOrder[i]) == ZO_INI_SUCCESS)
            SaveSection(*record, lines);
    }
    return ZO_INI_SUCCESS;
}

void CZoMemIniFile::SaveSection(const SectionRecord& record, ProfileLines& lines)
{
    // Without memory for the lines each entry is read alone.
    const bool hasLines = WithoutThrowing([&] { return ReadLines(lines); }) != FALSE;
    const bool isCut = lines.GetNamesSize() >= kRoomForNames;
    bool areLinesTrue = true; // what was written can be told from the lines
    size_t hint = 0;
    for (INT_PTR i = 0; i < record.m_keyOrder.GetSize(); ++i) {
        const CString& key = record.m_keyOrder[i];
        CString value;
        if (!record.m_values.Lookup(key, value))
            continue;
        const ProfileLine* line = hasLines ? lines.Find(ViewOf(key), hint) : nullptr;
        bool isThere = false;
        if (line != nullptr && areLinesTrue && IsEntryAsRead(*line))
            isThere = line->value == ViewOf(value);
        else if (!IsDerived() && (line != nullptr || !hasLines || (isCut && value.IsEmpty())))
            isThere = IsInFile(key, value);
        if (isThere)
            continue;
        DoString(key, FALSE, value, nullptr, 0);
        // A name that is no line's own may be another spelling of one.
        areLinesTrue = areLinesTrue && line != nullptr && line->isFirst;
    }
}

/// Whether a read of the file gives what is in memory, an empty entry being there too.
bool CZoMemIniFile::IsInFile(const char* key, const CString& value)
{
    char text[kValueSize];
    const DWORD status = DoString(key, TRUE, "", text, sizeof text);
    if (status != ZO_INI_NOT_FOUND)
        return status == ZO_INI_SUCCESS && value == text;
    CStringArray keys;
    return value.IsEmpty() && EnumerateKeys(&keys) == ZO_INI_SUCCESS && FindFirst(keys, key) >= 0;
}

// Values --------------------------------------------------------------------------------------------------------------

DWORD CZoMemIniFile::SetIniValue(const char* section, const char* key, const char* value)
{
    if (section == nullptr)
        return ZO_INI_NULL_SECTION;
    if (key == nullptr)
        return ZO_INI_NULL_KEY;
    if (value == nullptr)
        return ZO_INI_NULL_ARGUMENT;
    return Guarded([&] {
        SectionRecord* record = nullptr;
        if (FindSection(section, record)) {
            if (record != nullptr)
                record->Add(key, value);
            return ZO_INI_SUCCESS;
        }
        auto added = std::make_unique<SectionRecord>();
        added->Add(key, value);
        AddSection(section, added.get());
        added.release();
        return ZO_INI_SUCCESS;
    });
}

DWORD CZoMemIniFile::SetIniValue(const char* section, const char* key, int value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%d", value);
    return SetIniValue(section, key, text);
}

DWORD CZoMemIniFile::SetIniValue(const char* section, const char* key, DWORD value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%ld", static_cast<LONG>(value)); // signed: see the header
    return SetIniValue(section, key, text);
}

DWORD CZoMemIniFile::GetIniValue(const char* section, const char* key, CString& value)
{
    if (section == nullptr)
        return ZO_INI_NULL_SECTION;
    if (key == nullptr)
        return ZO_INI_NULL_KEY;
    SectionRecord* record = nullptr;
    if (!FindSection(section, record))
        return ZO_INI_UNKNOWN_SECTION;
    return record == nullptr || record->m_values.Lookup(key, value) ? ZO_INI_SUCCESS : ZO_INI_NOT_FOUND;
}

// Sections and keys ---------------------------------------------------------------------------------------------------

DWORD CZoMemIniFile::RenameIniSection(const char* oldName, const char* newName)
{
    if (oldName == nullptr || newName == nullptr)
        return ZO_INI_NULL_SECTION;
    SectionRecord* record = nullptr;
    if (!FindSection(oldName, record) || record == nullptr)
        return ZO_INI_OUT_OF_MEMORY;
    return Guarded([&] {
        // First what needs memory: the name's own text, and its place in the map.
        CString name(newName);
        if (name == oldName)
            return ZO_INI_SUCCESS;
        delete std::exchange(m_sections[newName], record);
        m_sections.RemoveKey(oldName);
        const INT_PTR index = FindFirst(m_sectionOrder, oldName);
        if (index >= 0)
            m_sectionOrder[index] = std::move(name);
        return ZO_INI_SUCCESS;
    });
}

DWORD CZoMemIniFile::DeleteIniSection(const char* section)
{
    if (section == nullptr)
        return ZO_INI_NULL_SECTION;
    SectionRecord* record = nullptr;
    if (!FindSection(section, record))
        return ZO_INI_UNKNOWN_SECTION;
    m_sections.RemoveKey(section);
    RemoveFirst(m_sectionOrder, section);
    delete record;
    return ZO_INI_SUCCESS;
}

DWORD CZoMemIniFile::DeleteIniKey(const char* section, const char* key)
{
    if (section == nullptr)
        return ZO_INI_NULL_SECTION;
    if (key == nullptr)
        return ZO_INI_NULL_KEY;
    SectionRecord* record = nullptr;
    if (!FindSection(section, record))
        return ZO_INI_UNKNOWN_SECTION;
    if (record != nullptr) {
        record->m_values.RemoveKey(key);
        RemoveFirst(record->m_keyOrder, key);
    }
    return ZO_INI_SUCCESS;
}
