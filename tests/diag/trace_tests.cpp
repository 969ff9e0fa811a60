#include "trace_fixture.h"

#include "support/registered_product.h"

#include <clocale>

namespace {

// A fixed moment and a fixed machine, for banners that can be compared byte for byte.
DWORD s_versionFlags;
DWORD s_freeClusters;
constexpr DWORD kNoDisk = MAXDWORD;

void WINAPI June30(SYSTEMTIME* time) { *time = {2000, 6, 5, 30, 10, 15, 2, 77}; }
void WINAPI SomeMemory(MEMORYSTATUS* status) { status->dwTotalPhys = 67108863; }
BOOL WINAPI SomeSpace(LPCSTR, DWORD* sectors, DWORD* bytes, DWORD* freeClusters, DWORD* clusters)
{
    *sectors = 8;
    *bytes = 512;
    *freeClusters = s_freeClusters;
    *clusters = 0xFFFFFFFF;
    return s_freeClusters != kNoDisk;
}
/// The executable's version record, with 4.5.6.7 and flags of the test's choice.
BOOL WINAPI OtherVersion(LPCVOID data, LPCSTR path, LPVOID* value, UINT* size)
{
    const BOOL found = VerQueryValueA(data, path, value, size);
    if (found && std::string(path) == "\\") {
        auto* fixed = static_cast<VS_FIXEDFILEINFO*>(*value);
        fixed->dwFileVersionMS = MAKELONG(5, 4);
        fixed->dwFileVersionLS = MAKELONG(7, 6);
        fixed->dwFileFlags = s_versionFlags;
    }
    return found;
}

DWORD WINAPI FourGigabytes(HANDLE file, LONG, LONG* high, DWORD)
{
    SetFilePointer(file, 0, nullptr, FILE_END);
    return *high = 1, 5;
}

DWORD s_ticks;
DWORD WINAPI Ticks() { return s_ticks; }

} // namespace

TEST(Trace, NamesEverythingByTheAsciiLettersBeforeTheFirstDotInEveryLocale)
{
    const std::string own = TestTrace::PlainName(), locale = std::setlocale(LC_CTYPE, nullptr);
    const std::pair<std::string, std::string> rows[] = {
        {own, own},
        {own + ".exe", own},
        {own + "azAZ09.b.c", own + "azAZ09"},
        {"my app-2" + own, "myapp2" + own},
        {"C:\\" + own + "\xE4_\xDF", "C" + own},
        // A second byte that is no letter A; another system's programs, in the same folder, have the file without
        // letters.
        {IsDoubleByte() ? "\x83\x41" + own : ".x", IsDoubleByte() ? own : ""},
    };
    for (const char* category : {"C", ""}) {
        std::setlocale(LC_CTYPE, category);
        EXPECT_EQ(*category == '\0' && !IsDoubleByte(), std::isalnum(0xE4) != 0) << "the locale has more letters";
        for (const auto& [name, base] : rows) {
            SCOPED_TRACE(name);
            const TestTrace names(base);
            CZoTrace trace;
            ASSERT_TRUE(trace.Open(name.c_str(), 1, FALSE));
            EXPECT_EQ(names.Path(), (LPCSTR)trace.GetFileName());
            EXPECT_NE("(none)", names.Read());
            const HANDLE mutex = OpenMutexA(SYNCHRONIZE, FALSE, names.MutexName().c_str());
            EXPECT_NE(nullptr, mutex);
            CloseHandle(mutex);
            EXPECT_EQ(1u, BlockView(names)->openCount);
            trace.Close();
            EXPECT_STREQ("", trace.GetFileName());
        }
    }
    std::setlocale(LC_CTYPE, locale.c_str());
}

