#include "support/fault_loop.h"

#include "support/guard_heap.h"
#include "support/process_counts.h"
#include "support/watchdog.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zo_test {

void FaultSource::Arm(int nth, bool persistent)
{
    m_nth = nth;
    m_persistent = persistent;
    m_calls = 0;
    m_fired = 0;
    m_armed = true;
}

bool FaultSource::Next()
{
    if (!m_armed)
        return false;
    ++m_calls;
    const bool fails = m_persistent ? m_calls >= m_nth : m_calls == m_nth;
    m_fired += fails;
    return fails;
}

namespace {

AllocationFaults* g_allocationFaults = nullptr;

BOOL AFXAPI FailWhenTold(size_t, BOOL, LONG) { return !g_allocationFaults->Next(); }

/// One run of the body; no exception may leave it.
void RunOnce(const std::function<void(const FaultRun&)>& body, const FaultRun& run)
{
    try {
        body(run);
    } catch (CException* e) {
        run.Stop();
        ADD_FAILURE() << "threw " << e->GetRuntimeClass()->m_lpszClassName;
        e->Delete();
    }
    run.Stop();
}

void RunMode(FaultSource& source, bool persistent, int usualCalls, const std::function<void(const FaultRun&)>& body,
             const FaultLoopOptions& options)
{
    // In longer steps on the guard heap: it is for what a failure writes where it must not, the plain run for the rest.
    const int coarser = IsGuardHeapInstalled() ? 3 : 1;
    const int edge = 12 / coarser;
    int number = 1;
    for (int run = 0; run < options.maximumRuns; ++run) {
        SCOPED_TRACE(source.Name() + " call " + std::to_string(number) +
                     (persistent ? " and all after it fail" : " fails"));
        const ProcessCounts before = ProcessCounts::Take();
        source.Arm(number, persistent);
        RunOnce(body, {source, number, persistent});
        ReportProgress();
        for (int pause = 0; pause < 200 && !(before == ProcessCounts::Take()); ++pause)
            Sleep(10); // threads that nobody waits for may be ending
        EXPECT_EQ(before, ProcessCounts::Take()) << "the run left something behind";
        if (source.Fired() == 0) {
            EXPECT_GT(number, 1) << "no fault ever fired: this loop tests nothing";
            return;
        }
        const int lastEdge = usualCalls - edge;
        if (number < edge || number >= lastEdge)
            ++number;
        else
            number = (std::min)(number + options.stride * coarser, lastEdge);
    }
    ADD_FAILURE() << "faults still fire after " << options.maximumRuns << " runs of " << source.Name();
}

} // namespace

AllocationFaults::AllocationFaults() : FaultSource("allocation")
{
    EXPECT_EQ(nullptr, g_allocationFaults) << "allocation faults are in force already";
    g_allocationFaults = this;
    m_outerHook = AfxSetAllocHook(&FailWhenTold);
}

AllocationFaults::~AllocationFaults()
{
    AfxSetAllocHook(m_outerHook);
    g_allocationFaults = nullptr;
}

void RunFaultLoop(FaultSource& source, const std::function<void(const FaultRun&)>& body, FaultLoopOptions options)
{
    {
        SCOPED_TRACE("rehearsal without faults");
        source.Arm(0, false);
        RunOnce(body, {source, 0, false});
    }
    const int usualCalls = source.Calls();
    RunMode(source, false, usualCalls, body, options);
    RunMode(source, true, usualCalls, body, options);
}

void RunFaultActs(FaultSource& source, const std::function<void(const FaultRun&)>& body, FaultLoopOptions options)
{
    RunFaultLoop(
        source, [&](const FaultRun& run) { run.Stop(), body(run); }, options);
}

} // namespace zo_test
