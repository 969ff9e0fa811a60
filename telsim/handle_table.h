/// \file
/// Handles that are never given twice.
#pragma once

#include "refusal.h"
#include "text.h"

#include <map>
#include <vector>

namespace telsim {

/// Things by handle, oldest first. What stands in the table stays where it is until it is closed.
template <class THING> class HandleTable {
public:
    /// \param base handles are this and a running number. \param kind "call". \param ending "deallocated".
    HandleTable(DWORD base, const char* kind, const char* ending) : m_base(base), m_kind(kind), m_ending(ending) {}

    /// \return its handle.
    DWORD Add(THING thing)
    {
        m_things.emplace(m_base + ++m_given, std::move(thing));
        return m_base + m_given;
    }
    /// Null for a handle that is not, or no longer, in use.
    THING* Find(DWORD handle)
    {
        const auto found = m_things.find(handle);
        return found != m_things.end() ? &found->second : nullptr;
    }
    /// Throws Refusal with \p code for such a handle.
    THING& Require(DWORD handle, DWORD code)
    {
        THING* thing = Find(handle);
        if (thing == nullptr)
            throw Refusal(code, handle > m_base && handle <= m_base + m_given
                                    ? Format("%s %#lx was %s", m_kind, handle, m_ending)
                                    : Format("%s %#lx was never given", m_kind, handle));
        return *thing;
    }
    void Remove(DWORD handle) { m_things.erase(handle); }
    void Clear() { m_things.clear(); }
    size_t Count() const { return m_things.size(); }
    std::vector<DWORD> Handles() const
    {
        std::vector<DWORD> handles;
        for (const auto& entry : m_things)
            handles.push_back(entry.first);
        return handles;
    }

private:
    DWORD m_base;
    DWORD m_given = 0;
    const char* m_kind;
    const char* m_ending;
    std::map<DWORD, THING> m_things;
};

} // namespace telsim
