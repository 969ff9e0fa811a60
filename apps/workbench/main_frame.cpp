#include "main_frame.h"

#include "commands.h"
#include "options.h"
#include "workbench_ids.h"

#include <zogbl/about_dialog.h>
#include <zogbl/country_code.h>
#include <zogbl/dialog.h>
#include <zogbl/language_support.h>
#include <zogbl/message_box.h>
#include <zogbl/module.h>
#include <zogbl/resource_lookup.h>

#include <algorithm>
#include <iterator>

namespace {

constexpr UINT kPageListId = ZO_IDC_PAGE_LIST;
constexpr UINT kFirstPageWindowId = ZO_IDC_PAGE_COUNTRIES; // what explains a page has its number
constexpr int kGap = 6;
constexpr int kExplanationLines = 2;
constexpr int kLanguagePane = 2; // of the status line; it opens the choice of a language

/// The buttons of the tool bar, with the pictures that make_pictures.py draws.
constexpr ZoToolButton kButtons[] = {
    {ZO_ID_FILE_NEW, 0},
    {ZO_ID_DOCUMENT_OPEN, 1},
    {0},
    {ZO_ID_TOOLS_LOCATIONS, 4},
    {ZO_ID_TOOLS_LOCATION_WIZARD, 5, FALSE},
    {ZO_ID_TOOLS_MAILBOX, 6},
    {ZO_ID_TOOLS_COUNTRIES, 7, FALSE},
    {ZO_ID_TOOLS_TRANSLATE, 8},
    {0},
    {ZO_ID_TOOLS_EDIT, 9},
    {ZO_ID_FILE_LANGUAGE, 2},
    {ZO_ID_FILE_OPTIONS, 3},
    {ZO_ID_APP_ABOUT, 10},
};
constexpr int kPictureWidth = 16;

const UINT s_traceLevelMessage = CZoTrace::GetNotifyMessage();
const UINT s_languageMessage = CZoLanguageSupport::GetUpdateMessage();

} // namespace

BEGIN_MESSAGE_MAP(MainFrame, CZoFrameWnd)
    ON_WM_CREATE()
    ON_WM_CLOSE()
    ON_WM_INITMENUPOPUP()
    ON_WM_SETFOCUS()
    ON_WM_GETMINMAXINFO()
    ON_WM_TIMECHANGE()
    ON_LBN_SELCHANGE(kPageListId, OnPageChosen)
    ON_COMMAND_RANGE(ZO_ID_VIEW_COUNTRIES, ZO_ID_VIEW_LINES, OnViewPage)
    ON_UPDATE_COMMAND_UI_RANGE(ZO_ID_VIEW_COUNTRIES, ZO_ID_VIEW_LINES, OnUpdateViewPage)
    ON_COMMAND_RANGE(ZO_ID_VIEW_TRANSLATION, ZO_ID_VIEW_TRANSLATION, OnViewPage)
    ON_UPDATE_COMMAND_UI_RANGE(ZO_ID_VIEW_TRANSLATION, ZO_ID_VIEW_TRANSLATION, OnUpdateViewPage)
    ON_COMMAND_RANGE(ZO_ID_VIEW_CONTROLS, ZO_ID_VIEW_CONTROLS, OnViewPage)
    ON_UPDATE_COMMAND_UI_RANGE(ZO_ID_VIEW_CONTROLS, ZO_ID_VIEW_CONTROLS, OnUpdateViewPage)
    ON_REGISTERED_MESSAGE(s_traceLevelMessage, OnTraceLevel)
    ON_REGISTERED_MESSAGE(s_languageMessage, OnLanguageUpdate)
    ON_COMMAND(ZO_ID_FILE_LANGUAGE, OnChooseLanguage)
    ON_NOTIFY(ZON_PANE_PRESSED, AFX_IDW_STATUS_BAR, OnStatusPressed)
    ON_COMMAND(ZO_ID_FILE_NEW, OnNewDocument)
    ON_COMMAND(ZO_ID_DOCUMENT_OPEN, OnOpenDocument)
    ON_COMMAND(ZO_ID_TOOLS_OPEN, OnOpenTools)
    ON_COMMAND(ZO_ID_TOOLS_EDIT, OnEditTools)
    ON_COMMAND(ZO_ID_FILE_OPTIONS, OnOptions)
    ON_COMMAND(ZO_ID_VIEW_TOOL_BAR, OnToolBar)
    ON_UPDATE_COMMAND_UI(ZO_ID_VIEW_TOOL_BAR, OnUpdateToolBar)
    ON_COMMAND(ZO_ID_VIEW_TOOL_BAR_SETUP, OnToolBarSetup)
    ON_COMMAND(ZO_ID_VIEW_STATUS_BAR, OnStatusBar)
    ON_UPDATE_COMMAND_UI(ZO_ID_VIEW_STATUS_BAR, OnUpdateStatusBar)
    ON_COMMAND_RANGE(ZO_ID_RECENT_FIRST, ZO_ID_RECENT_LAST, OnRecentFile)
    ON_COMMAND(ZO_ID_TOOLS_LOCATIONS, OnLocations)
    ON_COMMAND(ZO_ID_TOOLS_LOCATION_WIZARD, OnLocationWizard)
    ON_COMMAND(ZO_ID_TOOLS_MAILBOX, OnMailBox)
    ON_COMMAND(ZO_ID_TOOLS_COUNTRIES, OnCountries)
    ON_COMMAND(ZO_ID_TOOLS_TRANSLATE, OnTranslate)
    ON_COMMAND(ZO_ID_APP_ABOUT, OnAbout)
    ON_COMMAND(ZO_ID_APP_EXIT, OnExit)
