#include "bitmap_file.h"

#include <zogbl/status.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>

namespace {

constexpr DWORD kFileHeader = 14, kCoreHeader = 12, kShortHeader = 16, kInfoHeader = 40, kOs2Header = 64;
constexpr DWORD kWithMasks = 52; // from this size on, headers have the masks
constexpr DWORD kHeaders[] = {kCoreHeader, kShortHeader, kInfoHeader, kWithMasks, 56, kOs2Header, 108, 124};
constexpr DWORD kAlphaBitFields = 6; // BI_BITFIELDS with a fourth mask
constexpr DWORD kLastCompression = 13;

/// A number as it stands in a file, lowest byte first.
template <class NUMBER> NUMBER NumberAt(const BYTE* bytes)
{
    NUMBER number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

} // namespace

// Header --------------------------------------------------------------------------------------------------------------

DWORD BitmapFile::Open(const void* bytes, size_t size)
{
    const auto* file = static_cast<const BYTE*>(bytes);
    if (size < kFileHeader + kCoreHeader)
        return ZoErrBadData;
    if (file[0] == 'B' && file[1] == 'A')
        return ERROR_NOT_SUPPORTED; // an array of pictures
    if (file[0] != 'B' || file[1] != 'M')
        return ZoErrBadData;
    const auto pixelsAt = NumberAt<DWORD>(file + 10);
    if (pixelsAt != 0 && pixelsAt <= kFileHeader)
        return ZoErrBadData;
    m_bytes = file + kFileHeader;
    m_size = size - kFileHeader;
    return ReadHeader(pixelsAt != 0 ? pixelsAt - kFileHeader : 0);
}

DWORD BitmapFile::OpenPacked(const void* bytes, size_t size)
{
    m_bytes = static_cast<const BYTE*>(bytes);
    m_size = size;
    return size < kCoreHeader ? ZoErrBadData : ReadHeader(0);
}

/// \param pixelsAt from the header's beginning; 0: behind the colours
DWORD BitmapFile::ReadHeader(DWORD pixelsAt)
{
    m_headerSize = NumberAt<DWORD>(m_bytes);
    if (std::find(std::begin(kHeaders), std::end(kHeaders), m_headerSize) == std::end(kHeaders) ||
        m_headerSize > m_size)
        return ZoErrBadData;
    BITMAPINFOHEADER header = {}; // of a shorter one, the rest is 0
    if (m_headerSize == kCoreHeader) {
        header.biWidth = NumberAt<WORD>(m_bytes + 4);
        header.biHeight = NumberAt<WORD>(m_bytes + 6);
        header.biPlanes = NumberAt<WORD>(m_bytes + 8);
        header.biBitCount = NumberAt<WORD>(m_bytes + 10);
    } else {
        std::memcpy(&header, m_bytes, (std::min)(size_t{m_headerSize}, sizeof header));
    }
    if (header.biWidth <= 0 || header.biHeight == 0 || header.biHeight == LONG_MIN || header.biPlanes != 1)
        return ZoErrBadData;
    m_isTopDown = header.biHeight < 0;
    m_width = header.biWidth;
    m_height = m_isTopDown ? -header.biHeight : header.biHeight;
    m_bits = header.biBitCount;
    DWORD status = ReadCompression(header.biCompression);
    if (status == 0)
        status = ReadColors(header.biClrUsed, pixelsAt);
    return status == 0 ? CheckSize() : status;
}

DWORD BitmapFile::ReadCompression(DWORD compression)
{
    m_colorsAt = m_headerSize;
    m_isRle = compression == BI_RLE8 || compression == BI_RLE4;
    const bool hasMasks = compression == BI_BITFIELDS || compression == kAlphaBitFields;
    const bool isOs2 = m_headerSize == kOs2Header || m_headerSize == kShortHeader;
    if (compression != BI_RGB && !m_isRle && (!hasMasks || isOs2))
        return compression <= kLastCompression ? ERROR_NOT_SUPPORTED : ZoErrBadData;
    if (m_isRle)
        return m_bits == (compression == BI_RLE8 ? 8 : 4) && !m_isTopDown ? 0 : ZoErrBadData;
    if (m_bits == 64)
        return ERROR_NOT_SUPPORTED;
    constexpr WORD kDepths[] = {1, 2, 4, 8, 16, 24, 32};
    if (std::find(std::begin(kDepths), std::end(kDepths), m_bits) == std::end(kDepths) ||
        (hasMasks && m_bits != 16 && m_bits != 32))
        return ZoErrBadData;
    return m_bits == 16 || m_bits == 32 ? ReadMasks(compression) : 0;
}

DWORD BitmapFile::ReadMasks(DWORD compression)
{
    DWORD masks[] = {0x00FF0000, 0x0000FF00, 0x000000FF}; // red, green, blue
    if (m_bits == 16) {
        constexpr DWORD kFive[] = {0x7C00, 0x03E0, 0x001F};
        std::copy(std::begin(kFive), std::end(kFive), masks);
    }
    if (compression != BI_RGB) {
        if (m_headerSize < kWithMasks)
            m_colorsAt += compression == BI_BITFIELDS ? 12 : 16;
        if (m_size < kInfoHeader + sizeof masks || m_size < m_colorsAt)
            return ZoErrBadData;
        std::memcpy(masks, m_bytes + kInfoHeader, sizeof masks);
    }
    const bool isOverlapping = ((masks[0] & masks[1]) | (masks[0] & masks[2]) | (masks[1] & masks[2])) != 0;
    const DWORD all = masks[0] | masks[1] | masks[2];
    if (isOverlapping || all == 0 || (m_bits == 16 && all > MAXWORD))
        return ZoErrBadData;
    for (int i = 0; i < 3; ++i) {
        if (!SetChannel(m_channels[2 - i], masks[i]))
            return ZoErrBadData;
    }
    return 0;
}

/// \return false if the mask has gaps
bool BitmapFile::SetChannel(Channel& channel, DWORD mask)
{
    channel.shift = 0;
    channel.most = mask;
    while (channel.most != 0 && (channel.most & 1) == 0) {
        channel.most >>= 1;
        ++channel.shift;
    }
    if ((channel.most & (channel.most + 1)) != 0)
        return false;
    for (; channel.most > 255; channel.most >>= 1)
        ++channel.shift; // the lower bits cannot be shown
    for (DWORD value = 0; value < std::size(channel.scaled); ++value)
        channel.scaled[value] = channel.most != 0 ? static_cast<BYTE>(value * 255 / channel.most) : BYTE{0};
    return true;
}

DWORD BitmapFile::ReadColors(DWORD used, DWORD pixelsAt)
{
    const size_t entry = m_headerSize == kCoreHeader ? sizeof(RGBTRIPLE) : sizeof(RGBQUAD);
    const DWORD most = m_bits <= 8 ? 1U << m_bits : 0;
    if (used == 0)
        used = most;
    if (pixelsAt != 0 && pixelsAt < m_colorsAt)
        return ZoErrBadData;
    if (pixelsAt != 0)
        used = (std::min)(used, static_cast<DWORD>((pixelsAt - m_colorsAt) / entry));
    else if (used > (m_size - m_colorsAt) / entry)
        return ZoErrBadData;
    m_pixelsAt = pixelsAt != 0 ? pixelsAt : m_colorsAt + used * entry;
    if (m_pixelsAt > m_size)
        return ZoErrBadData;
    m_colorCount = static_cast<int>((std::min)(used, most));
    std::memset(m_colors, 0, sizeof m_colors);
    for (int i = 0; i < m_colorCount; ++i) {
        const BYTE* color = m_bytes + m_colorsAt + static_cast<size_t>(i) * entry;
        m_colors[i] = {color[0], color[1], color[2], 0};
    }
    return 0;
}

DWORD BitmapFile::CheckSize() const
{
    // Each product has room: both sizes are below 2^31.
    if (!m_isRle) {
        const ULONGLONG last = (static_cast<ULONGLONG>(m_width) * m_bits + 7) / 8;
        if (GetPackedRowSize() * static_cast<ULONGLONG>(m_height - 1) + last > m_size - m_pixelsAt)
            return ZoErrBadData;
    }
    if (m_width > kMostPixels || m_height > kMostPixels ||
        static_cast<ULONGLONG>(GetRowSize()) * static_cast<ULONGLONG>(m_height) > kMostBytes)
        return ERROR_NOT_SUPPORTED;
    return !m_isRle || Unpack(nullptr) ? 0 : ZoErrBadData;
}

// Pixels --------------------------------------------------------------------------------------------------------------

size_t BitmapFile::GetRowSize() const
{
    return GetDepth() == 8 ? (static_cast<size_t>(m_width) + 3) / 4 * 4 : static_cast<size_t>(m_width) * 4;
}

ULONGLONG BitmapFile::GetPackedRowSize() const { return (static_cast<ULONGLONG>(m_width) * m_bits + 31) / 32 * 4; }

BYTE* BitmapFile::RowOf(BYTE* pixels, int fromBottom) const
{
    return pixels + static_cast<size_t>(m_height - 1 - fromBottom) * GetRowSize();
}

void BitmapFile::Decode(BYTE* pixels) const
{
    if (m_isRle) {
        Unpack(pixels);
        return;
    }
    const BYTE* source = m_bytes + m_pixelsAt;
    for (int i = 0; i < m_height; ++i, source += GetPackedRowSize())
        DecodeRow(source, RowOf(pixels, m_isTopDown ? m_height - 1 - i : i));
}

void BitmapFile::DecodeRow(const BYTE* source, BYTE* row) const
{
    if (m_bits <= 8) {
        for (int x = 0; x < m_width; ++x) {
            const int at = x * m_bits;
            row[x] = static_cast<BYTE>(source[at / 8] >> (8 - m_bits - at % 8) & ((1 << m_bits) - 1));
        }
        return;
    }
    for (int x = 0; x < m_width; ++x, row += 4, source += m_bits / 8) {
        if (m_bits == 24) {
            std::copy(source, source + 3, row);
            continue;
        }
        const DWORD value = m_bits == 16 ? NumberAt<WORD>(source) : NumberAt<DWORD>(source);
        for (int i = 0; i < 3; ++i)
            row[i] = m_channels[i].scaled[value >> m_channels[i].shift & m_channels[i].most];
    }
}

/// \param pixels null: the bytes are only looked at \return false if they are damaged
bool BitmapFile::Unpack(BYTE* pixels) const
{
    const BYTE* at = m_bytes + m_pixelsAt;
    const BYTE* const end = m_bytes + m_size;
    int x = 0, y = 0; // from the bottom left; x at most the width, y at most the height
    const auto put = [&](int count, auto indexOf) {
        const int shown = (std::min)(count, m_width - x);
        if (pixels != nullptr) {
            BYTE* row = RowOf(pixels, y) + x;
            for (int i = 0; i < shown; ++i)
                row[i] = static_cast<BYTE>(indexOf(i));
        }
        x += shown;
    };
    const auto half = [](BYTE pair, int i) { return i % 2 == 0 ? pair >> 4 : pair & 15; };
    while (end - at >= 2) {
        const BYTE count = at[0], code = at[1];
        at += 2;
        if (count == 0 && code == 0) { // end of the row
            x = 0;
            y = (std::min)(y + 1, m_height);
        } else if (count == 0 && code == 1) { // end of the picture
            return true;
        } else if (y >= m_height) {
            return false;
        } else if (count != 0) {
            put(count, [&](int i) { return m_bits == 8 ? code : half(code, i); });
        } else if (code == 2) { // a jump to the right and up
            if (end - at < 2 || at[0] > m_width - x || at[1] >= m_height - y)
                return false;
            x += at[0];
            y += at[1];
            at += 2;
        } else { // single pixels, an even number of bytes
            const ptrdiff_t bytes = m_bits == 8 ? code : (code + 1) / 2;
            if (end - at < bytes)
                return false;
            put(code, [&](int i) { return m_bits == 8 ? at[i] : half(at[i / 2], i); });
            at += (std::min)(bytes + bytes % 2, end - at);
        }
    }
    return y >= m_height || (y == m_height - 1 && x >= m_width);
}
