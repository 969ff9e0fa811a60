/// \file
/// The dialog that lets the user choose from many texts.
#pragma once

#include <zogbl/dialog.h>
#include <zogbl/type_ahead.h>

#include <memory>

/// Lets the user choose one or several of up to 10,000 texts. Typing in the list goes to the next row that begins with
/// what was typed; the filter shows the rows that contain a text, and what is chosen stays chosen. The dialog can be
/// made larger, and keeps its size. Nothing is thrown.
///
///     CZoStringSelectDialog dialog("Send To", "&Recipients:", CZoStringSelectDialog::Mode::kSeveral, this);
///     dialog.SetStrings(names);
///     dialog.Select(last);
///     if (dialog.DoModal() == IDOK)
///         for (int i = 0; i < names.GetSize(); ++i)
///             if (dialog.IsSelected(i))
///                 Send(names[i]);
class ZOGBL_API CZoStringSelectDialog : public CZoDialog {
public:
    enum class Mode {
        kOne,    ///< OK takes no less than one
        kSeveral ///< any number, also none
    };
    static constexpr int MOST = 10000;

    /// \param title, prompt shown as they are; "&" in the prompt stands before the list's access key
    CZoStringSelectDialog(LPCSTR title, LPCSTR prompt, Mode mode, CWnd* parent = nullptr);
    ~CZoStringSelectDialog() override;

    /// Takes a copy of the texts, in the order in which they are shown. None is selected.
    /// \return FALSE, changing nothing: more than MOST, or no memory
    BOOL SetStrings(const CStringArray& strings);
    /// \param index from 0. With kOne it takes the place of another one \return FALSE: there is no such text
    BOOL Select(int index, BOOL isSelected = TRUE);

    /// \return IDOK; IDCANCEL, and the selection is what it was; -1 if the dialog cannot be made
    INT_PTR DoModal() override;

    BOOL IsSelected(int index) const; ///< FALSE if there is no such text
    int GetSelected() const;          ///< the first; -1: none
    int GetSelectedCount() const;

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void ReloadTexts() override;
    BOOL PreTranslateMessage(MSG* message) override;
    afx_msg void OnFilter();
    afx_msg void OnChosen();
    afx_msg void OnDoubleClick();
    afx_msg void OnAll();
    afx_msg void OnNone();
    DECLARE_MESSAGE_MAP()

private:
    struct Texts {
        CStringArray strings;
        CByteArray selected; // of each, whether it is
        CByteArray before;   // the same, when the dialog was opened
    };

    int Count() const { return m_texts != nullptr ? static_cast<int>(m_texts->strings.GetSize()) : 0; }
    HWND List() const;
    int IndexOf(LRESULT row) const;
    void Fill();
    void Widen();
    void ChooseRows(BOOL isSelected);
    BOOL TypeAhead(UINT character);
    void ShowCount();

    CString m_csTitle;
    CString m_csPrompt;
    CString m_csFilter;             // as the list shows it, in small letters
    std::unique_ptr<Texts> m_texts; // null before SetStrings
    Mode m_mode;
    CZoTypeAhead m_typed;
};