END_MESSAGE_MAP()

BOOL MainFrame::CreateFrame()
{
    const HICON icon = AfxGetApp()->LoadIcon(ZO_IDI_WORKBENCH);
    const LPCSTR windowClass =
        AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW), reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1), icon);
    if (!Create(windowClass, "", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CRect(40, 40, 840, 640), nullptr, nullptr))
        return FALSE;
    ReloadTexts();
    ShowPage(0);
    return TRUE;
}

int MainFrame::OnCreate(CREATESTRUCT* create)
{
    if (CZoFrameWnd::OnCreate(create) != 0)
        return -1;
    const CRect nowhere;
    if (!m_pageList.Create(WS_VISIBLE | WS_BORDER | WS_TABSTOP | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, nowhere, this,
                           kPageListId) ||
        !m_toolBar.Create(this) ||
        !m_toolBar.SetButtons(kButtons, static_cast<int>(std::size(kButtons)), ZO_IDB_TOOL_BAR, kPictureWidth,
                              "Workbench") ||
        !m_explanation.Create(WS_BORDER, nowhere, this, ZO_IDC_EXPLANATION) ||
        !m_status.Create(WS_VISIBLE | CZoTextPanel::kSizeGrip, nowhere, this, AFX_IDW_STATUS_BAR))
        return -1;
    ZoPane panes[2]; // a message and the language
    panes[kLanguagePane - 1].width = ZoPane::Width::kFitted;
    panes[kLanguagePane - 1].isButton = TRUE;
    panes[kLanguagePane - 1].edge = ZoEdge::kThinRaised;
    m_status.SetPanes(panes, 2);
    for (int i = 0; i < kPages; ++i) {
        if (!m_pages[i]->CreatePage(this, kFirstPageWindowId + static_cast<UINT>(i)))
            return -1;
    }
    return 0;
}

// Texts ---------------------------------------------------------------------------------------------------------------

