/// \file
/// Message boxes of the suite that show no window.
#pragma once

#include "import_patch.h"

namespace zo_test {

/// While it lives the suite's box cannot be made, and a function answers in place of the system's that stands in for it.
class BoxStub {
public:
    using Answer = int WINAPI(HWND, LPCSTR, LPCSTR, UINT);

    explicit BoxStub(Answer* answer = &PressOk) : m_answer("ZOGBLBRX.DLL", "MessageBoxA", answer) {}

private:
    static INT_PTR WINAPI MakeNone(HINSTANCE, LPCDLGTEMPLATEA, HWND, DLGPROC, LPARAM) { return -1; }
    static int WINAPI PressOk(HWND, LPCSTR, LPCSTR, UINT) { return IDOK; }

    const ImportPatch m_noBox{"ZOGBLBRX.DLL", "DialogBoxIndirectParamA", &MakeNone};
    const ImportPatch m_answer;
};

} // namespace zo_test
