// The dialog for files, driven as a person would.
#include "dialog_faults.h"

#include "support/product_test.h"
#include "support/test.h"

#include <common/wait.h>

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

class FileOpen : public ProductTest {
protected:
    FileOpen()
    {
        ::CreateDirectoryA(Path("sub").c_str(), nullptr);
        for (const char* name :
             {"alpha.txt", "Beta.INI", "gamma.bin", "plain", "sub\\inner.txt", "locked.txt", "hidden.txt"})
            m_folder.Write(name, name);
        ::SetFileAttributesA(Path("locked.txt").c_str(), FILE_ATTRIBUTE_READONLY);
        ::SetFileAttributesA(Path("hidden.txt").c_str(), FILE_ATTRIBUTE_HIDDEN);
        ::GetCurrentDirectoryA(sizeof m_current, m_current);
    }
    ~FileOpen() override
    {
        ::SetFileAttributesA(Path("locked.txt").c_str(), FILE_ATTRIBUTE_NORMAL);
        ::SetFileAttributesA(Path("hidden.txt").c_str(), FILE_ATTRIBUTE_NORMAL);
        char current[MAX_PATH] = "";
        ::GetCurrentDirectoryA(sizeof current, current);
        EXPECT_STREQ(m_current, current) << "the dialog leaves the current folder alone";
    }

    char m_current[MAX_PATH] = "";
};

} // namespace

