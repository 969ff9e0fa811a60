/// \file
/// Application framework: objects, run-time classes, strings, exceptions, files, memory diagnostics.
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
// Strings

/// Text of the system's ANSI code page. One pointer to a reference-counted buffer: copies share it until one is
/// changed. Searching, comparing and case mapping step by whole characters, so double-byte text is never cut in the
/// middle. Operations that need memory throw CMemoryException*.
class AFX_API CString {
public:
    CString() noexcept;
    CString(const CString& stringSrc) noexcept;
    CString(CString&& stringSrc) noexcept;
    CString(char ch, int nRepeat = 1);
    /// A null pointer gives the empty string; a pointer whose high part is zero names a string resource.
    CString(LPCSTR lpsz);
    CString(LPCSTR lpch, int nLength);
    ~CString();

    CString& operator=(const CString& stringSrc) noexcept;
    CString& operator=(CString&& stringSrc) noexcept;
    CString& operator=(LPCSTR lpsz);
    CString& operator=(char ch);

    int GetLength() const noexcept;
    BOOL IsEmpty() const noexcept { return GetLength() == 0; }
    void Empty() noexcept;
    char GetAt(int nIndex) const { return m_pchData[nIndex]; }
    char operator[](int nIndex) const { return m_pchData[nIndex]; }
    void SetAt(int nIndex, char ch);
    operator LPCSTR() const noexcept { return m_pchData; }

    CString& operator+=(const CString& string);
    CString& operator+=(LPCSTR lpsz);
    CString& operator+=(char ch);
    friend AFX_API CString AFXAPI operator+(const CString& string1, const CString& string2);
    friend AFX_API CString AFXAPI operator+(const CString& string, LPCSTR lpsz);
    friend AFX_API CString AFXAPI operator+(LPCSTR lpsz, const CString& string);
    friend AFX_API CString AFXAPI operator+(const CString& string, char ch);

    int Compare(LPCSTR lpsz) const;       ///< byte values of whole characters
    int CompareNoCase(LPCSTR lpsz) const; ///< the same, case ignored
    int Collate(LPCSTR lpsz) const;       ///< by the user's locale

    CString Mid(int nFirst) const;
    CString Mid(int nFirst, int nCount) const;
    CString Left(int nCount) const;
    CString Right(int nCount) const;

    /// Position of the first match at or after \p nStart, in bytes; -1 when there is none.
    int Find(char ch, int nStart = 0) const;
    int Find(LPCSTR lpszSub, int nStart = 0) const;
    int ReverseFind(char ch) const;
    int FindOneOf(LPCSTR lpszCharSet) const;

    void MakeUpper();
    void MakeLower();
    void TrimLeft();
    void TrimRight();
    /// Replaces every \p lpszOld by \p lpszNew. \return the number of replacements.
    int Replace(LPCSTR lpszOld, LPCSTR lpszNew);

    /// Formats as sprintf does. Pass a CString argument as (LPCSTR).
    void AFX_CDECL Format(LPCSTR lpszFormat, ...) __attribute__((format(printf, 2, 3)));
    void AFX_CDECL Format(UINT nFormatID, ...);
    void FormatV(LPCSTR lpszFormat, va_list argList);

    /// Loads a string resource through the framework's resource chain. \return FALSE, leaving the string empty, when
    /// there is none.
    BOOL LoadString(UINT nID);

    /// A writable buffer of at least \p nMinBufLength characters and a terminator, the present text in it; follow with
    /// ReleaseBuffer.
    LPSTR GetBuffer(int nMinBufLength);
    LPSTR GetBufferSetLength(int nNewLength);
    /// Ends direct access; a length of -1 takes the text up to its terminator.
    void ReleaseBuffer(int nNewLength = -1);

private:
    LPSTR m_pchData; // behind a header with the reference count, the length and the capacity
};

inline bool operator==(const CString& s1, const CString& s2) { return s1.Compare(s2) == 0; }
inline bool operator==(const CString& s1, LPCSTR s2) { return s1.Compare(s2) == 0; }
inline bool operator<(const CString& s1, const CString& s2) { return s1.Compare(s2) < 0; }
inline bool operator<(const CString& s1, LPCSTR s2) { return s1.Compare(s2) < 0; }
inline bool operator>(const CString& s1, const CString& s2) { return s1.Compare(s2) > 0; }

