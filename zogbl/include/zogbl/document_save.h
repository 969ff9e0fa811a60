/// \file
/// How the suite's documents get their names and are saved: in place of the framework's own functions.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// Asks for the name of a document's file in the suite's dialog for files (CZoFileOpen).
///
/// The types offered are that of \p tmpl alone, whose extension is then the default one; or, without one, those of all
/// document templates of \p app that have a filter name and an extension, with one of all their extensions together
/// before them if there are several. All files are offered last, in any case.
/// \param fileName what to begin with, and the path chosen; as it was unless the result is 1.
/// \param titleId string of the dialog's title; 0: string ZO_IDS_PROMPT_TITLE
/// \param flags OFN_ flags, added to OFN_HIDEREADONLY and OFN_OVERWRITEPROMPT
/// \param openDialog 0: the name is for saving
/// \param tmpl, app may be null
/// \return 1 when the user chose a name, else 0; also when memory has run out.
ZOGBL_API int ZoDoPromptFileName(CString& fileName, unsigned int titleId, unsigned long flags, int openDialog,
                                 CDocTemplate* tmpl, CWinApp* app);

/// Saves a document; the body of an override of CDocument::DoSave.
///
/// Without \p pathName the user is asked for a name. What is offered is \p currentPath; or, with \p replace and for a
/// document that has none, \p title: its first 8 bytes, up to the first blank or one of # % ; / \, with the extension of
/// the document's type. A title is so no name that an old file system would refuse.
///
/// After a failed save under a name that was asked for (\p pathName null, not just empty) the file under it is deleted if
/// this save has made it, or has emptied the one that was there: it is no document. Any other file stays as the document
/// left it: one that saving never touched, and one that was there and holds something still.
///
/// An exception of OnSaveDocument is told to the user, unless it is a CUserException; a document that returns FALSE has
/// told why.
/// \param pathName null or empty: ask
/// \param replace 0: a copy is saved, and the document keeps its name; else the new one becomes its own
/// \return 1 when it is saved; 0 when not, or the user gave up.
ZOGBL_API int ZoDoSave(CDocument* doc, const char* pathName, const char* currentPath, const char* title, int replace);

/// Whether two paths lead to one file, however each is spelled: by another letter of the drive, a short name, a link. Asks
/// the system; FALSE when it cannot tell, or one of them leads nowhere.
ZOGBL_API BOOL ZoIsSameFile(const char* first, const char* second);
