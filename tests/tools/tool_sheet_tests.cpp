// The editor of tools files, driven by keys and clicks.
#include "dialogs/dialog_faults.h"
#include "support/test.h"
#include "tool_fixture.h"

#include <zogbl/file_open.h>
#include <zogbl/resource_ids.h>
#include <zogbl/tool_file_dialog.h>
#include <zogbl/tool_sheet.h>
#include <zomfx/frame_window.h>

#include <commctrl.h>

namespace {

constexpr int kList = ZO_IDC_TOOL_LIST;
constexpr int kAdd = ZO_IDC_TOOL_ADD;
constexpr int kRemove = ZO_IDC_TOOL_REMOVE;
constexpr int kUp = ZO_IDC_TOOL_MOVE_UP;
constexpr int kDown = ZO_IDC_TOOL_MOVE_DOWN;
constexpr char kDescription[] = "Starts a program.";

enum Pages { kGeneral, kWindow, kConsole, kOptions };

/// The rows of the list, a '*' before the one selected.
std::string ToolsOf(HWND sheet)
{
    std::string rows = RowsOf(sheet, kList);
    size_t at = 0;
    for (int row = ChosenRow(sheet, kList); row > 0; --row)
        at = rows.find('|', at) + 1;
    return rows.empty() ? rows : rows.insert(at, "*");
}

/// Which of Add, Remove, Move up and Move down can be pressed, and whether the page can be used: "ARUDp".
std::string EnabledOf(HWND sheet)
{
    std::string enabled;
    for (const auto& [button, letter] : {std::pair{kAdd, 'A'}, {kRemove, 'R'}, {kUp, 'U'}, {kDown, 'D'}})
        enabled += IsEnabled(sheet, button) ? std::string(1, letter) : "";
    return enabled + (IsWindowEnabled(GetWindow(PageOf(sheet), GW_CHILD)) ? "p" : "");
}

DialogDriver::Act ChooseFile(std::string path)
{
    return [path = std::move(path)](HWND dialog) {
        Type(dialog, ZO_IDC_FILE_NAME, path);
        Press(dialog, IDOK);
    };
}
const DialogDriver::Act kGiveUp = Pressing(IDCANCEL);
const DialogDriver::Act kTakeOver = Pressing(IDOK);

class ToolSheet : public ProductTest {
protected:
    std::string Read() const { return m_folder.Read("test.tlm"); }
    void Write(const std::vector<std::string>& tools)
    {
        std::string bytes = HeaderBytes("mine");
        for (const std::string& tool : tools)
            bytes += RecordBytes(tool, 4, kDescription);
        m_folder.Write("test.tlm", bytes);
    }
    void Edit(std::vector<DialogDriver::Act> acts)
    {
        const DialogDriver driver(std::move(acts));
        EditToolItemFile(m_file.c_str(), nullptr);
    }

    const std::string m_file = Path("test.tlm");
};

} // namespace

TEST_F(ToolSheet, MakesAFileFromNothing)
{
    const std::string tool = ReportTool(), other = Path("R&D.exe");
    m_folder.Write("R&D.exe", "MZ");
    Edit({[&](HWND sheet) {
              EXPECT_EQ("Edit Tools", TextOf(sheet));
              EXPECT_EQ("A", EnabledOf(sheet));
              Press(sheet, kAdd);
              EXPECT_EQ("", ToolsOf(sheet)) << "given up";
              Press(sheet, kAdd);
              EXPECT_EQ("*R&D.exe|", ToolsOf(sheet)) << "as in the menu";
              EXPECT_EQ("ARp", EnabledOf(sheet));
              const HWND page = PageOf(sheet);
              EXPECT_EQ("R&&D.exe", TextOf(page, ZO_IDC_TOOL_MENU_TEXT));
              EXPECT_EQ(Path(), TextOf(page, ZO_IDC_TOOL_FOLDER));
              Type(page, ZO_IDC_TOOL_MENU_TEXT, "&Report");
              EXPECT_EQ("*Report|", ToolsOf(sheet)) << "while it is typed";
              Press(page, ZO_IDC_TOOL_BROWSE_PROGRAM); // given up
              Press(page, ZO_IDC_TOOL_BROWSE_FOLDER);  // likewise
              EXPECT_EQ(other, TextOf(page, ZO_IDC_TOOL_PROGRAM));
              EXPECT_EQ(Path(), TextOf(page, ZO_IDC_TOOL_FOLDER));
              Press(page, ZO_IDC_TOOL_BROWSE_PROGRAM);
              Press(page, ZO_IDC_TOOL_BROWSE_FOLDER);
              Press(sheet, kAdd); // takes over what the page shows
              EXPECT_EQ("Report|*ZoStartReport.exe|", ToolsOf(sheet));
              EXPECT_EQ("ARUp", EnabledOf(sheet));
              Press(sheet, IDOK);
          },
          kGiveUp, ChooseFile(other), kGiveUp,
          [&](HWND dialog) {
              EXPECT_EQ(Path(), TextOf(dialog, ZO_IDC_FOLDER_PATH)) << "begins with what the field holds";
              Press(dialog, IDCANCEL);
          },
          ChooseFile(tool),
          [](HWND dialog) {
              Type(dialog, ZO_IDC_FOLDER_PATH, "C:\\");
              Press(dialog, IDOK);
          },
          ChooseFile(tool)});
    EXPECT_EQ(HeaderBytes() + RecordBytes("&Report", 4, kDescription, tool, "C:\\") +
                  RecordBytes("ZoStartReport.exe", 4, kDescription, tool, ReportFolder()),
              Read());
}

