/// \file
/// Operations on folders.
#pragma once

#include <zogbl/export.h>

/// Codes of CZoGlobalDirectoryFunctions.
constexpr unsigned long ZoErrFolderNotCreated = 0x24065801;
constexpr unsigned long ZoErrFolderNotRemoved = 0x24065802;
constexpr unsigned long ZoErrFolderNameEmpty = 0x24065803; ///< Rename: no new name
constexpr unsigned long ZoErrFolderNotMoved = 0x24065804;

/// Called for each file of a folder.
/// \param path the folder as it was given, a backslash and the file's name; valid during the call
/// \return has no effect
using ZoEnumFilesProc = unsigned long(__stdcall*)(void* context, const char* path);

/// Operations on folders, also on whole trees. Nothing is thrown, and only CreateDirChain allocates memory. Paths are
/// ANSI texts without a backslash at the end; a relative path lies below the current folder.
///
/// Operations return 0 on success, else the system's error code right after the call that failed, or one of the codes
/// above.
///
/// GetTotalSpace, GetTotalFileCount and EnumerateAllFiles also enter ".", which is the same folder again. So in a
/// folder that lists ".", the walk goes into "folder\.\.\." until the path is too long for the system. This ends the
/// walk at every level with the result 206. The caller keeps what was counted or enumerated until then. This is usually
/// nothing, because "." is found first. Folders that list no ".", such as the roots of drives, are walked through
/// completely. All of this is prescribed.
class ZOGBL_API CZoGlobalDirectoryFunctions {
public:
    /// Looks for a folder:
    ///
    ///     a folder   result 0, exists 1
    ///     a file     result 0, exists 0
    ///     nothing    result 2, or 3 if the folder above is missing too; exists 0
    static unsigned long Exists(const char* dir, unsigned long& exists);

    /// Creates a folder in an existing one. Success is not told by 0; this is prescribed: ask Exists afterwards.
    /// \return
    ///   0                      the folder was there already
    ///   as Exists before it    the folder was created (2 as a rule)
    ///   ZoErrFolderNotCreated  the folder was not created
    static unsigned long Create(const char* dir);
    /// Creates a folder and every missing folder above it.
    /// \param exists 1 if \p dir or a folder above it was there before the call, else 0
    /// \return 0, or ZoErrFolderNotCreated: one folder could not be created, and those above it stay; or the path has
    /// 260 bytes or more, and nothing was created
    static unsigned long CreateDirChain(const char* dir, unsigned long& exists);

    /// Removes an empty folder. \return 0 or ZoErrFolderNotRemoved
    static unsigned long Delete(const char* dir);
    /// Removes a folder with all that is in it. It does not tell how far it came: read-only files and files in use
    /// stay, with the folders that they are in. If \p dir or a folder in it is a link (junction, symbolic link, mounted
    /// volume), the link is removed, but not what it leads to. If the system cannot open the link itself (Wine cannot),
    /// the link stays, with the folders that it is in. A null or empty path does nothing.
    static void DeleteDirChain(const char* dir);

    /// Gives a folder or file another path. A file can be moved to another volume.
    /// \return
    ///   0                     it has the new path
    ///   ZoErrFolderNameEmpty  \p to is null or empty
    ///   ZoErrFolderNotMoved   the system refused: the target exists, or a folder should go to another volume ...
    static unsigned long Rename(const char* from, const char* to);

    /// Adds up the sizes in bytes of the files of \p dir, in 32 bits. Each file is opened; the first whose size cannot
    /// be read ends the count with its error. If the folder cannot be searched, the result is 0 and \p bytes 0.
    static unsigned long GetSpace(const char* dir, unsigned long& bytes);
    /// The same with the folders below, as far as the walk comes (see above). If a folder cannot be searched, the
    /// result is its error.
    static unsigned long GetTotalSpace(const char* dir, unsigned long& bytes);

    /// Counts the files of \p dir.
    static unsigned long GetFileCount(const char* dir, unsigned long& count);
    /// Counts the files of \p dir and of the folders below, as far as the walk comes (see above). The count of the
    /// folder that was found last is added once more for each file found after it; this is prescribed.
    static unsigned long GetTotalFileCount(const char* dir, unsigned long& count);

    /// Calls \p callback for each file of \p dir, in the order of the search. A null callback gives 87 and does
    /// nothing.
    static unsigned long EnumerateFiles(void* context, const char* dir, ZoEnumFilesProc callback);
    /// The same with the folders below, each when it is found, as far as the walk comes (see above).
    static unsigned long EnumerateAllFiles(void* context, const char* dir, ZoEnumFilesProc callback);

    /// Sets \p shared to 0 and returns 0: no folder counts as shared.
    static unsigned long IsDirShared(const char* dir, int& shared);
};
