/// \file
/// Application framework: menus. Included by afxwin.h.
#pragma once

#include <afx.h>

class CBitmap;
class CWnd;

/// A menu: owns its handle and destroys it with its popups. The menu of a window belongs to the window: Detach it
/// after SetMenu. Items are named by position with MF_BYPOSITION, else by command.
class AFX_API CMenu : public CObject {
    DECLARE_DYNCREATE(CMenu)
public:
    CMenu() = default;
    ~CMenu() override;

    static CMenu* AFXAPI FromHandle(HMENU hMenu);
    static CMenu* AFXAPI FromHandlePermanent(HMENU hMenu);
    static void AFXAPI DeleteTempMap();
    /// \return FALSE for null, and for an object that holds a handle already
    BOOL Attach(HMENU hMenu);
    HMENU Detach();
    HMENU GetSafeHmenu() const { return m_hMenu; }
    operator HMENU() const { return m_hMenu; }

    BOOL CreateMenu() { return Own(::CreateMenu()); }
    BOOL CreatePopupMenu() { return Own(::CreatePopupMenu()); }
    /// Loads a resource found through the resource chain.
    BOOL LoadMenu(LPCSTR lpszResourceName);
    BOOL LoadMenu(UINT nIDResource) { return LoadMenu(MAKEINTRESOURCE(nIDResource)); }
    BOOL DestroyMenu();

    /// \param nIDNewItem with MF_POPUP the handle of a menu, which then belongs to this one
    BOOL AppendMenu(UINT nFlags, UINT_PTR nIDNewItem = 0, LPCSTR lpszNewItem = nullptr)
    {
        return ::AppendMenu(m_hMenu, nFlags, nIDNewItem, lpszNewItem);
    }
    BOOL InsertMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCSTR lpszNewItem = nullptr)
    {
        return ::InsertMenu(m_hMenu, nPosition, nFlags, nIDNewItem, lpszNewItem);
    }
    BOOL ModifyMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCSTR lpszNewItem = nullptr)
    {
        return ::ModifyMenu(m_hMenu, nPosition, nFlags, nIDNewItem, lpszNewItem);
    }
    BOOL DeleteMenu(UINT nPosition, UINT nFlags) { return ::DeleteMenu(m_hMenu, nPosition, nFlags); }
    /// Takes an item out; a popup menu is not destroyed: get it by GetSubMenu before.
    BOOL RemoveMenu(UINT nPosition, UINT nFlags) { return ::RemoveMenu(m_hMenu, nPosition, nFlags); }

    UINT GetMenuItemCount() const { return static_cast<UINT>(::GetMenuItemCount(m_hMenu)); }
    /// \return 0 for a separator, -1 for a popup menu
    UINT GetMenuItemID(int nPos) const { return ::GetMenuItemID(m_hMenu, nPos); }
    UINT GetMenuState(UINT nID, UINT nFlags) const { return ::GetMenuState(m_hMenu, nID, nFlags); }
    int GetMenuString(UINT nIDItem, LPSTR lpString, int nMaxCount, UINT nFlags) const
    {
        return ::GetMenuString(m_hMenu, nIDItem, lpString, nMaxCount, nFlags);
    }
    int GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const;
    /// \return the popup menu at that position; null if there is none
    CMenu* GetSubMenu(int nPos) const { return FromHandle(::GetSubMenu(m_hMenu, nPos)); }
    BOOL GetMenuItemInfo(UINT uItem, MENUITEMINFOA* lpMenuItemInfo, BOOL fByPos = FALSE) const
    {
        return ::GetMenuItemInfo(m_hMenu, uItem, fByPos, lpMenuItemInfo);
    }
    BOOL SetMenuItemInfo(UINT uItem, const MENUITEMINFOA* lpMenuItemInfo, BOOL fByPos = FALSE)
    {
        return ::SetMenuItemInfo(m_hMenu, uItem, fByPos, lpMenuItemInfo);
    }

    /// \return the state before, MF_CHECKED or MF_UNCHECKED; -1 if there is no such item
    UINT CheckMenuItem(UINT nIDCheckItem, UINT nCheck) { return ::CheckMenuItem(m_hMenu, nIDCheckItem, nCheck); }
    BOOL CheckMenuRadioItem(UINT nIDFirst, UINT nIDLast, UINT nIDItem, UINT nFlags)
    {
        return ::CheckMenuRadioItem(m_hMenu, nIDFirst, nIDLast, nIDItem, nFlags);
    }
    /// \return the state before; -1 if there is no such item
    UINT EnableMenuItem(UINT nIDEnableItem, UINT nEnable)
    {
        return static_cast<UINT>(::EnableMenuItem(m_hMenu, nIDEnableItem, nEnable));
    }
    BOOL SetDefaultItem(UINT uItem, BOOL fByPos = FALSE)
    {
        return ::SetMenuDefaultItem(m_hMenu, uItem, static_cast<UINT>(fByPos));
    }
    UINT GetDefaultItem(UINT gmdiFlags, BOOL fByPos = FALSE) const
    {
        return ::GetMenuDefaultItem(m_hMenu, static_cast<UINT>(fByPos), gmdiFlags);
    }
    BOOL SetMenuItemBitmaps(UINT nPosition, UINT nFlags, const CBitmap* pBmpUnchecked, const CBitmap* pBmpChecked);
    /// Shows the popup menu at a place of the screen. \param lpRect stays uncovered where the system can do it; null
    /// for none \return with TPM_RETURNCMD the command chosen, 0 for none
    BOOL TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect = nullptr);

    HMENU m_hMenu = nullptr;

private:
    BOOL Own(HMENU hMenu);
};