TEST_F(ToolSheet, EditsWhatThePagesShow)
{
    Write({"first", "second"});
    const DialogDriver::Act tooLong = AnswerBox("The text can have at most 31 characters.", IDOK);
    const std::string range =
        "The number must lie between 1 and " + std::to_string(GetSystemMetrics(SM_CXSCREEN)) + ".";
    Edit({[&](HWND sheet) {
              HWND page = PageOf(sheet);
              const std::tuple<int, size_t, char> limits[] = {{ZO_IDC_TOOL_MENU_TEXT, 31, 'm'},
                                                              {ZO_IDC_TOOL_DESCRIPTION, 127, 'd'},
                                                              {ZO_IDC_TOOL_PROGRAM, 263, 'p'},
                                                              {ZO_IDC_TOOL_FOLDER, 263, 'f'},
                                                              {ZO_IDC_TOOL_ARGUMENTS, 263, 'a'}};
              for (const auto& [field, most, letter] : limits) {
                  Type(page, field, std::string(most + 1, letter));
                  EXPECT_EQ(std::string(most, letter), TextOf(page, field));
              }
              SetDlgItemTextA(page, ZO_IDC_TOOL_MENU_TEXT, std::string(32, 'm').c_str()); // one too many
              EXPECT_FALSE(ShowPage(sheet, kWindow));
              EXPECT_EQ(ZO_IDC_TOOL_MENU_TEXT, FocusOf(page));
              EXPECT_EQ(std::string(32, 'm'), TextOf(page, ZO_IDC_TOOL_MENU_TEXT));
              Choose(sheet, kList, 1); // refused too
              EXPECT_EQ("*" + std::string(32, 'm') + "|second|", ToolsOf(sheet));
              Press(sheet, kAdd); // and this
              Press(sheet, IDOK); // and this
              Type(page, ZO_IDC_TOOL_MENU_TEXT, std::string(31, 'm'));
              EXPECT_EQ("Ar&guments:", TextOf(page, ZO_IDC_TOOL_ARGUMENTS_LABEL));
              Press(page, ZO_IDC_TOOL_ASK);
              EXPECT_EQ("Default ar&guments:", TextOf(page, ZO_IDC_TOOL_ARGUMENTS_LABEL));
              Press(page, ZO_IDC_TOOL_IN_MENU);
              Press(page, ZO_IDC_TOOL_MINIMIZED);

              EXPECT_TRUE(ShowPage(sheet, kWindow));
              page = PageOf(sheet);
              EXPECT_FALSE(IsEnabled(page, ZO_IDC_TOOL_LEFT));
              Press(page, ZO_IDC_TOOL_USE_POSITION);
              Type(page, ZO_IDC_TOOL_LEFT, "0");
              EXPECT_FALSE(ShowPage(sheet, kConsole));
              EXPECT_EQ(ZO_IDC_TOOL_LEFT, FocusOf(page));
              Type(page, ZO_IDC_TOOL_LEFT, std::to_string(GetSystemMetrics(SM_CXSCREEN)));
              ClickAt(GetDlgItem(page, ZO_IDC_TOOL_TOP_SPIN), 2, 2); // up
              EXPECT_EQ("17", TextOf(page, ZO_IDC_TOOL_TOP));
              Press(page, ZO_IDC_TOOL_USE_SIZE);
              Type(page, ZO_IDC_TOOL_WIDTH, "640");
              Type(page, ZO_IDC_TOOL_HEIGHT, "1");
              Press(page, ZO_IDC_TOOL_USE_SIZE); // what was entered is kept all the same
              Press(page, ZO_IDC_TOOL_USE_SHOW);
              Press(page, ZO_IDC_TOOL_BUSY);

              EXPECT_TRUE(ShowPage(sheet, kConsole));
              page = PageOf(sheet);
              Press(page, ZO_IDC_TOOL_USE_CONSOLE_SIZE);
              Type(page, ZO_IDC_TOOL_COLUMNS, "1024");
              Type(page, ZO_IDC_TOOL_ROWS, "1025");
              EXPECT_FALSE(ShowPage(sheet, kOptions));
              Type(page, ZO_IDC_TOOL_ROWS, "1");
              Press(page, ZO_IDC_TOOL_FULL_SCREEN);
              EXPECT_FALSE(ShowPage(sheet, kOptions)) << "asked, and answered with No";
              EXPECT_EQ(ZO_IDC_TOOL_FULL_SCREEN, FocusOf(page));
              EXPECT_TRUE(ShowPage(sheet, kOptions)) << "with Yes";

              page = PageOf(sheet);
              EXPECT_TRUE(IsChecked(page, ZO_IDC_TOOL_PRIORITY));
              Press(page, ZO_IDC_TOOL_PRIORITY_IDLE);
              for (const int check :
                   {ZO_IDC_TOOL_NEW_CONSOLE, ZO_IDC_TOOL_DETACHED, ZO_IDC_TOOL_NEW_GROUP, ZO_IDC_TOOL_SEPARATE})
                  Press(page, check);
              Choose(sheet, kList, 1);
              EXPECT_EQ(std::string(31, 'm') + "|*second|", ToolsOf(sheet));
              EXPECT_TRUE(IsChecked(page, ZO_IDC_TOOL_PRIORITY)) << "the other item's";
              EXPECT_FALSE(IsChecked(page, ZO_IDC_TOOL_NEW_CONSOLE));
              Choose(sheet, kList, 0);
              EXPECT_TRUE(IsChecked(page, ZO_IDC_TOOL_PRIORITY_IDLE));
              Press(sheet, IDOK);
          },
          tooLong, tooLong, tooLong, tooLong, AnswerBox(range, IDOK),
          AnswerBox("The number must lie between 1 and 1024.", IDOK), Pressing(IDNO), Pressing(IDYES)});
    std::string record = RecordBytes(std::string(31, 'm'), 3, std::string(127, 'd'), std::string(263, 'p'),
                                     std::string(263, 'f'), std::string(263, 'a'));
    const int startup = STARTF_USEPOSITION | STARTF_USECOUNTCHARS | STARTF_RUNFULLSCREEN | STARTF_FORCEONFEEDBACK;
    size_t at = 16;
    for (const int number : {0x04000A58, startup, GetSystemMetrics(SM_CXSCREEN), 17, 640, 1, 1024, 1})
        PutNumber(record, std::exchange(at, at + 4), number);
    EXPECT_EQ(HeaderBytes("mine") + record + RecordBytes("second", 4, kDescription), Read());
}

