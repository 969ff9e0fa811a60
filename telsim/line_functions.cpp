// The line functions that the library exports. Each lists its call, checks what it was handed, and goes on in the
// service.
#include "invocation.h"
#include "translation.h"

#include <cstring>

using telsim::CallHandle;
using telsim::Format;
using telsim::Invocation;
using telsim::Invoke;
using telsim::Line;
using telsim::LineConfiguration;
using telsim::Quoted;
using telsim::Record;
using telsim::Refusal;
using telsim::TheService;

namespace {

constexpr DWORD kAllLineStates = 0x01FFFFFF;    // LINEDEVSTATE_OTHER to LINEDEVSTATE_REMOVED
constexpr DWORD kAllAddressStates = 0x000001FF; // LINEADDRESSSTATE_OTHER to LINEADDRESSSTATE_CAPSCHANGE
constexpr DWORD kAllCallParamFlags = 0x0000003F;
constexpr DWORD kAllTranslateOptions = 0x0000000F;
constexpr DWORD kAllMediaModes = (LAST_LINEMEDIAMODE << 1) - LINEMEDIAMODE_UNKNOWN;
constexpr DWORD kCommonCallStates = LINECALLSTATE_IDLE | LINECALLSTATE_OFFERING | LINECALLSTATE_DIALTONE |
                                    LINECALLSTATE_DIALING | LINECALLSTATE_RINGBACK | LINECALLSTATE_BUSY |
                                    LINECALLSTATE_CONNECTED | LINECALLSTATE_PROCEEDING | LINECALLSTATE_DISCONNECTED |
                                    LINECALLSTATE_UNKNOWN;

bool IsOneBit(DWORD bits) { return bits != 0 && (bits & (bits - 1)) == 0; }

bool IsOneOf(const char* text, std::initializer_list<const char*> words)
{
    for (const char* word : words) {
        if (lstrcmpiA(text, word) == 0)
            return true;
    }
    return false;
}

/// A part that lies within the record behind its fixed part; one of size 0 may have any offset.
void RequirePart(Invocation& call, DWORD size, DWORD offset, DWORD total, const char* what)
{
    call.Require(size == 0 || (offset >= telsim::kCallParamsSize && offset <= total && size <= total - offset),
                 LINEERR_INVALCALLPARAMS,
                 Format("the %s, %lu bytes at %lu, is outside the parameters", what, size, offset));
}

/// Checks call parameters, and takes over what they say of the call.
void ReadCallParams(Invocation& call, const LineConfiguration& device, const LINECALLPARAMS* params,
                    telsim::Call& wanted)
{
    call.RequireReadable(params, sizeof params->dwTotalSize, "the call parameters");
    const DWORD total = params->dwTotalSize;
    call.Require(total >= telsim::kCallParamsSize, LINEERR_STRUCTURETOOSMALL,
                 Format("dwTotalSize is %lu, the fixed part alone has %lu bytes", total, telsim::kCallParamsSize));
    call.RequireReadable(params, total, "the call parameters");
    call.Require(IsOneBit(params->dwBearerMode), LINEERR_INVALBEARERMODE,
                 Format("bearer mode %#lx is none", params->dwBearerMode));
    call.Require((params->dwBearerMode & device.bearerModes) != 0, LINEERR_BEARERMODEUNAVAIL,
                 Format("the line has no bearer mode %#lx", params->dwBearerMode));
    call.Require(params->dwMediaMode != 0 && (params->dwMediaMode & ~device.mediaModes) == 0, LINEERR_INVALMEDIAMODE,
                 Format("the line has no media mode %#lx", params->dwMediaMode));
    call.Require((params->dwCallParamFlags & ~kAllCallParamFlags) == 0, LINEERR_INVALCALLPARAMS,
                 Format("unknown flags in %#lx", params->dwCallParamFlags));
    call.Require(params->dwMinRate <= params->dwMaxRate, LINEERR_INVALRATE, "the lowest rate is above the highest");
    call.Require(params->dwAddressMode == LINEADDRESSMODE_ADDRESSID, LINEERR_INVALADDRESSMODE,
                 Format("address mode %#lx", params->dwAddressMode));
    call.Require(params->dwAddressID == 0, LINEERR_INVALADDRESSID,
                 Format("there is no address %lu", params->dwAddressID));

    const struct {
        DWORD size;
        DWORD offset;
        const char* what;
    } parts[] = {
        {params->dwOrigAddressSize, params->dwOrigAddressOffset, "originating address"},
        {params->dwDisplayableAddressSize, params->dwDisplayableAddressOffset, "displayable address"},
        {params->dwCalledPartySize, params->dwCalledPartyOffset, "called party"},
        {params->dwCommentSize, params->dwCommentOffset, "comment"},
        {params->dwUserUserInfoSize, params->dwUserUserInfoOffset, "user information"},
        {params->dwHighLevelCompSize, params->dwHighLevelCompOffset, "high-level compatibility"},
        {params->dwLowLevelCompSize, params->dwLowLevelCompOffset, "low-level compatibility"},
        {params->dwDevSpecificSize, params->dwDevSpecificOffset, "device-specific part"},
    };
    for (const auto& part : parts)
        RequirePart(call, part.size, part.offset, total, part.what);

    wanted.bearerMode = params->dwBearerMode;
    wanted.mediaMode = params->dwMediaMode;
    wanted.paramFlags = params->dwCallParamFlags;
    const char* displayable = reinterpret_cast<const char*>(params) + params->dwDisplayableAddressOffset;
    if (params->dwDisplayableAddressSize != 0)
        wanted.displayable.assign(displayable, strnlen(displayable, params->dwDisplayableAddressSize));
}

/// Shown in place of a dialog, if somebody is there to see it.
void ShowDialog(HWND owner, const char* text)
{
    if (TheService().configuration.showDialogs)
        MessageBoxA(owner, text, "Simulated telephony", MB_OK);
}

void RequireOwnerWindow(Invocation& call, HWND owner)
{
    call.Require(owner == nullptr || IsWindow(owner), LINEERR_INVALPARAM, "the owner is no window");
}

} // namespace

