// Which handler a message reaches, with which arguments, and what its sender gets for an answer.
#include "test_window.h"

#include <commctrl.h>

namespace {

constexpr UINT kChild = 9;
constexpr UINT kOther = 10;

/// Has handlers of many messages, and an entry for one at a time.
class AnyWindow : public CWnd {
public:
    AFX_MSGMAP_ENTRY entry[2] = {}; // and the end

    Noted OnMove{"OnMove"}, OnSize{"OnSize"}, OnActivate{"OnActivate"}, OnActivateApp{"OnActivateApp"},
        OnNcActivate{"OnNcActivate"}, OnShowWindow{"OnShowWindow"}, OnEnable{"OnEnable"}, OnKillFocus{"OnKillFocus"},
        OnGetDlgCode{"OnGetDlgCode"}, OnKeyDown{"OnKeyDown"}, OnSysChar{"OnSysChar"}, OnMouseMove{"OnMouseMove"},
        OnRButtonUp{"OnRButtonUp"}, OnMouseWheel{"OnMouseWheel"}, OnMouseActivate{"OnMouseActivate"},
        OnSetCursor{"OnSetCursor"}, OnNcHitTest{"OnNcHitTest"}, OnCaptureChanged{"OnCaptureChanged"},
        OnVScroll{"OnVScroll"}, OnTimer{"OnTimer"}, OnSysCommand{"OnSysCommand"}, OnMenuSelect{"OnMenuSelect"},
        OnContextMenu{"OnContextMenu"}, OnHelpInfo{"OnHelpInfo"}, OnSettingChange{"OnSettingChange"},
        OnQueryNewPalette{"OnQueryNewPalette"}, OnPaletteChanged{"OnPaletteChanged"}, OnTimeChange{"OnTimeChange"},
        OnDrawItem{"OnDrawItem"}, OnCompareItem{"OnCompareItem"}, OnCharToItem{"OnCharToItem"},
        OnParentNotify{"OnParentNotify"}, OnCtlColor{"OnCtlColor"};

protected:
    const AFX_MSGMAP* GetMessageMap() const override { return &m_map; }

private:
    AFX_MSGMAP m_map = {&CWnd::GetThisMessageMap, entry};
};

} // namespace

