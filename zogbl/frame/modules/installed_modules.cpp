#include <zogbl/installed_modules.h>

#include <common/without_throwing.h>
#include <zogbl/global_config.h>
#include <zogbl/version_resource.h>

#include <memory>

namespace {

constexpr LPCSTR kAccess = "Access";
constexpr LPCSTR kTemplate = "Template";
constexpr DWORD kTemplateLength = 260; // characters

struct KnownModule {
    DWORD identifier;
    LPCSTR name;
    DWORD defaultAccess;
};

constexpr KnownModule kKnownModules[] = {
    {ZO_MODULE_VIDEO, "VIDEOBrixel", 1}, {ZO_MODULE_TELE, "TELEBrixel", 15}, {ZO_MODULE_FAX, "FAX32Brixel", 15},
    {ZO_MODULE_VIEW, "VIEWBrixel", 1},   {ZO_MODULE_DATA, "DATABrixel", 7},
};
constexpr KnownModule kUnknownModule = {0, "", 0};

const KnownModule& FindKnownModule(DWORD identifier)
{
    for (const KnownModule& module : kKnownModules) {
        if (module.identifier == identifier)
            return module;
    }
    return kUnknownModule;
}

/// The application's product version, as it names the subkeys of modules.
CString VersionText(CZoVersionResource& version)
{
    DWORD high = 0;
    DWORD low = 0;
    version.GetProductVersionMajorMinor(high, low);
    CString text;
    text.Format("%d.%d", HIWORD(high), LOWORD(high));
    return text;
}

CString VersionKey(LPCSTR installedModulesKey, LPCSTR moduleName, LPCSTR versionText)
{
    return CString(installedModulesKey) + "\\" + moduleName + "\\" + versionText;
}

DWORD CollectName(void* context, LPCSTR subkeyName)
{
    const BOOL added = WithoutThrowing([=] { static_cast<CStringArray*>(context)->Add(subkeyName); });
    return added ? ERROR_SUCCESS : ZoErrNoMemory;
}

} // namespace

CZoInstalledModules::CZoInstalledModules(BOOL load)
{
    if (load)
        Load();
}

CZoInstalledModules::~CZoInstalledModules() { RemoveAll(); }

void CZoInstalledModules::RemoveAll()
{
    for (INT_PTR i = 0; i < m_modules.GetSize(); ++i)
        delete static_cast<ZoInstalledModuleInfo*>(m_modules[i]);
    m_modules.RemoveAll();
}

BOOL CZoInstalledModules::Load()
{
    RemoveAll();
    const BOOL loaded = WithoutThrowing([&]() -> BOOL {
        CZoVersionResource version;
        if (!version.ExtractVersionInfo())
            return FALSE;
        const CString key = version.GetInstalledModulesKey();
        const CString versionText = VersionText(version);
        CZoGlobalConfig config;
        CStringArray names;
        // A missing key is an empty list; of one that cannot be read to its end, what was read counts.
        if (config.EnumEntries(ZO_MODE_LOCAL_MACHINE, key, &CollectName, &names) == ZoErrNoMemory)
            return FALSE;
        for (INT_PTR i = 0; i < names.GetSize(); ++i) {
            if (!LoadInstalledModuleInfo(config, key, names[i], versionText))
                return FALSE;
        }
        return TRUE;
    });
    if (!loaded)
        RemoveAll();
    return loaded;
}

BOOL CZoInstalledModules::LoadInstalledModuleInfo(CZoGlobalConfig& config, LPCSTR installedModulesKey,
                                                  LPCSTR moduleName, LPCSTR versionText)
{
    return WithoutThrowing([&]() -> BOOL {
        const CString key = VersionKey(installedModulesKey, moduleName, versionText);
        DWORD access = 0;
        DWORD status = config.GetValue(ZO_MODE_LOCAL_MACHINE, key, kAccess, access, static_cast<DWORD>(-1));
        if (status != ERROR_SUCCESS)
            return status != ZoErrNoMemory;
        char fileName[kTemplateLength + 1] = "";
        if ((access & ZO_ACCESS_TEMPLATE) != 0) {
            status = config.GetValue(ZO_MODE_LOCAL_MACHINE, key, kTemplate, fileName, sizeof fileName, "");
            if (status == ZoErrNoMemory)
                return FALSE;
            if (status != ERROR_SUCCESS || *fileName == '\0') {
                access &= ~ZO_ACCESS_TEMPLATE;
                *fileName = '\0';
            }
        }
        auto module = std::make_unique<ZoInstalledModuleInfo>();
        module->m_dwAccess = access;
        module->m_csModuleName = moduleName;
        module->m_csTemplateFileName = fileName;
        m_modules.Add(module.get());
        module.release(); // NOLINT(bugprone-unused-return-value): the array owns it now
        return TRUE;
    });
}

void CZoInstalledModules::GetTemplateFileNames(CStringArray& fileNames, DWORD mask) const
{
    fileNames.RemoveAll();
    const BOOL added = WithoutThrowing([&] {
        for (INT_PTR i = 0; i < m_modules.GetSize(); ++i) {
            if ((Module(i)->m_dwAccess & mask) == mask)
                fileNames.Add(Module(i)->m_csTemplateFileName);
        }
    });
    if (!added)
        fileNames.RemoveAll();
}

BOOL CZoInstalledModules::IsTemplateInstalled(DWORD identifier) const
{
    const LPCSTR name = FindKnownModule(identifier).name;
    for (INT_PTR i = 0; i < m_modules.GetSize(); ++i) {
        if ((Module(i)->m_dwAccess & ZO_ACCESS_TEMPLATE) != 0 && Module(i)->m_csModuleName.CompareNoCase(name) == 0)
            return TRUE;
    }
    return FALSE;
}

void CZoInstalledModules::SetTemplateInstalled(DWORD identifier, BOOL on) const
{
    WithoutThrowing([&] {
        const CString name = GetModuleDesc(identifier);
        if (name.IsEmpty())
            return;
        for (INT_PTR i = 0; i < m_modules.GetSize(); ++i) {
            const ZoInstalledModuleInfo* module = Module(i);
            if ((module->m_dwAccess & ZO_ACCESS_TEMPLATE) == 0 || module->m_csModuleName.CompareNoCase(name) != 0)
                continue;
            CZoVersionResource version;
            if (!version.ExtractVersionInfo())
                return;
            const CString key =
                VersionKey(version.GetInstalledModulesKey(), module->m_csModuleName, VersionText(version));
            CZoGlobalConfig().SetValue(ZO_MODE_LOCAL_MACHINE, key, kAccess, on ? GetDefaultAccessFlags(identifier) : 0);
        }
    });
}

CString CZoInstalledModules::GetModuleDesc(DWORD identifier) const { return FindKnownModule(identifier).name; }

DWORD CZoInstalledModules::GetDefaultAccessFlags(DWORD identifier) const
{
    return FindKnownModule(identifier).defaultAccess;
}
