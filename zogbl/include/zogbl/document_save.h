/// \file
/// Naming and saving documents, in place of the framework's own functions.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// Asks for the name of a document's file in the suite's dialog for files (CZoFileOpen). These types are offered:
///
///     with tmpl      its type, whose extension becomes the default one; none if it lacks a filter name or an extension
///     with app only  all extensions together, if several document templates have one; then the type of each template
///                    that has a filter name and an extension
///     always last    all files
///
/// \param fileName the name to begin with, then the path chosen; unchanged unless the result is 1
/// \param titleId string for the title; 0: string ZO_IDS_PROMPT_TITLE
/// \param flags OFN_ flags, added to OFN_HIDEREADONLY and OFN_OVERWRITEPROMPT
/// \param openDialog 0: the name is for saving
/// \param tmpl, app may be null
/// \return 1 if the user chose a name, else 0; 0 also if memory has run out
ZOGBL_API int ZoDoPromptFileName(CString& fileName, unsigned int titleId, unsigned long flags, int openDialog,
                                 CDocTemplate* tmpl, CWinApp* app);

/// Saves a document; the body of an override of CDocument::DoSave.
///
/// The user is asked for a name if \p pathName is null or empty. The dialog offers \p currentPath. If that is empty and
/// \p replace is not 0, it offers a name made of \p title: its first 8 bytes, up to the first blank, #, %, ;, / or
/// backslash, and the extension of the document's type. So even an old file system accepts the name.
///
/// If a save fails and \p pathName is null (not just empty), the file under the chosen name is deleted if this save has
/// made it, or has emptied a file that was there: it is no document. Any other file stays as the document left it: a
/// file that the save did not touch, an old file that still has content, and one about which the system cannot tell.
///
/// If OnSaveDocument throws, the user gets a message, unless it is a CUserException. If it returns FALSE, there is no
/// message: the document has told why.
/// \param doc null: nothing is saved
/// \param pathName null or empty: ask
/// \param currentPath, title may be null
/// \param replace 0: saves a copy, and the document keeps its name; else the new name becomes its own
/// \return 1 if the document is saved; 0 if not, or if the user gave up
ZOGBL_API int ZoDoSave(CDocument* doc, const char* pathName, const char* currentPath, const char* title, int replace);

/// Whether two paths lead to the same file, however they are spelled: by another drive letter, a short name, a link.
/// The system is asked, unless the texts differ in case only: then they do if anything is there.
/// \return FALSE also if the system cannot tell, or if one path leads nowhere
ZOGBL_API BOOL ZoIsSameFile(const char* first, const char* second);
