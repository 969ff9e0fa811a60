/// \file
/// What the control functions ask for: calls that go another way than usual.
#pragma once

#include <telsim/control.h>

#include <optional>
#include <string>
#include <vector>

namespace telsim {

/// What one call is to do instead of what it would.
struct Rule {
    TelsimAction action;
    DWORD value;

    bool ChangesRecord() const { return action >= TELSIM_NEED_MORE; }
};

class RuleBook {
public:
    void Add(const std::string& function, DWORD nth, bool onward, const Rule& rule);
    /// Counts a call. \return the rule that holds for it.
    std::optional<Rule> Take(const std::string& function);
    void Clear() { m_entries.clear(); }
    DWORD Fired() const { return m_fired; }

private:
    struct Entry {
        std::string function;
        DWORD callsBefore; // calls to let pass
        bool onward;
        bool used;
        Rule rule;
    };

    std::vector<Entry> m_entries;
    DWORD m_fired = 0;
};

} // namespace telsim
