// Tests of the test helpers themselves, where a fault in them would hide faults in what they test.

#include "support/test.h"

namespace {

/// Runs checks, whose failures do not count: one of them must have this text in it.
void ExpectFailure(const std::string& text, const std::function<void()>& checks)
{
    testing::TestPartResultArray results;
    {
        const testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        checks();
    }
    std::string all;
    for (int i = 0; i < results.size(); ++i)
        all += results.GetTestPartResult(i).message() + std::string("\n");
    EXPECT_NE(std::string::npos, all.find(text)) << "not among the failures: " << text << "\n" << all;
}

} // namespace

// Import patch --------------------------------------------------------------------------------------------------------

TEST(ImportPatch, HoldsForOneModuleAndIsUndone)
{
    const TestFolder folder;
    folder.Write("file", "content");
    const std::string path = folder.Path("file");
    CFile file;
    CFileException reason;
    const auto errorOfOpen = [&] { return file.Open(path.c_str(), CFile::modeRead, &reason) ? 0 : reason.m_lOsError; };
    FaultSource source("open"), innerSource("inner open");
    {
        const ZO_FAULTY_CALL(CreateFileA) open(source, "ZOAFX.DLL", INVALID_HANDLE_VALUE, ERROR_WRITE_PROTECT);
        {
            const ZO_FAULTY_CALL(CreateFileA) inner(innerSource, "ZOAFX.DLL", INVALID_HANDLE_VALUE, ERROR_SEEK);
            EXPECT_EQ(0, errorOfOpen());
            file.Close();
            source.Arm(1, true);
            EXPECT_EQ(ERROR_WRITE_PROTECT, errorOfOpen());
            innerSource.Arm(1, true);
            EXPECT_EQ(ERROR_SEEK, errorOfOpen());
        }
        EXPECT_EQ(ERROR_WRITE_PROTECT, errorOfOpen());
        EXPECT_EQ("content", folder.Read("file")) << "this program's own import changed as well";
    }
    EXPECT_EQ(0, errorOfOpen());
}

TEST(ImportPatch, FailsLoudlyWithoutSuchAnImport)
{
    const auto patch = [](const char* module, const char* name) { const ImportPatch made(module, name, &AfxGetApp); };
    ExpectFailure("imports no CreateFileZ", [=] { patch("ZOAFX.DLL", "CreateFileZ"); });
    ExpectFailure("is not loaded", [=] { patch("NOSUCH.DLL", "CreateFileA"); });
}

// Fault loop ----------------------------------------------------------------------------------------------------------

TEST(FaultLoop, FailsEachCallOnceAndFromThenOn)
{
    FaultSource source("call");
    std::vector<std::string> patterns;
    const auto ask = [&] { return source.Next() ? 'x' : '.'; };
    RunFaultLoop(source, [&](const FaultRun&) { patterns.push_back({ask(), ask(), ask()}); });
    const std::vector<std::string> expected = {"...", "x..", ".x.", "..x", "...", "xxx", ".xx", "..x", "..."};
    EXPECT_EQ(expected, std::exchange(patterns, {}));

    RunFaultActs(source, [&](const FaultRun& run) {
        std::string pattern(1, ask());
        run.Act([&] { pattern += {ask(), ask()}; });
        pattern += ask();
        pattern += run.Act(ask);
        patterns.push_back(pattern + ask());
    });
    const std::vector<std::string> within = {"......", ".x....", "..x...", "....x.", "......",
                                             ".xx.x.", "..x.x.", "....x.", "......"};
    EXPECT_EQ(within, patterns);
}

TEST(FaultLoop, NoticesWhatGoesWrong)
{
    FaultSource silent("silent");
    ExpectFailure("no fault ever fired", [&] { RunFaultLoop(silent, [](const FaultRun&) {}); });

    FaultSource endless("endless");
    ExpectFailure("faults still fire", [&] {
        RunFaultLoop(endless,
                     [&](const FaultRun& run) {
                         for (int i = 0; i <= run.number; ++i)
                             endless.Next();
                     },
                     {.maximumRuns = 5});
    });

    AllocationFaults faults;
    CString* leaked[4] = {};
    int count = 0;
    ExpectFailure("left something behind", [&] {
        RunFaultLoop(faults, [&](const FaultRun& run) {
            try {
                const CString text("text");
            } catch (CMemoryException* e) {
                e->Delete();
                run.Stop();
                leaked[count++] = new CString("leaked");
            }
        });
    });
    for (int i = 0; i < count; ++i)
        delete leaked[i];
    EXPECT_EQ(2, count);

    ExpectFailure("threw CMemoryException",
                  [&] { RunFaultLoop(faults, [](const FaultRun&) { const CString text("text"); }); });
}

