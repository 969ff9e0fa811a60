// Drives that do not answer: the form for files, its pages and the folder picker over them.
#include "file_form_test.h"

#include <common/wait.h>

#include <zogbl/file_open_wizard_page.h>
#include <zogbl/select_directory.h>

#include <afxcmn.h>

#include <atomic>

namespace {

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
                  EXPECT_EQ(0u, label(dialog).find("J:\\ wird ge"));
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

TEST_F(DeadDrives, LetAPageCloseItsSheetWhenTheyAnswer)
{
    FileSheet sheet(Path(""));
    CZoFileOpenPage other(TRUE);
    sheet.AddPage(&other);
    const DialogDriver driver({[&](HWND window) {
        const HWND page = PageOf(window);
        Type(page, kName, "J:\\alpha.txt");
        Press(window, ID_APPLY_NOW);
        AnswerAndWait(page);
        EXPECT_TRUE(WaitUntil([&] { return !IsEnabled(window, ID_APPLY_NOW); })) << "the sheet stays";
        ResetEvent(g_answer);
        Type(page, kName, "J:\\alpha");
        Press(window, IDOK);
        ShowPage(window, 1);
        Answer(Path(""));
        for (int i = 0; i < 30; ++i, Sleep(10))
            Settle();
        EXPECT_EQ("Opening J:\\alpha ...", Label(page)) << "while another page is shown";
        ShowPage(window, 0);
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
