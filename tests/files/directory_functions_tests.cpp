#include "support/test.h"

#include <zogbl/directory_functions.h>

#include <array>

using Directory = CZoGlobalDirectoryFunctions;

namespace {

constexpr DWORD kError = ERROR_NOT_READY;
constexpr DWORD kTooLong = ERROR_FILENAME_EXCED_RANGE;
constexpr DWORD kBadParameter = ERROR_INVALID_PARAMETER;

using Paths = std::vector<std::string>;
using Results = std::vector<DWORD>; // in the order of the calls, statuses and numbers

unsigned long __stdcall Note(void* context, const char* path)
{
    static_cast<Paths*>(context)->push_back(path);
    SetLastError(kError); // means nothing to the walk, as the result
    return 1;
}

/// How folders list themselves while the object lives: as roots do, without "." and "..", or with a "." at the end. The
/// folders are not empty. Closing a search leaves a misleading last error.
class Listing {
public:
    explicit Listing(bool dotLast) { s_dotLast = dotLast, s_ended.clear(); }

private:
    static BOOL WINAPI FindNext(HANDLE search, WIN32_FIND_DATAA* entry)
    {
        while (FindNextFileA(search, entry)) {
            if (entry->cFileName[0] != '.')
                return TRUE;
        }
        if (!s_dotLast || !s_ended.insert(search).second)
            return FALSE;
        entry->dwFileAttributes = FILE_ATTRIBUTE_DIRECTORY;
        std::strcpy(entry->cFileName, ".");
        return TRUE;
    }
    static HANDLE WINAPI FindFirst(LPCSTR pattern, WIN32_FIND_DATAA* entry)
    {
        const HANDLE search = FindFirstFileA(pattern, entry);
        s_ended.erase(search);
        return search == INVALID_HANDLE_VALUE || FindNext(search, entry) ? search : INVALID_HANDLE_VALUE;
    }
    static BOOL WINAPI Close(HANDLE search) { return FindClose(search) ? SetLastError(ERROR_SEEK), TRUE : FALSE; }

    static inline bool s_dotLast;
    static inline std::set<HANDLE> s_ended;
    const ImportPatch m_first{kZogbl, "FindFirstFileA", &FindFirst};
    const ImportPatch m_next{kZogbl, "FindNextFileA", &FindNext};
    const ImportPatch m_close{kZogbl, "FindClose", &Close};
};

class DirectoryFunctions : public testing::Test {
protected:
    /// ab (2 bytes), sub\c (3), sub\d (4), ye (5), zet (6).
    void Fill() const
    {
        CreateDirectoryA(Path("sub").c_str(), nullptr);
        const char* const names[] = {"ab", "sub\\c", "sub\\d", "ye", "zet"};
        for (size_t i = 0; i < std::size(names); ++i)
            m_folder.Write(names[i], std::string(i + 2, 'x'));
    }
    std::string Path(const std::string& name) const { return m_folder.Path(name); }

    const TestFolder m_folder;
    const std::string m_path = m_folder.Path();
    const char* const m_root = m_path.c_str();
    unsigned long m_number = 9;
    Paths m_paths;
};

using Walk = DWORD (*)(const char* dir);
template <auto QUERY> DWORD Ask(const char* dir)
{
    unsigned long number;
    return QUERY(dir, number);
}
template <auto ENUMERATE> DWORD List(const char* dir)
{
    Paths paths;
    return ENUMERATE(&paths, dir, &Note);
}
/// That of GetSpace has no error at its start.
const Walk kWalks[] = {&Ask<&Directory::GetSpace>,        &Ask<&Directory::GetTotalSpace>,
                       &Ask<&Directory::GetFileCount>,    &Ask<&Directory::GetTotalFileCount>,
                       &List<&Directory::EnumerateFiles>, &List<&Directory::EnumerateAllFiles>};

} // namespace

TEST_F(DirectoryFunctions, CreatesDeletesRenames)
{
    m_folder.Write("file", "x");
    const std::string names[] = {Path("file"), Path("a"), Path("b c"), Path("missing\\folder")};
    const char *const file = names[0].c_str(), *const a = names[1].c_str(), *const b = names[2].c_str();
    const char* const missing = names[3].c_str();
    EXPECT_EQ(
        (Results{0, 0, ZoErrFolderNotCreated, ZoErrFolderNotCreated}),
        (Results{Directory::Exists(file, m_number), m_number, Directory::Create(file), Directory::Create(missing)}));
    EXPECT_EQ((Results{ERROR_FILE_NOT_FOUND, 0, 0, 1}), // was not there, but is now
              (Results{Directory::Create(a), Directory::Create(a), Directory::Exists(a, m_number), m_number}));
    EXPECT_EQ((Results{ZoErrFolderNotRemoved, ZoErrFolderNotMoved, 0, 0, ERROR_FILE_NOT_FOUND, 0}),
              (Results{Directory::Delete(m_root), Directory::Rename(a, missing), Directory::Rename(a, b),
                       Directory::Delete(b), Directory::Exists(b, m_number), m_number}));
    FaultSource moves("move");
    const ZO_FAULTY_CALL(MoveFileA) move(moves, kZogbl, TRUE);
    moves.Arm(1, true);
    EXPECT_EQ(ZoErrFolderNameEmpty, Directory::Rename(m_root, ""));
    EXPECT_EQ(ZoErrFolderNameEmpty, Directory::Rename(m_root, nullptr));
    EXPECT_EQ(0, moves.Calls());
    int shared = 9;
    EXPECT_EQ(0u, Directory::IsDirShared(m_root, shared));
    EXPECT_EQ(0, shared);
}

