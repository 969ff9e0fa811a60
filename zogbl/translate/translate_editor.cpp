#include <zogbl/translate_editor.h>

#include <zogbl/resource_ids.h>

#include "table_save.h"
#include "translate_status.h"

BEGIN_MESSAGE_MAP(CGblIotSheet, CZoPropertySheet)
    ON_COMMAND(ID_APPLY_NOW, OnApplyNow)
END_MESSAGE_MAP()

CGblIotSheet::CGblIotSheet(CGblTranslate* translation, CWnd* parent)
    : CZoPropertySheet(ZO_IDS_TRANSLATE_SHEET_TITLE, parent), m_pTranslation(translation)
{
    m_working.CopyData(translation);
    m_input.SetTranslation(&m_working);
    m_output.SetTranslation(&m_working);
    m_options.SetTranslation(&m_working);
    AddPage(&m_input);
    AddPage(&m_output);
    AddPage(&m_options);
}

CGblIotSheet::~CGblIotSheet() = default;

void CGblIotSheet::OnApplyNow()
{
    CZoPropertyPage* const page = GetPage(GetActiveIndex());
    if (!page->UpdateData(TRUE)) // the others were taken over when they were left
        return;
    m_pTranslation->CopyData(&m_working);
    CString path;
    m_pTranslation->GetFilePath(path);
    const SaveResult result = SaveTable(*m_pTranslation, path).result;
    page->CancelToClose();
    if (result != SaveResult::kSaved) {
        TellSaveFailed(*this, result, path);
        return;
    }
    m_working.CopyData(m_pTranslation); // a description that was missing
    page->UpdateData(FALSE);
    for (int i = 0; i < GetPageCount(); ++i)
        GetPage(i)->SetModified(FALSE);
}

unsigned long CGblTranslate::Edit(CWnd* parent)
{
    return OrNoMemory([&]() -> DWORD {
        if (OfferKeptFile(parent, m_csFilePath, AfxGetAppName()))
            Load(nullptr); // if that is no table, the set is edited as it is
        CGblIotSheet sheet(this, parent);
        switch (sheet.DoModal()) {
        case IDOK:
            CopyData(sheet.GetWorkingCopy());
            return SaveTable(*this, m_csFilePath).status;
        case -1:
            return ZO_TRANSLATE_NO_MEMORY;
        default:
            return ZO_TRANSLATE_SUCCESS;
        }
    });
}
