// The library's entry, and what it offers its process.
#include <afxdllx.h>

#include <common/without_throwing.h>
#include <zogbl/country_code.h>
#include <zogbl/gdi_data.h>
#include <zogbl/global_config.h>
#include <zogbl/language_support.h>
#include <zogbl/message_box.h>
#include <zogbl/module.h>
#include <zogbl/resource_lookup.h>

#include <zomfx/resource_source.h>

#include "ground/module_data.h"

#include <memory>
#include <new>
#include <utility>

namespace {

AFX_EXTENSION_MODULE g_extensionModule = {};
DWORD g_attachCount = 0;

constexpr LPCSTR kNoviceMode = "NoviceMode";

/// The framework extensions find their texts where this library does.
constexpr ZoResourceSource kResourceSource = {&ZoGblLoadString};

BOOL AttachToProcess(HINSTANCE instance)
{
    if (!ZoModuleDataCreate(
            {new (std::nothrow) CZoCountryCodeList, [](CZoCountryCodeList* countries) { delete countries; }})) {
        // The host's classes were put aside while this library was loading; this brings them back.
        AfxInitExtensionModule(g_extensionModule, instance);
        AfxTermExtensionModule(g_extensionModule);
        return FALSE;
    }
    if (!AfxInitExtensionModule(g_extensionModule, instance)) {
        ZoModuleDataDestroy();
        return FALSE;
    }
    CDynLinkLibrary* languageLink;
    const BOOL linked = WithoutThrowing([&] {
        new CDynLinkLibrary(g_extensionModule); // the framework's from here on, like the next
        languageLink = new CDynLinkLibrary(instance, nullptr);
        languageLink->m_bSystem = TRUE; // the last to be asked
    });
    if (!linked) {
        AfxTermExtensionModule(g_extensionModule);
        ZoModuleDataDestroy();
        return FALSE;
    }
    ZoMfxSetResourceSource(&kResourceSource);
    AfxSetMessageBox(&ZoMessageBox);
    ZoSetInstanceHandle(instance);
    ++g_attachCount;
    ZoModuleData* data = ZoModuleDataGet();
    if (data == nullptr)
        return FALSE;
    data->m_hInstance = instance;
    data->m_pLanguageLink = languageLink;
    data->m_hSibling = LoadLibraryA("zomuscrl.dll"); // held for the life of the process; nothing depends on it
    return TRUE;
}

void DetachFromProcess()
{
    const ZoModuleData* data = ZoModuleDataGet();
    if (data != nullptr && data->m_hSibling != nullptr)
        FreeLibrary(data->m_hSibling);
    // A language library that is still loaded stays: its window belongs to a thread that may be gone.
    ZoModuleDataDestroy();
    if (g_attachCount != 0) {
        --g_attachCount;
        AfxSetMessageBox(nullptr);
        ZoMfxSetResourceSource(nullptr);
        AfxTermExtensionModule(g_extensionModule, FALSE);
    }
}

} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID)
{
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        return AttachToProcess(instance);
    case DLL_PROCESS_DETACH:
        DetachFromProcess();
        return TRUE;
    default:
        return TRUE;
    }
}

// Language library ----------------------------------------------------------------------------------------------------

DWORD ZoGblGetLanguageLCID()
{
    const ZoModuleData* data = ZoModuleDataGet();
    return data != nullptr && data->m_pLanguageSupport != nullptr ? data->m_pLanguageSupport->GetLCID() : 0;
}

BOOL ZoGblLoadLanguageDLL()
{
    ZoModuleData* data = ZoModuleDataGet();
    if (data == nullptr)
        return FALSE;
    if (data->m_nLanguageLoadCount != 0) {
        ++data->m_nLanguageLoadCount;
        return TRUE;
    }
    char path[kZoLibraryPathSize];
    if (!ZoGetLibraryPath(path))
        return FALSE;
    auto support = ResultOr(nullptr, [] { return std::make_unique<CZoLanguageSupport>(); });
    if (!support || !support->LoadCurrentLanguage(path))
        return FALSE;
    data->m_nLanguageLoadCount = 1;
    data->m_pLanguageSupport = support.release();
    data->SetLanguageLibrary(data->m_pLanguageSupport->GetLibraryHandle()); // who follows asks for the language's id
    ZoEnsureCountryList();
    CZoGlobalGDIData::InitializeFontsFromResources();
    return TRUE;
}

BOOL ZoGblDumpLanguageDLL()
{
    ZoModuleData* data = ZoModuleDataGet();
    if (data == nullptr)
        return FALSE;
    if (data->m_nLanguageLoadCount == 1 && !data->m_pLanguageSupport->IsOnOwnThread())
        return FALSE;
    // Deliberately without a guard: one release too many makes up for one load too many.
    if (--data->m_nLanguageLoadCount == 0) {
        data->SetLanguageLibrary(nullptr);
        delete std::exchange(data->m_pLanguageSupport, nullptr);
    }
    return TRUE;
}

// Time and novice mode ------------------------------------------------------------------------------------------------

void ZoGblGetLocalTime(SYSTEMTIME* time)
{
    if (time != nullptr)
        GetLocalTime(time);
}

void ZoGblSetRegNoviceMode(int mode)
{
    CZoVersionResource version;
    if (version.ExtractVersionInfo())
        CZoGlobalConfig().SetValue(ZO_MODE_LOCAL_MACHINE, version.GetCurrentUserKey(), kNoviceMode,
                                   static_cast<DWORD>(mode));
}

int ZoGblGetRegNoviceMode()
{
    CZoVersionResource version;
    if (!version.ExtractVersionInfo())
        return 0;
    DWORD mode = 0;
    const DWORD result = CZoGlobalConfig().GetValue(ZO_MODE_LOCAL_MACHINE, version.GetCurrentUserKey(), kNoviceMode,
                                                    mode, static_cast<DWORD>(-1));
    return result == ERROR_SUCCESS ? static_cast<int>(mode) : 0;
}
