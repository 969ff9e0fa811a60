/// \file
/// Application framework: the arrays, lists and maps of fixed element type. What pointers point to belongs to the
/// caller.
#pragma once

#include <afxtempl.h>

class CByteArray : public CArray<BYTE, BYTE> {};
class CWordArray : public CArray<WORD, WORD> {};
class CDWordArray : public CArray<DWORD, DWORD> {};
class CUIntArray : public CArray<UINT, UINT> {};
class CPtrArray : public CArray<void*, void*> {};
class CObArray : public CArray<CObject*, CObject*> {};
class CStringArray : public CArray<CString, LPCSTR> {};

class CPtrList : public CList<void*, void*> {
public:
    using CList::CList;
};
class CObList : public CList<CObject*, CObject*> {
public:
    using CList::CList;
};
class CStringList : public CList<CString, LPCSTR> {
public:
    using CList::CList;
};

class CMapPtrToPtr : public CMap<void*, void*, void*, void*> {
public:
    using CMap::CMap;
};
class CMapWordToPtr : public CMap<WORD, WORD, void*, void*> {
public:
    using CMap::CMap;
};
// Names are the same when all their characters are.
class CMapStringToPtr : public CMap<CString, LPCSTR, void*, void*> {
public:
    using CMap::CMap;
};
class CMapStringToOb : public CMap<CString, LPCSTR, CObject*, CObject*> {
public:
    using CMap::CMap;
};
class CMapStringToString : public CMap<CString, LPCSTR, CString, LPCSTR> {
public:
    using CMap::CMap;

    using CMap::operator[];
    CString& operator[](const CString& key) { return FindOrAdd(key, key); } ///< shares the key's text
};
