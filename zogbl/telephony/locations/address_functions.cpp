#include <zogbl/address_functions.h>

#include <common/without_throwing.h>
#include <zogbl/location_item.h>
#include <zogbl/tapi_interface.h>

#include "ground/bounded_text.h"
#include "telephony/lines/tapi_records.h"

#include <afx.h>

#include <algorithm>

namespace {

constexpr DWORD kNoDevice = 0xFFFFFFFF;

bool IsDigit(char character) { return character >= '0' && character <= '9'; }
bool IsBlank(char character) { return character == ' ' || character == '\t'; }

/// Goes through a text by whole characters: the second byte of one may look like any of those that are looked for.
/// \param keep is asked for each character of one byte, given the text so far.
template <class KEEP> CString Filtered(const CString& text, KEEP keep)
{
    CString result;
    for (int i = 0; i < text.GetLength(); ++i) {
        const char character = text[i];
        if (CharacterWidth((LPCSTR)text + i) == 2) {
            result += character;
            result += text[++i];
        } else if (keep(character, result)) {
            result += character;
        }
    }
    return result;
}

CString Without(const CString& text, char removed)
{
    return Filtered(text, [removed](char character, const CString&) { return character != removed; });
}

/// A number as it is dialed: without blanks, with hyphens between digits only.
CString Normalized(const CString& text)
{
    char previous = '\0';
    CString number = Filtered(text, [&previous](char character, const CString&) {
        if (IsBlank(character) || (character == '-' && previous == '-'))
            return false;
        previous = character;
        return true;
    });
    for (const char leading : {'=', '-'}) {
        if (!number.IsEmpty() && number[0] == leading)
            number.Delete(0);
    }
    if (number.ReverseFind('-') == number.GetLength() - 1)
        number.Truncate(number.GetLength() - 1);
    return Filtered(number, [](char character, const CString& before) {
        return character != '-' || (!before.IsEmpty() && IsDigit(before[before.GetLength() - 1]));
    });
}

/// The digits of a code, which is what codes are compared by: parentheses and the like are a matter of writing.
CString Digits(const CString& text)
{
    return Filtered(text, [](char character, const CString&) { return IsDigit(character); });
}

struct Codes {
    CString country; // digits
    CString area;    // as written; parentheses are nothing to a modem
    CString areaDigits;
};

/// \param countryText "1+242" is the area 242 of country 1
Codes ReadCodes(LPCSTR countryText, LPCSTR areaText)
{
    CString country = countryText;
    CString area = areaText;
    country.TrimLeft();
    const int plus = country.Find('+', 1);
    if (plus > 0) {
        area = country.Mid(plus + 1) + area;
        country = country.Left(plus);
    }
    area = Normalized(Without(area, '+'));
    return {Digits(country), area, Digits(area)};
}

/// Whom to call.
struct Target {
    Codes codes;
    CString number;
    bool hasHiddenArea = false; // the number begins with an area code, and it is not known where that ends
};

/// How many digits the country code has that a full number begins with.
int CountryCodeLength(const CString& digits)
{
    constexpr const char* kTwoDigits[] = {"20", "27", "30", "31", "32", "33", "34", "36", "39", "40", "41",
                                          "43", "44", "45", "46", "47", "48", "49", "51", "52", "53", "54",
                                          "55", "56", "57", "58", "60", "61", "62", "63", "64", "65", "66",
                                          "81", "82", "84", "86", "90", "91", "92", "93", "94", "95", "98"};
    const CString first = digits.Left(2);
    if (first.Left(1) == "1" || first.Left(1) == "7")
        return 1;
    return std::any_of(std::begin(kTwoDigits), std::end(kTwoDigits), [&](const char* code) { return first == code; })
               ? 2
               : 3;
}

/// Takes digits off the beginning of a text, with whatever stands before and among them and what sets them apart.
CString TakeDigits(CString& text, int count)
{
    CString digits;
    int end = 0;
    for (; end < text.GetLength() && digits.GetLength() < count; ++end) {
        if (IsDigit(text[end]))
            digits += text[end];
    }
    while (end < text.GetLength() && (text[end] == '-' || text[end] == ')'))
        ++end;
    text = text.Mid(end);
    return digits;
}

/// A full number, "+1 (425) 555-0100", in the country and area that it names itself.
Target ReadFullNumber(CString text)
{
    constexpr int kNorthAmericanArea = 3;   // digits
    constexpr int kNorthAmericanNumber = 7; // at least
    Target target;
    target.codes.country = TakeDigits(text, CountryCodeLength(Digits(text)));
    if (target.codes.country != "39") // in Italy the zero belongs to the number
        text.Replace("(0)", "");      // elsewhere it is the prefix, which is not dialed from abroad
    const int close = text.Find(')');
    if (text.Left(1) == "(" && close > 0) {
        target.codes.areaDigits = Digits(text.Left(close));
        text = text.Mid(close + 1);
    } else if (target.codes.country == "1" && Digits(text).GetLength() >= kNorthAmericanArea + kNorthAmericanNumber) {
        target.codes.areaDigits = TakeDigits(text, kNorthAmericanArea);
    } else {
        target.hasHiddenArea = true;
    }
    target.codes.area = target.codes.areaDigits;
    target.number = Normalized(Without(Without(text, '('), ')'));
    if (Digits(target.number).IsEmpty())
        target.number.Empty(); // codes alone reach nobody
    return target;
}

Target ReadTarget(const _tagAddressInformation& address)
{
    const CString number = Normalized(address.m_szNumber);
    if (number.Left(1) == "+" || number.Left(2) == "(+")
        return ReadFullNumber(number);
    return {ReadCodes(address.m_szCountryCode, address.m_szAreaCode), number};
}

/// Texts that are empty are no pieces.
void Add(ZoDialing& dialing, ZoDialedPart part, const CString& text)
{
    if (!text.IsEmpty())
        dialing.pieces[dialing.count++] = {part, text};
}

/// By the location's rules. No piece if they do not tell how.
void Compose(const _tagAddressInformation& address, Target there, int mode, ZoDialing& dialing)
{
    const Codes here = ReadCodes(address.m_szLocationCountryCode, address.m_szLocationAreaCode);
    if (!there.codes.country.IsEmpty() && here.country.IsEmpty())
        return; // home or abroad?
    const bool abroad = !there.codes.country.IsEmpty() && there.codes.country != here.country;
    if (there.hasHiddenArea && !abroad && !here.areaDigits.IsEmpty() &&
        Digits(there.number).Left(here.areaDigits.GetLength()) == here.areaDigits) {
        there.codes.area = there.codes.areaDigits = TakeDigits(there.number, here.areaDigits.GetLength());
        there.number = Normalized(there.number);
        there.hasHiddenArea = false;
    }
    const bool noArea = there.codes.areaDigits.IsEmpty();
    const bool sameArea = noArea || there.codes.areaDigits == here.areaDigits;
    const bool local = !abroad && !there.hasHiddenArea &&
                       (mode == ZO_DIAL_LOCAL || (sameArea && (mode != ZO_DIAL_LONG_DISTANCE || noArea)));

    dialing.kind = local ? ZoCallKind::kLocal : abroad ? ZoCallKind::kInternational : ZoCallKind::kLongDistance;
    if (local)
        Add(dialing, ZoDialedPart::kLocalPrefix, address.m_szLocalPrefix);
    else
        Add(dialing, ZoDialedPart::kLongDistanceAccess, address.m_szLongDistanceAccess);
    Add(dialing, ZoDialedPart::kDisableCallWaiting, address.m_szDisableCallWaiting);
    Add(dialing, ZoDialedPart::kBlockCallerID, address.m_szBlockCallerID);
    if (abroad) {
        Add(dialing, ZoDialedPart::kInternationalAccess, address.m_szInternationalAccess);
        Add(dialing, ZoDialedPart::kCountryCode, there.codes.country);
    } else if (!local) {
        Add(dialing, ZoDialedPart::kLongDistancePrefix, address.m_szLongDistancePrefix);
    }
    if (!local)
        Add(dialing, ZoDialedPart::kAreaCode, there.codes.area);
    Add(dialing, ZoDialedPart::kNumber, there.number);
    Add(dialing, ZoDialedPart::kDialSuffix, address.m_szDialSuffix);
}

/// By the telephony service's rules. \return an empty text on failure.
CString Translate(const _tagAddressInformation& address, const Target& there, int mode, CZoTAPIInterface& tapi)
{
    const CString& area = there.codes.areaDigits;
    const CString country =
        there.codes.country.IsEmpty() ? ReadCodes(address.m_szLocationCountryCode, "").country : there.codes.country;
    CString canonical;
    if (!country.IsEmpty())
        canonical = "+" + country + (area.IsEmpty() ? CString(" ") : " (" + area + ") ");
    else if (!area.IsEmpty())
        return CString(); // there is no form for a number with an area code alone
    canonical += country.IsEmpty() ? there.number : Without(Without(there.number, '('), ')');
    DWORD options = 0;
    if (mode == ZO_DIAL_LONG_DISTANCE || there.hasHiddenArea)
        options = LINETRANSLATEOPTION_FORCELD;
    else if (mode == ZO_DIAL_LOCAL)
        options = LINETRANSLATEOPTION_FORCELOCAL;
    const LocalPointer<LINETRANSLATEOUTPUT> output(tapi.TranslateCanonicalToDialable(
        nullptr, tapi.m_dwDeviceID != kNoDevice ? tapi.m_dwDeviceID : 0, options, canonical));
    if (output == nullptr)
        return CString();
    const RecordPart part =
        GetRecordPart(*output, sizeof *output, output->dwDialableStringSize, output->dwDialableStringOffset);
    return Without(Without(CString(part.bytes, static_cast<int>(part.TextLength())), 'T'), 'P');
}

CString Translate(const _tagAddressInformation& address, const Target& there, int mode)
{
    CZoTAPIInterface silent(nullptr, nullptr, LINEMEDIAMODE_DATAMODEM, TRUE);
    return Translate(address, there, mode, silent);
}

} // namespace

