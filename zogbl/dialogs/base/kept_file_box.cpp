#include "kept_file_box.h"

#include <zogbl/message_box.h>
#include <zogbl/resource_ids.h>

#include "dialog_resource.h"

CString DescribeSave(SaveResult result, LPCSTR path)
{
    if (result == SaveResult::kCopyLeft)
        return LoadText(ZO_IDS_KEPT_COPY_LEFT, KeptFile(path).GetCopyPath());
    return LoadText(result == SaveResult::kLost ? ZO_IDS_KEPT_LOST : ZO_IDS_KEPT_UNCHANGED);
}

BOOL OfferKeptFile(const CWnd* owner, LPCSTR path, LPCSTR title)
{
    KeptFile kept(path);
    if (!kept.Find())
        return FALSE;
    const HWND window = owner != nullptr ? owner->m_hWnd : nullptr;
    if (ZoMessageBox(window, LoadText(ZO_IDS_KEPT_OFFER, path), title, MB_YESNO | MB_ICONEXCLAMATION) != IDYES)
        return FALSE;
    if (kept.PutBack() == SaveResult::kUnchanged)
        return TRUE;
    ZoMessageBox(window, LoadText(ZO_IDS_KEPT_NOT_PUT_BACK, kept.GetCopyPath()), title, MB_OK | MB_ICONEXCLAMATION);
    return FALSE;
}
