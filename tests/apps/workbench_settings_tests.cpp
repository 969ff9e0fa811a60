// What the Workbench keeps for its user, the commands that ask in dialogs, and what documents print.
#include "commands.h"
#include "options.h"
#include "recent_files.h"
#include "text_pages.h"
#include "text_print.h"
#include "tour_windows.h"
#include "window_state.h"
#include "workbench_ids.h"

#include "support/box_stub.h"
#include "support/dialog_driver.h"
#include "support/product_test.h"

#include <apps/user_texts.h>
#include <common/test_printer.h>
#include <zogbl/resource_ids.h>
#include <zogbl/workspace.h>

#include <sstream>

namespace {

class WorkbenchSettings : public ProductTest {
protected:
    const HINSTANCE m_workbench = LoadLibraryA("ZOWORENU.DLL"), m_viewer = LoadLibraryA("ZOVIEENU.DLL"); // stay loaded
    const CDynLinkLibrary m_first{m_workbench, m_workbench}, m_second{m_viewer, m_viewer};
};

/// The texts of a menu's items, each with a '|' behind it.
std::string ItemsOf(HMENU menu)
{
    std::string items;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        char text[300] = "";
        GetMenuStringA(menu, static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
        items += std::string(text) + "|";
    }
    return items;
}

/// The letters that a PostScript file shows.
std::string LettersOf(const std::string& postScript)
{
    std::string shown, last;
    std::istringstream words(postScript);
    for (std::string word; words >> word; last = word)
        shown += word == "glyphshow" ? last : "";
    return shown;
}

} // namespace

TEST_F(WorkbenchSettings, KeepRecentFilesLastFirstOnceAndNoMoreThanTheMenuHas)
{
    RecentFiles files;
    for (int i = 0; i < ZoWorkspace::MOST_RECENT + 2; ++i)
        EXPECT_EQ(0u, files.Add(("C:\\" + std::to_string(i) + ".txt").c_str()));
    EXPECT_EQ(ZoWorkspace::MOST_RECENT, files.GetCount());
    EXPECT_EQ(0u, files.Add("c:\\9.TXT"));
    EXPECT_EQ(0u, files.Remove("C:\\17.txt"));
    RecentFiles read;
    read.Load();
    EXPECT_EQ(ZoWorkspace::MOST_RECENT - 1, read.GetCount());
    EXPECT_STREQ("c:\\9.TXT", read.GetPath(ZO_ID_RECENT_FIRST));
    EXPECT_STREQ("C:\\16.txt", read.GetPath(ZO_ID_RECENT_FIRST + 1));
    EXPECT_STREQ("C:\\2.txt", read.GetPath(ZO_ID_RECENT_LAST - 1));
    EXPECT_STREQ("", read.GetPath(ZO_ID_RECENT_LAST));

    CMenu menu;
    ASSERT_TRUE(menu.CreatePopupMenu());
    for (const auto& [command, text] : {std::pair<UINT, LPCSTR>{1, "New"}, {0, ""}, {ZO_ID_APP_EXIT, "Exit"}})
        menu.AppendMenu(command == 0 ? MF_SEPARATOR : MF_STRING, command, text);
    for (const auto& [most, items] : {std::pair<int, LPCSTR>{2, "New||&1  c:\\9.TXT|&2  C:\\16.txt||Exit|"},
                                      {1, "New||&1  c:\\9.TXT||Exit|"},
                                      {0, "New||Exit|"}}) {
        read.Show(menu, ZO_ID_APP_EXIT, most);
        EXPECT_EQ(items, ItemsOf(menu));
    }
    EXPECT_EQ(0u, read.Add(("C:\\" + std::string(100, 'x') + "\\a&b.txt").c_str()));
    read.Show(menu, ZO_ID_APP_EXIT, 1);
    EXPECT_EQ("New||&1  C:\\...\\a&&b.txt||Exit|", ItemsOf(menu));
}

