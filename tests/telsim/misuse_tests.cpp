// Wrong calls: each is refused with the code that the interface documents, and listed with a reason.
#include "program.h"
#include "support/test.h"

/// A wrong call, to be made later.
#define CALL(...) [&] { return p.__VA_ARGS__; }

namespace {

/// A program with an open line, a call on it, and one of each kind of handle that is used up.
class Misuse : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(p.Connect(kNoPort));
        const HLINE line = p.line;
        ASSERT_EQ(0, p.Open(kNoPort));
        closedLine = p.line;
        ASSERT_EQ(0, p.lineClose(closedLine));
        p.line = line;
    }

    struct Case {
        std::function<LONG()> call;
        DWORD code;
        const char* reason; // how the entry in the list ends
    };
    void Check(const std::vector<Case>& cases)
    {
        for (const Case& c : cases) {
            SCOPED_TRACE(c.reason);
            p.telsim.ClearTexts();
            EXPECT_EQ(c.code, static_cast<DWORD>(c.call()));
            const std::string misuses = p.telsim.Misuses();
            const std::string expected = std::string(c.reason) + '\n';
            EXPECT_TRUE(misuses.size() >= expected.size() &&
                        misuses.compare(misuses.size() - expected.size(), expected.size(), expected) == 0)
                << misuses;
            EXPECT_EQ(p.telsim.Calls().substr(0, p.telsim.Calls().find('(')), misuses.substr(0, misuses.find(':')));
        }
        EXPECT_EQ(1u, p.telsim.GetCount(TELSIM_APPS));
        EXPECT_EQ(1u, p.telsim.GetCount(TELSIM_LINES));
    }

    Program p;
    HLINE closedLine = 0;
    char memory[2048] = {};
    /// A record with a total size, in memory that is large enough.
    AnyRecord Record(DWORD totalSize)
    {
        std::memcpy(memory, &totalSize, sizeof totalSize);
        return {memory};
    }
};

} // namespace

TEST_F(Misuse, OfHandles)
{
    Check({
        {CALL(lineShutdown(p.app + 1)), LINEERR_INVALAPPHANDLE, "was never given"},
        {CALL(lineShutdown(p.line)), LINEERR_INVALAPPHANDLE, "was never given"},
        {CALL(lineClose(0)), LINEERR_INVALLINEHANDLE, "line 0 was never given"},
        {CALL(lineSetStatusMessages(closedLine, 0, 0)), LINEERR_INVALLINEHANDLE, "was closed"},
        {CALL(lineGetCallInfo(0, nullptr)), LINEERR_INVALCALLHANDLE, "call 0 was never given"},
        {CALL(lineMakeCall(p.call, &p.call, nullptr, 0, nullptr)), LINEERR_INVALLINEHANDLE, "was never given"},
        {CALL(lineGetDevConfig(2, nullptr, "comm")), LINEERR_BADDEVICEID, "there is no device 2"},
        {CALL(lineGetAddressStatus(p.line, 1, nullptr)), LINEERR_INVALADDRESSID, "there is no address 1"},
    });
    EXPECT_EQ(0, p.Reply(p.lineDrop(p.call, nullptr, 0)));
    const auto dealloc = [&] { return p.lineDeallocateCall(p.call); };
    ASSERT_EQ(0, dealloc());
    Check({{dealloc, LINEERR_INVALCALLHANDLE, "was deallocated"}});
}

TEST_F(Misuse, OfStates)
{
    const auto drop = [&] { return p.lineDrop(p.call, nullptr, 0); };
    const auto dealloc = [&] { return p.lineDeallocateCall(p.call); };
    Check({{dealloc, LINEERR_INVALCALLSTATE, "is not idle, and has no other owner"}});
    ASSERT_EQ(0, p.Reply(drop()));
    // The call is over, but the program cannot know yet.
    p.telsim.ClearTexts();
    EXPECT_EQ(LINEERR_INVALCALLSTATE, static_cast<DWORD>(drop()));
    EXPECT_EQ("", p.telsim.Misuses());
    p.PumpAll();
    Check({{drop, LINEERR_INVALCALLSTATE, "is idle"}});
    EXPECT_EQ(0, dealloc());
}

