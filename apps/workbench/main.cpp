// ZoWorkbench: the class library at work.
#include "../library_search.h"
#include "main_frame.h"
#include "tour.h"

#include <zogbl/module.h>
#include <zogbl/module_language.h>

#include <cstdlib>
#include <cstring>

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
};

WorkbenchApp g_app;

BOOL WorkbenchApp::InitInstance()
{
    LeaveOutCurrentFolder();
    if (__argc > 1 && _stricmp(__argv[1], "/tour") == 0) {
        m_exitCode = RunTour(__argc > 2 ? __argv[2] : ".");
        return FALSE;
    }
    m_languageLoaded = ZoGblLoadLanguageDLL();
    if (!m_languageLoaded || !m_language.Load(m_hInstance)) {
        // The one text that cannot come from a language library.
        AfxMessageBox("No language library could be loaded.\n\nRun ZoProvision.exe once to register the product.",
                      MB_ICONEXCLAMATION);
        m_exitCode = 1;
        return FALSE;
    }
    auto* frame = new MainFrame;
    m_pMainWnd = frame;
    if (!frame->CreateFrame()) {
        m_exitCode = 1;
        return FALSE;
    }
    frame->ShowWindow(m_nCmdShow);
    frame->UpdateWindow();
    return TRUE;
}

int WorkbenchApp::ExitInstance()
{
    m_language.Unload();
    if (m_languageLoaded)
        ZoGblDumpLanguageDLL();
    return m_exitCode;
}

} // namespace
