#include "support/test.h"

#include <zogbl/directory_functions.h>
#include <zogbl/file_functions.h>
#include <zogbl/file_name_functions.h>

using File = CZoGlobalFileFunctions;

namespace {

constexpr DWORD kError = ERROR_WRITE_PROTECT;
constexpr DWORD kNotFound = ERROR_FILE_NOT_FOUND;
constexpr char kContent[] = "0123456789";

/// A folder with a folder and a file of ten bytes.
class FileFunctions : public testing::Test {
protected:
    FileFunctions() { CreateDirectoryA(m_directory.c_str(), nullptr), Prepare(); }
    void Prepare()
    {
        SetFileAttributesA(m_file.c_str(), FILE_ATTRIBUTE_NORMAL);
        DeleteFileA(m_moved.c_str());
        m_folder.Write("file", kContent);
    }

    const TestFolder m_folder;
    const std::string m_file = m_folder.Path("file");
    const std::string m_moved = m_folder.Path("file.moved");
    const std::string m_directory = m_folder.Path("a folder");
};

/// Asks for a number, which must be 0 when that fails.
DWORD Ask(unsigned long (*query)(const char*, unsigned long&), const char* file)
{
    unsigned long number = 99;
    const DWORD status = query(file, number);
    EXPECT_EQ(status == 0, number != 0);
    return status;
}

DWORD MakeTempFile(const char*)
{
    char path[MAX_PATH] = "";
    const DWORD status = File::GetTempFile(path);
    EXPECT_EQ(status == 0, DeleteFileA(path) != FALSE);
    return status;
}

/// Operations on a file that is there.
using Operation = DWORD (*)(const char* file);
const Operation kOperations[] = {
    [](auto file) -> DWORD { return File::Create(file); },
    [](auto file) -> DWORD { return File::Delete(file); },
    [](auto file) -> DWORD { return File::Move(file, (std::string(file) + ".moved").c_str()); },
    [](auto file) -> DWORD { return File::SetSize(file, 3); },
    [](auto file) -> DWORD { return File::SetAttributes(file, FILE_ATTRIBUTE_READONLY); },
    [](auto file) -> DWORD { return File::ClearAttributes(file, FILE_ATTRIBUTE_READONLY); },
    [](auto file) -> DWORD { return Ask(&File::Exists, file); },
    [](auto file) -> DWORD { return Ask(&File::GetSize, file); },
    [](auto file) -> DWORD { return Ask(&File::GetAttributes, file); },
    &MakeTempFile};

} // namespace

TEST_F(FileFunctions, ChangesFilesAndLeavesFoldersAlone)
{
    unsigned long number;
    const char *const file = m_file.c_str(), *const folder = m_directory.c_str(), *const missing = m_moved.c_str();
    const DWORD before = GetFileAttributesA(folder);
    for (const auto query : {&File::Exists, &File::GetSize, &File::GetAttributes}) {
        EXPECT_EQ(0u, query(folder, number = 9));
        EXPECT_EQ(0u, number);
        EXPECT_EQ(kNotFound, Ask(query, missing));
        EXPECT_NE(0u, Ask(query, nullptr));
    }
    for (const auto change : {&File::SetSize, &File::SetAttributes, &File::ClearAttributes}) {
        EXPECT_EQ(0u, change(folder, 1));
        EXPECT_EQ(kNotFound, change(missing, 1));
    }
    EXPECT_EQ(before, GetFileAttributesA(folder));
    EXPECT_EQ(kNotFound, File::Rename(missing, file));
    SetLastError(0);
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), File::Create(nullptr));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), File::GetTempFile(nullptr));

    EXPECT_EQ(0u, File::SetSize(file, 3) | File::SetSize(file, 5));
    EXPECT_EQ(std::string("012\0\0", 5), m_folder.Read("file"));
    m_folder.Write("file.moved", "there");
    EXPECT_EQ(static_cast<DWORD>(ERROR_ALREADY_EXISTS), File::Move(file, m_moved.c_str()));
    EXPECT_EQ("there", m_folder.Read("file.moved"));
    EXPECT_EQ(0u, File::Create(m_moved.c_str()));
    EXPECT_EQ("", m_folder.Read("file.moved"));

    EXPECT_EQ(0u, File::SetAttributes(file, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY) |
                      File::SetAttributes(file, FILE_ATTRIBUTE_NORMAL) |
                      File::ClearAttributes(file, FILE_ATTRIBUTE_READONLY) | File::GetAttributes(file, number));
    EXPECT_TRUE(number & FILE_ATTRIBUTE_READONLY) << "clears nothing";
    EXPECT_EQ(static_cast<DWORD>(ERROR_ACCESS_DENIED), File::Delete(file));
}

