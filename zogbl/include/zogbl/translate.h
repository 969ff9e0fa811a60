/// \file
/// Character translation: of what a communication line receives and sends, byte by byte.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// Codes of CGblTranslate's file operations.
constexpr DWORD ZO_TRANSLATE_SUCCESS = 0;
constexpr DWORD ZO_TRANSLATE_NO_NAME = 1;      ///< no file name: null or empty
constexpr DWORD ZO_TRANSLATE_NOT_OPENED = 2;   ///< the file cannot be opened, or not be read to its end
constexpr DWORD ZO_TRANSLATE_NOT_WRITTEN = 3;  ///< after writing, the file has not its full length
constexpr DWORD ZO_TRANSLATE_WRONG_LENGTH = 6; ///< the file's length is not 608
constexpr DWORD ZO_TRANSLATE_SHORT_HEADER = 7; ///< the header is less than 96 bytes long
constexpr DWORD ZO_TRANSLATE_WRONG_MAGIC = 8;
constexpr DWORD ZO_TRANSLATE_NEWER_VERSION = 9; ///< the file's version is above 0x00010000
constexpr DWORD ZO_TRANSLATE_NO_MEMORY = 10;    ///< memory has run out, or a dialog cannot be made

constexpr DWORD ZO_TRANSLATE_HEXADECIMAL = 0; ///< how the editor shows codes: 0x41
constexpr DWORD ZO_TRANSLATE_DECIMAL = 1;     ///< 65

constexpr int ZO_TRANSLATE_DESCRIPTION_LENGTH = 63; ///< most bytes of a description that a file keeps

/// Translates each byte that a communication line receives (get table) and each byte to send (put table). At first each
/// table is off and maps every byte to itself. A file of 608 bytes stores the two tables and a description: a set.
///
/// The double-byte flags are stored for the caller, who decides about lead bytes; translation ignores them. Without
/// memory, an operation returns ZO_TRANSLATE_NO_MEMORY; one without a status does nothing.
class ZOGBL_API CGblTranslate {
public:
    /// A new set; its description comes from the language library.
    CGblTranslate();
    ~CGblTranslate();
    CGblTranslate(const CGblTranslate&) = delete;
    CGblTranslate& operator=(const CGblTranslate&) = delete;

    /// Copies everything of another set, also its file path. Null and the object itself are ignored.
    void CopyData(CGblTranslate* source);

    /// Translates a received byte. Inline, as is DoPut, because each byte of a line passes through them.
    unsigned char DoGet(unsigned char character) { return m_byGetInForce[character]; }
    /// Translates a byte to send.
    unsigned char DoPut(unsigned char character) { return m_byPutInForce[character]; }

    // Entries of the tables, also of a table that is off.
    unsigned char GetInputValue(unsigned char index) const;
    void SetInputValue(unsigned char index, unsigned char value);
    unsigned char GetOutputValue(unsigned char index) const;
    void SetOutputValue(unsigned char index, unsigned char value);
    void ResetGetTable(); ///< every byte maps to itself
    void ResetPutTable();

    // Switches: any value but 0 is on; read back as 1 or 0.
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

    // State of the editor when it was last used: the selected character, and ZO_TRANSLATE_HEXADECIMAL or _DECIMAL. Any
    // number is stored.
    void SetLastInput(unsigned long value);
    void SetLastOutput(unsigned long value);
    void SetLastModeI(unsigned long value);
    void SetLastModeO(unsigned long value);
    unsigned long GetLastInput() const;
    unsigned long GetLastOutput() const;
    unsigned long GetLastModeI() const;
    unsigned long GetLastModeO() const;

    /// Loads a file; its path becomes the object's. An empty description becomes that of a new set.
    /// \param path null: the object's
    /// \return ZO_TRANSLATE_SUCCESS. Otherwise the result of IsValidFile, with nothing changed; or
    /// ZO_TRANSLATE_NOT_OPENED because reading failed: a table that was read before stays, all else is unchanged.
    unsigned long Load(const char* path);
    /// Writes a file; an existing one is replaced. Others may have it open, if they share it. An empty description
    /// becomes that of a new set first, in the object too.
    /// \param path null: the object's. It becomes the object's if the file can be opened.
    /// \return ZO_TRANSLATE_SUCCESS, _NO_NAME, _NOT_OPENED, _NO_MEMORY, or _NOT_WRITTEN: the file is incomplete
    unsigned long Save(const char* path);
    /// Whether a file holds a set. \return ZO_TRANSLATE_SUCCESS, also if the file can be opened but not read, which
    /// Load then reports; else any code but ZO_TRANSLATE_NOT_WRITTEN
    static unsigned long IsValidFile(const char* path);

    /// Lets the user choose among the translation files of a folder, by their descriptions. Loads the chosen one.
    /// \param path of any file in the folder; it need not exist. A path without a dot is the folder itself.
    /// \return ZO_TRANSLATE_SUCCESS, also if the user cancels, _NO_MEMORY, or the result of Load
    unsigned long Load(CWnd* parent, const char* path);
    /// Lets the user edit the set. With OK, the set is changed and saved to its file; with Apply, too, and the editor
    /// stays open. If Apply cannot save, the user is told.
    ///
    /// While the file is saved, its old contents are kept in a copy beside it: "<path>.zo~", on Win32s with '~' as the
    /// last character of the extension. If saving fails, they are put back. If the program is killed while it saves,
    /// the copy stays: Edit, the chooser and the editor's file dialog then ask whether to put it back, and Edit loads
    /// the file again.
    /// \return
    ///   ZO_TRANSLATE_SUCCESS     saved, or the user cancelled
    ///   ZO_TRANSLATE_NO_MEMORY   also if the editor cannot be shown
    ///   ZO_TRANSLATE_NOT_OPENED  also if there is no room for the copy or another program is saving the file; nothing
    ///                            is written
    ///   other                    the result of Save
    /// If saving fails, the object holds the edited set, and the file is as before if it could be put back.
    unsigned long Edit(CWnd* parent);

private:
    static constexpr int kTableSize = 256;

    void PutInForce();

    BOOL m_bGetEnabled;
    BOOL m_bPutEnabled;
    CGdiObject m_gdiObject; // always empty and never copied; its place is prescribed
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
    // Results of DoGet and DoPut: the table if it is enabled, else the identity. Testing the switch for each byte would
    // cost a quarter more.
    BYTE m_byGetInForce[kTableSize];
    BYTE m_byPutInForce[kTableSize];
};
