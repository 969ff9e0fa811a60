// The chooser and the editor of translation tables, driven by keys and clicks.
#include "support/test.h"
#include "translate_fixture.h"

#include <zogbl/resource_ids.h>
#include <zogbl/translate_editor.h>

namespace {

constexpr int kApply = 0x3021; // the system's number of the button
constexpr char kNotSaved[] =
    "The translation table could not be saved. Check the disk and the file, or use another name."
    "\n\nThe file is as it was before.";

/// What a combo box shows. On Win32s the box itself does not tell.
std::string EntryOf(HWND dialog, int box) { return RowText(dialog, box, ChosenRow(dialog, box)); }

/// The controls that Tab comes to, from the one that has the focus on, and back to it.
std::vector<int> TabOrder(HWND dialog)
{
    std::vector<int> order = {FocusOf(dialog)};
    for (Key(dialog, VK_TAB); FocusOf(dialog) != order.front() && order.size() < 20; Key(dialog, VK_TAB))
        order.push_back(FocusOf(dialog));
    return order;
}

BOOL WINAPI FullDisk(HANDLE, LPCVOID, DWORD, LPDWORD, LPOVERLAPPED)
{
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

BOOL WINAPI Unreadable(HANDLE, LPVOID, DWORD, LPDWORD, LPOVERLAPPED)
{
    SetLastError(ERROR_CRC);
    return FALSE;
}
HWND WINAPI NoDialog(HINSTANCE, LPCDLGTEMPLATEA, HWND, DLGPROC, LPARAM) { return nullptr; }

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

// The chooser ----------------------------------------------------------------------------------------------------------

class TranslateChooser : public TranslateTest {
protected:
    /// What the chooser lists for a path.
    std::vector<std::string> Listed(const std::string& path)
    {
        std::vector<std::string> rows;
        CGblTranslate table;
        const std::string image = ImageOf(table);
        const DialogDriver driver{[&](HWND window) {
            const int count =
                static_cast<int>(SendDlgItemMessageA(window, ZO_IDC_TRANSLATE_CHOICES, LB_GETCOUNT, 0, 0));
            for (int row = 0; row < count; ++row)
                rows.push_back(RowText(window, ZO_IDC_TRANSLATE_CHOICES, row));
            EXPECT_EQ(rows.empty() ? IDCANCEL : ZO_IDC_TRANSLATE_CHOICES, FocusOf(window));
            EXPECT_EQ(rows.empty() ? -1 : 0, ChosenRow(window, ZO_IDC_TRANSLATE_CHOICES));
            EXPECT_EQ(!rows.empty(), IsEnabled(window, IDOK));
            EXPECT_EQ(!rows.empty(), IsEnabled(window, ZO_IDC_TRANSLATE_CHOICES));
            const std::string why = TextOf(window, ZO_IDC_TRANSLATE_WHY);
            EXPECT_EQ(rows.empty(), why.find("There is no translation table in " + m_folder.Path().substr(0, 3)) == 0)
                << why;
            while (FocusOf(window) != IDCANCEL)
                Key(window, VK_TAB);
            Key(window, VK_RETURN); // presses the button that has the focus
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
    const std::vector<std::string> none, all = {"Alpha", "Beta", "New translation table"};
    EXPECT_EQ(none, Listed(m_folder.Path("x.iot")));
    WriteTable("2.iot", "Beta");
    WriteTable("1.any", "Alpha");
    WriteTable("3", "");
    m_folder.Write("bad.iot", TranslationFile().Bytes() + "!");
    CreateDirectoryA(m_folder.Path("sub.iot").c_str(), nullptr);
    char current[MAX_PATH];
    GetCurrentDirectoryA(sizeof current, current);
    ASSERT_TRUE(SetCurrentDirectoryA(m_folder.Path().c_str()));
    const std::pair<std::string, bool> rows[] = {
        {m_folder.Path("x.iot"), true},
        {m_folder.Path("long name.with.dots"), true},
        {m_folder.Path("\x95\x5C.iot"), true}, // on a Japanese system one character
        {m_folder.Path("nowhere\\x.iot"), false},
        {"", true},
        {"x.iot", true},
        {m_folder.Path().substr(0, 2) + "x.iot", true},
        {"sub.iot\\x.iot", false}, // a name begins with the folder's then
    };
    for (const auto& [path, isFolder] : rows)
        EXPECT_EQ(isFolder ? all : none, Listed(path)) << path;
    SetCurrentDirectoryA(current);
}

TEST_F(TranslateChooser, TellsTablesOfOneDescriptionApart)
{
    WriteTable("1.iot", "Alpha");
    WriteTable("2.iot", "ALPHA");
    WriteTable("3.iot", "Beta");
    const DialogDriver driver{[](HWND window) {
        EXPECT_EQ("Beta", RowText(window, ZO_IDC_TRANSLATE_CHOICES, 2));
        EXPECT_EQ("ALPHA (2.iot)", RowText(window, ZO_IDC_TRANSLATE_CHOICES, 1));
        Choose(window, ZO_IDC_TRANSLATE_CHOICES, 1);
        Press(window, IDOK);
    }};
    CGblTranslate table;
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, table.Load(nullptr, m_folder.Path("any.iot").c_str()));
    CString path;
    table.GetFilePath(path);
    EXPECT_EQ(m_folder.Path("2.iot"), std::string(path));
}

TEST_F(TranslateChooser, LoadsTheTableChosen)
{
    WriteTable("1.iot", "Alpha");
    WriteTable("2.iot", "Beta");
    const std::string any = m_folder.Path("any.iot");
    const struct {
        DialogDriver::Act act;
        const char* chosen; // null: none
    } rows[] = {
        {[](HWND window) { Press(window, IDOK); }, "1.iot"},
        {[](HWND window) { Key(window, VK_DOWN), Key(window, VK_RETURN); }, "2.iot"},
        {[](HWND window) {
             Choose(window, ZO_IDC_TRANSLATE_CHOICES, 1);
             SendMessageA(window, WM_COMMAND, MAKEWPARAM(ZO_IDC_TRANSLATE_CHOICES, LBN_DBLCLK),
                          reinterpret_cast<LPARAM>(GetDlgItem(window, ZO_IDC_TRANSLATE_CHOICES)));
         },
         "2.iot"},
        {[](HWND window) { AccessKey(window, 't'), Key(window, VK_RETURN); }, "1.iot"},
        {[](HWND window) { Press(window, IDCANCEL); }, nullptr},
        {[](HWND window) { SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0); }, nullptr},
    };
    for (const auto& row : rows) {
        CGblTranslate table;
        const DialogDriver driver{row.act};
        EXPECT_EQ(ZO_TRANSLATE_SUCCESS, table.Load(nullptr, any.c_str()));
        CString path;
        table.GetFilePath(path);
        EXPECT_EQ(row.chosen != nullptr ? m_folder.Path(row.chosen) : "", std::string(path));
    }
    // The file goes, or is damaged, while the list is open.
    CGblTranslate table;
    const DialogDriver driver{[&](HWND window) {
        m_folder.Write("1.iot", "damaged");
        Press(window, IDOK);
    }};
    EXPECT_EQ(ZO_TRANSLATE_WRONG_LENGTH, table.Load(nullptr, any.c_str()));
}

// The editor -----------------------------------------------------------------------------------------------------------

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
            EXPECT_FALSE(IsEnabled(sheet, kApply));

            Choose(page, entries.list, 200);
            EXPECT_TRUE(IsEnabled(sheet, kApply)) << "the last character is part of the file";
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
        for (int code = 0; code < 256; ++code)
            table[code] = static_cast<char>(code);
        table[201] = static_cast<char>(202);
        expected.flags = entries.index == 0 ? 0b0100 : 0b1110;
        expected.last[entries.index] = 201;
        expected.last[2 + entries.index] = 1;
        EXPECT_EQ(expected.Bytes(), FileNow());
    }
}

TEST_F(TranslateEditor, LeavesEverythingWhenItIsGivenUp)
{
    const std::string image = ImageOf(m_table);
    const DialogDriver::Act ways[] = {
        [](HWND sheet) { Press(sheet, IDCANCEL); },
        [](HWND sheet) { Key(sheet, VK_ESCAPE); },
        [](HWND sheet) { SendMessageA(sheet, WM_SYSCOMMAND, SC_CLOSE, 0); },
    };
    for (const auto& way : ways) {
        const DialogDriver driver{[&](HWND sheet) {
            const HWND page = PageOf(sheet);
            Choose(page, kInput.list, 3);
            Choose(page, kInput.value, 4);
            Press(page, kInput.enable);
            Type(ShowPage(sheet, 2), ZO_IDC_TRANSLATE_DESCRIPTION, "typed");
            way(sheet);
        }};
        EXPECT_EQ(ZO_TRANSLATE_SUCCESS, m_table.Edit(nullptr));
        EXPECT_EQ(image, ImageOf(m_table));
        EXPECT_EQ(m_start.Bytes(), FileNow());
    }
}

TEST_F(TranslateEditor, AppliesAndGoesOn)
{
    TranslationFile applied = m_start;
    const DialogDriver driver{[&](HWND sheet) {
        Choose(PageOf(sheet), kInput.list, 3);
        Choose(PageOf(sheet), kInput.value, 4);
        HWND page = ShowPage(sheet, 2);
        Type(page, ZO_IDC_TRANSLATE_DESCRIPTION, "");
        AccessKey(sheet, 'a');
        applied.get[3] = 4;
        applied.last[0] = 3;
        applied.description = kNewDescription;
        EXPECT_EQ(applied.Bytes(), FileNow());
        EXPECT_EQ(applied.Bytes() + m_file, ImageOf(m_table));
        EXPECT_EQ(kNewDescription, TextOf(page, ZO_IDC_TRANSLATE_DESCRIPTION));
        EXPECT_FALSE(IsEnabled(sheet, kApply));
        EXPECT_EQ("Close", TextOf(sheet, IDOK));
        EXPECT_FALSE(IsEnabled(sheet, IDCANCEL)) << "what is done is not undone";
        page = ShowPage(sheet, 0);
        Choose(page, kInput.value, 5);
        EXPECT_TRUE(IsEnabled(sheet, kApply));
        SendMessageA(sheet, WM_SYSCOMMAND, SC_CLOSE, 0); // what came later is given up
    }};
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, m_table.Edit(nullptr));
    EXPECT_EQ(applied.Bytes() + m_file, ImageOf(m_table));
    EXPECT_EQ(applied.Bytes(), FileNow());
}

