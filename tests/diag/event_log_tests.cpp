#include "support/test.h"

#include <zogbl/event_log.h>

#include <afxcoll.h>

namespace {

constexpr DWORD kError = ERROR_DISK_FULL;
constexpr DWORD kBadHandle = ERROR_INVALID_HANDLE;

using Results = std::vector<DWORD>; // in the order of the calls

const HANDLE kLog = reinterpret_cast<HANDLE>(INTPTR_MAX - 4); // of as many bits as there are
std::string g_calls;

BOOL Note(const char* what, HANDLE log, LPCSTR text)
{
    (g_calls += what) += std::string(log == kLog ? " log " : " ") + (text != nullptr ? text : "(null)") + "; ";
    return log == kLog;
}
HANDLE WINAPI OpenLog(LPCSTR server, LPCSTR file) { return Note(server, kLog, file), kLog; }
BOOL WINAPI BackupLog(HANDLE log, LPCSTR file) { return Note("back up", log, file); }
BOOL WINAPI ClearLog(HANDLE log, LPCSTR file) { return Note("clear", log, file); }
BOOL WINAPI CloseLog(HANDLE log) { return Note("close", log, ""); }

} // namespace

TEST(EventLog, WritingAndReadingComeToNothing)
{
    CZoGlobalEventLog log;
    CZoGlobalEventLogSource source;
    DWORD first = 7, second = 8;
    CString text("text");
    CStringArray strings;
    FILEERRORDATA error = {sizeof error};
    EXPECT_EQ(0u, log.Open("server", "source") | log.Read(0, 0, &text, 0, first, second) | log.GetOldestRecord(first) |
                      log.GetRecordCount(second) | source.Open("source") | source.AddEntry("a", "b", "c", 1, "d", 2) |
                      source.RemoveEntry("b") | source.GetEntry("b", text) | source.Close() |
                      source.Report(1, 2, 3, 0, nullptr, 0, nullptr) | source.Report(1, 2, 3, &strings, 0, nullptr) |
                      ZoLogFileError(&error, 1, 2, 3) | ZoLogFileErrorData(&error, 1, 2, 3, &text, 4));
    EXPECT_TRUE(first == 7 && second == 8 && text == "text");
}

TEST(EventLog, IsAFileElsewhere)
{
    ZO_ONLY_IN(!IsNt(), "Windows NT has a log of its own");
    const TestFolder folder;
    const std::string file = folder.Path("log"), copy = folder.Path("copy"), missing = folder.Path("missing\\copy");
    folder.Write("log", "entries");
    folder.Write("copy", "older");
    CZoGlobalEventLog log;
    EXPECT_EQ((Results{ERROR_PATH_NOT_FOUND, kBadHandle, kBadHandle, 0, 0}),
              (Results{log.OpenBackup(nullptr, missing.c_str()), log.Close(), log.Clear(nullptr),
                       log.OpenBackup(nullptr, file.c_str()), log.BackUp(copy.c_str())}));
    EXPECT_EQ("entries", folder.Read("copy"));
    EXPECT_EQ(static_cast<DWORD>(ERROR_PATH_NOT_FOUND), log.Clear(missing.c_str()));
    EXPECT_EQ("entries", folder.Read("log"));
    EXPECT_EQ(0u, log.Clear(copy.c_str()));
    EXPECT_EQ("", folder.Read("log"));
    {
        const CurrentFolder current(folder.Path());
        EXPECT_EQ(0u, log.OpenBackup(nullptr, "copy")) << "closes the other";
    } // means the same file here
    EXPECT_TRUE(DeleteFileA(file.c_str()));
    EXPECT_EQ("entries", folder.Read("copy"));
    EXPECT_EQ((Results{0, 0, kBadHandle}), (Results{log.Clear(nullptr), log.Close(), log.Close()}));
    EXPECT_EQ("", folder.Read("copy"));
    EXPECT_NE(0u, log.BackUp(file.c_str())) << "no name either";
}

TEST(EventLog, IsTheSystemsOnWindowsNt)
{
    ZO_ONLY_IN(IsNt(), "the other systems have no event log");
    EXPECT_EQ(kBadHandle, CZoGlobalEventLog().Close()) << "asks the system, with no handle";
    {
        const ImportPatch open(kZogbl, "OpenBackupEventLogA", &OpenLog);
        const ImportPatch backup(kZogbl, "BackupEventLogA", &BackupLog);
        const ImportPatch clear(kZogbl, "ClearEventLogA", &ClearLog);
        const ImportPatch close(kZogbl, "CloseEventLog", &CloseLog);
        CZoGlobalEventLog log;
        EXPECT_EQ(0u, log.OpenBackup("server", "file") | log.BackUp("copy") | log.Clear(nullptr) | log.Clear("copy"));
        CZoGlobalEventLog shared(log);
        EXPECT_EQ(0u, shared.BackUp("second"));
        shared = CZoGlobalEventLog();
        EXPECT_EQ(0u, log.Close());
    }
    EXPECT_EQ("server log file; back up log copy; clear log (null); clear log copy; back up log second; close ; "
              "close log ; close ; close ; ",
              g_calls);
}

TEST(EventLog, EachStepThatFailsIsTheResult)
{
    const TestFolder folder;
    const std::string file = folder.Path("log"), copy = folder.Path("copy");
    const auto body = [&](const FaultRun& run, DWORD error) {
        folder.Write("log", "entries");
        DeleteFileA(copy.c_str());
        CZoGlobalEventLog log;
        const DWORD opened = log.OpenBackup(nullptr, file.c_str());
        const DWORD copied = opened == 0 ? log.BackUp(copy.c_str()) : opened;
        const DWORD status = copied == 0 ? log.Clear(IsNt() ? nullptr : copy.c_str()) : copied;
        run.Stop();
        EXPECT_EQ(run.Fired() ? error : 0, status);
        EXPECT_EQ(run.Fired() || IsNt() ? "entries" : "", folder.Read("log"));
    };
    RunFaultLoop<AllocationFaults>([&](const auto& run) { body(run, ERROR_NOT_ENOUGH_MEMORY); });
    {
        FileFaults faults(kError);
        const ZO_FAULTY_CALL(OpenBackupEventLogA) open(faults, kZogbl, nullptr, kError);
        const ZO_FAULTY_CALL(BackupEventLogA) backup(faults, kZogbl, FALSE, kError);
        const ZO_FAULTY_CALL(ClearEventLogA) clear(faults, kZogbl, FALSE, kError);
        RunFaultLoop(faults, [&](const auto& run) { body(run, kError); });
    }
    CZoGlobalEventLog log;
    FaultSource lies("failure without an error");
    const ZO_FAULTY_CALL(OpenBackupEventLogA) open(lies, kZogbl, nullptr);
    const ZO_FAULTY_CALL(CreateFileA) create(lies, kZogbl, INVALID_HANDLE_VALUE);
    lies.Arm(1, true);
    SetLastError(0);
    EXPECT_EQ(0u, log.OpenBackup(nullptr, file.c_str())) << "counts as success";
    EXPECT_TRUE(IsNt() || log.BackUp(copy.c_str()) == 0) << "by its name";
}
