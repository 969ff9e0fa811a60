/// \file
/// The way of commands that a dialog does not answer.
#pragma once

#include <afxwin.h>

/// Offers a command to the window that owns \p dialog, then to the application. Numbers of controls and what they
/// notify of concern the dialog alone.
inline BOOL RouteToOwner(const CWnd& dialog, UINT id, int code, void* extra, void* handlerInfo)
{
    constexpr UINT kFirstCommand = 0x8000;
    constexpr UINT kFirstSystemCommand = 0xF000;
    if ((code != CN_COMMAND && code != static_cast<int>(CN_UPDATE_COMMAND_UI)) || id < kFirstCommand ||
        id >= kFirstSystemCommand)
        return FALSE;
    CWnd* owner = CWnd::FromHandlePermanent(::GetParent(dialog.m_hWnd));
    CWinApp* app = AfxGetApp();
    return (owner != nullptr && owner->OnCmdMsg(id, code, extra, handlerInfo)) ||
           (app != nullptr && app->OnCmdMsg(id, code, extra, handlerInfo));
}
