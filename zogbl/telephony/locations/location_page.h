/// \file
/// Windows that show the parts of a location's editor.
#pragma once

#include <common/without_throwing.h>

#include "location_form.h"

/// Hands a window's messages on to its form. BASE is a page of a sheet or of a wizard.
template <class BASE> class LocationFormPage : public BASE {
public:
    LocationFormPage(int page, const LocationSet* names) : LocationFormPage(MakeLocationForm(page, names)) {}

    LocationForm& GetForm() { return *m_form; }

    /// What it throws ends the sheet, or keeps a wizard from its page.
    BOOL OnInitDialog() override
    {
        BASE::OnInitDialog();
        m_form->Begin(*this);
        m_form->Show();
        return TRUE;
    }

protected:
    void ReloadTexts() override
    {
        BASE::ReloadTexts();
        m_form->ReloadTexts();
    }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        const LRESULT result = BASE::WindowProc(message, wParam, lParam);
        if (this->m_hWnd != nullptr && message == WM_COMMAND && lParam != 0)
            WithoutThrowing([&] { m_form->OnCommand(LOWORD(wParam), HIWORD(wParam)); });
        else if (this->m_hWnd != nullptr && message == WM_TIMER)
            WithoutThrowing([&] { m_form->OnTimer(wParam); });
        return result;
    }

private:
    explicit LocationFormPage(std::unique_ptr<LocationForm> form) : BASE(form->GetTemplate()), m_form(std::move(form))
    {
    }

    const std::unique_ptr<LocationForm> m_form;
};
