// Frames with what stands around their pane, and the idle work that keeps it true.
#include "answers.h"
#include "test_window.h"

#include <commctrl.h>

namespace {

constexpr UINT kFrame = 41; // of host.rc
enum Command { kOne = 101, kTwo, kThree };

class Frame : public CFrameWnd {
public:
    ~Frame() override { m_hWnd = nullptr; } // an automatic object

    bool canTwo = true;
    CDocument* document = nullptr;
    bool refuses = false; // to be created

    CDocument* GetActiveDocument() override { return document; }
    BOOL PreCreateWindow(CREATESTRUCT& cs) override { return !refuses && CFrameWnd::PreCreateWindow(cs); }

    Noted one{"one"};
    void OnUpdateTwo(CCmdUI* item)
    {
        g_log += "update|";
        item->Enable(canTwo);
        item->SetCheck(canTwo ? 1 : 2);
    }

protected:
    void PostNcDestroy() override {}
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Frame, CFrameWnd)
    ON_COMMAND(kOne, one)
    ON_UPDATE_COMMAND_UI(kTwo, OnUpdateTwo)
END_MESSAGE_MAP()

/// A bar of a given height.
struct Bar : CControlBar {
    Bar(CFrameWnd& frame, DWORD edge, UINT id) { EXPECT_TRUE(CreateBar("STATIC", WS_VISIBLE | edge, 0, &frame, id)); }
    ~Bar() override { g_log += "gone|"; }
    CSize CalcFixedLayout(BOOL, BOOL) override { return {50, 20}; }
    void OnUpdateCmdUI(CFrameWnd*, BOOL) override { g_log += "bar" + std::to_string(GetDlgCtrlID() & 0xFF) + '|'; }
};

HMENU g_menu = nullptr; // the last that a frame loaded
HMENU WINAPI LoadAndKeep(HINSTANCE module, LPCSTR name) { return g_menu = ::LoadMenuA(module, name); }

class FrameTest : public ::testing::Test {
protected:
    FrameTest()
    {
        EXPECT_TRUE(frame.LoadFrame(kFrame));
        EXPECT_TRUE(pane.Create("", WS_VISIBLE | WS_TABSTOP, CRect(0, 0, 0, 0), &frame, AFX_IDW_PANE_FIRST));
        SetClientSize(300, 200);
        TakeLog();
    }
    ~FrameTest() override { frame.DestroyWindow(); }

    void SetClientSize(int width, int height)
    {
        CRect window, client;
        frame.GetWindowRect(&window);
        frame.GetClientRect(&client);
        const CSize size = window.Size() - client.Size() + CSize(width, height);
        frame.SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
    }
    /// The place of a child in the frame's client area.
    CRect Place(const CWnd& child) const
    {
        CRect place;
        child.GetWindowRect(&place);
        frame.ScreenToClient(&place);
        return place;
    }
    void PressKey(WPARAM key)
    {
        MSG message = {pane.m_hWnd, WM_KEYDOWN, key, 1, 0, {}};
        g_log += frame.PreTranslateMessage(&message) ? "taken|" : "left|";
    }
    CMenu* Menu() { return frame.GetMenu()->GetSubMenu(0); }
    void OpenMenu(bool isSystemMenu = false)
    {
        frame.SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(Menu()->m_hMenu), MAKELPARAM(0, isSystemMenu));
    }
    void SetTitle(LPCSTR title, DWORD style, bool withDocument)
    {
        frame.ModifyStyle(FWS_ADDTOTITLE | FWS_PREFIXTITLE, style);
        frame.SetTitle(title);
        frame.OnUpdateFrameTitle(withDocument);
    }

    Frame frame;
    CButton pane;
};

} // namespace

