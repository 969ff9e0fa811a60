/// \file
/// The files that tools menus are kept in, and the choice of one.
#pragma once

#include <zogbl/tool_item.h>

class CObArray;

constexpr DWORD ZO_TLM_FILE_VERSION = 0x00010000;
constexpr DWORD ZO_TLM_FILE_MAGIC = 0x19950527;
constexpr DWORD ZO_TLM_HEADER_SIZE = 144;

/// How to load a file.
constexpr DWORD ZO_TLM_FOR_MENU = 0x1; ///< only what is shown in the menu, with its menu commands

/// Menu commands count down from here.
constexpr UINT ZO_TLM_FIRST_COMMAND = 24553;

/// The beginning of a file, little-endian.
struct ZoToolFileHeader {
    DWORD dwSize;
    DWORD dwMagic;
    DWORD dwVersion;
    DWORD dwReserved;
    char szDescription[ZO_TLM_DESCRIPTION_SIZE];
};
static_assert(sizeof(ZoToolFileHeader) == ZO_TLM_HEADER_SIZE);

/// A file of tools: a header, and behind it the items, one record after the other. What is left behind the last whole
/// record is ignored. Nothing is thrown, no message is shown.
class ZOGBL_API CTlmFile : public CObject {
    DECLARE_DYNAMIC(CTlmFile)
public:
    CTlmFile();

    /// Appends the items of a file to \p items, new CTlmItem objects that the caller deletes; null takes none. After a failure those that
    /// were read before it are in the list; the description is the file's once its header was found to be valid.
    ///
    /// With ZO_TLM_FOR_MENU, items without ZO_TLM_IN_MENU are left out, and the others get the menu commands
    /// ZO_TLM_FIRST_COMMAND, one less, and so on. Otherwise all items are loaded, and none gets a command.
    /// \param version, size what the caller takes files for: only ZO_TLM_FILE_VERSION and ZO_TLM_HEADER_SIZE are known
    /// \return 0, or ZO_TLM_WRONG_VERSION, NO_NAME, OPEN_FAILED, READ_FAILED, NO_MEMORY or LIST_FULL
    virtual DWORD LoadFileData(const char* path, DWORD version, DWORD size, CObArray* items, DWORD options);
    /// Writes the description and all CTlmItem objects of \p items, in their order, null pointers left out. A file that
    /// is there is lost first. Whether the items could be written is not asked: where it matters, see how long the
    /// file has become.
    /// \return 0, ZO_TLM_NO_NAME or ZO_TLM_OPEN_FAILED, after which the file is as before; or ZO_TLM_WRONG_VERSION or
    /// ZO_TLM_WRITE_FAILED (of the header), after which there is no file
    virtual DWORD SaveFileData(const char* path, DWORD version, DWORD size, CObArray* items);

    /// What the file is for, a text of at most 126 bytes; set as CTlmItem's texts are.
    void GetDescription(CString& text) const;
    DWORD SetDescription(const char* text);

    /// Whether the file begins as a file of tools does. \return 0, or ZO_TLM_NO_NAME (null or empty), OPEN_FAILED,
    /// FILE_TOO_SHORT, READ_FAILED, BAD_HEADER_SIZE, BAD_MAGIC or BAD_FILE_VERSION
    static DWORD IsValidFile(const char* path);

private:
    DWORD ReadItems(CFile& file, CObArray* items, DWORD options);
    DWORD WriteHeader(CFile& file);

    DWORD m_dwHeaderSize = ZO_TLM_HEADER_SIZE;
    DWORD m_dwFileVersion = ZO_TLM_FILE_VERSION;
    ZoToolFileHeader m_header;
};
