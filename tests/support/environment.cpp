#include "support/environment.h"

namespace zo_test {

WindowsFamily Family()
{
    const DWORD version = GetVersion();
    const DWORD major = LOBYTE(LOWORD(version));
    if ((version & 0x80000000) != 0)
        return major < 4 ? WindowsFamily::kWin32s : WindowsFamily::kWindows95;
    return major < 5 ? WindowsFamily::kWindowsNt4 : WindowsFamily::kWindows10;
}

bool IsWine()
{
    static const bool wine = GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
    return wine;
}

std::string EnvironmentName()
{
    static constexpr const char* families[] = {"win31", "win98", "nt40", "win10"};
    std::string name = sizeof(void*) == 4 ? "x86." : "x64.";
    name += families[static_cast<int>(Family())];
    if (GetACP() != 1252)
        name += "-" + std::to_string(GetACP());
    const HDC screen = GetDC(nullptr);
    const int resolution = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    if (resolution != 96)
        name += "-dpi" + std::to_string(resolution);
    return name;
}

std::string ProgramFolder()
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path - 1);
    return std::string(path).substr(0, std::string(path).rfind('\\') + 1);
}

} // namespace zo_test