void MainFrame::ReloadTexts()
{
    SetWindowText(Text(ZO_IDS_WORKBENCH_TITLE));
    LoadMenuOf(m_hWnd, ZO_IDR_WORKBENCH_MENU);
    m_tools.Refresh();
    m_pageList.ResetContent();
    for (Page* page : m_pages) {
        m_pageList.AddString(Text(page->GetTitleId()));
        page->Reload();
    }
    m_pageList.SetCurSel(m_shown);
    SetMessageText(AFX_IDS_IDLEMESSAGE);
    m_status.SetPaneText(kLanguagePane, LanguagePage::GetLanguageName());
    m_documents.ReloadTexts();
    for (CWnd* control :
         {static_cast<CWnd*>(&m_pageList), static_cast<CWnd*>(&m_explanation), static_cast<CWnd*>(&m_status)})
        control->SetFont(ControlFont());
    m_explanation.SendMessage(s_languageMessage);
    RecalcLayout();
}

CString MainFrame::GetStatusText() const
{
    const CZoCountryCodeList* countries = GetGlobalCountryList();
    CString text;
    text.Format(Text(ZO_IDS_STATUS_COUNTRIES), countries != nullptr ? countries->GetCount() : 0);
    return text;
}

// Pages ---------------------------------------------------------------------------------------------------------------

void MainFrame::ShowPage(int index)
{
    if (index < 0 || index >= kPages)
        return;
    if (m_shown >= 0 && m_shown != index)
        m_pages[m_shown]->ShowWindow(SW_HIDE);
    m_shown = index;
    m_pageList.SetCurSel(index);
    m_pages[index]->Refresh();
    m_pages[index]->ShowWindow(SW_SHOW);
}

void MainFrame::ShowPage(const Page& page)
{
    for (int i = 0; i < kPages; ++i) {
        if (m_pages[i] == &page)
            ShowPage(i);
    }
}

/// Calendars of the pages show another today.
void MainFrame::OnTimeChange() { SendMessageToDescendants(WM_TIMECHANGE); }

void MainFrame::OnPageChosen() { ShowPage(m_pageList.GetCurSel()); }

void MainFrame::OnViewPage(UINT id)
{
    for (int i = 0; i < kPages; ++i) {
        if (m_pages[i]->GetCommandId() == id)
            ShowPage(i);
    }
}

void MainFrame::OnUpdateViewPage(CCmdUI* item)
{
    item->Enable();
    item->SetCheck(m_shown >= 0 && m_pages[m_shown]->GetCommandId() == item->m_nID);
}

LRESULT MainFrame::OnTraceLevel(WPARAM previous, LPARAM level)
{
    m_trace.ChangeLevel(static_cast<WORD>(previous), static_cast<WORD>(level));
    return 0;
}

// Layout --------------------------------------------------------------------------------------------------------------

void MainFrame::RecalcLayout(BOOL notify)
{
    CZoFrameWnd::RecalcLayout(notify);
    if (m_status.m_hWnd != nullptr)
        LayOut();
}

/// In what bars leave: the list and the page, below them what explains controls and the status line, if they are shown.
void MainFrame::LayOut()
{
    CRect area;
    RepositionBars(0, 0xFFFF, 0, reposQuery, &area);
    const auto place = [&area](CWnd& control, int height, int gap) {
        if ((control.GetStyle() & WS_VISIBLE) == 0)
            return;
        area.bottom -= height;
        control.MoveWindow(area.left + gap, area.bottom - gap, area.Width() - 2 * gap, height);
        area.bottom -= gap;
    };
    place(m_status, m_status.GetBestHeight(), 0);
    place(m_explanation, m_explanation.GetBestHeight(kExplanationLines), kGap);
    int listWidth = 0;
    for (const Page* page : m_pages)
        listWidth = (std::max)(listWidth, TextWidth(Text(page->GetTitleId())) + 2 * kGap);
    area.DeflateRect(kGap, kGap);
    m_pageList.MoveWindow(area.left, area.top, listWidth, area.Height());
    area.left += listWidth + kGap;
    for (Page* page : m_pages)
        page->MoveWindow(&area);
}

void MainFrame::OnGetMinMaxInfo(MINMAXINFO* info) { info->ptMinTrackSize = {560, 360}; }

void MainFrame::OnSetFocus(CWnd*)
{
    if (m_shown >= 0)
        m_pages[m_shown]->SetFocus();
}

