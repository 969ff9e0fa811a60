/// \file
/// A tools menu: the programs of a file, as commands of the application's main window.
#pragma once

#include <zogbl/tool_file.h>

#include <afxcoll.h>

/// Shows the tools in an application's menu and starts them. The menu has an item of the application's, the marker; the
/// tools stand below it:
///
///     m_tools.LoadFile(path);
///     m_tools.RefreshMenu(ID_TOOLS_EDIT);   // and again whenever the main window has got another menu
///
/// The application's OnCmdMsg passes on the commands and update requests that it does not know, unless \p info is not
/// null, which only asks for a handler:
///
///     return CFrameWnd::OnCmdMsg(id, code, extra, info) ||
///            (info == nullptr && m_tools.DoCommandMessage(
///                 id, code, code == CN_COMMAND ? nullptr : static_cast<CCmdUI*>(extra), this));
///
/// Nothing is thrown.
class ZOGBL_API CTlmMenu : public CObject {
    DECLARE_DYNAMIC(CTlmMenu)
public:
    CTlmMenu();
    ~CTlmMenu() override;

    /// Takes the items of a file that are to be shown in the menu; the items before are deleted.
    /// \return 0 or a code of CTlmFile::LoadFileData. ZO_TLM_NO_NAME if \p path is null, with the items as before, or
    /// empty.
    DWORD LoadFile(const char* path);
    /// Shows a separator and the items below the marker in the main window's menu; everything below the marker is
    /// removed first. The marker is searched in the submenus of the menu bar, from the last to the first.
    /// \return 0, ZO_TLM_NO_MENU or ZO_TLM_NO_MARKER
    DWORD RefreshMenu(UINT markerCommand);
    /// A command (CN_COMMAND) starts the program; an update request (CN_UPDATE_COMMAND_UI) enables \p cmdUI.
    /// \param parent owner of the item's question
    /// \return 1 if \p id belongs to an item and was handled, else 0. 1 also if the program could not be started: ask
    /// GetLastStatus.
    int DoCommandMessage(UINT id, int code, CCmdUI* cmdUI, CWnd* parent);
    /// The description of an item, for the status bar. \return 0, with \p text empty, if \p id belongs to no item; else
    /// 1
    int GetMessageString(UINT id, CString& text) const;

    /// Result of CTlmItem::ActivateItem for the last command; 0 before the first.
    DWORD GetLastStatus() const { return m_dwLastStatus; }

protected:
    void FreeAllMemory(); ///< deletes all items

private:
    CTlmItem* FindItem(UINT command) const;

    CObArray m_items; // of CTlmItem, owned
    DWORD m_dwLastStatus = 0;
};
