/// \file
/// Marks what Wine does not do yet.
#pragma once

#include "support/environment.h"

#include <gtest/gtest-spi.h>

/// A check that holds on Windows and fails under Wine. Once Wine behaves, so that it holds, the test fails: then the
/// mark is to be taken away. \param reason what Wine does instead
#define ZO_WINE_GAP(reason, check)                                                                                     \
    do {                                                                                                               \
        SCOPED_TRACE("take the mark away if Wine behaves now: " reason);                                               \
        if (zo_test::IsWine())                                                                                         \
            EXPECT_NONFATAL_FAILURE(check, "");                                                                        \
        else                                                                                                           \
            check;                                                                                                     \
    } while (false)