// Applications

LONG WINAPI lineInitialize(LPHLINEAPP place, HINSTANCE instance, LINECALLBACK callback, LPCSTR name,
                           LPDWORD deviceCount)
{
    return Invoke("lineInitialize", [&](Invocation& call) {
        call.Begin(Format("instance=%p, name=%s", static_cast<void*>(instance), Quoted(name).c_str()));
        call.RequireWritable(place, sizeof *place, "the place for the handle");
        call.RequireWritable(deviceCount, sizeof *deviceCount, "the place for the number of devices");
        call.Require(callback != nullptr && !IsBadCodePtr(reinterpret_cast<FARPROC>(reinterpret_cast<void*>(callback))),
                     LINEERR_INVALPOINTER, "the callback is no function");
        char path[MAX_PATH] = "";
        call.Require(GetModuleFileNameA(instance, path, sizeof path) != 0, LINEERR_INVALPARAM,
                     "the instance is no module");
        if (name != nullptr)
            call.RequireText(name, "the application's name");
        return call.Perform([&] {
            auto events = std::make_unique<telsim::EventQueue>();
            if (!events->IsOpen())
                return static_cast<LONG>(LINEERR_RESOURCEUNAVAIL);
            *deviceCount = static_cast<DWORD>(TheService().configuration.lines.size());
            *place = TheService().apps.Add(telsim::App{callback, std::move(events), {}});
            return 0L;
        });
    });
}

LONG WINAPI lineShutdown(HLINEAPP app)
{
    return Invoke("lineShutdown", [&](Invocation& call) {
        call.Begin(Format("app=%#lx", app));
        call.RequireApp(app);
        return call.Perform([&] {
            TheService().RemoveApp(app);
            return 0L;
        });
    });
}

