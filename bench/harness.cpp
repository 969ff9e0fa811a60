#include "harness.h"

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>

namespace {

// Turns are short, so that a change in the machine's pace falls on all peers; still thousands of the counter's ticks.
constexpr double kTurn = 5e5; // nanoseconds
constexpr unsigned kTurnsPerRound = 8;
constexpr unsigned kMaximumBatch = 1u << 26;

double TimeBatch(const Peer& peer, unsigned count)
{
    const long long start = Ticks();
    peer.run(count);
    return Nanoseconds(Ticks() - start);
}

/// How often a peer does its job in one turn. Finding out warms it up as well.
unsigned FindBatchSize(const Peer& peer)
{
    unsigned count = 1;
    for (;;) {
        const double time = TimeBatch(peer, count);
        if (time >= kTurn || count >= kMaximumBatch)
            return count;
        // Straight to the aim as soon as the time means something, in steps of two until then.
        const double factor = time > kTurn / 16 ? kTurn / time * 1.05 : 2;
        count = static_cast<unsigned>(std::min(std::ceil(count * factor), static_cast<double>(kMaximumBatch)));
    }
}

#ifdef _WIN64
constexpr const char* kArchitecture = "x64";
#else
constexpr const char* kArchitecture = "x86";
#endif

std::string SystemName()
{
    const DWORD version = GetVersion();
    char text[80];
    std::snprintf(text, sizeof text, "Windows %u.%u", LOBYTE(LOWORD(version)), HIBYTE(LOWORD(version)));
    std::string name = text;
    using WineVersion = const char*(__cdecl*)();
    const FARPROC function = GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version");
    if (function != nullptr)
        name += std::string(" (Wine ") + reinterpret_cast<WineVersion>(reinterpret_cast<void*>(function))() + ")";
    return name;
}

unsigned ProcessorCount()
{
    SYSTEM_INFO info;
    GetSystemInfo(&info);
    return info.dwNumberOfProcessors;
}

std::string JsonText(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        quoted += c;
    }
    return quoted + '"';
}

constexpr char kLine[] = "%-32s  %-42s %14s %7s  %-16s %s\n";

} // namespace

long long Ticks()
{
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return now.QuadPart;
}

double Nanoseconds(long long ticks)
{
    static const double perTick = [] {
        LARGE_INTEGER frequency;
        QueryPerformanceFrequency(&frequency);
        return 1e9 / static_cast<double>(frequency.QuadPart);
    }();
    return static_cast<double>(ticks) * perTick;
}

Harness::Harness(const Options& options) : m_options(options)
{
    std::printf("%s, %s, %u processors, %u rounds\n\n", kArchitecture, SystemName().c_str(), ProcessorCount(),
                options.rounds);
    std::printf(kLine, "", "", "median", "ratio", "quartiles", "limit");
}

bool Harness::Result::IsGood() const { return *verdict == '\0' || std::string(verdict) == "ok"; }

Harness::Spread Harness::SpreadOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const auto at = [&values](double part) { // between the two values next to it
        const double place = part * static_cast<double>(values.size() - 1);
        const auto below = static_cast<size_t>(place);
        const size_t above = std::min(below + 1, values.size() - 1);
        return values[below] + (values[above] - values[below]) * (place - static_cast<double>(below));
    };
    return {at(0.25), at(0.5), at(0.75)};
}

const char* Harness::Judge(double ratio, const Limits& limits)
{
    if (limits.most != 0 && ratio > limits.most)
        return "OVER";
    if (limits.least != 0 && ratio < limits.least)
        return "UNDER";
    return limits.most != 0 || limits.least != 0 ? "ok" : "";
}

void Harness::Compare(const std::string& name, const std::vector<Peer>& peers, Limits limits)
{
    if (!Wants(name))
        return;
    std::vector<unsigned> counts;
    std::vector<Samples> samples;
    for (const Peer& peer : peers) {
        counts.push_back(FindBatchSize(peer));
        samples.push_back({peer.name, {}});
    }
    for (unsigned round = 0; round < m_options.rounds; ++round) {
        std::vector<double> time(peers.size());
        for (unsigned turn = 0; turn < kTurnsPerRound; ++turn) {
            for (size_t i = 0; i < peers.size(); ++i) {
                const size_t peer = turn % 2 == 0 ? i : peers.size() - 1 - i;
                time[peer] += TimeBatch(peers[peer], counts[peer]);
            }
        }
        for (size_t i = 0; i < peers.size(); ++i)
            samples[i].nanoseconds.push_back(time[i] / kTurnsPerRound / counts[i]);
    }
    Add(name, samples, Unit::nanoseconds, limits);
}

