// The folder picker, driven as a person would.
#include "dialog_faults.h"

#include "support/product_test.h"
#include "support/test.h"

#include <zogbl/global_error.h>
#include <zogbl/resource_ids.h>
#include <zogbl/select_directory.h>

#include <commctrl.h>

namespace {

constexpr int kPath = ZO_IDC_FOLDER_PATH;
constexpr int kTree = ZO_IDC_FOLDER_TREE;
constexpr int kNew = ZO_IDC_FOLDER_NEW;
constexpr int kKeep = ZO_SELECT_KEEP_CASE;

HTREEITEM Next(HWND tree, WPARAM which, HTREEITEM from = nullptr)
{
    return reinterpret_cast<HTREEITEM>(::SendMessageA(tree, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(from)));
}

/// The names below the item selected, each with a '|' behind it.
std::string Children(HWND dialog)
{
    const HWND tree = ::GetDlgItem(dialog, kTree);
    std::string names;
    for (HTREEITEM item = Next(tree, TVGN_CHILD, Next(tree, TVGN_CARET)); item != nullptr;
         item = Next(tree, TVGN_NEXT, item)) {
        char text[MAX_PATH] = "";
        TVITEMA found = {TVIF_TEXT, item, 0, 0, text, sizeof text, 0, 0, 0, 0};
        ::SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&found));
        names += std::string(text) + "|";
    }
    return names;
}

constexpr char kAsks[] = "This folder does not exist. Do you want to create it?";
constexpr char kFails[] = "The folder could not be created.";
constexpr char kInvalid[] = "This is not a valid file name.";
constexpr char kTaken[] = "There is already a file or folder of this name.";

DialogDriver::Act Told(const std::string& path, const char* text, int button = IDOK)
{
    return AnswerBox(path + "\n\n" + text, button);
}

/// Makes a folder below the one selected and types its name; null gives the naming up.
void MakeFolder(HWND dialog, const char* name)
{
    Press(dialog, kNew);
    const auto edit = reinterpret_cast<HWND>(::SendDlgItemMessageA(dialog, kTree, TVM_GETEDITCONTROL, 0, 0));
    ASSERT_NE(nullptr, edit);
    if (name != nullptr)
        ::SetWindowTextA(edit, name);
    ::SetFocus(edit);
    Key(dialog, name != nullptr ? VK_RETURN : VK_ESCAPE);
}

class SelectDirectory : public ProductTest {
protected:
    SelectDirectory()
    {
        m_folder.Write("file.txt", "");
        for (const char* name : {"One", "Two", "One\\Inner"})
            ::CreateDirectoryA(Path(name).c_str(), nullptr);
        m_owner = ::CreateWindowA("STATIC", "owner", WS_POPUP | WS_VISIBLE, 100, 100, 300, 200, nullptr, nullptr,
                                  nullptr, nullptr);
    }
    ~SelectDirectory() override { ::DestroyWindow(m_owner); }
    /// Asks for a folder, from \p initial on.
    int Ask(const std::string& initial, int options = kKeep)
    {
        std::fill(std::begin(m_buffer), std::end(m_buffer), 'x');
        std::string start = initial;
        return ZoSelectDirectory(m_buffer, sizeof m_buffer, m_owner, start.data(), options, 0, nullptr, nullptr);
    }

    HWND m_owner = nullptr;
    char m_buffer[MAX_PATH] = "";
};

} // namespace

