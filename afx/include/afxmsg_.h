/// \file
/// Application framework: message maps.
///
/// A map entry holds what it answers to and a small function that unpacks the message and calls the handler. The macros
/// make that function as a lambda inside the class's own GetThisMessageMap, where `ThisClass` is the class: handlers
/// may be protected, and one whose signature does not fit does not compile.
#pragma once

class CCmdTarget;

/// What a handler is called with, and what it answers.
struct AFX_CALL {
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    UINT nID = 0;           ///< command or control identifier; for the messages of control colours CTLCOLOR_...
    void* pExtra = nullptr; ///< CCmdUI* for CN_UPDATE_COMMAND_UI, AFX_NOTIFY* for WM_NOTIFY
    LRESULT lResult = 0;
    BOOL bHandled = TRUE; ///< cleared by a handler that wants the search to go on
};

/// A WM_NOTIFY on its way to a handler.
struct AFX_NOTIFY {
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

using AFX_HANDLER = void (*)(CCmdTarget* pTarget, AFX_CALL& call);

struct AFX_MSGMAP_ENTRY {
    UINT nMessage;            ///< a window message, or WM_COMMAND / WM_NOTIFY (plus WM_REFLECT_BASE) with a code
    UINT nCode;               ///< notification code, of WM_NOTIFY its low word; CN_COMMAND for menu commands
    UINT nID;                 ///< first identifier
    UINT nLastID;             ///< last identifier
    const UINT* pnRegistered; ///< address of a registered message's number, in place of nMessage
    AFX_HANDLER pfn;          ///< null ends the table
};

struct AFX_MSGMAP {
    const AFX_MSGMAP*(AFXAPI* pfnGetBaseMap)(); ///< null for CCmdTarget
    const AFX_MSGMAP_ENTRY* lpEntries;
};

/// Notification codes of the framework itself.
#define CN_COMMAND 0
#define CN_UPDATE_COMMAND_UI (static_cast<UINT>(-1))

/// Added to a message that a control gets back from its parent.
#define WM_REFLECT_BASE 0xBC00

/// Messages of the framework itself: to a window in a modal loop while no message waits (\p lParam the number of times
/// since the last message; answer 0 when there is no more to do), and to the windows of a frame when it is idle.
#define WM_KICKIDLE 0x036A
#define WM_IDLEUPDATECMDUI 0x0363
/// To a frame: shows string \p wParam, or the text \p lParam points to, in its message line. To the children of a
/// window that lays its bars out: \p lParam is an AFX_SIZEPARENTPARAMS*.
#define WM_SETMESSAGESTRING 0x0362
#define WM_SIZEPARENT 0x0361

/// Stands in message maps for the seven messages by which controls ask their parent for colours.
#define WM_CTLCOLOR 0x0019

#define DECLARE_MESSAGE_MAP()                                                                                          \
protected:                                                                                                             \
    static const AFX_MSGMAP* AFXAPI GetThisMessageMap();                                                               \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                                         \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); }                                  \
    const AFX_MSGMAP* AFXAPI theClass::GetThisMessageMap()                                                             \
    {                                                                                                                  \
        using ThisClass [[maybe_unused]] = theClass;                                                                   \
        using TheBaseClass = baseClass;                                                                                \
        static const AFX_MSGMAP_ENTRY entries[] = {

#define END_MESSAGE_MAP()                                                                                              \
    {                                                                                                                  \
        0, 0, 0, 0, nullptr, nullptr                                                                                   \
    }                                                                                                                  \
    }                                                                                                                  \
    ;                                                                                                                  \
    static const AFX_MSGMAP map = {&TheBaseClass::GetThisMessageMap, entries};                                         \
    return &map;                                                                                                       \
    }

#define AFX_ENTRY(message, code, first, last, registered, ...)                                                         \
    {message, code, first, last, registered, [](CCmdTarget* pTarget, [[maybe_unused]] AFX_CALL& call) {                \
         auto* self = static_cast<ThisClass*>(pTarget);                                                                \
         __VA_ARGS__;                                                                                                  \
     }},

// What the macros below are made of -----------------------------------------------------------------------------------

#define AFX_ON_CMD(code, id, idLast, ...)                                                                              \
    AFX_ENTRY(WM_COMMAND, static_cast<UINT>(code), static_cast<UINT>(id), static_cast<UINT>(idLast), nullptr,          \
              __VA_ARGS__)
