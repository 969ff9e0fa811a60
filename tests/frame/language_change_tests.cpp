// A change of language in all processes at once, with their windows open.
#include "host_ids.h"
#include "language_driver.h"

#include <zogbl/country_code.h>
#include <zogbl/module_language.h>
#include <zogbl/resource_lookup.h>

#include <zomfx/frame_window.h>

namespace {

const UINT s_change = RegisterWindowMessageA("ZoBrixelLanguageChange");
const UINT s_update = CZoLanguageSupport::GetUpdateMessage();

std::string MenuText(HMENU menu)
{
    char item[64] = "";
    GetMenuStringA(menu, 0, item, sizeof item, MF_BYPOSITION);
    DestroyMenu(menu);
    return item;
}

// A host of the suite -------------------------------------------------------------------------------------------------

/// The main window of a host, whose title shows what came of the changes.
class Host : public CZoFrameWnd {
public:
    Host()
    {
        EXPECT_TRUE(m_language.Load(AfxGetInstanceHandle()));
        CreateEx(0, AfxRegisterWndClass(0), "", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr, nullptr);
        AfxGetApp()->m_pMainWnd = this;
        Reload();
    }
    ~Host() override { AfxGetApp()->m_pMainWnd = nullptr; }

    int m_updates = 0;

protected:
    void PostNcDestroy() override {}
    LRESULT OnUpdate(WPARAM, LPARAM)
    {
        ++m_updates;
        Reload();
        CZoDialog::ReloadOpenDialogs();
        return 0;
    }
    DECLARE_MESSAGE_MAP()

private:
    void Reload()
    {
        std::string title = std::to_string(m_updates);
        for (const DWORD language : {kEnglish, kGerman, kJapanese})
            title += GetModuleHandleA(LibraryOf(language)) != nullptr ? std::string("|") + LibraryOf(language) : "";
        CString text;
        ZoGblLoadString(ZO_IDS_SHEET_CLOSE, text);
        const void* menu = ZoGblLockResource(MAKEINTRESOURCE(ZO_IDR_HOST_MENU), RT_MENU);
        title += "|" + std::string(text) + "|" + MenuText(LoadMenuIndirectA(menu)) + "|";
        GetCountryNameFromCode(276, text);
        SetWindowText((title + std::string(text)).c_str());
    }

