// What windows are asked and told beside their messages: each against the system's own call.
#include "support/test.h"

namespace {

constexpr UINT kChild = 9;
constexpr UINT kGrandchild = 10;

class Window : public CWnd {
public:
    explicit Window(DWORD style = WS_OVERLAPPEDWINDOW)
    {
        EXPECT_TRUE(CreateEx(0, nullptr, "", style, 10, 10, 300, 200, nullptr, nullptr));
    }
    std::string log;

    LRESULT OnTold(WPARAM, LPARAM)
    {
        log += IsWindowVisible() ? "told " : "told-hidden ";
        return 0;
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

class Told : public CWnd {
public:
    int count = 0;
    bool ends = false;
    LRESULT OnTold(WPARAM, LPARAM) { return ++count + (ends ? DestroyWindow() : 0); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Told, CWnd)
    ON_MESSAGE(WM_APP, OnTold)
    ON_MESSAGE(WM_SYSCOLORCHANGE, OnTold)
    ON_MESSAGE(WM_SETTINGCHANGE, OnTold)
END_MESSAGE_MAP()

} // namespace

TEST(CWnd, NullIsAWindowWithoutHandle)
{
    const CWnd* none = nullptr;
    EXPECT_EQ(nullptr, none->GetSafeHwnd());
    Window window;
    EXPECT_FALSE(window.IsChild(nullptr));
    EXPECT_EQ(nullptr, window.GetParent());
    EXPECT_TRUE(window.SetWindowPos(nullptr, 0, 0, 50, 60, SWP_NOMOVE));
    EXPECT_TRUE(window.SetWindowPos(&CWnd::wndBottom, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE));
    window.SetFont(nullptr);
    EXPECT_EQ(nullptr, window.GetFont());
    EXPECT_TRUE(window.SetMenu(nullptr));
    EXPECT_EQ(0, window.ReleaseDC(nullptr));
    CPoint corner(0, 0);
    window.MapWindowPoints(nullptr, &corner, 1);
    CRect place;
    window.GetWindowRect(&place);
    EXPECT_TRUE(place.PtInRect(corner));
    CRect back(corner.x, corner.y, corner.x + 7, corner.y + 9);
    window.ScreenToClient(&back);
    EXPECT_TRUE(back == CRect(0, 0, 7, 9));
    window.ClientToScreen(&back);
    EXPECT_TRUE(back.TopLeft() == corner);
}

TEST(CWnd, ChangesStyles)
{
    Window window;
    EXPECT_FALSE(window.ModifyStyle(0, WS_CAPTION, SWP_FRAMECHANGED));
    EXPECT_EQ("", window.log) << "all is so already";
    EXPECT_TRUE(window.ModifyStyle(WS_MAXIMIZEBOX, 0));
    EXPECT_EQ("style ", std::exchange(window.log, {}));
    EXPECT_EQ(0u, window.GetStyle() & WS_MAXIMIZEBOX);
    EXPECT_TRUE(window.ModifyStyleEx(0, WS_EX_CLIENTEDGE, SWP_FRAMECHANGED));
    EXPECT_EQ("style frame ", window.log);
    EXPECT_NE(0u, window.GetExStyle() & WS_EX_CLIENTEDGE);
    CRect outside(0, 0, 100, 100);
    CRect border(0, 0, 100, 100);
    window.CalcWindowRect(&outside, CWnd::adjustOutside);
    window.CalcWindowRect(&border);
    EXPECT_EQ(2 * GetSystemMetrics(SM_CXEDGE), outside.Width() - border.Width());
    EXPECT_GT(border.Height(), 100 + GetSystemMetrics(SM_CYCAPTION) - 1);
}

TEST(CWnd, KnowsItsRelations)
{
    Window window;
    Told child;
    ASSERT_TRUE(child.Create(nullptr, "", WS_CHILD, CRect(0, 0, 9, 9), &window, kChild));
    const HWND plain = CreateWindowA("STATIC", "", WS_CHILD, 0, 0, 9, 9, child.m_hWnd,
                                     reinterpret_cast<HMENU>(kGrandchild), nullptr, nullptr);
    EXPECT_EQ(plain, window.GetDescendantWindow(kGrandchild)->m_hWnd);
    EXPECT_EQ(nullptr, window.GetDescendantWindow(kGrandchild, TRUE)) << "no object of its own";
    EXPECT_EQ(&child, window.GetDescendantWindow(kChild, TRUE));
    EXPECT_EQ(&window, CWnd::FromHandle(plain)->GetTopLevelParent());
    EXPECT_EQ(&window, CWnd::FromHandle(plain)->GetParentOwner());
    EXPECT_EQ(nullptr, child.GetTopLevelFrame());
    EXPECT_EQ(&window, child.GetOwner());
    child.SetOwner(&child);
    EXPECT_EQ(&child, child.GetOwner());

    Told inner;
    ASSERT_TRUE(inner.Create(nullptr, "", WS_CHILD, CRect(0, 0, 9, 9), CWnd::FromHandle(plain), kChild));
    const struct {
        BOOL deep;
        BOOL permanent;
        int toChild;
        int toInner;
    } rows[] = {{FALSE, FALSE, 1, 0}, {TRUE, TRUE, 1, 1}, {TRUE, FALSE, 1, 1}};
    for (const auto& row : rows) {
        child.count = inner.count = 0;
        window.SendMessageToDescendants(WM_APP, 0, 0, row.deep, row.permanent);
        EXPECT_EQ(row.toChild, child.count);
        EXPECT_EQ(row.toInner, inner.count);
    }
    const auto textOfPlain = [plain] {
        char text[8] = {};
        GetWindowTextA(plain, text, sizeof text);
        return std::string(text);
    };
    const auto text = reinterpret_cast<LPARAM>("set");
    window.SendMessageToDescendants(WM_SETTEXT, 0, text, TRUE, TRUE);
    EXPECT_EQ("", textOfPlain()) << "no object of its own";
    window.SendMessageToDescendants(WM_SETTEXT, 0, text);
    EXPECT_EQ("set", textOfPlain());
    child.count = inner.count = 0;
    CWnd plainTop;
    ASSERT_TRUE(plainTop.CreateEx(0, nullptr, "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr));
    child.SetParent(&plainTop);
    plainTop.SendMessage(WM_SYSCOLORCHANGE);
    EXPECT_EQ(1, inner.count) << "the system tells windows without parent alone";
    plainTop.SendMessage(WM_SETTINGCHANGE);
    EXPECT_EQ(2, inner.count);
    Told ending, next;
    for (Told* told : {&ending, &next})
        ASSERT_TRUE(told->Create(nullptr, "", WS_CHILD, CRect(0, 0, 9, 9), &window, kChild));
    ending.ends = true;
    window.SendMessageToDescendants(WM_APP);
    EXPECT_EQ(1, next.count) << "behind one that goes";
}

TEST(CWnd, ReadsNumbersOfItsControls)
{
    Window window;
    CEdit field;
    ASSERT_TRUE(field.Create(WS_CHILD, CRect(0, 0, 50, 20), &window, kChild));
    window.SetDlgItemInt(kChild, static_cast<UINT>(-5));
    BOOL understood = FALSE;
    EXPECT_EQ(static_cast<UINT>(-5), window.GetDlgItemInt(kChild, &understood));
    EXPECT_TRUE(understood);
    window.SetDlgItemText(kChild, "text");
    CString text;
    EXPECT_EQ(4, window.GetDlgItemText(kChild, text));
    EXPECT_EQ(0, window.GetDlgItemText(99, text));
    EXPECT_TRUE(text.IsEmpty());
    CButton buttons[3];
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(buttons[i].Create("", BS_RADIOBUTTON, CRect(0, 0, 9, 9), &window, 20 + static_cast<UINT>(i)));
    EXPECT_EQ(0, window.GetCheckedRadioButton(20, 22));
    window.CheckRadioButton(20, 22, 21);
    EXPECT_EQ(21, window.GetCheckedRadioButton(20, 22));
    window.ModifyStyle(0, WS_VSCROLL);
    SCROLLINFO info = {0, SIF_RANGE | SIF_PAGE | SIF_POS, 0, 100000, 11, 70000, 0};
    window.SetScrollInfo(SB_VERT, &info);
    EXPECT_EQ(99990, window.GetScrollLimit(SB_VERT));
    ASSERT_TRUE(window.GetScrollInfo(SB_VERT, &info));
    EXPECT_EQ(70000, info.nPos) << "more than 16 bits";
}

TEST(CWnd, ModalLoopIsIdleOnceAfterAMessage)
{
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
        try {
            refusing.SubclassWindow(plain);
            ADD_FAILURE() << "took it over";
        } catch (CResourceException* e) {
            e->Delete();
        }
        EXPECT_EQ(nullptr, refusing.m_hWnd);
        EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(plain));
    }
    EXPECT_TRUE(IsWindow(plain));
    DestroyWindow(plain);
}
