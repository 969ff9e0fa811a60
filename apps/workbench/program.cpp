#include "program.h"

#include <common/wait.h>

namespace {

BOOL CALLBACK CloseWindowOf(HWND window, LPARAM process)
{
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    if (owner == static_cast<DWORD>(process) && ::IsWindowVisible(window))
        ::PostMessage(window, WM_CLOSE, 0, 0);
    return TRUE;
}

struct Search {
    DWORD process;
    bool owned; // a dialog has an owner
    HWND found;
};

BOOL CALLBACK FindWindowOf(HWND window, LPARAM parameter)
{
    Search& search = *reinterpret_cast<Search*>(parameter);
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    if (owner != search.process || !::IsWindowVisible(window) ||
        (::GetWindow(window, GW_OWNER) != nullptr) != search.owned)
        return TRUE;
    search.found = window;
    return FALSE;
}

HWND Find(Search search)
{
    ::EnumWindows(&FindWindowOf, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

} // namespace

Program::~Program()
{
    if (m_process == nullptr)
        return;
    ::TerminateProcess(m_process, 1); // without effect on one that has ended
    ::CloseHandle(m_process);
}

BOOL Program::Start(LPCSTR fileName, LPCSTR arguments)
{
    char path[MAX_PATH] = {};
    ::GetModuleFileName(nullptr, path, sizeof path - 1);
    const CString own(path);
    CString command = "\"" + own.Left(own.ReverseFind('\\') + 1) + fileName + "\" " + arguments;
    STARTUPINFO startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!::CreateProcess(nullptr, command.GetBuffer(command.GetLength()), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                         nullptr, nullptr, &startup, &process))
        return FALSE;
    ::CloseHandle(process.hThread);
    m_process = process.hProcess;
    m_id = process.dwProcessId;
    return TRUE;
}

HWND Program::FindMainWindow() const { return Find({m_id, false, nullptr}); }
HWND Program::FindDialog() const { return Find({m_id, true, nullptr}); }

void Program::AskToClose() const { ::EnumWindows(&CloseWindowOf, static_cast<LPARAM>(m_id)); }

int Program::WaitForEnd() const
{
    DWORD code = static_cast<DWORD>(-1);
    if (m_process != nullptr && WaitUntil([this] { return ::WaitForSingleObject(m_process, 0) == WAIT_OBJECT_0; }))
        ::GetExitCodeProcess(m_process, &code);
    return static_cast<int>(code);
}
