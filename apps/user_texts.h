/// \file
/// What the Workbench and the sample template libraries keep for the user: texts in the key "Workbench" below the
/// user's.
#pragma once

#include <afx.h>

/// \return FALSE: there is none, or it is too long to be one of ours; \p text is empty
BOOL ReadUserText(LPCSTR name, CString& text);
/// \return 0; else the registry's status, or ERROR_FILE_NOT_FOUND without a product
DWORD KeepUserText(LPCSTR name, LPCSTR text);
