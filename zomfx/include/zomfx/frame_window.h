/// \file
/// Main windows of the suite, which know the application's help file in the user's language.
#pragma once

#include <zomfx/export.h>

#include <afxext.h>

/// A main window with a help file.
///
/// The help file in force is the application object's (CWinApp::m_pszHelpFilePath), one for the whole program: a window
/// changes it for all. Nothing is thrown.
class ZOMFX_API CZoFrameWnd : public CFrameWnd {
    DECLARE_DYNCREATE(CZoFrameWnd)
public:
    /// The help file in force; empty when there is none, no application object, or no memory.
    CString GetHelpFile() const;
    /// Puts the help file of a module in a language in force: the first five characters of the module's name, the
    /// language's three letters as the system names them, and ".HLP", beside the running program. Whether there is such
    /// a file is not asked.
    /// \param module the module's file name, with or without a path
    /// \return FALSE, with the help file as it was, for a null or empty name, a language that the system has no letters
    /// for, a path too long for the system, or when memory has run out
    BOOL SetHelpFile(LPCSTR module, DWORD languageId);
    /// Puts back what GetHelpFile answered; empty for none. The help file stays as it is when memory has run out.
    void RestoreHelpFile(const CString& name);
};

/// A main window with documents in windows of their own, and a help file as CZoFrameWnd has it.
class ZOMFX_API CZoMDIFrameWnd : public CMDIFrameWnd {
    DECLARE_DYNCREATE(CZoMDIFrameWnd)
public:
    CString GetHelpFile() const;                       ///< as CZoFrameWnd::GetHelpFile
    BOOL SetHelpFile(LPCSTR module, DWORD languageId); ///< as CZoFrameWnd::SetHelpFile
    void RestoreHelpFile(const CString& name);         ///< as CZoFrameWnd::RestoreHelpFile
};
