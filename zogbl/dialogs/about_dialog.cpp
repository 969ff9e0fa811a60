#include <zogbl/about_dialog.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>
#include <zogbl/version_resource.h>

#include "trace_settings_dialog.h"

namespace {

constexpr WORD kFileVersion = 3; // of the standard values
constexpr WORD kProductName = 7;

} // namespace

BEGIN_MESSAGE_MAP(CZoAboutDialog, CZoDialog)
    ON_BN_CLICKED(ZO_IDC_ABOUT_TRACE, OnTraceSettings)
END_MESSAGE_MAP()

CZoAboutDialog::CZoAboutDialog(UINT iconId, CWnd* parent) : CZoDialog(ZO_IDD_ABOUT, parent), m_nIconId(iconId) {}

BOOL CZoAboutDialog::OnInitDialog()
{
    CZoDialog::OnInitDialog();
    const LPCSTR name = MAKEINTRESOURCEA(m_nIconId);
    const HICON icon = ::LoadIconA(AfxFindResourceHandle(name, RT_GROUP_ICON), name);
    SendDlgItemMessage(ZO_IDC_ABOUT_ICON, STM_SETICON, reinterpret_cast<WPARAM>(icon));
    ShowProgram();
    CenterWindow();
    ::SetFocus(::GetDlgItem(m_hWnd, IDOK)); // which Enter is to press, not the button before it
    return FALSE;
}

void CZoAboutDialog::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    ShowProgram();
}

void CZoAboutDialog::ShowProgram()
{
    WithoutThrowing([this]() -> BOOL {
        CZoVersionResource program;
        const BOOL known = program.ExtractVersionInfo();
        const CString name = known ? program.GetStandardValue(kProductName) : CString(AfxGetAppName());
        CString text;
        AfxFormatString1(text, ZO_IDS_ABOUT_TITLE, name);
        SetWindowText(text);
        SetDlgItemText(ZO_IDC_ABOUT_PRODUCT, name);
        text.Empty();
        if (known)
            AfxFormatString1(text, ZO_IDS_ABOUT_VERSION, program.GetStandardValue(kFileVersion));
        SetDlgItemText(ZO_IDC_ABOUT_VERSION, text);
        SetDlgItemText(ZO_IDC_ABOUT_COPYRIGHT, program.GetLegalCopyright());
        return TRUE;
    });
}

void CZoAboutDialog::OnTraceSettings() { TraceSettingsDialog(this).DoModal(); }