TEST_F(SelectDirectory, ChoosesInTheTreeByKeyboard)
{
    std::string seen;
    const DialogDriver driver({[&](HWND dialog) {
        EXPECT_FALSE(::IsWindowEnabled(m_owner));
        EXPECT_EQ("Select Folder", TextOf(dialog));
        EXPECT_EQ(Path(""), TextOf(dialog, kPath));
        EXPECT_EQ(kPath, FocusOf(dialog));
        AccessKey(dialog, 'f');
        EXPECT_EQ(kTree, FocusOf(dialog));
        EXPECT_EQ("", Children(dialog)) << "read when it is opened";
        Key(dialog, VK_RIGHT);
        EXPECT_EQ("One|Two|", Children(dialog)) << "no files";
        Key(dialog, VK_DOWN);
        EXPECT_EQ(Path("One"), TextOf(dialog, kPath));
        Key(dialog, VK_DOWN);
        EXPECT_EQ(Path("Two"), TextOf(dialog, kPath));
        Key(dialog, VK_RETURN);
    }});
    EXPECT_EQ(IDOK, Ask(Path("")));
    EXPECT_EQ(Path("Two"), m_buffer);
    EXPECT_TRUE(::IsWindowEnabled(m_owner));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(m_owner)) << "its object was for the time of the call";
}

TEST_F(SelectDirectory, TakesPathsAsTheyAreTyped)
{
    char current[MAX_PATH] = "";
    ::GetCurrentDirectoryA(sizeof current, current);
    std::string upper = Path("One"), lower = upper;
    ::CharUpperA(upper.data());
    ::CharLowerA(lower.data());
    const struct {
        std::string initial, shown, typed;
        int options;
        std::string chosen;
    } rows[] = {
        {Path("One"), Path("One"), "", ZO_SELECT_UPPER_CASE, upper},
        {Path("One"), Path("One"), "", ZO_SELECT_UPPER_CASE | kKeep, upper},
        {Path("One"), Path("One"), "", 0, lower},
        {Path("One\\"), Path("One"), "", kKeep, Path("One")},
        {Path("One"), Path("One"), "Inner", kKeep, Path("One\\Inner")},
        {Path("One"), Path("One"), "..\\Two\\", kKeep, Path("Two")},
        {Path("One"), Path("One"), "C:\\", kKeep, "C:\\"},
        {Path("gone\\deeper"), Path(""), Path("Two"), kKeep, Path("Two")},
        {Path("file.txt"), Path(""), "One", kKeep, Path("One")},
        {"", current, Path("Two"), kKeep, Path("Two")},
        {"bad<>", current, Path("Two"), kKeep, Path("Two")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.initial + " " + row.typed);
        const DialogDriver driver({[&](HWND dialog) {
            EXPECT_STRCASEEQ(row.shown.c_str(), TextOf(dialog, kPath).c_str());
            if (!row.typed.empty())
                Type(dialog, kPath, row.typed);
            Key(dialog, VK_RETURN);
        }});
        EXPECT_EQ(IDOK, Ask(row.initial, row.options));
        EXPECT_EQ(row.chosen, m_buffer);
    }
    if (IsDoubleByte()) { // a character whose second byte is that of a backslash
        const std::string folder = Path("\x95\x5C"), inner = folder + "\\\x83\x5C";
        ::CreateDirectoryA(folder.c_str(), nullptr);
        ::CreateDirectoryA(inner.c_str(), nullptr);
        const DialogDriver driver({[&](HWND dialog) {
            EXPECT_EQ(inner, TextOf(dialog, kPath));
            AccessKey(dialog, 'f');
            Key(dialog, VK_UP);
            EXPECT_EQ(folder, TextOf(dialog, kPath));
            EXPECT_EQ("\x83\x5C|", Children(dialog));
            Key(dialog, VK_RETURN);
        }});
        EXPECT_EQ(IDOK, Ask(inner));
        EXPECT_EQ(folder, m_buffer);
    }
    const std::string bad = "a|b", longer(300, 'n');
    const DialogDriver driver({[&](HWND dialog) {
                                   for (const std::string& typed : {bad, longer}) {
                                       Type(dialog, kPath, typed);
                                       Press(dialog, IDOK);
                                       EXPECT_EQ(typed, TextOf(dialog, kPath));
                                   }
                                   Key(dialog, VK_ESCAPE);
                               },
                               Told(bad, kInvalid), Told(longer, "The path is too long.")});
    EXPECT_EQ(IDCANCEL, Ask(Path("")));
    EXPECT_EQ(sizeof m_buffer, static_cast<size_t>(std::count(std::begin(m_buffer), std::end(m_buffer), '\0')));
}

