/// \file
/// The Workbench's options.
#pragma once

#include "../document_settings.h"

#include <afxwin.h>

/// The answer to the question whether to leave, which can be given once and for all.
constexpr LPCSTR kLeaveQuestion = "WorkbenchLeave";

/// Opens the sheet of options. \return as DoModal; what was changed is kept then, and not yet in use
INT_PTR EditOptions(CWnd* owner);

/// Lets the user choose the font of documents. \return TRUE: he did, and \p settings has it; it is not kept yet
BOOL ChooseDocumentFont(CWnd* owner, DocumentSettings& settings);

/// Tells the user why something could not be kept. \param text a string with the status in it; 0 as \p status: nothing
void TellStatus(UINT text, DWORD status);
