// Events, answering, devices.
#include "tapi_fixture.h"

#include "support/environment.h"

#include <algorithm>

namespace {

class TapiEvent : public TapiTest {
protected:
    /// A line that answers, and a call on it.
    void Offer(TestLine& line, const char* number, const char* name, DWORD flags)
    {
        ASSERT_TRUE(line.m_hAnswerLine != 0 || line.EnableCallAnswer(TRUE));
        ASSERT_NE(0u, telsim.OfferCall(1, number, name, flags));
        PumpAll();
    }
};

const char kOwner[] = "line given owner privilege, storing call handle\n";

} // namespace

TEST_F(TapiEvent, EachIsToldAndActedUpon)
{
    constexpr DWORD kCall = LINE_CALLSTATE;
    constexpr DWORD kDevice = LINE_LINEDEVSTATE;
    constexpr DWORD kGone = LINECALLSTATE_DISCONNECTED;
    constexpr DWORD kRestart = LINEDEVSTATE_REINIT;
    const struct {
        DWORD message;
        DWORD params[3];
        std::string text;
        bool hangsUp = false;
    } kCases[] = {
        {kCall, {LINECALLSTATE_IDLE, 0, 0}, "Line idle\n", true},
        {kCall, {LINECALLSTATE_BUSY, 0, 0}, "Line busy, shutting down\n", true},
        {kCall, {LINECALLSTATE_SPECIALINFO, 0, 0}, "Special Info, probably couldn't dial number\n", true},
        {kCall, {LINECALLSTATE_PROCEEDING, 0, 0}, "Proceeding\n"},
        {kCall, {LINECALLSTATE_DIALTONE, 0, LINECALLPRIVILEGE_OWNER}, kOwner + std::string("Dial Tone\n")},
        {kCall, {LINECALLSTATE_ONHOLD, 0, 0}, "Unhandled LINECALLSTATE message\n"},
        {kCall, {LINECALLSTATE_IDLE, 0, LINECALLPRIVILEGE_MONITOR}, "line given monitor privilege; closing\n"},
        {kCall, {LINECALLSTATE_IDLE, 0, 8}, "Unknown LINECALLPRIVILEGE message: closing\n"},
        {kCall, {kGone, LINEDISCONNECTMODE_NORMAL, 0}, "Remote Party Disconnected\n", true},
        {kCall, {kGone, LINEDISCONNECTMODE_NODIALTONE, 0}, "Disconnected: No Dial Tone\n", true},
        {kCall, {kGone, LINEDISCONNECTMODE_NUMBERCHANGED, 0}, "Disconnected: LINECALLSTATE; Bad Reason\n", true},
        {kDevice, {LINEDEVSTATE_RINGING, 1, 1}, "Line Ringing.\n"},
        {kDevice, {LINEDEVSTATE_DISCONNECTED, 0, 0}, "", true},
        {kDevice, {LINEDEVSTATE_OUTOFSERVICE, 0, 0}, "", true},
        {kDevice, {LINEDEVSTATE_MAINTENANCE, 0, 0}, "", true},
        {kDevice,
         {kRestart, LINE_LINEDEVSTATE, LINEDEVSTATE_RINGING},
         "Soft REINIT: LINE_LINEDEVSTATE.\nLine Ringing.\n"},
        {kDevice, {kRestart, LINE_REPLY, 0}, "Ignoring soft REINIT\n"},
        {kDevice, {LINEDEVSTATE_TRANSLATECHANGE, 0, 0}, ""},
        {kDevice, {LINEDEVSTATE_REMOVED, 0, 0}, "A Line device has been removed; no action taken.\n"},
        {kDevice, {LINEDEVSTATE_BATTERY, 0, 0}, "Unhandled LINEDEVSTATE message\n"},
        {LINE_MONITORTONE, {0, 0, 0}, "lineCallbackFunc message ignored\n"},
    };
    for (const auto& test : kCases) {
        TestLine line;
        TakeTexts();
        TestLine::lineCallbackFunc(5, test.message, reinterpret_cast<DWORD_PTR>(&line), test.params[0], test.params[1],
                                   test.params[2]);
        EXPECT_EQ(test.text, TakeTexts());
        EXPECT_EQ(test.hangsUp ? 1 : 0, line.hangups) << test.text;
        EXPECT_EQ(test.params[2] == LINECALLPRIVILEGE_OWNER && test.message == kCall ? 5u : 0u, line.m_hCall);
    }
    TestLine::lineCallbackFunc(0, LINE_REPLY, 0, 1, 0, 0); // names no object, and crashes nothing
}

