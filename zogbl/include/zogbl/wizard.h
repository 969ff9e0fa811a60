/// \file
/// Wizards: sheets that lead through their pages step by step.
#pragma once

#include <zogbl/bitmap_window.h>
#include <zogbl/dialog.h>
#include <zogbl/progress_bar.h>

class CZoWizardSheet;

/// A page of a wizard. Its template has the page's heading as its title and no default button; the styles of windows
/// and dialogs in it do not matter, so a page of a property sheet can lend its own. The window is made when the page is
/// first shown, and stays until the wizard closes: what was typed is there when the user comes back.
///
/// What an override throws ends there: the wizard stays on its page.
class ZOGBL_API CZoWizardPage : public CZoDialog {
public:
    explicit CZoWizardPage(UINT templateId);
    ~CZoWizardPage() override;

    /// The wizard that the page was added to; null if to none.
    CZoWizardSheet* GetSheet() const { return m_pSheet; }

protected:
    friend class CZoWizardSheet;

    // The way through the wizard. Both are asked again whenever the user has done something, to know whether Next or
    // the wizard's act comes next: they look at the controls, as far as the page that is shown is concerned.

    /// Whether the wizard passes over this page. Also asked before the page has a window. FALSE here
    virtual BOOL IsSkipped();
    /// Where Next leads. \return a page of the wizard; null, as here: the one that was added after this one. If that
    /// page is skipped, the one after it.
    virtual CZoWizardPage* ChooseNext();

    /// The page is about to be shown; it has a window.
    virtual void OnShow();
    /// What keeps the user from going on. Asked at Next, for all pages of the way at the end, and while a reason is
    /// shown whenever the user has done something; it shows no boxes.
    /// \param reason gets what the user is told, in the present language; if it stays empty, that something is missing
    /// here \return the number of the control that is wrong, which gets the focus; 0, as here: nothing
    virtual int FindFault(CString& reason);
    /// The user goes on, and nothing is wrong. The work between this page and the next one is done here: see
    /// CZoWizardSheet::StartWork. Here it is UpdateData(TRUE). \return FALSE: the page stays
    virtual BOOL OnNext();

    /// Sets the texts of the controls anew; see CZoDialog.
    void ReloadTexts() override;

    void OnOK() override;     ///< the wizard's: Next
    void OnCancel() override; ///< the wizard's
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    UINT m_nTemplateId;
    CZoWizardSheet* m_pSheet = nullptr;
    int m_nStep = 0;
};

/// A dialog that leads through pages: a heading, the step's number, Back, Next, Cancel, and if wanted a picture at the
/// left. It is as large as its largest page wants. All texts follow a change of language.
///
///     class CNewPrinter : public CZoWizardSheet {
///         CNewPrinter() : CZoWizardSheet(IDS_NEW_PRINTER)
///         {
///             SetAct(IDS_CREATE);          // "&Create"
///             AddPage(&m_port);            // page 1 of 2
///             AddPage(&m_name);
///             SetResultPage(&m_done);
///         }
///         BOOL OnFinish() override { return CreatePrinter(m_port.m_nPort, m_name.m_csName); }
///         ...
///     };
///
/// Next is never disabled: if something is wrong, the reason stands below the page and the focus is where it can be
/// mended. Enter is Next wherever the focus is, except on a push button. On the last page Next says what it does; what
/// has become wrong on an earlier page is shown there. Cancel, Escape and the close box are the same: they ask if the
/// user has changed anything. Nothing is thrown.
class ZOGBL_API CZoWizardSheet : public CZoDialog {
public:
    /// \param titleId string with the title, found as ZoGblLoadString says; so are all texts
    /// \param parent null: the main window of the thread
    explicit CZoWizardSheet(UINT titleId, CWnd* parent = nullptr);
    ~CZoWizardSheet() override;

    // Before DoModal

