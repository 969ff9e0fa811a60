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
    UINT nID = 0;           ///< command or control identifier
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
    UINT nCode;               ///< notification code; CN_COMMAND for menu commands
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

// Commands and notifications ------------------------------------------------------------------------------------------

#define ON_COMMAND(id, memberFxn)                                                                                      \
    AFX_ENTRY(WM_COMMAND, CN_COMMAND, static_cast<UINT>(id), static_cast<UINT>(id), nullptr, self->memberFxn())
#define ON_COMMAND_RANGE(id, idLast, memberFxn)                                                                        \
    AFX_ENTRY(WM_COMMAND, CN_COMMAND, static_cast<UINT>(id), static_cast<UINT>(idLast), nullptr,                       \
              self->memberFxn(call.nID))
#define ON_UPDATE_COMMAND_UI(id, memberFxn)                                                                            \
    AFX_ENTRY(WM_COMMAND, CN_UPDATE_COMMAND_UI, static_cast<UINT>(id), static_cast<UINT>(id), nullptr,                 \
              self->memberFxn(static_cast<CCmdUI*>(call.pExtra)))
#define ON_UPDATE_COMMAND_UI_RANGE(id, idLast, memberFxn)                                                              \
    AFX_ENTRY(WM_COMMAND, CN_UPDATE_COMMAND_UI, static_cast<UINT>(id), static_cast<UINT>(idLast), nullptr,             \
              self->memberFxn(static_cast<CCmdUI*>(call.pExtra)))
#define ON_CONTROL(wNotifyCode, id, memberFxn)                                                                         \
    AFX_ENTRY(WM_COMMAND, static_cast<UINT>(wNotifyCode), static_cast<UINT>(id), static_cast<UINT>(id), nullptr,       \
              self->memberFxn())
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_CBN_SELCHANGE(id, memberFxn) ON_CONTROL(CBN_SELCHANGE, id, memberFxn)
#define ON_LBN_SELCHANGE(id, memberFxn) ON_CONTROL(LBN_SELCHANGE, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)

// Any message ---------------------------------------------------------------------------------------------------------

#define ON_MESSAGE(message, memberFxn)                                                                                 \
    AFX_ENTRY(message, 0, 0, 0, nullptr, call.lResult = self->memberFxn(call.wParam, call.lParam))
/// \p nMessageVariable: a UINT variable that RegisterWindowMessage has set before the message arrives.
#define ON_REGISTERED_MESSAGE(nMessageVariable, memberFxn)                                                             \
    AFX_ENTRY(0xC000, 0, 0, 0, &nMessageVariable, call.lResult = self->memberFxn(call.wParam, call.lParam))

// Windows messages ----------------------------------------------------------------------------------------------------

#define AFX_ON_WM(message, ...) AFX_ENTRY(message, 0, 0, 0, nullptr, __VA_ARGS__)

#define ON_WM_CREATE() AFX_ON_WM(WM_CREATE, call.lResult = self->OnCreate(reinterpret_cast<CREATESTRUCT*>(call.lParam)))
#define ON_WM_DESTROY() AFX_ON_WM(WM_DESTROY, self->OnDestroy())
#define ON_WM_CLOSE() AFX_ON_WM(WM_CLOSE, self->OnClose())
#define ON_WM_PAINT() AFX_ON_WM(WM_PAINT, self->OnPaint())
#define ON_WM_SIZE()                                                                                                   \
    AFX_ON_WM(WM_SIZE, self->OnSize(static_cast<UINT>(call.wParam), LOWORD(call.lParam), HIWORD(call.lParam)))
#define ON_WM_SETFOCUS() AFX_ON_WM(WM_SETFOCUS, self->OnSetFocus(CWnd::FromHandle(reinterpret_cast<HWND>(call.wParam))))
#define ON_WM_TIMER() AFX_ON_WM(WM_TIMER, self->OnTimer(static_cast<UINT_PTR>(call.wParam)))
#define ON_WM_INITMENUPOPUP()                                                                                          \
    AFX_ON_WM(WM_INITMENUPOPUP,                                                                                        \
              self->OnInitMenuPopup(reinterpret_cast<HMENU>(call.wParam), LOWORD(call.lParam), HIWORD(call.lParam)))
#define ON_WM_GETMINMAXINFO()                                                                                          \
    AFX_ON_WM(WM_GETMINMAXINFO, self->OnGetMinMaxInfo(reinterpret_cast<MINMAXINFO*>(call.lParam)))
