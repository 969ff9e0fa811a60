#include <afx.h>

#include <cstdlib>
#include <utility>

namespace {

AFX_ALLOC_HOOK g_allocHook = nullptr;
volatile LONG g_requestNumber = 0;
volatile LONG g_blocksAlive = 0;

} // namespace

AFX_ALLOC_HOOK AFXAPI AfxSetAllocHook(AFX_ALLOC_HOOK pfnAllocHook) { return std::exchange(g_allocHook, pfnAllocHook); }

void* AFXAPI AfxAllocMemory(size_t nSize, BOOL bObject)
{
    const LONG request = InterlockedIncrement(&g_requestNumber);
    if (g_allocHook != nullptr && !g_allocHook(nSize, bObject, request))
        AfxThrowMemoryException();
    void* p = std::malloc(nSize != 0 ? nSize : 1);
    if (p == nullptr)
        AfxThrowMemoryException();
    InterlockedIncrement(&g_blocksAlive);
    return p;
}

void AFXAPI AfxFreeMemory(void* p) noexcept
{
    if (p == nullptr)
        return;
    InterlockedDecrement(&g_blocksAlive);
    std::free(p);
}

void CMemoryState::Checkpoint() { m_lBlockCount = g_blocksAlive; }

BOOL CMemoryState::Difference(const CMemoryState& oldState, const CMemoryState& newState)
{
    m_lBlockCount = newState.m_lBlockCount - oldState.m_lBlockCount;
    return m_lBlockCount != 0;
}
