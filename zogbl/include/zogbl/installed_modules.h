/// \file
/// The modules that are installed beside the running application, as the registry lists them.
#pragma once

#include <zogbl/export.h>

#include <afxcoll.h>

class CZoGlobalConfig;

/// Bit of the access flags: the module provides a template library. The other bits belong to applications and modules;
/// they are carried and compared only.
constexpr DWORD ZO_ACCESS_TEMPLATE = 1;

/// Identifiers of the known modules. Any other identifier has an empty name and default flags 0.
constexpr DWORD ZO_MODULE_VIDEO = 100; ///< "VIDEOBrixel", default flags 1
constexpr DWORD ZO_MODULE_TELE = 200;  ///< "TELEBrixel", 15
constexpr DWORD ZO_MODULE_FAX = 300;   ///< "FAX32Brixel", 15
constexpr DWORD ZO_MODULE_VIEW = 400;  ///< "VIEWBrixel", 1
constexpr DWORD ZO_MODULE_DATA = 500;  ///< "DATABrixel", 7

/// One installed module.
struct ZoInstalledModuleInfo {
    DWORD m_dwAccess = 0;         ///< access flags
    CString m_csModuleName;       ///< name of its key
    CString m_csTemplateFileName; ///< of its template library; empty without ZO_ACCESS_TEMPLATE
};

/// The list of installed modules. They stand below HKEY_LOCAL_MACHINE in the installed-modules key of the running
/// application: one subkey a module, below it a subkey named after the application's product version ("3.9"), in it the
/// values "Access" (DWORD, access flags) and "Template" (text of up to 260 characters, the file name of the template
/// library).
///
/// A module without "Access" is not listed. One with ZO_ACCESS_TEMPLATE whose "Template" is missing, empty, too long or
/// no text is listed with that flag cleared. Nothing is thrown.
class ZOGBL_API CZoInstalledModules : public CObject {
public:
    explicit CZoInstalledModules(BOOL load = FALSE); ///< calls Load if \p load
    ~CZoInstalledModules() override;

    /// Reads the list anew, in the registry's order. \return FALSE, with the list empty, when the application has no
    /// usable version resource (see CZoVersionResource) or memory has run out. No modules at all is success.
    BOOL Load();
    void RemoveAll();

    /// Sets \p fileNames to the template libraries of all modules whose flags have every bit of \p mask, in the list's
    /// order; to nothing when memory has run out.
    void GetTemplateFileNames(CStringArray& fileNames, DWORD mask) const;
    /// Whether the list has the known module \p identifier (ZO_MODULE_...), case of its name ignored, with a template
    /// library.
    BOOL IsTemplateInstalled(DWORD identifier) const;
    /// Writes the module's "Access": its default flags if \p on, else 0. The list in memory stays as it is.
    ///
    /// Only a module that is listed with ZO_ACCESS_TEMPLATE is written: this switches a template library off, or gives
    /// the module its default flags again, but never switches on one that is off. This is prescribed: what a set-up
    /// left off stays off.
    void SetTemplateInstalled(DWORD identifier, BOOL on) const;

protected:
    /// Adds the module to the list, unless it has no "Access". \return FALSE when memory has run out.
    BOOL LoadInstalledModuleInfo(CZoGlobalConfig& config, LPCSTR installedModulesKey, LPCSTR moduleName,
                                 LPCSTR versionText);
    /// The name of a known module's key; empty for another identifier.
    CString GetModuleDesc(DWORD identifier) const;
    DWORD GetDefaultAccessFlags(DWORD identifier) const;

private:
    const ZoInstalledModuleInfo* Module(INT_PTR index) const
    {
        return static_cast<const ZoInstalledModuleInfo*>(m_modules[index]);
    }

    CPtrArray m_modules; // of ZoInstalledModuleInfo, owned
};
