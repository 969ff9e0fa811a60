/// \file
/// The application's help file: the one implementation behind the main windows.
#pragma once

#include <afxwin.h>

CString ZoGetHelpFile();
BOOL ZoSetHelpFile(LPCSTR module, DWORD languageId);
void ZoRestoreHelpFile(LPCSTR name);
