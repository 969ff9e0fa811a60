#include <zogbl/dialog.h>

#include "dialog_resource.h"

CZoDialog::CZoDialog(UINT templateId, CWnd* parent) : m_nTemplateId(templateId), m_pParent(parent) {}

CZoDialog::~CZoDialog() = default;

INT_PTR CZoDialog::DoModal()
{
    const DialogTemplate dialog(m_nTemplateId);
    if (dialog.Get() == nullptr)
        return -1;
    InitModalIndirect(dialog.Get(), m_pParent);
    const OpenDialog open(this, [](CWnd* window) { static_cast<CZoDialog*>(window)->ReloadTexts(); });
    return CDialog::DoModal();
}

void CZoDialog::ReloadOpenDialogs() { OpenDialog::ReloadAll(); }

void CZoDialog::ReloadTexts() { ReloadDialogTexts(*this, m_nTemplateId); }