TEST_F(FrameTest, TakesWhatHasItsNumber)
{
    CDocument document;
    document.SetTitle("paper");
    const Steps steps = {
        {[&] { PressKey(VK_F5); }, "Frames: update|one|taken|"}, // as if chosen from the menu
        {[&] { PressKey(VK_F6); }, "Frames: left|"},
        {[&] { EXPECT_FALSE(frame.LoadAccelTable(MAKEINTRESOURCEA(4711))); }, "Frames: "},
        {[&] { PressKey(VK_F5); }, "Frames: update|one|taken|"}, // the table in force stays
        {[&] { SetTitle("other", 0, false); }, "Frames: "},      // not its business
        {[&] { SetTitle("other", FWS_ADDTOTITLE, false); }, "other: "},
        {[&] { frame.document = &document; }, "other: "},
        {[&] { SetTitle("other", FWS_ADDTOTITLE, true); }, "other - paper: "},
        {[&] { SetTitle("other", FWS_ADDTOTITLE | FWS_PREFIXTITLE, true); }, "paper - other: "},
        {[&] { SetTitle("", FWS_ADDTOTITLE, true); }, "paper: "},
        {[&] { frame.document = nullptr; }, "paper: "},
    };
    Walk(steps, [&] { return TextOf(frame.m_hWnd) + ": " + TakeLog(); });
    EXPECT_EQ(static_cast<UINT>(kTwo), Menu()->GetMenuItemID(1));
    frame.ShowWindow(SW_SHOWMINIMIZED);
    frame.ActivateFrame();
    EXPECT_TRUE(frame.IsWindowVisible() && !frame.IsIconic());
    const ImportPatch load("ZOAFX.DLL", "LoadMenuA", &LoadAndKeep);
    Frame refusing;
    refusing.refuses = true;
    EXPECT_FALSE(refusing.LoadFrame(kFrame));
    EXPECT_TRUE(g_menu != nullptr && !IsMenu(g_menu)) << "nobody has it";
    Frame without;
    EXPECT_FALSE(without.Create(nullptr, "no such menu", WS_OVERLAPPEDWINDOW, CFrameWnd::rectDefault, nullptr,
                                MAKEINTRESOURCE(4711)));
    EXPECT_EQ(nullptr, without.m_hWnd);
}

TEST_F(FrameTest, LaysBarsOutAroundThePane)
{
    OpenMenu(); // in which nothing can be done with a bar that is not there
    frame.ShowWindow(SW_SHOW);
    Bar top(frame, CBRS_TOP, AFX_IDW_TOOLBAR), bottom(frame, CBRS_BOTTOM, AFX_IDW_STATUS_BAR), loose(frame, 0, 77);
    EXPECT_EQ(&top, frame.GetControlBar(AFX_IDW_TOOLBAR));
    EXPECT_EQ(nullptr, frame.GetControlBar(AFX_IDW_PANE_FIRST)) << "no bar";
    CRect rest, margins(1, 2, 3, 4);
    CButton inner;
    ASSERT_TRUE(inner.Create("", WS_VISIBLE, CRect(0, 0, 9, 9), &top, 1));
    auto* own = new Bar(frame, 0, 78);
    own->m_bAutoDelete = TRUE;
    ASSERT_TRUE(Menu()->AppendMenu(MF_STRING, 999, "unanswered"));
    const auto reposition = [&](UINT flag, LPRECT rect, LPCRECT client) {
        frame.RepositionBars(0, 0xFFFF, AFX_IDW_PANE_FIRST, flag, rect, client);
    };
    const auto idle = [] { AfxGetThread()->OnIdle(0); };
    TakeLog();
    const Steps steps = {
        {[&] { frame.RecalcLayout(); }, "0,20,300,180 3 "},
        {[&] { EXPECT_EQ("0,0,300,20 0,180,300,200 0,0,0,0", Answers(Place(top), Place(bottom), Place(loose))); },
         "0,20,300,180 3 "},
        {[&] { reposition(CWnd::reposQuery, &rest, CRect(0, 0, 90, 70)); }, "0,20,300,180 3 "}, // only asks
        {[&] { reposition(CWnd::reposExtra, &margins, nullptr); }, "1,22,297,176 3 "},
        {[&] { OpenMenu(true); }, "1,22,297,176 3 "}, // the system's own
        {[&] { OpenMenu(); }, "1,22,297,176 8 update|"},
        {[&] { inner.SetFocus(); }, "1,22,297,176 8 "},
        {[&] { frame.SendMessage(WM_COMMAND, ID_VIEW_TOOLBAR); }, "0,0,300,180 8 "},
        {[&] { EXPECT_EQ(frame.m_hWnd, ::GetFocus()); }, "0,0,300,180 8 "}, // not in a bar that nobody sees
        {[&] { OpenMenu(); }, "0,0,300,180 0 update|"},
        {[&] { frame.ShowControlBar(&top, TRUE, TRUE); }, "0,0,300,180 0 "}, // when it is idle
        {idle, "0,20,300,180 0 bar0|bar1|bar77|bar78|"},
        {[&] { bottom.ShowWindow(SW_HIDE); }, "0,20,300,180 0 "},
        {idle, "0,20,300,180 0 bar0|bar77|bar78|"}, // not what nobody sees
        {[&] { bottom.ShowWindow(SW_SHOW); }, "0,20,300,180 0 "},
        {[&] { top.SetBarStyle(CBRS_BOTTOM); }, "0,20,300,180 0 "},
        {[&] { SetClientSize(300, 30); }, "0,0,300,0 0 "}, // too small for all
        {[&] { own->DestroyWindow(); }, "0,0,300,0 0 gone|"},
    };
    Walk(steps,
         [&] { return Answers(Place(pane), Menu()->GetMenuState(ID_VIEW_TOOLBAR, MF_BYCOMMAND)) + ' ' + TakeLog(); });
    EXPECT_TRUE(rest == CRect(0, 20, 90, 50));
    top.SetBarStyle(CBRS_TOP);
    reposition(CWnd::reposQuery, &rest, CRect(0, 0, 90, 30));
    EXPECT_TRUE(rest == CRect(0, 20, 90, 20)) << "no more than there is room for";
    EXPECT_TRUE(frame.GetTopLevelFrame() == &frame && top.GetTopLevelFrame() == &frame);
    frame.m_bAutoMenuEnable = FALSE;
    ASSERT_TRUE(Menu()->EnableMenuItem(999, MF_ENABLED));
    OpenMenu();
    EXPECT_EQ(static_cast<UINT>(MF_ENABLED), Menu()->GetMenuState(999, MF_BYCOMMAND));
}

