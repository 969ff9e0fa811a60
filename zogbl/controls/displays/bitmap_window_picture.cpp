#include "bitmap_window_picture.h"

#include <zogbl/status.h>

#include "controls/drawing/bitmap_dc.h"
#include "controls/drawing/bitmap_file.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

constexpr DWORD kColorBits = 0x00FFFFFF, kMark = 0x01000000; // of a pixel

/// A colour as it stands in a pixel.
DWORD PixelOf(COLORREF color) { return RGB(GetBValue(color), GetGValue(color), GetRValue(color)); }

bool AreEqual(const RGBQUAD& entry, COLORREF color)
{
    return RGB(entry.rgbRed, entry.rgbGreen, entry.rgbBlue) == color;
}

struct DibInfo {
    BITMAPINFOHEADER header;
    RGBQUAD colors[256];
    BITMAPINFO* Get() { return reinterpret_cast<BITMAPINFO*>(this); }
};

DibInfo TopDown(CSize size, WORD depth)
{
    DibInfo info = {};
    info.header.biSize = sizeof info.header;
    info.header.biWidth = size.cx;
    info.header.biHeight = -size.cy;
    info.header.biPlanes = 1;
    info.header.biBitCount = depth;
    return info;
}

} // namespace

BitmapPicture::~BitmapPicture()
{
    ForgetScaled();
    if (m_palette != nullptr)
        ::DeleteObject(m_palette);
    if (m_bitmap != nullptr)
        ::DeleteObject(m_bitmap);
}

bool BitmapPicture::Make(CSize size, WORD depth)
{
    m_size = size;
    m_depth = depth;
    DibInfo info = TopDown(size, depth);
    std::copy(m_colors, m_colors + m_colorCount, info.colors);
    m_bitmap = ::CreateDIBSection(nullptr, info.Get(), DIB_RGB_COLORS, &m_pixels, nullptr, 0);
    return m_bitmap != nullptr;
}

std::unique_ptr<BitmapPicture> BitmapPicture::FromFile(const BitmapFile& file, DWORD& status)
{
    status = ZoErrOutOfMemory;
    std::unique_ptr<BitmapPicture> picture(new (std::nothrow) BitmapPicture);
    if (picture == nullptr)
        return nullptr;
    picture->m_colorCount = file.GetColorCount();
    std::copy(file.GetColors(), file.GetColors() + 256, picture->m_colors);
    if (!picture->Make(CSize(file.GetWidth(), file.GetHeight()), file.GetDepth()))
        return nullptr;
    file.Decode(static_cast<BYTE*>(picture->m_pixels));
    picture->Complete();
    status = 0;
    return picture;
}

std::unique_ptr<BitmapPicture> BitmapPicture::FromBitmap(HBITMAP bitmap, DWORD& status)
{
    BITMAP description = {};
    status = ERROR_INVALID_HANDLE;
    if (::GetObjectType(bitmap) != OBJ_BITMAP || ::GetObjectA(bitmap, sizeof description, &description) == 0)
        return nullptr;
    const CSize size(description.bmWidth, description.bmHeight);
    status = ERROR_NOT_SUPPORTED;
    if (size.cx > BitmapFile::kMostPixels || size.cy > BitmapFile::kMostPixels ||
        static_cast<ULONGLONG>(size.cx) * static_cast<ULONGLONG>(size.cy) * 4 > BitmapFile::kMostBytes)
        return nullptr;
    status = ZoErrOutOfMemory;
    std::unique_ptr<BitmapPicture> picture(new (std::nothrow) BitmapPicture);
    if (picture == nullptr || !picture->Make(size, 32))
        return nullptr;
    DibInfo info = TopDown(size, 32);
    const HDC screen = ::GetDC(nullptr);
    const int rows =
        ::GetDIBits(screen, bitmap, 0, static_cast<UINT>(size.cy), picture->m_pixels, info.Get(), DIB_RGB_COLORS);
    ::ReleaseDC(nullptr, screen);
    if (rows != size.cy) {
        status = ERROR_INVALID_HANDLE; // it is selected somewhere
        return nullptr;
    }
    for (LONG i = 0; i < size.cx * size.cy; ++i)
        *picture->PixelAt(i) &= kColorBits;
    picture->Complete();
    status = 0;
    return picture;
}

