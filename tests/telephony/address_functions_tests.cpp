#include <zogbl/address_functions.h>
#include <zogbl/location_item.h>

#include "tapi_fixture.h"

#include "support/environment.h"

#include <cstring>

namespace {

/// An address and the location it is dialed from. See docs/dialing.md.
struct Example {
    const char* name;
    const char *country, *area, *number;
    const char *hereCountry, *hereArea;
    const char *international, *longDistance; // the location's prefixes
    const char* dialed;
    int mode = ZO_DIAL_AUTOMATIC;
};
const Example kExamples[] = {
    {"United States, same area", "1", "425", "555-0100", "1", "425", "011", "1", "555-0100"},
    {"United States, another area", "+1", "(206)", "555-0100", "1", "425", "011", "1", "1(206)555-0100"},
    {"same area, ten digits", "1", "425", "555-0100", "1", "425", "011", "1", "1425555-0100", ZO_DIAL_LONG_DISTANCE},
    {"another area, local call", "1", "206", "555-0100", "1", "425", "011", "1", "555-0100", ZO_DIAL_LOCAL},
    {"Canada from the United States", "1", "416", "555-0100", "1", "425", "011", "1", "1416555-0100"},
    {"Bahamas from the United States", "1+242", "", "555-0100", "1", "425", "011", "1", "1242555-0100"},
    {"within the Bahamas", "1+242", "", "555-0100", "1+242", "", "011", "1", "555-0100"},
    {"United Kingdom from the Bahamas", "44", "20", "7946 0018", "1+242", "", "011", "1", "011442079460018"},
    {"Germany from the United States", "49", "30", "23125 000", "1", "425", "011", "1", "011493023125000"},
    {"Germany, same area", "49", "30", "23125-000", "49", "30", "00", "0", "23125-000"},
    {"Germany, another area", "49", "89", "23125 000", "49", "30", "00", "0", "08923125000"},
    {"France, within an area", "33", "1", "99 00 12 34", "33", "", "00", "0", "0199001234"},
    {"Spain, no area codes", "34", "", "910 000 001", "34", "", "00", "", "910000001"},
    {"Italy from Germany", "39", "06", "5550 1234", "49", "30", "00", "0", "00390655501234"},
    {"Japan from Australia", "81", "3", "5550-1234", "61", "2", "0011", "0", "00118135550-1234"},
    {"Australia, another area", "61", "3", "5550 1234", "61", "2", "0011", "0", "0355501234"},
    {"Brazil, carrier chosen", "55", "11", "5550-1234", "55", "21", "0021", "021", "021115550-1234"},
    {"no country", "", "206", "555-0100", "1", "425", "011", "1", "1206555-0100"},
    {"abroad, local call", "49", "30", "1234", "1", "30", "011", "1", "01149301234", ZO_DIAL_LOCAL},
    // as people write numbers
    {"blanks and hyphens", "", "", "  -555 - - 01-00- ", "", "", "", "", "555-01-00"},
    {"a formula's sign", "", "", "=-5550100", "", "", "", "", "5550100"},
    {"hyphens behind other characters", "", "", "#-31#-555,-0100", "", "", "", "", "#31#555,0100"},
};

template <size_t SIZE> void Set(char (&field)[SIZE], const char* text) { std::snprintf(field, SIZE, "%s", text); }

_tagAddressInformation Address(const Example& example)
{
    _tagAddressInformation address = {};
    Set(address.m_szCountryCode, example.country);
    Set(address.m_szAreaCode, example.area);
    Set(address.m_szNumber, example.number);
    Set(address.m_szLocationCountryCode, example.hereCountry);
    Set(address.m_szLocationAreaCode, example.hereArea);
    Set(address.m_szInternationalAccess, example.international);
    Set(address.m_szLongDistancePrefix, example.longDistance);
    return address;
}

int Dial(_tagAddressInformation* address, int mode, CZoTAPIInterface* tapi = nullptr)
{
    return CZoGlobalAddressFunctions::MakeDialableAddress(address, mode, tapi);
}

class Dialing : public TapiTest {};

} // namespace

TEST_F(Dialing, FollowsTheLocationsRules)
{
    for (const Example& example : kExamples) {
        _tagAddressInformation address = Address(example);
        EXPECT_EQ(1, Dial(&address, example.mode)) << example.name;
        EXPECT_STREQ(example.dialed, address.m_szDialable) << example.name;
    }
    EXPECT_EQ("", telsim.Calls());
}

TEST_F(Dialing, SurroundsTheNumberWithTheLocationsCodes)
{
    CZoLocationItem location(0);
    location.m_csCountryCode = "1";
    location.m_csAreaCityCode = "425";
    location.m_csInternationalAccess = "011";
    location.m_csLongDistancePrefix = "1";
    location.m_csLongDistanceAccess = "8,";
    location.m_csLocalPrefix = "9,";
    location.m_csDialSuffix = ",,77#";
    location.m_csBlockCallerID = "*67,";
    location.m_csDisableCallWaiting = "*70,";
    const std::pair<const char*, const char*> kCases[] = {{"425", "9,*70,*67,5550100,,77#"},
                                                          {"206", "8,*70,*67,12065550100,,77#"}};
    for (const auto& [area, dialed] : kCases) {
        _tagAddressInformation address = {};
        CZoGlobalAddressFunctions::SetLocation(address, location);
        Set(address.m_szAreaCode, area);
        Set(address.m_szNumber, "5550100");
        EXPECT_EQ(1, Dial(&address, ZO_DIAL_AUTOMATIC));
        EXPECT_STREQ(dialed, address.m_szDialable);
    }
}

