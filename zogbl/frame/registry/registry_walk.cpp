#include "registry_walk.h"

DWORD RegistryWalk::SubkeyName(HKEY key, DWORD index, LPSTR name) const
{
    if (m_oldCalls)
        return static_cast<DWORD>(RegEnumKeyA(key, index, name, kRegistryNameSize));
    DWORD length = kRegistryNameSize;
    return static_cast<DWORD>(RegEnumKeyExA(key, index, name, &length, nullptr, nullptr, nullptr, nullptr));
}

DWORD RegistryWalk::DeleteTree(HKEY parent, LPCSTR name) const
{
    const DWORD result = DeleteChildren(parent, name);
    return result != ERROR_SUCCESS ? result : DeleteKey(parent, name);
}

DWORD RegistryWalk::DeleteKey(HKEY parent, LPCSTR name) const
{
#ifdef _WIN64
    if (!m_oldCalls)
        return static_cast<DWORD>(RegDeleteKeyExA(parent, name, kRegistryView, 0));
#endif
    return static_cast<DWORD>(RegDeleteKeyA(parent, name));
}

DWORD RegistryWalk::DeleteChildren(HKEY parent, LPCSTR name) const
{
    RegistryKey key;
    DWORD result = m_oldCalls ? key.OpenOld(parent, name)
                              : key.Open(parent, name, KEY_ENUMERATE_SUB_KEYS | KEY_CREATE_SUB_KEY | KEY_SET_VALUE);
    if (result != ERROR_SUCCESS)
        return result;
    const ScratchText child(kRegistryNameSize + 2);
    if (!child)
        return ZoErrNoMemory;
    // Always the first one: deleting it moves the others up.
    while ((result = SubkeyName(key, 0, child.get())) == ERROR_SUCCESS) {
        result = DeleteTree(key, child.get());
        if (result != ERROR_SUCCESS)
            return result;
    }
    return key.CloseKeepingFailure(IsEnd(result) ? ERROR_SUCCESS : result);
}
