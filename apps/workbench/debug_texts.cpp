#include "debug_texts.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

/// Functions of the system that not every Windows has.
template <class FUNCTION> FUNCTION* SystemFunction(LPCSTR name)
{
    return reinterpret_cast<FUNCTION*>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandle("KERNEL32.DLL"), name)));
}

} // namespace

DebugTexts* DebugTexts::s_listener = nullptr;

DebugTexts::DebugTexts()
{
    ::InitializeCriticalSection(&m_lock);
    s_listener = this;
    constexpr ULONG kFirst = 1;
    if (const auto add = SystemFunction<decltype(::AddVectoredExceptionHandler)>("AddVectoredExceptionHandler"))
        m_handler = add(kFirst, &DebugTexts::Listen);
}

DebugTexts::~DebugTexts()
{
    if (m_handler != nullptr)
        SystemFunction<decltype(::RemoveVectoredExceptionHandler)>("RemoveVectoredExceptionHandler")(m_handler);
    s_listener = nullptr;
    ::DeleteCriticalSection(&m_lock);
}

void DebugTexts::Add(const char* text, size_t size)
{
    ::EnterCriticalSection(&m_lock);
    size = (std::min)(size, kMost - m_size);
    std::memcpy(m_texts + m_size, text, size);
    m_size += size;
    ::LeaveCriticalSection(&m_lock);
}

CString DebugTexts::Take()
{
    CString texts;
    char* buffer = texts.GetBuffer(kMost);
    ::EnterCriticalSection(&m_lock);
    const size_t size = std::exchange(m_size, 0);
    std::memcpy(buffer, m_texts, size);
    ::LeaveCriticalSection(&m_lock);
    texts.ReleaseBuffer(static_cast<int>(size));
    return texts;
}

/// OutputDebugString raises an exception that the debugger sees first; its parameters are the size with the terminator,
/// and the text.
LONG CALLBACK DebugTexts::Listen(EXCEPTION_POINTERS* exception)
{
    constexpr DWORD kPrint = 0x40010006; // DBG_PRINTEXCEPTION_C
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    if (record.ExceptionCode == kPrint && record.NumberParameters >= 2 && record.ExceptionInformation[0] > 0)
        s_listener->Add(reinterpret_cast<const char*>(record.ExceptionInformation[1]),
                        record.ExceptionInformation[0] - 1);
    return EXCEPTION_CONTINUE_SEARCH;
}
