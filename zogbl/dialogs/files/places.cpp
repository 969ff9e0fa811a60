#include "places.h"

#include "files/folder_walk.h"
#include "ground/bounded_text.h"

#include <algorithm>

namespace {

bool IsShown(const WIN32_FIND_DATAA& entry)
{
    return (entry.dwFileAttributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) == 0 &&
           std::strcmp(entry.cFileName, ".") != 0 && std::strcmp(entry.cFileName, "..") != 0;
}

bool Precedes(const CString& first, const CString& second) { return ::lstrcmpiA(first, second) < 0; }

/// Calls \p visit for the entries of a folder.
template <class VISIT> DWORD ForEachShown(const CString& folder, VISIT visit)
{
    const NoSystemBoxes guard;
    WalkPath path;
    const bool isRoot = folder.ReverseFind('\\') == folder.GetLength() - 1;
    if (!path.Append(isRoot ? folder.Left(folder.GetLength() - 1) : folder)) // the walk adds a backslash
        return ERROR_FILENAME_EXCED_RANGE;
    return ForEachEntry(path,
                        [&](const WIN32_FIND_DATAA& entry) -> DWORD { return IsShown(entry) ? visit(entry) : 0; });
}

/// Both in capitals. A '*' takes as little as it can, and more when the rest does not match.
bool Matches(LPCSTR name, LPCSTR pattern)
{
    LPCSTR afterStar = nullptr;
    LPCSTR retry = nullptr;
    while (*name != '\0') {
        const size_t width = CharacterWidth(name);
        if (*pattern == '*') {
            afterStar = ++pattern;
            retry = name;
        } else if (*pattern == '?' ||
                   (*pattern != '\0' && width == CharacterWidth(pattern) && std::memcmp(name, pattern, width) == 0)) {
            pattern += *pattern == '?' ? 1 : width;
            name += width;
        } else if (afterStar != nullptr) {
            pattern = afterStar;
            retry += CharacterWidth(retry);
            name = retry;
        } else {
            return false;
        }
    }
    while (*pattern == '*')
        ++pattern;
    return *pattern == '\0';
}

} // namespace

// The system's boxes -------------------------------------------------------------------------------------------------

namespace {

constexpr UINT kNoBoxes = SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX;

/// How many threads want none, and the mode that was there before the first.
class BoxLock {
public:
    BoxLock() { ::EnterCriticalSection(&s_guarded.section); }
    ~BoxLock() { ::LeaveCriticalSection(&s_guarded.section); }
    BoxLock(const BoxLock&) = delete;
    BoxLock& operator=(const BoxLock&) = delete;

    static inline struct Guarded {
        CRITICAL_SECTION section;
        int count = 0;
        UINT before = 0;
        Guarded() { ::InitializeCriticalSection(&section); }
        ~Guarded() { ::DeleteCriticalSection(&section); }
    } s_guarded;
};

} // namespace

NoSystemBoxes::NoSystemBoxes()
{
    const BoxLock lock;
    if (BoxLock::s_guarded.count++ == 0)
        BoxLock::s_guarded.before = ::SetErrorMode(kNoBoxes);
}

NoSystemBoxes::~NoSystemBoxes()
{
    const BoxLock lock;
    if (--BoxLock::s_guarded.count != 0)
        return;
    const UINT mode = ::SetErrorMode(BoxLock::s_guarded.before);
    if (mode != kNoBoxes) // the program's own change meanwhile
        ::SetErrorMode(mode);
}

// Contents ------------------------------------------------------------------------------------------------------------

