// What a user wants of a program's windows, and what is not to be asked again: kept, damaged, edited.
#include "dialog_faults.h"

#include "support/mutation.h"
#include "support/product_test.h"

#include <zogbl/kept_answers_page.h>
#include <zogbl/message_box.h>
#include <zogbl/options_sheet.h>
#include <zogbl/resource_ids.h>
#include <zogbl/workspace_page.h>

namespace {

constexpr int kRecent = ZO_IDC_WORKSPACE_RECENT;
constexpr int kFolder = ZO_IDC_WORKSPACE_FOLDER;

std::string Describe(const ZoWorkspace& workspace)
{
    std::string text;
    for (const int number : {workspace.restoreWindows, workspace.confirmLeaving, workspace.toolBar, workspace.statusBar,
                             workspace.recentFiles})
        text += std::to_string(number) + ' ';
    return text + workspace.folder;
}

/// That says one question in the words of now.
struct AnswersPage : CZoKeptAnswersPage {
    void Describe(LPCSTR name, CString& words) const override
    {
        if (lstrcmpA(name, "Leave") == 0)
            words = "Leave the program";
    }
};

struct Sheet : CZoOptionsSheet {
    explicit Sheet(UINT firstPage) : CZoOptionsSheet("Options", nullptr, nullptr, firstPage)
    {
        AddPage(&workspace);
        AddPage(&answers);
    }

    CZoWorkspacePage workspace;
    AnswersPage answers;
};

/// The registry refuses to be changed, on every system.
class NoWriting {
    template <class... ARGUMENTS> static LONG WINAPI Refuse(ARGUMENTS...) { return ERROR_ACCESS_DENIED; }

    const ImportPatch m_set{kZogbl, "RegSetValueExA", &Refuse<HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD>};
    const ImportPatch m_setText{kZogbl, "RegSetValueA", &Refuse<HKEY, LPCSTR, DWORD, LPCSTR, DWORD>};
    const ImportPatch m_delete{kZogbl, "RegDeleteValueA", &Refuse<HKEY, LPCSTR>};
    const ImportPatch m_deleteKey{kZogbl, "RegDeleteKeyA", &Refuse<HKEY, LPCSTR>};
};

class Workspace : public ProductTest {
protected:
    /// Opens the sheet with a page.
    static INT_PTR Show(UINT page, const std::function<void(HWND sheet, HWND page)>& act,
                        const std::vector<DialogDriver::Act>& boxes = {})
    {
        std::vector<DialogDriver::Act> acts = {[&](HWND window) { act(window, PageOf(window)); }};
        acts.insert(acts.end(), boxes.begin(), boxes.end());
        const DialogDriver driver(acts);
        return Sheet(page).DoModal();
    }
    static std::string Kept()
    {
        ZoWorkspace workspace;
        ZoLoadWorkspace(workspace);
        return Describe(workspace);
    }
    CString Key(LPCSTR section) const { return m_product.UserKey() + "\\" + section; }
    std::string Read(LPCSTR section, LPCSTR name)
    {
        char text[4096] = "";
        m_product.Config().GetValue(ZO_MODE_LOCAL_MACHINE, Key(section), name, text, sizeof text, "");
        return text;
    }
    void Write(LPCSTR section, LPCSTR name, const std::string& text)
    {
        EXPECT_EQ(0u, m_product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, Key(section), name, text.c_str()));
    }
    /// Damages what is kept, and asks whether it still counts.
    void Mutate(LPCSTR section, LPCSTR name, const std::function<bool(const std::string& damaged)>& counts)
    {
        const std::string whole = Read(section, name);
        ForEachMutation(
            [&](unsigned, Random& random) {
                std::string damaged = whole;
                const auto at = [&] { return random() % damaged.size(); };
                Damage(random, 1, 3,
                       {[&] { damaged[at()] = static_cast<char>(1 + random() % 255); },
                        [&] { damaged.resize(1 + at()); }, [&] { damaged += whole.substr(random() % whole.size()); }});
                Write(section, name, damaged);
                return counts(damaged);
            },
            {.usual = 200, .onGuardHeap = 50, .leastPercent = 0});
    }
    static void PressBoxes(HWND page)
    {
        for (int box = ZO_IDC_WORKSPACE_WINDOWS; box <= ZO_IDC_WORKSPACE_NOVICE; ++box)
            Press(page, box);
    }
    /// Asks, checks "Do not ask again", and presses a button.
    static int AskForGood(LPCSTR name, LPCSTR question, UINT type, int button)
    {
        const DialogDriver driver({[=](HWND box) {
            Press(box, ZO_IDC_BOX_KEEP);
            Press(box, button);
        }});
        return ZoAskOnce(name, nullptr, question, "Title", type);
    }
};

