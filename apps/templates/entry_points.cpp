// The entry points that every template library exports, and the library's entry. A host calls them through
// CZoTemplateDLLModule. The two numbers of some are the host's own; this suite's hosts pass 0.
#include "entry_points.h"

#include <common/without_throwing.h>
#include <zogbl/module_language.h>

#include <afxdllx.h>

namespace {

AFX_EXTENSION_MODULE g_extensionModule = {};
CZoModuleLanguage g_language;

UINT AddClass(CPtrArray* classes, CRuntimeClass* runtimeClass)
{
    classes->Add(runtimeClass);
    return 1;
}

} // namespace

#define ZO_ENTRY_POINT(result) extern "C" __declspec(dllexport) result

ZO_ENTRY_POINT(BOOL) InitializeTemplateDLL() { return g_language.Load(g_extensionModule.hModule); }

ZO_ENTRY_POINT(BOOL) ShutdownTemplateDLL()
{
    g_language.Unload();
    return TRUE;
}

ZO_ENTRY_POINT(UINT) DRT(CPtrArray* classes, int, int) { return AddClass(classes, GetTemplateLibrary().document); }
ZO_ENTRY_POINT(UINT) FRT(CPtrArray* classes, int, int) { return AddClass(classes, GetTemplateLibrary().frame); }
ZO_ENTRY_POINT(UINT) VRT(CPtrArray* classes, int, int) { return AddClass(classes, GetTemplateLibrary().view); }

ZO_ENTRY_POINT(UINT) DRID(CWordArray* ids, int, int)
{
    ids->Add(GetTemplateLibrary().resourceId);
    return 1;
}

// No document of these libraries is embedded in another one, and none has control bars, help or a novice bar.
ZO_ENTRY_POINT(UINT) DROE(CWordArray*) { return 0; }
ZO_ENTRY_POINT(UINT) DROI(CWordArray*) { return 0; }
ZO_ENTRY_POINT(BOOL) CCB(CFrameWnd*, CFrameWnd*, int) { return FALSE; }
ZO_ENTRY_POINT(void) DCBO(int) {}
ZO_ENTRY_POINT(void) LCBS(CWordArray*) {}
ZO_ENTRY_POINT(void) SCBS(CWordArray*) {}
ZO_ENTRY_POINT(void) IHS() {}
ZO_ENTRY_POINT(UINT) GHS() { return 0; }
ZO_ENTRY_POINT(UINT) GNBI(CPtrArray*, int, int) { return 0; }

ZO_ENTRY_POINT(void) PNC(UINT command, CDocument* document)
{
    const TemplateLibrary& library = GetTemplateLibrary();
    if (library.noviceCommand != nullptr && document != nullptr && document->IsKindOf(library.document))
        library.noviceCommand(command, document);
}

ZO_ENTRY_POINT(void) PNUC(UINT, CDocument*, CCmdUI* item)
{
    item->Enable(GetTemplateLibrary().noviceCommand != nullptr);
}

ZO_ENTRY_POINT(int) GTID() { return GetTemplateLibrary().id; }

ZO_ENTRY_POINT(UINT) GMD(CWordArray* maxima, int, int)
{
    maxima->Add(GetTemplateLibrary().maximum);
    return 1;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID)
{
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        if (!AfxInitExtensionModule(g_extensionModule, instance))
            return FALSE;
        // The framework's from here on; hosts find the icon through it.
        if (!WithoutThrowing([] { new CDynLinkLibrary(g_extensionModule); })) {
            AfxTermExtensionModule(g_extensionModule);
            return FALSE;
        }
        return TRUE;
    case DLL_PROCESS_DETACH:
        AfxTermExtensionModule(g_extensionModule);
        return TRUE;
    default:
        return TRUE;
    }
}
