// The dialog for printing: with printers made up here, whose drivers tell what a test needs, and with a real one.
#include "dialog_faults.h"

#include "support/mutation.h"
#include "support/product_test.h"

#include <common/test_printer.h>
#include <common/wait.h>
#include <zogbl/abort_dialog.h>
#include <zogbl/print_dialog.h>
#include <zogbl/resource_ids.h>

#include <map>
#include <sstream>

namespace {

using Range = CZoPrintDialog::Range;

/// What a driver tells, and the settings that its user has made.
struct Driver {
    int mostCopies = 99;
    bool collates = true;
    short copies = 1;
    bool isCollated = false;
    WORD version = 1;
    bool answers = true;
};

/// Settings with a part of the driver's own.
struct Settings {
    DEVMODEA mode;
    char own[8];
};

std::map<std::string, Driver> g_drivers;
std::string g_default;
std::function<LONG(Settings&)> g_setUp; // the driver's dialog
std::function<void()> g_asked;          // what goes on while a driver is asked

std::string BytesOfSettings(const std::string& name)
{
    const Driver& driver = g_drivers[name];
    Settings settings = {};
    name.copy(reinterpret_cast<char*>(settings.mode.dmDeviceName), CCHDEVICENAME - 1);
    settings.mode.dmSpecVersion = DM_SPECVERSION;
    settings.mode.dmDriverVersion = driver.version;
    settings.mode.dmSize = sizeof settings.mode;
    settings.mode.dmDriverExtra = sizeof settings.own;
    settings.mode.dmFields = DM_DUPLEX | (driver.copies > 1 ? DM_COPIES | DM_COLLATE : 0);
    settings.mode.dmCopies = driver.copies;
    settings.mode.dmCollate = driver.isCollated ? DMCOLLATE_TRUE : DMCOLLATE_FALSE;
    settings.mode.dmDuplex = DMDUP_VERTICAL;
    name.copy(settings.own, sizeof settings.own);
    return {reinterpret_cast<char*>(&settings), sizeof settings};
}

DWORD WINAPI ReadProfileString(LPCSTR section, LPCSTR key, LPCSTR, LPSTR buffer, DWORD size)
{
    std::string text;
    if (std::string(section) == "windows")
        text = g_default + ",driver,LPT1:";
    else if (key != nullptr)
        text = g_drivers.count(key) != 0 ? std::string("driver,") + (*key == 'F' ? "FILE:" : "LPT1:") : "";
    else
        for (const auto& [name, driver] : g_drivers)
            text += name + '\0';
    text = text.substr(0, size - 2) + '\0';
    text.copy(buffer, size);
    return static_cast<DWORD>(text.size() - 1);
}

int g_open = 0; // handles
BOOL WINAPI Open(LPSTR name, HANDLE* handle, PRINTER_DEFAULTSA*)
{
    *handle = g_drivers[name].answers ? &g_drivers[name] : nullptr;
    g_open += *handle != nullptr;
    return *handle != nullptr;
}
BOOL WINAPI Close(HANDLE)
{
    --g_open;
    return TRUE;
}

LONG WINAPI Exchange(HWND, HANDLE, LPSTR name, DEVMODEA* to, DEVMODEA* from, DWORD mode)
{
    if (mode == 0)
        return sizeof(Settings);
    if (g_asked != nullptr)
        std::exchange(g_asked, nullptr)();
    auto& settings = *reinterpret_cast<Settings*>(to);
    BytesOfSettings(name).copy(reinterpret_cast<char*>(&settings), sizeof settings);
    if ((mode & DM_IN_BUFFER) != 0 && from->dmDriverVersion == settings.mode.dmDriverVersion)
        settings = *reinterpret_cast<Settings*>(from);
    else if ((mode & DM_IN_BUFFER) != 0)
        settings.mode.dmDuplex = from->dmDuplex; // what an older version knew
    return (mode & DM_IN_PROMPT) != 0 ? g_setUp(settings) : IDOK;
}

int WINAPI Capabilities(LPCSTR name, LPCSTR, WORD which, LPSTR, const DEVMODEA*)
{
    const Driver& driver = g_drivers[name];
    return which == DC_COPIES ? driver.mostCopies : driver.collates;
}

FARPROC WINAPI FindFunction(HMODULE module, LPCSTR name)
{
    const std::map<std::string, void*> ours = {{"OpenPrinterA", reinterpret_cast<void*>(&Open)},
                                               {"ClosePrinter", reinterpret_cast<void*>(&Close)},
                                               {"DocumentPropertiesA", reinterpret_cast<void*>(&Exchange)},
                                               {"DeviceCapabilitiesA", reinterpret_cast<void*>(&Capabilities)}};
    const auto found = ours.find(name);
    return found != ours.end() ? reinterpret_cast<FARPROC>(found->second) : GetProcAddress(module, name);
}

/// Global memory with bytes, or the bytes in it, which it then frees.
HGLOBAL MemoryOf(const std::string& bytes)
{
    const HGLOBAL memory = GlobalAlloc(GMEM_FIXED, bytes.size());
    bytes.copy(static_cast<char*>(memory), bytes.size());
    return memory;
}
std::string TakeBytes(HGLOBAL memory, bool frees = true)
{
    std::string bytes;
    if (memory != nullptr) {
        bytes.assign(static_cast<char*>(GlobalLock(memory)), GlobalSize(memory));
        GlobalUnlock(memory);
        if (frees)
            GlobalFree(memory);
    }
    return bytes;
}
std::string BytesOfNames(const std::string& device)
{
    const WORD second = sizeof(DEVNAMES) + 7, third = static_cast<WORD>(second + device.size() + 1);
    const DEVNAMES offsets = {sizeof offsets, second, third, 0};
    return std::string(reinterpret_cast<const char*>(&offsets), sizeof offsets) + "driver" + '\0' + device + '\0' +
           "LPT1:" + '\0';
}
DWORD Set(CZoPrintDialog& dialog, const std::string& mode, const std::string& names)
{
    const HGLOBAL blocks[] = {mode.empty() ? nullptr : MemoryOf(mode), names.empty() ? nullptr : MemoryOf(names)};
    const DWORD status = dialog.SetSettings(blocks[0], blocks[1]);
    GlobalFree(blocks[0]);
    GlobalFree(blocks[1]);
    return status;
}
std::string ModeOf(const CZoPrintDialog& dialog) { return TakeBytes(dialog.CopyDevMode()); }

const std::string kLong = "A printer in the third floor, beside the stairs"; // beyond 31 characters

class PrintDialog : public ProductTest {
protected:
    PrintDialog()
    {
        g_drivers = {{kLong, {}}, {"Beta", {1, false, 1}}, {"File", {99, true, 3, true}}};
        g_default = "Beta";
        g_setUp = nullptr;
    }
    ~PrintDialog() override { EXPECT_EQ(0, g_open); }
    void ChoosePrinter(HWND window, const std::string& name)
    {
        Choose(window, ZO_IDC_PRINT_PRINTERS, RowOf(window, ZO_IDC_PRINT_PRINTERS, name));
    }
    /// Another program has changed the list of printers.
    static void TellOfChange(HWND window)
    {
        SendMessageA(window, WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>("devices"));
        MSG message; // which the dialog has posted itself
        while (PeekMessageA(&message, window, WM_APP, WM_APP + 1, PM_REMOVE))
            DispatchMessageA(&message);
    }
    /// Opens the dialog and lets a person act, who then presses OK. \return the settings that come out
    std::string Use(const DialogDriver::Act& act, INT_PTR result = IDOK)
    {
        const DialogDriver driver({[&](HWND window) {
            act(window);
            if (IsWindow(window))
                Press(window, result == IDOK ? IDOK : IDCANCEL);
        }});
        EXPECT_EQ(result, m_dialog.DoModal());
        return ModeOf(m_dialog);
    }

