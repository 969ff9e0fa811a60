// One trace, several processes.
#include "trace_fixture.h"

#include <deque>
#include <sstream>

namespace {

constexpr int kProcesses = 4;
constexpr int kKilled = 2;          ///< writes until it is killed
constexpr int kLines = 5000;        ///< of the others
constexpr size_t kLineLength = 100; // "\r\n" included

/// "<process> <number> ....\r\n", 100 bytes.
std::string Line(int process, int number)
{
    std::string line = std::to_string(process) + " " + std::to_string(number) + " ";
    line.resize(kLineLength - 2, static_cast<char>('a' + process));
    return line + "\r\n";
}

} // namespace

ZO_CHILD(WritesLines)
{
    const int process = std::stoi(child.Argument(1));
    CZoTrace trace;
    trace.EnableTimeStamp(FALSE);
    EXPECT_TRUE(trace.Open(child.Argument(0).c_str(), 1, TRUE));
    child.ReadyUntilGo();
    for (int i = 0; process == kKilled || i < kLines; ++i)
        trace.Output("%s", Line(process, i).c_str());
}

TEST(TraceProcesses, AKilledOneTakesNothingOfTheOthersAlong)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10 && !IsDoubleByte(), "locks and files are the same on all of them");
    OpenTrace trace;
    std::deque<ChildProcess> writers;
    for (int i = 0; i < kProcesses; ++i)
        writers.emplace_back("WritesLines", std::vector{std::string(trace.Name()), std::to_string(i)});
    for (ChildProcess& writer : writers)
        EXPECT_TRUE(writer.WaitUntilReady());
    for (ChildProcess& writer : writers)
        writer.Go();
    WaitUntil([&] { return trace.Read().size() >= kProcesses * kLines * kLineLength / 2; });
    writers[kKilled].Kill();
    for (ChildProcess& writer : writers)
        writer.Finish();
    EXPECT_EQ(2u, trace.GetOpenCount()) << "the dead one's count stays";

    int lines[kProcesses] = {};
    std::istringstream text(trace.Traced());
    for (std::string line; std::getline(text, line);) {
        const int process = std::clamp(std::atoi(line.c_str()), 0, kProcesses - 1);
        ASSERT_EQ(Line(process, lines[process]++), line + "\n") << "whole, in order and once";
    }
    EXPECT_GT(std::exchange(lines[kKilled], kLines), 0);
    EXPECT_EQ((std::vector(kProcesses, kLines)), std::vector(std::begin(lines), std::end(lines)));
}
