// The telephony service's failures, lies and oddities, function by function.
#include "tapi_fixture.h"

#include <zogbl/address_functions.h>

#include <cstring>

namespace {

/// What the error table says of an error of the service.
struct ServiceError {
    DWORD error;
    DWORD code;
    DWORD flags;
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
struct Outcome {
    std::string result;
    DWORD code;

    bool operator==(const Outcome&) const = default;
    friend std::ostream& operator<<(std::ostream& stream, const Outcome& outcome)
    {
        return stream << '"' << outcome.result << "\", code " << outcome.code;
    }
};

/// What a life comes to when nothing goes wrong.
std::string ResultOf(Life life)
{
    return life == Life::kPort     ? "port"
           : life == Life::kCaller ? "555Ada"
           : life == Life::kNumber ? "5550123"
                                   : kSettings + "*";
}

/// A function that takes part, and how an error of it ends: result, and the code that is recorded behind the error's own
/// (0: that stays).
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
    Outcome Live(Life life, BOOL silent, DWORD* flags = nullptr)
    {
        const long handles = zo_test::ProcessCounts::Take().handles;
        Outcome outcome{};
        {
            TestLine line(silent);
            switch (life) {
            case Life::kPort:
                outcome.result = line.GrabThePort() ? "port" : "";
                EXPECT_EQ(outcome.result.empty(), line.m_hComm == INVALID_HANDLE_VALUE);
                EXPECT_TRUE(line.HangupCall());
                break;
            case Life::kCaller:
                if (line.EnableCallAnswer(TRUE)) {
                    telsim.OfferCall(1, "555", "Ada", 0);
                    PumpAll();
                    line.EnableCallAnswer(FALSE);
                }
                outcome.result = std::string(line.m_strCallerID) + std::string(line.m_strCallerName);
                break;
            case Life::kConfiguration:
                line.PreConfigureDevice(nullptr, 1, FALSE);
                outcome.result.assign(reinterpret_cast<const char*>(line.m_lpDevConfig), line.m_dwDevConfigSize);
                FreeConfig(line);
                break;
            case Life::kNumber: {
                _tagAddressInformation address = {};
                address.m_bTAPIDialing = TRUE;
                strcpy(address.m_szNumber, "5550123");
                CZoGlobalAddressFunctions::MakeDialableAddress(&address, ZO_DIAL_AUTOMATIC, &line);
                outcome.result = address.m_szDialable;
                EXPECT_FALSE(line.DisplaylineTranslateDialog());
                break;
            }
            }
            EXPECT_TRUE(line.ShutdownTAPI());
            EXPECT_EQ(INVALID_HANDLE_VALUE, line.m_hComm);
            outcome.code = line.m_dwLastError;
            if (flags != nullptr)
                *flags = line.m_dwLastErrorFlags;
        }
        EXPECT_EQ(0, localBlocks());
        EXPECT_EQ(0u, telsim.GetCount(TELSIM_PORTS));
        telsim.Reset();
        EXPECT_GE(handles, zo_test::ProcessCounts::Take().handles);
        return outcome;
    }
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
                    expected = {ResultOf(life), error.code};
                } else if (expected.code != 0) {
                    expectedFlags = expected.code == 26 ? 0x40 : 0x10;
                    expectedBoxes.emplace_back(expected.code, expectedFlags);
                } else if (!restart && (function == "lineGetCallStatus" || function == "lineDrop")) {
                    expected.code = 12; // a call that cannot be dropped is refused when it is deallocated
                } else if (handled) {
                    expected.code = silent && error.code == 13 ? 25 : error.code;
                }
                Rule(function.c_str(), TELSIM_FAIL, error.error);
                DWORD flags = 0;
                EXPECT_EQ(expected, Live(life, silent, &flags));
                EXPECT_EQ(expectedFlags, flags);
                EXPECT_EQ(silent ? Boxes() : expectedBoxes, TakeBoxes());
            }
        }
    }
}

