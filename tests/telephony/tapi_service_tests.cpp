// The telephony service's failures, lies and oddities, function by function.
#include "tapi_fixture.h"

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

/// What taking the port and hanging up again came to.
struct Outcome {
    BOOL grabbed;
    DWORD code;

    bool operator==(const Outcome&) const = default;
    friend std::ostream& operator<<(std::ostream& stream, const Outcome& outcome)
    {
        return stream << (outcome.grabbed ? "grabbed" : "failed") << ", code " << outcome.code;
    }
};

/// A function that takes part, and how an error of it ends: result, and the code that is recorded behind the error's own
/// (0: that stays).
const std::pair<std::string, Outcome> kFunctions[] = {
    {"lineInitialize", {FALSE, 0}},
    {"lineNegotiateAPIVersion", {FALSE, 3}},
    {"lineGetDevCaps", {FALSE, 0}},
    {"lineOpen", {FALSE, 8}},
    {"lineSetStatusMessages", {TRUE, 0}},
    {"lineGetAddressStatus", {FALSE, 8}},
    {"lineGetAddressCaps", {FALSE, 0}},
    {"lineMakeCall", {FALSE, 11}},
    {"lineGetID", {FALSE, 11}},
    {"lineGetCallStatus", {TRUE, 0}},
    {"lineDrop", {TRUE, 0}},
    {"lineDeallocateCall", {TRUE, 0}},
    {"lineClose", {TRUE, 0}},
    {"lineShutdown", {TRUE, 0}},
};

class TapiService : public TapiTest {
protected:
    /// One life of an interface. Afterwards the service must have nothing of it left.
    Outcome Live(BOOL silent, DWORD* flags = nullptr)
    {
        Outcome outcome{};
        {
            TestLine line(silent);
            outcome.grabbed = line.GrabThePort();
            EXPECT_EQ(outcome.grabbed != FALSE, line.m_hComm != INVALID_HANDLE_VALUE);
            EXPECT_TRUE(line.HangupCall());
            EXPECT_TRUE(line.ShutdownTAPI());
            EXPECT_EQ(INVALID_HANDLE_VALUE, line.m_hComm);
            outcome.code = line.m_dwLastError;
            if (flags != nullptr)
                *flags = line.m_dwLastErrorFlags;
        }
        EXPECT_EQ(0u, telsim.GetCount(TELSIM_PORTS));
        telsim.ClearRules();
        return outcome;
    }
};

} // namespace

TEST_F(TapiService, EveryErrorOfEveryFunctionIsRecordedAndShownAsItShould)
{
    fastClock = true;
    for (const auto& [function, ending] : kFunctions) {
        for (const ServiceError& error : kServiceErrors) {
            const bool restart = error.error == LINEERR_REINIT;
            if (restart && function == "lineInitialize")
                continue;                                     // waits, and has a test of its own
            for (const int button : {IDCANCEL, IDRETRY, 0}) { // 0: silent
                SCOPED_TRACE(function + " " + std::to_string(error.error & 0xFF) + " " + std::to_string(button));
                const bool silent = button == 0;
                const bool handled = function != "lineMakeCall"; // whose errors all end alike
                answer = error.boxStyle != 0x24 ? button : button == IDRETRY ? IDNO : IDYES;
                const bool retried = handled && error.retried && !silent && answer != IDCANCEL;
                Outcome expected = ending;
                DWORD expectedFlags = error.flags;
                Boxes expectedBoxes;
                if (handled && error.boxStyle != 0)
                    expectedBoxes.emplace_back(error.code, error.boxStyle);
                if (restart && function == "lineSetStatusMessages")
                    expected = {FALSE, 8}; // the line is gone with everything else
                if (retried) {
                    expected = {TRUE, error.code};
                } else if (expected.code != 0) {
                    expectedFlags = 0x10;
                    expectedBoxes.emplace_back(expected.code, 0x10);
                } else if (!restart && (function == "lineGetCallStatus" || function == "lineDrop")) {
                    expected.code = 12; // a call that cannot be dropped is refused when it is deallocated
                } else {
                    expected.code = silent && error.code == 13 ? 25 : error.code;
                }
                Rule(function.c_str(), TELSIM_FAIL, error.error);
                DWORD flags = 0;
                EXPECT_EQ(expected, Live(silent, &flags));
                EXPECT_EQ(expectedFlags, flags);
                EXPECT_EQ(silent ? Boxes() : expectedBoxes, TakeBoxes());
                EXPECT_EQ(0, localBlocks());
            }
        }
    }
}

