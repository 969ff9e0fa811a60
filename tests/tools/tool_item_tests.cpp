// Items: what their fields take, and how their programs start.
#include "support/test.h"
#include "tool_fixture.h"

#include <zogbl/resource_ids.h>

namespace {

struct Text {
    const char* name;
    size_t field;
    void (CTlmItem::*get)(CString&) const;
    DWORD (CTlmItem::*set)(const char*);
};
constexpr Text kTexts[] = {
    {"menu text", 32, &CTlmItem::GetDataMenuText, &CTlmItem::SetDataMenuText},
    {"description", 128, &CTlmItem::GetDataDescription, &CTlmItem::SetDataDescription},
    {"program", 264, &CTlmItem::GetDataProgramPath, &CTlmItem::SetDataProgramPath},
    {"folder", 264, &CTlmItem::GetDataWorkingDirectory, &CTlmItem::SetDataWorkingDirectory},
    {"arguments", 264, &CTlmItem::GetDataArguments, &CTlmItem::SetDataArguments},
};

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
    bool inherits, secured, ownEnvironment;
    int count;
};
Started g_started;
BOOL g_starts = TRUE;
BOOL WINAPI NoteProcess(LPCSTR program, LPSTR command, LPSECURITY_ATTRIBUTES process, LPSECURITY_ATTRIBUTES thread,
                        BOOL inherits, DWORD flags, LPVOID environment, LPCSTR folder, LPSTARTUPINFOA startup,
                        LPPROCESS_INFORMATION made)
{
    g_started = {program,
                 command,
                 folder != nullptr ? folder : "(null)",
                 *startup,
                 flags,
                 inherits != FALSE,
                 process != nullptr || thread != nullptr,
                 environment != nullptr,
                 g_started.count + 1};
    made->hProcess = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    made->hThread = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    if (!g_starts) {
        CloseHandle(made->hProcess);
        CloseHandle(made->hThread);
    }
    return g_starts;
}

class ToolItem : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(ZoGblLoadLanguageDLL());
        g_started = {};
        g_starts = TRUE;
        m_item.DefaultItemData(); // now that there are texts
        m_item.SetDataProgramPath("C:\\Tools\\calc.exe");
    }
    void TearDown() override { ZoGblDumpLanguageDLL(); }

    RegisteredProduct m_product;
    Item m_item;
};

class PatchedStart : public ToolItem {
protected:
    ImportPatch m_patch{kLibrary, "CreateProcessA", &NoteProcess};
};

constexpr int kAnswer = ZO_IDC_ARGUMENT_PROMPT_ANSWER;

HWND g_pressed = nullptr; // the dialog in which OK was
void CALLBACK PressOkThenCancel(HWND, UINT, UINT_PTR, DWORD)
{
    const HWND dialog = FindWindowA("#32770", nullptr);
    if (dialog == nullptr || GetWindowThreadProcessId(dialog, nullptr) != GetCurrentThreadId())
        return;
    const int button = std::exchange(g_pressed, dialog) == dialog ? IDCANCEL : IDOK;
    SendMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

} // namespace

TEST_F(ToolItem, BeginsWithDefaults)
{
    TestFolder folder;
    Item item;
    EXPECT_EQ(0u, item.GetCommand());
    {
        CFile file(folder.Path("item").c_str(), CFile::modeCreate | CFile::modeWrite);
        EXPECT_EQ(3u, item.SaveItemData(file, ZO_TLM_ITEM_VERSION + 1, 1536));
        EXPECT_EQ(3u, item.SaveItemData(file, ZO_TLM_ITEM_VERSION, 1535));
        EXPECT_EQ(0u, item.GetRecord().dwSize);
        EXPECT_EQ(0u, item.SaveItemData(file, ZO_TLM_ITEM_VERSION, 1536));
    }
    EXPECT_EQ(RecordBytes("", 4, "Starts a program."), folder.Read("item"));

    folder.Write("short", RecordBytes("new").substr(0, 1535));
    CFile file(folder.Path("short").c_str(), CFile::modeRead);
    EXPECT_EQ(3u, item.LoadItemData(file, ZO_TLM_ITEM_VERSION, 1537));
    EXPECT_EQ(6u, item.LoadItemData(file, ZO_TLM_ITEM_VERSION, 1536));
    EXPECT_EQ(7u, item.SaveItemData(file, ZO_TLM_ITEM_VERSION, 1536)) << "opened for reading";
    EXPECT_STREQ("", item.GetRecord().szMenuText) << "half a record";
}

