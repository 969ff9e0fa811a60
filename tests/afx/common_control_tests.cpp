// The common controls, and the tips of windows.
#include "kit.h"

#include <afxcmn.h>

namespace {

constexpr UINT kId = 9;
const CRect kPlace(0, 0, 150, 120);
const std::string kLong(300, 'x'); // longer than a first try at reading a text

int CALLBACK Backwards(LPARAM first, LPARAM second, LPARAM calls)
{
    ++*reinterpret_cast<int*>(calls);
    return static_cast<int>(second - first);
}

int CALLBACK Throwing(LPARAM, LPARAM, LPARAM calls)
{
    ++*reinterpret_cast<int*>(calls);
    AfxThrowUserException();
}

} // namespace

TEST(CommonControls, AreTabsAndHeaders)
{
    TopWindow parent;
    CTabCtrl tabs;
    CHeaderCtrl header;
    ASSERT_TRUE(tabs.Create(TCS_FIXEDWIDTH, kPlace, &parent, kId) && header.Create(0, kPlace, &parent, kId));
    EXPECT_EQ("0 1 2 0", (Answers{tabs.InsertItem(0, "first"), tabs.InsertItem(1, "second", 7),
                                  tabs.InsertItem(TCIF_PARAM, 2, nullptr, 0, 55), tabs.SetCurSel(2)}));
    TCITEMA tab = {};
    tab.mask = TCIF_IMAGE | TCIF_PARAM;
    EXPECT_EQ("1 7 1 55", (Answers{tabs.GetItem(1, &tab), tab.iImage, tabs.GetItem(2, &tab), tab.lParam}));
    tabs.SetItemSize(CSize(40, 18));
    EXPECT_EQ(CSize(40, 18), tabs.SetItemSize(CSize(44, 20)));
    HDITEMA item = {};
    item.mask = HDI_WIDTH;
    header.InsertItem(0, &item);
    header.InsertItem(1, &item);
    int order[] = {1, 0}, found[2] = {};
    EXPECT_EQ("1 1 1 0", (Answers{header.SetOrderArray(2, order), header.GetOrderArray(found), found[0], found[1]}));
}

TEST(CommonControls, AreSpinButtons)
{
    TopWindow parent;
    CSpinButtonCtrl spin;
    ASSERT_TRUE(spin.Create(0, kPlace, &parent, kId));
    spin.SetRange(-10, 10);
    int lower = 0, upper = 0;
    spin.GetRange(lower, upper);
    spin.SetPos(-4);
    EXPECT_EQ("-10 10 -4", (Answers{lower, upper, spin.SetPos(7)}));
    spin.SetRange32(100, 100000);
    spin.GetRange32(lower, upper);
    EXPECT_EQ("100 100000", (Answers{lower, upper}));
}