TEST_F(FileFunctions, SystemErrorsComeBackAndChangeNothing)
{
    FileFaults faults(kError);
    for (const auto& operation : kOperations) {
        SCOPED_TRACE(&operation - kOperations);
        RunFaultLoop(faults, [&](const FaultRun& run) {
            Prepare();
            const DWORD status = operation(m_file.c_str());
            run.Stop();
            EXPECT_EQ(run.Fired() ? kError : 0u, status);
            EXPECT_TRUE(!run.Fired() || m_folder.Read("file") == kContent);
        });
    }
}

TEST_F(FileFunctions, AnswersOfAnySystem)
{
    unsigned long size;
    char path[MAX_PATH];
    FaultSource answers("answers");
    answers.Arm(1, true);
    const std::pair<DWORD, unsigned long> common[] = {{0x1, 1},   {0x2, 1},   {0x4, 1},    {0x20, 1}, {0x80, 1},
                                                      {0x100, 1}, {0x800, 0}, {0x2000, 0}, {0x31, 0}};
    for (const auto& [attributes, expected] : common) {
        const ZO_FAULTY_CALL(GetFileAttributesA) answer(answers, kZogbl, attributes);
        unsigned long exists = 9;
        EXPECT_EQ(0u, File::Exists(m_file.c_str(), exists));
        EXPECT_EQ(expected, exists) << std::hex << attributes;
    }
    {
        const HANDLE shut = CreateFileA(m_file.c_str(), 0, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
        const ZO_FAULTY_CALL(CloseHandle) close(answers, kZogbl, FALSE, ERROR_INVALID_HANDLE);
        const ZO_FAULTY_CALL(CreateFileA) create(answers, kZogbl, shut); // whose end cannot be set
        for (const DWORD status :
             {File::Create(m_file.c_str()), File::GetSize(m_file.c_str(), size), File::SetSize(m_file.c_str(), 3)})
            EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_HANDLE), status) << "failing to close comes last";
        EXPECT_TRUE(CloseHandle(shut));
    }
    const ZO_FAULTY_CALL(GetFileSize) untold(answers, kZogbl, INVALID_FILE_SIZE);
    const ZO_FAULTY_CALL(GetTempPathA) longPath(answers, kZogbl, 247);
    EXPECT_EQ(0u, File::GetSize(m_file.c_str(), size));
    EXPECT_EQ(0u, size);
    EXPECT_EQ(static_cast<DWORD>(ERROR_BUFFER_OVERFLOW), File::GetTempFile(path));
    const ZO_FAULTY_CALL(SetEndOfFile) cut(answers, kZogbl, TRUE);
    EXPECT_EQ(0u, File::SetSize(m_file.c_str(), 0x80000001)) << "more than 2 GB is not taken for a way back";
}

// Names made up -------------------------------------------------------------------------------------------------------

TEST_F(FileFunctions, NamesByNumber)
{
    const std::string fits(MAX_PATH - 6, 'x'); // with a backslash, four digits and the end: 260
    const std::string doubleByte = "C:\\\x83\x5C";
    struct Case {
        std::string dir;
        const char *prefix, *ext;
        unsigned int unique;
        std::string expected; // empty: none
    };
    const Case cases[] = {{"C:\\a", "FX", "tif", 26, "C:\\a\\FX001A.tif"},
                          {"C:\\a\\", "FX", ".tif", 0xABCDE, "C:\\a\\FXABCDE.tif"},
                          {"C:\\100%s", "%n", "%d", 1, "C:\\100%s\\%n0001.%d"},
                          {doubleByte, "", "", 1, doubleByte + (IsDoubleByte() ? "\\" : "") + "0001."},
                          {fits, nullptr, nullptr, 1, fits + "\\0001"},
                          {fits, nullptr, nullptr, 0x10000, ""},
                          {fits + fits, "x", nullptr, 0, ""}};
    for (const auto& c : cases) {
        SentinelBuffer name(MAX_PATH);
        const bool none = File::ZoGetTempFileName(c.dir.c_str(), c.prefix, c.ext, c.unique, name.Data()) == 1;
        EXPECT_EQ(c.expected.empty(), none);
        EXPECT_TRUE(none ? name.IsUntouched() : c.expected == name.Text()) << name.Text();
        name.ExpectGuardsIntact();
    }
    char name[MAX_PATH];
    EXPECT_EQ(0u, File::ZoGetTempFileName(nullptr, nullptr, nullptr, 1, name));
    EXPECT_STREQ("0001", name);
    EXPECT_EQ(1u, File::ZoGetTempFileName("C:", nullptr, nullptr, 1, nullptr));
}

