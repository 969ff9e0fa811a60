/// \file
/// What the editor of translation tables tells the user.
#pragma once

#include <common/without_throwing.h>
#include <zogbl/message_box.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>
#include <zogbl/translate.h>

#include "dialogs/base/kept_file_box.h"

/// Shows a string of the user's language in a box over \p owner, with \p more behind it; without memory for it there is
/// a sound alone.
inline void TellUser(const CWnd& owner, UINT text, LPCSTR more = "")
{
    if (!WithoutThrowing([&]() -> BOOL {
            CString message;
            return ZoGblLoadString(text, message) &&
                   ZoMessageBox(owner.m_hWnd, message + more, AfxGetAppName(), MB_OK | MB_ICONEXCLAMATION);
        }))
        ::MessageBeep(MB_ICONEXCLAMATION);
}

/// How a set was saved.
struct TableSave {
    SaveResult result;
    DWORD status; ///< what Save says; ZO_TRANSLATE_NOT_OPENED if what the file holds could not be kept
};

/// Saves a set to the file \p path, while what that holds is kept.
inline TableSave SaveTable(CGblTranslate& table, const CString& path)
{
    DWORD status = ZO_TRANSLATE_NOT_OPENED;
    const SaveResult result = SaveKeeping(path, [&] { return (status = table.Save(path)) == ZO_TRANSLATE_SUCCESS; });
    return {result, status};
}

/// Tells that a set could not be saved, and what has become of its file.
inline void TellSaveFailed(const CWnd& owner, SaveResult result, const CString& path)
{
    CString state;
    WithoutThrowing([&] { state = "\n\n" + DescribeSave(result, path); });
    TellUser(owner, ZO_IDS_TRANSLATE_SAVE_FAILED, state);
}
