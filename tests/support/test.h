/// \file
/// What every test includes: the framework, the test library and all that test programs share, by its short names.
#pragma once

#include "support/box_stub.h"
#include "support/canvas.h"
#include "support/child_process.h"
#include "support/dialog_driver.h"
#include "support/dialog_layout.h"
#include "support/environment.h"
#include "support/fault_loop.h"
#include "support/fault_sets.h"
#include "support/guard_heap.h"
#include "support/import_patch.h"
#include "support/mutation.h"
#include "support/process_counts.h"
#include "support/sentinel_buffer.h"
#include "support/telling_app.h"
#include "support/unique_names.h"
#include "support/virtual_slots.h"
#include "support/watchdog.h"
#include "support/wine_gap.h"

#include <afxext.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

using namespace zo_test;
