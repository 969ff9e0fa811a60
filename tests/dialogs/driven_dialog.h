/// \file
/// A modal dialog that a test drives: what a person would do happens once it is open.
#pragma once

#include "support/test.h"

namespace zo_test {

template <class DIALOG> class DrivenDialog : public DIALOG {
public:
    using DIALOG::DIALOG;

    /// Called once the dialog is shown; one that is open still afterwards is cancelled.
    std::function<void(DrivenDialog&)> act;
    bool acted = false;

    HWND Item(int id) const { return ::GetDlgItem(this->m_hWnd, id); }
    CString TextOf(int id) const
    {
        char text[300] = "";
        ::GetDlgItemTextA(this->m_hWnd, id, text, sizeof text);
        return text;
    }
    bool IsOpen() const { return this->m_bModalRunning; }

protected:
    BOOL OnInitDialog() override
    {
        const BOOL result = DIALOG::OnInitDialog();
        ::PostMessageA(this->m_hWnd, WM_APP, 0, 0);
        return result;
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != WM_APP)
            return DIALOG::WindowProc(message, wParam, lParam);
        acted = true;
        if (act)
            act(*this);
        if (IsOpen())
            this->SendMessage(WM_COMMAND, IDCANCEL);
        return 0;
    }
};

} // namespace zo_test
