/// \file
/// A profile file as a whole, in memory.
#pragma once

#include <zogbl/ini_file.h>

/// Holds all sections and entries of a profile file, so that they can be changed in memory and written back at once:
///
///     CZoMemIniFile profile;
///     if (profile.LoadIniFile("C:\\Fax\\FAX.INI", nullptr) == ZO_INI_SUCCESS) {
///         profile.SetIniValue("Modem", "Port", "COM2");
///         profile.SaveIniFile(TRUE);
///     }
///
/// In memory, names are the same only if their case is too, unlike in the file. The operations on entries in the file
/// that CZoIniFile offers work as ever, and do not touch what is in memory.
///
/// Operations return codes of CZoIniFile. Also ZO_INI_NULL_SECTION, ZO_INI_NULL_KEY or ZO_INI_NULL_ARGUMENT for a name or
/// value that is a null pointer. When memory runs out, the operation returns ZO_INI_OUT_OF_MEMORY and has changed
/// nothing, except for LoadIniFile. Nothing is thrown.
class ZOGBL_API CZoMemIniFile : public CZoIniFile {
public:
    CZoMemIniFile();
    ~CZoMemIniFile() override;
    CZoMemIniFile(const CZoMemIniFile&) = delete;
    CZoMemIniFile& operator=(const CZoMemIniFile&) = delete;

    /// Forgets all that is in memory. The file is not touched.
    void CleanupAllMaps();

    /// Loads a file in place of what is in memory. If there is no such file, the one set before is loaded again. Sections
    /// without keys are left out, and so are sections for which memory does not suffice. Of a section that the file has
    /// twice, the system gives the first one's entries twice. Lists of names are cut as by EnumerateSections, values
    /// after 4095 characters; a key of over 255 characters has an empty value.
    /// \param substitutions texts that stand for references: with it, keys and values lose the white space around them,
    /// and one that begins with %name% becomes, as a whole, the text of that name, if there is one. The name is compared
    /// with its case; the closing % may be missing; what follows it is dropped. Null: keys and values as they are.
    /// \return ZO_INI_SUCCESS, ZO_INI_NULL_FILE_NAME, or what EnumerateSections returned; nothing is in memory then
    DWORD LoadIniFile(const char* fileName, CMapStringToString* substitutions);

    /// Writes all sections and entries to the file. What is not in memory stays there as it is: comments, the sections
    /// and keys deleted in memory, those that LoadIniFile left out; a renamed section is written beside the old one. An
    /// entry that cannot be written is passed over.
    ///
    /// Entries are written as they are in memory. Of a file that was loaded and is saved unchanged, therefore,
    ///   - a value in quotation marks loses them, and with them the blanks at its ends;
    ///   - a value of over 4095 characters is cut;
    ///   - a reference that was replaced is the text from now on; a key that was one is written beside the old one;
    ///   - a section of more keys than their list has room for (see EnumerateSections) gets an entry without a value,
    ///     whose name is the part of a name with which the list ends.
    /// \param create whether to make the file if there is none.
    /// \return ZO_INI_SUCCESS; ZO_INI_NO_FILE if there is none and none was made, or the system cannot tell
    DWORD SaveIniFile(BOOL create);

    /// Sets a value, making section and key if need be. A key that is there already is listed a second time, and so
    /// written twice.
    DWORD SetIniValue(const char* section, const char* key, const char* value);
    DWORD SetIniValue(const char* section, const char* key, int value);
    /// As a signed number, so that what is above 0x7FFFFFFF is stored as negative: DoLongWord reads it back alike.
    DWORD SetIniValue(const char* section, const char* key, DWORD value);
    /// \return ZO_INI_SUCCESS, ZO_INI_UNKNOWN_SECTION or ZO_INI_NOT_FOUND; \p value is set by success only
    DWORD GetIniValue(const char* section, const char* key, CString& value);

    /// Gives a section another name. A section that has it already is lost.
    /// \return ZO_INI_SUCCESS, or ZO_INI_OUT_OF_MEMORY also if there is no such section
    DWORD RenameIniSection(const char* oldName, const char* newName);
    /// \return ZO_INI_SUCCESS or ZO_INI_UNKNOWN_SECTION
    DWORD DeleteIniSection(const char* section);
    /// \return ZO_INI_SUCCESS, also if the section has no such key, or ZO_INI_UNKNOWN_SECTION
    DWORD DeleteIniKey(const char* section, const char* key);

protected:
    /// The entries of a section.
    class SectionRecord : public CObject {
    public:
        SectionRecord() { m_values.InitHashTable(kHashTableSize, FALSE); }

        void Add(const char* key, const char* value);

        CStringArray m_keyOrder; ///< in order of loading or setting; may hold a key twice
        CMapStringToString m_values;
    };
    static constexpr UINT kHashTableSize = 10;

    /// What LoadIniFile makes of a key or value. Throws CMemoryException*.
    CString SubstituteString(CMapStringToString* substitutions, const char* text);

    CStringArray m_sectionOrder; ///< in order of loading or setting
    CMapStringToOb m_sections;   ///< SectionRecords, owned; may be null

private:
    BOOL FindSection(const char* section, SectionRecord*& record) const;
    void LoadSection(const char* section, CMapStringToString* substitutions);
    void AddSection(const char* section, SectionRecord* record);
};
