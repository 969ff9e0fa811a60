/// \file
/// Application framework: memory, objects, run-time classes; by its parts strings, exceptions, files.
///
/// The subset of the documented framework that the suite calls. Everything lives in one library, ZOAFX.DLL, so that the
/// host, the class library and every extension library of a process share one framework state.
#pragma once

#ifdef UNICODE
#error "The framework and the library are for programs of the ANSI code page: compile without UNICODE"
#endif

#include <windows.h>

#include <cstdarg>
#include <cstddef>
#include <new>

#ifdef ZOAFX_BUILD
#define AFX_API __declspec(dllexport)
#else
#define AFX_API __declspec(dllimport)
#endif

/// For classes and functions of an extension library, which defines _AFXEXT while it is built.
#ifdef _AFXEXT
#define AFX_EXT_CLASS __declspec(dllexport)
#else
#define AFX_EXT_CLASS __declspec(dllimport)
#endif

#define AFXAPI __stdcall
#define AFX_CDECL __cdecl
#define afx_msg

#ifdef NDEBUG
#define ASSERT(expression) ((void)0)
#define VERIFY(expression) ((void)(expression))
#else
#define ASSERT(expression) ((void)((expression) || (AfxAssertFailedLine(__FILE__, __LINE__), 0)))
#define VERIFY(expression) ASSERT(expression)
#endif

class CArchive;
class CDumpContext;
class CFile;
class CObject;
class CString;
struct CRuntimeClass;

/// Reports a broken assertion to the debugger and stops there.
AFX_API void AFXAPI AfxAssertFailedLine(LPCSTR lpszFileName, int nLine);

// ---------------------------------------------------------------------------------------------------------------------
// Memory

/// Decides one allocation: \p nSize bytes, \p bObject TRUE for a CObject, \p lRequestNumber counting from 1 in the
/// process. FALSE makes the allocation fail.
using AFX_ALLOC_HOOK = BOOL(AFXAPI*)(size_t nSize, BOOL bObject, LONG lRequestNumber);

/// Installs the hook that decides every allocation of the framework and of each library built with afxnew.cpp: operator
/// new, string buffers, array and map storage. \return the hook in force before, null when there was none.
AFX_API AFX_ALLOC_HOOK AFXAPI AfxSetAllocHook(AFX_ALLOC_HOOK pfnAllocHook);

/// The one source of memory behind operator new, strings and containers.
/// \return never null: throws CMemoryException* when the hook refuses or memory has run out.
AFX_API void* AFXAPI AfxAllocMemory(size_t nSize, BOOL bObject = FALSE);
/// Releases what AfxAllocMemory gave; null is allowed.
AFX_API void AFXAPI AfxFreeMemory(void* p) noexcept;

/// A count of the blocks that the framework's memory source has handed out and not got back: the means to find leaks.
struct AFX_API CMemoryState {
    /// Number of blocks alive when the checkpoint was taken.
    LONG m_lBlockCount = 0;

    /// Takes the present state.
    void Checkpoint();
    /// Sets this state to the difference of the two. \return TRUE when they differ.
    BOOL Difference(const CMemoryState& oldState, const CMemoryState& newState);
};

// ---------------------------------------------------------------------------------------------------------------------
// Run-time classes

struct AFX_API CRuntimeClass {
    LPCSTR m_lpszClassName;
    int m_nObjectSize; ///< in bytes
    UINT m_wSchema;
    CObject*(AFXAPI* m_pfnCreateObject)();       ///< null for a class without dynamic creation
    CRuntimeClass*(AFXAPI* m_pfnGetBaseClass)(); ///< null for CObject alone
    CRuntimeClass* m_pNextClass;                 ///< link of the class list that the class is registered in

    /// Creates an object with new; owned by the caller. \return null when the class cannot be created dynamically or
    /// memory has run out.
    CObject* CreateObject();
    BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const;
    /// Looks a dynamically creatable class up by name: first the application's own, then those of the extension
    /// libraries in chain order. \return null when there is none.
    static CRuntimeClass* AFXAPI FromName(LPCSTR lpszClassName);
};

/// Registers a class in the list of the module that is being loaded; used by IMPLEMENT_DYNCREATE.
struct AFX_API AFX_CLASSINIT {
    explicit AFX_CLASSINIT(CRuntimeClass* pNewClass);
};

#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())

#define DECLARE_DYNAMIC(class_name)                                                                                    \
public:                                                                                                                \
    static CRuntimeClass class##class_name;                                                                            \
    static CRuntimeClass* AFXAPI GetThisClass();                                                                       \
    CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name)                                                                                  \
    DECLARE_DYNAMIC(class_name)                                                                                        \
    static CObject* AFXAPI CreateObject();

#define AFX_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, create)                                                \
    CRuntimeClass class_name::class##class_name = {#class_name, sizeof(class class_name),       0xFFFF,                \
                                                   create,      &base_class_name::GetThisClass, nullptr};              \
    CRuntimeClass* AFXAPI class_name::GetThisClass() { return &class##class_name; }                                    \
    CRuntimeClass* class_name::GetRuntimeClass() const { return &class##class_name; }

#define IMPLEMENT_DYNAMIC(class_name, base_class_name) AFX_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                                               \
    AFX_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, &class_name::CreateObject)                                 \
    CObject* AFXAPI class_name::CreateObject() { return new class_name; }                                              \
    static const AFX_CLASSINIT afxClassInit##class_name(RUNTIME_CLASS(class_name));

/// Root of the framework's classes.
class AFX_API CObject {
public:
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject() = default;
    virtual void Serialize(CArchive& ar);
    virtual void AssertValid() const;
    virtual void Dump(CDumpContext& dc) const;

    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    BOOL IsKindOf(const CRuntimeClass* pClass) const;
    static CRuntimeClass* AFXAPI GetThisClass();

    void* operator new(size_t nSize) { return AfxAllocMemory(nSize, TRUE); }
    void* operator new(size_t, void* p) noexcept { return p; }
    void operator delete(void* p) noexcept { AfxFreeMemory(p); }
    void operator delete(void*, void*) noexcept {}

    static CRuntimeClass classCObject;

protected:
    CObject() = default;
};

/// \p pObject as \p pClass if it is one, else null.
AFX_API CObject* AFXAPI AfxDynamicDownCast(CRuntimeClass* pClass, CObject* pObject);
#define DYNAMIC_DOWNCAST(class_name, object)                                                                           \
    (static_cast<class_name*>(AfxDynamicDownCast(RUNTIME_CLASS(class_name), (object))))

// ---------------------------------------------------------------------------------------------------------------------
// Classes, by family

#include <afxexc_.h>  // exceptions
#include <afxfile_.h> // files
#include <afxstr_.h>  // strings
