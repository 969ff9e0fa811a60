/// \file
/// Marks what Wine does not do yet.
#pragma once

#include "support/environment.h"

#include <gtest/gtest-spi.h>

#include <functional>
#include <string>

namespace zo_test {

/// Runs checks. \return the failures they made, which do not count, each with a line end behind it.
inline std::string FailuresOf(const std::function<void()>& checks)
{
    testing::TestPartResultArray results;
    {
        const testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        checks();
    }
    std::string failures;
    for (int i = 0; i < results.size(); ++i) {
        if (results.GetTestPartResult(i).failed())
            failures += results.GetTestPartResult(i).message() + std::string("\n");
    }
    return failures;
}

/// Runs checks that are known to fail under Wine; see ZO_WINE_GAP.
inline void RunWineGap(const char* file, int line, const char* reason, const std::function<void()>& checks)
{
    if (!IsWine())
        checks();
    else if (FailuresOf(checks).empty())
        ADD_FAILURE_AT(file, line) << "Wine behaves now, take the mark away: " << reason;
}

} // namespace zo_test

/// Checks that hold on Windows and fail under Wine. Once Wine behaves, so that they all hold, the test fails and asks
/// for the mark to be taken away. \param reason what Wine does instead. Behind it come the statements.
#define ZO_WINE_GAP(reason, ...) zo_test::RunWineGap(__FILE__, __LINE__, reason, [&] { __VA_ARGS__; })