TEST(MessageMap, UnpacksEachMessage)
{
    using ThisClass = AnyWindow;
    AnyWindow window;
    ASSERT_TRUE(window.CreateEx(0, nullptr, "", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr));
    CButton child;
    ASSERT_TRUE(child.Create("", 0, CRect(0, 0, 9, 9), &window, kChild));
    const auto handle = reinterpret_cast<UINT_PTR>(child.m_hWnd);
    const auto own = static_cast<LPARAM>(handle);
    const CClientDC context(&window);
    g_context = context.m_hDC;
    const auto drawing = reinterpret_cast<WPARAM>(g_context);
    const DRAWITEMSTRUCT item = {0, 0, 4, 0, 0, nullptr, nullptr, {}, 0};
    const LPARAM negative = MAKELPARAM(static_cast<WORD>(-3), static_cast<WORD>(-4));
    const struct {
        AFX_MSGMAP_ENTRY entry;
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        const char* expected;
        LRESULT result;
    } rows[] = {
        {ON_WM_MOVE() WM_MOVE, 0, negative, "OnMove -3 -4", 0},
        {ON_WM_SIZE() WM_SIZE, 2, MAKELPARAM(40000, 50000), "OnSize 2 40000 50000", 0},
        {ON_WM_ACTIVATE() WM_ACTIVATE, MAKEWPARAM(2, 1), own, "OnActivate 2 window9 1", 0},
        {ON_WM_ACTIVATEAPP() WM_ACTIVATEAPP, 1, 55, "OnActivateApp 1 55", 0},
        {ON_WM_NCACTIVATE() WM_NCACTIVATE, 1, 0, "OnNcActivate 1", 7},
        {ON_WM_SHOWWINDOW() WM_SHOWWINDOW, 1, 3, "OnShowWindow 1 3", 0},
        {ON_WM_ENABLE() WM_ENABLE, 1, 0, "OnEnable 1", 0},
        {ON_WM_KILLFOCUS() WM_KILLFOCUS, handle, 0, "OnKillFocus window9", 0},
        {ON_WM_GETDLGCODE() WM_GETDLGCODE, 0, 0, "OnGetDlgCode", 7},
        {ON_WM_KEYDOWN() WM_KEYDOWN, VK_F1, MAKELPARAM(2, 0xC000), "OnKeyDown 112 2 49152", 0},
        {ON_WM_SYSCHAR() WM_SYSCHAR, 'x', MAKELPARAM(1, 0x2000), "OnSysChar 120 1 8192", 0},
        {ON_WM_MOUSEMOVE() WM_MOUSEMOVE, MK_CONTROL, negative, "OnMouseMove 8 -3,-4", 0},
        {ON_WM_RBUTTONUP() WM_RBUTTONUP, 0, MAKELPARAM(5, 6), "OnRButtonUp 0 5,6", 0},
        {ON_WM_MOUSEWHEEL() WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, static_cast<WORD>(-120)), negative,
         "OnMouseWheel 4 -120 -3,-4", 7},
        {ON_WM_MOUSEACTIVATE() WM_MOUSEACTIVATE, handle, MAKELPARAM(HTCLIENT, 513), "OnMouseActivate window9 1 513", 7},
        {ON_WM_SETCURSOR() WM_SETCURSOR, handle, MAKELPARAM(HTCLIENT, 512), "OnSetCursor window9 1 512", 7},
        {ON_WM_NCHITTEST() WM_NCHITTEST, 0, negative, "OnNcHitTest -3,-4", 7},
        {ON_WM_CAPTURECHANGED() WM_CAPTURECHANGED, 0, own, "OnCaptureChanged window9", 0},
        {ON_WM_VSCROLL() WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 60000), own, "OnVScroll 5 60000 window9", 0},
        {ON_WM_VSCROLL() WM_VSCROLL, MAKEWPARAM(SB_LINEDOWN, 0), 0, "OnVScroll 1 0 window-1", 0},
        {ON_WM_TIMER() WM_TIMER, 12, 0, "OnTimer 12", 0},
        {ON_WM_SYSCOMMAND() WM_SYSCOMMAND, 0xF999, 55, "OnSysCommand 63897 55", 0},
        {ON_WM_MENUSELECT() WM_MENUSELECT, MAKEWPARAM(5, 0x80), 66, "OnMenuSelect 5 128 66", 0},
        {ON_WM_CONTEXTMENU() WM_CONTEXTMENU, handle, -1, "OnContextMenu window9 -1,-1", 0},
        {ON_WM_HELPINFO() WM_HELP, 0, 0, "OnHelpInfo 0", 7},
        {ON_WM_SETTINGCHANGE() WM_SETTINGCHANGE, 5, 0, "OnSettingChange 5 0", 0},
        {ON_WM_QUERYNEWPALETTE() WM_QUERYNEWPALETTE, 0, 0, "OnQueryNewPalette", 7},
        {ON_WM_PALETTECHANGED() WM_PALETTECHANGED, handle, 0, "OnPaletteChanged window9", 0},
        {ON_WM_TIMECHANGE() WM_TIMECHANGE, 0, 0, "OnTimeChange", 0},
        {ON_WM_DRAWITEM() WM_DRAWITEM, kChild, reinterpret_cast<LPARAM>(&item), "OnDrawItem 9 4", TRUE},
        {ON_WM_COMPAREITEM() WM_COMPAREITEM, kChild, 0, "OnCompareItem 9 0", 7},
        {ON_WM_CHARTOITEM() WM_CHARTOITEM, MAKEWPARAM('a', 3), own, "OnCharToItem 97 window9 3", 7},
        {ON_WM_PARENTNOTIFY() WM_PARENTNOTIFY, WM_LBUTTONDOWN, 55, "OnParentNotify 513 55", 0},
        {ON_WM_CTLCOLOR() WM_CTLCOLORSTATIC, drawing, own, "OnCtlColor context window9 6", 7},
        {ON_WM_CTLCOLOR() WM_CTLCOLORMSGBOX, drawing, own, "OnCtlColor context window9 0", 7},
    };
    for (const auto& row : rows) {
        window.entry[0] = row.entry;
        TakeLog();
        EXPECT_EQ(row.result, window.SendMessage(row.message, row.wParam, row.lParam)) << row.expected;
        EXPECT_EQ(std::string(row.expected) + '|', TakeLog());
    }
}

