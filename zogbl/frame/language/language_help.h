/// \file
/// Help for the dialogs that belong to the suite rather than to the application that shows them.
#pragma once

#include <common/without_throwing.h>
#include <zogbl/module.h>

#include <zomfx/frame_window.h>

/// While it lives, help is that of the suite in the language loaded; only main windows of the suite's own classes take
/// part.
class LanguageHelp {
public:
    LanguageHelp()
    {
        CWnd* window = AfxGetMainWnd();
        if (window == nullptr)
            return;
        if (window->IsKindOf(RUNTIME_CLASS(CZoMDIFrameWnd)))
            Set(static_cast<CZoMDIFrameWnd*>(window), m_mdiFrame);
        else if (window->IsKindOf(RUNTIME_CLASS(CZoFrameWnd)))
            Set(static_cast<CZoFrameWnd*>(window), m_frame);
    }
    ~LanguageHelp()
    {
        if (m_mdiFrame != nullptr)
            m_mdiFrame->RestoreHelpFile(m_saved);
        if (m_frame != nullptr)
            m_frame->RestoreHelpFile(m_saved);
    }
    LanguageHelp(const LanguageHelp&) = delete;
    LanguageHelp& operator=(const LanguageHelp&) = delete;

private:
    template <class FRAME> void Set(FRAME* window, FRAME*& kept)
    {
        WithoutThrowing([&] {
            m_saved = window->GetHelpFile();
            kept = window;
            return kept->SetHelpFile("ZOFAXBRX", ZoGblGetLanguageLCID());
        });
    }

    CString m_saved;
    CZoMDIFrameWnd* m_mdiFrame = nullptr;
    CZoFrameWnd* m_frame = nullptr;
};
