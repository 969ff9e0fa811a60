// ZoStartReport: tells how it was started, one "name=value" a line. With ZO_START_REPORT in the environment it writes
// that file; otherwise it prints, and waits for Enter so that its console stays.
#include "../library_search.h"

#include <windows.h>

#include <cstdarg>
#include <cstdio>
#include <string>

namespace {

std::string g_report;

__attribute__((format(printf, 1, 2))) void Report(const char* format, ...)
{
    char line[1024];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    g_report += line;
    g_report += "\r\n";
}

void ReportStartup()
{
    STARTUPINFOA startup = {};
    GetStartupInfoA(&startup);
    Report("flags=%lu", startup.dwFlags);
    Report("position=%lu,%lu", startup.dwX, startup.dwY);
    Report("size=%lu,%lu", startup.dwXSize, startup.dwYSize);
    Report("console=%lu,%lu", startup.dwXCountChars, startup.dwYCountChars);
    Report("fill=%lu", startup.dwFillAttribute);
    Report("show=%u", startup.wShowWindow);
    Report("priority=%lu", GetPriorityClass(GetCurrentProcess()));
    Report("error mode=%u", SetErrorMode(0));
}

/// A window that leaves place and size to the system gets those of the start-up information; the state is handed to
/// every program with a window of its own.
void ReportWindow()
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = &DefWindowProcA;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = "ZoStartReport";
    RegisterClassA(&windowClass);
    const HWND window =
        CreateWindowA("ZoStartReport", "ZoStartReport", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                      CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, windowClass.hInstance, nullptr);
    if (window == nullptr)
        return;
    STARTUPINFOA startup = {};
    GetStartupInfoA(&startup);
    ShowWindow(window, (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 ? startup.wShowWindow : SW_SHOWDEFAULT);
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    const RECT& place = placement.rcNormalPosition;
    Report("window=%ld,%ld,%ld,%ld", place.left, place.top, place.right - place.left, place.bottom - place.top);
    Report("window state=%s", IsIconic(window) ? "minimized" : IsZoomed(window) ? "maximized" : "normal");
    DestroyWindow(window);
}

void ReportConsole()
{
    const HANDLE console = CreateFileA("CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                       nullptr, OPEN_EXISTING, 0, nullptr);
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    if (console != INVALID_HANDLE_VALUE && GetConsoleScreenBufferInfo(console, &info))
        Report("screen buffer=%d,%d,%d", info.dwSize.X, info.dwSize.Y, info.wAttributes);
    else
        Report("screen buffer=none");
    CloseHandle(console);
}

void ReportArguments(int argc, char** argv)
{
    char folder[MAX_PATH] = "";
    GetCurrentDirectoryA(sizeof folder, folder);
    Report("process=%lu", GetCurrentProcessId());
    Report("folder=%s", folder);
    Report("command line=%s", GetCommandLineA());
    for (int i = 1; i < argc; ++i)
        Report("argument %d=%s", i, argv[i]);
}

/// Under another name at first, so that whoever waits for the file finds all of it.
bool Save(const std::string& path)
{
    const std::string unfinished = path + ".tmp";
    FILE* file = fopen(unfinished.c_str(), "wb");
    if (file == nullptr)
        return false;
    const bool written = fwrite(g_report.data(), 1, g_report.size(), file) == g_report.size();
    return fclose(file) == 0 && written && MoveFileExA(unfinished.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING);
}

} // namespace

int main(int argc, char** argv)
{
    LeaveOutCurrentFolder();
    ReportStartup();
    ReportWindow();
    ReportConsole();
    ReportArguments(argc, argv);
    char path[MAX_PATH] = "";
    if (GetEnvironmentVariableA("ZO_START_REPORT", path, sizeof path) != 0)
        return Save(path) ? 0 : 1;
    fputs(g_report.c_str(), stdout);
    getchar();
    return 0;
}
