// A change of language in all processes at once, with their windows open.
#include <zogbl/resource_lookup.h>

#include "language_driver.h"
#include "product/registered_product.h"
#include "support/test.h"

#include <zomfx/frame_window.h>

namespace {

constexpr DWORD kJapanese = 0x0411;
constexpr DWORD kTurkish = 0x041F; // without a library

const UINT s_change = RegisterWindowMessageA("ZoBrixelLanguageChange");
const UINT s_update = CZoLanguageSupport::GetUpdateMessage();

LPCSTR LibraryOf(DWORD language)
{
    return language == kGerman ? "ZOGBLDEU.DLL" : language == kJapanese ? "ZOGBLJPN.DLL" : "ZOGBLENU.DLL";
}

/// What a language library says, whichever is in force.
class LanguageFile {
public:
    explicit LanguageFile(DWORD language)
        : m_module(LoadLibraryExA(LibraryOf(language), nullptr, LOAD_LIBRARY_AS_DATAFILE))
    {
        EXPECT_NE(nullptr, m_module) << LibraryOf(language);
    }
    ~LanguageFile() { FreeLibrary(m_module); }
    LanguageFile(const LanguageFile&) = delete;
    LanguageFile& operator=(const LanguageFile&) = delete;

    std::string Text(UINT id) const
    {
        char text[256] = "";
        LoadStringA(m_module, id, text, sizeof text);
        EXPECT_STRNE("", text) << id;
        return text;
    }
    /// The first item of the Workbench's menu.
    std::string MenuText() const
    {
        const HMENU menu = LoadMenuA(m_module, MAKEINTRESOURCEA(ZO_IDR_WORKBENCH_MENU));
        char item[64] = "";
        GetMenuStringA(menu, 0, item, sizeof item, MF_BYPOSITION);
        DestroyMenu(menu);
        return item;
    }
    /// Title and texts of the controls of a dialog, as a new one shows them.
    std::vector<std::string> DialogTexts(UINT id) const
    {
        const HWND dialog = CreateDialogParamA(m_module, MAKEINTRESOURCEA(id), nullptr, &Ignore, 0);
        EXPECT_NE(nullptr, dialog) << id;
        std::vector<std::string> texts = {TextOf(dialog)};
        for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
            texts.push_back(TextOf(child));
        DestroyWindow(dialog);
        return texts;
    }

private:
    static INT_PTR CALLBACK Ignore(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

    HMODULE m_module;
};

CString Text(UINT id)
{
    CString text;
    ZoGblLoadString(id, text);
    return text;
}

bool WaitUntil(const std::function<bool()>& condition)
{
    const DWORD start = GetTickCount();
    while (!condition() && GetTickCount() - start < kChildTimeout) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
    }
    return condition();
}

// A host of the suite -------------------------------------------------------------------------------------------------

enum HostText : int { kPlain = 101, kMenuText, kUpdates, kLibraries, kCountry };
constexpr HostText kHostTexts[] = {kPlain, kMenuText, kUpdates, kLibraries, kCountry};

/// The main window of a host, which shows in its controls what came of the changes.
class Host : public CZoFrameWnd {
public:
    Host()
    {
        CreateEx(0, AfxRegisterWndClass(0), "", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr, nullptr);
        for (const HostText id : kHostTexts)
            m_texts[id - kPlain].Create("", WS_VISIBLE, CRect(0, 0, 100, 10), this, id);
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
        SetWindowText(Text(ZO_IDS_PAGE_LANGUAGE));
        const HMENU menu = LoadMenuIndirectA(ZoGblLockResource(MAKEINTRESOURCE(ZO_IDR_WORKBENCH_MENU), RT_MENU));
        char item[64] = "";
        GetMenuStringA(menu, 0, item, sizeof item, MF_BYPOSITION);
        DestroyMenu(menu);
        CString updates, libraries;
        updates.Format("%d", m_updates);
        for (const DWORD language : {kEnglish, kGerman, kJapanese}) {
            if (GetModuleHandleA(LibraryOf(language)) != nullptr)
                libraries += LibraryOf(language);
        }
        CString country;
        GetCountryNameFromCode(276, country);
        const CString texts[] = {Text(ZO_IDS_STATE_ON), item, updates, libraries, country};
        for (int i = 0; i < 5; ++i)
            m_texts[i].SetWindowText(texts[i]);
    }

