#include "support/fault_loop.h"
#include "support/process_counts.h"

using namespace zo_test;

namespace {

const UINT g_registered = RegisterWindowMessageA("ZoTestsRegisteredMessage");
constexpr UINT kThrow = WM_APP + 1;
constexpr UINT kPrivate = WM_APP + 2;
constexpr UINT kBasePrivate = WM_APP + 3;

enum Command { kPlain = 100, kBaseOnly, kGreyed, kChecked, kUnanswered, kRangeFirst = 200, kRangeLast = 209, kBoth };

/// Writes down what it is called for.
class BaseWindow : public CWnd {
public:
    std::string log;
    std::function<void()> atCreate;

    BOOL CreateTop(DWORD style = WS_OVERLAPPEDWINDOW)
    {
        return CreateEx(0, nullptr, "title", style, 0, 0, 200, 100, nullptr, nullptr);
    }
    std::string TakeLog() { return std::exchange(log, {}); }

protected:
    int OnCreate(CREATESTRUCT* cs)
    {
        log += FromHandlePermanent(m_hWnd) == this ? "create " : "create-without-object ";
        if (atCreate)
            atCreate();
        return CWnd::OnCreate(cs);
    }
    void OnDestroy()
    {
        CWnd::OnDestroy();
        log += "destroy ";
    }
    void PostNcDestroy() override { log += m_hWnd == nullptr ? "gone " : "gone-with-handle "; }
    void OnGetMinMaxInfo(MINMAXINFO* info)
    {
        sawFirstMessage = FromHandlePermanent(m_hWnd) == this;
        CWnd::OnGetMinMaxInfo(info);
    }
    void OnBaseCommand() { log += "base "; }
    void OnBoth() { log += "base-both "; }
    LRESULT OnBasePrivate(WPARAM wParam, LPARAM lParam)
    {
        log += "private ";
        return static_cast<LRESULT>(wParam) + lParam;
    }
    DECLARE_MESSAGE_MAP()

public:
    bool sawFirstMessage = false;
};

BEGIN_MESSAGE_MAP(BaseWindow, CWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_GETMINMAXINFO()
    ON_COMMAND(kBaseOnly, OnBaseCommand)
    ON_COMMAND(kBoth, OnBoth)
    ON_MESSAGE(kBasePrivate, OnBasePrivate)
END_MESSAGE_MAP()

class TestWindow : public BaseWindow {
protected:
    void OnPlain() { log += "plain "; }
    void OnBoth() { log += "both "; }
    void OnRange(UINT id) { log += "range" + std::to_string(id) + " "; }
    void OnUpdateGreyed(CCmdUI* item) { item->Enable(FALSE); }
    void OnUpdateChecked(CCmdUI* item)
    {
        item->SetCheck();
        item->SetText("changed");
        item->Enable();
    }
    LRESULT OnRegistered(WPARAM, LPARAM) { return 77; }
    LRESULT OnThrow(WPARAM which, LPARAM)
    {
        if (which == 0)
            AfxThrowUserException();
        throw new CFileException(CFileException::badPath); // no text for the user
    }
    void OnPaint()
    {
        log += "paint ";
        AfxThrowUserException();
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(TestWindow, BaseWindow)
    ON_COMMAND(kPlain, OnPlain)
    ON_COMMAND(kBoth, OnBoth)
    ON_COMMAND(kGreyed, OnPlain)
    ON_COMMAND(kChecked, OnPlain)
    ON_COMMAND_RANGE(kRangeFirst, kRangeLast, OnRange)
    ON_UPDATE_COMMAND_UI(kGreyed, OnUpdateGreyed)
    ON_UPDATE_COMMAND_UI(kChecked, OnUpdateChecked)
    ON_REGISTERED_MESSAGE(g_registered, OnRegistered)
    ON_MESSAGE(kThrow, OnThrow)
    ON_WM_PAINT()
END_MESSAGE_MAP()

} // namespace

TEST(CWnd, IsKnownByItsHandleFromTheFirstMessageToTheLast)
{
    { // what the window system makes once and keeps
        TestWindow first;
        ASSERT_TRUE(first.CreateTop());
        first.DestroyWindow();
    }
    ZO_EXPECT_NO_LEAK({
        TestWindow window;
        ASSERT_TRUE(window.CreateTop());
        EXPECT_TRUE(window.sawFirstMessage) << "WM_GETMINMAXINFO comes before WM_NCCREATE";
        const HWND handle = window.m_hWnd;
        EXPECT_EQ(&window, CWnd::FromHandlePermanent(handle));
        EXPECT_EQ(&window, CWnd::FromHandle(handle));
        EXPECT_TRUE(window.DestroyWindow());
        EXPECT_EQ("create destroy gone ", window.TakeLog());
        EXPECT_EQ(nullptr, window.m_hWnd);
        EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(handle));
        EXPECT_FALSE(IsWindow(handle));
        EXPECT_FALSE(window.DestroyWindow());
        EXPECT_TRUE(window.CreateTop()) << "it can be created again";
        ::DestroyWindow(window.m_hWnd); // not through the object
        EXPECT_EQ(nullptr, window.m_hWnd);
        ASSERT_TRUE(window.CreateTop()); // left to the destructor
    });
}

TEST(CWnd, GivesTemporaryObjectsUntilIdle)
{
    const HWND handle = CreateWindowA("STATIC", "text", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    ZO_EXPECT_NO_LEAK({
        CWnd* temporary = CWnd::FromHandle(handle);
        ASSERT_NE(nullptr, temporary);
        EXPECT_EQ(temporary, CWnd::FromHandle(handle)) << "one object a handle";
        EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(handle));
        EXPECT_EQ(nullptr, CWnd::FromHandle(nullptr));
        CString text;
        temporary->GetWindowText(text);
        EXPECT_STREQ("text", text);
        CMemoryState before;
        CMemoryState after;
        CMemoryState difference;
        before.Checkpoint();
        AfxGetThread()->OnIdle(0);
        after.Checkpoint();
        difference.Difference(before, after);
        EXPECT_LT(difference.m_lBlockCount, 0) << "the temporary object is still there";
    });
    EXPECT_TRUE(IsWindow(handle)) << "a temporary object owns no window";
    DestroyWindow(handle);
}

TEST(CWnd, SubclassesAndGivesBack)
{
    TestWindow parent;
    ASSERT_TRUE(parent.CreateTop());
    const HWND edit = CreateWindowA("EDIT", "text", WS_CHILD, 0, 0, 50, 20, parent.m_hWnd, reinterpret_cast<HMENU>(7),
                                    nullptr, nullptr);
    const LONG_PTR procedure = GetWindowLongPtr(edit, GWLP_WNDPROC);
    BaseWindow object;
    ASSERT_TRUE(object.SubclassDlgItem(7, &parent));
    EXPECT_EQ(&object, CWnd::FromHandlePermanent(edit));
    EXPECT_EQ(5, SendMessage(edit, kBasePrivate, 2, 3)) << "its own handler";
    EXPECT_EQ(4, SendMessage(edit, WM_GETTEXTLENGTH, 0, 0)) << "the control's procedure behind it";
    EXPECT_EQ(edit, object.UnsubclassWindow());
    EXPECT_EQ(procedure, GetWindowLongPtr(edit, GWLP_WNDPROC));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(edit));
    EXPECT_EQ(nullptr, object.m_hWnd);
    EXPECT_FALSE(object.SubclassDlgItem(8, &parent)) << "there is no such control";

    ASSERT_TRUE(object.SubclassWindow(edit));
    object.TakeLog();
    parent.DestroyWindow();
    EXPECT_EQ("destroy gone ", object.TakeLog()) << "it goes with its parent";
    EXPECT_EQ(nullptr, object.m_hWnd);
}

TEST(CWnd, CreationCanFail)
{
    {
        TestWindow window;
        window.atCreate = [] { AfxThrowMemoryException(); };
        EXPECT_FALSE(window.CreateTop()); // once for what the window system makes
        ZO_EXPECT_NO_LEAK(EXPECT_FALSE(window.CreateTop()));
        EXPECT_EQ(nullptr, window.m_hWnd);
        window.atCreate = nullptr;
        EXPECT_TRUE(window.CreateTop()) << "the next one is not affected";
    }
    TestWindow window;
    EXPECT_FALSE(window.CreateEx(0, "NoSuchWindowClass", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr));
    const HWND other = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(other)) << "the object that failed caught somebody else's window";
    DestroyWindow(other);
}

