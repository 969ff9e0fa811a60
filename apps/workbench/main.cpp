// ZoWorkbench: the class library at work.
#include "../library_search.h"
#include "main_frame.h"
#include "options.h"
#include "tour.h"
#include "workbench_ids.h"

#include <zogbl/module.h>
#include <zogbl/module_language.h>
#include <zogbl/splash_wnd.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

class WorkbenchApp : public CWinApp {
public:
    WorkbenchApp() : CWinApp("Zo Workbench") {}

    BOOL InitInstance() override;
    int ExitInstance() override;

private:
    int m_exitCode = 0;
    BOOL m_languageLoaded = FALSE;
    CZoModuleLanguage m_language;
    std::unique_ptr<CZoSplashWnd> m_splash; // null without one
};

WorkbenchApp g_app;

BOOL WorkbenchApp::InitInstance()
{
    LeaveOutCurrentFolder();
    if (__argc > 1 && _stricmp(__argv[1], "/tour") == 0) {
        m_exitCode = RunTour(__argc > 2 ? __argv[2] : ".");
        return FALSE;
    }
    // Who drives the Workbench by another program wants no picture, no question, and the windows in their usual places.
    const bool isQuiet = __argc > 1 && _stricmp(__argv[1], "/quiet") == 0;
    if (!isQuiet) {
        constexpr UINT kShown = 1500; // milliseconds
        m_splash = std::make_unique<CZoSplashWnd>();
        m_splash->Show(ZO_IDB_SPLASH, "", kShown); // if it cannot be shown, nobody misses it
    }
    m_languageLoaded = ZoGblLoadLanguageDLL();
    if (!m_languageLoaded || !m_language.Load(m_hInstance)) {
        m_splash.reset();
        // The one text that cannot come from a language library.
        AfxMessageBox("No language library could be loaded.\n\nRun ZoProvision.exe once to register the product.",
                      MB_ICONEXCLAMATION);
        m_exitCode = 1;
        return FALSE;
    }
    const auto tell = [this](UINT text) {
        if (m_splash != nullptr)
            m_splash->SetText(Text(text));
    };
    tell(ZO_IDS_START_WINDOW);
    auto* frame = new MainFrame(isQuiet);
    m_pMainWnd = frame;
    if (!frame->CreateFrame()) {
        m_exitCode = 1;
        return FALSE;
    }
    WindowState state;
    frame->UseWorkspace(state);
    frame->ShowWindow(state.isMaximized && m_nCmdShow == SW_SHOWNORMAL ? SW_SHOWMAXIMIZED : m_nCmdShow);
    frame->UpdateWindow();
    if (state.documents.GetSize() > 0)
        tell(ZO_IDS_START_DOCUMENTS);
    frame->OpenDocuments(state);
    return TRUE;
}

int WorkbenchApp::ExitInstance()
{
    m_splash.reset();
    m_language.Unload();
    if (m_languageLoaded)
        ZoGblDumpLanguageDLL();
    return m_exitCode;
}

} // namespace
