/// \file
/// Texts of the framework extensions, from the source in force.
#pragma once

#include <afxwin.h>

/// \return FALSE, with \p text empty, when there is none or memory has run out.
BOOL ZoMfxLoadString(UINT id, CString& text);
