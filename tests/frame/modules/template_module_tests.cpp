// One template library: loading, its entry points, and what it may not do to its host.
#include "plugin_fixture.h"
#include "support/test.h"

#include <zogbl/template_module.h>

namespace {

/// An entry point, its call, and what comes back from a library that has it.
struct EntryPoint {
    LPCSTR name;
    int (*call)(CZoTemplateDLLModule& module, CPtrArray& pointers, CWordArray& words);
    int expected;
    INT_PTR added; ///< elements that the call adds to either array
};

CCmdUI g_item;

constexpr EntryPoint kEntryPoints[] = {
    {"InitializeTemplateDLL", [](auto& m, auto&, auto&) -> int { return m.InitializeTemplateDLL(); }, TRUE, 0},
    {"ShutdownTemplateDLL", [](auto& m, auto&, auto&) -> int { return m.ShutdownTemplateDLL(); }, TRUE, 0},
    {"DRT", [](auto& m, auto& p, auto&) { return static_cast<int>(m.GetDOCRunTimeClass(&p, 1, 2)); }, 12, 1},
    {"FRT", [](auto& m, auto& p, auto&) { return static_cast<int>(m.GetFRAMERunTimeClass(&p, 2, 3)); }, 23, 1},
    {"VRT", [](auto& m, auto& p, auto&) { return static_cast<int>(m.GetVIEWRunTimeClass(&p, 3, 4)); }, 34, 1},
    {"DRID", [](auto& m, auto&, auto& w) { return static_cast<int>(m.GetDOCResourceID(&w, 4, 5)); }, 45, 1},
    {"DROE", [](auto& m, auto&, auto& w) { return static_cast<int>(m.GetDOCResourceOLEEmbedding(&w)); }, 6, 1},
    {"DROI", [](auto& m, auto&, auto& w) { return static_cast<int>(m.GetDOCResourceOLEInPlace(&w)); }, 7, 1},
    {"CCB", [](auto& m, auto&, auto&) -> int { return m.LoadCustomControlBars(nullptr, nullptr, 8); }, TRUE, 0},
    {"DCBO", [](auto& m, auto&, auto&) { return m.FreeCustomControlBars(9), 0; }, 0, 0},
    {"LCBS", [](auto& m, auto&, auto& w) { return m.LoadControlBarState(&w), 0; }, 0, 1},
    {"SCBS", [](auto& m, auto&, auto& w) { return m.SaveControlBarState(&w), 0; }, 0, 1},
    {"IHS", [](auto& m, auto&, auto&) { return m.InvokeHelpSystem(), 0; }, 0, 0},
    {"GHS", [](auto& m, auto&, auto&) { return static_cast<int>(m.GetHelpStringID()); }, 10, 0},
    {"GNBI",
     [](auto& m, auto& p, auto&) {
         CZoNoviceBarInfoArray records;
         const UINT result = m.GetNoviceBarInfo(&records, 5, 6);
         p.Append(records);
         return static_cast<int>(result);
     },
     56, 1},
    {"PNC", [](auto& m, auto&, auto&) { return m.ProcessNoviceCommand(11, nullptr), 0; }, 0, 0},
    {"PNUC", [](auto& m, auto&, auto&) { return m.ProcessNoviceUpdateCommand(12, nullptr, &g_item), 0; }, 0, 0},
    {"GTID", [](auto& m, auto&, auto&) { return m.GetTemplateID(); }, 3, 0},
    {"GMD", [](auto& m, auto&, auto& w) { return static_cast<int>(m.GetMaxDocuments(&w, 6, 7)); }, 67, 1},
};
static_assert(std::size(kEntryPoints) == 19);

/// Calls an entry point and compares what it does. \param works FALSE: it must answer 0 and do nothing
void ExpectAnswer(CZoTemplateDLLModule& module, const EntryPoint& entry, bool works, bool isEntered)
{
    TakePluginLog();
    CPtrArray pointers;
    CWordArray words;
    EXPECT_EQ(works ? entry.expected : 0, entry.call(module, pointers, words)) << entry.name;
    EXPECT_EQ(works ? entry.added : 0, pointers.GetSize() + words.GetSize()) << entry.name;
    EXPECT_EQ(isEntered ? std::string("a.") + entry.name + " " : "", TakePluginLog()) << entry.name;
}

LPCSTR g_missing = nullptr;

FARPROC WINAPI LackingProcAddress(HMODULE module, LPCSTR name)
{
    return strcmp(name, g_missing) == 0 ? nullptr : GetProcAddress(module, name);
}

struct ObjectingModule : CZoTemplateDLLModule {
    INT_PTR CheckLibrary(HINSTANCE library) override { return asked = library, 77; }
    HINSTANCE asked = nullptr;
};

} // namespace