TEST(Trace, BannersTellModuleAndSystemByteForByte)
{
    static constexpr const char* systems[] = {"Windows v3.10 Build 0", "Windows 95 v4.10", "Windows NT v4.0 Build 1381",
                                              "Windows NT v6.2 Build 9200"}; // as told without a manifest
    const struct {
        DWORD flags, freeClusters;
        const char *version, *space; ///< null: there is none
    } cases[] = {
        {0, 203086, "", "812344"},
        {VS_FF_PRERELEASE | VS_FF_PATCHED, 203086, " (PreRelease, Patched)", "812344"},
        {VS_FF_DEBUG, 0x100000, " (Debug)", "0"}, // 4 GB are nothing in 32 bits
        {VS_FF_DEBUG | VS_FF_PRERELEASE | VS_FF_PATCHED, 0x1FFFFF, " (Debug, PreRelease, Patched)", "4194300"},
        {VS_FF_PATCHED | VS_FF_INFOINFERRED, kNoDisk, " (Patched)", nullptr},
        {0, 0, nullptr, nullptr},
    };
    const ImportPatch clock(kZogbl, "GetLocalTime", &June30), memory(kZogbl, "GlobalMemoryStatus", &SomeMemory),
        disk(kZogbl, "GetDiskFreeSpaceA", &SomeSpace), record(kZogbl, "VerQueryValueA", &OtherVersion);
    char morning[16] = {}; // as the user's locale has it
    GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_S1159, morning, sizeof morning);
    for (const auto& c : cases) {
        std::optional<RegisteredProduct> product;
        if (c.version != nullptr)
            product.emplace();
        s_versionFlags = c.flags;
        s_freeClusters = c.freeClusters;
        OpenTrace trace;
        trace.Close();
        const auto line = [&](const std::string& verb) {
            return kStars + trace.FileName() + " - " + verb + " 06/30/00 10:15:02 " + morning + "\r\n";
        };
        std::string system;
        if (c.version != nullptr)
            system = std::string("\r\nVersion: 4.5.6.7") + c.version + "\r\nPhysical Memory: 64MB\r\n" +
                     (c.space != nullptr ? std::string("Free Disk Space: ") + c.space + "KB\r\n" : "") +
                     "Operating System: " + systems[static_cast<int>(Family())] + "\r\n" + kStars;
        EXPECT_EQ(line("Started") + system + line("Stopped") + kStars, trace.Read());
    }
}

// Opening and closing -------------------------------------------------------------------------------------------------

TEST(Trace, IsSharedByAllThatOpenIt)
{
    OpenTrace first;
    CZoTrace second;
    first.Output("one\r\n");
    EXPECT_EQ(1u, first.GetOpenCount());
    ASSERT_TRUE(second.Open(first.Name(), 0, FALSE)) << "joins, and empties nothing";
    EXPECT_TRUE(second.Open("Other", 7, FALSE)) << "is open already";
    EXPECT_TRUE(first.GetOpenCount() == 2 && second.GetOpenCount() == 2 && second.GetLevel() == 0);
    EXPECT_EQ(first.Path(), (LPCSTR)second.GetFileName());

    second.EnableTimeStamp(FALSE);
    second.Output("two\r\n");
    first.Close();
    EXPECT_EQ("one\r\ntwo\r\n", first.ReadBody()) << "no stop banner yet";
    EXPECT_TRUE(first.GetOpenCount() == 0 && second.GetOpenCount() == 1);

    // The first to open comes again as one that joined: it knows neither the start nor the name.
    const ImportPatch ticks(kZogbl, "GetTickCount", &Ticks);
    s_ticks = 4000;
    EXPECT_TRUE(first.Open(first.Name(), 1, FALSE));
    first.EnableTimeStamp(TRUE);
    first.Output("three\r\n");
    second.Close();
    first.Close();
    const std::string expected = "one\r\ntwo\r\n(00:00:04.000) three\r\n" + kStars + " - Stopped ";
    EXPECT_EQ(expected, first.ReadBody().substr(0, expected.size()));
}

