/// \file
/// Pictures of windows.
#pragma once

#include <windows.h>

/// Saves what the screen shows of a window as a PNG file. \return FALSE on failure.
bool SavePicture(HWND window, LPCSTR path);
