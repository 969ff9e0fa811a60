// The progress bar: against the system's own, pixel by pixel, and as a screen reader hears it.
#include "controls/control_kit.h"

#include <zogbl/progress_bar.h>

#include <commctrl.h>

#include <random>

namespace {

constexpr COLORREF kBar = RGB(0, 0, 200), kOnBar = RGB(255, 255, 0), kGround = RGB(180, 180, 180),
                   kOnGround = RGB(10, 60, 10);
using TextMode = CZoProgressBar::TextMode;
using State = CZoProgressBar::State;

class ProgressBar : public testing::Test {
protected:
    void Make(DWORD style, int width = 102, int height = 22)
    {
        ASSERT_TRUE(m_bar.Create(style | WS_VISIBLE, CRect(0, 0, width, height), &m_parent, 5));
        ASSERT_EQ(CSize(width - 2, height - 2), PictureOf(m_bar)->Size()) << "the edge";
    }
    /// How far the bar reaches in the picture, as "from-to".
    std::string Filled(bool isVertical = false)
    {
        const auto picture = PictureOf(m_bar);
        const CSize size = picture->Size();
        const int length = isVertical ? size.cy : size.cx;
        int from = -1, to = -1;
        for (int i = 0; i < length; ++i) {
            if ((isVertical ? picture->At(3, size.cy - 1 - i) : picture->At(i, 3)) == kGround)
                continue;
            from = from < 0 ? i : from;
            to = i + 1;
        }
        return std::to_string(from) + "-" + std::to_string(to);
    }

    /// Puts the bar over a window of a template.
    void PutOver()
    {
        CStatic window;
        ASSERT_TRUE(window.Create("", WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 20), &m_parent, 5));
        window.Detach();
        ASSERT_TRUE(m_bar.SubclassDlgItem(5, &m_parent));
    }
    int Number(int least, int most) { return least + static_cast<int>(m_random() % unsigned(most - least + 1)); }

    std::mt19937 m_random{7};
    const Scheme m_scheme{{COLOR_HIGHLIGHT, kBar},
                          {COLOR_HIGHLIGHTTEXT, kOnBar},
                          {COLOR_3DFACE, kGround},
                          {COLOR_BTNTEXT, kOnGround},
                          {COLOR_GRAYTEXT, RGB(90, 90, 90)}};
    const HINSTANCE m_texts = LoadLibraryA("ZOGBLENU.DLL"); // stays loaded
    const CDynLinkLibrary m_chain{m_texts, m_texts};
    ControlParent m_parent;
    CZoProgressBar m_bar;
};

/// The clock of the library, which a test sets.
DWORD g_now = 100000;
DWORD WINAPI Now() { return g_now; }

bool g_hasTimer = false;
UINT_PTR WINAPI CountSetTimer(HWND window, UINT_PTR id, UINT each, TIMERPROC procedure)
{
    g_hasTimer = true;
    return ::SetTimer(window, id, each, procedure);
}
BOOL WINAPI CountKillTimer(HWND window, UINT_PTR id)
{
    g_hasTimer = false;
    return ::KillTimer(window, id);
}

} // namespace

TEST_F(ProgressBar, CountsAsTheSystems)
{
    CWnd system;
    ASSERT_TRUE(system.Create(PROGRESS_CLASSA, "", WS_CHILD | PBS_SMOOTH, CRect(0, 0, 9, 9), &m_parent, 6));
    const auto ask = [&](UINT message, int value = 0) { // it answers 32 bits
        return static_cast<int>(system.SendMessage(message, static_cast<WPARAM>(value)));
    };
    const struct {
        UINT message;
        int least, most;
        std::function<LONGLONG(int)> act; // the same of ours
    } kActs[] = {{PBM_SETSTEP, -10, 49, [&](int step) { return m_bar.SetStep(step); }},
                 {PBM_STEPIT, 0, 0, [&](int) { return m_bar.StepIt(); }},
                 {PBM_DELTAPOS, -100, 99, [&](int by) { return m_bar.OffsetPosition(by); }},
                 {PBM_SETPOS, -300, 399, [&](int position) { return m_bar.SetPosition(position); }}};
    Make(CZoProgressBar::kSmooth);
    for (int i = 0; i < 10000; ++i) {
        if (i % 12 == 0) {
            // Ours begins anew with a range; the system's keeps its position. A range of no length is refused by ours.
            const int lower = Number(-100, 99), upper = lower + Number(1, 300);
            ASSERT_TRUE(m_bar.SetRange(lower, upper));
            system.SendMessage(PBM_SETRANGE32, static_cast<WPARAM>(lower), upper);
            system.SendMessage(PBM_SETPOS, static_cast<WPARAM>(lower));
        }
        const auto& act = kActs[Number(0, 3)];
        const int value = Number(act.least, act.most);
        ASSERT_EQ(ask(act.message, value), act.act(value)) << i;
        ASSERT_EQ(ask(PBM_GETPOS), m_bar.GetPosition()) << i;
    }
}