TEST_F(FileOpen, ChecksWhatIsTyped)
{
    const std::string missing = Path("gone\\file.txt");
    const struct {
        BOOL open;
        DWORD flags;
        std::string typed, box;
        int answer;         // to the box
        std::string chosen; // empty: it stays open
    } rows[] = {
        {TRUE, OFN_FILEMUSTEXIST, "alpha.txt", "", 0, Path("alpha.txt")},
        {TRUE, OFN_FILEMUSTEXIST, "  alpha ", "", 0, Path("alpha.txt")},
        {TRUE, OFN_FILEMUSTEXIST, "ALPHA.TXT", "", 0, Path("ALPHA.TXT")},
        {TRUE, OFN_FILEMUSTEXIST, "plain", "", 0, Path("plain")}, // which exists without the extension
        {TRUE, OFN_FILEMUSTEXIST, "sub/inner", "", 0, Path("sub\\inner.txt")},
        {TRUE, OFN_FILEMUSTEXIST, "sub\\..\\.\\alpha.txt", "", 0, Path("alpha.txt")},
        {TRUE, OFN_FILEMUSTEXIST, Path("sub\\inner.txt"), "", 0, Path("sub\\inner.txt")},
        {TRUE, OFN_FILEMUSTEXIST, "none", Box(Path("none.txt"), kNoFile), IDOK, ""},
        {TRUE, OFN_FILEMUSTEXIST, missing, Box(missing, kNoFolder), IDOK, ""},
        {TRUE, OFN_PATHMUSTEXIST, missing, Box(missing, kNoFolder), IDOK, ""},
        {TRUE, OFN_PATHMUSTEXIST, "none", "", 0, Path("none.txt")},
        {TRUE, 0, missing, "", 0, missing},
        {TRUE, OFN_CREATEPROMPT, "none", Box(Path("none.txt"), kCreate), IDYES, Path("none.txt")},
        {TRUE, OFN_CREATEPROMPT, "none", Box(Path("none.txt"), kCreate), IDNO, ""},
        {TRUE, OFN_OVERWRITEPROMPT, "alpha", "", 0, Path("alpha.txt")}, // which is for saving
        {TRUE, 0, "a<b", Box("a<b", kInvalid), IDOK, ""},
        {TRUE, 0, "aa:b", Box("aa:b", kInvalid), IDOK, ""},
        {TRUE, 0, "a|b\"", Box("a|b\"", kInvalid), IDOK, ""},
        {TRUE, 0, "NUL", Box("NUL", kInvalid), IDOK, ""},
        {TRUE, 0, "\"a*b\"", Box("a*b", kInvalid), IDOK, ""}, // no pattern
        {TRUE, 0, "\\\\server", Box("\\\\server\\", kNoFolder), IDOK, ""},
        {TRUE, 0, "gone\\", Box(Path("gone"), kNoFolder), IDOK, ""},
        {FALSE, OFN_OVERWRITEPROMPT, "new", "", 0, Path("new.txt")},
        {FALSE, OFN_OVERWRITEPROMPT, "plain", "", 0, Path("plain.txt")},
        {FALSE, OFN_OVERWRITEPROMPT, "new.x", "", 0, Path("new.x.txt")},
        {FALSE, OFN_OVERWRITEPROMPT, "new.TXT", "", 0, Path("new.TXT")},
        {FALSE, OFN_OVERWRITEPROMPT, "new.ini", "", 0, Path("new.ini")}, // of another type
        {FALSE, OFN_OVERWRITEPROMPT, "new.", "", 0, Path("new")},
        {FALSE, OFN_OVERWRITEPROMPT, "\"Fax 22.11.1998\"", "", 0, Path("Fax 22.11.1998")},
        {FALSE, OFN_OVERWRITEPROMPT, "Fax 22.11.1998", "", 0, Path("Fax 22.11.1998.txt")},
        {FALSE, OFN_OVERWRITEPROMPT, "\"new\"", "", 0, Path("new")},
        {FALSE, OFN_OVERWRITEPROMPT, "alpha", Box(Path("alpha.txt"), kExists), IDYES, Path("alpha.txt")},
        {FALSE, OFN_OVERWRITEPROMPT, "alpha", Box(Path("alpha.txt"), kExists), IDNO, ""},
        {FALSE, OFN_NOREADONLYRETURN, "locked", Box(Path("locked.txt"), kProtected), IDOK, ""},
        {FALSE, OFN_NOREADONLYRETURN, "alpha", "", 0, Path("alpha.txt")},
        {FALSE, OFN_OVERWRITEPROMPT | OFN_NOVALIDATE, "alpha", "", 0, Path("alpha.txt")},
    };
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
        const auto box = [&](HWND window) {
            EXPECT_EQ(TextOf(GetWindow(window, GW_OWNER)), TextOf(window)) << "the dialog's title";
            AnswerBox(row.box, row.answer)(window);
        };
        const DialogDriver driver({act, row.box.empty() ? nullptr : DialogDriver::Act(box)});
        EXPECT_EQ(row.chosen.empty() ? IDCANCEL : IDOK, dialog.DoModal());
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
            EXPECT_EQ(flags != kHide, ::IsWindowVisible(::GetDlgItem(open, ZO_IDC_FILE_READ_ONLY)) != FALSE);
            EXPECT_EQ(flags == OFN_READONLY, IsChecked(open, ZO_IDC_FILE_READ_ONLY));
            const CRect area = AreaOf(open);
            EXPECT_TRUE(flags == kHide ? area.Height() < height : height == 0 || area.Height() == height);
            height = area.Height();
            for (const int control : {kName, kTypes, kDrives, flags == kHide ? kTypes : ZO_IDC_FILE_READ_ONLY})
                EXPECT_LT(AreaOf(open, control).bottom, area.bottom - 4);
            const auto rowOf = [&](int list, UINT ask, int index) {
                return ::SendDlgItemMessageA(open, list, ask, static_cast<WPARAM>(index), 0);
            };
            EXPECT_EQ(rowOf(kFolders, LB_GETITEMHEIGHT, 0), rowOf(kFiles, LB_GETITEMHEIGHT, 0));
            EXPECT_EQ(rowOf(kDrives, CB_GETITEMHEIGHT, -1), rowOf(kTypes, CB_GETITEMHEIGHT, -1));
            const std::string shown = TextOf(open, ZO_IDC_FILE_FOLDER);
            EXPECT_EQ("www...", shown.substr((std::max<size_t>)(shown.size(), 6) - 6));
            if (flags != kHide)
                Press(open, ZO_IDC_FILE_READ_ONLY);
            Type(open, kName, Path("alpha.txt"));
            Press(open, IDOK);
        }});
        EXPECT_EQ(IDOK, dialog.DoModal());
        EXPECT_EQ(flags == 0 ? OFN_READONLY : 0u, dialog.m_ofn.Flags & (OFN_READONLY | OFN_EXTENSIONDIFFERENT));
    }
}

