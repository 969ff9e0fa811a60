/// \file
/// The page of options on which a user lets questions be asked again.
#pragma once

#include <zogbl/property_sheet.h>

/// Lists in words what ZoAskOnce has kept for this user, and undoes one or all: with OK and Apply. Nothing is thrown.
///
///     CZoKeptAnswersPage answers;
///     sheet.AddPage(&answers);
///
/// A question is listed as it was asked. A program that knows its names can say it in the language of now: see
/// Describe.
class ZOGBL_API CZoKeptAnswersPage : public CZoPropertyPage {
public:
    CZoKeptAnswersPage();
    ~CZoKeptAnswersPage() override;

protected:
    /// What the question of a name is, in words. \param words as it was asked; may be replaced. May throw
    /// CMemoryException*
    virtual void Describe(LPCSTR name, CString& words) const;

    BOOL OnInitDialog() override;
    BOOL OnApply() override;
    void ReloadTexts() override;
    afx_msg void OnSelected();
    afx_msg void OnUndo();
    afx_msg void OnUndoAll();
    DECLARE_MESSAGE_MAP()

private:
    struct Answers;

    void Fill(int chosen);
    CString RowText(int row) const;

    std::unique_ptr<Answers> m_answers; // null without memory: none
};
