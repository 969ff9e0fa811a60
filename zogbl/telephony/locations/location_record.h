/// \file
/// The registry object that an operation on locations works with.
#pragma once

#include <common/without_throwing.h>
#include <zogbl/location_registry.h>

#include <cstring>
#include <memory>

constexpr DWORD kLocationTextSize = 256; ///< bytes of the longest text of a record, terminator included

/// Whether a text can be read back. \return 0, or what reading it would return.
inline DWORD CheckLocationText(LPCSTR text)
{
    return std::strlen(text) < kLocationTextSize ? ERROR_SUCCESS : ERROR_MORE_DATA;
}

/// A location's registry object, with its values by the numbers of their names.
class LocationRecord : public CZoLocationRegistry {
public:
    /// Null when memory has run out.
    static std::unique_ptr<LocationRecord> Create()
    {
        return ResultOr(nullptr, [] { return std::unique_ptr<LocationRecord>(new LocationRecord); });
    }

    /// Positions the object on the key of all locations.
    bool GoToLocations() { return LoadSection() != FALSE; }

    using CZoLocationRegistry::GetString, CZoLocationRegistry::SetString;
    using CZoLocationRegistry::GetValue, CZoLocationRegistry::SetValue;
};
