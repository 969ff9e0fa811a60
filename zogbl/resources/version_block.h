/// \file
/// A module's version resource as the system's version library gives it, made fit to be queried.
///
/// The library's functions trust the lengths in the resource: a damaged one makes them read and write outside the
/// block.
#pragma once

#include <windows.h>

/// Larger ones are no version resources: their lengths are 16-bit numbers, and the system asks for some room of its
/// own.
constexpr DWORD kMostVersionData = 0x40000;

/// How large a block must be, all zeros, to hold \p dataSize bytes of version data: the system puts texts that it
/// converts behind them.
constexpr DWORD VersionBlockSize(DWORD dataSize) { return 2 * dataSize + 8; }

/// Checks every length in version data, and shortens texts that say they are longer than the record they stand in.
/// \return FALSE when the data is damaged; it must not be queried then.
BOOL MendVersionBlock(void* block, DWORD dataSize);

/// Asks a mended block. \return FALSE when there is no such value, or an empty one; what is found lies in the block.
BOOL QueryVersionBlock(const void* block, DWORD dataSize, LPCSTR path, const void*& value, UINT& length);
