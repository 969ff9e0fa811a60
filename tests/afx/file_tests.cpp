

#include "support/test.h"

namespace {

/// The cause of the CFileException that \p operation throws; none when it throws nothing.
int CauseOf(const std::function<void()>& operation)
{
    try {
        operation();
    } catch (CFileException* e) {
        const int cause = e->m_cause;
        e->Delete();
        return cause;
    }
    return CFileException::none;
}

} // namespace

TEST(CFile, SaysWhyItCannotBeOpened)
{
    const TestFolder folder;
    folder.Write("file", "content");
    CFile holder(folder.Path("file").c_str(), CFile::modeRead | CFile::shareDenyWrite);
    const struct {
        const char* name;
        UINT flags;
        int cause;
    } cases[] = {
        {"nothing", CFile::modeRead, CFileException::fileNotFound},
        {"no\\folder", CFile::modeRead, CFileException::badPath},
        {"no\\folder", CFile::modeWrite | CFile::modeCreate, CFileException::badPath},
        {"", CFile::modeRead | CFile::shareDenyNone, CFileException::accessDenied}, // the folder
        {"file", CFile::modeWrite | CFile::shareDenyNone, CFileException::sharingViolation},
        {"file", CFile::modeRead | CFile::shareExclusive, CFileException::sharingViolation},
        {"file", CFile::modeRead | CFile::shareDenyWrite, CFileException::none},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = folder.Path(c.name);
        CFile file;
        CFileException reason;
        ZO_EXPECT_NO_LEAK({
            EXPECT_EQ(c.cause == CFileException::none, file.Open(path.c_str(), c.flags, &reason) != FALSE);
            EXPECT_EQ(c.cause, reason.m_cause);
            EXPECT_STREQ(c.cause == CFileException::none ? "" : path.c_str(), reason.m_strFileName);
            file.Abort();
            reason.m_strFileName.Empty();
            EXPECT_EQ(c.cause, CauseOf([&] { CFile other(path.c_str(), c.flags); }));
        });
    }
}

TEST(CFile, ReadsAndWrites)
{
    const TestFolder folder;
    const std::string path = folder.Path("file");
    CFile file(path.c_str(), CFile::modeReadWrite | CFile::modeCreate);
    file.Write("0123456789", 10);
    file.Write("", 0);
    EXPECT_EQ(10u, file.GetPosition());
    EXPECT_EQ(3u, file.Seek(-7, CFile::end));
    char buffer[32] = {};
    EXPECT_EQ(7u, file.Read(buffer, sizeof buffer));
    EXPECT_STREQ("3456789", buffer);
    EXPECT_EQ(0u, file.Read(buffer, sizeof buffer));
    EXPECT_EQ(CFileException::badSeek, CauseOf([&] { file.Seek(-1, CFile::begin); }));
    file.SetLength(4);
    EXPECT_EQ(4u, file.GetLength());
    EXPECT_STRCASEEQ(path.c_str(), file.GetFilePath());
    file.Close();
    EXPECT_EQ("0123", folder.Read("file"));
    EXPECT_EQ(CFileException::invalidFile, CauseOf([&] { file.Write("x", 1); }));

    CFile(path.c_str(), CFile::modeWrite | CFile::modeCreate | CFile::modeNoTruncate).Close();
    EXPECT_EQ("0123", folder.Read("file"));
    CFile(path.c_str(), CFile::modeWrite | CFile::modeCreate).Close();
    EXPECT_EQ("", folder.Read("file"));

    CFile::Rename(path.c_str(), folder.Path("renamed").c_str());
    EXPECT_TRUE(folder.Exists("renamed"));
    EXPECT_EQ(CFileException::fileNotFound, CauseOf([&] { CFile::Rename(path.c_str(), "x"); }));
    CFile::Remove(folder.Path("renamed").c_str());
    EXPECT_EQ(CFileException::fileNotFound, CauseOf([&] { CFile::Remove(path.c_str()); }));
}

