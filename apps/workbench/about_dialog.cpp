#include "about_dialog.h"

#include "page.h"

#include <zogbl/module.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>
#include <zogbl/version_resource.h>

INT_PTR AboutDialog::DoModal()
{
    const void* dialog = ZoGblLockResource(MAKEINTRESOURCE(ZO_IDD_WORKBENCH_ABOUT), RT_DIALOG);
    if (dialog == nullptr)
        return -1;
    InitModalIndirect(static_cast<LPCDLGTEMPLATE>(dialog), AfxGetMainWnd());
    return CDialog::DoModal();
}

BOOL AboutDialog::OnInitDialog()
{
    CZoVersionResource library;
    library.ExtractVersionInfo(ZoGblGetInstanceHandle());
    constexpr WORD kFileVersion = 3;
    CString version;
    version.Format(Text(ZO_IDS_VERSION_FORMAT), (LPCSTR)library.GetStandardValue(kFileVersion));
    SetDlgItemText(ZO_IDC_ABOUT_VERSION, version);
    GetDlgItem(ZO_IDC_ABOUT_ICON)
        ->SendMessage(STM_SETICON, reinterpret_cast<WPARAM>(AfxGetApp()->LoadIcon(ZO_IDI_LIBRARY)));
    CenterWindow();
    return TRUE;
}
