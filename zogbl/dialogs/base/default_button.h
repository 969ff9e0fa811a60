/// \file
/// The default button of a dialog that has other dialogs in it.
#pragma once

#include <windows.h>

/// Shows one push button of a dialog and of the pages in it as the default one: that with the focus, else the dialog's
/// own (DM_GETDEFID). The system loses count if the buttons are children of different windows. Call it after the focus
/// may have moved.
void ShowDefaultButton(HWND dialog);
