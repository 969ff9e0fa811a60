#include <zogbl/global_config.h>

#include <zogbl/number_text.h>
#include <zogbl/operating_system.h>

#include "ground/bounded_text.h"
#include "registry_key.h"
#include "registry_walk.h"

#include <cstring>

namespace {

constexpr DWORD kWin32sNumberTextSize = 1024;

/// Reads the text that Win32s keeps as the unnamed value of subkey \p name. \param size in: of \p buffer, out: length
/// with the terminator.
DWORD ReadSubkeyText(HKEY root, LPCSTR key, LPCSTR name, LPSTR buffer, DWORD& size)
{
    RegistryKey parent;
    DWORD result = parent.OpenOld(root, key);
    if (result != ERROR_SUCCESS)
        return result;
    auto length = static_cast<LONG>(size);
    result = static_cast<DWORD>(RegQueryValueA(parent, name, buffer, &length));
    size = static_cast<DWORD>(length);
    return parent.CloseKeepingFailure(result);
}

DWORD WriteSubkeyText(HKEY root, LPCSTR key, LPCSTR name, LPCSTR text)
{
    RegistryKey parent;
    DWORD result = parent.CreateOld(root, key);
    if (result != ERROR_SUCCESS)
        return result;
    result = static_cast<DWORD>(RegSetValueA(parent, name, REG_SZ, text, static_cast<DWORD>(std::strlen(text))));
    return parent.CloseKeepingFailure(result);
}

/// Reads a named value's data. \param size in: of \p buffer, out: of the data. A null buffer asks for type and size.
DWORD QueryValue(HKEY root, LPCSTR key, LPCSTR name, DWORD& type, void* buffer, DWORD& size)
{
    RegistryKey opened;
    DWORD result = opened.Open(root, key, KEY_READ);
    if (result != ERROR_SUCCESS)
        return result;
    result = static_cast<DWORD>(RegQueryValueExA(opened, name, nullptr, &type, static_cast<BYTE*>(buffer), &size));
    return opened.CloseKeepingFailure(result);
}

DWORD WriteValue(HKEY root, LPCSTR key, LPCSTR name, DWORD type, const void* data, DWORD size)
{
    RegistryKey opened;
    DWORD result = opened.CreateForWriting(root, key);
    if (result != ERROR_SUCCESS)
        return result;
    result = static_cast<DWORD>(RegSetValueExA(opened, name, 0, type, static_cast<const BYTE*>(data), size));
    return opened.CloseKeepingFailure(result);
}

} // namespace

CZoGlobalConfig::CZoGlobalConfig() : m_dwOperatingSystem(CZoGlobalOperatingSystem::GetType()) {}
CZoGlobalConfig::~CZoGlobalConfig() = default;

bool CZoGlobalConfig::IsWin32s() const { return m_dwOperatingSystem == ZO_OS_WIN32S; }
bool CZoGlobalConfig::HasNamedValues() const
{
    return m_dwOperatingSystem == ZO_OS_NT || m_dwOperatingSystem == ZO_OS_WIN95;
}

HKEY CZoGlobalConfig::MapModeToKey(DWORD mode) const
{
    if (!HasNamedValues())
        return HKEY_CLASSES_ROOT;
    const bool isNT = m_dwOperatingSystem == ZO_OS_NT;
    switch (mode) {
    case ZO_MODE_LOCAL_MACHINE:
        return HKEY_LOCAL_MACHINE;
    case ZO_MODE_CURRENT_USER:
        return HKEY_CURRENT_USER;
    case ZO_MODE_USERS:
        return HKEY_USERS;
    case ZO_MODE_PERFORMANCE_DATA:
        return HKEY_PERFORMANCE_DATA;
    case ZO_MODE_CURRENT_CONFIG:
        return isNT ? HKEY_CLASSES_ROOT : HKEY_CURRENT_CONFIG;
    case ZO_MODE_DYN_DATA:
        return isNT ? HKEY_CLASSES_ROOT : HKEY_DYN_DATA;
    default:
        return HKEY_CLASSES_ROOT;
    }
}

// Numbers -------------------------------------------------------------------------------------------------------------

