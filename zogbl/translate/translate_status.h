/// \file
/// The length of a translation file; statuses of translation where memory runs out.
#pragma once

#include <common/without_throwing.h>
#include <zogbl/translate.h>

constexpr DWORD kTableFileSize = 608;

/// What \p operation answers, or ZO_TRANSLATE_NO_MEMORY.
template <class OPERATION> DWORD OrNoMemory(OPERATION operation) { return ResultOr(ZO_TRANSLATE_NO_MEMORY, operation); }
