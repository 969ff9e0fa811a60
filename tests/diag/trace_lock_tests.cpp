// What a trace does under its lock, and what it does not.
#include "trace_fixture.h"

#include <thread>

namespace {

constexpr char kLibrary[] = "ZOGBLBRX.DLL";

std::string s_mutexName;
const BlockView* s_block;
std::vector<std::string> s_pending; // at each release of the lock
DWORD s_foreignWait;

/// Whether another thread gets the lock of the trace: WAIT_OBJECT_0 or WAIT_TIMEOUT.
DWORD ForeignWait()
{
    DWORD result = WAIT_FAILED;
    std::thread([&result] {
        const HANDLE mutex = OpenMutexA(SYNCHRONIZE, FALSE, s_mutexName.c_str());
        result = WaitForSingleObject(mutex, 0);
        if (result == WAIT_OBJECT_0)
            ReleaseMutex(mutex);
        CloseHandle(mutex);
    }).join();
    return result;
}

BOOL WINAPI NotePending(HANDLE mutex)
{
    s_pending.push_back(s_block->Pending());
    return ReleaseMutex(mutex);
}
DWORD WINAPI WaitAndTick()
{
    s_foreignWait = ForeignWait();
    return 0;
}
HANDLE WINAPI MapWhileAnotherWaits(HANDLE file, SECURITY_ATTRIBUTES* security, DWORD protect, DWORD high, DWORD low,
                                   LPCSTR name)
{
    s_foreignWait = ForeignWait();
    return CreateFileMappingA(file, security, protect, high, low, name);
}

constexpr DWORD kPageSize = 0x1000;
BYTE* s_page; ///< cannot be read until somebody tries
LONG CALLBACK AllowPage(EXCEPTION_POINTERS* exception)
{
    const auto at = static_cast<UINT_PTR>(exception->ExceptionRecord->ExceptionInformation[1]);
    if (exception->ExceptionRecord->ExceptionCode != STATUS_ACCESS_VIOLATION ||
        at - reinterpret_cast<UINT_PTR>(s_page) >= kPageSize)
        return EXCEPTION_CONTINUE_SEARCH;
    s_foreignWait = ForeignWait();
    DWORD before;
    VirtualProtect(s_page, kPageSize, PAGE_READWRITE, &before);
    return EXCEPTION_CONTINUE_EXECUTION;
}

DWORD WINAPI EndWithTheLock(void*)
{
    const HANDLE mutex = OpenMutexA(SYNCHRONIZE, FALSE, s_mutexName.c_str());
    return WaitForSingleObject(mutex, 10000);
}

class TraceLock : public testing::Test {
protected:
    TraceLock()
    {
        s_mutexName = m_trace.MutexName();
        m_trace.Flush();
    }

    OpenTrace m_trace;
};

} // namespace

TEST(Trace, IsCompleteBeforeAnybodyJoins)
{
    const TestTrace names;
    const BlockView block(names);
    block->openCount = 7; // of processes that died
    block->pending = 100;
    s_mutexName = names.MutexName();
    const ImportPatch patch(kLibrary, "CreateFileMappingA", &MapWhileAnotherWaits);
    CZoTrace trace;
    ASSERT_TRUE(trace.Open(names.Name(), 1, FALSE));
    EXPECT_EQ(static_cast<DWORD>(WAIT_TIMEOUT), s_foreignWait);
    EXPECT_EQ(1u, block->openCount);
    EXPECT_EQ(kStars, block.Pending().substr(0, kStars.size()));
}

TEST_F(TraceLock, CoversAWholeDump)
{
    const BlockView block(m_trace);
    s_block = &block;
    s_pending.clear();
    const ImportPatch release(kLibrary, "ReleaseMutex", &NotePending);
    m_trace.OutputBlock("0123456789ABCDEFxy", 18);
    const std::string head = "Block Print: 18 Bytes\r\n", end = "End Block Print\r\n",
                      lines = "0  1  2  3  4  5  6  7  8  9  A  B  C  D  E  F  \r\nx  y  \r\n";
    EXPECT_EQ((std::vector{head, head + lines, head + lines + end}), s_pending);
}

TEST_F(TraceLock, IsHeldWhenTheTimeIsTaken)
{
    const ImportPatch ticks(kLibrary, "GetTickCount", &WaitAndTick);
    m_trace.EnableTimeStamp(TRUE);
    m_trace.Output("x\r\n");
    EXPECT_EQ(static_cast<DWORD>(WAIT_TIMEOUT), s_foreignWait);
}

