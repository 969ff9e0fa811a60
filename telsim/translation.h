/// \file
/// From a number as people write it to one that a modem dials.
#pragma once

#include "configuration.h"

#include <optional>
#include <string>

namespace telsim {

struct Translation {
    std::string dialable;
    std::string displayable;
    DWORD destinationCountry = 0;
    DWORD results = 0; ///< LINETRANSLATERESULT_
};

/// Whether a number has nothing in it but what a modem dials, and what sets that apart: blanks, parentheses, hyphens,
/// dots.
bool IsDialable(const std::string& number);

/// \param address canonical, "+1 (425) 555-0123", or as it is to be dialed. \param options LINETRANSLATEOPTION_
/// \return nothing when it is neither: what begins with a "+" must be canonical to the blank.
std::optional<Translation> Translate(const Location& location, const std::string& address, DWORD options);

} // namespace telsim
