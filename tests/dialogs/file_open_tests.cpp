// The dialog for files, driven as a person would.
#include "driven_dialog.h"
#include "product/registered_product.h"
#include "support/test.h"

#include <zogbl/file_open.h>
#include <zogbl/resource_ids.h>

namespace {

constexpr int kName = ZO_IDC_FILE_NAME;
constexpr int kFiles = ZO_IDC_FILE_LIST;
constexpr int kFolders = ZO_IDC_FILE_FOLDERS;
constexpr int kTypes = ZO_IDC_FILE_TYPES;
constexpr int kDrives = ZO_IDC_FILE_DRIVES;
constexpr char kFilter[] = "Texts\0*.txt;*.ini\0All files\0*.*\0";
constexpr DWORD kHide = OFN_HIDEREADONLY;

/// The rows of a list, each with a '|' behind it.
std::string Rows(HWND dialog, int list, int from = 0)
{
    const HWND control = ::GetDlgItem(dialog, list);
    const bool isCombo = list == kTypes || list == kDrives;
    std::string rows;
    const auto count = static_cast<int>(::SendMessageA(control, isCombo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0));
    for (int i = from; i < count; ++i) {
        char text[2 * MAX_PATH] = "";
        ::SendMessageA(control, isCombo ? CB_GETLBTEXT : LB_GETTEXT, static_cast<WPARAM>(i),
                       reinterpret_cast<LPARAM>(text));
        rows += std::string(text) + "|";
    }
    return rows;
}

/// Selects a row and clicks it twice.
void DoubleClick(HWND dialog, int list, const std::string& text)
{
    const HWND control = ::GetDlgItem(dialog, list);
    const LRESULT row =
        ::SendMessageA(control, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.c_str()));
    ASSERT_GE(row, 0) << text;
    Choose(dialog, list, static_cast<int>(row));
    ::SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(list, LBN_DBLCLK), reinterpret_cast<LPARAM>(control));
}

void Enter(HWND dialog, const std::string& name)
{
    Type(dialog, kName, name);
    Key(dialog, VK_RETURN);
}

std::string Box(const std::string& path, const char* text) { return path + "\n\n" + text; }

constexpr char kInvalid[] = "This is not a valid file name.";
constexpr char kTooLong[] = "The path is too long.";
constexpr char kNoFolder[] = "The folder does not exist. Please check the path.";
constexpr char kNoFile[] = "The file was not found. Please check the name.";
constexpr char kExists[] = "This file already exists. Do you want to replace it?";
constexpr char kProtected[] = "This file is write-protected. Please choose another name.";
constexpr char kCreate[] = "This file does not exist. Do you want to create it?";

class FileOpen : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(ZoGblLoadLanguageDLL());
        for (const char* name : {"alpha.txt", "Beta.INI", "gamma.bin", "plain", "sub\\inner.txt", "locked.txt"}) {
            ::CreateDirectoryA(Path("sub").c_str(), nullptr);
            m_folder.Write(name, name);
        }
        ::SetFileAttributesA(Path("locked.txt").c_str(), FILE_ATTRIBUTE_READONLY);
        m_folder.Write("hidden.txt", "");
        ::SetFileAttributesA(Path("hidden.txt").c_str(), FILE_ATTRIBUTE_HIDDEN);
        ::GetCurrentDirectoryA(sizeof m_current, m_current);
    }
    void TearDown() override
    {
        ::SetFileAttributesA(Path("locked.txt").c_str(), FILE_ATTRIBUTE_NORMAL);
        ::SetFileAttributesA(Path("hidden.txt").c_str(), FILE_ATTRIBUTE_NORMAL);
        char current[MAX_PATH] = "";
        ::GetCurrentDirectoryA(sizeof current, current);
        EXPECT_STREQ(m_current, current) << "the dialog leaves the current folder alone";
        ZoGblDumpLanguageDLL();
    }
    std::string Path(const std::string& name) const { return m_folder.Path(name); }

    RegisteredProduct m_product;
    TestFolder m_folder;
    char m_current[MAX_PATH] = "";
};

} // namespace

