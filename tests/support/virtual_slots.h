/// \file
/// The order of a class's virtual operations, on which modules that were built earlier depend.
///
///     zo_test::ExpectSlots(2, &CZoThing::First, &CZoThing::Second); // behind the destructor, which takes two
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstddef>

namespace zo_test {

/// The place of a virtual operation in its class's table: a pointer to it holds the offset, marked by its lowest bit.
template <class MEMBER> size_t SlotOf(MEMBER member)
{
    struct Representation {
        size_t offset;
        ptrdiff_t adjustment;
    };
    const auto representation = std::bit_cast<Representation>(member);
    EXPECT_EQ(1u, representation.offset & 1) << "not virtual";
    return representation.offset / sizeof(void*);
}

/// Checks that these operations stand one behind the other, from slot \p first on.
template <class... MEMBERS> void ExpectSlots(size_t first, MEMBERS... members)
{
    const size_t slots[] = {SlotOf(members)...};
    for (const size_t slot : slots)
        EXPECT_EQ(first++, slot) << "slot of operation " << &slot - slots + 1;
}

} // namespace zo_test
