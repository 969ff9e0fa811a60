/// \file
/// What this process tells debuggers, for a window to show.
#pragma once

#include <afxwin.h>

#include <cstddef>

/// Listens to OutputDebugString from construction to destruction; a debugger still gets every text. One at a time.
///
/// On Windows 98 and before, which lack what it takes to listen, only texts that are added by hand are there.
class DebugTexts {
public:
    DebugTexts();
    ~DebugTexts();
    DebugTexts(const DebugTexts&) = delete;
    DebugTexts& operator=(const DebugTexts&) = delete;

    /// Adds a text from any thread. Those for which there is no room until they are taken are lost.
    void Add(const char* text, size_t size);
    /// Takes the texts that have come since it was last asked.
    CString Take();

private:
    static constexpr size_t kMost = 16 * 1024;

    static LONG CALLBACK Listen(EXCEPTION_POINTERS* exception);

    static DebugTexts* s_listener;
    CRITICAL_SECTION m_lock;
    char m_texts[kMost]; // of its own: who listens inside an exception allocates nothing
    size_t m_size = 0;
    void* m_handler = nullptr;
};