TEST_F(FileOpen, ChecksWhatIsTyped)
{
    enum Extra { kNothing, kYes, kNo, kOk };
    const std::string missing = Path("gone\\file.txt");
    const struct {
        BOOL open;
        DWORD flags;
        std::string typed, box;
        Extra answer;
        std::string chosen; // empty: it stays open
    } rows[] = {
        {TRUE, OFN_FILEMUSTEXIST, "alpha.txt", "", kNothing, Path("alpha.txt")},
        {TRUE, OFN_FILEMUSTEXIST, "  alpha ", "", kNothing, Path("alpha.txt")},
        {TRUE, OFN_FILEMUSTEXIST, "ALPHA.TXT", "", kNothing, Path("ALPHA.TXT")},
        {TRUE, OFN_FILEMUSTEXIST, "plain", "", kNothing, Path("plain")}, // which exists without the extension
        {TRUE, OFN_FILEMUSTEXIST, "sub/inner", "", kNothing, Path("sub\\inner.txt")},
        {TRUE, OFN_FILEMUSTEXIST, "sub\\..\\.\\alpha.txt", "", kNothing, Path("alpha.txt")},
        {TRUE, OFN_FILEMUSTEXIST, Path("sub\\inner.txt"), "", kNothing, Path("sub\\inner.txt")},
        {TRUE, OFN_FILEMUSTEXIST, "none", Box(Path("none.txt"), kNoFile), kOk, ""},
        {TRUE, OFN_FILEMUSTEXIST, missing, Box(missing, kNoFolder), kOk, ""},
        {TRUE, OFN_PATHMUSTEXIST, missing, Box(missing, kNoFolder), kOk, ""},
        {TRUE, OFN_PATHMUSTEXIST, "none", "", kNothing, Path("none.txt")},
        {TRUE, 0, missing, "", kNothing, missing},
        {TRUE, OFN_CREATEPROMPT, "none", Box(Path("none.txt"), kCreate), kYes, Path("none.txt")},
        {TRUE, OFN_CREATEPROMPT, "none", Box(Path("none.txt"), kCreate), kNo, ""},
        {TRUE, OFN_OVERWRITEPROMPT, "alpha", "", kNothing, Path("alpha.txt")}, // which is for saving
        {TRUE, 0, "a<b", Box("a<b", kInvalid), kOk, ""},
        {TRUE, 0, "aa:b", Box("aa:b", kInvalid), kOk, ""},
        {TRUE, 0, "a|b\"", Box("a|b\"", kInvalid), kOk, ""},
        {TRUE, 0, "NUL", Box("NUL", kInvalid), kOk, ""},
        {TRUE, 0, "\"a*b\"", Box("a*b", kInvalid), kOk, ""}, // no pattern
        {TRUE, 0, "gone\\", Box(Path("gone"), kNoFolder), kOk, ""},
        {FALSE, OFN_OVERWRITEPROMPT, "new", "", kNothing, Path("new.txt")},
        {FALSE, OFN_OVERWRITEPROMPT, "new.x", "", kNothing, Path("new.x.txt")},
        {FALSE, OFN_OVERWRITEPROMPT, "new.TXT", "", kNothing, Path("new.TXT")},
        {FALSE, OFN_OVERWRITEPROMPT, "new.ini", "", kNothing, Path("new.ini")}, // of another type
        {FALSE, OFN_OVERWRITEPROMPT, "new.", "", kNothing, Path("new")},
        {FALSE, OFN_OVERWRITEPROMPT, "\"Fax 22.11.1998\"", "", kNothing, Path("Fax 22.11.1998")},
        {FALSE, OFN_OVERWRITEPROMPT, "Fax 22.11.1998", "", kNothing, Path("Fax 22.11.1998.txt")},
        {FALSE, OFN_OVERWRITEPROMPT, "\"new\"", "", kNothing, Path("new")},
        {FALSE, OFN_OVERWRITEPROMPT, "alpha", Box(Path("alpha.txt"), kExists), kYes, Path("alpha.txt")},
        {FALSE, OFN_OVERWRITEPROMPT, "alpha", Box(Path("alpha.txt"), kExists), kNo, ""},
        {FALSE, OFN_NOREADONLYRETURN, "locked", Box(Path("locked.txt"), kProtected), kOk, ""},
        {FALSE, OFN_NOREADONLYRETURN, "alpha", "", kNothing, Path("alpha.txt")},
        {FALSE, OFN_OVERWRITEPROMPT | OFN_NOVALIDATE, "alpha", "", kNothing, Path("alpha.txt")},
    };
    static constexpr int kButtons[] = {0, IDYES, IDNO, IDOK};
    for (const auto& row : rows) {
        SCOPED_TRACE((row.open ? "open " : "save ") + row.typed);
        const std::string start = Path("start.me");
        CZoFileOpen dialog(row.open, 0, "txt", start.c_str(), row.flags | kHide, kFilter);
        const auto act = [&](HWND open) {
            EXPECT_EQ("start.me", TextOf(open, kName));
            EXPECT_EQ(row.open ? "Open" : "Save As", TextOf(open));
            Enter(open, row.typed);
            if (row.chosen.empty()) {
                EXPECT_EQ(row.typed, TextOf(open, kName)) << "nothing typed is lost";
                EXPECT_EQ(kName, FocusOf(open));
                Key(open, VK_ESCAPE);
            }
        };
        INT_PTR result;
        if (row.answer == kNothing) {
            const DialogDriver driver({act});
            result = dialog.DoModal();
        } else {
            const DialogDriver driver({act, AnswerBox(row.box, kButtons[row.answer])});
            result = dialog.DoModal();
        }
        EXPECT_EQ(row.chosen.empty() ? IDCANCEL : IDOK, result);
        EXPECT_STREQ((row.chosen.empty() ? start : row.chosen).c_str(), dialog.GetPathName());
    }
}

