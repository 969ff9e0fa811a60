// Items: what their fields take, and how their programs start.
#include "dialogs/dialog_faults.h"
#include "support/test.h"
#include "tool_fixture.h"

#include <zogbl/resource_ids.h>

namespace {

/// Lets tests ask as applications' derived classes do.
class Item : public CTlmItem {
public:
    using CTlmItem::PromptForArgument;
};

/// What CreateProcess was called with, in place of a process.
struct Started {
    std::string program, command, folder;
    STARTUPINFOA startup;
    DWORD flags;
    bool hasMore; // handles, security or an environment
    int count;
} g_started;
BOOL g_starts = TRUE;
BOOL WINAPI NoteProcess(LPCSTR program, LPSTR command, LPSECURITY_ATTRIBUTES process, LPSECURITY_ATTRIBUTES thread,
                        BOOL inherits, DWORD flags, LPVOID environment, LPCSTR folder, LPSTARTUPINFOA startup,
                        LPPROCESS_INFORMATION made)
{
    const bool hasMore = process != nullptr || thread != nullptr || inherits || environment != nullptr;
    g_started = {program, command, folder, *startup, flags, hasMore, g_started.count + 1};
    if (g_starts)
        *made = {CreateEventA(nullptr, FALSE, FALSE, nullptr), CreateEventA(nullptr, FALSE, FALSE, nullptr), 0, 0};
    return g_starts;
}

class ToolItem : public ProductTest {
protected:
    ToolItem()
    {
        g_started = {};
        g_starts = TRUE;
        m_item.SetDataProgramPath("C:\\Tools\\calc.exe");
    }

    Item m_item;
};

class PatchedStart : public ToolItem {
    const ImportPatch m_patch{kLibrary, "CreateProcessA", &NoteProcess};
};

constexpr int kAnswer = ZO_IDC_ARGUMENT_PROMPT_ANSWER;

} // namespace

TEST_F(ToolItem, BeginsWithDefaults)
{
    Item item;
    EXPECT_EQ(0u, item.GetCommand());
    {
        CFile file(m_folder.Path("item").c_str(), CFile::modeCreate | CFile::modeWrite);
        EXPECT_EQ(3u, item.SaveItemData(file, ZO_TLM_ITEM_VERSION + 1, 1536));
        EXPECT_EQ(3u, item.SaveItemData(file, ZO_TLM_ITEM_VERSION, 1535));
        EXPECT_EQ(0u, item.GetRecord().dwSize);
        EXPECT_EQ(0u, item.SaveItemData(file, ZO_TLM_ITEM_VERSION, 1536));
    }
    EXPECT_EQ(RecordBytes("", 4, "Starts a program."), m_folder.Read("item"));

    m_folder.Write("short", RecordBytes("new").substr(0, 1535));
    CFile file(m_folder.Path("short").c_str(), CFile::modeRead);
    EXPECT_EQ(3u, item.LoadItemData(file, ZO_TLM_ITEM_VERSION, 1537));
    EXPECT_EQ(6u, item.LoadItemData(file, ZO_TLM_ITEM_VERSION, 1536));
    EXPECT_EQ(7u, item.SaveItemData(file, ZO_TLM_ITEM_VERSION, 1536)) << "opened for reading";
    EXPECT_STREQ("", item.GetRecord().szMenuText) << "half a record";
}

TEST_F(ToolItem, KeepsTextsWithinTheirFields)
{
    for (const ToolText& text : kToolTexts) {
        SCOPED_TRACE(text.at);
        for (const size_t length : {text.size - 3, text.size - 2, text.size - 1, text.size, size_t{5000}}) {
            const std::string given(length, 'x');
            EXPECT_EQ(length >= text.size ? 8u : 0u, (m_item.*text.set)(given.c_str())) << length;
            EXPECT_EQ(given.substr(0, text.size - 2), GetText(m_item, text)) << length;
        }
        EXPECT_EQ(0u, (m_item.*text.set)(nullptr));
        EXPECT_EQ(text.size - 2, GetText(m_item, text).size());
        // A character of two bytes that does not fit as a whole.
        (m_item.*text.set)((std::string(text.size - 3, 'x') + "\x83\x5C").c_str());
        EXPECT_EQ(IsDoubleByte() ? text.size - 3 : text.size - 2, GetText(m_item, text).size());
        (m_item.*text.set)("short");
        EXPECT_EQ("short", GetText(m_item, text));
    }
    // A field that came without a terminator ends where it ends.
    ZoToolItemRecord& record = m_item.GetRecord();
    memset(record.szMenuText, 'm', sizeof record.szMenuText);
    EXPECT_EQ(std::string(32, 'm'), GetText(m_item, kToolTexts[0]));
}

