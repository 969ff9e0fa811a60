/// \file
/// Texts of unknown length.
#pragma once

#include <afx.h>

/// Reads a text into ever more room until it fits. \param read \code void read(LPSTR buffer, int room) \endcode writes
/// at most \p room bytes; a text that is cut need not have a zero at its end
template <class READ> CString GrowingText(READ read)
{
    constexpr int kMost = 1 << 20;
    CString text;
    for (int room = 128;; room *= 2) {
        LPSTR buffer = text.GetBuffer(room);
        buffer[0] = '\0';
        buffer[room] = '\0';
        read(buffer, room);
        text.ReleaseBuffer();
        if (text.GetLength() < room - 2 || room >= kMost) // a double character may not fit the end
            return text;
    }
}
