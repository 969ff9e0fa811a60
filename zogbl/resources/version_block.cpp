#include "version_block.h"

#include <winver.h>

#include <cstring>

namespace {

constexpr int kRecordDepth = 3; // block, "StringFileInfo", translation, text

/// A record is: its length, the length of its value, the value's type (1: text), its name, the value, and the records
/// in it. Lengths are in bytes, that of a text in characters. Name, value and records begin at multiples of 4. 16-bit
/// modules, and all modules on Windows 95, have no type and no wide characters.
class VersionRecords {
public:
    VersionRecords(void* block, DWORD size) : m_block(static_cast<BYTE*>(block)), m_size(size) {}

    bool Mend()
    {
        constexpr char kNarrow[] = "VS_VERSION_INFO";
        constexpr WCHAR kWide[] = L"VS_VERSION_INFO";
        m_isWide = m_size >= 6 + sizeof kWide && std::memcmp(m_block + 6, kWide, sizeof kWide) == 0;
        const bool isKnown =
            m_isWide ? Number(4) <= 1
                     : m_size >= 4 + sizeof kNarrow && std::memcmp(m_block + 4, kNarrow, sizeof kNarrow) == 0;
        return isKnown && MendRecord(0, m_size, 0);
    }

private:
    WORD Number(DWORD at) const
    {
        WORD number;
        std::memcpy(&number, m_block + at, sizeof number);
        return number;
    }
    static DWORD Align(DWORD at) { return (at + 3) & ~DWORD{3}; }

    /// The place behind a name that begins at \p at; beyond \p end when it is not terminated.
    DWORD EndOfName(DWORD at, DWORD end) const
    {
        const DWORD step = m_isWide ? sizeof(WCHAR) : 1;
        for (; at + step <= end; at += step) {
            if (m_block[at] == 0 && m_block[at + step - 1] == 0)
                return at + step;
        }
        return end + 1;
    }

    /// \param end of the record or block that it stands in
    bool MendRecord(DWORD begin, DWORD end, int depth)
    {
        const DWORD header = m_isWide ? 6 : 4;
        if (end - begin < header || Number(begin) > end - begin)
            return false;
        end = begin + Number(begin);
        const DWORD behindName = EndOfName(begin + header, end);
        if (behindName > end) // not even its head has room, if it is that short
            return false;
        DWORD at = Align(behindName);
        if (const DWORD length = Number(begin + 2)) {
            const bool isText = m_isWide && Number(begin + 4) == 1;
            const DWORD unit = isText ? sizeof(WCHAR) : 1;
            const DWORD room = at < end ? (end - at) / unit : 0;
            if (length > room && !isText)
                return false;
            const auto fits = static_cast<WORD>(length < room ? length : room); // some tools count bytes
            std::memcpy(m_block + begin + 2, &fits, sizeof fits);
            at = Align(at + fits * unit);
        }
        for (; depth < kRecordDepth && at < end; at = Align(at + Number(at))) {
            if (!MendRecord(at, end, depth + 1))
                return false;
        }
        return true;
    }

    BYTE* m_block;
    DWORD m_size;
    bool m_isWide = false;
};

} // namespace

BOOL MendVersionBlock(void* block, DWORD dataSize) { return VersionRecords(block, dataSize).Mend(); }

BOOL QueryVersionBlock(const void* block, DWORD dataSize, LPCSTR path, const void*& value, UINT& length)
{
    void* found = nullptr;
    length = 0;
    if (!VerQueryValueA(const_cast<void*>(block), const_cast<LPSTR>(path), &found, &length) || found == nullptr)
        return FALSE;
    const auto begin = reinterpret_cast<UINT_PTR>(block);
    const auto at = reinterpret_cast<UINT_PTR>(found);
    const UINT_PTR end = begin + VersionBlockSize(dataSize);
    value = found;
    return length != 0 && at >= begin && at <= end && length <= end - at;
}
