#include <zomfx/frame_window.h>

#include "help_file.h"

IMPLEMENT_DYNCREATE(CZoFrameWnd, CFrameWnd)
IMPLEMENT_DYNCREATE(CZoMDIFrameWnd, CMDIFrameWnd)

CString CZoFrameWnd::GetHelpFile() const { return ZoGetHelpFile(); }
BOOL CZoFrameWnd::SetHelpFile(LPCSTR module, DWORD languageId) { return ZoSetHelpFile(module, languageId); }
void CZoFrameWnd::RestoreHelpFile(const CString& name) { ZoRestoreHelpFile(name); }

CString CZoMDIFrameWnd::GetHelpFile() const { return ZoGetHelpFile(); }
BOOL CZoMDIFrameWnd::SetHelpFile(LPCSTR module, DWORD languageId) { return ZoSetHelpFile(module, languageId); }
void CZoMDIFrameWnd::RestoreHelpFile(const CString& name) { ZoRestoreHelpFile(name); }
