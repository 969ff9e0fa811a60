#include <zogbl/workspace.h>

#include <common/without_throwing.h>

#include "dialogs/files/places.h"
#include "ground/bounded_text.h"
#include "ground/number_record.h"
#include "resources/user_settings.h"

namespace {

constexpr LPCSTR kSection = "Workspace";
constexpr LPCSTR kSettings = "Settings";
constexpr LPCSTR kFolder = "Folder";
constexpr LPCSTR kMark = "ZoWorkspace"; // how many numbers, and these; what a later version adds stands behind them
constexpr int kNumbers = 5;
constexpr int kMostNumbers = 100;

/// \return false if the record is damaged; all numbers are as before
bool ReadNumbers(const CString& text, ZoWorkspace& workspace)
{
    ZoWorkspace read = workspace;
    const struct {
        int& number;
        int most;
    } rows[kNumbers] = {{read.restoreWindows, 1},
                        {read.confirmLeaving, 1},
                        {read.toolBar, 1},
                        {read.statusBar, 1},
                        {read.recentFiles, ZoWorkspace::MOST_RECENT}};
    NumberRecordReader record(text, kMark);
    const int count = record.Next(kMostNumbers);
    for (int i = 0; i < count; ++i) {
        const int number = record.Next(i < kNumbers ? rows[i].most : INT_MAX);
        if (i < kNumbers)
            rows[i].number = number;
    }
    if (count < 1 || !record.IsWhole())
        return false;
    workspace = read;
    return true;
}

} // namespace

BOOL ZoLoadWorkspace(ZoWorkspace& workspace)
{
    workspace = ZoWorkspace();
    return WithoutThrowing([&]() -> BOOL {
        CString text, folder;
        const bool isWhole = ReadSetting(kSection, kSettings, text) && ReadNumbers(text, workspace);
        if (ReadSetting(kSection, kFolder, folder) && folder.GetLength() < MAX_PATH && IsValidPath(folder))
            CopyBounded(workspace.folder, sizeof workspace.folder, folder);
        return isWhole;
    });
}

DWORD ZoSaveWorkspace(const ZoWorkspace& workspace)
{
    if (workspace.recentFiles < 0 || workspace.recentFiles > ZoWorkspace::MOST_RECENT)
        return ERROR_INVALID_PARAMETER;
    return ResultOr(DWORD{ERROR_NOT_ENOUGH_MEMORY}, [&]() -> DWORD {
        NumberRecordWriter record(kMark);
        record.Add(kNumbers);
        for (const int number :
             {workspace.restoreWindows, workspace.confirmLeaving, workspace.toolBar, workspace.statusBar})
            record.Add(number != FALSE);
        record.Add(workspace.recentFiles);
        const DWORD status = KeepSetting(kSection, kFolder, workspace.folder);
        return status != ERROR_SUCCESS ? status : KeepSetting(kSection, kSettings, record.Finish());
    });
}
