// Waiting, hanging up, and what happens meanwhile.
#include "support/test.h"
#include "tapi_fixture.h"

#include <new>

namespace {

using TapiCall = TapiTest;

/// While a call is hung up, no function of the service finds the port open.
void WINAPI NoteOpenPort(const char* function, void* line)
{
    EXPECT_EQ(INVALID_HANDLE_VALUE, static_cast<TestLine*>(line)->m_hComm) << function;
}

} // namespace

TEST_F(TapiCall, MembersKeepTheirPlacesAndBeginAsTheyShould)
{
    using Line = CZoTAPIInterface;
    ExpectSlots(2, &Line::InitializeTAPI, &Line::ShutdownTAPI, &Line::EnableCallAnswer, &Line::GrabThePort,
                &Line::HangupCall, &Line::DoLineReply, &Line::DoLineClose, &Line::DoLineDevState,
                &Line::DoLineCallState, &Line::DoLineCreate, &Line::DoLineCallInfo);
    ZO_ONLY_IN(sizeof(void*) == 4, "places are those of 32 bits");
    alignas(CZoTAPIInterface) char memory[sizeof(CZoTAPIInterface)];
    std::memset(memory, 0xDD, sizeof memory);
    auto* line = new (memory) CZoTAPIInterface(nullptr, nullptr, LINEMEDIAMODE_DATAMODEM, TRUE);
    // By where they begin; each has four bytes.
    const std::pair<size_t, std::vector<const void*>> kPlaces[] = {
        {4,
         {&line->m_dwMediaModes, &line->m_hMainWnd, &line->m_hDialogWnd, &line->m_hLineApp, &line->m_dwNumDevs,
          &line->m_dwReserved1, &line->m_bShuttingDown, &line->m_bHangingUp, &line->m_bInitializing,
          &line->m_bCallInProgress, &line->m_bSilent, &line->m_hCall, &line->m_hLine, &line->m_hAnswerLine,
          &line->m_hComm, &line->m_dwReserved2, &line->m_adwReserved}},
        {108, {&line->m_dwDeviceID, &line->m_dwAPIVersion, &line->m_dwCallState, &line->m_szReserved1}},
        {2168,
         {&line->m_bConnected, &line->m_lpDevConfig, &line->m_dwDevConfigSize, &line->m_bReplyReceived,
          &line->m_lRequestID, &line->m_lReplyResult, &line->m_bCallStateChanged, &line->m_strCallerID,
          &line->m_strCallerName, &line->m_dwLastError, &line->m_dwLastErrorFlags, line + 1}}};
    for (auto [place, members] : kPlaces) {
        for (const void* member : members) {
            EXPECT_EQ(memory + place, member);
            place += 4;
        }
    }
    EXPECT_EQ(0xFFFFFFFFu, line->m_dwDeviceID);
    EXPECT_EQ(INVALID_HANDLE_VALUE, line->m_hComm);
    EXPECT_EQ(0x10u, line->m_dwLastErrorFlags);
    line->m_dwDeviceID = 0;
    line->m_hComm = nullptr;
    line->m_bSilent = FALSE;
    EXPECT_EQ(44, std::count(memory + 16, memory + 60, '\0'));
    EXPECT_EQ(2196 - 60, std::count(memory + 60, memory + 2196, '\0')) << "all else is zero";
    line->~CZoTAPIInterface();
}

TEST_F(TapiCall, APortIsTakenAndGivenBack)
{
    {
        TestLine line;
        EXPECT_TRUE(line.GrabThePort());
        EXPECT_EQ("Main window unavailable.\nDialog window unavailable.\n<GrabThePort:Calling InitializeTAPI!\n"
                  "Tapi initialized.\nLINE_REPLY: successfully replied.\n\n\nConnected!\n\n"
                  "Connected!  Starting communications!\n\nJust set m_hComm.\nFile handle is not a comm handle.\n"
                  "\n\nLineMakecall Success!!!\n\n",
                  TakeTexts());
        EXPECT_FALSE(line.GrabThePort());
        EXPECT_EQ(2u, line.GetLastTAPIError());
        EXPECT_EQ((Boxes{{2, 0x10}}), TakeBoxes());
        EXPECT_EQ(0u, line.GetLastTAPIError()) << "forgotten once asked for";
        TakeTexts();
    }
    EXPECT_EQ("Stopping Call in progress\nLINE_REPLY: successfully replied.\nLine idle\nCall Dropped.\n"
              "Call Deallocated.\nLine Closed.\nCall stopped\nTAPI uninitialized.\n",
              TakeTexts());
    for (const DWORD kind : {TELSIM_APPS, TELSIM_LINES, TELSIM_CALL_HANDLES})
        EXPECT_EQ(0u, telsim.GetCount(kind));
    const std::string calls = telsim.Calls();
    for (const char* arguments :
         {"name=\"Zo, Inc. Brixels\"", "low=0x10000, high=0x10000000", "privileges=0x1, media=0x10, params=null",
          "states=0xbffbff, address states=0x1ff", "number=null, country=0, params=given",
          "select=0x4, class=\"comm/datamodem\"", "info=null, size=0"})
        EXPECT_NE(std::string::npos, calls.find(arguments)) << arguments << " in " << calls;
}