    CZoPrintDialog m_dialog;

private:
    const ImportPatch m_profile{kZogbl, "GetProfileStringA", &ReadProfileString};
    const ImportPatch m_functions{kZogbl, "GetProcAddress", &FindFunction};
};

} // namespace

TEST_F(PrintDialog, RefusesDamage)
{
    EXPECT_EQ(0u, Set(m_dialog, BytesOfSettings(kLong), BytesOfNames(kLong)));
    EXPECT_EQ(BytesOfSettings(kLong), ModeOf(m_dialog));
    ForEachMutation([&](unsigned, Random& random) {
        std::string mode = BytesOfSettings(kLong), names = BytesOfNames(kLong);
        std::string& bytes = random() % 2 != 0 ? mode : names;
        const auto put = [&](std::string& block, size_t at) {
            if (at + sizeof(WORD) <= block.size())
                PutNumber<WORD>(block, at, static_cast<WORD>(random() % 300));
        };
        Damage(random, 1, 2,
               {[&] { bytes.resize(1 + random() % bytes.size()); },
                [&] { bytes[random() % bytes.size()] = static_cast<char>(random()); },
                [&] { put(names, random() % 3 * 2); }, [&] { put(mode, 36 + random() % 2 * 2); }});
        bool isWhole = mode.size() >= 44 && NumberAt<WORD>(mode, 36) >= 44 &&
                       NumberAt<WORD>(mode, 36) + NumberAt<WORD>(mode, 38) <= static_cast<int>(mode.size()) &&
                       names.size() >= sizeof(DEVNAMES);
        for (size_t i = 0; isWhole && i < 3; ++i) {
            const size_t at = NumberAt<WORD>(names, i * 2), end = names.find('\0', at);
            isWhole = at >= sizeof(DEVNAMES) && end != std::string::npos && (i != 1 || end > at);
        }
        EXPECT_EQ(isWhole ? 0u : ERROR_INVALID_DATA, Set(m_dialog, mode, names));
        if (isWhole) {
            EXPECT_EQ(mode.substr(0, NumberAt<WORD>(mode, 36) + NumberAt<WORD>(mode, 38)), ModeOf(m_dialog));
        }
        return isWhole;
    });
    for (const auto& [from, to] : {std::pair(0, 1), {2, 1}, {1, CZoPrintDialog::MOST_PAGES + 1}})
        EXPECT_FALSE(m_dialog.SetPages(from, to) || m_dialog.SetPageLimits(from, to)) << from;
    EXPECT_FALSE(m_dialog.SetCopies(0, FALSE) || m_dialog.SetCopies(CZoPrintDialog::MOST_COPIES + 1, FALSE));
}

