// The table of language windows that all processes share, read straight from the library's shared section.
#include "language_driver.h"
#include "product/registered_product.h"
#include "support/test.h"

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
    void SetUp() override { Clear(); }
    void TearDown() override { Clear(); }
    static void Clear() { std::memset(&SharedTable(), 0, sizeof(ZoLanguageWindowTable)); }

    static const ZoLanguageWindowRow* OwnRow() { return RowOf(GetCurrentProcessId()); }
};

} // namespace

TEST_F(LanguageWindows, AreListedInOrderAndTakenOut)
{
    auto first = std::make_unique<CZoLanguageSupport>();
    auto second = std::make_unique<CZoLanguageSupport>();
    auto third = std::make_unique<CZoLanguageSupport>();
    EXPECT_EQ(nullptr, OwnRow());
    for (auto* support : {first.get(), second.get(), third.get()})
        ASSERT_TRUE(support->Create());
    ASSERT_NE(nullptr, OwnRow());
    EXPECT_EQ(3, OwnRow()->windowCount);
    EXPECT_EQ(HandleToULong(first->m_hWnd), OwnRow()->windows[0]);
    EXPECT_EQ(HandleToULong(third->m_hWnd), OwnRow()->windows[2]);
    char name[8] = {};
    GetWindowTextA(first->m_hWnd, name, sizeof name);
    EXPECT_STREQ("ZoLS", name);
    EXPECT_FALSE(IsWindowVisible(first->m_hWnd));

    second.reset();
    ASSERT_EQ(2, OwnRow()->windowCount);
    EXPECT_EQ(HandleToULong(third->m_hWnd), OwnRow()->windows[1]) << "moved up";
    first.reset();
    third.reset();
    EXPECT_EQ(nullptr, OwnRow());
    EXPECT_EQ(0, SharedTable().rowCount);
}

TEST_F(LanguageWindows, LastWindowOfAMiddleRowMovesTheLaterRowsUp)
{
    ZoLanguageWindowTable& table = SharedTable();
    table.rowCount = 1;
    table.rows[0] = {11, 1, {101}};
    CZoLanguageSupport support;
    ASSERT_TRUE(support.Create());
    ASSERT_EQ(2, table.rowCount);
    table.rowCount = 3;
    table.rows[2] = {33, 2, {301, 302}};
    support.DestroyWindow();
    ASSERT_EQ(2, table.rowCount);
    EXPECT_EQ(11u, table.rows[0].processId);
    EXPECT_EQ(33u, table.rows[1].processId);
    EXPECT_EQ(302u, table.rows[1].windows[1]);
}

ZO_CHILD(LoadLanguageAndWait)
{
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    child.Ready();
    child.WaitForGo();
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
}

TEST_F(LanguageWindows, OfAbandonedRowsTakeTheirPlaceInAFullTable)
{
    const RegisteredProduct product;
    ChildProcess living("LoadLanguageAndWait");
    ChildProcess killed("LoadLanguageAndWait");
    ASSERT_TRUE(living.WaitUntilReady());
    ASSERT_TRUE(killed.WaitUntilReady());
    ASSERT_NE(nullptr, RowOf(living.ProcessId()));
    ASSERT_NE(nullptr, RowOf(killed.ProcessId()));
    const ZoLanguageWindowRow whole = *RowOf(living.ProcessId());
    const ZoLanguageWindowRow left = *RowOf(killed.ProcessId()); // its handle is open, so the id is nobody else's
    killed.Kill();
    static DWORD s_session; // of the living process, as the system tells
    struct System {
        static HANDLE WINAPI RefuseProcess(DWORD, BOOL, DWORD)
        {
            SetLastError(ERROR_ACCESS_DENIED);
            return nullptr;
        }
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
        ZoLanguageWindowTable& table = SharedTable();
        std::fill(std::begin(table.rows), std::end(table.rows), whole);
        table.rows[40] = c.row;
        table.rowCount = kLanguageWindowRows;
        const auto before = std::make_unique<ZoLanguageWindowTable>(table);
        s_session = c.session;
        const ImportPatch find("ZOGBLBRX.DLL", "GetProcAddress", &System::FindGetSession);
        std::unique_ptr<ImportPatch> refuse;
        if (!c.mayBeOpened)
            refuse = std::make_unique<ImportPatch>("ZOGBLBRX.DLL", "OpenProcess", &System::RefuseProcess);
        CZoLanguageSupport support;
        EXPECT_TRUE(support.Create()) << "in any case";
        if (c.isUsedAgain) {
            EXPECT_EQ(GetCurrentProcessId(), table.rows[40].processId);
            EXPECT_EQ(1, table.rows[40].windowCount);
            EXPECT_EQ(HandleToULong(support.m_hWnd), table.rows[40].windows[0]);
            table.rows[40] = before->rows[40];
        }
        EXPECT_EQ(0, std::memcmp(before.get(), &table, sizeof table)) << "nothing else";
        support.DestroyWindow();
        EXPECT_EQ(0, std::memcmp(before.get(), &table, sizeof table));
    }
    living.Go();
    living.Finish();
}

