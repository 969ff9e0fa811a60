// Wrong calls: each is refused with the code that the interface documents, and listed with a reason.
#include "program.h"
#include "support/test.h"

/// A wrong call, to be made later.
#define CALL(...) [&] { return __VA_ARGS__; }

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
        ASSERT_EQ(0, lineClose(closedLine));
        p.line = line;
    }

    struct Case {
        std::function<LONG()> call;
        const char* reason; // how the entry in the list ends
        DWORD code = LINEERR_INVALPOINTER;
    };
    void Check(const std::vector<Case>& cases)
    {
        for (const Case& c : cases) {
            SCOPED_TRACE(c.reason);
            p.telsim.ClearTexts();
            EXPECT_EQ(c.code, static_cast<DWORD>(c.call()));
            const std::string misuses = p.telsim.Misuses();
            EXPECT_TRUE(misuses.ends_with(std::string(c.reason) + '\n')) << misuses;
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
        {CALL(lineShutdown(p.app + 1)), "was never given", LINEERR_INVALAPPHANDLE},
        {CALL(lineTranslateDialog(p.line, 0, 0x00010000, nullptr, nullptr)), "was never given", LINEERR_INVALAPPHANDLE},
        {CALL(lineClose(0)), "line 0 was never given", LINEERR_INVALLINEHANDLE},
        {CALL(lineSetStatusMessages(closedLine, 0, 0)), "was closed", LINEERR_INVALLINEHANDLE},
        {CALL(lineGetCallInfo(0, nullptr)), "call 0 was never given", LINEERR_INVALCALLHANDLE},
        {CALL(lineMakeCall(p.call, &p.call, nullptr, 0, nullptr)), "was never given", LINEERR_INVALLINEHANDLE},
        {CALL(lineGetDevConfig(2, nullptr, "comm")), "there is no device 2", LINEERR_BADDEVICEID},
        {CALL(lineGetAddressStatus(p.line, 1, nullptr)), "there is no address 1", LINEERR_INVALADDRESSID},
    });
    EXPECT_EQ(0, p.Reply(lineDrop(p.call, nullptr, 0)));
    const auto dealloc = [&] { return lineDeallocateCall(p.call); };
    ASSERT_EQ(0, dealloc());
    Check({{dealloc, "was deallocated", LINEERR_INVALCALLHANDLE}});
}

TEST_F(Misuse, OfStates)
{
    const auto drop = [&] { return lineDrop(p.call, nullptr, 0); };
    const auto dealloc = [&] { return lineDeallocateCall(p.call); };
    Check({{dealloc, "is not idle, and has no other owner", LINEERR_INVALCALLSTATE}});
    const LONG first = drop(), second = drop();
    ASSERT_EQ(0, p.Reply(first));
    EXPECT_EQ(Error(LINEERR_INVALCALLSTATE), p.Reply(second));
    // The call is over, but the program cannot know yet.
    p.telsim.ClearTexts();
    EXPECT_EQ(Error(LINEERR_INVALCALLSTATE), drop());
    EXPECT_EQ("", p.telsim.Misuses());
    p.PumpAll();
    Check({{drop, "is idle", LINEERR_INVALCALLSTATE}});
    EXPECT_EQ(0, dealloc());
}

