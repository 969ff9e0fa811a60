// What a program sees of devices, lines and calls when it does everything right.
#include "program.h"
#include "support/test.h"

/// Asks for a record, later.
#define ASK(call) [&](AnyRecord record) { return call; }

namespace {

class Calls : public testing::Test {
protected:
    /// Nothing here is misuse, and nothing may be left.
    void TearDown() override
    {
        EXPECT_EQ("", p.telsim.Misuses());
        if (p.app != 0) {
            EXPECT_EQ(0, lineShutdown(p.app));
        }
        for (const DWORD kind : {TELSIM_APPS, TELSIM_LINES, TELSIM_CALL_HANDLES, TELSIM_PORTS, TELSIM_EVENTS})
            EXPECT_EQ(0u, p.telsim.GetCount(kind)) << kind;
    }

    Program p;
};

Event StateEvent(HCALL call, DWORD state, DWORD mode, DWORD privilege = 0)
{
    return {call, LINE_CALLSTATE, kInstance, state, mode, privilege};
}

} // namespace

TEST_F(Calls, HandTheModemToTheProgramAndTakeItBack)
{
    const auto round = [&] {
        ASSERT_EQ(0, p.Open(kNoPort));
        EXPECT_EQ(0, lineSetStatusMessages(p.line, 0x00BFFBFF, 0x1FF));
        p.call = 0;
        const LONG made = p.MakeCall();
        ASSERT_GT(made, 0);
        EXPECT_TRUE(p.events.empty()) << "replies come with messages only";
        EXPECT_EQ(0u, p.call) << "the handle comes with the reply";
        EXPECT_EQ(0, p.Reply(made));
        p.PumpAll();
        EXPECT_EQ((std::vector<Event>{{0, LINE_REPLY, kInstance, static_cast<DWORD_PTR>(made), 0, 0},
                                      StateEvent(p.call, LINECALLSTATE_CONNECTED, LINECONNECTEDMODE_ACTIVE)}),
                  p.events);

        Buffer<LINECALLSTATUS> status(1060);
        EXPECT_EQ(0, lineGetCallStatus(p.call, status.Get()));
        EXPECT_EQ(DWORD{LINECALLSTATE_CONNECTED}, status->dwCallState);
        EXPECT_EQ(static_cast<DWORD>(LINECALLPRIVILEGE_OWNER), status->dwCallPrivilege);
        Buffer<LINEADDRESSSTATUS> address(1088);
        EXPECT_EQ(0, lineGetAddressStatus(p.line, 0, address.Get()));
        EXPECT_EQ(0u, address->dwAddressFeatures) << "no second call beside this one";
        EXPECT_EQ(Error(LINEERR_CALLUNAVAIL), p.Reply(p.MakeCall()));

        const HANDLE port = p.PortHandle();
        ASSERT_NE(INVALID_HANDLE_VALUE, port);
        EXPECT_NE(static_cast<DWORD>(FILE_TYPE_CHAR), GetFileType(port));
        EXPECT_TRUE(CloseHandle(port));
        p.events.clear();
        const LONG dropped = lineDrop(p.call, nullptr, 0);
        EXPECT_GT(dropped, made);
        EXPECT_EQ(0, p.Reply(dropped));
        p.PumpAll();
        EXPECT_EQ((std::vector<DWORD>{LINECALLSTATE_IDLE}), p.States());
        EXPECT_EQ(0u, p.telsim.GetCount(TELSIM_PORTS));
        EXPECT_EQ(0, lineDeallocateCall(p.call));
        EXPECT_EQ(0, lineClose(p.line));
        EXPECT_EQ(0, lineShutdown(std::exchange(p.app, 0)));
        p.events.clear();
    };
    round(); // the first one makes what the process keeps
    ZO_EXPECT_NO_LEAK(for (int i = 0; i < 300 && !HasFailure(); ++i) round());
}

