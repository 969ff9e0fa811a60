#include "translation.h"

#include <cctype>

namespace telsim {

namespace {

std::string Digits(const std::string& text)
{
    std::string digits;
    for (const char character : text) {
        if (std::isdigit(static_cast<unsigned char>(character)) != 0)
            digits += character;
    }
    return digits;
}

/// What a modem can be given to dial.
std::string Dialable(const std::string& text)
{
    std::string dialable;
    for (const char character : text) {
        if (std::isdigit(static_cast<unsigned char>(character)) != 0 ||
            (character != '\0' && std::string("ABCDPTWabcdptw*#!,@$").find(character) != std::string::npos))
            dialable += character;
    }
    return dialable;
}

} // namespace

std::optional<Translation> Translate(const Location& location, const std::string& address, DWORD options)
{
    Translation translation;
    std::string start = location.tone ? "T" : "P";
    if ((options & LINETRANSLATEOPTION_CANCELCALLWAITING) != 0)
        start += location.cancelCallWaiting;
    start += location.outsidePrefix;

    // Behind these the address goes on with a subaddress, a name, or a second line.
    const std::string number = address.substr(0, address.find_first_of("|^\r"));
    if (Digits(number).empty())
        return std::nullopt;
    if (number[0] != '+') {
        translation.dialable = start + Dialable(number);
        translation.displayable = number;
        return translation;
    }

    const size_t open = number.find('(');
    const size_t close = number.find(')');
    const size_t blank = number.find_first_of(" -");
    std::string country, area, rest;
    if (open != std::string::npos && close != std::string::npos && open < close) {
        country = Digits(number.substr(0, open));
        area = Digits(number.substr(open, close - open));
        rest = Digits(number.substr(close));
    } else {
        country = Digits(number.substr(0, blank));
        rest = blank == std::string::npos ? "" : Digits(number.substr(blank));
    }
    if (country.empty() || country.size() > 4 || rest.empty())
        return std::nullopt;

    translation.destinationCountry = static_cast<DWORD>(std::stoul(country));
    translation.results = LINETRANSLATERESULT_CANONICAL;
    translation.displayable = number.substr(1);
    const bool sameArea = area.empty() || area == location.areaCode;
    const bool local =
        (sameArea || (options & LINETRANSLATEOPTION_FORCELOCAL) != 0) && (options & LINETRANSLATEOPTION_FORCELD) == 0;
    if (translation.destinationCountry != location.country) {
        translation.results |= LINETRANSLATERESULT_INTERNATIONAL;
        translation.dialable = start + location.internationalPrefix + country + area + rest;
    } else if (local) {
        translation.results |= LINETRANSLATERESULT_LOCAL;
        translation.dialable = start + rest;
    } else {
        translation.results |= LINETRANSLATERESULT_LONGDISTANCE;
        translation.dialable = start + location.longDistancePrefix + area + rest;
    }
    return translation;
}

} // namespace telsim
