/// \file
/// A profile file as a whole, in memory.
#pragma once

#include <zogbl/ini_file.h>

class ProfileLines;

/// Holds all sections and entries of a profile file, so that they can be changed in memory and then written back
/// together:
///
///     CZoMemIniFile profile;
///     if (profile.LoadIniFile("C:\\Fax\\FAX.INI", nullptr) == ZO_INI_SUCCESS) {
///         profile.SetIniValue("Modem", "Port", "COM2");
///         profile.SaveIniFile(TRUE);
///     }
///
/// An object of this class itself reads a section by one call of the system, and writes only entries that a read of the
/// file would give otherwise. An object of a derived class reads and writes each entry through EnumerateKeys and
/// DoString, which it may have overridden.
///
/// In memory, names differ if their case differs; in the file they do not. CZoIniFile's operations on entries of the
/// file work as before and do not touch the memory.
///
/// Operations return the codes of CZoIniFile, and ZO_INI_NULL_SECTION, ZO_INI_NULL_KEY or ZO_INI_NULL_ARGUMENT if a
/// name or value is a null pointer. If memory runs out, an operation returns ZO_INI_OUT_OF_MEMORY and has changed
/// nothing; for LoadIniFile see there. Nothing is thrown.
class ZOGBL_API CZoMemIniFile : public CZoIniFile {
public:
    CZoMemIniFile();
    ~CZoMemIniFile() override;
    CZoMemIniFile(const CZoMemIniFile&) = delete;
    CZoMemIniFile& operator=(const CZoMemIniFile&) = delete;

    /// Removes all sections and entries from memory. The file is not touched.
    void CleanupAllMaps();

    /// Replaces everything in memory by a file. If there is no such file, the file set before is loaded again.
    ///
    ///   - Sections without keys, and sections for which there is no memory, are left out.
    ///   - If a section stands twice in the file, it is listed twice, both times with the entries of the first one.
    ///   - Lists of names are cut as by EnumerateSections.
    ///   - Values are cut after 4095 characters. A key of over 255 characters has an empty value.
    /// \param substitutions texts by the names that stand for them. With it, keys and values lose the white space
    /// around them. A key or value that then begins with %name% is replaced as a whole by the text of that name; what
    /// follows the name is dropped. If there is no such name, it stays. The closing % may be missing. The case of the
    /// name counts. %% begins no name. Null: keys and values stay as they are.
    /// \return
    ///   ZO_INI_SUCCESS         loaded
    ///   ZO_INI_NULL_FILE_NAME  nothing has changed
    ///   other                  the code of EnumerateSections; nothing is in memory
    DWORD LoadIniFile(const char* fileName, CMapStringToString* substitutions);

    /// Makes the file hold all entries that are in memory. An entry whose read from the file gives what is in memory is
    /// not written: its quotation marks stay, and so does what lies beyond the bounds of memory, the rest of a long
    /// value or of a long list of keys. If the file has changed since, it gets the entries of memory all the same.
    ///
    /// Everything else stays in the file: comments, sections and keys deleted in memory, and those that LoadIniFile
    /// left out. A renamed section is written beside the old one. An entry that cannot be written is left out. What is
    /// written is written as it is in memory: a value with blanks at its ends has none when it is read again. A
    /// replaced reference becomes its text; a replaced key is written beside the old one.
    ///
    /// A derived class writes every entry. A loaded file then also loses quotation marks and the rest of long values,
    /// and a cut list of keys ends with part of a name, which becomes an entry without a value.
    /// \param create whether to make the file if there is none
    /// \return
    ///   ZO_INI_SUCCESS  there is a file. This does not tell that anything was written (file read-only, disk full): to
    ///                   be sure, load the file again and compare. Prescribed
    ///   ZO_INI_NO_FILE  there is none and none was made, or the system cannot tell
    DWORD SaveIniFile(BOOL create);

    /// Sets a value; adds section and key if they are missing. A key that exists is listed a second time, and so
    /// written twice.
    DWORD SetIniValue(const char* section, const char* key, const char* value);
    DWORD SetIniValue(const char* section, const char* key, int value);
    /// Stored as a signed number: above 0x7FFFFFFF it is negative. DoLongWord reads the same number back.
    DWORD SetIniValue(const char* section, const char* key, DWORD value);
    /// \return ZO_INI_SUCCESS, ZO_INI_UNKNOWN_SECTION or ZO_INI_NOT_FOUND; \p value is set only on success
    DWORD GetIniValue(const char* section, const char* key, CString& value);

    /// Gives a section another name. A section that has this name already is lost.
    /// \return ZO_INI_SUCCESS; ZO_INI_OUT_OF_MEMORY, also if there is no such section
    DWORD RenameIniSection(const char* oldName, const char* newName);
    /// \return ZO_INI_SUCCESS or ZO_INI_UNKNOWN_SECTION
    DWORD DeleteIniSection(const char* section);
    /// \return ZO_INI_SUCCESS, also if the section has no such key; or ZO_INI_UNKNOWN_SECTION
    DWORD DeleteIniKey(const char* section, const char* key);

protected:
    /// The entries of a section.
    class SectionRecord : public CObject {
    public:
        SectionRecord() { m_values.InitHashTable(kHashTableSize, FALSE); }

        void Add(CString key, CString value);

        CStringArray m_keyOrder; ///< in order of loading or setting; may hold a key twice
        CMapStringToString m_values;
    };
    static constexpr UINT kHashTableSize = 10;

    /// Substitutes a key or value as LoadIniFile does. \p substitutions must not be null. Throws CMemoryException*.
    CString SubstituteString(CMapStringToString* substitutions, const char* text);

    CStringArray m_sectionOrder; ///< in order of loading or setting
    CMapStringToOb m_sections;   ///< SectionRecords, owned; may be null

private:
    BOOL FindSection(const char* section, SectionRecord*& record) const;
    bool IsDerived() const;
    bool ReadLines(ProfileLines& lines) const;
    void LoadSection(const CString& section, CMapStringToString* substitutions, ProfileLines& lines);
    void SaveSection(const SectionRecord& record, ProfileLines& lines);
    bool IsInFile(const char* key, const CString& value);
    void AddSection(const CString& section, SectionRecord* record);
};
