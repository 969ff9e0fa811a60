/// \file
/// Message boxes of the suite that show no window.
#pragma once

#include "import_patch.h"

#include <functional>
#include <string>
#include <utility>

namespace zo_test {

/// While it lives the suite's box cannot be made, and the system's, which stands in for it, is answered without a
/// window. One at a time.
class BoxStub {
public:
    struct Told {
        std::string title; ///< empty also if there was none
        std::string text;
        UINT type;
    };
    using Answer = std::function<int(const Told& told)>;

    explicit BoxStub(int answer = IDOK) : BoxStub([answer](const Told&) { return answer; }) {}
    explicit BoxStub(Answer answer)
    {
        s_told = {};
        s_answer = std::move(answer);
    }

    /// What the last box told; empty if there was none.
    const Told& Last() const { return s_told; }

private:
    static INT_PTR WINAPI MakeNone(HINSTANCE, LPCDLGTEMPLATEA, HWND, DLGPROC, LPARAM) { return -1; }
    static int WINAPI Note(HWND, LPCSTR text, LPCSTR title, UINT type)
    {
        s_told = {title != nullptr ? title : "", text, type};
        return s_answer(s_told);
    }

    static inline Told s_told;
    static inline Answer s_answer;
    const ImportPatch m_noBox{"ZOGBLBRX.DLL", "DialogBoxIndirectParamA", &MakeNone};
    const ImportPatch m_systems{"ZOGBLBRX.DLL", "MessageBoxA", &Note};
};

} // namespace zo_test
