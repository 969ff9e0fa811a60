#include "common_controls_library.h"

HMODULE CommonControlsLibrary()
{
    static HMODULE s_library = nullptr;
    if (s_library != nullptr)
        return s_library;
    const HMODULE library = ::LoadLibrary("comctl32.dll");
    if (library == nullptr)
        return nullptr;
    s_library = library; // two threads find the same one
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_WIN95_CLASSES};
    if (const auto chosen = CommonControlsFunction<decltype(InitCommonControlsEx)>("InitCommonControlsEx"))
        chosen(&classes);
    else if (const auto all = CommonControlsFunction<decltype(InitCommonControls)>("InitCommonControls"))
        all();
    return library;
}

BOOL CreateCommonControl(CWnd& control, LPCSTR className, DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    CommonControlsLibrary();
    return control.CWnd::Create(className, nullptr, style, rect, parent, id);
}