TEST_F(PatchedStart, HandsOverWhatTheRecordHolds)
{
    ZoToolItemRecord& record = m_item.GetRecord();
    record.dwCreationFlags = 0x12345678;
    record.dwStartupFlags = 0x77;
    DWORD number = 100;
    for (DWORD* field : {&record.dwX, &record.dwY, &record.dwWidth, &record.dwHeight, &record.dwColumns, &record.dwRows,
                         &record.dwFillAttribute})
        *field = number++;
    record.dwShowCommand = SW_SHOWMAXIMIZED;
    m_item.SetDataArguments("/a \"b c\"");
    DWORD status = 0;
    ZO_EXPECT_NO_LEAK(status = m_item.ActivateItem(nullptr));
    EXPECT_EQ(0u, status);
    const STARTUPINFOA& startup = g_started.startup;
    EXPECT_EQ(sizeof(STARTUPINFOA), startup.cb);
    const DWORD got[] = {startup.dwX,           startup.dwY,           startup.dwXSize,        startup.dwYSize,
                         startup.dwXCountChars, startup.dwYCountChars, startup.dwFillAttribute};
    for (DWORD i = 0; i < std::size(got); ++i)
        EXPECT_EQ(100 + i, got[i]);
    EXPECT_EQ(0x77u, startup.dwFlags);
    EXPECT_EQ(SW_SHOWMAXIMIZED, startup.wShowWindow);
    EXPECT_EQ(nullptr, startup.lpTitle);
    EXPECT_EQ(0x12345678u, g_started.flags);
    EXPECT_EQ("C:\\Tools\\calc.exe", g_started.program);
    EXPECT_EQ("C:\\Tools\\calc.exe /a \"b c\"", g_started.command);
    EXPECT_EQ("", g_started.folder);
    EXPECT_FALSE(g_started.hasMore);

    m_item.SetDataFlags(ZO_TLM_START_MINIMIZED);
    EXPECT_EQ(0u, m_item.ActivateItem(nullptr));
    EXPECT_EQ(SW_SHOWMINIMIZED, g_started.startup.wShowWindow);
    g_starts = FALSE;
    ZO_EXPECT_NO_LEAK(status = m_item.ActivateItem(nullptr));
    EXPECT_EQ(14u, status);
    g_started.count = 0;
    m_item.SetDataProgramPath("");
    EXPECT_EQ(15u, m_item.ActivateItem(nullptr));
    EXPECT_EQ(0, g_started.count);
}

TEST_F(PatchedStart, WritesThePathAsProgramsExpectIt)
{
    const std::string longest(263, 'p');
    const struct {
        std::string path, arguments, command;
    } rows[] = {
        {"C:\\a.exe", "", "C:\\a.exe "},
        {"C:\\My Tools\\a.exe", "x", "\"C:\\My Tools\\a.exe\" x"},
        {"\"C:\\My Tools\\a.exe\"", "x", "\"C:\\My Tools\\a.exe\" x"}, // as somebody typed it: there is no such program
        {longest, std::string(263, 'a'), std::string(262, 'p') + " " + std::string(263, 'a')},
        {"C:\\" + std::string(270, ' '), "", "\"C:\\" + std::string(259, ' ') + "\" "},
    };
    for (const auto& row : rows) {
        ZoToolItemRecord& record = m_item.GetRecord();
        memset(record.szProgramPath, 0, 264); // without a terminator if need be
        memcpy(record.szProgramPath, row.path.data(), (std::min<size_t>)(row.path.size(), 264));
        memset(record.szArguments, 0, 264);
        memcpy(record.szArguments, row.arguments.data(), row.arguments.size());
        EXPECT_EQ(0u, m_item.ActivateItem(nullptr));
        EXPECT_EQ(row.command, g_started.command);
        EXPECT_EQ(row.path.substr(0, 264), g_started.program);
    }
}

