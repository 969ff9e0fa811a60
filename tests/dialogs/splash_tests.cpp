// The picture of a program that starts.
#include "dialog_faults.h"

#include "support/canvas.h"
#include "support/product_test.h"

#include <zogbl/message_box.h>
#include <zogbl/resource_ids.h>
#include <zogbl/splash_wnd.h>

namespace {

class Splash : public ProductTest {
protected:
    static bool IsAbove(HWND upper, HWND lower)
    {
        HWND window = upper;
        while (window != nullptr && window != lower)
            window = ::GetWindow(window, GW_HWNDNEXT);
        return window != nullptr;
    }

    CZoSplashWnd m_splash;
};

} // namespace

TEST_F(Splash, IsPaintedAtOnceAndTakesNothing)
{
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, "Edit", "owner", WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr, nullptr));
    owner.SetFocus();
    ASSERT_TRUE(m_splash.Show(ZO_IDB_TRANSLATE_MARKER, "Loading..."));
    EXPECT_FALSE(m_splash.Show(ZO_IDB_TRANSLATE_MARKER)) << "twice";
    EXPECT_EQ(owner.m_hWnd, ::GetFocus());
    EXPECT_EQ(owner.m_hWnd, ::GetActiveWindow());
    EXPECT_EQ(static_cast<DWORD>(WS_EX_TOOLWINDOW),
              m_splash.GetExStyle() & (WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_APPWINDOW));
    EXPECT_EQ("Loading...", TextOf(m_splash));
    EXPECT_FALSE(::GetUpdateRect(m_splash, nullptr, FALSE));
    for (HWND child = ::GetWindow(m_splash, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT))
        EXPECT_FALSE(::GetUpdateRect(child, nullptr, FALSE));
    m_splash.Invalidate();
    m_splash.SetText("Opening...");
    EXPECT_FALSE(::GetUpdateRect(m_splash, nullptr, FALSE)) << "painted without messages";
    EXPECT_TRUE(IsAbove(m_splash, owner));
    const HWND splash = m_splash;
    const DialogDriver driver({[&](HWND box) {
        EXPECT_TRUE(IsAbove(box, splash));
        Press(box, IDOK);
    }});
    ZoMessageBox(nullptr, "A message", "Test", MB_OK);
    EXPECT_EQ(MA_NOACTIVATE, m_splash.SendMessage(WM_MOUSEACTIVATE, 0, MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN)));
}

TEST_F(Splash, GoesInTime)
{
    const std::function<void()> ways[] = {[&] { m_splash.Close(); }, [&] { ClickAt(m_splash, 1, 1); },
                                          [&] { WaitUntil([&] { return !m_splash.IsShown(); }); }};
    for (const auto& way : ways) {
        ASSERT_TRUE(m_splash.Show(ZO_IDB_TRANSLATE_MARKER, nullptr, 50));
        EXPECT_EQ(m_splash.m_hWnd, ::WindowFromPoint(AreaOf(m_splash).CenterPoint())) << "and so gets the click";
        way();
        EXPECT_FALSE(m_splash.IsShown());
        m_splash.SetText("late");
        m_splash.Close();
    }
    EXPECT_FALSE(m_splash.Show(1)) << "there is no such picture";
    EXPECT_FALSE(m_splash.IsShown());
    EXPECT_TRUE(m_splash.Show(ZO_IDB_TRANSLATE_MARKER)) << "and its destructor ends it";
}

TEST_F(Splash, SurvivesFaults)
{
    RunDialogFaults([](HWND) {},
                    [](const FaultRun& run) {
                        CZoSplashWnd splash;
                        const BOOL isShown = splash.Show(ZO_IDB_TRANSLATE_MARKER, "Loading...");
                        splash.SetText("Opening...");
                        EXPECT_TRUE(isShown || run.Fired());
                        EXPECT_EQ(isShown, splash.IsShown());
                    });
}
