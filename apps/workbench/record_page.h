/// \file
/// A page that lists records: the list, beside it what is in the record chosen, buttons below.
#pragma once

#include "page.h"

#include "../text_box.h"

class RecordPage : public Page {
public:
    void Reload() override;
    /// Reads the records anew; the one that was chosen stays so.
    void Refresh() override;

protected:
    static constexpr int kMostButtons = 4;
    /// \param buttons strings of the buttons, at most kMostButtons
    template <int COUNT> explicit RecordPage(const UINT (&buttons)[COUNT])
        : m_buttonTexts(buttons), m_buttonCount(COUNT)
    {
        static_assert(COUNT <= kMostButtons);
    }

    /// Reads the records and adds each to the empty \p list, as text. \return 0, or the status of a failure.
    virtual DWORD FillList(CListBox& list) = 0;
    /// What is in record \p index: lines of a label, a tab and a value.
    virtual CString Describe(int index) const = 0;
    /// Does what button \p button says to record \p index, -1 when none is chosen. \return 0, or the status of a
    /// failure.
    virtual DWORD Do(int button, int index) = 0;
    /// Whether that can be done.
    virtual bool CanDo(int button, int index) const = 0;
    /// The number of records, as a text for the line below.
    virtual CString GetStateText() const = 0;

    /// Whether FillList read all records when the list was last filled.
    bool IsComplete() const { return m_complete; }
    /// The list shows record \p index as chosen when it is next filled.
    void Choose(int index) { m_chosen = index; }

    void CreateControls() override;
    void Layout(int width, int height) override;
    afx_msg void OnChosen();
    afx_msg void OnButton(UINT id);
    DECLARE_MESSAGE_MAP()

private:
    void Show();
    void ShowState(DWORD status);

    const UINT* const m_buttonTexts;
    const int m_buttonCount;
    int m_chosen = 0;
    bool m_complete = false;
    CListBox m_list;
    TextBox m_view;
    CButton m_buttons[kMostButtons];
    CStatic m_state;
};

/// Adds a line to a description.
void AddLine(CString& description, UINT label, const CString& value);