TEST(CommonControls, AreListViews)
{
    TopWindow parent;
    CListCtrl list;
    ASSERT_TRUE(list.Create(WS_VISIBLE | LVS_REPORT, kPlace, &parent, kId));
    LVCOLUMNA column = {};
    column.mask = LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
    int order[] = {1, 2, 0}, found[3] = {};
    EXPECT_EQ("0 1 1 2 1 1", (Answers{list.InsertColumn(0, "name", LVCFMT_LEFT, 60),
                                      list.InsertColumn(1, "value", LVCFMT_RIGHT, 50, 1), list.GetColumn(1, &column),
                                      list.InsertColumn(2, &column), list.SetColumnOrderArray(3, order),
                                      list.GetColumnOrderArray(found)}));
    EXPECT_EQ("50 1 1 1 2 0",
              (Answers{column.cx, column.fmt & LVCFMT_JUSTIFYMASK, column.iSubItem, found[0], found[1], found[2]}));

    char text[4];
    EXPECT_EQ("0 1 2 1 \"value\" \"\" 3",
              (Answers{list.InsertItem(0, "b"), list.InsertItem(1, kLong.c_str(), 1),
                       list.InsertItem(LVIF_TEXT | LVIF_PARAM | LVIF_STATE, 2, "c", LVIS_FOCUSED, LVIS_FOCUSED, 0, 7),
                       list.SetItemText(0, 1, "value"), list.GetItemText(0, 1), list.GetItemText(9, 0),
                       list.GetItemText(0, 1, text, sizeof text)}));
    EXPECT_STREQ("val", text);
    EXPECT_STREQ(kLong.c_str(), list.GetItemText(1, 0));
    LVITEMA item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = 1;
    EXPECT_EQ("1 1 1 7 0 5 1 3", (Answers{list.SetItemData(0, 5), list.SetItem(1, 0, LVIF_IMAGE, nullptr, 3, 0, 0, 0),
                                          list.GetItemState(2, LVIS_FOCUSED | LVIS_SELECTED), list.GetItemData(2),
                                          list.GetItemData(9), list.GetItemData(0), list.GetItem(&item), item.iImage}));
    list.SetItemState(-1, LVIS_SELECTED, LVIS_SELECTED);
    list.SetItemState(1, 0, LVIS_SELECTED);
    POSITION position = list.GetFirstSelectedItemPosition();
    const int first = list.GetNextSelectedItem(position), second = list.GetNextSelectedItem(position);
    LVFINDINFOA wanted = {};
    wanted.flags = LVFI_STRING;
    wanted.psz = "c";
    EXPECT_EQ("0 2 0 2 -1", (Answers{first, second, position, list.FindItem(&wanted), list.FindItem(&wanted, 2)}));

    CRect place, sub;
    UINT flags = 0;
    EXPECT_TRUE(list.GetSubItemRect(1, 1, LVIR_BOUNDS, sub) && list.GetItemRect(1, place, LVIR_LABEL));
    EXPECT_EQ(CRect(0, place.top, 50, place.bottom), sub) << "the second column stands first";
    EXPECT_EQ(1, list.HitTest(place.TopLeft() + CSize(3, 3), &flags));
    EXPECT_NE(0u, flags & LVHT_ONITEM);

    int calls = 0;
    list.SetItemData(1, 6);
    EXPECT_TRUE(list.SortItems(&Backwards, reinterpret_cast<DWORD_PTR>(&calls)));
    EXPECT_EQ("\"c\" \"b\"", (Answers{list.GetItemText(0, 0), list.GetItemText(2, 0)}));
    calls = 0;
    EXPECT_EQ("CUserException", Thrown([&] { list.SortItems(&Throwing, reinterpret_cast<DWORD_PTR>(&calls)); }));
    EXPECT_EQ(1, calls) << "it is not called again";
    list.SetExtendedStyle(LVS_EX_CHECKBOXES);
    list.SetCheck(1);
    EXPECT_EQ("0 1", (Answers{list.GetCheck(0), list.GetCheck(1)}));
}

TEST(CommonControls, AreTreeViews)
{
    TopWindow parent;
    CTreeCtrl tree;
    ASSERT_TRUE(tree.Create(WS_VISIBLE | TVS_HASBUTTONS | TVS_LINESATROOT | TVS_CHECKBOXES, kPlace, &parent, kId));
    const HTREEITEM root = tree.InsertItem("root"), second = tree.InsertItem("second", 1, 2, root),
                    last = tree.InsertItem("last");
    const HTREEITEM first = tree.InsertItem(TVIF_TEXT | TVIF_PARAM, kLong.c_str(), 0, 0, 0, 0, 7, root, TVI_FIRST);
    EXPECT_TRUE(tree.Expand(root, TVE_EXPAND) && tree.SelectItem(second) && tree.SelectDropTarget(first));
    EXPECT_EQ((Answers{root, first, second, first, root, root, first, second, second, first}),
              (Answers{tree.GetRootItem(), tree.GetChildItem(root), tree.GetNextSiblingItem(first),
                       tree.GetPrevSiblingItem(second), tree.GetParentItem(second), tree.GetFirstVisibleItem(),
                       tree.GetNextVisibleItem(root), tree.GetPrevVisibleItem(last), tree.GetSelectedItem(),
                       tree.GetDropHilightItem()}));
    EXPECT_STREQ(kLong.c_str(), tree.GetItemText(first));
    int image = 0, selectedImage = 0;
    EXPECT_EQ("1 1 0 7", (Answers{tree.GetItemImage(second, image, selectedImage), tree.ItemHasChildren(root),
                                  tree.ItemHasChildren(last), tree.GetItemData(first)}));
    EXPECT_EQ("1 2", (Answers{image, selectedImage}));
    EXPECT_TRUE(tree.SetItemImage(second, 3, 4) && tree.GetItemImage(second, image, selectedImage));
    EXPECT_TRUE(tree.SetItemText(root, "changed") && tree.SetItemData(second, 8) && tree.SetCheck(last) &&
                tree.SetItemState(last, TVIS_BOLD, TVIS_BOLD));
    EXPECT_EQ("3 4 \"changed\" 8 1 0 16",
              (Answers{image, selectedImage, tree.GetItemText(root), tree.GetItemData(second), tree.GetCheck(last),
                       tree.GetCheck(root), tree.GetItemState(last, TVIS_BOLD | TVIS_CUT)}));
    CRect place;
    UINT flags = 0;
    EXPECT_TRUE(tree.GetItemRect(root, place, TRUE));
    EXPECT_EQ(root, tree.HitTest(place.CenterPoint(), &flags));
    EXPECT_EQ(static_cast<UINT>(TVHT_ONITEMLABEL), flags);

    int calls = 0;
    TVSORTCB sort = {root, &Backwards, reinterpret_cast<LPARAM>(&calls)};
    EXPECT_TRUE(tree.SortChildrenCB(&sort));
    EXPECT_EQ(second, tree.GetChildItem(root));
    sort.lpfnCompare = &Throwing;
    EXPECT_EQ("CUserException", Thrown([&] { tree.SortChildrenCB(&sort); }));
    tree.DeleteAllItems();
    EXPECT_EQ(0u, tree.GetCount());
}

