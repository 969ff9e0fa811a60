/// \file
/// The library in its process: instance handle, language library, novice mode. A host with texts of its own loads its
/// language library with CZoModuleLanguage.
///
/// A host links the import libraries of ZOGBLBRX.DLL and ZOAFX.DLL. The product must be registered. Also needed:
///   version resource    with the suite's company, product and version: for settings of the host's own (trace level,
///                       novice mode)
///   application object  for document types and help files, and to hear of a change of language. The host then starts
///                       the framework by AfxWinMain or AfxWinInit; a host without one calls neither.
///   message loop        to follow a change of language that another program makes
///
/// A host ships these beside its program:
///   ZOGBLBRX.DLL, ZOAFX.DLL, ZOMFXBRX.DLL, ZOMUSCRL.DLL
///   ZOGBL<language>.DLL              for each language that it registers
///   the compiler's run-time libraries, with the licences that NOTICES.md names:
///     libstdc++-6.dll, libwinpthread-1.dll, libgcc_s_dw2-1.dll (64 bits: libgcc_s_seh-1.dll)
/// Never the TAPI32.DLL of the simulated telephony: it would be loaded in place of the machine's own.
///
/// Libraries are loaded by name: language libraries, plug-ins, TAPI32.DLL. The system searches the current folder, too.
/// On systems that have it, a host calls SetDllDirectory("") first, so that nobody can put a false library there.
/// ZOMUSCRL.DLL is loaded earlier, before the host's first statement: keep it beside the program, which is searched
/// first.
///
/// In DllMain, and in constructors of a library's global objects, the system allows little. There call only
/// ZoGblGetInstanceHandle, ZoGblGetLanguageDLL, ZoGblGetLanguageLCID and ZoGblGetLocalTime, and for message maps
/// CZoLanguageSupport::GetUpdateMessage and CZoTrace::GetNotifyMessage. Other calls may load libraries, make windows or
/// wait for other processes: the process can hang. A plug-in's DllMain registers it with the framework, no more
/// (CZoTemplateDLLModule). A global CZoModuleLanguage is allowed: its constructor does nothing.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

/// The library's own instance handle, for its own resources; null before the library is attached.
extern "C" ZOGBL_API HINSTANCE ZoGblGetInstanceHandle();

/// The loaded language library; null if none is loaded.
ZOGBL_API HINSTANCE ZoGblGetLanguageDLL();

/// The id of the loaded language; 0 if none is loaded.
ZOGBL_API DWORD ZoGblGetLanguageLCID();

/// Loads the current language library of the registry (see CZoLanguageSupport), or counts one more load of the one that
/// is loaded. Call it on the main user-interface thread. Call ZoGblDumpLanguageDLL once for each success.
/// \return FALSE, with nothing counted, if the library cannot be loaded
ZOGBL_API BOOL ZoGblLoadLanguageDLL();

/// Releases one load; the last release frees the library. One release too many sets the count to -1; the next load then
/// only returns it to 0: it answers TRUE, but nothing is loaded.
/// \return FALSE, with nothing released, if this library is not attached, or for the last release from another thread
/// than the load: the hidden window belongs to that thread
ZOGBL_API BOOL ZoGblDumpLanguageDLL();

/// The local time. Null is ignored.
ZOGBL_API void ZoGblGetLocalTime(SYSTEMTIME* time);

/// Writes the current user's "NoviceMode". Nothing is written if the version resource of the program gives no keys.
/// Errors are not reported.
ZOGBL_API void ZoGblSetRegNoviceMode(int mode);

/// The current user's "NoviceMode"; 0 if it cannot be read.
ZOGBL_API int ZoGblGetRegNoviceMode();
