/// \file
/// The dialog in which the user chooses the buttons of a tool bar.
#pragma once

#include <zogbl/dialog.h>

#include <memory>

class CZoToolBar;

/// Lets the user choose which buttons a tool bar shows, in which order, and where separators stand: by buttons, by
/// double clicks, or by dragging rows from list to list and to other places. "Reset" brings back what was shipped.
/// Nothing changes before OK. If the choice cannot be kept, the user is told, and the bar has it until the program
/// ends. Nothing is thrown. CZoToolBar::SetUp opens it.
///
///     CZoToolBarSetup(m_toolBar, this).DoModal();
class ZOGBL_API CZoToolBarSetup : public CZoDialog {
public:
    /// \param bar has its buttons, and lives as long as the dialog
    explicit CZoToolBarSetup(CZoToolBar& bar, CWnd* parent = nullptr);
    ~CZoToolBarSetup() override;

    /// \return IDOK; IDCANCEL, and nothing has changed; -1 if the bar has no buttons or the dialog cannot be made
    INT_PTR DoModal() override;

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void ReloadTexts() override;
    afx_msg void OnDrawItem(int control, DRAWITEMSTRUCT* item);
    afx_msg void OnSelected();
    afx_msg void OnAdd();
    afx_msg void OnRemove();
    afx_msg void OnUp();
    afx_msg void OnDown();
    afx_msg void OnReset();
    DECLARE_MESSAGE_MAP()

private:
    class Lists;

    void Fill(int available, int shown);
    void ShowState();
    void Enable(int button, BOOL isEnabled);
    void Add(int row, int before);
    void Remove(int row);
    void Move(int row, int before);

    CZoToolBar& m_bar;
    std::unique_ptr<Lists> m_lists; // null: not open
};
