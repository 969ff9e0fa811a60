/// \file
/// Application framework: exceptions. Included by afx.h.
///
/// They are thrown as pointers. Whoever catches one calls Delete().
#pragma once

#include <afxstr_.h>

class AFX_API CException : public CObject {
    DECLARE_DYNAMIC(CException)
public:
    /// \param bAutoDelete FALSE for an object that is not on the heap.
    explicit CException(BOOL bAutoDelete = TRUE) : m_bAutoDelete(bAutoDelete) {}
    void Delete();
    /// A text for the user: the system's, about what went wrong. This class has none, those derived from it have one
    /// always.
    /// \param lpszError has room for \p nMaxError characters with the terminator; of a longer text it gets whole ones.
    ///   Null, or 0: nothing is written
    /// \param pnHelpContext may be null; 0, for no text has a help context
    /// \return FALSE, with an empty text, when there is none
    virtual BOOL GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const;
    /// Shows the error's text. If it has none: string \p nMessageID; or, with 0, that something was not done.
    /// \return the button chosen
    virtual int ReportError(UINT nType = MB_OK, UINT nMessageID = 0);

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
    BOOL GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;
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
    /// \param lOsError the system's error code; the text is about it, or about the cause if there is none
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