TEST_F(PrintDialog, LeavesAloneWhatNobodyTouches)
{
    g_drivers[kLong].copies = 2;
    const std::string settings = BytesOfSettings(kLong); // the user's
    g_drivers[kLong].copies = 5;                         // and what he has set meanwhile
    const auto nothing = [](HWND window) {
        EXPECT_EQ("", TextOf(window, ZO_IDC_PRINT_REASON));
        EXPECT_EQ("", TextOf(window, ZO_IDC_PRINT_TO)) << "nobody knows how many there are";
    };
    EXPECT_EQ(0u, Set(m_dialog, settings, BytesOfNames(kLong)));
    EXPECT_EQ(settings, Use(nothing));
    EXPECT_EQ(2, m_dialog.GetCopies());
    EXPECT_EQ(1, m_dialog.GetPageCopies() * m_dialog.GetDocumentCopies()) << "the driver makes them";
    EXPECT_EQ(BytesOfNames(kLong), TakeBytes(m_dialog.CopyDevNames()));
    EXPECT_EQ(0u, Set(m_dialog, settings, ""));
    EXPECT_EQ(settings, Use(nothing)) << "found by the beginning of its name";
    EXPECT_EQ(kLong, std::string(m_dialog.GetPrinterName()));
    EXPECT_EQ(0u, Set(m_dialog, "", BytesOfNames(kLong)));
    EXPECT_EQ(BytesOfSettings(kLong), Use(nothing)) << "the user's own";
    EXPECT_EQ(0u, Set(m_dialog, settings, BytesOfNames("Beta")));
    EXPECT_EQ(BytesOfSettings("Beta"), Use(nothing)) << "those of another printer do not count";
    EXPECT_EQ(DN_DEFAULTPRN, NumberAt<WORD>(TakeBytes(m_dialog.CopyDevNames()), 6));
    EXPECT_EQ(0u, Set(m_dialog, settings, ""));
    g_drivers[kLong + " too"] = {};
    EXPECT_EQ(BytesOfSettings("Beta"), Use([](HWND) {})) << "nobody knows of which one they are";
    g_drivers.erase(kLong + " too");
    g_drivers[kLong].version = 2;
    EXPECT_EQ(0u, Set(m_dialog, settings, BytesOfNames(kLong)));
    EXPECT_EQ(BytesOfSettings(kLong), Use(nothing)) << "adapted by the driver";

    EXPECT_EQ(0u, Set(m_dialog, settings, BytesOfNames(kLong)));
    Use([&](HWND window) { ChoosePrinter(window, "Beta"); }, IDCANCEL);
    EXPECT_EQ(settings, ModeOf(m_dialog));
    EXPECT_EQ(kLong, std::string(m_dialog.GetPrinterName()));
}