// Devices

LONG WINAPI lineNegotiateAPIVersion(HLINEAPP app, DWORD device, DWORD low, DWORD high, LPDWORD version,
                                    LPLINEEXTENSIONID extension)
{
    return Invoke("lineNegotiateAPIVersion", [&](Invocation& call) {
        call.Begin(Format("app=%#lx, device=%lu, low=%#lx, high=%#lx", app, device, low, high));
        call.RequireApp(app);
        const LineConfiguration& line = call.RequireDevice(device);
        call.RequireWritable(version, sizeof *version, "the place for the version");
        call.RequireWritable(extension, sizeof *extension, "the place for the extension");
        call.Require(low <= high, LINEERR_INCOMPATIBLEAPIVERSION, "the lowest version is above the highest");
        return call.Perform([&] {
            if (high < line.lowVersion || low > line.highVersion)
                return static_cast<LONG>(LINEERR_INCOMPATIBLEAPIVERSION);
            *version = high < line.highVersion ? high : line.highVersion;
            *extension = LINEEXTENSIONID{};
            call.RequireApp(app).versions[device] = *version;
            return 0L;
        });
    });
}

LONG WINAPI lineGetDevCaps(HLINEAPP app, DWORD device, DWORD version, DWORD extensionVersion, LPLINEDEVCAPS caps)
{
    return Invoke("lineGetDevCaps", [&](Invocation& call) {
        call.Begin(
            Format("app=%#lx, device=%lu, version=%#lx, extension=%#lx", app, device, version, extensionVersion));
        const telsim::App& opened = call.RequireApp(app);
        const LineConfiguration& line = call.RequireDevice(device);
        call.RequireVersion(opened, device, version, extensionVersion);
        Record record(caps, telsim::DevCapsSize(version));
        auto& fixed = record.Fixed<LINEDEVCAPS>();
        fixed.dwPermanentLineID = device + 1;
        fixed.dwStringFormat = line.stringFormat;
        fixed.dwAddressModes = LINEADDRESSMODE_ADDRESSID;
        fixed.dwNumAddresses = 1;
        fixed.dwBearerModes = line.bearerModes;
        fixed.dwMaxRate = 33600;
        fixed.dwMediaModes = line.mediaModes;
        fixed.dwDevCapFlags = LINEDEVCAPFLAGS_CLOSEDROP;
        fixed.dwMaxNumActiveCalls = 1;
        fixed.dwRingModes = 1;
        fixed.dwLineStates = kAllLineStates;
        fixed.dwLineFeatures = line.lineFeatures;
        record.AppendText(offsetof(LINEDEVCAPS, dwProviderInfoSize), "Simulated telephony");
        record.AppendText(offsetof(LINEDEVCAPS, dwLineNameSize), line.name);
        // What modems have here: a number, where the text begins, and the registry key.
        const DWORD header[] = {1, 2 * sizeof(DWORD)};
        record.AppendText(offsetof(LINEDEVCAPS, dwDevSpecificSize),
                          std::string(reinterpret_cast<const char*>(header), sizeof header) + line.registryKey);
        return call.Answer(record);
    });
}

