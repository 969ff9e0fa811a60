/// \file
/// Profile files: sections with entries "key=value".
#pragma once

#include <zogbl/export.h>

#include <afxcoll.h>

/// Codes of CZoIniFile and CZoMemIniFile.
constexpr DWORD ZO_INI_SUCCESS = 0;
constexpr DWORD ZO_INI_NO_OBJECT = 1; ///< for callers without an object; no operation returns it
constexpr DWORD ZO_INI_NULL_FILE_NAME = 2;
constexpr DWORD ZO_INI_NO_FILE = 3; ///< no file name is set; SaveIniFile: there is no file
constexpr DWORD ZO_INI_NULL_SECTION = 4;
constexpr DWORD ZO_INI_UNKNOWN_SECTION = 5; ///< of CZoMemIniFile
constexpr DWORD ZO_INI_NULL_KEY = 6;
constexpr DWORD ZO_INI_NOT_FOUND = 7;    ///< no entry, or an empty one: the default is used; nothing to list
constexpr DWORD ZO_INI_KEY_TOO_LONG = 7; ///< the same code as ZO_INI_NOT_FOUND; prescribed
constexpr DWORD ZO_INI_NULL_ARGUMENT = 8;
constexpr DWORD ZO_INI_TOO_LONG = 9; ///< a value, file name or section
constexpr DWORD ZO_INI_NULL_BUFFER = 11;
constexpr DWORD ZO_INI_TRUNCATED = 12; ///< the buffer is too small, or a list was cut
constexpr DWORD ZO_INI_NOT_WRITTEN = 13;
constexpr DWORD ZO_INI_OUT_OF_MEMORY = 15;

/// Sizes of the texts in bytes, terminator included.
constexpr DWORD ZO_INI_FILE_NAME_SIZE = 268;
constexpr DWORD ZO_INI_SECTION_SIZE = 1024;
constexpr DWORD ZO_INI_KEY_SIZE = 256;
constexpr DWORD ZO_INI_VALUE_SIZE = 4097;

/// Types of value.
constexpr DWORD ZO_INI_TYPE_STRING = 1; ///< also of tokens and lists of names
constexpr DWORD ZO_INI_TYPE_INTEGER = 2;
constexpr DWORD ZO_INI_TYPE_LONG_WORD = 3;
constexpr DWORD ZO_INI_TYPE_BOOLEAN = 4;
constexpr DWORD ZO_INI_TYPE_HEXADECIMAL = 5;
constexpr DWORD ZO_INI_TYPE_TIME = 6;
constexpr DWORD ZO_INI_TYPE_RECTANGLE = 7;
constexpr DWORD ZO_INI_TYPE_COLOR = 8;
constexpr DWORD ZO_INI_TYPE_ACCELERATOR = 9;
constexpr DWORD ZO_INI_TYPE_WINDOW_PLACEMENT = 10;

/// Reads and writes typed values in a profile file. It calls the system's private-profile functions, so grammar and
/// caching are the system's: the case of names and the blanks around names and values do not count, and a file name
/// without a path is looked for in the Windows folder. Set a file and a section, then read and write entries:
///
///     CZoIniFile profile;
///     profile.SetFileName("C:\\Fax\\FAX.INI");
///     profile.SetSection("Modem");
///     DWORD speed;
///     profile.DoLongWord("Speed", TRUE, 9600, &speed);     // reads; 9600 if there is no such entry
///     profile.DoLongWord("Speed", FALSE, 14400, nullptr);  // writes
///
/// An object takes 10 KB, all of it inside itself. A copy is an object of its own for the same file and section.
///
/// \par Typed operations
/// All have the same arguments:
///
///     key     the entry, in the current section
///     read    not 0: read; 0: write
///     input   the value to write, or the default of a read
///     output  gets the value read, or the default; not used by a write; may be the same variable as input
///
/// They return
///
///     ZO_INI_SUCCESS
///     ZO_INI_NOT_FOUND      the entry is missing or empty; the output is the default
///     ZO_INI_NOT_WRITTEN    the system refused to write (folder missing, file read-only ...)
///
/// or, checked in this order, what is wrong with the arguments:
///
///     ZO_INI_NULL_KEY
///     ZO_INI_KEY_TOO_LONG   over 255 characters
///     ZO_INI_NULL_ARGUMENT  the input is a null pointer
///     ZO_INI_TOO_LONG       the input text has over 4096 characters
///     ZO_INI_NULL_ARGUMENT  a read has no output
///     ZO_INI_NO_FILE
///
/// A read that is refused so still sets the output to the default, if both are given.
///
/// Numbers are read as decimal text: white space, a sign, digits up to the first other character. A text without digits
/// is 0; a number over 32 bits wraps around. Types with several numbers accept any of blank , : ; / | \ between them. A
/// number that is missing keeps its default.
class ZOGBL_API CZoIniFile {
public:
    CZoIniFile(); ///< all texts empty
    CZoIniFile(const CZoIniFile&) = default;
    CZoIniFile& operator=(const CZoIniFile&) = default;
    virtual ~CZoIniFile(); ///< flushes the system's cache, see FlushCache

