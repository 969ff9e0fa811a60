/// \file
/// Controls the simulated TAPI32.DLL from a test.
///
/// The library exports these functions beside the line functions, by their plain names. A test gets them by
/// GetProcAddress from the loaded TAPI32.DLL; <telsim/client.h> does that. All functions, these and the line functions,
/// are for the one thread that calls lineInitialize. Events are delivered on it while it takes messages from its queue.
///
/// A closed handle is never given again, so that a late use of it is noticed.
#pragma once

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

/// What a rule does with a call. The call's arguments are checked before: a wrong call is refused and recorded as
/// misuse, with or without a rule. "Requests" are the functions with a reply: lineMakeCall and lineDrop.
enum TelsimAction {
    TELSIM_FAIL = 1,    ///< returns \a value; nothing is done
    TELSIM_FAIL_REPLY,  ///< accepted, but the reply has \a value; nothing is done. Requests only
    TELSIM_PRETEND,     ///< tells success; nothing is done or written
    TELSIM_HOLD_REPLY,  ///< the reply comes only after TelsimReleaseReplies. Requests only
    TELSIM_LATE_REPLY,  ///< the reply comes after \a value milliseconds. Requests only
    TELSIM_EARLY_REPLY, ///< the callback gets the reply before the call returns. Requests only

    // Only for functions that fill a record of variable size.
    TELSIM_NEED_MORE,    ///< the record needs \a value bytes more than usual
    TELSIM_NEED_ENDLESS, ///< it needs \a value bytes more than it has, however many those are
    TELSIM_USED_SIZE,    ///< dwUsedSize is \a value; the used bytes behind it become 0xDD
    TELSIM_NEEDED_SIZE,  ///< dwNeededSize is \a value, although the record is complete
    TELSIM_BAD_OFFSETS,  ///< every offset is \a value: a small one overlaps the fixed part, others lead outside
    TELSIM_BAD_SIZES,    ///< the size of every part is \a value
    TELSIM_LAST_ACTION = TELSIM_BAD_SIZES
};

/// Each list of TelsimText keeps at most this many entries; the oldest are dropped.
#define TELSIM_MOST_ENTRIES 10000

/// The lists that TelsimGetText returns, one line for each entry.
enum TelsimText {
    TELSIM_CALLS = 1, ///< calls of line functions, in order: "lineDrop(call=0x300001, info=null, size=0) = 3"
    TELSIM_MISUSES    ///< wrong calls and mistakes in telsim.ini: "lineDrop: call 0x300001 was deallocated"
};

/// The objects of TelsimGetCount and TelsimGetHandle.
enum TelsimKind {
    TELSIM_APPS = 1,     ///< applications between lineInitialize and lineShutdown
    TELSIM_LINES,        ///< open lines
    TELSIM_CALL_HANDLES, ///< calls that are not deallocated
    TELSIM_PORTS,        ///< ports that the simulation has open. Count only
    TELSIM_HELD_REPLIES, ///< replies that wait for TelsimReleaseReplies. Count only
    TELSIM_EVENTS,       ///< events on their way, with late replies. Count only
    TELSIM_RULES_FIRED   ///< calls to which a rule was applied. Count only
};

/// Called at the beginning of each line function, before its arguments are checked. It may call anything: post events,
/// close lines, set rules (which hold from the next call on). \param function the name, such as "lineDrop"
typedef void(WINAPI* TelsimObserver)(const char* function, void* context);

/// Puts everything back as if the library had just been loaded: there are no applications, lines, calls, rules,
/// observer, list entries and events, and telsim.ini is read anew.
void WINAPI TelsimReset(void);

/// Sets a rule for calls of one function. The first rule that fits a call holds for it. Rules stay until TelsimReset or
/// TelsimClearRules.
/// \param function such as "lineOpen"
/// \param nth 1 for the next call
/// \param onward FALSE: for that call only; else for all calls from it on
/// \param action one of TelsimAction
/// \return FALSE: the function is unknown, the action is unknown or not for this function, or \p nth is 0
BOOL WINAPI TelsimSetRule(const char* function, DWORD nth, BOOL onward, DWORD action, DWORD value);
void WINAPI TelsimClearRules(void);
/// Sends the replies held back, in their order. \return their number
DWORD WINAPI TelsimReleaseReplies(void);
/// Sets the observer; null: none.
void WINAPI TelsimSetObserver(TelsimObserver observer, void* context);

/// Sets one key of a line as telsim.ini would (docs/telsim.md). \return FALSE: the device, key or value is unknown
BOOL WINAPI TelsimConfigureLine(DWORD device, const char* key, const char* value);
/// Sets the number of lines. New lines have no port. Applications are not told; TelsimAddLine tells them.
void WINAPI TelsimSetLineCount(DWORD count);
/// Adds a line at the end, without a port. Every application gets LINE_CREATE. \return its device number
DWORD WINAPI TelsimAddLine(void);

/// Delivers any event to every application, as it is given. The simulation itself does not change.
/// \param instance the callback instance; 0: the line's own, if \p device is an open line or a call
/// \return the number of applications
DWORD WINAPI TelsimPostEvent(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR param2,
                             DWORD_PTR param3);
/// Changes the state of a call and tells all that have a handle of it.
/// \param mode depends on the state, such as LINEDISCONNECTMODE_BUSY
/// \param privilege 0, or the new privilege of this handle
/// \return FALSE: the call is unknown
BOOL WINAPI TelsimChangeCallState(DWORD call, DWORD state, DWORD mode, DWORD privilege);
/// The service takes a line away: its calls are gone, its handle is invalid, and its application gets LINE_CLOSE.
/// \return FALSE: the line is unknown
BOOL WINAPI TelsimCloseLine(DWORD line);
/// Sends LINE_LINEDEVSTATE for a device to the open lines that asked for it. If \p state is LINEDEVSTATE_REINIT, every
/// application gets it, with device and instance 0, as the interface prescribes. \return how many get it
DWORD WINAPI TelsimChangeLineState(DWORD device, DWORD state, DWORD param2, DWORD param3);

/// Offers a call from outside. The first line opened as owner gets the call as its owner, lines opened as monitor watch
/// it. Then come a ring and the caller's identity (LINE_CALLINFO).
/// \param number, name may be null
/// \param partyFlags LINECALLPARTYID_ flags; 0: they depend on whether number and name are given
/// \return the owner's call handle; 0: there is no such device, no line is open as owner, or a call is there already
DWORD WINAPI TelsimOfferCall(DWORD device, const char* number, const char* name, DWORD partyFlags);
/// The other side hangs up: the call becomes DISCONNECTED and, if it was never connected, IDLE. A call that is already
/// DISCONNECTED stays so. \return FALSE: the call is unknown or idle
BOOL WINAPI TelsimHangUp(DWORD call);

/// Copies a text with its terminator. \param which one of TelsimText
/// \return the size that it needs; if \p size is less, or \p buffer null, nothing is copied
DWORD WINAPI TelsimGetText(DWORD which, char* buffer, DWORD size);
/// Removes all entries from both lists.
void WINAPI TelsimClearTexts(void);
/// \param kind one of TelsimKind
DWORD WINAPI TelsimGetCount(DWORD kind);
/// The handle at a position, oldest first; 0: the position is behind the last.
DWORD WINAPI TelsimGetHandle(DWORD kind, DWORD index);

#ifdef __cplusplus
}
#endif