BOOL MainFrame::PreTranslateMessage(MSG* message)
{
    const bool isTab = message->message == WM_KEYDOWN && message->wParam == VK_TAB;
    const bool isF6 = message->message == WM_KEYDOWN && message->wParam == VK_F6;
    if (isF6 && !m_toolBar.HasKeyboard() && ::GetFocus() != m_status.m_hWnd && m_toolBar.TakeKeyboard())
        return TRUE;
    if (isF6 && m_status.IsWindowVisible() && ::GetFocus() != m_status.m_hWnd) {
        m_status.TakeKeyboard();
        return TRUE;
    }
    return (isTab && IsDialogMessage(message)) || CZoFrameWnd::PreTranslateMessage(message);
}

// Commands ------------------------------------------------------------------------------------------------------------

LRESULT MainFrame::OnLanguageUpdate(WPARAM, LPARAM)
{
    ReloadTexts();
    CZoDialog::ReloadOpenDialogs();
    return 0;
}

/// Through a language-support object of its own, for the process's belongs to the library.
void MainFrame::OnChooseLanguage()
{
    CZoLanguageSupport support;
    support.SelectLanguage(this);
}

void MainFrame::OnStatusPressed(NMHDR*, LRESULT*) { OnChooseLanguage(); }

void MainFrame::OnNewDocument() { m_documents.New(); }

void MainFrame::OnOpenDocument() { m_documents.AskAndOpen(); }

BOOL MainFrame::OnCmdMsg(UINT id, int code, void* extra, void* info)
{
    return CZoFrameWnd::OnCmdMsg(id, code, extra, info) || m_tools.OnCmdMsg(id, code, extra, info);
}

/// The status line says what a command does while its menu item is selected.
void MainFrame::GetMessageString(UINT id, CString& message) const
{
    message = m_tools.GetMessage(id);
    if (id >= ZO_ID_RECENT_FIRST && id <= ZO_ID_RECENT_LAST)
        message = Text(ZO_IDS_MESSAGE_RECENT_FILE);
    else if (message.IsEmpty() && id != AFX_IDS_IDLEMESSAGE)
        AfxExtractSubString(message, Text(id), 0);
    if (message.IsEmpty())
        message = GetStatusText();
}

void MainFrame::OnOpenTools() { m_tools.Choose(); }
void MainFrame::OnEditTools() { m_tools.Edit(); }

void MainFrame::OnAbout() { CZoAboutDialog(ZO_IDI_WORKBENCH, this).DoModal(); }

void MainFrame::OnExit() { SendMessage(WM_CLOSE); }

void MainFrame::OnRecentFile(UINT id) { m_documents.OpenRecent(id); }

void MainFrame::OnLocations()
{
    if (EditLocations(this))
        ShowPage(m_locations);
    else
        m_locations.Refresh(); // a part may have been saved before the user gave up
}

void MainFrame::OnLocationWizard()
{
    if (AddLocationByWizard(this))
        ShowPage(m_locations);
}

void MainFrame::OnMailBox()
{
    if (AskForMailBox(this, m_mailBoxes))
        ShowPage(m_mailBoxes);
}

void MainFrame::OnCountries()
{
    if (ChooseCountries(this, m_countries))
        ShowPage(m_countries);
}

void MainFrame::OnTranslate()
{
    if (TranslateFileByWizard(this, m_translation, m_workspace.folder) == IDOK)
        ShowPage(m_translation);
}

/// The files that were last open stand in the menu that has Exit.
void MainFrame::OnInitMenuPopup(CMenu* popup, UINT index, BOOL isSystemMenu)
{
    if (!isSystemMenu && ::GetMenuState(popup->m_hMenu, ZO_ID_APP_EXIT, MF_BYCOMMAND) != static_cast<UINT>(-1)) {
        m_documents.GetRecent().Load();
        m_documents.GetRecent().Show(popup->m_hMenu, ZO_ID_APP_EXIT, m_workspace.recentFiles);
    }
    CZoFrameWnd::OnInitMenuPopup(popup, index, isSystemMenu);
}

// The workspace -------------------------------------------------------------------------------------------------------