TEST(Trace, OnlyTheFirstOpenerEmptiesTheFile)
{
    const struct {
        size_t size; ///< of the file that is there; 0 none
        BOOL append;
        bool isKept;
        DWORD gigabytes = 0; ///< that it has besides
    } cases[] = {{0, TRUE, false},      {0, FALSE, false},      {100, TRUE, true},      {100, FALSE, false},
                 {1048575, TRUE, true}, {1048576, TRUE, false}, {1048577, TRUE, false}, {100, TRUE, false, 4}};
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        const TestTrace names;
        if (c.size > 0)
            names.Write(std::string(c.size, 'x'));
        std::optional<ImportPatch> size;
        if (c.gigabytes > 0)
            size.emplace(kZogbl, "SetFilePointer", &FourGigabytes);
        CZoTrace trace;
        ASSERT_TRUE(trace.Open(names.Name(), 1, c.append));
        trace.Close();
        const std::string expected = std::string(c.isKept ? c.size : 0, 'x') + kStars;
        EXPECT_EQ(expected, names.Read().substr(0, expected.size()));
    }
}

TEST(Trace, LevelAndSwitchesLiveAsLongAsTheyShould)
{
    OpenTrace trace;
    EXPECT_EQ(1, trace.GetLevel());
    for (const auto& [set, got] : {std::pair{0, 1}, {2, 2}, {10, 10}, {65535, 65535}, {1, 1}}) {
        trace.SetLevel(static_cast<WORD>(set));
        EXPECT_EQ(got, trace.GetLevel());
    }
    trace.Pause();
    trace.Output("lost\r\n");
    trace.OutputBlock("lost", 4);
    EXPECT_EQ("(no banner)", trace.Traced()) << "paused";
    trace.Resume();
    trace.Output("seen\r\n");
    EXPECT_EQ("seen\r\n", trace.Traced());
    trace.Output("in the buffer\r\n");
    trace.Pause();
    trace.Close();
    EXPECT_EQ("seen\r\nin the buffer\r\n", trace.ReadBody()) << "what is in the buffer may be another's";
    trace.Output("closed\r\n");
    trace.OutputBlock("closed", 6);
    trace.Flush();
    EXPECT_EQ(0, trace.GetLevel());
    trace.SetLevel(5);
    EXPECT_EQ(0, trace.GetLevel()) << "closed";

    ASSERT_TRUE(trace.Open(trace.Name(), 10, FALSE));
    trace.Output("no stamp, no pause\r\n");
    EXPECT_EQ("no stamp, no pause\r\n", trace.ReadBody()) << "at once";
    trace.OutputBlock("a", 1);
    EXPECT_EQ("no stamp, no pause\r\nBlock Print: 1 Bytes\r\na  \r\nEnd Block Print\r\n", trace.ReadBody());
    trace.Close();
    ASSERT_TRUE(trace.Open(trace.Name(), 0, FALSE));
    EXPECT_EQ(0, trace.GetLevel());
}

// Text ----------------------------------------------------------------------------------------------------------------

TEST(Trace, StampsTellTheTimeSinceTheStart)
{
    const ImportPatch ticks(kZogbl, "GetTickCount", &Ticks);
    s_ticks = 0xFFFFFF00; // the counter wraps while the trace is open
    OpenTrace trace(TRUE);
    std::string expected;
    for (const auto& [elapsed, stamp] : {std::pair<DWORD, const char*>{0, "(00:00:00.000) "},
                                         {3250, "(00:00:03.250) "},
                                         {3599999, "(00:59:59.999) "},
                                         {3600000, "(01:00:00.000) "},
                                         {359999999, "(99:59:59.999) "},
                                         {360000000, "(100:00:00.000) "},
                                         {0xFFFFFFFF, "(1193:02:47.295) "}}) {
        s_ticks = 0xFFFFFF00 + elapsed;
        EXPECT_STREQ(stamp, trace.FormatRelativeTime());
        trace.Output("x\r\n");
        expected += std::string(stamp) + "x\r\n";
    }
    EXPECT_EQ(expected, trace.Traced());
}