TEST_F(TapiCall, WhatHappensInTheMiddleEndsOrLeavesTheWait)
{
    TestLine* line = nullptr;
    const auto reinitialize = [&](DWORD what, DWORD value) {
        telsim.ChangeLineState(1, LINEDEVSTATE_REINIT, what, value);
    };
    const Boxes kGivenUp{{11, 0x10}};
    const Boxes kClosed{{22, 0x30}, {11, 0x10}};
    const struct {
        const char* name;
        std::function<void()> act;
        BOOL grabbed;
        Boxes boxes;
        DWORD devices = 2;
    } kCases[] = {
        {"hung up", [&] { line->HangupCall(); }, FALSE, kGivenUp},
        {"shut down", [&] { line->ShutdownTAPI(); }, FALSE, kGivenUp},
        {"another wait", [] { EXPECT_EQ(-1, TestLine(TRUE).WaitForReply(-1)); }, FALSE, kGivenUp},
        {"another wait that ends well",
         [&] {
             TestLine other(TRUE);
             other.SetTAPILineDeviceID(0);
             ASSERT_TRUE(telsim.ConfigureLine(0, "port", ""));
             EXPECT_TRUE(other.GrabThePort());
         },
         FALSE, kGivenUp},
        {"line closed", [&] { telsim.CloseLine(line->m_hLine); }, FALSE, kClosed},
        {"full restart", [&] { reinitialize(0, 0); }, FALSE, kGivenUp},
        {"device gone", [&] { reinitialize(LINE_LINEDEVSTATE, LINEDEVSTATE_OUTOFSERVICE); }, FALSE, kGivenUp},
        {"new device", [&] { reinitialize(LINE_CREATE, 8), telsim.ReleaseReplies(); }, TRUE, {}, 9},
        {"a handler that throws",
         [&] {
             line->onCallState = [] { AfxThrowMemoryException(); };
             telsim.ReleaseReplies();
         },
         TRUE,
         {}},
        {"a handler that hangs up",
         [&] {
             line->onCallState = [&] { line->HangupCall(); };
             telsim.ReleaseReplies();
         },
         FALSE, kGivenUp},
        {"end of the program", [] { PostQuitMessage(7); }, FALSE, kGivenUp},
    };
    for (const auto& test : kCases) {
        SCOPED_TRACE(test.name);
        Reset();
        TestLine taken;
        line = &taken;
        Rule("lineMakeCall", TELSIM_HOLD_REPLY);
        After(20, test.act);
        EXPECT_EQ(test.grabbed, taken.GrabThePort());
        EXPECT_EQ(test.boxes, TakeBoxes());
        EXPECT_EQ(test.grabbed, telsim.GetCount(TELSIM_LINES) != 0);
        MSG quit = {};
        EXPECT_EQ(std::string(test.name) == "end of the program",
                  PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE && quit.wParam == 7);
        taken.onCallState = nullptr;
        EXPECT_EQ(test.devices, taken.m_dwNumDevs);
        EXPECT_EQ(test.grabbed || test.boxes == kClosed, taken.m_bCallInProgress != FALSE);
        taken.ShutdownTAPI();
        EXPECT_TRUE(taken.GrabThePort()) << "as if nothing had been";
    }
}

