// The about box and, from it, the settings of the trace: by clicks and keys.
#include "dialog_faults.h"

#include "support/product_test.h"
#include "support/test.h"

#include <zogbl/about_dialog.h>
#include <zogbl/country_box.h>
#include <zogbl/resource_ids.h>
#include <zogbl/trace.h>

namespace {

constexpr char kLibrary[] = "ZOGBLBRX.DLL";
constexpr char kDevices[] = "Software\\Zo,Inc.\\Devices";
constexpr char kNoAutoDetect[] = "DisableTAPIAutoDetect";

std::string g_folder; // in which the program seems to be
DWORD(WINAPI* g_moduleFileName)(HMODULE, LPSTR, DWORD);
DWORD WINAPI FileNameInFolder(HMODULE module, LPSTR path, DWORD size)
{
    if (module != nullptr)
        return g_moduleFileName(module, path, size);
    lstrcpynA(path, (g_folder + "\\program.exe").c_str(), static_cast<int>(size));
    return static_cast<DWORD>(lstrlenA(path));
}

std::string g_started;
UINT g_startResult = 32;
UINT WINAPI NoteStart(LPCSTR command, UINT show)
{
    g_started = std::string(command) + " | " + std::to_string(show);
    return g_startResult;
}

class AboutBox : public ProductTest {
protected:
    AboutBox()
    {
        g_moduleFileName = m_path.Original<DWORD WINAPI(HMODULE, LPSTR, DWORD)>();
        g_folder = m_folder.Path();
    }
    ~AboutBox() override { m_product.Config().DeleteSection(ZO_MODE_LOCAL_MACHINE, kDevices, nullptr); }
    /// Opens the settings from the about box and drives them; another act is for a box.
    static void WithSettings(const DialogDriver::Act& act, const DialogDriver::Act& box = nullptr)
    {
        const auto open = [](HWND about) {
            Press(about, ZO_IDC_ABOUT_TRACE);
            Key(about, VK_ESCAPE);
        };
        const DialogDriver driver({open, act, box});
        EXPECT_EQ(IDCANCEL, CZoAboutDialog(0).DoModal());
    }
    /// A trace file that was last written on 30 June 2000 at 10:15, local time.
    void MakeTraceFile(const std::string& name)
    {
        m_folder.Write(name, "traced");
        const HANDLE file = CreateFileA(Path(name).c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        const SYSTEMTIME local = {2000, 6, 5, 30, 10, 15, 0, 0};
        FILETIME localTime, time;
        EXPECT_TRUE(SystemTimeToFileTime(&local, &localTime) && LocalFileTimeToFileTime(&localTime, &time) &&
                    SetFileTime(file, nullptr, nullptr, &time));
        CloseHandle(file);
    }

    ImportPatch m_path{kLibrary, "GetModuleFileNameA", &FileNameInFolder};
    ImportPatch m_start{kLibrary, "WinExec", &NoteStart};
};

void Paint(HWND window) { RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); }

} // namespace

TEST_F(AboutBox, ShowsTheProgramAndFollowsTheLanguage)
{
    CZoAboutDialog about(0);
    const DialogDriver driver({[&](HWND window) {
        EXPECT_EQ(IDOK, FocusOf(window));
        EXPECT_EQ("About Brixel Suite", TextOf(window));
        EXPECT_EQ("Brixel Suite", TextOf(window, ZO_IDC_ABOUT_PRODUCT));
        EXPECT_EQ("Version 3.9", TextOf(window, ZO_IDC_ABOUT_VERSION).substr(0, 11));
        EXPECT_NE("", TextOf(window, ZO_IDC_ABOUT_COPYRIGHT));
        EXPECT_EQ("&Trace settings...", TextOf(window, ZO_IDC_ABOUT_TRACE));
        CCountryCodeListBox countries; // as a program's own dialog has them
        ASSERT_TRUE(countries.Create(WS_CHILD, CRect(0, 0, 9, 9), &about, 900));
        countries.ResetInformation(-1);
        countries.SelectCountryIndex(276);
        ChangeLanguage(kGerman);
        EXPECT_EQ("Deutschland", RowText(window, 900, countries.GetCurSel()));
        EXPECT_EQ("Info ", TextOf(window).substr(0, 5));
        EXPECT_EQ("Auf&zeichnung...", TextOf(window, ZO_IDC_ABOUT_TRACE));
        Key(window, VK_ESCAPE);
    }});
    EXPECT_EQ(IDCANCEL, about.DoModal());
}

