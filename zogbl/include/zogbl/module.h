/// \file
/// The library in its process: instance handle, language library, novice mode.
///
/// A host links the import libraries of ZOGBLBRX.DLL and ZOAFX.DLL. The product must be registered; for settings of its
/// own (trace level, novice mode) the host needs a version resource with the suite's company, product and version. It
/// needs an application object for document types and help files, and to hear that the language has changed; it then
/// starts the framework by AfxWinMain or AfxWinInit. Without one there is nothing to start. A host whose thread answers
/// window messages follows a change of language that another program makes.
///
/// Libraries are loaded by name: language libraries, plug-ins, TAPI32.DLL. The system looks for them in the current folder
/// too. A host should call SetDllDirectory("") first, where the system has it, so that nobody slips it a library there.
/// ZOMUSCRL.DLL is loaded so before the host's first statement: keep it beside the program, where the system looks
/// first.
#pragma once

#include <zogbl/country_code.h>
#include <zogbl/export.h>

#include <afx.h>

/// The library's own instance handle, through which its own resources are loaded; null before it is attached.
extern "C" ZOGBL_API HINSTANCE ZoGblGetInstanceHandle();

/// The loaded language library; null when none is loaded.
ZOGBL_API HINSTANCE ZoGblGetLanguageDLL();

/// The language id of the loaded language library; 0 when none is loaded.
ZOGBL_API DWORD ZoGblGetLanguageLCID();

/// Loads the language library that the registry names as current (see CZoLanguageSupport), or counts one more user of
/// the one already loaded. Call it on the main user-interface thread, and ZoGblDumpLanguageDLL once for each success.
/// \return FALSE when there is no language library to be had; nothing is counted then.
ZOGBL_API BOOL ZoGblLoadLanguageDLL();

/// Releases one user; the last one frees the language library. A release too many leaves the count at -1, without a
/// guard: the next load then only counts up to 0 and loads nothing. \return FALSE without the library's data, and for
/// the last release on another thread than that of the load: the hidden window belongs to that one. Nothing is released
/// then.
ZOGBL_API BOOL ZoGblDumpLanguageDLL();

/// The local time.
ZOGBL_API void ZoGblGetLocalTime(SYSTEMTIME* time);

/// Writes the current user's "NoviceMode". Nothing is written when the running program's version resource gives no
/// keys; errors are not reported.
ZOGBL_API void ZoGblSetRegNoviceMode(int mode);

/// The current user's "NoviceMode"; 0 when it cannot be read.
ZOGBL_API int ZoGblGetRegNoviceMode();