TEST_F(PrintDialog, LetsTheRightOneMakeTheCopies)
{
    const struct {
        int mostCopies;
        bool collates;
        const char* typed; // null: nothing
        bool isCollated;
        short copies, collate; // in the settings
        int ofDocument, ofPages;
    } kRows[] = {
        {99, true, nullptr, false, 1, 0, 1, 1}, {99, true, "7", false, 7, 0, 1, 1},  {99, true, "7", true, 7, 1, 1, 1},
        {99, false, "7", true, 1, 0, 7, 1},     {99, false, "7", false, 7, 0, 1, 1}, {5, true, "7", true, 1, 0, 7, 1},
        {5, true, "3", true, 3, 1, 1, 1},       {1, false, "7", false, 1, 0, 1, 7},  {1, false, "7", true, 1, 0, 7, 1},
        {5, true, "1", false, 1, 0, 1, 1},
    };
    for (const auto& row : kRows) {
        const bool wasThree = row.mostCopies == 5;
        g_drivers["Beta"] = {row.mostCopies, row.collates, static_cast<short>(wasThree ? 3 : 1), false, 1, true};
        CZoPrintDialog dialog;
        std::optional<DialogDriver> driver;
        driver.emplace(std::initializer_list<DialogDriver::Act>{[&](HWND window) {
            EXPECT_EQ(wasThree, IsEnabled(window, ZO_IDC_PRINT_COLLATED)) << "not of one copy";
            if (row.typed != nullptr)
                Type(window, ZO_IDC_PRINT_COPIES, row.typed);
            if (row.isCollated)
                Press(window, ZO_IDC_PRINT_COLLATED);
            Press(window, IDOK);
        }});
        EXPECT_EQ(IDOK, dialog.DoModal());
        const std::string bytes = ModeOf(dialog);
        const auto& mode = *reinterpret_cast<const DEVMODEA*>(bytes.data());
        EXPECT_EQ(std::tuple(row.copies, row.collate, row.ofDocument, row.ofPages),
                  std::tuple(mode.dmCopies, mode.dmCollate, dialog.GetDocumentCopies(), dialog.GetPageCopies()))
            << row.mostCopies << row.collates << row.isCollated;
        const std::string copies = row.typed != nullptr ? row.typed : "1";
        EXPECT_EQ(std::stoi(copies), dialog.GetCopies());
        driver.reset();
        driver.emplace(std::initializer_list<DialogDriver::Act>{[&](HWND window) {
            EXPECT_EQ(copies, TextOf(window, ZO_IDC_PRINT_COPIES)) << "whoever makes them";
            Press(window, IDCANCEL);
        }});
        EXPECT_EQ(IDCANCEL, dialog.DoModal());
        EXPECT_EQ(row.isCollated, dialog.IsCollated() != FALSE);
    }
}

