/// \file
/// Application framework: the arrays and maps of fixed element type.
#pragma once

#include <afxtempl.h>

/// An array of untyped pointers; what they point to belongs to the caller.
class CPtrArray : public CArray<void*, void*> {};

/// An array of object pointers; the objects belong to the caller.
class CObArray : public CArray<CObject*, CObject*> {};

class CStringArray : public CArray<CString, LPCSTR> {};

class CDWordArray : public CArray<DWORD, DWORD> {};

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
