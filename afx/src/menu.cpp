#include "thread_state.h"

IMPLEMENT_DYNCREATE(CMenu, CObject)

CMenu::~CMenu() { DestroyMenu(); }

CMenu* AFXAPI CMenu::FromHandle(HMENU hMenu) { return GetThreadState()->menus.FromHandle(hMenu); }
CMenu* AFXAPI CMenu::FromHandlePermanent(HMENU hMenu) { return GetThreadState()->menus.FindPermanent(hMenu); }
void AFXAPI CMenu::DeleteTempMap() { GetThreadState()->menus.DeleteTemporary(); }
BOOL CMenu::Attach(HMENU hMenu) { return GetThreadState()->menus.Attach(hMenu, this); }
HMENU CMenu::Detach() { return DetachHandle(&ThreadState::menus, this); }
BOOL CMenu::Own(HMENU hMenu) { return AttachOrDestroy(*this, hMenu, &::DestroyMenu); }

BOOL CMenu::LoadMenu(LPCSTR lpszResourceName)
{
    return Own(::LoadMenu(AfxFindResourceHandle(lpszResourceName, RT_MENU), lpszResourceName));
}

BOOL CMenu::DestroyMenu() { return m_hMenu != nullptr && ::DestroyMenu(Detach()); }

int CMenu::GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const
{
    const int length = ::GetMenuString(m_hMenu, nIDItem, nullptr, 0, nFlags);
    const int copied = GetMenuString(nIDItem, rString.GetBuffer(length), length + 1, nFlags);
    rString.ReleaseBuffer(copied);
    return copied;
}

BOOL CMenu::SetMenuItemBitmaps(UINT nPosition, UINT nFlags, const CBitmap* pBmpUnchecked, const CBitmap* pBmpChecked)
{
    const auto handle = [](const CBitmap* bitmap) {
        return bitmap != nullptr ? static_cast<HBITMAP>(bitmap->m_hObject) : nullptr;
    };
    return ::SetMenuItemBitmaps(m_hMenu, nPosition, nFlags, handle(pBmpUnchecked), handle(pBmpChecked));
}

BOOL CMenu::TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect)
{
    TPMPARAMS exclude = {sizeof exclude, {}};
    if (lpRect != nullptr)
        exclude.rcExclude = *lpRect;
    return ::TrackPopupMenuEx(m_hMenu, nFlags, x, y, pWnd != nullptr ? pWnd->m_hWnd : nullptr,
                              lpRect != nullptr ? &exclude : nullptr);
}
