#include "background_work.h"

#include <common/without_throwing.h>

#include "module_data.h"

HMODULE HoldLibrary()
{
    char path[kZoLibraryPathSize];
    return ZoGetLibraryPath(path) ? ::LoadLibraryA(path) : nullptr;
}

void BackgroundWork::Begin()
{
    m_library = HoldLibrary();
    if (m_library != nullptr) {
        DWORD id = 0;
        m_references = 2;
        *m_thread.Receive() = ::CreateThread(nullptr, 0, &Run, this, CREATE_SUSPENDED, &id);
        if (m_thread.IsOpen()) { // known before the thread can end it
            ::ResumeThread(m_thread);
            return;
        }
        m_references = 1;
        ::FreeLibrary(m_library);
    }
    WorkSafely();
}

bool BackgroundWork::IsOver(DWORD patience) const
{
    return !m_thread.IsOpen() || ::WaitForSingleObject(m_thread, patience) == WAIT_OBJECT_0;
}

void BackgroundWork::Leave()
{
    if (::InterlockedDecrement(&m_references) == 0)
        delete this;
}

void BackgroundWork::WorkSafely()
{
    m_hasFailed = !WithoutThrowing([this] { Work(); });
}

DWORD WINAPI BackgroundWork::Run(LPVOID argument)
{
    auto* work = static_cast<BackgroundWork*>(argument);
    const HMODULE library = work->m_library;
    work->WorkSafely();
    work->Leave();
    ::FreeLibraryAndExitThread(library, 0);
}
