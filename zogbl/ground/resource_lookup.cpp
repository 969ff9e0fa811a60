#include <zogbl/resource_lookup.h>

#include <common/without_throwing.h>

// The language library is the last of the framework's chain (ZoModuleData::SetLanguageLibrary).

HINSTANCE ZoGblFindResourceModule(LPCSTR name, LPCSTR type) { return AfxFindResourceHandle(name, type); }

HINSTANCE ZoGblFindStringModule(UINT id) { return AfxFindStringResourceHandle(id); }

BOOL ZoGblLoadString(UINT id, CString& text)
{
    text.Empty();
    const HINSTANCE module = ZoGblFindStringModule(id);
    if (module == nullptr)
        return FALSE;
    const BOOL loaded = WithoutThrowing([&] {
        for (int capacity = 256;; capacity *= 2) {
            const int length = LoadStringA(module, id, text.GetBuffer(capacity), capacity + 1);
            text.ReleaseBuffer(length);
            if (length < capacity - 1) // a text that was cut may be one byte short of the capacity
                return;
        }
    });
    if (!loaded)
        text.Empty();
    return loaded;
}

const void* ZoGblLockResource(LPCSTR name, LPCSTR type, DWORD* size)
{
    const HINSTANCE module = ZoGblFindResourceModule(name, type);
    const HRSRC resource = FindResourceA(module, name, type);
    const HGLOBAL loaded = resource != nullptr ? LoadResource(module, resource) : nullptr;
    if (size != nullptr)
        *size = loaded != nullptr ? SizeofResource(module, resource) : 0;
    return loaded != nullptr ? LockResource(loaded) : nullptr;
}
