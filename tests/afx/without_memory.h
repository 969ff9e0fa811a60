/// \file
/// Operations that change an object, or leave it as it was if they lack memory.
#pragma once

#include "support/test.h"

namespace zo_test {

/// An operation by its name.
template <class OBJECT> using Operation = std::pair<const char*, std::function<void(OBJECT&)>>;

/// Tries each operation on an object that \p fill has filled, with allocations that fail: it must change the object, or
/// throw and change nothing. \p look says what the object holds.
template <class OBJECT> void ExpectAsBeforeWithoutMemory(const std::vector<Operation<OBJECT>>& operations,
                                                         void (*fill)(OBJECT&), std::string (*look)(const OBJECT&))
{
    for (const auto& [name, operation] : operations) {
        SCOPED_TRACE(name);
        AllocationFaults faults;
        RunFaultActs(faults, [&, &operation = operation](const FaultRun& run) {
            OBJECT object;
            fill(object);
            const std::string before = look(object);
            bool thrown = false;
            try {
                run.Act([&] { operation(object); });
            } catch (CMemoryException* e) {
                thrown = true;
                e->Delete();
            }
            EXPECT_EQ(run.Fired(), thrown);
            EXPECT_EQ(thrown, before == look(object));
        });
    }
}

} // namespace zo_test