LONG WINAPI lineGetAddressCaps(HLINEAPP app, DWORD device, DWORD address, DWORD version, DWORD extensionVersion,
                               LPLINEADDRESSCAPS caps)
{
    return Invoke("lineGetAddressCaps", [&](Invocation& call) {
        call.Begin(Format("app=%#lx, device=%lu, address=%lu, version=%#lx, extension=%#lx", app, device, address,
                          version, extensionVersion));
        const telsim::App& opened = call.RequireApp(app);
        const LineConfiguration& line = call.RequireDevice(device);
        call.Require(address == 0, LINEERR_INVALADDRESSID, Format("there is no address %lu", address));
        call.RequireVersion(opened, device, version, extensionVersion);
        Record record(caps, telsim::AddressCapsSize(version));
        auto& fixed = record.Fixed<LINEADDRESSCAPS>();
        fixed.dwLineDeviceID = device;
        fixed.dwAddressSharing = LINEADDRESSSHARING_PRIVATE;
        fixed.dwAddressStates = kAllAddressStates;
        fixed.dwCallInfoStates = LINECALLINFOSTATE_CALLERID;
        fixed.dwCallerIDFlags = LINECALLPARTYID_BLOCKED | LINECALLPARTYID_OUTOFAREA | LINECALLPARTYID_NAME |
                                LINECALLPARTYID_ADDRESS | LINECALLPARTYID_PARTIAL | LINECALLPARTYID_UNKNOWN;
        fixed.dwCallStates = kCommonCallStates;
        fixed.dwDialToneModes = LINEDIALTONEMODE_NORMAL;
        fixed.dwBusyModes = LINEBUSYMODE_STATION;
        fixed.dwDisconnectModes = LINEDISCONNECTMODE_NORMAL | LINEDISCONNECTMODE_BUSY | LINEDISCONNECTMODE_NOANSWER |
                                  LINEDISCONNECTMODE_NODIALTONE;
        fixed.dwMaxNumActiveCalls = 1;
        fixed.dwCallFeatures = LINECALLFEATURE_DROP;
        fixed.dwAddressFeatures = line.addressFeatures;
        record.AppendText(offsetof(LINEADDRESSCAPS, dwAddressSize), line.number);
        return call.Answer(record);
    });
}

LONG WINAPI lineGetDevConfig(DWORD device, LPVARSTRING settings, LPCSTR deviceClass)
{
    return Invoke("lineGetDevConfig", [&](Invocation& call) {
        call.Begin(Format("device=%lu, class=%s", device, Quoted(deviceClass).c_str()));
        const LineConfiguration& line = call.RequireDevice(device);
        call.RequireText(deviceClass, "the device class");
        call.Require(IsOneOf(deviceClass, {"comm", "comm/datamodem"}), LINEERR_INVALDEVICECLASS,
                     Format("there is no configuration of class %s", deviceClass));
        Record record(settings, telsim::kVarStringSize);
        record.Fixed<VARSTRING>().dwStringFormat = STRINGFORMAT_BINARY;
        record.Append(offsetof(VARSTRING, dwStringSize), line.settings);
        return call.Answer(record);
    });
}

LONG WINAPI lineConfigDialogEdit(DWORD device, HWND owner, LPCSTR deviceClass, LPVOID const settings, DWORD size,
                                 LPVARSTRING edited)
{
    return Invoke("lineConfigDialogEdit", [&](Invocation& call) {
        call.Begin(Format("device=%lu, class=%s, size=%lu", device, Quoted(deviceClass).c_str(), size));
        const LineConfiguration& line = call.RequireDevice(device);
        RequireOwnerWindow(call, owner);
        call.RequireText(deviceClass, "the device class");
        call.Require(IsOneOf(deviceClass, {"comm", "comm/datamodem"}), LINEERR_INVALDEVICECLASS,
                     Format("there is no configuration of class %s", deviceClass));
        call.Require(settings != nullptr && size != 0, LINEERR_INVALPOINTER, "there is no configuration to edit");
        call.RequireReadable(settings, size, "the configuration");
        const std::string given(static_cast<const char*>(settings), size);
        call.Require(given.compare(0, line.settings.size(), line.settings) == 0, LINEERR_INVALPARAM,
                     "the configuration is not one of this device");
        Record record(edited, telsim::kVarStringSize);
        record.Fixed<VARSTRING>().dwStringFormat = STRINGFORMAT_BINARY;
        record.Append(offsetof(VARSTRING, dwStringSize), given + '*'); // each editing leaves its mark
        if (record.Fits(call.ActiveRule()))
            ShowDialog(owner, "Here a person would edit the configuration of the device.");
        return call.Answer(record);
    });
}

