#include "rules.h"

namespace telsim {

void RuleBook::Add(const std::string& function, DWORD nth, bool onward, const Rule& rule)
{
    m_entries.push_back(Entry{function, nth - 1, onward, false, rule});
}

std::optional<Rule> RuleBook::Take(const std::string& function)
{
    std::optional<Rule> taken;
    // Every entry counts the call, also those behind the one that holds.
    for (Entry& entry : m_entries) {
        if (entry.function != function)
            continue;
        if (entry.callsBefore != 0) {
            --entry.callsBefore;
        } else if (entry.onward || !entry.used) {
            entry.used = true;
            if (!taken)
                taken = entry.rule;
        }
    }
    if (taken)
        ++m_fired;
    return taken;
}

} // namespace telsim