TEST_F(ToolItem, KeepsTextsWithinTheirFields)
{
    for (const Text& text : kTexts) {
        const auto value = [&] {
            CString got;
            (m_item.*text.get)(got);
            return std::string(got);
        };
        for (const size_t length : {text.field - 3, text.field - 2, text.field - 1, text.field, size_t{5000}}) {
            const std::string given(length, 'x');
            EXPECT_EQ(length >= text.field ? 8u : 0u, (m_item.*text.set)(given.c_str())) << text.name << length;
            EXPECT_EQ(given.substr(0, text.field - 2), value()) << text.name << length;
        }
        EXPECT_EQ(0u, (m_item.*text.set)(nullptr));
        EXPECT_EQ(text.field - 2, value().size());
        // A character of two bytes that does not fit as a whole.
        (m_item.*text.set)((std::string(text.field - 3, 'x') + "\x83\x5C").c_str());
        EXPECT_EQ(IsDoubleByte() ? text.field - 3 : text.field - 2, value().size()) << text.name;
        (m_item.*text.set)("short");
        EXPECT_EQ("short", value());
    }
    // A field that came without a terminator ends where it ends.
    ZoToolItemRecord& record = m_item.GetRecord();
    memset(record.szMenuText, 'm', sizeof record.szMenuText);
    CString text;
    m_item.GetDataMenuText(text);
    EXPECT_EQ(std::string(32, 'm'), std::string(text));
}

