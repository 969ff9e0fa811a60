// The handlers of messages as a derived class calls them: each does what the window's class does with the message.
#include "thread_state.h"

BOOL CWnd::OnNcCreate(LPCREATESTRUCT) { return static_cast<BOOL>(Default()); }
int CWnd::OnCreate(LPCREATESTRUCT) { return static_cast<int>(Default()); }
void CWnd::OnClose() { Default(); }
BOOL CWnd::OnQueryEndSession() { return static_cast<BOOL>(Default()); }
void CWnd::OnEndSession(BOOL) { Default(); }
void CWnd::OnDestroy() { Default(); }
void CWnd::OnMove(int, int) { Default(); }
void CWnd::OnSize(UINT, int, int) { Default(); }
void CWnd::OnSizing(UINT, LPRECT) { Default(); }
void CWnd::OnGetMinMaxInfo(MINMAXINFO*) { Default(); }
void CWnd::OnWindowPosChanging(WINDOWPOS*) { Default(); }
void CWnd::OnWindowPosChanged(WINDOWPOS*) { Default(); }
void CWnd::OnShowWindow(BOOL, UINT) { Default(); }
void CWnd::OnEnable(BOOL) { Default(); }
void CWnd::OnStyleChanged(int, LPSTYLESTRUCT) { Default(); }
void CWnd::OnActivate(UINT, CWnd*, BOOL) { Default(); }
void CWnd::OnActivateApp(BOOL, DWORD) { Default(); }
BOOL CWnd::OnNcActivate(BOOL) { return static_cast<BOOL>(Default()); }
void CWnd::OnSetFocus(CWnd*) { Default(); }
void CWnd::OnKillFocus(CWnd*) { Default(); }
void CWnd::OnPaint() { Default(); }
BOOL CWnd::OnEraseBkgnd(CDC*) { return static_cast<BOOL>(Default()); }
void CWnd::OnNcPaint() { Default(); }
void CWnd::OnNcCalcSize(BOOL, NCCALCSIZE_PARAMS*) { Default(); }
LRESULT CWnd::OnNcHitTest(CPoint) { return Default(); }
UINT CWnd::OnGetDlgCode() { return static_cast<UINT>(Default()); }
void CWnd::OnKeyDown(UINT, UINT, UINT) { Default(); }
void CWnd::OnKeyUp(UINT, UINT, UINT) { Default(); }
void CWnd::OnChar(UINT, UINT, UINT) { Default(); }
void CWnd::OnSysKeyDown(UINT, UINT, UINT) { Default(); }
void CWnd::OnSysKeyUp(UINT, UINT, UINT) { Default(); }
void CWnd::OnSysChar(UINT, UINT, UINT) { Default(); }
void CWnd::OnMouseMove(UINT, CPoint) { Default(); }
void CWnd::OnLButtonDown(UINT, CPoint) { Default(); }
void CWnd::OnLButtonUp(UINT, CPoint) { Default(); }
void CWnd::OnLButtonDblClk(UINT, CPoint) { Default(); }
void CWnd::OnRButtonDown(UINT, CPoint) { Default(); }
void CWnd::OnRButtonUp(UINT, CPoint) { Default(); }
void CWnd::OnRButtonDblClk(UINT, CPoint) { Default(); }
void CWnd::OnMButtonDown(UINT, CPoint) { Default(); }
BOOL CWnd::OnMouseWheel(UINT, short, CPoint) { return static_cast<BOOL>(Default()); }
void CWnd::OnMouseLeave() { Default(); }
int CWnd::OnMouseActivate(CWnd*, UINT, UINT) { return static_cast<int>(Default()); }
BOOL CWnd::OnSetCursor(CWnd*, UINT, UINT) { return static_cast<BOOL>(Default()); }
void CWnd::OnCaptureChanged(CWnd*) { Default(); }
void CWnd::OnCancelMode() { Default(); }
void CWnd::OnTimer(UINT_PTR) { Default(); }
void CWnd::OnSysCommand(UINT, LPARAM) { Default(); }
void CWnd::OnInitMenu(CMenu*) { Default(); }
void CWnd::OnInitMenuPopup(CMenu*, UINT, BOOL) { Default(); }
void CWnd::OnMenuSelect(UINT, UINT, HMENU) { Default(); }
void CWnd::OnEnterIdle(UINT, CWnd*) { Default(); }
void CWnd::OnContextMenu(CWnd*, CPoint) { Default(); }
BOOL CWnd::OnHelpInfo(HELPINFO*) { return static_cast<BOOL>(Default()); }
void CWnd::OnFontChange() { Default(); }
void CWnd::OnTimeChange() { Default(); }
BOOL CWnd::OnQueryNewPalette() { return static_cast<BOOL>(Default()); }
void CWnd::OnPaletteChanged(CWnd*) { Default(); }

void CWnd::OnSysColorChange()
{
    if ((GetStyle() & WS_CHILD) == 0) // the system tells windows without parent alone
        SendMessageToDescendants(WM_SYSCOLORCHANGE);
    Default();
}

void CWnd::OnSettingChange(UINT uFlags, LPCSTR lpszSection)
{
    if ((GetStyle() & WS_CHILD) == 0)
        SendMessageToDescendants(WM_SETTINGCHANGE, uFlags, reinterpret_cast<LPARAM>(lpszSection));
    Default();
}

// Offered to the control first ----------------------------------------------------------------------------------------

void CWnd::OnDrawItem(int, LPDRAWITEMSTRUCT) { ReflectOrDefault(); }
void CWnd::OnMeasureItem(int, LPMEASUREITEMSTRUCT) { ReflectOrDefault(); }
int CWnd::OnCompareItem(int, LPCOMPAREITEMSTRUCT) { return static_cast<int>(ReflectOrDefault()); }
void CWnd::OnDeleteItem(int, LPDELETEITEMSTRUCT) { ReflectOrDefault(); }
HBRUSH CWnd::OnCtlColor(CDC*, CWnd*, UINT) { return reinterpret_cast<HBRUSH>(ReflectOrDefault()); }
int CWnd::OnVKeyToItem(UINT, CListBox*, UINT) { return static_cast<int>(ReflectOrDefault()); }
int CWnd::OnCharToItem(UINT, CListBox*, UINT) { return static_cast<int>(ReflectOrDefault()); }
void CWnd::OnParentNotify(UINT, LPARAM) { ReflectOrDefault(); }
void CWnd::OnHScroll(UINT, UINT, CScrollBar*) { ReflectOrDefault(); }
void CWnd::OnVScroll(UINT, UINT, CScrollBar*) { ReflectOrDefault(); }

LRESULT CWnd::ReflectOrDefault()
{
    const MSG message = GetThreadState()->lastMessage;
    LRESULT result = 0;
    return ReflectToControl(message.message, message.wParam, message.lParam, &result) ? result : Default();
}
