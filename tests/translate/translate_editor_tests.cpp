// The chooser and the editor of translation tables, driven by keys and clicks.
#include "dialogs/dialog_faults.h"
#include "support/test.h"
#include "translate_fixture.h"

#include <zogbl/resource_ids.h>
#include <zogbl/translate_editor.h>

namespace {

constexpr int kChoices = ZO_IDC_TRANSLATE_CHOICES;
constexpr char kNotSaved[] =
    "The translation table could not be saved. Check the disk and the file, or use another name."
    "\n\nThe file is as it was before.";

/// What a combo box shows. On Win32s the box itself does not tell.
std::string EntryOf(HWND dialog, int box) { return RowText(dialog, box, ChosenRow(dialog, box)); }

/// Types a file's name into a file dialog.
DialogDriver::Act Name(const std::string& typed)
{
    return [=](HWND dialog) {
        Type(dialog, ZO_IDC_FILE_NAME, typed);
        Key(dialog, VK_RETURN);
    };
}

struct Page {
    int index, list, value, dbcs, enable;
};
constexpr Page kPages[] = {
    {0, ZO_IDC_TRANSLATE_INPUT_LIST, ZO_IDC_TRANSLATE_INPUT_VALUE, ZO_IDC_TRANSLATE_INPUT_DBCS,
     ZO_IDC_TRANSLATE_INPUT_ENABLE},
    {1, ZO_IDC_TRANSLATE_OUTPUT_LIST, ZO_IDC_TRANSLATE_OUTPUT_VALUE, ZO_IDC_TRANSLATE_OUTPUT_DBCS,
     ZO_IDC_TRANSLATE_OUTPUT_ENABLE},
};
constexpr const Page& kInput = kPages[0];

} // namespace

class TranslateEditor : public TranslateTest {
protected:
    void SetUp() override
    {
        TranslateTest::SetUp();
        m_start.flags = 1;
        m_start.last[0] = 65;
        m_folder.Write("table.iot", m_start.Bytes());
        EXPECT_EQ(ZO_TRANSLATE_SUCCESS, m_table.Load(m_file.c_str()));
    }
    std::string FileNow() const { return m_folder.Read("table.iot"); }

    TranslationFile m_start;
    CGblTranslate m_table;
};

// The chooser ---------------------------------------------------------------------------------------------------------

class TranslateChooser : public TranslateTest {
protected:
    /// What the chooser lists for a path.
    std::string Listed(const std::string& path)
    {
        std::string rows;
        CGblTranslate table;
        const std::string image = ImageOf(table);
        const DialogDriver driver{[&](HWND window) {
            rows = RowsOf(window, kChoices);
            EXPECT_EQ(rows.empty() ? IDCANCEL : kChoices, FocusOf(window));
            EXPECT_EQ(rows.empty() ? -1 : 0, ChosenRow(window, kChoices));
            EXPECT_EQ(!rows.empty(), IsEnabled(window, IDOK));
            EXPECT_EQ(!rows.empty(), IsEnabled(window, kChoices));
            const std::string why = TextOf(window, ZO_IDC_TRANSLATE_WHY);
            EXPECT_EQ(rows.empty(), why.find("There is no translation table in " + Path().substr(0, 3)) == 0) << why;
            Press(window, IDCANCEL);
        }};
        EXPECT_EQ(ZO_TRANSLATE_SUCCESS, table.Load(nullptr, path.c_str()));
        EXPECT_EQ(image, ImageOf(table)) << "cancelled";
        return rows;
    }
    void WriteTable(const std::string& name, const std::string& description)
    {
        TranslationFile file;
        file.description = description;
        m_folder.Write(name, file.Bytes());
    }
};

TEST_F(TranslateChooser, ListsWhatIsInTheFolder)
{
    const std::string all = "Alpha|Beta|New translation table|";
    EXPECT_EQ("", Listed(Path("x.iot")));
    WriteTable("2.iot", "Beta");
    WriteTable("1.any", "Alpha");
    WriteTable("3", "");
    m_folder.Write("bad.iot", TranslationFile().Bytes() + "!");
    CreateDirectoryA(Path("sub.iot").c_str(), nullptr);
    const CurrentFolder current(Path());
    const std::pair<std::string, bool> rows[] = {
        {Path("x.iot"), true},
        {Path("long name.with.dots"), true},
        {Path("\x95\x5C.iot"), true}, // on a Japanese system one character
        {Path("nowhere\\x.iot"), false},
        {"", true},
        {"x.iot", true},
        {Path().substr(0, 2) + "x.iot", true},
        {"sub.iot\\x.iot", false}, // a name begins with the folder's then
    };
    for (const auto& [path, isFolder] : rows)
        EXPECT_EQ(isFolder ? all : "", Listed(path)) << path;
}

