/// \file
/// Dialing locations: where the user dials from.
#pragma once

#include "record_page.h"

#include <zogbl/location_item.h>

#include <memory>

class LocationPage : public RecordPage {
public:
    LocationPage();

    UINT GetTitleId() const override;
    UINT GetCommandId() const override;

protected:
    DWORD FillList(CListBox& list) override;
    CString Describe(int index) const override;
    DWORD Do(int button, int index) override;
    bool CanDo(int button, int index) const override;
    CString GetStateText() const override;

private:
    DWORD AddLocation();

    std::unique_ptr<CZoLocationItemList> m_locations; // as they were read last
};