TEST_F(TranslateEditor, LosesNothingWhenItCannotSave)
{
    TranslationFile edited = m_start;
    edited.get[65] = 4;
    const auto edit = [](HWND sheet) { Choose(PageOf(sheet), kInput.value, 4); };
    {
        const DialogDriver driver{[&](HWND sheet) {
                                      edit(sheet);
                                      {
                                          const ImportPatch fullDisk("ZOAFX.DLL", "WriteFile", &FullDisk);
                                          Press(sheet, kApply);
                                          EXPECT_EQ(edited.Bytes() + m_file, ImageOf(m_table)) << "taken over";
                                          EXPECT_EQ(m_start.Bytes(), FileNow());
                                          EXPECT_TRUE(IsEnabled(sheet, kApply)) << "to be tried again";
                                          EXPECT_EQ("0x04", EntryOf(PageOf(sheet), kInput.value));
                                      }
                                      Press(sheet, kApply);
                                      EXPECT_EQ(edited.Bytes(), FileNow());
                                      EXPECT_FALSE(IsEnabled(sheet, kApply));
                                      Press(sheet, IDOK);
                                  },
                                  AnswerBox(kNotSaved, IDOK)};
        EXPECT_EQ(ZO_TRANSLATE_SUCCESS, m_table.Edit(nullptr));
    }

    // With OK it is the caller who learns of it, and who has the table still.
    const struct {
        DWORD status;
        bool fullDisk;
        std::string path;
    } rows[] = {{ZO_TRANSLATE_NOT_WRITTEN, true, m_file},
                {ZO_TRANSLATE_NOT_OPENED, false, m_folder.Path()},
                {ZO_TRANSLATE_NO_NAME, false, ""}};
    for (const auto& row : rows) {
        CGblTranslate table;
        table.SetFilePath(row.path.c_str());
        TranslationFile expected;
        for (int code = 0; code < 256; ++code)
            expected.get[code] = expected.put[code] = static_cast<char>(code);
        expected.get[0] = 4;
        expected.description = kNewDescription;
        std::unique_ptr<ImportPatch> fullDisk;
        const DialogDriver ok{[&](HWND sheet) {
            edit(sheet);
            if (row.fullDisk)
                fullDisk = std::make_unique<ImportPatch>("ZOAFX.DLL", "WriteFile", &FullDisk);
            Key(sheet, VK_RETURN);
        }};
        EXPECT_EQ(row.status, table.Edit(nullptr));
        EXPECT_EQ(edited.Bytes(), FileNow());
        EXPECT_EQ(expected.Bytes() + row.path, ImageOf(table));
    }
}

