/// \file
/// The suite's message box.
#pragma once

#include <zogbl/export.h>

#include <windows.h>

/// Shows a message and waits for a button, as the system's MessageBox does, with the texts of the buttons in the user's
/// language: the system's own come in the language of the system. All message boxes of the library are of this kind, and so
/// are those of AfxMessageBox while the library is loaded, unless the application overrides CWinApp::DoMessageBox.
///
/// The box is as large as its text and stands in the middle of its owner. Enter takes the button that has the focus;
/// Escape takes Cancel, or OK if that is the only button; Ctrl+C puts title, text and buttons on the clipboard.
///
/// Without the language library, or without memory for the box, the system's own box is shown.
/// \param owner disabled meanwhile; null: none
/// \param text lines end in '\n'; '&' is a character like any other. Null: empty
/// \param title null: "Error", in the user's language
/// \param type MB_ flags: buttons, icon with its sound, default button; MB_TASKMODAL, MB_SYSTEMMODAL, MB_HELP,
/// MB_SETFOREGROUND, MB_TOPMOST, MB_RIGHT, MB_RTLREADING. The button of MB_HELP sends WM_HELP to the owner. Boxes of services
/// are left to the system.
/// \return the number of the button; 0 when no box can be shown, or it was destroyed before an answer
ZOGBL_API int ZoMessageBox(HWND owner, LPCSTR text, LPCSTR title, UINT type);