TEST_F(WorkbenchSettings, KeepTheWindowsOfLastTime)
{
    WindowState state;
    EXPECT_FALSE(LoadWindowState(state, 8)); // nothing is kept
    state.place = CRect(-5, 10, 700, 500);
    state.isMaximized = TRUE;
    state.page = 7;
    state.documents.Add("ZoText|C:\\a.txt");
    EXPECT_EQ(0u, SaveWindowState(state));
    WindowState read;
    EXPECT_TRUE(LoadWindowState(read, 8));
    EXPECT_EQ(CRect(-5, 10, 700, 500), read.place);
    EXPECT_TRUE(read.isMaximized && read.page == 7 && read.documents.GetSize() == 1);
    EXPECT_STREQ("ZoText|C:\\a.txt", read.documents[0]);
    for (const char* damaged : {"", "1 2 3", "-5 10 700 500 1 8", "-5 10 700 500 1 -1", "0 0 0 0 0 0", "9 9 1 1 0 0",
                                "0 0 99999 10 0 0", "-5 10 700 500 1 7x"}) {
        EXPECT_EQ(0u, KeepUserText("Window", damaged));
        WindowState none;
        EXPECT_FALSE(LoadWindowState(none, 8)) << damaged;
        EXPECT_EQ(0, none.documents.GetSize()) << damaged;
    }
}

TEST_F(WorkbenchSettings, KeepHowDocumentsAreShown)
{
    DocumentSettings settings;
    settings.font = {-13, 0, 0, 0, 700, TRUE, FALSE, TRUE, ANSI_CHARSET, 0, 0, 0, FIXED_PITCH, "Courier New"};
    settings.color = RGB(1, 2, 3);
    settings.heading = FALSE;
    EXPECT_EQ(0u, SaveDocumentSettings(settings));
    const DocumentSettings read = LoadDocumentSettings();
    EXPECT_EQ(0, memcmp(&settings.font, &read.font, sizeof read.font));
    EXPECT_EQ(RGB(1, 2, 3), read.color);
    EXPECT_FALSE(read.heading);
    for (const char* damaged :
         {"-13 700 1 0 1 0 1", "-13 700 1 0 1 256 1 0 A", "-99999 700 1 0 1 0 1 0 A", "-13 1001 1 0 1 0 1 0 A",
          "-13 700 1 0 1 0 1 16777216 A", "-13 700 1 0 1 0 1 0 A face whose name has thirty-two."}) {
        EXPECT_EQ(0u, KeepUserText("DocumentFont", damaged));
        EXPECT_TRUE(LoadDocumentSettings().IsFontUsual()) << damaged;
    }
}

TEST_F(WorkbenchSettings, TextIsBrokenBehindBlanksElseWhereItMust)
{
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    CFont font;
    ASSERT_TRUE(font.CreateFont(-12, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, FIXED_PITCH, "Courier New"));
    CFont* before = dc.SelectObject(&font);
    const CSize letter = dc.GetTextExtent("X");
    for (const auto& [text, lines] : {std::pair<LPCSTR, int>{"", 1},
                                      {"one", 1},
                                      {"one\r\ntwo\n", 2},
                                      {"\n\n\n", 3},
                                      {"1234567890", 1},
                                      {"12345678901", 2},
                                      {"12345 7890 2", 2},
                                      {"123456789 123456789 123456789", 3},
                                      {"1234567890 2", 2},
                                      {"12\t9", 1},
                                      {"1234567890\r\n", 1},
                                      {"1234567890 1234567890", 2}})
        EXPECT_EQ(lines, TextPages(dc, text, 10 * letter.cx, 1).GetCount()) << text;
    dc.SelectObject(before);
}

