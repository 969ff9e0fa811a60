#include <zogbl/location_wizard.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/tell_user.h"
#include "location_page.h"
#include "location_set.h"

namespace {

class Page : public LocationFormPage<CZoWizardPage> {
public:
    using LocationFormPage::LocationFormPage;

protected:
    void OnShow() override { GetForm().Refresh(); }
    int FindFault(CString& reason) override { return m_hWnd != nullptr ? GetForm().FindFault(reason) : 0; }
    BOOL OnNext() override
    {
        GetForm().Take();
        return TRUE;
    }
};

} // namespace

struct CLocWizard::Parts {
    LocationSet set;
    Page pages[kLocationPages] = {{kAddressPage, &set}, {kPlacePage, &set}, {kNumbersPage, &set}, {kOutsidePage, &set}};
};

CLocWizard::CLocWizard(CWnd* parent)
    : CZoWizardSheet(ZO_IDS_LOC_WIZARD_TITLE, parent), m_parts(std::make_unique<Parts>()), m_pOwner(parent)
{
    SetAct(ZO_IDS_LOC_WIZARD_ACT);
    for (Page& page : m_parts->pages) {
        if (!AddPage(&page))
            AfxThrowMemoryException();
    }
}

CLocWizard::~CLocWizard() = default;

INT_PTR CLocWizard::DoModal()
{
    return ResultOr(-1, [this]() -> INT_PTR {
        LocationSet& set = m_parts->set;
        set.Load(); // those that cannot be read stay as they are
        const int position = set.Add();
        if (position < 0) {
            TellUser(m_pOwner, ZO_IDS_LOC_WIZARD_TITLE, [&] {
                CString most;
                most.Format("%d", LocationSet::kMost);
                return set.GetCount() < LocationSet::kMost ? LoadText(ZO_IDS_LOC_NOT_MADE)
                                                           : LoadText(ZO_IDS_LOC_FULL, most);
            });
            return IDCANCEL;
        }
        CZoLocationItem& item = set.GetAt(position);
        item.m_csLocationName = NewName(set, item.m_dwIndex);
        if (position == 0)
            set.SetCurrent(position);
        for (Page& page : m_parts->pages)
            page.GetForm().SetItem(&item);
        return CZoWizardSheet::DoModal();
    });
}

BOOL CLocWizard::OnFinish()
{
    int failed = -1;
    const CWaitCursor wait;
    const DWORD status = m_parts->set.Save(failed);
    if (status == ERROR_SUCCESS)
        return TRUE;
    TellUser(this, ZO_IDS_LOC_WIZARD_TITLE, [&] {
        return LoadText(ZO_IDS_LOC_NOT_SAVED, m_parts->set.GetAt(m_parts->set.GetCount() - 1).m_csLocationName,
                        StatusText(status));
    });
    return FALSE;
}