TEST_F(FrameTest, ToolBarShowsTheStateOfItsCommands)
{
    CToolBar bar;
    ASSERT_TRUE(bar.Create(&frame, WS_CHILD | WS_VISIBLE | CBRS_TOP | CBRS_TOOLTIPS));
    EXPECT_FALSE(bar.LoadToolBar(4711));
    EXPECT_FALSE(bar.LoadToolBar(42)) << "damaged";
    EXPECT_FALSE(bar.LoadToolBar(43)) << "of another version";
    ASSERT_TRUE(bar.LoadToolBar(kFrame));
    std::string buttons; // each with its command, whether it is a gap, and its picture, of a gap the width
    for (int i = 0; i < bar.GetCount(); ++i) {
        UINT id = 0, style = 0;
        int picture = 0;
        bar.GetButtonInfo(i, id, style, picture);
        buttons += Answers(id, style & TBSTYLE_SEP, picture) + '|';
    }
    EXPECT_EQ("101 0 0|0 1 8|102 0 1|103 0 2|", buttons);
    EXPECT_EQ("2 -1 0", Answers(bar.CommandToIndex(kTwo), bar.CommandToIndex(999), bar.GetItemID(9)));
    frame.RecalcLayout();
    CRect last;
    bar.GetItemRect(3, &last);
    EXPECT_EQ(last.Height() + 6, Place(bar).Height());
    EXPECT_GE(last.right, 3 * 23 + 8);

    frame.ShowWindow(SW_SHOW);
    const auto idle = [](LONG count) { return [count] { AfxGetThread()->OnIdle(count); }; };
    static_assert(TBSTATE_ENABLED == 4 && TBSTATE_CHECKED == 1 && TBSTATE_INDETERMINATE == 16);
    const Steps steps = {
        {idle(0), "4 5 0"}, // nothing would answer the last
        {[&] { frame.canTwo = false; }, "4 5 0"},
        {idle(1), "4 5 0"}, // done by the first call after a message
        {idle(0), "4 16 0"},
        {[&] { bar.SetButtonInfo(3, kOne, MAKELONG(TBSTYLE_CHECK, TBSTATE_ENABLED), 0); }, "4 16 4"},
    };
    const auto state = [&](int index) { return HIWORD(bar.GetButtonStyle(index)); };
    Walk(steps, [&] { return Answers(state(0), state(2), state(3)); });
    EXPECT_EQ("101 2", Answers(bar.GetItemID(3), LOWORD(bar.GetButtonStyle(3))));
    ASSERT_TRUE(bar.SetButtons(nullptr, 2));
    EXPECT_EQ(2, bar.GetCount());
    bar.SendMessage(WM_SYSCOLORCHANGE); // the pictures come anew
    ZO_EXPECT_NO_LEAK({ bar.SendMessage(WM_SYSCOLORCHANGE); });
    EXPECT_FALSE(bar.SetBitmap(nullptr));
    bar.DestroyWindow();
    ZO_EXPECT_NO_LEAK({ EXPECT_FALSE(bar.LoadBitmap(kFrame)); });
    EXPECT_TRUE(bar.Create(&frame) && bar.LoadToolBar(kFrame)) << "in another window";
}

