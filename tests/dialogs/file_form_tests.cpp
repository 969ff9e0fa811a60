// The form for files, in its dialog and its pages: recent folders, new ones, sizes.
#include "file_form_test.h"

#include <common/without_throwing.h>

#include "dialogs/files/recent_folders.h"

/// Whether the chosen row can be seen.
static bool ShowsItsRow(HWND list)
{
    CRect rows, row;
    GetClientRect(list, rows);
    SendMessageA(list, LB_GETITEMRECT, SendMessageA(list, LB_GETCURSEL, 0, 0), reinterpret_cast<LPARAM>(&row));
    return !row.IsRectEmpty() && row.top >= rows.top && row.bottom <= rows.bottom;
}

TEST_F(FileForm, KnowsTheFoldersOfLastTime)
{
    EXPECT_EQ(IDCANCEL, Show(TRUE, [](HWND dialog) {
                  EXPECT_FALSE(IsEnabled(dialog, kRecent)) << "none yet";
                  Key(dialog, VK_ESCAPE);
              }));
    for (const char* name : {"alpha.txt", "sub\\inner.txt", "alpha.txt"})
        EXPECT_EQ(IDOK, Show(TRUE, [&](HWND dialog) { Enter(dialog, name); }));
    EXPECT_EQ(IDOK, Show(FALSE, [&](HWND dialog) {
                  EXPECT_EQ(Path("") + "|" + Path("sub") + "|", RowsOf(dialog, kRecent));
                  EXPECT_EQ(0, ChosenRow(dialog, kRecent)) << "it is shown";
                  Choose(dialog, kRecent, 1);
                  EXPECT_EQ("inner.txt|", RowsOf(dialog, kFiles));
                  Enter(dialog, "..");
                  EXPECT_EQ(0, ChosenRow(dialog, kRecent));
                  Enter(dialog, "C:\\");
                  EXPECT_EQ(-1, ChosenRow(dialog, kRecent));
                  Choose(dialog, kRecent, 1);
                  Enter(dialog, "new");
              }));
    EXPECT_EQ(Path("sub\\new.txt"), m_chosen);
    CStringArray folders;
    EXPECT_EQ(0u, m_product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, m_product.UserKey() + "\\Files", "RecentFolders",
                                              "C:\\a*c:\\A*C:\\b"));
    LoadRecentFolders(folders);
    EXPECT_EQ(2, folders.GetSize()) << "each once";
    for (int i = 0; i < 12; ++i)
        KeepRecentFolder(("C:\\" + std::string(250, static_cast<char>('a' + i))).c_str());
    LoadRecentFolders(folders);
    EXPECT_EQ(kMostRecentFolders, folders.GetSize());
    EXPECT_EQ('l', folders[0][3]);
    EXPECT_EQ('c', folders[9][3]);
}

TEST_F(FileForm, MutationOfTheFoldersGivesFoldersAlone)
{
    const std::string whole = "C:\\Data*C:\\*\\\\server\\share\\deep\\down*D:\\\x83\x5C\\x";
    ForEachMutation([&](unsigned, Random& random) {
        std::string text = whole;
        Damage(random, 1, 4,
               {[&] { text[random() % text.size()] = static_cast<char>(random() % 255 + 1); },
                [&] { text.resize(random() % text.size() + 1); }, [&] { text.insert(random() % text.size(), "*..\\"); },
                [&] { text.insert(random() % text.size(), std::string(random() % 400, 'x')); }});
        EXPECT_EQ(0u, m_product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, m_product.UserKey() + "\\Files",
                                                  "RecentFolders", text.c_str()));
        CStringArray folders;
        LoadRecentFolders(folders);
        for (INT_PTR i = 0; i < folders.GetSize(); ++i) {
            const std::string folder(folders[i]);
            EXPECT_TRUE(folder.size() < MAX_PATH && (folder.find(":\\") == 1 || folder.find("\\\\") == 0)) << text;
            EXPECT_EQ(std::string::npos, folder.find_first_of("*?<>|\"")) << text;
        }
        return folders.GetSize() > 2;
    });
}

