// The modem's lights: traffic, a port, and what is told of them.
#include "controls/control_kit.h"

#include <zogbl/modem_lights.h>
#include <zogbl/status.h>
#include <zogbl/trans_bmp.h>

#include <atomic>

namespace {

using Lights = CZoModemLights;

DWORD g_now = 1000000;
UINT g_period = 0;
std::atomic<int> g_asked{0};
std::atomic<DWORD> g_lines{0};
HANDLE g_goOn = nullptr; // a question waits for this event, if there is one

DWORD WINAPI Now() { return g_now; }
UINT_PTR WINAPI StartTimer(HWND, UINT_PTR timer, UINT period, TIMERPROC)
{
    g_period = period;
    return timer;
}
BOOL WINAPI StopTimer(HWND, UINT_PTR)
{
    g_period = 0;
    return TRUE;
}
BOOL WINAPI AskPort(HANDLE, DWORD* lines)
{
    ++g_asked;
    if (g_goOn != nullptr)
        WaitForSingleObject(g_goOn, INFINITE);
    *lines = g_lines;
    SetLastError(ERROR_DEVICE_NOT_CONNECTED);
    return g_lines != 0xFFFFFFFF;
}

class ModemLights : public testing::Test {
protected:
    ModemLights()
    {
        EXPECT_TRUE(m_lights.Create(WS_VISIBLE, CRect(0, 0, 300, 50), &m_parent, 5));
        m_lights.UpdateWindow();
        g_period = 0;
        g_lines = 0;
        m_parent.m_describe = [](NMHDR& header, LRESULT&) {
            return header.code != ZON_LIGHTS_DETACHED
                       ? ""
                       : "detached " + std::to_string(reinterpret_cast<ZoLightsDetached&>(header).status);
        };
    }
    void Tick(DWORD after = Lights::kAskEach)
    {
        g_now += after;
        if (g_period != 0)
            m_lights.SendMessage(WM_TIMER, 1);
    }
    /// Lets time pass until something is so.
    bool TickUntil(const std::function<bool()>& isSo)
    {
        return WaitUntil([&] {
            Tick();
            return isSo();
        });
    }
    COLORREF ColorOf(int part)
    {
        const CRect cell = Cell(part);
        return PictureOf(m_lights)->At(cell.CenterPoint().x, cell.top + 8);
    }
    CRect Cell(int part)
    {
        ZoPart description;
        EXPECT_TRUE(m_lights.DescribePart(part, description));
        return description.area;
    }

    const ImportPatch m_clock{kZogbl, "GetTickCount", &Now};
    const ImportPatch m_start{kZogbl, "SetTimer", &StartTimer};
    const ImportPatch m_stop{kZogbl, "KillTimer", &StopTimer};
    const HANDLE m_port = reinterpret_cast<HANDLE>(4);
    const HMODULE m_texts = LoadLibraryA("ZOGBLENU.DLL"); // stays loaded
    CDynLinkLibrary m_chain{m_texts, m_texts};
    ControlParent m_parent;
    Lights m_lights;
};

} // namespace

TEST_F(ModemLights, FlashForAtLeastSixtyMilliseconds)
{
    const auto lit = [&](DWORD after) {
        Tick(after);
        return std::string(m_lights.IsLit(Lights::kRD) ? "RD " : "") + (m_lights.IsLit(Lights::kSD) ? "SD " : "") +
               std::to_string(g_period);
    };
    for (const DWORD start : {1000000UL, 0xFFFFFFF0UL}) { // the counter begins anew meanwhile
        g_now = start;
        EXPECT_EQ("0", lit(0));
        m_lights.ReportReceived();
        EXPECT_EQ("RD 60", lit(59));
        m_lights.ReportReceived();
        m_lights.ReportSent();
        EXPECT_EQ("RD SD 60", lit(59));
        EXPECT_EQ("0", lit(1)) << "nothing is lit or attached";
    }
}

