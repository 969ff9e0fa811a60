/// \file
/// Property sheets and wizards of the framework, over the system's own. Included by afxdlgs.h.
#pragma once

#include <afxwin.h>

#include <commctrl.h>
#include <prsht.h>

/// A page of a property sheet. Its window is made when the page is first shown. To answer QuerySiblings, handle
/// PSM_QUERYSIBLINGS.
class AFX_API CPropertyPage : public CDialog {
    DECLARE_DYNAMIC(CPropertyPage)
public:
    /// \param lpszTemplateName found through the resource chain when the page comes into a sheet; must live as long
    /// \param nIDCaption string with the text of the tab; 0: the template's title. Throws CMemoryException*.
    explicit CPropertyPage(LPCSTR lpszTemplateName, UINT nIDCaption = 0);
    explicit CPropertyPage(UINT nIDTemplate, UINT nIDCaption = 0);

    /// Tells the sheet that the page has something to apply, or no longer has.
    void SetModified(BOOL bChanged = TRUE);
    /// Once something has been done that Cancel does not undo: the sheet offers to be closed only.
    void CancelToClose();
    /// Sends PSM_QUERYSIBLINGS to the pages that have a window, in their order and this one too, until one answers.
    /// \return its answer; 0 if none does
    LRESULT QuerySiblings(WPARAM wParam, LPARAM lParam);

    /// Each time before the page is shown: fills the controls by UpdateData. \return TRUE to be shown
    virtual BOOL OnSetActive();
    /// Before the page gives way to another, and before OK, Apply and Finish: takes the controls' data over by
    /// UpdateData. \return FALSE to stay
    virtual BOOL OnKillActive();
    /// For OK and Apply, on every page that has a window: calls OnOK. \return FALSE to keep the sheet open; the page is
    /// shown, the focus on its control that has it or else on its first
    virtual BOOL OnApply();
    virtual void OnReset();       ///< for Cancel, on every page that has a window: calls OnCancel
    virtual BOOL OnQueryCancel(); ///< \return FALSE to keep the sheet open although it was cancelled
    /// In a wizard, for its buttons; the controls' data may not have been taken over yet. \return 0 to go on, -1 to
    /// stay, or the number of the template of the page to go to
    virtual LRESULT OnWizardBack() { return 0; }
    virtual LRESULT OnWizardNext() { return 0; }
    virtual BOOL OnWizardFinish() { return OnKillActive(); } ///< \return FALSE to keep the wizard open
    void OnOK() override;                                    ///< nothing is left to do here; the modified mark goes
    void OnCancel() override;                                ///< nothing

    /// For the sheet, which takes it when it is made or the page is added: a template in memory may be put in, with
    /// PSP_DLGINDIRECT. It must live as long as the sheet's window.
    PROPSHEETPAGEA m_psp = {};

protected:
    friend class CPropertySheet;

    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    afx_msg void OnClose(); ///< Escape in a field of several lines: the sheet's Cancel
    DECLARE_MESSAGE_MAP()

private:
    static INT_PTR CALLBACK PageProcedure(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    const PROPSHEETPAGEA& Prepare();
    LRESULT AnswerWizard(LRESULT page);
    void AskForFocus();

    CString m_strCaption;
    bool m_bShownBefore = false;
};

/// A window of pages, with OK, Cancel and Apply, or a wizard, with Back, Next or Finish, and Cancel. Its window is one
/// of the system's; all messages are offered to the object first, from before the first page is made.
class AFX_API CPropertySheet : public CWnd {
    DECLARE_DYNAMIC(CPropertySheet)
public:
    /// \param pParentWnd null: the main window of the thread \param iSelectPage the page shown first, from 0
    /// Throws CMemoryException*.
    explicit CPropertySheet(LPCSTR pszCaption, CWnd* pParentWnd = nullptr, UINT iSelectPage = 0);
    explicit CPropertySheet(UINT nIDCaption, CWnd* pParentWnd = nullptr, UINT iSelectPage = 0);
    ~CPropertySheet() override;

