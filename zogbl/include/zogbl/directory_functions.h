/// \file
/// Operations on folders.
#pragma once

#include <zogbl/export.h>

/// Codes of CZoGlobalDirectoryFunctions.
constexpr unsigned long ZoErrFolderNotCreated = 0x24065801;
constexpr unsigned long ZoErrFolderNotRemoved = 0x24065802;
constexpr unsigned long ZoErrFolderNameEmpty = 0x24065803; ///< no new name to rename to
constexpr unsigned long ZoErrFolderNotMoved = 0x24065804;

/// Called for each file of a folder. \param path the folder as it was given, a backslash and the file's name; valid
/// during the call. \return has no effect.
using ZoEnumFilesProc = unsigned long(__stdcall*)(void* context, const char* path);

/// Operations on folders. Paths are ANSI texts without a backslash at their end, relative ones below the current
/// folder.
///
/// Operations return 0 on success; the system's error code right after the call that failed; or one of the codes
/// above. Nothing is thrown, and no memory is allocated except by CreateDirChain.
///
/// GetTotalSpace, GetTotalFileCount and EnumerateAllFiles look into every folder that the search finds, "." among them,
/// which is the same folder once more. Wherever a folder lists itself so, the walk goes on into "folder\.\.\." until
/// the path is too long for the system (206). That code ends the walk at every level and is the result; what was
/// counted or enumerated up to there stands. As "." is found first as a rule, that is nothing at all. Roots of drives,
/// and what else lists no ".", are walked through completely. Both are prescribed.
class ZOGBL_API CZoGlobalDirectoryFunctions {
public:
    /// Sets \p exists to 1 if \p dir is a folder, else to 0. A file gives status 0; what does not exist 2, or 3 if the
    /// folder above is missing too.
    static unsigned long Exists(const char* dir, unsigned long& exists);

    /// Creates a folder in an existing one. \return 0 only for a folder that was there; for one that was created, the
    /// code with which Exists missed it before: ask Exists whether it is there now. ZoErrFolderNotCreated otherwise.
    static unsigned long Create(const char* dir);
    /// Creates a folder and every missing one above it. \param exists 0 or 1 as the last look for a folder found it:
    /// 1 as a rule, of the folder itself or the nearest one above that was there.
    /// \return 0 for success; ZoErrFolderNotCreated as soon as one cannot be created, and for a path of 260 bytes or
    /// more, of which no part is created.
    static unsigned long CreateDirChain(const char* dir, unsigned long& exists);

    /// Removes an empty folder; ZoErrFolderNotRemoved.
    static unsigned long Delete(const char* dir);
    /// Removes a folder with all that is in it, and says nothing of how far it came: read-only files stay, files in use
    /// too, and the folders that they are in. If \p dir or a folder in it is a link (a junction, a symbolic link, a
    /// mounted volume), the link is removed, and what it leads to stays as it is. Where the system cannot open a link
    /// itself, as Wine cannot, the link stays too, and the folders that it is in. Null and an empty path: nothing.
    static void DeleteDirChain(const char* dir);

    /// Gives a folder or file another path; ZoErrFolderNameEmpty, also for null, or ZoErrFolderNotMoved. That is the
    /// system's answer if the target exists, and if a folder is to go to another volume; a file it takes there.
    static unsigned long Rename(const char* from, const char* to);

    /// The sizes in bytes of the files of \p dir, added up in 32 bits. Each file is opened for it; the first whose size
    /// cannot be read ends the count with its error. A folder that cannot be searched gives 0 bytes and status 0.
    static unsigned long GetSpace(const char* dir, unsigned long& bytes);
    /// The same with the folders below, as far as the walk comes (see above). A folder that cannot be searched gives
    /// its error.
    static unsigned long GetTotalSpace(const char* dir, unsigned long& bytes);

    /// The number of files of \p dir.
    static unsigned long GetFileCount(const char* dir, unsigned long& count);
    /// A count of the files of \p dir and of the folders below, as far as the walk comes (see above). The count of the
    /// folder that was found last is added again for each file found behind it.
    static unsigned long GetTotalFileCount(const char* dir, unsigned long& count);

    /// Calls \p callback for each file of \p dir, in the order of the search. A null callback gives 87.
    static unsigned long EnumerateFiles(void* context, const char* dir, ZoEnumFilesProc callback);
    /// The same with the folders below, each when it is found, as far as the walk comes (see above).
    static unsigned long EnumerateAllFiles(void* context, const char* dir, ZoEnumFilesProc callback);

    /// Sets \p shared to 0 and returns 0: no folder counts as shared.
    static unsigned long IsDirShared(const char* dir, int& shared);
};