TEST_F(FileOpen, LaysItselfOut)
{
    const std::string folder = Path(std::string(120, 'w'));
    ::CreateDirectoryA(folder.c_str(), nullptr);
    LONG height = 0;
    for (const DWORD flags : {DWORD{0}, DWORD{OFN_READONLY}, DWORD{kHide}}) {
        SCOPED_TRACE(flags);
        CZoFileOpen dialog(TRUE, 0, "txt", (folder + "\\").c_str(), flags | OFN_EXTENSIONDIFFERENT, kFilter);
        const DialogDriver driver({[&](HWND open) {
            const HWND box = ::GetDlgItem(open, ZO_IDC_FILE_READ_ONLY);
            EXPECT_EQ(flags != kHide, ::IsWindowVisible(box) != FALSE);
            EXPECT_EQ(flags == OFN_READONLY, ::IsDlgButtonChecked(open, ZO_IDC_FILE_READ_ONLY) == BST_CHECKED);
            CRect area, part;
            ::GetWindowRect(open, &area);
            EXPECT_TRUE(flags == kHide ? area.Height() < height : height == 0 || area.Height() == height);
            height = area.Height();
            for (const int control : {kName, kTypes, kDrives, flags == kHide ? kTypes : ZO_IDC_FILE_READ_ONLY}) {
                ::GetWindowRect(::GetDlgItem(open, control), &part);
                EXPECT_LT(part.bottom, area.bottom - 4);
            }
            const auto rowOf = [&](int list, UINT ask, int index) {
                return ::SendDlgItemMessageA(open, list, ask, static_cast<WPARAM>(index), 0);
            };
            EXPECT_EQ(rowOf(ZO_IDC_FILE_FOLDERS, LB_GETITEMHEIGHT, 0), rowOf(ZO_IDC_FILE_LIST, LB_GETITEMHEIGHT, 0));
            EXPECT_EQ(rowOf(kDrives, CB_GETITEMHEIGHT, -1), rowOf(kTypes, CB_GETITEMHEIGHT, -1));
            const std::string shown = TextOf(open, ZO_IDC_FILE_FOLDER);
            EXPECT_EQ("www...", shown.substr((std::max<size_t>)(shown.size(), 6) - 6));
            Type(open, kName, Path("alpha.txt"));
            Press(open, IDOK);
        }});
        EXPECT_EQ(IDOK, dialog.DoModal());
        EXPECT_EQ(flags & OFN_READONLY, dialog.m_ofn.Flags & (OFN_READONLY | OFN_EXTENSIONDIFFERENT));
    }
}

