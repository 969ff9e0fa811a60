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

const std::string kDialable = "0123456789ABCDPTWabcdptw*#!,@$";

/// What a modem can be given to dial.
std::string Dialable(const std::string& text)
{
    std::string dialable;
    for (const char character : text) {
        if (kDialable.find(character) != std::string::npos)
            dialable += character;
    }
    return dialable;
}

struct Parts {
    std::string country, area, subscriber;
};

/// "+country (area) number" with exactly these blanks; area and its parentheses may be missing.
std::optional<Parts> ReadCanonical(const std::string& address)
{
    const size_t blank = address.find(' ');
    if (blank == std::string::npos)
        return std::nullopt;
    Parts parts{address.substr(1, blank - 1), "", address.substr(blank + 1)};
    if (parts.subscriber[0] == '(') {
        const size_t close = parts.subscriber.find(") ");
        if (close == std::string::npos)
            return std::nullopt;
        parts.area = parts.subscriber.substr(1, close - 1);
        parts.subscriber = parts.subscriber.substr(close + 2);
    }
    const bool good = !parts.country.empty() && parts.country.size() <= 4 && Digits(parts.country) == parts.country &&
                      Digits(parts.area) == parts.area && !Digits(parts.subscriber).empty() &&
                      parts.subscriber.find_first_not_of(kDialable + " -.") == std::string::npos;
    return good ? std::optional(parts) : std::nullopt;
}

} // namespace

bool IsDialable(const std::string& number)
{
    return number.find_first_not_of(kDialable + " ()-.") == std::string::npos;
}

std::optional<Translation> Translate(const Location& location, const std::string& address, DWORD options)
{
    Translation translation;
    std::string start = location.tone ? "T" : "P";
    if ((options & LINETRANSLATEOPTION_CANCELCALLWAITING) != 0)
        start += location.cancelCallWaiting;
    start += location.outsidePrefix;

    // Behind these the address goes on with a subaddress, a name, or a second line.
    const std::string number = address.substr(0, address.find_first_of("|^\r"));
    if (number[0] != '+') {
        if (Digits(number).empty() || !IsDialable(number))
            return std::nullopt;
        translation.dialable = start + Dialable(number);
        translation.displayable = number;
        return translation;
    }
    const std::optional<Parts> parts = ReadCanonical(number);
    if (!parts)
        return std::nullopt;
    const auto& [country, area, subscriber] = *parts;
    const std::string rest = Dialable(subscriber);

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