TEST_F(TranslateChooser, LoadsTheTableChosen)
{
    WriteTable("1.iot", "Alpha");
    WriteTable("2.iot", "ALPHA");
    WriteTable("3.iot", "Beta");
    EXPECT_EQ("Alpha (1.iot)|ALPHA (2.iot)|Beta|", Listed(Path("any.iot"))) << "of one description";
    const struct {
        DialogDriver::Act act;
        const char* chosen;
    } rows[] = {
        {Pressing(IDOK), "1.iot"},
        {[](HWND window) { Key(window, VK_DOWN), Key(window, VK_RETURN); }, "2.iot"},
        {[](HWND window) { DoubleClick(window, kChoices, 2); }, "3.iot"},
    };
    for (const auto& row : rows) {
        CGblTranslate table;
        const DialogDriver driver{row.act};
        EXPECT_EQ(ZO_TRANSLATE_SUCCESS, table.Load(nullptr, Path("any.iot").c_str()));
        CString path;
        table.GetFilePath(path);
        EXPECT_EQ(Path(row.chosen), std::string(path));
    }
    // The file goes, or is damaged, while the list is open.
    CGblTranslate table;
    const DialogDriver driver{[&](HWND window) {
        m_folder.Write("1.iot", "damaged");
        Press(window, IDOK);
    }};
    EXPECT_EQ(ZO_TRANSLATE_WRONG_LENGTH, table.Load(nullptr, Path("any.iot").c_str()));
}

// The editor ----------------------------------------------------------------------------------------------------------

TEST_F(TranslateEditor, EditsBothTables)
{
    TranslationFile expected = m_start;
    for (const Page& entries : kPages) {
        std::string& table = entries.index == 0 ? expected.get : expected.put;
        const DialogDriver driver{[&](HWND sheet) {
            EXPECT_EQ("Translation Table", TextOf(sheet));
            const HWND page = ShowPage(sheet, entries.index);
            const auto text = [&](int row) { return RowText(page, entries.list, row); };
            char start[20];
            const int first = entries.index == 0 ? 65 : 0; // the last character
            sprintf(start, "0x%02X 0x%02X", first, static_cast<BYTE>(table[first]));
            EXPECT_EQ(first, ChosenRow(page, entries.list));
            EXPECT_EQ(start, text(first));
            EXPECT_EQ(256, SendDlgItemMessageA(page, entries.list, LB_GETCOUNT, 0, 0));
            EXPECT_EQ(std::string(start).substr(5), EntryOf(page, entries.value));
            EXPECT_EQ(entries.index == 0, IsChecked(page, entries.enable));
            EXPECT_FALSE(IsEnabled(sheet, ID_APPLY_NOW));

            Choose(page, entries.list, 200);
            EXPECT_TRUE(IsEnabled(sheet, ID_APPLY_NOW)) << "the last character is part of the file";
            Choose(page, entries.value, 7);
            EXPECT_EQ("0xC8 0x07", text(200));
            EXPECT_EQ(200, ChosenRow(page, entries.list));
            Press(page, ZO_IDC_TRANSLATE_DECIMAL);
            EXPECT_EQ("200 7", text(200));
            EXPECT_EQ("7", EntryOf(page, entries.value));
            Press(page, ZO_IDC_TRANSLATE_DECIMAL); // again: changes nothing
            Press(page, ZO_IDC_TRANSLATE_MODE);
            EXPECT_EQ("0x07", EntryOf(page, entries.value));
            Press(page, entries.enable);
            Press(page, entries.dbcs);
            Press(page, ZO_IDC_TRANSLATE_RESET);
            EXPECT_EQ("0xC8 0xC8", text(200));
            EXPECT_EQ("0xC8", EntryOf(page, entries.value));
            SetFocus(GetDlgItem(page, entries.list));
            Key(sheet, VK_DOWN);
            EXPECT_EQ("0xC9", EntryOf(page, entries.value));
            AccessKey(sheet, 't');
            EXPECT_EQ(entries.value, FocusOf(page));
            Key(sheet, VK_DOWN);
            EXPECT_EQ("0xC9 0xCA", text(201));
            AccessKey(sheet, 'd');
            EXPECT_EQ("201 202", text(201));
            Key(sheet, VK_RETURN);
        }};
        EXPECT_EQ(ZO_TRANSLATE_SUCCESS, m_table.Edit(nullptr));
        table = TranslationFile::Identity();
        table[201] = static_cast<char>(202);
        expected.flags = entries.index == 0 ? 0b0100 : 0b1110;
        expected.last[entries.index] = 201;
        expected.last[2 + entries.index] = 1;
        EXPECT_EQ(expected.Bytes(), FileNow());
    }
}