    /// A text of at most 4096 characters. A read copies as much of it as fits in \p size bytes with a terminator.
    /// \return also ZO_INI_TRUNCATED, if \p size is less than the text's length. If \p size equals the length, the last
    /// character is missing, and the status does not tell; this is prescribed
    virtual DWORD DoString(const char* key, int read, const char* input, char* output, DWORD size);
    /// "%d"; 39 characters are read.
    virtual DWORD DoInteger(const char* key, int read, int input, int* output);
    /// "%lu"; 39 characters are read.
    virtual DWORD DoLongWord(const char* key, int read, DWORD input, DWORD* output);
    /// "1" or "0". Read as TRUE: 1, TRUE, SET, YES, ON, OK, case ignored; all else is FALSE.
    virtual DWORD DoBoolean(const char* key, int read, BOOL input, BOOL* output);
    /// "0x%08lX". Blanks and tabs in front are passed over. Reading stops at the first character that is neither a
    /// hexadecimal digit nor an X. Digits before the last X do not count: 12x34 is 0x34. Of more than 8 digits the last
    /// 8 count.
    virtual DWORD DoHexadecimal(const char* key, int read, DWORD input, DWORD* output);
    /// "%d, %d, %d, %d, %d, %d, %d, %d": year, month, day of week, day, hour, minute, second, milliseconds. A read
    /// always gives the default; only its status tells whether there is an entry. This is prescribed.
    virtual DWORD ZoIniFileTime(const char* key, int read, const SYSTEMTIME* input, SYSTEMTIME* output);
    /// "%ld, %ld, %ld, %ld": left, top, right, bottom; 39 characters are read.
    virtual DWORD ZoIniFileRectangle(const char* key, int read, const RECT* input, RECT* output);
    /// "%d %d %d": red, green, blue; 15 characters are read. Each number counts modulo 256, and the top byte is 0.
    virtual DWORD ZoIniFileColor(const char* key, int read, const COLORREF* input, COLORREF* output);
    /// "%d, %d, %d": flags, key, command; 39 characters are read. The low 8 bits of the flags and the low 16 bits of
    /// the others count.
    virtual DWORD ZoIniFileAccelerator(const char* key, int read, const ACCEL* input, ACCEL* output);
    /// "%u, %u, %ld, %ld, %ld, %ld, %ld, %ld, %ld, %ld": flags, show command, minimised x and y, maximised x and y, and
    /// the normal rectangle. 127 characters are read; the length field is the default's. The rectangle is written as
    /// top, left, right, bottom, but read as left, top, right, bottom, so left and top come back exchanged: existing
    /// files depend on it.
    virtual DWORD ZoIniFileWindowPlacement(const char* key, int read, const WINDOWPLACEMENT* input,
                                           WINDOWPLACEMENT* output);
    /// A text as in DoString. A read fills \p output with the parts between any of the characters in \p delimiters;
    /// empty parts are left out. \p input and \p delimiters may be texts in \p output. A write needs neither \p output
    /// nor
    /// \p delimiters. \return also ZO_INI_OUT_OF_MEMORY, with \p output empty
    virtual DWORD DoTokenString(const char* key, int read, const char* input, CStringArray* output,
                                const char* delimiters);

