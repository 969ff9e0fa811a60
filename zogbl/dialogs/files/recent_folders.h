/// \file
/// The folders in which the user has last chosen files: ten, shared by all programs of the product.
#pragma once

#include <afxcoll.h>

constexpr int kMostRecentFolders = 10;

/// The newest first; none if nothing was kept. What is damaged is left out. No folder is touched. Throws
/// CMemoryException*.
void LoadRecentFolders(CStringArray& folders);
/// Puts a folder in front of the others. It is not told if that cannot be kept. Throws CMemoryException*.
void KeepRecentFolder(LPCSTR folder);