TEST(CFile, OpensAsItsFlagsSay)
{
    const TestFolder folder;
    folder.Write("file", "0123");
    const std::string path = folder.Path("file");
    static constexpr struct {
        UINT share;
        bool reads; // whether another may meanwhile
        bool writes;
    } shares[] = {{CFile::shareCompat, false, false},
                  {CFile::shareExclusive, false, false},
                  {CFile::shareDenyWrite, true, false},
                  {CFile::shareDenyRead, false, true},
                  {CFile::shareDenyNone, true, true}};
    for (const auto& c : shares) {
        const CFile file(path.c_str(), CFile::modeRead | c.share);
        EXPECT_EQ(c.reads, CFile().Open(path.c_str(), CFile::modeRead | CFile::shareDenyNone) != FALSE) << c.share;
        EXPECT_EQ(c.writes, CFile().Open(path.c_str(), CFile::modeWrite | CFile::shareDenyNone) != FALSE) << c.share;
    }
    static constexpr struct {
        UINT mode;
        bool reads;
        bool writes;
    } modes[] = {{CFile::modeRead, true, false}, {CFile::modeWrite, false, true}, {CFile::modeReadWrite, true, true}};
    for (const auto& c : modes) {
        CFile file(path.c_str(), c.mode);
        char byte = 'x';
        EXPECT_EQ(c.reads, CauseOf([&] { file.Read(&byte, 1); }) == CFileException::none) << c.mode;
        EXPECT_EQ(c.writes, CauseOf([&] { file.Write(&byte, 1); }) == CFileException::none) << c.mode;
    }
    for (const UINT flag : {UINT{0}, UINT{CFile::modeNoInherit}}) {
        const CFile file(path.c_str(), CFile::modeRead | flag);
        DWORD information = 0;
        EXPECT_TRUE(GetHandleInformation(file.m_hFile, &information));
        EXPECT_EQ(flag == 0, (information & HANDLE_FLAG_INHERIT) != 0);
    }
    char current[MAX_PATH];
    GetCurrentDirectoryA(sizeof current, current);
    SetCurrentDirectoryA(folder.Path().c_str());
    EXPECT_STRCASEEQ(path.c_str(), CFile("file", CFile::modeRead).GetFilePath());
    SetCurrentDirectoryA(current);
}

namespace {

constexpr ULONGLONG kHuge = 0x100000005;

BOOL WINAPI HugeSize(HANDLE, LARGE_INTEGER* size)
{
    size->QuadPart = kHuge;
    return TRUE;
}

} // namespace

TEST(CFile, CountsBeyond32Bits)
{
    const TestFolder folder;
    CFile file(folder.Path("file").c_str(), CFile::modeReadWrite | CFile::modeCreate);
    EXPECT_EQ(kHuge, file.Seek(kHuge, CFile::begin)); // the file stays empty
    EXPECT_EQ(kHuge, file.GetPosition());
    const ImportPatch patch("ZOAFX.DLL", "GetFileSizeEx", &HugeSize);
    EXPECT_EQ(kHuge, file.GetLength());
}

namespace {

BOOL WINAPI WriteHalf(HANDLE file, LPCVOID data, DWORD size, LPDWORD written, LPOVERLAPPED overlapped)
{
    return WriteFile(file, data, size / 2, written, overlapped);
}

} // namespace

TEST(CFile, ReportsEveryFailingCall)
{
    const TestFolder folder;
    CFile file(folder.Path("file").c_str(), CFile::modeReadWrite | CFile::modeCreate);
    {
        const ImportPatch patch("ZOAFX.DLL", "WriteFile", &WriteHalf);
        EXPECT_EQ(CFileException::diskFull, CauseOf([&] { file.Write("0123", 4); }));
    }
    FaultSource source("file calls");
    const ZO_FAULTY_CALL(WriteFile) write(source, "ZOAFX.DLL", FALSE, ERROR_DISK_FULL);
    const ZO_FAULTY_CALL(ReadFile) read(source, "ZOAFX.DLL", FALSE, ERROR_CRC);
    const ZO_FAULTY_CALL(SetEndOfFile) setEnd(source, "ZOAFX.DLL", FALSE, ERROR_DISK_FULL);
    const ZO_FAULTY_CALL(FlushFileBuffers) flush(source, "ZOAFX.DLL", FALSE, ERROR_WRITE_FAULT);
    const ZO_FAULTY_CALL(GetFileSizeEx) size(source, "ZOAFX.DLL", FALSE, ERROR_INVALID_HANDLE);
    char buffer[4];
    const std::pair<int, std::function<void()>> cases[] = {
        {CFileException::diskFull, [&] { file.Write("0123", 4); }},
        {CFileException::hardIO, [&] { file.Read(buffer, 4); }},
        {CFileException::diskFull, [&] { file.SetLength(2); }},
        {CFileException::hardIO, [&] { file.Flush(); }},
        {CFileException::invalidFile, [&] { file.GetLength(); }},
    };
    for (const auto& [cause, operation] : cases) {
        source.Arm(1, true);
        EXPECT_EQ(cause, CauseOf(operation));
        source.Disarm();
        EXPECT_EQ(CFileException::none, CauseOf(operation));
    }
    // A failing close is reported, and the object is closed all the same.
    const HANDLE handle = file.m_hFile;
    const ZO_FAULTY_CALL(CloseHandle) close(source, "ZOAFX.DLL", FALSE, ERROR_WRITE_FAULT);
    source.Arm(1, false);
    EXPECT_EQ(CFileException::hardIO, CauseOf([&] { file.Close(); }));
    EXPECT_EQ(INVALID_HANDLE_VALUE, file.m_hFile);
    CloseHandle(handle);
}
