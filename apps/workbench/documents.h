/// \file
/// The Workbench's documents: their types come from the installed template libraries, their windows stand in a shell
/// window of their own.
#pragma once

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
    HWND m_shell = nullptr;
};
