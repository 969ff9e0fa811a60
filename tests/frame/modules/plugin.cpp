// A template library for tests. It tells the test program what it is called for, and does what that says (see
// plugin_fixture.h).
#include <afxdllx.h>

namespace {

/// Answers as the test program does, or throws as it does.
BOOL Enter(LPCSTR entryPoint)
{
    const auto enterPlugin = reinterpret_cast<BOOL (*)(LPCSTR, LPCSTR)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(nullptr), "ZoEnterPlugin")));
    return enterPlugin(ZO_PLUGIN_NAME, entryPoint);
}

class PluginDocument : public CDocument {
    DECLARE_DYNCREATE(PluginDocument)
public:
    ~PluginDocument() override { Enter("document-gone"); }
};
IMPLEMENT_DYNCREATE(PluginDocument, CDocument)

class PluginView : public CView {
    DECLARE_DYNCREATE(PluginView)
protected:
    void OnDraw(CDC*) override {}
};
IMPLEMENT_DYNCREATE(PluginView, CView)

class PluginFrame : public CMDIChildWnd {
    DECLARE_DYNCREATE(PluginFrame)
};
IMPLEMENT_DYNCREATE(PluginFrame, CMDIChildWnd)

AFX_EXTENSION_MODULE g_extensionModule = {};

template <class ARRAY, class ELEMENT>
UINT Add(LPCSTR entryPoint, ARRAY* array, ELEMENT element, int first = 0, int second = 0)
{
    Enter(entryPoint);
    array->Add(element);
    return static_cast<UINT>(first * 10 + second);
}

} // namespace

#define ZO_ENTRY(result) extern "C" __declspec(dllexport) result

ZO_ENTRY(BOOL) InitializeTemplateDLL() { return Enter("InitializeTemplateDLL"); }
ZO_ENTRY(BOOL) ShutdownTemplateDLL() { return Enter("ShutdownTemplateDLL"); }
ZO_ENTRY(UINT) DRT(CPtrArray* list, int a, int b) { return Add("DRT", list, RUNTIME_CLASS(PluginDocument), a, b); }
ZO_ENTRY(UINT) FRT(CPtrArray* list, int a, int b) { return Add("FRT", list, RUNTIME_CLASS(PluginFrame), a, b); }
ZO_ENTRY(UINT) VRT(CPtrArray* list, int a, int b) { return Add("VRT", list, RUNTIME_CLASS(PluginView), a, b); }
ZO_ENTRY(UINT) DRID(CWordArray* ids, int first, int second) { return Add("DRID", ids, 500, first, second); }
ZO_ENTRY(UINT) DROE(CWordArray* ids) { return Add("DROE", ids, 501, 0, 6); }
ZO_ENTRY(UINT) DROI(CWordArray* ids) { return Add("DROI", ids, 502, 0, 7); }
ZO_ENTRY(BOOL) CCB(CFrameWnd* first, CFrameWnd* second, int number)
{
    return Enter("CCB") && first == second && number == 8;
}
ZO_ENTRY(void) DCBO(int number)
{
    if (number == 9)
        Enter("DCBO");
}
ZO_ENTRY(void) LCBS(CWordArray* state) { Add("LCBS", state, 503); }
ZO_ENTRY(void) SCBS(CWordArray* state) { Add("SCBS", state, 504); }
ZO_ENTRY(void) IHS() { Enter("IHS"); }
ZO_ENTRY(UINT) GHS() { return Enter("GHS"), 10; }
ZO_ENTRY(UINT) GNBI(CPtrArray* list, int a, int b) { return Add("GNBI", list, nullptr, a, b); }
ZO_ENTRY(void) PNC(UINT command, CDocument* document)
{
    if (command == 11 && document == nullptr)
        Enter("PNC");
}
ZO_ENTRY(void) PNUC(UINT command, CDocument* document, CCmdUI* item)
{
    if (command == 12 && document == nullptr && item != nullptr)
        Enter("PNUC");
}
ZO_ENTRY(int) GTID() { return Enter("GTID"), ZO_PLUGIN_ID; }
#ifndef ZO_PLUGIN_WITHOUT_GMD
ZO_ENTRY(UINT) GMD(CWordArray* maxima, int first, int second) { return Add("GMD", maxima, 505, first, second); }
#endif

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH)
        return AfxInitExtensionModule(g_extensionModule, instance);
    if (reason == DLL_PROCESS_DETACH) {
        Enter("gone");
        AfxTermExtensionModule(g_extensionModule);
    }
    return TRUE;
}
