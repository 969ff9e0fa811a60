#include <zogbl/mailboxes.h>

#include "support/registered_product.h"
#include "support/test.h"

namespace {

constexpr char kLibrary[] = "ZOGBLBRX.DLL";
constexpr DWORD kMode = ZO_MODE_LOCAL_MACHINE;

bool IsWin32s() { return Family() == WindowsFamily::kWin32s; }

std::string g_program; ///< where the running program is said to be

/// Tells where the program is when it is asked for by no module; the version resource asks by its module.
DWORD WINAPI TellProgram(HMODULE module, LPSTR path, DWORD size)
{
    if (module != nullptr)
        return GetModuleFileNameA(module, path, size);
    lstrcpynA(path, g_program.c_str(), static_cast<int>(size));
    return static_cast<DWORD>(g_program.size());
}

using Contents = std::vector<std::pair<DWORD, std::string>>;

Contents ContentsOf(const CZoRegMailBoxes& mailBoxes)
{
    Contents contents;
    for (int i = 0; i < mailBoxes.GetCount(); ++i)
        contents.emplace_back(mailBoxes.GetAt(i)->m_dwNumber, static_cast<LPCSTR>(mailBoxes.GetAt(i)->m_csName));
    return contents;
}

class MailBoxes : public testing::Test {
protected:
    void Store(const char* subkey, const char* name)
    {
        const CString key = m_key + "\\" + subkey;
        ASSERT_EQ(0u, name != nullptr ? m_config.SetValue(kMode, key, "Name", name) : m_config.CreateKey(kMode, key));
    }
    /// Makes the registry's mailboxes 3 "Anna" and 12 "Office", 12 the user's default.
    void Prepare()
    {
        CZoRegMailBoxes mailBoxes;
        mailBoxes.Add(3, "Anna");
        mailBoxes.Add(12, "Office");
        ASSERT_TRUE(mailBoxes.Write());
        CZoRegMailBoxes::SetUserDefault(12);
    }
    static Contents Prepared() { return {{3, "Anna"}, {12, "Office"}}; }
    static Contents Stored()
    {
        CZoRegMailBoxes mailBoxes;
        EXPECT_TRUE(mailBoxes.Load());
        return ContentsOf(mailBoxes);
    }