TEST_F(TranslateEditor, AppliesAndGoesOn)
{
    FaultSource disk("disk");
    ZO_FAULTY_CALL(WriteFile) write(disk, "ZOAFX.DLL", FALSE, ERROR_DISK_FULL);
    TranslationFile applied = m_start;
    applied.get[3] = 4;
    applied.last[0] = 3;
    applied.description = kNewDescription;
    const auto edit = [&](HWND sheet) {
        Choose(PageOf(sheet), kInput.list, 3);
        Choose(PageOf(sheet), kInput.value, 4);
        HWND page = ShowPage(sheet, 2);
        Type(page, ZO_IDC_TRANSLATE_DESCRIPTION, "");
        disk.Arm(1, true);
        AccessKey(sheet, 'a');
        disk.Disarm();
        EXPECT_EQ(applied.Bytes() + m_file, ImageOf(m_table)) << "taken over";
        EXPECT_EQ(m_start.Bytes(), FileNow());
        EXPECT_TRUE(IsEnabled(sheet, ID_APPLY_NOW)) << "to be tried again";
        AccessKey(sheet, 'a');
        EXPECT_EQ(applied.Bytes(), FileNow());
        EXPECT_EQ(applied.Bytes() + m_file, ImageOf(m_table));
        EXPECT_EQ(kNewDescription, TextOf(page, ZO_IDC_TRANSLATE_DESCRIPTION));
        EXPECT_FALSE(IsEnabled(sheet, ID_APPLY_NOW));
        EXPECT_EQ("Close", TextOf(sheet, IDOK));
        EXPECT_FALSE(IsEnabled(sheet, IDCANCEL)) << "what is done is not undone";
        page = ShowPage(sheet, 0);
        Choose(page, kInput.value, 5);
        EXPECT_TRUE(IsEnabled(sheet, ID_APPLY_NOW));
        SendMessageA(sheet, WM_SYSCOMMAND, SC_CLOSE, 0); // what came later is given up
    };
    const DialogDriver driver{edit, AnswerBox(kNotSaved, IDOK)};
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, m_table.Edit(nullptr));
    EXPECT_EQ(applied.Bytes() + m_file, ImageOf(m_table));
    EXPECT_EQ(applied.Bytes(), FileNow());
}

TEST_F(TranslateEditor, TellsTheCallerWhatItCannotSaveWithOk)
{
    FaultSource disk("disk");
    ZO_FAULTY_CALL(WriteFile) write(disk, "ZOAFX.DLL", FALSE, ERROR_DISK_FULL);
    TranslationFile expected;
    expected.get = expected.put = TranslationFile::Identity();
    expected.get[0] = 4;
    expected.description = kNewDescription;
    const std::pair<DWORD, std::string> rows[] = {
        {ZO_TRANSLATE_NOT_WRITTEN, m_file}, {ZO_TRANSLATE_NOT_OPENED, Path()}, {ZO_TRANSLATE_NO_NAME, ""}};
    for (const auto& [status, path] : rows) {
        CGblTranslate table;
        table.SetFilePath(path.c_str());
        const DialogDriver ok{[&](HWND sheet) {
            Choose(PageOf(sheet), kInput.value, 4);
            disk.Arm(1, true);
            Key(sheet, VK_RETURN);
        }};
        EXPECT_EQ(status, table.Edit(nullptr));
        disk.Disarm();
        EXPECT_EQ(m_start.Bytes(), FileNow());
        EXPECT_EQ(expected.Bytes() + path, ImageOf(table)) << "which the caller has still";
    }
}

