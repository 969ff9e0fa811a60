// A template library for tests. It tells what it is called for in the environment variable ZO_PLUGIN_LOG, which
// outlives it, calls the function whose address is in ZO_PLUGIN_CALLS, and fails in the entry point that
// ZO_PLUGIN_FAILS names, in the way that stands behind it: "DRT=int".
#include <afxdllx.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr DWORD kLogSize = 2000;

/// An environment variable, without an allocation, for those fail in some tests.
struct Variable {
    explicit Variable(LPCSTR name) { GetEnvironmentVariableA(name, text, sizeof text); }
    bool Is(LPCSTR entryPoint, LPCSTR how) const
    {
        const size_t length = std::strlen(entryPoint);
        return std::strncmp(text, entryPoint, length) == 0 && std::strcmp(text + length, how) == 0;
    }
    char text[kLogSize] = "";
};

void CallBack()
{
    const Variable address("ZO_PLUGIN_CALLS");
    if (const auto function = reinterpret_cast<void (*)()>(std::strtoull(address.text, nullptr, 16)))
        function();
}

void Enter(LPCSTR entryPoint)
{
    Variable log("ZO_PLUGIN_LOG");
    const size_t length = std::strlen(log.text);
    std::snprintf(log.text + length, kLogSize - length, ZO_PLUGIN_NAME ".%s ", entryPoint);
    SetEnvironmentVariableA("ZO_PLUGIN_LOG", log.text);
    CallBack();
    const Variable fails("ZO_PLUGIN_FAILS");
    if (fails.Is(entryPoint, "=int"))
        throw 5;
    if (fails.Is(entryPoint, "=memory"))
        AfxThrowMemoryException();
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

ZO_ENTRY(BOOL) InitializeTemplateDLL()
{
    Enter("InitializeTemplateDLL");
    return !Variable("ZO_PLUGIN_FAILS").Is("InitializeTemplateDLL", "=false");
}
ZO_ENTRY(BOOL) ShutdownTemplateDLL() { return Enter("ShutdownTemplateDLL"), TRUE; }
ZO_ENTRY(UINT) DRT(CPtrArray* list, int a, int b) { return Add("DRT", list, RUNTIME_CLASS(PluginDocument), a, b); }
ZO_ENTRY(UINT) FRT(CPtrArray* list, int a, int b) { return Add("FRT", list, RUNTIME_CLASS(PluginFrame), a, b); }
ZO_ENTRY(UINT) VRT(CPtrArray* list, int a, int b) { return Add("VRT", list, RUNTIME_CLASS(PluginView), a, b); }
ZO_ENTRY(UINT) DRID(CWordArray* ids, int first, int second) { return Add("DRID", ids, 500, first, second); }
ZO_ENTRY(UINT) DROE(CWordArray* ids) { return Add("DROE", ids, 501, 0, 6); }
ZO_ENTRY(UINT) DROI(CWordArray* ids) { return Add("DROI", ids, 502, 0, 7); }
ZO_ENTRY(BOOL) CCB(CFrameWnd* first, CFrameWnd* second, int number)
{
    Enter("CCB");
    return first == second && number == 8;
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
        CallBack();
        AfxTermExtensionModule(g_extensionModule);
    }
    return TRUE;
}