TEST_F(PrintDialog, RefusesWhatCannotBePrinted)
{
    const struct {
        const char *from, *to, *copies;
        const char* reason; // empty: none
        int field;
        int first = 0, last = 0;
    } kRows[] = {
        {"2", "3", "1", "", 0, 2, 3},
        {"", "", "9999", "", 0, 1, 9},
        {"4", "", "1", "", 0, 4, 9},
        {"0", "3", "1", "Please enter a page from 1 to 9.", ZO_IDC_PRINT_FROM},
        {"1", "10", "1", "Please enter a page from 1 to 9.", ZO_IDC_PRINT_TO},
        {"1", "99999", "1", "Please enter a page from 1 to 9.", ZO_IDC_PRINT_TO},
        {"3", "2", "1", "The first page comes behind the last one.", ZO_IDC_PRINT_FROM},
        {"3", "3", "0", "Please enter a number of copies from 1 to 9999.", ZO_IDC_PRINT_COPIES},
        {"3", "3", "", "Please enter a number of copies from 1 to 9999.", ZO_IDC_PRINT_COPIES},
        {"3", "3", "10000", "Please enter a number of copies from 1 to 9999.", ZO_IDC_PRINT_COPIES},
    };
    EXPECT_TRUE(m_dialog.SetPageLimits(1, 9));
    for (const auto& row : kRows) {
        SCOPED_TRACE(std::string(row.from) + "-" + row.to + " " + row.copies);
        const bool isRight = *row.reason == '\0';
        Use(
            [&](HWND window) {
                Type(window, ZO_IDC_PRINT_COPIES, row.copies);
                Type(window, ZO_IDC_PRINT_FROM, row.from);
                Type(window, ZO_IDC_PRINT_TO, row.to);
                EXPECT_TRUE(IsChecked(window, ZO_IDC_PRINT_PAGES)) << "by typing";
                if (isRight)
                    return;
                Press(window, IDOK);
                EXPECT_EQ(row.reason, TextOf(window, ZO_IDC_PRINT_REASON));
                EXPECT_EQ(row.field, FocusOf(window));
                ChangeLanguage(kGerman);
                EXPECT_NE(row.reason, TextOf(window, ZO_IDC_PRINT_REASON));
                EXPECT_EQ(row.from, TextOf(window, ZO_IDC_PRINT_FROM));
                ExpectTidy(window);
                ChangeLanguage(kEnglish);
                Type(window, row.field, "1");
                EXPECT_EQ("", TextOf(window, ZO_IDC_PRINT_REASON)) << "once something else is typed";
            },
            isRight ? IDOK : IDCANCEL);
        if (isRight) {
            EXPECT_EQ(std::tuple(Range::kPages, row.first, row.last),
                      std::tuple(m_dialog.GetRange(), m_dialog.GetFromPage(), m_dialog.GetToPage()));
        }
    }
    Use([](HWND window) {
        EXPECT_FALSE(IsEnabled(window, ZO_IDC_PRINT_SELECTION));
        EXPECT_EQ("4", TextOf(window, ZO_IDC_PRINT_FROM)) << "as last time";
        Press(window, ZO_IDC_PRINT_ALL);
    });
    EXPECT_EQ(std::tuple(Range::kAll, 1, 9),
              std::tuple(m_dialog.GetRange(), m_dialog.GetFromPage(), m_dialog.GetToPage()));
    m_dialog.SetSelection(TRUE);
    Use([](HWND window) { Press(window, ZO_IDC_PRINT_SELECTION); });
    EXPECT_EQ(Range::kSelection, m_dialog.GetRange());
    EXPECT_TRUE(m_dialog.SetPages(8, 20) && m_dialog.SetPageLimits(1, 1));
    Use([](HWND window) { EXPECT_FALSE(IsEnabled(window, ZO_IDC_PRINT_PAGES)); });
}

