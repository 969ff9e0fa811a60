/// \file
/// One program of a tools menu.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// Codes of the tools menu's classes; 0 is success.
constexpr DWORD ZO_TLM_PROMPT_FAILED = 1;     ///< the dialog that asks for the arguments could not be made
constexpr DWORD ZO_TLM_CANCELLED = 2;         ///< the user gave that dialog up
constexpr DWORD ZO_TLM_WRONG_VERSION = 3;     ///< another version or size than the class's, or an invalid file header
constexpr DWORD ZO_TLM_NO_NAME = 4;           ///< no file name
constexpr DWORD ZO_TLM_OPEN_FAILED = 5;       ///< a file could not be opened
constexpr DWORD ZO_TLM_READ_FAILED = 6;       ///< a file could not be read, or ended too early
constexpr DWORD ZO_TLM_WRITE_FAILED = 7;      ///< a file could not be written
constexpr DWORD ZO_TLM_TEXT_CUT = 8;          ///< a text was too long for its field, which holds the beginning
constexpr DWORD ZO_TLM_NO_MENU = 9;           ///< the main window has no menu
constexpr DWORD ZO_TLM_NO_MARKER = 10;        ///< the marker is in no menu of the main window
constexpr DWORD ZO_TLM_NO_MEMORY = 11;        ///< an object could not be allocated
constexpr DWORD ZO_TLM_LIST_FULL = 12;        ///< a list could not grow
constexpr DWORD ZO_TLM_START_FAILED = 14;     ///< the program could not be started
constexpr DWORD ZO_TLM_NO_PROGRAM = 15;       ///< the item has no program path
constexpr DWORD ZO_TLM_FILE_TOO_SHORT = 16;   ///< no room for the file header
constexpr DWORD ZO_TLM_BAD_HEADER_SIZE = 18;  ///< the file header tells another size
constexpr DWORD ZO_TLM_BAD_MAGIC = 19;        ///< the file is of another kind
constexpr DWORD ZO_TLM_BAD_FILE_VERSION = 20; ///< the file is of another version

/// Item flags.
constexpr DWORD ZO_TLM_ASK_ARGUMENTS = 0x1;   ///< ask for the arguments before starting
constexpr DWORD ZO_TLM_START_MINIMIZED = 0x2; ///< whatever show command is stored
constexpr DWORD ZO_TLM_IN_MENU = 0x4;         ///< the item is shown in the tools menu
constexpr DWORD ZO_TLM_KEEP_ARGUMENTS = 0x8;  ///< PromptForArgument keeps the answer

constexpr DWORD ZO_TLM_ITEM_VERSION = 0x00010000;
constexpr size_t ZO_TLM_MENU_TEXT_SIZE = 32; ///< fields with their terminators, in bytes
constexpr size_t ZO_TLM_DESCRIPTION_SIZE = 128;
constexpr size_t ZO_TLM_PATH_SIZE = 264;

/// An item as it stands in a file, little-endian. A text that was read may lack its terminator.
struct ZoToolItemRecord {
    DWORD dwSize; ///< of the record; 0 until it is saved
    DWORD dwFlags;
    DWORD dwIcon;
    DWORD dwReserved;
    DWORD dwCreationFlags; ///< for CreateProcess
    DWORD dwStartupFlags;  ///< STARTF_ values
    DWORD dwX;
    DWORD dwY;
    DWORD dwWidth;
    DWORD dwHeight;
    DWORD dwColumns;
    DWORD dwRows;
    DWORD dwFillAttribute;
    DWORD dwShowCommand;
    char szMenuText[ZO_TLM_MENU_TEXT_SIZE];
    char szDescription[ZO_TLM_DESCRIPTION_SIZE];
    char szProgramPath[ZO_TLM_PATH_SIZE];
    char szWorkingDirectory[ZO_TLM_PATH_SIZE];
    char szArguments[ZO_TLM_PATH_SIZE];
    BYTE abReserved[528];
};
constexpr DWORD ZO_TLM_ITEM_SIZE = 1536;
static_assert(sizeof(ZoToolItemRecord) == ZO_TLM_ITEM_SIZE);

