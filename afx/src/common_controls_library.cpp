#include "common_controls_library.h"

#include "system_function.h"

void LoadCommonControls()
{
    static bool s_known = false;
    if (s_known)
        return;
    constexpr LPCSTR kLibrary = "comctl32.dll";
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_WIN95_CLASSES};
    if (const auto chosen = FindSystemFunction<decltype(InitCommonControlsEx)>(kLibrary, "InitCommonControlsEx"))
        s_known = chosen(&classes) != FALSE;
    else if (const auto all = FindSystemFunction<decltype(InitCommonControls)>(kLibrary, "InitCommonControls")) {
        all();
        s_known = true;
    }
}

BOOL CreateCommonControl(CWnd& control, LPCSTR className, DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    LoadCommonControls();
    return control.CWnd::Create(className, nullptr, style, rect, parent, id);
}