TEST_F(PatchedStart, HandsOverWhatTheRecordHolds)
{
    ZoToolItemRecord& record = m_item.GetRecord();
    record.dwCreationFlags = 0x12345678;
    record.dwStartupFlags = 0x77;
    DWORD* const numbers[] = {&record.dwX,       &record.dwY,    &record.dwWidth,        &record.dwHeight,
                              &record.dwColumns, &record.dwRows, &record.dwFillAttribute};
    for (DWORD i = 0; i < std::size(numbers); ++i)
        *numbers[i] = 100 + i;
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
        EXPECT_EQ(100 + i, got[i]) << i;
    EXPECT_EQ(0x77u, startup.dwFlags);
    EXPECT_EQ(SW_SHOWMAXIMIZED, startup.wShowWindow);
    EXPECT_EQ(nullptr, startup.lpTitle);
    EXPECT_EQ(0x12345678u, g_started.flags);
    EXPECT_EQ("C:\\Tools\\calc.exe", g_started.program);
    EXPECT_EQ("C:\\Tools\\calc.exe /a \"b c\"", g_started.command);
    EXPECT_EQ("", g_started.folder);
    EXPECT_FALSE(g_started.inherits || g_started.secured || g_started.ownEnvironment);

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
        std::function<void(HWND)> act;
        DWORD status;
        std::string command;
    } rows[] = {
        {[](HWND dialog) { Press(dialog, IDOK); }, 0, "1 + 1"},
        {[](HWND dialog) { Press(dialog, IDCANCEL); }, 2, ""},
        {[](HWND dialog) { Key(dialog, VK_ESCAPE); }, 2, ""},
        {[](HWND dialog) { SendMessageA(dialog, WM_CLOSE, 0, 0); }, 2, ""},
        {[](HWND dialog) {
             EXPECT_EQ("C:\\Tools\\calc.exe", TextOf(dialog, ZO_IDC_ARGUMENT_PROMPT_PROGRAM));
             EXPECT_EQ("What shall be reckoned?", TextOf(dialog, ZO_IDC_ARGUMENT_PROMPT_TEXT));
             EXPECT_NE(0, SendDlgItemMessageA(dialog, ZO_IDC_ARGUMENT_PROMPT_ICON, STM_GETICON, 0, 0));
             EXPECT_EQ(kAnswer, FocusOf(dialog));
             Key(dialog, VK_TAB);
             EXPECT_EQ(IDOK, FocusOf(dialog));
             AccessKey(dialog, 'a');
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
        DialogDriver driver{row.act};
        EXPECT_EQ(row.status, m_item.ActivateItem(nullptr));
        EXPECT_EQ(row.status == 0 ? "C:\\Tools\\calc.exe " + row.command : "", g_started.command);
        EXPECT_STREQ("1 + 1", m_item.GetRecord().szArguments) << "the answer is for one start only";
    }

    // Asked by an application, the item keeps the answer, if it is told to.
    for (const DWORD flags : {DWORD{0}, ZO_TLM_KEEP_ARGUMENTS}) {
        m_item.SetDataFlags(flags);
        CString answer;
        DialogDriver driver{[](HWND dialog) {
                                Type(dialog, kAnswer, "kept");
                                Press(dialog, IDCANCEL);
                            },
                            [](HWND dialog) {
                                Type(dialog, kAnswer, "kept");
                                Press(dialog, IDOK);
                            }};
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
    const BoxStub noBox;
    AllocationFaults faults;
    RunFaultLoop(faults, [&](const FaultRun& run) {
        g_started = {};
        // By a timer, for a dialog that never opens has nobody to drive it.
        g_pressed = nullptr;
        const UINT_PTR timer = SetTimer(nullptr, 0, 20, &PressOkThenCancel);
        const DWORD status = m_item.ActivateItem(nullptr);
        KillTimer(nullptr, timer);
        const bool fired = run.Fired();
        run.Stop();
        EXPECT_TRUE(status == 0 || (fired && (status == 1 || status == 2))) << status;
        EXPECT_EQ(status == 0, g_started.count == 1);
    });
}

// Real programs --------------------------------------------------------------------------------------------------------

namespace {

using Report = std::map<std::string, std::string>;

/// Starts the sample tool, and reads what it reports.
class RealStart : public ToolItem {
protected:
    void SetUp() override
    {
        ToolItem::SetUp();
        SetEnvironmentVariableA("ZO_START_REPORT", m_folder.Path("report").c_str());
        m_item.SetDataProgramPath(ReportTool().c_str());
        m_item.SetDataWorkingDirectory(m_folder.Path().c_str());
        m_item.GetRecord().dwCreationFlags |= CREATE_NO_WINDOW; // consoles take their time
    }
    void TearDown() override
    {
        SetEnvironmentVariableA("ZO_START_REPORT", nullptr);
        ToolItem::TearDown();
    }

    static constexpr DWORD kPatience = 60000; // milliseconds

    Report Start()
    {
        EXPECT_EQ(0u, m_item.ActivateItem(nullptr));
        const DWORD begin = GetTickCount();
        std::string text = m_folder.Read("report");
        while (text == "(none)" && GetTickCount() - begin < kPatience) {
            Sleep(5);
            text = m_folder.Read("report");
        }
        DeleteFileA(m_folder.Path("report").c_str());
        Report report;
        for (size_t at = 0, end; (end = text.find("\r\n", at)) != std::string::npos; at = end + 2) {
            const std::string line = text.substr(at, end - at);
            report[line.substr(0, line.find('='))] = line.substr(line.find('=') + 1);
        }
        EXPECT_FALSE(report["process"].empty()) << text;
        AwaitFreedom(report);
        return report;
    }

    /// Until program and folder can be deleted: the program has ended, and so has the host of its console, which stays in
    /// the folder a moment longer.
    static void AwaitFreedom(Report& report)
    {
        const auto number = static_cast<DWORD>(std::strtoul(report["process"].c_str(), nullptr, 10));
        if (const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, number)) {
            EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(process, kPatience));
            CloseHandle(process);
        }
        HANDLE folder;
        const DWORD begin = GetTickCount();
        while ((folder = CreateFileA(report["folder"].c_str(), DELETE, 0, nullptr, OPEN_EXISTING,
                                     FILE_FLAG_BACKUP_SEMANTICS, nullptr)) == INVALID_HANDLE_VALUE &&
               GetTickCount() - begin < kPatience)
            Sleep(5);
        EXPECT_NE(INVALID_HANDLE_VALUE, folder) << GetLastError();
        CloseHandle(folder);
    }

    TestFolder m_folder;
};

} // namespace

