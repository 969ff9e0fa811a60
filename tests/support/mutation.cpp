#include "support/mutation.h"

#include "support/environment.h"
#include "support/guard_heap.h"
#include "support/watchdog.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace zo_test {

void ForEachMutation(const std::function<bool(unsigned number, Random& random)>& check, MutationCases cases)
{
    const bool onGuardHeap = IsGuardHeapInstalled();
    unsigned count = onGuardHeap ? cases.onGuardHeap : cases.usual;
    if (const char* asked = std::getenv("ZO_MUTATION_CASES"); asked != nullptr)
        count = static_cast<unsigned>(std::strtoul(asked, nullptr, 10));
    ASSERT_GT(count, 0u) << "a run without cases tests nothing";
    const std::string prefix = EnvironmentName() + (onGuardHeap ? ".guard." : ".");
    unsigned accepted = 0;
    for (unsigned number = 0; number < count; ++number) {
        const std::string seed = prefix + std::to_string(number);
        std::seed_seq sequence(seed.begin(), seed.end());
        Random random(sequence);
        accepted += check(number, random);
        ReportProgress();
        ASSERT_FALSE(testing::Test::HasFailure()) << "case " << seed;
    }
    const unsigned percent = 100 * accepted / count;
    EXPECT_TRUE(percent >= cases.leastPercent && percent <= cases.mostPercent) << accepted << " accepted of " << count;
}

void Damage(Random& random, unsigned least, unsigned most, std::initializer_list<std::function<void()>> ways)
{
    for (unsigned changes = least + random() % (most - least + 1); changes > 0; --changes)
        ways.begin()[random() % ways.size()]();
}

} // namespace zo_test
