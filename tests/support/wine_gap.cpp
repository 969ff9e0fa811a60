#include "support/wine_gap.h"

#include "support/environment.h"

namespace zo_test {

void RunWineGap(const char* file, int line, const char* reason, const std::function<void()>& checks)
{
    if (!IsWine()) {
        checks();
        return;
    }
    testing::TestPartResultArray results;
    {
        const testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        checks();
    }
    bool failed = false;
    for (int i = 0; i < results.size(); ++i)
        failed = failed || results.GetTestPartResult(i).failed();
    if (!failed)
        ADD_FAILURE_AT(file, line) << "Wine behaves now, take the mark away: " << reason;
}

} // namespace zo_test
