// The template libraries of an application: their order, and what becomes of those that fail.
#include "plugin_fixture.h"
#include "product/registered_product.h"
#include "support/test.h"

#include <zogbl/brixel_access.h>

#include <zomfx/multi_doc_template.h>

namespace {

constexpr DWORD kMode = ZO_MODE_LOCAL_MACHINE;
constexpr char kLibrary[] = "ZOGBLBRX.DLL";

class BrixelAccess : public testing::Test {
protected:
    BrixelAccess()
    {
        CZoVersionResource version;
        EXPECT_TRUE(version.ExtractVersionInfo());
        m_key = version.GetInstalledModulesKey();
        m_product.Config().DeleteSection(kMode, m_key, nullptr);
        TakePluginLog();
    }

    /// Installs template libraries under names that the registry sorts as they stand here.
    void Install(const std::vector<std::string>& fileNames)
    {
        m_product.Config().DeleteSection(kMode, m_key, nullptr);
        char name[] = "Module A";
        for (const std::string& fileName : fileNames) {
            const CString key = m_key + "\\" + name + "\\3.9";
            EXPECT_EQ(0u, m_product.Config().SetValue(kMode, key, "Access", DWORD{1}));
            EXPECT_EQ(0u, m_product.Config().SetValue(kMode, key, "Template", fileName.c_str()));
            ++name[7];
        }
    }
    static std::vector<HMODULE> Libraries(const CZoBrixelAccess& access)
    {
        std::vector<HMODULE> libraries;
        for (INT_PTR i = 0; i < access.GetModuleCount(); ++i)
            libraries.push_back(access.GetModule(i)->GetLibraryHandle());
        return libraries;
    }
    static void ExpectNothingLoaded()
    {
        for (const LPCSTR name : {kPluginA, kPluginB, kPluginC, kPluginPartial})
            EXPECT_EQ(nullptr, GetModuleHandleA(name)) << name;
    }

    RegisteredProduct m_product;
    CString m_key;
};

class HostDocument : public CDocument {
    DECLARE_DYNCREATE(HostDocument)
};
IMPLEMENT_DYNCREATE(HostDocument, CDocument)

using Modules = std::vector<HMODULE>;

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
    g_lists += ' ';
    isListing = false;
}

} // namespace

TEST_F(BrixelAccess, SortsByIdAndKeepsTheOrderOfLoadingAmongEquals)
{
    Install({kPluginA, kPluginB, kPluginC, kPluginPartial});
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
    EXPECT_EQ("b.ShutdownTemplateDLL partial.ShutdownTemplateDLL a.ShutdownTemplateDLL c.ShutdownTemplateDLL ",
              TakePluginLog());
    ExpectNothingLoaded();
}

TEST_F(BrixelAccess, LeavesOutWhatCannotBeLoadedAndKeepsWhatFails)
{
    const BadLibraries bad;
    Install({"no_such_library.DLL", bad.Text(), bad.OtherArchitecture(), bad.Cut(), kPluginA, kPluginPartial});
    for (const LPCSTR how : {"", "InitializeTemplateDLL=int", "InitializeTemplateDLL=memory",
                             "InitializeTemplateDLL=false", "ShutdownTemplateDLL=int"}) {
        SCOPED_TRACE(how);
        const PluginFailure failure(how);
        {
            CZoBrixelAccess access;
            EXPECT_TRUE(access.LoadAllBrixelTemplates());
            EXPECT_EQ(6, access.GetTemplateFilenamesArray().GetSize());
            EXPECT_EQ(Modules({GetModuleHandleA(kPluginPartial), GetModuleHandleA(kPluginA)}), Libraries(access));
        }
        ExpectNothingLoaded();
    }
    { // one that does not tell its id counts as 0
        const PluginFailure failure("GTID=int");
        CZoBrixelAccess access;
        EXPECT_TRUE(access.LoadAllBrixelTemplates());
        EXPECT_EQ(Modules({GetModuleHandleA(kPluginA), GetModuleHandleA(kPluginPartial)}), Libraries(access));
    }
    m_product.Config().DeleteSection(kMode, m_product.RootKey() + "\\Users", nullptr);
    CZoBrixelAccess access;
    EXPECT_FALSE(access.LoadAllBrixelTemplates());
    EXPECT_FALSE(access.IsLoaded());
}

TEST_F(BrixelAccess, IsWholeWhenAPlugInCallsBack)
{
    Install({kPluginA, kPluginB, kPluginC});
    char address[20];
    sprintf(address, "%p", reinterpret_cast<void*>(&ListModules));
    SetEnvironmentVariableA("ZO_PLUGIN_CALLS", address);
    {
        CZoBrixelAccess access;
        g_access = &access;
        EXPECT_TRUE(access.LoadAllBrixelTemplates());
        // Each is initialised, tells its id, and is compared with those before it.
        EXPECT_EQ("  3 3 3 13 13 13 13 ", g_lists);
        g_lists.clear();
    }
    SetEnvironmentVariableA("ZO_PLUGIN_CALLS", nullptr);
    EXPECT_EQ("133 33 33 3 3  ", g_lists) << "each shuts down, and is gone when its library goes";
    TakePluginLog();
}

TEST_F(BrixelAccess, ClosesTheDocumentsOfItsLibraries)
{
    Install({kPluginA});
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
    EXPECT_EQ("a.document-gone a.document-gone a.ShutdownTemplateDLL ", TakePluginLog());
    EXPECT_EQ(nullptr, main->MDIGetActive());
    ExpectNothingLoaded();
    AfxGetModuleState()->m_pCurrentWinApp = tests;
    AfxGetThread()->m_pMainWnd = nullptr;
    main->DestroyWindow();
}

TEST_F(BrixelAccess, SurvivesFailures)
{
    Install({kPluginA, kPluginB});
    const auto run = [&](const FaultRun& run) {
        {
            CZoBrixelAccess access;
            const BOOL loaded = access.LoadAllBrixelTemplates();
            const bool failed = run.Fired();
            run.Stop();
            EXPECT_EQ(loaded, access.IsLoaded());
            EXPECT_TRUE(failed || access.GetModuleCount() == 2);
            for (INT_PTR i = 0; i < access.GetModuleCount(); ++i) {
                ASSERT_NE(nullptr, access.GetModule(i));
                EXPECT_NE(nullptr, access.GetModule(i)->GetLibraryHandle());
            }
        }
        ExpectNothingLoaded();
        const std::string log = TakePluginLog();
        for (const char* plugin : {"a.", "b."})
            EXPECT_EQ(log.find(std::string(plugin) + "Initialize") != std::string::npos,
                      log.find(std::string(plugin) + "Shutdown") != std::string::npos)
                << log;
    };
    {
        AllocationFaults faults;
        RunFaultLoop(faults, run);
    }
    {
        RegistryFaults faults;
        RunFaultLoop(faults, run);
    }
    FaultSource faults("libraries");
    ZO_FAULTY_CALL(LoadLibraryA) load(faults, kLibrary, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    RunFaultLoop(faults, run);
}
