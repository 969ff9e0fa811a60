/// \file
/// A buffer that notices what a call wrote, and where.
///
///     for (const zo_test::BufferCase& buffer : zo_test::BufferCases(required)) {
///         SCOPED_TRACE(buffer.name);
///         zo_test::SentinelBuffer out(buffer);
///         const DWORD written = Call(out.Data(), out.Size());
///         out.ExpectGuardsIntact();
///         ...
///     }
#pragma once

#include <gtest/gtest.h>

#include <afx.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace zo_test {

/// One size that a buffer call has to cope with.
struct BufferCase {
    const char* name;
    size_t size;
    bool null; ///< no buffer at all
    bool fits; ///< the answer fits in
};

/// Ample, exact, one short, one byte, zero and null, for an answer of \p required bytes (terminator included).
inline std::vector<BufferCase> BufferCases(size_t required)
{
    std::vector<BufferCase> cases = {{"ample", required + 100, false, true}, {"exact", required, false, true}};
    if (required > 1)
        cases.push_back({"one short", required - 1, false, false});
    if (required > 2)
        cases.push_back({"one byte", 1, false, false});
    cases.push_back({"zero", 0, false, required == 0});
    cases.push_back({"null", 0, true, false});
    return cases;
}

/// A patterned buffer between guard bytes. Making one presets the last error, so that a call which reports its failure
/// through it but forgets to set it is noticed.
class SentinelBuffer {
public:
    explicit SentinelBuffer(size_t size) : m_size(size), m_bytes(kGuardSize + size + kGuardSize, kPattern)
    {
        SetLastError(0xDEADBEEF);
    }
    explicit SentinelBuffer(const BufferCase& bufferCase) : SentinelBuffer(bufferCase.size)
    {
        m_null = bufferCase.null;
    }

    /// Null for the null case.
    char* Data() { return m_null ? nullptr : m_bytes.data() + kGuardSize; }
    size_t Size() const { return m_size; }

    bool IsUntouched() const { return IsPattern(kGuardSize, m_size); }
    /// The bytes from the beginning, up to a terminator if there is one.
    std::string Text() const
    {
        const std::string text(m_bytes.begin() + kGuardSize, m_bytes.end() - kGuardSize);
        return text.substr(0, text.find('\0'));
    }
    /// Fails the test if a byte before or behind the buffer has changed, or, in the null case, any.
    void ExpectGuardsIntact() const
    {
        EXPECT_TRUE(IsPattern(0, kGuardSize)) << "written before a buffer of " << m_size << " bytes";
        EXPECT_TRUE(IsPattern(kGuardSize + m_size, kGuardSize)) << "written behind a buffer of " << m_size << " bytes";
    }

private:
    static constexpr char kPattern = '\xCC';
    static constexpr std::ptrdiff_t kGuardSize = 64;

    bool IsPattern(size_t at, size_t count) const
    {
        return std::all_of(m_bytes.begin() + at, m_bytes.begin() + at + count, [](char c) { return c == kPattern; });
    }

    size_t m_size;
    bool m_null = false;
    std::vector<char> m_bytes;
};

} // namespace zo_test