TEST_F(ModemLights, FollowAPortWhileTheyAreSeen)
{
    const ImportPatch ask(kZogbl, "GetCommModemStatus", &AskPort);
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_HANDLE), m_lights.Attach(INVALID_HANDLE_VALUE));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_HANDLE), m_lights.Attach(nullptr));
    EXPECT_EQ(0u, g_period);
    ASSERT_EQ(0u, m_lights.Attach(m_port));
    EXPECT_EQ(100u, g_period);
    EXPECT_FALSE(m_lights.SetLight(Lights::kCD, TRUE) || m_lights.SetLight(Lights::kCTS, TRUE));
    EXPECT_TRUE(m_lights.SetLight(Lights::kTR, TRUE));
    const struct {
        DWORD lines;
        BOOL carrier, clear;
    } kRows[] = {{MS_RLSD_ON, TRUE, FALSE}, {MS_CTS_ON | MS_DSR_ON, FALSE, TRUE}, {MS_RLSD_ON | MS_CTS_ON, TRUE, TRUE}};
    for (const auto& row : kRows) {
        g_lines = row.lines;
        EXPECT_TRUE(TickUntil(
            [&] { return m_lights.IsLit(Lights::kCD) == row.carrier && m_lights.IsLit(Lights::kCTS) == row.clear; }));
    }
    Tick(1000); // screen readers are told of both
    Tick(1000);
    m_parent.ShowWindow(SW_HIDE);
    const int asked = g_asked;
    for (int i = 0; i < 10; ++i) {
        m_lights.ReportSent(); // the timer runs for it
        Tick();
        Sleep(5);
    }
    EXPECT_EQ(0u, g_period) << "nobody sees them";
    EXPECT_LE(g_asked, asked + 1) << "that of the last tick at most";
    m_parent.ShowWindow(SW_SHOW);
    m_lights.UpdateWindow();
    EXPECT_EQ(100u, g_period);
    m_lights.Detach();
    EXPECT_FALSE(m_lights.IsLit(Lights::kCD) || m_lights.IsLit(Lights::kCTS));
    EXPECT_TRUE(m_lights.IsLit(Lights::kTR));
    EXPECT_EQ("", m_parent.Told());
    EXPECT_EQ(0u, m_lights.GetDetachStatus());
}

TEST_F(ModemLights, LetAPortGoThatFailsOrBlocks)
{
    const auto attach = [&](HANDLE port) {
        ASSERT_EQ(0u, m_lights.Attach(port));
        EXPECT_TRUE(TickUntil([&] { return !m_lights.IsAttached(); }));
        EXPECT_EQ("detached " + std::to_string(m_lights.GetDetachStatus()), m_parent.Told());
        EXPECT_FALSE(m_lights.IsLit(Lights::kCD));
    };
    const HANDLE closed = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    CloseHandle(closed);
    attach(closed);
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_HANDLE), m_lights.GetDetachStatus());

    const ImportPatch ask(kZogbl, "GetCommModemStatus", &AskPort);
    const ProcessCounts before = ProcessCounts::Take();
    g_lines = 0xFFFFFFFF;
    attach(m_port);
    EXPECT_EQ(static_cast<DWORD>(ERROR_DEVICE_NOT_CONNECTED), m_lights.GetDetachStatus());
    g_lines = MS_RLSD_ON;
    g_goOn = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    ASSERT_EQ(0u, m_lights.Attach(m_port));
    for (int i = 0; i <= Lights::kPatience; ++i) {
        EXPECT_TRUE(m_lights.IsAttached()) << i;
        Tick();
    }
    EXPECT_EQ("detached " + std::to_string(ERROR_TIMEOUT), m_parent.Told());
    SetEvent(g_goOn);
    m_parent.m_describe = [&](NMHDR&, LRESULT&) {
        m_lights.DestroyWindow();
        return "destroyed";
    };
    g_lines = 0xFFFFFFFF;
    ASSERT_EQ(0u, m_lights.Attach(m_port));
    EXPECT_TRUE(TickUntil([&] { return m_lights.m_hWnd == nullptr; }));
    EXPECT_EQ("destroyed", m_parent.Told());
    CloseHandle(std::exchange(g_goOn, nullptr));
    EXPECT_TRUE(WaitUntil([&] { return before == ProcessCounts::Take(); })) << "the threads have ended";
}

TEST_F(ModemLights, AreToldToScreenReadersAtMostTwiceASecond)
{
    const Reader reader(m_lights);
    EXPECT_EQ(8, reader.Count());
    EXPECT_EQ("CD, carrier", reader.Name(2));
    EXPECT_EQ(ROLE_SYSTEM_INDICATOR, reader.Role(2));
    EXPECT_EQ(STATE_SYSTEM_READONLY, reader.State(2));
    EXPECT_EQ(2, reader.At(reader.Area(2).CenterPoint()));
    m_lights.SetLight(Lights::kCD, TRUE);
    EXPECT_EQ(STATE_SYSTEM_READONLY | STATE_SYSTEM_CHECKED, reader.State(2));
    Tick(2000);
    const Events events(m_lights);
    for (int i = 0; i < 100; ++i) { // two seconds
        m_lights.SetLight(Lights::kOH, i % 2 == 0);
        m_lights.SetLight(Lights::kHS, i % 2 == 0);
        m_lights.SetLight(Lights::kSD, i % 2 == 0);
        m_lights.ReportReceived();
        m_lights.ReportSent();
        Tick(20);
    }
    m_lights.SetLight(Lights::kHS, TRUE);
    for (int i = 0; i < 40; ++i)
        Tick(50);
    EXPECT_EQ(0u, g_period) << "all is told";
    std::map<LONG, int> told;
    for (const auto& [event, part] : Events::Heard())
        told[part] += event == EVENT_OBJECT_STATECHANGE;
    EXPECT_LE(told[1] + told[8], 8);
    EXPECT_EQ(1, told[8] % 2) << "the last state";
    EXPECT_EQ(0, told[1] % 2);
    EXPECT_EQ(0, told[4] + told[5]);
    g_now += 2000;
    m_lights.SetLight(Lights::kOH, TRUE);
    m_lights.SetLight(Lights::kHS, FALSE); // waits for its turn
    for (int i = 0; i < 40; ++i)
        Tick(50);
    EXPECT_EQ(2, Events::Count(EVENT_OBJECT_STATECHANGE));
}