TEST_F(FileOpen, GoesThroughFoldersAndTypes)
{
    const bool shown = (::GetFileAttributesA(Path("hidden.txt").c_str()) & FILE_ATTRIBUTE_HIDDEN) == 0;
    const std::string texts = shown ? "alpha.txt|Beta.INI|hidden.txt|locked.txt|" : "alpha.txt|Beta.INI|locked.txt|";
    CZoFileOpen dialog(TRUE, 0, "txt", Path("").c_str(), kHide, kFilter);
    const DialogDriver driver({[&](HWND open) {
        const auto level = [&] { return static_cast<int>(::SendDlgItemMessageA(open, kFolders, LB_GETCURSEL, 0, 0)); };
        const int depth = level();
        EXPECT_EQ("Texts|All files|", Rows(open, kTypes));
        EXPECT_EQ(texts, Rows(open, kFiles));
        EXPECT_EQ("sub|", Rows(open, kFolders, depth + 1));
        EXPECT_EQ(":\\|", Rows(open, kFolders).substr(1, 3)) << "the drive stands first";
        Enter(open, "*a.*");
        EXPECT_EQ("alpha.txt|Beta.INI|gamma.bin|", Rows(open, kFiles));
        Enter(open, "sub\\in?er*;x");
        EXPECT_EQ("inner.txt|", Rows(open, kFiles));
        EXPECT_EQ(depth + 1, level());
        Choose(open, kTypes, 1);
        Enter(open, "..");
        EXPECT_EQ("", TextOf(open, kName));
        EXPECT_NE(std::string::npos, Rows(open, kFiles).find("gamma.bin|"));
        DoubleClick(open, kFolders, "sub");
        EXPECT_EQ("inner.txt|", Rows(open, kFiles));
        Choose(open, kFiles, 0);
        EXPECT_EQ("inner.txt", TextOf(open, kName));

        AccessKey(open, 'f'); // up one folder by the keyboard alone
        EXPECT_EQ(kFolders, FocusOf(open));
        Key(open, VK_UP);
        Key(open, VK_RETURN);
        EXPECT_EQ(depth, level());
        Choose(open, kFolders, 0);
        Key(open, VK_RETURN);
        EXPECT_EQ(0, level()) << "the root";
        const int order[] = {kName, kFiles, kTypes, kFolders, kDrives, IDOK, IDCANCEL, kName};
        AccessKey(open, 'n');
        for (const int control : order) {
            EXPECT_EQ(control, FocusOf(open));
            Key(open, VK_TAB);
        }
        const std::string drives = Rows(open, kDrives);
        const size_t other = drives.find("Z:");
        ASSERT_NE(std::string::npos, other);
        Choose(open, kDrives,
               static_cast<int>(std::count(drives.begin(), drives.begin() + static_cast<int>(other), '|')));
        EXPECT_EQ("Z:\\|", Rows(open, kFolders).substr(0, 4));
        Enter(open, Path(""));
        EXPECT_EQ(depth, level());
        DoubleClick(open, kFiles, "gamma.bin");
    }});
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_STREQ(Path("gamma.bin").c_str(), dialog.GetPathName());
    EXPECT_STREQ("gamma.bin", dialog.GetFileName());
    EXPECT_STREQ("bin", dialog.GetFileExt());
    EXPECT_EQ(2u, dialog.m_ofn.nFilterIndex);
    EXPECT_EQ(DWORD{OFN_EXTENSIONDIFFERENT}, dialog.m_ofn.Flags & OFN_EXTENSIONDIFFERENT);
    EXPECT_STREQ("gamma.bin", dialog.m_ofn.lpstrFile + dialog.m_ofn.nFileOffset);
    EXPECT_STREQ("bin", dialog.m_ofn.lpstrFile + dialog.m_ofn.nFileExtension);
}

