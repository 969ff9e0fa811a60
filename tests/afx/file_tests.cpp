#include "support/test.h"

namespace {

/// The cause of the CFileException that \p operation throws for the file; none when it throws nothing.
int CauseOf(const std::string& file, const std::function<void()>& operation)
{
    try {
        operation();
    } catch (CFileException* e) {
        const int cause = e->m_cause;
        EXPECT_EQ(file, static_cast<LPCSTR>(e->m_strFileName));
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
    const std::tuple<const char*, UINT, int> cases[] = {
        {"nothing", CFile::modeRead, CFileException::fileNotFound},
        {"no\\folder", CFile::modeRead, CFileException::badPath},
        {"no\\folder", CFile::modeWrite | CFile::modeCreate, CFileException::badPath},
        {"", CFile::modeRead | CFile::shareDenyNone, CFileException::accessDenied}, // the folder
        {"file", CFile::modeRead | CFile::shareExclusive, CFileException::none},
    };
    for (const auto& [name, flags, cause] : cases) {
        SCOPED_TRACE(name);
        const std::string path = folder.Path(name);
        CFile file;
        CFileException reason;
        ZO_EXPECT_NO_LEAK({
            file.Open(path.c_str(), flags); // which is over when it opens the next one
            EXPECT_EQ(cause == CFileException::none, file.Open(path.c_str(), flags, &reason) != FALSE);
            EXPECT_EQ(cause, reason.m_cause);
            EXPECT_STREQ(cause == CFileException::none ? "" : path.c_str(), reason.m_strFileName);
            file.Abort();
            reason.m_strFileName.Empty();
            EXPECT_EQ(cause, CauseOf(path, [&, &flags = flags] { CFile other(path.c_str(), flags); }));
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
    EXPECT_EQ(CFileException::badSeek, CauseOf(path, [&] { file.Seek(-1, CFile::begin); }));
    file.SetLength(4);
    EXPECT_EQ(4u, file.GetLength());
    EXPECT_STRCASEEQ(path.c_str(), file.GetFilePath());
    file.Close();
    EXPECT_EQ("0123", folder.Read("file"));
    EXPECT_EQ(CFileException::invalidFile, CauseOf("", [&] { file.Write("x", 1); }));

    CFile(path.c_str(), CFile::modeWrite | CFile::modeCreate | CFile::modeNoTruncate).Close();
    EXPECT_EQ("0123", folder.Read("file"));
    CFile(path.c_str(), CFile::modeWrite | CFile::modeCreate).Close();
    EXPECT_EQ("", folder.Read("file"));

    CFile::Rename(path.c_str(), folder.Path("renamed").c_str());
    EXPECT_TRUE(folder.Exists("renamed"));
    EXPECT_EQ(CFileException::fileNotFound, CauseOf(path, [&] { CFile::Rename(path.c_str(), "x"); }));
    CFile::Remove(folder.Path("renamed").c_str());
    EXPECT_EQ(CFileException::fileNotFound, CauseOf(path, [&] { CFile::Remove(path.c_str()); }));
}

TEST(CFile, OpensAsItsFlagsSay)
{
    const TestFolder folder;
    folder.Write("file", "0123");
    const std::string path = folder.Path("file");
    const auto opens = [&](UINT mode) {
        const int cause = CauseOf(path, [&] { CFile other(path.c_str(), mode | CFile::shareDenyNone); });
        EXPECT_TRUE(cause == CFileException::none || cause == CFileException::sharingViolation);
        return cause == CFileException::none;
    };
    static constexpr struct {
        UINT flags;
        bool reads, writes;           // whether the file does
        bool othersRead, othersWrite; // whether another one may meanwhile
    } cases[] = {{CFile::modeRead | CFile::shareCompat, true, false, false, false},
                 {CFile::modeWrite | CFile::shareExclusive, false, true, false, false},
                 {CFile::modeReadWrite | CFile::shareDenyWrite, true, true, true, false},
                 {CFile::modeRead | CFile::shareDenyRead, true, false, false, true},
                 {CFile::modeRead | CFile::shareDenyNone | CFile::modeNoInherit, true, false, true, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.flags);
        CFile file(path.c_str(), c.flags);
        char byte = 'x';
        EXPECT_EQ(c.reads, CauseOf(path, [&] { file.Read(&byte, 1); }) == CFileException::none);
        EXPECT_EQ(c.writes, CauseOf(path, [&] { file.Write(&byte, 1); }) == CFileException::none);
        EXPECT_EQ(c.othersRead, opens(CFile::modeRead));
        EXPECT_EQ(c.othersWrite, opens(CFile::modeWrite));
        DWORD information = 0;
        EXPECT_TRUE(GetHandleInformation(file.m_hFile, &information));
        EXPECT_EQ((c.flags & CFile::modeNoInherit) == 0, (information & HANDLE_FLAG_INHERIT) != 0);
    }
    EXPECT_STRCASEEQ(path.c_str(), CFile(folder.Path(".\\file").c_str(), CFile::modeRead).GetFilePath());
}

namespace {

/// A size whose low part is what a failure looks like.
constexpr ULONGLONG kHuge = 0x1FFFFFFFF;

DWORD WINAPI HugeSize(HANDLE, LPDWORD high)
{
    *high = static_cast<DWORD>(kHuge >> 32);
    return static_cast<DWORD>(kHuge);
}

} // namespace

TEST(CFile, CountsBeyond32Bits)
{
    const TestFolder folder;
    CFile file(folder.Path("file").c_str(), CFile::modeReadWrite | CFile::modeCreate);
    SetLastError(ERROR_ACCESS_DENIED);                // of an earlier call
    EXPECT_EQ(kHuge, file.Seek(kHuge, CFile::begin)); // the file stays empty
    EXPECT_EQ(kHuge, file.GetPosition());
    const ImportPatch patch("ZOAFX.DLL", "GetFileSize", &HugeSize);
    SetLastError(ERROR_ACCESS_DENIED);
    EXPECT_EQ(kHuge, file.GetLength());
}

TEST(CFile, ReportsEveryFailingCall)
{
    const TestFolder folder;
    const std::string path = folder.Path("file");
    CFile file(path.c_str(), CFile::modeReadWrite | CFile::modeCreate);
    const HANDLE handle = file.m_hFile;
    FaultSource source("file calls"), full("full disk");
    const ZO_FAULTY_CALL(WriteFile) write(source, "ZOAFX.DLL", FALSE, ERROR_DISK_FULL), part(full, "ZOAFX.DLL", TRUE);
    const ZO_FAULTY_CALL(ReadFile) read(source, "ZOAFX.DLL", FALSE, ERROR_CRC);
    const ZO_FAULTY_CALL(SetEndOfFile) setEnd(source, "ZOAFX.DLL", FALSE, ERROR_DISK_FULL);
    const ZO_FAULTY_CALL(FlushFileBuffers) flush(source, "ZOAFX.DLL", FALSE, ERROR_WRITE_FAULT);
    const ZO_FAULTY_CALL(GetFileSize) size(source, "ZOAFX.DLL", INVALID_FILE_SIZE, ERROR_INVALID_HANDLE);
    const ZO_FAULTY_CALL(SetFilePointer) seek(source, "ZOAFX.DLL", INVALID_SET_FILE_POINTER, ERROR_SEEK);
    const ZO_FAULTY_CALL(CloseHandle) close(source, "ZOAFX.DLL", FALSE, ERROR_WRITE_FAULT);
    char buffer[4];
    const std::tuple<FaultSource*, int, int, std::function<void()>> cases[] = {
        // the call that fails, and how
        {&source, 1, CFileException::diskFull, [&] { file.Write("0123", 4); }},
        {&full, 1, CFileException::diskFull, [&] { file.Write("0123", 4); }},
        {&source, 1, CFileException::hardIO, [&] { file.Read(buffer, 4); }},
        {&source, 1, CFileException::badSeek, [&] { file.SetLength(2); }},
        {&source, 2, CFileException::diskFull, [&] { file.SetLength(2); }},
        {&source, 1, CFileException::hardIO, [&] { file.Flush(); }},
        {&source, 1, CFileException::invalidFile, [&] { file.GetLength(); }},
        {&source, 1, CFileException::hardIO, [&] { file.Close(); }}, // it is closed all the same
    };
    for (const auto& [failing, call, cause, operation] : cases) {
        failing->Arm(call, false);
        EXPECT_EQ(cause, CauseOf(path, operation));
        failing->Disarm();
        EXPECT_EQ(CFileException::none, CauseOf(path, operation));
    }
    EXPECT_EQ(INVALID_HANDLE_VALUE, file.m_hFile);
    CloseHandle(handle);
}