/// A line that is closed tells nothing any more, whatever is waited for.
TEST_F(TapiCall, ALineThatIsClosedMeanwhileIsNotWaitedFor)
{
    constexpr const char* kAborted = "lineDrop: WAITERR_WAITABORTED.\n";
    constexpr const char* kReplied = "LINE_REPLY: successfully replied.\n";
    const struct {
        bool answering, shutDown;
        DWORD drop;
        std::string text;
    } kCases[] = {{false, false, TELSIM_HOLD_REPLY, kAborted},
                  {false, false, TELSIM_PRETEND, kReplied},
                  {true, false, TELSIM_HOLD_REPLY, kAborted},
                  {true, false, TELSIM_PRETEND, kReplied},
                  {false, true, TELSIM_HOLD_REPLY, std::string("TAPI uninitialized.\n") + kAborted}};
    for (const auto& test : kCases) {
        Reset();
        fastClock = 0;
        TestLine line(TRUE);
        EXPECT_EQ(test.answering, test.answering && line.EnableCallAnswer(TRUE));
        ASSERT_TRUE(line.GrabThePort());
        Rule("lineDrop", test.drop);
        After(20, [&] {
            fastClock = 1000;
            test.shutDown ? line.ShutdownTAPI() : telsim.CloseLine(line.m_hLine);
        });
        TakeTexts();
        EXPECT_TRUE(line.HangupCall());
        EXPECT_EQ(0u, slept);
        EXPECT_EQ("Stopping Call in progress\n" + test.text +
                      "WAITABORTED\nWAITERR_WAITABORTED while waiting for IDLE state.\nCall Dropped.\n"
                      "Call Deallocated.\nCall stopped\n",
                  TakeTexts());
        EXPECT_EQ(test.answering, line.m_hAnswerLine != 0);
        EXPECT_TRUE(line.GrabThePort());
    }
    Reset();
    TestLine line;
    // Nor is a call dropped again that has gone with it.
    answer = IDRETRY;
    ASSERT_TRUE(line.GrabThePort());
    Rule("lineDrop", TELSIM_FAIL, LINEERR_RESOURCEUNAVAIL);
    onBox = [&] {
        onBox = nullptr;
        telsim.CloseLine(line.m_hLine);
        PumpAll();
    };
    EXPECT_TRUE(line.HangupCall());
    line.m_bSilent = TRUE;
    ASSERT_TRUE(telsim.ConfigureLine(1, "connect", "60000"));
    After(20, [&] { telsim.CloseLine(line.m_hLine); });
    EXPECT_FALSE(line.GrabThePort()) << "closed before it connects";
    line.ShutdownTAPI();
    ASSERT_TRUE(telsim.ConfigureLine(1, "connect", "0"));
    ASSERT_TRUE(line.GrabThePort());
    telsim.CloseLine(line.m_hLine);
    PumpAll();
    line.ShutdownTAPI();
    EXPECT_FALSE(line.m_bConnected);
    EXPECT_TRUE(line.GrabThePort()) << "the next call connects anew";
}

TEST_F(TapiCall, AnEarlyReplyCountsForItsOwnRequestAndObject)
{
    TestLine line(TRUE), other(TRUE);
    const struct {
        TestLine& object;
        LONG request, awaited, result;
    } kCases[] = {{line, 76, 77, WAITERR_WAITABORTED}, {other, 78, 78, WAITERR_WAITABORTED}, {line, 79, 79, -5}};
    for (const auto& [object, request, awaited, result] : kCases) {
        line.m_bCallInProgress = TRUE;
        object.Tell(LINE_REPLY, static_cast<DWORD>(request), static_cast<DWORD>(-5));
        if (result == WAITERR_WAITABORTED)
            After(1, [&] { line.m_bCallInProgress = FALSE; });
        EXPECT_EQ(result, line.WaitForReply(awaited));
    }
    // One that nobody waits for is not taken for the next request's, whatever its number.
    line.m_bCallInProgress = FALSE;
    ASSERT_TRUE(line.GrabThePort());
    EXPECT_TRUE(line.HangupCall());
    for (const auto& next : {&CZoTAPIInterface::GrabThePort, &CZoTAPIInterface::HangupCall}) {
        line.Tell(LINE_REPLY, static_cast<DWORD>(line.m_lRequestID + 1), LINEERR_OPERATIONFAILED);
        EXPECT_TRUE((line.*next)());
        EXPECT_EQ(0u, line.m_dwLastError);
    }
}

