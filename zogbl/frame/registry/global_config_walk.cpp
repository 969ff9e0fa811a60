// The gateway's enumerations, searches and tree copies.
#include <zogbl/global_config.h>

#include <common/double_byte.h>
#include <common/without_throwing.h>

#include "registry_key.h"
#include "registry_name.h"
#include "registry_walk.h"

#include <cstring>

namespace {

bool IsSameName(LPCSTR name1, LPCSTR name2) { return CompareCharactersNoCase(name1, name2) == 0; }

/// Searches the subkeys of a key for a name. \p found is FALSE after a failure.
DWORD FindSubkey(const RegistryWalk& walk, HKEY root, LPCSTR key, LPCSTR wanted, BOOL& found)
{
    const auto compare = [&found, wanted](HKEY, LPCSTR name, DWORD&) {
        found = IsSameName(name, wanted);
        return !found;
    };
    const DWORD result = walk.ForEachSubkey(root, key, compare);
    found = found && result == ERROR_SUCCESS;
    return result;
}

/// Hands a value over to an enumeration's callback, in the form that its type has there.
DWORD HandOver(ZoEnumValuesProc callback, void* context, LPCSTR name, LPCSTR data, DWORD type)
{
    switch (type) {
    case REG_SZ:
    case REG_EXPAND_SZ:
    case REG_BINARY:
    case REG_MULTI_SZ:
        return callback(context, name, data, type);
    case REG_DWORD: {
        // Only the lowest byte, and that signed: so it is defined, and flags are all that comes this way.
        const auto number =
            static_cast<INT_PTR>(static_cast<signed char>(data[0])); // NOLINT(bugprone-signed-char-misuse)
        return callback(context, name, reinterpret_cast<const void*>(number), type);
    }
    default:
        return ERROR_SUCCESS;
    }
}

} // namespace

// Enumerations --------------------------------------------------------------------------------------------------------

DWORD CZoGlobalConfig::EnumEntries(DWORD mode, LPCSTR key, ZoEnumEntriesProc callback, void* context)
{
    if (!IsWin32s() && !HasNamedValues())
        return ERROR_SUCCESS;
    return RegistryWalk(IsWin32s()).ForEachSubkey(MapModeToKey(mode), key, [=](HKEY, LPCSTR name, DWORD& result) {
        result = callback(context, name);
        return true;
    });
}

DWORD CZoGlobalConfig::EnumValues(DWORD mode, LPCSTR key, ZoEnumValuesProc callback, void* context)
{
    if (!IsWin32s() && !HasNamedValues())
        return ERROR_SUCCESS;
    const ScratchText data(kRegistryDataSize + 2);
    if (!data)
        return ZoErrNoMemory;

    if (IsWin32s()) {
        return RegistryWalk(true).ForEachSubkey(MapModeToKey(mode), key, [&](HKEY parent, LPCSTR name, DWORD& result) {
            std::memset(data.get(), 0, kRegistryDataSize + 2);
            LONG size = kRegistryDataSize;
            result = static_cast<DWORD>(RegQueryValueA(parent, name, data.get(), &size));
            if (result == ERROR_SUCCESS)
                result = callback(context, name, data.get(), REG_SZ);
            return true;
        });
    }

    const ScratchText name(kRegistryNameSize + 2);
    if (!name)
        return ZoErrNoMemory;
    RegistryKey opened;
    DWORD result = opened.Open(MapModeToKey(mode), key, kEnumerationAccess);
    if (result != ERROR_SUCCESS)
        return result;
    for (DWORD index = 0; result == ERROR_SUCCESS; ++index) {
        // Cleared each time, so that data stored without a terminator has one.
        std::memset(name.get(), 0, kRegistryNameSize + 2);
        std::memset(data.get(), 0, kRegistryDataSize + 2);
        DWORD nameLength = kRegistryNameSize;
        DWORD type = REG_NONE;
        DWORD size = kRegistryDataSize;
        result = static_cast<DWORD>(RegEnumValueA(opened, index, name.get(), &nameLength, nullptr, &type,
                                                  reinterpret_cast<BYTE*>(data.get()), &size));
        if (RegistryWalk::IsEnd(result))
            return opened.Close();
        if (result == ERROR_SUCCESS)
            result = HandOver(callback, context, name.get(), data.get(), type);
    }
    return opened.CloseKeepingFailure(result);
}

