/// \file
/// Where a program's libraries are looked for.
#pragma once

#include <windows.h>

/// Takes the current folder out of the places in which LoadLibrary looks: whoever can write there could slip the
/// program a library of his own. Call it first. Windows 95 and NT 4 have no such call; nothing changes there.
inline void LeaveOutCurrentFolder()
{
    using SetFolder = BOOL(WINAPI*)(LPCSTR);
    const auto set = reinterpret_cast<SetFolder>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "SetDllDirectoryA")));
    if (set != nullptr)
        set("");
}
