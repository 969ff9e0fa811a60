// The modem's lights: traffic, a port, and what is told of them.
#include "controls/tip_kit.h"

#include <zogbl/modem_lights.h>
#include <zogbl/status.h>
#include <zogbl/trans_bmp.h>

#include <atomic>

namespace {

using Lights = CZoModemLights;

constexpr COLORREF kDark = RGB(96, 0, 0), kLit = RGB(255, 32, 16);

DWORD g_now = 1000000;
UINT g_period = 0;
std::atomic<int> g_asked{0};
std::atomic<DWORD> g_lines{0}, g_error{0}; // the port fails if there is an error
HANDLE g_goOn = nullptr;                   // a question waits for this event, if there is one

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
    SetLastError(g_error);
    return g_error == NO_ERROR && g_lines != 0;
}

class ModemLights : public testing::Test {
protected:
    ModemLights()
    {
        g_period = 0;
        g_lines = 0;
        g_error = NO_ERROR;
        Create();
    }
    void Create()
    {
        EXPECT_TRUE(m_lights.Create(WS_VISIBLE, CRect(0, 0, 300, 50), &m_parent, 5));
        m_lights.UpdateWindow();
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
    for (const HANDLE none : {INVALID_HANDLE_VALUE, HANDLE{}})
        EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_HANDLE), m_lights.Attach(none));
    EXPECT_EQ(0u, g_period);
    g_lines = MS_RLSD_ON;
    ASSERT_EQ(0u, m_lights.Attach(m_port));
    EXPECT_EQ(100u, g_period);
    EXPECT_FALSE(m_lights.SetLight(Lights::kCD, TRUE) || m_lights.SetLight(Lights::kCTS, TRUE));
    EXPECT_TRUE(m_lights.SetLight(Lights::kTR, TRUE));
    for (const DWORD lines : {MS_RLSD_ON, MS_CTS_ON | MS_DSR_ON, MS_RLSD_ON | MS_CTS_ON}) {
        g_lines = lines;
        EXPECT_TRUE(TickUntil([&] {
            return m_lights.IsLit(Lights::kCD) == ((lines & MS_RLSD_ON) != 0) &&
                   m_lights.IsLit(Lights::kCTS) == ((lines & MS_CTS_ON) != 0);
        }));
    }
    Tick(1000); // screen readers are told of both
    Tick(1000);
    const auto askedIn = [&](DWORD each) { // while the timer runs for the traffic, too
        const int before = g_asked;
        for (int i = 0; i < 20; ++i) {
            m_lights.ReportSent();
            Tick(each);
            Sleep(5);
        }
        return g_asked - before;
    };
    EXPECT_LE(askedIn(50), 11) << "each 100 milliseconds";
    m_parent.ShowWindow(SW_HIDE);
    EXPECT_LE(askedIn(100), 1) << "that of the last tick at most";
    Tick();
    EXPECT_EQ(0u, g_period) << "nobody sees them";
    m_parent.ShowWindow(SW_SHOW);
    m_lights.UpdateWindow();
    EXPECT_EQ(100u, g_period);
    m_lights.DestroyWindow();
    Create();
    EXPECT_EQ(100u, g_period) << "in a second window";
    m_lights.Detach();
    Tick(1000);
    Tick(1000);
    EXPECT_EQ(0u, g_period);
    EXPECT_FALSE(m_lights.IsLit(Lights::kCD) || m_lights.IsLit(Lights::kCTS));
    EXPECT_TRUE(m_lights.IsLit(Lights::kTR));
    EXPECT_EQ("", m_parent.Told());
}