ZO_CHILD(EditsTableUntilKilled)
{
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    CGblTranslate table;
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, table.Load(child.Argument(0).c_str()));
    const StopAtWrite stop(child, "ZOAFX.DLL", std::stoi(child.Argument(1)));
    const DialogDriver driver{[](HWND sheet) {
        Choose(PageOf(sheet), kInput.value, 4);
        Press(sheet, IDOK);
    }};
    table.Edit(nullptr);
}

TEST_F(TranslateEditor, OffersWhatAKilledSaveHasCut)
{
    const std::string copy = Family() == WindowsFamily::kWin32s ? "table.io~" : "table.iot.zo~";
    const auto offer = [&](int answer) {
        return AnswerBox(
            "The last time " + m_file +
                " was saved, the program ended before it was done. Put back what the file held before that? "
                "With No, it stays as it is.",
            answer);
    };
    const auto giveUp = [](HWND window) { Press(window, IDCANCEL); };
    const auto listed = [](size_t count) {
        return [=](HWND chooser) {
            EXPECT_EQ(count, SendDlgItemMessageA(chooser, ZO_IDC_TRANSLATE_CHOICES, LB_GETCOUNT, 0, 0));
            Press(chooser, IDCANCEL);
        };
    };
    for (const char* call : {"1", "2", "3"}) {
        SCOPED_TRACE(call);
        ChildProcess child("EditsTableUntilKilled", {m_file, call});
        ASSERT_TRUE(child.WaitUntilReady());
        child.Kill();
        EXPECT_NE(kTranslationFileSize, FileNow().size());
        CGblTranslate table;
        table.SetFilePath(m_file.c_str());
        if (*call == '1') { // the editor
            const DialogDriver driver{offer(IDNO), giveUp, offer(IDYES), giveUp};
            EXPECT_EQ(ZO_TRANSLATE_SUCCESS, table.Edit(nullptr));
            EXPECT_EQ("", FileNow());
            EXPECT_EQ(ZO_TRANSLATE_SUCCESS, table.Edit(nullptr));
            EXPECT_EQ(m_start.Bytes() + m_file, ImageOf(table));
        } else if (*call == '2') { // the chooser
            m_folder.Write("other.zo~", "somebody else's");
            const DialogDriver driver{offer(IDNO), listed(0), offer(IDYES), listed(1)};
            EXPECT_EQ(ZO_TRANSLATE_SUCCESS, table.Load(nullptr, m_file.c_str()));
            EXPECT_EQ(ZO_TRANSLATE_SUCCESS, table.Load(nullptr, m_file.c_str()));
        } else { // the file dialog
            table.SetFilePath("");
            const DialogDriver driver{[&](HWND sheet) {
                                          Press(ShowPage(sheet, 2), ZO_IDC_TRANSLATE_LOAD);
                                          Press(sheet, IDCANCEL);
                                      },
                                      [&](HWND dialog) {
                                          Type(dialog, ZO_IDC_FILE_NAME, m_file);
                                          Press(dialog, IDOK);
                                      },
                                      offer(IDYES)};
            EXPECT_EQ(ZO_TRANSLATE_SUCCESS, table.Edit(nullptr));
        }
        EXPECT_EQ(m_start.Bytes(), FileNow());
        EXPECT_FALSE(m_folder.Exists(copy));
    }
}

