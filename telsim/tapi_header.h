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

// Fixed parts of the records. The header's structures go on with the fields of later versions.
/// Version 1.4 has added one field to either.
constexpr DWORD DevCapsSize(DWORD version)
{
    return offsetof(LINEDEVCAPS, dwLineFeatures) + (version >= 0x00010004 ? sizeof(DWORD) : 0);
}
constexpr DWORD AddressCapsSize(DWORD version)
{
    return offsetof(LINEADDRESSCAPS, dwAddressFeatures) + (version >= 0x00010004 ? sizeof(DWORD) : 0);
}
constexpr DWORD kAddressStatusSize = sizeof(LINEADDRESSSTATUS);
constexpr DWORD kCallParamsSize = offsetof(LINECALLPARAMS, dwDevSpecificOffset) + sizeof(DWORD);
constexpr DWORD kCallStatusSize = offsetof(LINECALLSTATUS, dwDevSpecificOffset) + sizeof(DWORD);
constexpr DWORD kCallInfoSize = offsetof(LINECALLINFO, dwDevSpecificOffset) + sizeof(DWORD);
constexpr DWORD kTranslateOutputSize = sizeof(LINETRANSLATEOUTPUT);
constexpr DWORD kVarStringSize = sizeof(VARSTRING);

static_assert(DevCapsSize(0x00010003) == 236 && DevCapsSize(kHighestVersion) == 240 &&
              AddressCapsSize(0x00010003) == 176 && AddressCapsSize(kHighestVersion) == 180 &&
              kAddressStatusSize == 64 && kCallParamsSize == 112 && kCallStatusSize == 36 && kCallInfoSize == 296 &&
              kTranslateOutputSize == 40 && kVarStringSize == 24);

} // namespace telsim
