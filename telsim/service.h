/// \file
/// The simulated telephone service: applications, open lines, calls, and what happens to them.
#pragma once

#include "configuration.h"
#include "event_queue.h"
#include "handle_table.h"
#include "port.h"
#include "rules.h"

#include <telsim/control.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace telsim {

/// A program between lineInitialize and lineShutdown.
struct App {
    LINECALLBACK callback;
    std::unique_ptr<EventQueue> events;
    std::map<DWORD, DWORD> versions; // negotiated, by device
};

/// A line device opened by an application.
struct Line {
    HLINEAPP app;
    DWORD device;
    DWORD version;
    DWORD_PTR instance;
    DWORD privileges;
    DWORD mediaModes;
    DWORD lineStates; // what it asked to be told of
    DWORD addressStates;
};

/// A telephone call. Each line that has part in it has a handle of its own to it.
struct Call {
    DWORD device = 0;
    DWORD id = 0;
    DWORD state = LINECALLSTATE_UNKNOWN;
    DWORD mode = 0; // of the state
    DWORD bearerMode = LINEBEARERMODE_VOICE;
    DWORD mediaMode = 0;
    DWORD origin = LINECALLORIGIN_OUTBOUND;
    DWORD paramFlags = 0;
    std::string calledNumber;
    std::string displayable;
    DWORD callerFlags = LINECALLPARTYID_UNAVAIL;
    std::string callerNumber;
    std::string callerName;
    bool wasConnected = false;
    Port port;
};

struct CallHandle {
    HLINE line;
    DWORD privilege; // LINECALLPRIVILEGE_
    std::shared_ptr<Call> call;
    bool toldIdle = false; // the application has been told that the call is over
};

/// There is one service in the process. It is used from one thread.
class Service {
public:
    Service();
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    Configuration configuration;
    HandleTable<App> apps{0x100000, "application", "shut down"};
    HandleTable<Line> lines{0x200000, "line", "closed"};
    HandleTable<CallHandle> calls{0x300000, "call", "deallocated"};
    RuleBook rules;
    TelsimObserver observer = nullptr;
    void* observerContext = nullptr;
    // Either has at most the last TELSIM_MOST_ENTRIES.
    std::deque<std::shared_ptr<std::string>> journal; // calls of line functions
    std::deque<std::string> misuses;

    /// As it was at first, but for the running numbers: what was given before stays invalid.
    void Reset();
    void AddMisuse(const std::string& text);
    /// \return the entry in the list of calls, to which its result is added.
    std::shared_ptr<std::string> AddCall(const std::string& text);

    // Applications and lines

    void RemoveApp(HLINEAPP handle);
    HLINE OpenLine(const Line& line);
    void CloseLine(HLINE handle);
    /// As CloseLine, but by the service: the application is told.
    void TakeLineAway(HLINE handle);

    // Requests: functions that return at once and reply later

    /// \param complete does what was asked for and returns the result. It is called when the reply is due, unless the
    /// line is closed by then. \return the positive request number.
    LONG StartRequest(HLINE line, const Rule* rule, std::function<LONG()> complete);
    DWORD ReleaseReplies();
    size_t HeldReplies() const { return m_held.size(); }

    // Calls

    /// Makes a call. \param place for its handle. \return the result of the request, as DropCall's.
    LONG MakeCall(HLINE line, HCALL* place, const std::shared_ptr<Call>& call);
    LONG DropCall(HCALL handle);
    /// The call that occupies a device; null for none.
    std::shared_ptr<Call> ActiveCall(DWORD device);
    bool HasOwnerBesides(HCALL handle);
    /// \param privileged the handle that \p privilege is for; all others get none.
    void ChangeCallState(const std::shared_ptr<Call>& call, DWORD state, DWORD mode, HCALL privileged = 0,
                         DWORD privilege = 0);
    HCALL OfferCall(DWORD device, const std::string& number, const std::string& name, DWORD partyFlags);
    void HangUp(const std::shared_ptr<Call>& call);

    // Events

    /// To the application of a line, or of a call, if that is still there by then.
    void PostToLine(HLINE line, DWORD message, DWORD_PTR param1, DWORD_PTR param2, DWORD_PTR param3);
    void PostToCall(HCALL call, DWORD message, DWORD_PTR param1, DWORD_PTR param2, DWORD_PTR param3);
    /// To every application, whatever the device. \return how many.
    DWORD PostToAll(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR param2,
                    DWORD_PTR param3);
    DWORD PostLineState(DWORD device, DWORD state, DWORD_PTR param2, DWORD_PTR param3);

    size_t EventCount();

private:
    void Reply(HLINE line, LONG request, const std::function<LONG()>& complete);
    /// Gives the lines of the call's device, but for \p owner, a handle to watch it with, as far as they may.
    void AddMonitors(HLINE owner, const std::shared_ptr<Call>& call);
    void IdentifyCaller(const std::shared_ptr<Call>& call, const std::string& number, const std::string& name,
                        DWORD partyFlags);
    void RunIncomingCalls(HLINE line);
    /// After a delay, on the thread of a line's application, if the line is still open then.
    void Later(HLINE line, DWORD delay, std::function<void()> step);
    void Dial(HLINE line, const std::shared_ptr<Call>& call);

    LONG m_lastRequest = 0;
    DWORD m_lastCallId = 0;
    struct HeldReply {
        HLINE line;
        std::function<void()> reply;
    };
    std::vector<HeldReply> m_held;
};

/// The service. Made when first asked for.
Service& TheService();
/// Ends it with all that it has; the next is a new one.
void EndService();

} // namespace telsim