TEST_F(ToolSheet, MovesAndRemoves)
{
    Write({"a", "b", "c"});
    const struct {
        int button;
        const char *tools, *enabled, *shown;
        int focus; // a button that is disabled gives it to its neighbour
    } rows[] = {
        {kDown, "b|*a|c|", "ARUDp", "a", kDown}, {kDown, "b|c|*a|", "ARUp", "a", kUp},
        {kUp, "b|*a|c|", "ARUDp", "a", kUp},     {kRemove, "b|*c|", "ARUp", "c", kRemove},
        {kRemove, "*b|", "ARp", "b", kRemove},   {kRemove, "", "A", "", kAdd},
    };
    CZoFrameWnd main;
    AfxGetThread()->m_pMainWnd = &main;
    const CString helpBefore = main.GetHelpFile();
    Edit({[&](HWND sheet) {
        EXPECT_EQ(0, main.GetHelpFile().Right(12).CompareNoCase("ZOFAXENU.HLP"));
        EXPECT_EQ("ARDp", EnabledOf(sheet));
        AccessKey(sheet, 't');
        ExpectTabOrder(sheet, {kList, kAdd, kRemove, kDown, IDOK});
        AccessKey(sheet, 'd');
        AccessKey(sheet, 'u');
        EXPECT_EQ("*a|b|c|", ToolsOf(sheet)) << "there and back";
        for (const auto& row : rows) {
            SetFocus(GetDlgItem(sheet, row.button));
            Press(sheet, row.button);
            EXPECT_EQ(row.tools, ToolsOf(sheet));
            EXPECT_EQ(row.enabled, EnabledOf(sheet));
            EXPECT_EQ(row.shown, TextOf(PageOf(sheet), ZO_IDC_TOOL_MENU_TEXT));
            EXPECT_EQ(row.focus, FocusOf(sheet));
        }
        for (int page = kWindow; page <= kOptions; ++page)
            EXPECT_TRUE(ShowPage(sheet, page)) << "an empty page does not insist";
        EXPECT_EQ("A", EnabledOf(sheet)) << "a page that was made later";
        Press(sheet, IDOK);
    }});
    EXPECT_EQ(HeaderBytes("mine"), Read());
    EXPECT_STREQ(helpBefore, main.GetHelpFile());
    AfxGetThread()->m_pMainWnd = nullptr;
}