TEST_F(TapiCall, WaitsForCallStates)
{
    TestLine line;
    ASSERT_TRUE(line.GrabThePort());
    EXPECT_EQ(0, line.WaitForCallState(LINECALLSTATE_CONNECTED)) << "as it is already";
    After(20, [&] { telsim.ChangeCallState(line.m_hCall, LINECALLSTATE_RINGBACK, 0, 0); });
    EXPECT_EQ(0, line.WaitForCallState(0)) << "any change";
    After(20, [] { EXPECT_EQ(WAITERR_WAITABORTED, TestLine(TRUE).WaitForCallState(LINECALLSTATE_IDLE)); });
    EXPECT_EQ(WAITERR_WAITABORTED, line.WaitForCallState(LINECALLSTATE_BUSY)) << "another wait ended within";
    fastClock = 1000;
    TakeTexts();
    After(1, [&] { telsim.ChangeCallState(line.m_hCall, LINECALLSTATE_PROCEEDING, 0, 0); });
    const DWORD start = GetTickCount();
    EXPECT_EQ(WAITERR_WAITTIMEDOUT, line.WaitForCallState(LINECALLSTATE_BUSY));
    EXPECT_NEAR(30000, slept + GetTickCount() - start, 2000);
    EXPECT_EQ("Proceeding\nWAITTIMEDOUT\n", TakeTexts());
    line.Tell(LINE_CALLSTATE, LINECALLSTATE_CONNECTED, 0, 0, line.m_hCall);
    EXPECT_EQ("\n\nConnected!\n\nAlready Connected!\n", TakeTexts());
    telsim.HangUp(line.m_hCall);
    PumpAll();
    EXPECT_EQ(0u, line.m_hLine) << "closed by the event";
}

TEST_F(TapiCall, WaitingSleepsUntilThereIsNews)
{
    TestLine line(TRUE);
    Rule("lineMakeCall", TELSIM_LATE_REPLY, 500);
    const DWORD start = GetTickCount();
    EXPECT_TRUE(line.GrabThePort());
    EXPECT_GE(GetTickCount() - start, 450u);
    EXPECT_NEAR(3, sleeps, 2) << "neither the interface nor the service keeps the processor busy";
}

TEST_F(TapiCall, RestartOfTheServiceIsWaitedForOnce)
{
    for (const auto& [onward, quits] : {std::pair(FALSE, false), {FALSE, true}, {TRUE, false}}) {
        Reset();
        fastClock = quits ? 0 : 500;
        TestLine line;
        Rule("lineInitialize", TELSIM_FAIL, LINEERR_REINIT, onward);
        const DWORD start = GetTickCount();
        BOOL nested = TRUE;
        After(1, [&, quits = quits] {
            nested = line.InitializeTAPI(nullptr);
            if (quits)
                PostQuitMessage(0);
        });
        Sleep(30); // so that the timer is due
        EXPECT_EQ(!onward, line.InitializeTAPI(nullptr));
        EXPECT_FALSE(nested) << "within itself";
        EXPECT_GT(4000u, GetTickCount() - start);
        EXPECT_NEAR(quits ? 0 : 5000, slept, 500);
        slept = 0;
        EXPECT_EQ(onward ? (Boxes{{1, 0x10}}) : Boxes(), TakeBoxes());
        MSG message;
        EXPECT_EQ(quits, PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE);
    }
}

TEST_F(TapiCall, InitializingAgainForgetsWhatIsOpen)
{
    Rule("lineInitialize", TELSIM_FAIL, LINEERR_NODRIVER);
    TestLine failed, line;
    EXPECT_FALSE(failed.InitializeTAPI(nullptr));
    line.m_hLine = line.m_hCall = line.m_hAnswerLine = 5;
    EXPECT_TRUE(line.InitializeTAPI(nullptr));
    EXPECT_EQ(0u, line.m_hLine | line.m_hCall | line.m_hAnswerLine);
    telsim.AddLine();
    PumpAll();
    EXPECT_EQ(3u, line.m_dwNumDevs);
    EXPECT_EQ(0u, failed.m_dwNumDevs) << "is told nothing";
    ASSERT_TRUE(line.GrabThePort());
    line.m_hAnswerLine = 5;
    EXPECT_TRUE(line.InitializeTAPI(nullptr));
    EXPECT_EQ(0u, line.m_hLine | line.m_hCall | line.m_hAnswerLine);
    EXPECT_EQ(1u, telsim.GetCount(TELSIM_LINES)) << "not closed";
    EXPECT_TRUE(line.HangupCall());
    EXPECT_TRUE(line.m_bCallInProgress) << "hanging up without a line does nothing";
    EXPECT_NE(INVALID_HANDLE_VALUE, line.m_hComm);
    line.ShutdownTAPI();
    EXPECT_EQ(INVALID_HANDLE_VALUE, line.m_hComm);
}

