/// \file
/// Application framework: the array template. Included by afxtempl.h.
#pragma once

#include <afxtempl.h>

#include <algorithm>
#include <utility>

/// A growing array. Indexes must be in range except for SetAtGrow and InsertAt, which extend the array as needed.
/// Storage grows by nGrowBy elements; with 0, by an eighth of the size, at least 4 and at most 1024. Elements added by
/// growth are value-initialised. Operations that need memory throw CMemoryException* and then leave the array as it
/// was; so does a size that is negative, or larger than memory can be.
template <class TYPE, class ARG_TYPE = const TYPE&> class CArray : public CObject {
public:
    CArray() = default;
    ~CArray() override { RemoveAll(); }

    INT_PTR GetSize() const { return m_nSize; }
    INT_PTR GetCount() const { return m_nSize; }
    INT_PTR GetUpperBound() const { return m_nSize - 1; }
    BOOL IsEmpty() const { return m_nSize == 0; }

    void SetSize(INT_PTR nNewSize, INT_PTR nGrowBy = -1)
    {
        if (nNewSize < 0 || nNewSize > kMaxElements)
            AfxThrowMemoryException();
        if (nGrowBy >= 0)
            m_nGrowBy = nGrowBy;
        if (nNewSize == 0) {
            DestroyElements(m_pData, m_nSize);
            AfxFreeMemory(m_pData);
            m_pData = nullptr;
            m_nSize = m_nMaxSize = 0;
            return;
        }
        if (nNewSize > m_nMaxSize)
            Reallocate(m_nMaxSize == 0 ? nNewSize : (std::max)(nNewSize, GrownSize()));
        for (; m_nSize < nNewSize; ++m_nSize)
            ::new (static_cast<void*>(m_pData + m_nSize)) TYPE();
        DestroyElements(m_pData + nNewSize, m_nSize - nNewSize);
        m_nSize = nNewSize;
    }
    void FreeExtra()
    {
        if (m_nSize != m_nMaxSize)
            m_nSize == 0 ? SetSize(0) : Reallocate(m_nSize);
    }
    void RemoveAll() { SetSize(0); }

    TYPE& GetAt(INT_PTR nIndex) { return m_pData[nIndex]; }
    const TYPE& GetAt(INT_PTR nIndex) const { return m_pData[nIndex]; }
    TYPE& ElementAt(INT_PTR nIndex) { return m_pData[nIndex]; }
    TYPE& operator[](INT_PTR nIndex) { return m_pData[nIndex]; } // NOLINT(clang-analyzer-core.*): nIndex is one of its
    const TYPE& operator[](INT_PTR nIndex) const { return m_pData[nIndex]; }
    void SetAt(INT_PTR nIndex, ARG_TYPE newElement) { m_pData[nIndex] = newElement; }
    TYPE* GetData() { return m_pData; }
    const TYPE* GetData() const { return m_pData; }

    void SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement)
    {
        TYPE element; // copied before anything changes: that may fail, or the original may lie in this array
        element = newElement;
        if (nIndex >= m_nSize)
            SetSize(AfxAddSizes(nIndex, 1));
        m_pData[nIndex] = std::move(element); // NOLINT(clang-analyzer-core.*): SetSize has made the storage
    }
    /// \return the index of the new element.
    INT_PTR Add(ARG_TYPE newElement)
    {
        const INT_PTR index = m_nSize;
        SetAtGrow(index, newElement);
        return index;
    }
    /// Adds all of \p src. \return the index of the first one added.
    INT_PTR Append(const CArray& src)
    {
        const INT_PTR first = m_nSize;
        const INT_PTR count = src.m_nSize;
        SetSize(AfxAddSizes(first, count));
        std::copy_n(src.m_pData, count, m_pData + first);
        return first;
    }
    void Copy(const CArray& src)
    {
        SetSize(src.m_nSize);
        std::copy(src.m_pData, src.m_pData + src.m_nSize, m_pData);
    }
    void InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount = 1)
    {
        TYPE element; // as in SetAtGrow
        element = newElement;
        const INT_PTR oldSize = m_nSize;
        if (nIndex >= oldSize) {
            SetSize(AfxAddSizes(nIndex, nCount));
        } else {
            SetSize(AfxAddSizes(oldSize, nCount));
            std::move_backward(m_pData + nIndex, m_pData + oldSize, m_pData + oldSize + nCount);
        }
        std::fill_n(m_pData + nIndex, nCount, element);
    }
    void RemoveAt(INT_PTR nIndex, INT_PTR nCount = 1)
    {
        std::move(m_pData + nIndex + nCount, m_pData + m_nSize, m_pData + nIndex);
        DestroyElements(m_pData + m_nSize - nCount, nCount);
        m_nSize -= nCount;
    }

private:
    static constexpr INT_PTR kMaxElements = AfxMaxElements(sizeof(TYPE));

    /// The size of the storage after its next growth.
    INT_PTR GrownSize() const
    {
        const INT_PTR step = m_nGrowBy > 0 ? m_nGrowBy : (std::min)(INT_PTR{1024}, (std::max)(INT_PTR{4}, m_nSize / 8));
        return m_nMaxSize + (std::min)(step, kMaxElements - m_nMaxSize);
    }
    static void DestroyElements(TYPE* pElements, INT_PTR nCount)
    {
        for (INT_PTR i = 0; i < nCount; ++i)
            pElements[i].~TYPE(); // NOLINT(clang-analyzer-core.*): null goes with a count of 0
    }
    void Reallocate(INT_PTR nMaxSize)
    {
        auto* data = static_cast<TYPE*>(AfxAllocMemory(static_cast<size_t>(nMaxSize) * sizeof(TYPE)));
        for (INT_PTR i = 0; i < m_nSize; ++i)
            ::new (static_cast<void*>(data + i)) TYPE(std::move(m_pData[i]));
        DestroyElements(m_pData, m_nSize);
        AfxFreeMemory(m_pData);
        m_pData = data;
        m_nMaxSize = nMaxSize;
    }

    TYPE* m_pData = nullptr;
    INT_PTR m_nSize = 0;
    INT_PTR m_nMaxSize = 0;
    INT_PTR m_nGrowBy = 0;
};
