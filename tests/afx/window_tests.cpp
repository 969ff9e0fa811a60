#include "test_window.h"

namespace {

const UINT g_registered = RegisterWindowMessageA("ZoTestsRegisteredMessage");
enum Message { kThrow = WM_APP + 1, kPrivate, kBasePrivate };
enum Command { kPlain = 100, kBaseOnly, kUnanswered, kBoth, kPassedOn };
enum Range { kRangeFirst = 200, kRangeLast = 209 }; // of commands
constexpr UINT kChild = 9;                          // identifier

class BaseWindow : public CWnd {
public:
    std::function<void()> atCreate = [] {};

    BOOL CreateTop(DWORD style = WS_OVERLAPPEDWINDOW)
    {
        TakeLog();
        return CreateEx(0, nullptr, "title", style, 0, 0, 200, 100, nullptr, nullptr);
    }

protected:
    Noted base{"base"}, basePrivate{"private"};
    int OnCreate(CREATESTRUCT* cs)
    {
        g_log += FromHandlePermanent(m_hWnd) == this ? "create|" : "create without object|";
        atCreate();
        return CWnd::OnCreate(cs);
    }
    void OnDestroy()
    {
        CWnd::OnDestroy();
        g_log += "destroy|";
    }
    void PostNcDestroy() override { g_log += m_hWnd == nullptr ? "gone|" : "gone with handle|"; }
    void OnGetMinMaxInfo(MINMAXINFO* info)
    {
        g_log += g_log.empty() ? "first|" : "";
        CWnd::OnGetMinMaxInfo(info);
    }
    LRESULT OnGetTextLength(WPARAM, LPARAM)
    {
        SendMessage(kPrivate); // which is not the message that has a default
        return Default();
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(BaseWindow, CWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_GETMINMAXINFO()
    ON_MESSAGE(WM_GETTEXTLENGTH, OnGetTextLength)
    ON_COMMAND(kBaseOnly, base)
    ON_COMMAND(kBoth, base)
    ON_COMMAND(kPassedOn, base)
    ON_MESSAGE(kBasePrivate, basePrivate)
END_MESSAGE_MAP()

class TestWindow : public BaseWindow {
protected:
    Noted plain{"plain"}, both{"both"}, range{"range"}, registered{"registered"}, passedOn{"passed", FALSE};
    LRESULT OnThrow(WPARAM which, LPARAM)
    {
        if (which == 0)
            AfxThrowUserException();
        throw new CFileException(CFileException::badPath);
    }
    void OnPaint()
    {
        g_log += "paint|";
        AfxThrowUserException();
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(TestWindow, BaseWindow)
    ON_COMMAND(kPlain, plain)
    ON_COMMAND(kBoth, both)
    ON_COMMAND_EX(kPassedOn, passedOn)
    ON_COMMAND_RANGE(kRangeFirst, kRangeLast, range)
    ON_REGISTERED_MESSAGE(g_registered, registered)
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
        const HWND handle = window.m_hWnd;
        EXPECT_EQ(&window, CWnd::FromHandle(handle));
        EXPECT_TRUE(window.DestroyWindow());
        EXPECT_EQ("first|create|destroy|gone|", TakeLog()) << "WM_GETMINMAXINFO comes before WM_NCCREATE";
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
    const HWND handle = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    CMemoryState before, after, difference;
    ZO_EXPECT_NO_LEAK({
        EXPECT_EQ(handle, CWnd::FromHandle(handle)->m_hWnd);
        EXPECT_EQ(CWnd::FromHandle(handle), CWnd::FromHandle(handle)) << "one object a handle";
        EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(handle));
        EXPECT_EQ(nullptr, CWnd::FromHandle(nullptr));
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
    EXPECT_EQ(7, SendMessage(edit, kBasePrivate, 2, 3)) << "its own handler";
    EXPECT_EQ(4, SendMessage(edit, WM_GETTEXTLENGTH, 0, 0)) << "the control's procedure behind it";
    EXPECT_EQ(edit, object.UnsubclassWindow());
    EXPECT_EQ(procedure, GetWindowLongPtr(edit, GWLP_WNDPROC));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(edit));
    EXPECT_EQ(nullptr, object.m_hWnd);
    EXPECT_FALSE(object.SubclassDlgItem(8, &parent)) << "there is no such control";

    CWnd attached; // which does not take the procedure
    ASSERT_TRUE(attached.Attach(edit));
    EXPECT_EQ(&attached, CWnd::FromHandlePermanent(edit));
    EXPECT_EQ(edit, attached.Detach());
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(edit));
    const HWND other = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    ASSERT_TRUE(attached.Attach(other));
    EXPECT_TRUE(attached.DestroyWindow());
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(other)) << "a stale entry";
    EXPECT_EQ(nullptr, attached.m_hWnd);

    ASSERT_TRUE(object.SubclassWindow(edit));
    TakeLog();
    parent.DestroyWindow();
    EXPECT_EQ("destroy|destroy|gone|gone|", TakeLog()) << "it goes with its parent";
    EXPECT_EQ(nullptr, object.m_hWnd);
}

static HHOOK WINAPI SetNoHook(int, HOOKPROC, HINSTANCE, DWORD) { return nullptr; }

TEST(CWnd, CreationCanFail)
{
    TestWindow window, unknown;
    {
        const ImportPatch none("ZOAFX.DLL", "SetWindowsHookExA", &SetNoHook);
        EXPECT_FALSE(window.CreateTop()) << "a window without its object";
    }
    window.atCreate = [] { AfxThrowMemoryException(); };
    EXPECT_FALSE(window.CreateTop()); // once for what the window system makes
    ZO_EXPECT_NO_LEAK(EXPECT_FALSE(window.CreateTop()));
    EXPECT_EQ(nullptr, window.m_hWnd);
    window.atCreate = [] {};
    EXPECT_TRUE(window.CreateTop()) << "the next one is not affected";
    EXPECT_FALSE(unknown.CreateEx(0, "NoSuchWindowClass", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr));
    const HWND other = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(other)) << "the object that failed caught somebody else's window";
    DestroyWindow(other);
}

TEST(MessageMap, LeadsToTheNearestHandler)
{
    TestWindow window;
    ASSERT_TRUE(window.CreateTop());
    TakeLog();
    static constexpr std::pair<int, const char*> commands[] = {
        {kPlain, "plain|"},          {kBaseOnly, "base|"},       {kBoth, "both|"},
        {kRangeFirst, "range 200|"}, {kRangeLast, "range 209|"}, {kRangeFirst - 1, ""},
        {kRangeLast + 1, ""},        {kUnanswered, ""},          {kPassedOn, "passed 104|base|"},
    };
    for (const auto& [id, expected] : commands) {
        window.SendMessage(WM_COMMAND, static_cast<WPARAM>(id));
        EXPECT_EQ(expected, TakeLog()) << id;
        EXPECT_EQ(*expected != '\0', window.OnCmdMsg(static_cast<UINT>(id), CN_COMMAND, nullptr, &window) != FALSE);
        EXPECT_EQ("", TakeLog()) << "asking must not call the handler";
    }
    EXPECT_EQ(7, window.SendMessage(g_registered, 2, 3));
    EXPECT_EQ(0, window.SendMessage(kPrivate));
    EXPECT_EQ(7, window.SendMessage(kBasePrivate, 4, 5));
    EXPECT_EQ("registered 2 3|private 4 5|", TakeLog());
}

TEST(MessageMap, NoExceptionPassesTheWindowProcedure)
{
    TestWindow window;
    ASSERT_TRUE(window.CreateTop(WS_OVERLAPPEDWINDOW | WS_VISIBLE));
    static int told = 0;
    AfxSetMessageBox([](HWND, LPCSTR, LPCSTR, UINT) { return ++told; });
    ZO_EXPECT_NO_LEAK({
        told = 0;
        EXPECT_EQ(0, window.SendMessage(kThrow, 0));
        EXPECT_EQ(0, window.SendMessage(kThrow, 1));
        EXPECT_EQ(1, told) << "of all but the user's own exception";
    });
    AfxSetMessageBox(nullptr);
    // A window that cannot paint itself is not asked again and again.
    TakeLog();
    window.Invalidate();
    window.UpdateWindow();
    EXPECT_EQ("paint|", TakeLog());
    EXPECT_FALSE(GetUpdateRect(window.m_hWnd, nullptr, FALSE));
}

TEST(Drawing, GivesBackWhatItTook)
{
    TestWindow window;
    ASSERT_TRUE(window.CreateTop());
    HGDIOBJ bitmap;
    HDC handle;
    {
        CBitmap object;
        ASSERT_TRUE(object.CreateBitmap(8, 8, 1, 1, nullptr));
        bitmap = object.GetSafeHandle();
        CClientDC dc(&window);
        handle = dc.GetSafeHdc();
        EXPECT_EQ(window.m_hWnd, WindowFromDC(handle));
        SIZE extent;
        GetTextExtentPoint32A(handle, "ab", 2, &extent);
        EXPECT_EQ(extent.cx, dc.GetTextExtent("abc", 2).cx);
        EXPECT_EQ(extent.cy, dc.GetTextExtent("abc", 2).cy);
    }
    EXPECT_EQ(0u, GetObjectType(bitmap));
    EXPECT_EQ(nullptr, WindowFromDC(handle));
}

TEST(CWnd, CentersWithinTheWorkArea)
{
    CRect work;
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    TopWindow owner(WS_POPUP | WS_VISIBLE), window(WS_POPUP);
    const CSize large = AreaOf(window.m_hWnd).Size(), small(20, 20);
    const std::pair<CRect, CPoint> cases[] = {
        // the owner's place, and where the window comes to lie
        {{work.TopLeft(), small}, work.TopLeft()},
        {{CPoint(300, 250), large + small}, CPoint(310, 260)},
        {{work.BottomRight() - small, small}, work.BottomRight() - large},
    };
    for (const auto& [place, expected] : cases) {
        owner.MoveWindow(place);
        window.CenterWindow(&owner);
        EXPECT_EQ(expected, AreaOf(window.m_hWnd).TopLeft());
    }
    CWnd child;
    ASSERT_TRUE(child.Create("STATIC", "", 0, CRect(0, 0, 20, 10), &window, 1));
    EXPECT_FALSE(child.Create("STATIC", "", 0, CRect(0, 0, 9, 9), &window, 2)) << "it has a window";
    child.CenterWindow();
    CRect place = AreaOf(child.m_hWnd);
    window.ScreenToClient(&place);
    EXPECT_EQ(CRect(140, 95, 160, 105), place) << "within its parent";
}

TEST(MainWindow, EndsItsThread)
{
    CWinThread* thread = AfxGetThread();
    const auto create = [thread](LPCSTR className) {
        auto* frame = new CFrameWnd;
        thread->m_pMainWnd = frame;
        return frame->Create(className, "frame", WS_OVERLAPPEDWINDOW, CRect(0, 0, 100, 100), nullptr, nullptr);
    };
    ZO_EXPECT_NO_LEAK(EXPECT_FALSE(create("NoSuchWindowClass")));
    EXPECT_EQ(nullptr, thread->m_pMainWnd) << "a frame that cannot be created is gone";
    ASSERT_TRUE(create(nullptr));
    thread->m_pMainWnd->PostMessage(WM_CLOSE);
    EXPECT_EQ(0, thread->Run()) << "the loop ends with the window";
    EXPECT_EQ(nullptr, thread->m_pMainWnd);
}