TEST_F(AboutBox, KeepsTheTraceLevelAndWhetherModemsAreDetected)
{
    static constexpr char kRange[] = "The number must lie between 0 and 65535.";
    static constexpr char kNumber[] = "This must be a whole number without a sign.";
    const struct {
        WORD before;
        std::string shown;
        bool on;           // when OK is pressed
        const char* typed; // null: nothing
        std::string box;
        WORD after;
    } rows[] = {
        {0, "1", false, nullptr, "", 0},    {0, "1", true, nullptr, "", 1},
        {5, "5", true, nullptr, "", 5},     {5, "5", true, "0", "", 1},
        {5, "5", true, "65535", "", 65535}, {5, "5", true, "70000", kRange, 5},
        {5, "5", true, "", kNumber, 5},     {5, "5", true, "123456", "", 12345},
        {5, "5", false, "", "", 0}, // what cannot be reached is not looked at
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.before << " typed " << (row.typed != nullptr ? row.typed : "nothing"));
        CZoTrace::SetRegTraceLevel(row.before);
        m_product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, kDevices, kNoAutoDetect, DWORD{row.before});
        const auto act = [&](HWND window) {
            const bool wasOn = IsChecked(window, ZO_IDC_TRACE_ON);
            EXPECT_EQ(row.before != 0, wasOn);
            EXPECT_EQ(wasOn, IsEnabled(window, ZO_IDC_TRACE_LEVEL));
            EXPECT_EQ(row.before != 0, IsChecked(window, ZO_IDC_TRACE_NO_DETECTION));
            Press(window, ZO_IDC_TRACE_NO_DETECTION);
            EXPECT_EQ(row.shown, TextOf(window, ZO_IDC_TRACE_LEVEL));
            if (row.typed != nullptr)
                Type(window, ZO_IDC_TRACE_LEVEL, row.typed);
            if (wasOn != row.on)
                Press(window, ZO_IDC_TRACE_ON);
            EXPECT_EQ(row.on, IsEnabled(window, ZO_IDC_TRACE_LEVEL));
            Press(window, IDOK);
            if (!row.box.empty()) { // it stays, and so does what was typed
                EXPECT_EQ(ZO_IDC_TRACE_LEVEL, FocusOf(window));
                EXPECT_EQ(row.typed, TextOf(window, ZO_IDC_TRACE_LEVEL));
                Key(window, VK_ESCAPE);
            }
        };
        WithSettings(act, AnswerBoxIfAny(row.box, IDOK));
        EXPECT_EQ(row.after, CZoTrace::GetRegTraceLevel());
        DWORD noAutoDetect = 0;
        m_product.Config().GetValue(ZO_MODE_LOCAL_MACHINE, kDevices, kNoAutoDetect, noAutoDetect, 99);
        EXPECT_EQ(row.box.empty() ? row.before == 0 : row.before, noAutoDetect);
    }
}

TEST_F(AboutBox, ListsTraceFilesAndShowsThem)
{
    WithSettings([](HWND window) {
        EXPECT_EQ("", RowsOf(window, ZO_IDC_TRACE_FILES));
        EXPECT_FALSE(IsEnabled(window, ZO_IDC_TRACE_VIEW));
        SendMessageA(window, WM_CLOSE, 0, 0);
    });
    // On a Japanese system, a name whose second byte is a backslash elsewhere.
    const std::string last = IsDoubleByte() ? "\x83\x5C.trc" : "zoz.trc";
    for (const std::string& name : {std::string("ZoB.TRC"), {"ZoA.trc"}, {"Zo (C).TRC"}, {"other.txt"}, last})
        MakeTraceFile(name);
    CreateDirectoryA(Path("folder.trc").c_str(), nullptr);
    CString lower = (g_folder + "\\").c_str();
    lower.MakeLower();
    const std::string folder(lower);
    WithSettings(
        [&](HWND window) {
            EXPECT_EQ(0, ChosenRow(window, ZO_IDC_TRACE_FILES));
            const std::string date = " (06/30/00 10:15)|" + folder;
            EXPECT_EQ(folder + "zo (c).trc" + date + "zoa.trc" + date + "zob.trc" + date + last + date,
                      RowsOf(window, ZO_IDC_TRACE_FILES) + folder);
            EXPECT_TRUE(IsEnabled(window, ZO_IDC_TRACE_VIEW));
            const std::string commands[] = {"zo", "zoa.trc", "zob.trc", last};
            for (int row = 0; row < 4; ++row) {
                Choose(window, ZO_IDC_TRACE_FILES, row);
                Press(window, ZO_IDC_TRACE_VIEW);
                EXPECT_EQ("NOTEPAD.EXE " + folder + commands[row] + " | 1", g_started); // up to the first "("
            }
            g_startResult = 31;
            Press(window, ZO_IDC_TRACE_VIEW);
            g_startResult = 32;
            Press(window, IDCANCEL);
        },
        AnswerBox("Unable to view trace file", IDOK));
}

TEST_F(AboutBox, OpensOrFailsWhateverIsMissing)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10 && !IsDoubleByte(), "the same everywhere, and slow");
    MakeTraceFile("ZoA.TRC");
    const auto person = [](HWND window) {
        Paint(window);
        for (const int control : {ZO_IDC_ABOUT_TRACE, ZO_IDC_TRACE_VIEW, IDOK}) // OK may be refused
            Command(window, control);
    };
    const auto show = [](const FaultRun& run) {
        CZoTrace::SetRegTraceLevel(7);
        const INT_PTR result = CZoAboutDialog(0).DoModal();
        run.Stop();
        EXPECT_TRUE(result == IDOK || (run.Fired() && result == -1)) << result;
        EXPECT_TRUE(run.Fired() || CZoTrace::GetRegTraceLevel() == 7);
    };
    RunDialogFaults(person, show, {.memory = 5});
}
