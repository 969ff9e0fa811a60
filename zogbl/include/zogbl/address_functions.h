/// \file
/// Makes telephone addresses ready for dialing.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

class CZoLocationItem;
class CZoTAPIInterface;

/// Size of each text of an address, terminator included; the same as in a dialing location.
constexpr size_t ZO_ADDRESS_TEXT_SIZE = 256;
/// Size of the result, terminator included.
constexpr size_t ZO_DIALABLE_SIZE = 512;

/// Modes of MakeDialableAddress.
constexpr int ZO_DIAL_AUTOMATIC = 0;     ///< without the area code if it is the location's
constexpr int ZO_DIAL_LOCAL = 1;         ///< a local call: without area code, if the country is the location's
constexpr int ZO_DIAL_LONG_DISTANCE = 2; ///< with the area code even if it is the location's

/// Whom to call, and from where. Clear it ({}) before you fill it: empty texts are not dialed.
struct _tagAddressInformation {
    // Whom to call
    char m_szCountryCode[ZO_ADDRESS_TEXT_SIZE]; ///< "49", "+49"; "1+242": area 242 of 1; empty: the location's country
    char m_szAreaCode[ZO_ADDRESS_TEXT_SIZE];    ///< as dialed from abroad; empty if numbers have none
    char m_szNumber[ZO_ADDRESS_TEXT_SIZE];      ///< "555-0100"; "+1 (425) 555-0100": the codes above have no effect

    // From where: a dialing location
    BOOL m_bTAPIDialing; ///< by the telephony service's rules; of the texts below, only the country code is used
    char m_szLocationCountryCode[ZO_ADDRESS_TEXT_SIZE]; ///< as m_szCountryCode; empty: not known
    char m_szLocationAreaCode[ZO_ADDRESS_TEXT_SIZE];    ///< empty: ZO_DIAL_AUTOMATIC leaves no area code out
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

/// What a piece of a dialable text is for.
enum class ZoDialedPart {
    kLocalPrefix,
    kLongDistanceAccess,
    kDisableCallWaiting,
    kBlockCallerID,
    kInternationalAccess,
    kCountryCode,
    kLongDistancePrefix,
    kAreaCode,
    kNumber,
    kDialSuffix,
    kTranslated ///< all of it, as the telephony service made it
};
enum class ZoCallKind { kNone, kLocal, kLongDistance, kInternational, kTranslated };

/// How a dialable text is made up.
struct ZoDialing {
    static constexpr int MOST_PIECES = 8;
    struct Piece {
        ZoDialedPart part;
        CString text; ///< not empty
    };

    ZoCallKind kind = ZoCallKind::kNone; ///< kNone: there is nothing to dial, and no piece
    Piece pieces[MOST_PIECES];           ///< one behind the other they are the dialable text
    int count = 0;
};

/// Makes of a telephone address the text that a modem dials: by the location's own rules or by the telephony service's.
class ZOGBL_API CZoGlobalAddressFunctions {
public:
    /// Copies a location to the second part of the record. Texts are cut to fit.
    static void SetLocation(_tagAddressInformation& address, const CZoLocationItem& location);

    /// Makes m_szDialable; docs/dialing.md has all rules and examples. Codes and numbers can be written as people write
    /// them: blanks are dropped, a hyphen stays only behind a digit, codes are compared by their digits. A number with
    /// "+" in front is a full one: it names its country and area itself. If it does not show where its area code ends,
    /// it is dialed within its country as a long-distance call in every mode.
    ///
    /// By the location's rules, these follow each other:
    ///
    ///   - the local prefix for a local call, else the long-distance access
    ///   - the code that disables call waiting, the code that blocks the caller's identity
    ///   - for another country: international access, country code, area code
    ///   - for any other long-distance call: long-distance prefix, area code
    ///   - the number, the suffix
    ///
    /// By the service's rules, it is "+country (area) number" as the service translates it, for the device of \p tapi
    /// or, if none is set, the first one. The markers for tone and pulse ("T", "P") are taken out.
    /// \param mode a ZO_DIAL_ value
    /// \param tapi for the service's rules; null: one is made for this call, which shows no messages
    /// \return
    ///   1  m_szDialable is the text to dial
    ///   0  m_szDialable is empty, because
    ///      - \p address is null, the mode is unknown, or there is nothing to dial
    ///      - location's rules: the address has a country code, and the location has none
    ///      - service's rules: there is an area code but no country code
    ///      - the service could not translate: CZoTAPIInterface::GetLastTAPIError of \p tapi tells why
    ///      - the result does not fit, or there is no memory
    static int MakeDialableAddress(_tagAddressInformation* address, int mode, CZoTAPIInterface* tapi);
    /// The same, and tells how the text is made up. \param dialing set also on failure, to kNone
    static int ExplainDialableAddress(_tagAddressInformation* address, int mode, CZoTAPIInterface* tapi,
                                      ZoDialing& dialing);
};