// Lines

LONG WINAPI lineOpen(HLINEAPP app, DWORD device, LPHLINE place, DWORD version, DWORD extensionVersion,
                     DWORD_PTR instance, DWORD privileges, DWORD mediaModes, LPLINECALLPARAMS const params)
{
    return Invoke("lineOpen", [&](Invocation& call) {
        call.Begin(Format("app=%#lx, device=%lu, version=%#lx, extension=%#lx, privileges=%#lx, media=%#lx, params=%s",
                          app, device, version, extensionVersion, privileges, mediaModes,
                          params == nullptr ? "null" : "given"));
        const telsim::App& opened = call.RequireApp(app);
        const LineConfiguration& line = call.RequireDevice(device);
        call.RequireWritable(place, sizeof *place, "the place for the handle");
        call.RequireVersion(opened, device, version, extensionVersion);
        constexpr DWORD kShared = LINECALLPRIVILEGE_MONITOR | LINECALLPRIVILEGE_OWNER;
        call.Require(privileges == LINECALLPRIVILEGE_NONE || (privileges != 0 && (privileges & ~kShared) == 0),
                     LINEERR_INVALPRIVSELECT, Format("privileges %#lx", privileges));
        call.Require((mediaModes & ~kAllMediaModes) == 0, LINEERR_INVALMEDIAMODE,
                     Format("media modes %#lx", mediaModes));
        call.Require((privileges & LINECALLPRIVILEGE_OWNER) == 0 ||
                         (mediaModes != 0 && (mediaModes & ~line.mediaModes) == 0),
                     LINEERR_INVALMEDIAMODE, Format("the line has no media modes %#lx to own calls of", mediaModes));
        return call.Perform([&] {
            if (line.allocated)
                return static_cast<LONG>(LINEERR_ALLOCATED);
            *place = TheService().OpenLine(Line{app, device, version, instance, privileges, mediaModes, 0, 0});
            return 0L;
        });
    });
}

LONG WINAPI lineClose(HLINE line)
{
    return Invoke("lineClose", [&](Invocation& call) {
        call.Begin(Format("line=%#lx", line));
        call.RequireLine(line);
        return call.Perform([&] {
            TheService().CloseLine(line);
            return 0L;
        });
    });
}

LONG WINAPI lineSetStatusMessages(HLINE line, DWORD lineStates, DWORD addressStates)
{
    return Invoke("lineSetStatusMessages", [&](Invocation& call) {
        call.Begin(Format("line=%#lx, states=%#lx, address states=%#lx", line, lineStates, addressStates));
        Line& opened = call.RequireLine(line);
        call.Require((lineStates & ~kAllLineStates) == 0, LINEERR_INVALLINESTATE,
                     Format("unknown line states in %#lx", lineStates));
        call.Require((addressStates & ~kAllAddressStates) == 0, LINEERR_INVALADDRESSSTATE,
                     Format("unknown address states in %#lx", addressStates));
        return call.Perform([&] {
            opened.lineStates = lineStates;
            opened.addressStates = addressStates;
            return 0L;
        });
    });
}

LONG WINAPI lineGetAddressStatus(HLINE line, DWORD address, LPLINEADDRESSSTATUS status)
{
    return Invoke("lineGetAddressStatus", [&](Invocation& call) {
        call.Begin(Format("line=%#lx, address=%lu", line, address));
        const DWORD device = call.RequireLine(line).device;
        call.Require(address == 0, LINEERR_INVALADDRESSID, Format("there is no address %lu", address));
        Record record(status, telsim::kAddressStatusSize);
        const bool busy = TheService().ActiveCall(device) != nullptr;
        auto& fixed = record.Fixed<LINEADDRESSSTATUS>();
        fixed.dwNumInUse = 1;
        fixed.dwNumActiveCalls = busy ? 1 : 0;
        fixed.dwAddressFeatures = call.RequireDevice(device).addressFeatures;
        if (busy)
            fixed.dwAddressFeatures &= ~static_cast<DWORD>(LINEADDRFEATURE_MAKECALL);
        return call.Answer(record);
    });
}