/// Loads a string resource found through the resource chain. \param nMaxBuf size of \p lpszBuf in characters.
/// \return the number of characters copied, 0 when there is no such string.
AFX_API int AFXAPI AfxLoadString(UINT nID, LPSTR lpszBuf, UINT nMaxBuf = 256);

// ---------------------------------------------------------------------------------------------------------------------
// Exceptions: thrown as pointers; whoever catches one calls Delete()

class AFX_API CException : public CObject {
    DECLARE_DYNAMIC(CException)
public:
    /// \param bAutoDelete FALSE for an object that is not on the heap.
    explicit CException(BOOL bAutoDelete = TRUE) : m_bAutoDelete(bAutoDelete) {}
    void Delete();
    /// A text for the user, from the system where it has one. \return FALSE when there is none.
    virtual BOOL GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const;
    /// Shows the error's text, or string \p nMessageID when it has none. \return the button chosen.
    int ReportError(UINT nType = MB_OK, UINT nMessageID = 0);

private:
    BOOL m_bAutoDelete;
};

class AFX_API CMemoryException : public CException {
    DECLARE_DYNAMIC(CMemoryException)
public:
    explicit CMemoryException(BOOL bAutoDelete = FALSE) : CException(bAutoDelete) {}
    BOOL GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;
};

class AFX_API CResourceException : public CException {
    DECLARE_DYNAMIC(CResourceException)
public:
    explicit CResourceException(BOOL bAutoDelete = FALSE) : CException(bAutoDelete) {}
    BOOL GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;
};

/// Stops an operation whose failure the user has been told of already.
class AFX_API CUserException : public CException {
    DECLARE_DYNAMIC(CUserException)
public:
    explicit CUserException(BOOL bAutoDelete = FALSE) : CException(bAutoDelete) {}
};

class AFX_API CFileException : public CException {
    DECLARE_DYNAMIC(CFileException)
public:
    enum {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };
    explicit CFileException(int cause = none, LONG lOsError = -1, LPCSTR lpszFileName = nullptr);
    BOOL GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;
    /// The cause that stands for a system error code.
    static int AFXAPI OsErrorToException(LONG lOsError);
    static void AFXAPI ThrowOsError(LONG lOsError, LPCSTR lpszFileName = nullptr);

    int m_cause;
    LONG m_lOsError;
    CString m_strFileName;
};

[[noreturn]] AFX_API void AFXAPI AfxThrowMemoryException();
[[noreturn]] AFX_API void AFXAPI AfxThrowResourceException();
[[noreturn]] AFX_API void AFXAPI AfxThrowUserException();
[[noreturn]] AFX_API void AFXAPI AfxThrowFileException(int cause, LONG lOsError = -1, LPCSTR lpszFileName = nullptr);

// ---------------------------------------------------------------------------------------------------------------------
// Files

/// An unbuffered disk file. Open reports through its result; everything else throws CFileException*.
class AFX_API CFile : public CObject {
    DECLARE_DYNAMIC(CFile)
public:
    enum OpenFlags {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000,
        typeBinary = 0x8000
    };
    enum SeekPosition { begin = FILE_BEGIN, current = FILE_CURRENT, end = FILE_END };

    CFile() = default;
    CFile(LPCSTR lpszFileName, UINT nOpenFlags);
    ~CFile() override;

    /// \return FALSE on failure, \p pError (may be null) filled with the reason.
    virtual BOOL Open(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pError = nullptr);
    virtual UINT Read(void* lpBuf, UINT nCount); ///< bytes read, fewer than asked at the end of the file
    virtual void Write(const void* lpBuf, UINT nCount);
    virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom);
    ULONGLONG SeekToEnd() { return Seek(0, end); }
    virtual ULONGLONG GetPosition() const;
    virtual ULONGLONG GetLength() const;
    virtual void SetLength(ULONGLONG dwNewLen);
    virtual void Flush();
    virtual void Close();
    virtual void Abort(); ///< closes without reporting errors
    CString GetFilePath() const { return m_strFileName; }

    static void AFXAPI Remove(LPCSTR lpszFileName);
    static void AFXAPI Rename(LPCSTR lpszOldName, LPCSTR lpszNewName);

    HANDLE m_hFile = INVALID_HANDLE_VALUE;

private:
    CString m_strFileName;
};
