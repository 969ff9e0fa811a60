/// \file
/// The folder of the running program.
#pragma once

#include <afx.h>

/// A path beside the executable; empty when the executable has too long a path. Throws CMemoryException*.
inline CString BesideExecutable(LPCSTR name)
{
    char executable[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameA(nullptr, executable, sizeof executable);
    if (length == 0 || length >= sizeof executable)
        return {};
    const CString path(executable);
    return path.Left(path.ReverseFind('\\') + 1) + name;
}
