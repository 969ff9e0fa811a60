// zobench_bare: a start without the library. It makes the system calls without which the library's start cannot do, and
// nothing else; then it loads the library, to see what that takes.
//
//   zobench_bare LIBRARY USERKEY LANGUAGESKEY LANGUAGELIBRARY FIRSTSTRING COUNT
//
// Exit code: 0, or the number of the step that failed.
#include "step_clock.h"

#include <cstdlib>

namespace {

constexpr int kCountryTable = 25599;

#ifdef _WIN64
constexpr REGSAM kView = KEY_WOW64_32KEY;
#else
constexpr REGSAM kView = 0;
#endif

/// The version resource of this program: reading that of a file which is not loaded would cost a load.
bool ReadVersion(HINSTANCE instance)
{
    char file[MAX_PATH] = {};
    GetModuleFileNameA(instance, file, sizeof file - 1);
    static const char* const names[] = {"Comments",         "CompanyName",  "FileDescription",
                                        "FileVersion",      "InternalName", "LegalCopyright",
                                        "OriginalFilename", "ProductName",  "ProductVersion"};
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeA(file, &ignored);
    void* data = std::malloc(size);
    if (size == 0 || data == nullptr || !GetFileVersionInfoA(file, 0, size, data))
        return false;
    void* found = nullptr;
    UINT length = 0;
    if (!VerQueryValueA(data, "\\", &found, &length) ||
        !VerQueryValueA(data, "\\VarFileInfo\\Translation", &found, &length))
        return false;
    const DWORD translation = *static_cast<const DWORD*>(found);
    for (const char* name : names) { // not all of them are there
        char path[64];
        wsprintfA(path, "\\StringFileInfo\\%04X%04X\\%s", LOWORD(translation), HIWORD(translation), name);
        VerQueryValueA(data, path, &found, &length);
    }
    std::free(data);
    return true;
}

bool OpenUserKey(const char* path)
{
    char user[260];
    DWORD size = sizeof user;
    HKEY key = nullptr;
    return GetUserNameA(user, &size) &&
           RegOpenKeyExA(HKEY_LOCAL_MACHINE, path, 0, KEY_READ | kView, &key) == ERROR_SUCCESS &&
           RegCloseKey(key) == ERROR_SUCCESS;
}

bool CreateHiddenWindow(HINSTANCE instance)
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = &DefWindowProcA;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = "ZoBenchmark";
    return RegisterClassA(&windowClass) != 0 && CreateWindowExA(0, "ZoBenchmark", "ZoBenchmark", WS_POPUP, 0, 0, 0, 0,
                                                                nullptr, nullptr, instance, nullptr) != nullptr;
}

bool ListLanguages(const char* path)
{
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path, 0, KEY_ENUMERATE_SUB_KEYS | KEY_QUERY_VALUE | kView, &key) !=
        ERROR_SUCCESS)
        return false;
    LONG result = ERROR_SUCCESS;
    for (DWORD index = 0; result == ERROR_SUCCESS; ++index) {
        char name[261];
        BYTE data[8192];
        DWORD nameLength = sizeof name, type, size = sizeof data;
        result = RegEnumValueA(key, index, name, &nameLength, nullptr, &type, data, &size);
    }
    RegCloseKey(key);
    return result == ERROR_NO_MORE_ITEMS;
}

bool LoadNames(HINSTANCE module, UINT first, UINT count)
{
    for (UINT id = first; id < first + count; ++id) {
        char name[256];
        if (LoadStringA(module, id, name, sizeof name) == 0)
            return false;
    }
    return true;
}

bool CreateFonts()
{
    const HDC screen = GetDC(nullptr);
    LOGFONTA description = {};
    description.lfHeight = -MulDiv(8, GetDeviceCaps(screen, LOGPIXELSY), 72);
    ReleaseDC(nullptr, screen);
    lstrcpyA(description.lfFaceName, "MS Sans Serif");
    constexpr LONG weights[] = {FW_BOLD, FW_NORMAL};
    for (const LONG weight : weights) {
        description.lfWeight = weight;
        if (CreateFontIndirectA(&description) == nullptr)
            return false;
    }
    return true;
}

} // namespace

int main(int count, char** words)
{
    StepClock clock;
    if (count != 7)
        return 100;
    const HINSTANCE instance = GetModuleHandleA(nullptr);
    const UINT first = static_cast<UINT>(std::atoi(words[5]));
    const UINT names = static_cast<UINT>(std::atoi(words[6]));

    if (!ReadVersion(instance) || !OpenUserKey(words[2]))
        return 1;
    clock.Step("keys");
    if (!CreateHiddenWindow(instance))
        return 2;
    clock.Step("window");
    if (!ListLanguages(words[3]))
        return 3;
    const HINSTANCE language = LoadLibraryA(words[4]);
    if (language == nullptr || FindResourceA(language, MAKEINTRESOURCEA(kCountryTable), RT_RCDATA) == nullptr)
        return 4;
    clock.Step("language");
    if (!CreateFonts())
        return 5;
    clock.Step("fonts");
    if (!LoadNames(language, first, names))
        return 6;
    clock.Step("countries");
    if (!LoadNames(language, first, names))
        return 7;
    clock.Step("countries-again");
    if (LoadLibraryA(words[1]) == nullptr)
        return 8;
    clock.Step("library");
    clock.Print();
    return 0;
}