TEST_F(TranslateEditor, LoadsAndSavesByItsFileDialog)
{
    TranslationFile other;
    other.description = "Another";
    other.flags = 2;
    const std::string extension = Family() == WindowsFamily::kWin32s ? ".IOT" : ".iot";
    m_folder.Write("other" + extension, other.Bytes());
    m_folder.Write("bad.iot", "bad");
    const std::string otherFile = m_folder.Path("other" + extension), newFile = m_folder.Path("new" + extension);
    const auto name = [](const std::string& typed) {
        return [=](HWND dialog) {
            Type(dialog, ZO_IDC_FILE_NAME, typed);
            Key(dialog, VK_RETURN);
        };
    };
    const DialogDriver driver{
        [&](HWND sheet) {
            HWND page = ShowPage(sheet, 2);
            EXPECT_EQ(m_file, TextOf(page, ZO_IDC_TRANSLATE_FILE));
            EXPECT_EQ("By hand", TextOf(page, ZO_IDC_TRANSLATE_DESCRIPTION));
            Press(page, ZO_IDC_TRANSLATE_LOAD); // given up, after a file that is none
            EXPECT_EQ(m_file, TextOf(page, ZO_IDC_TRANSLATE_FILE));
            {
                const ImportPatch unreadable("ZOAFX.DLL", "ReadFile", &Unreadable);
                Press(page, ZO_IDC_TRANSLATE_LOAD);
            }
            {
                const ImportPatch noDialog("ZOAFX.DLL", "CreateDialogIndirectParamA", &NoDialog);
                Press(page, ZO_IDC_TRANSLATE_LOAD);
            }
            EXPECT_EQ(m_file, TextOf(page, ZO_IDC_TRANSLATE_FILE));
            EXPECT_FALSE(IsEnabled(sheet, kApply));
            Press(page, ZO_IDC_TRANSLATE_LOAD);
            EXPECT_EQ(otherFile, TextOf(page, ZO_IDC_TRANSLATE_FILE));
            EXPECT_EQ("Another", TextOf(page, ZO_IDC_TRANSLATE_DESCRIPTION));
            EXPECT_TRUE(IsEnabled(sheet, kApply));
            page = ShowPage(sheet, 0);
            EXPECT_EQ(0, ChosenRow(page, kInput.list)) << "the table just loaded";
            EXPECT_FALSE(IsChecked(page, kInput.enable));
            Choose(page, kInput.value, 9);
            page = ShowPage(sheet, 2);
            Type(page, ZO_IDC_TRANSLATE_DESCRIPTION, "Third");
            {
                const ImportPatch fullDisk("ZOAFX.DLL", "WriteFile", &FullDisk);
                Press(page, ZO_IDC_TRANSLATE_SAVE_AS);
            }
            EXPECT_EQ(otherFile, TextOf(page, ZO_IDC_TRANSLATE_FILE)) << "the file that could be saved";
            EXPECT_EQ("Third", TextOf(page, ZO_IDC_TRANSLATE_DESCRIPTION));
            EXPECT_FALSE(m_folder.Exists("new" + extension));
            Press(page, ZO_IDC_TRANSLATE_SAVE_AS);
            EXPECT_EQ(newFile, TextOf(page, ZO_IDC_TRANSLATE_FILE));
            Press(sheet, IDOK);
        },
        name(m_folder.Path("bad.iot")),
        [](HWND box) {
            EXPECT_EQ("This file is not a translation table. Choose another one.", BoxText(box));
            Press(box, IDOK);
            const HWND dialog = GetActiveWindow();
            EXPECT_EQ("Load Translation Table", TextOf(dialog));
            Key(dialog, VK_ESCAPE);
        },
        name("other"),
        AnswerBox("The translation table could not be loaded.", IDOK),
        AnswerBox("The files cannot be shown. Close other programs, and try again.", IDOK),
        [&](HWND dialog) {
            EXPECT_EQ("Translation tables (*" + extension + ")", EntryOf(dialog, ZO_IDC_FILE_TYPES));
            name("other")(dialog); // with the extension for tables
        },
        [&](HWND dialog) {
            EXPECT_EQ("Save Translation Table", TextOf(dialog));
            name("new")(dialog);
        },
        AnswerBox(kNotSaved, IDOK),
        name("new"),
    };
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, m_table.Edit(nullptr));
    other.get[0] = 9;
    other.description = "Third";
    EXPECT_EQ(other.Bytes(), m_folder.Read("new" + extension));
    EXPECT_EQ(other.Bytes() + newFile, ImageOf(m_table));
    EXPECT_EQ(m_start.Bytes(), FileNow());
}