#define AFX_ON_NOTIFY(code, id, idLast, ...)                                                                           \
    AFX_ENTRY(WM_NOTIFY, LOWORD(code), static_cast<UINT>(id), static_cast<UINT>(idLast), nullptr,                      \
              [[maybe_unused]] const auto* notify = static_cast<AFX_NOTIFY*>(call.pExtra);                             \
              __VA_ARGS__)
#define AFX_ON_REFLECTED(message, code, ...) AFX_ENTRY((message) + WM_REFLECT_BASE, code, 0, 0, nullptr, __VA_ARGS__)
#define AFX_ON_REFLECTED_NOTIFY(code, ...)                                                                             \
    AFX_ON_REFLECTED(WM_NOTIFY, LOWORD(code), const auto* notify = static_cast<AFX_NOTIFY*>(call.pExtra); __VA_ARGS__)
#define AFX_ON_WM(message, ...) AFX_ENTRY(message, 0, 0, 0, nullptr, __VA_ARGS__)
/// The message's parameters as a handler takes them.
#define AFX_WINDOW(parameter) CWnd::FromHandle(reinterpret_cast<HWND>(parameter))
#define AFX_CONTEXT(parameter) CDC::FromHandle(reinterpret_cast<HDC>(parameter))
#define AFX_MENU(parameter) CMenu::FromHandle(reinterpret_cast<HMENU>(parameter))
#define AFX_NUMBER(parameter) static_cast<UINT>(parameter)
#define AFX_FLAG(parameter) static_cast<BOOL>(parameter)
#define AFX_LOW_SIGNED(parameter) static_cast<int>(static_cast<short>(LOWORD(parameter)))
#define AFX_HIGH_SIGNED(parameter) static_cast<int>(static_cast<short>(HIWORD(parameter)))
#define AFX_POINT(parameter) CPoint(AFX_LOW_SIGNED(parameter), AFX_HIGH_SIGNED(parameter))
#define AFX_POINTER(type, parameter) reinterpret_cast<type*>(parameter)

// Commands and notifications ------------------------------------------------------------------------------------------
//
// A handler of an ..._EX entry answers FALSE to let the search for a handler go on.

#define ON_COMMAND(id, memberFxn) AFX_ON_CMD(CN_COMMAND, id, id, self->memberFxn())
#define ON_COMMAND_RANGE(id, idLast, memberFxn) AFX_ON_CMD(CN_COMMAND, id, idLast, self->memberFxn(call.nID))
#define ON_COMMAND_EX(id, memberFxn) AFX_ON_CMD(CN_COMMAND, id, id, call.bHandled = self->memberFxn(call.nID))
#define ON_COMMAND_EX_RANGE(id, idLast, memberFxn)                                                                     \
    AFX_ON_CMD(CN_COMMAND, id, idLast, call.bHandled = self->memberFxn(call.nID))
#define ON_UPDATE_COMMAND_UI(id, memberFxn) ON_UPDATE_COMMAND_UI_RANGE(id, id, memberFxn)
#define ON_UPDATE_COMMAND_UI_RANGE(id, idLast, memberFxn)                                                              \
    AFX_ON_CMD(CN_UPDATE_COMMAND_UI, id, idLast, auto* item = static_cast<CCmdUI*>(call.pExtra);                       \
               item->m_bContinueRouting = FALSE; self->memberFxn(item); call.bHandled = !item->m_bContinueRouting)
#define ON_CONTROL(wNotifyCode, id, memberFxn) AFX_ON_CMD(wNotifyCode, id, id, self->memberFxn())
#define ON_CONTROL_RANGE(wNotifyCode, id, idLast, memberFxn)                                                           \
    AFX_ON_CMD(wNotifyCode, id, idLast, self->memberFxn(call.nID))

#define ON_NOTIFY(wNotifyCode, id, memberFxn)                                                                          \
    AFX_ON_NOTIFY(wNotifyCode, id, id, self->memberFxn(notify->pNMHDR, notify->pResult))
#define ON_NOTIFY_EX(wNotifyCode, id, memberFxn) ON_NOTIFY_EX_RANGE(wNotifyCode, id, id, memberFxn)
#define ON_NOTIFY_RANGE(wNotifyCode, id, idLast, memberFxn)                                                            \
    AFX_ON_NOTIFY(wNotifyCode, id, idLast, self->memberFxn(call.nID, notify->pNMHDR, notify->pResult))