TEST_F(Misuse, OfPointers)
{
    HLINEAPP app;
    DWORD devices, version;
    auto* readOnly = const_cast<char*>("read only");
    Check({
        {CALL(lineInitialize(nullptr, nullptr, &Program::Callback, "", &devices)), LINEERR_INVALPOINTER,
         "the place for the handle cannot be written"},
        {CALL(lineInitialize(&app, nullptr, nullptr, "", &devices)), LINEERR_INVALPOINTER,
         "the callback is no function"},
        {CALL(lineInitialize(&app, nullptr, &Program::Callback, reinterpret_cast<char*>(1), &devices)),
         LINEERR_INVALPOINTER, "the application's name is not a text"},
        {CALL(lineInitialize(&app, reinterpret_cast<HINSTANCE>(0x10), &Program::Callback, "", &devices)),
         LINEERR_INVALPARAM, "the instance is no module"},
        {CALL(lineNegotiateAPIVersion(p.app, 0, 0x00010000, 0x10000000, &version, nullptr)), LINEERR_INVALPOINTER,
         "the place for the extension cannot be written"},
        {CALL(lineOpen(p.app, kNoPort, nullptr, kVersion, 0, 0, LINECALLPRIVILEGE_NONE, 0, nullptr)),
         LINEERR_INVALPOINTER, "the place for the handle cannot be written"},
        {CALL(lineGetCallStatus(p.call, nullptr)), LINEERR_INVALPOINTER, "the record cannot be written"},
        {CALL(lineGetCallStatus(p.call, reinterpret_cast<LINECALLSTATUS*>(readOnly))), LINEERR_INVALPOINTER,
         "the record cannot be written"},
        {CALL(lineGetCallStatus(p.call, Record(0x7FFFFFFF))), LINEERR_INVALPOINTER,
         "dwTotalSize is 2147483647, but the memory ends before that"},
        {CALL(lineGetDevConfig(kNoPort, Record(100), nullptr)), LINEERR_INVALPOINTER, "the device class is not a text"},
        {CALL(lineTranslateAddress(p.app, 0, 0x00010000, nullptr, 0, 0, Record(100))), LINEERR_INVALPOINTER,
         "the address is not a text"},
        {CALL(lineConfigDialogEdit(kNoPort, nullptr, "comm", nullptr, 0, Record(100))), LINEERR_INVALPOINTER,
         "there is no configuration to edit"},
        {CALL(lineTranslateDialog(p.app, 0, 0x00010000, reinterpret_cast<HWND>(0x10), nullptr)), LINEERR_INVALPARAM,
         "the owner is no window"},
        {CALL(lineDrop(p.call, reinterpret_cast<char*>(1), 10)), LINEERR_INVALPOINTER,
         "the user information cannot be read"},
        {CALL(lineMakeCall(p.line, &p.call, nullptr, 0, reinterpret_cast<LINECALLPARAMS*>(1))), LINEERR_INVALPOINTER,
         "the call parameters cannot be read"},
    });

    // A place for the call's handle that is gone when it is needed.
    p.telsim.ClearTexts();
    ASSERT_EQ(0, p.Open(kModem));
    p.telsim.ConfigureLine(kModem, "port", "");
    void* gone = VirtualAlloc(nullptr, 4096, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    const LONG request = p.lineMakeCall(p.line, static_cast<HCALL*>(gone), nullptr, 0, nullptr);
    VirtualFree(gone, 0, MEM_RELEASE);
    EXPECT_EQ(LINEERR_OPERATIONFAILED, static_cast<DWORD>(p.Reply(request)));
    EXPECT_EQ("lineMakeCall: the place for the call's handle is gone when the reply comes\n", p.telsim.Misuses());
}

TEST_F(Misuse, OfVersionsAndModes)
{
    DWORD version;
    LINEEXTENSIONID extension;
    HLINE line;
    const auto open = [&](DWORD device, DWORD opened, DWORD extended, DWORD privileges, DWORD media) {
        return p.lineOpen(p.app, device, &line, opened, extended, 0, privileges, media, nullptr);
    };
    Check({
        {CALL(lineNegotiateAPIVersion(p.app, 0, 2, 1, &version, &extension)), LINEERR_INCOMPATIBLEAPIVERSION,
         "the lowest version is above the highest"},
        {CALL(lineGetDevCaps(p.app, 0, kVersion, 0, nullptr)), LINEERR_INCOMPATIBLEAPIVERSION,
         "no version was negotiated for device 0"},
        {[&] { return open(kNoPort, 0x00010003, 0, 1, 0); }, LINEERR_INCOMPATIBLEAPIVERSION,
         "version 0x10003 is not the negotiated 0x10004"},
        {[&] { return open(kNoPort, kVersion, 1, 1, 0); }, LINEERR_INCOMPATIBLEEXTVERSION,
         "no extension was negotiated"},
        {[&] { return open(kNoPort, kVersion, 0, 5, 0); }, LINEERR_INVALPRIVSELECT, "privileges 0x5"},
        {[&] { return open(kNoPort, kVersion, 0, 0, 0); }, LINEERR_INVALPRIVSELECT, "privileges 0"},
        {[&] { return open(kNoPort, kVersion, 0, 1, 1); }, LINEERR_INVALMEDIAMODE, "media modes 0x1"},
        {[&] { return open(kNoPort, kVersion, 0, LINECALLPRIVILEGE_OWNER, LINEMEDIAMODE_TDD); }, LINEERR_INVALMEDIAMODE,
         "the line has no media modes 0x40 to own calls of"},
        {CALL(lineSetStatusMessages(p.line, 0x02000000, 0)), LINEERR_INVALLINESTATE,
         "unknown line states in 0x2000000"},
        {CALL(lineSetStatusMessages(p.line, 0, 0x200)), LINEERR_INVALADDRESSSTATE, "unknown address states in 0x200"},
        {CALL(lineGetID(0, 0, p.call, 3, nullptr, "comm")), LINEERR_INVALCALLSELECT, "selection 0x3"},
        {CALL(lineGetID(0, 0, p.call, LINECALLSELECT_CALL, nullptr, "wave/in")), LINEERR_NODEVICE,
         "the line has no device of class wave/in"},
        {CALL(lineGetDevConfig(0, nullptr, "wave/in")), LINEERR_INVALDEVICECLASS,
         "there is no configuration of class wave/in"},
        {CALL(lineConfigDialogEdit(1, nullptr, "comm", memory, 30, nullptr)), LINEERR_INVALPARAM,
         "the configuration is not one of this device"},
        {CALL(lineTranslateAddress(p.app, 0, 0x00010000, "1", 0, 0x10, nullptr)), LINEERR_INVALPARAM,
         "unknown options in 0x10"},
        {CALL(lineTranslateDialog(p.app, 0, 0x00020000, nullptr, nullptr)), LINEERR_INCOMPATIBLEAPIVERSION,
         "version 0x20000"},
        {CALL(lineMakeCall(p.line, &p.call, "nobody", 0, nullptr)), LINEERR_INVALADDRESS,
         "the number cannot be dialed"},
    });
}

TEST_F(Misuse, OfCallParameters)
{
    const auto make = [&](DWORD LINECALLPARAMS::*field, DWORD value) {
        return [&, field, value] {
            LINECALLPARAMS* params = Record(200);
            std::memset(memory + 4, 0, sizeof memory - 4);
            params->dwBearerMode = LINEBEARERMODE_PASSTHROUGH;
            params->dwMediaMode = LINEMEDIAMODE_DATAMODEM;
            params->dwAddressMode = LINEADDRESSMODE_ADDRESSID;
            params->dwDisplayableAddressSize = params->dwCommentSize = 1;
            params->dwDisplayableAddressOffset = params->dwCommentOffset = 112;
            params->*field = value;
            return p.lineMakeCall(p.line, &p.call, nullptr, 0, params);
        };
    };
    EXPECT_GT(make(&LINECALLPARAMS::dwCommentOffset, 199)(), 0) << "all is well";
    Check({
        {make(&LINECALLPARAMS::dwTotalSize, 111), LINEERR_STRUCTURETOOSMALL,
         "dwTotalSize is 111, the fixed part alone has 112 bytes"},
        {make(&LINECALLPARAMS::dwBearerMode, 0x41), LINEERR_INVALBEARERMODE, "bearer mode 0x41 is none"},
        {make(&LINECALLPARAMS::dwBearerMode, 0x80), LINEERR_BEARERMODEUNAVAIL, "the line has no bearer mode 0x80"},
        {make(&LINECALLPARAMS::dwMediaMode, 0x40), LINEERR_INVALMEDIAMODE, "the line has no media mode 0x40"},
        {make(&LINECALLPARAMS::dwCallParamFlags, 0x80), LINEERR_INVALCALLPARAMS, "unknown flags in 0x80"},
        {make(&LINECALLPARAMS::dwMinRate, 1), LINEERR_INVALRATE, "the lowest rate is above the highest"},
        {make(&LINECALLPARAMS::dwAddressMode, 0), LINEERR_INVALADDRESSMODE, "address mode 0"},
        {make(&LINECALLPARAMS::dwAddressID, 1), LINEERR_INVALADDRESSID, "there is no address 1"},
        {make(&LINECALLPARAMS::dwDisplayableAddressOffset, 111), LINEERR_INVALCALLPARAMS,
         "the displayable address, 1 bytes at 111, is outside the parameters"},
        {make(&LINECALLPARAMS::dwCommentOffset, 200), LINEERR_INVALCALLPARAMS,
         "the comment, 1 bytes at 200, is outside the parameters"},
        {make(&LINECALLPARAMS::dwCommentSize, 0xFFFFFFFF), LINEERR_INVALCALLPARAMS,
         "the comment, 4294967295 bytes at 112, is outside the parameters"},
    });
}
