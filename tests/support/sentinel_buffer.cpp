#include "support/sentinel_buffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace zo_test {

namespace {

constexpr char kGuard = '\xA5';

} // namespace

std::vector<BufferCase> BufferCases(size_t required)
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

SentinelBuffer::SentinelBuffer(size_t size) : m_size(size), m_bytes(kGuardSize + size + kGuardSize, kGuard)
{
    std::fill_n(m_bytes.begin() + kGuardSize, size, static_cast<char>(kPattern));
    SetLastError(kLastError);
}

SentinelBuffer::SentinelBuffer(const BufferCase& bufferCase) : SentinelBuffer(bufferCase.size)
{
    m_null = bufferCase.null;
}

bool SentinelBuffer::IsUntouched() const
{
    const auto begin = m_bytes.begin() + kGuardSize;
    return std::all_of(begin, begin + static_cast<std::ptrdiff_t>(m_size),
                       [](char c) { return c == static_cast<char>(kPattern); });
}

std::string SentinelBuffer::Text() const
{
    const auto begin = m_bytes.begin() + kGuardSize;
    const auto end = begin + static_cast<std::ptrdiff_t>(m_size);
    return {begin, std::find(begin, end, '\0')};
}

void SentinelBuffer::ExpectGuardsIntact() const
{
    for (size_t i = 0; i < m_bytes.size(); ++i) {
        const bool inside = i >= kGuardSize && i < kGuardSize + m_size;
        if (!inside && m_bytes[i] != kGuard) {
            ADD_FAILURE() << "byte " << static_cast<std::ptrdiff_t>(i - kGuardSize) << " of a buffer of " << m_size
                          << " bytes was written";
            return;
        }
    }
}

} // namespace zo_test
