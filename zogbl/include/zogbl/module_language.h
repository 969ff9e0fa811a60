/// \file
/// The language library of a program or plug-in that has texts of its own.
#pragma once

#include <zogbl/export.h>

#include <windows.h>

/// Loads a module's own language library and keeps it in the language of the process.
///
/// The library is named as CZoLanguageSupport::BuildLanguageModuleFilename says: the first five characters of the
/// module's file name, the three letters of the language, ".DLL". ZoWorkbench.exe and 0x0409 give ZoWorENU.DLL. So no
/// two modules of the suite may begin with the same five letters, and none has fewer; ZOGBL is the class library. The
/// system's search order finds the library: beside the program, for example, but not beside a plug-in of another
/// folder. The registry is not asked: a module shows the language that ZoGblLoadLanguageDLL has loaded.
///
/// While it is loaded, the library is a link of the framework's resource chain. Resources are then looked for in this
/// order: the program itself; plug-ins and language libraries of modules, the newest first; the class library and the
/// framework extensions; the language library of the class library. So all modules of a process share one space of
/// numbers. The class library uses none from 30000 to 32767.
///
/// A program with texts of its own:
///
///     BOOL CMyApp::InitInstance()
///     {
///         if (!ZoGblLoadLanguageDLL() || !m_language.Load(m_hInstance)) // CZoModuleLanguage m_language
///             return FALSE;
///         ...
///     }
///
/// and at the end m_language.Unload(), then ZoGblDumpLanguageDLL(). A plug-in loads in its InitializeTemplateDLL and
/// unloads in its ShutdownTemplateDLL.
///
/// After a change of language the library is the new one before the message CZoLanguageSupport::GetUpdateMessage()
/// reaches the program, which loads its texts again then. All calls belong to the thread that called
/// ZoGblLoadLanguageDLL.
class ZOGBL_API CZoModuleLanguage {
public:
    CZoModuleLanguage() = default;
    ~CZoModuleLanguage() { Unload(); }
    CZoModuleLanguage(const CZoModuleLanguage&) = delete;
    CZoModuleLanguage& operator=(const CZoModuleLanguage&) = delete;

    /// Loads the module's library of the process's language; one that this object has loaded before is freed.
    /// \param module the program (AfxGetInstanceHandle()) or the plug-in, by its instance handle
    /// \return FALSE, with nothing loaded, if the process has no language, the module has no library of it, or memory
    /// has run out. If the language changes and this cannot load the library of the new one, the library before stays
    BOOL Load(HINSTANCE module);

    /// Takes the library out of the resource chain and frees it. Does nothing if none is loaded.
    void Unload();

    /// The library that is loaded now; null if none is.
    HINSTANCE GetLibraryHandle() const;

private:
    class Library;
    Library* m_library = nullptr;
};
