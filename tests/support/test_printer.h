/// \file
/// A printer that writes PostScript, for what is printed in earnest.
#pragma once

#include <common/test_printer.h>

namespace zo_test {

using ::TestPrinter;

} // namespace zo_test
