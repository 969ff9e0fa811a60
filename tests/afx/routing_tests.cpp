// Which handler a message reaches, with which arguments, and what its sender gets for an answer.
#include "support/test.h"

#include <commctrl.h>

#include <sstream>

namespace {

constexpr UINT kChild = 9;
constexpr UINT kOther = 10;

void Write(std::ostream& text, CPoint point) { text << ' ' << point.x << ',' << point.y; }
void Write(std::ostream& text, const CWnd* window)
{
    if (window != nullptr)
        text << " window" << window->GetDlgCtrlID();
    else
        text << " none";
}
template <class VALUE> void Write(std::ostream& text, VALUE value)
{
    if constexpr (std::is_convertible_v<VALUE, const CWnd*>)
        Write(text, static_cast<const CWnd*>(value));
    else if constexpr (std::is_pointer_v<VALUE>)
        text << ' ' << reinterpret_cast<UINT_PTR>(value);
    else
        text << ' ' << value;
}

/// The name of a handler and its arguments: numbers, windows by their control identifiers.
template <class... ARGUMENTS> std::string Written(const char* name, ARGUMENTS... arguments)
{
    std::ostringstream text;
    text << name;
    (Write(text, arguments), ...);
    return text.str();
}

/// Has a handler for each message, which writes its arguments down.
class AllWindow : public CWnd {
public:
    std::string log;
    HDC context = nullptr; // that is sent to it

protected:
#define ZO_HANDLER(result, name, parameters, ...)                                                                      \
    result name parameters                                                                                             \
    {                                                                                                                  \
        log = Written(#name __VA_OPT__(, ) __VA_ARGS__);                                                               \
        return result(7);                                                                                              \
    }
    using Nothing = void;
    ZO_HANDLER(Nothing, OnMove, (int x, int y), x, y)
    ZO_HANDLER(Nothing, OnSize, (UINT type, int cx, int cy), type, cx, cy)
    ZO_HANDLER(Nothing, OnActivate, (UINT state, CWnd* other, BOOL minimized), state, other, minimized)
    ZO_HANDLER(Nothing, OnActivateApp, (BOOL active, DWORD thread), active, thread)
    ZO_HANDLER(BOOL, OnNcActivate, (BOOL active), active)
    ZO_HANDLER(Nothing, OnShowWindow, (BOOL show, UINT status), show, status)
    ZO_HANDLER(Nothing, OnEnable, (BOOL enable), enable)
    ZO_HANDLER(Nothing, OnKillFocus, (CWnd * next), next)
    ZO_HANDLER(UINT, OnGetDlgCode, ())
    ZO_HANDLER(Nothing, OnKeyDown, (UINT key, UINT count, UINT flags), key, count, flags)
    ZO_HANDLER(Nothing, OnSysChar, (UINT key, UINT count, UINT flags), key, count, flags)
    ZO_HANDLER(Nothing, OnMouseMove, (UINT flags, CPoint point), flags, point)
    ZO_HANDLER(Nothing, OnRButtonUp, (UINT flags, CPoint point), flags, point)
    ZO_HANDLER(BOOL, OnMouseWheel, (UINT flags, short delta, CPoint point), flags, delta, point)
    ZO_HANDLER(int, OnMouseActivate, (CWnd * top, UINT hit, UINT message), top, hit, message)
    ZO_HANDLER(BOOL, OnSetCursor, (CWnd * window, UINT hit, UINT message), window, hit, message)
    ZO_HANDLER(LRESULT, OnNcHitTest, (CPoint point), point)
    ZO_HANDLER(Nothing, OnCaptureChanged, (CWnd * window), window)
    ZO_HANDLER(Nothing, OnVScroll, (UINT code, UINT position, CScrollBar* bar), code, position, bar)
    ZO_HANDLER(Nothing, OnTimer, (UINT_PTR id), id)
    ZO_HANDLER(Nothing, OnSysCommand, (UINT id, LPARAM parameter), id, parameter)
    ZO_HANDLER(Nothing, OnMenuSelect, (UINT id, UINT flags, HMENU menu), id, flags, menu)
    ZO_HANDLER(Nothing, OnContextMenu, (CWnd * window, CPoint point), window, point)
    ZO_HANDLER(BOOL, OnHelpInfo, (HELPINFO * info), info)
    ZO_HANDLER(Nothing, OnSettingChange, (UINT flags, LPCSTR section), flags, section)
    ZO_HANDLER(BOOL, OnQueryNewPalette, ())
    ZO_HANDLER(Nothing, OnPaletteChanged, (CWnd * window), window)
    ZO_HANDLER(Nothing, OnTimeChange, ())
    ZO_HANDLER(Nothing, OnDrawItem, (int id, DRAWITEMSTRUCT* item), id, item)
    ZO_HANDLER(int, OnCompareItem, (int id, COMPAREITEMSTRUCT* item), id, item)
    ZO_HANDLER(int, OnCharToItem, (UINT key, CListBox* box, UINT index), key, box, index)
    ZO_HANDLER(Nothing, OnParentNotify, (UINT message, LPARAM parameter), message, parameter)
    HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT kind)
    {
        log = Written(dc->m_hDC == context ? "OnCtlColor" : "no context", control, kind);
        return reinterpret_cast<HBRUSH>(7);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(AllWindow, CWnd)
    ON_WM_MOVE()
    ON_WM_SIZE()
    ON_WM_ACTIVATE()
    ON_WM_ACTIVATEAPP()
    ON_WM_NCACTIVATE()
    ON_WM_SHOWWINDOW()
    ON_WM_ENABLE()
    ON_WM_KILLFOCUS()
    ON_WM_GETDLGCODE()
    ON_WM_KEYDOWN()
    ON_WM_SYSCHAR()
    ON_WM_MOUSEMOVE()
    ON_WM_RBUTTONUP()
    ON_WM_MOUSEWHEEL()
    ON_WM_MOUSEACTIVATE()
    ON_WM_SETCURSOR()
    ON_WM_NCHITTEST()
    ON_WM_CAPTURECHANGED()
    ON_WM_VSCROLL()
    ON_WM_TIMER()
    ON_WM_SYSCOMMAND()
    ON_WM_MENUSELECT()
    ON_WM_CONTEXTMENU()
    ON_WM_HELPINFO()
    ON_WM_SETTINGCHANGE()
    ON_WM_QUERYNEWPALETTE()
    ON_WM_PALETTECHANGED()
    ON_WM_TIMECHANGE()
    ON_WM_DRAWITEM()
    ON_WM_COMPAREITEM()
    ON_WM_CHARTOITEM()
    ON_WM_PARENTNOTIFY()
    ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

} // namespace

TEST(MessageMap, UnpacksEachMessage)
{
    AllWindow window;
    ASSERT_TRUE(window.CreateEx(0, nullptr, "", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr));
    CButton child;
    ASSERT_TRUE(child.Create("", 0, CRect(0, 0, 9, 9), &window, kChild));
    const auto handle = reinterpret_cast<UINT_PTR>(child.m_hWnd);
    const auto own = static_cast<LPARAM>(handle);
    const CClientDC context(&window);
    window.context = context.m_hDC;
    const auto drawing = reinterpret_cast<WPARAM>(context.m_hDC);
    const LPARAM negative = MAKELPARAM(static_cast<WORD>(-3), static_cast<WORD>(-4));
    const struct {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        const char* expected;
        LRESULT result;
    } rows[] = {
        {WM_MOVE, 0, negative, "OnMove -3 -4", 0},
        {WM_SIZE, 2, MAKELPARAM(40000, 50000), "OnSize 2 40000 50000", 0},
        {WM_ACTIVATE, MAKEWPARAM(2, 1), own, "OnActivate 2 window9 1", 0},
        {WM_ACTIVATEAPP, 1, 55, "OnActivateApp 1 55", 0},
        {WM_NCACTIVATE, 1, 0, "OnNcActivate 1", 7},
        {WM_SHOWWINDOW, 1, 3, "OnShowWindow 1 3", 0},
        {WM_ENABLE, 1, 0, "OnEnable 1", 0},
        {WM_KILLFOCUS, handle, 0, "OnKillFocus window9", 0},
        {WM_KILLFOCUS, 0, 0, "OnKillFocus none", 0},
        {WM_GETDLGCODE, 0, 0, "OnGetDlgCode", 7},
        {WM_KEYDOWN, VK_F1, MAKELPARAM(2, 0xC000), "OnKeyDown 112 2 49152", 0},
        {WM_SYSCHAR, 'x', MAKELPARAM(1, 0x2000), "OnSysChar 120 1 8192", 0},
        {WM_MOUSEMOVE, MK_CONTROL, negative, "OnMouseMove 8 -3,-4", 0},
        {WM_RBUTTONUP, 0, MAKELPARAM(5, 6), "OnRButtonUp 0 5,6", 0},
        {WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, static_cast<WORD>(-120)), negative, "OnMouseWheel 4 -120 -3,-4", 7},
        {WM_MOUSEACTIVATE, handle, MAKELPARAM(HTCLIENT, 513), "OnMouseActivate window9 1 513", 7},
        {WM_SETCURSOR, handle, MAKELPARAM(HTCLIENT, 512), "OnSetCursor window9 1 512", 7},
        {WM_NCHITTEST, 0, negative, "OnNcHitTest -3,-4", 7},
        {WM_CAPTURECHANGED, 0, own, "OnCaptureChanged window9", 0},
        {WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 60000), own, "OnVScroll 5 60000 window9", 0},
        {WM_VSCROLL, MAKEWPARAM(SB_LINEDOWN, 0), 0, "OnVScroll 1 0 none", 0},
        {WM_TIMER, 12, 0, "OnTimer 12", 0},
        {WM_SYSCOMMAND, 0xF999, 55, "OnSysCommand 63897 55", 0},
        {WM_MENUSELECT, MAKEWPARAM(5, 0x80), 66, "OnMenuSelect 5 128 66", 0},
        {WM_CONTEXTMENU, handle, -1, "OnContextMenu window9 -1,-1", 0},
        {WM_HELP, 0, 0, "OnHelpInfo 0", 7},
        {WM_SETTINGCHANGE, 5, 0, "OnSettingChange 5 0", 0},
        {WM_QUERYNEWPALETTE, 0, 0, "OnQueryNewPalette", 7},
        {WM_PALETTECHANGED, handle, 0, "OnPaletteChanged window9", 0},
        {WM_TIMECHANGE, 0, 0, "OnTimeChange", 0},
        {WM_DRAWITEM, kChild, 0, "OnDrawItem 9 0", TRUE},
        {WM_COMPAREITEM, kChild, 0, "OnCompareItem 9 0", 7},
        {WM_CHARTOITEM, MAKEWPARAM('a', 3), own, "OnCharToItem 97 window9 3", 7},
        {WM_PARENTNOTIFY, MAKEWPARAM(WM_CREATE, kChild), own, nullptr, 0},
        {WM_CTLCOLORSTATIC, drawing, own, "OnCtlColor window9 6", 7},
        {WM_CTLCOLORMSGBOX, drawing, own, "OnCtlColor window9 0", 7},
    };
    for (const auto& row : rows) {
        window.log.clear();
        EXPECT_EQ(row.result, window.SendMessage(row.message, row.wParam, row.lParam)) << row.expected;
        const std::string notified = Written("OnParentNotify", MAKEWPARAM(WM_CREATE, kChild), own);
        EXPECT_EQ(row.expected != nullptr ? row.expected : notified, window.log);
    }
}