TEST_F(Misuse, OfPointers)
{
    constexpr auto callback = &Program::Callback;
    HLINEAPP app;
    DWORD devices, version;
    auto* readOnly = const_cast<char*>("read only");
    Check({
        {CALL(lineInitialize(nullptr, nullptr, callback, "", &devices)), "the place for the handle cannot be written"},
        {CALL(lineInitialize(&app, nullptr, nullptr, "", &devices)), "the callback is no function"},
        {CALL(lineInitialize(&app, nullptr, callback, reinterpret_cast<char*>(1), &devices)),
         "the application's name is not a text"},
        {CALL(lineInitialize(&app, reinterpret_cast<HINSTANCE>(0x10), callback, "", &devices)),
         "the instance is no module", LINEERR_INVALPARAM},
        {CALL(lineNegotiateAPIVersion(p.app, 0, 0x00010000, 0x10000000, &version, nullptr)),
         "the place for the extension cannot be written"},
        {CALL(lineOpen(p.app, kNoPort, nullptr, kVersion, 0, 0, LINECALLPRIVILEGE_NONE, 0, nullptr)),
         "the place for the handle cannot be written"},
        {CALL(lineGetCallStatus(p.call, nullptr)), "the record cannot be written"},
        {CALL(lineGetCallStatus(p.call, reinterpret_cast<LINECALLSTATUS*>(readOnly))), "the record cannot be written"},
        {CALL(lineGetCallStatus(p.call, Record(0x7FFFFFFF))),
         "dwTotalSize is 2147483647, but the memory ends before that"},
        {CALL(lineGetDevConfig(kNoPort, Record(100), nullptr)), "the device class is not a text"},
        {CALL(lineTranslateAddress(p.app, 0, 0x00010000, nullptr, 0, 0, Record(100))), "the address is not a text"},
        {CALL(lineConfigDialogEdit(kNoPort, nullptr, "comm", nullptr, 0, Record(100))),
         "there is no configuration to edit"},
        {CALL(lineTranslateDialog(p.app, 0, 0x00010000, reinterpret_cast<HWND>(0x10), nullptr)),
         "the owner is no window", LINEERR_INVALPARAM},
        {CALL(lineDrop(p.call, reinterpret_cast<char*>(1), 10)), "the user information cannot be read"},
        {CALL(lineMakeCall(p.line, &p.call, nullptr, 0, reinterpret_cast<LINECALLPARAMS*>(1))),
         "the call parameters cannot be read"},
    });

    // A place for the call's handle that is gone when it is needed.
    p.telsim.ClearTexts();
    ASSERT_EQ(0, p.Open(kModem));
    p.telsim.ConfigureLine(kModem, "port", "");
    void* gone = VirtualAlloc(nullptr, 4096, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    const LONG request = lineMakeCall(p.line, static_cast<HCALL*>(gone), nullptr, 0, nullptr);
    VirtualFree(gone, 0, MEM_RELEASE);
    EXPECT_EQ(Error(LINEERR_OPERATIONFAILED), p.Reply(request));
    EXPECT_EQ("lineMakeCall: the place for the call's handle is gone when the reply comes\n", p.telsim.Misuses());
}

TEST_F(Misuse, OfVersionsAndModes)
{
    DWORD version;
    LINEEXTENSIONID extension;
    HLINE line;
    const auto open = [&](DWORD device, DWORD opened, DWORD extended, DWORD privileges, DWORD media) {
        return lineOpen(p.app, device, &line, opened, extended, 0, privileges, media, nullptr);
    };
    Check({
        {CALL(lineNegotiateAPIVersion(p.app, 0, 2, 1, &version, &extension)), "the lowest version is above the highest",
         LINEERR_INCOMPATIBLEAPIVERSION},
        {CALL(lineGetDevCaps(p.app, 0, kVersion, 0, nullptr)), "no version was negotiated for device 0",
         LINEERR_INCOMPATIBLEAPIVERSION},
        {[&] { return open(kNoPort, 0x00010003, 0, 1, 0); }, "version 0x10003 is not the negotiated 0x10004",
         LINEERR_INCOMPATIBLEAPIVERSION},
        {[&] { return open(kNoPort, kVersion, 1, 1, 0); }, "no extension was negotiated",
         LINEERR_INCOMPATIBLEEXTVERSION},
        {[&] { return open(kNoPort, kVersion, 0, 5, 0); }, "privileges 0x5", LINEERR_INVALPRIVSELECT},
        {[&] { return open(kNoPort, kVersion, 0, 0, 0); }, "privileges 0", LINEERR_INVALPRIVSELECT},
        {[&] { return open(kNoPort, kVersion, 0, 1, 1); }, "media modes 0x1", LINEERR_INVALMEDIAMODE},
        {[&] { return open(kNoPort, kVersion, 0, LINECALLPRIVILEGE_OWNER, LINEMEDIAMODE_TDD); },
         "the line has no media modes 0x40 to own calls of", LINEERR_INVALMEDIAMODE},
        {CALL(lineSetStatusMessages(p.line, 0x02000000, 0)), "unknown line states in 0x2000000",
         LINEERR_INVALLINESTATE},
        {CALL(lineSetStatusMessages(p.line, 0, 0x200)), "unknown address states in 0x200", LINEERR_INVALADDRESSSTATE},
        {CALL(lineGetID(0, 0, p.call, 3, nullptr, "comm")), "selection 0x3", LINEERR_INVALCALLSELECT},
        {CALL(lineGetID(0, 0, p.call, LINECALLSELECT_CALL, nullptr, "wave/in")),
         "the line has no device of class wave/in", LINEERR_NODEVICE},
        {CALL(lineGetDevConfig(0, nullptr, "wave/in")), "there is no configuration of class wave/in",
         LINEERR_INVALDEVICECLASS},
        {CALL(lineConfigDialogEdit(1, nullptr, "comm", memory, 30, nullptr)),
         "the configuration is not one of this device", LINEERR_INVALPARAM},
        {CALL(lineTranslateAddress(p.app, 0, 0x00010000, "1", 0, 0x10, nullptr)), "unknown options in 0x10",
         LINEERR_INVALPARAM},
        {CALL(lineTranslateDialog(p.app, 0, 0x00020000, nullptr, nullptr)), "version 0x20000",
         LINEERR_INCOMPATIBLEAPIVERSION},
        {CALL(lineMakeCall(p.line, &p.call, "nobody", 0, nullptr)), "the number cannot be dialed",
         LINEERR_INVALADDRESS},
    });
}

TEST_F(Misuse, OfCallParameters)
{
    using Params = LINECALLPARAMS;
    const auto make = [&](DWORD Params::*field, DWORD value) {
        return [&, field, value] {
            Params* params = Record(200);
            std::memset(memory + 4, 0, sizeof memory - 4);
            params->dwBearerMode = LINEBEARERMODE_PASSTHROUGH;
            params->dwMediaMode = LINEMEDIAMODE_DATAMODEM;
            params->dwAddressMode = LINEADDRESSMODE_ADDRESSID;
            params->dwDisplayableAddressSize = params->dwCommentSize = 1;
            params->dwDisplayableAddressOffset = params->dwCommentOffset = 112;
            params->*field = value;
            return lineMakeCall(p.line, &p.call, nullptr, 0, params);
        };
    };
    EXPECT_GT(make(&Params::dwCommentOffset, 199)(), 0) << "all is well";
    Check({
        {make(&Params::dwTotalSize, 111), "dwTotalSize is 111, the fixed part alone has 112 bytes",
         LINEERR_STRUCTURETOOSMALL},
        {make(&Params::dwBearerMode, 0x41), "bearer mode 0x41 is none", LINEERR_INVALBEARERMODE},
        {make(&Params::dwBearerMode, 0x80), "the line has no bearer mode 0x80", LINEERR_BEARERMODEUNAVAIL},
        {make(&Params::dwMediaMode, 0x40), "the line has no media mode 0x40", LINEERR_INVALMEDIAMODE},
        {make(&Params::dwCallParamFlags, 0x80), "unknown flags in 0x80", LINEERR_INVALCALLPARAMS},
        {make(&Params::dwMinRate, 1), "the lowest rate is above the highest", LINEERR_INVALRATE},
        {make(&Params::dwAddressMode, 0), "address mode 0", LINEERR_INVALADDRESSMODE},
        {make(&Params::dwAddressID, 1), "there is no address 1", LINEERR_INVALADDRESSID},
        {make(&Params::dwDisplayableAddressOffset, 111),
         "the displayable address, 1 bytes at 111, is outside the parameters", LINEERR_INVALCALLPARAMS},
        {make(&Params::dwCommentOffset, 200), "the comment, 1 bytes at 200, is outside the parameters",
         LINEERR_INVALCALLPARAMS},
        {make(&Params::dwCommentSize, 0xFFFFFFFF), "the comment, 4294967295 bytes at 112, is outside the parameters",
         LINEERR_INVALCALLPARAMS},
    });
}
