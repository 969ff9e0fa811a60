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

#include <cstddef>
#include <string>
#include <vector>

#include <afx.h>

namespace zo_test {

/// One size that a buffer call has to cope with.
struct BufferCase {
    const char* name;
    size_t size;
    bool null; ///< no buffer at all
    bool fits; ///< the answer fits in
};

/// Ample, exact, one short, one byte, zero and null, for an answer of \p required bytes (terminator included).
std::vector<BufferCase> BufferCases(size_t required);

/// A patterned buffer between guard bytes. Making one presets the last error, so that a call which reports its failure
/// through it but forgets to set it is noticed.
class SentinelBuffer {
public:
    static constexpr unsigned char kPattern = 0xCC; ///< what the buffer holds before the call
    static constexpr DWORD kLastError = 0xDEADBEEF; ///< preset last error

    explicit SentinelBuffer(size_t size);
    explicit SentinelBuffer(const BufferCase& bufferCase);

    /// Null for the null case.
    char* Data() { return m_null ? nullptr : m_bytes.data() + kGuardSize; }
    size_t Size() const { return m_size; }

    bool IsUntouched() const;
    /// The bytes from the beginning, up to a terminator if there is one.
    std::string Text() const;
    /// Fails the test if a byte before or behind the buffer has changed, or, in the null case, any.
    void ExpectGuardsIntact() const;

private:
    static constexpr size_t kGuardSize = 64;

    size_t m_size;
    bool m_null = false;
    std::vector<char> m_bytes;
};

} // namespace zo_test