TEST_F(FileFunctions, NamesMayEndInHalfACharacterAtTheEndOfMemory)
{
    SYSTEM_INFO system;
    GetSystemInfo(&system);
    auto* pages = static_cast<char*>(VirtualAlloc(nullptr, system.dwPageSize * 2, MEM_COMMIT, PAGE_READWRITE));
    DWORD before;
    ASSERT_TRUE(VirtualProtect(pages + system.dwPageSize, 1, PAGE_NOACCESS, &before));
    const std::string folder = m_directory + "\\n\x83";
    char* text = std::strcpy(pages + system.dwPageSize - folder.size() - 1, folder.c_str());
    char name[MAX_PATH];
    EXPECT_EQ(0u, File::ZoGetTempFileName(text, "FX", nullptr, 1, name));
    EXPECT_EQ(folder + "\\FX0001", name);
    unsigned long exists = 9;
    CZoGlobalDirectoryFunctions::CreateDirChain(text, exists); // whether the system makes it or not
    EXPECT_EQ(1u, exists) << "the folder above";
    CZoGlobalDirectoryFunctions::Delete(text);
    CString last;
    CZoGlobalFileNameFunctions::ExtractNameFromPath(text, last);
    EXPECT_STREQ("n\x83", last);
    VirtualFree(pages, 0, MEM_RELEASE);
}

static DWORD g_tick, g_tickStep, g_sleeps;
static DWORD WINAPI Tick() { return g_tick += g_tickStep; }
static void WINAPI CountSleep(DWORD) { ++g_sleeps; }

TEST_F(FileFunctions, NamesByTheClock)
{
    char first[MAX_PATH], second[MAX_PATH];
    const std::string folder = m_folder.Path();
    const auto make = [&](char* name) { return File::ZoGetTempFileName(folder.c_str(), "FX", "tif", 0, name); };
    EXPECT_EQ(0u, make(first) | make(second));
    EXPECT_STRNE(first, second);
    EXPECT_TRUE(DeleteFileA(first) && DeleteFileA(second));
    EXPECT_EQ(1u, File::ZoGetTempFileName(m_moved.c_str(), nullptr, nullptr, 0, first)) << "no such folder";

    FaultSource faults("create"); // the second call: the first looks whether the name is taken
    for (const auto& [error, status] : {std::pair{ERROR_ACCESS_DENIED, 1u}, std::pair{ERROR_FILE_EXISTS, 0u}}) {
        const ZO_FAULTY_CALL(CreateFileA) create(faults, kZogbl, INVALID_HANDLE_VALUE, error);
        SentinelBuffer name(MAX_PATH);
        faults.Arm(2, false);
        EXPECT_EQ(status, make(name.Data())) << "a file that another process made meanwhile is passed over";
        EXPECT_EQ(status == 1, name.IsUntouched());
    }

    const ImportPatch clock(kZogbl, "GetTickCount", &Tick);
    const ImportPatch sleep(kZogbl, "Sleep", &CountSleep);
    {
        const ZO_FAULTY_CALL(CreateFileA) unreadable(faults, kZogbl, INVALID_HANDLE_VALUE, ERROR_SHARING_VIOLATION);
        faults.Arm(1, false);
        g_tickStep = 1;
        m_folder.Write("FX0001.tif", "somebody's");
        EXPECT_EQ(0u, make(first));
        EXPECT_EQ(m_folder.Path("FX0002.tif"), first);
        EXPECT_EQ("somebody's", m_folder.Read("FX0001.tif"));
    }
    const ZO_FAULTY_CALL(CreateFileA) taken(faults, kZogbl, GetCurrentThread());
    const ZO_FAULTY_CALL(CloseHandle) close(faults, kZogbl, TRUE);
    faults.Arm(1, true);
    for (const auto& [step, tries] : {std::pair{0u, 0x10000u}, std::pair{1u, 0x10000u}, std::pair{0x1000u, 0x10u}}) {
        g_sleeps = 0;
        g_tickStep = step;
        g_tick = 0xFFFFFF00;
        EXPECT_EQ(1u, make(first)) << "the search ends";
        EXPECT_EQ(tries, g_sleeps);
    }
}