TEST_F(TranslateEditor, OffersWhatASaveHasCut)
{
    FaultSource disk("disk");
    ZO_FAULTY_CALL(WriteFile) write(disk, "ZOAFX.DLL", FALSE, ERROR_DISK_FULL);
    ZO_FAULTY_CALL(WriteFile) writeCopy(disk, "ZOGBLBRX.DLL", FALSE, ERROR_DISK_FULL);
    const std::string copy = Family() == WindowsFamily::kWin32s ? "table.io~" : "table.iot.zo~";
    const std::string offer = "The last time " + m_file +
                              " was saved, the program ended before it was done. Put back what the file held before "
                              "that? With No, it stays as it is.";
    const DialogDriver::Act no = AnswerBox(offer, IDNO), yes = AnswerBox(offer, IDYES), giveUp = Pressing(IDCANCEL);
    const auto listed = [](const char* rows) -> DialogDriver::Act {
        return [=](HWND chooser) {
            EXPECT_EQ(rows, RowsOf(chooser, kChoices));
            Press(chooser, IDCANCEL);
        };
    };
    const auto load = [](HWND sheet) {
        Press(ShowPage(sheet, 2), ZO_IDC_TRANSLATE_LOAD);
        Press(sheet, IDCANCEL);
    };
    m_folder.Write("other.zo~", "somebody else's");
    CGblTranslate table, empty;
    table.SetFilePath(m_file.c_str());
    const auto edit = [&] { return table.Edit(nullptr); };
    const auto choose = [&] { return table.Load(nullptr, m_file.c_str()); };
    const auto editEmpty = [&] { return empty.Edit(nullptr); };
    const struct {
        int call; // that fails with all after it: two make the copy, three write the file, and one would put it back
        std::function<DWORD()> open;
        std::vector<DialogDriver::Act> refusing, accepting;
    } rows[] = {
        {3, edit, {no, giveUp}, {yes, giveUp}},
        {4, choose, {no, listed("")}, {yes, listed("By hand|")}},
        {5, editEmpty, {giveUp}, {load, Name(m_file), yes}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.call);
        {
            const DialogDriver driver{[&](HWND sheet) {
                Choose(PageOf(sheet), kInput.value, 4);
                disk.Arm(row.call, true);
                Press(sheet, IDOK);
            }};
            EXPECT_EQ(ZO_TRANSLATE_NOT_WRITTEN, m_table.Edit(nullptr));
            disk.Disarm();
        }
        for (const auto& acts : {row.refusing, row.accepting}) {
            EXPECT_NE(m_start.Bytes(), FileNow());
            EXPECT_TRUE(m_folder.Exists(copy));
            const DialogDriver driver(acts);
            EXPECT_EQ(ZO_TRANSLATE_SUCCESS, row.open());
        }
        EXPECT_EQ(m_start.Bytes(), FileNow());
        EXPECT_FALSE(m_folder.Exists(copy));
    }
    EXPECT_EQ(m_start.Bytes() + m_file, ImageOf(table)) << "loaded by the editor once it was put back";
}

