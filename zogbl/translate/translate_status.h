/// \file
/// The length of a translation file; statuses of translation where memory runs out.
#pragma once

#include <zogbl/translate.h>

constexpr DWORD kTableFileSize = 608;

/// What \p operation answers, or ZO_TRANSLATE_NO_MEMORY.
template <class OPERATION> DWORD OrNoMemory(OPERATION operation)
{
    try {
        return operation();
    } catch (CMemoryException* e) {
        e->Delete();
        return ZO_TRANSLATE_NO_MEMORY;
    }
}
