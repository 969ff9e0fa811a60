#include <afxwin.h>

#include <common/double_byte.h>

#include <cstring>
#include <iterator>

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

/// What the system has to say about an error code: nothing about some. \return the length of the text
size_t SystemText(LONG code, char (&text)[512])
{
    text[0] = '\0';
    if (code > 0)
        FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                       nullptr, static_cast<DWORD>(code), 0, text, sizeof text, nullptr);
    size_t length = std::strlen(text);
    while (length > 0 && text[length - 1] == ' ') // in the place of a line's end
        text[--length] = '\0';
    return length;
}

/// Gives the text about the first of two error codes that the system has one about. \p lpszError holds as many whole
/// characters of it as there is room for, and is terminated in any case.
BOOL DescribeError(LONG code, LONG insteadOf, LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext)
{
    if (pnHelpContext != nullptr)
        *pnHelpContext = 0;
    char text[512];
    if (SystemText(code, text) == 0 && SystemText(insteadOf, text) == 0)
        wsprintfA(text, "Error %ld", code > 0 ? code : insteadOf);
    if (lpszError == nullptr || nMaxError == 0)
        return TRUE;
    size_t shown = 0;
    while (text[shown] != '\0' && shown + CharacterWidth(text + shown) < nMaxError)
        shown += CharacterWidth(text + shown);
    std::memcpy(lpszError, text, shown);
    lpszError[shown] = '\0';
    return TRUE;
}

/// The system's error codes that stand for the causes of a CFileException, in their order.
constexpr LONG kErrorsOfCauses[] = {
    ERROR_CAN_NOT_COMPLETE,    ERROR_CAN_NOT_COMPLETE,
    ERROR_FILE_NOT_FOUND,      ERROR_PATH_NOT_FOUND,
    ERROR_TOO_MANY_OPEN_FILES, ERROR_ACCESS_DENIED,
    ERROR_INVALID_HANDLE,      ERROR_CURRENT_DIRECTORY,
    ERROR_CANNOT_MAKE,         ERROR_SEEK,
    ERROR_IO_DEVICE,           ERROR_SHARING_VIOLATION,
    ERROR_LOCK_VIOLATION,      ERROR_DISK_FULL,
    ERROR_HANDLE_EOF,
};
static_assert(std::size(kErrorsOfCauses) == CFileException::endOfFile + 1);

} // namespace

void CException::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

BOOL CException::GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    if (lpszError != nullptr && nMaxError > 0)
        *lpszError = '\0';
    if (pnHelpContext != nullptr)
        *pnHelpContext = 0;
    return FALSE;
}

int CException::ReportError(UINT nType, UINT nMessageID)
{
    char text[512];
    if (!GetErrorMessage(text, sizeof text)) {
        if (nMessageID != 0)
            return AfxMessageBox(nMessageID, nType);
        DescribeError(ERROR_CAN_NOT_COMPLETE, 0, text, sizeof text, nullptr);
    }
    return AfxMessageBox(text, nType);
}

BOOL CMemoryException::GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    return DescribeError(ERROR_NOT_ENOUGH_MEMORY, ERROR_OUTOFMEMORY, lpszError, nMaxError, pnHelpContext);
}

BOOL CResourceException::GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    return DescribeError(ERROR_RESOURCE_NAME_NOT_FOUND, ERROR_RESOURCE_DATA_NOT_FOUND, lpszError, nMaxError,
                         pnHelpContext);
}

BOOL CUserException::GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    return DescribeError(ERROR_CANCELLED, ERROR_CAN_NOT_COMPLETE, lpszError, nMaxError, pnHelpContext);
}

CFileException::CFileException(int cause, LONG lOsError, LPCSTR lpszFileName)
    : m_cause(cause), m_lOsError(lOsError), m_strFileName(lpszFileName)
{
}

BOOL CFileException::GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    const bool isKnown = m_cause >= none && m_cause <= endOfFile;
    return DescribeError(m_lOsError, kErrorsOfCauses[isKnown ? m_cause : genericException], lpszError, nMaxError,
                         pnHelpContext);
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
