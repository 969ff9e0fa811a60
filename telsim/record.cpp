#include "record.h"

#include "refusal.h"
#include "text.h"

#include <algorithm>
#include <cstring>

namespace telsim {

namespace {

// The first fields of every record.
constexpr size_t kTotalSize = 0;
constexpr size_t kNeededSize = 4;
constexpr size_t kUsedSize = 8;

DWORD Aligned(size_t size) { return static_cast<DWORD>((size + 3) & ~static_cast<size_t>(3)); }

} // namespace

Record::Record(void* target, DWORD fixedSize)
    : m_target(static_cast<char*>(target)), m_fixedSize(fixedSize), m_fixed(kLargestFixedPart)
{
    if (IsBadWritePtr(target, sizeof m_total))
        throw Refusal(LINEERR_INVALPOINTER, "the record cannot be written");
    std::memcpy(&m_total, target, sizeof m_total);
    if (m_total < fixedSize)
        throw Refusal(LINEERR_STRUCTURETOOSMALL,
                      Format("dwTotalSize is %lu, the fixed part alone has %lu bytes", m_total, fixedSize));
    if (IsBadWritePtr(target, m_total))
        throw Refusal(LINEERR_INVALPOINTER, Format("dwTotalSize is %lu, but the memory ends before that", m_total));
}

DWORD Record::NeededSize(const std::optional<Rule>& rule) const
{
    DWORD needed = m_fixedSize;
    for (const Part& part : m_parts)
        needed += Aligned(part.bytes.size());
    if (rule && rule->action == TELSIM_NEED_MORE)
        needed += rule->value;
    else if (rule && rule->action == TELSIM_NEED_ENDLESS)
        needed = m_total + rule->value;
    return needed;
}

void Record::Finish(const std::optional<Rule>& rule)
{
    const DWORD needed = NeededSize(rule);
    DWORD used = m_fixedSize;
    Field(kTotalSize) = m_total;
    Field(kNeededSize) = needed;
    if (needed <= m_total) {
        for (const Part& part : m_parts) {
            std::memcpy(m_target + used, part.bytes.data(), part.bytes.size());
            const auto size = static_cast<DWORD>(part.bytes.size());
            Field(part.sizeField) = rule && rule->action == TELSIM_BAD_SIZES ? rule->value : size;
            Field(part.sizeField + 4) = rule && rule->action == TELSIM_BAD_OFFSETS ? rule->value : used;
            used += Aligned(size);
        }
    }
    Field(kUsedSize) = used;
    if (rule && rule->action == TELSIM_NEEDED_SIZE)
        Field(kNeededSize) = rule->value;
    if (rule && rule->action == TELSIM_USED_SIZE)
        Field(kUsedSize) = rule->value;
    std::memcpy(m_target, m_fixed.data(), m_fixedSize);
    if (rule && rule->action == TELSIM_USED_SIZE && rule->value < used) {
        // The three size fields themselves stay.
        const DWORD begin = std::max<DWORD>(rule->value, kUsedSize + sizeof(DWORD));
        std::memset(m_target + begin, 0xDD, used > begin ? used - begin : 0);
    }
}

} // namespace telsim
