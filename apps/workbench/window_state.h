/// \file
/// The windows of last time.
#pragma once

#include <afxwin.h>

struct WindowState {
    static constexpr int kMostDocuments = 16;

    CRect place; ///< of the main window, when it is not maximised; empty: none is kept
    BOOL isMaximized = FALSE;
    int page = 0;           ///< shown, from 0
    CStringArray documents; ///< those that were open, as Documents::ListOpen lists them; the first kMostDocuments
};

/// \param pages how many there are
/// \return FALSE: nothing is kept, or it is damaged; \p state is as at the beginning then
BOOL LoadWindowState(WindowState& state, int pages);
/// \return 0 or the registry's status
DWORD SaveWindowState(const WindowState& state);
