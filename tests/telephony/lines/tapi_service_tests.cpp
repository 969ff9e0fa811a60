// The telephony service's failures, lies and oddities, function by function.
#include "support/test.h"
#include "tapi_fixture.h"

#include <zogbl/address_functions.h>

namespace {

/// What the error table says of an error of the service.
struct ServiceError {
    DWORD error, code, flags;
    DWORD boxStyle; // 0: no box
    bool retried;   // once the box is answered
};
constexpr ServiceError kServiceErrors[] = {
    {LINEERR_INIFILECORRUPT, 13, 0x40, 0x24, true},
    {LINEERR_INVALCARD, 13, 0x40, 0x24, true},
    {LINEERR_INVALLOCATION, 13, 0x40, 0x24, true},
    {LINEERR_NODRIVER, 14, 0x10, 0x10, false},
    {LINEERR_NOMEM, 10, 0x10, 0x10, false},
    {LINEERR_OPERATIONFAILED, 16, 0x10, 0x10, false},
    {LINEERR_RESOURCEUNAVAIL, 17, 0x10, 0x45, true},
    {LINEERR_REINIT, 0, 0x10, 0, false},
    {LINEERR_NOMULTIPLEINSTANCE, 15, 0x10, 0x10, false},
    {LINEERR_INVALPARAM, 12, 0x10, 0, false},
};

/// What a program does with an interface, from beginning to end.
enum class Life { kPort, kCaller, kConfiguration, kNumber };

const std::string kSettings = "Settings of device 1";

/// What a life came to, and the code that is left.
using Outcome = std::pair<std::string, DWORD>;

/// What a life comes to when nothing goes wrong.
const std::map<Life, std::string> kResults = {{Life::kPort, "port"},
                                              {Life::kCaller, "555Ada"},
                                              {Life::kConfiguration, kSettings + "*"},
                                              {Life::kNumber, "5550123"}};

/// A function that takes part, and how an error of it ends: result, and the code that is recorded behind the error's
/// own (0: that stays).
const struct {
    Life life;
    std::string name;
    Outcome ending;
} kFunctions[] = {
    {Life::kPort, "lineInitialize", {"", 0}},
    {Life::kPort, "lineNegotiateAPIVersion", {"", 3}},
    {Life::kPort, "lineGetDevCaps", {"", 0}},
    {Life::kPort, "lineOpen", {"", 8}},
    {Life::kPort, "lineSetStatusMessages", {"port", 0}},
    {Life::kPort, "lineGetAddressStatus", {"", 8}},
    {Life::kPort, "lineGetAddressCaps", {"", 0}},
    {Life::kPort, "lineMakeCall", {"", 11}},
    {Life::kPort, "lineGetID", {"", 11}},
    {Life::kPort, "lineGetCallStatus", {"port", 0}},
    {Life::kPort, "lineDrop", {"port", 0}},
    {Life::kPort, "lineDeallocateCall", {"port", 0}},
    {Life::kPort, "lineClose", {"port", 0}},
    {Life::kPort, "lineShutdown", {"port", 0}},
    {Life::kCaller, "lineInitialize", {"", 0}},
    {Life::kCaller, "lineNegotiateAPIVersion", {"", 3}},
    {Life::kCaller, "lineGetDevCaps", {"", 0}},
    {Life::kCaller, "lineOpen", {"", 26}},
    {Life::kCaller, "lineSetStatusMessages", {"555Ada", 0}},
    {Life::kCaller, "lineGetCallInfo", {"", 0}},
    {Life::kCaller, "lineClose", {"555Ada", 0}},
    {Life::kConfiguration, "lineGetDevConfig", {"", 0}},
    {Life::kConfiguration, "lineConfigDialogEdit", {kSettings, 0}},
    {Life::kNumber, "lineInitialize", {"", 0}},
    {Life::kNumber, "lineTranslateAddress", {"", 0}},
    {Life::kNumber, "lineTranslateDialog", {"5550123", 0}},
};

class TapiService : public TapiTest {
protected:
    TapiService()
    {
        // So that what is made once and kept is there.
        TestLine(TRUE).GrabThePort();
        OutputDebugStringA("");
    }
    /// Afterwards the service must have nothing of the interface left.
    Outcome Live(Life life, BOOL silent)
    {
        const long handles = ProcessCounts::Take().handles;
        const size_t told = texts.size();
        auto [result, code] = Outcome{};
        {
            TestLine line(silent);
            switch (life) {
            case Life::kPort:
                result = line.GrabThePort() ? "port" : "";
                EXPECT_EQ(result.empty(), line.m_hComm == INVALID_HANDLE_VALUE);
                EXPECT_EQ(result.empty(), texts.find("Just set m_hComm", told) == std::string::npos);
                EXPECT_TRUE(line.HangupCall());
                break;
            case Life::kCaller:
                if (line.EnableCallAnswer(TRUE)) {
                    telsim.OfferCall(1, "555", "Ada", callerFlags);
                    PumpAll();
                    line.EnableCallAnswer(FALSE);
                }
                result = std::string(line.m_strCallerID) + std::string(line.m_strCallerName);
                break;
            case Life::kConfiguration:
                line.PreConfigureDevice(nullptr, 1, FALSE);
                result.assign(reinterpret_cast<const char*>(line.m_lpDevConfig), line.m_dwDevConfigSize);
                FreeConfig(line);
                break;
            case Life::kNumber: {
                _tagAddressInformation address = {};
                address.m_bTAPIDialing = TRUE;
                strcpy(address.m_szNumber, "5550123");
                CZoGlobalAddressFunctions::MakeDialableAddress(&address, ZO_DIAL_AUTOMATIC, &line);
                result = address.m_szDialable;
                EXPECT_FALSE(line.DisplaylineTranslateDialog());
                break;
            }
            }
            EXPECT_TRUE(line.ShutdownTAPI());
            EXPECT_EQ(INVALID_HANDLE_VALUE, line.m_hComm);
            code = line.m_dwLastError;
            flags = line.m_dwLastErrorFlags;
        }
        EXPECT_EQ(0, localBlocks());
        EXPECT_EQ(0u, telsim.GetCount(TELSIM_PORTS));
        calls = telsim.Calls();
        telsim.Reset();
        EXPECT_GE(handles, ProcessCounts::Take().handles);
        return {result, code};
    }

