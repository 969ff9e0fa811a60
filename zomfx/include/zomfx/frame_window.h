/// \file
/// Main windows that set the application's help file to the one in the user's language.
#pragma once

#include <zomfx/export.h>

#include <afxext.h>

/// A main window that sets the help file. Nothing is thrown.
///
/// The help file in force is that of the application object (CWinApp::m_pszHelpFilePath). There is one for the whole
/// program: a window changes it for all windows.
class ZOMFX_API CZoFrameWnd : public CFrameWnd {
    DECLARE_DYNCREATE(CZoFrameWnd)
public:
    /// The help file in force; empty if there is none, no application object, or no memory.
    CString GetHelpFile() const;
    /// Puts the help file of a module in a language in force. It lies beside the running program. Its name is the first
    /// five characters of the module's name, the three letters that the system has for the language, and ".HLP".
    /// Whether the file exists is not checked.
    /// \param module the module's file name, with or without a path
    /// \return FALSE, with the help file unchanged: there is no application object, the name is null or empty, the
    /// system has no letters for the language, the path is too long for the system, or memory has run out
    BOOL SetHelpFile(LPCSTR module, DWORD languageId);
    /// Puts back the file that GetHelpFile returned; empty: none. If memory has run out, the help file stays unchanged.
    void RestoreHelpFile(const CString& name);
};

/// A main window with documents in windows of their own, which sets the help file as CZoFrameWnd does.
class ZOMFX_API CZoMDIFrameWnd : public CMDIFrameWnd {
    DECLARE_DYNCREATE(CZoMDIFrameWnd)
public:
    CString GetHelpFile() const;                       ///< as CZoFrameWnd::GetHelpFile
    BOOL SetHelpFile(LPCSTR module, DWORD languageId); ///< as CZoFrameWnd::SetHelpFile
    void RestoreHelpFile(const CString& name);         ///< as CZoFrameWnd::RestoreHelpFile
};
