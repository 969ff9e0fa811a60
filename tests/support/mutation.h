/// \file
/// Runs of random cases: bad input that is made from seeds, so that each case can be repeated.
#pragma once

#include <functional>
#include <random>

namespace zo_test {

using Random = std::mt19937;

/// How many cases a run is made of, unless told otherwise.
struct MutationCases {
    unsigned usual = 2000;
    unsigned onGuardHeap = 400;
};

/// Calls \p check with the cases 0, 1, 2 ..., and ends at the first one that fails. A case's random numbers follow from its
/// number and from the environment's name, so each environment has cases of its own. The environment variable
/// ZO_MUTATION_CASES asks for another number of cases; `./zo mutate` sets it.
void ForEachMutation(const std::function<void(unsigned number, Random& random)>& check, MutationCases cases = {});

} // namespace zo_test
