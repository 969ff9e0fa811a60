#include "thread_state.h"
#include "window_hook.h"

#include <utility>

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
    ON_WM_NCDESTROY()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_SETTINGCHANGE()
END_MESSAGE_MAP()

namespace {

constexpr DWORD kClassStyleIme = 0x00010000; // CS_IME: an input-method window that the system slips in

} // namespace

// Handles and objects -------------------------------------------------------------------------------------------------

CWnd* AFXAPI CWnd::FromHandle(HWND hWnd) { return GetThreadState()->windows.FromHandle(hWnd); }

CWnd* AFXAPI CWnd::FromHandlePermanent(HWND hWnd) { return GetThreadState()->windows.FindPermanent(hWnd); }

void AFXAPI CWnd::DeleteTempMap() { GetThreadState()->windows.DeleteTemporary(); }

HWND AFXAPI AfxGetSafeHwnd(const CWnd* pWnd) { return pWnd != nullptr ? pWnd->m_hWnd : nullptr; }

BOOL CWnd::Attach(HWND hWndNew)
{
    if (hWndNew == nullptr || (m_hWnd != nullptr && ::IsWindow(m_hWnd)))
        return FALSE;
    GetThreadState()->windows.SetPermanent(hWndNew, this);
    m_hWnd = hWndNew;
    return TRUE;
}

HWND CWnd::Detach()
{
    if (m_hWnd != nullptr)
        GetThreadState()->windows.RemovePermanent(m_hWnd, this);
    return std::exchange(m_hWnd, nullptr);
}

CWnd::~CWnd()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
    const ThreadState* state = FindThreadState();
    if (state != nullptr && state->thread != nullptr && state->thread->m_pMainWnd == this)
        state->thread->m_pMainWnd = nullptr; // a main window that could not be created
}

BOOL CWnd::SubclassWindow(HWND hWnd)
{
    if (!Attach(hWnd))
        return FALSE;
    try {
        PreSubclassWindow();
    } catch (CException*) { // the window remains as it was
        Detach();
        throw;
    }
    const auto old =
        reinterpret_cast<WNDPROC>(::SetWindowLongPtr(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
    if (old != &AfxWndProc)
        m_pfnSuper = old;
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent)
{
    return SubclassWindow(::GetDlgItem(AfxGetSafeHwnd(pParent), static_cast<int>(nID)));
}

HWND CWnd::UnsubclassWindow()
{
    if (m_pfnSuper != nullptr)
        ::SetWindowLongPtr(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(std::exchange(m_pfnSuper, nullptr)));
    return Detach();
}

// Creation ------------------------------------------------------------------------------------------------------------

AfxWindowHook::AfxWindowHook(CWnd* window)
    : m_hook(::SetWindowsHookEx(WH_CBT, &AfxWindowHook::Procedure, nullptr, ::GetCurrentThreadId())), m_window(window)
{
    GetThreadState()->windowHook = this;
}

AfxWindowHook::~AfxWindowHook()
{
    GetThreadState()->windowHook = nullptr;
    if (m_hook != nullptr)
        ::UnhookWindowsHookEx(m_hook);
}

LRESULT CALLBACK AfxWindowHook::Procedure(int code, WPARAM wParam, LPARAM lParam)
{
    ThreadState* state = GetThreadState();
    const auto handle = reinterpret_cast<HWND>(wParam);
    if (code != HCBT_CREATEWND || state->windowHook == nullptr ||
        (::GetClassLong(handle, GCL_STYLE) & kClassStyleIme) != 0)
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    AfxWindowHook* hook = std::exchange(state->windowHook, nullptr);
    try {
        hook->m_caught = true; // also if the object has a window, with which it goes on
        if (!hook->m_window->SubclassWindow(handle))
            return 1;
    } catch (CException* e) {
        e->Delete();
        hook->m_caught = false;
        return 1; // the window is not created
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

BOOL CWnd::Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                  UINT nID)
{
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, AfxGetSafeHwnd(pParentWnd),
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)));
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, int x, int y,
                    int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam)
{
    CREATESTRUCT cs = {};
    cs.dwExStyle = dwExStyle;
    cs.lpszClass = lpszClassName;
    cs.lpszName = lpszWindowName;
    cs.style = static_cast<LONG>(dwStyle);
    cs.x = x;
    cs.y = y;
    cs.cx = nWidth;
    cs.cy = nHeight;
    cs.hwndParent = hWndParent;
    cs.hMenu = nIDorHMenu;
    cs.hInstance = AfxGetInstanceHandle();
    cs.lpCreateParams = lpParam;
    HWND created = nullptr;
    bool caught = false; // then the end of the window was the end of the object's work
    try {
        if (PreCreateWindow(cs)) {
            const AfxWindowHook hook(this);
            if (hook.IsSet())
                created =
                    ::CreateWindowEx(cs.dwExStyle, cs.lpszClass, cs.lpszName, static_cast<DWORD>(cs.style), cs.x, cs.y,
                                     cs.cx, cs.cy, cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
            caught = hook.HasCaught();
        }
    } catch (CException*) {
        PostNcDestroy();
        throw;
    }
    if (created == nullptr && !caught)
        PostNcDestroy();
    return created != nullptr;
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                    CWnd* pParentWnd, UINT nID, LPVOID lpParam)
{
    return CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, AfxGetSafeHwnd(pParentWnd),
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)), lpParam);
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    if (cs.lpszClass == nullptr)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursor(nullptr, IDC_ARROW),
                                           reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
    return TRUE;
}

BOOL CWnd::DestroyWindow()
{
    if (m_hWnd == nullptr)
        return FALSE;
    const HWND handle = m_hWnd;
    const BOOL permanent = FromHandlePermanent(handle) == this;
    const BOOL result = ::DestroyWindow(handle);
    // The object may be gone by now; only one that still waits in the map for an end that never came is let go.
    if (permanent && FromHandlePermanent(handle) == this)
        Detach();
    return result;
}

void CWnd::OnNcDestroy()
{
    CWinThread* thread = AfxGetThread();
    if (thread != nullptr && thread->m_pMainWnd == this) {
        thread->m_pMainWnd = nullptr;
        ::PostQuitMessage(0);
    }
    Default();
    EnableToolTips(FALSE);
    UnsubclassWindow();
    if (m_bModalRunning)
        EndModalLoop(m_nModalResult); // which nobody else would do now
    PostNcDestroy();
}
