/// \file
/// The suite's gateway to the Windows registry.
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

/// Called for each subkey. \return 0 to go on; any other number ends the enumeration and becomes its result
using ZoEnumEntriesProc = DWORD (*)(void* context, LPCSTR subkeyName);

/// Called for each value.
/// \param data the address of the value's data, always followed by a zero byte. For a REG_DWORD it is the number
/// itself: see ZoEnumeratedNumber and CZoGlobalConfig::EnumValues
/// \return 0 to go on; any other number ends the enumeration and becomes its result
using ZoEnumValuesProc = DWORD (*)(void* context, LPCSTR valueName, const void* data, DWORD type);

/// The number that an enumeration gives for a REG_DWORD.
inline DWORD ZoEnumeratedNumber(const void* data) { return static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(data)); }

/// Reads and writes the registry, on Win32s as on later systems. An operation takes a root (the mode), a key path below
/// it and usually a value. It opens the key, does one thing and closes the key: no registry handle outlives a call.
///
/// Objects are cheap: make one on the stack for each piece of work. Nothing protects a sequence of calls against
/// another process that changes the same keys. Nothing is thrown.
///
/// The registry of Win32s has no named values. There, a value is a subkey whose unnamed value holds the data as text,
/// and every mode means HKEY_CLASSES_ROOT. The 64-bit library uses the registry's 32-bit view, so that both builds of
/// the suite share their settings.
///
/// Operations return
///
///     0                    success; also on a system of unknown family, where no registry is touched and the out
///                          arguments get their defaults
///     a registry error     as the system gave it, such as 2: no such key or value; 234: the data does not fit
///     87                   an argument makes no sense
///     ZoErrNoMemory        no memory for a work buffer
///     ZoErrWrongValueType  the value has another type than the one read
///
/// If the work succeeds but the key cannot be closed, the status of closing is returned: the operation then counts as
/// failed. After a failure the out arguments hold their defaults: the caller's, else 0, FALSE or nothing.
class ZOGBL_API CZoGlobalConfig {
public:
    CZoGlobalConfig(); ///< reads the operating system's family
    CZoGlobalConfig(const CZoGlobalConfig&) = default;
    CZoGlobalConfig& operator=(const CZoGlobalConfig&) = default;
    virtual ~CZoGlobalConfig();

    /// Whether \p key has a value (Win32s: a subkey) of that name, case ignored. A missing key returns 2.
    virtual DWORD DoesEntryExist(DWORD mode, LPCSTR key, LPCSTR valueName, BOOL& exists);
    /// Whether \p key has a subkey of that name, case ignored. A missing key returns 2.
    virtual DWORD DoesSubkeyExist(DWORD mode, LPCSTR key, LPCSTR subkeyName, BOOL& exists);
    /// The name of the subkey with index 0. A key without subkeys gives FALSE and 0.
    virtual DWORD FindFirstSubKey(DWORD mode, LPCSTR key, CString& subkeyName, BOOL& found);

    /// Reads a number: a REG_DWORD of 4 bytes; Win32s: decimal text of at most 1023 characters. A value of another type
    /// gives ZoErrWrongValueType if its data fits in 4 bytes, else 234.
    /// \param value set to \p defaultValue first, and keeps it on failure
    DWORD GetValue(DWORD mode, LPCSTR key, LPCSTR valueName, DWORD& value, DWORD defaultValue);
    /// Writes a number. Creates the key if needed.
    DWORD SetValue(DWORD mode, LPCSTR key, LPCSTR valueName, DWORD value);

    /// Reads a text of at most \p bufferSize - 1 characters. A text stored without a terminator gets one.
    /// \param buffer on failure it holds \p defaultText, cut to fit; if that is null, zeros over its whole size
    /// \return also
    ///   234                  the text with its terminator does not fit
    ///   ZoErrWrongValueType  the type is not REG_SZ
    ///   87                   \p buffer is null or \p bufferSize 0
    DWORD GetValue(DWORD mode, LPCSTR key, LPCSTR valueName, LPSTR buffer, DWORD bufferSize, LPCSTR defaultText);
    /// Writes a text as REG_SZ. Creates the key if needed. A null text gives 87.
    DWORD SetValue(DWORD mode, LPCSTR key, LPCSTR valueName, LPCSTR text);

