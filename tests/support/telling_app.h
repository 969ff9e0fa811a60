/// \file
/// An application whose message boxes answer themselves.
#pragma once

#include <afxwin.h>

#include <string>

namespace zo_test {

/// Notes what the user would be told; boxes show no window.
class TellingApp : public CWinApp {
public:
    int DoMessageBox(LPCSTR text, UINT type, UINT help) override
    {
        told += std::string(text) + " | " + std::to_string(type) + " | " + std::to_string(help);
        return answer;
    }

    std::string told; ///< text, type and help context
    int answer = IDOK;
};

} // namespace zo_test
