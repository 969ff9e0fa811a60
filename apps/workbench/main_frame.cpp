#include "main_frame.h"

#include "workbench_ids.h"

#include <zogbl/about_dialog.h>
#include <zogbl/country_code.h>
#include <zogbl/dialog.h>
#include <zogbl/language_support.h>
#include <zogbl/module.h>
#include <zogbl/resource_lookup.h>

#include <algorithm>

namespace {

constexpr UINT kPageListId = 100;
constexpr UINT kFirstPageWindowId = AFX_IDW_PANE_FIRST;
constexpr int kGap = 6;
constexpr int kLanguagePane = 2; // of the status line; it opens the choice of a language

const UINT s_traceLevelMessage = CZoTrace::GetNotifyMessage();
const UINT s_languageMessage = CZoLanguageSupport::GetUpdateMessage();

} // namespace

BEGIN_MESSAGE_MAP(MainFrame, CZoFrameWnd)
    ON_WM_CREATE()
    ON_WM_SIZE()
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
    for (CWnd* control : {static_cast<CWnd*>(&m_pageList), static_cast<CWnd*>(&m_status)})
        control->SetFont(ControlFont());
    CRect client;
    GetClientRect(&client);
    LayOut(client.Width(), client.Height());
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

void MainFrame::OnSize(UINT type, int width, int height)
{
    CZoFrameWnd::OnSize(type, width, height);
    if (type != SIZE_MINIMIZED)
        LayOut(width, height);
}

void MainFrame::LayOut(int width, int height)
{
    const int statusHeight = m_status.GetBestHeight();
    const int bottom = height - statusHeight - kGap;
    int listWidth = 0;
    for (const Page* page : m_pages)
        listWidth = (std::max)(listWidth, TextWidth(Text(page->GetTitleId())) + 2 * kGap);
    m_pageList.MoveWindow(kGap, kGap, listWidth, bottom - kGap);
    m_status.MoveWindow(0, height - statusHeight, width, statusHeight);
    const int left = listWidth + 2 * kGap;
    for (Page* page : m_pages)
        page->MoveWindow(left, kGap, width - left - kGap, bottom - kGap);
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
    if (message->message == WM_KEYDOWN && message->wParam == VK_F6 && ::GetFocus() != m_status.m_hWnd) {
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

/// The status line says what a tool does while its menu item is selected.
void MainFrame::GetMessageString(UINT id, CString& message) const
{
    const CString text = m_tools.GetMessage(id);
    message = text.IsEmpty() ? GetStatusText() : text;
}

void MainFrame::OnOpenTools() { m_tools.Choose(); }
void MainFrame::OnEditTools() { m_tools.Edit(); }

void MainFrame::OnAbout() { CZoAboutDialog(ZO_IDI_WORKBENCH, this).DoModal(); }

void MainFrame::OnExit() { SendMessage(WM_CLOSE); }