TEST(MessageMap, LeadsToTheNearestHandler)
{
    TestWindow window;
    ASSERT_TRUE(window.CreateTop());
    window.TakeLog();
    static constexpr std::pair<int, const char*> commands[] = {
        {kPlain, "plain "},        {kBaseOnly, "base "},  {kBoth, "both "},     {kRangeFirst, "range200 "},
        {kRangeLast, "range209 "}, {kRangeFirst - 1, ""}, {kRangeLast + 5, ""}, {kUnanswered, ""},
    };
    for (const auto& [id, expected] : commands) {
        window.SendMessage(WM_COMMAND, static_cast<WPARAM>(id));
        EXPECT_EQ(expected, window.TakeLog()) << id;
        EXPECT_EQ(*expected != '\0', window.OnCmdMsg(static_cast<UINT>(id), CN_COMMAND, nullptr, &window) != FALSE);
        EXPECT_EQ("", window.TakeLog()) << "asking must not call the handler";
    }
    EXPECT_EQ(77, window.SendMessage(g_registered));
    EXPECT_EQ(0, window.SendMessage(kPrivate));
    EXPECT_EQ(9, window.SendMessage(kBasePrivate, 4, 5));
}

TEST(MessageMap, UpdatesMenus)
{
    TestWindow window;
    ASSERT_TRUE(window.CreateTop());
    const HMENU menu = CreatePopupMenu();
    for (const UINT id :
         {UINT{kPlain}, UINT{kBaseOnly}, UINT{kGreyed}, UINT{kChecked}, UINT{kUnanswered}, UINT{kRangeLast}})
        AppendMenuA(menu, MF_STRING | MF_ENABLED, id, "text");
    AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
    window.SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
    const auto isGrey = [menu](UINT id) {
        return (GetMenuState(menu, id, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED)) != 0;
    };
    EXPECT_FALSE(isGrey(kPlain));
    EXPECT_FALSE(isGrey(kBaseOnly)) << "the base class answers it";
    EXPECT_FALSE(isGrey(kRangeLast));
    EXPECT_TRUE(isGrey(kGreyed));
    EXPECT_TRUE(isGrey(kUnanswered)) << "nothing would happen on choosing it";
    EXPECT_FALSE(isGrey(kChecked));
    EXPECT_NE(0u, GetMenuState(menu, kChecked, MF_BYCOMMAND) & MF_CHECKED);
    char text[32] = {};
    GetMenuStringA(menu, kChecked, text, sizeof text, MF_BYCOMMAND);
    EXPECT_STREQ("changed", text);
    DestroyMenu(menu);
}

