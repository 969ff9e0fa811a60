#include "support/watchdog.h"

namespace zo_test {

namespace {

LONG volatile g_progress = 0;

}

LONG ProgressCount() { return g_progress; }
void ReportProgress() { InterlockedIncrement(&g_progress); }

Watchdog::Watchdog(DWORD periods, Hang hang, DWORD period)
    : m_periods(periods), m_period(period), m_hang(hang), m_finished(CreateEventA(nullptr, TRUE, FALSE, nullptr))
{
    DWORD id;
    m_thread = CreateThread(nullptr, 0, &Watchdog::Run, this, 0, &id);
}

Watchdog::~Watchdog()
{
    SetEvent(m_finished);
    // Not before the thread is gone: a process that leaves while one of its threads is just starting crashes now and
    // then under Wine.
    WaitForSingleObject(m_thread, INFINITE);
    CloseHandle(m_thread);
    CloseHandle(m_finished);
}

DWORD WINAPI Watchdog::Run(void* object)
{
    const auto* self = static_cast<const Watchdog*>(object);
    LONG seen = ProgressCount();
    for (DWORD idle = 0; idle < self->m_periods;) {
        if (WaitForSingleObject(self->m_finished, self->m_period) == WAIT_OBJECT_0)
            return 0;
        const LONG now = ProgressCount();
        idle = now == seen ? idle + 1 : 0;
        seen = now;
    }
    self->m_hang();
    return 0;
}

} // namespace zo_test
