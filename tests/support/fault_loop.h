/// \file
/// The fault loop: fails the 1st, 2nd, 3rd ... call of something, once and from then on, until a run meets no fault.
///
///     zo_test::AllocationFaults faults;
///     zo_test::RunFaultLoop(faults, [](const zo_test::FaultRun& run) {
///         CZoThing thing;
///         const DWORD status = thing.Load();
///         run.Stop();                                   // no more faults: now look at what is left
///         EXPECT_EQ(run.Fired() ? ZO_NO_MEMORY : 0u, status);
///         EXPECT_EQ(run.Fired() ? "before" : "after", thing.Text());
///     });
///
/// A test that prepares something for each run, or looks at it in between, says what is tried. Calls fail only there;
/// their count goes on from one such part of a run to the next:
///
///     zo_test::RunFaultActs(faults, [&](const zo_test::FaultRun& run) {
///         Prepare();
///         const DWORD status = run.Act([&] { return thing.Save(); });
///         EXPECT_EQ(run.Fired() ? ZO_NO_MEMORY : 0u, status);
///     });
///
/// System calls fail in the same way, alone or several as one row of calls; rows for many tests are in fault_sets.h:
///
///     zo_test::FaultSource faults("registry");
///     ZO_FAULTY_CALL(RegOpenKeyExA) open(faults, "ZOGBLBRX.DLL", ERROR_ACCESS_DENIED);
///     ZO_FAULTY_CALL(RegQueryValueExA) query(faults, "ZOGBLBRX.DLL", ERROR_MORE_DATA);
///     zo_test::RunFaultLoop(faults, ...);
///
/// Each run must leave blocks, handles and GDI objects as they were. A rehearsal without faults comes first, so that
/// what is made once and kept is no leak.
#pragma once

#include "support/import_patch.h"

#include <array>
#include <functional>
#include <string>
#include <utility>

namespace zo_test {

/// Decides which calls fail. Counts calls while it is armed.
class FaultSource {
public:
    /// \param name for messages
    explicit FaultSource(std::string name) : m_name(std::move(name)) {}
    FaultSource(const FaultSource&) = delete;
    FaultSource& operator=(const FaultSource&) = delete;

    /// Makes call \p nth fail, counted from 1; with \p persistent all calls after it too.
    void Arm(int nth, bool persistent);
    void Disarm() { m_armed = false; }
    /// Goes on with what it was armed with and had counted before Disarm.
    void Resume() { m_armed = true; }
    /// Counts a call. \return whether it is to fail.
    bool Next();

    const std::string& Name() const { return m_name; }
    int Calls() const { return m_calls; } ///< since it was armed
    int Fired() const { return m_fired; } ///< calls that failed since it was armed

private:
    std::string m_name;
    bool m_armed = false;
    bool m_persistent = false;
    int m_nth = 0;
    int m_calls = 0;
    int m_fired = 0;
};

/// Makes allocations of the framework and the library fail. One at a time.
class AllocationFaults : public FaultSource {
public:
    AllocationFaults();
    ~AllocationFaults();

private:
    AFX_ALLOC_HOOK m_outerHook;
};

/// What one run of a fault loop knows of itself.
struct FaultRun {
    FaultSource& source;
    int number;      ///< the call that fails, from 1; 0 in the rehearsal
    bool persistent; ///< all later calls fail as well

    bool Fired() const { return source.Fired() > 0; }
    /// Ends the faults of this run, so that checks can work undisturbed.
    void Stop() const { source.Disarm(); }
    /// Lets calls fail within \p act, and no longer. \return what \p act returns.
    template <class ACT> auto Act(const ACT& act) const
    {
        struct Faults {
            FaultSource& source;
            ~Faults() { source.Disarm(); }
        } const faults{source};
        source.Resume();
        return act();
    }
};

struct FaultLoopOptions {
    int maximumRuns = 500; ///< for each of the two modes; needing more is a failure
    /// How far the fault moves on from run to run, behind the first and before the last 12 calls that the rehearsal
    /// made; on the guard heap three times as far, behind the first and before the last 4. More than 1 is for rows of
    /// like steps, each of a few calls: choose no divisor of their number.
    int stride = 1;
};

/// Runs \p body with a fault at call 1, 2, 3 ... . A loop in which no fault ever fires fails the test.
void RunFaultLoop(FaultSource& source, const std::function<void(const FaultRun&)>& body, FaultLoopOptions options = {});
/// The same with faults within FaultRun::Act only; its calls are counted through the run.
void RunFaultActs(FaultSource& source, const std::function<void(const FaultRun&)>& body, FaultLoopOptions options = {});

/// The same with a source that exists for as long: RunFaultLoop<AllocationFaults>(body).
template <class SOURCE>
void RunFaultLoop(const std::function<void(const FaultRun&)>& body, FaultLoopOptions options = {})
{
    SOURCE source;
    RunFaultLoop(source, body, options);
}
template <class SOURCE> void RunFaultActs(const std::function<void(const FaultRun&)>& body)
{
    SOURCE source;
    RunFaultActs(source, body);
}

template <auto NAME, class FUNCTION> class FaultyCall;

/// Makes calls of one system function from one module fail when \p source says so: nothing is done, \p failure
/// returned.
/// \p failure may also be the value for success: then the call lies. Of several for one function the last one decides
/// first; those of one source, for two modules, are asked once. Use through ZO_FAULTY_CALL.
template <auto NAME, class RESULT, class... ARGUMENTS> class FaultyCall<NAME, RESULT(WINAPI*)(ARGUMENTS...)> {
public:
    /// \param lastError set by a call that fails, unless 0
    FaultyCall(FaultSource& source, const char* module, RESULT failure, DWORD lastError = 0)
        : m_source(source), m_failure(failure), m_lastError(lastError), m_outer(std::exchange(s_active, this)),
          m_patch(module, NAME.data(), &FaultyCall::Replacement)
    {
    }
    ~FaultyCall() { s_active = m_outer; }
    FaultyCall(const FaultyCall&) = delete;
    FaultyCall& operator=(const FaultyCall&) = delete;

private:
    static RESULT WINAPI Replacement(ARGUMENTS... arguments)
    {
        const FaultSource* asked = nullptr;
        for (const FaultyCall* call = s_active;; call = call->m_outer) {
            if (&call->m_source != asked && call->m_source.Next()) {
                if (call->m_lastError != 0)
                    SetLastError(call->m_lastError);
                return call->m_failure;
            }
            asked = &call->m_source;
            if (call->m_outer == nullptr)
                return call->m_patch.template Original<RESULT WINAPI(ARGUMENTS...)>()(arguments...);
        }
    }

    static inline FaultyCall* s_active = nullptr;
    FaultSource& m_source;
    RESULT m_failure;
    DWORD m_lastError;
    FaultyCall* m_outer;
    ImportPatch m_patch;
};

} // namespace zo_test

/// The FaultyCall type of a system function; name it as it is imported, with its A or W.
#define ZO_FAULTY_CALL(function) zo_test::FaultyCall<std::to_array(#function), decltype(&::function)>
