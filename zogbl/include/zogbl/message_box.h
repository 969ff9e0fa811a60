/// \file
/// The suite's message box.
#pragma once

#include <zogbl/export.h>

#include <windows.h>

/// Shows a message and waits for a button. The arguments are those of the system's MessageBox, but the buttons are in
/// the user's language instead of the system's. All message boxes of the library are of this kind, and so are those of
/// AfxMessageBox while the library is loaded, unless the application overrides CWinApp::DoMessageBox.
///
/// The box is as large as its text and opens in the middle of its owner. Keys:
///   Enter   the button that has the focus
///   Escape  Cancel, or OK if it is the only button
///   Ctrl+C  puts title, text and buttons on the clipboard
///
/// The system's own box is shown if there is no language library or no memory for the box, and for types with
/// MB_SERVICE_NOTIFICATION, MB_DEFAULT_DESKTOP_ONLY or an unknown set of buttons.
/// \param owner disabled while the box is shown. Null: none; MB_TASKMODAL then disables up to 64 visible windows of the
/// thread
/// \param text lines end in '\n'; '&' is an ordinary character. Null: empty
/// \param title null: "Error", in the user's language
/// \param type MB_ flags: buttons, icon with its sound, default button; MB_TASKMODAL, MB_SYSTEMMODAL, MB_HELP,
/// MB_SETFOREGROUND, MB_TOPMOST, MB_RIGHT, MB_RTLREADING. The button of MB_HELP sends WM_HELP to the owner.
/// \return number of the button; 0 if no box can be shown or the box was destroyed before an answer
ZOGBL_API int ZoMessageBox(HWND owner, LPCSTR text, LPCSTR title, UINT type);

/// The same with a check box, "Do not ask again". If it is checked, the answer is kept for this user under a name, and
/// given from then on without a box: in all programs of the product that use the name. CZoKeptAnswersPage lists what is
/// kept, and undoes it. Answers that give up (Cancel, Abort) or try again are never kept, nor is that of the system's
/// own box. If an answer cannot be kept, the question comes again.
///
///     if (ZoAskOnce("LeaveWithDocuments", *this, "Documents are open. Leave?", title, MB_YESNO) != IDYES)
///         return;
///
/// \param name not empty; a kept answer counts if the box of this \p type has its button
/// \param text is kept with the answer, for the list
/// \return as ZoMessageBox
ZOGBL_API int ZoAskOnce(LPCSTR name, HWND owner, LPCSTR text, LPCSTR title, UINT type);

/// Lets ZoAskOnce ask again; also if nothing is kept under the name. \return 0, or the registry's status
ZOGBL_API DWORD ZoForgetAnswer(LPCSTR name);
