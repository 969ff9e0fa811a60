/// \file
/// Application framework: the arrays of fixed element type.
#pragma once

#include <afxtempl.h>

/// An array of untyped pointers; what they point to belongs to the caller.
class CPtrArray : public CArray<void*, void*> {};

/// An array of object pointers; the objects belong to the caller.
class CObArray : public CArray<CObject*, CObject*> {};

class CStringArray : public CArray<CString, LPCSTR> {};

class CDWordArray : public CArray<DWORD, DWORD> {};
