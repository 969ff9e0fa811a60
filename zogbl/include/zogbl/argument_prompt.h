/// \file
/// The dialog that asks for a program's arguments.
#pragma once

#include <zogbl/dialog.h>

/// Shows a program that is about to be started, and asks for its arguments. Nothing is thrown.
class ZOGBL_API CZoArgumentPromptDlg : public CZoDialog {
public:
    explicit CZoArgumentPromptDlg(CWnd* parent = nullptr);
    ~CZoArgumentPromptDlg() override;

    void SetIcon(HICON icon) { m_hIcon = icon; } ///< the caller's, which outlives the dialog; null: the system's own
    void SetProgram(const CString& path) { m_csProgram = path; }
    void SetPrompt(const CString& text) { m_csPrompt = text; }
    void SetAnswer(const CString& text) { m_csAnswer = text; } ///< what the field holds at first
    /// The longest answer, in bytes; a character of two bytes that does not fit as a whole is left out.
    void SetAnswerLength(int length) { m_nAnswerLength = length; }

    /// \return IDOK, IDCANCEL, or -1 when the dialog cannot be made
    INT_PTR DoModal() override;

    const CString& GetAnswer() const { return m_csAnswer; } ///< the new one after IDOK, else the one that was set

protected:
    BOOL OnInitDialog() override;
    void OnOK() override; ///< the dialog stays when memory does not suffice for the answer

private:
    void ShowProgram();

    CString m_csProgram;
    CString m_csPrompt;
    CString m_csAnswer;
    HICON m_hIcon = nullptr;
    int m_nAnswerLength = 255;
};