TEST_F(TranslateEditor, KeepsToTheLengthOfADescription)
{
    const std::string most(63, 'd');
    const std::string text = IsDoubleByte() ? std::string(31, 'd') + "\x93\xFA\x96\x7B" : most.substr(0, 35);
    const DialogDriver driver{[&](HWND sheet) {
                                  HWND page = ShowPage(sheet, 2);
                                  Type(page, ZO_IDC_TRANSLATE_DESCRIPTION, most + "e");
                                  EXPECT_EQ(most, TextOf(page, ZO_IDC_TRANSLATE_DESCRIPTION));
                                  SetDlgItemTextA(page, ZO_IDC_TRANSLATE_DESCRIPTION,
                                                  (most + "e").c_str()); // pasted over
                                  Press(sheet, IDOK);
                                  EXPECT_EQ(page, PageOf(sheet));
                                  EXPECT_EQ(ZO_IDC_TRANSLATE_DESCRIPTION, FocusOf(page));
                                  Press(page, ZO_IDC_TRANSLATE_SAVE_AS); // stops there too
                                  EXPECT_EQ(most + "e", TextOf(page, ZO_IDC_TRANSLATE_DESCRIPTION));
                                  SetDlgItemTextA(page, ZO_IDC_TRANSLATE_DESCRIPTION, text.c_str());
                                  Press(sheet, IDOK);
                              },
                              AnswerBox("The text can have at most 63 characters.", IDOK),
                              AnswerBox("The text can have at most 63 characters.", IDOK)};
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, m_table.Edit(nullptr));
    m_start.description = text;
    EXPECT_EQ(m_start.Bytes(), FileNow());
}