const char kDefaults[] = "1 1 1 1 4 ";

} // namespace

TEST_F(Workspace, IsKeptAndSurvivesOlderNewerAndDamagedRecords)
{
    ZoWorkspace workspace;
    EXPECT_FALSE(ZoLoadWorkspace(workspace));
    EXPECT_EQ(kDefaults, Describe(workspace));
    workspace = {FALSE, TRUE, 7, FALSE, 16, "C:\\Windows"};
    EXPECT_EQ(0u, ZoSaveWorkspace(workspace));
    EXPECT_EQ("0 1 1 0 16 C:\\Windows", Kept());
    for (const int recent : {-1, ZoWorkspace::MOST_RECENT + 1}) {
        workspace.recentFiles = recent;
        EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), ZoSaveWorkspace(workspace));
    }
    const std::string whole = Read("Workspace", "Settings");
    const struct {
        const char *settings, *folder, *read;
    } kRows[] = {{"ZoWorkspace 2 0 0 2915", "", "0 0 1 1 4 "},                 // of an older version
                 {"ZoWorkspace 6 0 1 1 0 16 5 1948095740", "", "0 1 1 0 16 "}, // of a newer one,
                 {"ZoWorkspace 5 0 1 1 0 17 172759980", "relative", kDefaults},
                 {"", "C:\\a?b", kDefaults}};
    for (const auto& row : kRows) {
        Write("Workspace", "Settings", row.settings);
        Write("Workspace", "Folder", row.folder);
        EXPECT_EQ(row.read, Kept()) << row.settings;
    }
    Write("Workspace", "Settings", whole);
    Write("Workspace", "Folder", "");
    Mutate("Workspace", "Settings", [&](const std::string& damaged) {
        const bool isRead = ZoLoadWorkspace(workspace) != FALSE;
        EXPECT_EQ(isRead ? "0 1 1 0 16 " : kDefaults, Describe(workspace)) << damaged;
        return isRead;
    });
}

TEST_F(Workspace, PageEditsAllAndRefusesInWords)
{
    const std::string folder = Path("new"),
                      missing = folder + "\n\nThis folder does not exist. Do you want to create it?";
    EXPECT_EQ(IDCANCEL, Show(0, [](HWND sheet, HWND page) {
                  EXPECT_FALSE(IsEnabled(sheet, ID_APPLY_NOW));
                  PressBoxes(page);
                  EXPECT_TRUE(IsEnabled(sheet, ID_APPLY_NOW));
                  Type(page, kRecent, "7");
                  Press(sheet, IDCANCEL);
              }));
    EXPECT_EQ(kDefaults, Kept()) << "Cancel changes nothing";
    EXPECT_EQ(IDOK, Show(0,
                         [&](HWND sheet, HWND page) {
                             PressBoxes(page);
                             Type(page, kRecent, "17");
                             Press(sheet, IDOK);
                             EXPECT_EQ(GetDlgItem(page, kRecent), GetFocus());
                             Type(page, kRecent, "0");
                             Type(page, kFolder, "a?b");
                             Press(sheet, IDOK);
                             EXPECT_EQ(GetDlgItem(page, kFolder), GetFocus());
                             Type(page, kFolder, folder);
                             Press(sheet, IDOK);
                             EXPECT_EQ("0", TextOf(page, kRecent)) << "nothing typed is lost";
                             Press(sheet, IDOK);
                         },
                         {AnswerBox("The number must lie between 0 and 16.", IDOK),
                          AnswerBox("a?b\n\nThis is not a valid file name.", IDOK), AnswerBox(missing, IDNO),
                          AnswerBox(missing, IDYES)}));
    EXPECT_EQ("0 0 0 0 0 " + folder, Kept());
    EXPECT_EQ(1, ZoGblGetRegNoviceMode());
    RemoveDirectoryA(folder.c_str());
    EXPECT_EQ(IDOK, Show(0,
                         [&](HWND sheet, HWND page) {
                             EXPECT_EQ(folder, TextOf(page, kFolder));
                             Type(page, kFolder, Path() + "\\.");
                             Press(page, ZO_IDC_WORKSPACE_BROWSE);
                             EXPECT_EQ(Path(), TextOf(page, kFolder));
                             Type(page, kFolder, folder);
                             Type(page, kRecent, "3");
                             Press(sheet, IDOK); // of a folder that was kept nobody asks
                         },
                         {Pressing(IDOK)}));
    EXPECT_EQ("0 0 0 0 3 " + folder, Kept());
}