TEST_F(PatchedStart, AsksForTheArguments)
{
    m_item.SetDataFlags(ZO_TLM_ASK_ARGUMENTS | ZO_TLM_KEEP_ARGUMENTS);
    m_item.SetDataDescription("What shall be reckoned?");
    m_item.SetDataArguments("1 + 1");
    const std::string longest(263, 'x');
    const struct {
        DialogDriver::Act act;
        DWORD status;
        std::string command;
    } rows[] = {
        {Pressing(IDOK), 0, "1 + 1"},
        {Pressing(IDCANCEL), 2, ""},
        {[](HWND dialog) {
             EXPECT_EQ("C:\\Tools\\calc.exe", TextOf(dialog, ZO_IDC_ARGUMENT_PROMPT_PROGRAM));
             EXPECT_EQ("What shall be reckoned?", TextOf(dialog, ZO_IDC_ARGUMENT_PROMPT_TEXT));
             EXPECT_NE(0, SendDlgItemMessageA(dialog, ZO_IDC_ARGUMENT_PROMPT_ICON, STM_GETICON, 0, 0));
             EXPECT_EQ(kAnswer, FocusOf(dialog));
             Type(dialog, kAnswer, "2 + 2");
             Key(dialog, VK_RETURN);
         },
         0, "2 + 2"},
        {[&](HWND dialog) {
             Type(dialog, kAnswer, longest + "yy");
             Press(dialog, IDOK);
         },
         0, longest},
    };
    for (const auto& row : rows) {
        g_started = {};
        const DialogDriver driver{row.act};
        EXPECT_EQ(row.status, m_item.ActivateItem(nullptr));
        EXPECT_EQ(row.status == 0 ? "C:\\Tools\\calc.exe " + row.command : "", g_started.command);
        EXPECT_STREQ("1 + 1", m_item.GetRecord().szArguments) << "the answer is for one start only";
    }

    // Asked by an application, the item keeps the answer, if it is told to.
    for (const DWORD flags : {DWORD{0}, ZO_TLM_KEEP_ARGUMENTS}) {
        m_item.SetDataFlags(flags);
        CString answer;
        const auto type = [](int button) -> DialogDriver::Act {
            return [=](HWND dialog) { Type(dialog, kAnswer, "kept"), Press(dialog, button); };
        };
        const DialogDriver driver{type(IDCANCEL), type(IDOK)};
        EXPECT_EQ(2u, m_item.PromptForArgument(nullptr, answer));
        EXPECT_EQ(0u, m_item.PromptForArgument(nullptr, answer));
        EXPECT_STREQ("kept", answer);
        EXPECT_STREQ(flags == 0 ? "1 + 1" : "kept", m_item.GetRecord().szArguments);
    }
    ZoGblDumpLanguageDLL();
    m_item.SetDataFlags(ZO_TLM_ASK_ARGUMENTS);
    g_started = {};
    EXPECT_EQ(1u, m_item.ActivateItem(nullptr)) << "there is no dialog";
    EXPECT_EQ(0, g_started.count);
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
}

TEST_F(PatchedStart, StartsNothingWithoutMemoryForTheQuestion)
{
    m_item.SetDataFlags(ZO_TLM_ASK_ARGUMENTS);
    const auto start = [&](const FaultRun& run) {
        g_started = {};
        const DWORD status = m_item.ActivateItem(nullptr);
        run.Stop();
        EXPECT_TRUE(status == 0 || (run.Fired() && (status == 1 || status == 2))) << status;
        EXPECT_EQ(status == 0, g_started.count == 1);
    };
    RunDialogFaults([](HWND dialog) { Command(dialog, IDOK); }, start, {.system = 0});
}

TEST_F(ToolItem, StartsRealProgramsWhereverTheyAre)
{
    const std::string folder = Path("My Tools & more"), program = folder + "\\report it.exe";
    CreateDirectoryA(folder.c_str(), nullptr);
    ASSERT_TRUE(CopyFileA(ReportTool().c_str(), program.c_str(), TRUE));
    m_item.SetDataProgramPath(program.c_str());
    m_item.SetDataWorkingDirectory(folder.c_str());
    m_item.SetDataArguments("one \"two words\"");
    ZoToolItemRecord& record = m_item.GetRecord();
    record.dwCreationFlags |= CREATE_NO_WINDOW; // consoles take their time
    record.dwStartupFlags = STARTF_USEPOSITION | STARTF_USESHOWWINDOW;
    record.dwX = 31;
    record.dwShowCommand = SW_SHOWMAXIMIZED;
    SetEnvironmentVariableA("ZO_START_REPORT", Path("report").c_str());
    EXPECT_EQ(0u, m_item.ActivateItem(nullptr));
    EXPECT_TRUE(WaitUntil([&] { return m_folder.Read("report").find("argument 2=") != std::string::npos; }));
    SetEnvironmentVariableA("ZO_START_REPORT", nullptr);
    const std::string report = "\r\n" + m_folder.Read("report");
    const std::string commandLine = "command line=\"" + program + "\" one \"two words\"";
    for (const std::string& line : {commandLine, "folder=" + folder, std::string("argument 2=two words"),
                                    std::string("position=31,16"), std::string("window state=maximized")})
        EXPECT_NE(std::string::npos, report.find("\r\n" + line + "\r\n")) << line << " is not in" << report;
    // The program ends, and so does the host of its console, which stays in the folder a moment longer.
    EXPECT_TRUE(WaitUntil([&] { return DeleteFileA(program.c_str()), RemoveDirectoryA(folder.c_str()); }));
    EXPECT_EQ(14u, m_item.ActivateItem(nullptr)) << "the program is gone";
    m_item.SetDataProgramPath(ReportTool().c_str());
    EXPECT_EQ(14u, m_item.ActivateItem(nullptr)) << "the folder is gone";
}
