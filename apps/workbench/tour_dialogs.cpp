#include "tour_dialogs.h"

#include "options.h"
#include "tour_windows.h"
#include "workbench_ids.h"

#include <common/test_printer.h>

#include <zogbl/abort_dialog.h>
#include <zogbl/argument_prompt.h>
#include <zogbl/file_open_page.h>
#include <zogbl/message_box.h>
#include <zogbl/print_dialog.h>
#include <zogbl/property_sheet.h>
#include <zogbl/resource_ids.h>
#include <zogbl/select_directory.h>
#include <zogbl/splash_wnd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <prsht.h>
#include <string>

namespace {

/// Lets the windows live for a while. \param milliseconds
void Live(DWORD milliseconds)
{
    for (const DWORD start = ::GetTickCount(); ::GetTickCount() - start < milliseconds;) {
        ::Sleep(10);
        Settle();
    }
}

/// A folder with a few files, for dialogs to show.
class SampleFolder {
public:
    static constexpr char kPath[] = "C:\\Samples";

    SampleFolder()
    {
        ::CreateDirectory(kPath, nullptr);
        for (const LPCSTR name : kFiles)
            std::ofstream(PathOf(name), std::ios::binary) << "Gr\x94\xE1"
                                                             "e 20 \xF8"
                                                             "C\r\n"; // of code page 437
    }
    ~SampleFolder()
    {
        for (const LPCSTR name : kFiles)
            ::DeleteFile(PathOf(name));
        ::RemoveDirectory(kPath); // unless others have files there
    }
    SampleFolder(const SampleFolder&) = delete;
    SampleFolder& operator=(const SampleFolder&) = delete;
    static CString PathOf(LPCSTR name) { return CString(kPath) + "\\" + name; }

    static constexpr LPCSTR kFiles[] = {"Cover sheet.txt", "Price list.txt", "Travel report.txt"};
};

class Scenes {
public:
    Scenes(MainFrame& frame, const CString& path) : m_frame(frame), m_path(path) {}

    CString Run();

private:
    using Act = std::function<bool(HWND dialog)>;

    CString PathOf(LPCSTR name) const
    {
        CString path = m_path;
        path.Replace(".png", CString("-") + name + ".png");
        return path;
    }
    bool Picture(HWND window, LPCSTR name) const
    {
        ::RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        Settle();
        return SavePicture(window, PathOf(name));
    }
    /// Takes a picture of a dialog and gives it up.
    Act Pictured(LPCSTR name) const
    {
        return [this, name](HWND dialog) {
            const bool saved = Picture(dialog, name);
            Press(dialog, IDCANCEL);
            return saved;
        };
    }
    /// Sends a command, and does something with the dialog that it opens. \param control one of the dialog's
    static bool Command(HWND window, UINT command, int control, const Act& act)
    {
        const WhenOpen open(control, act);
        ::SendMessage(window, WM_COMMAND, command, 0);
        return open.IsDone();
    }
    bool Command(UINT command, int control, const Act& act) const { return Command(m_frame, command, control, act); }
    HWND Shell() const { return m_frame.GetDocuments().GetShell(); }

    bool Splash();
    bool Leaving();
    bool Options();
    bool Novice();
    bool Menus();
    bool MailBox();
    bool Countries();
    bool Font();
    bool Files();
    bool FilePage();
    bool Folder();
    bool Printing();
    bool NoPrinter();
    bool Job();
    bool Arguments();
    bool Wizard();
    bool Locations();
    bool LocationWizard();
    bool ToolBarSetup();

