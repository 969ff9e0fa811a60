// The form for files, in its dialog and its pages: drives that do not answer, recent folders, new ones, sizes.
#include "dialog_faults.h"

#include "support/product_test.h"

#include <common/wait.h>
#include <common/without_throwing.h>

#include <zogbl/file_open.h>
#include <zogbl/file_open_page.h>
#include <zogbl/file_open_wizard_page.h>
#include <zogbl/resource_ids.h>
#include <zogbl/select_directory.h>

#include <afxcmn.h>

#include <atomic>

#include "dialogs/files/recent_folders.h"

namespace {

constexpr int kName = ZO_IDC_FILE_NAME;
constexpr int kFiles = ZO_IDC_FILE_LIST;
constexpr int kFolders = ZO_IDC_FILE_FOLDERS;
constexpr int kDrives = ZO_IDC_FILE_DRIVES;
constexpr int kRecent = ZO_IDC_FILE_RECENT;
constexpr int kLabel = ZO_IDC_FILE_FOLDER;
constexpr int kUp = ZO_IDC_FILE_UP;
constexpr int kNewFolder = ZO_IDC_FILE_NEW_FOLDER;
constexpr char kFilter[] = "Texts\0*.txt\0All files\0*.*\0";
constexpr char kUnreadable[] = "J:\\\n\nThe folder cannot be read.";

// Ten drives, J: to S:, that do not answer before they are told to.
HANDLE g_answer = nullptr;
std::atomic<int> g_waiting{0}, g_touched{0};
std::string g_behind; // the folder that J: then is; empty: it is not ready

bool IsDead(LPCSTR path) { return path[0] >= 'J' && path[0] <= 'S' && path[1] == ':'; }
void Wait()
{
    ++g_waiting;
    WaitForSingleObject(g_answer, INFINITE);
    --g_waiting;
}
/// What a call gets to see instead.
std::string Behind(LPCSTR path)
{
    if (!IsDead(path))
        return path;
    ++g_touched;
    Wait();
    return g_behind.empty() ? "Q:\\none" : g_behind + (path + 2);
}
HANDLE WINAPI FindFirst(LPCSTR path, WIN32_FIND_DATAA* entry)
{
    const HANDLE found = FindFirstFileA(Behind(path).c_str(), entry);
    if (IsDead(path) && g_behind.empty())
        SetLastError(ERROR_NOT_READY);
    return found;
}
DWORD WINAPI Attributes(LPCSTR path) { return GetFileAttributesA(Behind(path).c_str()); }
BOOL WINAPI Create(LPCSTR path, LPSECURITY_ATTRIBUTES security)
{
    return CreateDirectoryA(Behind(path).c_str(), security);
}
UINT WINAPI DriveType(LPCSTR root)
{
    if (!IsDead(root))
        return GetDriveTypeA(root);
    if (root[0] > 'N')
        Wait(); // even for this
    return DRIVE_REMOTE;
}
DWORD WINAPI Connection(LPCSTR drive, LPSTR name, DWORD* size)
{
    Wait();
    lstrcpynA(name, "\\\\server\\share", static_cast<int>(*size));
    return drive[0] == 'J' ? DWORD{NO_ERROR} : DWORD{ERROR_CONNECTION_UNAVAIL};
}

class FileForm : public ProductTest {
protected:
    FileForm()
    {
        ::CreateDirectoryA(Path("sub").c_str(), nullptr);
        for (const char* name : {"alpha.txt", "beta.bin", "sub\\inner.txt"})
            m_folder.Write(name, name);
    }
    static std::string Label(HWND dialog) { return TextOf(dialog, kLabel); }
    static void Enter(HWND dialog, const std::string& name)
    {
        Type(dialog, kName, name);
        Key(dialog, VK_RETURN);
    }
    INT_PTR Show(BOOL open, const DialogDriver::Act& act, DWORD flags = OFN_HIDEREADONLY, const std::string& start = {})
    {
        CZoFileOpen dialog(open, 0, "txt", (start.empty() ? Path("") : start).c_str(), flags, kFilter);
        const DialogDriver driver({act});
        const INT_PTR result = dialog.DoModal();
        m_chosen = dialog.GetPathName();
        return result;
    }
    std::string m_chosen;
};

class DeadDrives : public FileForm {
protected:
    DeadDrives()
    {
        g_answer = CreateEventA(nullptr, TRUE, FALSE, nullptr);
        g_touched = 0;
        g_behind.clear();
    }
    ~DeadDrives() override
    {
        Answer();
        EXPECT_TRUE(WaitUntil([] { return g_waiting == 0; }));
        Sleep(50); // the threads end
        EXPECT_EQ(0u, SetErrorMode(m_mode)) << "of the system's boxes";
        CloseHandle(g_answer);
    }
    void Answer(const std::string& folder = {})
    {
        g_behind = folder;
        SetEvent(g_answer);
    }
    void AnswerAndWait(HWND dialog)
    {
        Answer(Path(""));
        EXPECT_TRUE(WaitUntil([&] { return Label(dialog).find("Opening") != 0; }));
    }

