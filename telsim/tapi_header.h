/// \file
/// The telephony interface, version 1.4: what an application that calls lineInitialize is given.
#pragma once

#include <windows.h>

#define TAPI_CURRENT_VERSION 0x00010004
#include <tapi.h>

#include <cstddef>

// The header gives these the name of their ANSI form, whatever the version; version 1.4 has the plain names alone.
#undef lineGetAddressCaps
#undef lineGetAddressStatus
#undef lineGetCallInfo
#undef lineGetDevCaps
#undef lineOpen

namespace telsim {

constexpr DWORD kLowestVersion = 0x00010000;
constexpr DWORD kHighestVersion = TAPI_CURRENT_VERSION;

// Fixed parts of version 1.4's records. The header's structures go on with the fields of later versions.
constexpr DWORD kDevCapsSize = offsetof(LINEDEVCAPS, dwLineFeatures) + sizeof(DWORD);
constexpr DWORD kAddressCapsSize = offsetof(LINEADDRESSCAPS, dwAddressFeatures) + sizeof(DWORD);
constexpr DWORD kAddressStatusSize = sizeof(LINEADDRESSSTATUS);
constexpr DWORD kCallParamsSize = offsetof(LINECALLPARAMS, dwDevSpecificOffset) + sizeof(DWORD);
constexpr DWORD kCallStatusSize = offsetof(LINECALLSTATUS, dwDevSpecificOffset) + sizeof(DWORD);
constexpr DWORD kCallInfoSize = offsetof(LINECALLINFO, dwDevSpecificOffset) + sizeof(DWORD);
constexpr DWORD kTranslateOutputSize = sizeof(LINETRANSLATEOUTPUT);
constexpr DWORD kVarStringSize = sizeof(VARSTRING);

static_assert(kDevCapsSize == 240 && kAddressCapsSize == 180 && kAddressStatusSize == 64 && kCallParamsSize == 112 &&
              kCallStatusSize == 36 && kCallInfoSize == 296 && kTranslateOutputSize == 40 && kVarStringSize == 24);

} // namespace telsim
