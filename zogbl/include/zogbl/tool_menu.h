/// \file
/// A tools menu: the programs of a file as commands of the application's main window.
#pragma once

#include <zogbl/tool_file.h>

#include <afxcoll.h>

/// The tools in an application's menu. The application has a menu item of its own, the marker, below which they appear:
///
///     m_tools.LoadFile(path);
///     m_tools.RefreshMenu(ID_TOOLS_EDIT);   // and again whenever the main window has got another menu
///
/// and hands over the commands and update requests that it does not know itself, in its OnCmdMsg, unless that is only asked
/// whether there is a handler (\p info is not null then):
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

    /// Takes the items of a file that are to be shown in the menu, in place of those of the one before. \return 0 or a
    /// code of CTlmFile::LoadFileData; ZO_TLM_NO_NAME for null, the items as before, or an empty path
    DWORD LoadFile(const char* path);
    /// Shows the items below the marker in the main window's menu, behind a separator, in place of all that was below it
    /// before. The marker is looked for in the submenus of the menu bar, the last one first.
    /// \return 0, ZO_TLM_NO_MENU or ZO_TLM_NO_MARKER
    DWORD RefreshMenu(UINT markerCommand);
    /// Answers a command (CN_COMMAND), which starts the program, and an update request (CN_UPDATE_COMMAND_UI), which
    /// enables \p cmdUI. \param parent owner of what the item may ask. \return whether \p id is an item's and there was
    /// something to answer; a program that could not be started has been answered too: ask GetLastStatus
    int DoCommandMessage(UINT id, int code, CCmdUI* cmdUI, CWnd* parent);
    /// The description of an item, for the status bar. \return 0, with \p text empty, when \p id is no item's
    int GetMessageString(UINT id, CString& text) const;

    /// What CTlmItem::ActivateItem answered to the last command; 0 before the first.
    DWORD GetLastStatus() const { return m_dwLastStatus; }

protected:
    void FreeAllMemory(); ///< deletes all items

private:
    CTlmItem* FindItem(UINT command) const;

    CObArray m_items; // of CTlmItem, owned
    DWORD m_dwLastStatus = 0;
};
