#include <afx.h>

IMPLEMENT_DYNAMIC(CFile, CObject)

namespace {

CString FullPath(LPCSTR lpszFileName)
{
    char path[MAX_PATH];
    const DWORD length = GetFullPathNameA(lpszFileName, sizeof path, path, nullptr);
    return length > 0 && length < sizeof path ? path : lpszFileName;
}

} // namespace

CFile::CFile(LPCSTR lpszFileName, UINT nOpenFlags)
{
    CFileException e;
    if (!Open(lpszFileName, nOpenFlags, &e))
        AfxThrowFileException(e.m_cause, e.m_lOsError, e.m_strFileName);
}

CFile::~CFile() { Abort(); }

BOOL CFile::Open(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pError)
{
    static constexpr DWORD accessRights[] = {GENERIC_READ, GENERIC_WRITE, GENERIC_READ | GENERIC_WRITE, 0};
    DWORD sharing = 0;
    switch (nOpenFlags & 0x70) {
    case shareDenyWrite:
        sharing = FILE_SHARE_READ;
        break;
    case shareDenyRead:
        sharing = FILE_SHARE_WRITE;
        break;
    case shareDenyNone:
        sharing = FILE_SHARE_READ | FILE_SHARE_WRITE;
        break;
    default: // exclusive, and the compatibility mode that means the same to one process
        break;
    }
    DWORD disposition = OPEN_EXISTING;
    if ((nOpenFlags & modeCreate) != 0)
        disposition = (nOpenFlags & modeNoTruncate) != 0 ? OPEN_ALWAYS : CREATE_ALWAYS;
    SECURITY_ATTRIBUTES inheritance = {sizeof inheritance, nullptr, (nOpenFlags & modeNoInherit) == 0};

    Abort();
    m_strFileName = FullPath(lpszFileName);
    m_hFile = CreateFileA(lpszFileName, accessRights[nOpenFlags & 3], sharing, &inheritance, disposition,
                          FILE_ATTRIBUTE_NORMAL, nullptr);
    if (m_hFile != INVALID_HANDLE_VALUE)
        return TRUE;
    if (pError != nullptr) {
        pError->m_lOsError = static_cast<LONG>(GetLastError());
        pError->m_cause = CFileException::OsErrorToException(pError->m_lOsError);
        pError->m_strFileName = lpszFileName;
    }
    m_strFileName.Empty();
    return FALSE;
}

UINT CFile::Read(void* lpBuf, UINT nCount)
{
    DWORD read = 0;
    if (nCount > 0 && !ReadFile(m_hFile, lpBuf, nCount, &read, nullptr))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    return read;
}

void CFile::Write(const void* lpBuf, UINT nCount)
{
    DWORD written = 0;
    if (nCount == 0)
        return;
    if (!WriteFile(m_hFile, lpBuf, nCount, &written, nullptr))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    if (written != nCount) // a write cut short is how some systems report a full disk
        AfxThrowFileException(CFileException::diskFull, ERROR_DISK_FULL, m_strFileName);
}

// The calls that take 64 bits at once came after Windows NT 4. In these, 32 ones are a failure only with an error code.

ULONGLONG CFile::Seek(LONGLONG lOff, UINT nFrom)
{
    LARGE_INTEGER position;
    position.QuadPart = lOff;
    SetLastError(ERROR_SUCCESS);
    position.LowPart = SetFilePointer(m_hFile, static_cast<LONG>(position.LowPart), &position.HighPart, nFrom);
    if (position.LowPart == INVALID_SET_FILE_POINTER)
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    return static_cast<ULONGLONG>(position.QuadPart);
}

ULONGLONG CFile::GetPosition() const { return const_cast<CFile*>(this)->Seek(0, current); }

ULONGLONG CFile::GetLength() const
{
    ULARGE_INTEGER size;
    SetLastError(ERROR_SUCCESS);
    size.LowPart = GetFileSize(m_hFile, &size.HighPart);
    if (size.LowPart == INVALID_FILE_SIZE)
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    return size.QuadPart;
}

void CFile::SetLength(ULONGLONG dwNewLen)
{
    Seek(static_cast<LONGLONG>(dwNewLen), begin);
    if (!SetEndOfFile(m_hFile))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
}

void CFile::Flush()
{
    if (m_hFile != INVALID_HANDLE_VALUE && !FlushFileBuffers(m_hFile))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
}

void CFile::Close()
{
    const HANDLE file = m_hFile;
    const CString name = m_strFileName;
    m_hFile = INVALID_HANDLE_VALUE;
    m_strFileName.Empty();
    if (file != INVALID_HANDLE_VALUE && !CloseHandle(file))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), name);
}

void CFile::Abort()
{
    if (m_hFile != INVALID_HANDLE_VALUE)
        CloseHandle(m_hFile);
    m_hFile = INVALID_HANDLE_VALUE;
    m_strFileName.Empty();
}

void AFXAPI CFile::Remove(LPCSTR lpszFileName)
{
    if (!DeleteFileA(lpszFileName))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), lpszFileName);
}

void AFXAPI CFile::Rename(LPCSTR lpszOldName, LPCSTR lpszNewName)
{
    if (!MoveFileA(lpszOldName, lpszNewName))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), lpszOldName);
}
