/// \file
/// The files of tools menus.
#pragma once

#include <zogbl/tool_item.h>

class CObArray;

constexpr DWORD ZO_TLM_FILE_VERSION = 0x00010000;
constexpr DWORD ZO_TLM_FILE_MAGIC = 0x19950527;
constexpr DWORD ZO_TLM_HEADER_SIZE = 144;

/// How to load a file.
constexpr DWORD ZO_TLM_FOR_MENU = 0x1; ///< only items shown in the menu, with their menu commands

/// First menu command; the next ones count down from it.
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

/// A file of tools: a header, then the items, one record after the other. Bytes behind the last whole record are
/// ignored. Nothing is thrown; no message is shown.
class ZOGBL_API CTlmFile : public CObject {
    DECLARE_DYNAMIC(CTlmFile)
public:
    CTlmFile();

    /// Appends the items of a file to \p items, as new CTlmItem objects that the caller deletes. Null can take no item.
    /// After a failure, the items read before it are in the list. As soon as the header has been found valid, the
    /// description is the file's.
    ///
    /// With ZO_TLM_FOR_MENU, items without ZO_TLM_IN_MENU are left out; the others get the menu commands
    /// ZO_TLM_FIRST_COMMAND, one less, and so on. Without it, all items are loaded, and none gets a command.
    /// \param version, size of the file's header, as the caller knows them: only ZO_TLM_FILE_VERSION and
    /// ZO_TLM_HEADER_SIZE are accepted
    /// \return 0, or ZO_TLM_WRONG_VERSION, NO_NAME, OPEN_FAILED, READ_FAILED, NO_MEMORY or LIST_FULL (also if \p items
    /// is null and there is an item)
    virtual DWORD LoadFileData(const char* path, DWORD version, DWORD size, CObArray* items, DWORD options);
    /// Writes the description and the CTlmItem objects of \p items, in their order; null pointers are left out. An
    /// existing file is lost first. A failure to write an item is not reported: where that matters, check the length of
    /// the file.
    /// \return
    ///   0                                   the header is written
    ///   ZO_TLM_NO_NAME, ZO_TLM_OPEN_FAILED  the file is as before
    ///   ZO_TLM_WRONG_VERSION                another \p version or \p size; the file has been deleted
    ///   ZO_TLM_WRITE_FAILED                 the header could not be written; the file has been deleted
    virtual DWORD SaveFileData(const char* path, DWORD version, DWORD size, CObArray* items);

    /// Purpose of the file, a text of at most 126 bytes; set like CTlmItem's texts.
    void GetDescription(CString& text) const;
    DWORD SetDescription(const char* text);

    /// Whether the file begins like a file of tools. \return 0, or ZO_TLM_NO_NAME (null or empty), OPEN_FAILED,
    /// FILE_TOO_SHORT, READ_FAILED, BAD_HEADER_SIZE, BAD_MAGIC or BAD_FILE_VERSION
    static DWORD IsValidFile(const char* path);

private:
    DWORD ReadItems(CFile& file, CObArray* items, DWORD options);
    DWORD WriteHeader(CFile& file);

    DWORD m_dwHeaderSize = ZO_TLM_HEADER_SIZE;
    DWORD m_dwFileVersion = ZO_TLM_FILE_VERSION;
    ZoToolFileHeader m_header;
};
