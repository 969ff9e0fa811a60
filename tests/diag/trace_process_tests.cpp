// One trace, several processes.
#include "trace_fixture.h"

namespace {

constexpr int kProcesses = 4;
constexpr int kLines = 5000;
constexpr size_t kLineLength = 100; // "\r\n" included

/// "<process> <number> ....\r\n", 100 bytes.
std::string Line(int process, int number)
{
    std::string line = std::to_string(process) + " " + std::to_string(number) + " ";
    line.resize(kLineLength - 2, static_cast<char>('a' + process));
    return line + "\r\n";
}

/// The lines of a trace by process. A line that is none of Line's fails the test.
std::map<int, std::vector<int>> LinesByProcess(const std::string& body)
{
    std::map<int, std::vector<int>> lines;
    size_t begin = 0;
    for (size_t end; (end = body.find('\n', begin)) != std::string::npos && body[begin] != '*'; begin = end + 1) {
        int process = -1;
        int number = -1;
        const std::string line = body.substr(begin, end + 1 - begin);
        if (std::sscanf(line.c_str(), "%d %d ", &process, &number) != 2 || line != Line(process, number)) {
            ADD_FAILURE() << "a broken line: " << line;
            break;
        }
        lines[process].push_back(number);
    }
    return lines;
}

std::vector<int> Numbers(int count)
{
    std::vector<int> numbers;
    for (int i = 0; i < count; ++i)
        numbers.push_back(i);
    return numbers;
}

std::unique_ptr<ChildProcess> StartWriter(const TestTrace& names, int process, int lines, const std::string& bytes = {})
{
    const std::string name(names.Name());
    return std::make_unique<ChildProcess>("WritesLines",
                                          std::vector{name, std::to_string(process), std::to_string(lines), bytes});
}

/// \param linesOfThird how many lines process 2 writes; the others write kLines
std::vector<std::unique_ptr<ChildProcess>> StartWriters(const TestTrace& names, int linesOfThird = kLines)
{
    std::vector<std::unique_ptr<ChildProcess>> writers;
    for (int i = 0; i < kProcesses; ++i)
        writers.push_back(StartWriter(names, i, i == 2 ? linesOfThird : kLines));
    for (const auto& writer : writers)
        EXPECT_TRUE(writer->WaitUntilReady());
    return writers;
}

/// How many of the bytes a WriteFile brings into the file before its process dies.
DWORD s_bytesBeforeDeath;
BOOL WINAPI DieWhileWriting(HANDLE file, LPCVOID data, DWORD size, DWORD* written, OVERLAPPED*)
{
    WriteFile(file, data, s_bytesBeforeDeath < size ? s_bytesBeforeDeath : size, written, nullptr);
    TerminateProcess(GetCurrentProcess(), 1);
    return FALSE;
}

} // namespace

// Trace, process, lines, and how many bytes it writes before it dies; "" for all.
ZO_CHILD(WritesLines)
{
    CZoTrace trace;
    trace.EnableTimeStamp(FALSE);
    EXPECT_TRUE(trace.Open(child.Argument(0).c_str(), 1, TRUE));
    child.Ready();
    child.WaitForGo();
    for (int i = 0; i < std::stoi(child.Argument(2)); ++i)
        trace.Output("%s", Line(std::stoi(child.Argument(1)), i).c_str());
    if (child.Argument(3).empty())
        return;
    s_bytesBeforeDeath = std::stoul(child.Argument(3));
    const ImportPatch patch("ZOGBLBRX.DLL", "WriteFile", &DieWhileWriting);
    trace.Flush();
}

TEST(TraceProcesses, AKilledOneTakesNothingOfTheOthersAlong)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10 && !IsDoubleByte(), "locks and files are the same on all of them");
    const TestTrace names;
    const auto writers = StartWriters(names, INT_MAX);
    for (const auto& writer : writers)
        writer->Go();
    const DWORD half = kProcesses * kLines * kLineLength / 2;
    for (const DWORD start = GetTickCount(); GetTickCount() - start < kChildTimeout;) {
        WIN32_FILE_ATTRIBUTE_DATA data = {};
        if (GetFileAttributesExA(names.Path().c_str(), GetFileExInfoStandard, &data) && data.nFileSizeLow > half)
            break;
        Sleep(1);
    }
    writers[2]->Kill();
    CZoTrace witness;
    ASSERT_TRUE(witness.Open(names.Name(), 1, TRUE));
    for (const auto& writer : writers)
        writer->Finish();
    EXPECT_EQ(2u, witness.GetOpenCount()) << "the dead one's count stays";
    witness.Close();

    const std::string body = names.ReadBody();
    auto lines = LinesByProcess(body);
    const std::vector<int> dead = std::exchange(lines[2], {});
    EXPECT_EQ(Numbers(static_cast<int>(dead.size())), dead) << "what it wrote, in order and once";
    EXPECT_FALSE(dead.empty());
    for (const int process : {0, 1, 3})
        EXPECT_EQ(Numbers(kLines), lines[process]) << "process " << process;
    EXPECT_EQ(std::string::npos, body.find("Stopped"));
}

TEST(TraceProcesses, OneThatDiesWhileItWritesLeavesAWholeFile)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10 && !IsDoubleByte(), "locks and files are the same on all of them");
    for (const char* bytes : {"0", "100", "4096", "8192"}) {
        SCOPED_TRACE(bytes);
        OpenTrace trace;
        const auto child = StartWriter(trace, 2, 50, bytes);
        ASSERT_TRUE(child->WaitUntilReady());
        child->Go();
        ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(child->Process(), kChildTimeout));
        child->Kill();
        trace.Output("%s", Line(1, 0).c_str());
        const auto lines = LinesByProcess(trace.Traced());
        EXPECT_EQ((std::map<int, std::vector<int>>{{1, Numbers(1)}, {2, Numbers(50)}}), lines);
    }
}
