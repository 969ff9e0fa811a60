// The common controls, and the tips of windows.
#include "answers.h"

#include <afxcmn.h>

namespace {

constexpr UINT kId = 9;
const CRect kPlace(0, 0, 150, 120);
const std::string kLong(300, 'x'); // longer than a first try at reading a text

/// Keeps the last item that it was asked to draw.
template <class BASE> class Drawn : public BASE {
public:
    int last = -1;
    void DrawItem(DRAWITEMSTRUCT* item) override { last = static_cast<int>(item->itemID); }
};

class CommonControlTest : public ::testing::Test {
protected:
    CommonControlTest()
    {
        EXPECT_TRUE(parent.CreateEx(0, nullptr, "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300, nullptr, nullptr));
        EXPECT_TRUE(images.Create(16, 16, ILC_COLOR, 2, 2));
    }
    bool IsOurs(const CImageList* list) const
    {
        return list != nullptr && list->GetSafeHandle() == images.GetSafeHandle();
    }

    CImageList images;
    CWnd parent;
};

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

/// Expects a sort to throw what its comparison throws, and not to call it again.
template <class SORT> void ExpectThrown(SORT sort)
{
    int calls = 0;
    try {
        sort(calls);
        ADD_FAILURE() << "nothing thrown";
    } catch (CUserException* e) {
        e->Delete();
    }
    EXPECT_EQ(1, calls);
}

} // namespace

TEST_F(CommonControlTest, Headers)
{
    Drawn<CHeaderCtrl> header;
    ASSERT_TRUE(header.Create(WS_VISIBLE | HDS_DRAGDROP, CRect(0, 0, 200, 20), &parent, kId));
    HDITEMA item = {};
    item.mask = HDI_WIDTH | HDI_FORMAT | HDI_LPARAM;
    item.fmt = HDF_OWNERDRAW;
    for (item.cxy = 30; item.cxy < 60; item.cxy += 10)
        EXPECT_EQ(item.cxy / 10 - 3, header.InsertItem(99, &item));
    item.cxy = 44;
    EXPECT_TRUE(header.SetItem(1, &item));
    item.cxy = 0;
    int order[] = {2, 0, 1}, found[3] = {};
    CRect place;
    EXPECT_EQ("1 1 1 1 2",
              (Answers{header.GetItem(1, &item), header.SetOrderArray(3, order), header.GetOrderArray(found),
                       header.GetItemRect(0, place), header.OrderToIndex(0)}));
    EXPECT_EQ("44 2 0 1 50,0,80,20", (Answers{item.cxy, found[0], found[1], found[2], place}));
    HDHITTESTINFO hit = {place.CenterPoint(), 0, 0};
    EXPECT_EQ(0, header.HitTest(&hit));
    header.RedrawWindow();
    EXPECT_EQ(1, header.last) << "the rightmost one";
    header.SetImageList(&images);
    EXPECT_TRUE(IsOurs(header.GetImageList()));
    EXPECT_EQ("1 2", (Answers{header.DeleteItem(0), header.GetItemCount()}));
}

TEST_F(CommonControlTest, Tabs)
{
    Drawn<CTabCtrl> tabs;
    ASSERT_TRUE(tabs.Create(WS_VISIBLE | TCS_OWNERDRAWFIXED | TCS_FIXEDWIDTH | TCS_TOOLTIPS, kPlace, &parent, kId));
    EXPECT_EQ("0 1 2", (Answers{tabs.InsertItem(0, "first"), tabs.InsertItem(1, "second", 7),
                                tabs.InsertItem(TCIF_PARAM, 2, nullptr, 0, 55)}));
    TCITEMA item = {};
    item.mask = TCIF_IMAGE | TCIF_PARAM;
    EXPECT_EQ("1 7 1 55", (Answers{tabs.GetItem(1, &item), item.iImage, tabs.GetItem(2, &item), item.lParam}));
    EXPECT_EQ("0 2", (Answers{tabs.SetCurSel(2), tabs.GetCurSel()}));
    tabs.SetCurFocus(1);
    tabs.SetItemSize(CSize(40, 18));
    EXPECT_EQ(CSize(40, 18), tabs.SetItemSize(CSize(44, 20)));
    CRect place;
    EXPECT_TRUE(tabs.GetItemRect(1, place));
    TCHITTESTINFO hit = {place.CenterPoint(), 0};
    EXPECT_EQ("1 44 1 1", (Answers{tabs.GetCurFocus(), place.Width(), tabs.HitTest(&hit), tabs.GetRowCount()}));
    tabs.RedrawWindow();
    EXPECT_GE(tabs.last, 0);
    CToolTipCtrl own;
    ASSERT_TRUE(tabs.GetToolTips() != nullptr && own.Create(&parent));
    tabs.SetToolTips(&own);
    EXPECT_EQ(&own, tabs.GetToolTips());
    EXPECT_EQ("1 2 1", (Answers{tabs.DeleteItem(0), tabs.GetItemCount(), tabs.DeleteAllItems()}));
}

TEST_F(CommonControlTest, SpinButtons)
{
    CEdit edit;
    CSpinButtonCtrl spin;
    ASSERT_TRUE(edit.Create(0, kPlace, &parent, kId + 1) && spin.Create(UDS_SETBUDDYINT, kPlace, &parent, kId));
    EXPECT_EQ(nullptr, spin.SetBuddy(&edit));
    EXPECT_EQ(&edit, spin.GetBuddy());
    spin.SetRange(-10, 10);
    int lower = 0, upper = 0;
    spin.GetRange(lower, upper);
    spin.SetPos(-4);
    EXPECT_EQ("-10 10 -4 7 10 16",
              (Answers{lower, upper, spin.SetPos(7), spin.GetPos(), spin.SetBase(16), spin.GetBase()}));
    spin.SetRange32(100, 100000);
    spin.GetRange32(lower, upper);
    EXPECT_EQ("100 100000", (Answers{lower, upper}));
}

TEST_F(CommonControlTest, ListViews)
{
    Drawn<CListCtrl> list;
    ASSERT_TRUE(list.Create(WS_VISIBLE | LVS_REPORT | LVS_EDITLABELS | LVS_SHAREIMAGELISTS, kPlace, &parent, kId));
    LVCOLUMNA column = {};
    column.mask = LVCF_WIDTH | LVCF_FMT;
    EXPECT_EQ("0 1 1", (Answers{list.InsertColumn(0, "name", LVCFMT_LEFT, 60),
                                list.InsertColumn(1, "value", LVCFMT_RIGHT, 50, 1), list.GetColumn(1, &column)}));
    EXPECT_EQ("50 1", (Answers{column.cx, column.fmt & LVCFMT_JUSTIFYMASK}));
    column.cx = 33;
    int order[] = {1, 2, 0}, found[3] = {};
    EXPECT_EQ("2 1 1 35 3 1 1 1",
              (Answers{list.InsertColumn(2, &column), list.SetColumn(2, &column), list.SetColumnWidth(2, 35),
                       list.GetColumnWidth(2), list.GetHeaderCtrl()->GetItemCount(), list.SetColumnOrderArray(3, order),
                       list.GetColumnOrderArray(found), list.DeleteColumn(2)}));
    EXPECT_EQ("1 2 0", (Answers{found[0], found[1], found[2]}));

    EXPECT_EQ("0 1 2", (Answers{list.InsertItem(0, "b"), list.InsertItem(1, kLong.c_str(), 1),
                                list.InsertItem(LVIF_TEXT | LVIF_PARAM | LVIF_STATE, 2, "c", LVIS_FOCUSED, LVIS_FOCUSED,
                                                0, 7)}));
    char text[4];
    EXPECT_EQ("1 \"value\" \"\" 3", (Answers{list.SetItemText(0, 1, "value"), list.GetItemText(0, 1),
                                             list.GetItemText(9, 0), list.GetItemText(0, 1, text, sizeof text)}));
    EXPECT_STREQ("val", text);
    EXPECT_STREQ(kLong.c_str(), list.GetItemText(1, 0));
    EXPECT_TRUE(list.SetItemData(0, 5) && list.SetItem(1, 0, LVIF_IMAGE, nullptr, 3, 0, 0, 0));
    LVITEMA item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = 1;
    EXPECT_EQ("1 7 0 5 1 3", (Answers{list.GetItemState(2, LVIS_FOCUSED | LVIS_SELECTED), list.GetItemData(2),
                                      list.GetItemData(9), list.GetItemData(0), list.GetItem(&item), item.iImage}));
    list.SetItemState(-1, LVIS_SELECTED, LVIS_SELECTED);
    list.SetItemState(1, 0, LVIS_SELECTED);
    std::string selected;
    for (POSITION position = list.GetFirstSelectedItemPosition(); position != nullptr;)
        selected += std::to_string(list.GetNextSelectedItem(position));
    EXPECT_EQ("\"02\" 2 2", (Answers{selected.c_str(), list.GetSelectedCount(), list.GetNextItem(0, LVNI_SELECTED)}));
    LVFINDINFOA wanted = {};
    wanted.flags = LVFI_STRING;
    wanted.psz = "c";
    EXPECT_EQ("2 -1", (Answers{list.FindItem(&wanted), list.FindItem(&wanted, 2)}));

    CRect place, sub;
    UINT flags = 0;
    EXPECT_TRUE(list.GetSubItemRect(1, 1, LVIR_BOUNDS, sub) && list.GetItemRect(1, place, LVIR_LABEL));
    EXPECT_EQ(CPoint(0, place.top), sub.TopLeft()) << "the second column stands first";
    EXPECT_EQ(1, list.HitTest(place.TopLeft() + CSize(3, 3), &flags));
    EXPECT_NE(0u, flags & LVHT_ONITEM);
    int usual[] = {0, 1};
    list.SetColumnOrderArray(2, usual);
    list.GetSubItemRect(1, 1, LVIR_BOUNDS, sub);
    EXPECT_EQ(50, sub.Width());
    LVHITTESTINFO hit = {};
    hit.pt = sub.CenterPoint();
    EXPECT_EQ("1 1 0 1",
              (Answers{list.SubItemHitTest(&hit), hit.iSubItem, list.GetTopIndex(), list.EnsureVisible(2, FALSE)}));

    int calls = 0;
    list.SetItemData(1, 6);
    EXPECT_TRUE(list.SortItems(&Backwards, reinterpret_cast<DWORD_PTR>(&calls)));
    EXPECT_EQ("\"c\" \"b\"", (Answers{list.GetItemText(0, 0), list.GetItemText(2, 0)}));
    ExpectThrown([&](int& count) { list.SortItems(&Throwing, reinterpret_cast<DWORD_PTR>(&count)); });

    list.SetFocus();
    const CEdit* field = list.EditLabel(0);
    EXPECT_TRUE(field != nullptr && field == list.GetEditControl());
    parent.SetFocus();
    list.SetImageList(&images, LVSIL_SMALL);
    EXPECT_TRUE(IsOurs(list.GetImageList(LVSIL_SMALL)));
    list.SetExtendedStyle(LVS_EX_CHECKBOXES);
    list.SetCheck(1);
    EXPECT_EQ("4 0 1", (Answers{list.GetExtendedStyle(), list.GetCheck(0), list.GetCheck(1)}));
    list.ModifyStyle(0, LVS_OWNERDRAWFIXED);
    list.RedrawWindow();
    EXPECT_EQ("2 1 2 1", (Answers{list.last, list.DeleteItem(0), list.GetItemCount(), list.DeleteAllItems()}));
}

TEST_F(CommonControlTest, TreeViews)
{
    CTreeCtrl tree;
    ASSERT_TRUE(tree.Create(WS_VISIBLE | TVS_HASBUTTONS | TVS_LINESATROOT | TVS_EDITLABELS | TVS_CHECKBOXES, kPlace,
                            &parent, kId));
    const HTREEITEM root = tree.InsertItem("root");
    const HTREEITEM second = tree.InsertItem("second", 1, 2, root);
    const HTREEITEM first = tree.InsertItem(TVIF_TEXT | TVIF_PARAM, kLong.c_str(), 0, 0, 0, 0, 7, root, TVI_FIRST);
    const HTREEITEM last = tree.InsertItem("last");
    EXPECT_TRUE(tree.Expand(root, TVE_EXPAND) && tree.SelectItem(second) && tree.SelectDropTarget(first));
    const std::pair<HTREEITEM, HTREEITEM> ways[] = {
        {root, tree.GetRootItem()},
        {first, tree.GetChildItem(root)},
        {second, tree.GetNextSiblingItem(first)},
        {first, tree.GetPrevSiblingItem(second)},
        {root, tree.GetParentItem(second)},
        {root, tree.GetFirstVisibleItem()},
        {first, tree.GetNextVisibleItem(root)},
        {second, tree.GetPrevVisibleItem(last)},
        {nullptr, tree.GetChildItem(last)},
        {second, tree.GetSelectedItem()},
        {first, tree.GetDropHilightItem()},
    };
    for (const auto& [expected, found] : ways)
        EXPECT_EQ(expected, found) << "row " << &expected - &ways[0].first;
    EXPECT_STREQ(kLong.c_str(), tree.GetItemText(first));
    int image = 0, selectedImage = 0;
    EXPECT_TRUE(tree.GetItemImage(second, image, selectedImage));
    EXPECT_EQ("1 2 4 1 0 7", (Answers{image, selectedImage, tree.GetCount(), tree.ItemHasChildren(root),
                                      tree.ItemHasChildren(last), tree.GetItemData(first)}));
    EXPECT_TRUE(tree.SetItemImage(second, 3, 4) && tree.GetItemImage(second, image, selectedImage));
    EXPECT_TRUE(tree.SetItemText(root, "changed") && tree.SetItemData(second, 8) && tree.SetCheck(last) &&
                tree.SetItemState(last, TVIS_BOLD, TVIS_BOLD));
    EXPECT_EQ("3 4 \"changed\" 8 1 0 16",
              (Answers{image, selectedImage, tree.GetItemText(root), tree.GetItemData(second), tree.GetCheck(last),
                       tree.GetCheck(root), tree.GetItemState(last, TVIS_BOLD | TVIS_CUT)}));
    CRect place;
    EXPECT_TRUE(tree.GetItemRect(root, place, TRUE));
    UINT flags = 0;
    EXPECT_EQ(root, tree.HitTest(place.CenterPoint(), &flags));
    EXPECT_EQ(static_cast<UINT>(TVHT_ONITEMLABEL), flags);

    int calls = 0;
    TVSORTCB sort = {root, &Backwards, reinterpret_cast<LPARAM>(&calls)};
    EXPECT_TRUE(tree.SortChildrenCB(&sort));
    EXPECT_EQ(second, tree.GetChildItem(root));
    ExpectThrown([&](int& count) {
        sort = {root, &Throwing, reinterpret_cast<LPARAM>(&count)};
        tree.SortChildrenCB(&sort);
    });
    EXPECT_TRUE(tree.SetItemText(root, "z") && tree.SortChildren(TVI_ROOT));
    EXPECT_EQ(last, tree.GetRootItem());
    tree.SetFocus();
    EXPECT_NE(nullptr, tree.EditLabel(root));
    tree.SetImageList(&images, TVSIL_NORMAL);
    EXPECT_TRUE(IsOurs(tree.GetImageList(TVSIL_NORMAL)));
    EXPECT_EQ("1 3 1 0", (Answers{tree.DeleteItem(first), tree.GetCount(), tree.DeleteAllItems(), tree.GetCount()}));
}

TEST_F(CommonControlTest, ToolBars)
{
    CToolBarCtrl bar;
    CBitmap pictures;
    ASSERT_TRUE(bar.Create(WS_VISIBLE | TBSTYLE_TOOLTIPS, kPlace, &parent, kId) &&
                pictures.CreateBitmap(32, 15, 1, 1, nullptr));
    EXPECT_EQ("1 0 -1 1 0",
              (Answers{bar.SetBitmapSize(CSize(16, 15)), bar.AddBitmap(2, &pictures), bar.AddBitmap(2, nullptr),
                       bar.SetButtonSize(CSize(30, 28)), bar.AddStrings("one\0two\0")}));
    TBBUTTON buttons[3] = {};
    for (int i = 0; i < 3; ++i)
        buttons[i] = {0, 100 + i, TBSTATE_ENABLED, TBSTYLE_CHECK, {}, 0, -1};
    TBBUTTON found = {};
    EXPECT_EQ("1 1 3 1 1", (Answers{bar.AddButtons(2, buttons), bar.InsertButton(0, &buttons[2]), bar.GetButtonCount(),
                                    bar.CommandToIndex(100), bar.GetButton(0, &found)}));
    EXPECT_EQ(102, found.idCommand);
    const struct {
        BOOL (CToolBarCtrl::*set)(int, BOOL);
        BOOL (CToolBarCtrl::*get)(int) const;
        int state;
    } flags[] = {
        {&CToolBarCtrl::EnableButton, &CToolBarCtrl::IsButtonEnabled, TBSTATE_ENABLED},
        {&CToolBarCtrl::CheckButton, &CToolBarCtrl::IsButtonChecked, TBSTATE_CHECKED},
        {&CToolBarCtrl::PressButton, &CToolBarCtrl::IsButtonPressed, TBSTATE_PRESSED},
        {&CToolBarCtrl::HideButton, &CToolBarCtrl::IsButtonHidden, TBSTATE_HIDDEN},
        {&CToolBarCtrl::Indeterminate, &CToolBarCtrl::IsButtonIndeterminate, TBSTATE_INDETERMINATE},
    };
    for (const auto& [set, get, state] : flags) {
        EXPECT_TRUE(bar.SetState(101, 0) && (bar.*set)(101, TRUE) && (bar.*get)(101)) << state;
        EXPECT_EQ(state, bar.GetState(101));
        EXPECT_TRUE((bar.*set)(101, FALSE) && !(bar.*get)(101)) << state;
    }
    CRect byPlace, byCommand;
    EXPECT_TRUE(bar.GetItemRect(1, byPlace) && bar.GetRect(100, byCommand));
    EXPECT_EQ(byPlace, byCommand);
    EXPECT_EQ(byPlace.Size(), CSize(bar.GetButtonSize()));
    CPoint point = byPlace.CenterPoint();
    EXPECT_EQ("-1 1 1 1 0", (Answers{bar.GetState(999), bar.HitTest(&point), bar.GetRows(), bar.SetCmdID(0, 77),
                                     bar.CommandToIndex(77)}));
    bar.SetDisabledImageList(&images);
    EXPECT_TRUE(IsOurs(bar.GetDisabledImageList()) && !IsOurs(bar.GetImageList()));
    bar.SetImageList(&images);
    EXPECT_TRUE(IsOurs(bar.GetImageList()));
    EXPECT_EQ("1 2", (Answers{bar.DeleteButton(0), bar.GetButtonCount()}));
}

TEST_F(CommonControlTest, StatusBars)
{
    Drawn<CStatusBarCtrl> bar;
    ASSERT_TRUE(bar.Create(WS_VISIBLE, kPlace, &parent, kId));
    int edges[] = {50, 120, -1}, found[3] = {}, type[3] = {};
    EXPECT_EQ("1 3 1 1", (Answers{bar.SetParts(3, edges), bar.GetParts(3, found), bar.SetText("text", 0, SBT_POPOUT),
                                  bar.SetText(reinterpret_cast<LPCSTR>(5), 1, SBT_OWNERDRAW)}));
    EXPECT_EQ("\"text\" 4 \"\" \"\"", (Answers{bar.GetText(0, &type[0]), bar.GetTextLength(0, &type[1]),
                                               bar.GetText(1, &type[2]), bar.GetText(2)}));
    EXPECT_EQ("120 512 512 4096", (Answers{found[1], type[0], type[1], type[2]}));
    CRect place;
    int borders[3] = {}, horizontal = -1, vertical = -1, spacing = -1;
    EXPECT_TRUE(bar.GetRect(1, place) && bar.GetBorders(borders) && bar.GetBorders(horizontal, vertical, spacing));
    EXPECT_EQ((Answers{borders[0], borders[1], borders[2], 120}),
              (Answers{horizontal, vertical, spacing, place.right}));
    EXPECT_TRUE(bar.SetIcon(0, ::LoadIcon(nullptr, IDI_WARNING)));
    bar.RedrawWindow();
    const BOOL before = bar.IsSimple();
    bar.SetSimple();
    EXPECT_EQ("1 0 1", (Answers{bar.last, before, bar.IsSimple()}));
}

// Tips ----------------------------------------------------------------------------------------------------------------

namespace {

/// Gives each tool its number for a text, and writes down whom it was asked for.
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
        auto* tip = reinterpret_cast<TOOLTIPTEXT*>(header);
        const bool isWindow = (tip->uFlags & TTF_IDISHWND) != 0;
        const int tool =
            isWindow ? ::GetDlgCtrlID(reinterpret_cast<HWND>(header->idFrom)) : static_cast<int>(header->idFrom);
        wsprintf(tip->szText, "tool %d", tool);
        log += std::to_string(id) + ":" + tip->szText + " ";
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
    const struct {
        CPoint point;
        INT_PTR expected;
        UINT flags;
    } rows[] = {
        {{10, 10}, 1, TTF_IDISHWND}, {{60, 10}, 2, TTF_IDISHWND}, {{110, 10}, -1, 0}, // a text
        {{10, 60}, -1, 0},                                                            // the window itself
        {{10, 250}, -1, 0},                                                           // outside
    };
    for (const auto& row : rows) {
        TOOLINFO tool = {};
        tool.cbSize = TTTOOLINFOA_V1_SIZE;
        EXPECT_EQ(row.expected, window.OnToolHitTest(row.point, &tool));
        EXPECT_EQ(row.expected, window.OnToolHitTest(row.point, nullptr));
        EXPECT_EQ(row.flags, tool.uFlags) << row.expected;
        EXPECT_EQ(row.expected != -1 ? window.m_hWnd : nullptr, tool.hwnd);
    }
    CButton group;
    ASSERT_TRUE(group.Create("", WS_VISIBLE | BS_GROUPBOX, CRect(0, 0, 40, 40), &window, 5));
    group.BringWindowToTop();
    EXPECT_EQ(1, window.OnToolHitTest(rows[0].point, nullptr)) << "within a group";
    button.ShowWindow(SW_HIDE);
    EXPECT_EQ(5, window.OnToolHitTest(rows[0].point, nullptr)) << "nothing else is there";
}

TEST_F(WindowTips, ComeAndGo)
{
    EXPECT_EQ(0, Offer(button, WM_MOUSEMOVE)) << "not enabled";
    EXPECT_TRUE(window.EnableToolTips());
    EXPECT_EQ(1, Offer(button, WM_MOUSEMOVE));
    EXPECT_EQ(0, Offer(text, WM_MOUSEMOVE));
    EXPECT_EQ(1, Offer(edit, WM_MOUSEMOVE));
    EXPECT_EQ(0, Offer(edit, WM_KEYDOWN));
    EXPECT_EQ(1, Offer(button, WM_MOUSEMOVE));
    EXPECT_EQ(0, Offer(button, WM_LBUTTONDOWN));
    EXPECT_EQ(0, Offer(button, WM_MOUSEMOVE)) << "until the mouse has left it";
    EXPECT_EQ(1, Offer(edit, WM_MOUSEMOVE));
    CWnd::CancelToolTips();
    EXPECT_EQ(0, Offer(inner, WM_TIMER));
    window.hit = 50;
    EXPECT_EQ(1, Offer(window, WM_MOUSEMOVE));
    EXPECT_EQ(1, Offer(inner, WM_MOUSEMOVE)) << "an outer window finds tools in inner ones";
    inner.hit = -1;
    inner.EnableToolTips();
    EXPECT_EQ(0, Offer(inner, WM_MOUSEMOVE)) << "the innermost decides alone";
    EXPECT_EQ(1, Offer(window, WM_NCMOUSEMOVE, CPoint(2, 2)));
    EXPECT_FALSE(window.EnableToolTips(FALSE));
    EXPECT_EQ(0, Offer(window, WM_MOUSEMOVE));
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
    EXPECT_EQ("0:tool 1 ", window.log);
    Offer(button, WM_KEYDOWN);
    EXPECT_FALSE(::IsWindowVisible(Tips()));
}

TEST_F(WindowTips, OfAControlOfTheirOwn)
{
    CToolTipCtrl tips;
    ASSERT_TRUE(tips.Create(&window, TTS_ALWAYSTIP));
    const CRect area(0, 60, 40, 90);
    EXPECT_TRUE(tips.AddTool(&button, "of a window"));
    EXPECT_TRUE(tips.AddTool(&window, LPSTR_TEXTCALLBACK, area, 70));
    EXPECT_TRUE(tips.AddTool(&edit, 1600));
    EXPECT_EQ(3, tips.GetToolCount());
    const auto written = [&](CWnd* tool, UINT_PTR id = 0) {
        CString text;
        tips.GetText(text, tool, id);
        return std::string(text);
    };
    EXPECT_EQ("of a window", written(&button));
    EXPECT_EQ("host", written(&edit)) << "a string resource";
    EXPECT_EQ("", written(&text));
    tips.UpdateTipText("other", &window, 70);
    EXPECT_EQ("other", written(&window, 70));
    tips.UpdateTipText(1616, &button);
    EXPECT_EQ("host", written(&button));
    TOOLINFO known = {};
    known.cbSize = TTTOOLINFOA_V1_SIZE;
    EXPECT_TRUE(tips.SendMessage(TTM_ENUMTOOLS, 0, reinterpret_cast<LPARAM>(&known)));
    EXPECT_EQ(window.m_hWnd, known.hwnd) << "its parent is asked";
    tips.SetToolRect(&window, 70, CRect(0, 60, 20, 80));
    const std::pair<CPoint, LRESULT> hits[] = {{{10, 70}, TRUE}, {{30, 70}, FALSE}};
    for (const auto& [point, expected] : hits) {
        TTHITTESTINFOA hit = {window.m_hWnd, point, {}};
        hit.ti.cbSize = TTTOOLINFOA_V1_SIZE;
        EXPECT_EQ(expected, tips.SendMessage(TTM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    }
    tips.SetDelayTime(TTDT_AUTOPOP, 90);
    tips.SetDelayTime(200);
    tips.SetMaxTipWidth(300);
    EXPECT_EQ("200 2000 300",
              (Answers{tips.GetDelayTime(TTDT_INITIAL), tips.GetDelayTime(TTDT_AUTOPOP), tips.GetMaxTipWidth()}))
        << "all times from one";
    tips.DelTool(&window, 70);
    tips.DelTool(&button);
    EXPECT_EQ(1, tips.GetToolCount());
}
