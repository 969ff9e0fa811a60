// The ways of driving the service: rules, events, telsim.ini.
#include "program.h"
#include "support/test.h"

namespace {

class Control : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(0, p.Open(kNoPort)); }

    Program p;
};

void WINAPI Observe(const char* function, void* context)
{
    const auto& program = *static_cast<Program*>(context);
    if (std::strcmp(function, "lineGetAddressStatus") == 0) {
        EXPECT_TRUE(program.telsim.CloseLine(program.line));
    } else if (std::strcmp(function, "lineShutdown") == 0) {
        program.telsim.Reset();
    }
}

} // namespace

TEST_F(Control, FailsTheCallsThatItIsToldTo)
{
    Buffer<LINEADDRESSSTATUS> status(100);
    const auto results = [&](int count) {
        std::vector<DWORD> list;
        for (int i = 0; i < count; ++i)
            list.push_back(static_cast<DWORD>(lineGetAddressStatus(p.line, 0, status.Get())));
        return list;
    };
    ASSERT_TRUE(p.telsim.SetRule("lineGetAddressStatus", 2, FALSE, TELSIM_FAIL, LINEERR_NOMEM));
    ASSERT_TRUE(p.telsim.SetRule("lineGetAddressStatus", 4, TRUE, TELSIM_FAIL, 0x80001234));
    EXPECT_EQ((std::vector<DWORD>{0, LINEERR_NOMEM, 0, 0x80001234, 0x80001234}), results(5));
    EXPECT_EQ(3u, p.telsim.GetCount(TELSIM_RULES_FIRED));
    p.telsim.ClearRules();
    EXPECT_EQ((std::vector<DWORD>{0}), results(1));

    EXPECT_FALSE(p.telsim.SetRule("lineGetAddressStatus", 0, FALSE, TELSIM_FAIL, 1));
    EXPECT_FALSE(p.telsim.SetRule("lineGetAddressStatus", 1, FALSE, TELSIM_LATE_REPLY, 1)) << "is no request";
    EXPECT_FALSE(p.telsim.SetRule("lineMakeCall", 1, FALSE, TELSIM_NEED_MORE, 1)) << "has no record";
    EXPECT_FALSE(p.telsim.SetRule("lineGetAddressStatus", 1, FALSE, TELSIM_LAST_ACTION + 1, 1));
    EXPECT_FALSE(p.telsim.SetRule("lineDial", 1, FALSE, TELSIM_FAIL, 1));
}

TEST_F(Control, DecidesWhenRepliesComeAndWhatTheySay)
{
    const auto replied = [&] { return !p.events.empty() && p.events.front()[kMessage] == LINE_REPLY; };

    ASSERT_TRUE(p.telsim.SetRule("lineMakeCall", 1, FALSE, TELSIM_FAIL_REPLY, LINEERR_CALLUNAVAIL));
    EXPECT_EQ(Error(LINEERR_CALLUNAVAIL), p.Reply(p.MakeCall()));
    ASSERT_TRUE(p.telsim.ConfigureLine(kNoPort, "port", "COM98")); // which there is not
    EXPECT_EQ(Error(LINEERR_RESOURCEUNAVAIL), p.Reply(p.MakeCall()));
    ASSERT_TRUE(p.telsim.ConfigureLine(kNoPort, "port", ""));
    EXPECT_EQ(0u, p.call | p.telsim.GetCount(TELSIM_CALL_HANDLES));

    p.events.clear();
    ASSERT_TRUE(p.telsim.SetRule("lineMakeCall", 1, FALSE, TELSIM_PRETEND, 0));
    EXPECT_EQ(0, p.Reply(p.MakeCall()));
    p.PumpAll();
    EXPECT_EQ(1u, p.events.size()) << "no call state follows";
    EXPECT_EQ(0u, p.call);

    p.events.clear();
    ASSERT_TRUE(p.telsim.SetRule("lineMakeCall", 1, FALSE, TELSIM_EARLY_REPLY, 0));
    EXPECT_GT(p.MakeCall(), 0);
    EXPECT_TRUE(replied());
    EXPECT_NE(0u, p.call);
    p.PumpAll();

    p.events.clear();
    ASSERT_TRUE(p.telsim.SetRule("lineDrop", 1, FALSE, TELSIM_HOLD_REPLY, 0));
    const LONG request = lineDrop(p.call, nullptr, 0);
    p.PumpAll();
    EXPECT_FALSE(replied());
    EXPECT_EQ(1u, p.telsim.GetCount(TELSIM_HELD_REPLIES));
    EXPECT_EQ(1u, p.telsim.ReleaseReplies());
    EXPECT_EQ(0, p.Reply(request));
    EXPECT_EQ(0u, p.telsim.ReleaseReplies());

    // A reply that never comes goes with the line.
    p.PumpAll();
    EXPECT_EQ(0, lineDeallocateCall(p.call));
    ASSERT_TRUE(p.telsim.SetRule("lineMakeCall", 1, FALSE, TELSIM_HOLD_REPLY, 0));
    EXPECT_GT(p.MakeCall(), 0);
    EXPECT_EQ(0, lineClose(p.line));
    EXPECT_EQ(0u, p.telsim.ReleaseReplies());
    EXPECT_EQ("", p.telsim.Misuses());
}

