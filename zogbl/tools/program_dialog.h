/// \file
/// The choice of a program for a tool.
#pragma once

#include <zogbl/file_open.h>
#include <zogbl/resource_ids.h>
#include <zogbl/tool_item.h>

#include "dialogs/base/dialog_resource.h"
#include "dialogs/base/filter.h"

/// Lets the user choose a program. \param path what to begin with, or empty; receives the full path
/// \return FALSE if the user gives up. Throws CMemoryException*.
inline BOOL AskForProgram(CWnd* parent, UINT titleId, char (&path)[ZO_TLM_PATH_SIZE])
{
    const CString title = LoadText(titleId);
    const CString filter = LoadFilter(ZO_IDS_TOOL_PROGRAM_FILTER);
    CZoFileOpen dialog(TRUE, 0, nullptr, nullptr, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST, filter, parent);
    dialog.m_ofn.lpstrTitle = title;
    dialog.m_ofn.lpstrFile = path;
    dialog.m_ofn.nMaxFile = sizeof path;
    return dialog.DoModal() == IDOK;
}