#define ON_NOTIFY_EX_RANGE(wNotifyCode, id, idLast, memberFxn)                                                         \
    AFX_ON_NOTIFY(wNotifyCode, id, idLast, call.bHandled = self->memberFxn(call.nID, notify->pNMHDR, notify->pResult))

#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_BN_DOUBLECLICKED(id, memberFxn) ON_CONTROL(BN_DOUBLECLICKED, id, memberFxn)
#define ON_CBN_CLOSEUP(id, memberFxn) ON_CONTROL(CBN_CLOSEUP, id, memberFxn)
#define ON_CBN_DBLCLK(id, memberFxn) ON_CONTROL(CBN_DBLCLK, id, memberFxn)
#define ON_CBN_DROPDOWN(id, memberFxn) ON_CONTROL(CBN_DROPDOWN, id, memberFxn)
#define ON_CBN_EDITCHANGE(id, memberFxn) ON_CONTROL(CBN_EDITCHANGE, id, memberFxn)
#define ON_CBN_KILLFOCUS(id, memberFxn) ON_CONTROL(CBN_KILLFOCUS, id, memberFxn)
#define ON_CBN_SELCHANGE(id, memberFxn) ON_CONTROL(CBN_SELCHANGE, id, memberFxn)
#define ON_CBN_SELENDOK(id, memberFxn) ON_CONTROL(CBN_SELENDOK, id, memberFxn)
#define ON_CBN_SETFOCUS(id, memberFxn) ON_CONTROL(CBN_SETFOCUS, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_EN_KILLFOCUS(id, memberFxn) ON_CONTROL(EN_KILLFOCUS, id, memberFxn)
#define ON_EN_SETFOCUS(id, memberFxn) ON_CONTROL(EN_SETFOCUS, id, memberFxn)
#define ON_EN_UPDATE(id, memberFxn) ON_CONTROL(EN_UPDATE, id, memberFxn)
#define ON_LBN_DBLCLK(id, memberFxn) ON_CONTROL(LBN_DBLCLK, id, memberFxn)
#define ON_LBN_SELCHANGE(id, memberFxn) ON_CONTROL(LBN_SELCHANGE, id, memberFxn)
#define ON_STN_CLICKED(id, memberFxn) ON_CONTROL(STN_CLICKED, id, memberFxn)

// Reflected: what a control made its parent receive comes back to the control first. A handler of an ..._EX entry that
// answers FALSE lets the parent have it too.

#define ON_CONTROL_REFLECT(wNotifyCode, memberFxn)                                                                     \
    AFX_ON_REFLECTED(WM_COMMAND, static_cast<UINT>(wNotifyCode), self->memberFxn())
#define ON_CONTROL_REFLECT_EX(wNotifyCode, memberFxn)                                                                  \
    AFX_ON_REFLECTED(WM_COMMAND, static_cast<UINT>(wNotifyCode), call.bHandled = self->memberFxn())
#define ON_NOTIFY_REFLECT(wNotifyCode, memberFxn)                                                                      \
    AFX_ON_REFLECTED_NOTIFY(wNotifyCode, self->memberFxn(notify->pNMHDR, notify->pResult))
#define ON_NOTIFY_REFLECT_EX(wNotifyCode, memberFxn)                                                                   \
    AFX_ON_REFLECTED_NOTIFY(wNotifyCode, call.bHandled = self->memberFxn(notify->pNMHDR, notify->pResult))
#define ON_UPDATE_COMMAND_UI_REFLECT(memberFxn)                                                                        \
    AFX_ON_REFLECTED(WM_COMMAND, CN_UPDATE_COMMAND_UI, self->memberFxn(static_cast<CCmdUI*>(call.pExtra)))

#define ON_WM_DRAWITEM_REFLECT()                                                                                       \
    AFX_ON_REFLECTED(WM_DRAWITEM, 0, self->DrawItem(AFX_POINTER(DRAWITEMSTRUCT, call.lParam)); call.lResult = TRUE)
#define ON_WM_MEASUREITEM_REFLECT()                                                                                    \
    AFX_ON_REFLECTED(WM_MEASUREITEM, 0, self->MeasureItem(AFX_POINTER(MEASUREITEMSTRUCT, call.lParam));                \
                     call.lResult = TRUE)
