/// \file
/// Dialogs beyond those of afxwin.h: property sheets and the system's own dialogs.
#pragma once

#include <afxwin.h>

#include <afxcdl_.h> // dialogs of the system
#include <afxsht_.h> // property sheets
