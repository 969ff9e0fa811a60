// zobench: what the library costs, beside the least that can do the same.
#include "families.h"
#include "harness.h"

#include <afxwin.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>

namespace {

constexpr int kWrongUsage = 2;
constexpr unsigned kLeastRounds = 10; // fewer give no median to rely on
constexpr unsigned kMostRounds = 100000;

struct Family {
    const char* name;
    void (*measure)(Harness& harness);
};
constexpr Family kFamilies[] = {
    {"registry", &MeasureRegistry},
    {"profiles", &MeasureProfiles},
    {"countries", &MeasureCountries},
    {"folders", &MeasureFolders},
    {"bitmaps", &MeasureBitmaps},
    {"pickers", &MeasurePickers},
    {"startup", &MeasureStartup},
    {"trace", &MeasureTrace},
    {"translation", &MeasureTranslation},
    {"text panel", &MeasureTextPanel},
    {"trees", &MeasureTrees},
    {"values", &MeasureValues},
    {"calendar", &MeasureCalendar},
    {"headers", &MeasureHeaders},
    {"pictures", &MeasurePictures},
    {"colors", &MeasureColorControls},
    {"progress bar", &MeasureProgressBar},
    {"date", &MeasureDateTime},
};

const char* const kHelp =
    "Measures the class library beside the least that can do the same job.\n"
    "\n"
    "  zobench [options]\n"
    "\n"
    "  --filter TEXT   only measurements with this text in their name, for example registry\n"
    "  --rounds N      rounds in which the peers take turns, 10 to 100000; 100 without this option.\n"
    "                  Start-up, where a round runs three programs, has a fifth as many\n"
    "  --json FILE     write the figures to this file too\n"
    "  --help          this text\n"
    "\n"
    "Exit code: 0 done, 1 a ratio is outside its limits or something failed, 2 the command line makes no sense.\n";

int Complain(const char* what, const char* word)
{
    std::fprintf(stderr, "zobench: %s: %s\nzobench --help tells more.\n", what, word);
    return kWrongUsage;
}

bool BeginsWith(const std::string& text, const char* beginning) { return text.rfind(beginning, 0) == 0; }

/// Whether the filter can match a measurement of the family: not when it begins with the name of another one.
bool IsWanted(const Family& family, const std::string& filter)
{
    return std::none_of(std::begin(kFamilies), std::end(kFamilies),
                        [&](const Family& other) { return &other != &family && BeginsWith(filter, other.name); });
}

int MeasureAll(const Options& options)
{
    Harness harness(options);
    for (const Family& family : kFamilies) {
        if (!IsWanted(family, options.filter))
            continue;
        try {
            family.measure(harness);
        } catch (const std::exception& e) {
            harness.AddFailure(std::string(family.name) + ": " + e.what());
        } catch (CException* e) {
            char text[256] = "";
            e->GetErrorMessage(text, sizeof text);
            e->Delete();
            harness.AddFailure(std::string(family.name) + ": " + text);
        }
    }
    return harness.Finish();
}

} // namespace

int main(int count, char** words)
{
    if (!AfxWinInit(GetModuleHandleA(nullptr), nullptr, GetCommandLineA(), 0))
        return 1;
    if (count == 3 && std::strcmp(words[1], "--child") == 0)
        return RunStartupChild(words[2]);
    if (count == 4 && std::strcmp(words[1], "--child") == 0 && std::strcmp(words[2], "lines") == 0)
        return RunLinesChild(words[3]);

    Options options;
    for (int i = 1; i < count; ++i) {
        const auto is = [&](const char* option) { return std::strcmp(words[i], option) == 0; };
        if (is("--help") || is("-h") || is("/?")) {
            std::fputs(kHelp, stdout);
            return 0;
        }
        if (!is("--filter") && !is("--rounds") && !is("--json"))
            return Complain("unknown option", words[i]);
        if (i + 1 == count || *words[i + 1] == '\0')
            return Complain("an option lacks its value", words[i]);
        const char* value = words[i + 1];
        if (is("--filter")) {
            options.filter = value;
        } else if (is("--json")) {
            options.jsonPath = value;
        } else {
            char* end = nullptr;
            const unsigned long rounds = std::strtoul(value, &end, 10);
            if (*end != '\0' || rounds < kLeastRounds || rounds > kMostRounds)
                return Complain("not a number of rounds", value);
            options.rounds = static_cast<unsigned>(rounds);
        }
        ++i;
    }
    return MeasureAll(options);
}