    RegisteredProduct m_product;
    const CString m_key = m_product.RootKey() + "\\MailBoxes";
    CZoGlobalConfig m_config;
};

// Another program -----------------------------------------------------------------------------------------------------

CString g_key;
int g_opened; ///< keys, by the library
int g_change; ///< the opening at which another program begins to write; 0: at each, without end
const HANDLE g_lock = CreateMutexA(nullptr, FALSE, "ZOMAILBOXES"); ///< shared by all programs

DWORD WINAPI WaitForLockInVain(HANDLE object, DWORD milliseconds)
{
    return milliseconds == 5000 ? WAIT_TIMEOUT : WaitForSingleObject(object, milliseconds);
}

/// Opens a key, under the lock, behind the next step of a program without it: all is deleted, then one mailbox written,
/// then a second, then a third.
LSTATUS WINAPI OpenKey(HKEY root, LPCSTR path, DWORD options, REGSAM access, HKEY* key)
{
    static bool writing = false;
    if (!std::exchange(writing, true)) {
        EXPECT_TRUE(ReleaseMutex(g_lock) && WaitForSingleObject(g_lock, 0) == WAIT_OBJECT_0);
        constexpr LPCSTR kSubkeys[] = {"\\00000003", "\\00000012", "\\00000040"};
        CZoGlobalConfig config;
        const int step = ++g_opened - g_change;
        if (step == 0)
            config.DeleteSection(kMode, g_key, nullptr);
        if (g_change == 0)
            config.SetValue(kMode, g_key + kSubkeys[0], "Name", std::to_string(step).c_str());
        else if (step >= 1 && step <= 3)
            config.SetValue(kMode, g_key + kSubkeys[step - 1], "Name", "new");
        writing = false;
    }
    return RegOpenKeyExA(root, path, options, access, key);
}
LSTATUS WINAPI OpenKeyOld(HKEY root, LPCSTR path, HKEY* key) { return OpenKey(root, path, 0, MAXIMUM_ALLOWED, key); }

// Faults --------------------------------------------------------------------------------------------------------------

class MailBoxFaults : public MailBoxes {
protected:
    /// Runs \p body, which prepares the registry's mailboxes anew, under each fault of \p faults.
    void Run(FaultSource& faults, const std::function<void(const FaultRun&)>& body)
    {
        RunFaultActs(faults, [&](const FaultRun& run) {
            Prepare();
            body(run);
        });
    }
    /// Every operation under each fault of \p faults.
    void RunAll(FaultSource& faults)
    {
        Run(faults, [](const FaultRun& run) {
            CZoRegMailBoxes mailBoxes;
            const BOOL loaded = run.Act([&] { return mailBoxes.Load(); });
            EXPECT_TRUE(loaded || run.Fired());
            EXPECT_EQ(loaded ? 2 : 0, mailBoxes.GetCount());
            for (int i = 0; i < mailBoxes.GetCount(); ++i) {
                const auto [number, name] = ContentsOf(mailBoxes)[i];
                EXPECT_EQ(Prepared()[i].first, number);
                EXPECT_TRUE(name == Prepared()[i].second || (run.Fired() && name == "BadBox"));
            }
        });
        Run(faults, [](const FaultRun& run) {
            CZoRegMailBoxes mailBoxes;
            EXPECT_TRUE(mailBoxes.Load());
            const DWORD number = run.Act([&] { return mailBoxes.GetUserDefault(); });
            EXPECT_TRUE(number == 12 || (run.Fired() && number == 3)) << number;
        });
        Run(faults, [](const FaultRun& run) {
            CZoRegMailBoxes mailBoxes;
            mailBoxes.Add(3, "new");
            mailBoxes.Add(40, "new");
            const BOOL written = run.Act([&] { return mailBoxes.Write(); });
            const Contents stored = Stored();
            EXPECT_TRUE(written ? stored == ContentsOf(mailBoxes) : run.Fired() && stored.size() <= 2);
            const auto has = [&](const char* name) {
                return std::any_of(stored.begin(), stored.end(),
                                   [=](const auto& entry) { return entry.second == name; });
            };
            EXPECT_FALSE(has("new") && has("Office")) << "written over what could not be deleted";
        });
        Run(faults, [](const FaultRun& run) {
            run.Act([] { CZoRegMailBoxes::SetUserDefault(3); });
            EXPECT_EQ(run.Fired() ? 12u : 3u, CZoRegMailBoxes().GetUserDefault());
        });
    }
    /// The path of a mailbox, under each fault of \p faults. The folder may be missing then; the path too if it may
    /// fail.
    void RunPath(FaultSource& faults, bool pathMayFail)
    {
        const TestFolder folder;
        g_program = folder.Path("program.exe");
        const std::string expected = folder.Path("MAILBOX\\00000012\\INBOX");
        Run(faults, [&](const FaultRun& run) {
            for (const char* made : {"MAILBOX\\00000012\\INBOX", "MAILBOX\\00000012", "MAILBOX"})
                RemoveDirectoryA(folder.Path(made).c_str());
            CString path = "before";
            const BOOL found = run.Act([&] { return CZoRegMailBoxes::GetMailBoxPath(12, path, MAILBOXFOLDER_INBOX); });
            EXPECT_TRUE(found || (run.Fired() && pathMayFail));
            EXPECT_EQ(found ? expected : "before", std::string(path));
            EXPECT_TRUE(folder.Exists("MAILBOX\\00000012\\INBOX") || run.Fired());
        });
    }

    const ImportPatch m_patch{kLibrary, "GetModuleFileNameA", &TellProgram};
};

} // namespace

TEST_F(MailBoxes, AreLoadedInTheRegistrysOrder)
{
    CZoRegMailBoxes mailBoxes;
    EXPECT_TRUE(mailBoxes.Load()) << "there are none yet";
    EXPECT_EQ(0, mailBoxes.GetCount());
    const std::string longest(255, 'n');
    const struct {
        const char* subkey;
        std::string name;
        DWORD number;
    } cases[] = {
        {"-0000001", "last number", 0xFFFFFFFF},
        {"00000012", "\x83\x5C", 12},
        {"00000013", longest, 13},
        {"00000014", longest + "n", 14},
        {"00000015", "(none)", 15},
        {"00000016", "", 16},
        {"17 and more", "x", 17},
        {"no number", "y", 0},
    };
    Contents expected;
    for (const auto& [subkey, name, number] : cases) {
        Store(subkey, name == "(none)" ? nullptr : name.c_str());
        expected.emplace_back(number, number < 14 || number > 16 ? name : "BadBox");
    }
    CZoRegMailBoxes::SetUserDefault(15); // on Win32s a subkey, but no mailbox
    mailBoxes.Add(99, "stale");
    EXPECT_TRUE(mailBoxes.Load());
    EXPECT_EQ(expected, ContentsOf(mailBoxes));
    EXPECT_EQ(0xFFFFFFFF, mailBoxes.GetDefault()->m_dwNumber) << "the first, whichever the user's default is";
    EXPECT_EQ(15u, mailBoxes.GetUserDefault());
    if (!IsWin32s()) {
        Store("UserDefault", nullptr);
        EXPECT_TRUE(mailBoxes.Load());
        EXPECT_EQ("BadBox", ContentsOf(mailBoxes).back().second) << "a subkey like any other";
    }
}

