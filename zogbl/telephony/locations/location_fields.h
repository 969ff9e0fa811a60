/// \file
/// The members of a location as a table.
#pragma once

#include <zogbl/location_item.h>

#include <variant>

/// A member of a location and the value that it is kept in.
struct LocationField {
    UINT id;
    std::variant<DWORD CZoLocationItem::*, BOOL CZoLocationItem::*, CString CZoLocationItem::*> member;
};

/// In the order in which they are read and written. The telephone numbers follow them.
inline constexpr LocationField kLocationFields[] = {
    {ZO_IDS_REG_COUNTRY_INDEX, &CZoLocationItem::m_dwCountryIndex},
    {ZO_IDS_REG_LOCATION_NAME, &CZoLocationItem::m_csLocationName},
    {ZO_IDS_REG_TAPI_DIALING_ENABLED, &CZoLocationItem::m_bTAPIDialing},
    {ZO_IDS_REG_COUNTRY_CODE, &CZoLocationItem::m_csCountryCode},
    {ZO_IDS_REG_AREA_CITY_CODE, &CZoLocationItem::m_csAreaCityCode},
    {ZO_IDS_REG_INTERNATIONAL_ACCESS, &CZoLocationItem::m_csInternationalAccess},
    {ZO_IDS_REG_LONG_DISTANCE_PREFIX, &CZoLocationItem::m_csLongDistancePrefix},
    {ZO_IDS_REG_LONG_DISTANCE_ACCESS, &CZoLocationItem::m_csLongDistanceAccess},
    {ZO_IDS_REG_LOCAL_PREFIX, &CZoLocationItem::m_csLocalPrefix},
    {ZO_IDS_REG_DIAL_SUFFIX, &CZoLocationItem::m_csDialSuffix},
    {ZO_IDS_REG_CALLER_ID, &CZoLocationItem::m_csBlockCallerID},
    {ZO_IDS_REG_CALL_WAITING, &CZoLocationItem::m_csDisableCallWaiting},
    {ZO_IDS_REG_ADDRESS_COUNTRY_INDEX, &CZoLocationItem::m_dwAddressCountryIndex},
    {ZO_IDS_REG_USER_NAME, &CZoLocationItem::m_csUserName},
    {ZO_IDS_REG_COMPANY, &CZoLocationItem::m_csCompany},
    {ZO_IDS_REG_DEPT, &CZoLocationItem::m_csDept},
    {ZO_IDS_REG_ADDRESS1, &CZoLocationItem::m_csAddress1},
    {ZO_IDS_REG_ADDRESS2, &CZoLocationItem::m_csAddress2},
    {ZO_IDS_REG_CITY, &CZoLocationItem::m_csCity},
    {ZO_IDS_REG_STATE, &CZoLocationItem::m_csState},
    {ZO_IDS_REG_ZIP_CODE, &CZoLocationItem::m_csZipCode},
    {ZO_IDS_REG_EMAIL, &CZoLocationItem::m_csEMail},
    {ZO_IDS_REG_COMPUSERVE, &CZoLocationItem::m_csCompuserve},
};
