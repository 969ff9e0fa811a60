#include <zogbl/resource_lookup.h>

#include <zogbl/module.h>

HINSTANCE ZoGblFindResourceModule(LPCSTR name, LPCSTR type)
{
    const HINSTANCE chained = AfxFindResourceHandle(name, type);
    const HINSTANCE language = ZoGblGetLanguageDLL();
    if (language == nullptr || FindResourceA(chained, name, type) != nullptr ||
        FindResourceA(language, name, type) == nullptr)
        return chained;
    return language;
}

HINSTANCE ZoGblFindStringModule(UINT id)
{
    char firstCharacter[4];
    const auto has = [&](HINSTANCE module) {
        return module != nullptr && LoadStringA(module, id, firstCharacter, sizeof firstCharacter) > 0;
    };
    // Strings stand in blocks of 16; a module of the chain that has the block may still lack the string.
    const HINSTANCE chained = AfxFindResourceHandle(MAKEINTRESOURCEA(id / 16 + 1), RT_STRING);
    if (has(chained))
        return chained;
    const HINSTANCE language = ZoGblGetLanguageDLL();
    return has(language) ? language : nullptr;
}

BOOL ZoGblLoadString(UINT id, CString& text)
{
    text.Empty();
    const HINSTANCE module = ZoGblFindStringModule(id);
    if (module == nullptr)
        return FALSE;
    try {
        for (int capacity = 256;; capacity *= 2) {
            const int length = LoadStringA(module, id, text.GetBuffer(capacity), capacity + 1);
            text.ReleaseBuffer(length);
            if (length < capacity - 1) // a text that was cut may be one byte short of the capacity
                return TRUE;
        }
    } catch (CMemoryException* e) {
        e->Delete();
        text.Empty();
        return FALSE;
    }
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