TEST_F(Calls, EndAsTheNumberDialedWants)
{
    using States = std::vector<DWORD>;
    const struct {
        const char* number;
        States states; // behind those of dialing, if there is a number
        DWORD mode;    // of the last state
    } cases[] = {
        {"", {}, LINEDIALTONEMODE_NORMAL},
        {"T9,555-0100", {LINECALLSTATE_CONNECTED}, LINECONNECTEDMODE_ACTIVE},
        {"5550107", {LINECALLSTATE_BUSY, LINECALLSTATE_DISCONNECTED}, LINEDISCONNECTMODE_BUSY},
        {"5550108", {LINECALLSTATE_DISCONNECTED}, LINEDISCONNECTMODE_NODIALTONE},
        {"5550109", {LINECALLSTATE_RINGBACK, LINECALLSTATE_DISCONNECTED}, LINEDISCONNECTMODE_NOANSWER},
    };
    ASSERT_EQ(0, p.Open(kNoPort));
    for (const auto& [number, states, mode] : cases) {
        SCOPED_TRACE(number);
        p.events.clear();
        ASSERT_EQ(0, p.Reply(p.MakeCall(number, LINEBEARERMODE_VOICE)));
        p.PumpAll();
        States expected = {LINECALLSTATE_DIALTONE, LINECALLSTATE_DIALING, LINECALLSTATE_PROCEEDING};
        expected.resize(*number != '\0' ? 3 : 1);
        expected.insert(expected.end(), states.begin(), states.end());
        EXPECT_EQ(expected, p.States());
        EXPECT_EQ(mode, p.events.back()[kSecond]);
        EXPECT_EQ(0, p.Reply(lineDrop(p.call, nullptr, 0)));
        EXPECT_EQ(0, lineDeallocateCall(p.call));
    }
}

TEST_F(Calls, ComeInWithTheCallersIdentity)
{
    const struct {
        const char* number;
        const char* name;
        DWORD flags;    // asked for
        DWORD expected; // LINECALLPARTYID_
    } cases[] = {
        {"5550123", "Jane Doe", 0, LINECALLPARTYID_ADDRESS | LINECALLPARTYID_NAME},
        {"5550123", "", 0, LINECALLPARTYID_ADDRESS},
        {"", "", 0, LINECALLPARTYID_OUTOFAREA},
        {"", "", LINECALLPARTYID_BLOCKED, LINECALLPARTYID_BLOCKED},
        {"555", "", LINECALLPARTYID_PARTIAL | LINECALLPARTYID_BLOCKED,
         LINECALLPARTYID_PARTIAL | LINECALLPARTYID_BLOCKED},
    };
    ASSERT_EQ(0, p.Initialize());
    EXPECT_EQ(0u, p.telsim.OfferCall(kNoPort, "1", "", 0)) << "nobody wants it";
    ASSERT_EQ(0, p.Open(kNoPort, LINECALLPRIVILEGE_OWNER));
    EXPECT_EQ(0, lineSetStatusMessages(p.line, LINEDEVSTATE_RINGING, 0));
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.number << c.name << c.expected);
        p.events.clear();
        const HCALL call = p.telsim.OfferCall(kNoPort, c.number, c.name, c.flags);
        ASSERT_NE(0u, call);
        EXPECT_EQ(0u, p.telsim.OfferCall(kNoPort, "2", "", 0)) << "one after the other";
        p.PumpAll();
        EXPECT_EQ((std::vector<Event>{
                      StateEvent(call, LINECALLSTATE_OFFERING, LINEOFFERINGMODE_ACTIVE, LINECALLPRIVILEGE_OWNER),
                      {p.line, LINE_LINEDEVSTATE, kInstance, LINEDEVSTATE_RINGING, 1, 1},
                      {call, LINE_CALLINFO, kInstance, LINECALLINFOSTATE_CALLERID, 0, 0}}),
                  p.events);
        Buffer<LINECALLINFO> info(1320);
        EXPECT_EQ(0, lineGetCallInfo(call, info.Get()));
        EXPECT_EQ(c.expected, info->dwCallerIDFlags);
        EXPECT_EQ(c.number, info.Text(info->dwCallerIDSize, info->dwCallerIDOffset));
        EXPECT_EQ(c.name, info.Text(info->dwCallerIDNameSize, info->dwCallerIDNameOffset));
        // The caller gives up; or hangs up after having been answered, when dropping the call is left to the program.
        p.events.clear();
        const bool answered = c.flags == 0;
        if (answered) {
            EXPECT_TRUE(p.telsim.ChangeCallState(call, LINECALLSTATE_CONNECTED, LINECONNECTEDMODE_ACTIVE, 0));
            EXPECT_TRUE(p.telsim.HangUp(call)) << "and once more below";
        }
        EXPECT_TRUE(p.telsim.HangUp(call));
        p.PumpAll();
        EXPECT_EQ(answered ? (std::vector<DWORD>{LINECALLSTATE_CONNECTED, LINECALLSTATE_DISCONNECTED})
                           : (std::vector<DWORD>{LINECALLSTATE_DISCONNECTED, LINECALLSTATE_IDLE}),
                  p.States());
        if (answered) {
            EXPECT_EQ(0, p.Reply(lineDrop(call, nullptr, 0)));
        }
        EXPECT_FALSE(p.telsim.HangUp(call));
        EXPECT_EQ(0, lineDeallocateCall(call));
    }
}

