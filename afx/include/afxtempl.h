/// \file
/// Application framework: container templates.
#pragma once

#include <afx.h>

#include <algorithm>
#include <limits>
#include <utility>

/// The most elements of \p nSize bytes that one block can hold.
constexpr INT_PTR AfxMaxElements(size_t nSize)
{
    return static_cast<INT_PTR>(static_cast<size_t>((std::numeric_limits<INT_PTR>::max)()) / nSize);
}
/// The sum of two sizes, neither of them negative. Throws CMemoryException* if it is too large for a size.
inline INT_PTR AfxAddSizes(INT_PTR nSize1, INT_PTR nSize2)
{
    if (nSize1 > (std::numeric_limits<INT_PTR>::max)() - nSize2)
        AfxThrowMemoryException();
    return nSize1 + nSize2;
}

/// Hash of a key; specialise for types without a conversion to an integer.
template <class ARG_KEY> inline UINT AFXAPI HashKey(ARG_KEY key)
{
    return static_cast<UINT>(((DWORD_PTR)key) >> 4); // pointers and small integers alike, hence the plain cast
}
template <> inline UINT AFXAPI HashKey<LPCSTR>(LPCSTR key)
{
    UINT hash = 0;
    while (*key != '\0')
        hash = hash * 33 + static_cast<unsigned char>(*key++);
    return hash;
}
template <> inline UINT AFXAPI HashKey<const CString&>(const CString& key) { return HashKey<LPCSTR>(key); }

/// Whether two map keys are the same; specialise for other notions of equality.
template <class TYPE, class ARG_TYPE>
inline BOOL AFXAPI CompareElements(const TYPE* pElement1, const ARG_TYPE* pElement2)
{
    return *pElement1 == *pElement2;
}

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
    TYPE& operator[](INT_PTR nIndex) { return m_pData[nIndex]; }
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

/// A place in a collection.
struct __POSITION {};
using POSITION = __POSITION*;
#define BEFORE_START_POSITION (reinterpret_cast<POSITION>(static_cast<INT_PTR>(-1)))

/// A hash map. The table of buckets is made with the first element; a new element goes to the front of its bucket, and
/// iteration runs bucket by bucket. Operations that need memory throw CMemoryException* and then leave the map as it
/// was.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE> class CMap : public CObject {
public:
    /// \param nBlockSize number of elements that are allocated together.
    explicit CMap(INT_PTR nBlockSize = 10) : m_nBlockSize(nBlockSize > 0 ? nBlockSize : 10) {}
    ~CMap() override { RemoveAll(); }

    INT_PTR GetCount() const { return m_nCount; }
    INT_PTR GetSize() const { return m_nCount; }
    BOOL IsEmpty() const { return m_nCount == 0; }
    UINT GetHashTableSize() const { return m_nHashTableSize; }

    /// Sets the number of buckets, best a prime number; the map must be empty.
    void InitHashTable(UINT nHashSize, BOOL bAllocNow = TRUE)
    {
        ASSERT(m_nCount == 0 && nHashSize > 0);
        Assoc** table = bAllocNow ? NewTable(nHashSize) : nullptr;
        AfxFreeMemory(m_pHashTable);
        m_pHashTable = table;
        m_nHashTableSize = nHashSize;
    }
    BOOL Lookup(ARG_KEY key, VALUE& rValue) const
    {
        const Assoc* assoc = Find(key);
        if (assoc == nullptr)
            return FALSE;
        rValue = assoc->value;
        return TRUE;
    }
    /// The value of \p key, added with an initial value if the map has none.
    VALUE& operator[](ARG_KEY key)
    {
        if (Assoc* assoc = Find(key))
            return assoc->value;
        if (m_pHashTable == nullptr)
            m_pHashTable = NewTable(m_nHashTableSize);
        Assoc* assoc = NewAssoc(key);
        Assoc*& bucket = m_pHashTable[assoc->hash % m_nHashTableSize];
        assoc->next = bucket;
        bucket = assoc;
        return assoc->value;
    }
    void SetAt(ARG_KEY key, ARG_VALUE newValue)
    {
        VALUE value; // copied before anything changes: that may fail
        value = newValue;
        (*this)[key] = std::move(value);
    }
    BOOL RemoveKey(ARG_KEY key)
    {
        if (m_pHashTable == nullptr)
            return FALSE;
        for (Assoc** link = &m_pHashTable[HashKey<ARG_KEY>(key) % m_nHashTableSize]; *link; link = &(*link)->next) {
            if (CompareElements(&(*link)->key, &key)) {
                Assoc* assoc = *link;
                *link = assoc->next;
                assoc->~Assoc();
                assoc->next = m_pFree;
                m_pFree = assoc;
                --m_nCount;
                return TRUE;
            }
        }
        return FALSE;
    }
    void RemoveAll()
    {
        for (UINT bucket = 0; m_pHashTable != nullptr && bucket < m_nHashTableSize; ++bucket) {
            for (Assoc* assoc = m_pHashTable[bucket]; assoc != nullptr;) {
                Assoc* next = assoc->next;
                assoc->~Assoc();
                assoc = next;
            }
        }
        AfxFreeMemory(m_pHashTable);
        m_pHashTable = nullptr;
        while (m_pBlocks != nullptr)
            AfxFreeMemory(std::exchange(m_pBlocks, m_pBlocks->next));
        m_pFree = nullptr;
        m_nCount = 0;
    }
    POSITION GetStartPosition() const { return m_nCount == 0 ? nullptr : BEFORE_START_POSITION; }
    /// Reads the element at \p rNextPosition and moves on; the position is null after the last one.
    void GetNextAssoc(POSITION& rNextPosition, KEY& rKey, VALUE& rValue) const
    {
        Assoc* assoc = rNextPosition == BEFORE_START_POSITION ? FirstFrom(0) : reinterpret_cast<Assoc*>(rNextPosition);
        Assoc* next = assoc->next != nullptr ? assoc->next : FirstFrom(assoc->hash % m_nHashTableSize + 1);
        rKey = assoc->key;
        rValue = assoc->value;
        rNextPosition = reinterpret_cast<POSITION>(next);
    }