    CZoModuleLanguage m_language;
};

BEGIN_MESSAGE_MAP(Host, CZoFrameWnd)
    ON_REGISTERED_MESSAGE(s_update, OnUpdate)
END_MESSAGE_MAP()

ZO_CHILD(RunHost)
{
    const LoadedLanguage loaded;
    Host host;
    const DialogDriver driver{[&](HWND dialog) {
        SetDlgItemTextA(dialog, ZO_IDC_LANGUAGE_OF_USER, "own");
        child.Report(std::to_string(HandleToULong(host.m_hWnd)));
        child.Report(std::to_string(HandleToULong(dialog)));
        child.ReadyUntilGo();
        Press(dialog, IDOK);
    }};
    EXPECT_EQ(IDOK, CZoDialog(ZO_IDD_LANGUAGE_SELECTION).DoModal());
}

/// Texts of a dialog and of its controls.
std::vector<std::string> TextsOf(HWND dialog)
{
    std::vector<std::string> texts = {TextOf(dialog)};
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
        texts.push_back(GetDlgCtrlID(child) == ZO_IDC_LANGUAGE_OF_USER ? "" : TextOf(child));
    return texts;
}

INT_PTR CALLBACK Ignore(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

/// A second host with a dialog open, seen through its windows.
class OtherHost {
public:
    OtherHost() { m_child.WaitUntilReady(); }

    ChildProcess& Process() { return m_child; }

    /// Waits until it has heard of \p updates changes, and checks that everything is in the language, which this
    /// process has loaded too.
    void ExpectAllIn(DWORD language, int updates)
    {
        SCOPED_TRACE(LibraryOf(language));
        const std::string number = std::to_string(updates) + "|";
        WaitUntil([&] { return TextOf(Window(0)).compare(0, number.size(), number) == 0; });
        const HMODULE library = GetModuleHandleA(LibraryOf(language));
        char text[256] = "";
        LoadStringA(library, ZO_IDS_SHEET_CLOSE, text, sizeof text);
        EXPECT_STRNE("", text);
        const std::string menu = std::string(LibraryOf(language)).substr(5, 3); // see host_texts.rc.in
        const std::string expected = number + LibraryOf(language) + "|" + text + "|" + menu + "|" +
                                     (language == kEnglish  ? "Germany"
                                      : language == kGerman ? "Deutschland"
                                                            : "");
        EXPECT_EQ(expected, TextOf(Window(0)).substr(0, expected.size())) << "this library and no other";
        // The open dialog is as a new one; but what the program itself wrote stays.
        const HWND dialog =
            CreateDialogParamA(library, MAKEINTRESOURCEA(ZO_IDD_LANGUAGE_SELECTION), nullptr, &Ignore, 0);
        EXPECT_EQ(TextsOf(dialog), TextsOf(Window(1)));
        DestroyWindow(dialog);
        EXPECT_EQ("own", TextOf(Window(1), ZO_IDC_LANGUAGE_OF_USER));
    }

private:
    HWND Window(size_t report)
    {
        const auto& reports = m_child.Reports();
        return report < reports.size() ? static_cast<HWND>(ULongToHandle(std::stoul(reports[report]))) : nullptr;
    }

    ChildProcess m_child{"RunHost"};
};

class LanguageChange : public testing::Test {
protected:
    LanguageChange() { m_product.SetLanguage(kJapanese, 0); }

    RegisteredProduct m_product;
};

} // namespace

TEST_F(LanguageChange, EachWindowLoadsAndTheLastTellsTheApplication)
{
    m_product.SetLanguage(kTurkish, 0);
    const LoadedLanguage loaded;
    Host host;
    CZoLanguageSupport first, second;
    for (CZoLanguageSupport* support : {&first, &second})
        ASSERT_TRUE(support->LoadCurrentLanguage(LibraryPath()));
    const auto updates = [&] {
        int count = 0;
        for (MSG message; PeekMessageA(&message, host.m_hWnd, s_update, s_update, PM_REMOVE); ++count) {
            EXPECT_EQ(0u, message.wParam);
            EXPECT_EQ(0, message.lParam);
        }
        return count;
    };
    EXPECT_EQ(1, first.SendMessage(s_change, kGerman, 0));
    EXPECT_EQ(kGerman, first.GetLCID());
    EXPECT_EQ(0, updates());
    EXPECT_EQ(1, second.SendMessage(s_change, kGerman, 1));
    EXPECT_EQ(kGerman, second.GetLCID());
    EXPECT_EQ(1, updates());
    EXPECT_EQ(0, second.SendMessage(s_change, kGerman, 1)) << "loaded already";
    for (const DWORD language : {kTurkish, DWORD{0x0999}, kEnglish | 0x10000}) {
        EXPECT_EQ(1, second.SendMessage(s_change, language, 1)) << std::hex << language;
        EXPECT_EQ(kGerman, second.GetLCID()) << "the old one stays";
    }
    EXPECT_EQ(1, second.SendMessage(s_change, kEnglish, -1));
    EXPECT_EQ(kEnglish, second.GetLCID());
    EXPECT_EQ(0, updates());
}

TEST_F(LanguageChange, ChoiceIsWrittenForEveryModule)
{
    CZoLanguageSupport support;
    ASSERT_TRUE(support.LoadCurrentLanguage(LibraryPath()));
    CZoVersionResource library;
    ASSERT_TRUE(library.ExtractVersionInfo(ZoGblGetInstanceHandle()));
    const CString& modules = library.GetInstalledModulesKey();
    CZoGlobalConfig& config = m_product.Config();
    for (const char* module : {"VIEWBrixel", "DATABrixel"})
        ASSERT_EQ(0u, config.CreateKey(ZO_MODE_LOCAL_MACHINE, modules + "\\" + module));
    DWORD major, build;
    library.GetProductVersionMajorMinor(major, build);
    CString version;
    version.Format("\\%d.%d", HIWORD(major), LOWORD(major));
    EXPECT_EQ(0u, support.UpdateAllBrixelLanguages(0x0999)) << "nothing";
    EXPECT_EQ(77u, StoredFlag(m_product, kGerman, modules + "\\VIEWBrixel" + version));
    for (const DWORD chosen : {kGerman, kEnglish}) {
        EXPECT_EQ(0u, support.UpdateAllBrixelLanguages(chosen));
        for (const char* module : {"VIEWBrixel", "DATABrixel"}) {
            for (const DWORD language : {kEnglish, kGerman, kJapanese})
                EXPECT_EQ(language == chosen, StoredFlag(m_product, language, modules + "\\" + module + version))
                    << module;
        }
    }
    EXPECT_EQ(kEnglish, support.GetLCID()) << "nothing is loaded by it";
}

TEST_F(LanguageChange, ReachesEveryProcessWithItsWindowsOpen)
{
    ZO_ONLY_IN(Family() != WindowsFamily::kWin32s, "changes that are told at once");
    const LoadedLanguage loaded;
    Host host;
    OtherHost first, second, killed;
    killed.Process().Kill(); // leaves its row behind
    CZoLanguageSupport chooser;
    ASSERT_TRUE(chooser.LoadCurrentLanguage(LibraryPath()));
    long handles = 0;
    int updates = 0;
    for (const DWORD language : {kGerman, kJapanese, kEnglish, kGerman, kJapanese, kEnglish}) {
        const DialogDriver driver{ChoosingLanguage(language)};
        EXPECT_TRUE(chooser.SelectLanguage(&host));
        ++updates;
        EXPECT_EQ(language, ZoGblGetLanguageLCID());
        EXPECT_EQ(GetModuleHandleA(LibraryOf(language)), ZoGblGetLanguageDLL());
        EXPECT_TRUE(WaitUntil([&] { return host.m_updates == updates; })) << host.m_updates;
        for (OtherHost* other : {&first, &second})
            other->ExpectAllIn(language, updates);
        const long count = ProcessCounts::Take().handles;
        handles = updates <= 3 ? count : handles;
        EXPECT_LE(count, handles);
        EXPECT_EQ(language == kGerman, StoredFlag(m_product, kGerman) == 1);
    }
    host.RestoreHelpFile("own.hlp");
    const DialogDriver driver{[&](HWND dialog) {
        EXPECT_EQ("ZOFAXENU.HLP", host.GetHelpFile().Right(12)) << "help in the present language";
        ChooseLanguage(dialog, kGerman);
        Press(dialog, IDCANCEL);
    }};
    EXPECT_TRUE(chooser.SelectLanguage(&host));
    EXPECT_EQ("own.hlp", host.GetHelpFile());
    host.RestoreHelpFile("");
    EXPECT_EQ(kEnglish, ZoGblGetLanguageLCID()) << "cancelled";
}

/// However the object of the choice was prepared: it offers all languages, and the application hears of the change.
TEST_F(LanguageChange, ChoiceNeedsNoPreparation)
{
    ZO_ONLY_IN(Family() != WindowsFamily::kWin32s, "changes that are told at once");
    const LoadedLanguage loaded;
    Host host;
    const struct {
        const char* name;
        void (*prepare)(CZoLanguageSupport& chooser);
    } cases[] = {
        {"constructed", [](CZoLanguageSupport&) {}},
        {"with a window", [](CZoLanguageSupport& chooser) { EXPECT_TRUE(chooser.Create()); }},
        {"with the language, but no window",
         [](CZoLanguageSupport& chooser) {
             EXPECT_TRUE(chooser.LoadSpecificLanguage(ZoGblGetLanguageLCID(), LibraryPath(), FALSE));
         }},
        {"in the chosen language",
         [](CZoLanguageSupport& chooser) {
             EXPECT_TRUE(chooser.Create() && chooser.LoadSpecificLanguage(kGerman, LibraryPath(), FALSE));
         }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CZoLanguageSupport chooser;
        c.prepare(chooser);
        const int before = host.m_updates;
        const DialogDriver driver{[](HWND dialog) {
            EXPECT_EQ(3, SendDlgItemMessageA(dialog, ZO_IDC_LANGUAGE_INSTALLED, CB_GETCOUNT, 0, 0));
            ChoosingLanguage(kGerman)(dialog);
        }};
        EXPECT_TRUE(chooser.SelectLanguage(&host));
        EXPECT_EQ(kGerman, ZoGblGetLanguageLCID());
        EXPECT_EQ(kGerman, chooser.GetLCID()) << "and its list is marked for the next choice";
        EXPECT_EQ(1u, StoredFlag(m_product, kGerman));
        EXPECT_TRUE(WaitUntil([&] { return host.m_updates > before; }));
        m_product.MakeCurrent(kEnglish);
        ASSERT_TRUE(ZoGblDumpLanguageDLL() && ZoGblLoadLanguageDLL());
    }
}

TEST_F(LanguageChange, WaitsForTheNextStartOnWin32s)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWin32s, "no changes while programs run");
    const BoxStub box;
    {
        const LoadedLanguage loaded;
        CZoLanguageSupport chooser;
        ASSERT_TRUE(chooser.LoadCurrentLanguage(LibraryPath()));
        const DialogDriver driver{ChoosingLanguage(kGerman)};
        EXPECT_TRUE(chooser.SelectLanguage(nullptr));
        EXPECT_EQ(kEnglish, chooser.GetLCID());
        char later[256] = "";
        LoadStringA(ZoGblGetLanguageDLL(), ZO_IDS_LANGUAGE_LATER, later, sizeof later);
        EXPECT_EQ(later, box.Last().text);
        EXPECT_EQ(UINT{MB_ICONINFORMATION}, box.Last().type & MB_ICONMASK);
    }
    const LoadedLanguage nextStart;
    EXPECT_EQ(kGerman, ZoGblGetLanguageLCID());
}

