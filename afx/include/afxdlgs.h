/// \file
/// Property sheets of the framework, over the system's own.
#pragma once

#include <afxwin.h>

#include <commctrl.h>
#include <prsht.h>

/// A page of a property sheet. Its window is made when the page is first shown.
class AFX_API CPropertyPage : public CDialog {
    DECLARE_DYNAMIC(CPropertyPage)
public:
    /// \param nIDTemplate found through the resource chain; the template's title is the text of the tab
    explicit CPropertyPage(UINT nIDTemplate);

    /// Tells the sheet that the page has something to apply, or no longer has.
    void SetModified(BOOL bChanged = TRUE);
    /// Once something has been done that Cancel does not undo: the sheet offers to be closed only.
    void CancelToClose();

    /// Each time before the page is shown: fills the controls by UpdateData. \return TRUE to be shown
    virtual BOOL OnSetActive();
    /// Before the page gives way to another, and before OK and Apply: takes the controls' data over by UpdateData.
    /// \return FALSE to stay
    virtual BOOL OnKillActive();
    /// For OK and Apply, on every page that has a window: calls OnOK. \return FALSE to keep the sheet open
    virtual BOOL OnApply();
    virtual void OnReset();       ///< for Cancel, on every page that has a window: calls OnCancel
    virtual BOOL OnQueryCancel(); ///< \return FALSE to keep the sheet open although it was cancelled
    void OnOK() override;         ///< nothing is left to do here; the modified mark goes
    void OnCancel() override;     ///< nothing

    /// For the sheet: a template in memory may be put in before the sheet is made, with PSP_DLGINDIRECT. It must live
    /// as long as the sheet's window.
    PROPSHEETPAGEA m_psp = {};

    BOOL PreTranslateMessage(MSG* pMsg) override; ///< keys are dealt with by the sheet

protected:
    friend class CPropertySheet;

    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

private:
    static INT_PTR CALLBACK PageProcedure(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);

    bool m_bShownBefore = false;
};

/// A window of pages, with OK, Cancel and Apply. Its window is one of the system's; all messages are offered to the
/// object first, from before the first page is made.
class AFX_API CPropertySheet : public CWnd {
    DECLARE_DYNAMIC(CPropertySheet)
public:
    /// \param pParentWnd null: the main window of the thread \param iSelectPage the page shown first, from 0
    explicit CPropertySheet(LPCSTR pszCaption, CWnd* pParentWnd = nullptr, UINT iSelectPage = 0);
    ~CPropertySheet() override;

    /// Before the window is made; the page remains the caller's and must outlive the window. Throws CMemoryException*.
    void AddPage(CPropertyPage* pPage);
    int GetPageCount() const { return static_cast<int>(m_pages.GetSize()); }
    CPropertyPage* GetPage(int nPage) const { return static_cast<CPropertyPage*>(m_pages.GetAt(nPage)); }
    /// \return -1 when no page is shown
    int GetActiveIndex() const;
    BOOL SetActivePage(int nPage);

    /// Shows the sheet, its owner disabled, until it is closed. \return IDOK, IDCANCEL, what EndDialog was given; -1
    /// when the sheet could not be made or the thread is told to quit meanwhile.
    virtual INT_PTR DoModal();
    void EndDialog(int nEndID);

    /// Before the first page is made. \return is not looked at
    virtual BOOL OnInitDialog() { return TRUE; }

    BOOL PreTranslateMessage(MSG* pMsg) override;

    PROPSHEETHEADERA m_psh = {};

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    HWND TabControl() const { return reinterpret_cast<HWND>(SendMessage(PSM_GETTABCONTROL)); }
    afx_msg void OnClose();
    DECLARE_MESSAGE_MAP()

private:
    static int CALLBACK SheetProcedure(HWND hWnd, UINT message, LPARAM lParam);
    INT_PTR RunUntilClosed();

    CString m_strCaption;
    CWnd* m_pParentWnd;
    CPtrArray m_pages;
};
