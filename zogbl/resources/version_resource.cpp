#include <zogbl/version_resource.h>

#include <common/without_throwing.h>
#include <zogbl/global_config.h>

#include "version_block.h"

#include <cstring>
#include <utility>

namespace {

constexpr DWORD kModulePathSize = 1024;
constexpr DWORD kUserNameSize = 260;

constexpr LPCSTR kStandardNames[] = {"Comments",         "CompanyName",  "FileDescription",
                                     "FileVersion",      "InternalName", "LegalCopyright",
                                     "OriginalFilename", "ProductName",  "ProductVersion"};
constexpr WORD kCompanyName = 1;
constexpr WORD kProductName = 7;
constexpr WORD kProductVersion = 8;

/// The logged-on user, or "SYSTEM" where there is none.
CString UserName()
{
    char name[kUserNameSize] = {};
    DWORD size = sizeof name;
    return GetUserNameA(name, &size) && name[0] != '\0' ? name : "SYSTEM";
}

/// Unlocks and frees a global block.
void FreeBlock(HGLOBAL& block)
{
    if (block != nullptr) {
        GlobalUnlock(block);
        GlobalFree(std::exchange(block, nullptr));
    }
}

/// Allocates a moveable block of zeros and locks it. \return null on failure.
void* AllocateBlock(HGLOBAL& block, DWORD size)
{
    block = GlobalAlloc(GHND, size);
    void* locked = block != nullptr ? GlobalLock(block) : nullptr;
    if (locked == nullptr && block != nullptr)
        GlobalFree(std::exchange(block, nullptr));
    return locked;
}

} // namespace

CZoVersionResource::CZoVersionResource()
    : m_dwVersionDataSize(0), m_hVersionData(nullptr), m_lpVersionData(nullptr), m_hTranslations(nullptr),
      m_lpdwTranslations(nullptr), m_hModule(nullptr)
{
    static_assert(sizeof kStandardNames / sizeof *kStandardNames == kStandardValueCount);
    for (WORD i = 0; i < kStandardValueCount; ++i)
        m_standardValues[i].name = kStandardNames[i];
    Clear();
}

CZoVersionResource::~CZoVersionResource()
{
    FreeBlock(m_hTranslations);
    FreeBlock(m_hVersionData);
}

void CZoVersionResource::Clear()
{
    FreeBlock(m_hTranslations);
    FreeBlock(m_hVersionData);
    m_lpVersionData = nullptr;
    m_lpdwTranslations = nullptr;
    m_dwVersionDataSize = 0;
    m_wTranslationCount = 0;
    m_bTranslations = FALSE;
    m_hModule = nullptr;
    m_fixedInfo = {};
    for (StandardValue& standard : m_standardValues)
        standard.value.Empty();
    for (CString* text :
         {&m_csModuleFileName, &m_csRootKey, &m_csModuleRootKey, &m_csInstalledModulesKey, &m_csPhoneListsKey,
          &m_csSpeedDialListsKey, &m_csFaxOnDemandListsKey, &m_csUsersKey, &m_csCurrentUserKey})
        text->Empty();
}

// Reading -------------------------------------------------------------------------------------------------------------

BOOL CZoVersionResource::ExtractVersionInfo() { return ExtractVersionInfo(GetModuleHandleA(nullptr)); }

BOOL CZoVersionResource::ExtractVersionInfo(HINSTANCE module)
{
    char path[kModulePathSize] = {};
    const DWORD length = GetModuleFileNameA(module, path, sizeof path);
    if (length == 0 || length >= sizeof path) {
        Clear();
        return FALSE;
    }
    const BOOL extracted = ExtractVersionInfo(path);
    if (extracted)
        m_hModule = module;
    return extracted;
}

BOOL CZoVersionResource::ExtractVersionInfo(const char* fileName)
{
    Clear();
    const BOOL extracted = WithoutThrowing([=, this] { return fileName != nullptr && Extract(fileName); });
    if (!extracted)
        Clear();
    return extracted;
}

BOOL CZoVersionResource::Extract(const char* fileName)
{
    m_csModuleFileName = fileName;
    DWORD ignored = 0;
    m_dwVersionDataSize = GetFileVersionInfoSizeA(const_cast<LPSTR>(fileName), &ignored);
    if (m_dwVersionDataSize == 0 || m_dwVersionDataSize > kMostVersionData)
        return FALSE;
    m_lpVersionData = AllocateBlock(m_hVersionData, VersionBlockSize(m_dwVersionDataSize));
    if (m_lpVersionData == nullptr ||
        !GetFileVersionInfoA(const_cast<LPSTR>(fileName), 0, m_dwVersionDataSize, m_lpVersionData) ||
        !MendVersionBlock(m_lpVersionData, m_dwVersionDataSize))
        return FALSE;
    m_hModule = GetModuleHandleA(fileName);

    const void* fixed = nullptr;
    UINT length = 0;
    if (QueryVersionBlock(m_lpVersionData, m_dwVersionDataSize, "\\", fixed, length) && length >= sizeof m_fixedInfo)
        std::memcpy(&m_fixedInfo, fixed, sizeof m_fixedInfo);
    return ReadTranslations() && ExtractLanguageStandardValues(m_lpdwTranslations[0]);
}

