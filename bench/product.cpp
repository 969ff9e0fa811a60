#include "product.h"

#include "harness.h"
#include "process.h"

#include <zogbl/global_config.h>
#include <zogbl/module.h>
#include <zogbl/version_resource.h>

namespace {

bool RunProvision(const char* option)
{
    return RunProgram("\"" + OwnFolder() + "ZoProvision.exe\" " + option + " \"" + OwnPath() + "\"").exitCode == 0;
}

DWORD NoteLanguage(void* listed, LPCSTR, const void*, DWORD)
{
    *static_cast<bool*>(listed) = true;
    return ERROR_SUCCESS;
}

} // namespace

RegisteredProduct::RegisteredProduct()
{
    if (ReadKeys())
        return;
    m_isOurs = m_userKey.IsEmpty(); // a product that has a user, but no languages yet, is somebody's
    Require(RunProvision("") && ReadKeys(), "ZoProvision could not register the product");
}

RegisteredProduct::~RegisteredProduct()
{
    try {
        if (m_isOurs)
            RunProvision("--remove");
    } catch (const BenchmarkFailure&) {
        // The registration stays, which harms nobody.
    }
}

bool RegisteredProduct::ReadKeys()
{
    CZoVersionResource library;
    if (!library.ExtractVersionInfo(ZoGblGetInstanceHandle()))
        return false;
    m_userKey = library.GetCurrentUserKey();
    m_languagesKey = library.GetModuleRootKey() + "\\Languages";
    bool listed = false;
    CZoGlobalConfig().EnumValues(ZO_MODE_LOCAL_MACHINE, m_languagesKey, &NoteLanguage, &listed);
    return listed;
}

LoadedLanguage::LoadedLanguage() { Require(ZoGblLoadLanguageDLL(), "no language library could be loaded"); }
LoadedLanguage::~LoadedLanguage() { ZoGblDumpLanguageDLL(); }
