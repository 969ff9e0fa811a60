// Events, answering, devices.
#include "support/test.h"
#include "tapi_fixture.h"

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
    constexpr DWORD kRestart = LINEDEVSTATE_REINIT, kRing = LINEDEVSTATE_RINGING;
    const struct {
        DWORD message;
        DWORD params[3];
        std::string text;
        bool hangsUp = false;
        DWORD devices = 1;
    } kCases[] = {
        {kCall, {LINECALLSTATE_IDLE, 0, 0}, "Line idle\n", true},
        {kCall, {LINECALLSTATE_BUSY, 0, 0}, "Line busy, shutting down\n", true},
        {kCall, {LINECALLSTATE_SPECIALINFO, 0, 0}, "Special Info, probably couldn't dial number\n", true},
        {kCall, {LINECALLSTATE_PROCEEDING, 0, 0}, "Proceeding\n"},
        {kCall, {LINECALLSTATE_DIALING, 0, 0}, "Dialing\n"},
        {kCall, {LINECALLSTATE_RINGBACK, 0, 0}, "RingBack\n"},
        {kCall, {LINECALLSTATE_OFFERING, 0, 0}, "Unhandled LINECALLSTATE message\n"},
        {kCall, {LINECALLSTATE_ACCEPTED, 0, 0}, "Unhandled LINECALLSTATE message\n"},
        {kCall, {LINECALLSTATE_DIALTONE, 0, LINECALLPRIVILEGE_OWNER}, kOwner + std::string("Dial Tone\n")},
        {kCall, {LINECALLSTATE_ONHOLD, 0, 0}, "Unhandled LINECALLSTATE message\n"},
        {kCall, {LINECALLSTATE_IDLE, 0, LINECALLPRIVILEGE_MONITOR}, "line given monitor privilege; closing\n"},
        {kCall, {LINECALLSTATE_IDLE, 0, 8}, "Unknown LINECALLPRIVILEGE message: closing\n"},
        {kDevice, {kRing, 1, 1}, "Line Ringing.\n"},
        {kDevice, {LINEDEVSTATE_DISCONNECTED, 0, 0}, "", true},
        {kDevice, {LINEDEVSTATE_OUTOFSERVICE, 0, 0}, "", true},
        {kDevice, {LINEDEVSTATE_MAINTENANCE, 0, 0}, "", true},
        {kDevice, {kRestart, LINE_LINEDEVSTATE, kRing}, "Soft REINIT: LINE_LINEDEVSTATE.\nLine Ringing.\n"},
        {kDevice, {kRestart, LINE_CREATE, 4}, "Soft REINIT: LINE_CREATE.\n", false, 5},
        {kDevice, {kRestart, LINE_REPLY, 0}, "Ignoring soft REINIT\n"},
        {LINE_CREATE, {1, 0, 0}, "", false, 2},
        {LINE_CREATE, {0, 0, 0}, "", false, 1},
        {kDevice, {LINEDEVSTATE_TRANSLATECHANGE, 0, 0}, ""},
        {kDevice, {LINEDEVSTATE_REMOVED, 0, 0}, "A Line device has been removed; no action taken.\n"},
        {kDevice, {LINEDEVSTATE_BATTERY, 0, 0}, "Unhandled LINEDEVSTATE message\n"},
        {LINE_MONITORTONE, {0, 0, 0}, "lineCallbackFunc message ignored\n"},
    };
    for (const auto& test : kCases) {
        TestLine line;
        line.m_dwNumDevs = 1;
        TakeTexts();
        line.Tell(test.message, test.params[0], test.params[1], test.params[2]);
        EXPECT_EQ(test.text, TakeTexts());
        EXPECT_EQ(test.hangsUp ? 1 : 0, line.hangups) << test.text;
        EXPECT_EQ(test.devices, line.m_dwNumDevs) << test.text;
        EXPECT_EQ(test.params[2] == LINECALLPRIVILEGE_OWNER && test.message == kCall ? 5u : 0u, line.m_hCall);
    }
    std::string reasons;
    for (DWORD mode = LINEDISCONNECTMODE_NORMAL; mode <= LINEDISCONNECTMODE_NUMBERCHANGED; mode <<= 1) {
        TestLine line;
        TakeTexts();
        line.Tell(kCall, LINECALLSTATE_DISCONNECTED, mode);
        EXPECT_EQ(1, line.hangups);
        reasons += TakeTexts();
    }
    EXPECT_EQ("Remote Party Disconnected\nDisconnected: Unknown reason\nRemote Party rejected call\n"
              "Disconnected: Local phone picked up\nDisconnected: Forwarded\nDisconnected: Busy\n"
              "Disconnected: No Answer\nDisconnected: Bad Address\nDisconnected: Unreachable\n"
              "Disconnected: Congestion\nDisconnected: Incompatible\nDisconnected: Unavail\n"
              "Disconnected: No Dial Tone\nDisconnected: LINECALLSTATE; Bad Reason\n",
              reasons);
}

