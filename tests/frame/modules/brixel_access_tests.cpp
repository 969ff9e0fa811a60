// The template libraries of an application: their order, and what becomes of those that fail.
#include "plugin_fixture.h"

#include <zogbl/brixel_access.h>

#include <zomfx/multi_doc_template.h>

namespace {

using Modules = std::vector<HMODULE>;

class BrixelAccess : public ModulesTest {
protected:
    BrixelAccess() { TakePluginLog(); }

    /// Installs template libraries under names that the registry sorts as they stand here.
    void InstallAll(const std::vector<std::string>& fileNames)
    {
        char name[] = "Module A";
        for (const std::string& fileName : fileNames) {
            Install(name, 1, fileName.c_str());
            ++name[7];
        }
    }
    static Modules Libraries(const CZoBrixelAccess& access)
    {
        Modules libraries;
        for (INT_PTR i = 0; i < access.GetModuleCount(); ++i)
            libraries.push_back(access.GetModule(i)->GetLibraryHandle());
        return libraries;
    }
    static void ExpectNothingLoaded()
    {
        for (const LPCSTR name : {kPluginA, kPluginB, kPluginC, kPluginPartial})
            EXPECT_EQ(nullptr, GetModuleHandleA(name)) << name;
    }
};

class HostDocument : public CDocument {
    DECLARE_DYNCREATE(HostDocument)
};
IMPLEMENT_DYNCREATE(HostDocument, CDocument)

CZoBrixelAccess* g_access = nullptr;
std::string g_lists; // the ids of the modules, at each call from a plug-in

/// What a plug-in may do that calls its host.
void ListModules()
{
    static bool isListing = false;
    if (isListing) // GetTemplateID calls back too
        return;
    isListing = true;
    for (INT_PTR i = 0; i < g_access->GetModuleCount(); ++i)
        g_lists += g_access->GetModule(i) != nullptr ? std::to_string(g_access->GetModule(i)->GetTemplateID()) : "null";
    g_lists += g_access->LoadAllBrixelTemplates() ? '!' : ' ';
    isListing = false;
}

} // namespace

TEST_F(BrixelAccess, SortsByIdAndKeepsTheOrderOfLoadingAmongEquals)
{
    InstallAll({kPluginA, kPluginB, kPluginC, kPluginPartial});
    {
        CZoBrixelAccess access;
        EXPECT_FALSE(access.IsLoaded());
        EXPECT_TRUE(access.LoadAllBrixelTemplates());
        EXPECT_TRUE(access.IsLoaded());
        EXPECT_EQ(4, access.GetTemplateFilenamesArray().GetSize());
        EXPECT_EQ(Modules({GetModuleHandleA(kPluginB), GetModuleHandleA(kPluginPartial), GetModuleHandleA(kPluginA),
                           GetModuleHandleA(kPluginC)}),
                  Libraries(access));
        EXPECT_EQ(0u, TakePluginLog().find("a.InitializeTemplateDLL a.GTID b.InitializeTemplateDLL b.GTID a.GTID "));
    }
    EXPECT_EQ("b.ShutdownTemplateDLL b.gone partial.ShutdownTemplateDLL partial.gone a.ShutdownTemplateDLL a.gone "
              "c.ShutdownTemplateDLL c.gone ",
              TakePluginLog());
}

TEST_F(BrixelAccess, LeavesOutWhatCannotBeLoadedAndKeepsWhatFails)
{
    const TestFolder folder;
    std::vector<std::string> libraries = BadLibraries(folder);
    libraries.insert(libraries.end(), {kPluginA, kPluginPartial});
    InstallAll(libraries);
    for (const LPCSTR how : {"", "InitializeTemplateDLL=int", "InitializeTemplateDLL=memory",
                             "InitializeTemplateDLL=false", "ShutdownTemplateDLL=int", "GTID=int"}) {
        SCOPED_TRACE(how);
        g_pluginFailure = how;
        {
            CZoBrixelAccess access;
            EXPECT_TRUE(access.LoadAllBrixelTemplates());
            EXPECT_EQ(6, access.GetTemplateFilenamesArray().GetSize());
            Modules expected = {GetModuleHandleA(kPluginPartial), GetModuleHandleA(kPluginA)};
            if (*how == 'G') // those that do not tell their ids count as 0
                std::swap(expected[0], expected[1]);
            EXPECT_EQ(expected, Libraries(access));
        }
        ExpectNothingLoaded();
    }
    g_pluginFailure.clear();
    RemoveUsers();
    CZoBrixelAccess access;
    EXPECT_FALSE(access.LoadAllBrixelTemplates());
    EXPECT_FALSE(access.IsLoaded());
}

