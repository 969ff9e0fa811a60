// What windows are asked and told beside their messages: each against the system's own call.
#include "kit.h"

namespace {

constexpr UINT kChild = 9;
constexpr UINT kGrandchild = 10;

/// Writes down what it is told.
class Window : public CWnd {
public:
    Window() = default;
    explicit Window(DWORD style) { EXPECT_TRUE(CreateEx(0, nullptr, "", style, 10, 10, 300, 200, nullptr, nullptr)); }
    std::string log;
    bool ends = false; // when it is told

    LRESULT OnTold(WPARAM, LPARAM)
    {
        log += IsWindowVisible() ? "told " : "told-hidden ";
        return ends && DestroyWindow();
    }
    void OnStyleChanged(int, LPSTYLESTRUCT) { log += "style "; }
    void OnWindowPosChanging(WINDOWPOS* place)
    {
        CWnd::OnWindowPosChanging(place);
        if ((place->flags & SWP_FRAMECHANGED) != 0)
            log += "frame ";
    }
    void OnEnterIdle(UINT why, CWnd* who) { log += why == MSGF_DIALOGBOX && who != nullptr ? "parent-idle " : "? "; }
    LRESULT OnKickIdle(WPARAM, LPARAM count)
    {
        log += "idle" + std::to_string(count) + (IsWindowVisible() ? " " : "-hidden ");
        if (count == 0)
            return TRUE;
        EndModalLoop(4);
        return FALSE;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Window, CWnd)
    ON_MESSAGE(WM_APP, OnTold)
    ON_MESSAGE(WM_SYSCOLORCHANGE, OnTold)
    ON_MESSAGE(WM_SETTINGCHANGE, OnTold)
    ON_MESSAGE(WM_KICKIDLE, OnKickIdle)
    ON_WM_ENTERIDLE()
    ON_WM_STYLECHANGED()
    ON_WM_WINDOWPOSCHANGING()
END_MESSAGE_MAP()

} // namespace

TEST(CWnd, NullIsAWindowWithoutHandle)
{
    const CWnd* none = nullptr;
    EXPECT_EQ(nullptr, none->GetSafeHwnd());
    TopWindow window(WS_OVERLAPPEDWINDOW);
    window.SetFont(nullptr);
    EXPECT_TRUE(window.GetParent() == nullptr && window.GetFont() == nullptr);
    EXPECT_EQ("0 1 1 1 0", (Answers{window.IsChild(nullptr), window.SetWindowPos(nullptr, 0, 0, 50, 60, SWP_NOMOVE),
                                    window.SetWindowPos(&CWnd::wndBottom, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE),
                                    window.SetMenu(nullptr), window.ReleaseDC(nullptr)}));
    CPoint corner(0, 0);
    window.MapWindowPoints(nullptr, &corner, 1);
    EXPECT_TRUE(AreaOf(window).PtInRect(corner));
    CRect back(corner.x, corner.y, corner.x + 7, corner.y + 9);
    window.ScreenToClient(&back);
    EXPECT_EQ(CRect(0, 0, 7, 9), back);
    window.ClientToScreen(&back);
    EXPECT_EQ(corner, back.TopLeft());
}

TEST(CWnd, ChangesStyles)
{
    Window window(WS_OVERLAPPEDWINDOW);
    EXPECT_FALSE(window.ModifyStyle(0, WS_CAPTION, SWP_FRAMECHANGED));
    EXPECT_EQ("", window.log) << "all is so already";
    EXPECT_TRUE(window.ModifyStyle(WS_MAXIMIZEBOX, 0));
    EXPECT_EQ("style ", std::exchange(window.log, {}));
    EXPECT_TRUE(window.ModifyStyleEx(0, WS_EX_CLIENTEDGE, SWP_FRAMECHANGED));
    EXPECT_EQ("style frame ", window.log);
    EXPECT_EQ("0 512", (Answers{window.GetStyle() & WS_MAXIMIZEBOX, window.GetExStyle() & WS_EX_CLIENTEDGE}));
    CRect outside(0, 0, 100, 100), border(outside);
    window.CalcWindowRect(&outside, CWnd::adjustOutside);
    window.CalcWindowRect(&border);
    EXPECT_EQ(2 * GetSystemMetrics(SM_CXEDGE), outside.Width() - border.Width());
    EXPECT_GT(border.Height(), 100 + GetSystemMetrics(SM_CYCAPTION) - 1);
}

TEST(CWnd, KnowsItsRelations)
{
    const CRect place(0, 0, 9, 9);
    TopWindow window(WS_POPUP), plainTop(WS_POPUP);
    Window child, inner;
    ASSERT_TRUE(child.Create(nullptr, "", WS_CHILD, place, &window, kChild));
    const HWND plain = CreateWindowA("STATIC", "", WS_CHILD, 0, 0, 9, 9, child.m_hWnd,
                                     reinterpret_cast<HMENU>(kGrandchild), nullptr, nullptr);
    EXPECT_EQ(plain, window.GetDescendantWindow(kGrandchild)->m_hWnd);
    EXPECT_EQ(nullptr, window.GetDescendantWindow(kGrandchild, TRUE)) << "no object of its own";
    EXPECT_EQ(&child, window.GetDescendantWindow(kChild, TRUE));
    CWnd& grandchild = *CWnd::FromHandle(plain);
    EXPECT_TRUE(grandchild.GetTopLevelParent() == &window && grandchild.GetParentOwner() == &window);
    EXPECT_TRUE(child.GetTopLevelFrame() == nullptr && child.GetOwner() == &window);
    child.SetOwner(&child);
    EXPECT_EQ(&child, child.GetOwner());

    ASSERT_TRUE(inner.Create(nullptr, "", WS_CHILD, place, &grandchild, kChild));
    window.SendMessageToDescendants(WM_APP, 0, 0, FALSE, FALSE);
    EXPECT_EQ("told-hidden /", child.log + "/" + inner.log);
    window.SendMessageToDescendants(WM_APP, 0, 0, TRUE, TRUE);
    EXPECT_EQ("told-hidden told-hidden /told-hidden ", child.log + "/" + inner.log);
    const auto text = reinterpret_cast<LPARAM>("set");
    window.SendMessageToDescendants(WM_SETTEXT, 0, text, TRUE, TRUE);
    EXPECT_EQ("", TextOf(plain)) << "no object of its own";
    window.SendMessageToDescendants(WM_SETTEXT, 0, text);
    EXPECT_EQ("set", TextOf(plain));
    child.SetParent(&plainTop);
    for (const UINT message : {WM_SYSCOLORCHANGE, WM_SETTINGCHANGE}) {
        inner.log.clear();
        plainTop.SendMessage(message);
        EXPECT_EQ("told-hidden ", inner.log) << "the system tells windows without parent alone";
    }
    Window ending, next;
    for (Window* told : {&ending, &next})
        ASSERT_TRUE(told->Create(nullptr, "", WS_CHILD, place, &window, kChild));
    ending.ends = true;
    next.log.clear();
    window.SendMessageToDescendants(WM_APP);
    EXPECT_EQ("told-hidden ", next.log) << "behind one that goes";
}

TEST(CWnd, ReadsNumbersOfItsControls)
{
    TopWindow window;
    CEdit field;
    ASSERT_TRUE(field.Create(WS_CHILD, CRect(0, 0, 50, 20), &window, kChild));
    window.SetDlgItemInt(kChild, static_cast<UINT>(-5));
    BOOL understood = FALSE;
    EXPECT_EQ(static_cast<UINT>(-5), window.GetDlgItemInt(kChild, &understood));
    window.SetDlgItemText(kChild, "text");
    CString text;
    EXPECT_EQ("1 4 0", (Answers{understood, window.GetDlgItemText(kChild, text), window.GetDlgItemText(99, text)}));
    EXPECT_TRUE(text.IsEmpty());
    CButton buttons[3];
    for (UINT i = 0; i < 3; ++i)
        ASSERT_TRUE(buttons[i].Create("", BS_RADIOBUTTON, CRect(0, 0, 9, 9), &window, 20 + i));
    EXPECT_EQ(0, window.GetCheckedRadioButton(20, 22));
    window.CheckRadioButton(20, 22, 22);
    EXPECT_EQ(22, window.GetCheckedRadioButton(20, 22));
    window.ModifyStyle(0, WS_VSCROLL);
    SCROLLINFO info = {0, SIF_RANGE | SIF_PAGE | SIF_POS, 0, 100000, 11, 70000, 0};
    window.SetScrollInfo(SB_VERT, &info);
    EXPECT_EQ(99990, window.GetScrollLimit(SB_VERT));
    ASSERT_TRUE(window.GetScrollInfo(SB_VERT, &info));
    EXPECT_EQ(70000, info.nPos) << "more than 16 bits";
}

TEST(CWnd, ModalLoopIsIdleOnceAfterAMessage)
{
    // Over none of the windows.
    ::SetCursorPos(::GetSystemMetrics(SM_CXSCREEN) - 1, ::GetSystemMetrics(SM_CYSCREEN) - 1);
    Window parent(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    const struct {
        DWORD flags;
        const char* own;
        const char* parents;
    } rows[] = {
        {0, "told idle0 idle1 ", "parent-idle "},
        {MLF_NOIDLEMSG, "told idle0 idle1 ", ""},
        {MLF_SHOWONIDLE, "told-hidden idle0 idle1 ", "parent-idle "},
    };
    for (const auto& row : rows) {
        Window window(WS_POPUP);
        ::SetWindowLongPtrA(window.m_hWnd, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(parent.m_hWnd));
        window.PostMessage(WM_APP);
        EXPECT_EQ(4, window.RunModalLoop(row.flags));
        EXPECT_EQ(row.own, window.log);
        EXPECT_EQ(row.parents, std::exchange(parent.log, {}));
        EXPECT_TRUE(window.IsWindowVisible());
    }
    Window quiet(WS_POPUP);
    quiet.PostMessage(WM_APP);
    struct Ender : CWnd {
        static void CALLBACK End(HWND window, UINT, UINT_PTR, DWORD) { FromHandlePermanent(window)->EndModalLoop(5); }
    };
    quiet.SetTimer(1, 20, &Ender::End);
    EXPECT_EQ(5, quiet.RunModalLoop(MLF_NOKICKIDLE));
    EXPECT_EQ("told ", quiet.log);
}

TEST(CWnd, StaysFreeWhenItCannotBeTakenOver)
{
    struct Refusing : CWnd {
        void PreSubclassWindow() override { AfxThrowResourceException(); }
    };
    const HWND plain = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    {
        Refusing refusing;
        EXPECT_EQ("CResourceException", Thrown([&] { refusing.SubclassWindow(plain); }));
        EXPECT_TRUE(refusing.m_hWnd == nullptr && CWnd::FromHandlePermanent(plain) == nullptr);
    }
    EXPECT_TRUE(DestroyWindow(plain));
}
