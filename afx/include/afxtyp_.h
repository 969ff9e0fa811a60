/// \file
/// Application framework: collections of pointers of one type, kept by those of untyped or object pointers. Included by
/// afxtempl.h.
///
/// Elements are given as values; only those of an array's or a map's brackets can be assigned to. What needs no pointer
/// of the type is the base class's.
#pragma once

#include <afxtempl.h>

/// An element that brackets give: it reads as a TYPE, and can be assigned one.
template <class SLOT, class TYPE> class CTypedElement {
public:
    explicit CTypedElement(SLOT& slot) : m_slot(slot) {}
    operator TYPE() const { return static_cast<TYPE>(m_slot); }
    TYPE operator->() const { return *this; }
    CTypedElement& operator=(TYPE element)
    {
        m_slot = element;
        return *this;
    }
    CTypedElement& operator=(const CTypedElement& other) { return *this = static_cast<TYPE>(other); }
    CTypedElement(const CTypedElement&) = default;

private:
    SLOT& m_slot;
};

/// \tparam BASE_CLASS CPtrArray or CObArray
template <class BASE_CLASS, class TYPE> class CTypedPtrArray : public BASE_CLASS {
public:
    TYPE GetAt(INT_PTR nIndex) const { return static_cast<TYPE>(BASE_CLASS::GetAt(nIndex)); }
    auto ElementAt(INT_PTR nIndex) { return (*this)[nIndex]; }
    TYPE operator[](INT_PTR nIndex) const { return GetAt(nIndex); }
    auto operator[](INT_PTR nIndex) { return Element(BASE_CLASS::ElementAt(nIndex)); }
    void SetAt(INT_PTR nIndex, TYPE newElement) { BASE_CLASS::SetAt(nIndex, newElement); }
    void SetAtGrow(INT_PTR nIndex, TYPE newElement) { BASE_CLASS::SetAtGrow(nIndex, newElement); }
    INT_PTR Add(TYPE newElement) { return BASE_CLASS::Add(newElement); }
    INT_PTR Append(const CTypedPtrArray& src) { return BASE_CLASS::Append(src); }
    void Copy(const CTypedPtrArray& src) { BASE_CLASS::Copy(src); }
    void InsertAt(INT_PTR nIndex, TYPE newElement, INT_PTR nCount = 1)
    {
        BASE_CLASS::InsertAt(nIndex, newElement, nCount);
    }

private:
    template <class SLOT> static CTypedElement<SLOT, TYPE> Element(SLOT& slot)
    {
        return CTypedElement<SLOT, TYPE>(slot);
    }
};

/// \tparam BASE_CLASS CPtrList or CObList
template <class BASE_CLASS, class TYPE> class CTypedPtrList : public BASE_CLASS {
public:
    using BASE_CLASS::BASE_CLASS;

    TYPE GetHead() const { return static_cast<TYPE>(BASE_CLASS::GetHead()); }
    TYPE GetTail() const { return static_cast<TYPE>(BASE_CLASS::GetTail()); }
    TYPE RemoveHead() { return static_cast<TYPE>(BASE_CLASS::RemoveHead()); }
    TYPE RemoveTail() { return static_cast<TYPE>(BASE_CLASS::RemoveTail()); }
    POSITION AddHead(TYPE newElement) { return BASE_CLASS::AddHead(newElement); }
    POSITION AddTail(TYPE newElement) { return BASE_CLASS::AddTail(newElement); }
    void AddHead(CTypedPtrList* pNewList) { BASE_CLASS::AddHead(pNewList); }
    void AddTail(CTypedPtrList* pNewList) { BASE_CLASS::AddTail(pNewList); }
    TYPE GetNext(POSITION& rPosition) const { return static_cast<TYPE>(BASE_CLASS::GetNext(rPosition)); }
    TYPE GetPrev(POSITION& rPosition) const { return static_cast<TYPE>(BASE_CLASS::GetPrev(rPosition)); }
    TYPE GetAt(POSITION position) const { return static_cast<TYPE>(BASE_CLASS::GetAt(position)); }
    void SetAt(POSITION position, TYPE newElement) { BASE_CLASS::SetAt(position, newElement); }
    POSITION InsertBefore(POSITION position, TYPE newElement) { return BASE_CLASS::InsertBefore(position, newElement); }
    POSITION InsertAfter(POSITION position, TYPE newElement) { return BASE_CLASS::InsertAfter(position, newElement); }
};

/// \tparam BASE_CLASS a map to untyped or object pointers, or of untyped pointers
template <class BASE_CLASS, class KEY, class VALUE> class CTypedPtrMap : public BASE_CLASS {
public:
    using BASE_CLASS::BASE_CLASS;

    BOOL Lookup(typename BASE_CLASS::BASE_ARG_KEY key, VALUE& rValue) const
    {
        typename BASE_CLASS::BASE_VALUE value{};
        const BOOL found = BASE_CLASS::Lookup(key, value);
        if (found)
            rValue = static_cast<VALUE>(value);
        return found;
    }
    auto operator[](typename BASE_CLASS::BASE_ARG_KEY key)
    {
        return CTypedElement<typename BASE_CLASS::BASE_VALUE, VALUE>(BASE_CLASS::operator[](key));
    }
    void SetAt(KEY key, VALUE newValue) { BASE_CLASS::SetAt(key, newValue); }
    BOOL RemoveKey(KEY key) { return BASE_CLASS::RemoveKey(key); }
    void GetNextAssoc(POSITION& rPosition, KEY& rKey, VALUE& rValue) const
    {
        typename BASE_CLASS::BASE_KEY key{};
        typename BASE_CLASS::BASE_VALUE value{};
        BASE_CLASS::GetNextAssoc(rPosition, key, value);
        rKey = static_cast<KEY>(key);
        rValue = static_cast<VALUE>(value);
    }
};
