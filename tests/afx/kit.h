/// \file
/// What tests of many classes need.
#pragma once

#include "answers.h"
#include "test_window.h"

namespace zo_test {

/// The class of what \p act throws, "" if it throws nothing.
template <class ACT> std::string Thrown(ACT act)
{
    try {
        act();
    } catch (CException* e) {
        const std::string name = e->GetRuntimeClass()->m_lpszClassName;
        e->Delete();
        return name;
    }
    return "";
}

/// Lets \p act lack memory: it must throw then, and leave nothing behind. \p look comes after each try.
template <class ACT> void ExpectThrowsWithoutMemory(
    const ACT& act, const std::function<void(bool thrown)>& look = [](bool) {})
{
    RunFaultActs<AllocationFaults>([&](const FaultRun& run) {
        const std::string thrown = Thrown([&] { run.Act(act); });
        EXPECT_EQ(run.Fired() ? "CMemoryException" : "", thrown);
        look(run.Fired());
    });
}

} // namespace zo_test