TEST_F(Workspace, AnswersAreKeptOnceTheyAreAnswers)
{
    // The sets of buttons, and of each one that is an answer and one that is none.
    constexpr int kAnswers[] = {IDOK, IDOK, IDIGNORE, IDNO, IDYES, 0, IDCONTINUE};
    constexpr int kNoAnswers[] = {0, IDCANCEL, IDABORT, IDCANCEL, 0, IDRETRY, IDTRYAGAIN};
    for (UINT type = 0; type < 14; ++type) {
        const bool isKept = type < 7;
        const int button = isKept ? kAnswers[type] : kNoAnswers[type - 7];
        const auto ask = [&] { return ZoAskOnce("Row", nullptr, "Really?", "Title", type % 7); };
        if (button == 0)
            continue;
        SCOPED_TRACE(testing::Message() << type % 7 << " " << button);
        EXPECT_EQ(button, AskForGood("Row", "Really?", type % 7, button));
        {
            const DialogDriver driver({isKept ? nullptr : Pressing(button)});
            EXPECT_EQ(button, ask());
        }
        EXPECT_EQ(0u, ZoForgetAnswer("Row"));
        const DialogDriver driver({[&](HWND box) {
            EXPECT_FALSE(IsChecked(box, ZO_IDC_BOX_KEEP));
            ExpectTidy(box);
            Press(box, button);
        }});
        EXPECT_EQ(button, ask()) << "not checked: not kept";
    }
    EXPECT_EQ("", Read("Answers", "Row"));
    EXPECT_EQ(IDYES, AskForGood("Row", "Really?", MB_YESNO, IDYES));
    {
        const DialogDriver driver({[](HWND box) {
            EXPECT_EQ((std::vector<int>{IDOK, ZO_IDC_BOX_KEEP}), ExpectTabRounds(box));
            AccessKey(box, 'd');
            EXPECT_TRUE(IsChecked(box, ZO_IDC_BOX_KEEP));
            SendMessageA(box, WM_COPY, 0, 0);
            ASSERT_TRUE(OpenClipboard(nullptr));
            const std::string copied = static_cast<const char*>(GlobalLock(GetClipboardData(CF_TEXT)));
            CloseClipboard();
            EXPECT_EQ(std::string::npos, copied.find("ask again")) << "it is no button";
            Press(box, ZO_IDC_BOX_KEEP);
            Press(box, IDOK);
        }});
        EXPECT_EQ(IDOK, ZoAskOnce("Row", nullptr, "Really?", "Title", MB_OK)) << "a kept answer that the box has not";
    }
    Mutate("Answers", "Row", [](const std::string& damaged) {
        const BoxStub box(IDNO);
        const int answer = ZoAskOnce("Row", nullptr, "Really?", "Title", MB_YESNO);
        EXPECT_EQ(answer == IDYES, box.Last().text.empty()) << damaged;
        return answer == IDYES;
    });
}