TEST_F(RealStart, GivesTheProgramAllThatIsSet)
{
    ZoToolItemRecord& record = m_item.GetRecord();
    record.dwStartupFlags = STARTF_USEPOSITION | STARTF_USESIZE | STARTF_USESHOWWINDOW | STARTF_USECOUNTCHARS |
                            STARTF_USEFILLATTRIBUTE | STARTF_FORCEONFEEDBACK;
    record.dwX = 31;
    record.dwY = 42;
    record.dwWidth = 353;
    record.dwHeight = 264;
    record.dwColumns = 100;
    record.dwRows = 40;
    record.dwFillAttribute = 0x1E;
    m_item.SetDataArguments("one \"two words\" three");
    const std::string flags = std::to_string(record.dwStartupFlags);
    const struct {
        DWORD flags, showCommand, priority;
        const char *reported, *state;
    } rows[] = {
        {4, SW_SHOWNORMAL, NORMAL_PRIORITY_CLASS, "1", "normal"},
        {4, SW_SHOWMAXIMIZED, IDLE_PRIORITY_CLASS, "3", "maximized"},
        {6, SW_SHOWMAXIMIZED, HIGH_PRIORITY_CLASS, "2", "minimized"},
    };
    for (const auto& row : rows) {
        m_item.SetDataFlags(row.flags);
        record.dwShowCommand = row.showCommand;
        record.dwCreationFlags = CREATE_DEFAULT_ERROR_MODE | CREATE_NO_WINDOW | row.priority;
        Report report = Start();
        EXPECT_EQ(flags, report["flags"]);
        EXPECT_EQ("31,42", report["position"]);
        EXPECT_EQ("353,264", report["size"]);
        EXPECT_EQ("100,40", report["console"]);
        EXPECT_EQ("30", report["fill"]);
        EXPECT_EQ(row.reported, report["show"]);
        EXPECT_EQ(row.state, report["window state"]);
        EXPECT_TRUE(row.showCommand != SW_SHOWNORMAL || report["window"] == "31,42,353,264") << report["window"];
        const auto checkPriority = [&] { EXPECT_EQ(std::to_string(row.priority), report["priority"]); };
        if (row.priority == NORMAL_PRIORITY_CLASS)
            checkPriority();
        else
            ZO_WINE_GAP("programs start with normal priority", checkPriority());
        EXPECT_EQ(m_folder.Path(), report["folder"]);
        EXPECT_EQ("one", report["argument 1"]);
        EXPECT_EQ("two words", report["argument 2"]);
        EXPECT_EQ("three", report["argument 3"]);
    }
}

TEST_F(RealStart, SetsUpAConsole)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10, "a console window each takes its time");
    ZoToolItemRecord& record = m_item.GetRecord();
    record.dwStartupFlags = STARTF_USECOUNTCHARS | STARTF_USEFILLATTRIBUTE | STARTF_USESHOWWINDOW;
    record.dwShowCommand = SW_SHOWMINIMIZED;
    record.dwColumns = 100;
    record.dwRows = 40;
    record.dwFillAttribute = 0x1E;
    record.dwCreationFlags = CREATE_NEW_CONSOLE | CREATE_NEW_PROCESS_GROUP;
    EXPECT_EQ("100,40,30", Start()["screen buffer"]);
    record.dwCreationFlags = DETACHED_PROCESS;
    EXPECT_EQ("none", Start()["screen buffer"]);
}

TEST_F(RealStart, FindsProgramsWhereverTheyAre)
{
    const std::string folder = m_folder.Path("My Tools & more");
    CreateDirectoryA(folder.c_str(), nullptr);
    const std::string program = folder + "\\report it.exe";
    ASSERT_TRUE(CopyFileA(ReportTool().c_str(), program.c_str(), TRUE));
    m_item.SetDataProgramPath(program.c_str());
    m_item.SetDataWorkingDirectory(folder.c_str());
    m_item.SetDataArguments("x y");
    Report report = Start();
    EXPECT_EQ("\"" + program + "\" x y", report["command line"]);
    EXPECT_EQ("x", report["argument 1"]);
    EXPECT_EQ("y", report["argument 2"]);
    EXPECT_EQ(folder, report["folder"]);
    EXPECT_TRUE(DeleteFileA(program.c_str())) << GetLastError();
    EXPECT_EQ(14u, m_item.ActivateItem(nullptr)) << "the program is gone";
    m_item.SetDataProgramPath(ReportTool().c_str());
    m_item.SetDataWorkingDirectory(m_folder.Path("nowhere").c_str());
    EXPECT_EQ(14u, m_item.ActivateItem(nullptr)) << "the folder is gone";
}
