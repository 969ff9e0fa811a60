/// \file
/// Dialing locations in the registry.
#pragma once

#include <zogbl/registry_base.h>
#include <zogbl/resource_ids.h>

/// Kinds of telephone numbers of a location.
constexpr DWORD ZO_PHONE_HOME1 = 0;
constexpr DWORD ZO_PHONE_HOME2 = 1;
constexpr DWORD ZO_PHONE_WORK1 = 2;
constexpr DWORD ZO_PHONE_WORK2 = 3;
constexpr DWORD ZO_PHONE_DATA = 4;
constexpr DWORD ZO_PHONE_FAX = 5;
constexpr DWORD ZO_PHONE_MOBILE = 6;
constexpr DWORD ZO_PHONE_PAGER = 7;
constexpr DWORD ZO_PHONE_KINDS = 8;

/// Result of GetCurrentIndex if no location was made the current one.
constexpr DWORD ZO_NO_LOCATION = 0xFFFFFFFF;

/// Reads and writes the records of dialing locations. As a rule, callers use CZoLocationItem and CZoLocationItemList
/// (location_item.h). The records stand below HKEY_LOCAL_MACHINE:
///
///     <current user's key of the product>\Location            CurrentIndex
///     <current user's key of the product>\Location\00000003   everything else of location 3
///
/// The product is that of the running executable, see CZoVersionResource. The object stands on one record, the data
/// index, at first 0. Operations on other records bring it back there.
///
/// Operations return the codes of CZoGblRegBase. A value that cannot be read is empty, or its default.
///   0                   success
///   ZoErrObjectInvalid  the executable belongs to no registered product, its key does not fit in the section, or
///                       memory has run out
///   2                   no such record or value
///   234                 the text has more than 255 bytes. Such a text is written all the same, so do not write one.
class ZOGBL_API CZoLocationRegistry : public CZoGblRegBase {
public:
    CZoLocationRegistry();
    ~CZoLocationRegistry() override;

    /// Whether the base is valid and the key of the locations is known.
    BOOL IsClassDataValid() override;

    /// Moves the object to a record, which need not exist. \return 0 or ZoErrObjectInvalid
    DWORD SetDataIndex(DWORD index);
    DWORD GetDataIndex() const { return m_dwDataIndex; }

    /// Whether a record has the value CountryCode. A subkey without it is no record.
    BOOL DoesIndexExist(DWORD index);
    /// Deletes a record and everything in it.
    DWORD DeleteIndex(DWORD index);

    /// The location that the user dials from. \p index is ZO_NO_LOCATION after any failure; 2 is returned if none was
    /// chosen.
    DWORD GetCurrentIndex(DWORD& index);
    DWORD SetCurrentIndex(DWORD index);

    // Numbers of the record; 0 after any failure. Countries are country indexes, see country_code.h.

    DWORD GetCountryIndex(UINT& index) { return GetIndex(ZO_IDS_REG_COUNTRY_INDEX, index); }
    DWORD SetCountryIndex(UINT index) { return SetValue(ZO_IDS_REG_COUNTRY_INDEX, index); }
    DWORD GetAddressCountryIndex(UINT& index) { return GetIndex(ZO_IDS_REG_ADDRESS_COUNTRY_INDEX, index); }
    DWORD SetAddressCountryIndex(UINT index) { return SetValue(ZO_IDS_REG_ADDRESS_COUNTRY_INDEX, index); }
    /// Nonzero: dialing rules come from the telephony service instead of this record.
    DWORD GetTAPIDialing(DWORD& enabled) { return GetValue(ZO_IDS_REG_TAPI_DIALING_ENABLED, enabled, 0); }
    DWORD SetTAPIDialing(DWORD enabled) { return SetValue(ZO_IDS_REG_TAPI_DIALING_ENABLED, enabled); }

    // Texts of the record; empty after any failure. ZoErrMemoryException: there is a text, but no memory for it.