TEST_F(TranslateEditor, LoadsAndSavesByItsFileDialog)
{
    TranslationFile other;
    other.flags = 2;
    const bool isWin32s = Family() == WindowsFamily::kWin32s;
    const std::string extension = isWin32s ? ".IOT" : ".iot", otherName = "other" + extension,
                      newName = "new" + extension;
    m_folder.Write(otherName, other.Bytes());
    m_folder.Write("bad.iot", "bad");
    FaultSource files("files"), windows("windows");
    ZO_FAULTY_CALL(ReadFile) read(files, "ZOAFX.DLL", FALSE, ERROR_CRC);
    ZO_FAULTY_CALL(WriteFile) write(files, "ZOAFX.DLL", FALSE, ERROR_DISK_FULL);
    ZO_FAULTY_CALL(CreateDialogIndirectParamA) create(windows, "ZOAFX.DLL", nullptr);
    const auto pressIn = [](FaultSource& faults, HWND page, int button) {
        faults.Arm(1, true);
        Press(page, button);
        faults.Disarm();
    };
    const std::string most(63, 'd');
    const std::string text = IsDoubleByte() ? std::string(31, 'd') + "\x93\xFA\x96\x7B" : most.substr(0, 35);
    const DialogDriver::Act tooLong = AnswerBox("The text can have at most 63 characters.", IDOK);
    const DialogDriver driver{
        [&](HWND sheet) {
            HWND page = ShowPage(sheet, 2);
            const auto file = [&] { return TextOf(page, ZO_IDC_TRANSLATE_FILE); };
            const auto description = [&] { return TextOf(page, ZO_IDC_TRANSLATE_DESCRIPTION); };
            Press(page, ZO_IDC_TRANSLATE_LOAD); // given up, after a file that is none
            pressIn(files, page, ZO_IDC_TRANSLATE_LOAD);
            pressIn(windows, page, ZO_IDC_TRANSLATE_LOAD);
            EXPECT_EQ(m_file, file());
            EXPECT_FALSE(IsEnabled(sheet, ID_APPLY_NOW));
            Type(page, ZO_IDC_TRANSLATE_DESCRIPTION, most + "e");
            EXPECT_EQ(most, description());
            SetDlgItemTextA(page, ZO_IDC_TRANSLATE_DESCRIPTION, (most + "e").c_str()); // pasted over
            Press(sheet, IDOK);
            EXPECT_EQ(ZO_IDC_TRANSLATE_DESCRIPTION, FocusOf(page));
            Press(page, ZO_IDC_TRANSLATE_SAVE_AS); // stops there too
            EXPECT_EQ(most + "e", description());
            Press(page, ZO_IDC_TRANSLATE_LOAD);
            EXPECT_EQ(Path(otherName), file());
            EXPECT_EQ("By hand", description());
            EXPECT_TRUE(IsEnabled(sheet, ID_APPLY_NOW));
            page = ShowPage(sheet, 0);
            EXPECT_EQ(0, ChosenRow(page, kInput.list)) << "the table just loaded";
            EXPECT_FALSE(IsChecked(page, kInput.enable));
            Choose(page, kInput.value, 9);
            page = ShowPage(sheet, 2);
            SetDlgItemTextA(page, ZO_IDC_TRANSLATE_DESCRIPTION, text.c_str());
            pressIn(files, page, ZO_IDC_TRANSLATE_SAVE_AS);
            EXPECT_EQ(Path(otherName), file()) << "the file that could be saved";
            EXPECT_EQ(text, description());
            EXPECT_FALSE(m_folder.Exists(newName));
            Press(page, ZO_IDC_TRANSLATE_SAVE_AS);
            EXPECT_EQ(Path(newName), file());
            Press(sheet, IDOK);
        },
        Name(Path("bad.iot")),
        [](HWND box) {
            EXPECT_EQ("This file is not a translation table. Choose another one.", BoxText(box));
            Press(box, IDOK);
            const HWND dialog = GetActiveWindow();
            EXPECT_EQ("Load Translation Table", TextOf(dialog));
            Key(dialog, VK_ESCAPE);
        },
        Name("other"),
        AnswerBox("The translation table could not be loaded.", IDOK),
        AnswerBox("The files cannot be shown. Close other programs, and try again.", IDOK),
        tooLong,
        tooLong,
        [&](HWND dialog) {
            EXPECT_EQ("Translation tables (*" + extension + ")", EntryOf(dialog, ZO_IDC_FILE_TYPES));
            Name("other")(dialog); // with the extension for tables
        },
        [&](HWND dialog) {
            EXPECT_EQ("Save Translation Table", TextOf(dialog));
            Name("new")(dialog);
        },
        AnswerBox(kNotSaved, IDOK),
        Name("new"),
    };
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, m_table.Edit(nullptr));
    other.get[0] = 9;
    other.description = text;
    EXPECT_EQ(other.Bytes(), m_folder.Read(newName));
    EXPECT_EQ(other.Bytes() + Path(newName), ImageOf(m_table));
    EXPECT_EQ(m_start.Bytes(), FileNow());
}

