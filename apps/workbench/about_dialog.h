/// \file
/// About the Workbench and its library.
#pragma once

#include <zogbl/dialog.h>

class AboutDialog : public CZoDialog {
public:
    AboutDialog();

protected:
    BOOL OnInitDialog() override;
    void ReloadTexts() override;

private:
    void ShowVersion();
};
