// The table of language windows that all processes share, read straight from the library's shared section.
#include "language_driver.h"

namespace {

const ZoLanguageWindowRow* RowOf(DWORD process)
{
    const ZoLanguageWindowTable& table = SharedTable();
    for (LONG i = 0; i < table.rowCount; ++i) {
        if (table.rows[i].processId == process)
            return &table.rows[i];
    }
    return nullptr;
}

/// Starts from an empty table and leaves one.
class LanguageWindows : public testing::Test {
protected:
    LanguageWindows() { Clear(); }
    ~LanguageWindows() override { Clear(); }
    void Clear() { m_table = {}; }
    static const ZoLanguageWindowRow* OwnRow() { return RowOf(GetCurrentProcessId()); }

    const RegisteredProduct m_product;
    ZoLanguageWindowTable& m_table = SharedTable();
};

} // namespace

TEST_F(LanguageWindows, AreListedInOrderAndTakenOut)
{
    std::unique_ptr<CZoLanguageSupport> windows[3];
    for (auto& support : windows) {
        support = std::make_unique<CZoLanguageSupport>();
        ASSERT_TRUE(support->Create());
    }
    ASSERT_NE(nullptr, OwnRow());
    EXPECT_EQ(3, OwnRow()->windowCount);
    EXPECT_EQ(HandleToULong(windows[0]->m_hWnd), OwnRow()->windows[0]);
    EXPECT_EQ(HandleToULong(windows[2]->m_hWnd), OwnRow()->windows[2]);
    EXPECT_EQ("ZoLS", TextOf(windows[0]->m_hWnd));
    EXPECT_FALSE(IsWindowVisible(windows[0]->m_hWnd));

    windows[1].reset();
    ASSERT_EQ(2, OwnRow()->windowCount);
    EXPECT_EQ(HandleToULong(windows[2]->m_hWnd), OwnRow()->windows[1]) << "moved up";
    windows[0].reset();
    windows[2].reset();
    EXPECT_EQ(0, m_table.rowCount);

    // The last window of a row in the middle moves the later rows up.
    m_table.rowCount = 1;
    m_table.rows[0] = {11, 1, {101}};
    CZoLanguageSupport support;
    ASSERT_TRUE(support.Create());
    ASSERT_EQ(2, m_table.rowCount);
    m_table.rowCount = 3;
    m_table.rows[2] = {33, 2, {301, 302}};
    support.DestroyWindow();
    ASSERT_EQ(2, m_table.rowCount);
    EXPECT_EQ(11u, m_table.rows[0].processId);
    EXPECT_EQ(33u, m_table.rows[1].processId);
    EXPECT_EQ(302u, m_table.rows[1].windows[1]);
}

ZO_CHILD(LoadLanguageAndWait)
{
    const LoadedLanguage loaded;
    child.ReadyUntilGo();
}

ZO_CHILD(EndWithLanguageLoaded)
{
    EXPECT_TRUE(ZoGblLoadLanguageDLL()); // and never released
}

