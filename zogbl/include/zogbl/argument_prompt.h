/// \file
/// The dialog that asks for a program's arguments.
#pragma once

#include <zogbl/dialog.h>

/// Shows a program that is about to be started and asks for its arguments. Nothing is thrown.
class ZOGBL_API CZoArgumentPromptDlg : public CZoDialog {
public:
    explicit CZoArgumentPromptDlg(CWnd* parent = nullptr);
    ~CZoArgumentPromptDlg() override;

    void SetIcon(HICON icon) { m_hIcon = icon; } ///< stays the caller's and outlives the dialog; null: the system's own
    void SetProgram(const CString& path) { m_csProgram = path; } ///< shown without folders in its middle if too long
    void SetPrompt(const CString& text) { m_csPrompt = text; }   ///< the question
    void SetAnswer(const CString& text) { m_csAnswer = text; }   ///< first content of the field
    /// The longest answer in bytes, 255 at first. A character of two bytes that does not fit whole is left out.
    void SetAnswerLength(int length) { m_nAnswerLength = length; }

    /// \return IDOK, IDCANCEL, or -1 if the dialog cannot be made
    INT_PTR DoModal() override;

    const CString& GetAnswer() const { return m_csAnswer; } ///< after IDOK the user's, else the one that was set

protected:
    BOOL OnInitDialog() override;
    void OnOK() override; ///< the dialog stays open if there is no memory for the answer

private:
    void ShowProgram();

    CString m_csProgram;
    CString m_csPrompt;
    CString m_csAnswer;
    HICON m_hIcon = nullptr;
    int m_nAnswerLength = 255;
};