TEST_F(SelectDirectory, CreatesWhatIsMissing)
{
    const std::string wanted = Path("new\\chain"), behind = Path("behind\\it"), typed = wanted + "\\typed";
    const std::string blocked = Path("file.txt\\below"), barred = Path("other.txt\\below");
    m_folder.Write("other.txt", "");
    const auto shows = [](const std::string& path, int button) -> DialogDriver::Act {
        return [=](HWND dialog) {
            EXPECT_EQ(path, TextOf(dialog, kPath));
            Press(dialog, button);
        };
    };
    const auto type = [](HWND dialog) {
        Type(dialog, kPath, "typed");
        Press(dialog, IDOK);
        Press(dialog, IDOK);
    };
    const auto retry = [&](HWND box) {
        ::DeleteFileA(Path("file.txt").c_str());
        Told(blocked, kFails, IDRETRY)(box);
    };
    const struct {
        std::string initial;
        std::vector<DialogDriver::Act> acts;
        std::string chosen;
    } rows[] = {
        {wanted, {Told(wanted, kAsks, IDNO), shows(Path(), IDCANCEL)}, ""},
        {wanted, {Told(wanted, kAsks, IDYES), shows(wanted, IDOK)}, wanted},
        {behind + "\\", {Told(behind + "\\", kAsks, IDYES), shows(behind, IDOK)}, behind},
        // What is there is not asked for; what is typed is.
        {wanted, {type, Told(typed, kAsks, IDNO), Told(typed, kAsks, IDYES)}, typed},
        // A file is in the way until the second retry, and for good.
        {blocked, {Told(blocked, kAsks, IDYES), Told(blocked, kFails, IDRETRY), retry, shows(blocked, IDOK)}, blocked},
        {barred, {Told(barred, kAsks, IDYES), Told(barred, kFails, IDCANCEL), Pressing(IDCANCEL)}, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        const DialogDriver driver(row.acts);
        EXPECT_EQ(row.chosen.empty() ? IDCANCEL : IDOK, Ask(row.initial, ZO_SELECT_CREATE_INITIAL | kKeep));
        EXPECT_EQ(row.chosen, m_buffer);
    }
}

TEST_F(SelectDirectory, MakesNewFoldersAndReadsBranchesAnew)
{
    const DialogDriver driver({[&](HWND dialog) {
                                   MakeFolder(dialog, "Named");
                                   EXPECT_EQ(Path("Named"), TextOf(dialog, kPath));
                                   MakeFolder(dialog, nullptr); // within the one before
                                   EXPECT_EQ(Path("Named\\New folder"), TextOf(dialog, kPath));
                                   AccessKey(dialog, 'f');
                                   Key(dialog, VK_LEFT);
                                   const HWND tree = ::GetDlgItem(dialog, kTree);
                                   const auto selected = reinterpret_cast<LPARAM>(Next(tree, TVGN_CARET));
                                   EXPECT_EQ(0, ::SendMessageA(tree, TVM_EDITLABELA, 0, selected)) << "not a new one";
                                   Key(dialog, VK_LEFT);
                                   Key(dialog, VK_LEFT);
                                   for (const char* name : {"../moved", "no\\name", "TWO", "file.txt", "good"}) {
                                       MakeFolder(dialog, name);
                                       AccessKey(dialog, 'f');
                                       Key(dialog, VK_LEFT);
                                   }
                                   EXPECT_EQ(Path(""), TextOf(dialog, kPath));
                                   Key(dialog, VK_LEFT);
                                   ::CreateDirectoryA(Path("Later").c_str(), nullptr);
                                   ::RemoveDirectoryA(Path("Two").c_str());
                                   Key(dialog, VK_RIGHT);
                                   EXPECT_EQ("good|Later|Named|New folder|New folder (2)|New folder (3)|"
                                             "New folder (4)|One|",
                                             Children(dialog));
                                   Press(dialog, IDCANCEL);
                               },
                               Told("../moved", kInvalid), Told("no\\name", kInvalid), Told("TWO", kTaken),
                               Told("file.txt", kTaken)});
    EXPECT_EQ(IDCANCEL, Ask(Path("")));
    EXPECT_TRUE(m_folder.Exists("Named\\New folder"));
    EXPECT_FALSE(m_folder.Exists("..\\moved"));
}

TEST_F(SelectDirectory, KeepsToItsBuffer)
{
    std::string start = Path("One");
    for (const BufferCase& row : BufferCases(start.size() + 1)) {
        SCOPED_TRACE(row.name);
        SentinelBuffer buffer(row);
        const auto ask = [&] {
            return ZoSelectDirectory(buffer.Data(), static_cast<unsigned>(buffer.Size()), m_owner, start.data(), kKeep,
                                     0, "A title", "Where to?");
        };
        if (row.null) {
            EXPECT_EQ(ZO_SELECT_CANCEL, ask());
        } else {
            const DialogDriver driver({[](HWND dialog) {
                EXPECT_EQ("A title", TextOf(dialog));
                EXPECT_EQ("Where to?", TextOf(dialog, ZO_IDC_FOLDER_INSTRUCTION));
                Press(dialog, IDOK);
            }});
            EXPECT_EQ(row.fits ? IDOK : ZO_SELECT_CANCEL, ask());
            EXPECT_EQ(row.fits ? start : "", row.size > 0 ? buffer.Data() : "");
        }
        buffer.ExpectGuardsIntact();
    }
    for (const HWND owner : {static_cast<HWND>(nullptr), reinterpret_cast<HWND>(0x7FFFFFF0)}) {
        std::fill(std::begin(m_buffer), std::end(m_buffer), 'x');
        EXPECT_EQ(ZO_SELECT_CANCEL,
                  ZoSelectDirectory(m_buffer, sizeof m_buffer, owner, nullptr, 0, 0, nullptr, nullptr));
        EXPECT_STREQ("", m_buffer);
    }
}

TEST_F(SelectDirectory, SurvivesFailures)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10 && !IsDoubleByte(), "the same everywhere, and slow");
    const CurrentFolder current(Path("")); // shown, and so the place of new folders, if "One" cannot be read
    const auto person = [](HWND dialog) { Command(dialog, kNew), Command(dialog, IDOK); };
    const auto show = [&](const FaultRun& run) {
        const int result = Ask(Path("One"), ZO_SELECT_CREATE_INITIAL | kKeep);
        run.Stop();
        EXPECT_TRUE(result == IDOK || (run.Fired() && result == ZO_SELECT_CANCEL)) << result;
        EXPECT_EQ(result == IDOK, m_buffer[0] != '\0');
        EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(m_owner));
        EXPECT_TRUE(::IsWindowEnabled(m_owner));
        for (const char* name : {"One\\New folder", "New folder"})
            ::RemoveDirectoryA(Path(name).c_str());
    };
    RunDialogFaults(person, show, {.memory = 29, .system = 9});
    {
        AllocationFaults faults;
        faults.Arm(1, false);
        EXPECT_EQ(ZO_SELECT_CANCEL, Ask(Path("One")));
        EXPECT_EQ(ZO_SELECT_ERROR_OBJECT, CZoGlobalError::GetError());
    }
    ZoGblDumpLanguageDLL();
    EXPECT_EQ(ZO_SELECT_CANCEL, Ask(Path("One"))) << "without a language library";
    EXPECT_EQ(ZO_SELECT_ERROR_DIALOG, CZoGlobalError::GetError());
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
}
