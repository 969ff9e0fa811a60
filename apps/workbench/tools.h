/// \file
/// The Workbench's own tools menu.
#pragma once

#include <zogbl/tool_menu.h>

class Tools {
public:
    explicit Tools(CWnd* owner) : m_owner(owner) {}
    Tools(const Tools&) = delete;
    Tools& operator=(const Tools&) = delete;

    /// Takes another file, at first the one beside the program, and shows its tools.
    void SetFile(const CString& path);
    /// Shows the tools in the main window's menu, which may be another one than before.
    void Refresh();
    /// Lets the user choose another file.
    void Choose();
    /// Lets the user edit the file.
    void Edit();
    /// As CFrameWnd::OnCmdMsg; tells the user of a program that could not be started.
    BOOL OnCmdMsg(UINT id, int code, void* extra, const void* info);
    /// What the status line says of a command; empty when it is no tool's.
    CString GetMessage(UINT id) const;

private:
    CWnd* m_owner;
    CString m_path;
    CTlmMenu m_menu;
};