TEST_F(PrintDialog, GoesFromPrinterToPrinter)
{
    const std::string file = BytesOfSettings("File");
    const std::string chosen = Use([&](HWND window) {
        EXPECT_EQ("Your default printer, at LPT1:", TextOf(window, ZO_IDC_PRINT_INFORMATION));
        EXPECT_EQ((std::vector<int>{ZO_IDC_PRINT_PRINTERS, ZO_IDC_PRINT_SET_UP, ZO_IDC_PRINT_TO_FILE, ZO_IDC_PRINT_ALL,
                                    ZO_IDC_PRINT_FROM, ZO_IDC_PRINT_TO, ZO_IDC_PRINT_COPIES, IDOK, IDCANCEL}),
                  ExpectTabRounds(window));
        Press(window, ZO_IDC_PRINT_TO_FILE);
        Press(window, ZO_IDC_PRINT_TO_FILE);
        g_asked = [&] {
            g_drivers["New"] = {};
            TellOfChange(window);
            EXPECT_EQ(3, SendDlgItemMessageA(window, ZO_IDC_PRINT_PRINTERS, CB_GETCOUNT, 0, 0)) << "it is in use";
        };
        ChoosePrinter(window, "File");
        Settle();
        EXPECT_EQ(4, SendDlgItemMessageA(window, ZO_IDC_PRINT_PRINTERS, CB_GETCOUNT, 0, 0));
        EXPECT_EQ("3", TextOf(window, ZO_IDC_PRINT_COPIES));
        EXPECT_TRUE(IsChecked(window, ZO_IDC_PRINT_COLLATED));
        EXPECT_TRUE(IsChecked(window, ZO_IDC_PRINT_TO_FILE) && !IsEnabled(window, ZO_IDC_PRINT_TO_FILE));
        Type(window, ZO_IDC_PRINT_COPIES, "4");
        g_drivers[kLong].answers = false;
        ChoosePrinter(window, kLong);
        EXPECT_EQ("4", TextOf(window, ZO_IDC_PRINT_COPIES)) << "typed";
        EXPECT_FALSE(IsEnabled(window, ZO_IDC_PRINT_SET_UP) || IsChecked(window, ZO_IDC_PRINT_TO_FILE));
        EXPECT_EQ(0u, TextOf(window, ZO_IDC_PRINT_INFORMATION).find("The printer does not answer."));
        g_drivers.clear();
        TellOfChange(window);
        EXPECT_EQ(0u, TextOf(window, ZO_IDC_PRINT_INFORMATION).find("No printer is installed."));
        EXPECT_FALSE(IsEnabled(window, IDOK) || IsEnabled(window, ZO_IDC_PRINT_ALL));
        EXPECT_EQ(IDCANCEL, FocusOf(window));
        EXPECT_EQ(std::vector<int>{IDCANCEL}, ExpectTabRounds(window));
        ChangeLanguage(kGerman);
        EXPECT_EQ(0u, TextOf(window, ZO_IDC_PRINT_INFORMATION).find("Es ist kein Drucker installiert."));
        ExpectTidy(window);
        ChangeLanguage(kEnglish);
        g_drivers["Beta"] = {};
        TellOfChange(window);
        g_drivers["Other"] = {};
        TellOfChange(window);
        EXPECT_EQ("Beta", RowText(window, ZO_IDC_PRINT_PRINTERS, ChosenRow(window, ZO_IDC_PRINT_PRINTERS)));
        g_drivers.erase("Beta");
        TellOfChange(window);
        EXPECT_EQ(0u, TextOf(window, ZO_IDC_PRINT_REASON).find("The printer \"Beta\" is no longer installed."));
    });
    EXPECT_STREQ("Other", m_dialog.GetPrinterName());
    EXPECT_EQ(4, reinterpret_cast<const DEVMODEA*>(chosen.data())->dmCopies);
    EXPECT_EQ(0u, Set(m_dialog, file, BytesOfNames("File")));
    Use([](HWND window) {
        EXPECT_EQ(0u, TextOf(window, ZO_IDC_PRINT_REASON).find("The printer \"File\" is no longer installed."));
    });
    EXPECT_EQ(BytesOfSettings("Other"), ModeOf(m_dialog));
    g_drivers.clear();
    for (const auto& way : WaysToGiveUp()) {
        const DialogDriver driver({way});
        EXPECT_EQ(IDCANCEL, m_dialog.DoModal());
        EXPECT_STREQ("Other", m_dialog.GetPrinterName());
    }
}

