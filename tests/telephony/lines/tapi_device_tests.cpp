// Devices and their configuration, translation, boxes; machines without the service, or without parts of it.
#include "support/test.h"
#include "tapi_fixture.h"

namespace {

using TapiDevice = TapiTest;

std::string List(const CStringArray& names)
{
    std::string list;
    for (INT_PTR i = 0; i < names.GetSize(); ++i)
        list += std::string(names.GetAt(i)) + "|";
    return list;
}

// In a process of its own, for what is missing stays missing

std::map<std::string, int> g_lookups;
std::string g_missing; // a function or the library

FARPROC WINAPI FindUnlessMissing(HMODULE module, LPCSTR name)
{
    ++g_lookups[name];
    return g_missing == name ? nullptr : GetProcAddress(module, name);
}
HMODULE WINAPI LoadUnlessMissing(LPCSTR name)
{
    ++g_lookups[name];
    return g_missing == name ? nullptr : LoadLibraryA(name);
}
/// What was to be started: command line, how it is shown, flags.
std::string g_started;

BOOL WINAPI StartNothing(LPCSTR, LPSTR commandLine, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD flags,
                         LPVOID, LPCSTR, LPSTARTUPINFOA startup, LPPROCESS_INFORMATION process)
{
    char text[100];
    std::snprintf(text, sizeof text, "%s, %u, %#lx", commandLine, startup->wShowWindow, flags);
    g_started = text;
    process->hProcess = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    process->hThread = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    return TRUE;
}

/// Does what calls most functions. \return for each step whether it succeeds, and its code.
std::string TryEverything()
{
    TestLine line(TRUE);
    std::string report;
    const auto note = [&](BOOL succeeded) {
        report += (succeeded ? "yes " : "no ") + std::to_string(line.GetLastTAPIError()) + "; ";
    };
    note(line.GrabThePort());
    note(line.HangupCall());
    note(line.EnableCallAnswer(TRUE));
    return report;
}

ZO_CHILD(Misses)
{
    g_missing = child.Argument(0);
    const ImportPatch find(kLibrary, "GetProcAddress", &FindUnlessMissing);
    const ImportPatch load(kLibrary, "LoadLibraryA", &LoadUnlessMissing);
    const std::string report = TryEverything();
    EXPECT_EQ(report, TryEverything());
    EXPECT_EQ(1u, g_lookups.count(g_missing));
    for (const auto& [name, count] : g_lookups)
        EXPECT_EQ(1, count) << name << " is not tried again";
    child.Report(report);
}

} // namespace

TEST(TapiMissing, IsMissedForGoodAndNothingElseWith)
{
    const std::pair<const char*, std::string> kCases[] = {
        {"TAPI32.DLL", "no 12; yes 0; no 12; "},
        {"lineInitialize", "no 12; yes 0; no 12; "},
        {"lineSetStatusMessages", "yes 12; yes 0; yes 12; "},
        {"lineDeallocateCall", "yes 0; yes 12; yes 0; "},
    };
    for (const auto& [missing, report] : kCases) {
        ChildProcess child("Misses", {missing});
        child.Finish();
        EXPECT_EQ(std::vector{report}, child.Reports()) << missing;
    }
}

