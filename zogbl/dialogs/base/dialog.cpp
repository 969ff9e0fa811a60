#include <zogbl/dialog.h>

#include "dialog_resource.h"
#include "ground/language_followers.h"
#include "window_layout.h"

#include <common/without_throwing.h>

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

BOOL CZoDialog::MakeSizable(const ZoFollowing* controls, int count, LPCSTR name)
{
    return WithoutThrowing([&] {
        m_layout = std::make_unique<WindowLayout>(*this, controls, count, name);
        m_layout->Restore();
    });
}

LRESULT CZoDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_DESTROY && m_layout != nullptr) {
        m_layout->Keep(); // it opens in another size next time, if that fails
        m_layout.reset();
    }
    const LRESULT result = CDialog::WindowProc(message, wParam, lParam);
    if (m_layout != nullptr && message == WM_SIZE)
        m_layout->OnSize();
    else if (m_layout != nullptr && message == WM_GETMINMAXINFO)
        m_layout->OnGetMinMaxInfo(*reinterpret_cast<MINMAXINFO*>(lParam));
    return result;
}
