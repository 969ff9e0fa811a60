/// \file
/// Text on the clipboard.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstring>

/// \param owner a window of this thread \return FALSE: the clipboard is another program's now, or memory has run out
inline BOOL PutOnClipboard(HWND owner, LPCSTR text)
{
    const size_t size = std::strlen(text) + 1;
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, size);
    if (memory == nullptr || !::OpenClipboard(owner)) {
        ::GlobalFree(memory);
        return FALSE;
    }
    ::EmptyClipboard();
    std::memcpy(::GlobalLock(memory), text, size);
    ::GlobalUnlock(memory);
    const BOOL isPut = ::SetClipboardData(CF_TEXT, memory) != nullptr;
    if (!isPut)
        ::GlobalFree(memory); // else the clipboard's
    ::CloseClipboard();
    return isPut;
}

/// \param text of \p size bytes, its terminator included; gets at most so much
/// \return FALSE: there is no text, or the clipboard is another program's now
inline BOOL TakeFromClipboard(HWND owner, LPSTR text, size_t size)
{
    if (!::OpenClipboard(owner))
        return FALSE;
    const HANDLE data = ::GetClipboardData(CF_TEXT);
    const void* const from = data != nullptr ? ::GlobalLock(data) : nullptr;
    if (from != nullptr) { // what another program put there may lack its end
        const size_t length = (std::min)(static_cast<size_t>(::GlobalSize(data)), size - 1);
        std::memcpy(text, from, length);
        text[length] = '\0';
        ::GlobalUnlock(data);
    }
    ::CloseClipboard();
    return from != nullptr;
}