void Harness::Add(const std::string& name, const std::vector<Samples>& peers, Unit unit, Limits limits)
{
    if (!Wants(name))
        return;
    Result result{name, unit, limits, {}, ""};
    for (const Samples& peer : peers) {
        std::vector<double> ratios;
        for (size_t round = 0; round < peer.nanoseconds.size(); ++round)
            ratios.push_back(peers[0].nanoseconds[round] / peer.nanoseconds[round]);
        result.peers.push_back({peer.name, SpreadOf(peer.nanoseconds), SpreadOf(ratios)});
    }
    if (peers.size() > 1)
        result.verdict = Judge(result.peers[1].ratio.median, limits);
    Print(result);
    m_results.push_back(result);
}

void Harness::AddFailure(const std::string& what)
{
    std::printf("FAILED: %s\n", what.c_str());
    m_failures.push_back(what);
}

void Harness::Print(const Result& result)
{
    for (size_t i = 0; i < result.peers.size(); ++i) {
        const PeerResult& peer = result.peers[i];
        char time[32], ratio[16] = "", quartiles[32] = "", limit[48] = "";
        if (result.unit == Unit::nanoseconds)
            std::snprintf(time, sizeof time, "%.*f ns", peer.time.median < 1000 ? 1 : 0, peer.time.median);
        else
            std::snprintf(time, sizeof time, "%.3f ms", peer.time.median / 1e6);
        if (i > 0) {
            const int digits = peer.ratio.median < 10 ? 3 : 1;
            std::snprintf(ratio, sizeof ratio, "%.*f", digits, peer.ratio.median);
            std::snprintf(quartiles, sizeof quartiles, "%.*f .. %.*f", digits, peer.ratio.lowerQuartile, digits,
                          peer.ratio.upperQuartile);
        }
        if (i == 1 && result.limits.least != 0)
            std::snprintf(limit, sizeof limit, "%.2f to %.2f  %s", result.limits.least, result.limits.most,
                          result.verdict);
        else if (i == 1 && result.limits.most != 0)
            std::snprintf(limit, sizeof limit, "%.2f  %s", result.limits.most, result.verdict);
        std::printf(kLine, i == 0 ? result.name.c_str() : "", peer.name.c_str(), time, ratio, quartiles, limit);
    }
    std::fflush(stdout);
}

int Harness::Finish() const
{
    if (m_results.empty() && m_failures.empty()) {
        std::fprintf(stderr, "zobench: nothing has \"%s\" in its name\n", m_options.filter.c_str());
        return 2;
    }
    const auto bad = std::count_if(m_results.begin(), m_results.end(), [](const Result& r) { return !r.IsGood(); });
    std::printf("\n%u measured, %u outside their limits, %u failed\n", static_cast<unsigned>(m_results.size()),
                static_cast<unsigned>(bad), static_cast<unsigned>(m_failures.size()));
    const bool written = m_options.jsonPath.empty() || WriteJson();
    if (!written)
        std::fprintf(stderr, "zobench: cannot write %s\n", m_options.jsonPath.c_str());
    return bad == 0 && m_failures.empty() && written ? 0 : 1;
}

bool Harness::WriteJson() const
{
    std::FILE* file = std::fopen(m_options.jsonPath.c_str(), "w");
    if (file == nullptr)
        return false;
    const auto spread = [file](const char* name, const Spread& values) {
        std::fprintf(file, "\"%s\": {\"lower_quartile\": %.6g, \"median\": %.6g, \"upper_quartile\": %.6g}", name,
                     values.lowerQuartile, values.median, values.upperQuartile);
    };
    std::fprintf(file, "{\n  \"architecture\": %s,\n  \"system\": %s,\n  \"processors\": %u,\n  \"rounds\": %u,\n",
                 JsonText(kArchitecture).c_str(), JsonText(SystemName()).c_str(), ProcessorCount(), m_options.rounds);
    std::fprintf(file, "  \"measurements\": [");
    const char* separator = "\n";
    for (const Result& result : m_results) {
        std::fprintf(file, "%s    {\"name\": %s, \"good\": %s", separator, JsonText(result.name).c_str(),
                     result.IsGood() ? "true" : "false");
        if (result.limits.least != 0)
            std::fprintf(file, ", \"least\": %g", result.limits.least);
        if (result.limits.most != 0)
            std::fprintf(file, ", \"most\": %g", result.limits.most);
        std::fprintf(file, ", \"peers\": [");
        for (size_t i = 0; i < result.peers.size(); ++i) {
            std::fprintf(file, "%s\n      {\"name\": %s, ", i > 0 ? "," : "", JsonText(result.peers[i].name).c_str());
            spread("nanoseconds", result.peers[i].time);
            if (i > 0) {
                std::fprintf(file, ", ");
                spread("ratio", result.peers[i].ratio);
            }
            std::fprintf(file, "}");
        }
        std::fprintf(file, "]}");
        separator = ",\n";
    }
    std::fprintf(file, "\n  ],\n  \"failures\": [");
    for (size_t i = 0; i < m_failures.size(); ++i)
        std::fprintf(file, "%s%s", i > 0 ? ", " : "", JsonText(m_failures[i]).c_str());
    std::fprintf(file, "]\n}\n");
    const bool good = std::ferror(file) == 0;
    return std::fclose(file) == 0 && good;
}