/// A program that the user has put into the tools menu: what the menu shows of it, and how it is started. Nothing is
/// thrown; texts that memory does not suffice for are empty.
class ZOGBL_API CTlmItem : public CObject {
    DECLARE_DYNAMIC(CTlmItem)
public:
    CTlmItem(); ///< with default data

    /// Starts the program and does not wait for it. With ZO_TLM_ASK_ARGUMENTS the user is asked for the arguments
    /// first; the answer serves this start only.
    ///
    /// The command line is the program path, a blank and the arguments. A path with blanks stands in quotes there, as
    /// every program expects it; otherwise parts of its own path would be its first arguments. The working directory is
    /// handed over as it is, also when empty.
    /// \param parent owner of the question; null for the main window
    /// \return 0, ZO_TLM_NO_PROGRAM, ZO_TLM_PROMPT_FAILED, ZO_TLM_CANCELLED or ZO_TLM_START_FAILED
    virtual DWORD ActivateItem(CWnd* parent);
    /// Reads the record from the file's position. \param version, size what the file's records are: only
    /// ZO_TLM_ITEM_VERSION and ZO_TLM_ITEM_SIZE are known
    /// \return 0, ZO_TLM_WRONG_VERSION or ZO_TLM_READ_FAILED; the item is as before unless 0
    virtual DWORD LoadItemData(CFile& file, DWORD version, DWORD size);
    /// Writes the record. \return 0, ZO_TLM_WRONG_VERSION or ZO_TLM_WRITE_FAILED
    virtual DWORD SaveItemData(CFile& file, DWORD version, DWORD size);

    /// Puts the whole record back to the defaults: shown in the menu, started with the system's show command, a window
    /// of half the screen, a console of 80 by 25, bright white on black; no texts but a description.
    void DefaultItemData();

    /// The menu command; not saved, 0 for an item that is in no menu.
    UINT GetCommand() const { return m_nCommand; }
    void SetCommand(UINT command) { m_nCommand = command; }

    DWORD GetDataFlags() const { return m_record.dwFlags; } ///< ZO_TLM_ values
    void SetDataFlags(DWORD flags) { m_record.dwFlags = flags; }
    /// The icon that the question for arguments shows: its number in the language library; 0 for the system's own.
    DWORD GetDataIcon() const { return m_record.dwIcon; }
    void SetDataIcon(DWORD icon) { m_record.dwIcon = icon; }

    // Each text keeps two bytes less than its field has; a character of two bytes is kept whole or not at all. Setters
    // return ZO_TLM_TEXT_CUT for a text that is longer than the field with its terminator allows. A text that is one byte
    // too long for what is kept is cut without a report: that is prescribed. Null changes nothing and returns 0.

    /// At most 30 bytes. An ampersand marks the access key, two stand for one.
    void GetDataMenuText(CString& text) const;
    DWORD SetDataMenuText(const char* text);
    /// Shown in the status bar, and as the question for arguments: at most 126 bytes.
    void GetDataDescription(CString& text) const;
    DWORD SetDataDescription(const char* text);
    /// At most 262 bytes, as the next two.
    void GetDataProgramPath(CString& path) const;
    DWORD SetDataProgramPath(const char* path);
    void GetDataWorkingDirectory(CString& path) const;
    DWORD SetDataWorkingDirectory(const char* path);
    void GetDataArguments(CString& arguments) const;
    DWORD SetDataArguments(const char* arguments);

    /// The record itself, for what has no operation of its own: how the program's window and console are to look.
    ZoToolItemRecord& GetRecord() { return m_record; }
    const ZoToolItemRecord& GetRecord() const { return m_record; }

protected:
    /// Asks for the arguments. With ZO_TLM_KEEP_ARGUMENTS the answer becomes the item's own.
    /// \return 0 with the answer in \p args, ZO_TLM_CANCELLED or ZO_TLM_PROMPT_FAILED
    DWORD PromptForArgument(CWnd* parent, CString& args);

private:
    DWORD Ask(CWnd* parent, CString& arguments) const;

    DWORD m_dwRecordSize = ZO_TLM_ITEM_SIZE;
    DWORD m_dwRecordVersion = ZO_TLM_ITEM_VERSION;
    UINT m_nCommand = 0;
    ZoToolItemRecord m_record;
};