#define ON_WM_COMPAREITEM_REFLECT()                                                                                    \
    AFX_ON_REFLECTED(WM_COMPAREITEM, 0, call.lResult = self->CompareItem(AFX_POINTER(COMPAREITEMSTRUCT, call.lParam)))
#define ON_WM_DELETEITEM_REFLECT()                                                                                     \
    AFX_ON_REFLECTED(WM_DELETEITEM, 0, self->DeleteItem(AFX_POINTER(DELETEITEMSTRUCT, call.lParam));                   \
                     call.lResult = TRUE)
/// HBRUSH CtlColor(CDC*, UINT nCtlColor): a null brush lets the parent choose.
#define ON_WM_CTLCOLOR_REFLECT()                                                                                       \
    AFX_ON_REFLECTED(WM_CTLCOLOR, 0,                                                                                   \
                     call.lResult = reinterpret_cast<LRESULT>(self->CtlColor(AFX_CONTEXT(call.wParam), call.nID));     \
                     call.bHandled = call.lResult != 0)
#define ON_WM_HSCROLL_REFLECT() AFX_ON_REFLECTED(WM_HSCROLL, 0, self->HScroll(LOWORD(call.wParam), HIWORD(call.wParam)))
#define ON_WM_VSCROLL_REFLECT() AFX_ON_REFLECTED(WM_VSCROLL, 0, self->VScroll(LOWORD(call.wParam), HIWORD(call.wParam)))
#define ON_WM_VKEYTOITEM_REFLECT()                                                                                     \
    AFX_ON_REFLECTED(WM_VKEYTOITEM, 0, call.lResult = self->VKeyToItem(LOWORD(call.wParam), HIWORD(call.wParam)))
#define ON_WM_CHARTOITEM_REFLECT()                                                                                     \
    AFX_ON_REFLECTED(WM_CHARTOITEM, 0, call.lResult = self->CharToItem(LOWORD(call.wParam), HIWORD(call.wParam)))
#define ON_WM_PARENTNOTIFY_REFLECT()                                                                                   \
    AFX_ON_REFLECTED(WM_PARENTNOTIFY, 0, self->ParentNotify(AFX_NUMBER(call.wParam), call.lParam))

// Any message ---------------------------------------------------------------------------------------------------------

#define ON_MESSAGE(message, memberFxn) AFX_ON_WM(message, call.lResult = self->memberFxn(call.wParam, call.lParam))
/// \p nMessageVariable: a UINT variable that RegisterWindowMessage has set before the message arrives.
#define ON_REGISTERED_MESSAGE(nMessageVariable, memberFxn)                                                             \
    AFX_ENTRY(0xC000, 0, 0, 0, &nMessageVariable, call.lResult = self->memberFxn(call.wParam, call.lParam))

// Windows messages of one form

#define AFX_ON_KEY(message, handler)                                                                                   \
    AFX_ON_WM(message, self->handler(AFX_NUMBER(call.wParam), LOWORD(call.lParam), HIWORD(call.lParam)))
#define AFX_ON_MOUSE(message, handler)                                                                                 \
    AFX_ON_WM(message, self->handler(AFX_NUMBER(call.wParam), AFX_POINT(call.lParam)))
/// The scroll bar is null for one that belongs to the window's own border.
#define AFX_ON_SCROLL(message, handler)                                                                                \
    AFX_ON_WM(message, self->handler(LOWORD(call.wParam), HIWORD(call.wParam),                                         \
                                     static_cast<CScrollBar*>(AFX_WINDOW(call.lParam))))

// Windows messages: the life of a window ------------------------------------------------------------------------------

#define ON_WM_NCCREATE() AFX_ON_WM(WM_NCCREATE, call.lResult = self->OnNcCreate(AFX_POINTER(CREATESTRUCT, call.lParam)))
#define ON_WM_CREATE() AFX_ON_WM(WM_CREATE, call.lResult = self->OnCreate(AFX_POINTER(CREATESTRUCT, call.lParam)))
#define ON_WM_CLOSE() AFX_ON_WM(WM_CLOSE, self->OnClose())
#define ON_WM_QUERYENDSESSION() AFX_ON_WM(WM_QUERYENDSESSION, call.lResult = self->OnQueryEndSession())
#define ON_WM_ENDSESSION() AFX_ON_WM(WM_ENDSESSION, self->OnEndSession(AFX_FLAG(call.wParam)))
#define ON_WM_DESTROY() AFX_ON_WM(WM_DESTROY, self->OnDestroy())
#define ON_WM_NCDESTROY() AFX_ON_WM(WM_NCDESTROY, self->OnNcDestroy())

