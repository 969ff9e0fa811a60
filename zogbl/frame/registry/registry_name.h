/// \file
/// Which registry key a root and a path name: one key can have several names.
#pragma once

#include <afxcoll.h>

/// Sets \p below to whether a key is \p ancestor or lies below it, by whatever names the two are called. The key need
/// not be there: it lies where it would be made. \param oldCalls only those of Win32s are there \param way set to the
/// path that leads from \p ancestor to the key if it lies there, "\" before each part
/// \return 0, or the system's code. Throws CMemoryException*.
DWORD IsKeyAtOrBelow(HKEY root, LPCSTR path, HKEY ancestorRoot, LPCSTR ancestorPath, bool oldCalls, bool& below,
                     CString& way);