TEST(CommonControls, AreBars)
{
    TopWindow parent;
    CToolBarCtrl tools;
    CBitmap pictures;
    ASSERT_TRUE(tools.Create(0, kPlace, &parent, kId) && pictures.CreateBitmap(32, 15, 1, 1, nullptr));
    EXPECT_EQ("1 0 -1 1", (Answers{tools.SetBitmapSize(CSize(16, 15)), tools.AddBitmap(2, &pictures),
                                   tools.AddBitmap(2, nullptr), tools.SetButtonSize(CSize(30, 28))}));
    TBBUTTON buttons[2] = {};
    buttons[1].idCommand = 7;
    CRect place;
    EXPECT_EQ("1 1 1", (Answers{tools.AddButtons(2, buttons), tools.CommandToIndex(7), tools.GetItemRect(0, place)}));
    EXPECT_EQ(place.Size(), CSize(tools.GetButtonSize()));

    CStatusBarCtrl bar;
    ASSERT_TRUE(bar.Create(0, kPlace, &parent, kId));
    int edges[] = {50, 120, -1}, type[3] = {}, borders[3] = {}, horizontal = -1, vertical = -1, spacing = -1;
    EXPECT_EQ("1 1 1", (Answers{bar.SetParts(3, edges), bar.SetText("text", 0, SBT_POPOUT),
                                bar.SetText(reinterpret_cast<LPCSTR>(5), 1, SBT_OWNERDRAW)}));
    EXPECT_EQ("\"text\" 4 \"\" \"\" 1 1",
              (Answers{bar.GetText(0, &type[0]), bar.GetTextLength(0, &type[1]), bar.GetText(1, &type[2]),
                       bar.GetText(2), bar.GetBorders(borders), bar.GetBorders(horizontal, vertical, spacing)}));
    EXPECT_EQ("512 512 4096", (Answers{type[0], type[1], type[2]}));
    EXPECT_EQ((Answers{borders[0], borders[1], borders[2]}), (Answers{horizontal, vertical, spacing}));
    EXPECT_TRUE(bar.GetRect(1, place));
    EXPECT_EQ(120, place.right);
}

// Tips ----------------------------------------------------------------------------------------------------------------

namespace {

/// Gives tools a text, and writes down whom it was asked for.
class TipWindow : public CWnd {
public:
    std::string log;
    INT_PTR hit = -2; // -2: what the framework finds