TEST_F(TraceLock, IsFreeWhileTheCallersBytesAreRead)
{
    auto* bytes = static_cast<BYTE*>(VirtualAlloc(nullptr, 0x3000, MEM_COMMIT, PAGE_READWRITE));
    s_page = bytes + 0x1000;
    void* const handler = AddVectoredExceptionHandler(1, &AllowPage);
    for (const auto& [from, count] : {std::pair{0x1000, 5}, {0x800, 0x900}, {0xFF0, 17}, {0, 0x3000}}) {
        for (const bool isShort : {false, true}) { // of memory
            AllocationFaults faults;
            if (isShort)
                faults.Arm(1, true);
            s_foreignWait = WAIT_FAILED;
            DWORD protection;
            EXPECT_TRUE(VirtualProtect(s_page, kPageSize, PAGE_NOACCESS, &protection));
            std::string expected = m_trace.ReadBody() + "Block Print: " + std::to_string(count) + " Bytes\r\n";
            m_trace.OutputBlock(bytes + from, static_cast<DWORD>(count));
            EXPECT_EQ(WAIT_OBJECT_0, s_foreignWait) << count;
            for (int i = 1; i <= count; ++i)
                expected += i % 16 == 0 || i == count ? "00 \r\n" : "00 ";
            EXPECT_EQ(expected + "End Block Print\r\n", m_trace.Traced());
        }
    }
    RemoveVectoredExceptionHandler(handler);
    VirtualFree(bytes, 0, MEM_RELEASE);
}

TEST_F(TraceLock, LosesNoTextWhenItsOwnerDies)
{
    const HANDLE thread = CreateThread(nullptr, 0, &EndWithTheLock, nullptr, 0, nullptr);
    EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(thread, 10000));
    CloseHandle(thread);
    m_trace.Output("behind it");
    EXPECT_EQ(WAIT_OBJECT_0, ForeignWait()) << "and it is let go";
    m_trace.Flush();
    EXPECT_EQ("behind it", m_trace.ReadBody());
}

TEST_F(TraceLock, KeepsAFileThatHasComeUpMeanwhile)
{
    m_trace.Close();
    const std::string before = m_trace.Read();
    FaultSource files("files");
    const ZO_FAULTY_CALL(CreateFileA) open(files, kLibrary, INVALID_HANDLE_VALUE, ERROR_FILE_NOT_FOUND);
    files.Arm(1, false);
    EXPECT_TRUE(m_trace.Open(m_trace.Name(), 1, TRUE));
    m_trace.Flush();
    EXPECT_EQ(before, m_trace.Read().substr(0, before.size()));
}

TEST_F(TraceLock, IsFreeAfterAnOpenThatFailed)
{
    FaultSource faults("system objects");
    const ZO_FAULTY_CALL(CreateFileMappingA) mapping(faults, kLibrary, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    const ZO_FAULTY_CALL(MapViewOfFile) view(faults, kLibrary, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    const ZO_FAULTY_CALL(CreateFileA) file(faults, kLibrary, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
    const auto body = [&](const FaultRun& run) {
        CZoTrace trace;
        const BOOL opened = trace.Open(m_trace.Name(), 1, TRUE);
        EXPECT_EQ(!run.Fired(), opened != FALSE);
        EXPECT_EQ(WAIT_OBJECT_0, ForeignWait());
    };
    RunFaultLoop(faults, body, {.checkCounts = false}); // the handles of threads go when they like
}

TEST_F(TraceLock, FormatsEndBeforeWhatTheFormatterDoesNotTake)
{
    const char* const taken = "%c %-4d| %#x %05i %.2s %5.1s %hu %lu %lX %-#010lx %p %.3d %S %lc %% |";
    char expected[1025];
    const auto format = [](const char* text, auto print) {
        print(text, 'c', -5, 255, 42, "cut", "right", 0x1234u, 7ul, 0xABCul, 0xDul, &s_block, 6, L"wide", L'w');
    };
    format(taken, [&](auto... arguments) { wsprintfA(expected, arguments...); });
    format(taken, [&](auto... arguments) { m_trace.Output(arguments...); });
    std::string body = expected;
    for (const char* conversion :
         {"%f", "%lld", "%*d", "%+d", "% d", "%I64d", "%hhd", "%n", "%0-5d", "%.*s", "%ll", "%l"}) {
        m_trace.Output((std::string("%d%%") + conversion + "%s|").c_str(), 1, 2.5, "never seen");
        body += "1%";
    }
    const std::string dashes(3000, '-'); // the texts around are longer than the formatter makes them
    m_trace.Output((dashes + dashes + "%f").c_str(), 1.0);
    m_trace.Output((std::string("%.0s") + dashes + dashes + "%f").c_str(), "", 1.0);
    std::string percents;
    for (int i = 0; i < 600; ++i)
        percents += "%%";
    m_trace.Output((percents + "%f").c_str(), 1.0);
    m_trace.Output(("|%" + std::string(2000, '0') + "1d%f").c_str(), 1, 1.0); // no room for the first one
    EXPECT_EQ(body + dashes.substr(0, 511) + dashes.substr(0, 511) + std::string(511, '%') + "|", m_trace.Traced());
}
