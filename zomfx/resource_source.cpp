#include <zomfx/resource_source.h>

#include <common/without_throwing.h>

#include "resource_access.h"

namespace {

const ZoResourceSource* g_source = nullptr;

}

void ZoMfxSetResourceSource(const ZoResourceSource* source) { g_source = source; }

BOOL ZoMfxLoadString(UINT id, CString& text)
{
    if (g_source != nullptr)
        return g_source->loadString(id, text);
    const BOOL loaded = WithoutThrowing([&] { return text.LoadString(id); });
    if (!loaded)
        text.Empty();
    return loaded;
}

LPCDLGTEMPLATE ZoMfxLockDialog(UINT id)
{
    const LPCSTR name = MAKEINTRESOURCEA(id);
    if (g_source != nullptr)
        return static_cast<LPCDLGTEMPLATE>(g_source->lockResource(name, RT_DIALOG, nullptr));
    const HINSTANCE module = AfxFindResourceHandle(name, RT_DIALOG);
    const HRSRC resource = FindResourceA(module, name, RT_DIALOG);
    const HGLOBAL loaded = resource != nullptr ? LoadResource(module, resource) : nullptr;
    return loaded != nullptr ? static_cast<LPCDLGTEMPLATE>(LockResource(loaded)) : nullptr;
}

BOOL ZoMfxAskForFile(CString& path, LPCSTR filter, CWnd* parent)
{
    return g_source != nullptr && g_source->askForFile(path, filter, parent);
}

int ZoMfxMessageBox(HWND owner, LPCSTR text, LPCSTR title, UINT type)
{
    return g_source != nullptr ? g_source->showMessage(owner, text, title, type)
                               : ::MessageBoxA(owner, text, title, type);
}
