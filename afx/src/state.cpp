#include <afxext.h>

#include <common/double_byte.h>

#include "thread_state.h"

#include <cstring>
#include <utility>

namespace {

DWORD g_threadSlot = TLS_OUT_OF_INDEXES;

/// The application's classes while an extension library loads.
CRuntimeClass* g_classesAside = nullptr;

/// The program's path with ".HLP" for its extension, from malloc. Null if the path has no
/// extension or is too long, and if memory is missing.
LPSTR ProgramHelpFile(HINSTANCE instance)
{
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(instance, path, sizeof path);
    if (length == 0 || length >= sizeof path)
        return nullptr;
    const LPCSTR extension = FindLastCharacter(path, '.');
    constexpr char kHelpExtension[] = ".HLP";
    if (extension == nullptr || extension + sizeof kHelpExtension > path + sizeof path)
        return nullptr;
    std::memcpy(path + (extension - path), kHelpExtension, sizeof kHelpExtension);
    return _strdup(path);
}

} // namespace

AFX_MODULE_STATE* AFXAPI AfxGetModuleState()
{
    static AFX_MODULE_STATE state; // before anything else, for static objects register their classes in it
    return &state;
}

ThreadState* FindThreadState() { return static_cast<ThreadState*>(TlsGetValue(g_threadSlot)); }

ThreadState* GetThreadState()
{
    ThreadState* state = FindThreadState();
    if (state == nullptr) {
        state = new ThreadState;
        TlsSetValue(g_threadSlot, state);
    }
    return state;
}

BOOL AFXAPI AfxWinInit(HINSTANCE hInstance, HINSTANCE, LPSTR lpCmdLine, int nCmdShow)
{
    AFX_MODULE_STATE* state = AfxGetModuleState();
    state->m_hCurrentInstanceHandle = hInstance;
    state->m_hCurrentResourceHandle = hInstance;
    if (CWinApp* app = state->m_pCurrentWinApp) {
        app->m_hInstance = hInstance;
        app->m_lpCmdLine = lpCmdLine;
        app->m_nCmdShow = nCmdShow;
        state->m_lpszCurrentAppName = app->m_pszAppName;
        if (app->m_pszHelpFilePath == nullptr)
            app->m_pszHelpFilePath = ProgramHelpFile(hInstance);
        GetThreadState()->thread = app;
    }
    return TRUE;
}

CWinThread* AFXAPI AfxGetThread() { return GetThreadState()->thread; }

CWnd* AFXAPI AfxGetMainWnd()
{
    const CWinThread* thread = AfxGetThread();
    return thread != nullptr ? thread->m_pMainWnd : nullptr;
}

/// The first module of the resource chain that \p has; null without one.
template <class HAS> static HINSTANCE FindInResourceChain(HAS has)
{
    if (const HINSTANCE own = AfxGetResourceHandle(); has(own))
        return own;
    for (const BOOL system : {FALSE, TRUE}) {
        for (const CDynLinkLibrary* dll = AfxGetModuleState()->m_pLibraryList; dll != nullptr; dll = dll->m_pNextDLL) {
            if (dll->m_bSystem == system && dll->m_hResource != nullptr && has(dll->m_hResource))
                return dll->m_hResource;
        }
    }
    return nullptr;
}

HINSTANCE AFXAPI AfxFindResourceHandle(LPCSTR lpszName, LPCSTR lpszType)
{
    const HINSTANCE module = FindInResourceChain(
        [=](HINSTANCE candidate) { return FindResourceA(candidate, lpszName, lpszType) != nullptr; });
    return module != nullptr ? module : AfxGetResourceHandle();
}

HINSTANCE AFXAPI AfxFindStringResourceHandle(UINT nID)
{
    return FindInResourceChain([=](HINSTANCE candidate) {
        char firstCharacter[4];
        return LoadStringA(candidate, nID, firstCharacter, sizeof firstCharacter) > 0;
    });
}

// Extension libraries -------------------------------------------------------------------------------------------------

IMPLEMENT_DYNAMIC(CDynLinkLibrary, CObject)

void AFXAPI AfxBeginExtensionModule() { g_classesAside = std::exchange(AfxGetModuleState()->m_pClassList, nullptr); }

BOOL AFXAPI AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule)
{
    if (state.bInitialized)
        return TRUE;
    state.bInitialized = TRUE;
    state.hModule = hModule;
    state.hResource = hModule;
    state.pFirstSharedClass = std::exchange(AfxGetModuleState()->m_pClassList, std::exchange(g_classesAside, nullptr));
    return TRUE;
}

void AFXAPI AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll)
{
    if (!state.bInitialized)
        return;
    CDynLinkLibrary** link = &AfxGetModuleState()->m_pLibraryList;
    while (CDynLinkLibrary* dll = *link) {
        if (bAll || dll->m_hModule == state.hModule)
            delete dll; // takes itself out of the chain
        else
            link = &dll->m_pNextDLL;
    }
    state.bInitialized = FALSE;
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem)
    : m_hModule(state.hModule), m_hResource(state.hResource), m_pFirstSharedClass(state.pFirstSharedClass),
      m_bSystem(bSystem), m_pNextDLL(std::exchange(AfxGetModuleState()->m_pLibraryList, this))
{
}

CDynLinkLibrary::CDynLinkLibrary(HINSTANCE hModule, HINSTANCE hResource)
    : m_hModule(hModule), m_hResource(hResource), m_pFirstSharedClass(nullptr), m_bSystem(FALSE),
      m_pNextDLL(std::exchange(AfxGetModuleState()->m_pLibraryList, this))
{
}

CDynLinkLibrary::~CDynLinkLibrary()
{
    for (CDynLinkLibrary** link = &AfxGetModuleState()->m_pLibraryList; *link != nullptr; link = &(*link)->m_pNextDLL) {
        if (*link == this) {
            *link = m_pNextDLL;
            return;
        }
    }
}

// Entry of the framework's own library --------------------------------------------------------------------------------

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID)
{
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        g_threadSlot = TlsAlloc();
        return g_threadSlot != TLS_OUT_OF_INDEXES;
    case DLL_THREAD_DETACH:
    case DLL_PROCESS_DETACH:
        delete static_cast<ThreadState*>(TlsGetValue(g_threadSlot));
        TlsSetValue(g_threadSlot, nullptr);
        if (reason == DLL_PROCESS_DETACH)
            TlsFree(std::exchange(g_threadSlot, TLS_OUT_OF_INDEXES)); // static objects may end later
        return TRUE;
    default:
        return TRUE;
    }
}