BOOL CZoVersionResource::ReadTranslations()
{
    const void* translations = nullptr;
    UINT length = 0;
    if (!QueryVersionBlock(m_lpVersionData, m_dwVersionDataSize, "\\VarFileInfo\\Translation", translations, length) ||
        length < sizeof(DWORD))
        return FALSE;
    m_lpdwTranslations = static_cast<DWORD*>(AllocateBlock(m_hTranslations, length));
    if (m_lpdwTranslations == nullptr)
        return FALSE;
    std::memcpy(m_lpdwTranslations, translations, length);
    m_wTranslationCount = static_cast<WORD>(length / sizeof(DWORD));
    m_bTranslations = TRUE;
    return TRUE;
}

BOOL CZoVersionResource::ExtractLanguageStandardValues(DWORD translation)
{
    bool known = false;
    for (WORD i = 0; i < m_wTranslationCount; ++i)
        known = known || m_lpdwTranslations[i] == translation;
    if (!known)
        return FALSE;
    return WithoutThrowing([=, this] {
        ReadStandardValues(translation);
        return BuildKeys();
    });
}

void CZoVersionResource::ReadStandardValues(DWORD translation)
{
    for (StandardValue& standard : m_standardValues) {
        char path[64];
        wsprintfA(path, "\\StringFileInfo\\%04X%04X\\%s", LOWORD(translation), HIWORD(translation), standard.name);
        const void* value = nullptr;
        UINT length = 0; // in characters, as a rule with the terminator
        if (!QueryVersionBlock(m_lpVersionData, m_dwVersionDataSize, path, value, length))
            continue;
        const auto* text = static_cast<const char*>(value);
        const size_t textLength = strnlen(text, length);
        if (textLength > 0)
            standard.value = CString(text, static_cast<int>(textLength));
    }
}

// Keys ----------------------------------------------------------------------------------------------------------------

BOOL CZoVersionResource::BuildKeys()
{
    const CString root = "Software\\" + m_standardValues[kCompanyName].value + "\\" +
                         m_standardValues[kProductName].value + "\\" + m_standardValues[kProductVersion].value;
    const CString users = root + "\\Users";
    CString user = UserName();

    CZoGlobalConfig config;
    BOOL exists = FALSE;
    const DWORD status = config.DoesSubkeyExist(ZO_MODE_LOCAL_MACHINE, users, user, exists);
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND)
        return FALSE; // a user whose key cannot be seen may have settings, which a copy would overwrite
    if (!exists) {
        CString first;
        BOOL found = FALSE;
        config.FindFirstSubKey(ZO_MODE_LOCAL_MACHINE, users, first, found);
        if (!found)
            return FALSE;
        if (config.CopyRegTree(ZO_MODE_LOCAL_MACHINE, users + "\\" + user, ZO_MODE_LOCAL_MACHINE, users + "\\" + first,
                               0) != ERROR_SUCCESS) {
            // There was no such key before, so all that is in it is of this copy. Half of the settings would be taken
            // for the user's own at the next start.
            config.DeleteSection(ZO_MODE_LOCAL_MACHINE, users, user);
            user = first;
        }
    }

    CString version;
    version.Format("%d.%d", HIWORD(m_fixedInfo.dwProductVersionMS), LOWORD(m_fixedInfo.dwProductVersionMS));
    m_csRootKey = root;
    m_csUsersKey = users;
    m_csCurrentUserKey = users + "\\" + user;
    m_csInstalledModulesKey = m_csCurrentUserKey + "\\Modules";
    m_csModuleRootKey = m_csInstalledModulesKey + "\\" + GetInternalName() + "\\" + version;
    m_csPhoneListsKey = m_csCurrentUserKey + "\\PhoneLists";
    m_csSpeedDialListsKey = m_csCurrentUserKey + "\\SpeedDialLists";
    m_csFaxOnDemandListsKey = m_csCurrentUserKey + "\\FaxOnDemandLists";
    return TRUE;
}

// Answers -------------------------------------------------------------------------------------------------------------

CString& CZoVersionResource::GetStandardValue(WORD index)
{
    if (index < kStandardValueCount)
        return m_standardValues[index].value;
    static CString none;
    none.Empty(); // a caller may have written to the one handed out before
    return none;
}

void CZoVersionResource::GetTranslationTableArray(DWORD*, WORD& count) { count = m_wTranslationCount; }

void CZoVersionResource::GetProductVersionMajorMinor(DWORD& ms, DWORD& ls)
{
    ms = m_fixedInfo.dwProductVersionMS;
    ls = m_fixedInfo.dwProductVersionLS;
}

void CZoVersionResource::GetFileVersionMajorMinor(DWORD& ms, DWORD& ls)
{
    ms = m_fixedInfo.dwFileVersionMS;
    ls = m_fixedInfo.dwFileVersionLS;
}

void CZoVersionResource::GetDateTimeStampMajorMinor(DWORD& ms, DWORD& ls)
{
    ms = m_fixedInfo.dwFileDateMS;
    ls = m_fixedInfo.dwFileDateLS;
}
