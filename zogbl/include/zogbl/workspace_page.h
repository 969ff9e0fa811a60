/// \file
/// The page of options on which a user sets up a program's windows.
#pragma once

#include <zogbl/property_sheet.h>
#include <zogbl/workspace.h>

/// Edits the user's ZoWorkspace, and his novice mode. It reads them when it is first shown, and keeps them with OK and
/// Apply.
///
///     CZoWorkspacePage workspace;
///     sheet.AddPage(&workspace);
///     if (sheet.DoModal() == IDOK)
///         ...ZoLoadWorkspace...
///
/// A number out of bounds and a path that cannot be one are refused in words; for a folder that is not there the user
/// is asked whether to create it. A folder that was kept before is not looked at. If the settings cannot be kept, the
/// user is told, and the sheet stays open. Nothing is thrown.
class ZOGBL_API CZoWorkspacePage : public CZoPropertyPage {
public:
    CZoWorkspacePage();
    ~CZoWorkspacePage() override;

protected:
    BOOL OnInitDialog() override;
    BOOL OnKillActive() override;
    BOOL OnApply() override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    void DoDataExchange(CDataExchange* exchange) override;
    afx_msg void OnBrowse();
    DECLARE_MESSAGE_MAP()

private:
    BOOL TakeFolder();

    ZoWorkspace m_workspace; // as it is kept, and then as the controls have it
    BOOL m_bNovice = FALSE;
    CString m_csFolder; // what stands in the field
    bool m_bExchanging = false;
};
