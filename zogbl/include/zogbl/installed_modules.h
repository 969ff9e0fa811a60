/// \file
/// The modules that are installed beside the running application, as the registry lists them.
#pragma once

#include <zogbl/export.h>

#include <afxcoll.h>

class CZoGlobalConfig;

/// Bit of the access flags: the module provides a template library. The other bits belong to applications and modules;
/// here they are only carried and compared.
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

/// The list of installed modules of the running application. Nothing is thrown. The registry keeps it below
/// HKEY_LOCAL_MACHINE, in the installed-modules key (see CZoVersionResource):
///
///     module                 one subkey for each module
///     module\3.9             a subkey named after the application's product version
///     module\3.9, "Access"   DWORD: access flags
///     module\3.9, "Template" text of up to 260 characters: the file name of the template library
///
/// A module without "Access" is not listed. A module with ZO_ACCESS_TEMPLATE is listed without that flag if its
/// "Template" is missing, empty, too long or no text.
class ZOGBL_API CZoInstalledModules : public CObject {
public:
    explicit CZoInstalledModules(BOOL load = FALSE); ///< calls Load if \p load
    ~CZoInstalledModules() override;

    /// Reads the list anew, in the registry's order. Success if there are no modules. If the registry cannot be read to
    /// the end, the modules read so far count. \return FALSE, with an empty list: the application has no usable version
    /// resource (see CZoVersionResource), or memory has run out
    BOOL Load();
    void RemoveAll();

    /// Sets \p fileNames to the template libraries of all modules whose flags have every bit of \p mask, in the list's
    /// order. If memory runs out, it is empty. Without ZO_ACCESS_TEMPLATE in \p mask, modules without a library give
    /// empty names.
    void GetTemplateFileNames(CStringArray& fileNames, DWORD mask) const;
    /// Whether the list has the known module \p identifier (a ZO_MODULE_ value) with a template library. The case of
    /// its name is ignored.
    BOOL IsTemplateInstalled(DWORD identifier) const;
    /// Writes the module's "Access": its default flags if \p on, else 0. The list in memory stays as it is.
    ///
    /// Only a module that is listed with ZO_ACCESS_TEMPLATE is written. So a template library can be switched off, or
    /// its module get its default flags again, but one that is off cannot be switched on. This is prescribed: a library
    /// that the set-up left off stays off.
    void SetTemplateInstalled(DWORD identifier, BOOL on) const;

protected:
    /// Adds the module to the list, unless it has no "Access". \return FALSE if memory has run out
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
