/// \file
/// The dialog that asks for a name.
#pragma once

#include <zogbl/dialog.h>

/// Asks for the name of something new, or another name for something. What is wrong with a name stands below the field:
/// when the user presses OK, and at a pause in typing if no more typing can make it right. It goes as soon as the name
/// is right. Nothing is thrown.
///
///     CZoAskNameDialog dialog("Rename Table", "&New name:", this);
///     dialog.SetName(table.name);            // may be kept, or change its case alone
///     dialog.SetTakenNames(others);
///     dialog.SetFileName();
///     if (dialog.DoModal() == IDOK)
///         Rename(dialog.GetName());
class ZOGBL_API CZoAskNameDialog : public CZoDialog {
public:
    enum class Fault {
        kNone,
        kEmpty,
        kTooLong,
        kCharacter, ///< one that is not allowed
        kReserved,  ///< of a file: the system keeps it for a device, also with an extension, as "nul" and "com1.txt"
        kEnd,       ///< of a file: it ends in a dot, which the system would drop
        kTaken      ///< case ignored
    };
    static constexpr int LONGEST = 255;

    /// \param title, prompt shown as they are; "&" in the prompt stands before the field's access key
    CZoAskNameDialog(LPCSTR title, LPCSTR prompt, CWnd* parent = nullptr);
    ~CZoAskNameDialog() override;

    /// The first content of the field: the name that is to be changed, or a proposal. It does not count as taken.
    BOOL SetName(LPCSTR name);
    BOOL SetTakenNames(const CStringArray& names);
    BOOL SetForbidden(LPCSTR characters); ///< that a name must not contain, of one byte each
    /// The name is to be that of a file or folder: \ / : * ? " < > |, reserved names and a dot at the end are refused,
    /// beside what SetForbidden says.
    BOOL SetFileName();
    BOOL SetLongest(int bytes); ///< 1 to LONGEST, which it is at first

    /// \return IDOK, IDCANCEL, or -1 if the dialog cannot be made
    INT_PTR DoModal() override;

    const CString& GetName() const { return m_csName; } ///< after IDOK the user's, without blanks at its ends

    /// What is wrong with a name. \param culprit gets the text that the reason names: the character, the name
    Fault FindFault(LPCSTR name, CString& culprit) const;

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void ReloadTexts() override;
    afx_msg void OnTyped();
    afx_msg void OnTimer(UINT_PTR id);
    DECLARE_MESSAGE_MAP()

private:
    CString FieldText() const;
    void ShowFault(Fault fault, const CString& culprit);

    CString m_csTitle;
    CString m_csPrompt;
    CString m_csName;
    CString m_csFirstName;
    CString m_csForbidden;
    CStringArray m_csaTaken;
    BOOL m_bFileName = FALSE;
    int m_nLongest = LONGEST;
    Fault m_shown = Fault::kNone;
    CString m_csCulprit; // of what is shown
};
