#include "support/test.h"

namespace {

const UINT g_registered = RegisterWindowMessageA("ZoTestsRegisteredMessage");
enum Message { kThrow = WM_APP + 1, kPrivate, kBasePrivate };
enum Command { kPlain = 100, kBaseOnly, kUnanswered, kBoth, kPassedOn };
enum Range { kRangeFirst = 200, kRangeLast = 209 }; // of commands
constexpr UINT kChild = 9;                          // identifier

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
        if (log.empty())
            log += "first ";
        CWnd::OnGetMinMaxInfo(info);
    }
    LRESULT OnGetTextLength(WPARAM, LPARAM)
    {
        SendMessage(kPrivate); // which is not the message that has a default
        return Default();
    }
    void OnBaseCommand() { log += "base "; }
    LRESULT OnBasePrivate(WPARAM wParam, LPARAM lParam) { return static_cast<LRESULT>(wParam) + lParam; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(BaseWindow, CWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_GETMINMAXINFO()
    ON_MESSAGE(WM_GETTEXTLENGTH, OnGetTextLength)
    ON_COMMAND(kBaseOnly, OnBaseCommand)
    ON_COMMAND(kBoth, OnBaseCommand)
    ON_COMMAND(kPassedOn, OnBaseCommand)
    ON_MESSAGE(kBasePrivate, OnBasePrivate)
END_MESSAGE_MAP()

class TestWindow : public BaseWindow {
protected:
    void OnPlain() { log += "plain "; }
    void OnBoth() { log += "both "; }
    void OnRange(UINT id) { log += "range" + std::to_string(id) + " "; }
    LRESULT OnRegistered(WPARAM, LPARAM) { return 77; }
    LRESULT OnThrow(WPARAM which, LPARAM)
    {
        if (which == 0)
            AfxThrowUserException();
        throw new CFileException(CFileException::badPath);
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
    AFX_ENTRY(WM_COMMAND, CN_COMMAND, kPassedOn, kPassedOn, nullptr, self->log += "first ", call.bHandled = FALSE)
    ON_COMMAND_RANGE(kRangeFirst, kRangeLast, OnRange)
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
        const HWND handle = window.m_hWnd;
        EXPECT_EQ(&window, CWnd::FromHandlePermanent(handle));
        EXPECT_EQ(&window, CWnd::FromHandle(handle));
        EXPECT_TRUE(window.DestroyWindow());
        EXPECT_EQ("first create destroy gone ", window.TakeLog()) << "WM_GETMINMAXINFO comes before WM_NCCREATE";
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
    CMemoryState before, after, difference;
    ZO_EXPECT_NO_LEAK({
        CWnd* temporary = CWnd::FromHandle(handle);
        ASSERT_NE(nullptr, temporary);
        EXPECT_EQ(temporary, CWnd::FromHandle(handle)) << "one object a handle";
        EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(handle));
        EXPECT_EQ(nullptr, CWnd::FromHandle(nullptr));
        CString text;
        temporary->GetWindowText(text);
        EXPECT_STREQ("text", text);
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
    object.TakeLog();
    parent.DestroyWindow();
    EXPECT_EQ("destroy gone ", object.TakeLog()) << "it goes with its parent";
    EXPECT_EQ(nullptr, object.m_hWnd);
}

TEST(CWnd, CreationCanFail)
{
    TestWindow window, unknown;
    window.atCreate = [] { AfxThrowMemoryException(); };
    EXPECT_FALSE(window.CreateTop()); // once for what the window system makes
    ZO_EXPECT_NO_LEAK(EXPECT_FALSE(window.CreateTop()));
    EXPECT_EQ(nullptr, window.m_hWnd);
    window.atCreate = nullptr;
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
    window.TakeLog();
    static constexpr std::pair<int, const char*> commands[] = {
        {kPlain, "plain "},         {kBaseOnly, "base "},      {kBoth, "both "},
        {kRangeFirst, "range200 "}, {kRangeLast, "range209 "}, {kRangeFirst - 1, ""},
        {kRangeLast + 1, ""},       {kUnanswered, ""},         {kPassedOn, "first base "},
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

TEST(MessageMap, NoExceptionPassesTheWindowProcedure)
{
    TestWindow window;
    ASSERT_TRUE(window.CreateTop(WS_OVERLAPPEDWINDOW | WS_VISIBLE));
    window.TakeLog();
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
    window.Invalidate();
    window.UpdateWindow();
    EXPECT_EQ("paint ", window.TakeLog());
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
    CWnd owner, window;
    ASSERT_TRUE(owner.CreateEx(0, nullptr, "", WS_POPUP | WS_VISIBLE, 0, 0, 1, 1, nullptr, nullptr));
    ASSERT_TRUE(window.CreateEx(0, nullptr, "", WS_POPUP, 0, 0, 200, 100, nullptr, nullptr));
    const struct {
        CRect owner; // left, top, width, height
        int x, y;
    } cases[] = {{{work.left, work.top, 20, 20}, work.left, work.top},
                 {{300, 250, 100, 60}, 250, 230},
                 {{work.right - 20, work.bottom - 20, 20, 20}, work.right - 200, work.bottom - 100}};
    for (const auto& c : cases) {
        owner.MoveWindow(c.owner.left, c.owner.top, c.owner.right, c.owner.bottom);
        window.CenterWindow(&owner);
        const CRect place = AreaOf(window.m_hWnd);
        EXPECT_EQ(c.x, place.left);
        EXPECT_EQ(c.y, place.top);
    }
    CWnd child;
    ASSERT_TRUE(child.Create("STATIC", "", 0, CRect(0, 0, 20, 10), &window, 1));
    EXPECT_FALSE(child.Create("STATIC", "", 0, CRect(0, 0, 9, 9), &window, 2)) << "it has a window";
    child.CenterWindow();
    CRect place = AreaOf(child.m_hWnd);
    window.ScreenToClient(&place);
    EXPECT_EQ(CRect(90, 45, 110, 55), place) << "within its parent";
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