    /// Fills \p sections with the names of all sections, in the file's order. Lines without a name, "[]" and those that
    /// begin with "=", are left out.
    ///
    /// The list has room for 4095 characters, one between two names included. The rest is cut, usually in the middle of
    /// a name. Only a first name of exactly 4094 characters gives ZO_INI_TRUNCATED; this is prescribed.
    /// \return ZO_INI_SUCCESS or ZO_INI_TRUNCATED; else \p sections is empty:
    ///   ZO_INI_NULL_ARGUMENT
    ///   ZO_INI_NO_FILE
    ///   ZO_INI_NOT_FOUND      no sections, or no readable file
    ///   ZO_INI_OUT_OF_MEMORY
    virtual DWORD EnumerateSections(CStringArray* sections);
    /// The same for the keys of the current section.
    virtual DWORD EnumerateKeys(CStringArray* keys);

    /// Whether the current section has an entry \p key that is not empty. FALSE for a null key or one of over 255
    /// characters, and without a file name.
    virtual BOOL DoesEntryExist(const char* key);
    /// Removes an entry from the current section. A null or empty key, an empty section or no file name: does nothing.
    /// \return always TRUE
    virtual BOOL DeleteEntry(const char* key);
    /// Removes section \p section, which need not be the current one, with all its entries. A null or empty name or no
    /// file name: does nothing. \return always TRUE
    virtual BOOL DeleteSection(const char* section);
    /// Asks the system to write its cached copy of the file. Does nothing without a file name.
    virtual void FlushCache();

    /// \param size of \p buffer, at least ZO_INI_FILE_NAME_SIZE, however short the name is
    /// \return 0, ZO_INI_NULL_BUFFER or ZO_INI_TRUNCATED
    virtual DWORD GetFileName(char* buffer, DWORD size);
    /// \param name at most 267 characters; the file need not exist. Empty: no file
    /// \return 0, ZO_INI_NULL_FILE_NAME or ZO_INI_TOO_LONG
    virtual DWORD SetFileName(const char* name);
    /// \param size of \p buffer, at least ZO_INI_SECTION_SIZE, however short the name is
    /// \return 0, ZO_INI_NULL_BUFFER or ZO_INI_TRUNCATED
    virtual DWORD GetSection(char* buffer, DWORD size);
    /// \param name at most 1023 characters. \return 0, ZO_INI_NULL_SECTION or ZO_INI_TOO_LONG
    virtual DWORD SetSection(const char* name);

protected:
    /// The value of an entry: its text, or the value that the text stands for.
    union Value {
        char szText[ZO_INI_VALUE_SIZE];
        int nNumber;    ///< also a BOOL
        DWORD dwNumber; ///< also a COLORREF
        SYSTEMTIME time;
        RECT rectangle;
        ACCEL accelerator;
        WINDOWPLACEMENT placement;
    };

    char m_szFileName[ZO_INI_FILE_NAME_SIZE];
    char m_szSection[ZO_INI_SECTION_SIZE];
    char m_szKey[ZO_INI_KEY_SIZE]; ///< of the operation in progress
    DWORD m_dwValueType;           ///< of the operation in progress
    DWORD m_dwLastResult;          ///< of the last typed operation
    Value m_uInput;                ///< the value to write, or the default of a read
    Value m_uOutput;               ///< the value read

private:
    template <class VALUE> struct Format;

    DWORD Begin(const char* key, DWORD type, DWORD argumentStatus);
    template <class VALUE>
    DWORD DoValue(const char* key, int read, const VALUE* input, VALUE* output, const Format<VALUE>& format);
    DWORD ReadProfile(const char* section, const char* key, DWORD size);
    DWORD ReadEntry(DWORD size);
    DWORD WriteEntry(const char* text);
    DWORD DoText(const char* key, int read, const char* input, bool hasOutput, const char*& text);
    DWORD Enumerate(const char* section, CStringArray* names);
};