TEST_F(ToolSheet, HoldsThirtyOneItems)
{
    Write(std::vector<std::string>(32, "tool"));
    Edit({[](HWND sheet) {
              for (const char* enabled : {"RDp", "RDp", "ARDp"}) {
                  EXPECT_EQ(enabled, EnabledOf(sheet));
                  Press(sheet, kRemove);
              }
              Press(sheet, kAdd);
              SetFocus(GetDlgItem(sheet, kAdd));
              Press(sheet, kAdd);
              EXPECT_EQ("RUp", EnabledOf(sheet));
              EXPECT_EQ(kRemove, FocusOf(sheet));
              Press(sheet, IDOK);
          },
          ChooseFile(ReportTool()), ChooseFile(ReportTool())});
    EXPECT_EQ(144u + 31 * 1536, Read().size());
}

TEST_F(ToolSheet, ForgetsWhatIsGivenUp)
{
    Write({"a", "b"});
    CTlmSheet sheet("Tools", nullptr);
    EXPECT_EQ(4u, sheet.SaveFileData()) << "without a file";
    sheet.SetFilePath(m_file.c_str());
    for (const int button : {IDCANCEL, IDOK}) {
        const DialogDriver driver{[&](HWND window) {
            EXPECT_EQ("*a|b|", ToolsOf(window));
            Type(PageOf(window), ZO_IDC_TOOL_MENU_TEXT, "changed");
            Press(window, kRemove);
            Press(window, button);
        }};
        EXPECT_EQ(button, sheet.DoModal());
    }
    const DialogDriver driver{[](HWND window) {
        EXPECT_EQ("*b|", ToolsOf(window)) << "which OK keeps";
        Press(window, IDOK);
    }};
    EXPECT_EQ(IDOK, sheet.DoModal());
}

