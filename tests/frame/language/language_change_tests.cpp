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
        return 0;
    }
    DECLARE_MESSAGE_MAP()

private:
    void Reload()
    {
        std::string title = std::to_string(m_updates);
        for (const DWORD language : {kEnglish, kGerman, kJapanese})
            title += GetModuleHandleA(LibraryOf(language)) != nullptr ? std::string("|") + LibraryOf(language) : "";
        const HMENU menu = LoadMenuIndirectA(ZoGblLockResource(MAKEINTRESOURCE(ZO_IDR_HOST_MENU), RT_MENU));
        char item[64] = "";
        GetMenuStringA(menu, 0, item, sizeof item, MF_BYPOSITION);
        DestroyMenu(menu);
        CString country;
        GetCountryNameFromCode(276, country);
        SetWindowText((title + "|" + item + "|" + std::string(country)).c_str());
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
    child.Report(std::to_string(HandleToULong(host.m_hWnd)));
    child.ReadyUntilGo();
}

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
        for (MSG message; PeekMessageA(&message, host.m_hWnd, s_update, s_update, PM_REMOVE); ++count)
            continue;
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

TEST_F(LanguageChange, ReachesEveryProcess)
{
    ZO_ONLY_IN(Family() != WindowsFamily::kWin32s, "changes that are told at once");
    const LoadedLanguage loaded;
    Host host;
    ChildProcess first("RunHost"), second("RunHost"), killed("RunHost");
    std::vector<HWND> hosts = {host.m_hWnd};
    for (ChildProcess* child : {&first, &second, &killed}) {
        ASSERT_TRUE(child->WaitUntilReady());
        hosts.push_back(static_cast<HWND>(ULongToHandle(std::stoul(child->Reports().at(0)))));
    }
    killed.Kill(); // leaves its row behind
    hosts.pop_back();
    CZoLanguageSupport chooser;
    ASSERT_TRUE(chooser.LoadCurrentLanguage(LibraryPath()));
    const std::pair<DWORD, std::string> choices[] = {{kGerman, "|ZOGBLDEU.DLL|DEU|Deutschland"},
                                                     {kJapanese, "|ZOGBLJPN.DLL|JPN|"},
                                                     {kEnglish, "|ZOGBLENU.DLL|ENU|Germany"}};
    long handles = 0;
    for (int updates = 1; updates <= 6; ++updates) {
        const auto& [language, shown] = choices[(updates - 1) % 3];
        const DialogDriver driver{ChoosingLanguage(language)};
        EXPECT_TRUE(chooser.SelectLanguage(&host));
        EXPECT_EQ(language, ZoGblGetLanguageLCID());
        const std::string expected = std::to_string(updates) + shown;
        for (const HWND window : hosts) {
            const auto title = [&] { return TextOf(window).substr(0, expected.size()); };
            WaitUntil([&] { return title() == expected; });
            EXPECT_EQ(expected, title()) << "this library and no other";
        }
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
        bool hasWindow;
        DWORD language; // 0: none is loaded
    } cases[] = {{false, 0}, {true, 0}, {false, kEnglish}, {true, kGerman}};
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        CZoLanguageSupport chooser;
        EXPECT_TRUE(!c.hasWindow || chooser.Create());
        EXPECT_TRUE(c.language == 0 || chooser.LoadSpecificLanguage(c.language, LibraryPath(), FALSE));
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
    const auto loaded = [&] {
        const DWORD id = support.GetLCID();
        EXPECT_NE(nullptr, GetModuleHandleA(LibraryOf(id)));
        EXPECT_EQ(nullptr, GetModuleHandleA(LibraryOf(kEnglish + kGerman - id)));
        return id;
    };
    RunFaultLoop<AllocationFaults>([&](const FaultRun& run) {
        EXPECT_EQ(1, support.SendMessage(s_change, kGerman, 1));
        run.Stop();
        EXPECT_EQ(run.Fired() ? kEnglish : kGerman, loaded());
        for (const DWORD language : {kGerman, kEnglish})
            support.SendMessage(s_change, language, 0);
        EXPECT_EQ(kEnglish, loaded()) << "works as before";
    });
    RunFaultLoop<AllocationFaults>([&](const FaultRun& run) {
        EXPECT_EQ(0u, support.UpdateAllBrixelLanguages(kGerman));
        run.Stop();
        EXPECT_EQ(0u, support.UpdateAllBrixelLanguages(kEnglish));
        EXPECT_EQ(1u, StoredFlag(m_product, kEnglish));
    });
}
