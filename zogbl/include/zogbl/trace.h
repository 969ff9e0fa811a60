/// \file
/// Trace files that all processes of the suite share.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

/// Writes a log for people to a text file. All objects, in any number of processes, that open a trace of one name share
/// its file, a buffer and a lock. The first opener writes a start banner with what system and module it is; the last one
/// to close writes a stop banner.
///
///     CZoTrace trace;
///     const WORD level = CZoTrace::GetRegTraceLevel();
///     if (level > 0 && trace.Open("FaxServer", level, TRUE))
///         trace.Output("%s: %d pages\r\n", station, pages);
///
/// A trace is named by what stands before the first "." of the name, letters and digits of ASCII only, with "Zo" before
/// it: "my app-2.exe" writes to Zomyapp2.TRC, in the folder of the process's executable. Buffer and lock go by the name
/// alone: programs of two folders that open a trace of one name share them, each with a file of its own, and their text
/// goes to the file of whichever writes the buffer. Give such traces different names. Text is in the system's code page
/// and gathers in 8192 shared bytes, which are written to the file when the next text does not fit, by Flush and Close,
/// and after every call when the level is 10 or more. Other programs may read the file meanwhile.
///
/// A process that dies takes nothing of the others' text along, and none of its own that is in the buffer already,
/// unless nobody else has the trace open: then the buffer is gone. It blocks nobody. Its part of the open count stays,
/// so that such a trace gets no stop banner. A program that is stopped while it holds the lock, in a debugger or
/// suspended, holds up all programs of the trace until it goes on or ends: waiting for the lock has no time limit.
/// Failed writes to the file are not noticed.
///
/// One object is to be used by one thread at a time. A copy shares the handles of its original: only one of the two
/// may be closed or destroyed.
class ZOGBL_API CZoTrace {
public:
    /// At this level and above, everything is in the file when a call returns.
    static constexpr WORD kImmediateLevel = 10;
    /// Size limit that the first opener of a kept file enforces: one as large, or larger, begins anew.
    static constexpr DWORD kMostFileBytes = 0x100000;
    static constexpr int kMostTextLength = 511; ///< in bytes, of one Output; more is cut

    CZoTrace();
    CZoTrace(const CZoTrace&) = default;
    CZoTrace& operator=(const CZoTrace&) = default;
    virtual ~CZoTrace(); ///< closes

    /// Opens the trace or joins it. An object that is open already stays as it is and answers TRUE.
    /// \param level 0 means off and 1 on, but that is for callers to go by: Output does not look at it. From
    /// kImmediateLevel on every call writes to the file at once.
    /// \param append FALSE empties the file. Only the first opener can: a joiner appends in any case.
    /// \return FALSE, with nothing left open, when a system object, the buffer or the file cannot be had. A joiner does
    /// not make a file: it fails when the file has been deleted.
    BOOL Open(const CString& name, WORD level, BOOL append);
    /// Leaves the trace. Level and pause switch are cleared, the time-stamp switch is kept.
    void Close();

    /// While paused, Output, OutputBlock and Flush do nothing, and banners are not written. Close still writes to the
    /// file what is in the buffer: it may be other processes' text.
    void Pause() { m_bPause = TRUE; }
    void Resume() { m_bPause = FALSE; }
    /// Whether each Output begins with the time since the start of the trace; at first it does. In objects that joined,
    /// which do not know that start, it is the time since the start of the system.
    void EnableTimeStamp(BOOL enable) { m_bTimeStamp = enable; }

    /// Of an open trace; a level of 0 is taken as 1, for an open trace is on.
    void SetLevel(WORD level);
    WORD GetLevel() const { return m_wLevel; } ///< 0 after Close

    /// Appends text, formatted as wvsprintf does, which takes fewer conversions than printf:
    ///
    ///     %[-][#][0][width][.precision][h or l]type    with a type of c C d i p s S u x X; and %%
    ///
    /// No floating point, no "%lld", no "*" for a width, no "+" or blank as a flag. The text ends before a conversion
    /// of another kind, though the compiler, which checks formats as for printf, lets it pass. The caller supplies line
    /// ends, as "\r\n". The text of one call is never mixed with another's. A null format is no text.
    void AFX_CDECL Output(const char* format, ...) __attribute__((format(printf, 2, 3)));
    /// Appends a dump of \p length bytes, 16 to a line, printable characters as such. Null counts as no bytes. The
    /// bytes are copied first; if there is no memory for more than 1024 of them at a time, others' text may come in
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

    /// The level that the user chose: the number "FaxTrace" of the user's key (CZoVersionResource::GetCurrentUserKey of
    /// the executable). 0 when there is none.
    static WORD GetRegTraceLevel();
    /// Stores the user's choice and, if it changed, posts GetNotifyMessage to all top-level windows. Without a
    /// registered product nothing happens, and nothing is posted when the registry refuses.
    static void SetRegTraceLevel(WORD level);
    /// Number of the registered message "CZoTRACE_NOTIFY": wParam is the old level, lParam the new one.
    static UINT GetNotifyMessage();

protected:
    /// "(hh:mm:ss.ttt) ", with more digits for the hours if need be. Empty when memory has run out.
    CString FormatRelativeTime() const;
    /// Waits for the lock of this trace, as long as it takes; a thread may take it several times. It passes to the next
    /// when its owner dies. \return FALSE when there is no lock to be had: then the buffer must not be touched.
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
