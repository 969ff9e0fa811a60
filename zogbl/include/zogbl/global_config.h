/// \file
/// The suite's one gateway to the Windows registry.
#pragma once

#include <zogbl/export.h>
#include <zogbl/status.h>

#include <afx.h>

/// Modes: names for the root keys.
constexpr DWORD ZO_MODE_LOCAL_MACHINE = 1;
constexpr DWORD ZO_MODE_CURRENT_USER = 2;
constexpr DWORD ZO_MODE_USERS = 3;
constexpr DWORD ZO_MODE_PERFORMANCE_DATA = 4;
constexpr DWORD ZO_MODE_CURRENT_CONFIG = 5; ///< HKEY_CLASSES_ROOT on Windows NT
constexpr DWORD ZO_MODE_DYN_DATA = 6;       ///< HKEY_CLASSES_ROOT on Windows NT

/// Called for each subkey. \return 0 to go on; anything else ends the enumeration and becomes its result.
using ZoEnumEntriesProc = DWORD (*)(void* context, LPCSTR subkeyName);

/// Called for each value. \p data is the address of the value's data, always followed by a zero byte, except for a
/// REG_DWORD: there it is the number itself, see CZoGlobalConfig::EnumValues and ZoEnumeratedNumber.
/// \return 0 to go on; anything else ends the enumeration and becomes its result.
using ZoEnumValuesProc = DWORD (*)(void* context, LPCSTR valueName, const void* data, DWORD type);

/// The number that an enumeration hands over for a REG_DWORD.
inline DWORD ZoEnumeratedNumber(const void* data) { return static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(data)); }

/// Reads and writes the registry. Every operation names a root by its mode, a key path below that root and as a rule a
/// value; it opens the key, does one thing and closes the key again, so that no registry handle outlives a call.
/// Objects are cheap: make one on the stack for each piece of work.
///
/// On Win32s, whose registry has no named values, a value is kept as a subkey whose unnamed value holds the data as
/// text, and every mode means HKEY_CLASSES_ROOT. The 64-bit library works on the registry's 32-bit view, so that both
/// builds of the suite share their settings.
///
/// Operations return 0 on success; a registry error code as the system gave it (2: no such key or value, 234: the data
/// does not fit); 87 for an argument that makes no sense; or ZoErrNoMemory, ZoErrWrongValueType. After a failure the
/// out arguments hold their defaults: that of the caller, else 0, FALSE or nothing. If the operation itself succeeded,
/// the result of closing the key is returned, and it counts as failed if that is not 0. On a system of unknown family
/// no operation touches a registry: it gives the defaults and returns 0. Nothing is thrown.
///
/// Nothing guards a sequence of calls against another process that changes the same keys.
class ZOGBL_API CZoGlobalConfig {
public:
    CZoGlobalConfig(); ///< asks for the operating system's family
    CZoGlobalConfig(const CZoGlobalConfig&) = default;
    CZoGlobalConfig& operator=(const CZoGlobalConfig&) = default;
    virtual ~CZoGlobalConfig();

    /// Whether \p key has a value (Win32s: a subkey) of that name, case ignored. A missing key returns 2.
    virtual DWORD DoesEntryExist(DWORD mode, LPCSTR key, LPCSTR valueName, BOOL& exists);
    /// Whether \p key has a subkey of that name, case ignored. A missing key returns 2.
    virtual DWORD DoesSubkeyExist(DWORD mode, LPCSTR key, LPCSTR subkeyName, BOOL& exists);
    /// The name of the subkey with index 0. A key without subkeys gives FALSE and success.
    virtual DWORD FindFirstSubKey(DWORD mode, LPCSTR key, CString& subkeyName, BOOL& found);

    /// Reads a number: a REG_DWORD of 4 bytes; Win32s: decimal text of at most 1023 characters. \p value is set to
    /// \p defaultValue first and keeps it on failure. A value of another type gives ZoErrWrongValueType if its data
    /// fits in 4 bytes, else 234.
    DWORD GetValue(DWORD mode, LPCSTR key, LPCSTR valueName, DWORD& value, DWORD defaultValue);
    /// Writes a number, creating the key if needed.
    DWORD SetValue(DWORD mode, LPCSTR key, LPCSTR valueName, DWORD value);

    /// Reads a text of at most \p bufferSize - 1 characters. On failure \p buffer holds \p defaultText, cut to fit, or
    /// zeros over its whole size when that is null. Data that does not fit, a text with its terminator, gives 234;
    /// another type than REG_SZ, ZoErrWrongValueType; a null buffer or a size of 0, 87. A text stored without a
    /// terminator is given one.
    DWORD GetValue(DWORD mode, LPCSTR key, LPCSTR valueName, LPSTR buffer, DWORD bufferSize, LPCSTR defaultText);
    /// Writes a text as REG_SZ, creating the key if needed. A null text gives 87.
    DWORD SetValue(DWORD mode, LPCSTR key, LPCSTR valueName, LPCSTR text);

