#include <zogbl/dialog.h>

#include "dialog_resource.h"
#include "ground/language_followers.h"

CZoDialog::CZoDialog(UINT templateId, CWnd* parent) : m_nTemplateId(templateId), m_pParent(parent) {}

CZoDialog::~CZoDialog() = default;

INT_PTR CZoDialog::DoModal()
{
    const DialogTemplate dialog(m_nTemplateId);
    if (dialog.Get() == nullptr)
        return -1;
    InitModalIndirect(dialog.Get(), m_pParent);
    const LanguageFollower follower(
        LanguageFollower::Occasion::kWindows,
        [](void* what) {
            auto* dialog = static_cast<CZoDialog*>(what);
            if (dialog->m_hWnd != nullptr)
                dialog->ReloadTexts();
        },
        this);
    return CDialog::DoModal();
}

void CZoDialog::ReloadOpenDialogs() { LanguageFollower::RenewAll(LanguageFollower::Occasion::kWindows); }

void CZoDialog::ReloadTexts() { ReloadDialogTexts(*this, m_nTemplateId); }
