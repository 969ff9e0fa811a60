// Frames with what stands around their pane, and the idle work that keeps it true.
#include "support/test.h"

#include <afxext.h>

#include <commctrl.h>

namespace {

constexpr UINT kFrame = 41; // of host.rc
enum Command { kOne = 101, kTwo, kThree };

class Frame : public CFrameWnd {
public:
    ~Frame() override { m_hWnd = nullptr; } // an automatic object

    std::string log;
    bool canTwo = true;
    CDocument* document = nullptr;
    bool refuses = false; // to be created

    CDocument* GetActiveDocument() override { return document; }
    BOOL PreCreateWindow(CREATESTRUCT& cs) override { return !refuses && CFrameWnd::PreCreateWindow(cs); }

    void OnOne() { log += "one "; }
    void OnUpdateTwo(CCmdUI* item)
    {
        log += "update ";
        item->Enable(canTwo);
        item->SetCheck(canTwo ? 1 : 2);
    }

protected:
    void PostNcDestroy() override {}
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Frame, CFrameWnd)
    ON_COMMAND(kOne, OnOne)
    ON_UPDATE_COMMAND_UI(kTwo, OnUpdateTwo)
END_MESSAGE_MAP()

/// A bar of a given height.
class Bar : public CControlBar {
public:
    int updates = 0;
    bool* gone = nullptr;

    ~Bar() override
    {
        if (gone != nullptr)
            *gone = true;
    }
    Bar(CFrameWnd& frame, DWORD edge, UINT id) { EXPECT_TRUE(CreateBar("STATIC", WS_VISIBLE | edge, 0, &frame, id)); }
    CSize CalcFixedLayout(BOOL, BOOL) override { return {50, 20}; }
    void OnUpdateCmdUI(CFrameWnd*, BOOL) override { ++updates; }
};

HMENU g_menu = nullptr; // the last that a frame loaded
HMENU WINAPI LoadAndKeep(HINSTANCE module, LPCSTR name) { return g_menu = ::LoadMenuA(module, name); }

class FrameTest : public ::testing::Test {
protected:
    FrameTest()
    {
        EXPECT_TRUE(frame.LoadFrame(kFrame));
        frame.SetWindowPos(nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER);
        EXPECT_TRUE(pane.Create("", WS_VISIBLE | WS_TABSTOP, CRect(0, 0, 0, 0), &frame, AFX_IDW_PANE_FIRST));
    }
    ~FrameTest() override { frame.DestroyWindow(); }

    /// The place of a child in the frame's client area.
    CRect Place(const CWnd& child) const
    {
        CRect place;
        child.GetWindowRect(&place);
        frame.ScreenToClient(&place);
        return place;
    }
    CString TextOf(const CWnd& window) const
    {
        CString text;
        window.GetWindowText(text);
        return text;
    }

    Frame frame;
    CButton pane;
};

} // namespace

