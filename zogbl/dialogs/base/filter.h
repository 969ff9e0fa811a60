/// \file
/// Filters of file dialogs, as the language libraries have them.
#pragma once

#include "dialog_resource.h"

/// A string of names and patterns, each with a '|' behind it, as the dialog takes it: each with a NUL. Throws
/// CMemoryException*.
inline CString LoadFilter(UINT id)
{
    CString filter = LoadText(id);
    for (int bar = filter.Find('|'); bar >= 0; bar = filter.Find('|', bar + 1))
        filter.SetAt(bar, '\0');
    return filter; // ends with a NUL of its own and the string's
}