    CStatic m_texts[5];
};

BEGIN_MESSAGE_MAP(Host, CZoFrameWnd)
    ON_REGISTERED_MESSAGE(s_update, OnUpdate)
END_MESSAGE_MAP()

/// A dialog that is open until the parent says go.
class WaitingDialog : public CZoDialog {
public:
    explicit WaitingDialog(const ChildContext& child) : CZoDialog(ZO_IDD_LANGUAGE_SELECTION), m_child(child) {}

protected:
    BOOL OnInitDialog() override
    {
        CZoDialog::OnInitDialog();
        SetDlgItemText(ZO_IDC_LANGUAGE_OF_USER, "own");
        PostMessage(WM_APP);
        return TRUE;
    }
    LRESULT OnWait(WPARAM, LPARAM)
    {
        m_child.Report(std::to_string(HandleToULong(m_hWnd)));
        m_child.Ready();
        m_child.WaitForGo();
        EndDialog(IDOK);
        return 0;
    }
    DECLARE_MESSAGE_MAP()

private:
    const ChildContext& m_child;
};

BEGIN_MESSAGE_MAP(WaitingDialog, CZoDialog)
    ON_MESSAGE(WM_APP, OnWait)
END_MESSAGE_MAP()

ZO_CHILD(RunHost)
{
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    {
        Host host;
        child.Report(std::to_string(HandleToULong(host.m_hWnd)));
        EXPECT_EQ(IDOK, WaitingDialog(child).DoModal());
    }
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
}

/// A second host, seen through its windows.
class OtherHost {
public:
    OtherHost() : m_child("RunHost")
    {
        m_child.WaitUntilReady();
        m_window = Window(0);
        m_dialog = Window(1);
    }
    ChildProcess& Process() { return m_child; }
    std::string Shown(HostText id) const { return TextOf(GetDlgItem(m_window, id)); }

    /// Waits until it has heard of \p updates changes, and checks that everything is in the language.
    void ExpectAllIn(DWORD language, int updates)
    {
        SCOPED_TRACE(LibraryOf(language));
        const LanguageFile expected(language);
        EXPECT_TRUE(WaitUntil([&] { return Shown(kUpdates) == std::to_string(updates); })) << Shown(kUpdates);
        EXPECT_EQ(LibraryOf(language), Shown(kLibraries)) << "and no other";
        EXPECT_EQ(expected.Text(ZO_IDS_PAGE_LANGUAGE), TextOf(m_window));
        EXPECT_EQ(expected.Text(ZO_IDS_STATE_ON), Shown(kPlain));
        EXPECT_EQ(expected.MenuText(), Shown(kMenuText));
        if (const auto country = m_germany.find(language); country != m_germany.end()) {
            EXPECT_EQ(country->second, Shown(kCountry));
        }
        // The open dialog is as a new one; but what the program itself wrote stays.
        const std::vector<std::string> texts = expected.DialogTexts(ZO_IDD_LANGUAGE_SELECTION);
        EXPECT_EQ(texts[0], TextOf(m_dialog));
        size_t index = 1;
        for (HWND child = GetWindow(m_dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
            if (GetDlgCtrlID(child) == ZO_IDC_LANGUAGE_OF_USER) {
                EXPECT_EQ("own", TextOf(child));
            } else {
                EXPECT_EQ(texts.at(index), TextOf(child)) << GetDlgCtrlID(child);
            }
            ++index;
        }
        EXPECT_EQ(texts.size(), index);
    }

private:
    HWND Window(size_t report)
    {
        const auto& reports = m_child.Reports();
        EXPECT_LT(report, reports.size());
        return report < reports.size() ? static_cast<HWND>(ULongToHandle(std::stoul(reports[report]))) : nullptr;
    }

    const std::map<DWORD, std::string> m_germany = {{kEnglish, "Germany"}, {kGerman, "Deutschland"}};
    ChildProcess m_child;
    HWND m_window;
    HWND m_dialog;
};

class LanguageChange : public testing::Test {
protected:
    LanguageChange() { m_product.SetLanguage(kJapanese, 0); }

    /// What the registry says of a language, for a module.
    DWORD Stored(const CString& key, DWORD language)
    {
        CString name;
        name.Format("%04lx", language);
        DWORD value = 77;
        m_product.Config().GetValue(ZO_MODE_LOCAL_MACHINE, key, name, value, 77);
        return value;
    }

