// The framework's strings and maps beside those of the standard library.
#include "families.h"
#include "harness.h"

#include <afxtempl.h>

#include <cstring>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

constexpr int kAppends = 1000;
constexpr size_t kTextLength = 4096;
constexpr UINT kKeys = 1000;
constexpr UINT kBuckets = 1201; // a prime, a fifth more
constexpr Limits kLimits = {0, 2.0};
constexpr Limits kCharacterLimits = {0, 4.0}; // a call into another library, beside what is inlined

const char* const kWord = "interface";
const char* const kOtherWord = "module that holds it";
const char* const kMissing = "interior";
const char* volatile g_addend = kOtherWord; // so that no length is known beforehand

/// Plain text in which the word stands every 200 bytes or so, and at the end.
std::string MakeText()
{
    static const char* const words[] = {"a ", "line ", "of the ", "international ", "telephone ", "in ", "its "};
    std::string text;
    for (size_t i = 0; text.size() < kTextLength; ++i)
        text += i % 40 == 39 ? "interface " : words[i * 7 % 11 % 7];
    return text + kWord;
}

void MeasureStrings(Harness& harness)
{
    const auto append = [](auto text, const auto& addend) {
        for (int i = 0; i < kAppends; ++i)
            text += addend;
        Keep(text);
    };
    harness.Compare("values: 1,000 characters appended",
                    {{"CString::operator+=", [=] { append(CString(), 'x'); }},
                     {"std::string::operator+=", [=] { append(std::string(), 'x'); }}},
                    kCharacterLimits);
    harness.Compare("values: 1,000 texts appended",
                    {{"CString::operator+=", [=] { append(CString(), static_cast<const char*>(g_addend)); }},
                     {"std::string::operator+=", [=] { append(std::string(), static_cast<const char*>(g_addend)); }}},
                    kLimits);

    const auto assign = [](auto& text) {
        for (const char* word : {kWord, kOtherWord})
            text = word;
        Keep(text);
    };
    CString string;
    std::string standard;
    harness.Compare(
        "values: two texts assigned",
        {{"CString::operator=", [&] { assign(string); }}, {"std::string::operator=", [&] { assign(standard); }}},
        kLimits);

    const std::string text = MakeText();
    const CString sameText = text.c_str();
    const auto last = static_cast<int>(text.size() - std::strlen(kWord));
    Require(sameText.Find(kWord, last) == last && sameText.Find(kMissing) < 0, "the text is not what it should be");
    harness.Compare("values: text looked for in 4 KB",
                    {{"CString::Find", [&] { Keep(sameText.Find(kMissing)); }},
                     {"std::string::find", [&] { Keep(text.find(kMissing)); }}},
                    kLimits);
    harness.Compare("values: text replaced in 4 KB",
                    {{"CString::Replace",
                      [&] {
                          CString changed(sameText);
                          changed.Replace(kWord, kOtherWord);
                          Keep(changed);
                      }},
                     {"std::string, found and appended",
                      [&] {
                          std::string changed;
                          size_t from = 0;
                          for (size_t at = text.find(kWord); at != std::string::npos; at = text.find(kWord, from)) {
                              changed.append(text, from, at - from).append(kOtherWord);
                              from = at + std::strlen(kWord);
                          }
                          changed.append(text, from);
                          Keep(changed);
                      }}},
                    kLimits);
}

void MeasureMaps(Harness& harness)
{
    std::vector<std::string> names;
    for (UINT number = 0; number < kKeys; ++number)
        names.push_back("Name of the entry " + std::to_string(number * 7919));
    const auto fill = [&](auto& map) {
        for (UINT number = 0; number < kKeys; ++number)
            map[names[number].c_str()] = number;
    };
    using Map = CMap<CString, LPCSTR, UINT, UINT>;
    using Standard = std::unordered_map<std::string, UINT>;
    harness.Compare("values: map of 1,000 texts made", {{"CMap",
                                                         [&] {
                                                             Map map(kKeys);
                                                             map.InitHashTable(kBuckets);
                                                             fill(map);
                                                         }},
                                                        {"std::unordered_map", [&] {
                                                             Standard map;
                                                             map.reserve(kKeys);
                                                             fill(map);
                                                         }}});
    Map map;
    map.InitHashTable(kBuckets);
    fill(map);
    Standard standard;
    fill(standard);
    UINT next = 0, nextStandard = 0;
    harness.Compare("values: map asked for a text",
                    {{"CMap::Lookup",
                      [&] {
                          UINT number = kKeys;
                          map.Lookup(names[next].c_str(), number);
                          Require(number == next, "not found");
                          next = (next + 1) % kKeys;
                      }},
                     {"std::unordered_map::find", [&] {
                          const auto found = standard.find(names[nextStandard]);
                          Require(found != standard.end() && found->second == nextStandard, "not found");
                          nextStandard = (nextStandard + 1) % kKeys;
                      }}});
}

} // namespace

void MeasureValues(Harness& harness)
{
    MeasureStrings(harness);
    MeasureMaps(harness);
}
