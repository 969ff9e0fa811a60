#include <afxtempl.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace {

constexpr size_t kAlignment = alignof(std::max_align_t);
constexpr INT_PTR kUsualBlockSize = 10;

} // namespace

CElementPool::CElementPool(size_t nElementSize, INT_PTR nBlockSize)
    : m_nElementSize((std::max)(nElementSize, sizeof(Link))),
      m_nBlockSize(nBlockSize > 0 ? nBlockSize : kUsualBlockSize)
{
}

void* CElementPool::Take()
{
    if (m_pFree == nullptr) {
        // The link to the next block takes as much as an alignment does.
        if (m_nBlockSize >
            (AfxMaxElements(1) - static_cast<INT_PTR>(kAlignment)) / static_cast<INT_PTR>(m_nElementSize))
            AfxThrowMemoryException();
        const auto count = static_cast<size_t>(m_nBlockSize);
        auto* block = static_cast<char*>(AfxAllocMemory(kAlignment + count * m_nElementSize));
        m_pBlocks = ::new (block) Link{m_pBlocks};
        for (size_t i = count; i-- > 0;)
            m_pFree = ::new (block + kAlignment + i * m_nElementSize) Link{m_pFree};
    }
    return std::exchange(m_pFree, m_pFree->next); // NOLINT(clang-analyzer-core.*): a block holds at least one
}

void CElementPool::Return(void* pElement) noexcept { m_pFree = ::new (pElement) Link{m_pFree}; }

void CElementPool::FreeAll() noexcept
{
    while (m_pBlocks != nullptr)
        AfxFreeMemory(std::exchange(m_pBlocks, m_pBlocks->next));
    m_pFree = nullptr;
}