// Notifications, and what comes back to a control ---------------------------------------------------------------------

namespace {

/// Takes back what its parent receives for it: codes below 20 wholly, from 20 on the parent has them too.
class Control : public CButton {
public:
    std::string log;

    void OnClicked() { log += "clicked "; }
    BOOL OnDoubleClicked()
    {
        log += "double ";
        return FALSE;
    }
    void OnNotified(NMHDR* header, LRESULT* result)
    {
        log += Written("notified", header->code) + " ";
        *result = 5;
    }
    BOOL OnNotifiedAlso(NMHDR*, LRESULT*)
    {
        log += "also ";
        return FALSE;
    }
    void DrawItem(DRAWITEMSTRUCT* item) { log += Written("draw", item->itemID) + " "; }
    void MeasureItem(MEASUREITEMSTRUCT* item) { item->itemHeight = 23; }
    int CompareItem(COMPAREITEMSTRUCT*) { return -1; }
    void DeleteItem(DELETEITEMSTRUCT* item) { log += Written("delete", item->itemID) + " "; }
    HBRUSH CtlColor(CDC* dc, UINT kind)
    {
        log += Written(dc->m_hDC != nullptr ? "colour" : "no context", kind) + " ";
        return reinterpret_cast<HBRUSH>(static_cast<UINT_PTR>(kind)); // none for message boxes
    }
    void HScroll(UINT code, UINT position) { log += Written("scroll", code, position) + " "; }
    int VKeyToItem(UINT key, UINT index) { return static_cast<int>(key + index); }
    void ParentNotify(UINT message, LPARAM) { log += Written("told", LOWORD(message)) + " "; }
    void OnUpdate(CCmdUI* item)
    {
        log += "update ";
        item->Enable(FALSE);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Control, CButton)
    ON_CONTROL_REFLECT(BN_CLICKED, OnClicked)
    ON_CONTROL_REFLECT_EX(BN_DOUBLECLICKED, OnDoubleClicked)
    ON_NOTIFY_REFLECT(NM_CLICK, OnNotified)
    ON_NOTIFY_REFLECT_EX(20, OnNotifiedAlso)
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
    std::string log;

