/// \file
/// The order of a class's virtual operations, on which modules that were built earlier depend.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstddef>

namespace zo_test {

/// Checks that virtual operations stand one behind the other in their class's table, from slot \p first on. A pointer
/// to one holds its offset there, marked by the lowest bit.
template <class... MEMBERS> void ExpectSlots(size_t first, MEMBERS... members)
{
    struct Representation {
        size_t offset, adjustment;
    };
    for (const Representation& member : {std::bit_cast<Representation>(members)...})
        EXPECT_EQ(first++ * sizeof(void*) + 1, member.offset);
}

} // namespace zo_test
