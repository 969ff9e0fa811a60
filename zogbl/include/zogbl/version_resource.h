/// \file
/// The version resource of a module, and the registry keys made from it.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

/// Reads a module's version resource and makes the suite's keys from it and from the name of the logged-on user
/// ("SYSTEM" if there is none).
///
/// The keys stand below HKEY_LOCAL_MACHINE and have no backslash at the end. They use the texts of the resource's first
/// translation:
///
///     root                "Software\" CompanyName "\" ProductName "\" ProductVersion
///     users               root "\Users"
///     current user        users "\" user
///     installed modules   current user "\Modules"
///     module root         current user "\Modules\" InternalName "\" product version ("%d.%d" of the fixed block)
///     phone lists, speed-dial lists, fax-on-demand lists
///                         current user "\PhoneLists", "\SpeedDialLists", "\FaxOnDemandLists"
///
/// If the user has no key yet, the key of the first configured user is copied. If that fails, the copy is removed and
/// the keys are those of the first user.
///
/// Extraction returns FALSE, and every text is empty, if
///   - the module has no version resource, a damaged one or no translation table;
///   - the product has no user, or its users cannot be read;
///   - memory has run out.
/// Callers then go on without settings.
class ZOGBL_API CZoVersionResource {
public:
    CZoVersionResource();
    virtual ~CZoVersionResource();
    CZoVersionResource(const CZoVersionResource&) = delete;
    CZoVersionResource& operator=(const CZoVersionResource&) = delete;

    BOOL ExtractVersionInfo();                     ///< the executable of the process
    BOOL ExtractVersionInfo(HINSTANCE module);     ///< a loaded module
    BOOL ExtractVersionInfo(const char* fileName); ///< a file

    /// Reads the texts of one translation and makes the keys. A text that this translation lacks stays as it was.
    /// \param translation language in the low word, code page in the high word
    /// \return FALSE if the resource has no such translation, there is no user, the users cannot be read, or memory has
    /// run out
    BOOL ExtractLanguageStandardValues(DWORD translation);

    /// One of the nine texts, 0 to 8: Comments, CompanyName, FileDescription, FileVersion, InternalName,
    /// LegalCopyright, OriginalFilename, ProductName, ProductVersion. Another index gives an empty text.
    CString& GetStandardValue(WORD index);
    CString& GetInternalName() { return m_standardValues[4].value; }
    CString& GetLegalCopyright() { return m_standardValues[5].value; }

    /// Sets \p count to the number of translations. \p translations is not written: this is prescribed.
    void GetTranslationTableArray(DWORD* translations, WORD& count);

    CString& GetBrixelsRootKey() { return m_csRootKey; }
    CString& GetModuleRootKey() { return m_csModuleRootKey; }
    CString& GetInstalledModulesKey() { return m_csInstalledModulesKey; }
    CString& GetPhoneListsKey() { return m_csPhoneListsKey; }
    CString& GetSpeedDialListsKey() { return m_csSpeedDialListsKey; }
    CString& GetFaxOnDemandListsKey() { return m_csFaxOnDemandListsKey; }
    CString& GetUsersKey() { return m_csUsersKey; }
    CString& GetCurrentUserKey() { return m_csCurrentUserKey; }

    /// The two double words of the fixed block. Each holds a number in its high and one in its low word.
    void GetProductVersionMajorMinor(DWORD& ms, DWORD& ls);
    void GetFileVersionMajorMinor(DWORD& ms, DWORD& ls);
    void GetDateTimeStampMajorMinor(DWORD& ms, DWORD& ls);

    BOOL IsModuleDebug() const { return HasFileFlag(VS_FF_DEBUG); }
    BOOL IsModulePrerelease() const { return HasFileFlag(VS_FF_PRERELEASE); }
    BOOL IsModulePatched() const { return HasFileFlag(VS_FF_PATCHED); }

    /// Bits of the file type. An application (1) is an EXE, a library (2) a DLL, a driver (3) all three: ask for
    /// IsModuleDriver first.
    BOOL IsModuleEXE() const { return (m_fixedInfo.dwFileType & 1) != 0; }
    BOOL IsModuleDLL() const { return (m_fixedInfo.dwFileType & 2) != 0; }
    BOOL IsModuleDriver() const { return (m_fixedInfo.dwFileType & 3) == 3; }

private:
    static constexpr WORD kStandardValueCount = 9;
    struct StandardValue {
        LPCSTR name;
        CString value;
    };

    BOOL Extract(const char* fileName);
    BOOL ReadTranslations();
    void ReadStandardValues(DWORD translation);
    BOOL BuildKeys();
    void Clear();
    BOOL HasFileFlag(DWORD flag) const { return (m_fixedInfo.dwFileFlags & flag) != 0; }

    VS_FIXEDFILEINFO m_fixedInfo;
    DWORD m_dwVersionDataSize;
    HGLOBAL m_hVersionData;
    void* m_lpVersionData; // locked
    HGLOBAL m_hTranslations;
    DWORD* m_lpdwTranslations; // locked
    WORD m_wTranslationCount;
    StandardValue m_standardValues[kStandardValueCount];
    HINSTANCE m_hModule;
    CString m_csModuleFileName;
    CString m_csRootKey;
    CString m_csModuleRootKey;
    CString m_csInstalledModulesKey;
    CString m_csPhoneListsKey;
    CString m_csSpeedDialListsKey;
    CString m_csFaxOnDemandListsKey;
    BOOL m_bTranslations;
    CString m_csUsersKey;
    CString m_csCurrentUserKey;
};