TEST(MessageMap, NoExceptionPassesTheWindowProcedure)
{
    TestWindow window;
    ASSERT_TRUE(window.CreateTop(WS_OVERLAPPEDWINDOW | WS_VISIBLE));
    window.TakeLog();
    ZO_EXPECT_NO_LEAK({
        EXPECT_EQ(0, window.SendMessage(kThrow, 0));
        EXPECT_EQ(0, window.SendMessage(kThrow, 1));
    });
    // A window that cannot paint itself is not asked again and again.
    window.Invalidate();
    window.UpdateWindow();
    EXPECT_EQ("paint ", window.TakeLog());
    EXPECT_FALSE(GetUpdateRect(window.m_hWnd, nullptr, FALSE));
}

namespace {

class DrawnListBox : public CListBox {
public:
    int drawn = 0;
    int measured = 0;
    int selections = 0;

    void DrawItem(DRAWITEMSTRUCT* item) override
    {
        EXPECT_EQ(m_hWnd, item->hwndItem);
        ++drawn;
    }
    void MeasureItem(MEASUREITEMSTRUCT* item) override
    {
        item->itemHeight = 23;
        ++measured;
    }

protected:
    LRESULT OnReflectedCommand(WPARAM, LPARAM)
    {
        ++selections;
        return 0;
    }
};

} // namespace

TEST(Reflection, LetsAListBoxDrawItself)
{
    TestWindow parent;
    ASSERT_TRUE(parent.CreateTop(WS_OVERLAPPEDWINDOW | WS_VISIBLE));
    DrawnListBox list;
    ASSERT_TRUE(list.Create(WS_VISIBLE | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, CRect(0, 0, 100, 80), &parent, 9));
    EXPECT_EQ(0, list.AddString("one"));
    EXPECT_EQ(1, list.AddString("two"));
    list.UpdateWindow();
    EXPECT_GE(list.drawn, 2);
    EXPECT_EQ(2, list.GetCount());
    list.SetCurSel(1);
    EXPECT_EQ(1, list.GetCurSel());
    // Asked before the list box has its object, a fixed height is set afterwards.
    EXPECT_GE(list.SetItemHeight(0, 23), 0);
    MEASUREITEMSTRUCT measure = {};
    measure.CtlType = ODT_LISTBOX;
    measure.CtlID = 9;
    EXPECT_EQ(TRUE, parent.SendMessage(WM_MEASUREITEM, 9, reinterpret_cast<LPARAM>(&measure)));
    EXPECT_EQ(23u, measure.itemHeight);
    EXPECT_GT(list.measured, 0);
}

namespace {

class RefusedFrame : public CFrameWnd {
public:
    explicit RefusedFrame(bool& gone) : m_gone(gone) {}
    ~RefusedFrame() override { m_gone = true; }
    BOOL PreCreateWindow(CREATESTRUCT& cs) override
    {
        cs.lpszClass = "NoSuchWindowClass";
        return TRUE;
    }

private:
    bool& m_gone;
};

} // namespace

TEST(MainWindow, ThatCannotBeCreatedIsGone)
{
    bool gone = false;
    auto* frame = new RefusedFrame(gone);
    AfxGetThread()->m_pMainWnd = frame;
    EXPECT_FALSE(frame->Create(nullptr, "frame", WS_OVERLAPPEDWINDOW, CRect(0, 0, 9, 9), nullptr, nullptr));
    EXPECT_TRUE(gone);
    EXPECT_EQ(nullptr, AfxGetThread()->m_pMainWnd);
}

TEST(MainWindow, EndsItsThread)
{
    AfxGetThread()->m_pMainWnd = new CFrameWnd;
    ASSERT_TRUE(static_cast<CFrameWnd*>(AfxGetThread()->m_pMainWnd)
                    ->Create(nullptr, "frame", WS_OVERLAPPEDWINDOW, CRect(0, 0, 100, 100), nullptr, nullptr));
    AfxGetThread()->m_pMainWnd->PostMessage(WM_CLOSE);
    EXPECT_EQ(0, AfxGetThread()->Run()) << "the loop ends with the window";
    EXPECT_EQ(nullptr, AfxGetThread()->m_pMainWnd);
}