    const UINT m_mode = SetErrorMode(0);
    const ImportPatch m_drives{kZogbl, "GetLogicalDrives",
                               +[]() WINAPI -> DWORD { return GetLogicalDrives() | (0x3FF << ('J' - 'A')); }};
    const ImportPatch m_types{kZogbl, "GetDriveTypeA", &DriveType};
    const ImportPatch m_find{kZogbl, "FindFirstFileA", &FindFirst};
    const ImportPatch m_attributes{kZogbl, "GetFileAttributesA", &Attributes};
    const ImportPatch m_create{kZogbl, "CreateDirectoryA", &Create};
    const ImportPatch m_network{kZogbl, "GetProcAddress", +[](HMODULE module, LPCSTR name) WINAPI -> FARPROC {
                                    return lstrcmpA(name, "WNetGetConnectionA") == 0
                                               ? reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Connection))
                                               : GetProcAddress(module, name);
                                }};
};

} // namespace

TEST_F(DeadDrives, AreListedAtOnceAndTouchedByNobody)
{
    const DWORD start = GetTickCount();
    Show(TRUE, [&](HWND dialog) {
        EXPECT_LT(GetTickCount() - start, 5000u);
        const std::string drives = RowsOf(dialog, kDrives);
        EXPECT_NE(std::string::npos, drives.find("J:|K:|L:|M:|N:|O:|P:|Q:|R:|S:|"));
        EXPECT_EQ("alpha.txt|", RowsOf(dialog, kFiles));
        Choose(dialog, ZO_IDC_FILE_TYPES, 1);
        EXPECT_EQ("alpha.txt|beta.bin|", RowsOf(dialog, kFiles));
        EXPECT_EQ(0, g_touched);
        const int chosen = ChosenRow(dialog, kDrives);
        Answer();
        EXPECT_TRUE(WaitUntil([&] { return RowOf(dialog, kDrives, "S:  \\\\server\\share (disconnected)") >= 0; }));
        EXPECT_TRUE(WaitUntil([&] { return RowOf(dialog, kDrives, "J:  \\\\server\\share") >= 0; }));
        EXPECT_EQ(chosen, ChosenRow(dialog, kDrives));
        ChangeLanguage(kGerman);
        EXPECT_LE(0, RowOf(dialog, kDrives, "K:  \\\\server\\share (nicht verbunden)"));
        EXPECT_EQ(0, g_touched);
        Key(dialog, VK_ESCAPE);
    });
}