LONG WINAPI lineGetID(HLINE line, DWORD address, HCALL callHandle, DWORD select, LPVARSTRING id, LPCSTR deviceClass)
{
    return Invoke("lineGetID", [&](Invocation& call) {
        call.Begin(Format("line=%#lx, address=%lu, call=%#lx, select=%#lx, class=%s", line, address, callHandle, select,
                          Quoted(deviceClass).c_str()));
        std::shared_ptr<telsim::Call> selected;
        DWORD device = 0;
        switch (select) {
        case LINECALLSELECT_CALL:
            selected = call.RequireCall(callHandle).call;
            device = selected->device;
            break;
        case LINECALLSELECT_ADDRESS:
        case LINECALLSELECT_LINE:
            device = call.RequireLine(line).device;
            call.Require(select == LINECALLSELECT_LINE || address == 0, LINEERR_INVALADDRESSID,
                         Format("there is no address %lu", address));
            selected = TheService().ActiveCall(device);
            break;
        default:
            throw Refusal(LINEERR_INVALCALLSELECT, Format("selection %#lx", select));
        }
        call.RequireText(deviceClass, "the device class");
        call.Require(IsOneOf(deviceClass, {"comm", "comm/datamodem", "comm/datamodem/portname", "tapi/line"}),
                     LINEERR_NODEVICE, Format("the line has no device of class %s", deviceClass));
        const LineConfiguration& configuration = call.RequireDevice(device);
        Record record(id, telsim::kVarStringSize);
        constexpr size_t kText = offsetof(VARSTRING, dwStringSize);
        record.Fixed<VARSTRING>().dwStringFormat = STRINGFORMAT_BINARY;
        if (IsOneOf(deviceClass, {"tapi/line"})) {
            record.Append(kText, std::string(reinterpret_cast<const char*>(&device), sizeof device));
            return call.Answer(record);
        }
        if (IsOneOf(deviceClass, {"comm/datamodem/portname"})) {
            record.Fixed<VARSTRING>().dwStringFormat = STRINGFORMAT_ASCII;
            record.AppendText(kText, configuration.port);
            return call.Answer(record);
        }
        // The handle is the application's from now on. It gets none that it cannot find in the record.
        HANDLE port = INVALID_HANDLE_VALUE;
        const std::string name = configuration.name + '\0';
        Record trial(id, telsim::kVarStringSize);
        trial.Append(kText, std::string(sizeof port, '\0') + name);
        const std::optional<telsim::Rule>& rule = call.ActiveRule();
        const bool given = trial.Fits(rule) && (!rule || rule->action == TELSIM_NEED_MORE);
        if (given && (selected == nullptr || !selected->port.Duplicate(port)))
            return static_cast<LONG>(LINEERR_RESOURCEUNAVAIL);
        record.Append(kText, std::string(reinterpret_cast<const char*>(&port), sizeof port) + name);
        return call.Answer(record);
    });
}

// Calls

LONG WINAPI lineMakeCall(HLINE line, LPHCALL place, LPCSTR number, DWORD country, LPLINECALLPARAMS const params)
{
    return Invoke("lineMakeCall", [&](Invocation& call) {
        call.Begin(Format("line=%#lx, number=%s, country=%lu, params=%s", line, Quoted(number).c_str(), country,
                          params == nullptr ? "null" : "given"));
        const Line& opened = call.RequireLine(line);
        const LineConfiguration& device = call.RequireDevice(opened.device);
        call.RequireWritable(place, sizeof *place, "the place for the handle");
        const auto wanted = std::make_shared<telsim::Call>();
        wanted->device = opened.device;
        if (number != nullptr) {
            call.RequireText(number, "the number");
            wanted->calledNumber = number;
            call.Require(telsim::IsDialable(wanted->calledNumber), LINEERR_INVALADDRESS, "the number cannot be dialed");
        }
        if (params != nullptr)
            ReadCallParams(call, device, params, *wanted);
        else
            wanted->mediaMode = LINEMEDIAMODE_INTERACTIVEVOICE;
        return call.Request(line, [line, place, wanted] { return TheService().MakeCall(line, place, wanted); });
    });
}