TEST_F(FileOpen, GoesThroughFoldersAndTypes)
{
    const bool shown = (::GetFileAttributesA(Path("hidden.txt").c_str()) & FILE_ATTRIBUTE_HIDDEN) == 0;
    const std::string texts = shown ? "alpha.txt|Beta.INI|hidden.txt|locked.txt|" : "alpha.txt|Beta.INI|locked.txt|";
    CZoFileOpen dialog(TRUE, 0, "txt", Path("").c_str(), kHide, kFilter);
    const DialogDriver driver({[&](HWND open) {
        const auto level = [&] { return ChosenRow(open, kFolders); };
        const int depth = level();
        EXPECT_EQ("Texts|All files|", RowsOf(open, kTypes));
        EXPECT_EQ(texts, RowsOf(open, kFiles));
        EXPECT_EQ("sub|", RowsOf(open, kFolders, depth + 1));
        EXPECT_EQ(":\\|", RowsOf(open, kFolders).substr(1, 3)) << "the drive stands first";
        Enter(open, "*a.*");
        EXPECT_EQ("alpha.txt|Beta.INI|gamma.bin|", RowsOf(open, kFiles));
        Enter(open, "sub\\in?er*;x");
        EXPECT_EQ("inner.txt|", RowsOf(open, kFiles));
        EXPECT_EQ("in?er*;x", TextOf(open, kName));
        EXPECT_EQ(depth + 1, level());
        Choose(open, kTypes, 1);
        Enter(open, "..");
        EXPECT_EQ("", TextOf(open, kName));
        EXPECT_NE(std::string::npos, RowsOf(open, kFiles).find("gamma.bin|"));
        DoubleClick(open, kFolders, RowOf(open, kFolders, "sub"));
        EXPECT_EQ("inner.txt|", RowsOf(open, kFiles));
        Choose(open, kFiles, 0);
        EXPECT_EQ("inner.txt", TextOf(open, kName));

        ::SetFocus(::GetDlgItem(open, kFolders)); // up one folder by the keyboard alone
        Key(open, VK_UP);
        Key(open, VK_RETURN);
        EXPECT_NE(std::string::npos, RowsOf(open, kFiles).find("gamma.bin|"));
        Choose(open, kFolders, 0);
        Key(open, VK_RETURN);
        EXPECT_EQ(0, level()) << "the root";
        Choose(open, kDrives, RowOf(open, kDrives, "Z:"));
        EXPECT_EQ("Z:\\|", RowsOf(open, kFolders).substr(0, 4));
        { // a drive that cannot be read: the one that is shown is chosen again
            FaultSource files("file system");
            const ZO_FAULTY_CALL(FindFirstFileA) find(files, "ZOGBLBRX.DLL", INVALID_HANDLE_VALUE, ERROR_NOT_READY);
            const int drive = ChosenRow(open, kDrives);
            const BoxStub noBox;
            files.Arm(1, true);
            Choose(open, kDrives, drive == 0 ? 1 : 0);
            files.Disarm();
            EXPECT_EQ(drive, ChosenRow(open, kDrives));
            EXPECT_EQ("Z:\\|", RowsOf(open, kFolders).substr(0, 4));
        }
        Enter(open, Path(""));
        EXPECT_EQ(depth, level());
        DoubleClick(open, kFiles, RowOf(open, kFiles, "gamma.bin"));
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
        std::string extension = {}; // that the name gets
    } rows[] = {
        {260, 259, true},  {260, 260, false},        {264, 259, true},          {264, 260, false},
        {264, 263, false}, {120, 119, true},         {120, 120, false},         {1, 100, false},
        {260, 400, false}, {264, 259, true, ".txt"}, {264, 260, false, ".txt"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.length << " bytes for " << row.buffer);
        const std::string name(row.length - folder - row.extension.size(), 'n');
        SentinelBuffer buffer(row.buffer);
        buffer.Data()[0] = '\0';
        CZoFileOpen dialog(FALSE, 0, row.extension.empty() ? nullptr : "txt", nullptr, kHide);
        dialog.m_ofn.lpstrFile = buffer.Data();
        dialog.m_ofn.nMaxFile = static_cast<DWORD>(row.buffer);
        const std::string start = Path("");
        dialog.m_ofn.lpstrInitialDir = start.c_str();
        const auto act = [&](HWND open) {
            Enter(open, name);
            if (!row.fits)
                Press(open, IDCANCEL);
        };
        const DialogDriver driver({act, row.fits ? nullptr : AnswerBox(Box(name, kTooLong), IDOK)});
        EXPECT_EQ(row.fits ? IDOK : IDCANCEL, dialog.DoModal());
        EXPECT_EQ(row.fits ? Path(name + row.extension) : "", buffer.Data());
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
        DoubleClick(open, kFolders, RowOf(open, kFolders, folder));
        EXPECT_EQ(file + "|", RowsOf(open, kFiles));
        ::SetDlgItemTextA(open, kName, "\x83\x5C?.t*"); // the mark stands for a whole character
        Press(open, IDOK);
        EXPECT_EQ(file + "|", RowsOf(open, kFiles));
        Choose(open, kFiles, 0);
        Press(open, IDOK);
    }});
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_STREQ(Path(folder + "\\" + file).c_str(), dialog.GetPathName());
    EXPECT_STREQ(file.c_str(), dialog.GetFileName());
}