TEST_F(Calls, AreWatchedByOthersWhoMayNotTouchThem)
{
    ASSERT_EQ(0, p.Open(kNoPort, LINECALLPRIVILEGE_MONITOR));
    const HLINE watching = p.line;
    EXPECT_EQ(0, lineSetStatusMessages(watching, LINEDEVSTATE_OPEN | LINEDEVSTATE_CLOSE, 0));
    ASSERT_EQ(0, p.Open(kNoPort, LINECALLPRIVILEGE_OWNER)); // of calls that come in: it watches none
    ASSERT_EQ(0, p.Open(kNoPort));
    ASSERT_EQ(0, p.Reply(p.MakeCall()));
    p.PumpAll();
    EXPECT_EQ((Event{watching, LINE_LINEDEVSTATE, kInstance, LINEDEVSTATE_OPEN}), p.events.front());
    const HCALL monitor = p.telsim.GetHandle(TELSIM_CALL_HANDLES, 1);
    ASSERT_NE(0u, monitor);
    EXPECT_EQ(0u, p.telsim.GetHandle(TELSIM_CALL_HANDLES, 2));
    EXPECT_EQ(Error(LINEERR_NOTOWNER), lineDrop(monitor, nullptr, 0));
    EXPECT_EQ("lineDrop: call " + HandleText(monitor) + " belongs to another\n", p.telsim.Misuses());
    p.telsim.ClearTexts();

    // Closing its line ends the owner's call; whoever watches it is told, and closes his own handle when he likes.
    p.events.clear();
    EXPECT_EQ(0, lineClose(p.line));
    p.PumpAll();
    EXPECT_EQ((std::vector<Event>{StateEvent(monitor, LINECALLSTATE_IDLE, 0),
                                  {watching, LINE_LINEDEVSTATE, kInstance, LINEDEVSTATE_CLOSE, 0, 0}}),
              p.events);
    EXPECT_EQ(0, lineDeallocateCall(monitor));
}

TEST_F(Calls, LeaveNothingBehindWhenTheLineIsClosedInTheMiddle)
{
    ASSERT_EQ(0, p.Open(kNoPort));
    ASSERT_TRUE(p.telsim.SetRule("lineMakeCall", 1, FALSE, TELSIM_LATE_REPLY, 30));
    EXPECT_GT(p.MakeCall(), 0);
    EXPECT_EQ(0, lineClose(p.line));
    p.PumpAll();
    EXPECT_TRUE(p.events.empty()) << "no reply for a closed line";
    EXPECT_EQ(0u, p.call);

    // The callback itself may end everything.
    ASSERT_EQ(0, p.Open(kNoPort));
    p.onEvent = [&](const Event& event) {
        if (event[kMessage] == LINE_CALLSTATE) {
            EXPECT_EQ(0, lineShutdown(std::exchange(p.app, 0)));
        }
    };
    EXPECT_EQ(0, p.Reply(p.MakeCall()));
    EXPECT_TRUE(p.Pump([&] { return p.app == 0; }));
}

