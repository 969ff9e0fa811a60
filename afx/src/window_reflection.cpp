// Messages that a control makes its parent receive come back to the control.
#include "thread_state.h"

namespace {

/// The control that \p parent got a message for; null for any other message.
HWND ControlOf(HWND parent, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_COMMAND:
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM:
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<HWND>(lParam);
    case WM_NOTIFY:
        return reinterpret_cast<const NMHDR*>(lParam)->hwndFrom;
    case WM_PARENTNOTIFY: // other events have no window in it
        return LOWORD(wParam) == WM_CREATE || LOWORD(wParam) == WM_DESTROY ? reinterpret_cast<HWND>(lParam) : nullptr;
    case WM_DRAWITEM: {
        const auto* item = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        return item->CtlType != ODT_MENU ? item->hwndItem : nullptr;
    }
    case WM_MEASUREITEM: // tells the number alone
        return reinterpret_cast<const MEASUREITEMSTRUCT*>(lParam)->CtlType != ODT_MENU
                   ? ::GetDlgItem(parent, static_cast<int>(wParam))
                   : nullptr;
    case WM_COMPAREITEM:
        return reinterpret_cast<const COMPAREITEMSTRUCT*>(lParam)->hwndItem;
    case WM_DELETEITEM:
        return reinterpret_cast<const DELETEITEMSTRUCT*>(lParam)->hwndItem;
    default:
        return nullptr;
    }
}

} // namespace

BOOL CWnd::ReflectToControl(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    const HWND control = ControlOf(m_hWnd, message, wParam, lParam);
    CWnd* child = control != nullptr && control != m_hWnd ? FromHandlePermanent(control) : nullptr;
    return child != nullptr && child->OnChildNotify(message, wParam, lParam, pResult);
}

BOOL AFXAPI CWnd::ReflectLastMsg(HWND hWndChild, LRESULT* pResult)
{
    CWnd* child = FromHandlePermanent(hWndChild);
    return child != nullptr && child->SendChildNotifyLastMsg(pResult);
}

BOOL CWnd::SendChildNotifyLastMsg(LRESULT* pResult)
{
    const MSG message = GetThreadState()->lastMessage;
    LRESULT ignored = 0;
    return OnChildNotify(message.message, message.wParam, message.lParam, pResult != nullptr ? pResult : &ignored);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return ReflectChildNotify(message, wParam, lParam, pResult);
}

BOOL CWnd::ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    UINT code = 0;
    AFX_CALL call;
    call.wParam = wParam;
    call.lParam = lParam;
    AFX_NOTIFY notify = {pResult, nullptr};
    if (message == WM_COMMAND) {
        code = HIWORD(wParam);
    } else if (message == WM_NOTIFY) {
        notify.pNMHDR = reinterpret_cast<NMHDR*>(lParam);
        code = LOWORD(notify.pNMHDR->code);
        call.pExtra = &notify;
    } else if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) {
        call.nID = message - WM_CTLCOLORMSGBOX;
        message = WM_CTLCOLOR;
    }
    if (!DispatchMessageMap(message + WM_REFLECT_BASE, code, 0, call))
        return FALSE;
    if (message != WM_NOTIFY)
        *pResult = call.lResult;
    return TRUE;
}