TEST_F(ProgressBar, HasNumbersOf64Bits)
{
    const struct {
        LONGLONG lower, upper, position;
        int percent;
    } kRows[] = {{0, 100, 57, 57},
                 {0, 100, 100, 100},
                 {0, MAXLONGLONG, MAXLONGLONG - 1, 99},
                 {0, MAXLONGLONG, MAXLONGLONG / 2, 49},
                 {-MAXLONGLONG - 1, MAXLONGLONG, 0, 50},
                 {-MAXLONGLONG - 1, MAXLONGLONG, MAXLONGLONG, 100},
                 {-5, -4, -5, 0},
                 {0, 1000000007, 999999999, 99}};
    Make(CZoProgressBar::kSmooth);
    for (const auto& row : kRows) {
        EXPECT_TRUE(m_bar.SetRange(row.lower, row.upper));
        EXPECT_EQ(row.lower, m_bar.SetPosition(row.position));
        EXPECT_EQ(row.percent, m_bar.GetPercent()) << row.position;
        EXPECT_EQ(row.position, m_bar.GetPosition());
        m_bar.OffsetPosition(MAXLONGLONG);
        m_bar.OffsetPosition(MAXLONGLONG);
        EXPECT_EQ(row.upper, m_bar.GetPosition());
        m_bar.OffsetPosition(-MAXLONGLONG - 1);
        EXPECT_EQ(row.upper < 0 ? row.lower : (std::max)(row.lower, row.upper - MAXLONGLONG - 1), m_bar.GetPosition());
    }
    EXPECT_FALSE(m_bar.SetRange(5, 5) || m_bar.SetRange(6, 5));
    EXPECT_EQ(1000000007, m_bar.GetUpper());
}

TEST_F(ProgressBar, FillsTheSharePixelByPixel)
{
    Make(CZoProgressBar::kSmooth);
    m_bar.SetRange(0, 1000);
    for (int width = 3; width < 200; width += 7) { // each size, many positions: what is drawn is the share
        m_bar.MoveWindow(0, 0, width + 2, 22);
        for (int position = 0; position <= 1000; position += width / 10 + 4) {
            m_bar.SetPosition(position);
            ASSERT_EQ(position * width / 1000, width - PictureOf(m_bar)->Count(kGround, {0, 3, width, 4})) << width;
        }
    }
    m_bar.DestroyWindow();
    Make(CZoProgressBar::kSmooth | CZoProgressBar::kVertical, 22, 102);
    m_bar.SetPosition(400);
    EXPECT_EQ("0-40", Filled(true)) << "from the bottom";
    m_bar.DestroyWindow();
    Make(0);
    m_bar.SetPosition(990);
    EXPECT_EQ("0-88", Filled()) << "six whole blocks of 13 and a gap of 2 behind each but the last";
    EXPECT_EQ(kGround, PictureOf(m_bar)->At(14, 3));
    m_bar.SetTextMode(TextMode::kWindow);
    m_bar.SetWindowText(" ");
    EXPECT_EQ("0-99", Filled()) << "one piece under a text";
    EXPECT_EQ(kBar, PictureOf(m_bar)->At(14, 3));
    m_bar.SetTextMode(TextMode::kNone);
    m_bar.SetPosition(1000);
    EXPECT_EQ("0-100", Filled()) << "the end is the end";
    m_bar.DestroyWindow();
    PutOver();
    m_bar.SetPosition(500);
    EXPECT_EQ("0-43", Filled()) << "three blocks";
}

