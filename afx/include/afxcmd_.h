/// \file
/// Application framework: command targets and command updates. Included by afxwin.h.
#pragma once

#include <afxmsg_.h>

class CMenu;

/// What a command-update handler changes: a menu item, or in a bar or dialog the control of a command. A bar derives
/// from it for its own kind of items.
class AFX_API CCmdUI {
public:
    virtual ~CCmdUI() = default;
    /// A control that has the focus and is disabled gives the focus to the next one. No effect on a popup menu's item.
    virtual void Enable(BOOL bOn = TRUE);
    virtual void SetCheck(int nCheck = 1);  ///< 0 off, 1 on, 2 undetermined (on, in a menu)
    virtual void SetRadio(BOOL bOn = TRUE); ///< as SetCheck, a menu's mark being a dot
    virtual void SetText(LPCSTR lpszText);
    /// For a handler: lets the search for one go on, as if this had not been one.
    void ContinueRouting() { m_bContinueRouting = TRUE; }

    /// Asks \p pTarget for the state of the item, by CN_UPDATE_COMMAND_UI. \param bDisableIfNoHndler without a handler
    /// for that, the item is enabled if there is one for the command, else disabled
    /// \return whether a handler has dealt with it; TRUE for what stands for no command
    BOOL DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);

    UINT m_nID = 0;
    UINT m_nIndex = 0;           ///< position of the item, from 0
    CMenu* m_pMenu = nullptr;    ///< null for a control
    CMenu* m_pSubMenu = nullptr; ///< the item is a popup menu; m_nID is then its first command
    CWnd* m_pOther = nullptr;    ///< the control or bar; null for a menu item
    UINT m_nIndexMax = 0;        ///< number of items
    CMenu* m_pParentMenu = nullptr;
    BOOL m_bContinueRouting = FALSE;
};

/// Anything that has a message map.
class AFX_API CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)
public:
    /// Looks for a handler of a command and calls it. \param nCode CN_COMMAND, CN_UPDATE_COMMAND_UI, or a control's
    /// notification code, with WM_NOTIFY in the high word if it came by that message. \param pExtra as in AFX_CALL.
    /// \return whether there was a handler.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo);

protected:
    static const AFX_MSGMAP* AFXAPI GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
    /// Calls the handler of the first entry for the message in this class's map or a base class's; one that lets the
    /// search go on is followed by the next.
    BOOL DispatchMessageMap(UINT nMessage, UINT nCode, UINT nID, AFX_CALL& call);
};

/// Shows the hourglass for the life of the object.
class CWaitCursor {
public:
    CWaitCursor() : m_hOld(::SetCursor(::LoadCursor(nullptr, IDC_WAIT))) {}
    ~CWaitCursor() { ::SetCursor(m_hOld); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    void Restore() { ::SetCursor(::LoadCursor(nullptr, IDC_WAIT)); } ///< after a message box, say

private:
    HCURSOR m_hOld;
};