// Searches ------------------------------------------------------------------------------------------------------------

DWORD CZoGlobalConfig::DoesEntryExist(DWORD mode, LPCSTR key, LPCSTR valueName, BOOL& exists)
{
    exists = FALSE;
    if (IsWin32s())
        return FindSubkey(RegistryWalk(true), MapModeToKey(mode), key, valueName, exists);
    if (!HasNamedValues())
        return ERROR_SUCCESS;
    RegistryKey opened; // values can be asked for by name, which is a search that the system does
    DWORD result = opened.Open(MapModeToKey(mode), key, KEY_READ);
    if (result != ERROR_SUCCESS)
        return result;
    result = static_cast<DWORD>(RegQueryValueExA(opened, valueName, nullptr, nullptr, nullptr, nullptr));
    const bool isThere = result == ERROR_SUCCESS;
    result = opened.CloseKeepingFailure(result == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : result);
    exists = isThere && result == ERROR_SUCCESS;
    return result;
}

DWORD CZoGlobalConfig::DoesSubkeyExist(DWORD mode, LPCSTR key, LPCSTR subkeyName, BOOL& exists)
{
    exists = FALSE;
    if (IsWin32s())
        return DoesEntryExist(mode, key, subkeyName, exists);
    if (!HasNamedValues())
        return ERROR_SUCCESS;
    return FindSubkey(RegistryWalk(false), MapModeToKey(mode), key, subkeyName, exists);
}

DWORD CZoGlobalConfig::FindFirstSubKey(DWORD mode, LPCSTR key, CString& subkeyName, BOOL& found)
{
    found = FALSE;
    subkeyName.Empty();
    if (!IsWin32s() && !HasNamedValues())
        return ERROR_SUCCESS;
    const auto take = [&](HKEY, LPCSTR name, DWORD& result) {
        found = WithoutThrowing([&] { subkeyName = name; });
        if (!found)
            result = ZoErrNoMemory;
        return false;
    };
    const DWORD result = RegistryWalk(IsWin32s()).ForEachSubkey(MapModeToKey(mode), key, take);
    if (result != ERROR_SUCCESS) {
        found = FALSE;
        subkeyName.Empty();
    }
    return result;
}

// Tree copies ---------------------------------------------------------------------------------------------------------

namespace {

/// What a tree copy hands from key to key.
struct CopyRecord {
    DWORD sourceMode;
    char sourcePath[264];
    DWORD destinationMode;
    char destinationPath[260];
    CZoGlobalConfig* config;
    DWORD flag; // carried along, without effect
};

template <size_t SIZE> bool SetPath(char (&path)[SIZE], LPCSTR text)
{
    const size_t length = std::strlen(text);
    if (length >= SIZE)
        return false;
    std::memcpy(path, text, length + 1);
    return true;
}

template <size_t SIZE> bool AppendToPath(char (&path)[SIZE], LPCSTR name)
{
    const size_t length = std::strlen(path);
    const size_t nameLength = std::strlen(name);
    if (length + 1 + nameLength >= SIZE)
        return false;
    path[length] = '\\';
    std::memcpy(path + length + 1, name, nameLength + 1);
    return true;
}

} // namespace

