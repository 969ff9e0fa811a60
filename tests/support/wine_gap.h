/// \file
/// Marks what Wine does not do yet.
#pragma once

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace zo_test {

/// Runs checks. \return the failures they made, which do not count.
std::vector<std::string> FailuresOf(const std::function<void()>& checks);

/// Runs checks that are known to fail under Wine; see ZO_WINE_GAP.
void RunWineGap(const char* file, int line, const char* reason, const std::function<void()>& checks);

} // namespace zo_test

/// Checks that hold on Windows and fail under Wine. Once Wine behaves, so that they all hold, the test fails and asks
/// for the mark to be taken away. \param reason what Wine does instead. Behind it come the statements.
#define ZO_WINE_GAP(reason, ...) zo_test::RunWineGap(__FILE__, __LINE__, reason, [&] { __VA_ARGS__; })
