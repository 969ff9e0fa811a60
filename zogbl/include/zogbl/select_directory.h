/// \file
/// The suite's folder picker.
#pragma once

#include <zogbl/export.h>

#include <windows.h>

/// Options of ZoSelectDirectory.
constexpr int ZO_SELECT_CREATE_INITIAL = 2; ///< make the initial folder exist first, if the user agrees
constexpr int ZO_SELECT_UPPER_CASE = 4;     ///< hand the path over in capitals
constexpr int ZO_SELECT_KEEP_CASE = 8;      ///< hand it over as it is; without these two it is in small letters

/// What ZoSelectDirectory answers besides IDOK (1).
constexpr int ZO_SELECT_CANCEL = 2; ///< the user gave up, or something failed

// Minor errors of ZoSelectDirectory, set as the last error (CZoGlobalError::Minor).
constexpr DWORD ZO_SELECT_ERROR_DIALOG = 0x21124003; ///< the dialog could not be made
constexpr DWORD ZO_SELECT_ERROR_OBJECT = 0x21124006; ///< no memory for the owner's window object
constexpr DWORD ZO_SELECT_ERROR_ATTACH = 0x21124470; ///< the owner could not be attached to it

/// Lets the user choose a folder, in a tree or by its path. A path that does not exist can be created, and so can a new
/// folder in the one that is selected.
///
/// With ZO_SELECT_CREATE_INITIAL and a name in \p initialDir that is no folder, the user is asked whether to create it
/// (string ZO_IDS_CREATE_FOLDER); a creation that fails is repeated as long as the user likes (ZO_IDS_FOLDER_NOT_CREATED).
/// The picker opens whatever comes of it.
/// \param buffer takes the path, without a backslash at its end unless it is a root; empty unless the result is IDOK.
/// \param bufferSize in bytes. All of them are cleared first.
/// \param owner a window, which is disabled meanwhile. One that belongs to no CWnd gets one for the time of the call.
/// \param initialDir what to begin with; null, empty or a path that does not exist: the nearest folder there is
/// \param helpContext of the question whether to create the initial folder
/// \param title, instruction of the dialog; null: its own, in the user's language
/// \return IDOK; else ZO_SELECT_CANCEL: the user gave up, no buffer, no window, a path that does not fit in the buffer, or one
/// of the minor errors above.
ZOGBL_API int ZoSelectDirectory(char* buffer, unsigned int bufferSize, HWND owner, char* initialDir, int options,
                                unsigned int helpContext, const char* title, const char* instruction);
