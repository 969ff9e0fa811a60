// The control functions that the library exports, and its entry.
#include "service.h"

#include <telsim/control.h>

#include <cstring>

using telsim::CallHandle;
using telsim::Line;
using telsim::Service;
using telsim::TheService;

namespace {

/// A line function, and which rules make sense for it.
struct FunctionKind {
    const char* name;
    bool request;
    bool record;
};
constexpr FunctionKind kFunctions[] = {
    {"lineInitialize", false, false},
    {"lineShutdown", false, false},
    {"lineNegotiateAPIVersion", false, false},
    {"lineGetDevCaps", false, true},
    {"lineGetAddressCaps", false, true},
    {"lineGetDevConfig", false, true},
    {"lineConfigDialogEdit", false, true},
    {"lineOpen", false, false},
    {"lineClose", false, false},
    {"lineSetStatusMessages", false, false},
    {"lineGetAddressStatus", false, true},
    {"lineGetID", false, true},
    {"lineMakeCall", true, false},
    {"lineDrop", true, false},
    {"lineDeallocateCall", false, false},
    {"lineGetCallStatus", false, true},
    {"lineGetCallInfo", false, true},
    {"lineTranslateAddress", false, true},
    {"lineTranslateDialog", false, false},
};

bool MakesSense(const FunctionKind& function, DWORD action)
{
    switch (action) {
    case TELSIM_FAIL:
    case TELSIM_PRETEND:
        return true;
    case TELSIM_FAIL_REPLY:
    case TELSIM_HOLD_REPLY:
    case TELSIM_LATE_REPLY:
    case TELSIM_EARLY_REPLY:
        return function.request;
    default:
        return function.record && action >= TELSIM_NEED_MORE && action <= TELSIM_LAST_ACTION;
    }
}

/// Nothing is thrown to the caller; without memory a function answers with \p failure.
template <class RESULT, class BODY> RESULT AtEdge(RESULT failure, BODY body)
{
    try {
        return body(TheService());
    } catch (...) {
        OutputDebugStringA("telsim: out of memory\n");
        return failure;
    }
}

std::string Joined(DWORD which, const Service& service)
{
    std::string text;
    if (which == TELSIM_CALLS) {
        for (const auto& entry : service.journal)
            text += *entry + "\n";
    } else if (which == TELSIM_MISUSES) {
        for (const std::string& entry : service.misuses)
            text += entry + "\n";
    }
    return text;
}

} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID processEnds)
{
    // At the end of the process windows and handles go by themselves.
    if (reason == DLL_PROCESS_DETACH && processEnds == nullptr)
        telsim::EndService();
    return TRUE;
}

void WINAPI TelsimReset()
{
    AtEdge(0, [](Service& service) {
        service.Reset();
        return 0;
    });
}

BOOL WINAPI TelsimSetRule(const char* function, DWORD nth, BOOL onward, DWORD action, DWORD value)
{
    return AtEdge<BOOL>(FALSE, [&](Service& service) -> BOOL {
        for (const FunctionKind& known : kFunctions) {
            if (std::strcmp(known.name, function) == 0 && nth != 0 && MakesSense(known, action)) {
                service.rules.Add(function, nth, onward != FALSE, {static_cast<TelsimAction>(action), value});
                return TRUE;
            }
        }
        return FALSE;
    });
}

void WINAPI TelsimClearRules() { TheService().rules.Clear(); }

DWORD WINAPI TelsimReleaseReplies()
{
    return AtEdge<DWORD>(0, [](Service& service) { return service.ReleaseReplies(); });
}

void WINAPI TelsimSetObserver(TelsimObserver observer, void* context)
{
    TheService().observer = observer;
    TheService().observerContext = context;
}

BOOL WINAPI TelsimConfigureLine(DWORD device, const char* key, const char* value)
{
    return AtEdge<BOOL>(FALSE, [&](Service& service) -> BOOL {
        auto& lines = service.configuration.lines;
        return device < lines.size() && telsim::SetLineKey(lines[device], key, value);
    });
}

void WINAPI TelsimSetLineCount(DWORD count)
{
    AtEdge(0, [&](Service& service) {
        auto& lines = service.configuration.lines;
        while (lines.size() > count)
            lines.pop_back();
        while (lines.size() < count)
            lines.push_back(telsim::DefaultLine(lines.size()));
        return 0;
    });
}