    static constexpr int kNextStep = -1;
    /// \param page not owned; it lives until DoModal has returned, and is added once
    /// \param step its number in "Step 2 of 5", which it keeps when others are skipped; kNextStep: one more than that
    /// of the page added before. Pages that stand for one another have the same number. 0: none is shown
    /// \return FALSE: no memory
    BOOL AddPage(CZoWizardPage* page, int step = kNextStep);
    /// What is shown after OnFinish, with Close alone. Without it, or with null, the wizard then closes. Not owned.
    void SetResultPage(CZoWizardPage* page);
    /// \param textId what the last button does, with its access key, 20 characters at most; at first it says Finish
    void SetAct(UINT textId) { m_nActId = textId; }
    /// \param bitmapId resource found through the resource chain. It is as high as the pages are; if it cannot be
    /// loaded, there is none.
    void SetPicture(UINT bitmapId) { m_nPictureId = bitmapId; }

    /// \return
    ///   IDOK      OnFinish has returned TRUE
    ///   IDCANCEL  given up; nothing was done
    ///   IDCLOSE   given up after SetCommitted
    ///   -1        no pages, or it cannot be made
    INT_PTR DoModal() override;

    // While it is open

    /// The page that is shown; null before the first.
    CZoWizardPage* GetActivePage() const { return m_pPage; }
    /// The user has changed something that would be lost. Fields, lists, combo boxes, check boxes and radio buttons are
    /// noticed without it; controls that send WM_NOTIFY instead of WM_COMMAND are not.
    void SetModified();
    /// Something has been done that stays: Cancel becomes Close, which asks nothing, and Back does not lead further
    /// back than the next page.
    void SetCommitted();

    // Work, within OnNext or OnFinish; it ends when that returns. The page is disabled meanwhile, and progress is shown
    // below it. Cancel asks whether to end the work, which stands still until then.

    /// \param text shown as it is \param length in any unit; 0: unknown
    void StartWork(LPCSTR text, LONGLONG length);
    /// Lets the user act. Call it at least ten times a second. \return FALSE: the work is to end, and OnNext or
    /// OnFinish to return FALSE
    BOOL SetPosition(LONGLONG done);

protected:
    /// The act of the wizard. Nothing is wrong on the pages of the way. TRUE here \return FALSE: the last page stays;
    /// whoever overrides it tells the user why
    virtual BOOL OnFinish();

    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    void ReloadTexts() override;
    BOOL PreTranslateMessage(MSG* message) override;
    void PostNcDestroy() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnBack();
    DECLARE_MESSAGE_MAP()

private:
    friend class CZoWizardPage;

    CZoWizardPage* PageAt(INT_PTR index) const { return static_cast<CZoWizardPage*>(m_pages[index]); }
    HWND Item(int id) const { return ::GetDlgItem(m_hWnd, id); } // which takes no memory
    CZoWizardPage* FindNext(CZoWizardPage* page);
    CZoWizardPage* FirstFrom(INT_PTR index);
    void Fit();
    void FitPicture();
    BOOL ShowPage(CZoWizardPage* page);
    void FocusPage();
    void Advance();
    CString FindReason();
    void ShowFault();
    void ShowTexts();
    void ShowButtons();
    void OnPageCommand(const CZoWizardPage* page, int notification, HWND control);
    void EndWork();

    UINT m_nTitleId;
    UINT m_nActId;
    UINT m_nPictureId = 0;
    CPtrArray m_pages;
    CPtrArray m_way;                  // the pages from the first to the one that is shown
    CZoWizardPage* m_pPage = nullptr; // shown
    CZoWizardPage* m_pResult = nullptr;
    int m_nSteps = 0;
    INT_PTR m_nFloor = 0; // of the way, below which Back does not lead
    int m_nFault = 0;     // control whose reason is shown
    BOOL m_bLast = FALSE; // Next says what the wizard does
    BOOL m_bModified = FALSE;
    BOOL m_bCommitted = FALSE;
    BOOL m_bFinished = FALSE;
    BOOL m_bBusy = FALSE;      // within Next
    BOOL m_bWorking = FALSE;   // within Next, with progress
    BOOL m_bInside = FALSE;    // SetPosition, or a question during the work
    BOOL m_bCancelled = FALSE; // the work
    HWND m_hFocus = nullptr;   // before the work
    CFont m_heading;
    CZoProgressBar m_bar;
    CZoBitmapWnd m_picture;
};
