/// \file
/// The suite's folder picker.
#pragma once

#include <zogbl/export.h>

#include <windows.h>

/// Options of ZoSelectDirectory. Without the last two, the path is in small letters; with both, in capitals.
constexpr int ZO_SELECT_CREATE_INITIAL = 2; ///< if the initial folder does not exist, ask whether to create it
constexpr int ZO_SELECT_UPPER_CASE = 4;     ///< the path in capitals
constexpr int ZO_SELECT_KEEP_CASE = 8;      ///< the path as it is

/// Result of ZoSelectDirectory besides IDOK (1).
constexpr int ZO_SELECT_CANCEL = 2; ///< the user gave up, or something failed

// Minor errors of ZoSelectDirectory, set as the last error (CZoGlobalError::Minor).
constexpr DWORD ZO_SELECT_ERROR_DIALOG = 0x21124003; ///< the dialog cannot be made
constexpr DWORD ZO_SELECT_ERROR_OBJECT = 0x21124006; ///< no memory for the owner's window object
constexpr DWORD ZO_SELECT_ERROR_ATTACH = 0x21124470; ///< the owner cannot be attached to it

/// Lets the user choose a folder, in a tree or by its path. The dialog is in the user's language. It can create a typed
/// path that does not exist, and a new folder in the selected one. What a drive does not answer at once is shown as
/// being opened; meanwhile Cancel ends the dialog, and another choice takes the place of the first.
///
/// With ZO_SELECT_CREATE_INITIAL, and if \p initialDir names no existing folder, the user is asked whether to create it
/// (string ZO_IDS_CREATE_FOLDER). A creation that fails is tried again as often as the user wishes
/// (ZO_IDS_FOLDER_NOT_CREATED). The picker opens in any case. Nobody is asked if the drive does not answer at once.
/// \param buffer receives the path, without a backslash at its end unless it is a root; empty unless the result is IDOK
/// \param bufferSize in bytes; all of them are cleared first
/// \param owner a window; disabled while the dialog is shown. If it belongs to no CWnd, it gets one during the call.
/// \param initialDir folder shown first; null, empty or a path that does not exist: the nearest folder that exists
/// \param helpContext of the questions whether to create a folder
/// \param title, instruction texts of the dialog; null: its own
/// \return IDOK; or ZO_SELECT_CANCEL if the user gave up, there is no buffer or no window, the path does not fit in the
/// buffer, or one of the minor errors above is set
ZOGBL_API int ZoSelectDirectory(char* buffer, unsigned int bufferSize, HWND owner, char* initialDir, int options,
                                unsigned int helpContext, const char* title, const char* instruction);
