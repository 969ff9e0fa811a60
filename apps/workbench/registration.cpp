#include "registration.h"

#include "program.h"

#include <zogbl/global_config.h>
#include <zogbl/module.h>
#include <zogbl/version_resource.h>

namespace {

DWORD CollectNames(void* context, LPCSTR valueName, const void*, DWORD)
{
    try {
        static_cast<CStringArray*>(context)->Add(valueName);
        return ERROR_SUCCESS;
    } catch (CMemoryException* e) {
        e->Delete();
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

/// The key of the library's list of languages; empty when the program is not registered.
CString LanguagesKey()
{
    CZoVersionResource library;
    return library.ExtractVersionInfo(ZoGblGetInstanceHandle()) ? library.GetModuleRootKey() + "\\Languages"
                                                                : CString();
}

} // namespace

int RunProvision(LPCSTR arguments)
{
    Program provision;
    return provision.Start("ZoProvision.exe", arguments) ? provision.WaitForEnd() : -1;
}

DWORD ListLanguages(CStringArray& names)
{
    const CString key = LanguagesKey();
    return key.IsEmpty() ? ERROR_FILE_NOT_FOUND
                         : CZoGlobalConfig().EnumValues(ZO_MODE_LOCAL_MACHINE, key, &CollectNames, &names);
}

DWORD ChooseLanguage(DWORD languageId)
{
    CString chosen;
    chosen.Format("%04x", static_cast<unsigned>(languageId));

    CZoGlobalConfig config;
    CStringArray names;
    DWORD status = ListLanguages(names);
    bool listed = false;
    for (INT_PTR i = 0; status == ERROR_SUCCESS && i < names.GetSize(); ++i) {
        const bool isChosen = names[i].CompareNoCase(chosen) == 0;
        listed = listed || isChosen;
        status = config.SetValue(ZO_MODE_LOCAL_MACHINE, LanguagesKey(), names[i], static_cast<DWORD>(isChosen));
    }
    return status == ERROR_SUCCESS && !listed ? ERROR_FILE_NOT_FOUND : status;
}
