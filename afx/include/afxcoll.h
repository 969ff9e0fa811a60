/// \file
/// Application framework: the arrays and maps of fixed element type.
#pragma once

#include <afxtempl.h>

/// An array of untyped pointers; what they point to belongs to the caller.
class CPtrArray : public CArray<void*, void*> {};

/// An array of object pointers; the objects belong to the caller.
class CObArray : public CArray<CObject*, CObject*> {};

class CStringArray : public CArray<CString, LPCSTR> {};

class CWordArray : public CArray<WORD, WORD> {};

class CDWordArray : public CArray<DWORD, DWORD> {};

/// An array of pointers of one type, as CPtrArray keeps them.
template <class BASE_CLASS, class TYPE> class CTypedPtrArray : public BASE_CLASS {
public:
    INT_PTR Add(TYPE newElement) { return BASE_CLASS::Add(newElement); }
    TYPE GetAt(INT_PTR nIndex) const { return static_cast<TYPE>(BASE_CLASS::GetAt(nIndex)); }
    TYPE operator[](INT_PTR nIndex) const { return GetAt(nIndex); }
};

/// Texts by name; names are the same when all their characters are.
class CMapStringToString : public CMap<CString, LPCSTR, CString, LPCSTR> {
public:
    explicit CMapStringToString(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
};

/// Objects by name; the objects belong to the caller.
class CMapStringToOb : public CMap<CString, LPCSTR, CObject*, CObject*> {
public:
    explicit CMapStringToOb(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
};