// Windows messages: place, state and painting -------------------------------------------------------------------------

#define ON_WM_MOVE() AFX_ON_WM(WM_MOVE, self->OnMove(AFX_LOW_SIGNED(call.lParam), AFX_HIGH_SIGNED(call.lParam)))
#define ON_WM_SIZE() AFX_ON_WM(WM_SIZE, self->OnSize(AFX_NUMBER(call.wParam), LOWORD(call.lParam), HIWORD(call.lParam)))
#define ON_WM_SIZING()                                                                                                 \
    AFX_ON_WM(WM_SIZING, self->OnSizing(AFX_NUMBER(call.wParam), AFX_POINTER(RECT, call.lParam)); call.lResult = TRUE)
#define ON_WM_GETMINMAXINFO() AFX_ON_WM(WM_GETMINMAXINFO, self->OnGetMinMaxInfo(AFX_POINTER(MINMAXINFO, call.lParam)))
#define ON_WM_WINDOWPOSCHANGING()                                                                                      \
    AFX_ON_WM(WM_WINDOWPOSCHANGING, self->OnWindowPosChanging(AFX_POINTER(WINDOWPOS, call.lParam)))
#define ON_WM_WINDOWPOSCHANGED()                                                                                       \
    AFX_ON_WM(WM_WINDOWPOSCHANGED, self->OnWindowPosChanged(AFX_POINTER(WINDOWPOS, call.lParam)))
#define ON_WM_SHOWWINDOW()                                                                                             \
    AFX_ON_WM(WM_SHOWWINDOW, self->OnShowWindow(AFX_FLAG(call.wParam), static_cast<UINT>(call.lParam)))
#define ON_WM_ENABLE() AFX_ON_WM(WM_ENABLE, self->OnEnable(AFX_FLAG(call.wParam)))
#define ON_WM_STYLECHANGED()                                                                                           \
    AFX_ON_WM(WM_STYLECHANGED,                                                                                         \
              self->OnStyleChanged(static_cast<int>(call.wParam), AFX_POINTER(STYLESTRUCT, call.lParam)))
#define ON_WM_ACTIVATE()                                                                                               \
    AFX_ON_WM(WM_ACTIVATE, self->OnActivate(LOWORD(call.wParam), AFX_WINDOW(call.lParam), HIWORD(call.wParam)))
#define ON_WM_ACTIVATEAPP()                                                                                            \
    AFX_ON_WM(WM_ACTIVATEAPP, self->OnActivateApp(AFX_FLAG(call.wParam), static_cast<DWORD>(call.lParam)))
#define ON_WM_NCACTIVATE() AFX_ON_WM(WM_NCACTIVATE, call.lResult = self->OnNcActivate(AFX_FLAG(call.wParam)))
#define ON_WM_SETFOCUS() AFX_ON_WM(WM_SETFOCUS, self->OnSetFocus(AFX_WINDOW(call.wParam)))
#define ON_WM_KILLFOCUS() AFX_ON_WM(WM_KILLFOCUS, self->OnKillFocus(AFX_WINDOW(call.wParam)))
#define ON_WM_PAINT() AFX_ON_WM(WM_PAINT, self->OnPaint())
#define ON_WM_ERASEBKGND() AFX_ON_WM(WM_ERASEBKGND, call.lResult = self->OnEraseBkgnd(AFX_CONTEXT(call.wParam)))
#define ON_WM_NCPAINT() AFX_ON_WM(WM_NCPAINT, self->OnNcPaint())
#define ON_WM_NCCALCSIZE()                                                                                             \
    AFX_ON_WM(WM_NCCALCSIZE, self->OnNcCalcSize(AFX_FLAG(call.wParam), AFX_POINTER(NCCALCSIZE_PARAMS, call.lParam)))
#define ON_WM_NCHITTEST() AFX_ON_WM(WM_NCHITTEST, call.lResult = self->OnNcHitTest(AFX_POINT(call.lParam)))

// Windows messages: keys and mouse ------------------------------------------------------------------------------------

