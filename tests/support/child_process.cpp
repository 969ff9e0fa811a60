#include "support/child_process.h"

#include "support/environment.h"
#include "support/guard_heap.h"
#include "support/unique_names.h"

#include <gtest/gtest.h>

#include <map>
#include <utility>

namespace zo_test {

namespace {

// The result file: entries, each with its kind as the first character and kEntryEnd behind it.
constexpr char kFailure = 'F';
constexpr char kReport = 'R';
constexpr char kEntryEnd = '\x1E';

constexpr char kChildOption[] = "--child=";

enum ExitCode { kBadCommandLine = 2, kComplete = 77 };

std::map<std::string, ChildRegistration::Function>& Functions()
{
    static std::map<std::string, ChildRegistration::Function> functions;
    return functions;
}

void WriteEntry(HANDLE file, char kind, const std::string& text)
{
    const std::string entry = kind + text + kEntryEnd;
    DWORD written;
    WriteFile(file, entry.data(), static_cast<DWORD>(entry.size()), &written, nullptr);
}

/// Writes the child's failures to the result file, at once: the child may be killed.
class FailureWriter : public testing::EmptyTestEventListener {
public:
    explicit FailureWriter(HANDLE file) : m_file(file) {}
    void OnTestPartResult(const testing::TestPartResult& result) override
    {
        if (result.failed())
            WriteEntry(m_file, kFailure, testing::PrintToString(result));
    }

private:
    HANDLE m_file;
};

/// For a command line. A backslash in front of the closing quote would hide it.
std::string Quote(const std::string& argument)
{
    return "\"" + argument + (!argument.empty() && argument.back() == '\\' ? "\\" : "") + "\"";
}

} // namespace

int WaitAnsweringMessages(const std::vector<HANDLE>& handles, DWORD milliseconds)
{
    const DWORD begin = GetTickCount();
    const auto count = static_cast<DWORD>(handles.size());
    for (;;) {
        const DWORD gone = GetTickCount() - begin;
        const DWORD left = gone < milliseconds ? milliseconds - gone : 0;
        const DWORD result =
            MsgWaitForMultipleObjects(count, count > 0 ? handles.data() : nullptr, FALSE, left, QS_ALLINPUT);
        if (result < WAIT_OBJECT_0 + count)
            return static_cast<int>(result - WAIT_OBJECT_0);
        if (result != WAIT_OBJECT_0 + count || left == 0)
            return -1;
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
}

DWORD RunProgram(std::string command, const std::string& folder, void (*meanwhile)(DWORD thread))
{
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        (folder.empty() ? ProgramFolder() : folder).c_str(), &startup, &process)) {
        ADD_FAILURE() << command << " does not start, error " << GetLastError();
        return 1000;
    }
    for (const DWORD begin = GetTickCount(); GetTickCount() - begin < kChildTimeout;) {
        if (WaitForSingleObject(process.hProcess, 100) != WAIT_TIMEOUT)
            break;
        if (meanwhile != nullptr)
            meanwhile(process.dwThreadId);
    }
    TerminateProcess(process.hProcess, 1001); // if it hangs
    WaitForSingleObject(process.hProcess, kChildTimeout);
    DWORD code = 1000;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

bool WaitUntil(const std::function<bool()>& condition)
{
    for (const DWORD begin = GetTickCount(); !condition() && GetTickCount() - begin < kChildTimeout;)
        WaitAnsweringMessages({}, 10);
    return condition();
}

// Child ---------------------------------------------------------------------------------------------------------------

ChildRegistration::ChildRegistration(const char* name, Function function) { Functions()[name] = function; }

ChildContext::ChildContext(std::vector<std::string> arguments, HANDLE ready, HANDLE go, HANDLE results)
    : m_arguments(std::move(arguments)), m_ready(ready), m_go(go), m_results(results)
{
}

std::string ChildContext::Argument(size_t index) const
{
    if (index < m_arguments.size())
        return m_arguments[index];
    ADD_FAILURE() << "the child was started without argument " << index;
    return {};
}

void ChildContext::Ready() const { EXPECT_TRUE(SetEvent(m_ready)); }
void ChildContext::WaitForGo() const { EXPECT_EQ(0, WaitAnsweringMessages({m_go})) << "the parent never said go"; }
void ChildContext::Report(const std::string& text) const { WriteEntry(m_results, kReport, text); }

// --child=<name> <result file> <ready event> <go event> <argument>...
static int FindChildOption(int argc, char** argv)
{
    int at = 1;
    while (at < argc && std::string(argv[at]).rfind(kChildOption, 0) != 0)
        ++at;
    return at;
}

bool IsChild(int argc, char** argv) { return FindChildOption(argc, argv) < argc; }

int RunAsChild(int argc, char** argv)
{
    const int at = FindChildOption(argc, argv);
    if (at + 3 >= argc)
        return kBadCommandLine;
    const std::string name = std::string(argv[at]).substr(sizeof kChildOption - 1);
    const HANDLE results = CreateFileA(argv[at + 1], GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                       OPEN_EXISTING, 0, nullptr);
    const HANDLE ready = OpenEventA(EVENT_MODIFY_STATE | SYNCHRONIZE, FALSE, argv[at + 2]);
    const HANDLE go = OpenEventA(EVENT_MODIFY_STATE | SYNCHRONIZE, FALSE, argv[at + 3]);
    const ChildContext context({argv + at + 4, argv + argc}, ready, go, results);
    const auto found = Functions().find(name);
    if (results == INVALID_HANDLE_VALUE || ready == nullptr || go == nullptr || found == Functions().end())
        return kBadCommandLine;

    testing::TestEventListeners& listeners = testing::UnitTest::GetInstance()->listeners();
    delete listeners.Release(listeners.default_result_printer());
    listeners.Append(new FailureWriter(results));
    found->second(context);
    return kComplete;
}

// Parent --------------------------------------------------------------------------------------------------------------

ChildProcess::ChildProcess(const std::string& name, const std::vector<std::string>& arguments) : m_name(name)
{
    char folder[MAX_PATH] = {};
    GetTempPathA(sizeof folder, folder);
    m_resultPath = folder + UniqueName("results");
    const std::string readyName = UniqueName("ready");
    const std::string goName = UniqueName("go");
    m_ready = CreateEventA(nullptr, TRUE, FALSE, readyName.c_str());
    m_go = CreateEventA(nullptr, TRUE, FALSE, goName.c_str());
    WriteBytes(m_resultPath, "");

    char program[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, program, sizeof program - 1);
    std::string command = Quote(program) + (IsGuardHeapInstalled() ? " --guard-heap " : " ") + kChildOption + name +
                          " " + Quote(m_resultPath) + " " + readyName + " " + goName;
    for (const std::string& argument : arguments)
        command += " " + Quote(argument);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(program, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process)) {
        ADD_FAILURE() << "child " << name << " does not start, error " << GetLastError();
        m_ended = true;
        return;
    }
    CloseHandle(process.hThread);
    m_process = process.hProcess;
    m_processId = process.dwProcessId;
}