// Notifications, and what comes back to a control ---------------------------------------------------------------------

namespace {

/// Takes back what its parent receives for it: codes below 20 wholly, from 20 on the parent has them too.
class Control : public CButton {
public:
    Noted clicked{"clicked"}, doubleClicked{"double", FALSE}, notifiedAlso{"also", FALSE}, draw{"draw"};
    Noted CompareItem{"compare", -1}, DeleteItem{"delete"}, HScroll{"scroll"}, VKeyToItem{"key", 14};
    Noted ParentNotify{"told"}, notified{"notified", 5};
    int updates = 0;
    void DrawItem(DRAWITEMSTRUCT* item) override { draw(item); }
    void MeasureItem(MEASUREITEMSTRUCT* item) { item->itemHeight = 23; }
    LRESULT CtlColor(CDC* dc, UINT kind) const { return Noted{"colour", LRESULT(kind)}(dc, kind); } // 0: no brush
    void OnUpdate(CCmdUI* item)
    {
        ++updates;
        item->Enable(FALSE);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Control, CButton)
    ON_CONTROL_REFLECT(BN_CLICKED, clicked)
    ON_CONTROL_REFLECT_EX(BN_DOUBLECLICKED, doubleClicked)
    ON_NOTIFY_REFLECT(NM_CLICK, notified)
    ON_NOTIFY_REFLECT_EX(20, notifiedAlso)
    ON_UPDATE_COMMAND_UI_REFLECT(OnUpdate)
    ON_WM_DRAWITEM_REFLECT()
    ON_WM_MEASUREITEM_REFLECT()
    ON_WM_COMPAREITEM_REFLECT()
    ON_WM_DELETEITEM_REFLECT()
    ON_WM_CTLCOLOR_REFLECT()
    ON_WM_HSCROLL_REFLECT()
    ON_WM_VKEYTOITEM_REFLECT()
    ON_WM_PARENTNOTIFY_REFLECT()
END_MESSAGE_MAP()

/// Asks its base for some of what it handles itself.
class Parent : public CWnd {
public:
    Noted any{"any"}, passedOn{"passed", FALSE}, notified{"parent", 6};
    BOOL OnRange(UINT id, NMHDR* header, LRESULT* result)
    {
        *result = 8;
        return static_cast<BOOL>(Noted{"range", header->code == 31}(id)); // 32 goes on, to nobody
    }
    void OnDrawItem(int id, DRAWITEMSTRUCT* item)
    {
        g_log += Written("parent", id);
        CWnd::OnDrawItem(id, item);
    }
    HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT kind)
    {
        g_log += Written("parent", kind);
        return CWnd::OnCtlColor(dc, control, kind);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Parent, CWnd)
    ON_COMMAND_EX(50, passedOn)
    ON_COMMAND_EX_RANGE(50, 51, passedOn)
    ON_COMMAND_RANGE(50, 50, any)
    ON_CONTROL_RANGE(BN_DOUBLECLICKED, kChild, kOther, any)
    ON_NOTIFY(20, kChild, notified)
    ON_NOTIFY(NM_CLICK, kOther, notified)
    ON_NOTIFY_EX_RANGE(31, kChild, kOther, OnRange)
    ON_NOTIFY_EX_RANGE(32, kChild, kOther, OnRange)
    ON_WM_DRAWITEM()
    ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

class Reflection : public ::testing::Test {
protected:
    Reflection()
    {
        EXPECT_TRUE(parent.CreateEx(0, nullptr, "", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr));
        EXPECT_TRUE(control.Create("", 0, CRect(0, 0, 9, 9), &parent, kChild));
        EXPECT_TRUE(plain.Create("", 0, CRect(0, 0, 9, 9), &parent, kOther));
        TakeLog();
    }