TEST(MdiFrame, LeavesRoomForBars)
{
    struct Main : CMDIFrameWnd {
        ~Main() override { m_hWnd = nullptr; }
        void PostNcDestroy() override {}
    } main;
    ASSERT_TRUE(main.Create(nullptr, "", WS_OVERLAPPEDWINDOW, CRect(0, 0, 300, 200)));
    {
        const Bar top(main, CBRS_TOP, AFX_IDW_TOOLBAR);
        main.SetWindowPos(nullptr, 0, 0, 400, 300, SWP_NOMOVE | SWP_NOZORDER);
        CRect client;
        main.GetClientRect(&client);
        main.ClientToScreen(&client);
        client.top += 20;
        EXPECT_TRUE(client == AreaOf(main.m_hWndMDIClient));
    }
    main.DestroyWindow();
}

TEST_F(FrameTest, TellsOfCommands)
{
    CStatic line;
    ASSERT_TRUE(line.Create("", 0, CRect(0, 0, 9, 9), &frame, AFX_IDW_STATUS_BAR));
    const auto select = [&](UINT item, UINT flags, LPARAM owner) {
        return [=, this] { frame.SendMessage(WM_MENUSELECT, MAKEWPARAM(item, flags), owner); };
    };
    const Steps steps = {
        {select(kOne, MF_HILITE, 5), "Does one thing."},
        {select(kTwo, MF_HILITE, 5), "No tip"},
        {select(kThree, MF_HILITE, 5), ""},
        {select(0, 0xFFFF, 0), "Ready"},
        {select(kOne, MF_POPUP, 5), ""},
        {[&] { frame.SetMessageText("own"); }, "own"},
    };
    Walk(steps, [&] { return TextOf(line.m_hWnd); });
    const std::string longTip(79, 'x');
    const std::tuple<UINT_PTR, UINT, const char*> tips[] = {{kOne, 0, "One"},
                                                            {kTwo, 0, "kept"},
                                                            {0, 0, "kept"},
                                                            {kThree, 0, longTip.c_str()},
                                                            {kOne, TTF_IDISHWND, "kept"}};
    for (const auto& [id, flags, expected] : tips) {
        char kept[] = "kept";
        NMTTDISPINFOA tip = {};
        tip.hdr = {frame.m_hWnd, id, static_cast<UINT>(TTN_GETDISPINFOA)};
        tip.lpszText = kept;
        tip.uFlags = flags; // by TTF_IDISHWND the number is a window, no command
        frame.SendMessage(WM_NOTIFY, id, reinterpret_cast<LPARAM>(&tip));
        EXPECT_STREQ(expected, tip.lpszText);
    }
}

TEST(MainLoop, IsIdleOnceAfterWhatMayHaveChangedSomething)
{
    struct Thread : CWinThread {
        std::vector<LONG> counts;
        BOOL OnIdle(LONG count) override
        {
            counts.push_back(count);
            if (counts.size() == 2)
                ::PostThreadMessageA(::GetCurrentThreadId(), WM_APP, 0, 0);
            else if (counts.size() > 2)
                ::PostQuitMessage(3);
            return count == 0 && counts.size() == 1;
        }
    };
    Thread thread;
    EXPECT_EQ(3, thread.Run());
    EXPECT_EQ((std::vector<LONG>{0, 1, 0}), thread.counts);

    const std::tuple<UINT, POINT, BOOL> rows[] = {
        {WM_MOUSEMOVE, {5, 5}, TRUE},   {WM_MOUSEMOVE, {5, 5}, FALSE}, {WM_MOUSEMOVE, {5, 6}, TRUE},
        {WM_NCMOUSEMOVE, {5, 6}, TRUE}, {WM_PAINT, {0, 0}, FALSE},     {0x0118, {0, 0}, FALSE},
        {WM_KEYDOWN, {0, 0}, TRUE},     {WM_TIMER, {0, 0}, TRUE},
    };
    for (const auto& [number, place, isIdle] : rows) {
        MSG message = {nullptr, number, 0, 0, 0, place};
        EXPECT_EQ(isIdle, thread.IsIdleMessage(&message)) << number;
    }
}
