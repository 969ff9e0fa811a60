#include <zogbl/directory_functions.h>

#include <common/double_byte.h>
#include <zogbl/file_functions.h>
#include <zogbl/file_name_functions.h>
#include <zogbl/global_error.h>

#include "folder_walk.h"
#include "ground/bounded_text.h"
#include "ground/open_security.h"
#include "ground/system_handle.h"

#include <cstring>

namespace {

DWORD CreateFolder(const char* dir)
{
    OpenSecurity security;
    if (!security.Initialize())
        return CZoGlobalError::GetError();
    return CreateDirectoryA(dir, security.Attributes()) ? ERROR_SUCCESS : ZoErrFolderNotCreated;
}

/// The folder above; empty for a path that names none.
CString FolderAbove(const char* dir)
{
    CString above;
    if (FindCharacter(dir, '\\') != nullptr)
        CZoGlobalFileNameFunctions::ExtractPathFromPath(dir, above);
    if (above == dir) // the root of a drive
        above.Empty();
    return above;
}

/// Walks through \p dir: calls \p walk(path) with its path.
template <class WALK> DWORD Walk(const char* dir, WALK walk)
{
    if (dir == nullptr)
        return ERROR_INVALID_PARAMETER;
    WalkPath path;
    return path.Append(dir) ? walk(path) : ERROR_FILENAME_EXCED_RANGE;
}

bool IsSameOrAbove(const WIN32_FIND_DATAA& entry)
{
    return std::strcmp(entry.cFileName, ".") == 0 || std::strcmp(entry.cFileName, "..") == 0;
}

/// A folder that leads elsewhere: a junction, a symbolic link, a mounted volume.
bool IsLink(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0; }

/// Removes a link, and never what it leads to. A system that opens that folder in the link's place (Wine does) would
/// remove it too, if it is empty: there the link stays.
void RemoveLink(const char* path)
{
    BY_HANDLE_FILE_INFORMATION opened = {};
    SystemHandle link(CreateFileA(path, 0, kSharedByAll | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    const bool isLinkItself =
        link.IsOpen() && GetFileInformationByHandle(link, &opened) && IsLink(opened.dwFileAttributes);
    link.Close();
    if (isLinkItself)
        RemoveDirectoryA(path);
}

/// \param attributes of the folder. Those that cannot be read have every bit set, and so count as a link's.
void DeleteTree(WalkPath& path, DWORD attributes)
{
    if (IsLink(attributes))
        return RemoveLink(path);
    ForEachEntry(path, [&](const WIN32_FIND_DATAA& entry) -> DWORD {
        if (!IsFolder(entry))
            DeleteFileA(path);
        return ERROR_SUCCESS;
    });
    ForEachEntry(path, [&](const WIN32_FIND_DATAA& entry) -> DWORD {
        if (IsFolder(entry) && !IsSameOrAbove(entry))
            DeleteTree(path, entry.dwFileAttributes);
        return ERROR_SUCCESS;
    });
    RemoveDirectoryA(path);
}

/// The length of a path without the separators at its end, behind which a link would not be seen. Roots keep theirs.
size_t LengthWithoutSeparators(const char* path)
{
    size_t length = 0;
    size_t at = 0;
    for (size_t width; path[at] != '\0'; at += width) {
        width = CharacterWidth(path + at);
        if (path[at] != '\\' && path[at] != '/')
            length = at + width;
    }
    return length > 0 && path[length - 1] != ':' ? length : at;
}

// The walks below go into "." too, the folder that they are in. So they end when the path is too long to be searched.
// This is prescribed. Only DeleteTree passes "." over.

DWORD TotalSpace(WalkPath& path, unsigned long& bytes)
{
    bytes = 0;
    return ForEachEntry(path, [&](const WIN32_FIND_DATAA& entry) {
        unsigned long size = 0;
        const DWORD status = IsFolder(entry) ? TotalSpace(path, size) : CZoGlobalFileFunctions::GetSize(path, size);
        bytes += size;
        return status;
    });
}

DWORD TotalFileCount(WalkPath& path, unsigned long& count)
{
    count = 0;
    unsigned long countBelow = 0; // of the last folder, added once more for each file behind it: that is how it counts
    return ForEachEntry(path, [&](const WIN32_FIND_DATAA& entry) -> DWORD {
        DWORD status = ERROR_SUCCESS;
        if (IsFolder(entry))
            status = TotalFileCount(path, countBelow);
        else
            ++count;
        count += countBelow;
        return status;
    });
}

DWORD EnumerateTree(WalkPath& path, void* context, ZoEnumFilesProc callback)
{
    return ForEachEntry(path, [&](const WIN32_FIND_DATAA& entry) -> DWORD {
        if (IsFolder(entry))
            return EnumerateTree(path, context, callback);
        callback(context, path);
        return ERROR_SUCCESS;
    });
}

} // namespace

unsigned long CZoGlobalDirectoryFunctions::Exists(const char* dir, unsigned long& exists)
{
    exists = 0;
    const DWORD attributes = GetFileAttributesA(dir);
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return CZoGlobalError::GetError();
    exists = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return ERROR_SUCCESS;
}

unsigned long CZoGlobalDirectoryFunctions::Create(const char* dir)
{
    unsigned long exists;
    const unsigned long found = Exists(dir, exists);
    if (exists)
        return ERROR_SUCCESS;
    const unsigned long created = CreateFolder(dir);
    // Success is told by the code for "not found": callers know it, and ask Exists.
    return created == ERROR_SUCCESS ? found : created;
}

unsigned long CZoGlobalDirectoryFunctions::CreateDirChain(const char* dir, unsigned long& exists)
{
    Exists(dir, exists);
    if (exists)
        return ERROR_SUCCESS;
    // Each level takes a few bytes of the path, so that the depth is bounded too.
    if (dir == nullptr || std::strlen(dir) >= MAX_PATH)
        return ZoErrFolderNotCreated;
    const CString above = FolderAbove(dir);
    if (!above.IsEmpty()) {
        unsigned long status = Exists(above, exists);
        if (!exists)
            status = CreateDirChain(above, exists);
        if (status != ERROR_SUCCESS)
            return status;
    }
    return CreateFolder(dir);
}

unsigned long CZoGlobalDirectoryFunctions::Delete(const char* dir)
{
    return RemoveDirectoryA(dir) ? ERROR_SUCCESS : ZoErrFolderNotRemoved;
}

void CZoGlobalDirectoryFunctions::DeleteDirChain(const char* dir)
{
    if (dir == nullptr || *dir == '\0') // an empty path would be the root of the current drive
        return;
    Walk(dir, [](WalkPath& path) -> DWORD {
        path.Cut(LengthWithoutSeparators(path));
        DeleteTree(path, GetFileAttributesA(path));
        return ERROR_SUCCESS; // whatever came of it
    });
}

unsigned long CZoGlobalDirectoryFunctions::Rename(const char* from, const char* to)
{
    if (to == nullptr || *to == '\0')
        return ZoErrFolderNameEmpty;
    return MoveFileA(from, to) ? ERROR_SUCCESS : ZoErrFolderNotMoved;
}

unsigned long CZoGlobalDirectoryFunctions::GetSpace(const char* dir, unsigned long& bytes)
{
    bytes = 0;
    bool searched = false;
    const DWORD result = Walk(dir, [&](WalkPath& path) {
        return ForEachEntry(path, [&](const WIN32_FIND_DATAA& entry) -> DWORD {
            searched = true;
            if (IsFolder(entry))
                return ERROR_SUCCESS;
            unsigned long size;
            const DWORD status = CZoGlobalFileFunctions::GetSize(path, size);
            bytes += size;
            return status;
        });
    });
    return searched ? result : ERROR_SUCCESS;
}

unsigned long CZoGlobalDirectoryFunctions::GetTotalSpace(const char* dir, unsigned long& bytes)
{
    bytes = 0;
    return Walk(dir, [&](WalkPath& path) { return TotalSpace(path, bytes); });
}

unsigned long CZoGlobalDirectoryFunctions::GetFileCount(const char* dir, unsigned long& count)
{
    count = 0;
    return Walk(dir, [&](WalkPath& path) {
        return ForEachEntry(path, [&](const WIN32_FIND_DATAA& entry) -> DWORD {
            count += !IsFolder(entry);
            return ERROR_SUCCESS;
        });
    });
}

unsigned long CZoGlobalDirectoryFunctions::GetTotalFileCount(const char* dir, unsigned long& count)
{
    count = 0;
    return Walk(dir, [&](WalkPath& path) { return TotalFileCount(path, count); });
}

unsigned long CZoGlobalDirectoryFunctions::EnumerateFiles(void* context, const char* dir, ZoEnumFilesProc callback)
{
    if (callback == nullptr)
        return ERROR_INVALID_PARAMETER;
    return Walk(dir, [&](WalkPath& path) {
        return ForEachEntry(path, [&](const WIN32_FIND_DATAA& entry) -> DWORD {
            if (!IsFolder(entry))
                callback(context, path);
            return ERROR_SUCCESS;
        });
    });
}

unsigned long CZoGlobalDirectoryFunctions::EnumerateAllFiles(void* context, const char* dir, ZoEnumFilesProc callback)
{
    if (callback == nullptr)
        return ERROR_INVALID_PARAMETER;
    return Walk(dir, [&](WalkPath& path) { return EnumerateTree(path, context, callback); });
}

unsigned long CZoGlobalDirectoryFunctions::IsDirShared(const char*, int& shared)
{
    shared = 0;
    return ERROR_SUCCESS;
}