TEST_F(Workspace, KeptAnswersAreListedInWordsAndUndone)
{
    constexpr int kList = ZO_IDC_ANSWERS_LIST;
    EXPECT_EQ(IDYES, AskForGood("Leave", "Documents are open.\nLeave?", MB_YESNO, IDYES));
    EXPECT_EQ(IDNO, AskForGood("Other", "One &\nanother?", MB_YESNO, IDNO));
    EXPECT_EQ(IDOK, AskForGood("Third", "", MB_OK, IDOK));
    Write("Answers", "Damaged", "ZoAnswer1 6 1\nx");
    for (const int last : {IDCANCEL, IDOK}) {
        EXPECT_EQ(last, Show(1, [&](HWND sheet, HWND page) {
                      EXPECT_EQ("Yes: Leave the program|No: One & another?|OK: Third|", RowsOf(page, kList));
                      EXPECT_EQ("Yes: Leave the program", TextOf(page, ZO_IDC_ANSWERS_WORDS));
                      ExpectTabRounds(sheet);
                      Press(page, ZO_IDC_ANSWERS_UNDO);
                      Press(page, ZO_IDC_ANSWERS_UNDO);
                      EXPECT_EQ("OK: Third|", RowsOf(page, kList));
                      EXPECT_TRUE(IsEnabled(sheet, ID_APPLY_NOW));
                      ChangeLanguage(kGerman);
                      EXPECT_EQ("OK: Third|", RowsOf(page, kList));
                      ExpectTidy(page);
                      ChangeLanguage(kEnglish);
                      Press(sheet, last);
                  }));
    }
    EXPECT_EQ("", Read("Answers", "Leave") + Read("Answers", "Other"));
    EXPECT_EQ(IDOK, Show(1, [&](HWND sheet, HWND page) {
                  SetFocus(GetDlgItem(page, ZO_IDC_ANSWERS_UNDO_ALL));
                  Press(page, ZO_IDC_ANSWERS_UNDO_ALL);
                  EXPECT_EQ("", RowsOf(page, kList));
                  EXPECT_EQ("No answers are kept.", TextOf(page, ZO_IDC_ANSWERS_WORDS));
                  EXPECT_TRUE(IsEnabled(sheet, ID_APPLY_NOW));
                  EXPECT_EQ(GetDlgItem(page, kList), GetFocus()) << "not on a button that is disabled";
                  EXPECT_FALSE(IsEnabled(page, ZO_IDC_ANSWERS_UNDO));
                  Press(sheet, IDOK);
              }));
    EXPECT_EQ("", Read("Answers", "Third"));
}

TEST_F(Workspace, AFailureIsToldAndNothingIsLost)
{
    EXPECT_EQ(IDYES, AskForGood("Leave", "Leave?", MB_YESNO, IDYES));
    for (const UINT page : {0U, 1U}) {
        EXPECT_EQ(IDCANCEL, Show(page,
                                 [&](HWND sheet, HWND window) {
                                     const NoWriting noWriting;
                                     if (page == 0)
                                         Type(window, kRecent, "9");
                                     else
                                         Press(window, ZO_IDC_ANSWERS_UNDO);
                                     Press(sheet, IDOK);
                                     EXPECT_NE(nullptr, PageOf(sheet)) << "it stays";
                                     EXPECT_EQ(page == 0 ? "9" : "", TextOf(window, page == 0 ? kRecent : kFolder));
                                     Press(sheet, IDCANCEL);
                                 },
                                 {AnswerBox(page == 0 ? "The settings could not be saved. Please try again."
                                                      : "The kept answers could not be changed. Please try again.",
                                            IDOK)}));
    }
    EXPECT_NE("", Read("Answers", "Leave"));
    if (Family() != WindowsFamily::kWin32s) {
        const ImportPatch noNoviceMode(
            kZogbl, "RegSetValueExA",
            +[](HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) WINAPI -> LONG {
                return lstrcmpA(name, "NoviceMode") == 0 ? ERROR_ACCESS_DENIED
                                                         : RegSetValueExA(key, name, reserved, type, data, size);
            });
        EXPECT_EQ(IDCANCEL, Show(0,
                                 [](HWND sheet, HWND page) {
                                     Press(page, ZO_IDC_WORKSPACE_NOVICE);
                                     Press(sheet, IDOK);
                                     EXPECT_NE(nullptr, PageOf(sheet));
                                     Press(sheet, IDCANCEL);
                                 },
                                 {AnswerBox("The settings could not be saved. Please try again.", IDOK)}));
    }
    RunDialogFaults(
        [](HWND window) {
            SetDlgItemTextA(window, ZO_IDC_OPTIONS_SEARCH, "o");
            for (const int button : {ZO_IDC_BOX_KEEP, IDYES, ID_APPLY_NOW, IDCANCEL})
                Command(window, button);
        },
        [](const FaultRun& run) {
            ZoForgetAnswer("Fault");
            const int answer = ZoAskOnce("Fault", nullptr, "Question?", "Title", MB_YESNO);
            EXPECT_TRUE(answer == IDYES || answer == IDNO || run.Fired()) << answer;
            try {
                Sheet(1).DoModal();
            } catch (CMemoryException* e) {
                e->Delete(); // out of the constructor
            }
            ZoWorkspace workspace;
            ZoLoadWorkspace(workspace);
            ZoSaveWorkspace(workspace);
        },
        {.memory = 5, .system = 3});
}
