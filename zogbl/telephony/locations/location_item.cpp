#include <zogbl/location_item.h>

#include <common/without_throwing.h>

#include "location_record.h"

#include <variant>

namespace {

/// A member of a location and the value that it is kept in.
struct Field {
    UINT id;
    std::variant<DWORD CZoLocationItem::*, BOOL CZoLocationItem::*, CString CZoLocationItem::*> member;
};

/// In the order in which they are read and written. The telephone numbers follow them.
constexpr Field kFields[] = {
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

/// Calls \p visit(id, member) for each field, until it returns a status other than 0. \return that status.
template <class VISIT> DWORD ForEachField(CZoLocationItem& item, VISIT visit)
{
    for (const Field& field : kFields) {
        const DWORD status = std::visit([&](auto member) { return visit(field.id, item.*member); }, field.member);
        if (status != ERROR_SUCCESS)
            return status;
    }
    return ERROR_SUCCESS;
}

struct Clear {
    DWORD operator()(UINT, CString& text) const { return text.Empty(), ERROR_SUCCESS; }
    template <class NUMBER> DWORD operator()(UINT, NUMBER& number) const { return number = 0, ERROR_SUCCESS; }
};

struct Load {
    LocationRecord& record;
    DWORD operator()(UINT id, DWORD& number) const { return record.GetValue(id, number, 0); }
    DWORD operator()(UINT id, CString& text) const { return record.GetString(id, text); }
    DWORD operator()(UINT id, BOOL& flag) const
    {
        DWORD number = 0;
        const DWORD status = record.GetValue(id, number, 0);
        flag = number != 0;
        return status;
    }
};

struct Save {
    LocationRecord& record;
    DWORD operator()(UINT id, DWORD number) const { return record.SetValue(id, number); }
    DWORD operator()(UINT id, const CString& text) const { return record.SetString(id, text); }
    DWORD operator()(UINT id, BOOL flag) const { return record.SetValue(id, flag == 1 ? 1 : 0); }
};

struct Check {
    DWORD operator()(UINT, const CString& text) const { return CheckLocationText(text); }
    template <class NUMBER> DWORD operator()(UINT, NUMBER) const { return ERROR_SUCCESS; }
};

DWORD LoadPhones(LocationRecord& record, CStringArray& areas, CStringArray& numbers)
{
    areas.RemoveAll();
    numbers.RemoveAll();
    for (DWORD kind = 0; kind < ZO_PHONE_KINDS; ++kind) {
        CString text;
        DWORD status = record.GetPhoneArea(kind, text);
        if (status != ERROR_SUCCESS)
            return status;
        areas.Add(text);
        status = record.GetPhoneNumber(kind, text);
        if (status != ERROR_SUCCESS)
            return status;
        numbers.Add(text);
    }
    return ERROR_SUCCESS;
}

/// Calls \p visit(kind, text) for each kind, until it returns a status other than 0. \return that status.
template <class VISIT> DWORD ForEachPhone(const CStringArray& texts, VISIT visit)
{
    for (DWORD kind = 0; kind < ZO_PHONE_KINDS; ++kind) {
        const bool present = static_cast<INT_PTR>(kind) < texts.GetSize();
        const DWORD status = visit(kind, present ? static_cast<LPCSTR>(texts[kind]) : "");
        if (status != ERROR_SUCCESS)
            return status;
    }
    return ERROR_SUCCESS;
}

} // namespace

CZoLocationItem::CZoLocationItem(DWORD index)
{
    ClearData();
    m_dwIndex = index;
}

CZoLocationItem::~CZoLocationItem() = default;

void CZoLocationItem::ClearData()
{
    m_dwIndex = 0;
    ForEachField(*this, Clear{});
    m_csaPhoneAreas.RemoveAll();
    m_csaPhoneNumbers.RemoveAll();
}

DWORD CZoLocationItem::LoadByIndex(DWORD index)
{
    m_dwIndex = index;
    const auto record = LocationRecord::Create();
    if (!record)
        return ZoErrOutOfMemory;
    record->SetDataIndex(index); // an object that is invalid fails at the first value
    const DWORD status = ForEachField(*this, Load{*record});
    if (status != ERROR_SUCCESS)
        return status;
    return ResultOr(ZoErrMemoryException, [&] { return LoadPhones(*record, m_csaPhoneAreas, m_csaPhoneNumbers); });
}

DWORD CZoLocationItem::LoadCurrentLocation()
{
    const auto record = LocationRecord::Create();
    if (!record)
        return ZoErrOutOfMemory;
    DWORD index = ZO_NO_LOCATION;
    const DWORD status = record->GetCurrentIndex(index);
    return status != ERROR_SUCCESS ? status : LoadByIndex(index);
}

DWORD CZoLocationItem::SaveByIndex()
{
    const auto record = LocationRecord::Create();
    if (!record)
        return ZoErrOutOfMemory;
    // Before anything is written: a record with one text that cannot be read back would stop the loading of all.
    DWORD status = ForEachField(*this, Check{});
    for (const CStringArray* texts : {&m_csaPhoneAreas, &m_csaPhoneNumbers}) {
        if (status == ERROR_SUCCESS)
            status = ForEachPhone(*texts, [](DWORD, LPCSTR text) { return CheckLocationText(text); });
    }
    if (status != ERROR_SUCCESS)
        return status;
    record->SetDataIndex(m_dwIndex);
    status = ForEachField(*this, Save{*record});
    if (status == ERROR_SUCCESS)
        status =
            ForEachPhone(m_csaPhoneAreas, [&](DWORD kind, LPCSTR text) { return record->SetPhoneArea(kind, text); });
    if (status == ERROR_SUCCESS)
        status = ForEachPhone(m_csaPhoneNumbers,
                              [&](DWORD kind, LPCSTR text) { return record->SetPhoneNumber(kind, text); });
    if (status != ERROR_SUCCESS)
        record->DeleteIndex(m_dwIndex);
    return status;
}
