#include <zogbl/address_functions.h>

#include <zogbl/location_item.h>
#include <zogbl/tapi_interface.h>

#include "../files/bounded_text.h"
#include "tapi_records.h"

#include <afx.h>

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
            number = number.Mid(1);
    }
    if (number.ReverseFind('-') == number.GetLength() - 1)
        number = number.Left(number.GetLength() - 1);
    return Filtered(number, [](char character, const CString& before) {
        return character != '-' || (!before.IsEmpty() && IsDigit(before[before.GetLength() - 1]));
    });
}

struct Codes {
    CString country;
    CString area;
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
    return {Normalized(Without(country, '+')), Normalized(Without(area, '+'))};
}

/// By the location's rules.
CString Compose(const _tagAddressInformation& address, const Codes& there, const CString& number, int mode)
{
    const Codes here = ReadCodes(address.m_szLocationCountryCode, address.m_szLocationAreaCode);
    const bool abroad = !there.country.IsEmpty() && there.country != here.country;
    const bool sameArea = there.area.IsEmpty() || there.area == here.area;
    const bool local =
        !abroad && (mode == ZO_DIAL_LOCAL || (sameArea && (mode != ZO_DIAL_LONG_DISTANCE || there.area.IsEmpty())));

    CString dialable = local ? address.m_szLocalPrefix : address.m_szLongDistanceAccess;
    dialable += address.m_szDisableCallWaiting;
    dialable += address.m_szBlockCallerID;
    if (abroad)
        dialable += address.m_szInternationalAccess + there.country + there.area;
    else if (!local)
        dialable += address.m_szLongDistancePrefix + there.area;
    return dialable + number + address.m_szDialSuffix;
}

/// By the telephony service's rules. \return an empty text on failure.
CString Translate(const _tagAddressInformation& address, const Codes& there, const CString& number, int mode,
                  CZoTAPIInterface& tapi)
{
    const CString country =
        there.country.IsEmpty() ? ReadCodes(address.m_szLocationCountryCode, "").country : there.country;
    CString canonical;
    if (!country.IsEmpty())
        canonical = "+" + country + (there.area.IsEmpty() ? CString(" ") : " (" + there.area + ") ");
    canonical += number;
    DWORD options = 0;
    if (mode == ZO_DIAL_LOCAL)
        options = LINETRANSLATEOPTION_FORCELOCAL;
    else if (mode == ZO_DIAL_LONG_DISTANCE)
        options = LINETRANSLATEOPTION_FORCELD;
    const LocalPointer<LINETRANSLATEOUTPUT> output(tapi.TranslateCanonicalToDialable(
        nullptr, tapi.m_dwDeviceID != kNoDevice ? tapi.m_dwDeviceID : 0, options, canonical));
    if (output == nullptr)
        return CString();
    const RecordPart part =
        GetRecordPart(*output, sizeof *output, output->dwDialableStringSize, output->dwDialableStringOffset);
    return Without(Without(CString(part.bytes, static_cast<int>(part.TextLength())), 'T'), 'P');
}

CString Translate(const _tagAddressInformation& address, const Codes& there, const CString& number, int mode)
{
    CZoTAPIInterface silent(nullptr, nullptr, LINEMEDIAMODE_DATAMODEM, TRUE);
    return Translate(address, there, number, mode, silent);
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
    if (address == nullptr)
        return 0;
    address->m_szDialable[0] = '\0';
    if (mode != ZO_DIAL_AUTOMATIC && mode != ZO_DIAL_LOCAL && mode != ZO_DIAL_LONG_DISTANCE)
        return 0;
    try {
        const Codes there = ReadCodes(address->m_szCountryCode, address->m_szAreaCode);
        const CString number = Normalized(address->m_szNumber);
        if (number.IsEmpty())
            return 0;
        CString dialable;
        if (!address->m_bTAPIDialing)
            dialable = Compose(*address, there, number, mode);
        else if (tapi != nullptr)
            dialable = Translate(*address, there, number, mode, *tapi);
        else
            dialable = Translate(*address, there, number, mode);
        const auto size = static_cast<size_t>(dialable.GetLength()) + 1;
        if (dialable.IsEmpty() || size > sizeof address->m_szDialable)
            return 0;
        std::memcpy(address->m_szDialable, static_cast<LPCSTR>(dialable), size);
        return 1;
    } catch (CMemoryException* e) {
        e->Delete();
        return 0;
    }
}