TEST_F(TranslateEditor, IsWorkedByKeys)
{
    const DialogDriver driver{[&](HWND sheet) {
        const HWND page = PageOf(sheet);
        SetFocus(GetDlgItem(page, kInput.list));
        EXPECT_EQ((std::vector<int>{kInput.list, kInput.value, ZO_IDC_TRANSLATE_MODE, kInput.enable, kInput.dbcs,
                                    ZO_IDC_TRANSLATE_RESET, IDOK, IDCANCEL}),
                  [&] {
                      std::vector<int> order = TabOrder(sheet);
                      order.resize(8);
                      return order;
                  }());
        const std::pair<char, int> keys[] = {
            {'r', kInput.list}, {'t', kInput.value}, {'h', ZO_IDC_TRANSLATE_MODE}, {'d', ZO_IDC_TRANSLATE_DECIMAL}};
        for (const auto& [key, control] : keys) {
            AccessKey(sheet, key);
            EXPECT_EQ(control, FocusOf(page)) << key;
        }
        AccessKey(sheet, 'e');
        EXPECT_FALSE(IsChecked(page, kInput.enable));
        AccessKey(sheet, 'o');
        EXPECT_TRUE(IsChecked(page, kInput.dbcs));
        AccessKey(sheet, 'b');
        EXPECT_EQ("65 65", RowText(page, kInput.list, 65));
        Key(sheet, VK_TAB, kControl);
        Key(sheet, VK_TAB, kControl);
        const HWND options = PageOf(sheet);
        AccessKey(sheet, 'd');
        EXPECT_EQ(ZO_IDC_TRANSLATE_DESCRIPTION, FocusOf(options));
        Key(sheet, VK_ESCAPE);
    }};
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, m_table.Edit(nullptr));
}

TEST_F(TranslateEditor, ShowsWhatCannotBe)
{
    m_table.SetLastInput(256);
    m_table.SetLastOutput(0xFFFFFFFF);
    m_table.SetLastModeI(2);
    const DialogDriver driver{[&](HWND sheet) {
        EXPECT_EQ(0, ChosenRow(PageOf(sheet), kInput.list));
        EXPECT_TRUE(IsChecked(PageOf(sheet), ZO_IDC_TRANSLATE_MODE));
        EXPECT_EQ(0, ChosenRow(ShowPage(sheet, 1), kPages[1].list));
        Press(sheet, IDOK);
    }};
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, m_table.Edit(nullptr));
    EXPECT_EQ(256u, m_table.GetLastInput()) << "nobody chose another";
    EXPECT_EQ(2u, m_table.GetLastModeI());
}

