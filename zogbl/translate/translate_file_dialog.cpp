#include <zogbl/translate_editor.h>

#include <zogbl/operating_system.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/filter.h"
#include "dialogs/base/kept_file_box.h"
#include "dialogs/base/tell_user.h"

CIOTFileDialog::CIOTFileDialog(BOOL open, LPCSTR path, CWnd* parent)
    : CZoFileOpen(open, ZO_IDD_TRANSLATE_FILE, nullptr, path,
                  OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | (open ? OFN_FILEMUSTEXIST : OFN_NOREADONLYRETURN), nullptr,
                  parent)
{
    const bool isShort = CZoGlobalOperatingSystem::GetType() == ZO_OS_WIN32S;
    m_csExtension = LoadText(isShort ? ZO_IDS_TRANSLATE_SHORT_EXTENSION : ZO_IDS_TRANSLATE_EXTENSION);
    m_csFilter = LoadFilter(isShort ? ZO_IDS_TRANSLATE_SHORT_FILTER : ZO_IDS_TRANSLATE_FILTER);
    m_csTitle = LoadText(open ? ZO_IDS_TRANSLATE_OPEN_TITLE : ZO_IDS_TRANSLATE_SAVE_TITLE);
    m_ofn.lpstrDefExt = m_csExtension;
    m_ofn.lpstrFilter = m_csFilter;
    m_ofn.lpstrTitle = m_csTitle;
}

CIOTFileDialog::~CIOTFileDialog() = default;

BOOL CIOTFileDialog::OnFileNameOK()
{
    const CString path = GetPathName();
    if (!IsOpenDialog() || CGblTranslate::IsValidFile(path) == ZO_TRANSLATE_SUCCESS ||
        (OfferKeptFile(this, path, m_csTitle) && CGblTranslate::IsValidFile(path) == ZO_TRANSLATE_SUCCESS))
        return FALSE;
    TellUser(this, 0, ZO_IDS_TRANSLATE_BAD_FILE);
    return TRUE;
}