    // Of the last life
    std::string calls;     ///< of the service
    DWORD flags = 0;       ///< of the error that is left
    DWORD callerFlags = 0; ///< of the next caller
};

} // namespace

TEST_F(TapiService, EveryErrorOfEveryFunctionIsRecordedAndShownAsItShould)
{
    fastClock = 20000;
    for (const auto& [life, function, ending] : kFunctions) {
        // These look at no error: whatever it is, it ends a call without a box of its own, or nothing.
        const bool handled = function != "lineMakeCall" && function != "lineTranslateDialog";
        for (const ServiceError& error : kServiceErrors) {
            const bool restart = error.error == LINEERR_REINIT;
            if (restart && function == "lineInitialize")
                continue;                                     // waits, and has a test of its own
            for (const int button : {IDCANCEL, IDRETRY, 0}) { // 0: silent
                if (button == IDCANCEL && !error.retried)
                    continue; // to a box that asks nothing all answers are one
                SCOPED_TRACE(function + " " + std::to_string(error.error & 0xFF) + " " + std::to_string(button));
                const bool silent = button == 0;
                answer = error.boxStyle != 0x24 ? button : button == IDRETRY ? IDNO : IDYES;
                const bool retried = handled && error.retried && !silent && answer != IDCANCEL;
                Outcome expected = ending;
                DWORD expectedFlags = handled ? error.flags : 0x10;
                Boxes expectedBoxes;
                if (handled && error.boxStyle != 0)
                    expectedBoxes.emplace_back(error.code, error.boxStyle);
                if (restart && function == "lineSetStatusMessages") // the line is gone with everything else
                    expected = {"", life == Life::kPort ? 8u : 0u};
                if (retried) {
                    expected = {kResults.at(life), error.code};
                } else if (expected.second != 0) {
                    expectedFlags = expected.second == 26 ? 0x40 : 0x10;
                    expectedBoxes.emplace_back(expected.second, expectedFlags);
                } else if (!restart && (function == "lineGetCallStatus" || function == "lineDrop")) {
                    expected.second = 12; // a call that cannot be dropped is refused when it is deallocated
                } else if (handled) {
                    expected.second = silent && error.code == 13 ? 25 : error.code;
                }
                Rule(function.c_str(), TELSIM_FAIL, error.error);
                EXPECT_EQ(expected, Live(life, silent));
                EXPECT_EQ(expectedFlags, flags);
                EXPECT_TRUE(!retried || calls.find(function + "(", calls.find(" = 0x8")) != std::string::npos);
                EXPECT_EQ(silent ? Boxes() : expectedBoxes, TakeBoxes());
            }
        }
    }
}

