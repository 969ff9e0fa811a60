/// \file
/// How a test drives the simulated TAPI32.DLL.
///
/// The library exports these functions beside the line functions, by their plain names. A test reaches them through
/// GetProcAddress on the loaded TAPI32.DLL; <telsim/client.h> does that. All functions, these and the line functions, are
/// for one thread: the one that calls lineInitialize. Events are delivered there, while it takes messages from its queue.
///
/// A handle, once closed, is never given again, so that a late use of it is noticed.
#pragma once

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

/// What becomes of a call that a rule holds for. The call's arguments are checked before: a wrong call is refused and
/// recorded as misuse, rule or not.
enum TelsimAction {
    TELSIM_FAIL = 1,    ///< returns \a value; nothing is done
    TELSIM_FAIL_REPLY,  ///< accepted, but the reply brings \a value; nothing is done. Requests only
    TELSIM_PRETEND,     ///< says success; nothing is done, nothing is written
    TELSIM_HOLD_REPLY,  ///< the reply waits for TelsimReleaseReplies; without it, it never comes. Requests only
    TELSIM_LATE_REPLY,  ///< the reply comes after \a value milliseconds. Requests only
    TELSIM_EARLY_REPLY, ///< the callback gets the reply before the call returns. Requests only

    // The rest is for calls that fill a record of variable size.
    TELSIM_NEED_MORE,    ///< the record needs \a value bytes more than it would
    TELSIM_NEED_ENDLESS, ///< needs \a value bytes more than it is given, however much that is
    TELSIM_USED_SIZE,    ///< dwUsedSize is \a value; what lies behind it is overwritten with 0xDD
    TELSIM_NEEDED_SIZE,  ///< dwNeededSize is \a value, the record being complete
    TELSIM_BAD_OFFSETS,  ///< every offset is \a value: small ones overlap the fixed part, others lead outside
    TELSIM_BAD_SIZES,    ///< every size of a part is \a value
    TELSIM_LAST_ACTION = TELSIM_BAD_SIZES
};

/// Each list keeps at most so many entries; the oldest go.
#define TELSIM_MOST_ENTRIES 10000

/// What TelsimGetText answers with, a line for each entry.
enum TelsimText {
    TELSIM_CALLS = 1, ///< calls of line functions, in order: "lineDrop(call=0x300001, info=null, size=0) = 3"
    TELSIM_MISUSES    ///< wrong calls and mistakes in telsim.ini: "lineDrop: call 0x300001 was deallocated"
};

/// What TelsimGetCount and TelsimGetHandle are about.
enum TelsimKind {
    TELSIM_APPS = 1,     ///< applications between lineInitialize and lineShutdown
    TELSIM_LINES,        ///< open lines
    TELSIM_CALL_HANDLES, ///< calls not yet deallocated
    TELSIM_PORTS,        ///< ports that the simulation holds open. Count only
    TELSIM_HELD_REPLIES, ///< replies that wait for TelsimReleaseReplies. Count only
    TELSIM_EVENTS,       ///< events on their way, late replies among them. Count only
    TELSIM_RULES_FIRED   ///< calls that a rule was applied to. Count only
};

/// Called at the beginning of each line function, before its arguments are checked. It may call anything: fire events,
/// close lines, set rules. \param function the name, such as "lineDrop".
typedef void(WINAPI* TelsimObserver)(const char* function, void* context);

/// Everything as if the library had just been loaded: applications, lines, calls, rules, observer and lists are gone, no
/// event is on its way, telsim.ini is read anew.
void WINAPI TelsimReset(void);

/// Sets a rule for calls of one function. The first rule that fits a call holds for it. Rules stay until TelsimReset or
/// TelsimClearRules.
/// \param function such as "lineOpen". \param nth 1 for the next call. \param onward for that call alone, or for all from
/// it on. \param action one of TelsimAction. \return FALSE for an unknown function or action, or an nth of 0.
BOOL WINAPI TelsimSetRule(const char* function, DWORD nth, BOOL onward, DWORD action, DWORD value);
void WINAPI TelsimClearRules(void);
/// Sends the replies held back, in their order. \return how many.
DWORD WINAPI TelsimReleaseReplies(void);
/// Null takes the observer away.
void WINAPI TelsimSetObserver(TelsimObserver observer, void* context);

/// Sets one key of a line as telsim.ini would (docs/telsim.md). \return FALSE for an unknown device, key or value.
BOOL WINAPI TelsimConfigureLine(DWORD device, const char* key, const char* value);
/// Leaves so many lines; new ones are without a port. Nobody is told: see TelsimAddLine.
void WINAPI TelsimSetLineCount(DWORD count);
/// A new line at the end, without a port; every application gets LINE_CREATE. \return its device number.
DWORD WINAPI TelsimAddLine(void);

/// Delivers any event to every application, as it stands; nothing changes but what the applications make of it.
/// \param instance passed on as the callback instance; when 0, and \p device is an open line or a call, the line's own.
/// \return how many applications there are.
DWORD WINAPI TelsimPostEvent(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR param2,
                             DWORD_PTR param3);
/// Changes the state of a call and tells all who have it. \param mode by state, such as LINEDISCONNECTMODE_BUSY.
/// \param privilege 0, or the new privilege of this handle. \return FALSE for an unknown call.
BOOL WINAPI TelsimChangeCallState(DWORD call, DWORD state, DWORD mode, DWORD privilege);
/// The service takes a line away: its calls are gone, its handle is invalid, LINE_CLOSE comes.
BOOL WINAPI TelsimCloseLine(DWORD line);
/// LINE_LINEDEVSTATE for a device: to open lines that asked for it, or, if \p state is LINEDEVSTATE_REINIT, to every
/// application, with device and instance 0 as the interface has it. \return how many are told.
DWORD WINAPI TelsimChangeLineState(DWORD device, DWORD state, DWORD param2, DWORD param3);

/// Somebody calls. Lines opened as owner get the call, then a ring, then the caller's identity (LINE_CALLINFO).
/// \param partyFlags LINECALLPARTYID_ flags; 0: by what is given of number and name.
/// \return the owner's call handle; 0 when no line is open as owner, or a call is there already.
DWORD WINAPI TelsimOfferCall(DWORD device, const char* number, const char* name, DWORD partyFlags);
/// The other side hangs up: DISCONNECTED, and, if the call was never connected, IDLE. \return FALSE for an unknown or
/// idle call.
BOOL WINAPI TelsimHangUp(DWORD call);

/// Copies a text with its terminator. \return the size it needs; \p buffer is untouched when \p size is less.
DWORD WINAPI TelsimGetText(DWORD which, char* buffer, DWORD size);
/// Forgets the calls and misuses listed so far.
void WINAPI TelsimClearTexts(void);
/// \param kind one of TelsimKind.
DWORD WINAPI TelsimGetCount(DWORD kind);
/// The handle at a position, oldest first; 0 behind the last.
DWORD WINAPI TelsimGetHandle(DWORD kind, DWORD index);

#ifdef __cplusplus
}
#endif
