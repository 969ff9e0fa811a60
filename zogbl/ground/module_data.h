/// \file
/// What the library keeps for its process.
#pragma once

#include <afxext.h>

#include <memory>

class CZoCountryCodeList;
class CZoLanguageSupport;

/// The country list with the function that deletes it: rooms below the countries know the list by name only.
using CountryListOwner = std::unique_ptr<CZoCountryCodeList, void (*)(CZoCountryCodeList*)>;

/// The fields up to the country list stand in a prescribed order.
struct ZoModuleData {
    LONG m_nLanguageLoadCount = 0; ///< ZoGblLoadLanguageDLL calls not released yet; may fall to -1
    HINSTANCE m_hInstance = nullptr;
    HMODULE m_hSibling = nullptr;                     ///< zomuscrl.dll
    HINSTANCE m_hLanguageLibrary = nullptr;           ///< set by SetLanguageLibrary
    CZoLanguageSupport* m_pLanguageSupport = nullptr; ///< owned while a language library is loaded
    CountryListOwner m_countries{nullptr, nullptr};   ///< never null: made and deleted with the block
    CDynLinkLibrary* m_pLanguageLink = nullptr; ///< the language library's place in the framework's resource chain;
                                                ///< the framework's

    /// From here on texts are those of this library, the framework's own among them; what keeps texts is renewed. Null:
    /// there is none.
    void SetLanguageLibrary(HINSTANCE library);
};

/// Takes what ZoGblGetInstanceHandle answers from here on.
void ZoSetInstanceHandle(HINSTANCE instance);

constexpr DWORD kZoLibraryPathSize = 1024;

/// The path of the library's own file. \return FALSE when the system does not tell, or it is too long.
BOOL ZoGetLibraryPath(char (&path)[kZoLibraryPathSize]);

/// Makes the block with an empty country list and stores it for the calling thread.
/// \param countries the list; null if there was no memory for it
/// \return FALSE, with nothing left behind, on failure.
BOOL ZoModuleDataCreate(CountryListOwner countries);
/// Frees the block that the calling thread stored; a thread without one does nothing.
void ZoModuleDataDestroy();
/// The block: the calling thread's, or the first one for all other threads. Null before the library is attached.
ZoModuleData* ZoModuleDataGet();

/// Fills the country list if it is empty, and renews its names if that is due.
void ZoEnsureCountryList();