TEST(Trace, CutsTextThatIsTooLong)
{
    OpenTrace trace;
    LPCSTR const none = nullptr;
    trace.Output(none);
    std::string expected;
    for (const size_t length : {0u, 1u, 510u, 511u, 512u, 1023u, 1024u, 1025u, 5000u}) {
        const std::string text(length, static_cast<char>('a' + length % 26));
        trace.Output("%s", text.c_str());
        trace.Output("|");
        expected += text.substr(0, 511) + "|";
    }
    if (IsDoubleByte()) {
        std::string text = "x";
        for (int i = 0; i < 300; ++i)
            text += "\x83\x41";
        trace.Output("%s", text.c_str());
        expected += text.substr(0, 511);
        trace.Output("y%s", text.c_str());
        expected += "y" + text.substr(0, 509); // the last character would be cut in two
    }
    EXPECT_EQ(expected, trace.Traced());
}

TEST(Trace, DumpsBlocks)
{
    const ImportPatch ticks(kZogbl, "GetTickCount", &Ticks);
    s_ticks = 0;
    OpenTrace trace;
    std::string expected;
    const std::string all16 = "0123456789ABCDEF", line16 = "0  1  2  3  4  5  6  7  8  9  A  B  C  D  E  F  \r\n";
    const std::pair<std::string, std::string> rows[] = {
        {"", ""},
        {std::string("AB\r\n\0", 5), "A  B  0D 0A 00 \r\n"},
        {" ~\x1F\x20\x7F\x80\xFF", "   ~  1F    \x7F  80 FF \r\n"},
        {all16, line16},
        {all16 + "x", line16 + "x  \r\n"},
    };
    for (const auto& [data, lines] : rows) {
        trace.OutputBlock(data.data(), static_cast<DWORD>(data.size()));
        expected += "Block Print: " + std::to_string(data.size()) + " Bytes\r\n" + lines + "End Block Print\r\n";
    }
    s_ticks = 3250;
    trace.EnableTimeStamp(TRUE);
    trace.OutputBlock(nullptr, 100);
    EXPECT_EQ(expected + "(00:00:03.250) Block Print: 0 Bytes\r\n(00:00:03.250) End Block Print\r\n", trace.Traced());
}

TEST(Trace, WritesWholeTextsWhenTheBufferIsFullAndLosesThemWhenTheDiskIs)
{
    FaultSource faults("disk");
    const ZO_FAULTY_CALL(WriteFile) write(faults, kZogbl, FALSE, ERROR_DISK_FULL);
    OpenTrace trace;
    EXPECT_EQ("", trace.Traced());
    for (int i = 0; i <= 16; ++i) // up to the last byte
        trace.Output("%s", std::string(i < 16 ? 511 : 16, 'x').c_str());
    EXPECT_EQ("", trace.ReadBody());
    trace.Output("behind");
    EXPECT_EQ(std::string(8192, 'x'), trace.ReadBody());
    EXPECT_EQ(std::string(8192, 'x') + "behind", trace.Traced());
    faults.Arm(1, true);
    trace.Output("lost");
    trace.Flush();
    faults.Disarm();
    trace.Output("again");
    EXPECT_EQ(std::string(8192, 'x') + "behindagain", trace.Traced());
}

// What others can do to it --------------------------------------------------------------------------------------------

TEST(Trace, SurvivesADamagedBlock)
{
    for (const DWORD pending : {8193u, 0x7FFFFFFFu, 0x80000000u, 0x80002001u, 0xFFFFFFFFu}) {
        for (const DWORD openCount : {0u, 5u, 0xFFFFFFFFu}) {
            OpenTrace trace;
            CZoTrace joiner;
            trace.Flush();
            const BlockView block(trace);
            block->pending = pending;
            block->openCount = openCount;
            trace.Output("after\r\n");
            EXPECT_EQ("after\r\n", block.Pending());
            block->pending = pending;
            trace.Flush();
            EXPECT_EQ(0u, block->pending);
            block->pending = pending;
            EXPECT_TRUE(joiner.Open(trace.Name(), 1, TRUE));
            EXPECT_EQ(openCount == 0xFFFFFFFF ? openCount : openCount + 1, joiner.GetOpenCount());
            joiner.OutputBlock("x", 1);
            joiner.Close();
            trace.Close();
            EXPECT_TRUE(openCount != 0 || block->openCount == 0) << "two more have closed than had opened";
            EXPECT_LT(trace.Read().size(), 2000u) << "nothing but text";
        }
    }
}

