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