DWORD WINAPI TelsimAddLine()
{
    return AtEdge<DWORD>(0, [](Service& service) {
        auto& lines = service.configuration.lines;
        const auto device = static_cast<DWORD>(lines.size());
        lines.push_back(telsim::DefaultLine(device));
        service.PostToAll(0, LINE_CREATE, 0, device, 0, 0);
        return device;
    });
}

DWORD WINAPI TelsimPostEvent(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR param2,
                             DWORD_PTR param3)
{
    return AtEdge<DWORD>(0, [&](Service& service) {
        const CallHandle* call = service.calls.Find(device);
        const Line* line = service.lines.Find(call != nullptr ? call->line : device);
        if (instance == 0 && line != nullptr)
            instance = line->instance;
        return service.PostToAll(device, message, instance, param1, param2, param3);
    });
}

BOOL WINAPI TelsimChangeCallState(DWORD call, DWORD state, DWORD mode, DWORD privilege)
{
    return AtEdge<BOOL>(FALSE, [&](Service& service) -> BOOL {
        const CallHandle* handle = service.calls.Find(call);
        if (handle == nullptr)
            return FALSE;
        service.ChangeCallState(std::shared_ptr<telsim::Call>(handle->call), state, mode, call, privilege);
        return TRUE;
    });
}

BOOL WINAPI TelsimCloseLine(DWORD line)
{
    return AtEdge<BOOL>(FALSE, [&](Service& service) -> BOOL {
        if (service.lines.Find(line) == nullptr)
            return FALSE;
        service.TakeLineAway(line);
        return TRUE;
    });
}

DWORD WINAPI TelsimChangeLineState(DWORD device, DWORD state, DWORD param2, DWORD param3)
{
    return AtEdge<DWORD>(0, [&](Service& service) { return service.PostLineState(device, state, param2, param3); });
}

DWORD WINAPI TelsimOfferCall(DWORD device, const char* number, const char* name, DWORD partyFlags)
{
    return AtEdge<DWORD>(0, [&](Service& service) -> DWORD {
        if (device >= service.configuration.lines.size())
            return 0;
        return service.OfferCall(device, number != nullptr ? number : "", name != nullptr ? name : "", partyFlags);
    });
}

BOOL WINAPI TelsimHangUp(DWORD call)
{
    return AtEdge<BOOL>(FALSE, [&](Service& service) -> BOOL {
        const CallHandle* handle = service.calls.Find(call);
        if (handle == nullptr || handle->call->state == LINECALLSTATE_IDLE)
            return FALSE;
        service.HangUp(std::shared_ptr<telsim::Call>(handle->call));
        return TRUE;
    });
}

DWORD WINAPI TelsimGetText(DWORD which, char* buffer, DWORD size)
{
    return AtEdge<DWORD>(1, [&](Service& service) {
        const std::string text = Joined(which, service);
        if (buffer != nullptr && size > text.size())
            std::memcpy(buffer, text.c_str(), text.size() + 1);
        return static_cast<DWORD>(text.size()) + 1;
    });
}

void WINAPI TelsimClearTexts()
{
    TheService().journal.clear();
    TheService().misuses.clear();
}

DWORD WINAPI TelsimGetCount(DWORD kind)
{
    return AtEdge<DWORD>(0, [&](Service& service) -> DWORD {
        size_t count = 0;
        switch (kind) {
        case TELSIM_APPS:
            count = service.apps.Count();
            break;
        case TELSIM_LINES:
            count = service.lines.Count();
            break;
        case TELSIM_CALL_HANDLES:
            count = service.calls.Count();
            break;
        case TELSIM_PORTS:
            count = telsim::Port::OpenCount();
            break;
        case TELSIM_HELD_REPLIES:
            count = service.HeldReplies();
            break;
        case TELSIM_EVENTS:
            count = service.EventCount();
            break;
        case TELSIM_RULES_FIRED:
            count = service.rules.Fired();
            break;
        default:
            break;
        }
        return static_cast<DWORD>(count);
    });
}

DWORD WINAPI TelsimGetHandle(DWORD kind, DWORD index)
{
    return AtEdge<DWORD>(0, [&](Service& service) -> DWORD {
        std::vector<DWORD> handles;
        if (kind == TELSIM_APPS)
            handles = service.apps.Handles();
        else if (kind == TELSIM_LINES)
            handles = service.lines.Handles();
        else if (kind == TELSIM_CALL_HANDLES)
            handles = service.calls.Handles();
        return index < handles.size() ? handles[index] : 0;
    });
}
