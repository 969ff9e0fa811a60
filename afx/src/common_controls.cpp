#include "common_controls_library.h"

#include <afxwin.h>

void LoadCommonControls()
{
    static const auto s_initialise = reinterpret_cast<void(WINAPI*)()>(
        reinterpret_cast<void*>(::GetProcAddress(::LoadLibrary("comctl32.dll"), "InitCommonControls")));
    if (s_initialise != nullptr)
        s_initialise();
}