    RegisteredProduct m_product;
};

} // namespace

TEST_F(LanguageChange, EachWindowLoadsAndTheLastTellsTheApplication)
{
    m_product.SetLanguage(kTurkish, 0);
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
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
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
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
    version.Format("\\%d.%d\\Languages", HIWORD(major), LOWORD(major));
    EXPECT_EQ(0u, support.UpdateAllBrixelLanguages(0x0999)) << "nothing";
    EXPECT_EQ(77u, Stored(modules + "\\VIEWBrixel" + version, kGerman));
    for (const DWORD chosen : {kGerman, kEnglish}) {
        EXPECT_EQ(0u, support.UpdateAllBrixelLanguages(chosen));
        for (const char* module : {"VIEWBrixel", "DATABrixel"}) {
            for (const DWORD language : {kEnglish, kGerman, kJapanese})
                EXPECT_EQ(language == chosen, Stored(modules + "\\" + module + version, language)) << module;
        }
    }
    EXPECT_EQ(kEnglish, support.GetLCID()) << "nothing is loaded by it";
}

TEST_F(LanguageChange, ReachesEveryProcessWithItsWindowsOpen)
{
    ZO_ONLY_IN(Family() != WindowsFamily::kWin32s, "changes that are told at once");
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    Host host;
    auto first = std::make_unique<OtherHost>();
    OtherHost second;
    OtherHost killed;
    killed.Process().Kill(); // leaves its row behind
    CZoLanguageSupport chooser;
    ASSERT_TRUE(chooser.LoadCurrentLanguage(LibraryPath()));
    DWORD handles = 0;
    int updates = 0;
    for (const DWORD language : {kGerman, kJapanese, kEnglish, kGerman, kJapanese, kEnglish}) {
        const DialogDriver driver{[=](HWND dialog) {
            ChooseLanguage(dialog, language);
            Press(dialog, IDOK);
        }};
        EXPECT_TRUE(chooser.SelectLanguage(&host));
        ++updates;
        EXPECT_EQ(language, ZoGblGetLanguageLCID());
        EXPECT_EQ(GetModuleHandleA(LibraryOf(language)), ZoGblGetLanguageDLL());
        EXPECT_TRUE(WaitUntil([&] { return host.m_updates == updates; })) << host.m_updates;
        for (OtherHost* other : {first.get(), &second})
            other->ExpectAllIn(language, updates);
        DWORD count = 0;
        GetProcessHandleCount(GetCurrentProcess(), &count);
        if (updates <= 3)
            handles = count;
        EXPECT_LE(count, handles);
        EXPECT_EQ(language == kGerman, Stored(m_product.LanguagesKey(), kGerman) == 1);
    }
    {
        host.RestoreHelpFile("own.hlp");
        const DialogDriver driver{[&](HWND dialog) {
            EXPECT_EQ("ZOFAXENU.HLP", host.GetHelpFile().Right(12)) << "help in the present language";
            ChooseLanguage(dialog, kGerman);
            Press(dialog, IDCANCEL);
        }};
        EXPECT_TRUE(chooser.SelectLanguage(&host));
        EXPECT_EQ("own.hlp", host.GetHelpFile());
        host.RestoreHelpFile("");
    }
    EXPECT_EQ(kEnglish, ZoGblGetLanguageLCID()) << "cancelled";
    first->Process().Go();
    second.Process().Go();
    first.reset();
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
}

/// However the object of the choice was prepared: it offers all languages, and the application hears of the change.
TEST_F(LanguageChange, ChoiceNeedsNoPreparation)
{
    ZO_ONLY_IN(Family() != WindowsFamily::kWin32s, "changes that are told at once");
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
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
            ChooseLanguage(dialog, kGerman);
            Press(dialog, IDOK);
        }};
        EXPECT_TRUE(chooser.SelectLanguage(&host));
        EXPECT_EQ(kGerman, ZoGblGetLanguageLCID());
        EXPECT_EQ(kGerman, chooser.GetLCID()) << "and its list is marked for the next choice";
        EXPECT_EQ(1u, Stored(m_product.LanguagesKey(), kGerman));
        EXPECT_TRUE(WaitUntil([&] { return host.m_updates > before; }));
        m_product.MakeCurrent(kEnglish);
        ASSERT_TRUE(ZoGblDumpLanguageDLL());
        ASSERT_TRUE(ZoGblLoadLanguageDLL());
    }
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
}

TEST_F(LanguageChange, WaitsForTheNextStartOnWin32s)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWin32s, "no changes while programs run");
    const BoxStub box;
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    {
        CZoLanguageSupport chooser;
        ASSERT_TRUE(chooser.LoadCurrentLanguage(LibraryPath()));
        const DialogDriver driver{[](HWND dialog) {
            ChooseLanguage(dialog, kGerman);
            Press(dialog, IDOK);
        }};
        EXPECT_TRUE(chooser.SelectLanguage(nullptr));
        EXPECT_EQ(kEnglish, chooser.GetLCID());
        EXPECT_EQ(LanguageFile(kEnglish).Text(ZO_IDS_LANGUAGE_LATER), box.Last().text);
        EXPECT_EQ(MB_ICONINFORMATION, static_cast<long>(box.Last().type & MB_ICONMASK));
    }
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    EXPECT_EQ(kGerman, ZoGblGetLanguageLCID()) << "the next start";
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
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
        EXPECT_EQ(1u, Stored(m_product.LanguagesKey(), kEnglish));
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