TEST_F(DirectoryFunctions, CreatesChains)
{
    const CurrentFolder current(m_root);
    m_folder.Write("file", "x");
    const std::string doubleByte = "\x94\x5C", onDrive = m_path.substr(0, 2) + "on the drive",
                      absolute = Path("a\\b b\\c");
    const std::pair<std::string, unsigned long> made[] = {
        {absolute, 1}, {absolute, 1}, {"relative", 0}, {"below\\the\\current", 0}, {doubleByte + "e", 0}, {onDrive, 0}};
    for (const auto& [path, exists] : made) {
        EXPECT_EQ(0u, Directory::CreateDirChain(path.c_str(), m_number)) << path;
        EXPECT_EQ(exists, m_number) << path;
        Directory::Exists(path.c_str(), m_number);
        EXPECT_EQ(1u, m_number) << path;
    }
    for (const std::string& path :
         {Path("file\\a\\b"), Path("d\\" + std::string(MAX_PATH, 'n')), std::string("?:\\x\\y"), std::string("")})
        EXPECT_EQ(ZoErrFolderNotCreated, Directory::CreateDirChain(path.c_str(), m_number)) << path;
    EXPECT_FALSE(m_folder.Exists("d")) << "nothing of a path that is too long";
    EXPECT_EQ(ZoErrFolderNotCreated, Directory::CreateDirChain(nullptr, m_number));
}

