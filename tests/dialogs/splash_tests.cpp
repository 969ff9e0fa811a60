// The picture of a program that starts.
#include "dialog_faults.h"

#include "support/product_test.h"

#include <zogbl/message_box.h>
#include <zogbl/resource_ids.h>
#include <zogbl/splash_wnd.h>

namespace {

struct Counting : CZoSplashWnd {
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        paints += message == WM_PAINT;
        return CZoSplashWnd::WindowProc(message, wParam, lParam);
    }
    int paints = 0;
};

class Splash : public ProductTest {
protected:
    void ExpectPainted() const
    {
        EXPECT_FALSE(::GetUpdateRect(m_splash, nullptr, FALSE));
        EXPECT_FALSE(::GetUpdateRect(::GetWindow(m_splash, GW_CHILD), nullptr, FALSE));
    }

    Counting m_splash;
};

} // namespace

TEST_F(Splash, IsPaintedAtOnceAndTakesNothing)
{
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, "Edit", "owner", WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr, nullptr));
    owner.SetFocus();
    ASSERT_TRUE(m_splash.Show(ZO_IDB_TRANSLATE_MARKER, "Loading..."));
    EXPECT_FALSE(m_splash.Show(ZO_IDB_TRANSLATE_MARKER)) << "twice";
    EXPECT_TRUE(owner.m_hWnd == ::GetFocus() && owner.m_hWnd == ::GetActiveWindow());
    const DWORD style = m_splash.GetExStyle() & (WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_APPWINDOW);
    EXPECT_EQ(static_cast<DWORD>(WS_EX_TOOLWINDOW), style) << "neither topmost nor in the task bar";
    ExpectPainted();
    const int paints = m_splash.paints;
    m_splash.SetText("Opening...");
    EXPECT_EQ(paints + 1, m_splash.paints) << "the line";
    m_splash.Invalidate();
    m_splash.SetText("Opening...");
    ExpectPainted();
    EXPECT_EQ("Opening...", TextOf(m_splash));
    const DialogDriver driver({[&](HWND box) {
        HWND below = box;
        while (below != nullptr && below != m_splash.m_hWnd)
            below = ::GetWindow(below, GW_HWNDNEXT);
        EXPECT_NE(nullptr, below) << "the box covers it";
        Press(box, IDOK);
    }});
    ZoMessageBox(nullptr, "A message", "Test", MB_OK);
    EXPECT_EQ(MA_NOACTIVATE, m_splash.SendMessage(WM_MOUSEACTIVATE, 0, MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN)));
}

TEST_F(Splash, GoesInTimeAndSurvivesFaults)
{
    for (int way = 0; way < 3; ++way) {
        ASSERT_TRUE(m_splash.Show(ZO_IDB_TRANSLATE_MARKER, nullptr, 50));
        const HWND under = ::WindowFromPoint(AreaOf(m_splash).CenterPoint());
        EXPECT_EQ(m_splash.m_hWnd, under) << "gets the click";
        if (way == 0)
            m_splash.Close();
        else if (way == 1)
            ClickAt(under, 1, 1);
        else
            WaitUntil([&] { return !m_splash.IsShown(); });
        EXPECT_FALSE(m_splash.IsShown()) << way;
        m_splash.SetText("late");
    }
    EXPECT_FALSE(m_splash.Show(1) || m_splash.IsShown()) << "there is no such picture";
    const auto show = [](const FaultRun& run) {
        CZoSplashWnd splash;
        const BOOL isShown = splash.Show(ZO_IDB_TRANSLATE_MARKER, "Loading...");
        splash.SetText("Opening...");
        EXPECT_TRUE((isShown || run.Fired()) && isShown == splash.IsShown());
    };
    RunDialogFaults([](HWND) {}, show);
}
