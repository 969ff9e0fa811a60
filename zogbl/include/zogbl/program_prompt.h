/// \file
/// The dialog that asks the user where a program is.
#pragma once

#include <zogbl/dialog.h>

/// Asks for the path of a program; a button lets the user look for it. If the path is not that of a file, the dialog
/// shows a message and stays open. Nothing is thrown.
class ZOGBL_API CZoProgramPromptDlg : public CZoDialog {
public:
    /// \param title, prompt shown as they are; \param path first content of the edit field, or null
    /// \param parent null: the main window of the thread
    CZoProgramPromptDlg(LPCSTR title, LPCSTR prompt, LPCSTR path, CWnd* parent = nullptr);
    ~CZoProgramPromptDlg() override;

    /// \return IDOK, IDCANCEL, or -1 if the dialog cannot be made
    INT_PTR DoModal() override;

    /// After IDOK the path chosen, at most 259 bytes; else the one given to the constructor.
    const CString& GetPath() const { return m_csPath; }

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    afx_msg void OnBrowse();
    DECLARE_MESSAGE_MAP()

private:
    CString FieldText() const;

    CString m_csTitle;
    CString m_csPrompt;
    CString m_csPath;
};
