/// \file
/// Where the texts, dialogs and tables of the user's language are found.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// The module that holds a resource: the framework's resource chain first, then the loaded language library, so that a
/// host may override a text and need not insert the language library into the chain itself.
/// \return the framework's resource handle when nobody has it, so that loading from it fails in the usual way.
ZOGBL_API HINSTANCE ZoGblFindResourceModule(LPCSTR name, LPCSTR type);

/// The module that holds a string, looked for in the same order; null when nobody has it. A module that has other
/// strings of the same block of 16 does not hide it.
ZOGBL_API HINSTANCE ZoGblFindStringModule(UINT id);

/// Loads a string found that way. \return FALSE, with \p text empty, when there is none or memory has run out.
ZOGBL_API BOOL ZoGblLoadString(UINT id, CString& text);

/// The address of a resource found that way and, if \p size is not null, its size in bytes. The data belongs to its
/// module. \return null when nobody has it.
ZOGBL_API const void* ZoGblLockResource(LPCSTR name, LPCSTR type, DWORD* size = nullptr);