TEST_F(PrintDialog, ForgetsTheFileOfLastTime)
{
    const DialogDriver driver({[](HWND window) {
                                   Press(window, ZO_IDC_PRINT_TO_FILE);
                                   Press(window, IDOK);
                               },
                               [&](HWND file) {
                                   Type(file, ZO_IDC_FILE_NAME, Path("job"));
                                   Press(file, IDOK);
                               },
                               Pressing(IDOK)});
    EXPECT_EQ(IDOK, m_dialog.DoModal());
    EXPECT_EQ(Path("job.prn"), m_dialog.GetOutput());
    EXPECT_EQ(IDOK, m_dialog.DoModal());
    EXPECT_EQ(nullptr, m_dialog.GetOutput());
}

TEST_F(PrintDialog, OpensTheDriversOwnDialog)
{
    g_default = kLong;
    LONG answer = IDCANCEL;
    g_setUp = [&](Settings& settings) {
        EXPECT_EQ(6, settings.mode.dmCopies) << "typed before";
        settings.mode.dmCopies = 8;
        settings.own[0] = 'x';
        return answer;
    };
    const std::string settings = Use([&](HWND window) {
        Type(window, ZO_IDC_PRINT_COPIES, "6");
        for (const LONG next : {IDCANCEL, -1, IDOK}) {
            EXPECT_EQ("6", TextOf(window, ZO_IDC_PRINT_COPIES));
            answer = next;
            Press(window, ZO_IDC_PRINT_SET_UP);
            EXPECT_EQ(next == -1, !TextOf(window, ZO_IDC_PRINT_REASON).empty());
        }
        EXPECT_EQ("8", TextOf(window, ZO_IDC_PRINT_COPIES));
        ChoosePrinter(window, "Beta");
        EXPECT_EQ("1", TextOf(window, ZO_IDC_PRINT_COPIES)) << "its own user's";
        ChoosePrinter(window, kLong);
        TellOfChange(window);
    });
    EXPECT_EQ(8, reinterpret_cast<const Settings*>(settings.data())->mode.dmCopies);
    EXPECT_EQ("x printe", std::string(reinterpret_cast<const Settings*>(settings.data())->own, 8));
}

TEST_F(PrintDialog, SurvivesFaults)
{
    g_default = kLong;
    g_setUp = [](Settings&) { return IDOK; };
    const std::string mode = BytesOfSettings(kLong), names = BytesOfNames(kLong);
    RunDialogFaults(
        [](HWND window) {
            Command(window, ZO_IDC_PRINT_SET_UP);
            SetDlgItemTextA(window, ZO_IDC_PRINT_COPIES, "2");
            Command(window, IDOK);
        },
        [&](const FaultRun& run) {
            CZoPrintDialog dialog;
            const DWORD status = Set(dialog, mode, names);
            const INT_PTR result = dialog.DoModal();
            run.Stop();
            EXPECT_TRUE(status == 0 || (run.Fired() && status == ERROR_NOT_ENOUGH_MEMORY)) << status;
            EXPECT_TRUE(result == IDOK || (run.Fired() && (result == -1 || result == IDCANCEL))) << result;
            if (result != IDOK && status == 0) {
                EXPECT_EQ(mode, ModeOf(dialog));
            }
        },
        {.memory = 5, .system = 3, .controls = 3});
}

