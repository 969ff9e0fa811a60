/// \file
/// Line interfaces on the simulated telephony service, and what they show and tell.
#pragma once

#include "support/test.h"

#include <zogbl/tapi_interface.h>

#include <telsim/client.h>

constexpr char kLibrary[] = "ZOGBLBRX.DLL";

const HWND kNoWindow = reinterpret_cast<HWND>(1);

constexpr LONG Error(DWORD code) { return static_cast<LONG>(code); }

/// A box that was to be shown: code of its text, style.
using Box = std::pair<DWORD, DWORD>;
using Boxes = std::vector<Box>;

/// An interface with everything open to the test, on the device without a port.
class TestLine : public CZoTAPIInterface {
public:
    explicit TestLine(BOOL silent = FALSE) : CZoTAPIInterface(kNoWindow, nullptr, LINEMEDIAMODE_DATAMODEM, silent)
    {
        SetTAPILineDeviceID(1);
    }
    using CZoTAPIInterface::CreateCallParams, CZoTAPIInterface::HandleLineErr,
        CZoTAPIInterface::HandleNoDevicesInstalled, CZoTAPIInterface::lineCallbackFunc,
        CZoTAPIInterface::WaitForCallState, CZoTAPIInterface::WaitForReply, CZoTAPIInterface::ZoCheckAndReAllocBuffer;

    /// Gives the callback an event for this object.
    void Tell(DWORD message, DWORD_PTR first, DWORD_PTR second = 0, DWORD_PTR third = 0, DWORD device = 5)
    {
        lineCallbackFunc(device, message, reinterpret_cast<DWORD_PTR>(this), first, second, third);
    }
    BOOL HangupCall() override
    {
        ++hangups;
        return CZoTAPIInterface::HangupCall();
    }
    void DoLineCallState(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR state, DWORD_PTR mode,
                         DWORD_PTR privilege) override
    {
        CZoTAPIInterface::DoLineCallState(device, message, instance, state, mode, privilege);
        if (onCallState)
            onCallState();
    }

    int hangups = 0;
    std::function<void()> onCallState;
};

/// Watches the library: texts for the debugger, boxes, local blocks, time.
class TapiTest : public testing::Test {
protected:
    TapiTest()
    {
        s_self = this;
        EXPECT_TRUE(telsim.IsLoaded());
    }
    ~TapiTest() override
    {
        Reset();
        EXPECT_EQ(0, m_localBlocks) << "local blocks left";
        s_self = nullptr;
    }

    /// Makes the service as it was at first. Until then nothing was misuse of it.
    void Reset()
    {
        EXPECT_EQ("", telsim.Misuses());
        telsim.Reset();
    }
    /// Calls \p action from the message queue, so that it happens within a wait.
    static void After(UINT milliseconds, std::function<void()> action)
    {
        s_action = std::move(action);
        SetTimer(nullptr, 0, milliseconds, &OnTimer);
    }
    /// Takes messages until no event is on its way.
    void PumpAll()
    {
        MSG message;
        while (telsim.GetCount(TELSIM_EVENTS) != 0) {
            GetMessageA(&message, nullptr, 0, 0);
            DispatchMessageA(&message);
        }
    }
    /// Makes call \p nth of a function behave as \p action says.
    void Rule(const char* function, DWORD action, DWORD value = 0, BOOL onward = FALSE)
    {
        ASSERT_TRUE(telsim.SetRule(function, 1, onward, action, value));
    }
    /// Frees a block that the library made.
    void Free(void* block)
    {
        m_localBlocks -= block != nullptr;
        LocalFree(block);
    }
    void FreeConfig(TestLine& line) { Free(std::exchange(line.m_lpDevConfig, nullptr)); }
    Boxes TakeBoxes() { return std::exchange(boxes, {}); }
    std::string TakeTexts() { return std::exchange(texts, {}); }

    telsim::Client telsim;
    std::string texts; ///< for the debugger
    Boxes boxes;
    int answer = IDCANCEL;       ///< to every box
    std::function<void()> onBox; ///< while it is up
    DWORD fastClock = 0;         ///< milliseconds that each sleep of the library counts as; 0: as long as it takes
    DWORD slept = 0;             ///< milliseconds, by that clock
    int sleeps = 0;
    std::vector<SIZE_T> localSizes; ///< of the local blocks made
    int localBlocks() const { return m_localBlocks; }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD)
    {
        KillTimer(nullptr, timer);
        std::exchange(s_action, nullptr)();
    }
    static void WINAPI NoteText(LPCSTR text) { s_self->texts += text; }
    static int NoteBox(const BoxStub::Told& told)
    {
        DWORD code = 0;
        char expected[512];
        for (DWORD candidate = 1; candidate <= 26 && code == 0; ++candidate) {
            LoadStringA(s_self->m_english, 20553 - candidate, expected, sizeof expected);
            if (expected == told.text)
                code = candidate;
        }
        s_self->boxes.emplace_back(code, told.type);
        if (s_self->onBox)
            s_self->onBox();
        return s_self->answer;
    }
    static HLOCAL WINAPI CountAlloc(UINT flags, SIZE_T size)
    {
        const HLOCAL block = s_self->m_alloc.Original<HLOCAL WINAPI(UINT, SIZE_T)>()(flags, size);
        s_self->m_localBlocks += block != nullptr;
        s_self->localSizes.push_back(size);
        return block;
    }
    static HLOCAL WINAPI CountFree(HLOCAL block)
    {
        s_self->m_localBlocks -= block != nullptr;
        return LocalFree(block);
    }
    static DWORD WINAPI Clock() { return GetTickCount() + s_self->slept; }
    static DWORD WINAPI Sleeping(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds, DWORD mask)
    {
        s_self->slept += milliseconds != 0 ? s_self->fastClock : 0;
        ++s_self->sleeps;
        return MsgWaitForMultipleObjects(count, handles, all, s_self->fastClock != 0 ? 1 : milliseconds, mask);
    }

    static inline TapiTest* s_self = nullptr;
    static inline std::function<void()> s_action;
    HINSTANCE m_english = LoadLibraryA("ZOGBLENU.DLL"); // stays loaded
    const CDynLinkLibrary m_chain{m_english, m_english};
    int m_localBlocks = 0;
    const ImportPatch m_text{kLibrary, "OutputDebugStringA", &NoteText};
    const BoxStub m_box{&NoteBox};
    const ImportPatch m_alloc{kLibrary, "LocalAlloc", &CountAlloc};
    const ImportPatch m_free{kLibrary, "LocalFree", &CountFree};
    const ImportPatch m_clock{kLibrary, "GetTickCount", &Clock};
    const ImportPatch m_sleep{kLibrary, "MsgWaitForMultipleObjects", &Sleeping};
};
