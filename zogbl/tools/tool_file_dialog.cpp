#include <zogbl/tool_file_dialog.h>

#include <common/without_throwing.h>
#include <zogbl/operating_system.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/filter.h"
#include "dialogs/base/kept_file_box.h"
#include "dialogs/base/tell_user.h"

#include "ground/bounded_text.h"

CTLMFileDialog::CTLMFileDialog(BOOL open, LPCSTR path, CWnd* parent, UINT templateId)
    : CZoFileOpen(open, templateId, nullptr, path,
                  OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | (open ? OFN_FILEMUSTEXIST : OFN_NOREADONLYRETURN), nullptr,
                  parent)
{
    const bool isWin32s = CZoGlobalOperatingSystem::GetType() == ZO_OS_WIN32S; // names of eight and three characters
    m_csTitle = LoadText(open ? ZO_IDS_TOOL_OPEN_TITLE : ZO_IDS_TOOL_SAVE_TITLE);
    m_csExtension = LoadText(isWin32s ? ZO_IDS_TOOL_EXTENSION_WIN32S : ZO_IDS_TOOL_EXTENSION);
    m_csFilter = LoadFilter(isWin32s ? ZO_IDS_TOOL_FILTER_WIN32S : ZO_IDS_TOOL_FILTER);
    m_ofn.lpstrTitle = m_csTitle;
    m_ofn.lpstrDefExt = m_csExtension;
    m_ofn.lpstrFilter = m_csFilter;
}

CTLMFileDialog::~CTLMFileDialog() = default;

BOOL CTLMFileDialog::OnFileNameOK()
{
    const CString path = GetPathName();
    if (!IsOpenDialog() || CTlmFile::IsValidFile(path) == 0 ||
        (OfferKeptFile(this, path, m_csTitle) && CTlmFile::IsValidFile(path) == 0))
        return FALSE;
    TellUser(this, ZO_IDS_TOOL_OPEN_TITLE, ZO_IDS_TOOL_NO_TOOLS_FILE);
    return TRUE;
}

int ZoTlmSelectFile(char* path, int open, CWnd* parent, UINT templateId)
{
    if (path == nullptr)
        return IDCANCEL;
    return ResultOr<CMemoryException>(IDCANCEL, [=]() -> int {
        CTLMFileDialog dialog(open, path, parent, templateId);
        if (dialog.DoModal() != IDOK)
            return IDCANCEL;
        CopyBounded(path, MAX_PATH, dialog.GetPathName());
        return IDOK;
    });
}