TEST_F(TapiService, LiesAndOddRecordsEndAsDocumented)
{
    fastClock = 20000;
    constexpr DWORD kAll = 0xFFFFFFFF;
    const Life kCaller = Life::kCaller, kConfig = Life::kConfiguration, kNumber = Life::kNumber;
    const struct {
        const char* function;
        TelsimAction action;
        DWORD value;
        Outcome expected;
        Life life = Life::kPort;
    } kCases[] = {
        // success, and nothing written
        {"lineInitialize", TELSIM_PRETEND, 0, {"", 12}},
        {"lineNegotiateAPIVersion", TELSIM_PRETEND, 0, {"", 3}},
        {"lineNegotiateAPIVersion", TELSIM_FAIL, LINEERR_INCOMPATIBLEAPIVERSION, {"", 3}},
        {"lineGetDevCaps", TELSIM_PRETEND, 0, {"", 4}},
        {"lineOpen", TELSIM_PRETEND, 0, {"", 8}},
        {"lineOpen", TELSIM_FAIL, LINEERR_ALLOCATED, {"", 7}},
        {"lineSetStatusMessages", TELSIM_PRETEND, 0, {"port", 0}},
        {"lineGetAddressStatus", TELSIM_PRETEND, 0, {"", 9}},
        {"lineGetAddressCaps", TELSIM_PRETEND, 0, {"port", 0}},
        {"lineMakeCall", TELSIM_PRETEND, 0, {"", 11}},
        {"lineGetID", TELSIM_PRETEND, 0, {"", 11}},
        {"lineGetCallStatus", TELSIM_PRETEND, 0, {"port", 0}},
        {"lineDrop", TELSIM_PRETEND, 0, {"port", 12}},
        {"lineDeallocateCall", TELSIM_PRETEND, 0, {"port", 0}},
        {"lineClose", TELSIM_PRETEND, 0, {"port", 0}},
        {"lineShutdown", TELSIM_PRETEND, 0, {"port", 0}},
        {"lineGetCallInfo", TELSIM_PRETEND, 0, {"", 0}, kCaller},
        {"lineClose", TELSIM_PRETEND, 0, {"555Ada", 0}, kCaller},
        {"lineGetDevConfig", TELSIM_PRETEND, 0, {"", 0}, kConfig},
        {"lineConfigDialogEdit", TELSIM_PRETEND, 0, {kSettings, 0}, kConfig},
        {"lineTranslateAddress", TELSIM_PRETEND, 0, {"", 0}, kNumber},
        {"lineTranslateDialog", TELSIM_PRETEND, 0, {"5550123", 0}, kNumber},
        // replies
        {"lineMakeCall", TELSIM_FAIL_REPLY, LINEERR_CALLUNAVAIL, {"", 11}},
        {"lineMakeCall", TELSIM_LATE_REPLY, 250, {"port", 0}},
        {"lineMakeCall", TELSIM_EARLY_REPLY, 0, {"port", 0}},
        {"lineDrop", TELSIM_FAIL_REPLY, LINEERR_INVALCALLSTATE, {"port", 12}}, // not idle, so not deallocated
        {"lineDrop", TELSIM_LATE_REPLY, 250, {"port", 0}},
        {"lineDrop", TELSIM_EARLY_REPLY, 0, {"port", 0}},
        // records
        {"lineGetDevCaps", TELSIM_NEED_MORE, 5000, {"port", 0}},
        {"lineGetAddressStatus", TELSIM_NEED_MORE, 5000, {"port", 0}},
        {"lineGetAddressCaps", TELSIM_NEED_MORE, 5000, {"port", 0}},
        {"lineGetID", TELSIM_NEED_MORE, 5000, {"port", 0}},
        {"lineGetCallStatus", TELSIM_NEED_MORE, 5000, {"port", 0}},
        {"lineGetCallInfo", TELSIM_NEED_MORE, 5000, {"555Ada", 0}, kCaller},
        {"lineGetDevConfig", TELSIM_NEED_MORE, 5000, {kSettings + "*", 0}, kConfig},
        {"lineConfigDialogEdit", TELSIM_NEED_MORE, 6000, {kSettings + "*", 0}, kConfig},
        {"lineTranslateAddress", TELSIM_NEED_MORE, 5000, {"5550123", 0}, kNumber},
        {"lineGetDevCaps", TELSIM_NEED_ENDLESS, 1, {"", 10}},
        {"lineGetAddressStatus", TELSIM_NEED_ENDLESS, 70000, {"", 8}},
        {"lineGetAddressCaps", TELSIM_NEEDED_SIZE, kAll, {"", 10}},
        {"lineGetID", TELSIM_NEEDED_SIZE, 0x80000000, {"", 11}},
        {"lineGetCallStatus", TELSIM_NEED_ENDLESS, 1, {"port", 12}},
        {"lineGetDevCaps", TELSIM_USED_SIZE, 12, {"", 4}},
        {"lineGetDevCaps", TELSIM_USED_SIZE, 232, {"", 6}},
        {"lineGetDevCaps", TELSIM_USED_SIZE, 5000, {"", 4}},
        {"lineGetAddressStatus", TELSIM_USED_SIZE, 0, {"", 9}},
        {"lineGetAddressCaps", TELSIM_USED_SIZE, 0, {"port", 0}},
        {"lineGetCallStatus", TELSIM_USED_SIZE, 0, {"port", 0}},
        {"lineGetID", TELSIM_USED_SIZE, 26, {"", 11}},
        {"lineGetID", TELSIM_BAD_OFFSETS, 16, {"", 11}},
        {"lineGetID", TELSIM_BAD_OFFSETS, kAll, {"", 11}},
        {"lineGetID", TELSIM_BAD_SIZES, kAll, {"", 11}},
        {"lineGetID", TELSIM_BAD_SIZES, 3, {"", 11}},
        {"lineGetCallInfo", TELSIM_NEED_ENDLESS, 1, {"", 10}, kCaller},
        {"lineGetCallInfo", TELSIM_USED_SIZE, 12, {"", 0}, kCaller},
        {"lineGetCallInfo", TELSIM_USED_SIZE, kAll, {"", 0}, kCaller},
        {"lineGetCallInfo", TELSIM_BAD_OFFSETS, 96, {"", 0}, kCaller},
        {"lineGetCallInfo", TELSIM_BAD_OFFSETS, kAll, {"", 0}, kCaller},
        {"lineGetCallInfo", TELSIM_BAD_SIZES, kAll, {"", 0}, kCaller},
        {"lineGetDevConfig", TELSIM_NEED_ENDLESS, 100, {"", 10}, kConfig},
        {"lineGetDevConfig", TELSIM_USED_SIZE, 30, {"", 0}, kConfig},
        {"lineGetDevConfig", TELSIM_BAD_OFFSETS, 20, {"", 0}, kConfig},
        {"lineGetDevConfig", TELSIM_BAD_SIZES, kAll, {"", 0}, kConfig},
        {"lineConfigDialogEdit", TELSIM_NEED_ENDLESS, 100, {kSettings, 10}, kConfig},
        {"lineConfigDialogEdit", TELSIM_USED_SIZE, 30, {kSettings, 0}, kConfig},
        {"lineConfigDialogEdit", TELSIM_BAD_OFFSETS, kAll, {kSettings, 0}, kConfig},
        {"lineConfigDialogEdit", TELSIM_BAD_SIZES, kAll, {kSettings, 0}, kConfig},
        {"lineTranslateAddress", TELSIM_NEED_ENDLESS, 1, {"", 10}, kNumber},
        {"lineTranslateAddress", TELSIM_USED_SIZE, 12, {"", 0}, kNumber},
        {"lineTranslateAddress", TELSIM_BAD_OFFSETS, 36, {"", 0}, kNumber},
        {"lineTranslateAddress", TELSIM_BAD_OFFSETS, 0xFFFFFFF0, {"", 0}, kNumber},
        {"lineTranslateAddress", TELSIM_BAD_SIZES, 0xFFFFFFF0, {"", 0}, kNumber},
    };
    const int rounds = zo_test::Family() == zo_test::WindowsFamily::kWindows10 ? 1000 : 100;
    for (int round = 0; round < rounds;) {
        for (const auto& test : kCases) {
            SCOPED_TRACE(std::string(test.function) + " action " + std::to_string(test.action) + " value " +
                         std::to_string(test.value) + " round " + std::to_string(round));
            if (round++ >= static_cast<int>(std::size(kCases)) && test.action == TELSIM_LATE_REPLY)
                continue;
            Rule(test.function, test.action, test.value, test.action != TELSIM_FAIL);
            EXPECT_EQ(test.expected, Live(test.life, TRUE));
        }
        if (HasFailure())
            return;
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
        zo_test::FaultSource faults("LocalAlloc");
        const ZO_FAULTY_CALL(LocalAlloc) alloc(faults, kLibrary, nullptr);
        zo_test::RunFaultLoop(faults, [&, life = life, &blocks = blocks](const zo_test::FaultRun& run) {
            localSizes.clear();
            TakeTexts();
            const Outcome outcome = Live(life, TRUE);
            run.Stop();
            if (!run.Fired()) {
                EXPECT_EQ((Outcome{ResultOf(life), 0}), outcome);
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
    for (const Life life : {Life::kPort, Life::kCaller}) {
        zo_test::AllocationFaults faults;
        zo_test::RunFaultLoop(faults, [&](const zo_test::FaultRun& run) {
            const Outcome outcome = Live(life, TRUE);
            run.Stop();
            EXPECT_EQ((run.Fired() ? Outcome{"", 10} : Outcome{ResultOf(life), 0}), outcome);
        });
    }
}