TEST_F(ProgressBar, PaintsAsTheSystems)
{
    using SetTheme = HRESULT(WINAPI*)(HWND, LPCWSTR, LPCWSTR);
    const auto setTheme = reinterpret_cast<SetTheme>(
        reinterpret_cast<void*>(::GetProcAddress(::LoadLibraryA("uxtheme.dll"), "SetWindowTheme")));
    for (int i = 0; i < 1000; ++i) {
        const DWORD style = (i % 2 != 0 ? PBS_SMOOTH : 0) | (i % 4 < 2 ? PBS_VERTICAL : 0);
        const bool isVertical = (style & PBS_VERTICAL) != 0;
        const CSize size(Number(10, 200), Number(10, 90));
        const int position = Number(0, 100);
        CWnd system; // without a theme; it leaves a pixel on each side
        ASSERT_TRUE(system.Create(PROGRESS_CLASSA, "", WS_CHILD | WS_VISIBLE | style, CRect(), &m_parent, 6));
        setTheme(system, L" ", L" ");
        system.MoveWindow(0, 100, size.cx + 4, size.cy + 4);
        system.SendMessage(PBM_SETPOS, static_cast<WPARAM>(position));
        Make(style, size.cx + 2, size.cy + 2);
        m_bar.SetPosition(position);
        const auto ours = PictureOf(m_bar), theirs = ScreenOf(system);
        ASSERT_EQ(size + CSize(2, 2), theirs->Size());
        const CRect line = isVertical ? CRect(3, 0, 4, size.cy) : CRect(0, 3, size.cx, 4);
        const int less = theirs->Count(kBar, line + CPoint(1, 1)) - ours->Count(kBar, line);
        // The system's rounds up: to the nearest pixel, or to a block that was only begun. Ours shows what is done.
        const int most = (style & PBS_SMOOTH) != 0 ? 1 : ::MulDiv((isVertical ? size.cx : size.cy) + 2, 2, 3);
        ASSERT_TRUE(less >= 0 && less <= most) << i << ": " << less;
        m_bar.DestroyWindow();
    }
}

TEST_F(ProgressBar, DrawsOnlyWhatChanges)
{
    const ImportPatch clock(kZogbl, "GetTickCount", &Now);
    Make(CZoProgressBar::kSmooth);
    const auto dirty = [this](int position) {
        m_bar.UpdateWindow();
        m_bar.SetPosition(position);
        CRect area;
        ::GetUpdateRect(m_bar, &area, FALSE);
        return area;
    };
    EXPECT_EQ(CRect(0, 0, 10, 20), dirty(10));
    EXPECT_EQ(CRect(10, 0, 12, 20), dirty(12));
    EXPECT_EQ(CRect(5, 0, 12, 20), dirty(5));
    EXPECT_EQ(CRect(), dirty(5));
    for (const DWORD style : {DWORD{CZoProgressBar::kSmooth}, DWORD{0}, DWORD{CZoProgressBar::kVertical}}) {
        m_bar.DestroyWindow();
        Make(style, 95, 42);
        m_bar.SetUnknown(FALSE);
        for (int i = 0; i < 400; ++i) {
            g_now += 2000;
            if (i % 50 == 0)
                m_bar.SetState(static_cast<State>(i / 50 % 3));
            if (i % 50 == 20)
                m_bar.SetUnknown(i % 100 == 20);
            if (i % 100 == 0)
                m_bar.SetTextMode(static_cast<TextMode>(i / 100));
            m_bar.SetPosition(Number(0, 100));
            m_bar.SendMessage(WM_TIMER, 1);
            ASSERT_TRUE(AreEqual(*ScreenOf(m_bar), *PictureOf(m_bar))) << i;
        }
    }
}

