/// \file
/// What the sheet for dialing locations has.
#pragma once

#include <zogbl/location_sheet.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/tell_user.h"
#include "location_page.h"
#include "location_set.h"

class LocationSheetPage : public LocationFormPage<CZoPropertyPage> {
public:
    using LocationFormPage::LocationFormPage;

    BOOL OnSetActive() override
    {
        WithoutThrowing([this] { GetForm().Show(); }); // without memory it is disabled
        return TRUE;
    }
    BOOL OnKillActive() override { return Take(); }

    /// The controls go to the location, if there are both. \return FALSE: one of them holds what cannot be, which the
    /// user has been told, or memory has run out; the location is as before
    BOOL Take()
    {
        if (m_hWnd == nullptr || GetForm().GetItem() == nullptr || !GetForm().IsShown())
            return TRUE;
        CString reason;
        int fault = -1;
        if (WithoutThrowing([&]() -> BOOL {
                fault = GetForm().FindFault(reason);
                if (fault == 0)
                    GetForm().Take();
                return fault == 0;
            }))
            return TRUE;
        if (fault > 0) {
            TellUser(GetParent(), ZO_IDS_LOC_TITLE, [&] { return reason; });
            ::SetFocus(::GetDlgItem(m_hWnd, fault));
            SendDlgItemMessage(fault, EM_SETSEL, 0, -1);
        } else {
            ::MessageBeep(MB_ICONEXCLAMATION);
        }
        return FALSE;
    }
};

struct CLocSheet::Parts {
    LocationSet set;
    LocationSheetPage pages[kLocationPages] = {
        {kAddressPage, nullptr}, {kPlacePage, nullptr}, {kNumbersPage, nullptr}, {kOutsidePage, nullptr}};
    DWORD status = 0; // of loading
    CStatic label;
    CListBox list;
    CButton buttons[5]; // in the order of their numbers
};
