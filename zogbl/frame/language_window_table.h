/// \file
/// The language-support windows of all processes of the suite, in memory that they share.
///
/// No lock guards the table: each access is short and made from a user-interface thread. Whatever another process left
/// in it is checked before use. A process that dies leaves its row behind.
#pragma once

#include <windows.h>

constexpr LONG kLanguageWindowRows = 64;
constexpr LONG kLanguageWindowsPerRow = 256;

struct ZoLanguageWindowRow {
    DWORD processId;
    LONG windowCount;                      ///< handles in use, from the start
    DWORD windows[kLanguageWindowsPerRow]; ///< window handles, of 32 bits on every system
};

struct ZoLanguageWindowTable {
    LONG rowCount; ///< rows in use, from the start and without gaps
    DWORD reserved;
    ZoLanguageWindowRow rows[kLanguageWindowRows];
};

static_assert(sizeof(ZoLanguageWindowRow) == 1032);
static_assert(sizeof(ZoLanguageWindowTable) == 8 + 64 * 1032);

/// The shared table itself.
ZoLanguageWindowTable& ZoGetLanguageWindowTable();

/// Enters a window in the row of the calling process, which is made if needed. Silently does nothing when 64 processes
/// or 256 windows of this one are listed already.
void ZoRegisterLanguageWindow(HWND window);
/// Takes a window out; the last one of a process takes the row along.
void ZoUnregisterLanguageWindow(HWND window);

/// Sends \p message to every window of every process, one after the other, with the language id and 1 for the last window
/// of a process, 0 for the others. Windows that are not their process's any more, as those of one that died, are passed
/// over.
void ZoBroadcastLanguageChange(UINT message, DWORD languageId);
