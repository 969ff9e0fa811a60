/// \file
/// Locations of a registered product.
#pragma once

#include <zogbl/location_item.h>

#include "product/registered_product.h"
#include "support/test.h"

namespace zo_test {

using Item = CZoLocationItem;
using Registry = CZoLocationRegistry;

/// The texts of a record, in the order in which they are read.
struct TextField {
    const char* name;
    CString Item::*member;
    DWORD (Registry::*get)(CString&);
    DWORD (Registry::*set)(const char*);
};
#define ZO_TEXT(name, suffix)                                                                                          \
    {                                                                                                                  \
        name, &Item::m_cs##suffix, &Registry::Get##suffix, &Registry::Set##suffix                                      \
    }
inline const TextField kTexts[] = {ZO_TEXT("LocationName", LocationName),
                                   ZO_TEXT("CountryCode", CountryCode),
                                   ZO_TEXT("AreaCityCode", AreaCityCode),
                                   ZO_TEXT("InternationalAccess", InternationalAccess),
                                   ZO_TEXT("LongDistancePrefix", LongDistancePrefix),
                                   ZO_TEXT("LongDistanceAccess", LongDistanceAccess),
                                   ZO_TEXT("LocalPrefix", LocalPrefix),
                                   ZO_TEXT("DialSuffix", DialSuffix),
                                   ZO_TEXT("CallerID", BlockCallerID),
                                   ZO_TEXT("CallWaiting", DisableCallWaiting),
                                   ZO_TEXT("UserName", UserName),
                                   ZO_TEXT("Company", Company),
                                   ZO_TEXT("Dept", Dept),
                                   ZO_TEXT("Address1", Address1),
                                   ZO_TEXT("Address2", Address2),
                                   ZO_TEXT("City", City),
                                   ZO_TEXT("State", State),
                                   ZO_TEXT("ZipCode", ZipCode),
                                   ZO_TEXT("EMail", EMail),
                                   ZO_TEXT("CompuServe", Compuserve)};
#undef ZO_TEXT
inline const char* const kKinds[] = {"Home1", "Home2", "Work1", "Work2", "Data", "Fax", "Mobile", "Pager"};

/// Every value of a record, in the order in which it is read.
inline std::vector<std::string> ValueNames()
{
    std::vector<std::string> names = {"CountryIndex"};
    for (const TextField& field : kTexts) {
        names.emplace_back(field.name);
        if (names.back() == "LocationName")
            names.emplace_back("TAPIDialingEnabled");
        if (names.back() == "CallWaiting")
            names.emplace_back("AddressCountryIndex");
    }
    for (const char* kind : kKinds) {
        names.push_back(std::string("Area") + kind);
        names.push_back(std::string("Phone") + kind);
    }
    return names;
}

/// What an item holds, in that order; short of the telephone numbers that it lacks.
inline std::vector<std::string> Contents(const Item& item)
{
    std::vector<std::string> contents = {std::to_string(item.m_dwCountryIndex)};
    for (const TextField& field : kTexts) {
        contents.emplace_back(item.*field.member);
        if (field.member == &Item::m_csLocationName)
            contents.push_back(std::to_string(item.m_bTAPIDialing));
        if (field.member == &Item::m_csDisableCallWaiting)
            contents.push_back(std::to_string(item.m_dwAddressCountryIndex));
    }
    for (INT_PTR i = 0; i < item.m_csaPhoneAreas.GetSize() || i < item.m_csaPhoneNumbers.GetSize(); ++i) {
        if (i < item.m_csaPhoneAreas.GetSize())
            contents.emplace_back(item.m_csaPhoneAreas[i]);
        if (i < item.m_csaPhoneNumbers.GetSize())
            contents.emplace_back(item.m_csaPhoneNumbers[i]);
    }
    return contents;
}

/// Gives every member a value of its own; texts have \p length bytes, characters of two where the system has them.
inline void Fill(Item& item, const char* name, int length)
{
    const auto text = [=](const std::string& field) {
        std::string value = std::string(name) + " " + field + " ";
        while (value.size() + 2 <= static_cast<size_t>(length))
            value += IsDoubleByte() ? "\x83\x5C" : "\xFC\x5C"; // a second byte like a backslash
        value.resize(static_cast<size_t>(length), 'x');
        return CString(value.c_str());
    };
    item.m_dwCountryIndex = 276 + item.m_dwIndex;
    item.m_dwAddressCountryIndex = 0xFFFFFFFF - item.m_dwIndex;
    item.m_bTAPIDialing = item.m_dwIndex % 2 == 0;
    for (const TextField& field : kTexts)
        item.*field.member = text(field.name);
    for (const char* kind : kKinds) {
        item.m_csaPhoneAreas.Add(text(std::string("Area") + kind));
        item.m_csaPhoneNumbers.Add(text(std::string("Phone") + kind));
    }
}

class LocationTest : public testing::Test {
protected:
    static constexpr DWORD kMode = ZO_MODE_LOCAL_MACHINE;

    CString RecordKey(LPCSTR subkey) const { return m_key + "\\" + subkey; }
    void Save(DWORD index, const char* name, int length = 40) const
    {
        Item item(index);
        Fill(item, name, length);
        ASSERT_EQ(0u, item.SaveByIndex());
    }

    RegisteredProduct m_product;
    CString m_key = m_product.UserKey() + "\\Location";
    CZoGlobalConfig m_config;
};

} // namespace zo_test