    void OnAny(UINT id) { log += Written("any", id) + " "; }
    BOOL OnPassedOn(UINT id)
    {
        log += Written("passed", id) + " ";
        return FALSE;
    }
    void OnNotified(NMHDR*, LRESULT* result)
    {
        log += "parent ";
        *result = 6;
    }
    BOOL OnRange(UINT id, NMHDR* header, LRESULT* result)
    {
        log += Written("range", id) + " ";
        *result = 8;
        return header->code == 31; // 32 goes on, to nobody
    }
    void OnDrawItem(int id, DRAWITEMSTRUCT* item)
    {
        log += Written("draw", id) + " ";
        CWnd::OnDrawItem(id, item);
    }
    HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT kind)
    {
        log += Written("colour", kind) + " ";
        return CWnd::OnCtlColor(dc, control, kind);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Parent, CWnd)
    ON_COMMAND_EX(50, OnPassedOn)
    ON_COMMAND_EX_RANGE(50, 51, OnPassedOn)
    ON_COMMAND_RANGE(50, 50, OnAny)
    ON_CONTROL_RANGE(BN_DOUBLECLICKED, kChild, kOther, OnAny)
    ON_NOTIFY(20, kChild, OnNotified)
    ON_NOTIFY(NM_CLICK, kOther, OnNotified)
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
        control.log.clear();
    }
    /// Sends a message to the parent. \return its result, and what the control and then the parent have written
    std::pair<LRESULT, std::string> Send(UINT message, WPARAM wParam, LPARAM lParam)
    {
        const LRESULT result = parent.SendMessage(message, wParam, lParam);
        return {result, std::exchange(control.log, {}) + std::exchange(parent.log, {})};
    }
    using Outcome = std::pair<LRESULT, std::string>;

    Parent parent;
    Control control;
    CButton plain;
};

} // namespace