    /// Reads a value of any type.
    /// \param buffer filled with zeros behind the data, and on failure; null: only the type is asked for
    /// \param type the value's type, 0 on failure; Win32s: REG_SZ
    /// \param size always 0; this is prescribed, and GetValueSize tells the size. Win32s: the length of the text with
    /// its terminator
    DWORD GetAnyValueType(DWORD mode, LPCSTR key, LPCSTR valueName, void* buffer, DWORD bufferSize, DWORD& type,
                          DWORD& size);
    /// Writes a value of any type. Creates the key if needed. Win32s: writes text up to the first zero, whatever the
    /// type.
    /// \param data null gives 87
    /// \param dataSize in bytes; 0 writes nothing and returns 0, whatever \p data is
    DWORD SetAnyValueType(DWORD mode, LPCSTR key, LPCSTR valueName, const void* data, DWORD dataSize, DWORD type);

    /// The size in bytes of a value's data; 0 on Win32s.
    DWORD GetValueSize(DWORD mode, LPCSTR key, LPCSTR valueName, DWORD& size);

    /// Deletes a value. Win32s: deletes its subkey with everything below it.
    DWORD DeleteEntry(DWORD mode, LPCSTR key, LPCSTR valueName);
    /// Deletes a subkey of \p key with everything below it; if \p subkeyName is null, \p key itself. A failure ends the
    /// deletion where it is. The root's whole content is never deleted: a name that is empty or only backslashes, or
    /// two null names, give 87.
    DWORD DeleteSection(DWORD mode, LPCSTR key, LPCSTR subkeyName);
    /// Creates a key. A null or empty path does nothing and returns 0.
    DWORD CreateKey(DWORD mode, LPCSTR key);

    /// Calls \p callback for each subkey, in index order.
    DWORD EnumEntries(DWORD mode, LPCSTR key, ZoEnumEntriesProc callback, void* context);
    /// Calls \p callback for each value, in index order. A name has up to 260 characters and data up to 8192 bytes; a
    /// larger value, whatever its type, ends the enumeration with 234. By type:
    ///
    ///     1, 2, 3, 7     the address of the data
    ///     4 (REG_DWORD)  the number's lowest byte, with its sign: 1 gives 1, 0x1234 gives 0x34, 200 gives -56. This is
    ///                    prescribed; the suite's own DWORD flags are 0 or 1
    ///     others         not enumerated
    ///     Win32s         the text of each subkey, as REG_SZ
    DWORD EnumValues(DWORD mode, LPCSTR key, ZoEnumValuesProc callback, void* context);

    /// Copies everything below a key: subkeys, texts, and numbers as EnumValues gives them (the lowest byte). Values of
    /// other types are left out. A failure ends the copy where it is. The destination's key is made only if there is
    /// something to copy. \p flag has no effect.
    ///
    /// A destination that is the source or lies below it is refused. Keys are compared, not paths, so the roots may
    /// have different names. A key of the classes also counts as the keys below HKEY_LOCAL_MACHINE and
    /// HKEY_CURRENT_USER from which it is merged.
    /// \return also
    ///   87   a path is null, or the destination is refused
    ///   206  a path has or gets more than 259 characters at the destination or 263 at the source
    ///   8    no memory
    DWORD CopyRegTree(DWORD destinationMode, LPCSTR destinationKey, DWORD sourceMode, LPCSTR sourceKey, DWORD flag);
    /// CopyRegTree and, if it succeeded, DeleteSection of the source. Values that CopyRegTree leaves out are lost.
    ///
    /// Example of a move upwards that gives 87, with nothing touched: A\B cannot be moved to A if there is a key A\B\B,
    /// because that key would be copied onto the source. In general: a destination above the source is refused if the
    /// path from the destination to the source, taken from the source, also leads to a key.
    /// \return the first code that is not 0
    DWORD MoveRegTree(DWORD destinationMode, LPCSTR destinationKey, DWORD sourceMode, LPCSTR sourceKey, DWORD flag);

protected:
    /// The root key of a mode. Modes that are not listed above, and all modes on Win32s and systems of unknown family,
    /// give HKEY_CLASSES_ROOT. So do modes 5 and 6 on Windows NT, although it has a current-configuration root; this is
    /// prescribed.
    HKEY MapModeToKey(DWORD mode) const;

    static DWORD GblEnumCopyRegTreeEntriesProc(void* context, LPCSTR subkeyName);
    static DWORD GblEnumCopyRegTreeValuesProc(void* context, LPCSTR valueName, const void* data, DWORD type);

private:
    bool IsWin32s() const;
    bool HasNamedValues() const;

    DWORD m_dwOperatingSystem; // ZO_OS_ value
};
