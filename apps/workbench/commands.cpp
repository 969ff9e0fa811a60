#include "commands.h"

#include "workbench_ids.h"

#include <zogbl/ask_name_dialog.h>
#include <zogbl/location_sheet.h>
#include <zogbl/location_wizard.h>
#include <zogbl/string_select_dialog.h>

namespace {

/// \return whether the dialog was opened; else the user is told
bool IsOpened(INT_PTR result)
{
    if (result == -1)
        AfxMessageBox(Text(ZO_IDS_DIALOG_NOT_OPENED), MB_ICONEXCLAMATION);
    return result != -1;
}

} // namespace

BOOL AskForMailBox(CWnd* owner, MailBoxPage& page)
{
    constexpr int kLongest = 31; // bytes, for the eye
    CStringArray taken;
    page.ListNames(taken);
    CZoAskNameDialog dialog(Text(ZO_IDS_MAILBOX_ASK_TITLE), Text(ZO_IDS_MAILBOX_ASK_NAME), owner);
    if (!dialog.SetTakenNames(taken) || !dialog.SetLongest(kLongest)) {
        IsOpened(-1);
        return FALSE;
    }
    const INT_PTR result = dialog.DoModal();
    if (!IsOpened(result) || result != IDOK)
        return FALSE;
    const DWORD status = page.AddNamed(dialog.GetName());
    if (status != ERROR_SUCCESS) {
        CString text;
        text.Format(Text(ZO_IDS_RECORDS_FAILED), status);
        AfxMessageBox(text, MB_ICONEXCLAMATION);
    }
    return status == ERROR_SUCCESS;
}

BOOL EditLocations(CWnd* owner)
{
    const INT_PTR result = EditLocationItems(owner);
    return IsOpened(result) && result == IDOK;
}

BOOL AddLocationByWizard(CWnd* owner)
{
    const INT_PTR result = CLocWizard(owner).DoModal();
    return IsOpened(result) && result == IDOK;
}

BOOL ChooseCountries(CWnd* owner, CountryPage& page)
{
    CStringArray names;
    CByteArray shown;
    page.ListCountries(names, shown);
    CZoStringSelectDialog dialog(Text(ZO_IDS_COUNTRIES_TITLE), Text(ZO_IDS_COUNTRIES_PROMPT),
                                 CZoStringSelectDialog::Mode::kSeveral, owner);
    if (!dialog.SetStrings(names)) {
        IsOpened(-1);
        return FALSE;
    }
    for (int i = 0; i < names.GetSize(); ++i)
        dialog.Select(i, shown[i]);
    const INT_PTR result = dialog.DoModal();
    if (!IsOpened(result) || result != IDOK)
        return FALSE;
    const bool isNone = dialog.GetSelectedCount() == 0;
    for (int i = 0; i < names.GetSize(); ++i)
        shown[i] = isNone || dialog.IsSelected(i);
    page.ShowCountries(shown);
    if (isNone)
        AfxMessageBox(Text(ZO_IDS_COUNTRIES_NONE), MB_ICONINFORMATION);
    return TRUE;
}