TEST_F(ModemLights, LetAPortGoThatFailsOrBlocks)
{
    const auto expectLetGo = [&](DWORD status) {
        EXPECT_TRUE(TickUntil([&] { return !m_lights.IsAttached(); }));
        EXPECT_EQ("detached " + std::to_string(status), m_parent.Told());
        EXPECT_EQ(status, m_lights.GetDetachStatus());
        EXPECT_FALSE(m_lights.IsLit(Lights::kCD));
    };
    const HANDLE closed = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    CloseHandle(closed);
    m_lights.Attach(closed);
    expectLetGo(ERROR_INVALID_HANDLE);

    const ImportPatch ask(kZogbl, "GetCommModemStatus", &AskPort);
    const auto before = ProcessCounts::Take();
    constexpr int kRounds = 3;
    for (int round = 0; round < kRounds; ++round) {
        if (round > 0)
            Create();
        g_lines = 0;
        for (const DWORD error : {ERROR_DEVICE_NOT_CONNECTED, NO_ERROR}) {
            g_error = error;
            m_lights.Attach(m_port);
            expectLetGo(error != 0 ? error : ERROR_GEN_FAILURE);
        }
        g_error = NO_ERROR;
        g_lines = MS_RLSD_ON;
        g_goOn = CreateEventA(nullptr, TRUE, FALSE, nullptr);
        ASSERT_EQ(0u, m_lights.Attach(m_port));
        EXPECT_EQ(0u, m_lights.GetDetachStatus());
        for (const bool isAnswered : {true, false}) {
            for (int i = 0; i < Lights::kPatience; ++i) { // the first of them asks
                EXPECT_TRUE(m_lights.IsAttached()) << i;
                Tick();
            }
            if (isAnswered) {
                SetEvent(g_goOn);
                Sleep(20);
                EXPECT_TRUE(TickUntil([&] { return m_lights.IsLit(Lights::kCD); }));
                Sleep(20); // the next one is answered
                ResetEvent(g_goOn);
            }
        }
        expectLetGo(ERROR_TIMEOUT);
        ASSERT_EQ(0u, m_lights.Attach(m_port));
        Tick();
        Tick();
        EXPECT_TRUE(m_lights.IsAttached()) << "as patient as before";
        m_lights.Detach();
        SetEvent(g_goOn);
        g_error = ERROR_DEVICE_NOT_CONNECTED;
        m_parent.m_describe = [&](NMHDR&, LRESULT&) { return m_lights.DestroyWindow(), "destroyed"; };
        for (int i = 0; i < 2; ++i) // the second ends the first
            ASSERT_EQ(0u, m_lights.Attach(m_port));
        EXPECT_TRUE(TickUntil([&] { return m_lights.m_hWnd == nullptr; }));
        EXPECT_EQ("destroyed", m_parent.Told());
        CloseHandle(std::exchange(g_goOn, nullptr));
    }
    EXPECT_TRUE(WaitUntil([&] { // the threads end; one did behind the first count, and a lock may have got its event
        const ProcessCounts after = ProcessCounts::Take();
        return after.blocks <= before.blocks && after.gdi == before.gdi && after.handles < before.handles + kRounds;
    }));
}

TEST_F(ModemLights, AreToldToScreenReadersAtMostTwiceASecond)
{
    const Reader reader(m_lights);
    EXPECT_EQ("CD, carrier", reader.Name(2));
    EXPECT_EQ(ROLE_SYSTEM_INDICATOR, reader.Role(2));
    EXPECT_EQ(2, reader.At(reader.Area(2).CenterPoint()));
    m_lights.SetLight(Lights::kCD, TRUE);
    m_lights.EnableWindow(FALSE);
    EXPECT_EQ(STATE_SYSTEM_READONLY | STATE_SYSTEM_CHECKED | STATE_SYSTEM_UNAVAILABLE, reader.State(2));
    m_lights.EnableWindow(TRUE);
    EXPECT_EQ(STATE_SYSTEM_READONLY, reader.State(1));
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
    const auto toldLater = [&] {
        for (int i = 0; i < 40; ++i)
            Tick(50);
        std::map<LONG, int> told;
        for (const auto& [event, part] : Events::Heard())
            told[part] += event == EVENT_OBJECT_STATECHANGE;
        return told;
    };
    auto told = toldLater();
    EXPECT_EQ(0u, g_period) << "all is told";
    EXPECT_LE(told[1] + told[8], 8);
    EXPECT_EQ(1, told[8] % 2) << "the last state";
    EXPECT_EQ(0, told[1] % 2);
    EXPECT_EQ(0, told[4] + told[5]);
    g_now += 2000;
    m_lights.SetLight(Lights::kOH, TRUE);
    EXPECT_EQ(1, Events::Count(EVENT_OBJECT_STATECHANGE)) << "at once";
    m_lights.SetLight(Lights::kHS, FALSE); // waits for its turn
    EXPECT_EQ(1, toldLater()[8]);
    m_lights.SetLight(Lights::kFree, TRUE);
    EXPECT_EQ(0u, g_period) << "it is not shown";
    Lights early;
    early.SetLight(Lights::kOH, TRUE);
    ASSERT_TRUE(early.Create(WS_VISIBLE, CRect(0, 60, 300, 100), &m_parent, 6));
    early.UpdateWindow();
    EXPECT_EQ(0u, g_period) << "nobody has seen it dark";
}

