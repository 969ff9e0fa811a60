// What stands around a frame's pane: bars, title, the message line.
#include <afxext.h>

#include <common/double_byte.h>

#include <commctrl.h>

#include <algorithm>
#include <cstring>

void CWnd::RepositionBars(UINT nIDFirst, UINT nIDLast, UINT nIDLeftOver, UINT nFlag, LPRECT lpRectParam,
                          LPCRECT lpRectClient, BOOL bStretch)
{
    AFX_SIZEPARENTPARAMS layout = {nullptr, {}, {0, 0}, bStretch};
    if (lpRectClient != nullptr)
        layout.rect = *lpRectClient;
    else
        GetClientRect(&layout.rect);
    if (nFlag != reposQuery)
        layout.hDWP = ::BeginDeferWindowPos(8);
    HWND pane = nullptr;
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        const auto id = static_cast<UINT>(::GetDlgCtrlID(child)) & 0xFFFF;
        if (id == nIDLeftOver)
            pane = child;
        else if (id >= nIDFirst && id <= nIDLast && FromHandlePermanent(child) != nullptr)
            ::SendMessage(child, WM_SIZEPARENT, 0, reinterpret_cast<LPARAM>(&layout));
    }
    if (nFlag == reposQuery) {
        *lpRectParam = layout.rect;
        return;
    }
    if (pane != nullptr && nFlag == reposExtra) {
        layout.rect.left += lpRectParam->left;
        layout.rect.top += lpRectParam->top;
        layout.rect.right -= lpRectParam->right;
        layout.rect.bottom -= lpRectParam->bottom;
    }
    const RECT& rest = layout.rect;
    if (pane != nullptr && layout.hDWP != nullptr)
        layout.hDWP =
            ::DeferWindowPos(layout.hDWP, pane, nullptr, rest.left, rest.top, (std::max)(rest.right - rest.left, 0L),
                             (std::max)(rest.bottom - rest.top, 0L), SWP_NOACTIVATE | SWP_NOZORDER);
    if (layout.hDWP != nullptr)
        ::EndDeferWindowPos(layout.hDWP);
}

void CFrameWnd::RecalcLayout(BOOL)
{
    if (m_bInRecalcLayout) // a bar that is being moved
        return;
    m_bInRecalcLayout = TRUE;
    m_bLayoutDelayed = FALSE;
    RepositionBars(0, 0xFFFF, AFX_IDW_PANE_FIRST);
    m_bInRecalcLayout = FALSE;
}

// Bars ----------------------------------------------------------------------------------------------------------------

CControlBar* CFrameWnd::GetControlBar(UINT nID)
{
    return DYNAMIC_DOWNCAST(CControlBar, FromHandlePermanent(::GetDlgItem(m_hWnd, static_cast<int>(nID))));
}

void CFrameWnd::ShowControlBar(CControlBar* pBar, BOOL bShow, BOOL bDelay)
{
    const HWND focus = ::GetFocus();
    if (!bShow && (focus == pBar->m_hWnd || ::IsChild(pBar->m_hWnd, focus)))
        SetFocus(); // keys would go nowhere
    pBar->ShowWindow(bShow ? SW_SHOWNA : SW_HIDE);
    if (bDelay)
        m_bLayoutDelayed = TRUE;
    else
        RecalcLayout();
}

BOOL CFrameWnd::OnBarCheck(UINT nID)
{
    CControlBar* bar = GetControlBar(nID);
    if (bar != nullptr)
        ShowControlBar(bar, (bar->GetStyle() & WS_VISIBLE) == 0, FALSE);
    return bar != nullptr;
}

void CFrameWnd::OnUpdateControlBarMenu(CCmdUI* pCmdUI)
{
    const CControlBar* bar = GetControlBar(pCmdUI->m_nID);
    if (bar == nullptr) {
        pCmdUI->ContinueRouting();
        return;
    }
    pCmdUI->Enable(); // which it need not have been before there was the bar
    pCmdUI->SetCheck((bar->GetStyle() & WS_VISIBLE) != 0);
}

LRESULT CFrameWnd::OnIdleUpdateCmdUI(WPARAM, LPARAM)
{
    if (m_bLayoutDelayed)
        RecalcLayout();
    return 0;
}

// Texts ---------------------------------------------------------------------------------------------------------------

void CFrameWnd::OnUpdateFrameTitle(BOOL bAddToTitle)
{
    const DWORD style = GetStyle();
    if ((style & FWS_ADDTOTITLE) == 0)
        return;
    const CDocument* document = bAddToTitle ? GetActiveDocument() : nullptr;
    CString title = m_strTitle;
    if (document != nullptr && title.IsEmpty())
        title = document->GetTitle();
    else if (document != nullptr && (style & FWS_PREFIXTITLE) != 0)
        title = document->GetTitle() + " - " + m_strTitle;
    else if (document != nullptr)
        title += " - " + document->GetTitle();
    CString shown;
    GetWindowText(shown);
    if (shown != title) // else it would flicker
        SetWindowText(title);
}

CWnd* CFrameWnd::GetMessageBar() { return FromHandle(::GetDlgItem(m_hWnd, AFX_IDW_STATUS_BAR)); }

void CFrameWnd::SetMessageText(LPCSTR lpszText)
{
    SendMessage(WM_SETMESSAGESTRING, 0, reinterpret_cast<LPARAM>(lpszText));
}

void CFrameWnd::SetMessageText(UINT nID) { SendMessage(WM_SETMESSAGESTRING, nID); }

void CFrameWnd::GetMessageString(UINT nID, CString& rMessage) const
{
    CString all;
    all.LoadString(nID);
    AfxExtractSubString(rMessage, all, 0);
}

LRESULT CFrameWnd::OnSetMessageString(WPARAM wParam, LPARAM lParam)
{
    CWnd* bar = GetMessageBar();
    if (bar == nullptr)
        return 0;
    CString text(reinterpret_cast<LPCSTR>(lParam));
    if (lParam == 0 && wParam != 0)
        GetMessageString(static_cast<UINT>(wParam), text);
    bar->SetWindowText(text);
    return 0;
}

void CFrameWnd::OnMenuSelect(UINT nItemID, UINT nFlags, HMENU hSysMenu)
{
    CWnd::OnMenuSelect(nItemID, nFlags, hSysMenu);
    if (nFlags == 0xFFFF && hSysMenu == nullptr) // the menu is closed
        SetMessageText(AFX_IDS_IDLEMESSAGE);
    else if ((nFlags & (MF_POPUP | MF_SEPARATOR | MF_SYSMENU)) != 0 || nItemID == 0)
        SetMessageText("");
    else
        SetMessageText(nItemID);
}

BOOL CFrameWnd::OnToolTipText(UINT, NMHDR* pNMHDR, LRESULT*)
{
    auto* tip = reinterpret_cast<NMTTDISPINFOA*>(pNMHDR);
    if (pNMHDR->idFrom == 0 || (tip->uFlags & TTF_IDISHWND) != 0)
        return FALSE;
    CString all;
    CString text;
    if (!all.LoadString(static_cast<UINT>(pNMHDR->idFrom)) || !AfxExtractSubString(text, all, 1))
        return FALSE;
    LPCSTR end = text; // of what fits, in whole characters
    while (*end != '\0' && NextCharacter(end) < static_cast<LPCSTR>(text) + sizeof tip->szText)
        end = NextCharacter(end);
    const auto length = static_cast<size_t>(end - static_cast<LPCSTR>(text));
    std::memcpy(tip->szText, static_cast<LPCSTR>(text), length);
    tip->szText[length] = '\0';
    tip->lpszText = tip->szText;
    return TRUE;
}