TEST(FaultLoop, CountsHandlesAndDrawingObjects)
{
    const ProcessCounts before = ProcessCounts::Take();
    const HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    HKEY key = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExA(HKEY_CURRENT_USER, "Software", 0, KEY_READ, &key));
    const HPEN pen = CreatePen(PS_SOLID, 1, RGB(1, 2, 3));
    CString* text = new CString("text"); // its buffer is the framework's
    const ProcessCounts during = ProcessCounts::Take();
    EXPECT_EQ(before.handles + 2, during.handles);
    EXPECT_EQ(before.gdi + 1, during.gdi);
    EXPECT_EQ(before.blocks + 1, during.blocks);
    CloseHandle(event);
    RegCloseKey(key);
    DeleteObject(pen);
    delete text;
    EXPECT_EQ(before, ProcessCounts::Take());
}

// Child processes -----------------------------------------------------------------------------------------------------

ZO_CHILD(Answers)
{
    child.Report(child.Argument(0));
    child.ReadyUntilGo();
    child.Report("two\nlines \\ and a backslash");
}
ZO_CHILD(Finishes) {}
ZO_CHILD(Fails) { EXPECT_EQ(1, 2) << "on purpose"; }
ZO_CHILD(BreaksOff) { TerminateProcess(GetCurrentProcess(), 0); }
ZO_CHILD(WaitsForEver)
{
    child.Report("waits");
    child.Ready();
    Sleep(INFINITE);
}

TEST(ChildProcess, ReportsAndTakesOrders)
{
    ChildProcess("Finishes").Finish(); // the first one leaves a message queue and a handle with the system
    ZO_EXPECT_NO_LEAK({
        ChildProcess child("Answers", {"with blanks\\"});
        ASSERT_TRUE(child.WaitUntilReady());
        EXPECT_EQ(std::vector<std::string>{"with blanks\\"}, child.Reports());
        child.Finish();
        ASSERT_EQ(2u, child.Reports().size());
        EXPECT_EQ("two\nlines \\ and a backslash", child.Reports()[1]);
    });
}

TEST(ChildProcess, FailuresCount)
{
    ExpectFailure("on purpose", [] { ChildProcess("Fails").Finish(); });
    ExpectFailure("broke off, exit code 0", [] { ChildProcess("BreaksOff").Finish(); });
    ExpectFailure("ended before it was ready", [] { ChildProcess("NoSuchChild").WaitUntilReady(); });
}

TEST(ChildProcess, CanBeKilled)
{
    ChildProcess child("WaitsForEver");
    ASSERT_TRUE(child.WaitUntilReady());
    child.Kill();
    EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(child.Process(), 0));
    EXPECT_EQ(std::vector<std::string>{"waits"}, child.Reports());
}

// Watchdog ------------------------------------------------------------------------------------------------------------

TEST(Watchdog, BarksOnlyWhenNothingGoesOn)
{
    static volatile bool barked = false;
    const Watchdog watchdog(
        100, [] { barked = true; }, 10);
    for (int i = 0; i < 150; ++i) {
        ReportProgress();
        Sleep(10);
        ASSERT_FALSE(barked) << i;
    }
    EXPECT_TRUE(WaitUntil([] { return barked; }));
}

TEST(Watchdog, IsToldOfEachRoundOfALoop)
{
    const LONG before = ProgressCount();
    unsigned cases = 0;
    const auto isOdd = [&](unsigned number, Random&) { return cases++ == number && number % 2 != 0; };
    ForEachMutation(isOdd, {50, 50});
    EXPECT_EQ(before + static_cast<LONG>(cases), ProgressCount());
    FaultSource source("step");
    RunFaultLoop(source, [&](const FaultRun&) {
        for (int step = 0; step < 5; ++step)
            source.Next();
    });
    EXPECT_EQ(before + static_cast<LONG>(cases) + 2 * 6, ProgressCount());
    for (const bool accepted : {false, true})
        ExpectFailure("accepted of", [=] { ForEachMutation([=](unsigned, Random&) { return accepted; }, {50, 50}); });
}