    Parent parent;
    Control control;
    CButton plain;
};

} // namespace

TEST_F(Reflection, GoesFirstToTheControlThenToTheParent)
{
    const auto own = reinterpret_cast<LPARAM>(control.m_hWnd), other = reinterpret_cast<LPARAM>(plain.m_hWnd);
    const auto from = [](const void* structure) { return reinterpret_cast<LPARAM>(structure); };
    const NMHDR click = {control.m_hWnd, kChild, static_cast<UINT>(NM_CLICK)}, also = {control.m_hWnd, kChild, 20},
                refused = {control.m_hWnd, kChild, 32};
    const NMHDR otherClick = {plain.m_hWnd, kOther, static_cast<UINT>(NM_CLICK)}, nobodys = {plain.m_hWnd, kOther, 20},
                ranged = {plain.m_hWnd, kOther, 31};
    const DRAWITEMSTRUCT draw = {ODT_BUTTON, kChild, 4, 0, 0, control.m_hWnd, nullptr, {}, 0};
    const DRAWITEMSTRUCT ofMenu = {ODT_MENU, kChild, 4, 0, 0, control.m_hWnd, nullptr, {}, 0}; // the window is a menu
    const MEASUREITEMSTRUCT measure = {ODT_BUTTON, kChild, 0, 0, 0, 0};
    const COMPAREITEMSTRUCT compare = {ODT_LISTBOX, kChild, control.m_hWnd, 0, 0, 0, 0, 0};
    const DELETEITEMSTRUCT gone = {ODT_LISTBOX, kChild, 3, control.m_hWnd, 0};
    const CClientDC context(&parent);
    g_context = context.m_hDC;
    const auto drawing = reinterpret_cast<WPARAM>(g_context);
    const LRESULT defaultBrush = ::DefWindowProcA(parent.m_hWnd, WM_CTLCOLORMSGBOX, drawing, own);
    const struct {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        LRESULT result;
        std::string log;
    } rows[] = {
        {WM_COMMAND, MAKEWPARAM(kChild, BN_CLICKED), own, 1, "clicked|"},
        {WM_COMMAND, MAKEWPARAM(kChild, BN_DOUBLECLICKED), own, 1, "double|any 9|"},
        {WM_COMMAND, MAKEWPARAM(kOther, BN_DOUBLECLICKED), other, 1, "any 10|"},
        {WM_COMMAND, MAKEWPARAM(kOther, BN_CLICKED), other, 0, ""},
        {WM_COMMAND, 50, 0, 1, "passed 50|passed 50|any 50|"},
        {WM_COMMAND, 51, 0, 0, "passed 51|"},
        {WM_NOTIFY, kChild, from(&click), 5, Written("notified", click.code)},
        {WM_NOTIFY, kOther, from(&otherClick), 6, Written("parent", click.code)},
        {WM_NOTIFY, kChild, from(&also), 6, "also 20|parent 20|"},
        {WM_NOTIFY, kOther, from(&nobodys), 0, ""},
        {WM_NOTIFY, kOther, from(&ranged), 8, "range 10|"},
        {WM_NOTIFY, kChild, from(&refused), 0, "range 9|"},
        {WM_DRAWITEM, kChild, from(&draw), TRUE, "parent 9|draw 4|"},
        {WM_DRAWITEM, kChild, from(&ofMenu), TRUE, "parent 9|"},
        {WM_MEASUREITEM, kChild, from(&measure), TRUE, ""},
        {WM_COMPAREITEM, kChild, from(&compare), -1, Written("compare", &compare)},
        {WM_DELETEITEM, kChild, from(&gone), TRUE, "delete 3|"},
        {WM_CTLCOLORBTN, drawing, own, CTLCOLOR_BTN, "parent 3|colour context 3|"},
        {WM_CTLCOLORMSGBOX, drawing, own, defaultBrush, "parent 0|colour context 0|"},
        {WM_HSCROLL, MAKEWPARAM(SB_THUMBTRACK, 60000), own, 0, "scroll 5 60000|"},
        {WM_VKEYTOITEM, MAKEWPARAM(10, 4), own, 14, "key 10 4|"},
        {WM_PARENTNOTIFY, MAKEWPARAM(WM_DESTROY, kChild), own, 0, Written("told", MAKELONG(2, kChild), own)},
        {WM_PARENTNOTIFY, WM_LBUTTONDOWN, own, 0, ""}, // that is a place, not a window
        {WM_HSCROLL, SB_LINEUP, other, 0, ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.result, parent.SendMessage(row.message, row.wParam, row.lParam)) << row.message << row.log;
        EXPECT_EQ(row.log, TakeLog()) << row.message;
    }
    EXPECT_EQ(23u, measure.itemHeight);
    EXPECT_EQ(0, control.SendMessage(WM_HSCROLL, SB_LINEUP, own));
    EXPECT_EQ("", TakeLog()) << "its own parent it is not";
}

// The state of commands -----------------------------------------------------------------------------------------------

namespace {

enum Command { kPlain = 100, kGreyed, kChecked, kRadio, kPopupFirst, kList, kRouted, kUnanswered, kLast };

class Target : public CCmdTarget {
public:
    int routed = 0;