TEST_F(ModemLights, ShowWhatTheProgramChooses)
{
    using Row = std::vector<Lights::Light>;
    const auto show = [&](const Row& lights) {
        return m_lights.ShowLights(lights.data(), static_cast<int>(lights.size()));
    };
    const auto own = static_cast<Lights::Light>(Lights::kFree + 1);
    const Events events(m_lights);
    EXPECT_FALSE(m_lights.SetLightTexts(own, "0123456789ABCDEF", "") || m_lights.SetLightTexts(own, nullptr, "") ||
                 m_lights.SetLightTexts(static_cast<Lights::Light>(16), "", ""));
    EXPECT_TRUE(show({Lights::kCD, own}));
    EXPECT_FALSE(show({Lights::kCD, Lights::kCD}) || show({static_cast<Lights::Light>(-1)}) ||
                 m_lights.ShowLights(nullptr, 0));
    const int narrow = Cell(1).Width();
    EXPECT_TRUE(m_lights.SetLightTexts(own, "0123456789ABCDE", "auto answer"));
    EXPECT_GT(Cell(1).Width(), 2 * narrow);
    EXPECT_EQ((std::vector<std::pair<DWORD, LONG>>{{EVENT_OBJECT_NAMECHANGE, 2}}), Events::Heard());
    EXPECT_TRUE(m_lights.SetLightTexts(own, "AA", "auto answer"));
    ZoPart none;
    EXPECT_FALSE(m_lights.DescribePart(3, none) || m_lights.SetLight(static_cast<Lights::Light>(16), TRUE));
    EXPECT_EQ(m_lights.GetBestSize().cx, 2 * Cell(1).Width());
    EXPECT_EQ("AA, auto answer", TipOver(m_lights, Cell(2).CenterPoint()));
    ::SetCursorPos(0, 0);
    EXPECT_EQ(kDark, ColorOf(2));
    m_lights.SetLight(own, TRUE);
    EXPECT_EQ(kDark, ColorOf(1));
    EXPECT_EQ(kLit, ColorOf(2));
    const int inside = PictureOf(m_lights)->Count(kLit, {0, 0, 300, 50});
    const auto enabled = PictureOf(m_lights);
    m_lights.EnableWindow(FALSE);
    EXPECT_FALSE(AreEqual(*enabled, *PictureOf(m_lights)));
    m_lights.EnableWindow(TRUE);
    CFont large;
    large.CreatePointFont(200, "Arial");
    m_lights.SetFont(&large);
    EXPECT_GT(PictureOf(m_lights)->Count(kLit, {0, 0, 300, 50}), 2 * inside);
    m_lights.MoveWindow(0, 0, 40, 50);
    EXPECT_EQ(CRect(20, 0, 40, 0), CRect(Cell(2).left, 0, Cell(2).right, 0)) << "each has its share";

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

TEST_F(ModemLights, SurviveFaultsOfAttaching)
{
    m_lights.MoveWindow(0, 200, 300, 50); // away from the mouse, which may still be told of: no tip is made
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
        ScreenOf(m_lights);
    };
    RunFaultLoop<AllocationFaults>(body);
    FaultSource threads("threads");
    ZO_FAULTY_CALL(CreateThread) thread(threads, kZogbl, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    ZO_FAULTY_CALL(CreateEventA) event(threads, kZogbl, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    RunFaultLoop(threads, body);
}

TEST_F(ModemLights, KeepTheirPicturesIfTheyAreMirrored)
{
    const auto shine = [](Lights& lights) { // of a lit one, in its left and right half
        const auto screen = ScreenOf(lights);
        const int middle = lights.GetBestSize().cx / 2;
        constexpr COLORREF kShine = RGB(255, 208, 192);
        return std::pair(screen->Count(kShine, {0, 0, middle, 50}), screen->Count(kShine, {middle, 0, 300, 50}));
    };
    const Lights::Light one[] = {Lights::kTR};
    m_parent.ModifyStyleEx(0, WS_EX_LAYOUTRTL);
    Lights mirrored;
    ASSERT_TRUE(mirrored.Create(WS_VISIBLE, CRect(0, 50, 300, 100), &m_parent, 6));
    for (Lights* lights : {&m_lights, &mirrored}) {
        lights->ShowLights(one, 1);
        lights->SetLight(Lights::kTR, TRUE);
    }
    const auto [left, right] = shine(m_lights);
    EXPECT_GT(left, right);
    EXPECT_LT(shine(mirrored).first, shine(mirrored).second) << "its context is mirrored, the canvas is not";
}
