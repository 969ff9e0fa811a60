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

/// \param address canonical, "+1 (425) 555-0123", or as it is to be dialed. \param options LINETRANSLATEOPTION_
/// \return nothing when there is no number in it.
std::optional<Translation> Translate(const Location& location, const std::string& address, DWORD options);

} // namespace telsim