TEST_F(FileOpen, BeginsWithWhateverItIsGiven)
{
    const std::string initial = Path("sub");
    const struct {
        std::string start, initialDir, name, folder; // what is then typed lies there
    } rows[] = {
        {Path("alpha.txt"), initial, "alpha.txt", Path("")},
        {Path("sub"), "", "", Path("sub")},
        {Path("gone\\deeper\\name.txt"), "", "name.txt", Path("")},
        {Path("sub\\*.txt"), "", "", Path("sub")},
        {"*.txt", initial, "", initial},
        {"bad<name|", initial, "bad<name|", initial},
        {"", initial + "\\gone", "", initial},
        {"", "", "", m_current},
        {"Q:\\nowhere\\file", "", "file", m_current},
        {std::string(300, 'x'), initial, "", initial},
        {"\\\\.\\pipe\\x", "", "x", m_current},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.start);
        CZoFileOpen dialog(TRUE, 0, nullptr, row.start.c_str(), kHide, nullptr);
        dialog.m_ofn.lpstrInitialDir = row.initialDir.c_str();
        dialog.m_ofn.lpstrTitle = "A title";
        const DialogDriver driver({[&](HWND open) {
            EXPECT_EQ(row.name, TextOf(open, kName));
            EXPECT_EQ("A title", TextOf(open));
            Enter(open, "typed");
        }});
        EXPECT_EQ(IDOK, dialog.DoModal());
        EXPECT_STRCASEEQ((row.folder + "\\typed").c_str(), dialog.GetPathName());
    }
}

TEST_F(FileOpen, KeepsToItsBuffer)
{
    const auto folder = Path("").size() + 1;
    const struct {
        size_t buffer, length;
        bool fits;
    } rows[] = {
        {260, 259, true}, {260, 260, false}, {264, 259, true}, {264, 260, false}, {264, 263, false},
        {120, 119, true}, {120, 120, false}, {1, 100, false},  {260, 400, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.length << " bytes for " << row.buffer);
        const std::string name(row.length - folder, 'n');
        SentinelBuffer buffer(row.buffer);
        buffer.Data()[0] = '\0';
        CZoFileOpen dialog(FALSE, 0, nullptr, nullptr, kHide);
        dialog.m_ofn.lpstrFile = buffer.Data();
        dialog.m_ofn.nMaxFile = static_cast<DWORD>(row.buffer);
        const std::string start = Path("");
        dialog.m_ofn.lpstrInitialDir = start.c_str();
        const auto act = [&](HWND open) {
            Enter(open, name);
            if (!row.fits)
                Press(open, IDCANCEL);
        };
        INT_PTR result;
        if (row.fits) {
            const DialogDriver driver({act});
            result = dialog.DoModal();
        } else {
            const DialogDriver driver({act, AnswerBox(Box(name, kTooLong), IDOK)});
            result = dialog.DoModal();
        }
        EXPECT_EQ(row.fits ? IDOK : IDCANCEL, result);
        EXPECT_EQ(row.fits ? Path(name) : "", buffer.Data());
        buffer.ExpectGuardsIntact();
    }
    CZoFileOpen none(TRUE);
    none.m_ofn.lpstrFile = nullptr;
    EXPECT_EQ(-1, none.DoModal());
}