private:
    struct Assoc {
        Assoc* next = nullptr;
        UINT hash;
        KEY key;
        VALUE value{};
        Assoc(UINT keyHash, ARG_KEY newKey) : hash(keyHash), key(newKey) {}
    };
    struct alignas(Assoc) Block {
        Block* next;
    };

    Assoc* Find(ARG_KEY key) const
    {
        if (m_pHashTable == nullptr)
            return nullptr;
        const UINT hash = HashKey<ARG_KEY>(key);
        Assoc* assoc = m_pHashTable[hash % m_nHashTableSize];
        while (assoc != nullptr && !(assoc->hash == hash && CompareElements(&assoc->key, &key)))
            assoc = assoc->next;
        return assoc;
    }
    Assoc* FirstFrom(UINT bucket) const
    {
        while (bucket < m_nHashTableSize && m_pHashTable[bucket] == nullptr)
            ++bucket;
        return bucket < m_nHashTableSize ? m_pHashTable[bucket] : nullptr;
    }
    static Assoc** NewTable(UINT size)
    {
        if (size > static_cast<size_t>(AfxMaxElements(sizeof(Assoc*))))
            AfxThrowMemoryException();
        auto** table = static_cast<Assoc**>(AfxAllocMemory(size * sizeof(Assoc*)));
        std::fill_n(table, size, nullptr);
        return table;
    }
    Assoc* NewAssoc(ARG_KEY key)
    {
        if (m_pFree == nullptr) {
            if (m_nBlockSize > AfxMaxElements(sizeof(Assoc)) - 1) // the block's own head takes less than one of them
                AfxThrowMemoryException();
            auto* block =
                static_cast<Block*>(AfxAllocMemory(sizeof(Block) + static_cast<size_t>(m_nBlockSize) * sizeof(Assoc)));
            block->next = m_pBlocks;
            m_pBlocks = block;
            auto* assocs = reinterpret_cast<Assoc*>(block + 1);
            for (INT_PTR i = m_nBlockSize; i-- > 0;) {
                assocs[i].next = m_pFree;
                m_pFree = &assocs[i];
            }
        }
        Assoc* assoc = m_pFree;
        Assoc* rest = assoc->next; // NOLINT(clang-analyzer-core.*): a block holds at least one
        ::new (static_cast<void*>(assoc)) Assoc(HashKey<ARG_KEY>(key), key);
        m_pFree = rest;
        ++m_nCount;
        return assoc;
    }

    Assoc** m_pHashTable = nullptr;
    UINT m_nHashTableSize = 17;
    INT_PTR m_nCount = 0;
    Assoc* m_pFree = nullptr;
    Block* m_pBlocks = nullptr;
    INT_PTR m_nBlockSize;
};
