#include "location_page.h"

#include "country_page.h"
#include "workbench_ids.h"

#include <zogbl/country_code.h>

namespace {

constexpr int kMostLocations = 100;
constexpr UINT kUnitedStates = 840;

enum Button { kNew, kDelete, kMakeCurrent };
constexpr UINT kButtonTexts[] = {ZO_IDS_RECORDS_NEW, ZO_IDS_RECORDS_DELETE, ZO_IDS_LOCATION_MAKE_CURRENT};

constexpr struct {
    UINT label;
    CString CZoLocationItem::*text;
} kDialing[] =
    {
        {ZO_IDS_LOCATION_AREA_CODE, &CZoLocationItem::m_csAreaCityCode},
        {ZO_IDS_LOCATION_INTERNATIONAL_ACCESS, &CZoLocationItem::m_csInternationalAccess},
        {ZO_IDS_LOCATION_LONG_DISTANCE_PREFIX, &CZoLocationItem::m_csLongDistancePrefix},
        {ZO_IDS_LOCATION_LONG_DISTANCE_ACCESS, &CZoLocationItem::m_csLongDistanceAccess},
        {ZO_IDS_LOCATION_LOCAL_PREFIX, &CZoLocationItem::m_csLocalPrefix},
        {ZO_IDS_LOCATION_DIAL_SUFFIX, &CZoLocationItem::m_csDialSuffix},
        {ZO_IDS_LOCATION_BLOCK_CALLER_ID, &CZoLocationItem::m_csBlockCallerID},
        {ZO_IDS_LOCATION_DISABLE_CALL_WAITING, &CZoLocationItem::m_csDisableCallWaiting},
},
  kAddress[] = {
      {ZO_IDS_LOCATION_USER_NAME, &CZoLocationItem::m_csUserName},
      {ZO_IDS_LOCATION_COMPANY, &CZoLocationItem::m_csCompany},
      {ZO_IDS_LOCATION_DEPARTMENT, &CZoLocationItem::m_csDept},
      {ZO_IDS_LOCATION_ADDRESS1, &CZoLocationItem::m_csAddress1},
      {ZO_IDS_LOCATION_ADDRESS2, &CZoLocationItem::m_csAddress2},
      {ZO_IDS_LOCATION_CITY, &CZoLocationItem::m_csCity},
      {ZO_IDS_LOCATION_STATE, &CZoLocationItem::m_csState},
      {ZO_IDS_LOCATION_POSTAL_CODE, &CZoLocationItem::m_csZipCode},
};

/// A country's name with its telephone code; its index when nobody knows it.
CString CountryText(DWORD index)
{
    const CZoCountryCodeList* countries = GetGlobalCountryList();
    const CZoCountryCode* country = countries != nullptr ? countries->FindByIndex(index) : nullptr;
    CString text;
    if (country != nullptr)
        text.Format("%s (%s)", static_cast<LPCSTR>(country->GetName()), static_cast<LPCSTR>(CodeText(*country)));
    else
        text.Format("%lu", index);
    return text;
}

} // namespace

LocationPage::LocationPage() : RecordPage(kButtonTexts) {}

UINT LocationPage::GetTitleId() const { return ZO_IDS_PAGE_LOCATIONS; }
UINT LocationPage::GetCommandId() const { return ZO_ID_VIEW_LOCATIONS; }

// The list ------------------------------------------------------------------------------------------------------------

DWORD LocationPage::FillList(CListBox& list)
{
    m_locations = std::make_unique<CZoLocationItemList>();
    const DWORD status = m_locations->LoadReadableItems();
    const DWORD current = m_locations->GetCurrentIndex();
    for (int i = 0; i < m_locations->GetCount(); ++i) {
        const CZoLocationItem& location = *m_locations->GetAt(i);
        CString text = location.m_csLocationName;
        if (location.m_dwIndex == current)
            text.Format(Text(ZO_IDS_LOCATION_CURRENT), static_cast<LPCSTR>(location.m_csLocationName));
        list.AddString(text);
    }
    return status;
}

CString LocationPage::GetStateText() const
{
    CString text;
    text.Format(Text(ZO_IDS_LOCATION_COUNT), m_locations->GetCount());
    return text;
}

CString LocationPage::Describe(int index) const
{
    const CZoLocationItem& location = *m_locations->GetAt(index);
    CString description;
    AddLine(description, ZO_IDS_LOCATION_NAME, location.m_csLocationName);
    AddLine(description, ZO_IDS_LOCATION_COUNTRY, CountryText(location.m_dwCountryIndex));
    AddLine(description, ZO_IDS_LOCATION_TAPI, Text(location.m_bTAPIDialing ? ZO_IDS_STATE_ON : ZO_IDS_STATE_OFF));
    for (const auto& field : kDialing)
        AddLine(description, field.label, location.*field.text);
    description += "\r\n";
    for (const auto& field : kAddress)
        AddLine(description, field.label, location.*field.text);
    AddLine(description, ZO_IDS_LOCATION_ADDRESS_COUNTRY, CountryText(location.m_dwAddressCountryIndex));
    AddLine(description, ZO_IDS_LOCATION_EMAIL, location.m_csEMail);
    AddLine(description, ZO_IDS_LOCATION_COMPUSERVE, location.m_csCompuserve);
    description += "\r\n";
    for (DWORD kind = 0; kind < ZO_PHONE_KINDS; ++kind)
        AddLine(description, ZO_IDS_LOCATION_PHONE_FIRST + kind,
                location.m_csaPhoneAreas[kind] + " " + location.m_csaPhoneNumbers[kind]);
    return description;
}

// Buttons -------------------------------------------------------------------------------------------------------------

bool LocationPage::CanDo(int button, int index) const
{
    return button == kNew ? IsComplete() && m_locations->GetCount() < kMostLocations : index >= 0;
}

DWORD LocationPage::Do(int button, int index)
{
    if (button == kNew)
        return AddLocation();
    const DWORD record = m_locations->GetAt(index)->m_dwIndex;
    // Deleted by its number: names may begin alike.
    return button == kDelete ? CZoLocationRegistry().DeleteIndex(record) : m_locations->SetCurrentIndex(record);
}

DWORD LocationPage::AddLocation()
{
    CZoLocationItem* location = m_locations->GetNewLocation();
    if (location == nullptr)
        return ZoErrOutOfMemory;
    location->m_csLocationName.Format("%s_%08lu", static_cast<LPCSTR>(Text(ZO_IDS_LOCATION_NEW_NAME)),
                                      location->m_dwIndex);
    location->m_dwCountryIndex = location->m_dwAddressCountryIndex = kUnitedStates;
    GetCountryPhoneCode(kUnitedStates, location->m_csCountryCode);
    location->m_csInternationalAccess = "011";
    location->m_csLongDistancePrefix = "1";
    const DWORD status = location->SaveByIndex();
    if (status == ERROR_SUCCESS)
        Choose(m_locations->GetCount() - 1);
    return status;
}