TEST_F(TapiDevice, AreListedWithTheirRegistryKeys)
{
    telsim.AddLine();
    for (DWORD device = 0; device < 3; ++device) {
        ASSERT_TRUE(telsim.ConfigureLine(device, "name", "Modem"));
        ASSERT_TRUE(telsim.ConfigureLine(device, "key", "Key"));
    }
    const struct {
        const char* function; // behaves like this for the second device
        DWORD action, value;
        std::string names, keys;
    } kCases[] = {
        {"lineGetDevCaps", TELSIM_NEED_MORE, 5000, "Modem|Modem|Modem|", "Key|Key|Key|"},
        {"lineNegotiateAPIVersion", TELSIM_FAIL, LINEERR_INCOMPATIBLEAPIVERSION, "Modem|Modem|", "Key|Key|"},
        {"lineGetDevCaps", TELSIM_FAIL, LINEERR_BADDEVICEID, "Modem|Modem|", "Key|Key|"},
        {"lineGetDevCaps", TELSIM_USED_SIZE, 100, "Modem|Line Unnamed|Modem|", "Key||Key|"},
        {"lineGetDevCaps", TELSIM_BAD_OFFSETS, 235, "Modem|Line Unnamed|Modem|", "Key||Key|"},
        {"lineGetDevCaps", TELSIM_BAD_OFFSETS, 0xFFFFFFF0, "Modem|Line Unnamed|Modem|", "Key||Key|"},
        {"lineGetDevCaps", TELSIM_BAD_SIZES, 4, "Modem|Mode|Modem|", "Key||Key|"},
        {"lineGetDevCaps", TELSIM_BAD_SIZES, 0xFFFFFFF0, "Modem|Line Unnamed|Modem|", "Key||Key|"},
    };
    DWORD error = 5;
    for (const auto& test : kCases) {
        SCOPED_TRACE(std::string(test.function) + " " + std::to_string(test.action) + test.names);
        telsim.ClearRules();
        ASSERT_TRUE(telsim.SetRule(test.function, 2, FALSE, test.action, test.value));
        CStringArray names, keys;
        TestLine line(TRUE);
        const DWORD count = line.EnumerateTAPIDeviceLines(&names, error, &keys);
        EXPECT_EQ(static_cast<DWORD>(names.GetSize()), count);
        EXPECT_EQ(0u, error);
        EXPECT_EQ(test.names, List(names));
        EXPECT_EQ(test.keys, List(keys));
    }
    telsim.SetLineCount(2);
    ASSERT_TRUE(telsim.ConfigureLine(1, "format", "dbcs"));
    {
        TestLine line;
        answer = IDRETRY;
        onBox = [&] {
            telsim.AddLine();
            PumpAll();
        };
        telsim.ClearRules();
        Rule("lineGetDevCaps", TELSIM_FAIL, LINEERR_RESOURCEUNAVAIL);
        EXPECT_EQ(3u, line.EnumerateTAPIDeviceLines(nullptr, error, nullptr)) << "with the one added meanwhile";
        telsim.SetLineCount(2);
    }
    TakeTexts();
    CStringArray keys;
    EXPECT_EQ(2u, TestLine().EnumerateTAPIDeviceLines(nullptr, error, &keys));
    EXPECT_NE(std::string::npos,
              TakeTexts().find("d.\nTAPI Device #0 is: Modem\nTAPI Device #0 reg key is: Key\nTAPI uninit"));
    AllocationFaults faults;
    RunFaultLoop(faults, [&](const FaultRun& run) {
        CStringArray names, keys;
        TestLine line(TRUE);
        const DWORD count = line.EnumerateTAPIDeviceLines(&names, error, &keys);
        run.Stop();
        EXPECT_EQ(run.Fired() ? 100u : 0u, error);
        EXPECT_EQ(run.Fired() ? 10u : 0u, line.m_dwLastError);
        EXPECT_EQ(run.Fired(), count < 2);
        EXPECT_EQ(count, static_cast<DWORD>(names.GetSize()));
        EXPECT_EQ(count, static_cast<DWORD>(keys.GetSize()));
    });
}

TEST_F(TapiDevice, ConfigurationThatGrowsIsAskedForWithRoomToSpare)
{
    TestLine line(TRUE);
    line.PreConfigureDevice(nullptr, 1, TRUE);
    Rule("lineConfigDialogEdit", TELSIM_NEED_MORE, 6000);
    localSizes.clear();
    TakeTexts();
    line.PreConfigureDevice(nullptr, 1, FALSE);
    EXPECT_EQ((std::vector<SIZE_T>{5100, 12096, 22}), localSizes);
    EXPECT_EQ("Internal Error: Unable to set line configuration.\n"
              "PreConfigureDevice - lineConfigDialogEdit: Reallocating structure\n"
              "PreConfigureDevice - Reallocate device config: Reallocating structure\n",
              TakeTexts());
    FreeConfig(line);
    // But not forever.
    Rule("lineGetDevConfig", TELSIM_NEED_ENDLESS, 1, TRUE);
    localSizes.clear();
    line.PreConfigureDevice(nullptr, 1, TRUE);
    EXPECT_EQ(17u, localSizes.size());
    EXPECT_EQ(nullptr, line.m_lpDevConfig);
}

TEST_F(TapiDevice, BuffersAreReusedGrownOrRefused)
{
    TestLine line;
    TakeTexts();
    auto* block = static_cast<DWORD*>(line.ZoCheckAndReAllocBuffer(nullptr, 100, "label"));
    block[1] = 7;
    EXPECT_EQ(block, line.ZoCheckAndReAllocBuffer(block, 50, "label"));
    EXPECT_EQ(LocalSize(block), block[0]);
    EXPECT_EQ(0u, block[1]);
    void* empty = LocalAlloc(LPTR, 0);
    EXPECT_EQ(nullptr, line.ZoCheckAndReAllocBuffer(empty, 50, "empty"));
    LocalFree(empty);
    auto* params = line.CreateCallParams(reinterpret_cast<LINECALLPARAMS*>(block), "123");
    EXPECT_EQ(116u, params->dwTotalSize);
    EXPECT_EQ(DWORD{LINEBEARERMODE_PASSTHROUGH}, params->dwBearerMode);
    EXPECT_EQ(DWORD{LINEMEDIAMODE_DATAMODEM}, params->dwMediaMode);
    EXPECT_EQ(DWORD{LINECALLPARAMFLAGS_IDLE}, params->dwCallParamFlags);
    EXPECT_EQ(DWORD{LINEADDRESSMODE_ADDRESSID}, params->dwAddressMode);
    EXPECT_EQ(4u, params->dwDisplayableAddressSize);
    EXPECT_STREQ("123", reinterpret_cast<char*>(params) + params->dwDisplayableAddressOffset);
    FaultSource faults("LocalAlloc");
    const ZO_FAULTY_CALL(LocalAlloc) alloc(faults, kLibrary, nullptr);
    faults.Arm(1, true);
    EXPECT_EQ(nullptr, line.ZoCheckAndReAllocBuffer(params, 5000, "label"));
    EXPECT_EQ("emptyCreateCallParams: Reallocating structure\nlabelReallocating structure\nlabel", TakeTexts());
    EXPECT_EQ((Boxes{{10, 0x10}}), TakeBoxes());
}

