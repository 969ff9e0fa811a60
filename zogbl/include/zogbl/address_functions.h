/// \file
/// Telephone addresses, made ready to be dialed.
#pragma once

#include <zogbl/export.h>

#include <windows.h>

class CZoLocationItem;
class CZoTAPIInterface;

/// Size of the texts of an address, terminator included: as long as those of a dialing location.
constexpr size_t ZO_ADDRESS_TEXT_SIZE = 256;
/// Size of the result.
constexpr size_t ZO_DIALABLE_SIZE = 512;

/// Modes of MakeDialableAddress.
constexpr int ZO_DIAL_AUTOMATIC = 0;     ///< the area code is left out when it is the location's
constexpr int ZO_DIAL_LOCAL = 1;         ///< as a local call: never with area code, if the country is the location's
constexpr int ZO_DIAL_LONG_DISTANCE = 2; ///< as a long-distance call: with area code even if it is the location's

/// Whom to call and where from. Clear it ({}) before filling it: what is empty is not dialed.
struct _tagAddressInformation {
    // Whom to call
    char m_szCountryCode[ZO_ADDRESS_TEXT_SIZE]; ///< "49", "+49"; "1+242": area 242 of 1; empty: the location's country
    char m_szAreaCode[ZO_ADDRESS_TEXT_SIZE];    ///< as dialed from abroad; empty where numbers have none
    char m_szNumber
        [ZO_ADDRESS_TEXT_SIZE]; ///< "555-0100"; "+1 (425) 555-0100": a full number, the codes count for nothing

    // Where from: a dialing location
    BOOL m_bTAPIDialing; ///< by the telephony service's rules; of what is below, the country code alone may be needed
    char m_szLocationCountryCode[ZO_ADDRESS_TEXT_SIZE]; ///< as m_szCountryCode; empty: not known
    char m_szLocationAreaCode[ZO_ADDRESS_TEXT_SIZE];    ///< empty: area codes are never left out
    char m_szInternationalAccess[ZO_ADDRESS_TEXT_SIZE]; ///< before a country code: "011", "00"
    char m_szLongDistancePrefix[ZO_ADDRESS_TEXT_SIZE];  ///< before an area code: "1", "0"
    char m_szLongDistanceAccess[ZO_ADDRESS_TEXT_SIZE];  ///< for an outside line, long distance and international: "8,"
    char m_szLocalPrefix[ZO_ADDRESS_TEXT_SIZE];         ///< for an outside line, local: "9,"
    char m_szDialSuffix[ZO_ADDRESS_TEXT_SIZE];          ///< behind everything
    char m_szBlockCallerID[ZO_ADDRESS_TEXT_SIZE];       ///< "*67,"
    char m_szDisableCallWaiting[ZO_ADDRESS_TEXT_SIZE];  ///< "*70,"

    // Result
    char m_szDialable[ZO_DIALABLE_SIZE]; ///< empty on failure
};

class ZOGBL_API CZoGlobalAddressFunctions {
public:
    /// Takes a location over into the record's second part; texts are cut to fit.
    static void SetLocation(_tagAddressInformation& address, const CZoLocationItem& location);

    /// Puts together what a modem dials to reach an address. Numbers may be written as people write them: blanks go,
    /// hyphens stay behind digits only, a "+" in front of codes is not needed. Codes are compared by their digits. A
    /// number with a "+" in front is a full one, in the country and area that it names itself. docs/dialing.md has the
    /// rules and examples.
    ///
    /// By the location's own rules, in this order: access to an outside line (the local prefix, or the long-distance
    /// access), the code that disables call waiting, the code that blocks the caller's identity; for another country
    /// the international access, country code, area code; for another area the long-distance prefix, area code; the
    /// number; the suffix. By the telephony service's rules: "+country (area) number" as the service translates it, for
    /// the device that \p tapi is set to, or the first one; markers for tone and pulse ("T", "P") are taken out.
    /// \param mode a ZO_DIAL_ value. \param tapi for the service's rules; null: one is made for this call, and is
    /// silent
    /// \return 1: m_szDialable is what to dial. 0: \p address is null; nothing to dial; an unknown mode; an address
    /// with a country code by the rules of a location without one; an area code without any country code by the
    /// service's rules; a result that finds no room; no memory; or the service could not translate, then \p tapi tells
    /// why (CZoTAPIInterface::GetLastTAPIError).
    static int MakeDialableAddress(_tagAddressInformation* address, int mode, CZoTAPIInterface* tapi);
};