TEST_F(LanguageWindows, FullRowLeavesAWindowOutUnlessItsHandlesAreOld)
{
    ZoLanguageWindowTable& table = SharedTable();
    CZoLanguageSupport first;
    ASSERT_TRUE(first.Create());
    table.rows[0].windowCount = kLanguageWindowsPerRow;
    std::fill(std::begin(table.rows[0].windows), std::end(table.rows[0].windows), HandleToULong(first.m_hWnd));
    table.rows[1].processId = 0xABCD; // what a 257th handle would overwrite
    {
        CZoLanguageSupport support;
        EXPECT_TRUE(support.Create());
        EXPECT_EQ(kLanguageWindowsPerRow, table.rows[0].windowCount);
        EXPECT_EQ(0xABCDu, table.rows[1].processId);
    }
    EXPECT_EQ(kLanguageWindowsPerRow, table.rows[0].windowCount);

    // An earlier process of this id left the row.
    std::fill(std::begin(table.rows[0].windows), std::end(table.rows[0].windows), 7);
    table.rows[0].windows[200] = HandleToULong(GetDesktopWindow());
    CZoLanguageSupport support;
    EXPECT_TRUE(support.Create());
    EXPECT_EQ(1, table.rows[0].windowCount);
    EXPECT_EQ(HandleToULong(support.m_hWnd), table.rows[0].windows[0]);
}

TEST_F(LanguageWindows, DamagedCountsAreHarmless)
{
    ZoLanguageWindowTable& table = SharedTable();
    for (const LONG count : {-1L, LONG_MIN, kLanguageWindowRows + 1, LONG_MAX}) {
        Clear();
        table.rowCount = count;
        {
            CZoLanguageSupport support;
            EXPECT_TRUE(support.Create());
            EXPECT_EQ(GetCurrentProcessId(), table.rows[0].processId) << "inside the table";
        }
        Clear();
        CZoLanguageSupport support;
        ASSERT_TRUE(support.Create());
        ASSERT_NE(nullptr, OwnRow());
        table.rows[0].windowCount = count;
        support.DestroyWindow();
        EXPECT_LE(table.rowCount, 1);
    }
}

ZO_CHILD(EndWithLanguageLoaded)
{
    EXPECT_TRUE(ZoGblLoadLanguageDLL()); // and never released
}

TEST_F(LanguageWindows, ProcessesShareTheTable)
{
    const RegisteredProduct product;
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    ChildProcess first("LoadLanguageAndWait");
    ChildProcess second("LoadLanguageAndWait");
    ASSERT_TRUE(first.WaitUntilReady());
    ASSERT_TRUE(second.WaitUntilReady());
    EXPECT_EQ(3, SharedTable().rowCount);
    for (const auto* child : {&first, &second}) {
        const ZoLanguageWindowRow* row = RowOf(child->ProcessId());
        ASSERT_NE(nullptr, row);
        EXPECT_EQ(1, row->windowCount);
        EXPECT_TRUE(IsWindow(reinterpret_cast<HWND>(static_cast<UINT_PTR>(row->windows[0]))));
    }
    first.Go();
    first.Finish();
    EXPECT_EQ(nullptr, RowOf(first.ProcessId()));
    EXPECT_EQ(2, SharedTable().rowCount);

    second.Kill(); // leaves its row behind, whose window no longer answers
    EXPECT_NE(nullptr, RowOf(second.ProcessId()));
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
    EXPECT_EQ(nullptr, OwnRow());
    EXPECT_EQ(1, SharedTable().rowCount);
}

TEST_F(LanguageWindows, ProcessMayEndWithItsLanguageLoaded)
{
    const RegisteredProduct product;
    ChildProcess child("EndWithLanguageLoaded");
    child.Finish();
}

// Telling all windows -------------------------------------------------------------------------------------------------

namespace {

/// A window that hears of changes.
class Listener : public CWnd {
public:
    Listener()
    {
        CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr);
        m_act = [] {};
    }
    ~Listener() override { DestroyWindow(); }

