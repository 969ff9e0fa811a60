#include "module_data.h"

#include <memory>
#include <new>

namespace {

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

BOOL ZoModuleDataCreate()
{
    std::unique_ptr<ZoModuleData> block(new (std::nothrow) ZoModuleData);
    if (!block)
        return FALSE;
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
