/// \file
/// The examples of the page on dialing.
#pragma once

#include <zogbl/address_functions.h>

#include "support/test.h"

#include <map>
#include <regex>

namespace zo_test {

/// An address and the location it is dialed from.
struct Example {
    std::string name;
    std::string country, area, number;
    std::string hereCountry, hereArea;
    std::string international, longDistance; // the location's prefixes
    std::string dialed;
    int mode = ZO_DIAL_AUTOMATIC;
};

/// The table of examples of docs/dialing.md, which is a resource of this program.
inline std::vector<Example> DocumentedExamples()
{
    const HRSRC resource = FindResourceA(nullptr, "DIALING", MAKEINTRESOURCEA(10));
    const std::string page(static_cast<const char*>(LockResource(LoadResource(nullptr, resource))),
                           SizeofResource(nullptr, resource));
    const std::map<std::string, int> kModes = {
        {"automatic", ZO_DIAL_AUTOMATIC}, {"local", ZO_DIAL_LOCAL}, {"long distance", ZO_DIAL_LONG_DISTANCE}};
    // Of a number's characters the comma is one, too.
    const std::regex row(R"(\| (.+) \| (automatic|local|long distance) \| ([^,|]+), ([^,|]+), (.+) )"
                         R"(\| ([^,|]+), ([^;|]+); ([^,|]+), (.+) \| (.+) \|)");
    std::vector<Example> examples;
    for (std::sregex_iterator match(page.begin(), page.end(), row), end; match != end; ++match) {
        const auto cell = [&](size_t i) { return (*match)[i] == "\xE2\x80\x93" ? "" : (*match)[i].str(); }; // a dash
        examples.push_back(
            {cell(1), cell(3), cell(4), cell(5), cell(6), cell(7), cell(8), cell(9), cell(10), kModes.at(cell(2))});
    }
    return examples;
}

} // namespace zo_test