TEST_F(LanguageWindows, OfAbandonedRowsTakeTheirPlaceInAFullTable)
{
    ChildProcess living("LoadLanguageAndWait"), killed("LoadLanguageAndWait");
    ASSERT_TRUE(living.WaitUntilReady() && killed.WaitUntilReady());
    ASSERT_TRUE(RowOf(living.ProcessId()) != nullptr && RowOf(killed.ProcessId()) != nullptr);
    const ZoLanguageWindowRow whole = *RowOf(living.ProcessId());
    const ZoLanguageWindowRow left = *RowOf(killed.ProcessId()); // its handle is open, so the id is nobody else's
    killed.Kill();
    EXPECT_EQ(2, m_table.rowCount) << "nobody takes its row out";
    static DWORD s_session; // of the living process, as the system tells
    struct System {
        static BOOL WINAPI GetSession(DWORD process, DWORD* session)
        {
            *session = process == GetCurrentProcessId() ? 0 : s_session;
            return TRUE;
        }
        static FARPROC WINAPI FindGetSession(HMODULE, LPCSTR)
        {
            return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&GetSession));
        }
    };
    const struct {
        const char* name;
        ZoLanguageWindowRow row;
        bool mayBeOpened;
        DWORD session;
        bool isUsedAgain;
    } cases[] = {
        {"living", whole, true, 0, false},
        {"living, one window gone", {living.ProcessId(), 2, {7, whole.windows[0]}}, false, 0, false},
        {"living, about to enter its window", {living.ProcessId(), 0, {}}, true, 0, false},
        {"killed", left, true, 0, true},
        {"killed, in another session", left, true, 1, true},
        {"killed, may not be opened", left, false, 0, true},
        {"killed, may not be opened, in another session", left, false, 1, false},
        {"an id that nobody has", {0xFFFFFFF0, 1, {7}}, true, 1, true},
        {"another program's id by now", {living.ProcessId(), 1, {7}}, true, 0, true},
        {"windows that cannot be seen from here", {living.ProcessId(), 1, {7}}, true, 1, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::fill(std::begin(m_table.rows), std::end(m_table.rows), whole);
        m_table.rows[40] = c.row;
        m_table.rowCount = kLanguageWindowRows;
        const auto before = std::make_unique<ZoLanguageWindowTable>(m_table);
        s_session = c.session;
        const ImportPatch find("ZOGBLBRX.DLL", "GetProcAddress", &System::FindGetSession);
        FaultSource refusal("OpenProcess");
        const ZO_FAULTY_CALL(OpenProcess) refuse(refusal, "ZOGBLBRX.DLL", nullptr, ERROR_ACCESS_DENIED);
        refusal.Arm(c.mayBeOpened ? 0 : 1, !c.mayBeOpened);
        CZoLanguageSupport support;
        EXPECT_TRUE(support.Create()) << "in any case";
        if (c.isUsedAgain) {
            EXPECT_EQ(GetCurrentProcessId(), m_table.rows[40].processId);
            EXPECT_EQ(1, m_table.rows[40].windowCount);
            EXPECT_EQ(HandleToULong(support.m_hWnd), m_table.rows[40].windows[0]);
            m_table.rows[40] = before->rows[40];
        }
        EXPECT_EQ(0, std::memcmp(before.get(), &m_table, sizeof m_table)) << "nothing else";
        support.DestroyWindow();
        EXPECT_EQ(0, std::memcmp(before.get(), &m_table, sizeof m_table));
    }
    m_table.rows[0] = whole;
    m_table.rowCount = 1;
    living.Finish();
    EXPECT_EQ(0, m_table.rowCount) << "the process takes its row out";
    ChildProcess("EndWithLanguageLoaded").Finish();
}

TEST_F(LanguageWindows, FullRowLeavesAWindowOutUnlessItsHandlesAreOld)
{
    CZoLanguageSupport first;
    ASSERT_TRUE(first.Create());
    m_table.rows[0].windowCount = kLanguageWindowsPerRow;
    std::fill(std::begin(m_table.rows[0].windows), std::end(m_table.rows[0].windows), HandleToULong(first.m_hWnd));
    m_table.rows[1].processId = 0xABCD; // what a 257th handle would overwrite
    EXPECT_TRUE(CZoLanguageSupport().Create());
    EXPECT_EQ(0xABCDu, m_table.rows[1].processId);
    EXPECT_EQ(kLanguageWindowsPerRow, m_table.rows[0].windowCount);

    // An earlier process of this id left the row.
    std::fill(std::begin(m_table.rows[0].windows), std::end(m_table.rows[0].windows), 7);
    m_table.rows[0].windows[200] = HandleToULong(GetDesktopWindow());
    CZoLanguageSupport support;
    EXPECT_TRUE(support.Create());
    EXPECT_EQ(1, m_table.rows[0].windowCount);
    EXPECT_EQ(HandleToULong(support.m_hWnd), m_table.rows[0].windows[0]);
}

TEST_F(LanguageWindows, DamagedCountsAreHarmless)
{
    for (const LONG count : {-1L, LONG_MIN, kLanguageWindowRows + 1, LONG_MAX}) {
        for (const bool isOfRows : {true, false}) {
            Clear();
            if (isOfRows)
                m_table.rowCount = count;
            CZoLanguageSupport support;
            EXPECT_TRUE(support.Create());
            EXPECT_EQ(GetCurrentProcessId(), m_table.rows[0].processId) << "inside the table";
            if (!isOfRows)
                m_table.rows[0].windowCount = count;
            support.DestroyWindow();
            EXPECT_LE(m_table.rowCount, isOfRows ? kLanguageWindowRows : 1);
        }
    }
}

// Telling all windows -------------------------------------------------------------------------------------------------

namespace {

/// A window that hears of changes.
class Listener : public CWnd {
public:
    Listener() { CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr); }
    ~Listener() override { DestroyWindow(); }

    std::string m_heard; // of each message the second parameter
    void (*m_act)() = nullptr;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        static const UINT s_change = RegisterWindowMessageA("ZoBrixelLanguageChange");
        if (message != s_change)
            return CWnd::WindowProc(message, wParam, lParam);
        EXPECT_EQ(kGerman, wParam);
        m_heard += std::to_string(lParam);
        if (const auto act = std::exchange(m_act, nullptr))
            act();
        return 1;
    }
};

/// Takes the first row or window out, as its process does.
template <class ELEMENT, size_t SIZE> void RemoveFirst(ELEMENT (&elements)[SIZE], LONG& count)
{
    std::copy(elements + 1, elements + count--, elements);
}
void RemoveRow() { RemoveFirst(SharedTable().rows, SharedTable().rowCount); }
void RemoveWindow() { RemoveFirst(SharedTable().rows[0].windows, SharedTable().rows[0].windowCount); }

} // namespace