TEST_F(Control, SpoilsRecords)
{
    constexpr DWORD kSize = 1264;
    Buffer<LINEDEVCAPS> good(kSize);
    ASSERT_EQ(0, lineGetDevCaps(p.app, kNoPort, kVersion, 0, good.Get()));
    EXPECT_EQ("Simulated Modem 2", good.Text(good->dwLineNameSize, good->dwLineNameOffset));
    EXPECT_EQ("SOFTWARE\\Zo,Inc.\\Simulated Modem\\0001",
              good.Text(good->dwDevSpecificSize - 8, good->dwDevSpecificOffset + 8));
    const DWORD used = good->dwUsedSize;
    const struct {
        DWORD action, value;
        DWORD needed, usedSize, nameSize, nameOffset;
    } cases[] = {
        {TELSIM_NEED_MORE, 100, used + 100, used, good->dwLineNameSize, good->dwLineNameOffset},
        {TELSIM_NEED_MORE, 2000, used + 2000, telsim::DevCapsSize(kVersion), 0, 0},
        {TELSIM_NEED_ENDLESS, 1, kSize + 1, telsim::DevCapsSize(kVersion), 0, 0},
        {TELSIM_USED_SIZE, 40, used, 40, 0xDDDDDDDD, good->dwLineNameOffset},
        {TELSIM_NEEDED_SIZE, 7, 7, used, good->dwLineNameSize, good->dwLineNameOffset},
        {TELSIM_BAD_OFFSETS, 0xFFFFFFF0, used, used, good->dwLineNameSize, 0xFFFFFFF0},
        {TELSIM_BAD_SIZES, 0x7FFFFFFF, used, used, 0x7FFFFFFF, good->dwLineNameOffset},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.action << ' ' << c.value);
        p.telsim.ClearRules();
        ASSERT_TRUE(p.telsim.SetRule("lineGetDevCaps", 1, FALSE, c.action, c.value));
        Buffer<LINEDEVCAPS> caps(kSize);
        EXPECT_EQ(0, lineGetDevCaps(p.app, kNoPort, kVersion, 0, caps.Get()));
        EXPECT_EQ(c.needed, caps->dwNeededSize);
        EXPECT_EQ(c.usedSize, caps->dwUsedSize);
        if (c.action == TELSIM_USED_SIZE) {
            EXPECT_EQ(0xDDDDDDDD, caps->dwLineFeatures) << "behind the used size";
            continue;
        }
        EXPECT_EQ(c.nameSize, caps->dwLineNameSize);
        EXPECT_EQ(c.nameOffset, caps->dwLineNameOffset);
    }
}

TEST_F(Control, FiresEvents)
{
    EXPECT_EQ(0, lineSetStatusMessages(p.line, LINEDEVSTATE_OUTOFSERVICE, 0));
    ASSERT_EQ(0, p.Reply(p.MakeCall()));
    p.PumpAll();
    p.events.clear();
    EXPECT_EQ(1u, p.telsim.ChangeLineState(kNoPort, LINEDEVSTATE_OUTOFSERVICE, 1, 2));
    EXPECT_EQ(0u, p.telsim.ChangeLineState(kNoPort, LINEDEVSTATE_MAINTENANCE, 0, 0)) << "not asked for";
    EXPECT_EQ(1u, p.telsim.ChangeLineState(kNoPort, LINEDEVSTATE_REINIT, LINE_CREATE, 5));
    EXPECT_EQ(2u, p.telsim.AddLine());
    EXPECT_TRUE(p.telsim.ChangeCallState(p.call, LINECALLSTATE_ONHOLD, 0, LINECALLPRIVILEGE_MONITOR));
    EXPECT_FALSE(p.telsim.ChangeCallState(p.call + 1, LINECALLSTATE_ONHOLD, 0, 0));
    EXPECT_EQ(1u, p.telsim.PostEvent(0x77, LINE_CALLSTATE, 5, 1, 2, 3));
    EXPECT_EQ(1u, p.telsim.PostEvent(p.call, LINE_CALLINFO, 0, 1, 2, 3));
    p.PumpAll();
    EXPECT_EQ(Error(LINEERR_NOTOWNER), lineDrop(p.call, nullptr, 0));
    EXPECT_TRUE(p.telsim.CloseLine(p.line));
    EXPECT_FALSE(p.telsim.CloseLine(p.line));
    p.PumpAll();
    EXPECT_EQ((std::vector<Event>{
                  {p.line, LINE_LINEDEVSTATE, kInstance, LINEDEVSTATE_OUTOFSERVICE, 1, 2},
                  {0, LINE_LINEDEVSTATE, 0, LINEDEVSTATE_REINIT, LINE_CREATE, 5},
                  {0, LINE_CREATE, 0, 2, 0, 0},
                  {p.call, LINE_CALLSTATE, kInstance, LINECALLSTATE_ONHOLD, 0, LINECALLPRIVILEGE_MONITOR},
                  {0x77, LINE_CALLSTATE, 5, 1, 2, 3},
                  {p.call, LINE_CALLINFO, kInstance, 1, 2, 3},
                  {p.line, LINE_CLOSE, kInstance, 0, 0, 0},
              }),
              p.events);
    EXPECT_EQ(0u, p.telsim.GetCount(TELSIM_CALL_HANDLES)) << "gone with the line";
    EXPECT_EQ(Error(LINEERR_INVALLINEHANDLE), lineClose(p.line));
}