DWORD CZoGlobalConfig::GetValue(DWORD mode, LPCSTR key, LPCSTR valueName, DWORD& value, DWORD defaultValue)
{
    value = defaultValue;
    if (IsWin32s()) {
        char text[kWin32sNumberTextSize] = {};
        DWORD size = sizeof text;
        const DWORD result = ReadSubkeyText(MapModeToKey(mode), key, valueName, text, size);
        text[sizeof text - 1] = '\0';
        if (result == ERROR_SUCCESS)
            value = StringToDWord(text);
        return result;
    }
    if (!HasNamedValues())
        return ERROR_SUCCESS;
    DWORD type = REG_NONE;
    DWORD number = 0;
    DWORD size = sizeof number;
    const DWORD result = QueryValue(MapModeToKey(mode), key, valueName, type, &number, size);
    if (result != ERROR_SUCCESS)
        return result;
    if (type != REG_DWORD || size != sizeof number)
        return ZoErrWrongValueType;
    value = number;
    return ERROR_SUCCESS;
}

DWORD CZoGlobalConfig::SetValue(DWORD mode, LPCSTR key, LPCSTR valueName, DWORD value)
{
    if (IsWin32s()) {
        const CString text = DWordToString(value);
        return text.IsEmpty() ? ZoErrNoMemory : WriteSubkeyText(MapModeToKey(mode), key, valueName, text);
    }
    if (!HasNamedValues())
        return ERROR_SUCCESS;
    return WriteValue(MapModeToKey(mode), key, valueName, REG_DWORD, &value, sizeof value);
}

// Texts ---------------------------------------------------------------------------------------------------------------

DWORD CZoGlobalConfig::GetValue(DWORD mode, LPCSTR key, LPCSTR valueName, LPSTR buffer, DWORD bufferSize,
                                LPCSTR defaultText)
{
    if (buffer == nullptr || bufferSize == 0)
        return ERROR_INVALID_PARAMETER;
    FillWithDefault(buffer, bufferSize, defaultText);
    if (!IsWin32s() && !HasNamedValues())
        return ERROR_SUCCESS;

    DWORD type = IsWin32s() ? REG_SZ : REG_NONE;
    DWORD size = bufferSize;
    DWORD result = IsWin32s() ? ReadSubkeyText(MapModeToKey(mode), key, valueName, buffer, size)
                              : QueryValue(MapModeToKey(mode), key, valueName, type, buffer, size);
    if (result == ERROR_SUCCESS && type != REG_SZ)
        result = ZoErrWrongValueType;
    // Any program may have stored the text without its terminator.
    if (result == ERROR_SUCCESS && size >= bufferSize && buffer[bufferSize - 1] != '\0')
        result = ERROR_MORE_DATA;
    if (result != ERROR_SUCCESS)
        FillWithDefault(buffer, bufferSize, defaultText);
    else if (size < bufferSize)
        buffer[size] = '\0';
    return result;
}

DWORD CZoGlobalConfig::SetValue(DWORD mode, LPCSTR key, LPCSTR valueName, LPCSTR text)
{
    if (text == nullptr)
        return ERROR_INVALID_PARAMETER;
    if (IsWin32s())
        return WriteSubkeyText(MapModeToKey(mode), key, valueName, text);
    if (!HasNamedValues())
        return ERROR_SUCCESS;
    return WriteValue(MapModeToKey(mode), key, valueName, REG_SZ, text, static_cast<DWORD>(std::strlen(text)) + 1);
}

// Any type ------------------------------------------------------------------------------------------------------------

DWORD CZoGlobalConfig::GetAnyValueType(DWORD mode, LPCSTR key, LPCSTR valueName, void* buffer, DWORD bufferSize,
                                       DWORD& type, DWORD& size)
{
    type = 0;
    size = 0;
    if (buffer != nullptr)
        std::memset(buffer, 0, bufferSize);
    DWORD result = ERROR_SUCCESS;
    DWORD length = buffer != nullptr ? bufferSize : 0;
    if (IsWin32s()) {
        result = ReadSubkeyText(MapModeToKey(mode), key, valueName, static_cast<LPSTR>(buffer), length);
        if (result == ERROR_SUCCESS) {
            type = REG_SZ;
            size = length;
        }
    } else if (HasNamedValues()) {
        DWORD read = 0;
        result = QueryValue(MapModeToKey(mode), key, valueName, read, buffer, length);
        if (result == ERROR_SUCCESS)
            type = read; // the size is not reported here, see the header
    }
    if (result != ERROR_SUCCESS && buffer != nullptr)
        std::memset(buffer, 0, bufferSize);
    return result;
}