TEST_F(TapiService, LiesAndOddRecordsEndAsDocumented)
{
    fastClock = true;
    constexpr DWORD kAll = 0xFFFFFFFF;
    const struct {
        const char* function;
        TelsimAction action;
        DWORD value;
        Outcome expected;
    } kCases[] = {
        // success, and nothing written
        {"lineInitialize", TELSIM_PRETEND, 0, {FALSE, 12}},
        {"lineNegotiateAPIVersion", TELSIM_PRETEND, 0, {FALSE, 3}},
        {"lineNegotiateAPIVersion", TELSIM_FAIL, LINEERR_INCOMPATIBLEAPIVERSION, {FALSE, 3}},
        {"lineGetDevCaps", TELSIM_PRETEND, 0, {FALSE, 4}},
        {"lineOpen", TELSIM_PRETEND, 0, {FALSE, 8}},
        {"lineOpen", TELSIM_FAIL, LINEERR_ALLOCATED, {FALSE, 7}},
        {"lineSetStatusMessages", TELSIM_PRETEND, 0, {TRUE, 0}},
        {"lineGetAddressStatus", TELSIM_PRETEND, 0, {FALSE, 9}},
        {"lineGetAddressCaps", TELSIM_PRETEND, 0, {TRUE, 0}},
        {"lineMakeCall", TELSIM_PRETEND, 0, {FALSE, 11}},
        {"lineGetID", TELSIM_PRETEND, 0, {FALSE, 11}},
        {"lineGetCallStatus", TELSIM_PRETEND, 0, {TRUE, 0}},
        {"lineDrop", TELSIM_PRETEND, 0, {TRUE, 12}},
        {"lineDeallocateCall", TELSIM_PRETEND, 0, {TRUE, 0}},
        {"lineClose", TELSIM_PRETEND, 0, {TRUE, 0}},
        {"lineShutdown", TELSIM_PRETEND, 0, {TRUE, 0}},
        // replies
        {"lineMakeCall", TELSIM_FAIL_REPLY, LINEERR_CALLUNAVAIL, {FALSE, 11}},
        {"lineMakeCall", TELSIM_LATE_REPLY, 250, {TRUE, 0}},
        {"lineMakeCall", TELSIM_EARLY_REPLY, 0, {TRUE, 0}},
        {"lineDrop", TELSIM_FAIL_REPLY, LINEERR_INVALCALLSTATE, {TRUE, 12}}, // not idle, so not deallocated
        {"lineDrop", TELSIM_LATE_REPLY, 250, {TRUE, 0}},
        {"lineDrop", TELSIM_EARLY_REPLY, 0, {TRUE, 0}},
        // records
        {"lineGetDevCaps", TELSIM_NEED_MORE, 5000, {TRUE, 0}},
        {"lineGetAddressStatus", TELSIM_NEED_MORE, 5000, {TRUE, 0}},
        {"lineGetAddressCaps", TELSIM_NEED_MORE, 5000, {TRUE, 0}},
        {"lineGetID", TELSIM_NEED_MORE, 5000, {TRUE, 0}},
        {"lineGetCallStatus", TELSIM_NEED_MORE, 5000, {TRUE, 0}},
        {"lineGetDevCaps", TELSIM_NEED_ENDLESS, 1, {FALSE, 10}},
        {"lineGetAddressStatus", TELSIM_NEED_ENDLESS, 70000, {FALSE, 8}},
        {"lineGetAddressCaps", TELSIM_NEEDED_SIZE, kAll, {FALSE, 10}},
        {"lineGetID", TELSIM_NEEDED_SIZE, 0x80000000, {FALSE, 11}},
        {"lineGetCallStatus", TELSIM_NEED_ENDLESS, 1, {TRUE, 12}},
        {"lineGetDevCaps", TELSIM_USED_SIZE, 12, {FALSE, 4}},
        {"lineGetDevCaps", TELSIM_USED_SIZE, 232, {FALSE, 6}},
        {"lineGetDevCaps", TELSIM_USED_SIZE, 5000, {FALSE, 4}},
        {"lineGetAddressStatus", TELSIM_USED_SIZE, 0, {FALSE, 9}},
        {"lineGetAddressCaps", TELSIM_USED_SIZE, 0, {TRUE, 0}},
        {"lineGetCallStatus", TELSIM_USED_SIZE, 0, {TRUE, 0}},
        {"lineGetID", TELSIM_USED_SIZE, 26, {FALSE, 11}},
        {"lineGetID", TELSIM_BAD_OFFSETS, 16, {FALSE, 11}},
        {"lineGetID", TELSIM_BAD_OFFSETS, kAll, {FALSE, 11}},
        {"lineGetID", TELSIM_BAD_SIZES, kAll, {FALSE, 11}},
        {"lineGetID", TELSIM_BAD_SIZES, 3, {FALSE, 11}},
    };
    const int rounds = zo_test::Family() == zo_test::WindowsFamily::kWindows10 ? 1000 : 100;
    for (int round = 0; round < rounds;) {
        for (const auto& test : kCases) {
            SCOPED_TRACE(std::string(test.function) + " action " + std::to_string(test.action) + " value " +
                         std::to_string(test.value) + " round " + std::to_string(round));
            if (round++ >= static_cast<int>(std::size(kCases)) && test.action == TELSIM_LATE_REPLY)
                continue;
            Rule(test.function, test.action, test.value, test.action != TELSIM_FAIL);
            const long handles = zo_test::ProcessCounts::Take().handles;
            EXPECT_EQ(test.expected, Live(TRUE));
            EXPECT_EQ(0, localBlocks());
            telsim.Reset();
            EXPECT_GE(handles, zo_test::ProcessCounts::Take().handles);
        }
        if (HasFailure())
            return;
    }
}
