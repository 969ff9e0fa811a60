// The trace beside its floor and other ways of writing lines to a file that several processes share.
#include "families.h"
#include "harness.h"
#include "process.h"

#include <zogbl/trace.h>

#define FMT_HEADER_ONLY
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <functional>
#include <iterator>
#include <memory>
#include <thread>

namespace {

constexpr Limits kFloorLimits = {0, 1.15};
constexpr Limits kSharingLimits = {0, 1.0 / 0.9}; // at least 0.9 times the lines per second
constexpr unsigned kProcesses = 4;
constexpr unsigned kLines = 2000; // of each process, in each round
constexpr unsigned kRoundsPerSharedRound = 10;
constexpr size_t kLineLength = 100;
constexpr char kTraceName[] = "Benchmark";
// 100 bytes with the number in five digits and the line end.
constexpr char kFormat[] = "station %05d: %s\r\n";
constexpr char kText[] = "the quick brown fox jumps over the lazy dog while the modem answers; one page is ok";

static_assert(sizeof "station 00000: \r\n" - 1 + sizeof kText - 1 == kLineLength);

/// A way of writing lines.
class Writer {
public:
    virtual ~Writer() = default;
    virtual void Write(int number) = 0;
};

class TraceWriter : public Writer {
public:
    explicit TraceWriter(BOOL timeStamp = FALSE)
    {
        m_trace.EnableTimeStamp(timeStamp);
        Require(m_trace.Open(kTraceName, 1, TRUE), "the trace cannot be opened");
    }
    void Write(int number) override { m_trace.Output(kFormat, number, kText); }

private:
    CZoTrace m_trace;
};

class NamedMutex {
public:
    explicit NamedMutex(const char* name) : m_handle(CreateMutexA(nullptr, FALSE, name))
    {
        Require(m_handle != nullptr, "a mutex cannot be made");
    }
    ~NamedMutex() { CloseHandle(m_handle); }
    NamedMutex(const NamedMutex&) = delete;
    NamedMutex& operator=(const NamedMutex&) = delete;

    void Wait() const { WaitForSingleObject(m_handle, INFINITE); }
    void Release() const { ReleaseMutex(m_handle); }

private:
    HANDLE m_handle;
};

int Format(char* line, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = wvsprintfA(line, format, arguments);
    va_end(arguments);
    return length;
}

/// The least that can do it: lock, the same format and copy. Nothing reaches a file.
class BareWriter : public Writer {
public:
    explicit BareWriter(BOOL timeStamp) : m_timeStamp(timeStamp) {}
    void Write(int number) override
    {
        char line[1025];
        m_mutex.Wait();
        const DWORD now = GetTickCount();
        const int length = m_timeStamp ? Format(line, "(%02lu:%02lu:%02lu.%03lu) station %05d: %s\r\n", now / 3600000,
                                                now / 60000 % 60, now / 1000 % 60, now % 1000, number, kText)
                                       : Format(line, kFormat, number, kText);
        if (m_used + static_cast<size_t>(length) > sizeof m_buffer)
            m_used = 0;
        std::memcpy(m_buffer + m_used, line, static_cast<size_t>(length));
        m_used += static_cast<size_t>(length);
        Keep(m_buffer);
        m_mutex.Release();
    }

private:
    NamedMutex m_mutex{"ZoBenchmarkBare"};
    BOOL m_timeStamp;
    char m_buffer[8192] = {};
    size_t m_used = 0;
};

/// Each line under a lock, at the end of the file.
class LockedWriter : public Writer {
public:
    explicit LockedWriter(const std::string& path)
        : m_file(CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                             FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        Require(m_file != INVALID_HANDLE_VALUE, "a file cannot be opened");
    }
    ~LockedWriter() override { CloseHandle(m_file); }
    void Write(int number) override
    {
        char line[1025];
        const int length = Format(line, kFormat, number, kText);
        DWORD written = 0;
        m_mutex.Wait();
        SetFilePointer(m_file, 0, nullptr, FILE_END);
        WriteFile(m_file, line, static_cast<DWORD>(length), &written, nullptr);
        m_mutex.Release();
    }

private:
    NamedMutex m_mutex{"ZoBenchmarkLocked"};
    HANDLE m_file;
};

/// Each line appended and flushed by the C library, without a lock.
class AppendWriter : public Writer {
public:
    explicit AppendWriter(const std::string& path) : m_file(std::fopen(path.c_str(), "ab"))
    {
        Require(m_file != nullptr, "a file cannot be opened");
    }
    ~AppendWriter() override { std::fclose(m_file); }
    void Write(int number) override
    {
        std::fprintf(m_file, kFormat, number, kText);
        std::fflush(m_file);
    }

private:
    FILE* m_file;
};

class SpdlogWriter : public Writer {
public:
    explicit SpdlogWriter(const std::string& path)
        : m_logger("benchmark", std::make_shared<spdlog::sinks::basic_file_sink_mt>(path))
    {
        m_logger.set_pattern("%v");
    }
    void Write(int number) override { m_logger.info("station {:05d}: {}", number, kText); }

private:
    spdlog::logger m_logger;
};

std::string TracePath() { return OwnFolder() + "Zo" + kTraceName + ".TRC"; }
std::string FilePath() { return OwnFolder() + "zobench_lines.txt"; }

struct Method {
    const char* word; ///< on the command line of a child
    const char* name;
    std::unique_ptr<Writer> (*make)();
    std::string (*path)();
};
const Method kMethods[] = {
    {"trace", "CZoTrace::Output", []() -> std::unique_ptr<Writer> { return std::make_unique<TraceWriter>(); },
     &TracePath},
    {"locked", "mutex, seek, write",
     []() -> std::unique_ptr<Writer> { return std::make_unique<LockedWriter>(FilePath()); }, &FilePath},
    {"append", "append, flush", []() -> std::unique_ptr<Writer> { return std::make_unique<AppendWriter>(FilePath()); },
     &FilePath},
    {"spdlog", "spdlog basic_file_sink",
     []() -> std::unique_ptr<Writer> { return std::make_unique<SpdlogWriter>(FilePath()); }, &FilePath},
};

/// Whole lines of a file that are the benchmark's.
size_t CountLines(const std::string& path)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    Require(file != nullptr, "the file is missing");
    size_t count = 0;
    char line[512];
    while (std::fgets(line, sizeof line, file.get()) != nullptr)
        count += std::strlen(line) == kLineLength && std::strncmp(line, "station ", 8) == 0;
    return count;
}

