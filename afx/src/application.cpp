#include "array_position.h"
#include "modal_owner.h"
#include "thread_state.h"

#include <cstdio>
#include <cstdlib>

IMPLEMENT_DYNAMIC(CWinThread, CCmdTarget)
IMPLEMENT_DYNAMIC(CWinApp, CWinThread)

// Message loop --------------------------------------------------------------------------------------------------------

namespace {

/// Offers a message to the windows from its target up to the top. \return whether one of them took it.
BOOL PreTranslateThroughWindows(MSG* message)
{
    for (HWND handle = message->hwnd; handle != nullptr; handle = ::GetParent(handle)) {
        CWnd* window = CWnd::FromHandlePermanent(handle);
        if (window != nullptr && window->PreTranslateMessage(message))
            return TRUE;
    }
    return FALSE;
}

} // namespace

BOOL PumpOneMessage(MSG* message)
{
    if (::GetMessage(message, nullptr, 0, 0) <= 0)
        return FALSE;
    CWinThread* thread = AfxGetThread();
    if (thread != nullptr)
        thread->m_msgCur = *message;
    if (!(thread != nullptr ? thread->PreTranslateMessage(message) : PreTranslateThroughWindows(message))) {
        ::TranslateMessage(message);
        ::DispatchMessage(message);
    }
    return TRUE;
}

LRESULT AnswerFailedMessage(CException* e, const MSG* message)
{
    switch (message->message) {
    case WM_CREATE:
        return -1; // the window is not created; whoever wanted it reports
    case WM_PAINT:
        ::ValidateRect(message->hwnd, nullptr); // or it would be asked for again at once, for ever
        return 0;
    default:
        if (!e->IsKindOf(RUNTIME_CLASS(CUserException)))
            e->ReportError(MB_ICONEXCLAMATION);
        return 0;
    }
}

BOOL CWinThread::InitInstance() { return FALSE; }
int CWinThread::ExitInstance() { return static_cast<int>(m_msgCur.wParam); }
BOOL CWinThread::PreTranslateMessage(MSG* pMsg) { return PreTranslateThroughWindows(pMsg); }
BOOL CWinThread::PumpMessage() { return PumpOneMessage(&m_msgCur); }

int CWinThread::Run()
{
    MSG next;
    LONG idleCount = 0;
    for (bool idle = true;;) { // something may have changed since the last idle work was done
        while (idle && !::PeekMessage(&next, nullptr, 0, 0, PM_NOREMOVE))
            idle = OnIdle(idleCount++) != FALSE;
        if (!PumpMessage())
            return ExitInstance();
        if (IsIdleMessage(&m_msgCur)) {
            idle = true;
            idleCount = 0;
        }
    }
}

BOOL CWinThread::IsIdleMessage(MSG* pMsg)
{
    constexpr UINT kSystemTimer = 0x0118; // blinks the caret
    if (pMsg->message == WM_MOUSEMOVE || pMsg->message == WM_NCMOUSEMOVE) {
        if (m_nMsgLast == pMsg->message && m_ptCursorLast.x == pMsg->pt.x && m_ptCursorLast.y == pMsg->pt.y)
            return FALSE;
        m_ptCursorLast = pMsg->pt;
        m_nMsgLast = pMsg->message;
        return TRUE;
    }
    return pMsg->message != WM_PAINT && pMsg->message != kSystemTimer;
}

namespace {

BOOL CALLBACK UpdateCommands(HWND window, LPARAM)
{
    CWnd* permanent = CWnd::FromHandlePermanent(window);
    if (permanent != nullptr && permanent->IsWindowVisible()) {
        permanent->SendMessage(WM_IDLEUPDATECMDUI, TRUE);
        permanent->SendMessageToDescendants(WM_IDLEUPDATECMDUI, TRUE, 0, TRUE, TRUE);
    }
    return TRUE;
}

} // namespace

BOOL CWinThread::OnIdle(LONG lCount)
{
    if (lCount == 0) {
        ::EnumThreadWindows(::GetCurrentThreadId(), &UpdateCommands, 0);
        GetThreadState()->DeleteTemporary();
    }
    return FALSE;
}

LRESULT CWinThread::ProcessWndProcException(CException* e, const MSG* pMsg) { return AnswerFailedMessage(e, pMsg); }

// Application ---------------------------------------------------------------------------------------------------------

CWinApp::CWinApp(LPCSTR lpszAppName) : m_pszAppName(lpszAppName) { AfxGetModuleState()->m_pCurrentWinApp = this; }

CWinApp::~CWinApp()
{
    if (AfxGetApp() == this)
        AfxGetModuleState()->m_pCurrentWinApp = nullptr;
    if (AfxGetThread() == this)
        GetThreadState()->thread = nullptr;
    std::free(const_cast<LPSTR>(m_pszHelpFilePath));
    for (INT_PTR i = 0; i < m_docTemplates.GetSize(); ++i)
        delete static_cast<CDocTemplate*>(m_docTemplates[i]);
}

