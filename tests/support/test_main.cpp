// Main function of the test programs.
//
//   --environment=NAME  fails unless this is the environment it runs in
//   --watchdog=SECONDS  ends the program when a test makes no progress for that long, with the test's name
//   --guard-heap        runs on the guard heap (guard_heap.h)
//
// besides GoogleTest's own options.
#include "support/child_process.h"
#include "support/environment.h"
#include "support/guard_heap.h"
#include "support/watchdog.h"

#include <gtest/gtest.h>

#include <afxwin.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

namespace {

enum ExitCode { kNoTest = 95, kCrashed = 96, kHangs = 97, kWrongEnvironment = 99 };

constexpr DWORD kChildWatchdogSeconds = 60; // a child outlives no parent for long

CWinApp g_application("Tests");

/// The test that runs: kept apart, for whoever reports a crash must not wait for GoogleTest's locks.
char g_currentTest[256] = "(none)";

class CurrentTestRecorder : public testing::EmptyTestEventListener {
public:
    void OnTestStart(const testing::TestInfo& test) override
    {
        zo_test::ReportProgress();
        std::snprintf(g_currentTest, sizeof g_currentTest, "%s.%s", test.test_suite_name(), test.name());
    }
    void OnTestEnd(const testing::TestInfo&) override { std::strcpy(g_currentTest, "(between tests)"); }
};

[[noreturn]] __attribute__((format(printf, 2, 3))) void ReportAndEnd(ExitCode code, const char* format, ...)
{
    char text[1024];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text, sizeof text, format, arguments);
    std::fflush(stdout);
    DWORD written;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(length), &written, nullptr);
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    for (;;)
        Sleep(INFINITE);
}

/// "ZOGBLBRX.DLL+0x1234"
void DescribeCode(const void* address, char* text, size_t size)
{
    MEMORY_BASIC_INFORMATION memory = {};
    VirtualQuery(address, &memory, sizeof memory);
    char path[MAX_PATH] = "";
    if (memory.AllocationBase != nullptr)
        GetModuleFileNameA(static_cast<HMODULE>(memory.AllocationBase), path, sizeof path - 1);
    const char* slash = std::strrchr(path, '\\');
    const auto offset = static_cast<const char*>(address) - static_cast<const char*>(memory.AllocationBase);
    std::snprintf(text, size, "%s+0x%lx", slash != nullptr ? slash + 1 : "(no module)",
                  static_cast<unsigned long>(offset));
}

LONG WINAPI ReportCrash(EXCEPTION_POINTERS* exception)
{
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    char place[MAX_PATH + 32];
    DescribeCode(record.ExceptionAddress, place, sizeof place);
    char data[256] = "";
    if (record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION && record.NumberParameters >= 2) {
        auto* address = reinterpret_cast<void*>(record.ExceptionInformation[1]);
        std::snprintf(data, sizeof data, ", %s %p %s", record.ExceptionInformation[0] != 0 ? "writing" : "reading",
                      address, zo_test::DescribeGuardedAddress(address).c_str());
    }
    ReportAndEnd(kCrashed, "\nCRASH in %s: exception 0x%08lx at %p, %s%s\n", g_currentTest,
                 static_cast<unsigned long>(record.ExceptionCode), record.ExceptionAddress, place, data);
}

[[noreturn]] void ReportTermination()
{
    ReportAndEnd(kCrashed, "\nCRASH in %s: an exception that nobody catches\n", g_currentTest);
}

void ReportHang() { ReportAndEnd(kHangs, "\nHANGS: %s makes no progress\n", g_currentTest); }

} // namespace

int main(int argc, char** argv)
{
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SetUnhandledExceptionFilter(&ReportCrash);
    std::set_terminate(&ReportTermination);
    std::setvbuf(stdout, nullptr, _IONBF, 0);

    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new CurrentTestRecorder);
    DWORD watchdogSeconds = 0xFFFFFFFF; // none
    for (const std::string& option : std::vector<std::string>(argv + 1, argv + argc)) {
        if (option == "--guard-heap")
            zo_test::InstallGuardHeap();
        else if (option.starts_with("--watchdog="))
            watchdogSeconds = static_cast<DWORD>(std::atoi(option.c_str() + 11));
        else if (option.starts_with("--environment=") && option.substr(14) != zo_test::EnvironmentName())
            ReportAndEnd(kWrongEnvironment, "this is %s\n", zo_test::EnvironmentName().c_str());
    }
    if (!AfxWinInit(GetModuleHandleA(nullptr), nullptr, GetCommandLineA(), SW_SHOWNORMAL))
        return 1;

    // The run-time library makes two handles for the process's first exception: no leak of the test that throws it.
    try {
        AfxThrowUserException();
    } catch (CUserException* e) {
        e->Delete();
    }

    const bool isChild = zo_test::IsChild(argc, argv);
    const zo_test::Watchdog watchdog(isChild ? kChildWatchdogSeconds : watchdogSeconds, &ReportHang);
    if (!isChild)
        std::printf("environment %s%s\n", zo_test::EnvironmentName().c_str(),
                    zo_test::IsGuardHeapInstalled() ? ", guard heap" : "");
    const int exitCode = isChild ? zo_test::RunAsChild(argc, argv) : RUN_ALL_TESTS();
    if (!isChild && testing::UnitTest::GetInstance()->test_to_run_count() == 0)
        ReportAndEnd(kNoTest, "no test has such a name\n");
    return exitCode;
}
