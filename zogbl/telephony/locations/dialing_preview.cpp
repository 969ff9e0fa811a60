#include "dialing_preview.h"

#include <common/double_byte.h>
#include <zogbl/location_item.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/dialog_resource.h"
#include "ground/bounded_text.h"

#include <cstring>

namespace {

constexpr int kCardDigits = 8; // at least

constexpr UINT kCallNames[] = {ZO_IDS_LOC_CALL_LOCAL, ZO_IDS_LOC_CALL_LONG, ZO_IDS_LOC_CALL_INTERNATIONAL,
                               ZO_IDS_LOC_CALL_OWN};

/// In the order of ZoDialedPart.
constexpr UINT kPartNames[] = {ZO_IDS_LOC_PART_LOCAL_PREFIX, ZO_IDS_LOC_PART_LONG_ACCESS,   ZO_IDS_LOC_PART_WAITING,
                               ZO_IDS_LOC_PART_CALLER_ID,    ZO_IDS_LOC_PART_INTERNATIONAL, ZO_IDS_LOC_PART_COUNTRY,
                               ZO_IDS_LOC_PART_LONG_PREFIX,  ZO_IDS_LOC_PART_AREA,          ZO_IDS_LOC_PART_NUMBER,
                               ZO_IDS_LOC_PART_SUFFIX,       ZO_IDS_LOC_PART_TRANSLATED};

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

CString DigitsOf(LPCSTR text)
{
    CString digits;
    for (; *text != '\0'; text = NextCharacter(text)) {
        if (IsDigit(*text))
            digits += *text;
    }
    return digits;
}

/// Whether a text has one of these characters.
bool HasAny(const CString& text, LPCSTR characters)
{
    for (LPCSTR at = text; *at != '\0'; at = NextCharacter(at)) {
        if (CharacterWidth(at) == 1 && std::strchr(characters, *at) != nullptr)
            return true;
    }
    return false;
}

/// "Long distance: (206) 555-0100".
CString CallText(PreviewCall which, const CallToTry& call)
{
    CString text = LoadText(kCallNames[static_cast<int>(which)]);
    if (!call.country.IsEmpty() && (which == PreviewCall::kInternational || which == PreviewCall::kOwn))
        text += (call.country[0] == '+' ? " " : " +") + call.country;
    if (!call.area.IsEmpty() && which != PreviewCall::kLocal)
        text += " (" + call.area + ")";
    return text + " " + call.number;
}

/// The service's answer may hold a card's number before and behind the number that is called: of that, as much is shown
/// as stands there at its end.
CString HideAroundNumber(const CString& answer, const CallToTry& call)
{
    const CString hidden = LoadText(ZO_IDS_LOC_HIDDEN);
    const CString wanted = DigitsOf(call.country + call.area + call.number);
    for (int length = wanted.GetLength(); length > 0; --length) {
        const CString number = wanted.Right(length);
        const int at = answer.Find(number);
        if (at < 0)
            continue;
        const int end = at + length;
        return (at > 0 ? hidden : CString()) + number + (end < answer.GetLength() ? hidden : CString());
    }
    return hidden;
}

/// A piece's text as it may be seen.
CString ShownText(const ZoDialing::Piece& piece, const CallToTry& call, bool showCodes)
{
    if (showCodes)
        return piece.text;
    switch (piece.part) {
    case ZoDialedPart::kTranslated:
        return HideAroundNumber(piece.text, call);
    case ZoDialedPart::kDialSuffix:
        return LoadText(ZO_IDS_LOC_HIDDEN);
    case ZoDialedPart::kLocalPrefix:
    case ZoDialedPart::kLongDistanceAccess:
        return IsCardCode(piece.text) ? LoadText(ZO_IDS_LOC_HIDDEN) : piece.text;
    default:
        return piece.text;
    }
}

/// "9, (outside line, pause)".
CString DescribePiece(const ZoDialing::Piece& piece, const CString& shown)
{
    CString text = shown + " (" + LoadText(kPartNames[static_cast<int>(piece.part)]);
    const struct {
        LPCSTR characters;
        UINT name;
    } kMarks[] = {{",", ZO_IDS_LOC_PAUSE}, {"Ww@$", ZO_IDS_LOC_WAIT}, {"?", ZO_IDS_LOC_PROMPT}};
    for (const auto& mark : kMarks) {
        if (HasAny(piece.text, mark.characters))
            text += ", " + LoadText(mark.name);
    }
    return text + ")";
}

UINT ReasonOf(ZoCallKind kind, int mode)
{
    switch (kind) {
    case ZoCallKind::kLocal:
        return mode == ZO_DIAL_LOCAL ? ZO_IDS_LOC_WHY_LOCAL_CHOSEN : ZO_IDS_LOC_WHY_LOCAL;
    case ZoCallKind::kLongDistance:
        return mode == ZO_DIAL_LONG_DISTANCE ? ZO_IDS_LOC_WHY_LONG_CHOSEN : ZO_IDS_LOC_WHY_LONG;
    case ZoCallKind::kInternational:
        return ZO_IDS_LOC_WHY_INTERNATIONAL;
    default:
        return ZO_IDS_LOC_WHY_SERVICE;
    }
}

/// Why nothing would be dialed.
UINT ReasonOfFailure(const _tagAddressInformation& address, const CallToTry& call)
{
    const CString number = call.number.SpanIncluding(" \t-=");
    if (number.GetLength() == call.number.GetLength())
        return ZO_IDS_LOC_NO_NUMBER;
    if (address.m_bTAPIDialing)
        return ZO_IDS_LOC_REFUSED;
    const bool namesCountry = !DigitsOf(call.country).IsEmpty() || call.number.Find('+') >= 0;
    return namesCountry && DigitsOf(address.m_szLocationCountryCode).IsEmpty() ? ZO_IDS_LOC_NO_CODE
                                                                               : ZO_IDS_LOC_NOT_DIALABLE;
}

} // namespace