/// Every record: too small for its fixed part, then for what varies, then just large enough.
TEST_F(Calls, SayHowMuchRoomTheirRecordsNeed)
{
    ASSERT_TRUE(p.Connect(kNoPort));
    char settings[] = "Settings of device 1";
    // The size of the fixed part, and how the record is asked for.
    const std::pair<DWORD, std::function<LONG(AnyRecord)>> kRecords[] = {
        {telsim::DevCapsSize(kVersion), ASK(lineGetDevCaps(p.app, kNoPort, kVersion, 0, record))},
        {telsim::AddressCapsSize(kVersion), ASK(lineGetAddressCaps(p.app, kNoPort, 0, kVersion, 0, record))},
        {telsim::kVarStringSize, ASK(lineGetDevConfig(kNoPort, record, "comm"))},
        {telsim::kVarStringSize, ASK(lineConfigDialogEdit(kNoPort, nullptr, "comm", settings, 20, record))},
        {telsim::kVarStringSize, ASK(lineGetID(0, 0, p.call, LINECALLSELECT_CALL, record, "tapi/line"))},
        {telsim::kAddressStatusSize, ASK(lineGetAddressStatus(p.line, 0, record))},
        {telsim::kCallStatusSize, ASK(lineGetCallStatus(p.call, record))},
        {telsim::kCallInfoSize, ASK(lineGetCallInfo(p.call, record))},
        {telsim::kTranslateOutputSize, ASK(lineTranslateAddress(p.app, 0, 0x00010000, "1", 0, 2, record))},
    };
    for (const auto& [fixedSize, ask] : kRecords) {
        SCOPED_TRACE(&ask - &kRecords[0].second);
        Buffer<VARSTRING> small(fixedSize + 1);
        small->dwTotalSize = fixedSize - 1;
        EXPECT_EQ(Error(LINEERR_STRUCTURETOOSMALL), ask({small.Get()}));
        EXPECT_EQ(0xCCCCCCCC, small->dwNeededSize);
        small->dwTotalSize = fixedSize;
        EXPECT_EQ(0, ask({small.Get()}));
        EXPECT_EQ(fixedSize, small->dwUsedSize);
        EXPECT_EQ('\xCC', reinterpret_cast<char*>(small.Get())[fixedSize]);
        Buffer<VARSTRING> exact(small->dwNeededSize);
        EXPECT_EQ(0, ask({exact.Get()}));
        EXPECT_EQ(exact->dwTotalSize, exact->dwNeededSize);
        EXPECT_EQ(exact->dwTotalSize, exact->dwUsedSize);
    }
    p.telsim.ClearTexts(); // the sizes too small
}

TEST_F(Calls, TranslateNumbersFromWhereTheyAreDialed)
{
    const IniFile ini("[location]\r\ncountry=49\r\narea=30\r\noutside=0,\r\nlongdistance=0\r\ninternational=00\r\n"
                      "cancelcallwaiting=*43,\r\n[line0]\r\nname=Only one\r\n");
    p.telsim.Reset();
    ASSERT_EQ(0, p.Initialize());
    constexpr DWORD kLocal = LINETRANSLATERESULT_CANONICAL | LINETRANSLATERESULT_LOCAL;
    constexpr DWORD kLongDistance = LINETRANSLATERESULT_CANONICAL | LINETRANSLATERESULT_LONGDISTANCE;
    constexpr DWORD kAbroad = LINETRANSLATERESULT_CANONICAL | LINETRANSLATERESULT_INTERNATIONAL;
    const struct {
        const char* address;
        DWORD options;
        const char* dialable;
        DWORD results;
    } cases[] = {
        {"+49 (30) 1234-567", 0, "T0,1234567", kLocal},
        {"+49 1234", 0, "T0,1234", kLocal},
        {"+49 (89) 1234", 0, "T0,0891234", kLongDistance},
        {"+49 (89) 1234", LINETRANSLATEOPTION_FORCELOCAL, "T0,1234", kLocal},
        {"+49 (30) 1234", LINETRANSLATEOPTION_FORCELD, "T0,0301234", kLongDistance},
        {"+1 (425) 555-0123|7^Jane", LINETRANSLATEOPTION_CANCELCALLWAITING, "T*43,0,0014255550123", kAbroad},
        {"+45 12345678", 0, "T0,004512345678", kAbroad},
        {"(0) 12-34 W5", 0, "T0,01234W5", 0},
    };
    Buffer<LINETRANSLATEOUTPUT> output(1064);
    const auto translate = [&](const char* address, DWORD options) {
        return lineTranslateAddress(p.app, 0, 0x00010000, address, 0, options, output.Get());
    };
    for (const auto& c : cases) {
        ASSERT_EQ(0, translate(c.address, c.options)) << c.address;
        EXPECT_EQ(c.dialable, output.Text(output->dwDialableStringSize, output->dwDialableStringOffset));
        EXPECT_EQ(c.results, output->dwTranslateResults) << c.address;
        EXPECT_EQ(49u, output->dwCurrentCountry);
    }
    for (const char* bad : {"", "nobody", "+", "+12345 (1) 2", "+49 ((30)) 1234", "+49(30) 1234", "+49 (30)1234",
                            "+49301234", "+49x 1234", "+49 30/1234", "ask for 5550123"})
        EXPECT_EQ(Error(LINEERR_INVALADDRESS), translate(bad, 0)) << bad;
    EXPECT_EQ(0, lineTranslateDialog(p.app, 0, 0x00010000, nullptr, nullptr));
}