    void OnCommandOf(UINT) {}
    void OnGreyed(CCmdUI* item) { item->Enable(FALSE); }
    void OnChecked(CCmdUI* item)
    {
        item->SetCheck();
        item->SetText("changed");
    }
    void OnRadio(CCmdUI* item)
    {
        item->SetRadio();
        item->SetText("dot");
    }
    void OnList(CCmdUI* item) // puts two names in its own place
    {
        item->m_pMenu->DeleteMenu(item->m_nIndex, MF_BYPOSITION);
        for (const UINT id : {2000, 2001})
            item->m_pMenu->InsertMenu(item->m_nIndex++, MF_BYPOSITION, id, "name");
    }
    void OnRouted(CCmdUI* item)
    {
        ++routed;
        item->ContinueRouting();
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Target, CCmdTarget)
    ON_COMMAND_RANGE(kPlain, kRouted, OnCommandOf)
    ON_UPDATE_COMMAND_UI(kGreyed, OnGreyed)
    ON_UPDATE_COMMAND_UI(kChecked, OnChecked)
    ON_UPDATE_COMMAND_UI(kRadio, OnRadio)
    ON_UPDATE_COMMAND_UI(kPopupFirst, OnGreyed)
    ON_UPDATE_COMMAND_UI(kList, OnList)
    ON_UPDATE_COMMAND_UI(kRouted, OnRouted)
    ON_UPDATE_COMMAND_UI_RANGE(kRouted, kRouted, OnRouted)
    ON_UPDATE_COMMAND_UI(kLast, OnGreyed)
    ON_UPDATE_COMMAND_UI_RANGE(0, 0, OnRouted)
    ON_UPDATE_COMMAND_UI_RANGE(0xFFFF, 0xFFFF, OnRouted)
END_MESSAGE_MAP()

} // namespace

TEST(CommandUpdate, SetsTheItemsOfAMenu)
{
    Target target;
    CMenu menu;
    ASSERT_TRUE(menu.CreatePopupMenu());
    CMenu popup;
    ASSERT_TRUE(popup.CreatePopupMenu());
    ASSERT_TRUE(popup.AppendMenu(MF_STRING, kPopupFirst, "inner"));
    for (const UINT id : {kPlain, kGreyed, kChecked, kRadio, kList, kRouted, kUnanswered})
        ASSERT_TRUE(menu.AppendMenu(id == kRadio ? MF_STRING | MF_GRAYED : MF_STRING, id, "text"));
    ASSERT_TRUE(menu.AppendMenu(MF_SEPARATOR));
    ASSERT_TRUE(menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup.Detach()), "popup"));
    ASSERT_TRUE(menu.AppendMenu(MF_STRING, kLast, "text"));
    AfxUpdateMenu(&menu, &target, TRUE);
    constexpr UINT kDisabled = MF_GRAYED | MF_DISABLED;
    static constexpr std::pair<UINT, UINT> states[] = {
        {kPlain, MF_ENABLED},   {kGreyed, kDisabled},
        {kChecked, MF_CHECKED}, {kRadio, MF_CHECKED | MF_GRAYED | MFT_RADIOCHECK},
        {2000, MF_ENABLED},     {2001, MF_ENABLED},
        {kRouted, MF_ENABLED},  {kUnanswered, kDisabled},
        {kLast, kDisabled}, // behind a list that has grown
    };
    for (const auto& [id, state] : states)
        EXPECT_EQ(state, menu.GetMenuState(id, MF_BYCOMMAND)) << id;
    EXPECT_EQ(0u, menu.GetMenuState(9, MF_BYPOSITION) & kDisabled) << "a popup menu stays";
    EXPECT_EQ(2, target.routed);
    CString text;
    EXPECT_EQ(7, menu.GetMenuString(kChecked, text, MF_BYCOMMAND));
    EXPECT_STREQ("changed", text);
    EXPECT_EQ(3, menu.GetMenuString(kRadio, text, MF_BYCOMMAND)) << "nor does the text cost the mark";
    AfxUpdateMenu(&menu, &target, FALSE);
    EXPECT_EQ(0, menu.GetMenuString(kUnanswered + 1000, text, MF_BYCOMMAND));
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(&menu, CMenu::FromHandle(menu.m_hMenu));
    EXPECT_FALSE(menu.Attach(menu.m_hMenu) || menu.CreateMenu()) << "it holds one";
    const HMENU handle = menu.Detach();
    EXPECT_EQ(nullptr, CMenu::FromHandlePermanent(handle));
    EXPECT_EQ(handle, CMenu::FromHandle(handle)->GetSafeHmenu());
    EXPECT_TRUE(menu.Attach(handle));
}

