#include "tools.h"

#include "page.h"
#include "workbench_ids.h"

#include <zogbl/tool_file_dialog.h>
#include <zogbl/tool_sheet.h>

namespace {

/// Beside the program, by its name.
CString UsualFile()
{
    char path[MAX_PATH] = {};
    ::GetModuleFileName(nullptr, path, sizeof path - 1);
    const CString program(path);
    return program.Left(program.ReverseFind('.')) + ".tlm";
}

} // namespace

void Tools::SetFile(const CString& path)
{
    m_path = path;
    m_menu.LoadFile(m_path); // none is there before the first tool has been added
    m_menu.RefreshMenu(ZO_ID_TOOLS_EDIT);
}

void Tools::Refresh()
{
    if (m_path.IsEmpty())
        SetFile(UsualFile());
    else
        m_menu.RefreshMenu(ZO_ID_TOOLS_EDIT);
}

void Tools::Choose()
{
    char path[MAX_PATH];
    lstrcpyn(path, m_path, sizeof path);
    if (ZoTlmSelectFile(path, TRUE, m_owner, 0) == IDOK)
        SetFile(path);
}

void Tools::Edit()
{
    EditToolItemFile(m_path, m_owner);
    SetFile(m_path);
}

BOOL Tools::OnCmdMsg(UINT id, int code, void* extra, const void* info)
{
    const bool isUpdate = code == static_cast<int>(CN_UPDATE_COMMAND_UI);
    if ((code != CN_COMMAND && !isUpdate) || info != nullptr) // or the question whether somebody would answer
        return FALSE;
    if (!m_menu.DoCommandMessage(id, code, isUpdate ? static_cast<CCmdUI*>(extra) : nullptr, m_owner))
        return FALSE;
    const DWORD status = isUpdate ? 0 : m_menu.GetLastStatus();
    if (status != 0 && status != ZO_TLM_CANCELLED)
        AfxMessageBox(Text(ZO_IDS_TOOLS_NOT_STARTED), MB_ICONEXCLAMATION);
    return TRUE;
}

CString Tools::GetMessage(UINT id) const
{
    CString text;
    m_menu.GetMessageString(id, text);
    return text;
}