TEST_F(TranslateEditor, DrawsRowsAndWhatCannotBe)
{
    constexpr COLORREF kMark = RGB(224, 96, 0);
    m_table.SetInputValue(65, 65);
    m_table.SetLastInput(256);
    m_table.SetLastOutput(0xFFFFFFFF);
    m_table.SetLastModeI(2);
    const auto look = [&](HWND sheet) {
        EXPECT_EQ(0, ChosenRow(ShowPage(sheet, 1), kPages[1].list));
        const HWND page = ShowPage(sheet, 0);
        EXPECT_EQ(0, ChosenRow(page, kInput.list));
        EXPECT_TRUE(IsChecked(page, ZO_IDC_TRANSLATE_MODE));
        const int height = static_cast<int>(SendDlgItemMessageA(page, kInput.list, LB_GETITEMHEIGHT, 0, 0));
        EXPECT_TRUE(height >= 18 && height < 40) << height;
        const struct {
            int row;
            UINT state;
            bool isChanged;
        } rows[] = {{66, 0, true}, {65, 0, false}, {65, ODS_SELECTED, false}, {66, ODS_SELECTED | ODS_FOCUS, true}};
        for (const auto& row : rows) {
            SCOPED_TRACE(testing::Message() << row.row << ", state " << row.state);
            const bool isSelected = (row.state & ODS_SELECTED) != 0;
            const COLORREF face = GetSysColor(isSelected ? COLOR_HIGHLIGHT : COLOR_BTNFACE);
            const COLORREF ink = GetSysColor(isSelected ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT);
            const Canvas drawn(160, 30, RGB(1, 2, 3));
            drawn.DrawRow(GetDlgItem(page, kInput.list), row.row, ODA_DRAWENTIRE, row.state);
            EXPECT_GT(drawn.Count(ink, {2, 2, 80, 28}), 5) << "the character";
            EXPECT_GT(drawn.Count(ink, {90, 2, 158, 28}), 5) << "what it becomes";
            EXPECT_GT(drawn.Count(face, {2, 2, 158, 28}), 2000);
            EXPECT_EQ(row.isChanged ? 28 : 0, drawn.Count(kMark, {80, 2, 90, 28}));
            EXPECT_EQ(face, drawn.At(0, 0)) << "outside the frame of the focus";
            const bool hasFrame = drawn.At(1, 1) != face || drawn.At(2, 1) != face;
            EXPECT_EQ((row.state & ODS_FOCUS) != 0, hasFrame);
        }
        Press(sheet, IDOK);
    };
    const DialogDriver driver{look, look};
    CGblIotSheet sheet(&m_table, nullptr);
    EXPECT_EQ(IDOK, sheet.DoModal());
    ZO_EXPECT_NO_LEAK(sheet.DoModal());
    EXPECT_EQ(256u, m_table.GetLastInput()) << "nobody chose another";
    EXPECT_EQ(2u, m_table.GetLastModeI());
}

TEST_F(TranslateEditor, SurvivesFailures)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10 && !IsDoubleByte(), "the same everywhere, and slow");
    TranslationFile after = m_start;
    after.get = TranslationFile::Identity();
    const auto person = [&](HWND window) { // edits a table and loads a file
        if (GetDlgItem(window, ZO_IDC_FILE_NAME) != nullptr) {
            SetDlgItemTextA(window, ZO_IDC_FILE_NAME, m_file.c_str());
        } else if (GetDlgItem(window, ID_APPLY_NOW) != nullptr) {
            Command(ShowPage(window, 2), ZO_IDC_TRANSLATE_LOAD);
            Command(ShowPage(window, 0), ZO_IDC_TRANSLATE_RESET);
            Command(window, ID_APPLY_NOW);
        }
        Command(window, IDOK);
    };
    const auto edit = [&](const FaultRun& run) {
        CGblTranslate table;
        table.CopyData(&m_table);
        const DWORD status = table.Edit(nullptr);
        run.Stop();
        EXPECT_TRUE(run.Fired() || status == ZO_TRANSLATE_SUCCESS) << status;
        EXPECT_TRUE(status == ZO_TRANSLATE_SUCCESS || status == ZO_TRANSLATE_NO_MEMORY ||
                    status == ZO_TRANSLATE_NOT_OPENED || status == ZO_TRANSLATE_NOT_WRITTEN)
            << status;
        const std::string image = ImageOf(table);
        EXPECT_TRUE(image == after.Bytes() + m_file || (run.Fired() && image == m_start.Bytes() + m_file));
        m_folder.Write("table.iot", m_start.Bytes());
    };
    const auto choose = [&](const FaultRun& run) {
        CGblTranslate table;
        const DWORD status = table.Load(nullptr, m_file.c_str());
        run.Stop();
        EXPECT_TRUE(run.Fired() || (status == ZO_TRANSLATE_SUCCESS && ImageOf(table) == m_start.Bytes() + m_file));
    };
    RunDialogFaults(person, choose, {.files = 1});
    RunDialogFaults(person, edit, {.memory = 13, .system = 7, .controls = 127, .files = 1});
    ZoGblDumpLanguageDLL();
    EXPECT_EQ(ZO_TRANSLATE_NO_MEMORY, m_table.Edit(nullptr)) << "without a language library";
    EXPECT_EQ(ZO_TRANSLATE_NO_MEMORY, m_table.Load(nullptr, m_file.c_str()));
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
}