TEST_F(TapiEvent, CallersAreIdentified)
{
    const std::string longName(400, 'x');
    const struct {
        std::string number, name;
        DWORD flags;
        std::string expectedNumber, expectedName;
    } kCases[] = {
        {"5550123", "Ada", 0, "5550123", "Ada"},
        {"555", "Ada", LINECALLPARTYID_PARTIAL, "555", ""},
        {"555", "Ada", LINECALLPARTYID_OUTOFAREA, "", ""},
        {"555", "Ada", LINECALLPARTYID_ADDRESS | LINECALLPARTYID_BLOCKED, "**BLOCKED**", "**BLOCKED**"},
        {"555", longName, 0, "555", longName.substr(0, 259)},
        // two-byte characters are not cut in the middle
        {"555", "x" + std::string(400, '\x83'), 0, "555", "x" + std::string(258, '\x83')},
        {"555", std::string(400, '\x83'), 0, "555", std::string(zo_test::IsDoubleByte() ? 258 : 259, '\x83')},
    };
    for (const auto& test : kCases) {
        TestLine line;
        Offer(line, test.number.c_str(), test.name.c_str(), test.flags);
        EXPECT_EQ(telsim.GetHandle(TELSIM_CALL_HANDLES, 0), line.m_hCall);
        EXPECT_STREQ(test.expectedNumber.c_str(), line.m_strCallerID);
        EXPECT_STREQ(test.expectedName.c_str(), line.m_strCallerName);
    }
    for (const bool local : {true, false}) {
        zo_test::FaultSource calls("LocalAlloc");
        zo_test::AllocationFaults allocations;
        const ZO_FAULTY_CALL(LocalAlloc) alloc(calls, kLibrary, nullptr);
        zo_test::FaultSource& faults = local ? calls : allocations;
        zo_test::RunFaultLoop(faults, [&](const zo_test::FaultRun& run) {
            TestLine line(TRUE);
            const bool opened = line.EnableCallAnswer(TRUE);
            if (opened)
                Offer(line, "555", "Ada", 0);
            run.Stop();
            EXPECT_EQ(run.Fired() ? 10u : 0u, line.m_dwLastError);
            EXPECT_STREQ(run.Fired() ? "" : "555Ada", line.m_strCallerID + line.m_strCallerName);
        });
    }
}

TEST_F(TapiEvent, AnsweringIsEnabledAndDisabled)
{
    const struct {
        const char* function;
        TelsimAction action;
        DWORD value;
        DWORD code;
        const char* text;
    } kCases[] = {
        {"lineInitialize", TELSIM_FAIL, LINEERR_NODRIVER, 14, "InitializeTAPI failed"},
        {"lineInitialize", TELSIM_FAIL, LINEERR_NODEVICE, 18, "InitializeTAPI failed"},
        {"lineNegotiateAPIVersion", TELSIM_PRETEND, 0, 3, "ZOTAPI_ERROR_UNSUPPORTEDLINEVERSION"},
        {"lineGetDevCaps", TELSIM_FAIL, LINEERR_NOMEM, 10, "lpLineDevCaps == NULL"},
        {"lineGetDevCaps", TELSIM_PRETEND, 0, 4, "NOVOICE == NULL"},
        {"lineOpen", TELSIM_FAIL, LINEERR_ALLOCATED, 7, "LINEERR_ALLOCATED"},
        {"lineOpen", TELSIM_FAIL, LINEERR_NODEVICE, 26, "lineopen failed!"},
        {"lineOpen", TELSIM_PRETEND, 0, 26, "lineopen failed!"},
    };
    for (const auto& test : kCases) {
        TestLine line;
        Rule(test.function, test.action, test.value);
        EXPECT_FALSE(line.EnableCallAnswer(TRUE));
        EXPECT_EQ(test.code, line.GetLastTAPIError());
        EXPECT_EQ(test.code == 26 ? 0x40u : test.code == 18 ? 0x14u : 0x10u, line.GetLastTAPIErrorFlags());
        const std::string told = TakeTexts();
        EXPECT_NE(std::string::npos, told.find(std::string(">EnableCallAnswer ") + test.text + "\n")) << told;
        EXPECT_EQ(0u, line.m_hAnswerLine);
    }
    TestLine line;
    line.m_dwMediaModes = LINEMEDIAMODE_TDD;
    EXPECT_FALSE(line.EnableCallAnswer(TRUE));
    EXPECT_EQ(5u, line.m_dwLastError);
    line.m_dwMediaModes = LINEMEDIAMODE_DATAMODEM;
    EXPECT_TRUE(line.EnableCallAnswer(TRUE));
    EXPECT_TRUE(line.EnableCallAnswer(TRUE)) << "once more";
    EXPECT_EQ(1u, telsim.GetCount(TELSIM_LINES));
    Offer(line, "555", "", 0);
    EXPECT_TRUE(line.HangupCall());
    EXPECT_EQ(1u, telsim.GetCount(TELSIM_CALL_HANDLES)) << "not in progress, until a derived class says so";
    line.m_bCallInProgress = TRUE;
    EXPECT_TRUE(line.HangupCall());
    EXPECT_EQ(0u, telsim.GetCount(TELSIM_CALL_HANDLES));
    EXPECT_NE(0u, line.m_hAnswerLine) << "it does not close the answer line";
    Rule("lineClose", TELSIM_FAIL, LINEERR_OPERATIONFAILED);
    EXPECT_FALSE(line.EnableCallAnswer(FALSE));
    EXPECT_TRUE(line.EnableCallAnswer(FALSE)) << "nothing is open";
    // The service, asked again, stays as it was: the first attempt that was accepted counts.
    telsim.ClearRules();
    answer = IDYES;
    Rule("lineOpen", TELSIM_FAIL, LINEERR_INVALCARD);
    ASSERT_TRUE(telsim.SetRule("lineOpen", 2, FALSE, TELSIM_FAIL, LINEERR_ALLOCATED));
    EXPECT_TRUE(line.EnableCallAnswer(TRUE));
    EXPECT_EQ(7u, line.m_dwLastError);
    EXPECT_EQ(0u, line.m_hAnswerLine);
    telsim.ClearRules();
    Rule("lineSetStatusMessages", TELSIM_FAIL, LINEERR_OPERATIONFAILED);
    EXPECT_TRUE(line.EnableCallAnswer(TRUE));
    EXPECT_NE(std::string::npos, TakeTexts().find(">EnableCallAnswer unhandled problem!\n"));
    telsim.CloseLine(line.m_hAnswerLine);
    PumpAll();
    EXPECT_EQ(0u, line.m_hAnswerLine);
    EXPECT_EQ(Box(22, 0x30), boxes.back());
}