    /// Reads a value of any type. \param buffer zeros where no data was read; null asks for the type alone. \param type
    /// the value's type, 0 on failure; Win32s: REG_SZ. \param size is always 0, except on Win32s, where it is the
    /// length of the text with its terminator; this is prescribed. GetValueSize tells the size.
    DWORD GetAnyValueType(DWORD mode, LPCSTR key, LPCSTR valueName, void* buffer, DWORD bufferSize, DWORD& type,
                          DWORD& size);
    /// Writes a value of any type, creating the key if needed; Win32s: as text, whatever the type, up to its first
    /// zero. \param data null gives 87 \param dataSize in bytes; 0 writes nothing and returns 0, whatever \p data is
    DWORD SetAnyValueType(DWORD mode, LPCSTR key, LPCSTR valueName, const void* data, DWORD dataSize, DWORD type);

    /// The size in bytes of a value's data; 0 on Win32s.
    DWORD GetValueSize(DWORD mode, LPCSTR key, LPCSTR valueName, DWORD& size);

    /// Deletes a value; Win32s: its subkey with everything below it.
    DWORD DeleteEntry(DWORD mode, LPCSTR key, LPCSTR valueName);
    /// Deletes a subkey of \p key with everything below it, or \p key itself if \p subkeyName is null. A name that is
    /// empty or made of backslashes, or no name at all, gives 87: a root's whole content is never deleted. A failure
    /// ends the deletion where it is.
    DWORD DeleteSection(DWORD mode, LPCSTR key, LPCSTR subkeyName);
    /// Creates a key. A null or empty path returns 0 and does nothing.
    DWORD CreateKey(DWORD mode, LPCSTR key);

    /// Calls \p callback for each subkey, in index order.
    DWORD EnumEntries(DWORD mode, LPCSTR key, ZoEnumEntriesProc callback, void* context);
    /// Calls \p callback for each value, in index order, with up to 8192 bytes of data and a name of up to 260
    /// characters; one that is larger, whatever its type, ends the enumeration with 234. Types 1, 2, 3 and 7 come with
    /// the address of their data, type 4 with its number, all others are passed over. Win32s: the text of each subkey,
    /// as REG_SZ.
    ///
    /// The number handed over for a REG_DWORD is its lowest byte taken as a signed number: 1 arrives as 1, 0x1234 as
    /// 0x34, 200 as -56. This is prescribed; the suite's own DWORD flags are 0 or 1.
    DWORD EnumValues(DWORD mode, LPCSTR key, ZoEnumValuesProc callback, void* context);

    /// Copies everything below a key: subkeys, texts, and numbers as EnumValues hands them over, that is, their lowest
    /// byte; values of other types are left out. A failure ends the copy where it is. Paths may grow to 259 characters
    /// at the destination and 263 at the source, longer ones end the copy with 206; a null path gives 87; 8: no memory.
    /// A destination that is the source or lies below it gives 87, by whatever roots the two are named: keys are
    /// compared, not paths. A key of the classes counts with the keys that they are merged from, below
    /// HKEY_LOCAL_MACHINE and HKEY_CURRENT_USER. The destination's key is made only if something is to be copied.
    /// \p flag has no effect.
    DWORD CopyRegTree(DWORD destinationMode, LPCSTR destinationKey, DWORD sourceMode, LPCSTR sourceKey, DWORD flag);
    /// CopyRegTree, and then DeleteSection of the source if the copy succeeded. What CopyRegTree leaves out is lost.
    /// A destination above the source gives 87, and nothing is touched, if the path from it to the source leads from
    /// the source to a key too: A\B is not moved to A while there is A\B\B, which the copy would put at the source.
    /// \return the first code that is not 0
    DWORD MoveRegTree(DWORD destinationMode, LPCSTR destinationKey, DWORD sourceMode, LPCSTR sourceKey, DWORD flag);

protected:
    /// The root key of a mode: HKEY_CLASSES_ROOT for any other than those above, and for all on Win32s. Modes 5 and 6
    /// mean it on Windows NT too, although that has a current-configuration root; this is prescribed.
    HKEY MapModeToKey(DWORD mode) const;

    static DWORD GblEnumCopyRegTreeEntriesProc(void* context, LPCSTR subkeyName);
    static DWORD GblEnumCopyRegTreeValuesProc(void* context, LPCSTR valueName, const void* data, DWORD type);

private:
    bool IsWin32s() const;
    bool HasNamedValues() const;

    DWORD m_dwOperatingSystem; // ZO_OS_ value
};
