/// \file
/// Application framework: the tool tip control. Included by afxcmn.h. Tips of a window's own: CWnd::EnableToolTips.
#pragma once

#include <afxsnd_.h>

#include <commctrl.h>

/// Shows a text at a tool while the mouse rests over it. A tool is a window, or with \p lpRectTool and \p nIDTool an
/// area of one; both are given or neither. With the text LPSTR_TEXTCALLBACK the window of an area, or the parent of a
/// window, is asked for the text by TTN_NEEDTEXT.
class AFX_API CToolTipCtrl : public CWnd {
    DECLARE_DYNAMIC(CToolTipCtrl)
public:
    /// \param dwStyle of TTS_ styles
    virtual BOOL Create(CWnd* pParentWnd, DWORD dwStyle = 0);

    BOOL AddTool(CWnd* pWnd, LPCSTR lpszText = LPSTR_TEXTCALLBACKA, LPCRECT lpRectTool = nullptr, UINT_PTR nIDTool = 0);
    /// \param nIDText of a string found through the resource chain
    BOOL AddTool(CWnd* pWnd, UINT nIDText, LPCRECT lpRectTool = nullptr, UINT_PTR nIDTool = 0);
    void DelTool(CWnd* pWnd, UINT_PTR nIDTool = 0);
    void UpdateTipText(LPCSTR lpszText, CWnd* pWnd, UINT_PTR nIDTool = 0);
    void UpdateTipText(UINT nIDText, CWnd* pWnd, UINT_PTR nIDTool = 0);
    void SetToolRect(CWnd* pWnd, UINT_PTR nIDTool, LPCRECT lpRect);
    /// At most 79 characters. Empty if there is no such tool.
    void GetText(CString& str, CWnd* pWnd, UINT_PTR nIDTool = 0) const;
    int GetToolCount() const { return AfxSend<int>(this, TTM_GETTOOLCOUNT); }

    void Activate(BOOL bActivate) { AfxSend(this, TTM_ACTIVATE, bActivate); }
    /// A mouse message of a window that has tools, before it is dispatched.
    void RelayEvent(LPMSG lpMsg) { AfxSend(this, TTM_RELAYEVENT, 0, lpMsg); }
    void SetDelayTime(UINT nDelay) { SetDelayTime(TTDT_AUTOMATIC, static_cast<int>(nDelay)); }
    /// \param dwDuration one of TTDT_... \param iTime in milliseconds
    void SetDelayTime(DWORD dwDuration, int iTime)
    {
        AfxSend(this, TTM_SETDELAYTIME, dwDuration, MAKELPARAM(iTime, 0));
    }
    // 4.70
    int GetDelayTime(DWORD dwDuration) const { return AfxSend<int>(this, TTM_GETDELAYTIME, dwDuration); }
    void Pop() { AfxSend(this, TTM_POP); }
    /// \param iWidth of a line, in pixels; -1: one line only. \return the one before
    int SetMaxTipWidth(int iWidth) { return AfxSend<int>(this, TTM_SETMAXTIPWIDTH, 0, iWidth); }
    int GetMaxTipWidth() const { return AfxSend<int>(this, TTM_GETMAXTIPWIDTH); }
};
