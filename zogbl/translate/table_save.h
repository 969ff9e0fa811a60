/// \file
/// Saving a set of tables from its editor.
#pragma once

#include <zogbl/resource_ids.h>
#include <zogbl/translate.h>

#include "dialogs/base/kept_file_box.h"
#include "dialogs/base/tell_user.h"

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
    TellUser(&owner, 0, [&] { return LoadText(ZO_IDS_TRANSLATE_SAVE_FAILED) + "\n\n" + DescribeSave(result, path); });
}