TEST_F(LanguageWindows, AllHearOfAChangeThoughOthersGoMeanwhile)
{
    ZO_ONLY_IN(Family() != WindowsFamily::kWin32s, "changes that are told at once");
    const LoadedLanguage loaded;
    constexpr DWORD kNobody = 0xFFFFFFF0;
    const DWORD own = GetCurrentProcessId();
    const struct {
        const char* name;
        std::vector<std::pair<DWORD, std::vector<int>>> rows; // process, listeners
        int actor;                                            // the listener that acts when it is told
        void (*act)();
        std::vector<std::string> heard; // by each listener; with an act it may hear more often
    } cases[] = {
        {"in order, the last marked", {{own, {0, 1}}, {own, {2}}}, -1, nullptr, {"0", "1", "1"}},
        {"not its process's", {{kNobody, {0}}, {own, {1}}}, -1, nullptr, {"", "1", ""}},
        {"own row goes", {{own, {0}}, {own, {1}}, {own, {2}}}, 0, &RemoveRow, {"1", "1", "1"}},
        {"earlier row goes", {{own, {0}}, {own, {1}}, {own, {2}}}, 1, &RemoveRow, {"1", "1", "1"}},
        {"two rows go", {{own, {0}}, {own, {1}}, {own, {2}}}, 1, [] { RemoveRow(), RemoveRow(); }, {"1", "1", "1"}},
        {"own window goes", {{own, {0, 1, 2}}}, 0, &RemoveWindow, {"0", "0", "1"}},
        {"earlier window goes", {{own, {0, 1, 2}}}, 1, &RemoveWindow, {"0", "0", "1"}},
        {"row comes", {{own, {0}}, {own, {1}}}, 1, [] { SharedTable().rowCount = 3; }, {"1", "1", "1"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Listener listeners[3];
        if (c.actor >= 0)
            listeners[c.actor].m_act = c.act;
        CZoLanguageSupport chooser;
        const DialogDriver driver{[&](HWND dialog) {
            Clear();
            m_table.rows[2] = {own, 1, {HandleToULong(listeners[2].m_hWnd)}}; // for the row that comes
            for (const auto& [process, windows] : c.rows) {
                ZoLanguageWindowRow& row = m_table.rows[m_table.rowCount++];
                row = {process, 0, {}};
                for (const int index : windows)
                    row.windows[row.windowCount++] = HandleToULong(listeners[index].m_hWnd);
            }
            ChoosingLanguage(kGerman)(dialog);
        }};
        EXPECT_TRUE(chooser.SelectLanguage(nullptr));
        for (int i = 0; i < 3; ++i) {
            const std::string& heard = listeners[i].m_heard;
            EXPECT_EQ(c.heard[i], c.act == nullptr ? heard : heard.substr(0, 1)) << i;
        }
        Clear();
    }
}

ZO_CHILD(HangForAWhile)
{
    const LoadedLanguage loaded;
    CZoLanguageSupport more[4];
    for (CZoLanguageSupport& support : more)
        ASSERT_TRUE(support.LoadCurrentLanguage(LibraryPath()));
    const HANDLE goesOn = OpenEventA(SYNCHRONIZE, FALSE, child.Argument(0).c_str());
    ASSERT_NE(nullptr, goesOn);
    child.Ready();
    EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(goesOn, kChildTimeout));
    CloseHandle(goesOn);
    MSG message;
    PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE); // what was sent meanwhile is answered
    EXPECT_EQ(kGerman, ZoGblGetLanguageLCID());
    for (CZoLanguageSupport& support : more)
        EXPECT_EQ(kGerman, support.GetLCID());
}

TEST_F(LanguageWindows, OneProgramThatHangsDelaysTheOthersOnceAndFollows)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10 && !IsDoubleByte(), "the same everywhere, and slow");
    const std::string name = UniqueName("hangs");
    const HANDLE goesOn = CreateEventA(nullptr, TRUE, FALSE, name.c_str());
    ChildProcess hangs("HangForAWhile", {name});
    ASSERT_TRUE(hangs.WaitUntilReady());
    const LoadedLanguage loaded;
    DWORD begin = 0;
    const DialogDriver driver{[&](HWND dialog) {
        begin = GetTickCount();
        ChoosingLanguage(kGerman)(dialog);
    }};
    EXPECT_TRUE(CZoLanguageSupport().SelectLanguage(nullptr));
    EXPECT_LT(GetTickCount() - begin, 6000u) << "two seconds, and not for each of the five windows";
    EXPECT_EQ(kGerman, ZoGblGetLanguageLCID()) << "behind it in the table";
    SetEvent(goesOn);
    CloseHandle(goesOn);
}