TEST_F(DeadDrives, LeaveTheDialogItsOwnMaster)
{
    const auto open = [](HWND dialog) {
        const DWORD start = GetTickCount();
        Choose(dialog, kDrives, RowOf(dialog, kDrives, "J:"));
        EXPECT_EQ("Opening J:\\ ...", Label(dialog));
        EXPECT_EQ("alpha.txt|", RowsOf(dialog, kFiles)) << "what was there stays meanwhile";
        EXPECT_LT(GetTickCount() - start, 3000u);
    };
    for (const auto& way : WaysToGiveUp()) { // while it is being opened
        EXPECT_EQ(IDCANCEL, Show(TRUE, [&](HWND dialog) {
                      open(dialog);
                      way(dialog);
                  }));
        EXPECT_EQ(IDCANCEL, Show(
                                TRUE,
                                [&](HWND dialog) { // from its first moment on
                                    EXPECT_EQ("Opening J:\\sub\\x.txt ...", Label(dialog));
                                    EXPECT_EQ("x.txt", TextOf(dialog, kName));
                                    way(dialog);
                                },
                                OFN_HIDEREADONLY, "J:\\sub\\x.txt"));
    }
    EXPECT_EQ(IDOK, Show(TRUE, [&](HWND dialog) {
                  const int drive = ChosenRow(dialog, kDrives);
                  const std::string folder = Label(dialog);
                  open(dialog);
                  ChangeLanguage(kGerman);
                  EXPECT_EQ(0u, Label(dialog).find("J:\\ wird ge"));
                  ChangeLanguage(kEnglish);
                  Choose(dialog, kDrives, drive); // back
                  EXPECT_EQ(folder, Label(dialog));
                  open(dialog);
                  Enter(dialog, "sub"); // another choice
                  EXPECT_EQ("inner.txt|", RowsOf(dialog, kFiles));
                  constexpr UINT kNoBoxes = SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX;
                  EXPECT_EQ(kNoBoxes, SetErrorMode(kNoBoxes)) << "for J:, which is still being opened";
                  Enter(dialog, "J:\\file");
                  EXPECT_EQ("Opening J:\\file ...", Label(dialog));
                  const int touched = g_touched;
                  Key(dialog, VK_RETURN);
                  EXPECT_EQ(touched, g_touched) << "it is being looked up already";
                  Type(dialog, kName, "J:\\fil");
                  EXPECT_EQ(std::string::npos, Label(dialog).find("Opening")) << "another name";
                  Answer(Path("none"));
                  Settle();
                  EXPECT_EQ("inner.txt|", RowsOf(dialog, kFiles)) << "nobody wants the answers any more";
                  Enter(dialog, "inner");
              }));
    EXPECT_EQ(Path("sub\\inner.txt"), m_chosen);
}

