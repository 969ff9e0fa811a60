#include "process.h"

#include "harness.h"

#include <windows.h>

namespace {

constexpr DWORD kPatience = 30000; // milliseconds
constexpr DWORD kPipeSize = 64 * 1024;

class Handle {
public:
    explicit Handle(HANDLE handle) : m_handle(handle) {}
    ~Handle() { Close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    void Close()
    {
        if (m_handle != nullptr)
            CloseHandle(m_handle);
        m_handle = nullptr;
    }
    operator HANDLE() const { return m_handle; }

private:
    HANDLE m_handle;
};

} // namespace

std::string OwnPath()
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path - 1);
    return path;
}

std::string OwnFolder()
{
    const std::string path = OwnPath();
    return path.substr(0, path.rfind('\\') + 1);
}

ProgramRun RunProgram(const std::string& commandLine)
{
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE readingEnd = nullptr, writingEnd = nullptr;
    Require(CreatePipe(&readingEnd, &writingEnd, &inherited, kPipeSize), "a pipe could not be made");
    const Handle reading(readingEnd);
    Handle writing(writingEnd);
    SetHandleInformation(reading, HANDLE_FLAG_INHERIT, 0);

    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = writing;
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process = {};
    std::string command = commandLine;
    ProgramRun run = {};
    run.started = Ticks();
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr, nullptr, &startup,
                        &process))
        throw BenchmarkFailure("cannot be started: " + commandLine);
    const Handle program(process.hProcess), thread(process.hThread);
    writing.Close();
    if (WaitForSingleObject(program, kPatience) != WAIT_OBJECT_0) {
        TerminateProcess(program, 1);
        throw BenchmarkFailure("does not end: " + commandLine);
    }
    DWORD exitCode = 0;
    GetExitCodeProcess(program, &exitCode);
    run.exitCode = exitCode;
    char part[4096];
    DWORD length = 0;
    while (ReadFile(reading, part, sizeof part, &length, nullptr) && length > 0)
        run.output.append(part, length);
    return run;
}
