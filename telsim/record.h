/// \file
/// Records of variable size: a fixed part, and behind it what its sizes and offsets name.
#pragma once

#include "rules.h"
#include "tapi_header.h"

#include <optional>
#include <string>
#include <vector>

namespace telsim {

/// A record in the making. The caller's memory is written by Finish alone.
class Record {
public:
    /// \param target the caller's record, its total size set. \param fixedSize of the fixed part.
    /// Throws Refusal when it cannot be written or is too small for the fixed part.
    Record(void* target, DWORD fixedSize);

    /// The fixed part, zero at first.
    template <class RECORD> RECORD& Fixed() { return *reinterpret_cast<RECORD*>(m_fixed.data()); }
    /// Adds a part. \param sizeField offset of the field for its size, behind which is the one for its offset.
    void Append(size_t sizeField, const std::string& bytes) { m_parts.push_back({sizeField, bytes}); }
    /// Adds a text with its terminator.
    void AppendText(size_t sizeField, const std::string& text) { Append(sizeField, text + '\0'); }
    /// Whether all parts find room.
    bool Fits(const std::optional<Rule>& rule) const { return NeededSize(rule) <= m_total; }
    /// Writes the record, or, if there is no room for all, the fixed part with the size that is needed.
    void Finish(const std::optional<Rule>& rule);

private:
    struct Part {
        size_t sizeField;
        std::string bytes;
    };
    static constexpr size_t kLargestFixedPart = 512; // of any version of the interface

    DWORD NeededSize(const std::optional<Rule>& rule) const;
    DWORD& Field(size_t offset) { return *reinterpret_cast<DWORD*>(m_fixed.data() + offset); }

    char* m_target;
    DWORD m_fixedSize;
    DWORD m_total = 0;
    std::vector<char> m_fixed;
    std::vector<Part> m_parts;
};

} // namespace telsim