DWORD CZoGlobalConfig::CopyRegTree(DWORD destinationMode, LPCSTR destinationKey, DWORD sourceMode, LPCSTR sourceKey,
                                   DWORD flag)
{
    if (destinationKey == nullptr || sourceKey == nullptr)
        return ERROR_INVALID_PARAMETER;
    if (!IsWin32s() && !HasNamedValues())
        return ERROR_SUCCESS;
    // Copying a tree into itself would not end before the paths are full, and moving it there would delete it.
    DWORD result = ResultOr(ERROR_NOT_ENOUGH_MEMORY, [&]() -> DWORD {
        bool below = false;
        CString way;
        const DWORD found = IsKeyAtOrBelow(MapModeToKey(destinationMode), destinationKey, MapModeToKey(sourceMode),
                                           sourceKey, IsWin32s(), below, way);
        return below ? ERROR_INVALID_PARAMETER : found;
    });
    if (result != ERROR_SUCCESS)
        return result;
    const std::unique_ptr<CopyRecord> record(new (std::nothrow) CopyRecord);
    if (!record)
        return ERROR_NOT_ENOUGH_MEMORY;
    if (!SetPath(record->sourcePath, sourceKey) || !SetPath(record->destinationPath, destinationKey))
        return ERROR_FILENAME_EXCED_RANGE;
    record->sourceMode = sourceMode;
    record->destinationMode = destinationMode;
    record->config = this;
    record->flag = flag;
    result = EnumEntries(sourceMode, sourceKey, &GblEnumCopyRegTreeEntriesProc, record.get());
    return result != ERROR_SUCCESS ? result
                                   : EnumValues(sourceMode, sourceKey, &GblEnumCopyRegTreeValuesProc, record.get());
}

DWORD CZoGlobalConfig::GblEnumCopyRegTreeEntriesProc(void* context, LPCSTR subkeyName)
{
    const auto* parent = static_cast<const CopyRecord*>(context);
    const std::unique_ptr<CopyRecord> record(new (std::nothrow) CopyRecord(*parent));
    if (!record)
        return ERROR_NOT_ENOUGH_MEMORY;
    if (!AppendToPath(record->sourcePath, subkeyName) || !AppendToPath(record->destinationPath, subkeyName))
        return ERROR_FILENAME_EXCED_RANGE;
    CZoGlobalConfig* config = record->config;
    DWORD result = config->CreateKey(record->destinationMode, record->destinationPath);
    if (result == ERROR_SUCCESS)
        result =
            config->EnumEntries(record->sourceMode, record->sourcePath, &GblEnumCopyRegTreeEntriesProc, record.get());
    if (result == ERROR_SUCCESS)
        result =
            config->EnumValues(record->sourceMode, record->sourcePath, &GblEnumCopyRegTreeValuesProc, record.get());
    return result;
}

DWORD CZoGlobalConfig::GblEnumCopyRegTreeValuesProc(void* context, LPCSTR valueName, const void* data, DWORD type)
{
    const auto* record = static_cast<const CopyRecord*>(context);
    CZoGlobalConfig* config = record->config;
    switch (type) {
    case REG_SZ:
        return config->SetValue(record->destinationMode, record->destinationPath, valueName, static_cast<LPCSTR>(data));
    case REG_DWORD:
        return config->SetValue(record->destinationMode, record->destinationPath, valueName, ZoEnumeratedNumber(data));
    default:
        return ERROR_SUCCESS;
    }
}

DWORD CZoGlobalConfig::MoveRegTree(DWORD destinationMode, LPCSTR destinationKey, DWORD sourceMode, LPCSTR sourceKey,
                                   DWORD flag)
{
    if (destinationKey == nullptr || sourceKey == nullptr)
        return ERROR_INVALID_PARAMETER;
    // To a key above: what the way back leads to from the source would be copied to the source, and deleted with it.
    DWORD result = ResultOr(ERROR_NOT_ENOUGH_MEMORY, [&]() -> DWORD {
        const HKEY root = MapModeToKey(sourceMode);
        bool isAbove = false;
        CString way;
        DWORD status =
            IsKeyAtOrBelow(root, sourceKey, MapModeToKey(destinationMode), destinationKey, IsWin32s(), isAbove, way);
        RegistryKey source;
        RegistryKey doomed;
        if (status == ERROR_SUCCESS && isAbove)
            status = IsWin32s() ? source.OpenOld(root, sourceKey) : source.Open(root, sourceKey, KEY_READ);
        if (status == ERROR_SUCCESS && isAbove) {
            status = IsWin32s() ? doomed.OpenOld(source, way.Mid(1)) : doomed.Open(source, way.Mid(1), KEY_READ);
            if (status == ERROR_SUCCESS)
                return ERROR_INVALID_PARAMETER;
        }
        return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
    });
    if (result == ERROR_SUCCESS)
        result = CopyRegTree(destinationMode, destinationKey, sourceMode, sourceKey, flag);
    return result != ERROR_SUCCESS ? result : DeleteSection(sourceMode, sourceKey, nullptr);
}
