// Tests of the test helpers themselves, where a fault in them would hide faults in what they test.

#include "support/test.h"

namespace {

void ExpectFailure(const std::string& text, const std::function<void()>& checks)
{
    std::string all;
    for (const std::string& failure : FailuresOf(checks))
        all += failure + "\n";
    EXPECT_NE(std::string::npos, all.find(text)) << "not among the failures: " << text << "\n" << all;
}

} // namespace

// Import patch --------------------------------------------------------------------------------------------------------

namespace {

HANDLE WINAPI NoFile(LPCSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE)
{
    SetLastError(ERROR_WRITE_PROTECT);
    return INVALID_HANDLE_VALUE;
}

} // namespace

TEST(ImportPatch, HoldsForOneModuleAndIsUndone)
{
    const TestFolder folder;
    folder.Write("file", "content");
    const std::string path = folder.Path("file");
    CFile file;
    CFileException reason;
    const auto errorOfOpen = [&] { return file.Open(path.c_str(), CFile::modeRead, &reason) ? 0 : reason.m_lOsError; };
    {
        const ImportPatch patch("ZOAFX.DLL", "CreateFileA", &NoFile);
        ASSERT_TRUE(patch.IsActive());
        EXPECT_EQ(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "CreateFileA")),
                  reinterpret_cast<void*>(patch.Original<decltype(CreateFileA)>()));
        EXPECT_EQ(ERROR_WRITE_PROTECT, errorOfOpen());
        HANDLE own = CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        EXPECT_TRUE(CloseHandle(own)) << "this program's own import changed as well";
        {
            FaultSource source("inner");
            const ZO_FAULTY_CALL(CreateFileA) inner(source, "ZOAFX.DLL", INVALID_HANDLE_VALUE, ERROR_SEEK);
            source.Arm(1, true);
            EXPECT_EQ(ERROR_SEEK, errorOfOpen());
        }
        EXPECT_EQ(ERROR_WRITE_PROTECT, errorOfOpen());
    }
    EXPECT_EQ(0, errorOfOpen());
}

TEST(ImportPatch, FailsLoudlyWithoutSuchAnImport)
{
    ExpectFailure("imports no CreateFileZ", [] { const ImportPatch patch("ZOAFX.DLL", "CreateFileZ", &NoFile); });
    ExpectFailure("is not loaded", [] { const ImportPatch patch("NOSUCH.DLL", "CreateFileA", &NoFile); });
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
    HANDLE event = nullptr;
    HKEY key = nullptr;
    HPEN pen = nullptr;
    const ProcessCounts before = ProcessCounts::Take();
    event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExA(HKEY_CURRENT_USER, "Software", 0, KEY_READ, &key));
    pen = CreatePen(PS_SOLID, 1, RGB(1, 2, 3));
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
ZO_CHILD(Crashes)
{
    child.Ready();
    SetUnhandledExceptionFilter(nullptr); // quietly
    TerminateProcess(GetCurrentProcess(), 5);
}
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
    ExpectFailure("broke off, exit code 5", [] { ChildProcess("Crashes").Finish(); });
    ExpectFailure("broke off", [] { ChildProcess("NoSuchChild").Finish(); });
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

namespace {

HANDLE g_barked;
void Bark() { SetEvent(g_barked); }

} // namespace

TEST(Watchdog, BarksOnlyWhenNothingGoesOn)
{
    g_barked = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    {
        const Watchdog watchdog(100, &Bark, 10);
        for (int i = 0; i < 150; ++i) {
            ReportProgress();
            ASSERT_EQ(static_cast<DWORD>(WAIT_TIMEOUT), WaitForSingleObject(g_barked, 10)) << i;
        }
        EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(g_barked, kChildTimeout));
    }
    CloseHandle(g_barked);
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

