#include "support/wine_gap.h"

#include "support/environment.h"

namespace zo_test {

std::vector<std::string> FailuresOf(const std::function<void()>& checks)
{
    testing::TestPartResultArray results;
    {
        const testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        checks();
    }
    std::vector<std::string> failures;
    for (int i = 0; i < results.size(); ++i) {
        if (results.GetTestPartResult(i).failed())
            failures.emplace_back(results.GetTestPartResult(i).message());
    }
    return failures;
}

void RunWineGap(const char* file, int line, const char* reason, const std::function<void()>& checks)
{
    if (!IsWine())
        checks();
    else if (FailuresOf(checks).empty())
        ADD_FAILURE_AT(file, line) << "Wine behaves now, take the mark away: " << reason;
}

} // namespace zo_test
