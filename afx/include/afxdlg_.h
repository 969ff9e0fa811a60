/// \file
/// Application framework: dialogs and the exchange of their data. Included by afxwin.h.
#pragma once

#include <afxwnd_.h>

/// A dialog from a template resource, found through the resource chain, or from a template in memory.
class AFX_API CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)
public:
    CDialog() = default;
    explicit CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    ~CDialog() override;

    /// The template must live until DoModal has returned.
    BOOL InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr);
    /// Shows the dialog, its owner disabled, until EndDialog. \return the result given there, -1 when the dialog could
    /// not be made.
    virtual INT_PTR DoModal();
    /// Also in OnInitDialog: then the dialog is not shown.
    void EndDialog(int nResult);

    /// Fills the controls by UpdateData. \return TRUE unless the override gave the focus to a control.
    virtual BOOL OnInitDialog();

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    virtual void OnOK(); ///< takes over the controls' data by UpdateData; if that fails the dialog stays
    virtual void OnCancel();
    afx_msg LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    LPCSTR m_lpszTemplateName = nullptr;
    LPCDLGTEMPLATE m_lpDialogTemplate = nullptr;
    CWnd* m_pParentWnd = nullptr;
};

/// One exchange of a dialog's data, handed to the DDX_ and DDV_ functions.
class AFX_API CDataExchange {
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate) : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}

    /// Each DDX_ function begins with one of these: the control is the one that a failure from here on concerns.
    /// \return the control; a dialog without it throws CResourceException*
    HWND PrepareCtrl(int nIDC);
    HWND PrepareEditCtrl(int nIDC);
    /// Ends the exchange, after the user was told why: gives the focus to the control prepared last, all of its text
    /// selected if it is an edit field, and throws CUserException*.
    [[noreturn]] void Fail();

    BOOL m_bSaveAndValidate; ///< TRUE: from the controls to the members
    CWnd* m_pDlgWnd;

private:
    friend AFX_API void AFXAPI DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars);

    HWND m_hWndLastControl = nullptr;
    BOOL m_bEditLastControl = FALSE;
};

AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
/// Whole numbers in decimal digits, with blanks around them and, for the signed types, a sign. Anything else, and what
/// the type cannot hold, fails the exchange.
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, int& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, UINT& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, long& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, DWORD& value);
/// The selected item of a list box or combo box; -1 for none.
AFX_API void AFXAPI DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index);
AFX_API void AFXAPI DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);
AFX_API void AFXAPI DDX_Check(CDataExchange* pDX, int nIDC, int& value);
/// The buttons of a group, whose first one is \p nIDC, are numbered from 0; -1 when none is checked.
AFX_API void AFXAPI DDX_Radio(CDataExchange* pDX, int nIDC, int& value);
/// Makes \p rControl the window of the control, if it is not yet.
AFX_API void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);

/// Fails the exchange for a text of more than \p nChars bytes. Loading, it keeps the edit field prepared last from
/// taking more.
AFX_API void AFXAPI DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars);