DWORD ReadFolder(const CString& folder, LPCSTR patterns, FolderContents& contents)
{
    const CString wanted(patterns);
    const DWORD result = ForEachShown(folder, [&](const WIN32_FIND_DATAA& entry) -> DWORD {
        const CString name(entry.cFileName);
        if (IsFolder(entry))
            contents.folders.push_back(name);
        else if (patterns != nullptr && MatchesPatterns(name, wanted))
            contents.files.push_back(name);
        return 0;
    });
    std::sort(contents.folders.begin(), contents.folders.end(), &Precedes);
    std::sort(contents.files.begin(), contents.files.end(), &Precedes);
    // The root of an empty drive lists not even itself.
    return result == ERROR_FILE_NOT_FOUND ? DWORD{ERROR_SUCCESS} : result;
}

bool HasFolders(const CString& folder)
{
    constexpr DWORD kFound = ERROR_ALREADY_EXISTS;
    return ForEachShown(folder, [](const WIN32_FIND_DATAA& entry) { return IsFolder(entry) ? kFound : 0; }) == kFound;
}

namespace {

/// Calls \p found for the patterns separated by ';', until it returns TRUE. \return whether it did
template <class FOUND> bool FindPattern(const CString& patterns, FOUND found)
{
    for (int begin = 0; begin < patterns.GetLength();) {
        int end = patterns.Find(';', begin);
        if (end < 0)
            end = patterns.GetLength();
        CString pattern = patterns.Mid(begin, end - begin);
        pattern.TrimLeft();
        pattern.TrimRight();
        if (found(pattern))
            return true;
        begin = end + 1;
    }
    return false;
}

} // namespace

bool MatchesPatterns(const CString& name, const CString& patterns)
{
    CString capitals = name;
    capitals.MakeUpper();
    return FindPattern(patterns, [&](CString& pattern) {
        pattern.MakeUpper();
        return pattern == "*.*" || Matches(capitals, pattern);
    });
}

bool HasExtension(const CString& name, LPCSTR defaultExtension, LPCSTR filter)
{
    if (name.ReverseFind('.') == name.GetLength() - 1 || MatchesPatterns(name, CString("*.") + defaultExtension))
        return true;
    for (LPCSTR type = filter; type != nullptr && *type != '\0';) {
        const CString patterns = type + std::strlen(type) + 1;
        const auto isNamed = [&](const CString& pattern) {
            const int dot = pattern.ReverseFind('.');
            return dot >= 0 && pattern.Mid(dot).FindOneOf("*?") < 0 && MatchesPatterns(name, "*" + pattern.Mid(dot));
        };
        if (FindPattern(patterns, isNamed))
            return true;
        type += std::strlen(type) + 1;
        type += std::strlen(type) + 1;
    }
    return false;
}