/// Through both dialogs, the driver and GDI.
TEST_F(WorkbenchSettings, DocumentsArePrinted)
{
    const TestPrinter printer;
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr, nullptr));
    DocumentSettings settings;
    settings.font.lfHeight = -13;
    ::lstrcpyn(settings.font.lfFaceName, "Courier New", LF_FACESIZE);
    CString text;
    for (int i = 0; i < 150; ++i)
        text += "Zo\r\n";
    const struct {
        const char* from;
        const char* to;
        const char* pages;   // of the file; null: none is written
        const char* heading; // in it, the number before the title
    } rows[] = {{"", "", "%%Pages: 3", "/P/a/g/e/space/one/space/o/f/space/three/D/o/c/Z/o"},
                {"2", "9", "%%Pages: 2", "/P/a/g/e/space/two/space/o/f/space/three/D/o/c/Z/o"},
                {"7", "9", nullptr, nullptr}};
    for (const auto& row : rows) {
        const std::string file = Path("out.prn");
        DeleteFileA(file.c_str());
        const BoxStub box;
        const WhenOpen print(ZO_IDC_PRINT_PRINTERS, [&](HWND dialog) {
            if (*row.from != '\0') {
                zo_test::Press(dialog, ZO_IDC_PRINT_PAGES);
                Type(dialog, ZO_IDC_PRINT_FROM, row.from);
                Type(dialog, ZO_IDC_PRINT_TO, row.to);
            }
            const WhenOpen name(ZO_IDC_FILE_NAME, [&](HWND form) {
                Type(form, ZO_IDC_FILE_NAME, file);
                zo_test::Press(form, IDOK);
                return true;
            });
            zo_test::Press(dialog, IDOK);
            return name.IsDone();
        });
        PrintText(owner, "Doc", text, "", settings);
        EXPECT_TRUE(print.IsDone() && owner.IsWindowEnabled()) << row.from;
        if (row.pages == nullptr) {
            EXPECT_EQ("The document has only 3 pages, so there is nothing to print.", box.Last().text);
            continue;
        }
        EXPECT_EQ("", box.Last().text);
        const std::string printed = ReadBytes(file);
        EXPECT_NE(std::string::npos, printed.find(row.pages)) << row.from;
        EXPECT_EQ(0u, LettersOf(printed).find(row.heading)) << LettersOf(printed).substr(0, 200);
    }
}

TEST_F(WorkbenchSettings, CommandsAskInDialogsAndDoIt)
{
    CWnd frame;
    ASSERT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 600, 400, nullptr, nullptr));
    CountryPage countries;
    MailBoxPage mailBoxes;
    TranslationPage translation;
    for (Page* page :
         {static_cast<Page*>(&countries), static_cast<Page*>(&mailBoxes), static_cast<Page*>(&translation)}) {
        ASSERT_TRUE(page->CreatePage(&frame, 1));
        page->Reload();
    }
    const auto name = [](HWND dialog) {
        Type(dialog, ZO_IDC_NAME_FIELD, "Reception");
        zo_test::Press(dialog, IDOK);
        if (!TextOf(dialog, ZO_IDC_NAME_REASON).empty()) // it is taken
            zo_test::Press(dialog, IDCANCEL);
    };
    for (const BOOL isAdded : {TRUE, FALSE}) {
        const DialogDriver driver{name};
        EXPECT_EQ(isAdded, AskForMailBox(&frame, mailBoxes));
    }
    CStringArray names;
    MailBoxPage::ListNames(names);
    EXPECT_EQ(1, names.GetSize());

    const auto choose = [](HWND dialog) {
        zo_test::Press(dialog, ZO_IDC_STRING_NONE);
        SendDlgItemMessageA(dialog, ZO_IDC_STRING_LIST, LB_SETSEL, TRUE, 3);
        Command(dialog, ZO_IDC_STRING_LIST, LBN_SELCHANGE);
        zo_test::Press(dialog, IDOK);
    };
    const auto none = [](HWND dialog) {
        zo_test::Press(dialog, ZO_IDC_STRING_NONE);
        zo_test::Press(dialog, IDOK);
    };
    const auto shown = [&] {
        CByteArray each;
        CStringArray all;
        countries.ListCountries(all, each);
        return std::count(each.GetData(), each.GetData() + each.GetSize(), 1);
    };
    {
        const DialogDriver driver{choose};
        EXPECT_TRUE(ChooseCountries(&frame, countries));
        EXPECT_EQ(1, shown());
    }
    {
        const DialogDriver driver{none, AnswerBox("No country was chosen, so the list shows all of them again.", IDOK)};
        EXPECT_TRUE(ChooseCountries(&frame, countries));
        EXPECT_LT(200, shown());
    }
    const auto setUp = [](HWND sheet) {
        zo_test::Press(ShowPage(sheet, 2), ZO_IDC_DOCUMENT_HEADING);
        zo_test::Press(ShowPage(sheet, 0), ZO_IDC_WORKSPACE_STATUS_BAR);
        zo_test::Press(sheet, IDOK);
    };
    const DialogDriver driver{setUp};
    EXPECT_EQ(IDOK, EditOptions(&frame));
    ZoWorkspace workspace;
    EXPECT_TRUE(ZoLoadWorkspace(workspace) && !workspace.statusBar && !LoadDocumentSettings().heading);
}
