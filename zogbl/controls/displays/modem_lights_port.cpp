#include "modem_lights_port.h"

#include <zogbl/status.h>

#include "ground/background_work.h"

#include <new>

PortWatch* PortWatch::Begin(HANDLE port, DWORD& status)
{
    status = ZoErrOutOfMemory;
    auto* watch = new (std::nothrow) PortWatch(port);
    if (watch == nullptr)
        return nullptr;
    status = ERROR_INVALID_HANDLE;
    if (port == nullptr || port == INVALID_HANDLE_VALUE) {
        delete watch;
        return nullptr;
    }
    DWORD id = 0;
    *watch->m_asked.Receive() = ::CreateEventA(nullptr, FALSE, FALSE, nullptr);
    if (watch->m_asked.IsOpen())
        watch->m_library = HoldLibrary();
    const SystemHandle thread(watch->m_library != nullptr ? ::CreateThread(nullptr, 0, &Run, watch, 0, &id) : nullptr);
    if (thread.IsOpen()) {
        status = 0;
        return watch;
    }
    status = CZoGlobalError::GetError();
    if (watch->m_library != nullptr)
        ::FreeLibrary(watch->m_library);
    delete watch;
    return nullptr;
}

void PortWatch::End()
{
    ::InterlockedExchange(&m_isOver, TRUE);
    ::SetEvent(m_asked);
    Release();
}

void PortWatch::Release()
{
    if (::InterlockedDecrement(&m_references) == 0)
        delete this;
}

void PortWatch::Ask()
{
    ::InterlockedExchange(&m_answer, static_cast<LONG>(Answer::kPending));
    ::SetEvent(m_asked);
}

PortWatch::Answer PortWatch::Take(DWORD& value)
{
    // Read by an exchange, as it was written: the value came before it.
    const LONG answer = ::InterlockedCompareExchange(&m_answer, 0, 0);
    if (answer != static_cast<LONG>(Answer::kLines) && answer != static_cast<LONG>(Answer::kError))
        return static_cast<Answer>(answer);
    value = m_value;
    ::InterlockedExchange(&m_answer, static_cast<LONG>(Answer::kNone));
    return static_cast<Answer>(answer);
}

DWORD WINAPI PortWatch::Run(LPVOID argument)
{
    auto* watch = static_cast<PortWatch*>(argument);
    while (::WaitForSingleObject(watch->m_asked, INFINITE) == WAIT_OBJECT_0 &&
           !::InterlockedCompareExchange(&watch->m_isOver, 0, 0)) {
        DWORD lines = 0;
        const BOOL succeeded = ::GetCommModemStatus(watch->m_port, &lines);
        watch->m_value = succeeded ? lines : ::GetLastError();
        ::InterlockedExchange(&watch->m_answer, static_cast<LONG>(succeeded ? Answer::kLines : Answer::kError));
    }
    const HMODULE library = watch->m_library;
    watch->Release();
    ::FreeLibraryAndExitThread(library, 0);
}