#define ON_WM_GETDLGCODE() AFX_ON_WM(WM_GETDLGCODE, call.lResult = static_cast<LRESULT>(self->OnGetDlgCode()))
#define ON_WM_KEYDOWN() AFX_ON_KEY(WM_KEYDOWN, OnKeyDown)
#define ON_WM_KEYUP() AFX_ON_KEY(WM_KEYUP, OnKeyUp)
#define ON_WM_CHAR() AFX_ON_KEY(WM_CHAR, OnChar)
#define ON_WM_SYSKEYDOWN() AFX_ON_KEY(WM_SYSKEYDOWN, OnSysKeyDown)
#define ON_WM_SYSKEYUP() AFX_ON_KEY(WM_SYSKEYUP, OnSysKeyUp)
#define ON_WM_SYSCHAR() AFX_ON_KEY(WM_SYSCHAR, OnSysChar)
#define ON_WM_MOUSEMOVE() AFX_ON_MOUSE(WM_MOUSEMOVE, OnMouseMove)
#define ON_WM_LBUTTONDOWN() AFX_ON_MOUSE(WM_LBUTTONDOWN, OnLButtonDown)
#define ON_WM_LBUTTONUP() AFX_ON_MOUSE(WM_LBUTTONUP, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() AFX_ON_MOUSE(WM_LBUTTONDBLCLK, OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() AFX_ON_MOUSE(WM_RBUTTONDOWN, OnRButtonDown)
#define ON_WM_RBUTTONUP() AFX_ON_MOUSE(WM_RBUTTONUP, OnRButtonUp)
#define ON_WM_RBUTTONDBLCLK() AFX_ON_MOUSE(WM_RBUTTONDBLCLK, OnRButtonDblClk)
#define ON_WM_MBUTTONDOWN() AFX_ON_MOUSE(WM_MBUTTONDOWN, OnMButtonDown)
#define ON_WM_MOUSEWHEEL()                                                                                             \
    AFX_ON_WM(WM_MOUSEWHEEL,                                                                                           \
              call.lResult = self->OnMouseWheel(LOWORD(call.wParam), static_cast<short>(HIWORD(call.wParam)),          \
                                                AFX_POINT(call.lParam)))
#define ON_WM_MOUSELEAVE() AFX_ON_WM(WM_MOUSELEAVE, self->OnMouseLeave())
#define ON_WM_MOUSEACTIVATE()                                                                                          \
    AFX_ON_WM(WM_MOUSEACTIVATE,                                                                                        \
              call.lResult = self->OnMouseActivate(AFX_WINDOW(call.wParam), LOWORD(call.lParam), HIWORD(call.lParam)))
#define ON_WM_SETCURSOR()                                                                                              \
    AFX_ON_WM(WM_SETCURSOR,                                                                                            \
              call.lResult = self->OnSetCursor(AFX_WINDOW(call.wParam), LOWORD(call.lParam), HIWORD(call.lParam)))
#define ON_WM_CAPTURECHANGED() AFX_ON_WM(WM_CAPTURECHANGED, self->OnCaptureChanged(AFX_WINDOW(call.lParam)))
#define ON_WM_CANCELMODE() AFX_ON_WM(WM_CANCELMODE, self->OnCancelMode())
#define ON_WM_HSCROLL() AFX_ON_SCROLL(WM_HSCROLL, OnHScroll)
#define ON_WM_VSCROLL() AFX_ON_SCROLL(WM_VSCROLL, OnVScroll)
#define ON_WM_TIMER() AFX_ON_WM(WM_TIMER, self->OnTimer(static_cast<UINT_PTR>(call.wParam)))

// Windows messages: menus, commands and help --------------------------------------------------------------------------

#define ON_WM_SYSCOMMAND() AFX_ON_WM(WM_SYSCOMMAND, self->OnSysCommand(AFX_NUMBER(call.wParam), call.lParam))
#define ON_WM_INITMENU() AFX_ON_WM(WM_INITMENU, self->OnInitMenu(AFX_MENU(call.wParam)))
#define ON_WM_INITMENUPOPUP()                                                                                          \
    AFX_ON_WM(WM_INITMENUPOPUP, self->OnInitMenuPopup(AFX_MENU(call.wParam), LOWORD(call.lParam), HIWORD(call.lParam)))