TEST_F(Dialing, LeavesItToTheServiceWhenTheLocationSaysSo)
{
    const struct {
        Example example;
        const char* canonical;
        const char* options;
    } kCases[] = {
        {{"", "1", "425", "555-0100", "49", "", "", "", "5550100"}, "+1 (425) 555-0100", "0x2"},
        {{"", "1", "425", "5550100", "", "", "", "", "14255550100", ZO_DIAL_LONG_DISTANCE}, "+1 (425) 5550100", "0xa"},
        {{"", "", "206", "5550100", "1", "", "", "", "5550100", ZO_DIAL_LOCAL}, "+1 (206) 5550100", "0x6"},
        {{"", "1+242", "", "5550100", "", "", "", "", "12425550100"}, "+1 (242) 5550100", "0x2"},
        {{"", "34", "", "910000001", "", "", "", "", "01134910000001"}, "+34 910000001", "0x2"},
        {{"", "", "", "555 0100", "", "", "", "", "5550100"}, "5550100", "0x2"},
    };
    for (const auto& test : kCases) {
        for (const bool own : {true, false}) {
            SCOPED_TRACE(test.canonical);
            telsim.ClearTexts();
            _tagAddressInformation address = Address(test.example);
            address.m_bTAPIDialing = TRUE;
            Set(address.m_szLocalPrefix, "9,");
            TestLine line;
            EXPECT_EQ(1, Dial(&address, test.example.mode, own ? nullptr : &line));
            EXPECT_STREQ(test.example.dialed, address.m_szDialable);
            const std::string arguments =
                std::string("address=\"") + test.canonical + "\", card=0, options=" + test.options;
            EXPECT_NE(std::string::npos, telsim.Calls().find(arguments)) << telsim.Calls();
            EXPECT_NE(std::string::npos, telsim.Calls().find(own ? "device=0," : "device=1,"));
        }
    }
    for (const DWORD action : {TELSIM_FAIL, TELSIM_PRETEND, TELSIM_USED_SIZE, TELSIM_BAD_OFFSETS, TELSIM_BAD_SIZES}) {
        Rule("lineTranslateAddress", action, action == TELSIM_FAIL ? LINEERR_INVALADDRESS : 0xFFFFFFF0);
        _tagAddressInformation address = Address(kExamples[0]);
        address.m_bTAPIDialing = TRUE;
        EXPECT_EQ(0, Dial(&address, ZO_DIAL_AUTOMATIC));
        EXPECT_STREQ("", address.m_szDialable);
        telsim.ClearRules();
    }
    EXPECT_EQ(Boxes(), boxes) << "an interface made for the call is silent";
}

TEST_F(Dialing, RefusesWhatCannotBeDialed)
{
    EXPECT_EQ(0, Dial(nullptr, ZO_DIAL_AUTOMATIC));
    for (const int mode : {-1, 3, ZO_DIAL_AUTOMATIC}) {
        _tagAddressInformation address = Address(kExamples[0]);
        Set(address.m_szDialable, "old");
        Set(address.m_szNumber, mode == ZO_DIAL_AUTOMATIC ? " - " : "5");
        EXPECT_EQ(0, Dial(&address, mode)) << mode;
        EXPECT_STREQ("", address.m_szDialable);
    }
    _tagAddressInformation address = Address(kExamples[0]);
    for (char* text : {address.m_szNumber, address.m_szDialSuffix})
        std::memset(text, '5', ZO_ADDRESS_TEXT_SIZE - 1);
    Set(address.m_szLocalPrefix, "99"); // one too many
    EXPECT_EQ(0, Dial(&address, ZO_DIAL_LOCAL));
    address.m_szLocalPrefix[1] = '\0';
    EXPECT_EQ(1, Dial(&address, ZO_DIAL_LOCAL));
}

TEST_F(Dialing, LeavesSecondBytesOfCharactersAlone)
{
    ZO_ONLY_IN(zo_test::IsDoubleByte(), "characters of two bytes");
    _tagAddressInformation address = Address(kExamples[0]);
    Set(address.m_szNumber, "\x83\x2D\x83\x54 5"); // a hyphen and a "T" as second bytes
    EXPECT_EQ(1, Dial(&address, ZO_DIAL_AUTOMATIC));
    EXPECT_STREQ("\x83\x2D\x83\x54"
                 "5",
                 address.m_szDialable);
}

TEST_F(Dialing, SaysSoWhenMemoryLacks)
{
    for (const BOOL service : {FALSE, TRUE}) {
        zo_test::AllocationFaults faults;
        zo_test::RunFaultLoop(faults, [&](const zo_test::FaultRun& run) {
            _tagAddressInformation address = Address(kExamples[1]);
            address.m_bTAPIDialing = service;
            const int result = Dial(&address, ZO_DIAL_AUTOMATIC);
            run.Stop();
            EXPECT_EQ(run.Fired() ? 0 : 1, result);
            EXPECT_STREQ(run.Fired() ? "" : service ? "12065550100" : "1(206)555-0100", address.m_szDialable);
        });
    }
}