TEST_F(Reflection, ControlsShowTheStateOfTheirCommands)
{
    Target target;
    CButton box, unanswered, number, greyed;
    const CRect area(0, 0, 9, 9);
    EXPECT_TRUE(box.Create("old", BS_CHECKBOX | WS_TABSTOP | WS_VISIBLE, area, &parent, kChecked));
    EXPECT_TRUE(unanswered.Create("", BS_PUSHBUTTON, area, &parent, kUnanswered));
    EXPECT_TRUE(number.Create("", BS_PUSHBUTTON, area, &parent, 0xFFFF));
    EXPECT_TRUE(greyed.Create("", BS_PUSHBUTTON | WS_TABSTOP | WS_VISIBLE, area, &parent, kGreyed));
    CStatic text;
    EXPECT_TRUE(text.Create("", 0, area, &parent, kUnanswered));
    parent.ShowWindow(SW_SHOW);
    greyed.SetFocus();
    parent.UpdateDialogControls(&target, TRUE);
    EXPECT_EQ(0, target.routed) << "a control without a command is not asked for";
    EXPECT_FALSE(greyed.IsWindowEnabled());
    EXPECT_EQ(box.m_hWnd, ::GetFocus()) << "else keys would go nowhere";
    EXPECT_EQ(1, control.updates) << "a control that answers itself is not asked of the target";
    EXPECT_FALSE(control.IsWindowEnabled());
    EXPECT_EQ(BST_CHECKED, box.GetCheck());
    EXPECT_EQ("changed", TextOf(box.m_hWnd));
    EXPECT_FALSE(unanswered.IsWindowEnabled());
    EXPECT_TRUE(text.IsWindowEnabled()) << "nothing is commanded by a text";
}