#define ON_WM_MENUSELECT()                                                                                             \
    AFX_ON_WM(WM_MENUSELECT,                                                                                           \
              self->OnMenuSelect(LOWORD(call.wParam), HIWORD(call.wParam), reinterpret_cast<HMENU>(call.lParam)))
#define ON_WM_ENTERIDLE() AFX_ON_WM(WM_ENTERIDLE, self->OnEnterIdle(AFX_NUMBER(call.wParam), AFX_WINDOW(call.lParam)))
#define ON_WM_CONTEXTMENU()                                                                                            \
    AFX_ON_WM(WM_CONTEXTMENU, self->OnContextMenu(AFX_WINDOW(call.wParam), AFX_POINT(call.lParam)))
#define ON_WM_HELPINFO() AFX_ON_WM(WM_HELP, call.lResult = self->OnHelpInfo(AFX_POINTER(HELPINFO, call.lParam)))

// Windows messages: what a parent does for its controls ---------------------------------------------------------------

#define ON_WM_DRAWITEM()                                                                                               \
    AFX_ON_WM(WM_DRAWITEM, self->OnDrawItem(static_cast<int>(call.wParam), AFX_POINTER(DRAWITEMSTRUCT, call.lParam));  \
              call.lResult = TRUE)
#define ON_WM_MEASUREITEM()                                                                                            \
    AFX_ON_WM(WM_MEASUREITEM,                                                                                          \
              self->OnMeasureItem(static_cast<int>(call.wParam), AFX_POINTER(MEASUREITEMSTRUCT, call.lParam));         \
              call.lResult = TRUE)
#define ON_WM_COMPAREITEM()                                                                                            \
    AFX_ON_WM(WM_COMPAREITEM, call.lResult = self->OnCompareItem(static_cast<int>(call.wParam),                        \
                                                                 AFX_POINTER(COMPAREITEMSTRUCT, call.lParam)))
#define ON_WM_DELETEITEM()                                                                                             \
    AFX_ON_WM(WM_DELETEITEM,                                                                                           \
              self->OnDeleteItem(static_cast<int>(call.wParam), AFX_POINTER(DELETEITEMSTRUCT, call.lParam));           \
              call.lResult = TRUE)
#define ON_WM_CTLCOLOR()                                                                                               \
    AFX_ON_WM(WM_CTLCOLOR, call.lResult = reinterpret_cast<LRESULT>(                                                   \
                               self->OnCtlColor(AFX_CONTEXT(call.wParam), AFX_WINDOW(call.lParam), call.nID)))
#define ON_WM_VKEYTOITEM()                                                                                             \
    AFX_ON_WM(WM_VKEYTOITEM,                                                                                           \
              call.lResult = self->OnVKeyToItem(LOWORD(call.wParam), static_cast<CListBox*>(AFX_WINDOW(call.lParam)),  \
                                                HIWORD(call.wParam)))
#define ON_WM_CHARTOITEM()                                                                                             \
    AFX_ON_WM(WM_CHARTOITEM,                                                                                           \
              call.lResult = self->OnCharToItem(LOWORD(call.wParam), static_cast<CListBox*>(AFX_WINDOW(call.lParam)),  \
                                                HIWORD(call.wParam)))
#define ON_WM_PARENTNOTIFY() AFX_ON_WM(WM_PARENTNOTIFY, self->OnParentNotify(AFX_NUMBER(call.wParam), call.lParam))

// Windows messages: changes of the system -----------------------------------------------------------------------------

#define ON_WM_SYSCOLORCHANGE() AFX_ON_WM(WM_SYSCOLORCHANGE, self->OnSysColorChange())
#define ON_WM_SETTINGCHANGE()                                                                                          \
    AFX_ON_WM(WM_SETTINGCHANGE, self->OnSettingChange(AFX_NUMBER(call.wParam), AFX_POINTER(const char, call.lParam)))
#define ON_WM_FONTCHANGE() AFX_ON_WM(WM_FONTCHANGE, self->OnFontChange())
#define ON_WM_TIMECHANGE() AFX_ON_WM(WM_TIMECHANGE, self->OnTimeChange())
#define ON_WM_QUERYNEWPALETTE() AFX_ON_WM(WM_QUERYNEWPALETTE, call.lResult = self->OnQueryNewPalette())
#define ON_WM_PALETTECHANGED() AFX_ON_WM(WM_PALETTECHANGED, self->OnPaletteChanged(AFX_WINDOW(call.wParam)))
