/// \file
/// Where the texts, dialogs and tables of the user's language are found.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// The module that holds a resource. Searched: the framework's resource chain, in the order told at CZoModuleLanguage;
/// its last link is the loaded language library. So a host can override a text and need not insert the language library
/// into the chain itself.
/// \return the framework's resource handle if no module has it: loading from it then fails in the usual way
ZOGBL_API HINSTANCE ZoGblFindResourceModule(LPCSTR name, LPCSTR type);

/// The module that holds a string, searched in the same order; null if none has it. A module with other strings of the
/// same block of 16 does not hide the string.
ZOGBL_API HINSTANCE ZoGblFindStringModule(UINT id);

/// Loads a string found in this way. \return FALSE, and \p text is empty, if there is none or memory has run out
ZOGBL_API BOOL ZoGblLoadString(UINT id, CString& text);

/// The address of a resource found in this way; null if no module has it. \p size, if not null, receives its size in
/// bytes, 0 if there is none. The data belongs to its module.
ZOGBL_API const void* ZoGblLockResource(LPCSTR name, LPCSTR type, DWORD* size = nullptr);
