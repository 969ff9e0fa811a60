/// \file
/// What a user wants of a program's windows, kept for the next start.
#pragma once

#include <zogbl/export.h>

#include <windows.h>

/// A program reads it at its start and whenever CZoWorkspacePage has changed it; what the user changes elsewhere, a
/// command that hides the tool bar for instance, the program saves itself. The novice mode is no part of it: see
/// ZoGblGetRegNoviceMode.
///
///     ZoWorkspace workspace;
///     ZoLoadWorkspace(workspace);
///     ShowControlBar(&m_toolBar, workspace.toolBar, FALSE);
struct ZoWorkspace {
    static constexpr int MOST_RECENT = 16;

    BOOL restoreWindows = TRUE; ///< start with the windows of last time
    BOOL confirmLeaving = TRUE;
    BOOL toolBar = TRUE;
    BOOL statusBar = TRUE;
    int recentFiles = 4;        ///< in the menu: 0 to MOST_RECENT
    char folder[MAX_PATH] = ""; ///< a full path, where files are looked for first; empty: the program chooses
};

/// Reads what is kept for this user, for all programs of the product: in the key "Workspace" below the user's. What is
/// missing, as in a record of an older version, or damaged has its default.
/// \return FALSE: nothing is kept, or it is damaged
ZOGBL_API BOOL ZoLoadWorkspace(ZoWorkspace& workspace);
/// \return 0; ERROR_INVALID_PARAMETER for a number out of bounds; else the registry's status, or ERROR_FILE_NOT_FOUND
/// without a product, ERROR_NOT_ENOUGH_MEMORY. After a failure a part may have been kept
ZOGBL_API DWORD ZoSaveWorkspace(const ZoWorkspace& workspace);