void BitmapPicture::Complete()
{
    const BYTE* first = static_cast<const BYTE*>(m_pixels);
    const RGBQUAD color = m_depth == 8 ? m_colors[first[0]] : RGBQUAD{first[0], first[1], first[2], 0};
    m_topLeft = RGB(color.rgbRed, color.rgbGreen, color.rgbBlue);
}

HBITMAP BitmapPicture::GetBitmap(COLORREF transparent, COLORREF shownAs)
{
    if (transparent == CLR_NONE)
        shownAs = CLR_NONE;
    if ((transparent != m_transparent || shownAs != m_shownAs) && ShowColors(transparent, shownAs)) {
        ForgetScaled();
        m_transparent = transparent;
        m_shownAs = shownAs;
    }
    return m_bitmap;
}

void BitmapPicture::ForgetScaled()
{
    if (m_scaled != nullptr)
        ::DeleteObject(std::exchange(m_scaled, nullptr));
}

HBITMAP BitmapPicture::GetScaled(HDC source, CSize size)
{
    if (m_scaled != nullptr && m_scaledSize == size)
        return m_scaled;
    ForgetScaled();
    if (size.cx <= 0 || size.cy <= 0 ||
        static_cast<ULONGLONG>(size.cx) * static_cast<ULONGLONG>(size.cy) * 4 > BitmapFile::kMostBytes)
        return nullptr;
    void* pixels = nullptr;
    DibInfo info = TopDown(size, 32);
    const HBITMAP scaled = ::CreateDIBSection(nullptr, info.Get(), DIB_RGB_COLORS, &pixels, nullptr, 0);
    const BitmapDC dc(nullptr, scaled);
    if (!dc.IsReady()) {
        ::DeleteObject(scaled);
        return nullptr;
    }
    Scale(dc, CRect(CPoint(), size), source, m_size);
    m_scaledSize = size;
    return m_scaled = scaled;
}

void BitmapPicture::Scale(HDC dc, const CRect& place, HDC source, CSize size)
{
    if (::SetStretchBltMode(dc, HALFTONE) == 0) // as on Windows 95
        ::SetStretchBltMode(dc, COLORONCOLOR);
    POINT origin = {place.left, place.top};
    ::LPtoDP(dc, &origin, 1);
    ::SetBrushOrgEx(dc, origin.x % 8, origin.y % 8, nullptr); // where the mode's patterns begin
    ::StretchBlt(dc, place.left, place.top, place.Width(), place.Height(), source, 0, 0, size.cx, size.cy, SRCCOPY);
}

bool BitmapPicture::ShowColors(COLORREF transparent, COLORREF shownAs)
{
    const DWORD shown = PixelOf(shownAs) | kMark;
    if (m_depth == 8) {
        RGBQUAD colors[256];
        const BYTE* as = reinterpret_cast<const BYTE*>(&shown);
        std::transform(m_colors, m_colors + 256, colors, [=](const RGBQUAD& color) {
            return AreEqual(color, transparent) ? RGBQUAD{as[0], as[1], as[2], 0} : color;
        });
        const BitmapDC dc(nullptr, m_bitmap);
        return dc.IsReady() && ::SetDIBColorTable(dc, 0, 256, colors) != 0;
    }
    ::GdiFlush(); // what draws the pixels now
    const DWORD before = PixelOf(m_transparent);
    const DWORD wanted = transparent != CLR_NONE ? PixelOf(transparent) : kMark;
    for (LONG i = 0; i < m_size.cx * m_size.cy; ++i) {
        DWORD& pixel = *PixelAt(i);
        if ((pixel & kMark) != 0)
            pixel = before;
        if (pixel == wanted)
            pixel = shown;
    }
    return true;
}

HPALETTE BitmapPicture::GetPalette(HDC dc)
{
    if (m_palette != nullptr || (::GetDeviceCaps(dc, RASTERCAPS) & RC_PALETTE) == 0)
        return m_palette;
    if (m_depth != 8)
        return m_palette = ::CreateHalftonePalette(dc);
    struct {
        WORD version = 0x300;
        WORD count = 0;
        PALETTEENTRY entries[256];
    } colors;
    colors.count = static_cast<WORD>((std::max)(m_colorCount, 1));
    std::transform(m_colors, m_colors + colors.count, colors.entries, [](const RGBQUAD& color) {
        return PALETTEENTRY{color.rgbRed, color.rgbGreen, color.rgbBlue, 0};
    });
    return m_palette = ::CreatePalette(reinterpret_cast<const LOGPALETTE*>(&colors));
}