/// The observer sees each call before it is checked, and may do what it wants there.
TEST_F(Control, ShowsEachCallToTheObserver)
{
    p.telsim.SetObserver(&Observe, &p);
    ASSERT_TRUE(p.telsim.SetRule("lineInitialize", 1, TRUE, TELSIM_FAIL, LINEERR_NOMEM));
    Buffer<LINEADDRESSSTATUS> status(100);
    EXPECT_EQ(Error(LINEERR_INVALLINEHANDLE), lineGetAddressStatus(p.line, 0, status.Get()));
    EXPECT_EQ("lineGetAddressStatus: line " + HandleText(p.line) + " was closed\n", p.telsim.Misuses());
    EXPECT_EQ(Error(LINEERR_INVALAPPHANDLE), lineShutdown(p.app));
    EXPECT_EQ(0u, p.telsim.GetCount(TELSIM_APPS));
    EXPECT_EQ(0, p.Initialize()) << "the rule has gone with it";
}

TEST_F(Control, ListsTheLastCallsWithTheirArguments)
{
    p.telsim.ClearTexts();
    EXPECT_EQ(0, lineSetStatusMessages(p.line, 0x00BFFBFF, 0x1FF));
    EXPECT_EQ(Error(LINEERR_INVALCALLHANDLE), lineDrop(7, nullptr, 0));
    EXPECT_EQ("lineSetStatusMessages(line=" + HandleText(p.line) +
                  ", states=0xbffbff, address states=0x1ff) = 0\n"
                  "lineDrop(call=0x7, info=null, size=0) = 0x80000018\n",
              p.telsim.Calls());
    char buffer[4] = "abc";
    EXPECT_GT(p.telsim.GetText(TELSIM_CALLS, buffer, sizeof buffer), sizeof buffer);
    EXPECT_STREQ("abc", buffer) << "all or nothing";
    p.telsim.ClearTexts();
    for (HCALL call = 0; call <= TELSIM_MOST_ENTRIES; ++call)
        lineDrop(call, nullptr, 0);
    for (const std::string& list : {p.telsim.Calls(), p.telsim.Misuses()}) {
        EXPECT_EQ(TELSIM_MOST_ENTRIES, std::count(list.begin(), list.end(), '\n'));
        EXPECT_NE(std::string::npos, list.substr(0, list.find('\n')).find("0x1")) << "the first has gone";
    }
}