    std::string m_heard; // of each message the second parameter
    std::function<void()> m_act;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        static const UINT s_change = RegisterWindowMessageA("ZoBrixelLanguageChange");
        if (message != s_change)
            return CWnd::WindowProc(message, wParam, lParam);
        EXPECT_EQ(kGerman, wParam);
        m_heard += std::to_string(lParam);
        std::exchange(m_act, [] {})();
        return 1;
    }
};

void RemoveRow(int index)
{
    ZoLanguageWindowTable& table = SharedTable();
    std::copy(table.rows + index + 1, table.rows + table.rowCount, table.rows + index);
    --table.rowCount;
}

void RemoveWindow(int index)
{
    ZoLanguageWindowRow& row = SharedTable().rows[0];
    std::copy(row.windows + index + 1, row.windows + row.windowCount, row.windows + index);
    --row.windowCount;
}

} // namespace

TEST_F(LanguageWindows, AllHearOfAChangeThoughOthersGoMeanwhile)
{
    ZO_ONLY_IN(Family() != WindowsFamily::kWin32s, "changes that are told at once");
    const RegisteredProduct product;
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
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
        {"own row goes", {{own, {0}}, {own, {1}}, {own, {2}}}, 0, [] { RemoveRow(0); }, {"1", "1", "1"}},
        {"earlier row goes", {{own, {0}}, {own, {1}}, {own, {2}}}, 1, [] { RemoveRow(0); }, {"1", "1", "1"}},
        {"two rows go", {{own, {0}}, {own, {1}}, {own, {2}}}, 1, [] { RemoveRow(0), RemoveRow(0); }, {"1", "1", "1"}},
        {"own window goes", {{own, {0, 1, 2}}}, 0, [] { RemoveWindow(0); }, {"0", "0", "1"}},
        {"earlier window goes", {{own, {0, 1, 2}}}, 1, [] { RemoveWindow(0); }, {"0", "0", "1"}},
        {"row comes", {{own, {0}}, {own, {1}}}, 1, [] { SharedTable().rowCount = 3; }, {"1", "1", "1"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Listener listeners[3];
        if (c.actor >= 0)
            listeners[c.actor].m_act = c.act;
        CZoLanguageSupport chooser;
        const DialogDriver driver{[&](HWND dialog) {
            ZoLanguageWindowTable& table = SharedTable();
            Clear();
            table.rows[2] = {own, 1, {HandleToULong(listeners[2].m_hWnd)}}; // for the row that comes
            for (const auto& [process, windows] : c.rows) {
                ZoLanguageWindowRow& row = table.rows[table.rowCount++];
                row = {process, 0, {}};
                for (const int index : windows)
                    row.windows[row.windowCount++] = HandleToULong(listeners[index].m_hWnd);
            }
            ChooseLanguage(dialog, kGerman);
            Press(dialog, IDOK);
        }};
        EXPECT_TRUE(chooser.SelectLanguage(nullptr));
        for (int i = 0; i < 3; ++i) {
            const std::string& heard = listeners[i].m_heard;
            EXPECT_EQ(c.heard[i], c.act == nullptr ? heard : heard.substr(0, 1)) << i;
        }
        Clear();
    }
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
}

ZO_CHILD(HangForAWhile)
{
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    {
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
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
}

TEST_F(LanguageWindows, OneProgramThatHangsDelaysTheOthersOnceAndFollows)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10 && !IsDoubleByte(), "the same everywhere, and slow");
    const RegisteredProduct product;
    const std::string name = "hangs" + std::to_string(GetCurrentProcessId());
    const HANDLE goesOn = CreateEventA(nullptr, TRUE, FALSE, name.c_str());
    ChildProcess hangs("HangForAWhile", {name});
    ASSERT_TRUE(hangs.WaitUntilReady());
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    DWORD begin = 0;
    const DialogDriver driver{[&](HWND dialog) {
        ChooseLanguage(dialog, kGerman);
        begin = GetTickCount();
        Press(dialog, IDOK);
    }};
    EXPECT_TRUE(CZoLanguageSupport().SelectLanguage(nullptr));
    EXPECT_LT(GetTickCount() - begin, 6000u) << "two seconds, and not for each of the five windows";
    EXPECT_EQ(kGerman, ZoGblGetLanguageLCID()) << "behind it in the table";
    SetEvent(goesOn);
    CloseHandle(goesOn);
    hangs.Finish();
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
}
