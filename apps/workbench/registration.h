/// \file
/// The Workbench's own registration.
#pragma once

#include <afx.h>
#include <afxcoll.h>

/// Runs ZoProvision, which lies beside the Workbench, and waits for it. \return its exit code, or -1 when it could not
/// be started or did not end within half a minute.
int RunProvision(LPCSTR arguments);

/// The languages that the library has in the registry: ids in hexadecimal, added to \p names. \return the status.
DWORD ListLanguages(CStringArray& names);
