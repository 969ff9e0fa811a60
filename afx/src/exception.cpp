#include <afxwin.h>

#include <cstring>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CMemoryException, CException)
IMPLEMENT_DYNAMIC(CResourceException, CException)
IMPLEMENT_DYNAMIC(CUserException, CException)
IMPLEMENT_DYNAMIC(CFileException, CException)

namespace {

// Made beforehand: where these are thrown there may be no memory for an exception.
CMemoryException g_memoryException;
CResourceException g_resourceException;
CUserException g_userException;

/// \p lpszError is terminated in any case, and holds as much of the text as there is room for.
BOOL SystemMessage(LONG code, LPSTR lpszError, UINT nMaxError)
{
    char text[512];
    if (code <= 0 ||
        FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                       nullptr, static_cast<DWORD>(code), 0, text, sizeof text, nullptr) == 0)
        text[0] = '\0';
    if (nMaxError > 0)
        lstrcpynA(lpszError, text, static_cast<int>(nMaxError));
    return text[0] != '\0';
}

} // namespace

void CException::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

BOOL CException::GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    if (nMaxError > 0)
        *lpszError = '\0';
    if (pnHelpContext != nullptr)
        *pnHelpContext = 0;
    return FALSE;
}

int CException::ReportError(UINT nType, UINT nMessageID)
{
    char text[512];
    if (GetErrorMessage(text, sizeof text))
        return AfxMessageBox(text, nType);
    return nMessageID != 0 ? AfxMessageBox(nMessageID, nType) : 0;
}

BOOL CMemoryException::GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT*) const
{
    return SystemMessage(ERROR_NOT_ENOUGH_MEMORY, lpszError, nMaxError);
}

BOOL CResourceException::GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT*) const
{
    return SystemMessage(ERROR_RESOURCE_NAME_NOT_FOUND, lpszError, nMaxError);
}

CFileException::CFileException(int cause, LONG lOsError, LPCSTR lpszFileName)
    : m_cause(cause), m_lOsError(lOsError), m_strFileName(lpszFileName)
{
}

BOOL CFileException::GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT*) const
{
    return SystemMessage(m_lOsError, lpszError, nMaxError);
}

int AFXAPI CFileException::OsErrorToException(LONG lOsError)
{
    switch (lOsError) {
    case ERROR_SUCCESS:
        return none;
    case ERROR_FILE_NOT_FOUND:
        return fileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_BAD_NETPATH:
        return badPath;
    case ERROR_TOO_MANY_OPEN_FILES:
        return tooManyOpenFiles;
    case ERROR_ACCESS_DENIED:
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
    case ERROR_WRITE_PROTECT:
        return accessDenied;
    case ERROR_INVALID_HANDLE:
        return invalidFile;
    case ERROR_CURRENT_DIRECTORY:
        return removeCurrentDir;
    case ERROR_CANNOT_MAKE:
        return directoryFull;
    case ERROR_NEGATIVE_SEEK:
    case ERROR_SEEK:
    case ERROR_SEEK_ON_DEVICE:
        return badSeek;
    case ERROR_CRC:
    case ERROR_SECTOR_NOT_FOUND:
    case ERROR_READ_FAULT:
    case ERROR_WRITE_FAULT:
        return hardIO;
    case ERROR_SHARING_VIOLATION:
        return sharingViolation;
    case ERROR_LOCK_VIOLATION:
        return lockViolation;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return diskFull;
    case ERROR_HANDLE_EOF:
        return endOfFile;
    default:
        return genericException;
    }
}

void AFXAPI CFileException::ThrowOsError(LONG lOsError, LPCSTR lpszFileName)
{
    if (lOsError != ERROR_SUCCESS)
        AfxThrowFileException(OsErrorToException(lOsError), lOsError, lpszFileName);
}

void AFXAPI AfxThrowMemoryException() { throw &g_memoryException; }
void AFXAPI AfxThrowResourceException() { throw &g_resourceException; }
void AFXAPI AfxThrowUserException() { throw &g_userException; }
void AFXAPI AfxThrowFileException(int cause, LONG lOsError, LPCSTR lpszFileName)
{
    throw new CFileException(cause, lOsError, lpszFileName);
}