LONG WINAPI lineDrop(HCALL callHandle, LPCSTR info, DWORD size)
{
    return Invoke("lineDrop", [&](Invocation& call) {
        call.Begin(Format("call=%#lx, info=%s, size=%lu", callHandle, info == nullptr ? "null" : "given", size));
        const CallHandle& handle = call.RequireCall(callHandle);
        call.Require(handle.privilege == LINECALLPRIVILEGE_OWNER, LINEERR_NOTOWNER,
                     Format("call %#lx belongs to another", callHandle));
        if (info != nullptr)
            call.RequireReadable(info, size, "the user information");
        if (handle.call->state == LINECALLSTATE_IDLE) {
            // Who has not been told of it yet has done nothing wrong.
            call.Require(!handle.toldIdle, LINEERR_INVALCALLSTATE, Format("call %#lx is idle", callHandle));
            return static_cast<LONG>(LINEERR_INVALCALLSTATE);
        }
        return call.Request(handle.line, [callHandle] { return TheService().DropCall(callHandle); });
    });
}

LONG WINAPI lineDeallocateCall(HCALL callHandle)
{
    return Invoke("lineDeallocateCall", [&](Invocation& call) {
        call.Begin(Format("call=%#lx", callHandle));
        const CallHandle& handle = call.RequireCall(callHandle);
        call.Require(handle.call->state == LINECALLSTATE_IDLE || handle.privilege != LINECALLPRIVILEGE_OWNER ||
                         TheService().HasOwnerBesides(callHandle),
                     LINEERR_INVALCALLSTATE, Format("call %#lx is not idle, and has no other owner", callHandle));
        return call.Perform([&] {
            TheService().calls.Remove(callHandle);
            return 0L;
        });
    });
}

LONG WINAPI lineGetCallStatus(HCALL callHandle, LPLINECALLSTATUS status)
{
    return Invoke("lineGetCallStatus", [&](Invocation& call) {
        call.Begin(Format("call=%#lx", callHandle));
        const CallHandle& handle = call.RequireCall(callHandle);
        Record record(status, telsim::kCallStatusSize);
        auto& fixed = record.Fixed<LINECALLSTATUS>();
        fixed.dwCallState = handle.call->state;
        fixed.dwCallStateMode = handle.call->mode;
        fixed.dwCallPrivilege = handle.privilege;
        if (handle.privilege == LINECALLPRIVILEGE_OWNER && handle.call->state != LINECALLSTATE_IDLE)
            fixed.dwCallFeatures = LINECALLFEATURE_DROP;
        return call.Answer(record);
    });
}