TEST_F(ProgressBar, ShowsItsTextInBothColours)
{
    PlainFont font;
    Make(CZoProgressBar::kSmooth);
    m_bar.SetFont(&font);
    m_bar.SetPosition(50);
    m_bar.SetTextMode(TextMode::kWindow);
    m_bar.SetWindowText("MMMMMMMM");
    auto picture = PictureOf(m_bar);
    EXPECT_GT(picture->Count(kOnBar, {0, 0, 50, 20}), 20);
    EXPECT_EQ(0, picture->Count(kOnBar, {50, 0, 100, 20}));
    EXPECT_GT(picture->Count(kOnGround, {50, 0, 100, 20}), 20);
    EXPECT_EQ(0, picture->Count(kOnGround, {0, 0, 50, 20}));
    m_bar.EnableWindow(FALSE);
    EXPECT_EQ(0, PictureOf(m_bar)->Count(kOnGround, {50, 0, 100, 20}));
    m_bar.EnableWindow(TRUE);
    m_bar.SetState(State::kFailed);
    EXPECT_EQ(RGB(192, 0, 0), PictureOf(m_bar)->At(2, 2));
    m_bar.SetState(State::kPaused);
    picture = PictureOf(m_bar);
    EXPECT_EQ(kBar, picture->At(2, 2));
    EXPECT_EQ(kGround, picture->At(3, 2)) << "hatched";
    EXPECT_GT(picture->Count(kOnGround, {0, 0, 50, 20}), 20) << "the text can be read";
}

TEST_F(ProgressBar, EstimatesTheTimeThatIsLeft)
{
    const ImportPatch clock(kZogbl, "GetTickCount", &Now);
    Make(CZoProgressBar::kSmooth);
    g_now = 0xFFFFF000; // the counter begins anew meanwhile
    m_bar.SetRange(0, 1000);
    DWORD seconds = 4711;
    const auto remaining = [&](DWORD after, int position) {
        g_now += after;
        m_bar.SetPosition(position);
        return m_bar.GetRemainingTime(seconds) ? static_cast<int>(seconds) : -1;
    };
    EXPECT_EQ(-1, remaining(4000, 200)) << "before five seconds";
    EXPECT_EQ(-1, remaining(2000, 49)) << "before five percent";
    EXPECT_EQ(4711u, seconds);
    EXPECT_EQ(54, remaining(0, 100));
    EXPECT_EQ(51, remaining(3000, 900)) << "estimated anew each five seconds";
    EXPECT_EQ(-1, remaining(0, 49)) << "gone back";
    EXPECT_EQ(11, remaining(2000, 500));
    for (const DWORD pause : {3000, 60000}) {
        m_bar.SetState(State::kPaused);
        EXPECT_EQ(-1, remaining(pause, 500));
        m_bar.SetState(State::kRunning);
        EXPECT_EQ(11, remaining(0, 500)) << "the pause is no part of it";
    }
    EXPECT_EQ(4, remaining(5000, 800)) << "nor of the next estimate";
    m_bar.SetUnknown(TRUE);
    EXPECT_EQ(-1, remaining(0, 500));
    EXPECT_EQ(-1, m_bar.GetPercent());
    m_bar.SetUnknown(FALSE);
    EXPECT_EQ(-1, remaining(0, 1000)) << "at its end";
    m_bar.SetRange(0, 1000);
    EXPECT_EQ(-1, remaining(0, 100)) << "a new estimate begins";
    const struct {
        DWORD seconds;
        const char* text;
    } kTexts[] = {{5, "About 10 seconds left"}, {54, "About 55 seconds left"}, {55, "About 1 minute left"},
                  {89, "About 1 minute left"},  {90, "About 2 minutes left"},  {3569, "About 59 minutes left"},
                  {3570, "About 1 hour left"},  {5399, "About 1 hour left"},   {5400, "About 2 hours left"}};
    const Reader reader(m_bar);
    m_bar.SetTextMode(TextMode::kRemaining);
    for (const auto& row : kTexts) {
        m_bar.SetRange(0, 1000);
        m_bar.SetPosition(500);
        m_bar.UpdateWindow();
        g_now += row.seconds * 1000;
        m_bar.SendMessage(WM_TIMER, 1);
        EXPECT_EQ(row.text, reader.Description());
    }
}