TEST_F(MailBoxes, AreWrittenWithoutWhatWasThere)
{
    Store("00000077", "old");
    Store("00000077\\Deep", "old");
    Prepare();
    CZoRegMailBoxes mailBoxes;
    EXPECT_TRUE(mailBoxes.Load());
    EXPECT_EQ(Prepared(), ContentsOf(mailBoxes));
    EXPECT_EQ(12u, mailBoxes.GetUserDefault());
    mailBoxes.Add(0x80000000, "far");
    EXPECT_TRUE(mailBoxes.Write());
    EXPECT_EQ(3u, mailBoxes.GetUserDefault()) << "gone with the rest, so the first";
    EXPECT_TRUE(mailBoxes.Load());
    EXPECT_EQ((Contents{{0x80000000, "far"}, {3, "Anna"}, {12, "Office"}}), ContentsOf(mailBoxes));
    BOOL exists = FALSE;
    EXPECT_EQ(0u, m_config.DoesSubkeyExist(kMode, m_key, "-2147483648", exists));
    EXPECT_TRUE(exists);
    const Contents before = Stored();
    mailBoxes.Add(5, std::string(256, 'n').c_str());
    EXPECT_FALSE(mailBoxes.Write()) << "could not be read back";
    EXPECT_EQ(before, Stored());
    mailBoxes.RemoveAll();
    EXPECT_TRUE(mailBoxes.Write());
    EXPECT_TRUE(mailBoxes.Write()) << "nothing there to delete";
    EXPECT_TRUE(Stored().empty());
    EXPECT_EQ(0u, mailBoxes.GetUserDefault());
}

TEST_F(MailBoxes, AreFoundAndRemovedByNumber)
{
    Prepare();
    CZoRegMailBoxes mailBoxes;
    EXPECT_TRUE(mailBoxes.DoesNumberExist(12)) << "loaded by the question";
    EXPECT_EQ(2, mailBoxes.GetCount());
    EXPECT_FALSE(mailBoxes.DoesNumberExist(4));
    CZoRegMailBoxes names;
    EXPECT_FALSE(names.IsNameUnique("ANNA")) << "loaded by the question";
    EXPECT_TRUE(names.IsNameUnique("Ann"));
    EXPECT_TRUE(names.IsNameUnique(nullptr));
    tagREGMAILBOXSTRUCT* const second = mailBoxes.Add(12, "twin");
    EXPECT_STREQ("Office", mailBoxes.GetByNumber(12)->m_csName);
    EXPECT_EQ(nullptr, mailBoxes.GetByNumber(4));
    EXPECT_TRUE(mailBoxes.Remove(second));
    EXPECT_EQ(second, mailBoxes.GetByNumber(12)) << "the first of that number is removed, not the one given";
    EXPECT_TRUE(mailBoxes.Remove(DWORD{12}));
    EXPECT_FALSE(mailBoxes.Remove(DWORD{12}));
    EXPECT_FALSE(mailBoxes.Remove(static_cast<tagREGMAILBOXSTRUCT*>(nullptr)));
    EXPECT_EQ(1, mailBoxes.GetCount());
    EXPECT_EQ(Prepared(), Stored()) << "only Write writes";
}

TEST_F(MailBoxes, AreReadWholeWhileAnotherProgramWrites)
{
    g_key = m_key;
    g_opened = 0;
    for (g_change = 0; g_change <= g_opened; ++g_change) {
        SCOPED_TRACE(g_change);
        Prepare();
        const ImportPatch patch(kLibrary, "RegOpenKeyExA", &OpenKey);
        const ImportPatch patchOld(kLibrary, "RegOpenKeyA", &OpenKeyOld);
        g_opened = 0;
        CZoRegMailBoxes mailBoxes;
        EXPECT_EQ(g_change != 0, mailBoxes.Load() != FALSE);
        EXPECT_FALSE(ReleaseMutex(g_lock)) << "is given back";
        const Contents whole = {{3, "new"}, {12, "new"}, {40, "new"}};
        EXPECT_EQ(g_change == 0 ? Contents() : g_opened < g_change ? Prepared() : whole, ContentsOf(mailBoxes));
    }
    EXPECT_GT(g_change, 6);
}

