#include <zogbl/address_functions.h>
#include <zogbl/location_item.h>

#include "documented_dialing.h"
#include "telephony/lines/tapi_fixture.h"

namespace {

const Example kExample = {"another area", "1", "206", "555-0100", "1", "425", "011", "1", "1206555-0100"};

template <size_t SIZE> void Set(char (&field)[SIZE], const std::string& text)
{
    std::snprintf(field, SIZE, "%s", text.c_str());
}

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

/// How the last text was made up: "kind part:text part:text", numbers for kinds and parts.
std::string g_pieces;

/// Also asks for the pieces, which make the same text.
int Dial(_tagAddressInformation* address, int mode, CZoTAPIInterface* tapi = nullptr)
{
    const int isMade = CZoGlobalAddressFunctions::MakeDialableAddress(address, mode, tapi);
    if (address == nullptr || (address->m_bTAPIDialing && isMade == 0))
        return isMade;
    _tagAddressInformation again = *address;
    ZoDialing dialing;
    EXPECT_EQ(isMade, CZoGlobalAddressFunctions::ExplainDialableAddress(&again, mode, tapi, dialing));
    std::string all;
    g_pieces = std::to_string(static_cast<int>(dialing.kind));
    for (int i = 0; i < dialing.count; ++i) {
        all += dialing.pieces[i].text.GetString();
        g_pieces +=
            " " + std::to_string(static_cast<int>(dialing.pieces[i].part)) + ":" + dialing.pieces[i].text.GetString();
    }
    EXPECT_EQ(address->m_szDialable, all);
    return isMade;
}

class Dialing : public TapiTest {};

} // namespace

TEST_F(Dialing, FollowsTheLocationsRules)
{
    std::vector<Example> examples = DocumentedExamples();
    EXPECT_EQ(35u, examples.size());
    if (IsDoubleByte())
        examples.push_back({"second byte", "", "", "\x83\x2D #", "", "", "", "", "\x83\x2D#"}); // is like a hyphen
    for (const Example& example : examples) {
        _tagAddressInformation address = Address(example);
        EXPECT_EQ(1, Dial(&address, example.mode)) << example.name;
        EXPECT_EQ(example.dialed, address.m_szDialable) << example.name;
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
    const struct {
        const char *country, *area, *dialed, *pieces;
    } kCases[] = {
        {"", "425", "9,*70,*67,5550100,,77#", "1 0:9, 2:*70, 3:*67, 8:5550100 9:,,77#"},
        {"", "206", "8,*70,*67,12065550100,,77#", "2 1:8, 2:*70, 3:*67, 6:1 7:206 8:5550100 9:,,77#"},
        {"44", "20", "8,*70,*67,01144205550100,,77#", "3 1:8, 2:*70, 3:*67, 4:011 5:44 7:20 8:5550100 9:,,77#"},
    };
    for (const auto& [country, area, dialed, pieces] : kCases) {
        _tagAddressInformation address = {};
        CZoGlobalAddressFunctions::SetLocation(address, location);
        Set(address.m_szCountryCode, country);
        Set(address.m_szAreaCode, area);
        Set(address.m_szNumber, "5550100");
        EXPECT_EQ(1, Dial(&address, ZO_DIAL_AUTOMATIC));
        EXPECT_STREQ(dialed, address.m_szDialable);
        EXPECT_EQ(pieces, g_pieces);
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
        {{"", "(1)", "(206)", "(555) 0100", "", "", "", "", "12065550100"}, "+1 (206) 5550100", "0x2"},
        {{"", "1", "425", "(+49) (30) 555-0100", "", "", "", "", "01149305550100"}, "+49 (30) 555-0100", "0x2"},
        {{"", "", "", "+12065550100", "", "", "", "", "5550100", ZO_DIAL_LOCAL}, "+1 (206) 5550100", "0x6"},
        // long distance whatever the mode, for the area code is somewhere in the number
        {{"", "", "", "+442079460018", "", "", "", "", "011442079460018", ZO_DIAL_LOCAL}, "+44 2079460018", "0xa"},
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
            EXPECT_EQ(test.example.dialed, address.m_szDialable);
            EXPECT_EQ("4 10:" + test.example.dialed, g_pieces);
            const std::string arguments =
                std::string("address=\"") + test.canonical + "\", card=0, options=" + test.options;
            EXPECT_NE(std::string::npos, telsim.Calls().find(arguments)) << telsim.Calls();
            EXPECT_NE(std::string::npos, telsim.Calls().find(own ? "device=0," : "device=1,"));
        }
    }
    Rule("lineTranslateAddress", TELSIM_FAIL, LINEERR_INVALADDRESS);
    _tagAddressInformation address = Address(kExample);
    address.m_bTAPIDialing = TRUE;
    EXPECT_EQ(0, Dial(&address, ZO_DIAL_AUTOMATIC));
    EXPECT_STREQ("", address.m_szDialable);
    EXPECT_EQ(Boxes(), boxes) << "an interface made for the call is silent";
}

TEST_F(Dialing, RefusesWhatCannotBeDialed)
{
    EXPECT_EQ(0, Dial(nullptr, ZO_DIAL_AUTOMATIC));
    for (const int mode : {-1, 3, ZO_DIAL_AUTOMATIC}) {
        _tagAddressInformation address = Address(kExample);
        Set(address.m_szDialable, "old");
        Set(address.m_szNumber, mode == ZO_DIAL_AUTOMATIC ? " - " : "5");
        EXPECT_EQ(0, Dial(&address, mode)) << mode;
        EXPECT_STREQ("", address.m_szDialable);
    }
    const std::pair<Example, BOOL> kAstray[] = {
        {{"", "1", "206", "5", "", "425", "011", "1", ""}, FALSE}, // at home, or abroad?
        {{"", "", "", "+1 206 555 0100", "", "425", "011", "1", ""}, FALSE},
        {{"", "", "206", "5", "", "", "", "", ""}, TRUE}, // in which country?
        {{"", "1", "206", "+49#", "1", "425", "011", "1", ""}, FALSE},
        {{"", "1", "206", "+", "1", "425", "011", "1", ""}, FALSE},
    };
    for (const auto& [example, service] : kAstray) {
        _tagAddressInformation address = Address(example);
        address.m_bTAPIDialing = service;
        EXPECT_EQ(0, Dial(&address, ZO_DIAL_AUTOMATIC)) << address.m_szDialable;
    }
    _tagAddressInformation address = Address(kExample);
    for (char* text : {address.m_szNumber, address.m_szDialSuffix})
        std::memset(text, '5', ZO_ADDRESS_TEXT_SIZE - 1);
    Set(address.m_szLocalPrefix, "99"); // one too many
    EXPECT_EQ(0, Dial(&address, ZO_DIAL_LOCAL));
    address.m_szLocalPrefix[1] = '\0';
    EXPECT_EQ(1, Dial(&address, ZO_DIAL_LOCAL));
}

TEST_F(Dialing, SaysSoWhenMemoryLacks)
{
    for (const BOOL service : {FALSE, TRUE}) {
        AllocationFaults faults;
        RunFaultLoop(faults, [&](const FaultRun& run) {
            _tagAddressInformation address = Address(kExample);
            address.m_bTAPIDialing = service;
            const int result = CZoGlobalAddressFunctions::MakeDialableAddress(&address, ZO_DIAL_AUTOMATIC, nullptr);
            run.Stop();
            EXPECT_EQ(run.Fired() ? 0 : 1, result);
            EXPECT_STREQ(run.Fired() ? "" : service ? "12065550100" : "1206555-0100", address.m_szDialable);
        });
    }
}
