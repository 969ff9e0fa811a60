#include "about_dialog.h"

#include "page.h"

#include <zogbl/module.h>
#include <zogbl/resource_ids.h>
#include <zogbl/version_resource.h>

AboutDialog::AboutDialog() : CZoDialog(ZO_IDD_WORKBENCH_ABOUT) {}

BOOL AboutDialog::OnInitDialog()
{
    CZoDialog::OnInitDialog();
    ShowVersion();
    GetDlgItem(ZO_IDC_ABOUT_ICON)
        ->SendMessage(STM_SETICON, reinterpret_cast<WPARAM>(AfxGetApp()->LoadIcon(ZO_IDI_LIBRARY)));
    CenterWindow();
    return TRUE;
}

void AboutDialog::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    ShowVersion();
}

void AboutDialog::ShowVersion()
{
    CZoVersionResource library;
    library.ExtractVersionInfo(ZoGblGetInstanceHandle());
    constexpr WORD kFileVersion = 3;
    CString version;
    version.Format(Text(ZO_IDS_VERSION_FORMAT), (LPCSTR)library.GetStandardValue(kFileVersion));
    SetDlgItemText(ZO_IDC_ABOUT_VERSION, version);
}