/// What the shared count says while the buffer is being written.
static const BlockView* s_block;
static DWORD s_countWhileWriting;
static BOOL WINAPI NoteCount(HANDLE file, LPCVOID data, DWORD size, DWORD* written, OVERLAPPED* overlapped)
{
    s_countWhileWriting = (*s_block)->pending;
    return WriteFile(file, data, size, written, overlapped);
}

TEST(Trace, GoesOnWhereADyingWriterStopped)
{
    // The buffer is marked as being written, and this much of it is in the file, which ended with the same line before.
    const std::string line = "same line\r\n", buffer = line + line + "last line\r\n";
    for (const size_t written : {size_t{0}, size_t{5}, line.size(), buffer.size()}) {
        for (const bool isCut : {false, true}) { // the file, from outside, after the death
            SCOPED_TRACE(written);
            OpenTrace trace;
            trace.Output("%s", line.c_str());
            trace.Flush();
            const std::string before = trace.Read();
            const DWORD count = static_cast<DWORD>(0x80000000 | before.size() << 14 | buffer.size());
            const BlockView block(trace);
            buffer.copy(const_cast<char*>(block->buffer), buffer.size());
            block->pending = count;
            trace.Write(isCut ? "" : before + buffer.substr(0, written));
            s_block = &block;
            s_countWhileWriting = count;
            {
                const ImportPatch note(kZogbl, "WriteFile", &NoteCount);
                trace.Output("end\r\n");
            }
            EXPECT_EQ(isCut ? buffer.size() | 0x80000000 : count, s_countWhileWriting) << "for who finishes it next";
            trace.Flush();
            EXPECT_EQ((isCut ? "" : line) + buffer + "end\r\n", isCut ? trace.Read() : trace.ReadBody());
        }
    }
}

TEST(Trace, OpensWholeOrNotAtAll)
{
    const RegisteredProduct product;
    const TestTrace names;
    const CString name = names.Name();
    const auto tryEach = [&](FaultSource& faults, bool mustFail) {
        for (const bool joins : {false, true}) {
            RunFaultActs(faults, [&](const FaultRun& run) {
                CZoTrace first, trace;
                EXPECT_EQ(joins, joins && first.Open(name, 1, FALSE));
                const BOOL opened = run.Act([&] { return trace.Open(name, 3, TRUE) | (trace.Output("x\r\n"), FALSE); });
                EXPECT_TRUE(!mustFail || run.Fired() != (opened != FALSE));
                EXPECT_EQ(opened ? 3 : 0, trace.GetLevel());
                EXPECT_EQ(opened, !trace.GetFileName().IsEmpty());
                EXPECT_EQ((joins ? 1u : 0u) + (opened ? 1u : 0u), (joins ? first : trace).GetOpenCount());
                EXPECT_FALSE(names.IsLockHeld());
            });
        }
    };
    {
        FaultSource faults("system objects");
        const ZO_FAULTY_CALL(CreateMutexA) mutex(faults, kZogbl, nullptr, ERROR_ACCESS_DENIED);
        const ZO_FAULTY_CALL(CreateFileMappingA) mapping(faults, kZogbl, nullptr, ERROR_NOT_ENOUGH_MEMORY);
        const ZO_FAULTY_CALL(MapViewOfFile) view(faults, kZogbl, nullptr, ERROR_NOT_ENOUGH_MEMORY);
        tryEach(faults, true);
        AllocationFaults allocations; // of the names: FALSE; of the banner: a shorter banner
        tryEach(allocations, false);
    }
    FaultSource faults("path");
    const ZO_FAULTY_CALL(GetModuleFileNameA) path(faults, kZogbl, MAX_PATH, ERROR_INSUFFICIENT_BUFFER);
    CZoTrace trace;
    faults.Arm(1, false);
    EXPECT_FALSE(trace.Open(name, 1, FALSE)) << "the executable's path is too long";
    faults.Disarm();

    FaultSource files("files");
    const ZO_FAULTY_CALL(CreateFileA) create(files, kZogbl, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
    names.Write("before");
    for (const bool isRefusedTwice : {false, true}) { // the file has come up meanwhile, or not
        files.Arm(1, isRefusedTwice);
        EXPECT_EQ(!isRefusedTwice, trace.Open(name, 1, TRUE) != FALSE) << "the first opener tries to create it";
        files.Disarm();
        trace.Close();
        EXPECT_EQ(0u, names.Read().find("before"));
    }
    CZoTrace first;
    ASSERT_TRUE(first.Open(name, 1, FALSE));
    files.Arm(1, false);
    ZO_EXPECT_NO_LEAK(EXPECT_FALSE(trace.Open(name, 1, TRUE))); // a joiner does not
    EXPECT_EQ(1u, first.GetOpenCount());
    EXPECT_FALSE(names.IsLockHeld());
}

TEST(Trace, WithoutTheLockNothingIsTouched)
{
    FaultSource faults("lock");
    const ZO_FAULTY_CALL(WaitForSingleObject) wait(faults, kZogbl, WAIT_FAILED, ERROR_INVALID_HANDLE);
    OpenTrace first;
    first.Flush();
    const std::string before = first.Read();
    CZoTrace trace;
    faults.Arm(1, true);
    ZO_EXPECT_NO_LEAK(EXPECT_FALSE(trace.Open(first.Name(), 1, TRUE)));
    first.Output("x\r\n");
    first.OutputBlock("x", 1);
    EXPECT_EQ(0u, first.GetOpenCount());
    faults.Disarm();
    first.Flush();
    EXPECT_EQ(before, first.Read());
    faults.Arm(1, true);
    first.Close();
    EXPECT_EQ(before, first.Read());
    EXPECT_STREQ("", first.GetFileName());
}

// The user's level ----------------------------------------------------------------------------------------------------

using Messages = std::vector<std::tuple<HWND, UINT, WPARAM, LPARAM>>;

static Messages s_posted;
static BOOL WINAPI NoteMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return s_posted.emplace_back(window, message, wParam, lParam), TRUE;
}

