/// \file
/// Trace files that all processes of the suite share.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

/// Writes a log for people to a text file. All objects that open a trace of the same name, in any number of processes,
/// share a buffer and a lock, and the file if they run in one folder.
///
/// The first opener writes a start banner that describes system and module; the last one to close writes a stop banner.
///
///     CZoTrace trace;
///     const WORD level = CZoTrace::GetRegTraceLevel();
///     if (level > 0 && trace.Open("FaxServer", level, TRUE))
///         trace.Output("%s: %d pages\r\n", station, pages);
///
/// Of the name, only the ASCII letters and digits before the first "." count; "Zo" is put before them: "my app-2.exe"
/// writes to Zomyapp2.TRC in the folder of the process's executable. Only the name decides who shares buffer and lock.
/// If programs in two folders open a trace of the same name, each has a file of its own, but their text goes to the
/// file of the program that writes the buffer. Give such traces different names.
///
/// Text is in the system's code page. It gathers in the shared buffer of 8192 bytes, which is written to the file
///   - when the next text does not fit,
///   - by Flush and Close, and
///   - after every call if the level is 10 or more.
/// Other programs may read the file meanwhile.
///
/// If a process dies, the others write the buffer, its text included. If nobody else has the trace open, the buffer is
/// lost. Nobody is blocked. The dead process stays in the open count, so this trace gets no stop banner.
///
/// If a program is stopped while it holds the lock (in a debugger or suspended), all programs of the trace wait until
/// it goes on or ends, without a time limit. Failed writes to the file are not noticed.
///
/// Only one thread at a time may use an object. A copy shares the handles of its original: only one of the two may be
/// closed or destroyed.
class ZOGBL_API CZoTrace {
public:
    /// From this level on, all text is in the file when a call returns.
    static constexpr WORD kImmediateLevel = 10;
    /// Size limit of a file that is kept: if it is as large or larger, the first opener empties it.
    static constexpr DWORD kMostFileBytes = 0x100000;
    static constexpr int kMostTextLength = 511; ///< in bytes, of one Output; the rest is cut

    CZoTrace();
    CZoTrace(const CZoTrace&) = default;
    CZoTrace& operator=(const CZoTrace&) = default;
    virtual ~CZoTrace(); ///< closes

    /// Opens the trace or joins it. An open object stays as it is and returns TRUE.
    /// \param level stored for callers: 0 off, 1 on. Output does not test it; from kImmediateLevel on, every call
    /// writes to the file at once.
    /// \param append FALSE: the file is emptied. Only the first opener can do that; a joiner always appends.
    /// \return FALSE, with nothing left open, if a system object, the buffer, the file or memory is missing, or the
    /// path is too long. A joiner does not make a file: it fails if the file has been deleted.
    BOOL Open(const CString& name, WORD level, BOOL append);
    /// Leaves the trace. Clears the level and the pause switch; the time-stamp switch stays.
    void Close();

    /// While paused, Output, OutputBlock and Flush do nothing, and no banners are written. Close still writes the
    /// buffer to the file, because it may hold other processes' text.
    void Pause() { m_bPause = TRUE; }
    void Resume() { m_bPause = FALSE; }
    /// Whether each Output begins with the time since the start of the trace; on by default. An object that joined does
    /// not know this start: it writes the time since Windows started.
    void EnableTimeStamp(BOOL enable) { m_bTimeStamp = enable; }

    /// Sets the level of an open trace. 0 counts as 1, because an open trace is on.
    void SetLevel(WORD level);
    WORD GetLevel() const { return m_wLevel; } ///< 0 after Close

    /// Appends text, formatted as by wvsprintf, which knows fewer conversions than printf:
    ///
    ///     %[-][#][0][width][.precision][h or l]type    with a type of c C d i p s S u x X; and %%
    ///
    /// There is no floating point, no "%lld", no "*" as a width, and no "+" or blank as a flag. The text ends before
    /// any other conversion; the compiler accepts some, because it checks formats as for printf. The caller adds the
    /// line ends, "\r\n". The text of one call is never mixed with other text. A null format is no text.
    void AFX_CDECL Output(const char* format, ...) __attribute__((format(printf, 2, 3)));
    /// Appends a dump of \p length bytes, 16 to a line, printable characters as such. Null counts as no bytes. The
    /// bytes are copied first. If there is no memory for more than 1024 of them at once, other text may come in
    /// between.
    ///
    ///     (00:00:03.250) Block Print: 5 Bytes
    ///     A  B  0D 0A 00
    ///     (00:00:03.250) End Block Print
    void OutputBlock(const void* data, DWORD length);
    /// Writes the buffer to the file.
    void Flush();

    CString GetFileName() const; ///< full path; empty while closed
    DWORD GetOpenCount() const;  ///< objects of all processes that have this trace open; 0 while closed

    /// The level that the user chose: the number "FaxTrace" in the user's key (CZoVersionResource::GetCurrentUserKey of
    /// the executable); 0 if there is none.
    static WORD GetRegTraceLevel();
    /// Stores the user's choice. If it changed, posts GetNotifyMessage to all top-level windows. Without a registered
    /// product nothing happens; if the registry refuses, nothing is posted.
    static void SetRegTraceLevel(WORD level);
    /// Number of the registered message "CZoTRACE_NOTIFY". wParam is the old level, lParam the new one.
    static UINT GetNotifyMessage();

protected:
    /// "(hh:mm:ss.ttt) ", with more digits for the hours if necessary; empty if memory has run out.
    CString FormatRelativeTime() const;
    /// Waits for the lock of this trace, without a time limit. A thread may take it several times. If its owner dies,
    /// the next one gets it. \return FALSE if there is no lock: then do not touch the buffer
    BOOL LockMap() const;
    void UnlockMap() const;

private:
    struct SharedBlock;
    class Lock;
    class WithoutStamps;

    BOOL MapBlock(LPCSTR name);
    BOOL OpenTraceFile(BOOL isCreator, BOOL append);
    void Release();

    void WriteBanner(LPCSTR verb);
    void DescribeSystem();
    DWORD PendingBytes();
    void Append(const char* text, DWORD length);
    void AppendDump(const BYTE* bytes, DWORD count);
    void WritePending();

    BOOL m_bTimeStamp;
    BOOL m_bPause;
    HANDLE m_hMutex;
    HANDLE m_hMapping;
    SharedBlock* m_pBlock; // not null while open
    DWORD m_dwStartTicks;
    HANDLE m_hFile;
    CString m_csTraceName; // of the object that opened first; empty in those that joined
    CString m_csFileName;  // empty while closed
    WORD m_wLevel;
};