static bool IsLink(const std::string& path)
{
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

TEST_F(DirectoryFunctions, LeavesWhatALinkLeadsTo)
{
    Fill();
    const std::string below = Path("tree\\below");
    Directory::CreateDirChain(below.c_str(), m_number);
    CreateDirectoryA(Path("empty").c_str(), nullptr);
    // Each has a folder, a name and a target. Wine can neither make nor remove one, but starts its host's programs.
    const std::string host = "\\\\?\\unix\\bin\\";
    const std::array<std::string, 3> links[] = {
        {m_path, "link", "sub"}, {m_path, "emptylink", "empty"}, {below, "deep", "sub"}};
    for (const auto& [folder, name, target] : links) {
        const std::string way = folder == below ? "../../" : "";
        RunProgram(IsWine() ? host + "ln -s " + way + target + " " + name
                            : "cmd /c mklink /J " + name + " " + Path(target),
                   folder);
        EXPECT_TRUE(WaitUntil([&] { return IsLink(folder + "\\" + name); })) << name;
    }
    const std::string link = Path("link");
    for (const std::string& dir : {link, link + "\\", link + "//", Path("emptylink"), Path("tree")}) {
        Directory::DeleteDirChain(dir.c_str());
        EXPECT_EQ("xxx", m_folder.Read("sub\\c")) << dir;
        EXPECT_TRUE(m_folder.Exists("empty")) << dir;
    }
    for (const auto& [folder, name, target] : links) {
        const std::string path = folder + "\\" + name;
        EXPECT_EQ(IsWine(), IsLink(path)) << path << ": Wine cannot open a link itself";
        if (IsWine())
            RunProgram(host + "rm " + name, folder);
        EXPECT_TRUE(WaitUntil([&] { return !IsLink(path); })) << path;
    }
}

TEST_F(DirectoryFunctions, DeletesTrees)
{
    Fill();
    const std::string longName(80, 'n'), readOnly = Path("deep\\with blank\\kept\\file");
    Directory::CreateDirChain(Path("deep\\with blank\\kept").c_str(), m_number);
    m_folder.Write("deep\\" + longName, "x");
    m_folder.Write("deep\\with blank\\kept\\file", "x");
    SetFileAttributesA(readOnly.c_str(), FILE_ATTRIBUTE_READONLY);
    Directory::DeleteDirChain(m_root);
    EXPECT_TRUE(m_folder.Exists("deep\\with blank\\kept\\file"));
    for (const std::string& gone : {std::string("ab"), std::string("zet"), "deep\\" + longName})
        EXPECT_FALSE(m_folder.Exists(gone)) << gone;

    SetFileAttributesA(readOnly.c_str(), FILE_ATTRIBUTE_NORMAL);
    Fill();
    FaultSource faults("delete");
    const ZO_FAULTY_CALL(DeleteFileA) erase(faults, kZogbl, FALSE, kError);
    const ZO_FAULTY_CALL(RemoveDirectoryA) remove(faults, kZogbl, FALSE, kError);
    for (const char* none : {"", static_cast<const char*>(nullptr)}) {
        faults.Arm(1, true);
        Directory::DeleteDirChain(none);
        EXPECT_EQ(0, faults.Calls()) << "an empty path is not the root of the drive";
    }
    ZO_EXPECT_NO_LEAK(Directory::DeleteDirChain(m_root));
    EXPECT_EQ(11, faults.Calls()) << "six files and five folders, whatever fails";
    faults.Disarm();
    Directory::DeleteDirChain(m_root);
    EXPECT_FALSE(m_folder.Exists("."));
    CreateDirectoryA(m_root, nullptr); // for the end of the test
}

// Walks ---------------------------------------------------------------------------------------------------------------

TEST_F(DirectoryFunctions, WalksThroughOneFolder)
{
    Fill();
    EXPECT_EQ((Results{0, 3, 0, 13}), (Results{Directory::GetFileCount(m_root, m_number), m_number,
                                               Directory::GetSpace(m_root, m_number), m_number}));
    EXPECT_EQ(0u, Directory::EnumerateFiles(&m_paths, m_root, &Note));
    EXPECT_EQ((Paths{Path("ab"), Path("ye"), Path("zet")}), m_paths);
    EXPECT_EQ(kBadParameter, Directory::EnumerateFiles(&m_paths, m_root, nullptr));
    EXPECT_EQ(kBadParameter, Directory::EnumerateAllFiles(&m_paths, m_root, nullptr));
    const std::string missing = Path("missing"), tooLong(MAX_PATH * 3, 'x');
    const std::pair<const char*, DWORD> failures[] = {
        {missing.c_str(), ERROR_PATH_NOT_FOUND}, {tooLong.c_str(), kTooLong}, {nullptr, kBadParameter}};
    for (const auto& [dir, error] : failures) {
        EXPECT_EQ(0u, Directory::GetSpace(dir, m_number = 9)) << "no error";
        EXPECT_EQ(0u, m_number);
        for (const auto walk : kWalks)
            EXPECT_EQ(walk == kWalks[0] ? 0 : error, walk(dir));
    }
}

TEST_F(DirectoryFunctions, WalksIntoFoldersAndTheFolderItself)
{
    Fill();
    const std::string sub = Path("sub");
    const auto walkAll = [&](const std::string& path) {
        const char* const dir = path.c_str();
        m_paths.clear();
        return Results{Directory::GetTotalSpace(dir, m_number), m_number, Directory::GetTotalFileCount(dir, m_number),
                       m_number, Directory::EnumerateAllFiles(&m_paths, dir, &Note)};
    };
    EXPECT_EQ((Results{kTooLong, 0, kTooLong, 0, kTooLong}), walkAll(m_path)) << "every folder lists itself first";
    EXPECT_TRUE(m_paths.empty());
    {
        const Listing listing(false); // five files; the two of the folder count again for each of the two behind it
        EXPECT_EQ((Results{0, 20, 0, 9, 0}), walkAll(m_path));
        EXPECT_EQ((Paths{Path("ab"), Path("sub\\c"), Path("sub\\d"), Path("ye"), Path("zet")}), m_paths);
    }
    const Listing listing(true);
    DWORD levels = 0; // that the system searches
    WIN32_FIND_DATAA entry;
    for (std::string path = sub; FindClose(FindFirstFileA((path + "\\*.*").c_str(), &entry)); path += "\\.")
        ++levels;
    EXPECT_EQ((Results{kTooLong, 7 * levels, kTooLong, 2 * levels, kTooLong}), walkAll(sub))
        << "what was counted stands";
    ASSERT_EQ(2 * levels, m_paths.size());
    EXPECT_EQ(sub + "\\.\\.\\d", m_paths[5]);
}

// Faults --------------------------------------------------------------------------------------------------------------

TEST_F(DirectoryFunctions, ErrorsEndAWalkAtEveryLevel)
{
    Fill();
    const Listing listing(false);
    FileFaults faults(kError);
    for (const auto walk : kWalks) {
        RunFaultLoop(faults, [&](const FaultRun& run) {
            const DWORD status = walk(m_root);
            EXPECT_EQ(run.Fired() && (walk != kWalks[0] || run.number > 1) ? kError : 0u, status);
        });
    }
}

TEST_F(DirectoryFunctions, FaultsOfFoldersHaveTheirCodes)
{
    const std::string a = Path("a"), b = a + "\\b";
    FileFaults faults(kError);
    RunFaultLoop(faults, [&](const FaultRun& run) {
        RemoveDirectoryA(b.c_str());
        RemoveDirectoryA(a.c_str());
        const DWORD status = Directory::CreateDirChain(b.c_str(), m_number);
        run.Stop();
        EXPECT_EQ(status == 0, m_folder.Exists("a\\b"));
        EXPECT_TRUE(status == 0 || (run.Fired() && (status == ZoErrFolderNotCreated || status == kError))) << status;
        EXPECT_TRUE(status == 0 || run.persistent || run.number == faults.Calls()) << "goes on all the same";
    });
    faults.Arm(2, true); // behind the look whether it is there
    EXPECT_EQ(kError, Directory::Create(Path("new").c_str()));
}
