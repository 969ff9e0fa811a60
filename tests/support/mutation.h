/// \file
/// Runs of random cases: bad input that is made from seeds, so that each case can be repeated.
///
///     ForEachMutation([&](unsigned number, Random& random) {
///         std::string file = kWholeFile;
///         Damage(random, 1, 3, {[&] { file[random() % file.size()] = static_cast<char>(random()); },
///                               [&] { file.resize(random() % file.size()); }});
///         const DWORD status = Load(file);
///         EXPECT_EQ(Judge(file), status);
///         return status == 0;
///     });
#pragma once

#include <functional>
#include <initializer_list>
#include <iterator>
#include <random>
#include <string>

namespace zo_test {

using Random = std::mt19937;

/// How many cases a run is made of, unless told otherwise, and how many of them are accepted.
struct MutationCases {
    unsigned usual = 2000;
    unsigned onGuardHeap = 400;
    unsigned leastPercent = 5, mostPercent = 98;
};

/// Calls \p check with the cases 0, 1, 2 ..., and ends at the first one that fails. It answers whether its input was
/// accepted: a run that accepts too few cases, or too many, tests one side only and fails.
/// A case's random numbers follow from its number and from the environment's name, so each environment has cases of its
/// own. The environment variable ZO_MUTATION_CASES asks for another number of cases; `./zo mutate` sets it.
void ForEachMutation(const std::function<bool(unsigned number, Random& random)>& check, MutationCases cases = {});

/// Damages something \p least to \p most times, each time in one of \p ways, all equally likely.
void Damage(Random& random, unsigned least, unsigned most, std::initializer_list<std::function<void()>> ways);

/// One of \p choices.
template <class CHOICES> const auto& Choose(Random& random, const CHOICES& choices)
{
    return choices[random() % std::size(choices)];
}

/// The bytes of a number as it stands in a file, lowest first.
template <class NUMBER> std::string BytesOf(NUMBER number)
{
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

/// The number at a place in a file.
template <class NUMBER> NUMBER NumberAt(const std::string& bytes, size_t at)
{
    NUMBER number = 0;
    bytes.copy(reinterpret_cast<char*>(&number), sizeof number, at);
    return number;
}

/// Puts a number in the place of the one that stands there.
template <class NUMBER> void PutNumber(std::string& bytes, size_t at, NUMBER number)
{
    bytes.replace(at, sizeof number, BytesOf(number));
}

} // namespace zo_test