    /// Behind the other pages, also while the sheet is open. The page remains the caller's and must outlive the window.
    /// Throws CMemoryException*, and CResourceException* if the open sheet does not take it.
    void AddPage(CPropertyPage* pPage);
    /// Destroys the page's window, if it has one. A sheet without pages closes. A page that is not there is ignored.
    void RemovePage(CPropertyPage* pPage);
    void RemovePage(int nPage);
    int GetPageCount() const { return static_cast<int>(m_pages.GetSize()); }
    CPropertyPage* GetPage(int nPage) const { return static_cast<CPropertyPage*>(m_pages.GetAt(nPage)); }
    /// \return -1 if it is none of the sheet's
    int GetPageIndex(const CPropertyPage* pPage) const;
    /// \return -1, null when no page is shown
    int GetActiveIndex() const;
    CPropertyPage* GetActivePage() const;
    /// Before the window is made: the page shown first. \return FALSE when the page before stays, or there is no such
    /// page; a number is only looked at once there is a window
    BOOL SetActivePage(int nPage);
    BOOL SetActivePage(CPropertyPage* pPage);

    /// \param nStyle 0, or PSH_PROPTITLE for the system's words around the text. Throws CMemoryException*.
    void SetTitle(LPCSTR lpszText, UINT nStyle = 0);
    /// Before the window is made: lets it be a wizard.
    void SetWizardMode() { m_psh.dwFlags |= PSH_WIZARD; }
    /// Before the window is made. FALSE: one row of tabs, which scrolls.
    void EnableStackedTabs(BOOL bStacked) { m_bStacked = bStacked; }
    /// The buttons of an open wizard, at once, as in OnSetActive; nothing in another sheet. \param dwFlags of
    /// PSWIZB_BACK, NEXT, FINISH and DISABLEDFINISH
    void SetWizardButtons(DWORD dwFlags) { TellWizard(PSM_SETWIZBUTTONS, static_cast<LPARAM>(dwFlags)); }
    /// Finish with this text instead of Back and Next.
    void SetFinishText(LPCSTR lpszText) { TellWizard(PSM_SETFINISHTEXT, reinterpret_cast<LPARAM>(lpszText)); }
    /// Presses a button, once the message at hand is done. \param nButton one of PSBTN_BACK, NEXT, FINISH, OK,
    /// APPLYNOW, CANCEL
    BOOL PressButton(int nButton) { return PostMessage(PSM_PRESSBUTTON, static_cast<WPARAM>(nButton)); }
    void MapDialogRect(LPRECT lpRect) const { ::MapDialogRect(m_hWnd, lpRect); }

    /// Shows the sheet, its owner disabled, until it is closed. \return IDOK (a wizard: ID_WIZFINISH), IDCANCEL, what
    /// EndDialog was given; -1 when the sheet could not be made or the thread is told to quit meanwhile.
    virtual INT_PTR DoModal();
    /// Makes a modeless sheet without OK and Apply; its pages are closed by its system menu, Escape, EndDialog or
    /// DestroyWindow. When no window comes of it, PostNcDestroy has been called, as by CreateEx.
    /// \param pParentWnd null: none \param dwStyle -1: as a modal sheet; \p dwExStyle has no effect then
    virtual BOOL Create(CWnd* pParentWnd = nullptr, DWORD dwStyle = static_cast<DWORD>(-1), DWORD dwExStyle = 0);
    void EndDialog(int nEndID);

    /// Before the first page is made. \return is not looked at
    virtual BOOL OnInitDialog() { return TRUE; }

    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override; ///< as CDialog
    BOOL PreTranslateMessage(MSG* pMsg) override;

    PROPSHEETHEADERA m_psh = {};

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnClose();
    afx_msg LRESULT OnPressButton(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnWake(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    friend class CPropertyPage;

    struct Making;

    static int CALLBACK SheetProcedure(HWND hWnd, UINT message, LPARAM lParam);
    static CPropertySheet* Of(HWND page);
    void TellWizard(UINT message, LPARAM lParam) const;
    HWND Make(HWND owner);
    void SetStyles();
    void HideButtons();
    INT_PTR RunUntilClosed();
    bool HasEnded() const;

    CString m_strCaption;
    CWnd* m_pParentWnd;
    CPtrArray m_pages;
    BOOL m_bStacked = TRUE;
    bool m_bModeless = false; // made by Create
    bool m_bEnded = false;    // by EndDialog
    DWORD m_dwStyle = static_cast<DWORD>(-1);
    DWORD m_dwExStyle = 0;
};
