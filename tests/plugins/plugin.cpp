// A template library for tests. It tells what it is called for in the environment variable ZO_PLUGIN_LOG, which outlives
// it, and fails in the entry point that ZO_PLUGIN_FAILS names, in the way that stands behind it: "DRT=int".
#include <afxdllx.h>

#include <cstring>
#include <string>

namespace {

constexpr DWORD kLogSize = 2000;

std::string Variable(LPCSTR name)
{
    char text[kLogSize] = "";
    GetEnvironmentVariableA(name, text, sizeof text);
    return text;
}

void Enter(LPCSTR entryPoint)
{
    SetEnvironmentVariableA("ZO_PLUGIN_LOG",
                            (Variable("ZO_PLUGIN_LOG") + ZO_PLUGIN_NAME "." + entryPoint + " ").c_str());
    const std::string fails = Variable("ZO_PLUGIN_FAILS");
    if (fails == std::string(entryPoint) + "=int")
        throw 5;
    if (fails == std::string(entryPoint) + "=memory")
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

UINT AddClass(LPCSTR entryPoint, CPtrArray* classes, CRuntimeClass* runtimeClass, int first, int second)
{
    Enter(entryPoint);
    classes->Add(runtimeClass);
    return static_cast<UINT>(first * 10 + second);
}

UINT AddWord(LPCSTR entryPoint, CWordArray* words, WORD word, int first, int second)
{
    Enter(entryPoint);
    words->Add(word);
    return static_cast<UINT>(first * 10 + second);
}

} // namespace

#define ZO_ENTRY(result) extern "C" __declspec(dllexport) result

ZO_ENTRY(BOOL) InitializeTemplateDLL()
{
    Enter("InitializeTemplateDLL");
    return Variable("ZO_PLUGIN_FAILS") != "InitializeTemplateDLL=false";
}
ZO_ENTRY(BOOL) ShutdownTemplateDLL() { return Enter("ShutdownTemplateDLL"), TRUE; }
ZO_ENTRY(UINT) DRT(CPtrArray* classes, int first, int second)
{
    return AddClass("DRT", classes, RUNTIME_CLASS(PluginDocument), first, second);
}
ZO_ENTRY(UINT) FRT(CPtrArray* classes, int first, int second)
{
    return AddClass("FRT", classes, RUNTIME_CLASS(PluginFrame), first, second);
}
ZO_ENTRY(UINT) VRT(CPtrArray* classes, int first, int second)
{
    return AddClass("VRT", classes, RUNTIME_CLASS(PluginView), first, second);
}
ZO_ENTRY(UINT) DRID(CWordArray* ids, int first, int second) { return AddWord("DRID", ids, 500, first, second); }
ZO_ENTRY(UINT) DROE(CWordArray* ids) { return AddWord("DROE", ids, 501, 0, 6); }
ZO_ENTRY(UINT) DROI(CWordArray* ids) { return AddWord("DROI", ids, 502, 0, 7); }
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
ZO_ENTRY(void) LCBS(CWordArray* state) { AddWord("LCBS", state, 503, 0, 0); }
ZO_ENTRY(void) SCBS(CWordArray* state) { AddWord("SCBS", state, 504, 0, 0); }
ZO_ENTRY(void) IHS() { Enter("IHS"); }
ZO_ENTRY(UINT) GHS() { return Enter("GHS"), 10; }
ZO_ENTRY(UINT) GNBI(CPtrArray* records, int first, int second)
{
    return AddClass("GNBI", records, nullptr, first, second);
}
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
ZO_ENTRY(UINT) GMD(CWordArray* maxima, int first, int second) { return AddWord("GMD", maxima, 505, first, second); }
#endif

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH)
        return AfxInitExtensionModule(g_extensionModule, instance);
    if (reason == DLL_PROCESS_DETACH)
        AfxTermExtensionModule(g_extensionModule);
    return TRUE;
}