TEST_F(DeadDrives, AreShownWhenTheyAnswer)
{
    EXPECT_EQ(IDOK, Show(
                        TRUE,
                        [&](HWND dialog) {
                            Choose(dialog, kDrives, RowOf(dialog, kDrives, "J:"));
                            Choose(dialog, ZO_IDC_FILE_TYPES, 1);
                            EXPECT_EQ("Opening J:\\ ...", Label(dialog)) << "with other files";
                            Answer(Path(""));
                            EXPECT_TRUE(WaitUntil([&] { return RowsOf(dialog, kFiles) == "alpha.txt|beta.bin|"; }));
                            EXPECT_EQ("J:\\", Label(dialog));
                            EXPECT_EQ("J:\\|sub|", RowsOf(dialog, kFolders));
                            ResetEvent(g_answer);
                            Enter(dialog, "alpha");
                            EXPECT_EQ("Opening J:\\alpha ...", Label(dialog));
                            AnswerAndWait(dialog);
                        },
                        OFN_HIDEREADONLY | OFN_FILEMUSTEXIST));
    EXPECT_EQ("J:\\alpha.txt", m_chosen);
    ResetEvent(g_answer);
    CZoFileOpen dialog(TRUE, 0, "txt", Path("").c_str(), OFN_HIDEREADONLY, kFilter);
    bool isTold = false;
    const DialogDriver driver({[&](HWND window) {
                                   const int drive = ChosenRow(window, kDrives);
                                   Choose(window, kDrives, RowOf(window, kDrives, "J:"));
                                   Answer();
                                   EXPECT_TRUE(WaitUntil([&] { return isTold; }));
                                   EXPECT_EQ(drive, ChosenRow(window, kDrives));
                                   Key(window, VK_ESCAPE);
                               },
                               [&](HWND box) {
                                   isTold = true;
                                   AnswerBox(kUnreadable, IDOK)(box);
                               }});
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST_F(DeadDrives, DoNotDisturbWhoIsElsewhere)
{
    CZoFileOpen dialog(FALSE, 0, "txt", "J:\\sub\\deep\\x.txt", OFN_HIDEREADONLY, kFilter);
    dialog.m_ofn.lpstrInitialDir = "D:\\";
    HWND window = nullptr;
    const DialogDriver driver({[&](HWND open) {
                                   window = open;
                                   Press(window, kNewFolder);
                                   EXPECT_TRUE(WaitUntil([&] { return Label(window).find("Opening") != 0; }));
                                   EXPECT_EQ(3, g_touched) << "not each folder of a drive that is not ready";
                                   EXPECT_EQ("x.txt", TextOf(window, kName));
                                   Key(window, VK_ESCAPE);
                               },
                               [&](HWND box) {
                                   Answer();
                                   for (int i = 0; i < 30; ++i, Sleep(10))
                                       Settle();
                                   EXPECT_EQ(0u, Label(window).find("Opening")) << "a box is open over it";
                                   Press(box, IDCANCEL);
                               }});
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST_F(DeadDrives, MakeAFolderOnce)
{
    CZoFileOpen dialog(FALSE, 0, "txt", Path("").c_str(), OFN_HIDEREADONLY, kFilter);
    const DialogDriver driver({[&](HWND window) {
                                   Choose(window, kDrives, RowOf(window, kDrives, "J:"));
                                   AnswerAndWait(window);
                                   ResetEvent(g_answer);
                                   Press(window, kNewFolder);
                                   EXPECT_EQ("Opening J:\\made ...", Label(window));
                                   Choose(window, ZO_IDC_FILE_TYPES, 1);
                                   AnswerAndWait(window);
                                   EXPECT_EQ("J:\\made", Label(window));
                                   Key(window, VK_ESCAPE);
                               },
                               [](HWND box) {
                                   Type(box, ZO_IDC_NAME_FIELD, "made");
                                   Press(box, IDOK);
                               }});
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST_F(DeadDrives, LeaveTheFolderPickerItsOwnMaster)
{
    CWnd owner;
    EXPECT_TRUE(owner.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 50, 50, 300, 200, nullptr, nullptr));
    char chosen[MAX_PATH];
    const auto show = [&](std::string start, const DialogDriver::Act& act, const DialogDriver::Act& box = nullptr) {
        const DialogDriver driver({act, box});
        return ZoSelectDirectory(chosen, sizeof chosen, owner, start.data(),
                                 ZO_SELECT_KEEP_CASE | ZO_SELECT_CREATE_INITIAL, 0, nullptr, "Where?");
    };
    const auto label = [](HWND dialog) { return TextOf(dialog, ZO_IDC_FOLDER_INSTRUCTION); };
    const auto path = [](HWND dialog) { return TextOf(dialog, ZO_IDC_FOLDER_PATH); };
    const auto answer = [&](HWND dialog, const std::string& folder) {
        Answer(folder);
        EXPECT_TRUE(WaitUntil([&] { return label(dialog) == "Where?"; }));
    };
    for (const auto& way : WaysToGiveUp()) {
        EXPECT_EQ(IDCANCEL, show("J:\\sub", [&](HWND dialog) {
                      EXPECT_EQ("Opening J:\\sub ...", label(dialog));
                      EXPECT_EQ("J:\\sub", path(dialog));
                      way(dialog);
                  }));
    }
    EXPECT_EQ(IDOK, show("J:\\sub", [&](HWND dialog) {
                  Type(dialog, ZO_IDC_FOLDER_PATH, "J:\\typed");
                  answer(dialog, Path(""));
                  EXPECT_EQ("J:\\typed", path(dialog));
                  ResetEvent(g_answer);
                  auto& tree = *static_cast<CTreeCtrl*>(CWnd::FromHandle(::GetDlgItem(dialog, ZO_IDC_FOLDER_TREE)));
                  const HTREEITEM sub = tree.GetSelectedItem(), root = tree.GetParentItem(sub);
                  EXPECT_STREQ("sub", tree.GetItemText(sub));
                  tree.SelectItem(root);
                  tree.SetFocus();
                  Key(dialog, VK_LEFT);
                  Key(dialog, VK_RIGHT);
                  EXPECT_EQ("Opening J:\\ ...", label(dialog));
                  EXPECT_FALSE(tree.GetItemState(root, TVIS_EXPANDED) & TVIS_EXPANDED);
                  ChangeLanguage(kGerman);
                  EXPECT_EQ("J:\\ wird ge\xF6"
                            "ffnet ...",
                            label(dialog));
                  ChangeLanguage(kEnglish);
                  ::CreateDirectoryA(Path("later").c_str(), nullptr);
                  answer(dialog, Path(""));
                  EXPECT_TRUE(tree.GetItemState(root, TVIS_EXPANDED) & TVIS_EXPANDED);
                  EXPECT_STREQ("later", tree.GetItemText(tree.GetChildItem(root)));
                  ResetEvent(g_answer);
                  Type(dialog, ZO_IDC_FOLDER_PATH, "sub");
                  Key(dialog, VK_RETURN);
                  EXPECT_EQ("Opening J:\\sub ...", label(dialog));
                  Type(dialog, ZO_IDC_FOLDER_PATH, "later"); // another one
                  EXPECT_EQ("Where?", label(dialog));
                  Key(dialog, VK_RETURN);
                  answer(dialog, Path(""));
              }));
    EXPECT_STREQ("J:\\later", chosen);
    ResetEvent(g_answer);
    EXPECT_EQ(IDCANCEL, show(
                            Path(""),
                            [&](HWND dialog) {
                                Type(dialog, ZO_IDC_FOLDER_PATH, "J:\\new");
                                Key(dialog, VK_RETURN);
                                answer(dialog, "");
                                EXPECT_EQ("J:\\new", path(dialog));
                                Key(dialog, VK_ESCAPE);
                            },
                            AnswerBox("J:\\new\n\nThe folder cannot be read.", IDOK)));
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

namespace {

/// Whether the chosen row can be seen.
bool ShowsItsRow(HWND list)
{
    CRect rows, row;
    GetClientRect(list, rows);
    SendMessageA(list, LB_GETITEMRECT, SendMessageA(list, LB_GETCURSEL, 0, 0), reinterpret_cast<LPARAM>(&row));
    return !row.IsRectEmpty() && row.top >= rows.top && row.bottom <= rows.bottom;
}

struct FileSheet : CZoPropertySheet {
    explicit FileSheet(const std::string& start, DWORD flags = OFN_HIDEREADONLY | OFN_FILEMUSTEXIST)
        : CZoPropertySheet("Files"), page(TRUE, 0, "txt", start.c_str(), flags, kFilter)
    {
        AddPage(&page);
    }
    CZoFileOpenPage page;
};

} // namespace

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

TEST_F(DeadDrives, LetAPageCloseItsSheetWhenTheyAnswer)
{
    FileSheet sheet(Path(""));
    const DialogDriver driver({[&](HWND window) {
        const HWND page = PageOf(window);
        Type(page, kName, "J:\\alpha");
        Press(window, IDOK);
        EXPECT_EQ("Opening J:\\alpha ...", Label(page));
        AnswerAndWait(page);
    }});
    EXPECT_EQ(IDOK, sheet.DoModal());
    EXPECT_STREQ("J:\\alpha.txt", sheet.page.GetPathName());
}

TEST_F(DeadDrives, LetAWizardGoOnWhenTheyAnswer)
{
    CZoFileOpenWizardPage page(TRUE, 0, "txt", Path("").c_str(), OFN_HIDEREADONLY | OFN_FILEMUSTEXIST, kFilter);
    CZoWizardSheet wizard(ZO_IDS_PROMPT_TITLE);
    EXPECT_TRUE(wizard.AddPage(&page));
    const auto show = [&](const DialogDriver::Act& act) {
        const DialogDriver driver({act});
        return wizard.DoModal();
    };
    EXPECT_EQ(IDCANCEL, show([](HWND window) { Key(window, VK_ESCAPE); })) << "nothing is lost";
    EXPECT_EQ(IDOK, show([&](HWND window) {
                  ExpectTidy(window);
                  ExpectTidy(page);
                  Press(window, IDOK);
                  EXPECT_EQ(::GetDlgItem(page, kName), GetFocus()) << "there is no name";
                  SetFocus(::GetDlgItem(page, kFolders));
                  SendDlgItemMessageA(page, kFolders, LB_SETCURSEL, RowOf(page, kFolders, "sub"), 0);
                  Key(window, VK_RETURN);
                  EXPECT_EQ("inner.txt|", RowsOf(page, kFiles));
                  Type(page, kName, "J:\\alpha");
                  Press(window, IDOK);
                  EXPECT_EQ("Opening J:\\alpha ...", Label(page));
                  AnswerAndWait(page);
              }));
    EXPECT_STREQ("J:\\alpha.txt", page.GetPathName());
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
