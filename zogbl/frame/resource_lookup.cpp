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

BOOL ZoGblLoadString(UINT id, CString& text)
{
    text.Empty();
    // String n stands in block n/16 + 1; a block that is there may still lack the string.
    const HINSTANCE module = ZoGblFindResourceModule(MAKEINTRESOURCEA(id / 16 + 1), RT_STRING);
    try {
        for (int capacity = 256; ; capacity *= 2) {
            const int length = LoadStringA(module, id, text.GetBuffer(capacity), capacity + 1);
            text.ReleaseBuffer(length);
            if (length < capacity)
                return length > 0;
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
