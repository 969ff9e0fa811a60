/// \file
/// Event logs: opening, backing up and clearing one, and the entry points for writing.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

class CStringArray;

/// A file operation that went wrong, for ZoLogFileError. Nothing reads it yet.
struct FILEERRORDATA {
    DWORD dwSize; ///< of the structure, in bytes
};

/// An event log: on Windows NT a backup file of the system's event log, elsewhere a plain file.
///
/// Operations return 0 on success, otherwise the system's error code right after the call that failed; 8 without
/// memory. Nothing is thrown. Reading and the log of a running system come to nothing yet: those operations return 0
/// and leave their arguments alone, so that callers need not change when they come.
///
/// A copy shares the handle, and every object closes what it has when it goes. Only one of them may: assign a fresh log
/// to the other one before, or the second closes what by then may be somebody else's.
class ZOGBL_API CZoGlobalEventLog {
public:
    CZoGlobalEventLog(); ///< asks for the operating system's family
    CZoGlobalEventLog(const CZoGlobalEventLog&) = default;
    CZoGlobalEventLog& operator=(const CZoGlobalEventLog&) = default;
    virtual ~CZoGlobalEventLog(); ///< closes the log, and so may change the thread's last error

    DWORD Open(const char* server, const char* source); ///< does nothing and returns 0
    /// Opens a log file, closing the one that was open. After a failure that one is still open.
    /// \param server used on Windows NT only; null: this machine.
    DWORD OpenBackup(const char* server, const char* fileName);
    /// Copies the log to a file. Windows NT refuses one that exists, elsewhere it is replaced.
    DWORD BackUp(const char* fileName);
    /// Empties the log. \param backupFileName null, or where to copy it before: without a copy nothing is emptied.
    DWORD Clear(const char* backupFileName);
    /// Closes the log; it counts as closed even when that fails. A log that is not open gives the system's error for
    /// such a handle (6).
    DWORD Close();

    DWORD Read(DWORD flags, DWORD offset, void* buffer, DWORD size, DWORD& bytesRead, DWORD& minNeeded);
    DWORD GetOldestRecord(DWORD& record);
    DWORD GetRecordCount(DWORD& count);

private:
    bool IsSystemLog() const;

    DWORD m_dwLogKind;   // the operating system's family: Windows NT's event log, or a file
    HANDLE m_hLog;       // null when closed
    CString m_csLogName; // the backup file opened last, with its whole path; empty when closed
};

/// A source of entries of an event log. All operations return 0 and do nothing yet.
class ZOGBL_API CZoGlobalEventLogSource {
public:
    CZoGlobalEventLogSource() = default;
    CZoGlobalEventLogSource(const CZoGlobalEventLogSource&) = default;
    CZoGlobalEventLogSource& operator=(const CZoGlobalEventLogSource&) = default;
    virtual ~CZoGlobalEventLogSource(); ///< closes the source

    DWORD Open(const char* source);
    DWORD Close();
    DWORD AddEntry(const char* log, const char* source, const char* messageFile, DWORD types, const char* categoryFile,
                   DWORD categoryCount);
    DWORD RemoveEntry(const char* source);
    DWORD GetEntry(const char* source, CString& entry);
    DWORD Report(WORD type, WORD category, DWORD eventId, WORD stringCount, const char** strings, DWORD dataSize,
                 void* data);
    DWORD Report(WORD type, WORD category, DWORD eventId, CStringArray* strings, DWORD dataSize, void* data);

private:
    LONG m_lHandle = 0;
};

/// Log a file operation that went wrong. They return 0 and do nothing yet.
ZOGBL_API DWORD ZoLogFileError(FILEERRORDATA* error, DWORD type, DWORD category, DWORD eventId);
ZOGBL_API DWORD ZoLogFileErrorData(FILEERRORDATA* error, DWORD type, DWORD category, DWORD eventId, void* data,
                                   DWORD dataSize);