TEST_F(TapiCall, AFailureWithoutALineLeavesTheCallInProgress)
{
    TestLine line;
    Rule("lineNegotiateAPIVersion", TELSIM_FAIL, LINEERR_INCOMPATIBLEAPIVERSION);
    EXPECT_FALSE(line.GrabThePort());
    EXPECT_NE(std::string::npos, TakeTexts().find("lineNegotiateAPIVersion, INCOMPATIBLEAPIVERSION.\n"));
    EXPECT_FALSE(line.GrabThePort());
    EXPECT_EQ((Boxes{{3, 0x10}, {2, 0x10}}), TakeBoxes());
    line.ShutdownTAPI();
    Rule("lineOpen", TELSIM_PRETEND);
    EXPECT_FALSE(line.GrabThePort());
    line.ShutdownTAPI();
    ASSERT_TRUE(telsim.ConfigureLine(1, "addressfeatures", "0"));
    EXPECT_FALSE(line.GrabThePort());
    EXPECT_EQ((Boxes{{8, 0x10}, {9, 0x10}}), TakeBoxes());
    EXPECT_NE(std::string::npos, TakeTexts().find("\nThis line is not available to place a call.\n"));
    ASSERT_TRUE(telsim.ConfigureLine(1, "addressfeatures", "makecall"));
    EXPECT_TRUE(line.GrabThePort()) << "with a line it is over";
}

TEST_F(TapiCall, ACallThatIsIdleAlreadyNeedsNoDrop)
{
    TestLine line;
    ASSERT_TRUE(line.GrabThePort());
    // Idle, but nobody has told the program yet.
    ASSERT_TRUE(telsim.ChangeCallState(line.m_hCall, LINECALLSTATE_IDLE, 0, 0));
    EXPECT_TRUE(line.HangupCall());
    EXPECT_EQ(std::string::npos, telsim.Calls().find("lineDrop"));
    ASSERT_TRUE(line.GrabThePort());
    ASSERT_TRUE(telsim.ChangeCallState(line.m_hCall, LINECALLSTATE_IDLE, 0, 0));
    Rule("lineGetCallStatus", TELSIM_PRETEND);
    telsim.ClearTexts();
    EXPECT_TRUE(line.HangupCall());
    EXPECT_EQ(0u, line.m_dwLastError) << "neither reported nor tried again";
    EXPECT_EQ(telsim.Calls().find("lineDrop"), telsim.Calls().rfind("lineDrop"));
    // One that becomes idle only after the drop was refused is waited for. The port is closed before any of it.
    ASSERT_TRUE(line.GrabThePort());
    telsim.SetObserver(&NoteOpenPort, &line);
    Rule("lineDrop", TELSIM_FAIL, LINEERR_INVALCALLSTATE);
    After(20, [&] { telsim.ChangeCallState(line.m_hCall, LINECALLSTATE_IDLE, 0, 0); });
    TakeTexts();
    EXPECT_TRUE(line.HangupCall());
    EXPECT_EQ("Stopping Call in progress\nLine idle\nCall Dropped.\nCall Deallocated.\nLine Closed.\nCall stopped\n",
              TakeTexts());
    EXPECT_EQ(0u, line.m_dwLastError);
    telsim.SetObserver(nullptr, nullptr);
    EXPECT_EQ("", telsim.Misuses());
    // And one that never becomes idle is given up, which the service calls misuse. Shutting down within that is one.
    ASSERT_TRUE(line.GrabThePort());
    Rule("lineDrop", TELSIM_PRETEND);
    fastClock = 1000;
    After(1, [&] { EXPECT_TRUE(line.ShutdownTAPI()); });
    TakeTexts();
    EXPECT_TRUE(line.ShutdownTAPI());
    EXPECT_EQ("Stopping Call in progress\nLINE_REPLY: successfully replied.\nWAITTIMEDOUT\n"
              "Call timed out waiting for IDLE state.\nCall Dropped.\nCall Deallocated.\nLine Closed.\nCall stopped\n"
              "TAPI uninitialized.\n",
              TakeTexts());
    telsim.ClearTexts();
}
