#include "string_modules.h"

#include <zogbl/resource_lookup.h>

#include <afxext.h>

namespace {

/// Strings lie in blocks of 16, which are numbered from 1.
UINT BlockOf(UINT id) { return id / 16 + 1; }

struct Blocks {
    UINT first, last;
    bool isHeld;
};

BOOL CALLBACK FindBlock(HMODULE, LPCSTR, LPSTR name, LONG_PTR parameter)
{
    auto& wanted = *reinterpret_cast<Blocks*>(parameter);
    const auto block = static_cast<UINT>(reinterpret_cast<UINT_PTR>(name));
    wanted.isHeld = IS_INTRESOURCE(name) && block >= wanted.first && block <= wanted.last;
    return !wanted.isHeld;
}

} // namespace

StringModules::StringModules(UINT first, UINT last)
{
    const HINSTANCE own = AfxGetResourceHandle();
    AddIfHolding(own, BlockOf(first), BlockOf(last));
    for (const BOOL system : {FALSE, TRUE}) {
        for (const CDynLinkLibrary* dll = AfxGetModuleState()->m_pLibraryList; dll != nullptr; dll = dll->m_pNextDLL) {
            if (dll->m_bSystem == system && dll->m_hResource != nullptr)
                AddIfHolding(dll->m_hResource, BlockOf(first), BlockOf(last));
        }
    }
}

void StringModules::AddIfHolding(HINSTANCE module, UINT firstBlock, UINT lastBlock)
{
    Blocks wanted = {firstBlock, lastBlock, false};
    EnumResourceNamesA(module, RT_STRING, &FindBlock, reinterpret_cast<LONG_PTR>(&wanted));
    if (!wanted.isHeld)
        return;
    if (m_count < kMostModules)
        m_modules[m_count] = module;
    ++m_count;
}

BOOL StringModules::Load(UINT id, CString& text) const
{
    char buffer[256];
    for (int i = 0; i < m_count && m_count <= kMostModules; ++i) {
        const int length = LoadStringA(m_modules[i], id, buffer, sizeof buffer);
        if (length >= static_cast<int>(sizeof buffer) - 2)
            break; // perhaps cut
        if (length > 0) {
            text = CString(buffer, length);
            return TRUE;
        }
        if (i + 1 == m_count)
            return FALSE;
    }
    if (m_count == 0)
        return FALSE;
    if (ZoGblLoadString(id, text))
        return TRUE;
    if (ZoGblFindStringModule(id) != nullptr) // it is there, the memory for it was not
        AfxThrowMemoryException();
    return FALSE;
}
