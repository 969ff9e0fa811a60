/// \file
/// What a process holds: the counts that a leak makes grow.
#pragma once

#include <afx.h>

#include <ostream>

namespace zo_test {

struct ProcessCounts {
    long blocks = 0;  ///< of the framework's memory source
    long handles = 0; ///< kernel objects, registry keys, files
    long gdi = 0;     ///< drawing objects

    /// The counts of this process now. The framework's temporary objects are deleted first: they live until the thread
    /// is idle and are no leak.
    static ProcessCounts Take();

    bool operator==(const ProcessCounts&) const = default;
    friend std::ostream& operator<<(std::ostream& stream, const ProcessCounts& counts)
    {
        return stream << counts.blocks << " blocks, " << counts.handles << " handles, " << counts.gdi << " GDI objects";
    }
};

} // namespace zo_test

/// Checks that \p statement leaves the process with as much as it had before.
#define ZO_EXPECT_NO_LEAK(statement)                                                                                   \
    do {                                                                                                               \
        const zo_test::ProcessCounts zoCountsBefore = zo_test::ProcessCounts::Take();                                  \
        statement;                                                                                                     \
        EXPECT_EQ(zoCountsBefore, zo_test::ProcessCounts::Take()) << "left behind by " << #statement;                  \
    } while (false)
