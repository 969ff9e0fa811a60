/// \file
/// One program of a tools menu.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// Codes of the tools menu's classes; 0 is success.
constexpr DWORD ZO_TLM_PROMPT_FAILED = 1;     ///< the dialog that asks for the arguments cannot be made
constexpr DWORD ZO_TLM_CANCELLED = 2;         ///< the user cancelled that dialog
constexpr DWORD ZO_TLM_WRONG_VERSION = 3;     ///< version or size is not the class's, or the file header is not valid
constexpr DWORD ZO_TLM_NO_NAME = 4;           ///< no file name
constexpr DWORD ZO_TLM_OPEN_FAILED = 5;       ///< a file cannot be opened
constexpr DWORD ZO_TLM_READ_FAILED = 6;       ///< a file cannot be read, or ends too early
constexpr DWORD ZO_TLM_WRITE_FAILED = 7;      ///< a file cannot be written
constexpr DWORD ZO_TLM_TEXT_CUT = 8;          ///< a text is too long for its field; the field has its beginning
constexpr DWORD ZO_TLM_NO_MENU = 9;           ///< the main window has no menu
constexpr DWORD ZO_TLM_NO_MARKER = 10;        ///< the marker is in no menu of the main window
constexpr DWORD ZO_TLM_NO_MEMORY = 11;        ///< no memory for an object
constexpr DWORD ZO_TLM_LIST_FULL = 12;        ///< no memory for a list to grow
constexpr DWORD ZO_TLM_START_FAILED = 14;     ///< the program cannot be started
constexpr DWORD ZO_TLM_NO_PROGRAM = 15;       ///< the item has no program path
constexpr DWORD ZO_TLM_FILE_TOO_SHORT = 16;   ///< the file is shorter than its header
constexpr DWORD ZO_TLM_BAD_HEADER_SIZE = 18;  ///< the file header has another size
constexpr DWORD ZO_TLM_BAD_MAGIC = 19;        ///< the file is of another kind
constexpr DWORD ZO_TLM_BAD_FILE_VERSION = 20; ///< the file has another version

/// Item flags.
constexpr DWORD ZO_TLM_ASK_ARGUMENTS = 0x1;   ///< ask for the arguments before starting
constexpr DWORD ZO_TLM_START_MINIMIZED = 0x2; ///< whatever show command is stored
constexpr DWORD ZO_TLM_IN_MENU = 0x4;         ///< the item is shown in the tools menu
constexpr DWORD ZO_TLM_KEEP_ARGUMENTS = 0x8;  ///< PromptForArgument keeps the answer

constexpr DWORD ZO_TLM_ITEM_VERSION = 0x00010000;
constexpr size_t ZO_TLM_MENU_TEXT_SIZE = 32; ///< sizes of the fields in bytes, with their terminators
constexpr size_t ZO_TLM_DESCRIPTION_SIZE = 128;
constexpr size_t ZO_TLM_PATH_SIZE = 264;

/// An item as it is stored in a file, little-endian. A text that was read may have no terminator.
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

/// A program that the user has put into the tools menu: its texts there, and how it is started. Nothing is thrown;
/// without memory for a text, the text is empty.
class ZOGBL_API CTlmItem : public CObject {
    DECLARE_DYNAMIC(CTlmItem)
public:
    CTlmItem(); ///< with default data

    /// Starts the program and does not wait for it. With ZO_TLM_ASK_ARGUMENTS the user is asked for the arguments
    /// first; the answer is used for this start only.
    ///
    /// The command line is the program path, a blank and the arguments. A path with blanks is put in quotes, as every
    /// program expects: otherwise the program would take parts of its path for arguments. The working directory is
    /// passed on unchanged, also if it is empty.
    /// \param parent owner of the question; null: the main window
    /// \return 0, ZO_TLM_NO_PROGRAM, ZO_TLM_PROMPT_FAILED, ZO_TLM_CANCELLED or ZO_TLM_START_FAILED
    virtual DWORD ActivateItem(CWnd* parent);
    /// Reads the record at the file's position.
    /// \param version, size of the file's records: only ZO_TLM_ITEM_VERSION and ZO_TLM_ITEM_SIZE are accepted
    /// \return 0, ZO_TLM_WRONG_VERSION or ZO_TLM_READ_FAILED; unless 0, the item is as before
    virtual DWORD LoadItemData(CFile& file, DWORD version, DWORD size);
    /// Writes the record. \return 0, ZO_TLM_WRONG_VERSION or ZO_TLM_WRITE_FAILED
    virtual DWORD SaveItemData(CFile& file, DWORD version, DWORD size);

    /// Sets the whole record to the defaults: shown in the menu, with the system's show command, a window of half the
    /// screen, a console of 80 by 25 in bright white on black, and no texts but a description.
    void DefaultItemData();

    /// The menu command; 0 if the item is in no menu. It is not saved.
    UINT GetCommand() const { return m_nCommand; }
    void SetCommand(UINT command) { m_nCommand = command; }

    DWORD GetDataFlags() const { return m_record.dwFlags; } ///< ZO_TLM_ values
    void SetDataFlags(DWORD flags) { m_record.dwFlags = flags; }
    /// Icon of the question for arguments: its number in the language library. If there is no such icon, also for 0:
    /// the system's own.
    DWORD GetDataIcon() const { return m_record.dwIcon; }
    void SetDataIcon(DWORD icon) { m_record.dwIcon = icon; }

    // A field keeps texts of up to its size less two bytes; a character of two bytes is kept whole or not at all. A
    // setter returns ZO_TLM_TEXT_CUT if the text and its terminator do not fit in the field. A text that is one byte
    // too long to be kept is cut without a report: that is prescribed. Null changes nothing and returns 0.

    /// At most 30 bytes. An ampersand marks the access key; two ampersands are one.
    void GetDataMenuText(CString& text) const;
    DWORD SetDataMenuText(const char* text);
    /// At most 126 bytes. Shown in the status bar, and as the question for arguments.
    void GetDataDescription(CString& text) const;
    DWORD SetDataDescription(const char* text);
    /// At most 262 bytes, like the next two.
    void GetDataProgramPath(CString& path) const;
    DWORD SetDataProgramPath(const char* path);
    void GetDataWorkingDirectory(CString& path) const;
    DWORD SetDataWorkingDirectory(const char* path);
    void GetDataArguments(CString& arguments) const;
    DWORD SetDataArguments(const char* arguments);

    /// The record itself, for data without an operation: the look of the program's window and console.
    ZoToolItemRecord& GetRecord() { return m_record; }
    const ZoToolItemRecord& GetRecord() const { return m_record; }

protected:
    /// Asks for the arguments. With ZO_TLM_KEEP_ARGUMENTS the answer becomes the item's own text.
    /// \return 0, with the answer in \p args, or ZO_TLM_CANCELLED or ZO_TLM_PROMPT_FAILED
    DWORD PromptForArgument(CWnd* parent, CString& args);

private:
    DWORD Ask(CWnd* parent, CString& arguments) const;

    DWORD m_dwRecordSize = ZO_TLM_ITEM_SIZE;
    DWORD m_dwRecordVersion = ZO_TLM_ITEM_VERSION;
    UINT m_nCommand = 0;
    ZoToolItemRecord m_record;
};