void CZoGlobalAddressFunctions::SetLocation(_tagAddressInformation& address, const CZoLocationItem& location)
{
    const struct {
        char* text;
        const CString& source;
    } kFields[] = {
        {address.m_szLocationCountryCode, location.m_csCountryCode},
        {address.m_szLocationAreaCode, location.m_csAreaCityCode},
        {address.m_szInternationalAccess, location.m_csInternationalAccess},
        {address.m_szLongDistancePrefix, location.m_csLongDistancePrefix},
        {address.m_szLongDistanceAccess, location.m_csLongDistanceAccess},
        {address.m_szLocalPrefix, location.m_csLocalPrefix},
        {address.m_szDialSuffix, location.m_csDialSuffix},
        {address.m_szBlockCallerID, location.m_csBlockCallerID},
        {address.m_szDisableCallWaiting, location.m_csDisableCallWaiting},
    };
    for (const auto& field : kFields)
        CopyBounded(field.text, ZO_ADDRESS_TEXT_SIZE, field.source);
    address.m_bTAPIDialing = location.m_bTAPIDialing;
}

int CZoGlobalAddressFunctions::MakeDialableAddress(_tagAddressInformation* address, int mode, CZoTAPIInterface* tapi)
{
    ZoDialing dialing;
    return ExplainDialableAddress(address, mode, tapi, dialing);
}