// Buffers, names, gaps ------------------------------------------------------------------------------------------------

TEST(SentinelBuffer, NoticesEveryWrite)
{
    SentinelBuffer buffer(4);
    EXPECT_EQ(0xDEADBEEF, GetLastError());
    EXPECT_TRUE(buffer.IsUntouched());
    buffer.Data()[3] = '\0';
    EXPECT_FALSE(buffer.IsUntouched());
    buffer.ExpectGuardsIntact();
    for (const std::ptrdiff_t outside : {-64, -1, 4, 67}) {
        SentinelBuffer damaged(4);
        damaged.Data()[outside] = 'x';
        ExpectFailure(outside < 0 ? "before a buffer of 4" : "behind a buffer of 4",
                      [&] { damaged.ExpectGuardsIntact(); });
    }
}

TEST(TestFolder, IsGoneAfterwardsAndTakesThePlaceOfAKilledRuns)
{
    std::string path;
    {
        const TestFolder folder;
        path = folder.Path();
        CreateDirectoryA(folder.Path("sub").c_str(), nullptr);
        folder.Write("sub\\file", "text");
        SetFileAttributesA(folder.Path("sub\\file").c_str(), FILE_ATTRIBUTE_READONLY);
        EXPECT_EQ("text", folder.Read("sub\\file"));
    }
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesA(path.c_str()));
    // The next one's name, as a process of this number could have left it behind.
    const size_t number = path.find_last_of('.') + 1;
    path = path.substr(0, number) + std::to_string(std::stoul(path.substr(number)) + 1);
    ASSERT_TRUE(CreateDirectoryA(path.c_str(), nullptr));
    WriteBytes(path + "\\old", "text");
    const TestFolder folder;
    EXPECT_EQ(path, folder.Path());
    EXPECT_FALSE(folder.Exists("old"));
}

TEST(WineGap, TurnsRedOnceItIsClosed)
{
    ZO_ONLY_IN(IsWine(), "there are no gaps on Windows");
    ZO_WINE_GAP("adds wrongly", EXPECT_EQ(3, 1 + 1));
    ExpectFailure("Wine behaves now", [] { ZO_WINE_GAP("adds wrongly", EXPECT_EQ(2, 1 + 1)); });
}

// Guard heap ----------------------------------------------------------------------------------------------------------

static void Free(volatile char* block) { AfxFreeMemory(const_cast<char*>(block)); }

/// What is done with a block of 24 bytes and one of 5. The last one is right.
static void (*const kUses[])(volatile char* block, volatile char* odd) = {
    [](auto* block, auto*) { static_cast<void>(block[32]); },
    [](auto* block, auto*) { block[32] = 'x'; },
    [](auto* block, auto*) { Free(block), static_cast<void>(block[0]); },
    [](auto* block, auto*) { Free(block), Free(block); },
    [](auto*, auto* odd) { odd[5] = 'x', Free(odd); },
    [](auto* block, auto*) { Free(block + 8); },
    [](auto* block, auto* odd) { Free(block), Free(odd); },
};

ZO_CHILD(UsesTheGuardHeap)
{
    InstallGuardHeap();
    auto* block = static_cast<volatile char*>(AfxAllocMemory(24));
    auto* odd = static_cast<volatile char*>(AfxAllocMemory(5));
    block[23] = 'x';
    odd[4] = 'x';
    kUses[std::stoi(child.Argument(0))](block, odd);
}

TEST(GuardHeap, StopsAtTheFirstWrongAccess)
{
    const auto use = [](size_t number) { ChildProcess("UsesTheGuardHeap", {std::to_string(number)}).Finish(); };
    for (size_t number = 0; number + 1 < std::size(kUses); ++number)
        ExpectFailure("broke off, exit code 96", [=] { use(number); });
    use(std::size(kUses) - 1);
}