LONG WINAPI lineGetCallInfo(HCALL callHandle, LPLINECALLINFO info)
{
    return Invoke("lineGetCallInfo", [&](Invocation& call) {
        call.Begin(Format("call=%#lx", callHandle));
        const CallHandle& handle = call.RequireCall(callHandle);
        const telsim::Call& known = *handle.call;
        Record record(info, telsim::kCallInfoSize);
        auto& fixed = record.Fixed<LINECALLINFO>();
        fixed.hLine = handle.line;
        fixed.dwLineDeviceID = known.device;
        fixed.dwBearerMode = known.bearerMode;
        fixed.dwRate = 33600;
        fixed.dwMediaMode = known.mediaMode;
        fixed.dwCallID = known.id;
        fixed.dwCallParamFlags = known.paramFlags;
        fixed.dwCallStates = kCommonCallStates;
        fixed.dwOrigin = known.origin;
        fixed.dwReason = LINECALLREASON_DIRECT;
        fixed.dwNumOwners = 1;
        fixed.dwCallerIDFlags = known.callerFlags;
        fixed.dwCalledIDFlags = known.calledNumber.empty() ? LINECALLPARTYID_UNAVAIL : LINECALLPARTYID_ADDRESS;
        fixed.dwConnectedIDFlags = fixed.dwRedirectionIDFlags = fixed.dwRedirectingIDFlags = LINECALLPARTYID_UNAVAIL;
        const struct {
            size_t sizeField;
            const std::string& text;
        } texts[] = {
            {offsetof(LINECALLINFO, dwCallerIDSize), known.callerNumber},
            {offsetof(LINECALLINFO, dwCallerIDNameSize), known.callerName},
            {offsetof(LINECALLINFO, dwCalledIDSize), known.calledNumber},
            {offsetof(LINECALLINFO, dwDisplayableAddressSize), known.displayable},
        };
        for (const auto& entry : texts) {
            if (!entry.text.empty())
                record.AppendText(entry.sizeField, entry.text);
        }
        return call.Answer(record);
    });
}

// Numbers

LONG WINAPI lineTranslateAddress(HLINEAPP app, DWORD device, DWORD version, LPCSTR address, DWORD card, DWORD options,
                                 LPLINETRANSLATEOUTPUT output)
{
    return Invoke("lineTranslateAddress", [&](Invocation& call) {
        call.Begin(Format("app=%#lx, device=%lu, version=%#lx, address=%s, card=%lu, options=%#lx", app, device,
                          version, Quoted(address).c_str(), card, options));
        call.RequireApp(app);
        call.RequireDevice(device);
        call.Require(version >= telsim::kLowestVersion && version <= telsim::kHighestVersion,
                     LINEERR_INCOMPATIBLEAPIVERSION, Format("version %#lx", version));
        call.RequireText(address, "the address");
        call.Require((options & ~kAllTranslateOptions) == 0, LINEERR_INVALPARAM,
                     Format("unknown options in %#lx", options));
        Record record(output, telsim::kTranslateOutputSize);
        const telsim::Location& location = TheService().configuration.location;
        const std::optional<telsim::Translation> translation = telsim::Translate(location, address, options);
        if (!translation) // no fault of the program's: numbers are typed by people
            return call.Perform([] { return static_cast<LONG>(LINEERR_INVALADDRESS); });
        auto& fixed = record.Fixed<LINETRANSLATEOUTPUT>();
        fixed.dwCurrentCountry = location.country;
        fixed.dwDestCountry = translation->destinationCountry;
        fixed.dwTranslateResults = translation->results;
        record.AppendText(offsetof(LINETRANSLATEOUTPUT, dwDialableStringSize), translation->dialable);
        record.AppendText(offsetof(LINETRANSLATEOUTPUT, dwDisplayableStringSize), translation->displayable);
        return call.Answer(record);
    });
}

LONG WINAPI lineTranslateDialog(HLINEAPP app, DWORD device, DWORD version, HWND owner, LPCSTR address)
{
    return Invoke("lineTranslateDialog", [&](Invocation& call) {
        call.Begin(
            Format("app=%#lx, device=%lu, version=%#lx, address=%s", app, device, version, Quoted(address).c_str()));
        if (app != 0) // a program may show the dialog before it has called lineInitialize
            call.RequireApp(app);
        call.RequireDevice(device);
        call.Require(version >= telsim::kLowestVersion && version <= telsim::kHighestVersion,
                     LINEERR_INCOMPATIBLEAPIVERSION, Format("version %#lx", version));
        RequireOwnerWindow(call, owner);
        if (address != nullptr)
            call.RequireText(address, "the address");
        return call.Perform([&] {
            ShowDialog(owner, "Here a person would edit the dialing properties.");
            return 0L;
        });
    });
}
