#include "recent_folders.h"

#include "places.h"
#include "resources/user_settings.h"

namespace {

constexpr LPCSTR kSection = "Files";
constexpr LPCSTR kName = "RecentFolders";
constexpr char kBetween = '*'; // in no path, and never the second byte of a character
static_assert(kMostRecentFolders * MAX_PATH <= kMostSetting);

bool Contains(const CStringArray& folders, const CString& folder)
{
    for (INT_PTR i = 0; i < folders.GetSize(); ++i) {
        if (folders[i].CompareNoCase(folder) == 0)
            return true;
    }
    return false;
}

/// \return whether it is a full path, as the dialogs write it
bool IsFolder(const CString& path)
{
    return !path.IsEmpty() && path.GetLength() < MAX_PATH && IsValidPath(path) && ResolvePath(path, path) == path;
}

} // namespace

void LoadRecentFolders(CStringArray& folders)
{
    folders.RemoveAll();
    CString text;
    ReadSetting(kSection, kName, text);
    while (!text.IsEmpty() && folders.GetSize() < kMostRecentFolders) {
        const int end = text.Find(kBetween);
        const CString folder = end < 0 ? text : text.Left(end);
        text = end < 0 ? CString() : text.Mid(end + 1);
        if (IsFolder(folder) && !Contains(folders, folder))
            folders.Add(folder);
    }
}

void KeepRecentFolder(LPCSTR folder)
{
    CStringArray before;
    LoadRecentFolders(before);
    CString text = folder;
    for (INT_PTR i = 0, count = 1; i < before.GetSize() && count < kMostRecentFolders; ++i) {
        if (before[i].CompareNoCase(folder) == 0)
            continue;
        text += kBetween + before[i];
        ++count;
    }
    KeepSetting(kSection, kName, text); // without it the list is as before
}