    DWORD GetLocationName(CString& text) { return GetString(ZO_IDS_REG_LOCATION_NAME, text); }
    DWORD SetLocationName(const char* text) { return SetString(ZO_IDS_REG_LOCATION_NAME, text); }
    DWORD GetCountryCode(CString& text) { return GetString(ZO_IDS_REG_COUNTRY_CODE, text); }
    DWORD SetCountryCode(const char* text) { return SetString(ZO_IDS_REG_COUNTRY_CODE, text); }
    DWORD GetAreaCityCode(CString& text) { return GetString(ZO_IDS_REG_AREA_CITY_CODE, text); }
    DWORD SetAreaCityCode(const char* text) { return SetString(ZO_IDS_REG_AREA_CITY_CODE, text); }
    DWORD GetInternationalAccess(CString& text) { return GetString(ZO_IDS_REG_INTERNATIONAL_ACCESS, text); }
    DWORD SetInternationalAccess(const char* text) { return SetString(ZO_IDS_REG_INTERNATIONAL_ACCESS, text); }
    DWORD GetLongDistancePrefix(CString& text) { return GetString(ZO_IDS_REG_LONG_DISTANCE_PREFIX, text); }
    DWORD SetLongDistancePrefix(const char* text) { return SetString(ZO_IDS_REG_LONG_DISTANCE_PREFIX, text); }
    DWORD GetLongDistanceAccess(CString& text) { return GetString(ZO_IDS_REG_LONG_DISTANCE_ACCESS, text); }
    DWORD SetLongDistanceAccess(const char* text) { return SetString(ZO_IDS_REG_LONG_DISTANCE_ACCESS, text); }
    DWORD GetLocalPrefix(CString& text) { return GetString(ZO_IDS_REG_LOCAL_PREFIX, text); }
    DWORD SetLocalPrefix(const char* text) { return SetString(ZO_IDS_REG_LOCAL_PREFIX, text); }
    DWORD GetDialSuffix(CString& text) { return GetString(ZO_IDS_REG_DIAL_SUFFIX, text); }
    DWORD SetDialSuffix(const char* text) { return SetString(ZO_IDS_REG_DIAL_SUFFIX, text); }
    DWORD GetBlockCallerID(CString& text) { return GetString(ZO_IDS_REG_CALLER_ID, text); }
    DWORD SetBlockCallerID(const char* text) { return SetString(ZO_IDS_REG_CALLER_ID, text); }
    DWORD GetDisableCallWaiting(CString& text) { return GetString(ZO_IDS_REG_CALL_WAITING, text); }
    DWORD SetDisableCallWaiting(const char* text) { return SetString(ZO_IDS_REG_CALL_WAITING, text); }
    DWORD GetUserName(CString& text) { return GetString(ZO_IDS_REG_USER_NAME, text); }
    DWORD SetUserName(const char* text) { return SetString(ZO_IDS_REG_USER_NAME, text); }
    DWORD GetCompany(CString& text) { return GetString(ZO_IDS_REG_COMPANY, text); }
    DWORD SetCompany(const char* text) { return SetString(ZO_IDS_REG_COMPANY, text); }
    DWORD GetDept(CString& text) { return GetString(ZO_IDS_REG_DEPT, text); }
    DWORD SetDept(const char* text) { return SetString(ZO_IDS_REG_DEPT, text); }
    DWORD GetAddress1(CString& text) { return GetString(ZO_IDS_REG_ADDRESS1, text); }
    DWORD SetAddress1(const char* text) { return SetString(ZO_IDS_REG_ADDRESS1, text); }
    DWORD GetAddress2(CString& text) { return GetString(ZO_IDS_REG_ADDRESS2, text); }
    DWORD SetAddress2(const char* text) { return SetString(ZO_IDS_REG_ADDRESS2, text); }
    DWORD GetCity(CString& text) { return GetString(ZO_IDS_REG_CITY, text); }
    DWORD SetCity(const char* text) { return SetString(ZO_IDS_REG_CITY, text); }
    DWORD GetState(CString& text) { return GetString(ZO_IDS_REG_STATE, text); }
    DWORD SetState(const char* text) { return SetString(ZO_IDS_REG_STATE, text); }
    DWORD GetZipCode(CString& text) { return GetString(ZO_IDS_REG_ZIP_CODE, text); }
    DWORD SetZipCode(const char* text) { return SetString(ZO_IDS_REG_ZIP_CODE, text); }
    DWORD GetEMail(CString& text) { return GetString(ZO_IDS_REG_EMAIL, text); }
    DWORD SetEMail(const char* text) { return SetString(ZO_IDS_REG_EMAIL, text); }
    DWORD GetCompuserve(CString& text) { return GetString(ZO_IDS_REG_COMPUSERVE, text); }
    DWORD SetCompuserve(const char* text) { return SetString(ZO_IDS_REG_COMPUSERVE, text); }

    // Telephone numbers by kind, a ZO_PHONE_ value. Any other value counts as ZO_PHONE_HOME2.

    DWORD GetPhoneArea(DWORD kind, CString& text) { return GetString(GetAreaStringId(kind), text); }
    DWORD SetPhoneArea(DWORD kind, const char* text) { return SetString(GetAreaStringId(kind), text); }
    DWORD GetPhoneNumber(DWORD kind, CString& text) { return GetString(GetNumberStringId(kind), text); }
    DWORD SetPhoneNumber(DWORD kind, const char* text) { return SetString(GetNumberStringId(kind), text); }

protected:
    /// Loads the key of all locations. \return IsClassDataValid
    BOOL LoadSection() override;
    /// Loads the key of one record. \return FALSE, and the object is invalid, if the key of the locations is not known
    virtual BOOL LoadIndex(DWORD index);

    using CZoGblRegBase::GetString;
    DWORD GetString(UINT id, CString& text);

    /// Number of the string that names the value of a kind.
    static UINT GetAreaStringId(DWORD kind);
    static UINT GetNumberStringId(DWORD kind);

private:
    DWORD GetIndex(UINT id, UINT& index);
    bool AppendToSection(LPCSTR text);

    DWORD m_dwDataIndex;
    BOOL m_bLocationValid; // the key of the locations, or of a record, is in the section
};