namespace {

/// A row drawn into memory.
class DrawnRow {
public:
    DrawnRow(HWND page, int row, UINT state) : m_dc(CreateCompatibleDC(nullptr))
    {
        m_bitmap = CreateBitmap(kWidth, kHeight, 1, 32, nullptr);
        m_old = SelectObject(m_dc, m_bitmap);
        DRAWITEMSTRUCT item = {ODT_LISTBOX,
                               UINT{ZO_IDC_TRANSLATE_INPUT_LIST},
                               static_cast<UINT>(row),
                               ODA_DRAWENTIRE,
                               state,
                               GetDlgItem(page, kInput.list),
                               m_dc,
                               {0, 0, kWidth, kHeight},
                               0};
        SendMessageA(page, WM_DRAWITEM, kInput.list, reinterpret_cast<LPARAM>(&item));
    }
    ~DrawnRow()
    {
        SelectObject(m_dc, m_old);
        DeleteObject(m_bitmap);
        DeleteDC(m_dc);
    }
    DrawnRow(const DrawnRow&) = delete;
    DrawnRow& operator=(const DrawnRow&) = delete;

    /// Pixels of a colour in columns \p from to \p to, without the frame of the focus.
    int Count(COLORREF color, int from, int to) const
    {
        int count = 0;
        for (int x = from; x < to; ++x) {
            for (int y = 2; y < kHeight - 2; ++y)
                count += GetPixel(m_dc, x, y) == color;
        }
        return count;
    }
    COLORREF At(int x, int y) const { return GetPixel(m_dc, x, y); }

    static constexpr int kWidth = 160;
    static constexpr int kHeight = 30;

private:
    HDC m_dc;
    HBITMAP m_bitmap;
    HGDIOBJ m_old;
};

} // namespace

TEST_F(TranslateEditor, DrawsRows)
{
    constexpr COLORREF kMark = RGB(224, 96, 0);
    m_table.SetInputValue(65, 65);
    const DialogDriver driver{[&](HWND sheet) {
        const HWND page = PageOf(sheet);
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
            constexpr int kHalf = DrawnRow::kWidth / 2;
            const DrawnRow drawn(page, row.row, row.state);
            EXPECT_GT(drawn.Count(ink, 2, kHalf), 5) << "the character";
            EXPECT_GT(drawn.Count(ink, kHalf + 10, DrawnRow::kWidth - 2), 5) << "what it becomes";
            EXPECT_GT(drawn.Count(face, 2, DrawnRow::kWidth - 2), 2000);
            EXPECT_EQ(row.isChanged ? 28 : 0, drawn.Count(kMark, kHalf, kHalf + 10));
            EXPECT_EQ(face, drawn.At(0, 0)) << "outside the frame of the focus";
            const bool hasFrame = drawn.At(1, 1) != face || drawn.At(2, 1) != face;
            EXPECT_EQ((row.state & ODS_FOCUS) != 0, hasFrame);
        }
        Key(sheet, VK_ESCAPE);
    }};
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, m_table.Edit(nullptr));
}

// Faults ---------------------------------------------------------------------------------------------------------------

namespace {

BOOL WINAPI NoSound(UINT) { return TRUE; } // the system keeps what its first sound needs

/// Somebody who answers each window that opens, once, and then gives it up: edits a table and loads a file.
class Person {
public:
    explicit Person(const std::string& file) : m_timer(SetTimer(nullptr, 0, 5, &Person::Look)), m_file(file)
    {
        s_person = this;
    }
    ~Person()
    {
        KillTimer(nullptr, m_timer);
        s_person = nullptr;
    }
    Person(const Person&) = delete;
    Person& operator=(const Person&) = delete;

private:
    static BOOL CALLBACK Find(HWND window, LPARAM found)
    {
        char name[16] = "";
        GetClassNameA(window, name, sizeof name);
        if (lstrcmpA(name, "#32770") != 0 || !IsWindowVisible(window) || !IsWindowEnabled(window))
            return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD)
    {
        HWND window = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), &Find, reinterpret_cast<LPARAM>(&window));
        if (window != nullptr && s_person != nullptr)
            s_person->Answer(window);
    }
    void Answer(HWND window)
    {
        const HWND name = GetDlgItem(window, ZO_IDC_FILE_NAME);
        const bool isSheet = GetDlgItem(window, kApply) != nullptr;
        HWND& answered = name != nullptr ? m_files : isSheet ? m_sheet : m_other;
        if (std::exchange(answered, window) == window) {
            SendMessageA(window, isSheet ? WM_CLOSE : WM_COMMAND, IDCANCEL, 0);
            return;
        }
        if (name != nullptr) {
            SetWindowTextA(name, m_file.c_str());
        } else if (isSheet) {
            SendMessageA(window, PSM_SETCURSEL, 2, 0);
            SendMessageA(PageOf(window), WM_COMMAND, ZO_IDC_TRANSLATE_LOAD, 0);
            SendMessageA(window, PSM_SETCURSEL, 0, 0);
            SendMessageA(PageOf(window), WM_COMMAND, ZO_IDC_TRANSLATE_RESET, 0);
            SendMessageA(window, WM_COMMAND, kApply, reinterpret_cast<LPARAM>(GetDlgItem(window, kApply)));
        }
        SendMessageA(window, WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(GetDlgItem(window, IDOK)));
    }

    static inline Person* s_person = nullptr;
    UINT_PTR m_timer;
    const std::string& m_file;
    HWND m_files = nullptr;
    HWND m_sheet = nullptr;
    HWND m_other = nullptr;
};

} // namespace

