#include "registration.h"

#include <zogbl/global_config.h>
#include <zogbl/module.h>
#include <zogbl/version_resource.h>

#include <afxcoll.h>

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

} // namespace

int RunProvision(LPCSTR arguments)
{
    char path[MAX_PATH] = {};
    ::GetModuleFileName(nullptr, path, sizeof path - 1);
    const CString own(path);
    CString command = "\"" + own.Left(own.ReverseFind('\\') + 1) + "ZoProvision.exe\" " + arguments;
    STARTUPINFO startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!::CreateProcess(nullptr, command.GetBuffer(command.GetLength()), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                         nullptr, nullptr, &startup, &process))
        return -1;
    constexpr DWORD kPatience = 30000; // milliseconds
    DWORD code = static_cast<DWORD>(-1);
    if (::WaitForSingleObject(process.hProcess, kPatience) == WAIT_OBJECT_0)
        ::GetExitCodeProcess(process.hProcess, &code);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return static_cast<int>(code);
}

DWORD ChooseLanguage(DWORD languageId)
{
    CZoVersionResource library;
    if (!library.ExtractVersionInfo(ZoGblGetInstanceHandle()))
        return ERROR_FILE_NOT_FOUND;
    const CString key = library.GetModuleRootKey() + "\\Languages";
    CString chosen;
    chosen.Format("%04x", static_cast<unsigned>(languageId));

    CZoGlobalConfig config;
    CStringArray names;
    DWORD status = config.EnumValues(ZO_MODE_LOCAL_MACHINE, key, &CollectNames, &names);
    bool listed = false;
    for (INT_PTR i = 0; status == ERROR_SUCCESS && i < names.GetSize(); ++i) {
        const bool isChosen = names[i].CompareNoCase(chosen) == 0;
        listed = listed || isChosen;
        status = config.SetValue(ZO_MODE_LOCAL_MACHINE, key, names[i], static_cast<DWORD>(isChosen));
    }
    return status == ERROR_SUCCESS && !listed ? ERROR_FILE_NOT_FOUND : status;
}