TEST_F(BrixelAccess, IsWholeWhenAPlugInCallsBack)
{
    InstallAll({kPluginA, kPluginB, kPluginC});
    g_pluginCall = &ListModules;
    {
        CZoBrixelAccess access;
        g_access = &access;
        EXPECT_TRUE(access.LoadAllBrixelTemplates());
        // Each is initialised, tells its id, and is compared with those before it.
        EXPECT_EQ("  3 3 3 13 13 13 13 ", g_lists);
        g_lists.clear();
    }
    g_pluginCall = nullptr;
    EXPECT_EQ("133 33 33 3 3  ", g_lists) << "each shuts down, and is gone when its library goes";
}

TEST_F(BrixelAccess, ClosesTheDocumentsOfItsLibraries)
{
    InstallAll({kPluginA});
    auto* main = new CMDIFrameWnd;
    ASSERT_TRUE(main->Create(nullptr, "main", WS_OVERLAPPEDWINDOW, CRect(0, 0, 400, 300), nullptr, nullptr));
    AfxGetThread()->m_pMainWnd = main;
    CWinApp* tests = AfxGetApp();
    CWinApp application; // of this test alone, for it keeps the document templates
    {
        CZoBrixelAccess access;
        ASSERT_TRUE(access.LoadAllBrixelTemplates());
        CPtrArray classes;
        CZoTemplateDLLModule* module = access.GetModule(0);
        module->GetDOCRunTimeClass(&classes, 0, 0);
        module->GetFRAMERunTimeClass(&classes, 0, 0);
        module->GetVIEWRunTimeClass(&classes, 0, 0);
        ASSERT_EQ(3, classes.GetSize());
        const auto runtimeClass = [&](INT_PTR i) { return static_cast<CRuntimeClass*>(classes[i]); };
        // Of the second type only frame and view are the library's.
        for (CRuntimeClass* documentClass : {runtimeClass(0), RUNTIME_CLASS(HostDocument)}) {
            auto* type = new CZoMultiDocTemplate(7, documentClass, runtimeClass(1), runtimeClass(2));
            application.AddDocTemplate(type);
            EXPECT_NE(nullptr, type->OpenDocumentFile(nullptr));
            EXPECT_NE(nullptr, type->OpenDocumentFile(nullptr));
        }
        EXPECT_NE(nullptr, main->MDIGetActive());
        TakePluginLog();
    }
    EXPECT_EQ("a.document-gone a.document-gone a.ShutdownTemplateDLL a.gone ", TakePluginLog());
    EXPECT_EQ(nullptr, main->MDIGetActive());
    AfxGetModuleState()->m_pCurrentWinApp = tests;
    AfxGetThread()->m_pMainWnd = nullptr;
    main->DestroyWindow();
}

TEST_F(BrixelAccess, SurvivesFailures)
{
    InstallAll({kPluginA, kPluginB});
    const auto run = [&](const FaultRun& run) {
        {
            CZoBrixelAccess access;
            const BOOL loaded = access.LoadAllBrixelTemplates();
            run.Stop();
            EXPECT_EQ(loaded, access.IsLoaded());
            EXPECT_TRUE(run.Fired() || access.GetModuleCount() == 2);
            EXPECT_TRUE(loaded || access.LoadAllBrixelTemplates()) << "at the next attempt";
            const Modules libraries = Libraries(access);
            EXPECT_EQ(0, std::count(libraries.begin(), libraries.end(), nullptr));
        }
        ExpectNothingLoaded();
        const std::string log = TakePluginLog();
        const auto times = [&](const char* entry) {
            int count = 0;
            for (size_t at = 0; (at = log.find(entry, at)) != std::string::npos; ++at)
                ++count;
            return count;
        };
        EXPECT_EQ(times("a.Initialize"), times("a.Shutdown")) << log;
        EXPECT_EQ(times("b.Initialize"), times("b.Shutdown")) << log;
    };
    RunFaultLoop<AllocationFaults>(run);
    RegistryFaults calls;
    const ZO_FAULTY_CALL(LoadLibraryA) load(calls, "ZOGBLBRX.DLL", nullptr, ERROR_NOT_ENOUGH_MEMORY);
    RunFaultLoop(calls, run);
}
