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

/// Starts a program that inherits handles, in \p folder if that is not empty; a failure and a null process if it does
/// not start.
PROCESS_INFORMATION Start(std::string command, const std::string& folder)
{
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                        folder.empty() ? nullptr : folder.c_str(), &startup, &process))
        ADD_FAILURE() << command << " does not start, error " << GetLastError();
    return process;
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
    const PROCESS_INFORMATION process = Start(std::move(command), folder.empty() ? ProgramFolder() : folder);
    if (process.hProcess == nullptr)
        return 1000;
    WaitUntil([&] {
        if (meanwhile != nullptr)
            meanwhile(process.dwThreadId);
        return WaitForSingleObject(process.hProcess, 100) == WAIT_OBJECT_0;
    });
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
    const DWORD begin = GetTickCount();
    bool holds;
    while (!(holds = condition()) && GetTickCount() - begin < kChildTimeout)
        WaitAnsweringMessages({}, 10);
    return holds;
}

// Child ---------------------------------------------------------------------------------------------------------------

ChildRegistration::ChildRegistration(const char* name, Function function) { Functions()[name] = function; }

std::string ChildContext::Argument(size_t index) const
{
    if (index < arguments.size())
        return arguments[index];
    ADD_FAILURE() << "the child was started without argument " << index;
    return {};
}

void ChildContext::Ready() const { EXPECT_TRUE(SetEvent(ready)); }
void ChildContext::WaitForGo() const { EXPECT_EQ(0, WaitAnsweringMessages({go})) << "the parent never said go"; }
void ChildContext::Report(const std::string& text) const { WriteEntry(results, kReport, text); }

// --child=<name> <ready event> <go event> <result file> <argument>...
static int FindChildOption(int argc, char** argv)
{
    int at = 1;
    while (at < argc && !std::string(argv[at]).starts_with(kChildOption))
        ++at;
    return at;
}

bool IsChild(int argc, char** argv) { return FindChildOption(argc, argv) < argc; }

int RunAsChild(int argc, char** argv)
{
    const int at = FindChildOption(argc, argv);
    const auto found = Functions().find(argv[at] + sizeof kChildOption - 1);
    if (found == Functions().end())
        return kBadCommandLine;
    const auto handle = [&](int index) { return ULongToHandle(std::stoul(argv[at + index])); };
    const ChildContext context = {handle(1), handle(2), handle(3), {argv + at + 4, argv + argc}};

    testing::TestEventListeners& listeners = testing::UnitTest::GetInstance()->listeners();
    delete listeners.Release(listeners.default_result_printer());
    listeners.Append(new FailureWriter(context.results));
    found->second(context);
    return kComplete;
}

// Parent --------------------------------------------------------------------------------------------------------------

ChildProcess::ChildProcess(const std::string& name, const std::vector<std::string>& arguments) : m_name(name)
{
    char path[MAX_PATH] = {};
    GetTempPathA(sizeof path, path);
    m_resultPath = path + UniqueName("results");
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    m_ready = CreateEventA(&inherited, TRUE, FALSE, nullptr);
    m_go = CreateEventA(&inherited, TRUE, FALSE, nullptr);
    const HANDLE results = CreateFileA(m_resultPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                       &inherited, CREATE_ALWAYS, 0, nullptr);

    GetModuleFileNameA(nullptr, path, sizeof path - 1);
    std::string command = Quote(path) + (IsGuardHeapInstalled() ? " --guard-heap " : " ") + kChildOption + name;
    for (const HANDLE handle : {m_ready, m_go, results})
        command += " " + std::to_string(HandleToULong(handle));
    for (const std::string& argument : arguments)
        command += " " + Quote(argument);
    const PROCESS_INFORMATION process = Start(command, {});
    CloseHandle(process.hThread);
    CloseHandle(results);
    m_process = process.hProcess;
    m_processId = process.dwProcessId;
    m_ended = m_process == nullptr;
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
    if (which == 1)
        Finish();
    if (which != 0)
        ADD_FAILURE() << "child " << m_name << (which == 1 ? " ended before it was ready" : " is not ready in time");
    return which == 0;
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
