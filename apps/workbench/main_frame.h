/// \file
/// The Workbench's window: a list of pages, the page chosen, a status line.
#pragma once

#include "control_page.h"
#include "country_page.h"
#include "documents.h"
#include "language_page.h"
#include "line_page.h"
#include "location_page.h"
#include "mailbox_page.h"
#include "tools.h"
#include "trace_page.h"
#include "translation_page.h"
#include "window_state.h"

#include <zogbl/status_wnd.h>
#include <zogbl/text_panel.h>
#include <zogbl/tool_bar.h>
#include <zogbl/workspace.h>
#include <zomfx/frame_window.h>

class MainFrame : public CZoFrameWnd {
public:
    /// \param isQuiet another program drives this one: nothing is asked at the end, the windows of last time are not
    /// opened, and those of now not kept
    explicit MainFrame(bool isQuiet) : m_isQuiet(isQuiet) {}
    BOOL CreateFrame();
    /// Shows the window as the user's workspace says.
    /// \param state gets the windows of last time, if they are wanted; place and page are in use already
    void UseWorkspace(WindowState& state);
    /// Opens the documents of last time, and tells of those that cannot be.
    void OpenDocuments(const WindowState& state);
    /// Shows or hides the bars, and the window that explains controls.
    void ShowBars(const ZoWorkspace& workspace, bool isNovice);
    /// Loads every text anew: title, menu, list of pages, status, all pages.
    void ReloadTexts();
    /// Shows page \p index, 0 to GetPageCount() - 1.
    void ShowPage(int index);
    static constexpr int GetPageCount() { return kPages; }
    CString GetStatusText() const;
    CountryPage& GetCountryPage() { return m_countries; }
    TracePage& GetTracePage() { return m_trace; }
    LinePage& GetLinePage() { return m_lines; }
    CZoToolBar& GetToolBar() { return m_toolBar; }
    ControlPage& GetControlPage() { return m_controls; }
    TranslationPage& GetTranslationPage() { return m_translation; }
    Documents& GetDocuments() { return m_documents; }
    Tools& GetTools() { return m_tools; }

    BOOL OnCmdMsg(UINT id, int code, void* extra, void* info) override;
    void GetMessageString(UINT id, CString& message) const override;
    void RecalcLayout(BOOL notify = TRUE) override;
    BOOL PreTranslateMessage(
        MSG* message) override; ///< Tab moves between the list of pages and the page, F6 to the status line

protected:
    afx_msg int OnCreate(CREATESTRUCT* create);
    afx_msg void OnSetFocus(CWnd* previous);
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* info);
    afx_msg void OnTimeChange();
    afx_msg void OnPageChosen();
    afx_msg void OnViewPage(UINT id);
    afx_msg void OnUpdateViewPage(CCmdUI* item);
    afx_msg LRESULT OnTraceLevel(WPARAM previous, LPARAM level);
    afx_msg LRESULT OnLanguageUpdate(WPARAM, LPARAM);
    afx_msg void OnChooseLanguage();
    afx_msg void OnStatusPressed(NMHDR*, LRESULT*);
    afx_msg void OnNewDocument();
    afx_msg void OnOpenDocument();
    afx_msg void OnOpenTools();
    afx_msg void OnEditTools();
    afx_msg void OnAbout();
    afx_msg void OnClose();
    afx_msg void OnInitMenuPopup(CMenu* popup, UINT index, BOOL isSystemMenu);
    afx_msg void OnOptions();
    afx_msg void OnToolBar();
    afx_msg void OnUpdateToolBar(CCmdUI* item);
    afx_msg void OnToolBarSetup();
    afx_msg void OnStatusBar();
    afx_msg void OnUpdateStatusBar(CCmdUI* item);
    afx_msg void OnRecentFile(UINT id);
    afx_msg void OnLocations();
    afx_msg void OnLocationWizard();
    afx_msg void OnMailBox();
    afx_msg void OnCountries();
    afx_msg void OnTranslate();
    afx_msg void OnExit();
    DECLARE_MESSAGE_MAP()

private:
    void LayOut();
    void ChangeBars(const ZoWorkspace& workspace);
    void ShowPage(const Page& page);
    DWORD KeepWindows() const;

    static constexpr int kPages = 8;
    const bool m_isQuiet;
    ZoWorkspace m_workspace; // in use
    CountryPage m_countries;
    LanguagePage m_language;
    TracePage m_trace;
    LocationPage m_locations;
    MailBoxPage m_mailBoxes;
    LinePage m_lines;
    TranslationPage m_translation;
    ControlPage m_controls;
    Page* const m_pages[kPages] = {&m_countries, &m_language, &m_trace,       &m_locations,
                                   &m_mailBoxes, &m_lines,    &m_translation, &m_controls};
    int m_shown = -1;
    CListBox m_pageList;
    CZoToolBar m_toolBar;
    CZoStatusWnd m_explanation; // of controls, in novice mode
    CZoTextPanel m_status;
    Documents m_documents{this};
    Tools m_tools{this};
};