void MainFrame::ShowBars(const ZoWorkspace& workspace, bool isNovice)
{
    m_workspace = workspace;
    ShowControlBar(&m_toolBar, workspace.toolBar, FALSE);
    m_status.ShowWindow(workspace.statusBar ? SW_SHOW : SW_HIDE);
    m_explanation.ShowWindow(isNovice ? SW_SHOW : SW_HIDE);
    m_documents.SetFolder(workspace.folder);
    RecalcLayout();
}

void MainFrame::UseWorkspace(WindowState& state)
{
    ZoWorkspace workspace;
    ZoLoadWorkspace(workspace); // nothing kept, or damaged: as at the beginning
    ShowBars(workspace, ZoGblGetRegNoviceMode() != 0);
    if (m_isQuiet || !workspace.restoreWindows || !LoadWindowState(state, kPages))
        return;
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    placement.showCmd = SW_HIDE;
    placement.rcNormalPosition = state.place; // the system keeps it on the screen
    SetWindowPlacement(&placement);
    ShowPage(state.page);
}

void MainFrame::OpenDocuments(const WindowState& state)
{
    const CString failed = m_documents.OpenListed(state.documents);
    if (failed.IsEmpty())
        return;
    CString message;
    message.Format(Text(ZO_IDS_DOCUMENT_NOT_OPENED), static_cast<LPCSTR>(failed));
    AfxMessageBox(message, MB_ICONEXCLAMATION);
}

DWORD MainFrame::KeepWindows() const
{
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    if (!GetWindowPlacement(&placement))
        return ::GetLastError();
    WindowState state;
    state.place = placement.rcNormalPosition;
    state.isMaximized = IsZoomed();
    state.page = m_shown;
    Documents::ListOpen(state.documents);
    return SaveWindowState(state);
}

void MainFrame::OnOptions()
{
    if (EditOptions(this) == -1)
        return; // given up, too: what was applied before holds
    ZoWorkspace workspace;
    ZoLoadWorkspace(workspace);
    ShowBars(workspace, ZoGblGetRegNoviceMode() != 0);
    m_language.Reload(); // it shows the novice mode
    Documents::UpdateViews(kDocumentSettingsChanged);
}

void MainFrame::ChangeBars(const ZoWorkspace& workspace)
{
    ShowBars(workspace, m_explanation.IsWindowVisible() != FALSE);
    TellStatus(ZO_IDS_SETTING_NOT_KEPT, ZoSaveWorkspace(workspace));
}

void MainFrame::OnToolBar()
{
    ZoWorkspace workspace = m_workspace;
    workspace.toolBar = !workspace.toolBar;
    ChangeBars(workspace);
}

void MainFrame::OnUpdateToolBar(CCmdUI* item)
{
    item->Enable();
    item->SetCheck(m_workspace.toolBar);
}

void MainFrame::OnToolBarSetup()
{
    if (m_toolBar.SetUp() == -1)
        AfxMessageBox(Text(ZO_IDS_DIALOG_NOT_OPENED), MB_ICONEXCLAMATION);
}

void MainFrame::OnStatusBar()
{
    ZoWorkspace workspace = m_workspace;
    workspace.statusBar = !workspace.statusBar;
    ChangeBars(workspace);
}

void MainFrame::OnUpdateStatusBar(CCmdUI* item)
{
    item->Enable();
    item->SetCheck(m_workspace.statusBar);
}

void MainFrame::OnClose()
{
    if (m_isQuiet)
        return CZoFrameWnd::OnClose();
    if (m_workspace.confirmLeaving && ZoAskOnce(kLeaveQuestion, m_hWnd, Text(ZO_IDS_LEAVE_ASK),
                                                Text(ZO_IDS_WORKBENCH_TITLE), MB_OKCANCEL | MB_ICONQUESTION) != IDOK)
        return;
    if (!AfxGetApp()->SaveAllModified())
        return;
    TellStatus(ZO_IDS_WINDOWS_NOT_KEPT, KeepWindows());
    CZoFrameWnd::OnClose();
}
