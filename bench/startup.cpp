// What starting the library takes, in programs of their own: a process starts once only.
#include "families.h"
#include "harness.h"
#include "process.h"
#include "product.h"
#include "step_clock.h"

#include <zogbl/country_code.h>
#include <zogbl/gdi_data.h>
#include <zogbl/language_support.h>
#include <zogbl/module.h>
#include <zogbl/resource_ids.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int kCountries = 250;
constexpr unsigned kRoundsPerChildRound = 5; // they take long

CString LibraryPath()
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(ZoGblGetInstanceHandle(), path, sizeof path - 1);
    return path;
}

// In the child --------------------------------------------------------------------------------------------------------

/// Goes through the start by hand, so that each step is seen when it is done for the first time.
int RunSteps()
{
    StepClock clock;
    const CString path = LibraryPath();
    CZoVersionResource version;
    if (!version.ExtractVersionInfo(path))
        return 1;
    clock.Step("keys");
    CZoLanguageSupport support;
    if (!support.Create())
        return 2;
    clock.Step("window");
    if (!support.LoadCurrentLanguage(path))
        return 3;
    clock.Step("language");
    CZoGlobalGDIData::InitializeFontsFromResources();
    if (CZoGlobalGDIData::GetBoldFont() == nullptr)
        return 4;
    clock.Step("fonts");
    if (!ZoGblLoadLanguageDLL()) // all of it again, to have the list look for its names in the loaded library
        return 5;
    clock.Step("again");
    if (CZoCountryCodeList(1).GetCount() < kCountries)
        return 6;
    clock.Step("countries-again");
    clock.Print();
    ZoGblDumpLanguageDLL();
    return 0;
}

/// Starts as a host does.
int RunHost()
{
    StepClock clock;
    if (!ZoGblLoadLanguageDLL())
        return 1;
    clock.Step("load");
    const CZoCountryCodeList* list = GetGlobalCountryList();
    if (list == nullptr || list->GetCount() < kCountries)
        return 2;
    clock.Step("list");
    clock.Print();
    ZoGblDumpLanguageDLL();
    return 0;
}

// In the parent -------------------------------------------------------------------------------------------------------

/// The steps of a child in each round, in nanoseconds.
class ChildSteps {
public:
    explicit ChildSteps(const std::string& commandLine) : m_commandLine(commandLine) {}

    void RunOnce()
    {
        const ProgramRun run = RunProgram(m_commandLine);
        if (run.exitCode != 0)
            throw BenchmarkFailure("step " + std::to_string(run.exitCode) + " failed: " + m_commandLine);
        std::istringstream lines(run.output);
        std::string name;
        double value = 0;
        while (lines >> name >> value) {
            if (name == "main") {
                m_steps["start"].push_back(Nanoseconds(static_cast<long long>(value) - run.started));
                continue;
            }
            m_steps[name].push_back(value);
        }
    }

    void Forget() { m_steps.clear(); }

    /// The sum of some steps, round by round.
    Samples Get(const char* peer, std::initializer_list<const char*> steps) const
    {
        Samples samples{peer, std::vector<double>(m_steps.at("start").size())};
        for (const char* step : steps) {
            const std::vector<double>& values = m_steps.at(step);
            Require(values.size() == samples.nanoseconds.size(), "a step is missing in a round");
            std::transform(values.begin(), values.end(), samples.nanoseconds.begin(), samples.nanoseconds.begin(),
                           std::plus<>());
        }
        return samples;
    }

private:
    std::string m_commandLine;
    std::map<std::string, std::vector<double>> m_steps;
};

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

} // namespace

int RunStartupChild(const char* kind)
{
    if (std::strcmp(kind, "steps") == 0)
        return RunSteps();
    if (std::strcmp(kind, "host") == 0)
        return RunHost();
    return 100;
}

void MeasureStartup(Harness& harness)
{
    enum Child { kHost, kSteps, kBare, kChildCount };
    struct Part {
        Child child;
        const char* peer;
        std::initializer_list<const char*> steps;
    };
    struct Row {
        const char* name;
        std::initializer_list<Part> parts;
    };
    static const Row rows[] = {
        {"startup: process to main",
         {{kHost, "a program with the library", {"start"}}, {kBare, "a program without it", {"start"}}}},
        {"startup: library loaded", {{kBare, "LoadLibrary", {"library"}}}},
        {"startup: keys",
         {{kSteps, "CZoVersionResource::ExtractVersionInfo", {"keys"}},
          {kBare, "version calls, open the user's key", {"keys"}}}},
        {"startup: hidden window",
         {{kSteps, "CZoLanguageSupport::Create", {"window"}}, {kBare, "RegisterClass, CreateWindowEx", {"window"}}}},
        {"startup: language library",
         {{kSteps, "CZoLanguageSupport::LoadCurrentLanguage", {"language"}},
          {kBare, "list the key, LoadLibrary, FindResource", {"language"}}}},
        {"startup: shared fonts",
         {{kSteps, "InitializeFontsFromResources", {"fonts"}},
          {kBare, "GetDC, CreateFontIndirect two times", {"fonts"}}}},
        {"startup: country list once more",
         {{kSteps, "CZoCountryCodeList::LoadData", {"countries-again"}},
          {kBare, "LoadString for each name", {"countries-again"}}}},
        {"startup: main to all ready",
         {{kHost, "ZoGblLoadLanguageDLL, GetGlobalCountryList", {"load", "list"}},
          {kBare, "all of the bare calls", {"keys", "window", "language", "fonts", "countries"}}}},
        {"startup: GetGlobalCountryList", {{kHost, "of it, behind ZoGblLoadLanguageDLL", {"list"}}}},
    };
    if (std::none_of(std::begin(rows), std::end(rows), [&](const Row& row) { return harness.Wants(row.name); }))
        return;

    const RegisteredProduct product;
    std::string bareCommand = Quoted(OwnFolder() + "zobench_bare.exe");
    {
        const LoadedLanguage language;
        char path[MAX_PATH] = {};
        GetModuleFileNameA(ZoGblGetLanguageDLL(), path, sizeof path - 1);
        for (const CString& argument : {LibraryPath(), product.GetUserKey(), product.GetLanguagesKey(), CString(path)})
            bareCommand += " " + Quoted((LPCSTR)argument);
        bareCommand += " " + std::to_string(ZO_IDS_COUNTRY_FIRST) + " " + std::to_string(kCountries);
    }
    ChildSteps children[kChildCount] = {ChildSteps(Quoted(OwnPath()) + " --child host"),
                                        ChildSteps(Quoted(OwnPath()) + " --child steps"), ChildSteps(bareCommand)};
    for (ChildSteps& child : children) {
        child.RunOnce(); // whoever comes first finds no file in the system's cache
        child.Forget();
    }
    const unsigned rounds = harness.GetRounds() / kRoundsPerChildRound;
    for (unsigned round = 0; round < rounds; ++round) {
        for (int turn = 0; turn < kChildCount; ++turn)
            children[round % 2 == 0 ? turn : kChildCount - 1 - turn].RunOnce();
    }
    for (const Row& row : rows) {
        std::vector<Samples> peers;
        for (const Part& part : row.parts)
            peers.push_back(children[part.child].Get(part.peer, part.steps));
        harness.Add(row.name, peers, Unit::milliseconds);
    }
}