TEST_F(TapiService, LiesAndOddRecordsEndAsDocumented)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10, "the same everywhere, and slow");
    struct Case {
        std::string function;
        Life life;
        DWORD action, value;
        Outcome expected;
    };
    const Outcome port = {"port", 0};
    std::vector<Case> cases = {
        // success, and nothing done
        {"lineInitialize", Life::kPort, TELSIM_PRETEND, 0, {"", 12}},
        {"lineNegotiateAPIVersion", Life::kPort, TELSIM_PRETEND, 0, {"", 3}},
        {"lineOpen", Life::kPort, TELSIM_PRETEND, 0, {"", 8}},
        {"lineSetStatusMessages", Life::kPort, TELSIM_PRETEND, 0, port},
        {"lineMakeCall", Life::kPort, TELSIM_PRETEND, 0, {"", 11}},
        {"lineDrop", Life::kPort, TELSIM_PRETEND, 0, {"port", 12}}, // not idle, so not deallocated
        {"lineDeallocateCall", Life::kPort, TELSIM_PRETEND, 0, port},
        {"lineClose", Life::kPort, TELSIM_PRETEND, 0, port},
        {"lineClose", Life::kCaller, TELSIM_PRETEND, 0, {"555Ada", 0}},
        {"lineShutdown", Life::kPort, TELSIM_PRETEND, 0, port},
        {"lineTranslateDialog", Life::kNumber, TELSIM_PRETEND, 0, {"5550123", 0}},
        // errors with an end of their own
        {"lineNegotiateAPIVersion", Life::kPort, TELSIM_FAIL, LINEERR_INCOMPATIBLEAPIVERSION, {"", 3}},
        {"lineOpen", Life::kPort, TELSIM_FAIL, LINEERR_ALLOCATED, {"", 7}},
        {"lineGetDevCaps", Life::kPort, TELSIM_USED_SIZE, 232, {"", 6}}, // as far as older versions go
        {"lineGetID", Life::kPort, TELSIM_BAD_SIZES, sizeof(HANDLE) - 1, {"", 11}},
        // replies
        {"lineMakeCall", Life::kPort, TELSIM_FAIL_REPLY, LINEERR_CALLUNAVAIL, {"", 11}},
        {"lineDrop", Life::kPort, TELSIM_FAIL_REPLY, LINEERR_INVALCALLSTATE, {"port", 12}},
    };
    for (const char* function : {"lineMakeCall", "lineDrop"}) {
        cases.push_back({function, Life::kPort, TELSIM_LATE_REPLY, 250, port});
        cases.push_back({function, Life::kPort, TELSIM_EARLY_REPLY, 0, port});
    }
    const struct {
        const char* function;
        Life life;
        Outcome cut, astray, endless; // what its record's faults come to
    } kRecords[] = {
        {"lineGetDevCaps", Life::kPort, {"", 4}, port, {"", 10}},
        {"lineGetAddressStatus", Life::kPort, {"", 9}, port, {"", 8}},
        {"lineGetAddressCaps", Life::kPort, port, port, {"", 10}},
        {"lineGetID", Life::kPort, {"", 11}, {"", 11}, {"", 11}},
        {"lineGetCallStatus", Life::kPort, port, port, {"port", 12}},
        {"lineGetCallInfo", Life::kCaller, {"", 0}, {"", 0}, {"", 10}},
        {"lineGetDevConfig", Life::kConfiguration, {"", 0}, {"", 0}, {"", 10}},
        {"lineConfigDialogEdit", Life::kConfiguration, {kSettings, 0}, {kSettings, 0}, {kSettings, 10}},
        {"lineTranslateAddress", Life::kNumber, {"", 0}, {"", 0}, {"", 10}},
    };
    constexpr DWORD kAll = 0xFFFFFFFF;
    for (const auto& [function, life, cut, astray, endless] : kRecords) {
        cases.push_back({function, life, TELSIM_NEED_MORE, 5000, {kResults.at(life), 0}});
        cases.push_back({function, life, TELSIM_PRETEND, 0, cut});
        for (const DWORD used : {0ul, 12ul, 0x40000000ul, kAll})
            cases.push_back({function, life, TELSIM_USED_SIZE, used, cut});
        for (const DWORD offset : {20ul, 0xFFFFFFF0ul, kAll})
            cases.push_back({function, life, TELSIM_BAD_OFFSETS, offset, astray});
        for (const DWORD size : {0xFFFFFFF0ul, kAll})
            cases.push_back({function, life, TELSIM_BAD_SIZES, size, astray});
        for (const DWORD needed : {0x80000000ul, kAll})
            cases.push_back({function, life, TELSIM_NEEDED_SIZE, needed, endless});
        for (const DWORD more : {1ul, 70000ul})
            cases.push_back({function, life, TELSIM_NEED_ENDLESS, more, endless});
    }
    fastClock = 20000;
    for (const Case& test : cases) {
        SCOPED_TRACE(test.function + " action " + std::to_string(test.action) + " value " + std::to_string(test.value));
        Rule(test.function.c_str(), test.action, test.value, test.action != TELSIM_FAIL);
        EXPECT_EQ(test.expected, Live(test.life, TRUE));
    }
}