    MainFrame& m_frame;
    const CString m_path;
    const SampleFolder m_samples;
};

bool Scenes::Splash()
{
    CZoSplashWnd splash;
    if (!splash.Show(ZO_IDB_SPLASH, Text(ZO_IDS_START_DOCUMENTS)))
        return false;
    splash.BringWindowToTop();
    return Picture(splash, "splash");
}

/// Answers the question for good, so that the page of kept answers has something to show.
bool Scenes::Leaving()
{
    const WhenOpen box(ZO_IDC_BOX_KEEP, [this](HWND dialog) {
        ::CheckDlgButton(dialog, ZO_IDC_BOX_KEEP, BST_CHECKED);
        const bool saved = Picture(dialog, "leave");
        Press(dialog, IDOK);
        return saved;
    });
    return ZoForgetAnswer(kLeaveQuestion) == ERROR_SUCCESS &&
           ZoAskOnce(kLeaveQuestion, m_frame, Text(ZO_IDS_LEAVE_ASK), Text(ZO_IDS_WORKBENCH_TITLE),
                     MB_OKCANCEL | MB_ICONQUESTION) == IDOK &&
           box.IsDone();
}

bool Scenes::Options()
{
    const bool done = Command(ZO_ID_FILE_OPTIONS, ZO_IDC_OPTIONS_PAGES, [this](HWND sheet) {
        static constexpr LPCSTR names[] = {"options-workspace", "options-answers", "options-documents"};
        bool saved = true;
        for (size_t page = 0; page < std::size(names); ++page) {
            ::SendMessage(sheet, PSM_SETCURSEL, page, 0);
            Live(2 * CZoStatusWnd::kLookEach);
            const auto shown = reinterpret_cast<HWND>(::SendMessage(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
            ::SetFocus(::GetNextDlgTabItem(shown, nullptr, FALSE)); // which is explained
            Live(2 * CZoStatusWnd::kLookEach);
            saved = saved && Picture(sheet, names[page]);
        }
        ::SetDlgItemText(sheet, ZO_IDC_OPTIONS_SEARCH, "16"); // which is on one page, in every language
        saved = saved && Picture(sheet, "options-search");
        ::SendMessage(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
        return saved;
    });
    return ZoForgetAnswer(kLeaveQuestion) == ERROR_SUCCESS && done;
}

/// The window that explains controls, and no status line.
bool Scenes::Novice()
{
    constexpr int kTracePage = 2;
    ZoWorkspace workspace;
    workspace.statusBar = FALSE;
    m_frame.ShowPage(kTracePage);
    m_frame.ShowBars(workspace, true);
    ::SetForegroundWindow(m_frame);
    ::SetFocus(::GetDlgItem(m_frame, ZO_IDC_PAGE_LIST));
    Live(4 * CZoStatusWnd::kLookEach); // until it knows where the pointer is
    ::SetFocus(::GetDlgItem(m_frame.GetTracePage(), ZO_IDC_TRACE_PAGE_LEVEL));
    const bool explained = WaitUntil([explanation = ::GetDlgItem(m_frame, ZO_IDC_EXPLANATION)] {
        char text[256] = "";
        ::GetWindowText(explanation, text, sizeof text);
        return Text(ZO_IDC_TRACE_PAGE_LEVEL) == text;
    });
    const bool saved =
        Picture(m_frame, "novice") && Picture(m_frame.GetDlgItem(ZO_IDC_EXPLANATION)->m_hWnd, "explanation");
    m_frame.ShowBars(ZoWorkspace(), false);
    return explained && saved;
}

bool Scenes::Menus()
{
    static constexpr LPCSTR names[] = {"menu-file", "menu-view", "menu-tools"};
    for (int i = 0; i < static_cast<int>(std::size(names)); ++i) {
        Settle();
        if (!MenuPicture(m_frame, i, PathOf(names[i])).IsSaved())
            return false;
    }
    return true;
}

bool Scenes::MailBox()
{
    CStringArray names;
    MailBoxPage::ListNames(names);
    return names.GetSize() > 0 && Command(ZO_ID_TOOLS_MAILBOX, ZO_IDC_NAME_FIELD, [&](HWND dialog) {
               ::SetDlgItemText(dialog, ZO_IDC_NAME_FIELD, names[0]);
               Press(dialog, IDOK); // which is refused: the name is taken
               return ::IsWindow(dialog) && Pictured("ask-name")(dialog);
           });
}

bool Scenes::Countries()
{
    return Command(ZO_ID_TOOLS_COUNTRIES, ZO_IDC_STRING_LIST, [this](HWND dialog) {
        Press(dialog, ZO_IDC_STRING_NONE);
        for (const WPARAM row : {2, 3, 5}) {
            ::SendDlgItemMessage(dialog, ZO_IDC_STRING_LIST, LB_SETSEL, TRUE, static_cast<LPARAM>(row));
            ::SendMessage(dialog, WM_COMMAND, MAKEWPARAM(ZO_IDC_STRING_LIST, LBN_SELCHANGE),
                          reinterpret_cast<LPARAM>(::GetDlgItem(dialog, ZO_IDC_STRING_LIST)));
        }
        const bool saved = Picture(dialog, "string-select");
        ::SetDlgItemText(dialog, ZO_IDC_STRING_FILTER, "an");
        Settle();
        return saved && Pictured("string-filter")(dialog);
    });
}

bool Scenes::Font() { return Command(Shell(), ZO_ID_DOCUMENT_FONT, ZO_IDC_FONT_FACE, Pictured("font")); }

bool Scenes::Files()
{
    return Command(ZO_ID_DOCUMENT_OPEN, ZO_IDC_FILE_NAME, [this](HWND dialog) {
        ::SetDlgItemText(dialog, ZO_IDC_FILE_NAME, SampleFolder::kPath);
        Press(dialog, IDOK); // which shows the folder
        WaitUntil([&] { return ::SendDlgItemMessage(dialog, ZO_IDC_FILE_LIST, LB_GETCOUNT, 0, 0) > 0; });
        return Pictured("files")(dialog);
    });
}

/// The form for files as a page of a sheet.
bool Scenes::FilePage()
{
    CZoPropertySheet sheet(ZO_IDS_DOCUMENT_OPEN_TITLE, &m_frame);
    const CString filter = FileFilter();
    CZoFileOpenPage page(TRUE, 0, "txt", SampleFolder::PathOf("*.txt"), OFN_HIDEREADONLY, filter);
    sheet.AddPage(&page);
    const WhenOpen open(IDCANCEL, [this](HWND window) {
        Live(200); // until the folder has been read, by another thread
        const bool saved = Picture(window, "file-page");
        ::SendMessage(window, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
        return saved;
    });
    return sheet.DoModal() == IDCANCEL && open.IsDone();
}

bool Scenes::Folder()
{
    char chosen[MAX_PATH] = "", first[MAX_PATH] = "";
    lstrcpyn(first, SampleFolder::kPath, sizeof first);
    const WhenOpen pick(ZO_IDC_FOLDER_TREE, Pictured("folder"));
    return ZoSelectDirectory(chosen, sizeof chosen, m_frame, first, ZO_SELECT_KEEP_CASE, 0, nullptr, nullptr) != IDOK &&
           pick.IsDone();
}

bool Scenes::Printing()
{
    const TestPrinter printer;
    CZoPrintDialog dialog(&m_frame);
    dialog.SetPageLimits(1, 12);
    dialog.SetPages(2, 5);
    dialog.SetSelection(TRUE);
    dialog.SetCopies(2, TRUE);
    const WhenOpen open(ZO_IDC_PRINT_PRINTERS, Pictured("print"));
    return printer.IsThere() && dialog.DoModal() == IDCANCEL && open.IsDone();
}

/// A system without a printer is told in words.
bool Scenes::NoPrinter()
{
    return Command(Shell(), ZO_ID_DOCUMENT_PRINT, ZO_IDC_PRINT_PRINTERS, Pictured("no-printer"));
}

bool Scenes::Job()
{
    constexpr LONGLONG kLength = 1000;
    CZoAbortDialog job(&m_frame);
    bool saved = job.Start(Text(ZO_IDS_WIZARD_TITLE), Text(ZO_IDS_WIZARD_WORK), kLength) != FALSE;
    const DWORD start = ::GetTickCount();
    while (saved && ::GetTickCount() - start < 5500) { // until it says how long it will still take
        ::Sleep(50);
        saved = job.SetPosition((::GetTickCount() - start) / 15) != FALSE;
    }
    saved = saved && Picture(job, "abort");
    job.Finish();
    return saved;
}

bool Scenes::Arguments()
{
    PicturedDialog<CZoArgumentPromptDlg> prompt(PathOf("arguments"), &m_frame);
    prompt.SetProgram(SampleFolder::PathOf("ZoStartReport.exe"));
    prompt.SetPrompt(Text(ZO_IDS_DOCUMENT_OPEN_TITLE));
    prompt.SetAnswer("tour.txt");
    return prompt.DoModal() == IDOK && prompt.IsSaved();
}

/// All the way: the file that comes out is there.
bool Scenes::Wizard()
{
    constexpr LPCSTR kResult = "Travel report 2.txt";
    ZoWorkspace workspace;
    ::lstrcpyn(workspace.folder, SampleFolder::kPath, sizeof workspace.folder);
    m_frame.ShowBars(workspace, false);
    const bool done = Command(ZO_ID_TOOLS_TRANSLATE, ZO_IDC_WIZARD_PAGE, [&](HWND wizard) {
        const auto page = [&](int control) {
            HWND found = nullptr;
            WaitUntil([&] {
                for (HWND child = ::GetWindow(wizard, GW_CHILD); child != nullptr && found == nullptr;
                     child = ::GetWindow(child, GW_HWNDNEXT)) {
                    if (::IsWindowVisible(child) && ::GetDlgItem(child, control) != nullptr)
                        found = child;
                }
                return found != nullptr;
            });
            return found;
        };
        bool saved = page(ZO_IDC_WIZARD_TABLES) != nullptr && Picture(wizard, "wizard-1");
        Press(wizard, IDOK);
        const HWND file = page(ZO_IDC_FILE_NAME);
        ::SetDlgItemText(file, ZO_IDC_FILE_NAME, SampleFolder::PathOf("Travel report.txt"));
        saved = saved && Picture(wizard, "wizard-2");
        Press(wizard, IDOK);
        const HWND name = page(ZO_IDC_WIZARD_NAME);
        saved = saved && Picture(wizard, "wizard-3");
        ::SetDlgItemText(name, ZO_IDC_WIZARD_NAME, "Price list.txt");
        Press(wizard, IDOK); // which is refused: the name is taken
        saved = saved && Picture(wizard, "wizard-4");
        ::SetDlgItemText(name, ZO_IDC_WIZARD_NAME, kResult);
        Press(wizard, IDOK);
        saved = saved && page(ZO_IDC_WIZARD_DONE) != nullptr && Picture(wizard, "wizard-5");
        Press(wizard, IDCANCEL);
        return saved;
    });
    m_frame.ShowBars(ZoWorkspace(), false);
    return ::DeleteFile(SampleFolder::PathOf(kResult)) && done;
}

/// The pages of the sheet; on the last one, what would be dialed.
bool Scenes::Locations()
{
    return Command(ZO_ID_TOOLS_LOCATIONS, ZO_IDC_LOC_LIST, [this](HWND sheet) {
        static constexpr LPCSTR names[] = {"location-address", "location-place", "location-numbers",
                                           "location-outside"};
        bool saved = true;
        for (size_t page = 0; page < std::size(names); ++page) {
            ::SendMessage(sheet, PSM_SETCURSEL, page, 0);
            Live(300); // until what is dialed has been worked out
            saved = saved && Picture(sheet, names[page]);
        }
        ::SendMessage(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
        return saved;
    });
}

bool Scenes::LocationWizard()
{
    return Command(ZO_ID_TOOLS_LOCATION_WIZARD, ZO_IDC_WIZARD_PAGE, Pictured("location-wizard"));
}

/// The bar by itself, and what sets it up.
bool Scenes::ToolBarSetup()
{
    m_frame.SendMessage(WM_IDLEUPDATECMDUI, TRUE, 0);
    return Picture(m_frame.GetToolBar(), "tool-bar") &&
           Command(ZO_ID_VIEW_TOOL_BAR_SETUP, ZO_IDC_TOOL_BAR_SHOWN, Pictured("tool-bar-setup"));
}

CString Scenes::Run()
{
    static constexpr struct {
        LPCSTR name;
        bool (Scenes::*run)();
    } scenes[] = {
        {"splash", &Scenes::Splash},
        {"leave", &Scenes::Leaving},
        {"options", &Scenes::Options},
        {"novice", &Scenes::Novice},
        {"ask-name", &Scenes::MailBox},
        {"countries", &Scenes::Countries},
        {"font", &Scenes::Font},
        {"wizard", &Scenes::Wizard},
        {"files", &Scenes::Files},
        {"file page", &Scenes::FilePage},
        {"folder", &Scenes::Folder},
        {"print", &Scenes::Printing},
        {"no printer", &Scenes::NoPrinter},
        {"abort", &Scenes::Job},
        {"arguments", &Scenes::Arguments},

        {"menus", &Scenes::Menus},
        {"locations", &Scenes::Locations},
        {"location wizard", &Scenes::LocationWizard},
        {"tool bar", &Scenes::ToolBarSetup},
    };
    for (const auto& scene : scenes) {
        if (!(this->*scene.run)())
            return scene.name;
    }
    m_frame.ShowPage(0);
    return CString();
}

} // namespace

CString PictureDialogs(MainFrame& frame, const CString& path) { return Scenes(frame, path).Run(); }

int PrintDocument(HWND shell, const CString& file)
{
    const TestPrinter printer;
    ::DeleteFile(file);
    const WhenOpen print(ZO_IDC_PRINT_PRINTERS, [&](HWND dialog) {
        const WhenOpen name(ZO_IDC_FILE_NAME, [&](HWND form) {
            ::SetDlgItemText(form, ZO_IDC_FILE_NAME, file);
            Press(form, IDOK);
            return true;
        });
        Press(dialog, IDOK); // the printer prints to files, so it asks for one
        return name.IsDone();
    });
    ::SendMessage(shell, WM_COMMAND, ZO_ID_DOCUMENT_PRINT, 0);
    std::ifstream printed(file, std::ios::binary);
    int pages = 0;
    for (std::string line; print.IsDone() && std::getline(printed, line);)
        std::sscanf(line.c_str(), "%%%%Pages: %d", &pages);
    return pages;
}
