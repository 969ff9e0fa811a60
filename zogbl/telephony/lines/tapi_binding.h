/// \file
/// The functions of TAPI32.DLL, bound when they are first called.
///
/// The library is not linked, so that the suite runs on a machine without telephony. It is loaded by the first call of
/// any function, and never unloaded; each function is looked up by its own first call. When either is not there, that
/// call and all later ones return LINEERR_OPERATIONUNAVAIL, without another attempt.
#pragma once

#include <zogbl/tapi_interface.h>

// The header gives some functions the name of their ANSI form; version 1.x of the library has the plain names alone.
#undef lineConfigDialogEdit
#undef lineGetAddressCaps
#undef lineGetAddressStatus
#undef lineGetCallInfo
#undef lineGetDevCaps
#undef lineGetDevConfig
#undef lineGetID
#undef lineMakeCall
#undef lineOpen
#undef lineTranslateAddress
#undef lineTranslateDialog

namespace tapi {

/// Of the interface: for what concerns no device, and the lowest to negotiate.
constexpr DWORD kVersion = 0x00010000;

/// The address of a function, which stays in \p cached; null when it is not there.
FARPROC LookUp(const char* name, FARPROC& cached);

template <class FUNCTION> class EntryPoint;

/// One function, called like the function itself.
template <class... ARGUMENTS> class EntryPoint<LONG WINAPI(ARGUMENTS...)> {
public:
    explicit constexpr EntryPoint(const char* name) : m_name(name) {}

    LONG operator()(ARGUMENTS... arguments)
    {
        using Function = LONG(WINAPI*)(ARGUMENTS...);
        const auto function = reinterpret_cast<Function>(reinterpret_cast<void*>(LookUp(m_name, m_address)));
        return function != nullptr ? function(arguments...) : static_cast<LONG>(LINEERR_OPERATIONUNAVAIL);
    }

private:
    const char* m_name;
    FARPROC m_address = nullptr; // LookUp's
};

extern EntryPoint<decltype(::lineClose)> lineClose;
extern EntryPoint<decltype(::lineConfigDialogEdit)> lineConfigDialogEdit;
extern EntryPoint<decltype(::lineDeallocateCall)> lineDeallocateCall;
extern EntryPoint<decltype(::lineDrop)> lineDrop;
extern EntryPoint<decltype(::lineGetAddressCaps)> lineGetAddressCaps;
extern EntryPoint<decltype(::lineGetAddressStatus)> lineGetAddressStatus;
extern EntryPoint<decltype(::lineGetCallInfo)> lineGetCallInfo;
extern EntryPoint<decltype(::lineGetCallStatus)> lineGetCallStatus;
extern EntryPoint<decltype(::lineGetDevCaps)> lineGetDevCaps;
extern EntryPoint<decltype(::lineGetDevConfig)> lineGetDevConfig;
extern EntryPoint<decltype(::lineGetID)> lineGetID;
extern EntryPoint<decltype(::lineInitialize)> lineInitialize;
extern EntryPoint<decltype(::lineMakeCall)> lineMakeCall;
extern EntryPoint<decltype(::lineNegotiateAPIVersion)> lineNegotiateAPIVersion;
extern EntryPoint<decltype(::lineOpen)> lineOpen;
extern EntryPoint<decltype(::lineSetStatusMessages)> lineSetStatusMessages;
extern EntryPoint<decltype(::lineShutdown)> lineShutdown;
extern EntryPoint<decltype(::lineTranslateAddress)> lineTranslateAddress;
extern EntryPoint<decltype(::lineTranslateDialog)> lineTranslateDialog;

} // namespace tapi