TEST_F(ModemLights, ShowWhatTheProgramChooses)
{
    using Row = std::vector<Lights::Light>;
    const auto show = [&](const Row& lights) {
        return m_lights.ShowLights(lights.data(), static_cast<int>(lights.size()));
    };
    const auto own = static_cast<Lights::Light>(Lights::kFree + 1);
    EXPECT_TRUE(m_lights.SetLightTexts(own, "AA", "auto answer"));
    EXPECT_FALSE(m_lights.SetLightTexts(own, "0123456789ABCDEF", "") || m_lights.SetLightTexts(own, nullptr, "") ||
                 m_lights.SetLightTexts(static_cast<Lights::Light>(16), "", ""));
    EXPECT_TRUE(show({Lights::kCD, own}));
    EXPECT_FALSE(show({Lights::kCD, Lights::kCD}) || show({static_cast<Lights::Light>(-1)}) ||
                 m_lights.ShowLights(nullptr, 0));
    EXPECT_EQ(2, m_lights.GetPartCount());
    EXPECT_EQ("AA, auto answer", Reader(m_lights).Name(2));
    EXPECT_EQ(m_lights.GetBestSize().cx, 2 * Cell(1).Width());
    EXPECT_EQ(RGB(96, 0, 0), ColorOf(2));
    m_lights.SetLight(own, TRUE);
    EXPECT_EQ(RGB(96, 0, 0), ColorOf(1));
    EXPECT_EQ(RGB(255, 32, 16), ColorOf(2));

    CZoTransBmp pictures(2, 2), wrong(3, 1);
    for (CZoTransBmp* each : {&pictures, &wrong}) {
        Canvas canvas(12, 12, RGB(0, 0, 255));
        const RECT lit = {6, 6, 12, 12};
        FillRect(canvas, &lit, GetSysColorBrush(COLOR_WINDOWTEXT));
        each->Attach(CopyImage(GetCurrentObject(canvas, OBJ_BITMAP), IMAGE_BITMAP, 0, 0, 0));
        each->SetTransparentColor(RGB(1, 1, 1));
    }
    EXPECT_FALSE(m_lights.SetPictures(&wrong));
    EXPECT_TRUE(m_lights.SetPictures(&pictures));
    EXPECT_EQ(RGB(0, 0, 255), PictureOf(m_lights)->At(Cell(1).CenterPoint().x, Cell(1).top + 3));
    EXPECT_EQ(GetSysColor(COLOR_WINDOWTEXT), PictureOf(m_lights)->At(Cell(2).CenterPoint().x, Cell(2).top + 3));
    m_lights.SetPictures(nullptr);
}

TEST_F(ModemLights, SurviveFaults)
{
    m_lights.SetLight(Lights::kTR, TRUE);
    EXPECT_FALSE(m_lights.SetLight(static_cast<Lights::Light>(99), TRUE));
    const auto whole = ScreenOf(m_lights);
    const auto body = [&](const FaultRun& run) {
        m_lights.SendMessage(WM_SYSCOLORCHANGE); // its pictures are made anew
        ScreenOf(m_lights);
        const ProcessCounts counts = ProcessCounts::Take();
        const DWORD status = m_lights.Attach(m_port);
        run.Stop();
        EXPECT_EQ(status == 0, m_lights.IsAttached() != FALSE);
        m_lights.Detach();
        EXPECT_TRUE(WaitUntil([&] { return counts == ProcessCounts::Take(); })) << "its thread ends";
        m_lights.Invalidate();
        EXPECT_TRUE(AreEqual(*whole, *ScreenOf(m_lights))) << "the next drawing is right";
    };
    RunFaultLoop<DrawingFaults>(body);
    RunFaultLoop<AllocationFaults>(body);
    FaultSource threads("threads");
    ZO_FAULTY_CALL(CreateThread) thread(threads, kZogbl, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    ZO_FAULTY_CALL(CreateEventA) event(threads, kZogbl, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    RunFaultLoop(threads, body);
}

TEST_F(ModemLights, KeepTheirPicturesIfTheyAreMirrored)
{
    m_parent.ModifyStyleEx(0, WS_EX_LAYOUTRTL);
    Lights lights;
    ASSERT_TRUE(lights.Create(WS_VISIBLE, CRect(0, 50, 300, 100), &m_parent, 6));
    lights.SetLight(Lights::kTR, TRUE);
    const auto screen = ScreenOf(lights);
    const int lit = screen->Count(RGB(255, 32, 16), {0, 0, 300, 50});
    EXPECT_GT(lit, 20);
    EXPECT_GT(screen->Count(RGB(96, 0, 0), {0, 0, 300, 50}), 5 * lit) << "seven of eight";
}
