/// \file
/// Walks over the subkeys and values of a registry key.
#pragma once

#include "registry_key.h"

#include <zogbl/status.h>

#include <memory>
#include <new>

/// Characters of a key name or value name with its terminator, and bytes of a value's data, that an enumeration takes.
constexpr DWORD kRegistryNameSize = 261;
constexpr DWORD kRegistryDataSize = 8192;

constexpr REGSAM kEnumerationAccess = KEY_ENUMERATE_SUB_KEYS | KEY_QUERY_VALUE;

/// A work buffer; null when memory has run out.
class ScratchText : public std::unique_ptr<char[]> {
public:
    explicit ScratchText(size_t size) : std::unique_ptr<char[]>(new (std::nothrow) char[size]) {}
};

/// The two ways of walking: through the old calls of Win32s, and through those of the other systems.
class RegistryWalk {
public:
    explicit RegistryWalk(bool oldCalls) : m_oldCalls(oldCalls) {}

    /// The name of subkey \p index in a buffer of kRegistryNameSize characters. \return the system's code.
    DWORD SubkeyName(HKEY key, DWORD index, LPSTR name) const;

    /// Opens \p path below \p root and calls \p visit(key, name, result) for each subkey, in index order, as long as
    /// that returns true and leaves \p result, which is 0, alone. \return what a visit set \p result to; the system's
    /// code, or ZoErrNoMemory, on failure; else the result of closing the key.
    template <class VISIT> DWORD ForEachSubkey(HKEY root, LPCSTR path, VISIT visit) const;

    /// Deletes a subkey of \p parent with everything below it, the deepest first. \return as above.
    DWORD DeleteTree(HKEY parent, LPCSTR name) const;
    /// Deletes a subkey that has none below it. \return the system's code.
    DWORD DeleteKey(HKEY parent, LPCSTR name) const;

    /// Whether an enumeration has come to its usual end.
    static bool IsEnd(DWORD result) { return result == ERROR_NO_MORE_ITEMS || result == ERROR_FILE_NOT_FOUND; }

private:
    DWORD DeleteChildren(HKEY parent, LPCSTR name) const;

    bool m_oldCalls;
};

template <class VISIT> DWORD RegistryWalk::ForEachSubkey(HKEY root, LPCSTR path, VISIT visit) const
{
    const ScratchText name(kRegistryNameSize + 2);
    if (!name)
        return ZoErrNoMemory;
    RegistryKey key;
    DWORD result = m_oldCalls ? key.OpenOld(root, path) : key.Open(root, path, kEnumerationAccess);
    if (result != ERROR_SUCCESS)
        return result;
    for (DWORD index = 0; result == ERROR_SUCCESS; ++index) {
        result = SubkeyName(key, index, name.get());
        if (IsEnd(result))
            return key.Close();
        if (result == ERROR_SUCCESS && !visit(static_cast<HKEY>(key), static_cast<LPCSTR>(name.get()), result))
            break;
    }
    return key.CloseKeepingFailure(result);
}