TEST_F(Reflection, GoesFirstToTheControlThenToTheParent)
{
    const auto command = [&](const CWnd& from, WORD code) {
        return Send(WM_COMMAND, MAKEWPARAM(from.GetDlgCtrlID(), code), reinterpret_cast<LPARAM>(from.m_hWnd));
    };
    EXPECT_EQ(Outcome(1, "clicked "), command(control, BN_CLICKED));
    EXPECT_EQ(Outcome(1, "double any 9 "), command(control, BN_DOUBLECLICKED));
    EXPECT_EQ(Outcome(1, "any 10 "), command(plain, BN_DOUBLECLICKED));
    EXPECT_EQ(Outcome(0, ""), command(plain, BN_CLICKED));
    EXPECT_EQ(Outcome(1, "passed 50 passed 50 any 50 "), Send(WM_COMMAND, 50, 0));
    EXPECT_EQ(Outcome(0, "passed 51 "), Send(WM_COMMAND, 51, 0));

    const struct {
        const CWnd* from;
        UINT code;
        Outcome expected;
    } notifications[] = {
        {&control, NM_CLICK, {5, Written("notified", NM_CLICK) + " "}},
        {&plain, NM_CLICK, {6, "parent "}},
        {&control, 20, {6, "also parent "}},
        {&plain, 20, {0, ""}},
        {&plain, 31, {8, "range 10 "}},
        {&control, 32, {0, "range 9 "}},
    };
    for (const auto& row : notifications) {
        NMHDR header = {row.from->m_hWnd, static_cast<UINT_PTR>(row.from->GetDlgCtrlID()), row.code};
        EXPECT_EQ(row.expected, Send(WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header))) << row.code;
    }
}