int CZoGlobalAddressFunctions::ExplainDialableAddress(_tagAddressInformation* address, int mode, CZoTAPIInterface* tapi,
                                                      ZoDialing& dialing)
{
    dialing = {};
    if (address == nullptr)
        return 0;
    address->m_szDialable[0] = '\0';
    if (mode != ZO_DIAL_AUTOMATIC && mode != ZO_DIAL_LOCAL && mode != ZO_DIAL_LONG_DISTANCE)
        return 0;
    const int isMade = ResultOr<CMemoryException>(0, [&] {
        const Target there = ReadTarget(*address);
        if (there.number.IsEmpty())
            return 0;
        if (address->m_bTAPIDialing) {
            dialing.kind = ZoCallKind::kTranslated;
            Add(dialing, ZoDialedPart::kTranslated,
                tapi != nullptr ? Translate(*address, there, mode, *tapi) : Translate(*address, there, mode));
        } else {
            Compose(*address, there, mode, dialing);
        }
        CString dialable;
        for (int i = 0; i < dialing.count; ++i)
            dialable += dialing.pieces[i].text;
        const auto size = static_cast<size_t>(dialable.GetLength()) + 1;
        if (dialable.IsEmpty() || size > sizeof address->m_szDialable)
            return 0;
        std::memcpy(address->m_szDialable, static_cast<LPCSTR>(dialable), size);
        return 1;
    });
    if (isMade == 0)
        dialing = {};
    return isMade;
}
