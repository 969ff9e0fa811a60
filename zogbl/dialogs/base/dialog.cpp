#include <zogbl/dialog.h>

#include "dialog_resource.h"
#include "ground/language_followers.h"

#include <new>

CZoDialog::CZoDialog(UINT templateId, CWnd* parent) : m_nTemplateId(templateId), m_pParent(parent) {}

CZoDialog::~CZoDialog() { delete m_pFollower; }

void CZoDialog::FollowLanguage(void* what)
{
    auto* dialog = static_cast<CZoDialog*>(what);
    if (dialog->m_hWnd != nullptr)
        dialog->ReloadTexts();
}

INT_PTR CZoDialog::DoModal()
{
    const DialogTemplate dialog(m_nTemplateId);
    if (dialog.Get() == nullptr)
        return -1;
    InitModalIndirect(dialog.Get(), m_pParent);
    const LanguageFollower follower(LanguageFollower::Occasion::kWindows, &FollowLanguage, this);
    return CDialog::DoModal();
}

BOOL CZoDialog::CreateModeless()
{
    const DialogTemplate dialog(m_nTemplateId);
    if (m_pFollower == nullptr)
        m_pFollower = new (std::nothrow) LanguageFollower(LanguageFollower::Occasion::kWindows, &FollowLanguage, this);
    return dialog.Get() != nullptr && m_pFollower != nullptr && CreateIndirect(dialog.Get(), m_pParent);
}

void CZoDialog::ReloadOpenDialogs() { LanguageFollower::RenewAll(LanguageFollower::Occasion::kWindows); }

void CZoDialog::ReloadTexts() { ReloadDialogTexts(*this, m_nTemplateId); }
