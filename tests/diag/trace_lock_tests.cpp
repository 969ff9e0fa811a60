// What a trace does under its lock, and what it does not.
#include "trace_fixture.h"

#include <thread>

namespace {

const TestTrace* s_trace;
const BlockView* s_block;
std::vector<std::string> s_pending; // at each release of the lock
bool s_wasHeld;                     ///< the lock, when the system was called

BOOL WINAPI NotePending(HANDLE mutex)
{
    s_pending.push_back(s_block->Pending());
    return ReleaseMutex(mutex);
}
DWORD WINAPI NoteAndTick() { return s_wasHeld = s_trace->IsLockHeld(), 0; }
HANDLE WINAPI NoteAndMap(HANDLE file, SECURITY_ATTRIBUTES* security, DWORD protect, DWORD high, DWORD low, LPCSTR name)
{
    s_wasHeld = s_trace->IsLockHeld();
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
    s_wasHeld = s_trace->IsLockHeld();
    DWORD before;
    VirtualProtect(s_page, kPageSize, PAGE_READWRITE, &before);
    return EXCEPTION_CONTINUE_EXECUTION;
}

class TraceLock : public testing::Test {
protected:
    TraceLock()
    {
        s_trace = &m_trace;
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
    s_trace = &names;
    const ImportPatch patch(kZogbl, "CreateFileMappingA", &NoteAndMap);
    CZoTrace trace;
    ASSERT_TRUE(trace.Open(names.Name(), 1, FALSE));
    EXPECT_TRUE(s_wasHeld);
    EXPECT_EQ(1u, block->openCount);
    EXPECT_EQ(kStars, block.Pending().substr(0, kStars.size()));
}

TEST_F(TraceLock, CoversAWholeDump)
{
    const BlockView block(m_trace);
    s_block = &block;
    s_pending.clear();
    const ImportPatch release(kZogbl, "ReleaseMutex", &NotePending);
    m_trace.OutputBlock("0123456789ABCDEFxy", 18);
    const std::string head = "Block Print: 18 Bytes\r\n", end = "End Block Print\r\n",
                      lines = "0  1  2  3  4  5  6  7  8  9  A  B  C  D  E  F  \r\nx  y  \r\n";
    EXPECT_EQ((std::vector{head, head + lines, head + lines + end}), s_pending);
}

TEST_F(TraceLock, IsHeldWhenTheTimeIsTaken)
{
    const ImportPatch ticks(kZogbl, "GetTickCount", &NoteAndTick);
    m_trace.EnableTimeStamp(TRUE);
    m_trace.Output("x\r\n");
    EXPECT_TRUE(s_wasHeld);
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
            s_wasHeld = true;
            DWORD protection;
            EXPECT_TRUE(VirtualProtect(s_page, kPageSize, PAGE_NOACCESS, &protection));
            std::string expected = m_trace.ReadBody() + "Block Print: " + std::to_string(count) + " Bytes\r\n";
            m_trace.OutputBlock(bytes + from, static_cast<DWORD>(count));
            EXPECT_FALSE(s_wasHeld) << count;
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
    std::thread([this] {
        WaitForSingleObject(OpenMutexA(SYNCHRONIZE, FALSE, m_trace.MutexName().c_str()), 10000);
    }).join();
    m_trace.Output("behind it");
    EXPECT_FALSE(m_trace.IsLockHeld()) << "and it is let go";
    m_trace.Flush();
    EXPECT_EQ("behind it", m_trace.ReadBody());
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
    const std::string percents(1200, '%');
    m_trace.Output((percents + "%f").c_str(), 1.0);
    m_trace.Output(("|%" + std::string(2000, '0') + "1d%f").c_str(), 1, 1.0); // no room for the first one
    EXPECT_EQ(body + dashes.substr(0, 511) + dashes.substr(0, 511) + std::string(511, '%') + "|", m_trace.Traced());
}