int CWinApp::ExitInstance() { return CWinThread::ExitInstance(); }

HICON CWinApp::LoadIcon(UINT nIDResource) const
{
    const LPCSTR name = MAKEINTRESOURCE(nIDResource);
    return ::LoadIcon(AfxFindResourceHandle(name, RT_GROUP_ICON), name);
}

void CWinApp::AddDocTemplate(CDocTemplate* pTemplate) { m_docTemplates.Add(pTemplate); }

POSITION CWinApp::GetFirstDocTemplatePosition() const { return FirstPosition(m_docTemplates); }

CDocTemplate* CWinApp::GetNextDocTemplate(POSITION& pos) const
{
    return static_cast<CDocTemplate*>(NextElement(m_docTemplates, pos));
}

void CWinApp::CloseAllDocuments(BOOL bEndSession)
{
    for (POSITION position = GetFirstDocTemplatePosition(); position != nullptr;)
        GetNextDocTemplate(position)->CloseAllDocuments(bEndSession);
}

BOOL CWinApp::SaveAllModified()
{
    for (POSITION position = GetFirstDocTemplatePosition(); position != nullptr;) {
        if (!GetNextDocTemplate(position)->SaveAllModified())
            return FALSE;
    }
    return TRUE;
}

int AFXAPI AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPSTR lpCmdLine, int nCmdShow)
{
    CWinApp* app = AfxGetApp();
    if (app == nullptr || !AfxWinInit(hInstance, hPrevInstance, lpCmdLine, nCmdShow))
        return -1;
    if (app->InitInstance())
        return app->Run();
    if (app->m_pMainWnd != nullptr)
        app->m_pMainWnd->DestroyWindow();
    return app->ExitInstance();
}

namespace {

int SystemBox(HWND owner, LPCSTR text, LPCSTR title, UINT type) { return ::MessageBox(owner, text, title, type); }

int ShowMessageBox(LPCSTR text, UINT type)
{
    const HWND owner = FindModalOwner(nullptr);
    const DisabledWindow top(FindTopOwner(owner)); // the system disables the owner alone
    const LPCSTR title = AfxGetAppName();
    const AFX_MESSAGE_BOX box = AfxGetModuleState()->m_pfnMessageBox;
    return (box != nullptr ? box : &SystemBox)(owner, text, title != nullptr ? title : "",
                                               type | (owner == nullptr ? MB_TASKMODAL : 0));
}

} // namespace

void AFXAPI AfxSetMessageBox(AFX_MESSAGE_BOX pfnMessageBox) { AfxGetModuleState()->m_pfnMessageBox = pfnMessageBox; }

int CWinApp::DoMessageBox(LPCSTR lpszPrompt, UINT nType, UINT) { return ShowMessageBox(lpszPrompt, nType); }

int AFXAPI AfxMessageBox(LPCSTR lpszText, UINT nType, UINT nIDHelp)
{
    CWinApp* app = AfxGetApp();
    return app != nullptr ? app->DoMessageBox(lpszText, nType, nIDHelp) : ShowMessageBox(lpszText, nType);
}

int AFXAPI AfxMessageBox(UINT nIDPrompt, UINT nType, UINT nIDHelp)
{
    CString text;
    text.LoadString(nIDPrompt);
    return AfxMessageBox(text, nType, nIDHelp == static_cast<UINT>(-1) ? nIDPrompt : nIDHelp);
}

LPCSTR AFXAPI AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor, HBRUSH hbrBackground, HICON hIcon)
{
    static char name[96]; // room for four 64-bit values; the last one asked for: read at once, by CreateWindowEx
    const auto address = [](const void* handle) { return handle; };
    std::snprintf(name, sizeof name, "Afx:%p:%x:%p:%p:%p", address(AfxGetInstanceHandle()), nClassStyle,
                  address(hCursor), address(hbrBackground), address(hIcon)); // wsprintf knows no %p on old systems
    WNDCLASS wndClass = {};
    wndClass.style = nClassStyle;
    wndClass.lpfnWndProc = &::DefWindowProc;
    wndClass.hInstance = AfxGetInstanceHandle();
    wndClass.hCursor = hCursor;
    wndClass.hbrBackground = hbrBackground;
    wndClass.hIcon = hIcon;
    wndClass.lpszClassName = name;
    if (!AfxRegisterClass(&wndClass))
        AfxThrowResourceException();
    return name;
}

BOOL AFXAPI AfxRegisterClass(WNDCLASS* lpWndClass)
{
    WNDCLASS known;
    return ::GetClassInfo(lpWndClass->hInstance, lpWndClass->lpszClassName, &known) || ::RegisterClass(lpWndClass) != 0;
}