TEST_F(Reflection, GivesBackWhatTheParentIsAskedForAControl)
{
    const auto own = reinterpret_cast<LPARAM>(control.m_hWnd);
    DRAWITEMSTRUCT draw = {ODT_BUTTON, kChild, 4, 0, 0, control.m_hWnd, nullptr, {}, 0};
    EXPECT_EQ(Outcome(TRUE, "draw 4 draw 9 "), Send(WM_DRAWITEM, kChild, reinterpret_cast<LPARAM>(&draw)));
    draw.CtlType = ODT_MENU; // then the window is a menu
    EXPECT_EQ(Outcome(TRUE, "draw 9 "), Send(WM_DRAWITEM, kChild, reinterpret_cast<LPARAM>(&draw)));
    MEASUREITEMSTRUCT measure = {ODT_BUTTON, kChild, 0, 0, 0, 0};
    EXPECT_EQ(Outcome(TRUE, ""), Send(WM_MEASUREITEM, kChild, reinterpret_cast<LPARAM>(&measure)));
    EXPECT_EQ(23u, measure.itemHeight);
    COMPAREITEMSTRUCT compare = {ODT_LISTBOX, kChild, control.m_hWnd, 0, 0, 0, 0, 0};
    EXPECT_EQ(Outcome(-1, ""), Send(WM_COMPAREITEM, kChild, reinterpret_cast<LPARAM>(&compare)));
    DELETEITEMSTRUCT gone = {ODT_LISTBOX, kChild, 3, control.m_hWnd, 0};
    EXPECT_EQ(Outcome(TRUE, "delete 3 "), Send(WM_DELETEITEM, kChild, reinterpret_cast<LPARAM>(&gone)));
    const CClientDC context(&parent);
    const auto drawing = reinterpret_cast<WPARAM>(context.m_hDC);
    EXPECT_EQ(Outcome(CTLCOLOR_BTN, "colour 3 colour 3 "), Send(WM_CTLCOLORBTN, drawing, own));
    EXPECT_EQ("colour 0 colour 0 ", Send(WM_CTLCOLORMSGBOX, drawing, own).second) << "no brush: the parent's default";
    EXPECT_EQ(Outcome(0, "scroll 5 60000 "), Send(WM_HSCROLL, MAKEWPARAM(SB_THUMBTRACK, 60000), own));
    EXPECT_EQ(Outcome(14, ""), Send(WM_VKEYTOITEM, MAKEWPARAM(10, 4), own));
    EXPECT_EQ(Outcome(0, "told 2 "), Send(WM_PARENTNOTIFY, MAKEWPARAM(WM_DESTROY, kChild), own));
    EXPECT_EQ(Outcome(0, ""), Send(WM_PARENTNOTIFY, WM_LBUTTONDOWN, own)) << "that is a place, not a window";
    EXPECT_EQ(Outcome(0, ""), Send(WM_HSCROLL, SB_LINEUP, reinterpret_cast<LPARAM>(plain.m_hWnd)));
    EXPECT_EQ(0, control.SendMessage(WM_HSCROLL, SB_LINEUP, own));
    EXPECT_EQ("", control.log) << "its own parent it is not";
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
    CButton box;
    ASSERT_TRUE(box.Create("old", BS_CHECKBOX | WS_TABSTOP, CRect(0, 0, 9, 9), &parent, kChecked));
    CButton unanswered;
    ASSERT_TRUE(unanswered.Create("", BS_PUSHBUTTON, CRect(0, 0, 9, 9), &parent, kUnanswered));
    CStatic text;
    ASSERT_TRUE(text.Create("", 0, CRect(0, 0, 9, 9), &parent, kUnanswered));
    CButton number;
    ASSERT_TRUE(number.Create("", BS_PUSHBUTTON, CRect(0, 0, 9, 9), &parent, 0xFFFF));
    CButton popup; // shows what the target updates by Enable(FALSE)
    ASSERT_TRUE(popup.Create("", BS_PUSHBUTTON | WS_TABSTOP, CRect(0, 0, 9, 9), &parent, kGreyed));
    parent.ShowWindow(SW_SHOW);
    popup.ShowWindow(SW_SHOW);
    box.ShowWindow(SW_SHOW);
    popup.SetFocus();
    parent.UpdateDialogControls(&target, TRUE);
    EXPECT_EQ(0, target.routed) << "a control without a command is not asked for";
    EXPECT_FALSE(popup.IsWindowEnabled());
    EXPECT_EQ(box.m_hWnd, ::GetFocus()) << "else keys would go nowhere";
    EXPECT_EQ("update ", control.log) << "a control that answers itself is not asked of the target";
    EXPECT_FALSE(control.IsWindowEnabled());
    EXPECT_EQ(BST_CHECKED, box.GetCheck());
    CString shown;
    box.GetWindowText(shown);
    EXPECT_STREQ("changed", shown);
    EXPECT_FALSE(unanswered.IsWindowEnabled());
    EXPECT_TRUE(text.IsWindowEnabled()) << "nothing is commanded by a text";
}