ChildProcess::~ChildProcess()
{
    Finish();
    CloseHandle(m_process);
    CloseHandle(m_ready);
    CloseHandle(m_go);
    DeleteFileA(m_resultPath.c_str());
}

bool ChildProcess::WaitUntilReady()
{
    if (m_ended)
        return false;
    const int which = WaitAnsweringMessages({m_ready, m_process});
    if (which == 0)
        return true;
    if (which == 1) {
        Finish();
        ADD_FAILURE() << "child " << m_name << " ended before it was ready";
    } else {
        ADD_FAILURE() << "child " << m_name << " is not ready after " << kChildTimeout << " ms";
    }
    return false;
}

void ChildProcess::Go() { EXPECT_TRUE(SetEvent(m_go)); }

void ChildProcess::Kill()
{
    if (m_ended)
        return;
    TerminateProcess(m_process, 0);
    WaitForSingleObject(m_process, kChildTimeout);
    m_ended = true;
    ReadResults();
}

void ChildProcess::Finish()
{
    if (m_ended)
        return;
    Go();
    if (WaitAnsweringMessages({m_process}) != 0) {
        Kill();
        ADD_FAILURE() << "child " << m_name << " hangs";
        return;
    }
    m_ended = true;
    DWORD exitCode = 0;
    GetExitCodeProcess(m_process, &exitCode);
    ReadResults();
    if (exitCode != kComplete)
        ADD_FAILURE() << "child " << m_name << " broke off, exit code " << exitCode;
}

const std::vector<std::string>& ChildProcess::Reports()
{
    ReadResults();
    return m_reports;
}

void ChildProcess::ReadResults()
{
    const std::string text = ReadBytes(m_resultPath);
    for (size_t end; (end = text.find(kEntryEnd, m_read)) != std::string::npos; m_read = end + 1) {
        const char kind = text[m_read];
        const std::string entry = text.substr(m_read + 1, end - m_read - 1);
        if (kind == kReport)
            m_reports.push_back(entry);
        else
            ADD_FAILURE() << "in child " << m_name << ": " << entry;
    }
}

} // namespace zo_test
