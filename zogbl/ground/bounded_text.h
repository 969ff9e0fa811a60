/// \file
/// Texts in buffers of fixed size.
#pragma once

#include <common/double_byte.h>

#include <windows.h>

#include <cstring>

/// Copies as much of \p text as fits in \p size bytes with a terminator. A character of two bytes is copied whole or
/// not at all. \p size must not be 0.
inline void CopyBounded(LPSTR buffer, size_t size, LPCSTR text)
{
    size_t used = 0;
    while (text[used] != '\0') {
        const size_t width = CharacterWidth(text + used);
        if (used + width >= size)
            break;
        for (size_t end = used + width; used < end; ++used)
            buffer[used] = text[used];
    }
    buffer[used] = '\0';
}

/// What a buffer holds before a text is read into it, and after a failure: the default, cut to fit, or zeros over its
/// whole size when that is null. \p size must not be 0.
inline void FillWithDefault(LPSTR buffer, size_t size, LPCSTR defaultText)
{
    if (defaultText == nullptr)
        std::memset(buffer, 0, size);
    else
        CopyBounded(buffer, size, defaultText);
}