    INT_PTR OnToolHitTest(CPoint point, TOOLINFO* tool) const override
    {
        if (hit == -2)
            return CWnd::OnToolHitTest(point, tool);
        tool->uId = static_cast<UINT_PTR>(hit);
        tool->rect = CRect(0, 0, 40, 40);
        return hit;
    }
    BOOL OnNeedText(UINT id, NMHDR* header, LRESULT*)
    {
        ::lstrcpy(reinterpret_cast<TOOLTIPTEXT*>(header)->szText, "text");
        log += Answers{id, ::GetDlgCtrlID(reinterpret_cast<HWND>(header->idFrom))};
        return TRUE;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(TipWindow, CWnd)
    ON_NOTIFY_EX(TTN_NEEDTEXT, 0, OnNeedText)
END_MESSAGE_MAP()

class WindowTips : public ::testing::Test {
protected:
    WindowTips()
    {
        EXPECT_TRUE(window.CreateEx(0, nullptr, "", WS_POPUP | WS_VISIBLE, 0, 0, 200, 200, nullptr, nullptr));
        EXPECT_TRUE(inner.Create(nullptr, "", WS_VISIBLE, CRect(0, 100, 200, 200), &window, 3));
        EXPECT_TRUE(button.Create("", WS_VISIBLE, CRect(0, 0, 50, 50), &window, 1));
        EXPECT_TRUE(edit.Create(WS_VISIBLE, CRect(50, 0, 100, 50), &window, 2));
        EXPECT_TRUE(text.Create("", WS_VISIBLE, CRect(100, 0, 150, 50), &window));
    }
    /// Sends a message through the windows as a message loop does. \return the tools that the tip control has then
    int Offer(const CWnd& from, UINT message, CPoint point = CPoint(3, 3))
    {
        MSG offered = {from.m_hWnd, message, 0, MAKELPARAM(point.x, point.y), 0, {}};
        for (HWND handle = from.m_hWnd; handle != nullptr; handle = ::GetParent(handle))
            EXPECT_FALSE(CWnd::FromHandlePermanent(handle)->PreTranslateMessage(&offered));
        const HWND tips = Tips();
        return tips != nullptr ? static_cast<int>(::SendMessage(tips, TTM_GETTOOLCOUNT, 0, 0)) : 0;
    }
    /// The tip control of the window.
    HWND Tips() const
    {
        HWND found = nullptr;
        while ((found = ::FindWindowEx(nullptr, found, TOOLTIPS_CLASS, nullptr)) != nullptr) {
            if (::GetWindow(found, GW_OWNER) == window.m_hWnd)
                break;
        }
        return found;
    }

    TipWindow window, inner;
    CButton button;
    CEdit edit;
    CStatic text;
};

} // namespace

TEST_F(WindowTips, AreForChildrenWithANumber)
{
    const auto found = [this](int x, int y) {
        TOOLINFO tool = {};
        tool.cbSize = TTTOOLINFOA_V1_SIZE;
        const INT_PTR id = window.OnToolHitTest(CPoint(x, y), &tool);
        return Answers{id, window.OnToolHitTest(CPoint(x, y), nullptr), tool.uFlags, tool.hwnd == window.m_hWnd};
    };
    EXPECT_EQ("1 1 1 1", found(10, 10));
    EXPECT_EQ("2 2 1 1", found(60, 10));
    EXPECT_EQ("-1 -1 0 0", found(110, 10)) << "a text";
    EXPECT_EQ("-1 -1 0 0", found(10, 60)) << "the window itself";
    EXPECT_EQ("-1 -1 0 0", found(10, 250)) << "outside";
    CButton group;
    ASSERT_TRUE(group.Create("", WS_VISIBLE | BS_GROUPBOX, CRect(0, 0, 40, 40), &window, 5));
    group.BringWindowToTop();
    EXPECT_EQ("1 1 1 1", found(10, 10)) << "within a group";
    button.ShowWindow(SW_HIDE);
    EXPECT_EQ("5 5 1 1", found(10, 10)) << "nothing else is there";
}

TEST_F(WindowTips, ComeAndGo)
{
    EXPECT_EQ(0, Offer(button, WM_MOUSEMOVE)) << "not enabled";
    EXPECT_EQ("1 1 0 1 0 1",
              (Answers{window.EnableToolTips(), Offer(button, WM_MOUSEMOVE), Offer(text, WM_MOUSEMOVE),
                       Offer(edit, WM_MOUSEMOVE), Offer(edit, WM_KEYDOWN), Offer(button, WM_MOUSEMOVE)}));
    EXPECT_EQ("0 0 1", (Answers{Offer(button, WM_LBUTTONDOWN), Offer(button, WM_MOUSEMOVE), Offer(edit, WM_MOUSEMOVE)}))
        << "not until the mouse has left it";
    CWnd::CancelToolTips();
    EXPECT_EQ(0, Offer(inner, WM_TIMER));
    window.hit = 50;
    EXPECT_EQ(1, Offer(window, WM_MOUSEMOVE));
    EXPECT_EQ(1, Offer(inner, WM_MOUSEMOVE)) << "an outer window finds tools in inner ones";
    inner.hit = -1;
    inner.EnableToolTips();
    EXPECT_EQ(0, Offer(inner, WM_MOUSEMOVE)) << "the innermost decides alone";
    EXPECT_EQ(1, Offer(window, WM_NCMOUSEMOVE, CPoint(2, 2)));
    EXPECT_EQ("0 0", (Answers{window.EnableToolTips(FALSE), Offer(window, WM_MOUSEMOVE)}));
    inner.hit = 60;
    EXPECT_EQ(1, Offer(inner, WM_MOUSEMOVE));
    inner.DestroyWindow();
    EXPECT_EQ(0, Offer(window, WM_TIMER));
}

TEST_F(WindowTips, AskTheWindowForTheirText)
{
    window.EnableToolTips();
    window.SetActiveWindow();
    CPoint point(10, 10);
    button.ClientToScreen(&point);
    ::SetCursorPos(point.x, point.y);
    Offer(edit, WM_MOUSEMOVE);
    ::SendMessage(Tips(), TTM_SETDELAYTIME, TTDT_INITIAL, 1);
    Offer(button, WM_MOUSEMOVE, CPoint(10, 10));
    const DWORD start = ::GetTickCount();
    for (MSG message; !::IsWindowVisible(Tips()) && ::GetTickCount() - start < 3000;) {
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
        while (::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE))
            ::DispatchMessage(&message);
    }
    EXPECT_TRUE(::IsWindowVisible(Tips()));
    EXPECT_EQ("0 1", window.log);
    Offer(button, WM_KEYDOWN);
    EXPECT_FALSE(::IsWindowVisible(Tips()));
}

TEST_F(WindowTips, OfAControlOfTheirOwn)
{
    CToolTipCtrl tips;
    ASSERT_TRUE(tips.Create(&window, TTS_ALWAYSTIP));
    const CRect area(0, 60, 40, 90);
    EXPECT_EQ("1 1 1 3",
              (Answers{tips.AddTool(&button, "of a window"), tips.AddTool(&window, LPSTR_TEXTCALLBACK, area, 70),
                       tips.AddTool(&edit, 1600), tips.GetToolCount()}));
    const auto written = [&](CWnd* tool, UINT_PTR id = 0) {
        CString text;
        tips.GetText(text, tool, id);
        return std::string(text);
    };
    EXPECT_EQ("of a window|host|", written(&button) + "|" + written(&edit) + "|" + written(&text));
    tips.UpdateTipText("other", &window, 70);
    tips.UpdateTipText(1616, &button);
    EXPECT_EQ("other|host", written(&window, 70) + "|" + written(&button));
    TOOLINFO known = {};
    known.cbSize = TTTOOLINFOA_V1_SIZE;
    EXPECT_TRUE(tips.SendMessage(TTM_ENUMTOOLS, 0, reinterpret_cast<LPARAM>(&known)));
    EXPECT_EQ(window.m_hWnd, known.hwnd) << "its parent is asked";
    tips.SetToolRect(&window, 70, CRect(0, 60, 20, 80));
    for (const int x : {10, 30}) {
        TTHITTESTINFOA hit = {window.m_hWnd, {x, 70}, {}};
        hit.ti.cbSize = TTTOOLINFOA_V1_SIZE;
        EXPECT_EQ(x == 10, tips.SendMessage(TTM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    }
    tips.SetDelayTime(TTDT_AUTOPOP, 90);
    tips.SetDelayTime(200);
    EXPECT_EQ("200 2000", (Answers{tips.GetDelayTime(TTDT_INITIAL), tips.GetDelayTime(TTDT_AUTOPOP)})) << "from one";
    tips.DelTool(&window, 70);
    tips.DelTool(&button);
    EXPECT_EQ(1, tips.GetToolCount());
}
