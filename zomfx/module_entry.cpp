// The library's entry: registers it with the framework, so that its classes are found by name.
#include <afxdllx.h>

#include <common/without_throwing.h>

namespace {

AFX_EXTENSION_MODULE g_extensionModule = {};

BOOL AttachToProcess(HINSTANCE instance)
{
    if (!AfxInitExtensionModule(g_extensionModule, instance))
        return FALSE;
    if (!WithoutThrowing([] { new CDynLinkLibrary(g_extensionModule); })) { // the framework's from here on
        AfxTermExtensionModule(g_extensionModule);
        return FALSE;
    }
    return TRUE;
}

} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID)
{
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        return AttachToProcess(instance);
    case DLL_PROCESS_DETACH:
        AfxTermExtensionModule(g_extensionModule);
        return TRUE;
    default:
        return TRUE;
    }
}
