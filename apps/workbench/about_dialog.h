/// \file
/// About the Workbench and its library.
#pragma once

#include <afxwin.h>

class AboutDialog : public CDialog {
public:
    /// Shows the dialog in the user's language. \return IDOK, IDCANCEL, or -1 without a language library.
    INT_PTR DoModal() override;

protected:
    BOOL OnInitDialog() override;
};
