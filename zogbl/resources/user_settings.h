/// \file
/// What a user has set in dialogs and windows: texts below the user's key of the program's product. Texts alone, as
/// Win32s knows nothing else.
#pragma once

#include <afxcoll.h>

constexpr DWORD kMostSetting = 4095; ///< bytes of a text

/// \param section a key below the user's: "Windows"
/// \return FALSE: there is none, or no product, or no memory; \p text is as before
BOOL ReadSetting(LPCSTR section, LPCSTR name, CString& text);
/// \return 0; else the registry's status, or ERROR_INVALID_PARAMETER for a longer text, ERROR_FILE_NOT_FOUND without a
/// product, ERROR_NOT_ENOUGH_MEMORY
DWORD KeepSetting(LPCSTR section, LPCSTR name, LPCSTR text);
/// Forgets it; one that was never kept, too. \return as KeepSetting
DWORD ForgetSetting(LPCSTR section, LPCSTR name);
/// The names of what a section keeps. \return as KeepSetting; 0 and no names if there is no such section
DWORD ListSettings(LPCSTR section, CStringArray& names);