TEST_F(TapiService, WithoutMemoryNothingIsLostAndTheDebuggerIsToldWhere)
{
    const std::string configure = "PreConfigureDevice - ";
    struct Block {
        std::string label;
        SIZE_T size;
        Outcome without;
    };
    const std::pair<Life, std::vector<Block>> kCases[] = {
        {Life::kPort,
         {{"lineGetDevCaps", 1264, {"", 10}},
          {"lineGetAddressStatus", 1088, {"", 8}},
          {"lineGetAddressCaps", 1204, {"", 10}},
          {"CreateCallParams: ", 113, {"", 10}},
          {"lineGetID: ", 1048, {"", 11}},
          {"lineGetCallStatus", 1060, {"port", 12}}}},
        {Life::kCaller, {{"lineGetDevCaps", 1264, {"", 10}}, {"lineGetCallInfo", 1320, {"", 10}}}},
        {Life::kConfiguration,
         {{configure + "lineGetDevConfig: ", 24, {"", 10}},
          {configure + "lineGetDevConfig: ", 44, {"", 10}},
          {configure + "Allocate device config: ", 21, {"", 10}},
          {configure + "lineConfigDialogEdit: ", 5100, {kSettings, 10}},
          {configure + "Reallocate device config: ", 22, {kSettings, 10}}}},
        {Life::kNumber, {{"lineTranslateOutput", 1064, {"", 10}}}},
    };
    fastClock = 20000;
    for (const auto& [life, blocks] : kCases) {
        FaultSource faults("LocalAlloc");
        const ZO_FAULTY_CALL(LocalAlloc) alloc(faults, kLibrary, nullptr);
        RunFaultLoop(faults, [&, life = life, &blocks = blocks](const FaultRun& run) {
            localSizes.clear();
            TakeTexts();
            const Outcome outcome = Live(life, TRUE);
            run.Stop();
            if (!run.Fired()) {
                EXPECT_EQ((Outcome{kResults.at(life), 0}), outcome);
                ASSERT_EQ(blocks.size(), localSizes.size());
                for (size_t i = 0; i < blocks.size(); ++i)
                    EXPECT_EQ(blocks[i].size, localSizes[i]) << blocks[i].label;
                return;
            }
            const Block& missing = blocks.at(static_cast<size_t>(run.number) - 1);
            EXPECT_EQ(missing.without, outcome);
            EXPECT_NE(std::string::npos, TakeTexts().find(missing.label));
        });
    }
    callerFlags = LINECALLPARTYID_ADDRESS | LINECALLPARTYID_NAME | LINECALLPARTYID_BLOCKED;
    for (const auto& [life, result] : {std::pair(Life::kPort, "port"), {Life::kCaller, "**BLOCKED****BLOCKED**"}}) {
        AllocationFaults faults;
        RunFaultLoop(faults, [&](const FaultRun& run) {
            const Outcome outcome = Live(life, TRUE);
            run.Stop();
            EXPECT_EQ((run.Fired() ? Outcome{"", 10} : Outcome{result, 0}), outcome);
        });
    }
}
