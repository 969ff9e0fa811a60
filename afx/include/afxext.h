/// \file
/// Application framework: extension libraries, and of a host bars and print jobs.
#pragma once

#include <afxbar_.h> // bars
#include <afxprn_.h> // print jobs
#include <afxwin.h>

/// What the framework knows of one extension library.
struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HMODULE hModule;
    HMODULE hResource;                ///< where the library's resources are looked up, as a rule hModule
    CRuntimeClass* pFirstSharedClass; ///< the library's dynamically creatable classes
};

/// Moves the class list of the module state aside while an extension library loads; afxdllx.h calls it.
AFX_API void AFXAPI AfxBeginExtensionModule();

/// Registers an extension library at its process attach. Takes the classes registered since the library began to load
/// into \p state. \return FALSE on failure.
AFX_API BOOL AFXAPI AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule);

/// Releases an extension library at its process detach: its CDynLinkLibrary objects leave the chain and are deleted.
/// \param bAll TRUE also removes those of other modules (end of the framework itself).
AFX_API void AFXAPI AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll = FALSE);

/// One link of the chain in which resources and classes are looked up: the newest first, behind the application.
/// Create it with new in the library's process attach; the framework owns it.
class AFX_API CDynLinkLibrary : public CObject {
    DECLARE_DYNAMIC(CDynLinkLibrary)
public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem = FALSE);
    CDynLinkLibrary(HINSTANCE hModule, HINSTANCE hResource);
    ~CDynLinkLibrary() override;

    HMODULE m_hModule;
    HMODULE m_hResource;
    CRuntimeClass* m_pFirstSharedClass;
    BOOL m_bSystem; ///< TRUE: searched after all links that have FALSE
    CDynLinkLibrary* m_pNextDLL = nullptr;
};
