/// \file
/// The parts of a message box, and their places.
#pragma once

#include <afxwin.h>

constexpr UINT kBoxTypes = 7; ///< sets of buttons, by MB_TYPEMASK

/// Whether the box of a type has a button.
bool HasBoxButton(UINT type, int button);
/// The system's icon of a type; null for none.
LPCSTR BoxIcon(UINT type);

/// Gives the box the size of its text, its parts their places; the buttons of the template that the type does not have
/// go. A check box stands between the text and the buttons, if it is there. \return the default button
HWND LayOutBox(HWND box, LPCSTR contents, const CString& caption, UINT type);