TEST(TemplateModule, CallsAllEntryPoints)
{
    CZoTemplateDLLModule module;
    for (const bool isLoaded : {false, true, false}) {
        EXPECT_TRUE(!isLoaded || module.LoadLibraryA(kPluginA) == GetModuleHandleA(kPluginA));
        for (const EntryPoint& entry : kEntryPoints)
            ExpectAnswer(module, entry, isLoaded, isLoaded);
        EXPECT_EQ(isLoaded, module.FreeLibrary() != FALSE);
        EXPECT_EQ(nullptr, GetModuleHandleA(kPluginA));
    }
}

TEST(TemplateModule, KeepsALibraryThatLacksAnEntryPoint)
{
    for (const EntryPoint& missing : kEntryPoints) {
        g_missing = missing.name;
        CZoTemplateDLLModule module;
        {
            const ImportPatch lacking(kZogbl, "GetProcAddress", &LackingProcAddress);
            EXPECT_EQ(-3, reinterpret_cast<INT_PTR>(module.LoadLibraryA(kPluginA))) << missing.name;
        }
        EXPECT_EQ(GetModuleHandleA(kPluginA), module.GetLibraryHandle());
        for (const EntryPoint& entry : kEntryPoints)
            ExpectAnswer(module, entry, &entry != &missing, &entry != &missing);
    }
}

TEST(TemplateModule, LetsNoExceptionPass)
{
    CZoTemplateDLLModule module;
    module.LoadLibraryA(kPluginA);
    for (const EntryPoint& entry : kEntryPoints) {
        for (const LPCSTR how : {"=int", "=memory"}) {
            g_pluginFailure = std::string(entry.name) + how;
            ZO_EXPECT_NO_LEAK(ExpectAnswer(module, entry, false, true));
        }
    }
    g_pluginFailure.clear();
}

TEST(TemplateModule, TellsWhyALibraryIsNotLoaded)
{
    const TestFolder folder;
    CZoTemplateDLLModule module;
    for (const std::string& path : BadLibraries(folder)) {
        const HINSTANCE result = module.LoadLibraryA(path.c_str());
        EXPECT_LT(reinterpret_cast<UINT_PTR>(result), ZO_FIRST_LIBRARY_HANDLE) << path;
        EXPECT_EQ(nullptr, module.GetLibraryHandle()) << path;
    }
    FaultSource faults("load");
    ZO_FAULTY_CALL(LoadLibraryA) load(faults, kZogbl, reinterpret_cast<HMODULE>(INT_PTR{31}));
    module.LoadLibraryA(kPluginA);
    faults.Arm(1, false);
    EXPECT_EQ(31, reinterpret_cast<INT_PTR>(module.LoadLibraryA(kPluginB))) << "as the system gave it";
    EXPECT_EQ(nullptr, module.GetLibraryHandle());
    EXPECT_EQ(nullptr, GetModuleHandleA(kPluginA)) << "the one before is freed, not lost";
}

TEST(TemplateModule, AsksItsHookBeforeItStoresAnything)
{
    ObjectingModule module;
    EXPECT_EQ(77, reinterpret_cast<INT_PTR>(module.LoadLibraryA(kPluginA)));
    EXPECT_EQ(nullptr, module.GetLibraryHandle());
    EXPECT_EQ(0, module.GetTemplateID());
    ASSERT_EQ(GetModuleHandleA(kPluginA), module.asked) << "left loaded";
    FreeLibrary(module.asked);
}

TEST(TemplateModule, KeepsItsSlots)
{
    using M = CZoTemplateDLLModule;
    constexpr size_t kFirst = 6; // behind run-time class, destructor (two slots), Serialize, AssertValid, Dump
    ExpectSlots(kFirst, &M::LoadLibraryA, &M::FreeLibrary, &ObjectingModule::CheckLibrary, &M::InitializeTemplateDLL,
                &M::ShutdownTemplateDLL, &M::GetDOCRunTimeClass, &M::GetFRAMERunTimeClass, &M::GetVIEWRunTimeClass,
                &M::GetDOCResourceID, &M::GetDOCResourceOLEEmbedding, &M::GetDOCResourceOLEInPlace,
                &M::LoadCustomControlBars, &M::FreeCustomControlBars, &M::LoadControlBarState, &M::SaveControlBarState,
                &M::InvokeHelpSystem, &M::GetHelpStringID, &M::GetNoviceBarInfo, &M::ProcessNoviceCommand,
                &M::ProcessNoviceUpdateCommand, &M::GetTemplateID, &M::GetMaxDocuments);
}
