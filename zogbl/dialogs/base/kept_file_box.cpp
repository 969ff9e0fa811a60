#include "kept_file_box.h"

#include <zogbl/message_box.h>
#include <zogbl/resource_ids.h>

#include "dialog_resource.h"

CString DescribeSave(SaveResult result, LPCSTR path)
{
    if (result == SaveResult::kCopyLeft) {
        CString text;
        text.Format(LoadText(ZO_IDS_KEPT_COPY_LEFT), (LPCSTR)KeptFile(path).GetCopyPath());
        return text;
    }
    return LoadText(result == SaveResult::kLost ? ZO_IDS_KEPT_LOST : ZO_IDS_KEPT_UNCHANGED);
}

BOOL OfferKeptFile(const CWnd* owner, LPCSTR path, LPCSTR title)
{
    KeptFile kept(path);
    if (!kept.Find())
        return FALSE;
    const HWND window = owner != nullptr ? owner->m_hWnd : nullptr;
    CString text;
    text.Format(LoadText(ZO_IDS_KEPT_OFFER), path);
    if (ZoMessageBox(window, text, title, MB_YESNO | MB_ICONEXCLAMATION) != IDYES)
        return FALSE;
    if (kept.PutBack() == SaveResult::kUnchanged)
        return TRUE;
    text.Format(LoadText(ZO_IDS_KEPT_NOT_PUT_BACK), (LPCSTR)kept.GetCopyPath());
    ZoMessageBox(window, text, title, MB_OK | MB_ICONEXCLAMATION);
    return FALSE;
}