TEST_F(TranslateEditor, SurvivesFailures)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10 && !IsDoubleByte(), "the same everywhere, and slow");
    const BoxStub noBox;
    const ImportPatch noSound("ZOGBLBRX.DLL", "MessageBeep", &NoSound);
    TranslationFile after = m_start;
    for (int code = 0; code < 256; ++code)
        after.get[code] = static_cast<char>(code);
    const auto edit = [&](const FaultRun& run) {
        CGblTranslate table;
        table.CopyData(&m_table);
        const Person person(m_file);
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
        const Person person(m_file);
        const DWORD status = table.Load(nullptr, m_file.c_str());
        run.Stop();
        EXPECT_TRUE(run.Fired() || ImageOf(table) == m_start.Bytes() + m_file);
        EXPECT_TRUE(run.Fired() || status == ZO_TRANSLATE_SUCCESS) << status;
    };
    {
        AllocationFaults faults;
        RunFaultLoop(faults, choose);
        RunFaultLoop(faults, edit, {.stride = 7});
    }
    FaultSource calls("calls");
    ZO_FAULTY_CALL(FindFirstFileA) find(calls, "ZOGBLBRX.DLL", INVALID_HANDLE_VALUE, ERROR_PATH_NOT_FOUND);
    ZO_FAULTY_CALL(FindNextFileA) next(calls, "ZOGBLBRX.DLL", FALSE, ERROR_NO_MORE_FILES);
    ZO_FAULTY_CALL(CreateFileA) open(calls, "ZOAFX.DLL", INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
    ZO_FAULTY_CALL(ReadFile) read(calls, "ZOAFX.DLL", FALSE, ERROR_CRC);
    ZO_FAULTY_CALL(WriteFile) write(calls, "ZOAFX.DLL", FALSE, ERROR_DISK_FULL);
    RunFaultLoop(calls, choose);
    RunFaultLoop(calls, edit);
    FaultSource drawing("drawing");
    ZO_FAULTY_CALL(LoadBitmapA) load(drawing, "ZOGBLBRX.DLL", nullptr);
    ZO_FAULTY_CALL(GetDC) dc(drawing, "ZOGBLBRX.DLL", nullptr);
    ZO_FAULTY_CALL(GetTextMetricsA) metrics(drawing, "ZOGBLBRX.DLL", FALSE);
    ZO_FAULTY_CALL(CreateCompatibleDC) memory(drawing, "ZOGBLBRX.DLL", nullptr);
    RunFaultLoop(drawing, edit, {.stride = 7});
    FaultSource messages("controls");
    ZO_FAULTY_CALL(SendMessageA) send(messages, "ZOGBLBRX.DLL", LB_ERR);
    RunFaultLoop(messages, edit, {.stride = 61});
    ZoGblDumpLanguageDLL();
    EXPECT_EQ(ZO_TRANSLATE_NO_MEMORY, m_table.Edit(nullptr)) << "without a language library";
    EXPECT_EQ(ZO_TRANSLATE_NO_MEMORY, m_table.Load(nullptr, m_file.c_str()));
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
}
