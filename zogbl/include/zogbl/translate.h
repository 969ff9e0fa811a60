/// \file
/// Character translation: what a communication line receives and sends, byte by byte.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// Codes of CGblTranslate's file operations.
constexpr DWORD ZO_TRANSLATE_SUCCESS = 0;
constexpr DWORD ZO_TRANSLATE_NO_NAME = 1;      ///< no file name: null or empty
constexpr DWORD ZO_TRANSLATE_NOT_OPENED = 2;   ///< the file could not be opened, or not be read to its end
constexpr DWORD ZO_TRANSLATE_NOT_WRITTEN = 3;  ///< after writing, the file is not as long as it must be
constexpr DWORD ZO_TRANSLATE_WRONG_LENGTH = 6; ///< the file's length is not 608
constexpr DWORD ZO_TRANSLATE_SHORT_HEADER = 7; ///< the header is less than 96 bytes long
constexpr DWORD ZO_TRANSLATE_WRONG_MAGIC = 8;
constexpr DWORD ZO_TRANSLATE_NEWER_VERSION = 9; ///< the file's version is above 0x00010000
constexpr DWORD ZO_TRANSLATE_NO_MEMORY = 10;    ///< memory has run out, or a dialog could not be made

constexpr DWORD ZO_TRANSLATE_HEXADECIMAL = 0; ///< how the editor shows codes: 0x41
constexpr DWORD ZO_TRANSLATE_DECIMAL = 1;     ///< 65

constexpr int ZO_TRANSLATE_DESCRIPTION_LENGTH = 63; ///< most bytes of a description that a file keeps

/// A pair of tables: the get table translates each byte received, the put table each byte to send. Each is off at first,
/// and maps every byte to itself. A set of tables is kept in a file of 608 bytes, with a description.
///
/// The double-byte flags are kept for the caller, who decides what lead bytes are to be: translation ignores them.
/// Operations that lack memory answer ZO_TRANSLATE_NO_MEMORY, those without a status do nothing.
class ZOGBL_API CGblTranslate {
public:
    /// The description is the language library's for a new set.
    CGblTranslate();
    ~CGblTranslate();
    CGblTranslate(const CGblTranslate&) = delete;
    CGblTranslate& operator=(const CGblTranslate&) = delete;

    /// Takes over all of another set, its file path included. Null and the object itself are passed over.
    void CopyData(CGblTranslate* source);

    /// What stands for a byte received. Inline, as is DoPut: they are called for each byte of a line.
    unsigned char DoGet(unsigned char character) { return m_byGetInForce[character]; }
    /// What stands for a byte to send.
    unsigned char DoPut(unsigned char character) { return m_byPutInForce[character]; }

    // Entries of the tables, whether they are enabled or not.
    unsigned char GetInputValue(unsigned char index) const;
    void SetInputValue(unsigned char index, unsigned char value);
    unsigned char GetOutputValue(unsigned char index) const;
    void SetOutputValue(unsigned char index, unsigned char value);
    void ResetGetTable(); ///< every byte maps to itself
    void ResetPutTable();

    // Switches: any value but 0 is on. \return 1 or 0
    void EnableGet(int enable);
    int IsGetEnabled() const;
    void EnablePut(int enable);
    int IsPutEnabled() const;
    void EnableGetDBCS(int enable);
    int IsGetDBCSEnabled() const;
    void EnablePutDBCS(int enable);
    int IsPutDBCSEnabled() const;

    void SetDescription(const char* description); ///< null changes nothing
    void GetDescription(CString& description) const;
    void SetFilePath(const char* path); ///< null changes nothing
    void GetFilePath(CString& path) const;

    // What the editor showed last: the character selected, and ZO_TRANSLATE_HEXADECIMAL or _DECIMAL. Any number is kept.
    void SetLastInput(unsigned long value);
    void SetLastOutput(unsigned long value);
    void SetLastModeI(unsigned long value);
    void SetLastModeO(unsigned long value);
    unsigned long GetLastInput() const;
    unsigned long GetLastOutput() const;
    unsigned long GetLastModeI() const;
    unsigned long GetLastModeO() const;

    /// Loads a file, whose path becomes the object's. An empty description becomes that of a new set.
    /// \param path null: the object's
    /// \return ZO_TRANSLATE_SUCCESS, or what IsValidFile says; then nothing has changed. ZO_TRANSLATE_NOT_OPENED also
    /// when reading fails: of the two tables those read before then stay, and all else is as it was.
    unsigned long Load(const char* path);
    /// Writes a file, in place of one that is there; others may have it open meanwhile, if they allow that. An empty
    /// description becomes that of a new set first, in the object as well.
    /// \param path null: the object's. It becomes the object's when the file could be opened.
    /// \return ZO_TRANSLATE_SUCCESS, _NO_NAME, _NOT_OPENED, _NO_MEMORY, or _NOT_WRITTEN: the file is incomplete.
    unsigned long Save(const char* path);
    /// Whether a file holds a set of tables. \return ZO_TRANSLATE_SUCCESS, also for one that cannot be read although it
    /// can be opened: that is for Load to tell; otherwise a code but ZO_TRANSLATE_NOT_WRITTEN.
    static unsigned long IsValidFile(const char* path);

    /// Lets the user choose among the translation files of a folder, by their descriptions, and loads the one chosen.
    /// \param path of any file in the folder, which need not exist; a path without a dot is the folder itself
    /// \return ZO_TRANSLATE_SUCCESS, also when the user cancels; _NO_MEMORY; what Load says
    unsigned long Load(CWnd* parent, const char* path);
    /// Lets the user edit the set, and saves it to its file when the user ends with OK. What the user applies in between
    /// is taken over and saved too; if that fails the user is told, and the editor stays.
    ///
    /// While the file is saved, what it held is kept in a copy beside it ("<path>.zo~", on Win32s '~' as the last character
    /// of the extension), and is put back if saving fails. If the program is killed while it saves, the copy stays: Edit, the
    /// chooser and the editor's file dialog then ask whether to put it back, and Edit loads what was put back.
    /// \return ZO_TRANSLATE_SUCCESS, also when the user cancels; _NO_MEMORY; what Save says: the object then holds what
    /// was edited, and the file is as before. _NOT_OPENED also if there is no room for the copy or another program is
    /// saving the file; nothing has been written then.
    unsigned long Edit(CWnd* parent);

private:
    static constexpr int kTableSize = 256;

    void PutInForce();

    BOOL m_bGetEnabled;
    BOOL m_bPutEnabled;
    CGdiObject m_gdiObject; // empty always, and never copied: callers count on the place that it takes
    BOOL m_bGetDBCS;
    BOOL m_bPutDBCS;
    DWORD m_dwLastInput;
    DWORD m_dwLastOutput;
    DWORD m_dwLastModeI;
    DWORD m_dwLastModeO;
    CString m_csFilePath;
    CString m_csDescription;
    BYTE m_byGetTable[kTableSize];
    BYTE m_byPutTable[kTableSize];
    // What DoGet and DoPut answer: the tables that are enabled, else the identity. A look at the switch for each byte would
    // cost a quarter more.
    BYTE m_byGetInForce[kTableSize];
    BYTE m_byPutInForce[kTableSize];
};