TEST_F(FileOpen, KnowsCharactersOfTwoBytes)
{
    ZO_ONLY_IN(IsDoubleByte(), "the characters are of code page 932");
    const std::string folder = "\x95\x5C"; // ends in the byte of a backslash
    const std::string file = "\x83\x5C\x83\x7C.txt";
    ::CreateDirectoryA(Path(folder).c_str(), nullptr);
    m_folder.Write(folder + "\\" + file, "x");
    CZoFileOpen dialog(TRUE, 0, "txt", Path("").c_str(), kHide | OFN_FILEMUSTEXIST, kFilter);
    const DialogDriver driver({[&](HWND open) {
        DoubleClick(open, kFolders, folder);
        EXPECT_EQ(file + "|", Rows(open, kFiles));
        ::SetDlgItemTextA(open, kName, "\x83\x5C?.t*"); // the mark stands for a whole character
        Press(open, IDOK);
        EXPECT_EQ(file + "|", Rows(open, kFiles));
        Choose(open, kFiles, 0);
        Press(open, IDOK);
    }});
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_STREQ(Path(folder + "\\" + file).c_str(), dialog.GetPathName());
    EXPECT_STREQ(file.c_str(), dialog.GetFileName());
}

namespace {

UINT WINAPI RemoteDrive(LPCSTR) { return DRIVE_REMOTE; }

DWORD WINAPI ConnectedTo(LPCSTR drive, LPSTR name, DWORD* size)
{
    if (lstrcmpA(drive, "Z:") != 0)
        return ERROR_NOT_CONNECTED;
    lstrcpynA(name, "\\\\server\\share", static_cast<int>(*size));
    return NO_ERROR;
}
FARPROC WINAPI FindConnection(HMODULE, LPCSTR name)
{
    EXPECT_STREQ("WNetGetConnectionA", name);
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&ConnectedTo));
}

} // namespace

TEST_F(FileOpen, NamesPlacesInTheNetwork)
{
    const ImportPatch remote("ZOGBLBRX.DLL", "GetDriveTypeA", &RemoteDrive);
    const ImportPatch network("ZOGBLBRX.DLL", "GetProcAddress", &FindConnection);
    static constexpr char kElsewhere[] = "\\\\server\\nowhere\\file";
    FaultSource faults("network's library");
    RunFaultLoop(faults, [&](const FaultRun& run) {
        ZO_FAULTY_CALL(LoadLibraryA) load(faults, "ZOGBLBRX.DLL", nullptr, ERROR_MOD_NOT_FOUND);
        ZO_FAULTY_CALL(GetProcAddress) bind(faults, "ZOGBLBRX.DLL", nullptr, ERROR_PROC_NOT_FOUND);
        CZoFileOpen dialog(TRUE, 0, nullptr, Path("").c_str(), kHide | OFN_PATHMUSTEXIST);
        const DialogDriver driver(
            {[&](HWND open) {
                 const std::string drives = Rows(open, kDrives);
                 EXPECT_NE(std::string::npos, drives.find("C:|"));
                 EXPECT_TRUE(run.Fired() || drives.find("Z:  \\\\server\\share|") != std::string::npos) << drives;
                 Enter(open, kElsewhere);
                 Press(open, IDCANCEL);
             },
             AnswerBox(Box(kElsewhere, kNoFolder), IDOK)});
        EXPECT_EQ(IDCANCEL, dialog.DoModal());
    });
}

namespace {

/// Agrees with the second name only.
class Choosy : public CZoFileOpen {
public:
    using CZoFileOpen::CZoFileOpen;
    std::string seen;

protected:
    BOOL OnFileNameOK() override
    {
        seen += std::string(GetFileName()) + "|";
        return seen.find('|') == seen.size() - 1;
    }
};

} // namespace