bool FolderExists(LPCSTR path)
{
    const NoSystemBoxes guard;
    const DWORD attributes = ::GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Paths ---------------------------------------------------------------------------------------------------------------

CString CurrentFolder()
{
    char folder[MAX_PATH] = "";
    const DWORD length = ::GetCurrentDirectoryA(sizeof folder, folder);
    return length < sizeof folder ? folder : "";
}

CString JoinPath(const CString& folder, const CString& name)
{
    return folder.ReverseFind('\\') == folder.GetLength() - 1 ? folder + name : folder + '\\' + name;
}

CString TrimBackslash(const CString& path)
{
    CString trimmed = path;
    while (trimmed.GetLength() > RootOf(path).GetLength() && trimmed.ReverseFind('\\') == trimmed.GetLength() - 1)
        trimmed.Truncate(trimmed.GetLength() - 1);
    return trimmed;
}

CString RootOf(const CString& path)
{
    if (path.GetLength() >= 2 && path[1] == ':')
        return path.Left(2) + '\\';
    if (path.GetLength() < 2 || path[0] != '\\' || path[1] != '\\')
        return {};
    const int server = path.Find('\\', 2);
    const int share = server < 0 ? -1 : path.Find('\\', server + 1);
    return share < 0 ? path + '\\' : path.Left(share + 1);
}

CString ParentOf(const CString& path)
{
    const CString root = RootOf(path);
    const CString parent = path.Left(path.ReverseFind('\\'));
    return parent.GetLength() < root.GetLength() ? root : parent;
}

void AddWithAllAbove(std::vector<CString>& folders, const CString& folder)
{
    for (CString next = folder; !RootOf(next).IsEmpty(); next = ParentOf(next)) {
        folders.push_back(next);
        if (next == RootOf(next))
            break;
    }
}

CString NameOf(const CString& path)
{
    const int last = path.ReverseFind('\\');
    return last == path.GetLength() - 1 ? path : path.Mid(last + 1);
}

CString ResolvePath(const CString& folder, const CString& typed)
{
    CString path = typed;
    path.Replace("/", "\\");
    if (path.GetLength() >= 2 && path[1] == ':') {
        const bool isHere = ::lstrcmpiA(path.Left(2), folder.Left(2)) == 0;
        if (path.GetLength() == 2)
            path += '\\';
        else if (path[2] != '\\')
            path = JoinPath(isHere ? folder : path.Left(2) + '\\', path.Mid(2));
    } else if (path.Left(2) != "\\\\") {
        path = path[0] == '\\' ? JoinPath(RootOf(folder), path.Mid(1)) : JoinPath(folder, path);
    }
    char full[2 * MAX_PATH] = "";
    LPSTR name = nullptr;
    const DWORD length = ::GetFullPathNameA(path, sizeof full, full, &name);
    if (length == 0 || length >= sizeof full)
        return {};
    path = full;
    CString root = RootOf(path);
    if (path.GetLength() < root.GetLength()) // a share without its backslash
        return root;
    return TrimBackslash(path);
}

bool IsValidPath(const CString& path)
{
    const CString root = RootOf(path);
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    if (path.Mid(1, 1) == ":" && !isLetter(path[0]))
        return false;
    if (root.IsEmpty() || path.Left(4) == "\\\\.\\" || path.Left(4) == "\\\\?\\")
        return false;
    for (LPCSTR p = (LPCSTR)path + (path[1] == ':' ? 2 : 0); *p != '\0'; p += CharacterWidth(p)) {
        if (static_cast<unsigned char>(*p) < ' ' || std::strchr("<>:\"|?*", *p) != nullptr)
            return false;
    }
    return true;
}

// Drives --------------------------------------------------------------------------------------------------------------

void ListDrives(CStringArray& roots)
{
    const DWORD drives = ::GetLogicalDrives();
    for (int i = 0; i < 26; ++i) {
        if ((drives & (1u << i)) != 0)
            roots.Add(CString(static_cast<char>('A' + i)) + ":\\");
    }
}

PlacePicture PictureOfDrive(const CString& root)
{
    if (root[0] == '\\')
        return PlacePicture::kNetworkDrive;
    switch (::GetDriveTypeA(root)) {
    case DRIVE_REMOTE:
        return PlacePicture::kNetworkDrive;
    case DRIVE_REMOVABLE:
    case DRIVE_CDROM:
        return PlacePicture::kRemovableDrive;
    default:
        return PlacePicture::kDrive;
    }
}

NetworkPlace NetworkPlaceOf(const CString& root)
{
    NetworkPlace place;
    if (root[0] == '\\')
        return place;
    // The network's library is loaded for the purpose: there may be none.
    const HMODULE library = ::LoadLibraryA("mpr.dll");
    if (library == nullptr)
        return place;
    const auto ask = reinterpret_cast<decltype(&WNetGetConnectionA)>(
        reinterpret_cast<void*>(::GetProcAddress(library, "WNetGetConnectionA")));
    char name[MAX_PATH] = "";
    DWORD size = sizeof name;
    const DWORD status = ask != nullptr ? ask(root.Left(2), name, &size) : DWORD{ERROR_NOT_CONNECTED};
    ::FreeLibrary(library);
    place.isConnected = status != ERROR_CONNECTION_UNAVAIL;
    if (status == NO_ERROR || !place.isConnected)
        place.name = name;
    return place;
}
