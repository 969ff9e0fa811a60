#include "module_data.h"

#include <zogbl/module.h>

#include "language_followers.h"

#include <new>
#include <utility>

namespace {

HINSTANCE g_instance = nullptr;
DWORD g_slot = TLS_OUT_OF_INDEXES;
LONG g_blockCount = 0;
ZoModuleData* g_firstBlock = nullptr;

/// Counts a block out again; the last one takes the slot along.
void ForgetBlock()
{
    if (--g_blockCount == 0) {
        TlsFree(g_slot);
        g_slot = TLS_OUT_OF_INDEXES;
        g_firstBlock = nullptr;
    }
}

} // namespace

void ZoModuleData::SetLanguageLibrary(HINSTANCE library)
{
    m_hLanguageLibrary = library;
    m_pLanguageLink->m_hResource = library;
    if (library != nullptr)
        LanguageFollower::RenewAll(LanguageFollower::Occasion::kLibrary);
}

void ZoSetInstanceHandle(HINSTANCE instance) { g_instance = instance; }

extern "C" HINSTANCE ZoGblGetInstanceHandle() { return g_instance; }

BOOL ZoGetLibraryPath(char (&path)[kZoLibraryPathSize])
{
    const DWORD length = GetModuleFileNameA(g_instance, path, sizeof path);
    return length != 0 && length < sizeof path;
}

HINSTANCE ZoGblGetLanguageDLL()
{
    const ZoModuleData* data = ZoModuleDataGet();
    return data != nullptr ? data->m_hLanguageLibrary : nullptr;
}

BOOL ZoModuleDataCreate(CountryListOwner countries)
{
    std::unique_ptr<ZoModuleData> block(countries ? new (std::nothrow) ZoModuleData : nullptr);
    if (!block)
        return FALSE;
    block->m_countries = std::move(countries);
    if (g_blockCount == 0) {
        g_slot = TlsAlloc();
        if (g_slot == TLS_OUT_OF_INDEXES)
            return FALSE;
        g_firstBlock = block.get();
    }
    ++g_blockCount;
    if (!TlsSetValue(g_slot, block.get())) {
        ForgetBlock();
        return FALSE;
    }
    block.release();
    return TRUE;
}

ZoModuleData* ZoModuleDataGet()
{
    if (g_blockCount == 0)
        return nullptr;
    // Callers may be on their way to report an error; TlsGetValue clears the last one.
    const DWORD lastError = GetLastError();
    auto* block = static_cast<ZoModuleData*>(TlsGetValue(g_slot));
    SetLastError(lastError);
    return block != nullptr ? block : g_firstBlock;
}

void ZoModuleDataDestroy()
{
    auto* block = g_blockCount != 0 ? static_cast<ZoModuleData*>(TlsGetValue(g_slot)) : nullptr;
    if (block == nullptr)
        return;
    delete block;
    TlsSetValue(g_slot, nullptr);
    ForgetBlock();
}
