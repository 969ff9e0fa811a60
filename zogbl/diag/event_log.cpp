#include <zogbl/event_log.h>

#include <common/without_throwing.h>
#include <zogbl/global_error.h>
#include <zogbl/operating_system.h>

#include "ground/open_security.h"
#include "ground/system_handle.h"

#include <utility>

namespace {

/// The whole path of a file, so that its name still means the same file when the current folder has changed.
CString WholePath(const char* fileName)
{
    char path[MAX_PATH];
    char* name;
    const DWORD length = GetFullPathNameA(fileName, sizeof path, path, &name);
    return length > 0 && length < sizeof path ? path : fileName;
}

/// \return null on failure, with the reason as last error.
HANDLE OpenLogFile(const char* fileName)
{
    OpenSecurity security;
    if (!security.Initialize())
        return nullptr;
    const HANDLE file = CreateFileA(fileName, GENERIC_READ, kSharedByAll, security.Attributes(), OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    return file != INVALID_HANDLE_VALUE ? file : nullptr;
}

/// Cuts a file that is open elsewhere, for reading only, down to nothing.
DWORD EmptyLogFile(const char* fileName)
{
    SystemHandle file(CreateFileA(fileName, GENERIC_WRITE, kSharedByAll, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!file.IsOpen())
        return CZoGlobalError::GetError();
    return file.CloseOverridingFailure(StatusOf(SetEndOfFile(file)));
}

} // namespace

CZoGlobalEventLog::CZoGlobalEventLog() : m_dwLogKind(CZoGlobalOperatingSystem::GetType()), m_hLog(nullptr) {}

CZoGlobalEventLog::~CZoGlobalEventLog() { Close(); }

bool CZoGlobalEventLog::IsSystemLog() const { return m_dwLogKind == ZO_OS_NT; }

DWORD CZoGlobalEventLog::Open(const char*, const char*) { return ERROR_SUCCESS; }

DWORD CZoGlobalEventLog::OpenBackup(const char* server, const char* fileName)
{
    CString name;
    if (!WithoutThrowing([&] { name = WholePath(fileName); }))
        return ERROR_NOT_ENOUGH_MEMORY;
    const HANDLE log = IsSystemLog() ? OpenBackupEventLogA(server, fileName) : OpenLogFile(fileName);
    if (log == nullptr) {
        const DWORD error = CZoGlobalError::GetError();
        if (error == ERROR_SUCCESS)
            m_csLogName = name; // no error counts as success, with or without a handle
        return error;
    }
    if (m_hLog != nullptr)
        Close();
    m_hLog = log;
    m_csLogName = name;
    return ERROR_SUCCESS;
}

DWORD CZoGlobalEventLog::BackUp(const char* fileName)
{
    return StatusOf(IsSystemLog() ? BackupEventLogA(m_hLog, fileName) : CopyFileA(m_csLogName, fileName, FALSE));
}

DWORD CZoGlobalEventLog::Clear(const char* backupFileName)
{
    if (IsSystemLog())
        return StatusOf(ClearEventLogA(m_hLog, backupFileName));
    if (backupFileName != nullptr) {
        const DWORD copied = BackUp(backupFileName);
        if (copied != ERROR_SUCCESS)
            return copied;
    }
    if (SetFilePointer(m_hLog, 0, nullptr, FILE_BEGIN) == INVALID_SET_FILE_POINTER)
        return CZoGlobalError::GetError();
    return EmptyLogFile(m_csLogName); // its own handle is for reading
}

DWORD CZoGlobalEventLog::Close()
{
    m_csLogName.Empty();
    const HANDLE log = std::exchange(m_hLog, nullptr);
    return StatusOf(IsSystemLog() ? CloseEventLog(log) : CloseHandle(log));
}

DWORD CZoGlobalEventLog::Read(DWORD, DWORD, void*, DWORD, DWORD&, DWORD&) { return ERROR_SUCCESS; }
DWORD CZoGlobalEventLog::GetOldestRecord(DWORD&) { return ERROR_SUCCESS; }
DWORD CZoGlobalEventLog::GetRecordCount(DWORD&) { return ERROR_SUCCESS; }

CZoGlobalEventLogSource::~CZoGlobalEventLogSource() { Close(); }

DWORD CZoGlobalEventLogSource::Open(const char*) { return ERROR_SUCCESS; }
DWORD CZoGlobalEventLogSource::Close() { return ERROR_SUCCESS; }
DWORD CZoGlobalEventLogSource::AddEntry(const char*, const char*, const char*, DWORD, const char*, DWORD)
{
    return ERROR_SUCCESS;
}
DWORD CZoGlobalEventLogSource::RemoveEntry(const char*) { return ERROR_SUCCESS; }
DWORD CZoGlobalEventLogSource::GetEntry(const char*, CString&) { return ERROR_SUCCESS; }
DWORD CZoGlobalEventLogSource::Report(WORD, WORD, DWORD, WORD, const char**, DWORD, void*) { return ERROR_SUCCESS; }
DWORD CZoGlobalEventLogSource::Report(WORD, WORD, DWORD, CStringArray*, DWORD, void*) { return ERROR_SUCCESS; }

DWORD ZoLogFileError(FILEERRORDATA*, DWORD, DWORD, DWORD) { return ERROR_SUCCESS; }
DWORD ZoLogFileErrorData(FILEERRORDATA*, DWORD, DWORD, DWORD, void*, DWORD) { return ERROR_SUCCESS; }