TEST_F(TapiDevice, AddressesAreTranslated)
{
    TestLine line;
    auto* output = line.TranslateCanonicalToDialable(nullptr, 0, LINETRANSLATEOPTION_FORCELD, "+1 (425) 5550123");
    ASSERT_NE(nullptr, output);
    EXPECT_STREQ("T14255550123", reinterpret_cast<char*>(output) + output->dwDialableStringOffset);
    Free(output);
    EXPECT_NE(std::string::npos,
              telsim.Calls().find("version=0x10000, address=\"+1 (425) 5550123\", card=0, options=0xa"))
        << "call waiting is always cancelled";
    EXPECT_EQ(nullptr, line.TranslateCanonicalToDialable(nullptr, 0, 0, "abc"));
    EXPECT_EQ((Boxes{{21, 0x10}}), TakeBoxes());
    EXPECT_EQ(12u, line.GetLastTAPIError());
    EXPECT_FALSE(line.DisplaylineTranslateDialog());
    EXPECT_NE(std::string::npos, telsim.Calls().find("device=0, version=0x10000, address=null"));
    line.ShutdownTAPI();
    Rule("lineInitialize", TELSIM_FAIL, LINEERR_NODRIVER, TRUE);
    void* given = line.ZoCheckAndReAllocBuffer(nullptr, 50, "");
    EXPECT_EQ(nullptr, line.TranslateCanonicalToDialable(static_cast<LINETRANSLATEOUTPUT*>(given), 0, 0, "1"));
    EXPECT_FALSE(line.DisplaylineTranslateDialog());
    EXPECT_NE(std::string::npos,
              texts.find(">TranslateCanonicalToDialable failed!\n>EnableCallAnswer InitializeTAPI failed\n"));
}

TEST_F(TapiDevice, BoxesAskOnceAndAreTakenAtTheirWord)
{
    TestLine line;
    // Without a box to answer, or with the program's end at hand, nothing is tried again.
    answer = 0;
    EXPECT_FALSE(line.HandleLineErr(Error(LINEERR_INIFILECORRUPT)));
    answer = IDYES;
    PostQuitMessage(0);
    EXPECT_FALSE(line.HandleLineErr(Error(LINEERR_INIFILECORRUPT)));
    MSG message;
    ASSERT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_TRUE(line.HandleLineErr(Error(LINEERR_INIFILECORRUPT)));
    EXPECT_NE(std::string::npos, telsim.Calls().find("lineTranslateDialog(app=0, device=0, version=0x10000, add"));
    EXPECT_FALSE(line.HandleLineErr(1)) << "a request's number";
    TakeBoxes();

    FaultSource faults("CreateProcessA");
    const ZO_FAULTY_CALL(CreateProcessA) create(faults, kLibrary, FALSE);
    faults.Arm(1, true);
    telsim.SetLineCount(0);
    EXPECT_FALSE(line.GrabThePort());
    EXPECT_EQ((Boxes{{18, 0x14}, {18, 0x10}}), TakeBoxes());
    EXPECT_EQ(0x10u, line.GetLastTAPIErrorFlags());
    TakeTexts();
    EXPECT_FALSE(line.EnableCallAnswer(TRUE));
    EXPECT_EQ(">EnableCallAnswer\n>EnableCallAnswer Nodevices installed\n", TakeTexts());
    answer = IDNO;
    EXPECT_FALSE(line.GrabThePort());
    EXPECT_EQ(0x14u, line.GetLastTAPIErrorFlags());
    EXPECT_EQ(2, faults.Fired());
    faults.Disarm();
    answer = IDYES;
    const ImportPatch start(kLibrary, "CreateProcessA", &StartNothing);
    ZO_EXPECT_NO_LEAK(line.HandleNoDevicesInstalled());
    EXPECT_EQ("CONTROL.EXE MODEM.CPL,,ADD, 1, 0x20", g_started);
    EXPECT_EQ(0x14u, line.GetLastTAPIErrorFlags());
}
