/// \file
/// Application framework: container templates, each in a part of its own.
#pragma once

#include <afx.h>

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
    // hash * 33 + character for each; four at once, so that the products need not wait for one another.
    const auto at = [&key](int i) { return static_cast<UINT>(static_cast<unsigned char>(key[i])); };
    UINT hash = 0;
    for (; key[0] != '\0' && key[1] != '\0' && key[2] != '\0' && key[3] != '\0'; key += 4)
        hash = hash * (33 * 33 * 33 * 33) + (at(0) * (33 * 33 * 33) + at(1) * (33 * 33) + at(2) * 33 + at(3));
    for (; *key != '\0'; ++key)
        hash = hash * 33 + at(0);
    return hash;
}
template <> inline UINT AFXAPI HashKey<const CString&>(const CString& key) { return HashKey<LPCSTR>(key); }

/// Whether two map keys are the same; specialise for other notions of equality.
template <class TYPE, class ARG_TYPE>
inline BOOL AFXAPI CompareElements(const TYPE* pElement1, const ARG_TYPE* pElement2)
{
    return *pElement1 == *pElement2;
}

/// A place in a collection.
struct __POSITION {};
using POSITION = __POSITION*;
#define BEFORE_START_POSITION (reinterpret_cast<POSITION>(static_cast<INT_PTR>(-1)))

/// The storage of lists and maps: room for elements of one size, allocated several at a time.
class AFX_API CElementPool {
public:
    /// \param nElementSize in bytes \param nBlockSize elements that are allocated together; 10 instead of less than 1
    CElementPool(size_t nElementSize, INT_PTR nBlockSize);
    ~CElementPool() { FreeAll(); }
    CElementPool(const CElementPool&) = delete;
    CElementPool& operator=(const CElementPool&) = delete;

    /// Room for one element, aligned for each type. Throws CMemoryException*.
    void* Take();
    /// Takes back the room of one whose destructor has run.
    void Return(void* pElement) noexcept;
    /// Gives all memory back, whether its elements are returned or not.
    void FreeAll() noexcept;

private:
    struct Link {
        Link* next;
    };
    size_t m_nElementSize;
    INT_PTR m_nBlockSize;
    Link* m_pFree = nullptr;
    Link* m_pBlocks = nullptr;
};

/// Makes an element in the room of a pool; one whose constructor throws leaves its room there.
template <class ELEMENT, class... ARGS> ELEMENT* AfxMakeElement(CElementPool& pool, ARGS&&... args)
{
    void* room = pool.Take();
    try {
        return ::new (room) ELEMENT(std::forward<ARGS>(args)...);
    } catch (...) {
        pool.Return(room);
        throw;
    }
}

#include <afxarr_.h> // arrays
#include <afxlst_.h> // lists
#include <afxmap_.h> // maps
#include <afxtyp_.h> // collections of pointers of one type