TEST_F(TapiEvent, OfTheServiceReachAllThatAreStillThere)
{
    class LastLine : public TestLine {
    public:
        void DoLineDevState(DWORD, DWORD, DWORD_PTR, DWORD_PTR, DWORD_PTR, DWORD_PTR) override
        {
            for (TestLine* line : others)
                line->ShutdownTAPI();
            ShutdownTAPI();
        }
        std::vector<TestLine*> others;
    };
    TestLine first, second;
    LastLine last;
    for (TestLine* line : {&first, &second, static_cast<TestLine*>(&last)})
        ASSERT_TRUE(line->InitializeTAPI(nullptr));
    TestLine::lineCallbackFunc(0, LINE_CLOSE, 0, 0, 0, 0); // names no object, and is no event of the service
    EXPECT_EQ(Boxes(), boxes);
    TestLine::lineCallbackFunc(0, LINE_CREATE, 0, 6, 0, 0);
    EXPECT_EQ(7u, (std::min)({first.m_dwNumDevs, second.m_dwNumDevs, last.m_dwNumDevs}));
    last.others = {&first, &second};
    TestLine::lineCallbackFunc(0, LINE_LINEDEVSTATE, 0, LINEDEVSTATE_REINIT, 0, 0);
    EXPECT_EQ(0u, telsim.GetCount(TELSIM_APPS));
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
        {"555", std::string(400, '\x83'), 0, "555", std::string(IsDoubleByte() ? 258 : 259, '\x83')},
    };
    for (const auto& test : kCases) {
        TestLine line;
        Offer(line, test.number.c_str(), test.name.c_str(), test.flags);
        EXPECT_EQ(telsim.GetHandle(TELSIM_CALL_HANDLES, 0), line.m_hCall);
        EXPECT_STREQ(test.expectedNumber.c_str(), line.m_strCallerID);
        EXPECT_STREQ(test.expectedName.c_str(), line.m_strCallerName);
    }
    // Only the call of the line that answers is looked at, and only for its identity.
    TestLine line;
    Offer(line, "555", "Ada", 0);
    const HCALL call = line.m_hCall;
    const struct {
        DWORD device, info;
        HLINE line, answerLine;
        HCALL call;
        const char* expected;
    } kNews[] = {
        {call, LINECALLINFOSTATE_CALLERID, 1, line.m_hAnswerLine, call, "old"},
        {call, LINECALLINFOSTATE_CALLERID, 0, 0, call, "old"},
        {0, LINECALLINFOSTATE_CALLERID, 0, line.m_hAnswerLine, 0, "old"},
        {call + 1, LINECALLINFOSTATE_CALLERID, 0, line.m_hAnswerLine, call, "old"},
        {call, LINECALLINFOSTATE_CALLEDID, 0, line.m_hAnswerLine, call, "old"},
        {call, LINECALLINFOSTATE_CALLERID, 0, line.m_hAnswerLine, call, "555"},
    };
    for (const auto& news : kNews) {
        TakeTexts();
        line.m_strCallerID = "old";
        const HLINE open = std::exchange(line.m_hAnswerLine, news.answerLine);
        line.m_hLine = news.line;
        line.m_hCall = news.call;
        line.Tell(LINE_CALLINFO, news.info, 0, 0, news.device);
        EXPECT_STREQ(news.expected, line.m_strCallerID);
        EXPECT_EQ(line.m_strCallerID == "old" ? "" : "\n\nCallerID info changed!\n\n", TakeTexts());
        line.m_hAnswerLine = open;
    }
}

TEST_F(TapiEvent, AnsweringIsEnabledAndDisabled)
{
    const struct {
        const char* function;
        TelsimAction action;
        DWORD value, code;
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
        EXPECT_EQ(test.code == 18, told.find("No devices installed.\n") != std::string::npos);
        EXPECT_EQ(0u, line.m_hAnswerLine);
        EXPECT_EQ(test.code == 26 ? 1 : 0, line.hangups);
    }
    {
        TestLine answering;
        EXPECT_TRUE(answering.EnableCallAnswer(TRUE));
        TakeTexts();
    }
    EXPECT_EQ(">EnableCallAnswer\n>EnableCallAnswer DISABLING!\nLine Closed.\nTAPI uninitialized.\n", TakeTexts());
    TestLine line;
    line.m_dwMediaModes = LINEMEDIAMODE_TDD;
    EXPECT_FALSE(line.EnableCallAnswer(TRUE));
    EXPECT_EQ(5u, line.m_dwLastError);
    line.m_dwMediaModes = LINEMEDIAMODE_DATAMODEM;
    EXPECT_TRUE(line.EnableCallAnswer(TRUE));
    EXPECT_TRUE(line.EnableCallAnswer(TRUE)) << "once more";
    EXPECT_EQ(1u, telsim.GetCount(TELSIM_LINES));
    EXPECT_NE(std::string::npos, telsim.Calls().find("privileges=0x4, media=0x10, params=null"));
    Offer(line, "555", "Ada", 0);
    EXPECT_TRUE(line.HangupCall());
    EXPECT_EQ(1u, telsim.GetCount(TELSIM_CALL_HANDLES)) << "not in progress, until a derived class says so";
    line.m_bCallInProgress = TRUE;
    EXPECT_TRUE(line.HangupCall());
    EXPECT_EQ(0u, telsim.GetCount(TELSIM_CALL_HANDLES));
    EXPECT_STREQ("", line.m_strCallerID + line.m_strCallerName);
    EXPECT_NE(0u, line.m_hAnswerLine) << "it does not close the answer line";
    Rule("lineClose", TELSIM_FAIL, LINEERR_OPERATIONFAILED);
    EXPECT_FALSE(line.EnableCallAnswer(FALSE));
    EXPECT_EQ(0u, line.m_hAnswerLine);
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
