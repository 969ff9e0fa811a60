/// \file
/// What all line functions have in common: they are listed, checked, and go the way that a rule wants.
#pragma once

#include "record.h"
#include "refusal.h"
#include "service.h"
#include "text.h"

#include <memory>
#include <new>
#include <optional>
#include <string>

namespace telsim {

/// One call of a line function.
class Invocation {
public:
    explicit Invocation(const char* function) : m_service(TheService()), m_function(function) {}

    /// Comes first: lists the call, takes the rule for it, and tells the observer.
    /// \param arguments as the list of calls shows them.
    void Begin(const std::string& arguments);

    // Checks. They throw Refusal.

    App& RequireApp(HLINEAPP handle) { return m_service.apps.Require(handle, LINEERR_INVALAPPHANDLE); }
    Line& RequireLine(HLINE handle) { return m_service.lines.Require(handle, LINEERR_INVALLINEHANDLE); }
    CallHandle& RequireCall(HCALL handle) { return m_service.calls.Require(handle, LINEERR_INVALCALLHANDLE); }
    /// \return its configuration.
    LineConfiguration& RequireDevice(DWORD device);
    /// The version negotiated for the device, and no extension.
    void RequireVersion(const App& app, DWORD device, DWORD version, DWORD extensionVersion);
    void RequireWritable(void* memory, size_t size, const char* what);
    void RequireReadable(const void* memory, size_t size, const char* what);
    void RequireText(const char* text, const char* what);
    void Require(bool condition, DWORD code, const std::string& what);

    // Ends. Unless a rule wants it otherwise, they do what was asked for.

    /// \param effect returns the result.
    template <class EFFECT> LONG Perform(EFFECT effect)
    {
        if (const std::optional<LONG> overruled = Overruled())
            return *overruled;
        return effect();
    }
    /// Fills the caller's record.
    LONG Answer(Record& record)
    {
        return Perform([&] {
            record.Finish(m_rule);
            return 0L;
        });
    }
    /// Accepts a request for a line, to be completed when its reply is due.
    LONG Request(HLINE line, std::function<LONG()> complete);

    const std::optional<Rule>& ActiveRule() const { return m_rule; }
    void End(LONG result);
    void Refused(const Refusal& refusal) { m_service.AddMisuse(std::string(m_function) + ": " + refusal.text); }

private:
    /// The result that a rule demands.
    std::optional<LONG> Overruled() const;

    Service& m_service;
    const char* m_function;
    std::optional<Rule> m_rule;
    std::shared_ptr<std::string> m_entry; // in the list of calls
};

/// Runs a line function. Nothing is thrown to the caller.
template <class BODY> LONG Invoke(const char* function, BODY body)
{
    try {
        Invocation call(function);
        LONG result = 0;
        try {
            result = body(call);
        } catch (const Refusal& refusal) {
            call.Refused(refusal);
            result = refusal.code;
        }
        call.End(result);
        return result;
    } catch (...) {
        OutputDebugStringA("telsim: out of memory\n");
        return static_cast<LONG>(LINEERR_NOMEM);
    }
}

} // namespace telsim