TEST_F(FileOpen, AsksDerivedClassesAndFollowsTheLanguage)
{
    Choosy dialog(TRUE, 0, nullptr, Path("start").c_str(), kHide);
    const DialogDriver driver({[&](HWND open) {
        Enter(open, "alpha.txt");
        EXPECT_STREQ(Path("start").c_str(), dialog.GetPathName()) << "as it was while it is not taken";
        EXPECT_EQ("alpha.txt", TextOf(open, kName));
        const std::string files = Rows(open, kFiles);
        ZoGblDumpLanguageDLL();
        m_product.MakeCurrent(0x0407);
        EXPECT_TRUE(ZoGblLoadLanguageDLL());
        CZoDialog::ReloadOpenDialogs();
        EXPECT_EQ("Abbrechen", TextOf(open, IDCANCEL));
        EXPECT_EQ("alpha.txt", TextOf(open, kName));
        EXPECT_EQ(files, Rows(open, kFiles));
        Press(open, IDOK);
    }});
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_EQ("alpha.txt|alpha.txt|", dialog.seen);
}

TEST_F(FileOpen, SurvivesFailures)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10 && !IsDoubleByte(), "the same everywhere, and slow");
    const BoxStub noBox;
    const std::string start = Path("before");
    const auto run = [&](const FaultRun& run) {
        DrivenDialog<CZoFileOpen> dialog(FALSE, 0u, "txt", start.c_str(), kHide | OFN_OVERWRITEPROMPT, kFilter);
        dialog.act = [](DrivenDialog<CZoFileOpen>& open) {
            for (const char* name : {"*.*", "sub", "inner"}) {
                open.SetDlgItemText(kName, name);
                ::SetFocus(open.Item(kName));
                open.SendMessage(WM_COMMAND, IDOK);
            }
        };
        const INT_PTR result = dialog.DoModal();
        const bool failed = run.Fired();
        run.Stop();
        EXPECT_TRUE(result == -1 || result == IDOK || result == IDCANCEL) << result;
        EXPECT_TRUE(failed || result == IDCANCEL) << "nobody answers that the file may be replaced";
        if (result != IDOK) {
            EXPECT_STREQ(start.c_str(), dialog.GetPathName());
        }
    };
    {
        AllocationFaults faults;
        RunFaultLoop(faults, run, {.stride = 3});
    }
    FaultSource files("file system");
    ZO_FAULTY_CALL(FindFirstFileA) find(files, "ZOGBLBRX.DLL", INVALID_HANDLE_VALUE, ERROR_PATH_NOT_FOUND);
    ZO_FAULTY_CALL(GetFullPathNameA) full(files, "ZOGBLBRX.DLL", 0, ERROR_INVALID_NAME);
    ZO_FAULTY_CALL(GetFileAttributesA) attributes(files, "ZOGBLBRX.DLL", INVALID_FILE_ATTRIBUTES, ERROR_NOT_READY);
    ZO_FAULTY_CALL(GetCurrentDirectoryA) current(files, "ZOGBLBRX.DLL", 0, ERROR_ACCESS_DENIED);
    ZO_FAULTY_CALL(GetLogicalDrives) drives(files, "ZOGBLBRX.DLL", 0);
    RunFaultLoop(files, run);
    FaultSource windows("windows");
    ZO_FAULTY_CALL(SendMessageA) send(windows, "ZOGBLBRX.DLL", LB_ERR);
    ZO_FAULTY_CALL(GetDC) dc(windows, "ZOGBLBRX.DLL", nullptr);
    RunFaultLoop(windows, run, {.stride = 11});
    ZoGblDumpLanguageDLL();
    EXPECT_EQ(-1, CZoFileOpen(TRUE).DoModal()) << "without a language library";
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
}
