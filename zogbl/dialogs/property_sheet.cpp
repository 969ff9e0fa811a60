#include <zogbl/property_sheet.h>

#include <zogbl/resource_ids.h>

#include "dialog_resource.h"

#include <new>

namespace {

constexpr int kApply = 0x3021; // the system's number of the button

} // namespace

// The page -------------------------------------------------------------------------------------------------------------

CZoPropertyPage::CZoPropertyPage(UINT templateId) : CPropertyPage(templateId), m_nTemplateId(templateId) {}

CZoPropertyPage::~CZoPropertyPage() = default;

BOOL CZoPropertyPage::LoadTemplate()
{
    m_template.reset(new (std::nothrow) DialogTemplate(m_nTemplateId));
    if (!m_template || m_template->Get() == nullptr)
        return FALSE;
    m_psp.dwFlags |= PSP_DLGINDIRECT;
    m_psp.pResource = m_template->Get();
    return TRUE;
}

void CZoPropertyPage::ReloadTexts() { ReloadDialogTexts(*this, m_nTemplateId); }

// The sheet ------------------------------------------------------------------------------------------------------------

CZoPropertySheet::CZoPropertySheet(UINT titleId, CWnd* parent, UINT firstPage)
    : CPropertySheet(LoadText(titleId), parent, firstPage), m_nTitleId(titleId)
{
}

CZoPropertySheet::CZoPropertySheet(LPCSTR title, CWnd* parent, UINT firstPage)
    : CPropertySheet(title, parent, firstPage)
{
}

CZoPropertySheet::~CZoPropertySheet() = default;

INT_PTR CZoPropertySheet::DoModal()
{
    for (int i = 0; i < GetPageCount(); ++i) {
        if (!GetPage(i)->LoadTemplate())
            return -1;
    }
    m_bCloseOnly = false;
    const OpenDialog open(this, [](CWnd* window) { static_cast<CZoPropertySheet*>(window)->ReloadTexts(); });
    try {
        return CPropertySheet::DoModal();
    } catch (CMemoryException* e) {
        e->Delete();
        return -1;
    }
}

BOOL CZoPropertySheet::OnInitDialog()
{
    ReloadButtons();
    return CPropertySheet::OnInitDialog();
}

void CZoPropertySheet::ReloadTexts()
{
    try {
        if (m_nTitleId != 0)
            SetWindowText(LoadText(m_nTitleId));
        for (int i = 0; i < GetPageCount(); ++i) {
            CZoPropertyPage* page = GetPage(i);
            if (page->IsCreated())
                page->ReloadTexts();
            CString title = DialogTitle(page->m_nTemplateId);
            TCITEMA item = {};
            item.mask = TCIF_TEXT;
            item.pszText = title.GetBuffer(0);
            ::SendMessageA(TabControl(), TCM_SETITEMA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        }
    } catch (CMemoryException* e) {
        e->Delete(); // the rest stays as it is
    }
    ReloadButtons();
}

void CZoPropertySheet::ReloadButtons()
{
    const struct {
        int button, text;
    } buttons[] = {{IDOK, m_bCloseOnly ? ZO_IDS_SHEET_CLOSE : ZO_IDS_SHEET_OK},
                   {IDCANCEL, ZO_IDS_SHEET_CANCEL},
                   {kApply, ZO_IDS_SHEET_APPLY}};
    try {
        for (const auto& row : buttons)
            SetDlgItemText(row.button, LoadText(static_cast<UINT>(row.text)));
    } catch (CMemoryException* e) {
        e->Delete();
    }
}

LRESULT CZoPropertySheet::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const LRESULT result = CPropertySheet::WindowProc(message, wParam, lParam);
    if (message == PSM_CANCELTOCLOSE) { // has put the system's word on the button
        m_bCloseOnly = true;
        ReloadButtons();
    }
    return result;
}