TEST_F(LanguageChange, WithoutMemoryOneLanguageOrTheOtherIsLoaded)
{
    CZoLanguageSupport support;
    ASSERT_TRUE(support.LoadCurrentLanguage(LibraryPath()));
    AllocationFaults memory;
    const auto loaded = [&] {
        const DWORD id = support.GetLCID();
        EXPECT_NE(nullptr, GetModuleHandleA(LibraryOf(id)));
        EXPECT_EQ(nullptr, GetModuleHandleA(LibraryOf(kEnglish + kGerman - id)));
        return id;
    };
    RunFaultLoop(memory, [&](const FaultRun& run) {
        EXPECT_EQ(1, support.SendMessage(s_change, kGerman, 1));
        run.Stop();
        EXPECT_EQ(run.Fired() ? kEnglish : kGerman, loaded());
        for (const DWORD language : {kGerman, kEnglish})
            support.SendMessage(s_change, language, 0);
        EXPECT_EQ(kEnglish, loaded()) << "works as before";
    });
    RunFaultLoop(memory, [&](const FaultRun& run) {
        EXPECT_EQ(0u, support.UpdateAllBrixelLanguages(kGerman));
        run.Stop();
        EXPECT_EQ(0u, support.UpdateAllBrixelLanguages(kEnglish));
        EXPECT_EQ(1u, StoredFlag(m_product, kEnglish));
    });
    FaultSource loading("LoadLibrary");
    const ZO_FAULTY_CALL(LoadLibraryA) load(loading, "ZOGBLBRX.DLL", nullptr, ERROR_BAD_EXE_FORMAT);
    support.SendMessage(s_change, kEnglish, 0);
    loading.Arm(1, false);
    EXPECT_EQ(1, support.SendMessage(s_change, kGerman, 1)) << "a damaged file";
    EXPECT_EQ(kEnglish, support.GetLCID());
    EXPECT_EQ(1, support.SendMessage(s_change, kGerman, 1));
    EXPECT_EQ(kGerman, support.GetLCID());
}