TEST(TraceLevel, IsKeptForTheUserAndToldToAll)
{
    const UINT notify = RegisterWindowMessageA("CZoTRACE_NOTIFY");
    EXPECT_EQ(notify, CZoTrace::GetNotifyMessage());
    const ImportPatch post(kZogbl, "PostMessageA", &NoteMessage);
    CZoTrace::SetRegTraceLevel(3);
    EXPECT_EQ(0, CZoTrace::GetRegTraceLevel()) << "no product is registered";

    RegisteredProduct product;
    EXPECT_EQ(0, CZoTrace::GetRegTraceLevel());
    for (const WORD level : {0, 3, 3, 65535}) // none is as good as 0
        CZoTrace::SetRegTraceLevel(level);
    EXPECT_EQ(65535, CZoTrace::GetRegTraceLevel());

    const auto& key = product.UserKey();
    DWORD stored = 0;
    EXPECT_EQ(0u, product.Config().GetValue(ZO_MODE_LOCAL_MACHINE, key, "FaxTrace", stored, 0));
    EXPECT_EQ(65535u, stored);
    product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, key, "FaxTrace", DWORD{0x20007});
    EXPECT_EQ(7, CZoTrace::GetRegTraceLevel()) << "16 bits";
    product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, key, "FaxTrace", "text");
    EXPECT_EQ(0, Family() == WindowsFamily::kWin32s ? 0 : CZoTrace::GetRegTraceLevel());

    FaultSource faults("registry");
    const ZO_FAULTY_CALL(RegCreateKeyExA) create(faults, kZogbl, ERROR_ACCESS_DENIED);
    const ZO_FAULTY_CALL(RegCreateKeyA) createOld(faults, kZogbl, ERROR_ACCESS_DENIED);
    faults.Arm(1, true);
    CZoTrace::SetRegTraceLevel(9); // a change that does not take place
    EXPECT_EQ((Messages{{HWND_BROADCAST, notify, 0, 3}, {HWND_BROADCAST, notify, 3, 65535}}), s_posted);
}
