/// \file
/// The files that were last open, in the File menu.
#pragma once

#include <afxwin.h>

/// All Workbenches of a user share them: each reads them before it shows or changes them.
class RecentFiles {
public:
    void Load();
    /// Puts a file first. \return 0 or the registry's status
    DWORD Add(const CString& path);
    DWORD Remove(const CString& path); ///< \return as Add
    INT_PTR GetCount() const { return m_paths.GetSize(); }
    CString GetPath(UINT command) const; ///< of a command of the menu; empty if there is none
    /// Shows them in the menu that has the command \p before, in front of that one, with the commands from
    /// ZO_ID_RECENT_FIRST on; those shown before go. \param most how many, 0 to ZoWorkspace::MOST_RECENT
    void Show(HMENU menu, UINT before, int most) const;

private:
    DWORD Save() const;

    CStringArray m_paths; // the last one first
};