bool IsCardCode(LPCSTR code)
{
    int digits = 0;
    for (; *code != '\0'; code = NextCharacter(code))
        digits += IsDigit(*code);
    return digits >= kCardDigits;
}

CallToTry MakeSample(PreviewCall which, const CZoLocationItem& location)
{
    const CString country = DigitsOf(location.m_csCountryCode);
    const bool isAmerican = country.Left(1) == "1";
    switch (which) {
    case PreviewCall::kLocal:
        return {location.m_csCountryCode, location.m_csAreaCityCode, "555-0100"};
    case PreviewCall::kLongDistance: {
        const CString here = DigitsOf(location.m_csAreaCityCode), first = isAmerican ? "206" : "30";
        return {isAmerican ? CString("1") : location.m_csCountryCode,
                here != first ? first : CString(isAmerican ? "425" : "89"), "555-0100"};
    }
    case PreviewCall::kInternational: // numbers that nobody has
        return country == "44" ? CallToTry{"1", "206", "555-0100"} : CallToTry{"44", "20", "7946 0018"};
    default:
        for (INT_PTR kind = 0; kind < location.m_csaPhoneNumbers.GetSize(); ++kind) {
            if (!location.m_csaPhoneNumbers[kind].IsEmpty())
                return {"", kind < location.m_csaPhoneAreas.GetSize() ? location.m_csaPhoneAreas[kind] : CString(),
                        location.m_csaPhoneNumbers[kind]};
        }
        return {};
    }
}

CallPreview PreviewDialing(PreviewCall which, const CallToTry& call, const CZoLocationItem& location, bool askService,
                           bool showCodes)
{
    CallPreview preview;
    preview.call = CallText(which, call);
    if (location.m_bTAPIDialing && !askService) {
        preview.how = LoadText(ZO_IDS_LOC_ASK_FIRST);
        return preview;
    }
    _tagAddressInformation address = {};
    CZoGlobalAddressFunctions::SetLocation(address, location);
    CopyBounded(address.m_szCountryCode, sizeof address.m_szCountryCode, call.country);
    CopyBounded(address.m_szAreaCode, sizeof address.m_szAreaCode, call.area);
    CopyBounded(address.m_szNumber, sizeof address.m_szNumber, call.number);
    ZoDialing dialing;
    if (CZoGlobalAddressFunctions::ExplainDialableAddress(&address, call.mode, nullptr, dialing) == 0) {
        preview.how = LoadText(ReasonOfFailure(address, call));
        return preview;
    }
    preview.how = LoadText(ReasonOf(dialing.kind, call.mode));
    for (int i = 0; i < dialing.count; ++i) {
        const CString shown = ShownText(dialing.pieces[i], call, showCodes);
        preview.dialed += shown;
        preview.how += (i > 0 ? " + " : " ") + DescribePiece(dialing.pieces[i], shown);
    }
    return preview;
}
