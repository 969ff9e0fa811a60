// The state of commands as it is shown: menu items, controls.
#include <afxwin.h>

#include <algorithm>

BOOL CCmdUI::DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler)
{
    if (m_nID == 0 || LOWORD(m_nID) == 0xFFFF) // a separator, a static text
        return TRUE;
    if (pTarget->OnCmdMsg(m_nID, static_cast<int>(CN_UPDATE_COMMAND_UI), this, nullptr))
        return TRUE;
    if (bDisableIfNoHndler)
        Enable(pTarget->OnCmdMsg(m_nID, CN_COMMAND, nullptr, this));
    return FALSE;
}

namespace {

/// Gives the focus to the control that Tab would lead to.
void PassFocusOn(const CWnd& control)
{
    const HWND parent = ::GetParent(control.m_hWnd);
    ::SendMessage(parent, WM_NEXTDLGCTL, 0, FALSE); // in a dialog, which cares for its default button, too
    if (::GetFocus() == control.m_hWnd)
        ::SetFocus(::GetNextDlgTabItem(parent, control.m_hWnd, FALSE));
}

} // namespace

void CCmdUI::Enable(BOOL bOn)
{
    if (m_pMenu != nullptr) {
        if (m_pSubMenu == nullptr)
            m_pMenu->EnableMenuItem(m_nIndex, MF_BYPOSITION | (bOn ? MF_ENABLED : MF_GRAYED | MF_DISABLED));
    } else if (m_pOther != nullptr) {
        if (!bOn && ::GetFocus() == m_pOther->m_hWnd) // keys would go nowhere
            PassFocusOn(*m_pOther);
        m_pOther->EnableWindow(bOn);
    }
}

void CCmdUI::SetCheck(int nCheck)
{
    if (m_pMenu != nullptr) {
        if (m_pSubMenu == nullptr)
            m_pMenu->CheckMenuItem(m_nIndex, MF_BYPOSITION | (nCheck != 0 ? MF_CHECKED : MF_UNCHECKED));
    } else if (m_pOther != nullptr && (m_pOther->SendMessage(WM_GETDLGCODE) & DLGC_BUTTON) != 0) {
        m_pOther->SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck));
    }
}

namespace {

/// The type of a menu's item, as MENUITEMINFO has it.
UINT ItemType(const CMenu& menu, UINT index)
{
    MENUITEMINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_TYPE;
    return menu.GetMenuItemInfo(index, &info, TRUE) ? info.fType : 0;
}

} // namespace

void CCmdUI::SetRadio(BOOL bOn)
{
    SetCheck(bOn ? 1 : 0);
    if (m_pMenu == nullptr || m_pSubMenu != nullptr)
        return;
    CString text; // the type cannot be set without it
    m_pMenu->GetMenuString(m_nIndex, text, MF_BYPOSITION);
    MENUITEMINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_TYPE;
    info.fType = ItemType(*m_pMenu, m_nIndex) | MFT_RADIOCHECK;
    info.dwTypeData = text.GetBuffer(0);
    m_pMenu->SetMenuItemInfo(m_nIndex, &info, TRUE);
}

void CCmdUI::SetText(LPCSTR lpszText)
{
    if (m_pMenu != nullptr) {
        if (m_pSubMenu != nullptr)
            return;
        MENUITEMINFO info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_TYPE;
        info.fType = ItemType(*m_pMenu, m_nIndex) & MFT_RADIOCHECK;
        info.dwTypeData = const_cast<LPSTR>(lpszText);
        m_pMenu->SetMenuItemInfo(m_nIndex, &info, TRUE);
    } else if (m_pOther != nullptr) {
        CString present;
        m_pOther->GetWindowText(present);
        if (present != lpszText) // else it would flicker at every update
            m_pOther->SetWindowText(lpszText);
    }
}

void CWnd::UpdateDialogControls(CCmdTarget* pTarget, BOOL bDisableIfNoHndler)
{
    CCmdUI item;
    for (HWND control = ::GetWindow(m_hWnd, GW_CHILD); control != nullptr;) {
        const HWND next = ::GetWindow(control, GW_HWNDNEXT);
        item.m_nID = static_cast<UINT>(::GetDlgCtrlID(control));
        item.m_pOther = FromHandle(control);
        AFX_CALL call;
        call.pExtra = &item;
        if (!item.m_pOther->DispatchMessageMap(WM_COMMAND + WM_REFLECT_BASE, CN_UPDATE_COMMAND_UI, 0, call)) {
            // Only of a button the command is the control's own number.
            const LRESULT code = ::SendMessage(control, WM_GETDLGCODE, 0, 0);
            const bool button = (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
            item.DoUpdate(pTarget, bDisableIfNoHndler && button);
        }
        control = next;
    }
}

void AFXAPI AfxUpdateMenu(CMenu* pMenu, CCmdTarget* pTarget, BOOL bDisableIfNoHndler)
{
    CCmdUI item;
    item.m_pMenu = pMenu;
    item.m_nIndexMax = pMenu->GetMenuItemCount();
    for (item.m_nIndex = 0; item.m_nIndex < item.m_nIndexMax; ++item.m_nIndex) {
        item.m_nID = pMenu->GetMenuItemID(static_cast<int>(item.m_nIndex));
        item.m_pSubMenu = nullptr;
        if (item.m_nID == 0)
            continue;
        if (item.m_nID == static_cast<UINT>(-1)) { // a popup is asked for by its first command, and never disabled
            item.m_pSubMenu = pMenu->GetSubMenu(static_cast<int>(item.m_nIndex));
            item.m_nID = item.m_pSubMenu != nullptr ? item.m_pSubMenu->GetMenuItemID(0) : 0;
        }
        // A handler may put items in or take its own out, of a list of files, say: what stood behind stays behind.
        const UINT behind = item.m_nIndexMax - item.m_nIndex;
        item.DoUpdate(pTarget, bDisableIfNoHndler);
        item.m_nIndexMax = pMenu->GetMenuItemCount();
        item.m_nIndex = item.m_nIndexMax - (std::min)(behind, item.m_nIndexMax);
    }
}
