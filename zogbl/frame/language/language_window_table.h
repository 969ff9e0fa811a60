/// \file
/// The language-support windows of all processes of the suite, in memory that they share.
///
/// No lock guards the table: each access is short and made from a user-interface thread. Whatever another process left
/// in it is checked before use. A process that dies leaves its row behind; when the table is full, the row is used
/// again.
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

/// Enters a window in the row of the calling process, which is made if needed: behind the others, or in a full table in
/// the place of the first row whose process is surely gone. Handles that an earlier process of the same id left in the
/// row are dropped. Silently does nothing when 64 living processes or 256 windows of this one are listed already.
void ZoRegisterLanguageWindow(HWND window);
/// Takes a window out; the last one of a process takes the row along.
void ZoUnregisterLanguageWindow(HWND window);

/// Sends \p message to every window of every process, one after the other, with the language id and 1 for the last
/// window of a process, 0 for the others. Windows that are not their process's any more, as those of one that died, are
/// passed over. A process that hangs is waited for once, for two seconds; its messages wait until it goes on. When
/// processes or windows come or go meanwhile, none is missed, but some may be told again.
void ZoBroadcastLanguageChange(UINT message, DWORD languageId);
