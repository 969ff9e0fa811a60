/// \file
/// Ends a program that hangs: one in which nothing goes on, however busy the machine is.
#pragma once

#include <afx.h>

namespace zo_test {

/// Tells the watchdog that the test goes on. What runs long (a fault loop, a run of mutations) says so in each round.
void ReportProgress();
/// How often it was told.
LONG ProgressCount();

/// Watches this process for as long as it lives: calls \p hang once, on a thread of its own, when nobody reported
/// progress in so many periods. A period is one in which the watchdog itself got to run, so a machine that is busy with
/// other things is no hang.
class Watchdog {
public:
    using Hang = void (*)();

    /// \param period in milliseconds
    Watchdog(DWORD periods, Hang hang, DWORD period = 1000);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

private:
    static DWORD WINAPI Run(void* object);

    DWORD m_periods;
    DWORD m_period;
    Hang m_hang;
    HANDLE m_finished;
    HANDLE m_thread;
};

} // namespace zo_test
