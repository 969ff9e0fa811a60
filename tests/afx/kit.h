/// \file
/// What tests of many classes need.
#pragma once

#include "answers.h"

namespace zo_test {

/// A window without parent, for as long as the object lives.
struct TopWindow : CWnd {
    explicit TopWindow(DWORD style = WS_POPUP | WS_VISIBLE)
    {
        EXPECT_TRUE(CreateEx(0, nullptr, "", style, 10, 10, 300, 200, nullptr, nullptr));
    }
};

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