TEST_F(Control, SetsLinesByTheKeysOfTheFile)
{
    const struct {
        const char* key;
        const char* value;
        BOOL accepted;
    } cases[] = {
        {"bearer", "voice, data", TRUE}, {"bearer", "0x40", TRUE},   {"bearer", "vocal", FALSE},
        {"versions", "1.0-1.3", TRUE},   {"versions", "1.4", FALSE}, {"versions", "1.4-1.3", FALSE},
        {"versions", "1.4-2.0", FALSE},  {"allocated", "1", TRUE},   {"allocated", "yes", FALSE},
        {"reply", "20", TRUE},           {"reply", "", FALSE},       {"name", "", TRUE},
        {"format", "unicode", TRUE},     {"colour", "green", FALSE}, {"features", "", TRUE},
        {"allocated", "2", FALSE},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.accepted, p.telsim.ConfigureLine(0, c.key, c.value)) << c.key << '=' << c.value;
    EXPECT_FALSE(p.telsim.ConfigureLine(2, "name", "x"));
    EXPECT_EQ(Error(LINEERR_ALLOCATED), p.Open(0));
    Buffer<LINEDEVCAPS> caps(1264);
    ASSERT_EQ(0, lineGetDevCaps(p.app, 0, 0x00010003, 0, caps.Get()));
    EXPECT_EQ(0x40u, caps->dwBearerModes);
    EXPECT_EQ(236u, caps->dwProviderInfoOffset) << "behind a fixed part as version 1.3 has it";
    Buffer<LINEADDRESSCAPS> address(1204);
    ASSERT_EQ(0, lineGetAddressCaps(p.app, 0, 0, 0x00010003, 0, address.Get()));
    EXPECT_EQ(176u, address->dwAddressOffset);
    EXPECT_EQ("5550100", address.Text(address->dwAddressSize, address->dwAddressOffset));
    EXPECT_EQ(static_cast<DWORD>(STRINGFORMAT_UNICODE), caps->dwStringFormat);
    EXPECT_TRUE(p.telsim.ConfigureLine(0, "versions", "1.4-1.4"));
    EXPECT_EQ(Error(LINEERR_ALLOCATED), p.Open(0));
    ASSERT_EQ(0, lineGetDevCaps(p.app, 0, kVersion, 0, caps.Get()));
    EXPECT_EQ(0u, caps->dwLineFeatures);
    EXPECT_EQ(240u, caps->dwProviderInfoOffset);
    DWORD version = 0;
    LINEEXTENSIONID extension;
    EXPECT_EQ(Error(LINEERR_INCOMPATIBLEAPIVERSION),
              lineNegotiateAPIVersion(p.app, 0, 0x00010000, 0x00010003, &version, &extension));
}

TEST(Ini, DescribesLinesAndCallsThatComeIn)
{
    const IniFile ini("; a comment\r\n[telsim]\r\ndialogs=0\r\n"
                      "[line0]\r\nname = First line\r\nmedia=datamodem,g3fax\r\nport=\r\n"
                      "[line1]\r\nname=Second\r\nspeed=9600\r\n"
                      "[call0]\r\nline=0\r\nafter=20\r\nnumber=5550123\r\nname=Jane\r\nhangup=20\r\n"
                      "[call1]\r\nline=0\r\nafter=100\r\nblocked=1\r\nhangup=20\r\n");
    Program p;
    EXPECT_EQ("telsim.ini: [line1] speed=9600\n", p.telsim.Misuses());
    ASSERT_EQ(0, p.Open(0, LINECALLPRIVILEGE_OWNER));
    std::vector<std::string> callers;
    p.onEvent = [&](const Event& event) {
        if (event[kMessage] != LINE_CALLINFO)
            return;
        Buffer<LINECALLINFO> info(1320);
        EXPECT_EQ(0, lineGetCallInfo(static_cast<HCALL>(event[kDevice]), info.Get()));
        callers.push_back(info.Text(info->dwCallerIDSize, info->dwCallerIDOffset) + '/' +
                          info.Text(info->dwCallerIDNameSize, info->dwCallerIDNameOffset) + '/' +
                          std::to_string(info->dwCallerIDFlags));
    };
    EXPECT_TRUE(p.Pump([&] { return p.States().size() == 6; }));
    EXPECT_EQ((std::vector<std::string>{"5550123/Jane/12", "//1"}), callers);
    constexpr DWORD kOne[] = {LINECALLSTATE_OFFERING, LINECALLSTATE_DISCONNECTED, LINECALLSTATE_IDLE};
    EXPECT_EQ((std::vector<DWORD>{kOne[0], kOne[1], kOne[2], kOne[0], kOne[1], kOne[2]}), p.States());
    Buffer<LINEDEVCAPS> caps(1264);
    ASSERT_EQ(0, lineGetDevCaps(p.app, 0, kVersion, 0, caps.Get()));
    EXPECT_EQ("First line", caps.Text(caps->dwLineNameSize, caps->dwLineNameOffset));
    EXPECT_EQ(static_cast<DWORD>(LINEMEDIAMODE_DATAMODEM | LINEMEDIAMODE_G3FAX), caps->dwMediaModes);
}

/// The example beside the library makes sense in every line, and its lines can be opened.
TEST(Ini, HasAnExampleInOrder)
{
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, sizeof path - 1);
    lstrcpyA(std::strrchr(path, '\\'), "\\telsim.sample.ini");
    SetEnvironmentVariableA("TELSIM_INI", path);
    Program p;
    SetEnvironmentVariableA("TELSIM_INI", nullptr);
    EXPECT_EQ("", p.telsim.Misuses());
    EXPECT_EQ(0, p.Open(1));
    EXPECT_EQ(Error(LINEERR_ALLOCATED), p.Open(2));
    EXPECT_EQ(Error(LINEERR_BADDEVICEID), p.Open(3));
}
