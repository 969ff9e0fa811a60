/// \file
/// Event logs: opening, backing up, clearing, and the entry points for writing.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

class CStringArray;

/// A file operation that failed, for ZoLogFileError. No function reads it yet.
struct FILEERRORDATA {
    DWORD dwSize; ///< of the structure, in bytes
};

/// An event log: a backup file of the system's event log on Windows NT, a plain file on other systems.
///
/// Operations return 0 on success, otherwise the system's error code right after the call that failed; 8: no memory.
/// Nothing is thrown. Not implemented: reading, and the log of a running system. Those operations return 0 and do not
/// touch their arguments; callers need not change when they are implemented.
///
/// A copy shares the handle, and each object closes its handle at its end. So only one of them may keep it: assign a
/// new log to the other one before, else the second closes a handle that may by then belong to something else.
class ZOGBL_API CZoGlobalEventLog {
public:
    CZoGlobalEventLog(); ///< reads the operating system's family
    CZoGlobalEventLog(const CZoGlobalEventLog&) = default;
    CZoGlobalEventLog& operator=(const CZoGlobalEventLog&) = default;
    virtual ~CZoGlobalEventLog(); ///< closes the log; this can change the thread's last error

    DWORD Open(const char* server, const char* source); ///< does nothing and returns 0
    /// Opens a log file and closes the one that was open. After a failure that one is still open.
    /// \param server only used on Windows NT; null: this machine
    /// \return 0 also if the system fails without an error code, and no log is open; this is prescribed
    DWORD OpenBackup(const char* server, const char* fileName);
    /// Copies the log to a file. If the file exists, Windows NT refuses; on other systems it is replaced.
    DWORD BackUp(const char* fileName);
    /// Empties the log. \param backupFileName null, or the file to copy it to before; if that fails, the log stays
    DWORD Clear(const char* backupFileName);
    /// Closes the log. It counts as closed even if that fails. A log that is not open gives the system's error for such
    /// a handle (6).
    DWORD Close();

    // Not implemented.
    DWORD Read(DWORD flags, DWORD offset, void* buffer, DWORD size, DWORD& bytesRead, DWORD& minNeeded);
    DWORD GetOldestRecord(DWORD& record);
    DWORD GetRecordCount(DWORD& count);

private:
    bool IsSystemLog() const;

    DWORD m_dwLogKind;   // the operating system's family: Windows NT's event log, or a file
    HANDLE m_hLog;       // null if closed
    CString m_csLogName; // the backup file opened last, with its whole path; empty if closed
};

/// A source of entries of an event log. Not implemented: all operations return 0 and do nothing.
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

/// Log a file operation that failed. Not implemented: they return 0 and do nothing.
ZOGBL_API DWORD ZoLogFileError(FILEERRORDATA* error, DWORD type, DWORD category, DWORD eventId);
ZOGBL_API DWORD ZoLogFileErrorData(FILEERRORDATA* error, DWORD type, DWORD category, DWORD eventId, void* data,
                                   DWORD dataSize);