DWORD CZoGlobalConfig::SetAnyValueType(DWORD mode, LPCSTR key, LPCSTR valueName, const void* data, DWORD dataSize,
                                       DWORD type)
{
    if (dataSize == 0)
        return ERROR_SUCCESS;
    if (data == nullptr)
        return ERROR_INVALID_PARAMETER;
    if (IsWin32s()) {
        const ScratchText text(dataSize + 1); // the old call takes the text up to its terminator, whatever the length
        if (!text)
            return ZoErrNoMemory;
        std::memcpy(text.get(), data, dataSize);
        text[dataSize] = '\0';
        return WriteSubkeyText(MapModeToKey(mode), key, valueName, text.get());
    }
    if (!HasNamedValues())
        return ERROR_SUCCESS;
    return WriteValue(MapModeToKey(mode), key, valueName, type, data, dataSize);
}

DWORD CZoGlobalConfig::GetValueSize(DWORD mode, LPCSTR key, LPCSTR valueName, DWORD& size)
{
    size = 0;
    if (!HasNamedValues())
        return ERROR_SUCCESS;
    DWORD type = REG_NONE;
    DWORD length = 0;
    const DWORD result = QueryValue(MapModeToKey(mode), key, valueName, type, nullptr, length);
    if (result == ERROR_SUCCESS)
        size = length;
    return result;
}

// Keys ----------------------------------------------------------------------------------------------------------------

DWORD CZoGlobalConfig::CreateKey(DWORD mode, LPCSTR key)
{
    if (key == nullptr || *key == '\0' || (!IsWin32s() && !HasNamedValues()))
        return ERROR_SUCCESS;
    RegistryKey created;
#ifdef _WIN64
    // The old call cannot name the view that all others look at.
    const DWORD result =
        IsWin32s() ? created.CreateOld(MapModeToKey(mode), key) : created.CreateForWriting(MapModeToKey(mode), key);
#else
    const DWORD result = created.CreateOld(MapModeToKey(mode), key);
#endif
    return created.CloseKeepingFailure(result);
}

DWORD CZoGlobalConfig::DeleteEntry(DWORD mode, LPCSTR key, LPCSTR valueName)
{
    if (IsWin32s())
        return DeleteSection(mode, key, valueName != nullptr ? valueName : "");
    if (!HasNamedValues())
        return ERROR_SUCCESS;
    RegistryKey opened;
    const DWORD result = opened.Open(MapModeToKey(mode), key, KEY_WRITE);
    if (result != ERROR_SUCCESS)
        return result;
    return opened.CloseKeepingFailure(static_cast<DWORD>(RegDeleteValueA(opened, valueName)));
}

DWORD CZoGlobalConfig::DeleteSection(DWORD mode, LPCSTR key, LPCSTR subkeyName)
{
    const LPCSTR doomed = subkeyName != nullptr ? subkeyName : key;
    if (doomed == nullptr || doomed[std::strspn(doomed, "\\")] == '\0')
        return ERROR_INVALID_PARAMETER; // a name of nothing opens the parent itself
    if (!IsWin32s() && !HasNamedValues())
        return ERROR_SUCCESS;
    const RegistryWalk walk(IsWin32s());
    const HKEY root = MapModeToKey(mode);
    if (subkeyName == nullptr)
        return walk.DeleteTree(root, key);
    RegistryKey parent;
    const DWORD result = IsWin32s() ? parent.OpenOld(root, key) : parent.Open(root, key, KEY_WRITE);
    if (result != ERROR_SUCCESS)
        return result;
    return parent.CloseKeepingFailure(walk.DeleteTree(parent, subkeyName));
}
