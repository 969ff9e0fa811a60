/// \file
/// Texts and dialogs of the framework extensions, from the source in force.
#pragma once

#include <afxwin.h>

/// \return FALSE, with \p text empty, when there is none or memory has run out.
BOOL ZoMfxLoadString(UINT id, CString& text);
/// \return FALSE, with \p path as it was, when none is chosen or the source has no dialog for it.
BOOL ZoMfxAskForFile(CString& path, LPCSTR filter, CWnd* parent);
/// The suite's message box, or the system's if the source has none.
int ZoMfxMessageBox(HWND owner, LPCSTR text, LPCSTR title, UINT type);
/// \return null when there is no such dialog.
LPCDLGTEMPLATE ZoMfxLockDialog(UINT id);