TEST_F(FileForm, GoesUpAndMakesFolders)
{
    const auto failed = [&](const char* name, const char* text) { return AnswerBox(Path(name) + text, IDOK); };
    const auto name = [&](const char* expected, const char* typed, int button) {
        return [=](HWND box) {
            EXPECT_EQ("New Folder", TextOf(box));
            EXPECT_EQ(expected, TextOf(box, ZO_IDC_NAME_FIELD));
            Type(box, ZO_IDC_NAME_FIELD, typed);
            Press(box, button);
        };
    };
    FaultSource faults("folders");
    const ZO_FAULTY_CALL(CreateDirectoryA) create(faults, kZogbl, FALSE, ERROR_ACCESS_DENIED);
    CZoFileOpen dialog(FALSE, 0, "txt", Path("kept").c_str(), OFN_HIDEREADONLY, kFilter);
    const DialogDriver driver({[&](HWND window) {
                                   Press(window, kNewFolder); // given up
                                   faults.Arm(1, false);
                                   Press(window, kNewFolder); // fails, then is made under the same name
                                   EXPECT_EQ(0u, Label(window).rfind("made") + 4 - Label(window).size());
                                   EXPECT_EQ("kept", TextOf(window, kName));
                                   EXPECT_EQ(kName, FocusOf(window));
                                   Press(window, kUp);
                                   EXPECT_LE(0, RowOf(window, kFolders, "made"));
                                   while (IsEnabled(window, kUp)) {
                                       SetFocus(::GetDlgItem(window, kUp));
                                       Press(window, kUp);
                                   }
                                   EXPECT_EQ(0, ChosenRow(window, kFolders));
                                   EXPECT_EQ(kName, FocusOf(window)) << "not on a button that is disabled";
                                   Key(window, VK_ESCAPE);
                               },
                               name("New folder", "gone", IDCANCEL), name("New folder", "made", IDOK),
                               failed("made", "\n\nThe folder could not be created."), name("made", "made", IDOK)});
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST_F(FileForm, StandsTidyInEachKindAndSize)
{
    const struct {
        BOOL open;
        DWORD flags;
        std::vector<int> stops;
    } rows[] = {
        {TRUE, OFN_HIDEREADONLY, {kName, kFiles, ZO_IDC_FILE_TYPES, kFolders, kDrives, IDOK, IDCANCEL, kUp}},
        {FALSE,
         0,
         {kName, kFiles, ZO_IDC_FILE_TYPES, kFolders, kDrives, ZO_IDC_FILE_READ_ONLY, IDOK, IDCANCEL, kUp, kNewFolder}},
    };
    for (const auto& row : rows) {
        CSize size;
        for (const int larger : {60, 0}) {
            Show(
                row.open,
                [&](HWND dialog) {
                    EXPECT_EQ(row.stops, ExpectTabRounds(dialog));
                    ExpectTidy(dialog);
                    ChangeLanguage(kGerman);
                    ExpectTidy(dialog);
                    ChangeLanguage(kEnglish);
                    CRect area = AreaOf(dialog);
                    if (larger == 0) {
                        EXPECT_NEAR(size.cx, area.Width(), 1);
                        EXPECT_NEAR(size.cy, area.Height(), 1);
                    }
                    const CRect files = AreaOf(dialog, kFiles), folders = AreaOf(dialog, kFolders);
                    MoveWindow(dialog, area.left, area.top, area.Width() + larger, area.Height() + larger, TRUE);
                    size = AreaOf(dialog).Size();
                    EXPECT_EQ(files.Size() + CSize(larger, larger), AreaOf(dialog, kFiles).Size());
                    EXPECT_EQ(folders.Height() + larger, AreaOf(dialog, kFolders).Height());
                    ExpectTidy(dialog);
                    Key(dialog, VK_ESCAPE);
                },
                row.flags);
        }
    }
}

TEST_F(FileForm, NeedsNoThreads)
{
    const ImportPatch none(
        kZogbl, "CreateThread",
        +[](LPSECURITY_ATTRIBUTES, SIZE_T, LPTHREAD_START_ROUTINE, LPVOID, DWORD, LPDWORD)
             WINAPI -> HANDLE { return nullptr; });
    EXPECT_EQ(IDOK, Show(TRUE, [](HWND dialog) {
                  EXPECT_EQ("alpha.txt|", RowsOf(dialog, kFiles));
                  Enter(dialog, "sub");
                  Enter(dialog, "inner");
              }));
    EXPECT_EQ(Path("sub\\inner.txt"), m_chosen);
}

// Pages ---------------------------------------------------------------------------------------------------------------

TEST_F(FileForm, IsAPageThatTakesTheNameWithItsSheet)
{
    const std::string missing = Path("missing.txt"), none = Path("none.txt");
    const auto show = [&](const DialogDriver::Act& act, const char* box = nullptr) {
        FileSheet sheet(missing);
        const DialogDriver driver({act, box != nullptr ? AnswerBox(none + box, IDOK) : nullptr});
        const INT_PTR result = sheet.DoModal();
        m_chosen = sheet.page.GetPathName();
        return result;
    };
    EXPECT_EQ(IDOK, show([&](HWND window) {
                  EXPECT_FALSE(IsEnabled(window, ID_APPLY_NOW));
                  EXPECT_TRUE(ShowsItsRow(GetDlgItem(PageOf(window), kFolders)));
                  ExpectTidy(PageOf(window));
                  ChangeLanguage(kGerman);
                  ExpectTidy(PageOf(window));
                  ChangeLanguage(kEnglish);
                  Press(window, IDOK);
              }));
    EXPECT_EQ(missing, m_chosen) << "nobody has chosen anything";
    EXPECT_EQ(IDCANCEL, show([&](HWND window) {
                  Type(PageOf(window), kName, "alpha");
                  Press(window, IDCANCEL);
              }));
    EXPECT_EQ(missing, m_chosen);
    EXPECT_EQ(IDCANCEL, show([&](HWND window) {
                  Press(PageOf(window), kUp);
                  EXPECT_TRUE(IsEnabled(window, ID_APPLY_NOW)) << "it is another file";
                  Press(window, IDCANCEL);
              }));
    EXPECT_EQ(IDOK, show(
                        [&](HWND window) {
                            const HWND page = PageOf(window);
                            Type(page, kName, "none");
                            Press(window, IDOK); // refused
                            EXPECT_EQ("none", TextOf(page, kName));
                            SetFocus(GetDlgItem(page, kFolders));
                            SendDlgItemMessageA(page, kFolders, LB_SETCURSEL, RowOf(page, kFolders, "sub"), 0);
                            Key(window, VK_RETURN); // opens the folder
                            EXPECT_EQ("inner.txt|", RowsOf(page, kFiles));
                            DoubleClick(page, kFiles, 0);
                            Press(window, ID_APPLY_NOW);
                            EXPECT_FALSE(IsEnabled(window, ID_APPLY_NOW));
                            ::DeleteFileA(Path("sub\\inner.txt").c_str());
                            Press(window, IDOK); // it was taken, and is not asked for again
                        },
                        "\n\nThe file was not found. Please check the name."));
    EXPECT_EQ(Path("sub\\inner.txt"), m_chosen);
}

TEST_F(FileForm, SurvivesFaultsOnAPage)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10 && !IsDoubleByte(), "the same everywhere, and slow");
    RunDialogFaults(
        [](HWND window) {
            if (const HWND page = PageOf(window)) {
                SetDlgItemTextA(page, kName, "alpha");
                Command(window, IDOK);
            }
        },
        [&](const FaultRun& run) {
            const std::string start = Path("before");
            CString chosen;
            const INT_PTR result = ResultOr(-1, [&] { // sheets throw when they are made
                FileSheet sheet(start);
                const INT_PTR answer = sheet.DoModal();
                run.Stop();
                chosen = sheet.page.GetPathName();
                return answer;
            });
            run.Stop();
            EXPECT_TRUE(result == IDOK || (run.Fired() && (result == -1 || result == IDCANCEL))) << result;
            EXPECT_TRUE(result != IDOK || run.Fired() || chosen == Path("alpha.txt").c_str());
        },
        {.memory = 31, .system = 11});
}