// A real printer ------------------------------------------------------------------------------------------------------

namespace {

class RealPrinter : public ProductTest {
protected:
    static std::string ReadFile(const std::string& path)
    {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }
    /// The names of the glyphs that a PostScript file shows.
    static std::string ShownGlyphs(const std::string& script)
    {
        std::istringstream words(script);
        std::string shown;
        for (std::string word, last; words >> word; last = word)
            shown += word == "glyphshow" ? last : "";
        return shown;
    }
};

} // namespace

TEST_F(RealPrinter, PrintsADocument)
{
    ZO_ONLY_IN(IsNt(), "the systems before have printer drivers of 16 bits");
    const TestPrinter printer;
    const std::string path = ProgramFolder() + "print_dialog_test.prn";
    for (const bool isCancelled : {false, true}) {
        DeleteFileA(path.c_str());
        CZoPrintDialog dialog;
        EXPECT_TRUE(dialog.SetPageLimits(1, 9));
        {
            const DialogDriver driver({[&](HWND window) {
                                           Press(window, ZO_IDC_PRINT_SET_UP);
                                           Type(window, ZO_IDC_PRINT_FROM, "3");
                                           Type(window, ZO_IDC_PRINT_TO, "5");
                                           Press(window, IDOK);
                                           Press(window, IDOK);
                                       },
                                       Pressing(IDOK), // the driver's
                                       Pressing(IDCANCEL),
                                       [&](HWND window) {
                                           Type(window, ZO_IDC_FILE_NAME, path.substr(0, path.size() - 4));
                                           Press(window, IDOK);
                                       }});
            EXPECT_EQ(IDOK, dialog.DoModal());
        }
        EXPECT_STRCASEEQ(path.c_str(), dialog.GetOutput());
        CZoAbortDialog job;
        EXPECT_TRUE(job.Start("Print", "The document is being printed...", 3));
        const HDC dc = dialog.CreatePrinterDC();
        EXPECT_TRUE(job.AttachPrinter(dc));
        const DOCINFOA document = {sizeof document, "Title", dialog.GetOutput(), nullptr, 0};
        EXPECT_LT(0, StartDocA(dc, &document));
        bool isMet = false;
        std::optional<DialogDriver> driver;
        if (isCancelled) {
            driver.emplace(std::initializer_list<DialogDriver::Act>{[&](HWND window) { isMet = window == job.m_hWnd; },
                                                                    Pressing(IDYES)});
            EXPECT_TRUE(WaitUntil([&] { return isMet; }));
        }
        for (int page = dialog.GetFromPage(); page <= dialog.GetToPage() && !job.IsCancelled(); ++page) {
            EXPECT_LT(0, StartPage(dc));
            const std::string text = "Page" + std::to_string(page);
            TextOutA(dc, 200, 200, text.c_str(), static_cast<int>(text.size()));
            EXPECT_LT(0, EndPage(dc));
            job.SetCommitted();
            if (isCancelled && page == 4)
                job.PostMessage(WM_COMMAND, IDCANCEL);
            EXPECT_EQ(!isCancelled || page != 4, job.SetPosition(page - 2) != FALSE);
        }
        if (isCancelled)
            AbortDoc(dc);
        else
            EXPECT_LT(0, EndDoc(dc));
        job.Finish();
        EXPECT_EQ(isCancelled, job.IsCancelled() != FALSE);
        if (!isCancelled) {
            const std::string script = ReadFile(path);
            EXPECT_NE(std::string::npos, script.find("%%Pages: 3"));
            EXPECT_EQ("/P/a/g/e/three/P/a/g/e/four/P/a/g/e/five", ShownGlyphs(script));
        }
        const DOCINFOA again = {sizeof again, "Again", dialog.GetOutput(), nullptr, 0};
        EXPECT_EQ(!isCancelled, StartDocA(dc, &again) > 0) << "a cancelled job stays so";
        AbortDoc(dc);
        DeleteDC(dc);
    }
    DeleteFileA(path.c_str());
}
