/// \file
/// What would be dialed from a location, in words: for samples, and for a number of the user's own.
#pragma once

#include <zogbl/address_functions.h>

class CZoLocationItem;

enum class PreviewCall { kLocal, kLongDistance, kInternational, kOwn };
constexpr int kPreviewCalls = 4;

/// A call that is tried out.
struct CallToTry {
    CString country, area, number; ///< as in _tagAddressInformation
    int mode = ZO_DIAL_AUTOMATIC;
};

/// A call as it is shown.
struct CallPreview {
    CString call;   ///< "Local: 555-0100"
    CString dialed; ///< empty: nothing would be
    CString how;    ///< why so, and each piece with its name; if nothing would be dialed, why
};

// All of these throw CMemoryException*.

/// A sample for a location; its own number, of those that it has, for kOwn.
CallToTry MakeSample(PreviewCall which, const CZoLocationItem& location);

/// By the code of MakeDialableAddress.
/// \param askService whether the telephony service is asked, if the location leaves it to the service. That takes time
/// \param showCodes false: secret codes are hidden, which are the suffix, the codes of calling cards, and what the
/// service has put around the number
CallPreview PreviewDialing(PreviewCall which, const CallToTry& call, const CZoLocationItem& location, bool askService,
                           bool showCodes);

/// Whether an access code is that of a calling card, which nobody else is to see: it is as long as a telephone number.
bool IsCardCode(LPCSTR code);
