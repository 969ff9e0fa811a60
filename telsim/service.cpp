#include "service.h"

#include <algorithm>
#include <utility>

namespace telsim {

namespace {

/// Replaced by EndService. A pointer, since the library may be unloaded while a test holds it.
Service* g_service = nullptr;

/// What becomes of a number that is dialed; the modem has the same rule (modem.py).
struct Outcome {
    char lastDigit;
    DWORD states[2]; // one after the other; 0 for no second
    DWORD disconnectMode;
};
constexpr Outcome kOutcomes[] = {
    {'7', {LINECALLSTATE_BUSY, LINECALLSTATE_DISCONNECTED}, LINEDISCONNECTMODE_BUSY},
    {'8', {LINECALLSTATE_DISCONNECTED, 0}, LINEDISCONNECTMODE_NODIALTONE},
    {'9', {LINECALLSTATE_RINGBACK, LINECALLSTATE_DISCONNECTED}, LINEDISCONNECTMODE_NOANSWER},
};

/// The mode that goes with a state.
DWORD ModeOf(DWORD state, DWORD disconnectMode)
{
    constexpr DWORD kModes[][2] = {
        {LINECALLSTATE_DIALTONE, LINEDIALTONEMODE_NORMAL},
        {LINECALLSTATE_BUSY, LINEBUSYMODE_STATION},
        {LINECALLSTATE_CONNECTED, LINECONNECTEDMODE_ACTIVE},
    };
    for (const auto& entry : kModes) {
        if (entry[0] == state)
            return entry[1];
    }
    return state == LINECALLSTATE_DISCONNECTED ? disconnectMode : 0;
}

/// The oldest entry goes when there are too many: a program may telephone for days.
template <class LIST, class ENTRY> void AddBounded(LIST& list, const ENTRY& entry)
{
    list.push_back(entry);
    if (list.size() > TELSIM_MOST_ENTRIES)
        list.pop_front();
}

bool IsOver(const Call& call) { return call.state == LINECALLSTATE_IDLE || call.state == LINECALLSTATE_DISCONNECTED; }

} // namespace

Service& TheService()
{
    if (g_service == nullptr)
        g_service = new Service;
    return *g_service;
}

void EndService()
{
    delete g_service;
    g_service = nullptr;
}

Service::Service() { Reset(); }

void Service::Reset()
{
    m_held.clear();
    calls.Clear();
    lines.Clear();
    apps.Clear();
    rules = RuleBook();
    observer = nullptr;
    journal.clear();
    misuses.clear();
    std::vector<std::string> complaints;
    configuration = LoadConfiguration(complaints);
    misuses.assign(complaints.begin(), complaints.end());
}

void Service::AddMisuse(const std::string& text)
{
    OutputDebugStringA(("telsim: " + text + "\n").c_str());
    AddBounded(misuses, text);
}

std::shared_ptr<std::string> Service::AddCall(const std::string& text)
{
    auto entry = std::make_shared<std::string>(text);
    AddBounded(journal, entry);
    return entry;
}

// Applications and lines

void Service::RemoveApp(HLINEAPP handle)
{
    for (const HLINE line : lines.Handles()) {
        if (lines.Find(line)->app == handle)
            CloseLine(line);
    }
    apps.Remove(handle);
}

HLINE Service::OpenLine(const Line& line)
{
    PostLineState(line.device, LINEDEVSTATE_OPEN, 0, 0);
    const HLINE handle = lines.Add(line);
    if ((line.privileges & LINECALLPRIVILEGE_OWNER) != 0)
        RunIncomingCalls(handle);
    return handle;
}

void Service::CloseLine(HLINE handle)
{
    const DWORD device = lines.Find(handle)->device;
    for (const HCALL callHandle : calls.Handles()) {
        const CallHandle entry = *calls.Find(callHandle);
        if (entry.line != handle)
            continue;
        // A call without an owner is at its end.
        if (entry.privilege == LINECALLPRIVILEGE_OWNER && !HasOwnerBesides(callHandle) &&
            entry.call->state != LINECALLSTATE_IDLE)
            ChangeCallState(entry.call, LINECALLSTATE_IDLE, 0);
        calls.Remove(callHandle);
    }
    m_held.erase(
        std::remove_if(m_held.begin(), m_held.end(), [&](const HeldReply& held) { return held.line == handle; }),
        m_held.end());
    lines.Remove(handle);
    PostLineState(device, LINEDEVSTATE_CLOSE, 0, 0);
}

void Service::TakeLineAway(HLINE handle)
{
    const Line line = *lines.Find(handle);
    CloseLine(handle);
    App& app = *apps.Find(line.app);
    app.events->Post(0,
                     [callback = app.callback, handle, line] { callback(handle, LINE_CLOSE, line.instance, 0, 0, 0); });
}

// Requests

LONG Service::StartRequest(HLINE line, const Rule* rule, std::function<LONG()> complete)
{
    const LONG request = ++m_lastRequest;
    const Line& opened = *lines.Find(line);
    DWORD delay = configuration.lines[opened.device].replyDelay;
    const TelsimAction action = rule != nullptr ? rule->action : TelsimAction{};
    if (action == TELSIM_FAIL_REPLY)
        complete = [result = static_cast<LONG>(rule->value)] { return result; };
    else if (action == TELSIM_PRETEND)
        complete = [] { return 0; };
    else if (action == TELSIM_LATE_REPLY)
        delay = rule->value;
    std::function<void()> reply = [line, request, complete = std::move(complete)] {
        TheService().Reply(line, request, complete);
    };
    if (action == TELSIM_EARLY_REPLY)
        reply();
    else if (action == TELSIM_HOLD_REPLY)
        m_held.push_back({line, std::move(reply)});
    else
        Later(line, delay, std::move(reply));
    return request;
}

void Service::Reply(HLINE line, LONG request, const std::function<LONG()>& complete)
{
    const LONG result = complete();
    const Line& opened = *lines.Find(line);
    apps.Find(opened.app)
        ->callback(0, LINE_REPLY, opened.instance, static_cast<DWORD>(request), static_cast<DWORD>(result), 0);
}

DWORD Service::ReleaseReplies()
{
    const std::vector<HeldReply> held = std::exchange(m_held, {});
    for (const HeldReply& entry : held)
        Later(entry.line, 0, entry.reply);
    return static_cast<DWORD>(held.size());
}

void Service::Later(HLINE line, DWORD delay, std::function<void()> step)
{
    apps.Find(lines.Find(line)->app)->events->Post(delay, [line, step = std::move(step)] {
        if (TheService().lines.Find(line) != nullptr)
            step();
    });
}

// Calls

LONG Service::MakeCall(HLINE line, HCALL* place, const std::shared_ptr<Call>& call)
{
    if (ActiveCall(call->device) != nullptr)
        return static_cast<LONG>(LINEERR_CALLUNAVAIL);
    if (IsBadWritePtr(place, sizeof *place)) {
        AddMisuse("lineMakeCall: the place for the call's handle is gone when the reply comes");
        return static_cast<LONG>(LINEERR_OPERATIONFAILED);
    }
    if (!call->port.Open(configuration.lines[call->device].port))
        return static_cast<LONG>(LINEERR_RESOURCEUNAVAIL);
    call->id = ++m_lastCallId;
    *place = calls.Add(CallHandle{line, LINECALLPRIVILEGE_OWNER, call});
    AddMonitors(line, call);
    Dial(line, call);
    return 0;
}

void Service::AddMonitors(HLINE owner, const std::shared_ptr<Call>& call)
{
    for (const HLINE handle : lines.Handles()) {
        const Line& line = *lines.Find(handle);
        if (handle == owner || line.device != call->device || (line.privileges & LINECALLPRIVILEGE_MONITOR) == 0)
            continue;
        const HCALL monitor = calls.Add(CallHandle{handle, LINECALLPRIVILEGE_MONITOR, call});
        PostToCall(monitor, LINE_CALLSTATE, call->state, call->mode, LINECALLPRIVILEGE_MONITOR);
    }
}

void Service::Dial(HLINE line, const std::shared_ptr<Call>& call)
{
    const LineConfiguration& device = configuration.lines[call->device];
    const auto step = [this, line](DWORD delay, std::weak_ptr<Call> weak, DWORD state, DWORD disconnectMode) {
        Later(line, delay, [this, weak = std::move(weak), state, disconnectMode] {
            const std::shared_ptr<Call> dialed = weak.lock();
            if (dialed != nullptr && !IsOver(*dialed))
                ChangeCallState(dialed, state, ModeOf(state, disconnectMode));
        });
    };
    if (call->bearerMode == LINEBEARERMODE_PASSTHROUGH) { // the application talks to the modem itself
        step(device.connectDelay, call, LINECALLSTATE_CONNECTED, 0);
        return;
    }
    step(device.dialtoneDelay, call, LINECALLSTATE_DIALTONE, 0);
    if (call->calledNumber.empty())
        return;
    step(device.dialtoneDelay, call, LINECALLSTATE_DIALING, 0);
    step(device.dialtoneDelay, call, LINECALLSTATE_PROCEEDING, 0);
    const DWORD delay = device.dialtoneDelay + device.connectDelay;
    for (const Outcome& outcome : kOutcomes) {
        if (outcome.lastDigit != call->calledNumber.back())
            continue;
        for (const DWORD state : outcome.states) {
            if (state != 0)
                step(delay, call, state, outcome.disconnectMode);
        }
        return;
    }
    step(delay, call, LINECALLSTATE_CONNECTED, 0);
}

LONG Service::DropCall(HCALL handle)
{
    // It may be over, or gone, since the request was accepted.
    const CallHandle* entry = calls.Find(handle);
    if (entry == nullptr || entry->call->state == LINECALLSTATE_IDLE)
        return static_cast<LONG>(LINEERR_INVALCALLSTATE);
    ChangeCallState(entry->call, LINECALLSTATE_IDLE, 0);
    return 0;
}

std::shared_ptr<Call> Service::ActiveCall(DWORD device)
{
    for (const HCALL handle : calls.Handles()) {
        const std::shared_ptr<Call>& call = calls.Find(handle)->call;
        if (call->device == device && call->state != LINECALLSTATE_IDLE)
            return call;
    }
    return nullptr;
}

bool Service::HasOwnerBesides(HCALL handle)
{
    const std::shared_ptr<Call> call = calls.Find(handle)->call;
    for (const HCALL other : calls.Handles()) {
        const CallHandle& entry = *calls.Find(other);
        if (other != handle && entry.call == call && entry.privilege == LINECALLPRIVILEGE_OWNER)
            return true;
    }
    return false;
}

void Service::ChangeCallState(const std::shared_ptr<Call>& call, DWORD state, DWORD mode, HCALL privileged,
                              DWORD privilege)
{
    call->state = state;
    call->mode = mode;
    call->wasConnected = call->wasConnected || state == LINECALLSTATE_CONNECTED;
    if (state == LINECALLSTATE_IDLE)
        call->port.Close();
    for (const HCALL handle : calls.Handles()) {
        CallHandle& entry = *calls.Find(handle);
        if (entry.call != call)
            continue;
        if (handle == privileged && privilege != 0)
            entry.privilege = privilege;
        PostToCall(handle, LINE_CALLSTATE, state, mode, handle == privileged ? privilege : 0);
    }
}

HCALL Service::OfferCall(DWORD device, const std::string& number, const std::string& name, DWORD partyFlags)
{
    HLINE owner = 0;
    for (const HLINE handle : lines.Handles()) {
        const Line& line = *lines.Find(handle);
        if (owner == 0 && line.device == device && (line.privileges & LINECALLPRIVILEGE_OWNER) != 0)
            owner = handle;
    }
    if (owner == 0 || ActiveCall(device) != nullptr)
        return 0;

    const auto call = std::make_shared<Call>();
    call->device = device;
    call->id = ++m_lastCallId;
    call->state = LINECALLSTATE_OFFERING;
    call->mode = LINEOFFERINGMODE_ACTIVE;
    call->origin = LINECALLORIGIN_EXTERNAL;
    call->mediaMode = lines.Find(owner)->mediaModes & configuration.lines[device].mediaModes;
    call->callerFlags = LINECALLPARTYID_UNKNOWN;
    call->port.Open(configuration.lines[device].port); // without it, the call can still be refused
    const HCALL handle = calls.Add(CallHandle{owner, LINECALLPRIVILEGE_OWNER, call});
    PostToCall(handle, LINE_CALLSTATE, call->state, call->mode, LINECALLPRIVILEGE_OWNER);
    AddMonitors(owner, call);
    PostLineState(device, LINEDEVSTATE_RINGING, 1, 1);
    // The caller's identity comes after the first ring.
    Later(owner, 0, [this, weak = std::weak_ptr<Call>(call), number, name, partyFlags] {
        if (const std::shared_ptr<Call> offered = weak.lock())
            IdentifyCaller(offered, number, name, partyFlags);
    });
    return handle;
}

void Service::IdentifyCaller(const std::shared_ptr<Call>& call, const std::string& number, const std::string& name,
                             DWORD partyFlags)
{
    if (partyFlags == 0) {
        partyFlags = (number.empty() ? 0 : LINECALLPARTYID_ADDRESS) | (name.empty() ? 0 : LINECALLPARTYID_NAME);
        if (partyFlags == 0)
            partyFlags = LINECALLPARTYID_OUTOFAREA;
    }
    call->callerFlags = partyFlags;
    call->callerNumber = number;
    call->callerName = name;
    for (const HCALL handle : calls.Handles()) {
        if (calls.Find(handle)->call == call)
            PostToCall(handle, LINE_CALLINFO, LINECALLINFOSTATE_CALLERID, 0, 0);
    }
}

void Service::RunIncomingCalls(HLINE line)
{
    const DWORD device = lines.Find(line)->device;
    for (const IncomingCall& incoming : configuration.incomingCalls) {
        if (incoming.device != device)
            continue;
        Later(line, incoming.after, [this, line, incoming] {
            const HCALL handle = OfferCall(incoming.device, incoming.number, incoming.name, incoming.partyFlags);
            if (handle == 0 || incoming.hangUpAfter == 0)
                return;
            Later(line, incoming.hangUpAfter, [this, weak = std::weak_ptr<Call>(calls.Find(handle)->call)] {
                if (const std::shared_ptr<Call> call = weak.lock())
                    HangUp(call);
            });
        });
    }
}

void Service::HangUp(const std::shared_ptr<Call>& call)
{
    if (IsOver(*call))
        return;
    ChangeCallState(call, LINECALLSTATE_DISCONNECTED, LINEDISCONNECTMODE_NORMAL);
    if (!call->wasConnected)
        ChangeCallState(call, LINECALLSTATE_IDLE, 0);
}

// Events

void Service::PostToLine(HLINE handle, DWORD message, DWORD_PTR param1, DWORD_PTR param2, DWORD_PTR param3)
{
    Later(handle, 0, [this, handle, message, param1, param2, param3] {
        const Line& line = *lines.Find(handle);
        apps.Find(line.app)->callback(handle, message, line.instance, param1, param2, param3);
    });
}

void Service::PostToCall(HCALL handle, DWORD message, DWORD_PTR param1, DWORD_PTR param2, DWORD_PTR param3)
{
    Later(calls.Find(handle)->line, 0, [this, handle, message, param1, param2, param3] {
        CallHandle* entry = calls.Find(handle);
        if (entry == nullptr)
            return;
        if (message == LINE_CALLSTATE && param1 == LINECALLSTATE_IDLE)
            entry->toldIdle = true;
        const Line& line = *lines.Find(entry->line);
        apps.Find(line.app)->callback(handle, message, line.instance, param1, param2, param3);
    });
}

DWORD Service::PostToAll(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR param2,
                         DWORD_PTR param3)
{
    for (const HLINEAPP handle : apps.Handles()) {
        App& app = *apps.Find(handle);
        app.events->Post(0, [callback = app.callback, device, message, instance, param1, param2, param3] {
            callback(device, message, instance, param1, param2, param3);
        });
    }
    return static_cast<DWORD>(apps.Count());
}

DWORD Service::PostLineState(DWORD device, DWORD state, DWORD_PTR param2, DWORD_PTR param3)
{
    if (state == LINEDEVSTATE_REINIT) // concerns no line in particular
        return PostToAll(0, LINE_LINEDEVSTATE, 0, state, param2, param3);
    DWORD told = 0;
    for (const HLINE handle : lines.Handles()) {
        const Line& line = *lines.Find(handle);
        if (line.device != device || (line.lineStates & state) == 0)
            continue;
        PostToLine(handle, LINE_LINEDEVSTATE, state, param2, param3);
        ++told;
    }
    return told;
}

size_t Service::EventCount()
{
    size_t count = 0;
    for (const HLINEAPP handle : apps.Handles())
        count += apps.Find(handle)->events->Count();
    return count;
}

} // namespace telsim
