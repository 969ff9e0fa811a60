// The question for a program, as a real window.
#include "driven_dialog.h"
#include "product/registered_product.h"
#include "support/fault_loop.h"
#include "support/unique_names.h"

#include <zogbl/resource_ids.h>
#include <zomfx/program_prompt.h>

#include <commdlg.h>

using namespace zo_test;

namespace {

using Dialog = DrivenDialog<CZoProgramPromptDlg>;

constexpr int kPath = ZO_IDC_PROGRAM_PROMPT_PATH;
constexpr char kLibrary[] = "ZOMFXBRX.DLL";

std::string g_messages;
int WINAPI NoteMessage(HWND, LPCSTR text, LPCSTR title, UINT)
{
    g_messages += std::string(title) + ": " + text + "\n";
    return IDOK;
}

std::string g_chosen;  // by the system's dialog; empty: given up
std::string g_offered; // what it began with
BOOL WINAPI Choose(OPENFILENAMEA* choice)
{
    g_offered = choice->lpstrFile;
    EXPECT_STREQ("*.exe", choice->lpstrFilter + strlen(choice->lpstrFilter) + 1);
    if (g_chosen.empty())
        return FALSE;
    lstrcpynA(choice->lpstrFile, g_chosen.c_str(), static_cast<int>(choice->nMaxFile));
    return TRUE;
}

FARPROC WINAPI FindBrowser(HMODULE, LPCSTR name)
{
    EXPECT_STREQ("GetOpenFileNameA", name);
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Choose));
}

class ProgramPrompt : public testing::Test {
protected:
    void SetUp() override
    {
        // Held, for each time that it is loaded anew it leaves something behind of its own.
        static const HMODULE systemDialogs = LoadLibraryA("comdlg32.dll");
        ASSERT_NE(nullptr, systemDialogs);
        ASSERT_TRUE(ZoGblLoadLanguageDLL());
        m_folder.Write("program.exe", "MZ");
        m_program = m_folder.Path("program.exe");
        g_messages.clear();
    }
    void TearDown() override { ZoGblDumpLanguageDLL(); }

    RegisteredProduct m_product;
    TestFolder m_folder;
    std::string m_program;
    ImportPatch m_box{kLibrary, "MessageBoxA", &NoteMessage};
    ImportPatch m_browser{kLibrary, "GetProcAddress", &FindBrowser};
};

} // namespace

TEST_F(ProgramPrompt, StaysOpenUntilThereIsAProgram)
{
    static constexpr char kEmpty[] = "Title: Please enter the path of a program.\n";
    static constexpr char kMissing[] = "Title: There is no program at this path.\n";
    const std::string padded = "  " + m_program + " ";
    const struct {
        std::string entered, message;
        bool accepted;
    } rows[] = {
        {"", kEmpty, false},
        {"   ", kEmpty, false},
        {m_folder.Path("missing.exe"), kMissing, false},
        {m_folder.Path(), kMissing, false}, // a folder
        {m_program, "", true},
        {padded, "", true},
    };
    for (const auto& row : rows) {
        Dialog dialog("Title", "Where is it?", "before", nullptr);
        dialog.act = [&](Dialog& open) {
            EXPECT_STREQ("Where is it?", open.TextOf(ZO_IDC_PROGRAM_PROMPT_TEXT));
            EXPECT_STREQ("before", open.TextOf(kPath));
            EXPECT_EQ(open.Item(kPath), ::GetFocus());
            open.SetDlgItemText(kPath, row.entered.c_str());
            open.SendMessage(WM_COMMAND, IDOK);
            EXPECT_EQ(row.accepted, !open.IsOpen()) << row.entered;
        };
        g_messages.clear();
        EXPECT_EQ(row.accepted ? IDOK : IDCANCEL, dialog.DoModal());
        EXPECT_STREQ(row.accepted ? m_program.c_str() : "before", dialog.GetPath());
        EXPECT_EQ(row.message, g_messages) << row.entered;
    }
}

TEST_F(ProgramPrompt, LetsTheUserBrowse)
{
    const struct {
        std::string before, offered, chosen, after;
    } rows[] = {
        {"", "", m_program, m_program},
        {m_program, m_program, "", m_program},
        {"no:such|file", "", m_program, m_program}, // the system's dialog would refuse to begin with it
    };
    for (const auto& row : rows) {
        g_chosen = row.chosen;
        Dialog dialog("Title", "Where?", row.before.c_str(), nullptr);
        dialog.act = [&](Dialog& open) {
            open.SendMessage(WM_COMMAND, MAKEWPARAM(ZO_IDC_PROGRAM_PROMPT_BROWSE, BN_CLICKED),
                             reinterpret_cast<LPARAM>(open.Item(ZO_IDC_PROGRAM_PROMPT_BROWSE)));
            EXPECT_STREQ(row.after.c_str(), open.TextOf(kPath));
            EXPECT_EQ(row.offered, g_offered);
        };
        EXPECT_EQ(IDCANCEL, dialog.DoModal());
        EXPECT_TRUE(dialog.acted);
    }
}

TEST_F(ProgramPrompt, GoesOnWithoutTheSystemsDialog)
{
    g_chosen = m_program;
    const auto run = [&](const FaultRun& run) {
        Dialog dialog("Title", "Where?", "before", nullptr);
        dialog.act = [&](Dialog& open) {
            open.SendMessage(WM_COMMAND, ZO_IDC_PROGRAM_PROMPT_BROWSE,
                             reinterpret_cast<LPARAM>(open.Item(ZO_IDC_PROGRAM_PROMPT_BROWSE)));
            EXPECT_STREQ(run.Fired() ? "before" : m_program.c_str(), open.TextOf(kPath));
        };
        EXPECT_EQ(IDCANCEL, dialog.DoModal());
    };
    FaultSource faults("system's dialog");
    ZO_FAULTY_CALL(LoadLibraryA) load(faults, kLibrary, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    ZO_FAULTY_CALL(GetProcAddress) find(faults, kLibrary, nullptr, ERROR_PROC_NOT_FOUND);
    RunFaultLoop(faults, run);
}

TEST_F(ProgramPrompt, SurvivesMissingMemory)
{
    const ImportPatch noBox("ZOAFX.DLL", "MessageBoxA", &NoteMessage);
    g_chosen = m_program;
    AllocationFaults faults;
    RunFaultLoop(faults, [&](const FaultRun& run) {
        Dialog dialog("Title", "Where?", nullptr, nullptr);
        dialog.act = [](Dialog& open) {
            open.SendMessage(WM_COMMAND, ZO_IDC_PROGRAM_PROMPT_BROWSE,
                             reinterpret_cast<LPARAM>(open.Item(ZO_IDC_PROGRAM_PROMPT_BROWSE)));
            open.SendMessage(WM_COMMAND, IDOK);
        };
        const INT_PTR result = dialog.DoModal();
        const bool failed = run.Fired();
        run.Stop();
        EXPECT_TRUE(failed || result == IDOK);
        EXPECT_TRUE(result == IDOK || result == IDCANCEL || result == -1) << result;
        EXPECT_STREQ(result == IDOK ? m_program.c_str() : "", dialog.GetPath());
    });
    ZoGblDumpLanguageDLL();
    EXPECT_EQ(-1, Dialog("Title", "Where?", "", nullptr).DoModal()) << "without a language library";
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
}