TEST_F(FrameTest, TakesWhatHasItsNumber)
{
    EXPECT_STREQ("Frames", TextOf(frame));
    ASSERT_NE(nullptr, frame.GetMenu());
    EXPECT_EQ(static_cast<UINT>(kTwo), frame.GetMenu()->GetSubMenu(0)->GetMenuItemID(1));
    MSG key = {pane.m_hWnd, WM_KEYDOWN, VK_F5, 1, 0, {}};
    EXPECT_TRUE(frame.PreTranslateMessage(&key));
    EXPECT_EQ("update one ", std::exchange(frame.log, {})) << "as if chosen from the menu";
    key.wParam = VK_F6;
    EXPECT_FALSE(frame.PreTranslateMessage(&key));
    EXPECT_FALSE(frame.LoadAccelTable(MAKEINTRESOURCE(4711)));
    key.wParam = VK_F5;
    EXPECT_TRUE(frame.PreTranslateMessage(&key)) << "the table in force stays";
    frame.SetTitle("other");
    frame.ModifyStyle(FWS_ADDTOTITLE, 0);
    frame.OnUpdateFrameTitle(FALSE);
    EXPECT_STREQ("Frames", TextOf(frame)) << "not its business";
    frame.ModifyStyle(0, FWS_ADDTOTITLE);
    frame.OnUpdateFrameTitle(FALSE);
    EXPECT_STREQ("other", TextOf(frame));
    CDocument document;
    document.SetTitle("paper");
    frame.document = &document;
    const auto titled = [&](LPCSTR title, DWORD remove, DWORD add) {
        frame.SetTitle(title);
        frame.ModifyStyle(remove, add);
        frame.OnUpdateFrameTitle(TRUE);
        return std::string(TextOf(frame));
    };
    EXPECT_EQ("other - paper", titled("other", 0, 0));
    EXPECT_EQ("paper - other", titled("other", 0, FWS_PREFIXTITLE));
    EXPECT_EQ("paper", titled("", FWS_PREFIXTITLE, 0));
    frame.document = nullptr;
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
    Bar top(frame, CBRS_TOP, AFX_IDW_TOOLBAR);
    Bar bottom(frame, CBRS_BOTTOM, AFX_IDW_STATUS_BAR);
    Bar loose(frame, 0, 77);
    CRect client;
    frame.GetClientRect(&client);
    frame.RecalcLayout();
    const int width = client.Width();
    const int height = client.Height();
    EXPECT_TRUE(Place(top) == CRect(0, 0, width, 20));
    EXPECT_TRUE(Place(bottom) == CRect(0, height - 20, width, height));
    EXPECT_TRUE(Place(pane) == CRect(0, 20, width, height - 20));
    EXPECT_TRUE(Place(loose) == CRect(0, 0, 0, 0)) << "at no edge";
    CRect rest;
    frame.RepositionBars(0, 0xFFFF, AFX_IDW_PANE_FIRST, CWnd::reposQuery, &rest, CRect(0, 0, 90, 70));
    EXPECT_TRUE(rest == CRect(0, 20, 90, 50));
    EXPECT_TRUE(Place(pane) == CRect(0, 20, width, height - 20)) << "nothing is moved by asking";
    frame.RepositionBars(0, 0xFFFF, AFX_IDW_PANE_FIRST, CWnd::reposQuery, &rest, CRect(0, 0, 90, 30));
    EXPECT_TRUE(rest == CRect(0, 20, 90, 20)) << "no more than there is room for";
    EXPECT_TRUE(frame.GetTopLevelFrame() == &frame && top.GetTopLevelFrame() == &frame);
    CRect margins(1, 2, 3, 4);
    frame.RepositionBars(0, 0xFFFF, AFX_IDW_PANE_FIRST, CWnd::reposExtra, &margins);
    EXPECT_TRUE(Place(pane) == CRect(1, 22, width - 3, height - 24));

    frame.ShowWindow(SW_SHOW);
    frame.SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(frame.GetMenu()->GetSubMenu(0)->m_hMenu), 0);
    EXPECT_EQ(static_cast<UINT>(MF_CHECKED), frame.GetMenu()->GetMenuState(ID_VIEW_TOOLBAR, MF_BYCOMMAND));
    EXPECT_EQ("update ", std::exchange(frame.log, {}));
    frame.SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(frame.GetMenu()->GetSubMenu(0)->m_hMenu),
                      MAKELPARAM(0, TRUE));
    EXPECT_EQ("", frame.log) << "the system's own menu";
    CMenu* menu = frame.GetMenu()->GetSubMenu(0);
    ASSERT_TRUE(menu->AppendMenu(MF_STRING, 999, "unanswered"));
    frame.m_bAutoMenuEnable = FALSE;
    frame.SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu->m_hMenu), 0);
    EXPECT_EQ(static_cast<UINT>(MF_ENABLED), menu->GetMenuState(999, MF_BYCOMMAND));
    CButton inner;
    ASSERT_TRUE(inner.Create("", WS_VISIBLE, CRect(0, 0, 9, 9), &top, 1));
    inner.SetFocus();
    frame.SendMessage(WM_COMMAND, ID_VIEW_TOOLBAR);
    EXPECT_FALSE(top.IsWindowVisible());
    EXPECT_EQ(frame.m_hWnd, ::GetFocus()) << "not in a bar that nobody sees";
    EXPECT_TRUE(Place(pane) == CRect(0, 0, width, height - 20));
    frame.ShowControlBar(&top, TRUE, TRUE);
    EXPECT_TRUE(Place(pane) == CRect(0, 0, width, height - 20)) << "when it is idle";
    AfxGetThread()->OnIdle(0);
    EXPECT_TRUE(Place(pane) == CRect(0, 20, width, height - 20));
    EXPECT_EQ(1, top.updates);
    bottom.ShowWindow(SW_HIDE);
    AfxGetThread()->OnIdle(0);
    EXPECT_EQ(1, bottom.updates) << "what nobody sees";
    bottom.ShowWindow(SW_SHOW);
    top.SetBarStyle(CBRS_BOTTOM);
    frame.SetWindowPos(nullptr, 0, 0, 300, 40, SWP_NOMOVE | SWP_NOZORDER); // too small for all
    frame.RecalcLayout();
    EXPECT_EQ(0, Place(pane).Height());
    EXPECT_EQ(&top, frame.GetControlBar(AFX_IDW_TOOLBAR));
    EXPECT_EQ(nullptr, frame.GetControlBar(AFX_IDW_PANE_FIRST)) << "no bar";
    bool gone = false;
    auto* own = new Bar(frame, CBRS_TOP, 78);
    own->gone = &gone;
    own->m_bAutoDelete = TRUE;
    own->DestroyWindow();
    EXPECT_TRUE(gone);
}

