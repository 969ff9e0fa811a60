#include "tapi_binding.h"

namespace tapi {

namespace {

HMODULE g_module = nullptr; // null: not tried yet

/// Stands in the place of a module or function that was not found.
template <class HANDLE_TYPE> HANDLE_TYPE Missing() { return reinterpret_cast<HANDLE_TYPE>(static_cast<INT_PTR>(-1)); }

} // namespace

FARPROC LookUp(const char* name, FARPROC& cached)
{
    if (g_module == nullptr) {
        g_module = LoadLibraryA("TAPI32.DLL");
        if (g_module == nullptr)
            g_module = Missing<HMODULE>();
    }
    if (cached == nullptr) {
        if (g_module != Missing<HMODULE>())
            cached = GetProcAddress(g_module, name);
        if (cached == nullptr)
            cached = Missing<FARPROC>();
    }
    return cached != Missing<FARPROC>() ? cached : nullptr;
}

constinit EntryPoint<decltype(::lineClose)> lineClose("lineClose");
constinit EntryPoint<decltype(::lineConfigDialogEdit)> lineConfigDialogEdit("lineConfigDialogEdit");
constinit EntryPoint<decltype(::lineDeallocateCall)> lineDeallocateCall("lineDeallocateCall");
constinit EntryPoint<decltype(::lineDrop)> lineDrop("lineDrop");
constinit EntryPoint<decltype(::lineGetAddressCaps)> lineGetAddressCaps("lineGetAddressCaps");
constinit EntryPoint<decltype(::lineGetAddressStatus)> lineGetAddressStatus("lineGetAddressStatus");
constinit EntryPoint<decltype(::lineGetCallInfo)> lineGetCallInfo("lineGetCallInfo");
constinit EntryPoint<decltype(::lineGetCallStatus)> lineGetCallStatus("lineGetCallStatus");
constinit EntryPoint<decltype(::lineGetDevCaps)> lineGetDevCaps("lineGetDevCaps");
constinit EntryPoint<decltype(::lineGetDevConfig)> lineGetDevConfig("lineGetDevConfig");
constinit EntryPoint<decltype(::lineGetID)> lineGetID("lineGetID");
constinit EntryPoint<decltype(::lineInitialize)> lineInitialize("lineInitialize");
constinit EntryPoint<decltype(::lineMakeCall)> lineMakeCall("lineMakeCall");
constinit EntryPoint<decltype(::lineNegotiateAPIVersion)> lineNegotiateAPIVersion("lineNegotiateAPIVersion");
constinit EntryPoint<decltype(::lineOpen)> lineOpen("lineOpen");
constinit EntryPoint<decltype(::lineSetStatusMessages)> lineSetStatusMessages("lineSetStatusMessages");
constinit EntryPoint<decltype(::lineShutdown)> lineShutdown("lineShutdown");
constinit EntryPoint<decltype(::lineTranslateAddress)> lineTranslateAddress("lineTranslateAddress");
constinit EntryPoint<decltype(::lineTranslateDialog)> lineTranslateDialog("lineTranslateDialog");

} // namespace tapi