// Four processes ------------------------------------------------------------------------------------------------------

constexpr char kReadyName[] = "ZoBenchmarkReady";
constexpr char kGoName[] = "ZoBenchmarkGo";

/// What one round of four processes took and kept.
struct SharedRun {
    double nanosecondsPerLine;
    size_t lines;
};

SharedRun RunProcesses(const Method& method)
{
    const HANDLE ready = CreateSemaphoreA(nullptr, 0, kProcesses, kReadyName);
    const HANDLE go = CreateEventA(nullptr, TRUE, FALSE, kGoName);
    DeleteFileA(method.path().c_str());

    ProgramRun runs[kProcesses];
    std::string problem;
    std::vector<std::thread> threads;
    for (ProgramRun& run : runs) {
        threads.emplace_back([&run, &method] {
            try {
                run = RunProgram("\"" + OwnPath() + "\" --child lines " + method.word);
            } catch (const std::exception&) {
                run.exitCode = 1;
            }
        });
    }
    for (unsigned i = 0; i < kProcesses; ++i)
        WaitForSingleObject(ready, 10000);
    SetEvent(go);
    for (std::thread& thread : threads)
        thread.join();
    CloseHandle(ready);
    CloseHandle(go);

    long long begin = 0, end = 0;
    for (const ProgramRun& run : runs) {
        long long childBegin = 0, childEnd = 0;
        Require(run.exitCode == 0 && std::sscanf(run.output.c_str(), "%lld %lld", &childBegin, &childEnd) == 2,
                "a process that writes lines failed");
        begin = begin == 0 ? childBegin : (std::min)(begin, childBegin);
        end = (std::max)(end, childEnd);
    }
    return {Nanoseconds(end - begin) / (kProcesses * kLines), CountLines(method.path())};
}

void MeasureProcesses(Harness& harness)
{
    const std::string name = "trace: four processes, line";
    if (!harness.Wants(name))
        return;
    constexpr size_t kMethodCount = std::size(kMethods);
    std::vector<Samples> samples(kMethodCount);
    size_t lines[kMethodCount] = {};
    const unsigned rounds = harness.GetRounds() / kRoundsPerSharedRound;
    for (unsigned round = 0; round < rounds; ++round) {
        for (size_t turn = 0; turn < kMethodCount; ++turn) {
            const size_t i = round % 2 == 0 ? turn : kMethodCount - 1 - turn;
            const SharedRun run = RunProcesses(kMethods[i]);
            samples[i].nanoseconds.push_back(run.nanosecondsPerLine);
            lines[i] += run.lines;
        }
    }
    for (size_t i = 0; i < kMethodCount; ++i) {
        const double kept = static_cast<double>(lines[i]) / (kProcesses * kLines * rounds);
        Require(i > 1 || kept == 1, "lines are lost");
        char label[80];
        std::snprintf(label, sizeof label, "%s, %.1f %% kept", kMethods[i].name, kept * 100);
        samples[i].name = label;
    }
    harness.Add(name, samples, Unit::nanoseconds, kSharingLimits);
}

} // namespace

int RunLinesChild(const char* word)
{
    for (const Method& method : kMethods) {
        if (std::strcmp(method.word, word) != 0)
            continue;
        const HANDLE ready = OpenSemaphoreA(SEMAPHORE_MODIFY_STATE, FALSE, kReadyName);
        const HANDLE go = OpenEventA(SYNCHRONIZE, FALSE, kGoName);
        std::unique_ptr<Writer> writer = method.make();
        ReleaseSemaphore(ready, 1, nullptr);
        if (WaitForSingleObject(go, 10000) != WAIT_OBJECT_0)
            return 1;
        const long long begin = Ticks();
        for (unsigned i = 0; i < kLines; ++i)
            writer->Write(static_cast<int>(i));
        writer.reset(); // what is still in a buffer belongs to the job
        std::printf("%lld %lld\n", begin, Ticks());
        return 0;
    }
    return 2;
}

void MeasureTrace(Harness& harness)
{
    for (const BOOL timeStamp : {FALSE, TRUE}) {
        TraceWriter trace(timeStamp);
        BareWriter bare(timeStamp);
        LockedWriter locked(FilePath());
        AppendWriter append(FilePath());
        SpdlogWriter spdlog(FilePath());
        std::vector<Peer> peers = {{"CZoTrace::Output", [&] { trace.Write(12345); }},
                                   {"wait, release, format, copy", [&] { bare.Write(12345); }}};
        if (!timeStamp) {
            peers.push_back({"mutex, seek, write", [&] { locked.Write(12345); }});
            peers.push_back({"append, flush", [&] { append.Write(12345); }});
            peers.push_back({"spdlog basic_file_sink", [&] { spdlog.Write(12345); }});
        }
        harness.Compare(timeStamp ? "trace: line with a time stamp" : "trace: line", peers, kFloorLimits);
    }
    MeasureProcesses(harness);
    DeleteFileA(TracePath().c_str());
    DeleteFileA(FilePath().c_str());
}
