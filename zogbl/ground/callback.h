/// \file
/// Functions that callers hand in.
#pragma once

#include <windows.h>

/// Whether a pointer that a caller gave leads to code. Null does not.
template <class FUNCTION> bool IsCode(FUNCTION* callback)
{
    return callback != nullptr && !IsBadCodePtr(reinterpret_cast<FARPROC>(reinterpret_cast<void*>(callback)));
}
