/// \file
/// Locations of a registered product.
#pragma once

#include <zogbl/location_item.h>

#include "support/registered_product.h"
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

using Values = std::vector<std::pair<std::string, std::string>>;

/// What an item holds, under the names of the record's values and in the order in which they are read; short of the
/// telephone numbers that it lacks.
inline Values Contents(const Item& item)
{
    Values contents = {{"CountryIndex", std::to_string(item.m_dwCountryIndex)}};
    for (const TextField& field : kTexts) {
        contents.emplace_back(field.name, item.*field.member);
        if (field.member == &Item::m_csLocationName)
            contents.emplace_back("TAPIDialingEnabled", std::to_string(item.m_bTAPIDialing));
        if (field.member == &Item::m_csDisableCallWaiting)
            contents.emplace_back("AddressCountryIndex", std::to_string(item.m_dwAddressCountryIndex));
    }
    for (INT_PTR i = 0; i < 2 * (std::max)(item.m_csaPhoneAreas.GetSize(), item.m_csaPhoneNumbers.GetSize()); ++i) {
        const CStringArray& texts = i % 2 == 0 ? item.m_csaPhoneAreas : item.m_csaPhoneNumbers;
        if (i / 2 < texts.GetSize())
            contents.emplace_back((i % 2 == 0 ? "Area" : "Phone") + std::string(kKinds[i / 2 % 8]), texts[i / 2]);
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