TEST_F(MailBoxes, AreLeftAloneWhileAnotherProgramHasTheLock)
{
    Prepare();
    {
        const ImportPatch patch(kLibrary, "WaitForSingleObject", &WaitForLockInVain);
        CZoRegMailBoxes mailBoxes;
        mailBoxes.Add(9, "new");
        EXPECT_FALSE(mailBoxes.Write());
        EXPECT_FALSE(mailBoxes.Load());
        EXPECT_EQ(0, mailBoxes.GetCount());
    }
    EXPECT_EQ(Prepared(), Stored());
}

// Folders -------------------------------------------------------------------------------------------------------------

TEST_F(MailBoxes, HaveFoldersBesideTheProgram)
{
    CString path = "before";
    EXPECT_FALSE(CZoRegMailBoxes::GetMailBoxPath(3, path, MAILBOXFOLDER_INBOX)) << "without mailboxes";
    EXPECT_STREQ("before", path);
    Prepare();
    const TestFolder folder;
    const std::string base = IsDoubleByte() ? "\x83\x5C" : "program";
    ASSERT_TRUE(CreateDirectoryA(folder.Path(base).c_str(), nullptr));
    folder.Write("MAILBOX", "a file where a folder should be");
    const ImportPatch patch(kLibrary, "GetModuleFileNameA", &TellProgram);
    const struct {
        std::string program;
        DWORD number;
        int folder;
        const char* expected;
        bool isMade = true;
    } cases[] = {
        {base, 3, MAILBOXFOLDER_PROMPTS, "00000003\\BOXSETUP\\PROMPTS"},
        {base, 3, MAILBOXFOLDER_PROMPTS, "00000003\\BOXSETUP\\PROMPTS"}, // there already
        {base, 12, MAILBOXFOLDER_ROOT, "00000012"},
        {base, 12, MAILBOXFOLDER_INBOX, "00000012\\INBOX"},
        {base, 12, MAILBOXFOLDER_OUTBOX, "00000012\\OUTBOX"},
        {base, 12, MAILBOXFOLDER_BOXSETUP, "00000012\\BOXSETUP"},
        {base, 12, MAILBOXFOLDER_ARCHIVE, "00000012\\ARCHIVE"},
        {base, 4, 6, "00000003"}, // no such mailbox, no such folder: the first mailbox's own
        {base, 4, 7, "00000003"},
        {".", 3, MAILBOXFOLDER_INBOX, "00000003\\INBOX", false},
    };
    for (const auto& c : cases) {
        g_program = folder.Path(c.program + "\\program.exe");
        const std::string expected = c.program + "\\MAILBOX\\" + c.expected;
        EXPECT_TRUE(CZoRegMailBoxes::GetMailBoxPath(c.number, path, static_cast<MAILBOXFOLDER>(c.folder)));
        EXPECT_STREQ(folder.Path(expected).c_str(), path);
        EXPECT_EQ(c.isMade, folder.Exists(expected)) << expected;
    }
    EXPECT_FALSE(folder.Exists(base + "\\MAILBOX\\00000003\\INBOX")) << "only what was asked for";
    g_program = std::string(300, 'x'); // more than a path can have
    path = "before";
    EXPECT_FALSE(CZoRegMailBoxes::GetMailBoxPath(3, path, MAILBOXFOLDER_INBOX));
    EXPECT_STREQ("before", path);
}

TEST_F(MailBoxFaults, LoseNothing)
{
    AllocationFaults memory;
    RunAll(memory);
    RunPath(memory, true);
    FaultSource folders("folder");
    const ZO_FAULTY_CALL(CreateDirectoryA) create(folders, kLibrary, FALSE, ERROR_DISK_FULL);
    RunPath(folders, false);
    RegistryFaults registry;
    const ZO_FAULTY_CALL(GetFileVersionInfoSizeA) size(registry, kLibrary, 0);
    const ZO_FAULTY_CALL(GetFileVersionInfoA) info(registry, kLibrary, FALSE);
    RunAll(registry);
}

TEST_F(MailBoxFaults, AKeyThatIsDeletedMeanwhileIsReadAgain)
{
    FaultSource faults("enumerate");
    const ZO_FAULTY_CALL(RegEnumKeyExA) enumerate(faults, kLibrary, ERROR_KEY_DELETED);
    const ZO_FAULTY_CALL(RegEnumKeyA) enumerateOld(faults, kLibrary, ERROR_KEY_DELETED);
    Run(faults, [](const FaultRun& run) {
        CZoRegMailBoxes mailBoxes;
        const BOOL loaded = run.Act([&] { return mailBoxes.Load(); });
        const bool lost = run.Fired() && (run.persistent || run.number == 1); // the first one looks for the product
        EXPECT_EQ(!lost, loaded != FALSE);
        EXPECT_EQ(lost ? Contents() : Prepared(), ContentsOf(mailBoxes));
    });
}
