/// \file
/// Application framework: the map template. Included by afxtempl.h.
#pragma once

#include <afxtempl.h>

#include <algorithm>
#include <utility>

/// A hash map. The table of buckets is made with the first element; a new element goes to the front of its bucket, and
/// iteration runs bucket by bucket. Operations that need memory throw CMemoryException* and then leave the map as it
/// was.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE> class CMap : public CObject {
public:
    using BASE_KEY = KEY; // by the names that CTypedPtrMap knows them by
    using BASE_ARG_KEY = ARG_KEY;
    using BASE_VALUE = VALUE;

    /// \param nBlockSize number of elements that are allocated together.
    explicit CMap(INT_PTR nBlockSize = 10) : m_pool(sizeof(Assoc), nBlockSize) {}
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
        const Assoc* assoc = m_nCount != 0 ? Find(key, HashKey<ARG_KEY>(key)) : nullptr;
        if (assoc == nullptr)
            return FALSE;
        rValue = assoc->value;
        return TRUE;
    }
    /// The value of \p key, added with an initial value if the map has none.
    VALUE& operator[](ARG_KEY key) { return FindOrAdd(key, key); }
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
                m_pool.Return(assoc);
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
        m_pool.FreeAll();
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

protected:
    /// The value of \p key, added with an initial value and \p newKey, the same key, if the map has none.
    template <class NEW_KEY> VALUE& FindOrAdd(ARG_KEY key, const NEW_KEY& newKey)
    {
        const UINT hash = HashKey<ARG_KEY>(key);
        if (Assoc* assoc = Find(key, hash))
            return assoc->value;
        if (m_pHashTable == nullptr)
            m_pHashTable = NewTable(m_nHashTableSize);
        Assoc* assoc = NewAssoc(newKey, hash);
        Assoc*& bucket = m_pHashTable[hash % m_nHashTableSize];
        assoc->next = bucket;
        bucket = assoc;
        return assoc->value;
    }

private:
    struct Assoc {
        Assoc* next = nullptr;
        UINT hash;
        KEY key;
        VALUE value{};
        template <class NEW_KEY> Assoc(UINT keyHash, const NEW_KEY& newKey) : hash(keyHash), key(newKey) {}
    };

    Assoc* Find(ARG_KEY key, UINT hash) const
    {
        if (m_pHashTable == nullptr)
            return nullptr;
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
    template <class NEW_KEY> Assoc* NewAssoc(const NEW_KEY& newKey, UINT hash)
    {
        Assoc* assoc = AfxMakeElement<Assoc>(m_pool, hash, newKey);
        ++m_nCount;
        return assoc;
    }

    Assoc** m_pHashTable = nullptr;
    UINT m_nHashTableSize = 17;
    INT_PTR m_nCount = 0;
    CElementPool m_pool;
};