TEST_F(ToolSheet, KeepsWhatTheFileHeld)
{
    FaultSource disk("disk"), folder("folder");
    ZO_FAULTY_CALL(WriteFile) write(disk, kFramework, FALSE, ERROR_DISK_FULL);
    ZO_FAULTY_CALL(WriteFile) writeCopy(disk, kLibrary, FALSE, ERROR_DISK_FULL);
    ZO_FAULTY_CALL(DeleteFileA) erase(folder, kLibrary, FALSE, ERROR_ACCESS_DENIED);
    const auto remove = [](HWND sheet) { Press(sheet, kRemove), Press(sheet, IDOK); };
    const auto add = [](HWND sheet) { Press(sheet, kAdd), Press(sheet, IDOK); };
    const auto notSaved = [&](const std::string& state, int answer = IDNO) {
        return AnswerBox("The tools could not be saved in " + m_file + ".\n\n" + state +
                             "\n\nDo you want to go back to editing them? With No, your changes are lost.",
                         answer);
    };
    const auto failed = notSaved("The file is as it was before.");
    const auto goBack = notSaved("The file is as it was before.", IDYES);
    const auto told =
        AnswerBox("Not all tools in " + m_file +
                      " could be read. With OK, the tools shown here take the place of the file's content.",
                  IDOK);
    const std::string offerText = "The last time " + m_file +
                                  " was saved, the program ended before it was done. Put back what the file held "
                                  "before that? With No, it stays as it is.";
    const std::string copyName = Family() == WindowsFamily::kWin32s ? "test.tl~" : "test.tlm.zo~";
    const auto again = [](HWND sheet) {
        EXPECT_EQ("*b|", ToolsOf(sheet)) << "as it was edited";
        Press(sheet, IDOK);
    };
    const auto offer = AnswerBox(offerText, IDYES), unwanted = AnswerBox(offerText, IDNO);
    const auto lost = notSaved("The file is damaged, and what it held before is lost.");
    const auto notPutBack =
        AnswerBox("What the file held before could not be put back. It is still kept in " + Path(copyName) + ".", IDOK);
    Write({"b"});
    const std::string one = Read(), cut, none = "(none)", others = "somebody else's";
    Write({"a", "b"});
    const std::string whole = Read();
    disk.Arm(3, true); // behind header and bytes of the copy; the file cannot be put back either
    Edit({remove, notSaved("The file is damaged. What it held before is kept in " + Path(copyName) +
                           "; it is offered when the file is next opened here.")});
    disk.Disarm();
    EXPECT_EQ(cut, Read());
    const std::string copy = m_folder.Read(copyName);
    std::string changed = copy, of = copy;
    changed.back() ^= 1;
    of[16] = 'x'; // the name of the file that it is a copy of
    const struct {
        int call; // that fails to write, and whether all after it do
        bool persistent;
        std::string file, copy;
        std::vector<DialogDriver::Act> acts;
        std::string fileAfter, copyAfter;
    } rows[] = {
        {1, true, whole, none, {remove, failed}, whole, none},
        {2, true, whole, none, {remove, failed}, whole, none},
        {3, false, whole, none, {remove, goBack, again}, one, none},                  // the header of the file
        {4, false, whole, none, {remove, goBack, again}, one, none},                  // its item
        {0, false, whole, copy.substr(0, copy.size() - 1), {kTakeOver}, whole, none}, // ended while it was copied
        {0, false, others, none, {told, kGiveUp}, others, none},
        {0, false, whole + "more", none, {told, kGiveUp}, whole + "more", none}, // which loading passes over
        {0, false, cut, copy, {unwanted, told, kGiveUp}, cut, copy},
        {0, false, cut, changed, {told, kGiveUp}, cut, changed},
        {0, false, cut, copy.substr(0, copy.size() - 1), {told, kGiveUp}, cut, copy.substr(0, copy.size() - 1)},
        {0, false, cut, copy + "x", {told, kGiveUp}, cut, copy + "x"},
        {0, false, cut, of, {told, kGiveUp}, cut, of},
        {1, true, cut, copy, {offer, notPutBack, told, kGiveUp}, cut, copy},
        {0, false, cut, copy, {offer, kGiveUp}, whole, none},
        {0, false, whole, copy, {kGiveUp}, whole, none}, // like the file
        {0, false, whole + "more", copy, {offer, kGiveUp}, whole, none},
        {1, false, one, copy, {unwanted, kTakeOver, failed}, one, copy},
        {0, false, one, copy, {unwanted, kTakeOver}, one, none}, // older than what is saved
        // What has the copy's name is not touched, and the save is undone without it.
        {0, false, whole, others, {remove}, one, others},
        {1, false, whole, others, {remove, failed}, whole, others},
        {1, true, whole, others, {remove, lost}, cut, others},
        {1, true, none, none, {kTakeOver, failed}, none, none},
        {2, false, none, none, {add, ChooseFile(ReportTool()), failed}, none, none}, // behind the header
    };
    const auto put = [&](const std::string& name, const std::string& bytes) {
        DeleteFileA(Path(name).c_str());
        if (bytes != none)
            m_folder.Write(name, bytes);
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        put("test.tlm", row.file);
        put(copyName, row.copy);
        disk.Arm(row.call, row.persistent);
        Edit(row.acts);
        disk.Disarm();
        EXPECT_TRUE(row.fileAfter == Read());
        EXPECT_TRUE(row.copyAfter == m_folder.Read(copyName));
    }
    put("test.tlm", whole);
    folder.Arm(1, true);
    Edit({kTakeOver});
    folder.Disarm();
    EXPECT_EQ("", m_folder.Read(copyName)) << "no copy any more";
    CFile saving(Path(copyName).c_str(), CFile::modeReadWrite | CFile::shareExclusive); // another program
    Edit({remove, failed});
    EXPECT_TRUE(whole == Read());
    saving.Close();
    put(copyName, none);

    // What cannot be read, or is longer than any file of tools, cannot be kept and so is not saved.
    FaultSource files("files");
    ZO_FAULTY_CALL(CreateFileA) open(files, kLibrary, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
    put("test.tlm", whole);
    Edit({[&](HWND sheet) { files.Arm(1, false), remove(sheet); }, failed});
    {
        const CFile held(m_file.c_str(), CFile::modeRead | CFile::shareDenyWrite);
        Edit({remove, failed});
    }
    EXPECT_TRUE(whole == Read());
    constexpr ULONGLONG kMost = 16 * 1024 * 1024;
    for (const ULONGLONG length : {kMost + 1, kMost}) {
        put("test.tlm", whole);
        const auto grown = [&](HWND sheet) {
            CFile(Path("test.tlm").c_str(), CFile::modeReadWrite | CFile::shareDenyNone).SetLength(length);
            remove(sheet);
        };
        Edit({grown, length > kMost ? failed : nullptr});
        EXPECT_EQ(length > kMost ? length : one.size(), Read().size());
    }
    put(copyName, copy);
    const CFile reading(Path(copyName).c_str(),
                        CFile::modeRead | CFile::shareDenyNone); // another program: who knows why
    Edit({remove, [&](HWND box) {
              EXPECT_EQ("Edit Tools", TextOf(box));
              failed(box);
          }});
    const ImportPatch noMemory( // for the question: it is Yes then
        kLibrary, "LoadStringA", +[](HINSTANCE module, UINT id, LPSTR text, int size) WINAPI -> int {
            if (id == ZO_IDS_TOOL_SAVE_FAILED)
                AfxThrowMemoryException();
            return LoadStringA(module, id, text, size);
        });
    Edit({remove, kGiveUp});
}

TEST_F(ToolSheet, SurvivesMissingMemory)
{
    Write({"a", "b"});
    const auto person = [](HWND window) {
        if (GetDlgItem(window, kDown) != nullptr) {
            Command(window, kDown);
            ShowPage(window, kConsole);
        }
        Command(window, IDOK);
    };
    const auto show = [&](const FaultRun& run) {
        EditToolItemFile(m_file.c_str(), nullptr);
        run.Stop();
        // Both items, in one order or the other; or none, of a file whose items found no memory.
        const size_t size = Read().size(), whole = 144 + 2 * 1536;
        EXPECT_TRUE(size == whole || (run.Fired() && size < whole));
        Write({"a", "b"});
    };
    RunDialogFaults(person, show, {.memory = 23, .system = 0});
}

TEST_F(ToolSheet, LetsAFileBeChosen)
{
    char path[MAX_PATH] = "";
    EXPECT_EQ(2, ZoTlmSelectFile(nullptr, TRUE, nullptr, 0));
    Write({"a"});
    m_folder.Write("other.tlm", "something else");
    {
        const DialogDriver driver{[&](HWND dialog) {
                                      EXPECT_EQ("Open Tools File", TextOf(dialog));
                                      ChooseFile(Path("other.tlm"))(dialog);
                                      EXPECT_EQ(Path("other.tlm"), TextOf(dialog, ZO_IDC_FILE_NAME));
                                      ChooseFile(Path("test"))(dialog);
                                  },
                                  AnswerBox("The file is not a tools file.", IDOK)};
        EXPECT_EQ(1, ZoTlmSelectFile(path, TRUE, nullptr, 0));
        EXPECT_EQ(m_file, path);
    }
    const DialogDriver driver{kGiveUp, [&](HWND dialog) {
                                  EXPECT_EQ("Save Tools File", TextOf(dialog));
                                  ChooseFile(Path("new"))(dialog);
                              }};
    EXPECT_EQ(2, ZoTlmSelectFile(path, TRUE, nullptr, 0));
    EXPECT_EQ(m_file, path) << "as before";
    EXPECT_EQ(1, ZoTlmSelectFile(path, FALSE, nullptr, 0));
    EXPECT_EQ(Path("new.tlm"), path);
}