TEST_F(FileOpen, NamesPlacesInTheNetwork)
{
    static constexpr auto connectedTo = +[](LPCSTR drive, LPSTR name, DWORD* size) WINAPI -> DWORD {
        if (lstrcmpA(drive, "Z:") != 0)
            return ERROR_NOT_CONNECTED;
        lstrcpynA(name, "\\\\server\\share", static_cast<int>(*size));
        return NO_ERROR;
    };
    const ImportPatch remote(
        "ZOGBLBRX.DLL", "GetDriveTypeA", +[](LPCSTR) WINAPI -> UINT { return DRIVE_REMOTE; });
    const ImportPatch network(
        "ZOGBLBRX.DLL", "GetProcAddress", +[](HMODULE, LPCSTR name) WINAPI -> FARPROC {
            EXPECT_STREQ("WNetGetConnectionA", name);
            return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(connectedTo));
        });
    static constexpr char kElsewhere[] = "\\\\server\\nowhere\\file";
    FaultSource faults("network's library");
    RunFaultLoop(faults, [&](const FaultRun& run) {
        ZO_FAULTY_CALL(LoadLibraryA) load(faults, "ZOGBLBRX.DLL", nullptr, ERROR_MOD_NOT_FOUND);
        ZO_FAULTY_CALL(GetProcAddress) bind(faults, "ZOGBLBRX.DLL", nullptr, ERROR_PROC_NOT_FOUND);
        CZoFileOpen dialog(TRUE, 0, nullptr, Path("").c_str(), kHide | OFN_PATHMUSTEXIST);
        const DialogDriver driver({[&](HWND open) {
                                       const std::string drives = RowsOf(open, kDrives);
                                       EXPECT_NE(std::string::npos, drives.find("C:|"));
                                       EXPECT_TRUE(run.Fired() || WaitUntil([&] {
                                                       return RowOf(open, kDrives, "Z:  \\\\server\\share") >= 0;
                                                   }))
                                           << drives;
                                       Enter(open, kElsewhere);
                                       Press(open, IDCANCEL);
                                   },
                                   AnswerBox(Box(kElsewhere, kNoFolder), IDOK)});
        EXPECT_EQ(IDCANCEL, dialog.DoModal());
    });
}

TEST_F(FileOpen, AsksDerivedClassesAndFollowsTheLanguage)
{
    struct Choosy : CZoFileOpen { // agrees with the second name only
        using CZoFileOpen::CZoFileOpen;
        std::string seen;
        BOOL OnFileNameOK() override
        {
            seen += std::string(GetFileName()) + "|";
            return seen.find('|') == seen.size() - 1;
        }
    };
    Choosy dialog(TRUE, 0, nullptr, Path("start").c_str(), kHide);
    const DialogDriver driver({[&](HWND open) {
        Enter(open, "alpha.txt");
        EXPECT_STREQ(Path("start").c_str(), dialog.GetPathName()) << "as it was while it is not taken";
        EXPECT_EQ("alpha.txt", TextOf(open, kName));
        const std::string files = RowsOf(open, kFiles);
        ChangeLanguage(kGerman);
        EXPECT_EQ("Abbrechen", TextOf(open, IDCANCEL));
        EXPECT_EQ("alpha.txt", TextOf(open, kName));
        EXPECT_EQ(files, RowsOf(open, kFiles));
        Press(open, IDOK);
    }});
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_EQ("alpha.txt|alpha.txt|", dialog.seen);
}

TEST_F(FileOpen, SurvivesFailures)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10 && !IsDoubleByte(), "the same everywhere, and slow");
    const std::string start = Path("before");
    const auto person = [](HWND open) {
        for (const char* name : {"*.*", "sub", "inner"}) {
            ::SetDlgItemTextA(open, kName, name);
            ::SetFocus(::GetDlgItem(open, kName));
            Command(open, IDOK);
        }
    };
    const auto show = [&](const FaultRun& run) {
        CZoFileOpen dialog(FALSE, 0, "txt", start.c_str(), kHide | OFN_OVERWRITEPROMPT, kFilter);
        const INT_PTR result = dialog.DoModal();
        run.Stop();
        // The file may not be replaced, unless it cannot be seen.
        EXPECT_TRUE(result == IDCANCEL || (run.Fired() && (result == -1 || result == IDOK))) << result;
        EXPECT_TRUE(result == IDOK || dialog.GetPathName() == start.c_str());
    };
    RunDialogFaults(person, show, {.memory = 29, .system = 11, .controls = 37});
}
