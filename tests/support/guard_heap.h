/// \file
/// A heap that stops the program at the first wrong access.
///
/// Each block ends at an inaccessible page, so that the first byte read or written behind it traps; a freed block
/// becomes inaccessible as a whole. The few bytes that alignment leaves behind a block are patterned and checked when
/// it is freed. It serves the allocations of the framework and of the library, which all come from one place in
/// ZOAFX.DLL; blocks that were handed out before go back where they came from.
///
/// A test program runs on it with --guard-heap. What was wrong is printed by the program's crash report.
#pragma once

#include <cstddef>
#include <string>

namespace zo_test {

/// Puts the guard heap in place, until the end of the process. A failure if the import tables forbid it.
void InstallGuardHeap();
bool IsGuardHeapInstalled();

/// What the guard heap knows of an address, for a crash report; empty for an address that is not in it.
std::string DescribeGuardedAddress(void* address);

/// A block of the guard heap, for its own test; null when memory has run out.
void* GuardedAllocate(size_t size);
void GuardedFree(void* p);

} // namespace zo_test