TEST_F(FrameTest, ToolBarShowsTheStateOfItsCommands)
{
    CToolBar bar;
    ASSERT_TRUE(bar.Create(&frame, WS_CHILD | WS_VISIBLE | CBRS_TOP | CBRS_TOOLTIPS));
    EXPECT_FALSE(bar.LoadToolBar(4711));
    EXPECT_FALSE(bar.LoadToolBar(42)) << "damaged";
    EXPECT_FALSE(bar.LoadToolBar(43)) << "of another version";
    ASSERT_TRUE(bar.LoadToolBar(kFrame));
    ASSERT_EQ(4, bar.GetCount());
    static constexpr UINT ids[] = {kOne, ID_SEPARATOR, kTwo, kThree};
    static constexpr int pictures[] = {0, 8, 1, 2}; // of a gap the width
    for (int i = 0; i < 4; ++i) {
        UINT id = 0;
        UINT style = 0;
        int picture = 0;
        bar.GetButtonInfo(i, id, style, picture);
        EXPECT_EQ(ids[i], id);
        EXPECT_EQ(pictures[i], picture);
        EXPECT_EQ(id == ID_SEPARATOR, (style & TBSTYLE_SEP) != 0);
    }
    EXPECT_EQ(2, bar.CommandToIndex(kTwo));
    EXPECT_EQ(-1, bar.CommandToIndex(999));
    EXPECT_EQ(0u, bar.GetItemID(9));
    frame.RecalcLayout();
    CRect last;
    bar.GetItemRect(3, &last);
    EXPECT_EQ(last.Height() + 6, Place(bar).Height());
    EXPECT_GE(last.right, 3 * 23 + 8);

    frame.ShowWindow(SW_SHOW);
    const auto state = [&](int index) { return HIWORD(bar.GetButtonStyle(index)); };
    AfxGetThread()->OnIdle(0);
    EXPECT_EQ(TBSTATE_ENABLED, state(0));
    EXPECT_EQ(TBSTATE_ENABLED | TBSTATE_CHECKED, state(2));
    EXPECT_EQ(0, state(3)) << "nothing would answer it";
    frame.canTwo = false;
    AfxGetThread()->OnIdle(1);
    EXPECT_EQ(TBSTATE_ENABLED | TBSTATE_CHECKED, state(2)) << "done by the first call after a message";
    AfxGetThread()->OnIdle(0);
    EXPECT_EQ(TBSTATE_INDETERMINATE, state(2));
    bar.SetButtonInfo(3, kOne, MAKELONG(TBSTYLE_CHECK, TBSTATE_ENABLED), 0);
    EXPECT_EQ(static_cast<UINT>(kOne), bar.GetItemID(3));
    EXPECT_EQ(static_cast<UINT>(MAKELONG(TBSTYLE_CHECK, TBSTATE_ENABLED)), bar.GetButtonStyle(3));
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
        CRect client, documents;
        main.GetClientRect(&client);
        ::GetWindowRect(main.m_hWndMDIClient, &documents);
        main.ScreenToClient(&documents);
        EXPECT_TRUE(documents == CRect(0, 20, client.right, client.bottom));
    }
    main.DestroyWindow();
}

TEST_F(FrameTest, TellsOfCommands)
{
    CStatic line;
    ASSERT_TRUE(line.Create("", 0, CRect(0, 0, 9, 9), &frame, AFX_IDW_STATUS_BAR));
    const struct {
        WORD item;
        WORD flags;
        LPARAM menu;
        const char* expected;
    } rows[] = {
        {kOne, MF_HILITE, 5, "Does one thing."},
        {kTwo, MF_HILITE, 5, "No tip"},
        {kThree, MF_HILITE, 5, ""},
        {kOne, MF_POPUP, 5, ""},
        {0, 0xFFFF, 0, "Ready"},
    };
    for (const auto& row : rows) {
        frame.SendMessage(WM_MENUSELECT, MAKEWPARAM(row.item, row.flags), row.menu);
        EXPECT_STREQ(row.expected, TextOf(line)) << row.item;
    }
    frame.SetMessageText("own");
    EXPECT_STREQ("own", TextOf(line));
    const std::string longTip(79, 'x');
    const std::pair<UINT_PTR, const char*> tips[] = {
        {kOne, "One"}, {kTwo, "kept"}, {0, "kept"}, {kThree, longTip.c_str()}};
    for (const auto& [id, expected] : tips) {
        char kept[] = "kept";
        NMTTDISPINFOA tip = {};
        tip.hdr = {frame.m_hWnd, id, static_cast<UINT>(TTN_GETDISPINFOA)};
        tip.lpszText = kept;
        tip.uFlags = TTF_IDISHWND;
        frame.SendMessage(WM_NOTIFY, id, reinterpret_cast<LPARAM>(&tip));
        EXPECT_STREQ("kept", tip.lpszText) << "that is a window, no command";
        tip.uFlags = 0;
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

    const struct {
        UINT message;
        POINT place;
        BOOL idle;
    } rows[] = {
        {WM_MOUSEMOVE, {5, 5}, TRUE},   {WM_MOUSEMOVE, {5, 5}, FALSE}, {WM_MOUSEMOVE, {5, 6}, TRUE},
        {WM_NCMOUSEMOVE, {5, 6}, TRUE}, {WM_PAINT, {0, 0}, FALSE},     {0x0118, {0, 0}, FALSE},
        {WM_KEYDOWN, {0, 0}, TRUE},     {WM_TIMER, {0, 0}, TRUE},
    };
    for (const auto& row : rows) {
        MSG message = {nullptr, row.message, 0, 0, 0, row.place};
        EXPECT_EQ(row.idle, thread.IsIdleMessage(&message)) << row.message;
    }
}
