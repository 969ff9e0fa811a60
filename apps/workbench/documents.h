/// \file
/// The Workbench's documents: their types come from the installed template libraries, their windows stand in a shell
/// window of their own.
#pragma once

#include "recent_files.h"

#include <zogbl/brixel_access.h>

#include <afxwin.h>

class Documents {
public:
    explicit Documents(CWnd* owner) : m_owner(owner) {}
    ~Documents(); ///< closes the documents and frees the template libraries
    Documents(const Documents&) = delete;
    Documents& operator=(const Documents&) = delete;

    void New();        ///< lets the user choose a type, and makes a document of it
    void AskAndOpen(); ///< lets the user choose a file, and opens it; shows it if it is open
    /// Opens a file, by the type of its name or the one that the user chooses; shows it if it is open. It is kept among
    /// the recent files. \return FALSE: it is not open; the user knows why
    BOOL OpenPath(const CString& path);
    /// Opens a recent file. If it is gone, the user is asked whether to forget it.
    void OpenRecent(UINT command);
    RecentFiles& GetRecent() { return m_recent; }
    /// The files that are open, with their types, in a form to be kept.
    static void ListOpen(CStringArray& entries);
    /// Opens what ListOpen has listed. \return a line with the path of each that could not be opened
    CString OpenListed(const CStringArray& entries);
    /// Where files are looked for first; empty: the dialog decides.
    void SetFolder(LPCSTR folder) { m_folder = folder; }
    /// Tells all views of a hint.
    static void UpdateViews(LPARAM hint);

    /// Opens a file, or with null a new document. \return null on failure
    CDocument* Open(CDocTemplate* type, LPCSTR path);
    /// Shows all texts in the present language.
    void ReloadTexts();

    /// Loads the template libraries, once. \return whether there are any
    BOOL LoadTypes();
    INT_PTR GetTypeCount() const { return m_access.GetModuleCount(); }
    CZoTemplateDLLModule* GetModule(INT_PTR index) const { return m_access.GetModule(index); }
    HWND GetShell() const { return ::IsWindow(m_shell) ? m_shell : nullptr; } ///< null when it is not open

private:
    BOOL ShowShell();

    CWnd* m_owner;
    CZoBrixelAccess m_access;
    RecentFiles m_recent;
    CString m_folder;
    HWND m_shell = nullptr;
};
