#include "registration.h"

#include "program.h"

#include <common/without_throwing.h>
#include <zogbl/global_config.h>
#include <zogbl/module.h>
#include <zogbl/version_resource.h>

namespace {

DWORD CollectNames(void* context, LPCSTR valueName, const void*, DWORD)
{
    const BOOL added = WithoutThrowing([=] { static_cast<CStringArray*>(context)->Add(valueName); });
    return added ? ERROR_SUCCESS : ERROR_NOT_ENOUGH_MEMORY;
}

} // namespace

int RunProvision(LPCSTR arguments)
{
    Program provision;
    return provision.Start("ZoProvision.exe", arguments) ? provision.WaitForEnd() : -1;
}

DWORD ListLanguages(CStringArray& names)
{
    CZoVersionResource library;
    if (!library.ExtractVersionInfo(ZoGblGetInstanceHandle()))
        return ERROR_FILE_NOT_FOUND;
    return CZoGlobalConfig().EnumValues(ZO_MODE_LOCAL_MACHINE, library.GetModuleRootKey() + "\\Languages",
                                        &CollectNames, &names);
}
