/// \file
/// Drives and folders, as the dialogs for files and folders list them.
#pragma once

#include <afxwin.h>

#include <vector>

/// Keeps the system from showing boxes of its own, "no disk in the drive" say, while it lives. The mode is that of the
/// process, and several threads may have one of these: the last that ends puts it back.
class NoSystemBoxes {
public:
    NoSystemBoxes();
    ~NoSystemBoxes();
    NoSystemBoxes(const NoSystemBoxes&) = delete;
    NoSystemBoxes& operator=(const NoSystemBoxes&) = delete;
};

/// What a folder holds, sorted as the user sorts names. Hidden and system entries are left out.
struct FolderContents {
    std::vector<CString> folders;
    std::vector<CString> files;
};

// All of these throw CMemoryException*. Folders are full paths: a root ("C:\", "\\server\share\") has a backslash at
// its end, no other folder has.

/// \param patterns of the files, separated by ';'; null: no files are wanted
/// \return 0, or the system's error when the folder cannot be read
DWORD ReadFolder(const CString& folder, LPCSTR patterns, FolderContents& contents);
bool HasFolders(const CString& folder);

/// Whether a name matches one of the patterns separated by ';', whatever the case. "*.*" is every name.
bool MatchesPatterns(const CString& name, const CString& patterns);

/// Whether a name ends in the default extension (without its dot) or in one of the filter's: any other dot is one of
/// the name, as in a date. A dot at the end stands for no extension at all.
bool HasExtension(const CString& name, LPCSTR defaultExtension, LPCSTR filter);

bool FolderExists(LPCSTR path);

/// Empty if the system cannot tell it in MAX_PATH bytes.
CString CurrentFolder();
/// The path of an entry of a folder.
CString JoinPath(const CString& folder, const CString& name);
/// A path without backslashes at its end; a root keeps its own.
CString TrimBackslash(const CString& path);
CString RootOf(const CString& path);
/// The folder that \p path lies in; a root lies in itself.
CString ParentOf(const CString& path);
/// Adds a folder and those that it lies in, the root last. Nothing for what has no root.
void AddWithAllAbove(std::vector<CString>& folders, const CString& folder);
/// The part behind the last backslash; of a root, all of it.
CString NameOf(const CString& path);

/// The full path of what a person typed while \p folder was shown. "C:name" is a name in the root, unless the folder
/// shown is on that drive. \return empty when it is longer than the system can make a path of
CString ResolvePath(const CString& folder, const CString& typed);
/// Whether a full path can be the name of a file or folder: no character that the system keeps for itself, no device.
bool IsValidPath(const CString& path);

enum class PlacePicture { kFolder, kOpenFolder, kDrive, kNetworkDrive, kRemovableDrive };
constexpr int kPlacePictures = 5;
constexpr int kPictureSize = 16; // pixels, both ways

/// The drives of the system, as roots. None is touched.
void ListDrives(CStringArray& roots);

/// What a drive is, without reading it. The system may ask the network for these, which can take long.
PlacePicture PictureOfDrive(const CString& root);
struct NetworkPlace {
    CString name; ///< that the drive stands for, "\\server\share"; empty: none
    bool isConnected = true;
};
NetworkPlace NetworkPlaceOf(const CString& root);

void DrawPlacePicture(HDC dc, int x, int y, PlacePicture picture);