TEST_F(ProgressBar, IsToldToScreenReaders)
{
    const ImportPatch clock(kZogbl, "GetTickCount", &Now);
    Make(0, 52); // fewer pixels than percents
    m_bar.SetRange(0, 1000000);
    const Events events(m_bar);
    for (int i = 1; i <= 1000000; ++i) {
        g_now += i % 10 == 0;
        m_bar.SetPosition(i);
    }
    const int told = Events::Count(EVENT_OBJECT_VALUECHANGE);
    EXPECT_LE(told, 101);
    EXPECT_GE(told, 99);
    m_bar.SetRange(0, 1000000);
    Events::Heard();
    for (int i = 1; i <= 1000000; ++i) { // in 50 milliseconds
        g_now += i % 20000 == 0;
        m_bar.SetPosition(i);
    }
    EXPECT_EQ(1, Events::Count(EVENT_OBJECT_VALUECHANGE)) << "the end";
    m_bar.SetPosition(400000);
    m_bar.SendMessage(WM_TIMER, 1);
    EXPECT_EQ(0, Events::Count(EVENT_OBJECT_VALUECHANGE)) << "too early";
    g_now += 100;
    m_bar.SendMessage(WM_TIMER, 1);
    EXPECT_EQ(1, Events::Count(EVENT_OBJECT_VALUECHANGE)) << "the last is told";
    const Reader reader(m_bar);
    EXPECT_EQ(STATE_SYSTEM_READONLY, reader.State());
    m_bar.SetUnknown(TRUE);
    EXPECT_EQ(STATE_SYSTEM_READONLY | STATE_SYSTEM_BUSY, reader.State());
    EXPECT_EQ("", reader.Value());
    EXPECT_EQ(1, Events::Count(EVENT_OBJECT_STATECHANGE));
    for (const auto& [state, text] : {std::pair(State::kFailed, "Failed"), std::pair(State::kPaused, "Paused")}) {
        m_bar.SetState(state);
        EXPECT_EQ(text, reader.Description());
        EXPECT_EQ(1, Events::Count(EVENT_OBJECT_DESCRIPTIONCHANGE));
    }
}

TEST_F(ProgressBar, MovesABlockOnlyWhereItIsSeen)
{
    const ImportPatch set(kZogbl, "SetTimer", &CountSetTimer), kill(kZogbl, "KillTimer", &CountKillTimer);
    Make(CZoProgressBar::kSmooth);
    m_bar.SetUnknown(TRUE);
    m_bar.UpdateWindow();
    const std::string first = Filled();
    EXPECT_TRUE(WaitUntil([&] { return Filled() != first; }));
    EXPECT_TRUE(g_hasTimer);
    m_parent.ShowWindow(SW_HIDE); // of which the bar is not told
    EXPECT_TRUE(WaitUntil([] { return !g_hasTimer; }));
    const std::string last = Filled();
    m_parent.ShowWindow(SW_SHOW);
    EXPECT_TRUE(WaitUntil([&] { return Filled() != last; })) << "it goes on";
    m_bar.SetState(State::kPaused);
    EXPECT_FALSE(g_hasTimer);
    m_bar.SetState(State::kRunning);
    EXPECT_TRUE(g_hasTimer);
    m_bar.SetUnknown(FALSE);
    EXPECT_FALSE(g_hasTimer) << "no timer is left";
    EXPECT_EQ("-1--1", Filled());
    m_bar.SetUnknown(TRUE);
    EXPECT_EQ(first, Filled());
    for (int i = 0; i < 100; ++i) { // to and fro
        m_bar.SendMessage(WM_TIMER, 1);
        ASSERT_EQ(20, PictureOf(m_bar)->Count(kBar, {0, 3, 100, 4})) << i;
    }
    m_bar.DestroyWindow();
    PutOver();
    EXPECT_TRUE(WaitUntil([&, second = Filled()] { return Filled() != second; })) << "in a second window";
}