TEST(TestFolder, TakesThePlaceOfAKilledRuns)
{
    // The next one's name, as a process of this number could have left it behind.
    const std::string last = TestFolder().Path();
    const size_t at = last.find_last_of('.') + 1;
    const std::string next = last.substr(0, at) + std::to_string(std::stoul(last.substr(at)) + 1);
    ASSERT_TRUE(CreateDirectoryA(next.c_str(), nullptr));
    CloseHandle(CreateFileA((next + "\\old").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
    const TestFolder folder;
    EXPECT_EQ(next, folder.Path());
    EXPECT_FALSE(folder.Exists("old"));
}

// Buffers, names, gaps ------------------------------------------------------------------------------------------------

TEST(SentinelBuffer, NoticesEveryWrite)
{
    SentinelBuffer buffer(4);
    EXPECT_EQ(SentinelBuffer::kLastError, GetLastError());
    EXPECT_TRUE(buffer.IsUntouched());
    buffer.Data()[3] = '\0';
    EXPECT_FALSE(buffer.IsUntouched());
    EXPECT_TRUE(FailuresOf([&] { buffer.ExpectGuardsIntact(); }).empty());
    for (const std::ptrdiff_t outside : {-64, -1, 4, 67}) {
        SentinelBuffer damaged(4);
        damaged.Data()[outside] = 'x';
        ExpectFailure("byte " + std::to_string(outside) + " of", [&] { damaged.ExpectGuardsIntact(); });
    }
}

TEST(TestFolder, IsGoneAfterwardsWithReadOnlyFiles)
{
    std::string path;
    {
        const TestFolder folder;
        path = folder.Path();
        folder.Write("file", "text");
        SetFileAttributesA(folder.Path("file").c_str(), FILE_ATTRIBUTE_READONLY);
        CreateDirectoryA(folder.Path("sub").c_str(), nullptr);
        folder.Write("sub\\file", "text");
        EXPECT_EQ("text", folder.Read("file"));
    }
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesA(path.c_str()));
}

TEST(WineGap, TurnsRedOnceItIsClosed)
{
    ZO_ONLY_IN(IsWine(), "there are no gaps on Windows");
    EXPECT_TRUE(FailuresOf([] { ZO_WINE_GAP("adds wrongly", EXPECT_EQ(3, 1 + 1)); }).empty());
    ExpectFailure("Wine behaves now", [] { ZO_WINE_GAP("adds wrongly", EXPECT_EQ(2, 1 + 1)); });
}

// Guard heap ----------------------------------------------------------------------------------------------------------

namespace {

void Free(volatile char* block) { AfxFreeMemory(const_cast<char*>(block)); }

/// What is done with a block of 24 bytes and one of 5. The last one is right.
void (*const kUses[])(volatile char* block, volatile char* odd) = {
    [](auto* block, auto*) { static_cast<void>(block[32]); },
    [](auto* block, auto*) { block[32] = 'x'; },
    [](auto* block, auto*) { Free(block), static_cast<void>(block[0]); },
    [](auto* block, auto*) { Free(block), Free(block); },
    [](auto*, auto* odd) { odd[5] = 'x', Free(odd); },
    [](auto* block, auto*) { Free(block + 8); },
    [](auto* block, auto* odd) { Free(block), Free(odd); },
};

} // namespace

ZO_CHILD(UsesTheGuardHeap)
{
    ASSERT_TRUE(InstallGuardHeap());
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

TEST(GuardHeap, HoldsManyBlocksAndTakesBackOlderOnes)
{
    Random random(1);
    std::vector<std::pair<unsigned char*, size_t>> blocks(100);
    for (int i = 0; i < 20000; ++i) {
        auto& [block, size] = blocks[random() % blocks.size()];
        for (size_t at = 0; at < size; ++at)
            ASSERT_EQ(size & 0xFF, block[at]);
        if (block != nullptr)
            GuardedFree(block);
        size = random() % 4096;
        block = static_cast<unsigned char*>(GuardedAllocate(size));
        ASSERT_NE(nullptr, block);
        memset(block, static_cast<int>(size & 0xFF), size);
    }
    for (const auto& entry : blocks)
        GuardedFree(entry.first);
}
