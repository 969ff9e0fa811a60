#include <zogbl/bitmap_window.h>

#include <zogbl/effects.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>
#include <zogbl/status.h>

#include "bitmap_window_picture.h"
#include "controls/drawing/bitmap_dc.h"
#include "controls/drawing/bitmap_file.h"
#include "controls/drawing/item_painting.h"
#include "controls/drawing/plain_layout.h"
#include "ground/system_handle.h"

#include <algorithm>
#include <new>
#include <utility>

#include <oleacc.h>

IMPLEMENT_DYNAMIC(CZoBitmapWnd, CZoControl)

namespace {

constexpr DWORD kMostFileBytes = 300 * 1024 * 1024; // no picture that is shown is larger
constexpr int kLeastBlock = 128;                    // pixels, of several small tiles that are drawn at once

int RoundedUp(int number, int unit) { return (number + unit - 1) / unit * unit; }

/// A bitmap of whole tiles, at least kLeastBlock across and down if the area is so large. A tile of a few pixels would
/// have to be drawn a million times.
class TileBlock {
public:
    TileBlock(HDC like, HDC source, CSize tile, CSize area)
        : m_size(RoundedUp((std::min)(kLeastBlock, static_cast<int>(area.cx)), tile.cx),
                 RoundedUp((std::min)(kLeastBlock, static_cast<int>(area.cy)), tile.cy)),
          m_bitmap(m_size != tile ? ::CreateCompatibleBitmap(like, m_size.cx, m_size.cy) : nullptr),
          m_dc(nullptr, m_bitmap)
    {
        if (!m_dc.IsReady())
            return;
        ::BitBlt(m_dc, 0, 0, tile.cx, tile.cy, source, 0, 0, SRCCOPY);
        for (int done = tile.cx; done < m_size.cx; done *= 2)
            ::BitBlt(m_dc, done, 0, done, tile.cy, m_dc, 0, 0, SRCCOPY);
        for (int done = tile.cy; done < m_size.cy; done *= 2)
            ::BitBlt(m_dc, 0, done, m_size.cx, done, m_dc, 0, 0, SRCCOPY);
    }
    TileBlock(const TileBlock&) = delete;
    TileBlock& operator=(const TileBlock&) = delete;

    bool IsReady() const { return m_dc.IsReady(); }
    HDC GetDC() const { return m_dc; }
    CSize GetSize() const { return m_size; }

private:
    struct Bitmap {
        ~Bitmap() { ::DeleteObject(handle); }
        operator HBITMAP() const { return handle; }
        HBITMAP handle;
    };

    CSize m_size;
    Bitmap m_bitmap;
    BitmapDC m_dc;
};

/// \param origin where a tile begins
void DrawTiles(HDC dc, HDC source, CSize tile, CPoint origin, const CRect& area)
{
    const TileBlock block(dc, source, tile, area.Size());
    const HDC from = block.IsReady() ? block.GetDC() : source;
    const CSize step = block.IsReady() ? block.GetSize() : tile;
    const CPoint first(origin.x + (area.left - origin.x) / step.cx * step.cx,
                       origin.y + (area.top - origin.y) / step.cy * step.cy);
    for (int top = first.y; top < area.bottom; top += step.cy) {
        for (int left = first.x; left < area.right; left += step.cx)
            ::BitBlt(dc, left, top, step.cx, step.cy, from, 0, 0, SRCCOPY);
    }
}

} // namespace

CZoBitmapWnd::CZoBitmapWnd() = default;

CZoBitmapWnd::~CZoBitmapWnd()
{
    DestroyWindow(); // which may draw the picture once more
    delete m_pPicture;
}

// The picture ---------------------------------------------------------------------------------------------------------

DWORD CZoBitmapWnd::LoadFile(LPCSTR path)
{
    if (path == nullptr)
        return ERROR_INVALID_PARAMETER;
    const SystemHandle file(
        ::CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file.IsOpen())
        return CZoGlobalError::GetError();
    DWORD high = 0;
    const DWORD size = ::GetFileSize(file, &high);
    if (size == INVALID_FILE_SIZE && ::GetLastError() != ERROR_SUCCESS)
        return CZoGlobalError::GetError();
    if (high != 0 || size > kMostFileBytes)
        return ERROR_NOT_SUPPORTED;
    const std::unique_ptr<BYTE[]> bytes(new (std::nothrow) BYTE[size]);
    DWORD read = 0;
    if (bytes == nullptr)
        return ZoErrOutOfMemory;
    if (!::ReadFile(file, bytes.get(), size, &read, nullptr))
        return CZoGlobalError::GetError();
    return LoadMemory(bytes.get(), read);
}

DWORD CZoBitmapWnd::LoadMemory(const void* bytes, size_t size)
{
    if (bytes == nullptr)
        return ERROR_INVALID_PARAMETER;
    BitmapFile file;
    return Show(file, file.Open(bytes, size));
}

DWORD CZoBitmapWnd::LoadResource(LPCSTR name)
{
    DWORD size = 0;
    const void* bytes = ZoGblLockResource(name, RT_BITMAP, &size);
    if (bytes == nullptr)
        return ZoErrResourceNotFound;
    BitmapFile file;
    return Show(file, file.OpenPacked(bytes, size));
}

DWORD CZoBitmapWnd::SetBitmap(HBITMAP bitmap)
{
    DWORD status = 0;
    if (auto picture = BitmapPicture::FromBitmap(bitmap, status))
        Take(picture.release());
    return status;
}

/// \param status of the opening
DWORD CZoBitmapWnd::Show(const BitmapFile& file, DWORD status)
{
    if (status != 0)
        return status;
    if (auto picture = BitmapPicture::FromFile(file, status))
        Take(picture.release());
    return status;
}

void CZoBitmapWnd::Clear()
{
    if (HasPicture())
        Take(nullptr);
}

void CZoBitmapWnd::Take(BitmapPicture* picture)
{
    UndoDrag();
    const bool before = IsZoomable();
    delete std::exchange(m_pPicture, picture);
    m_scroll = CPoint();
    if (m_hWnd == nullptr)
        return;
    RealizeColors(FALSE);
    Relayout();
    RaiseEvent(EVENT_OBJECT_DESCRIPTIONCHANGE);
    TellZoom(before);
}

CSize CZoBitmapWnd::GetPictureSize() const { return HasPicture() ? m_pPicture->GetSize() : CSize(); }

// Looks ---------------------------------------------------------------------------------------------------------------

void CZoBitmapWnd::SetPlacing(Placing placing)
{
    UndoDrag();
    const bool before = IsZoomable();
    m_placing = placing;
    m_scroll = CPoint();
    if (m_hWnd != nullptr)
        Relayout();
    TellZoom(before);
}

/// What cannot be zoomed has no value.
void CZoBitmapWnd::TellZoom(bool wasZoomable) const
{
    if (m_hWnd != nullptr && wasZoomable != IsZoomable())
        RaiseEvent(EVENT_OBJECT_VALUECHANGE);
}

void CZoBitmapWnd::SetTransparentColor(COLORREF color)
{
    m_crTransparent = color;
    if (m_hWnd != nullptr)
        Invalidate(FALSE);
}

void CZoBitmapWnd::SetBackColor(COLORREF color)
{
    m_crBack = color;
    if (m_hWnd != nullptr)
        Invalidate(FALSE);
}

COLORREF CZoBitmapWnd::GetShownBackColor() const
{
    return m_crBack == CLR_DEFAULT ? ::GetSysColor(COLOR_3DFACE) : m_crBack;
}

/// Where all of the picture is, also the part that is not seen.
CRect CZoBitmapWnd::GetPlace() const
{
    const CSize area = GetClientArea().Size();
    CSize size = area;
    if (m_placing == Placing::kTopLeft || m_placing == Placing::kCentered) {
        size = GetShownSize();
    } else if (m_placing == Placing::kProportional) {
        const CSize own = m_pPicture->GetSize();
        if (own.cx * area.cy > own.cy * area.cx) // below 2^31: neither is above 32,767
            size.cy = (std::max)(::MulDiv(own.cy, area.cx, own.cx), 1);
        else
            size.cx = (std::max)(::MulDiv(own.cx, area.cy, own.cy), 1);
    }
    const bool isCentered = m_placing == Placing::kCentered || m_placing == Placing::kProportional;
    const CSize rest = isCentered ? area - size : CSize();
    return CRect(CPoint((std::max)(rest.cx / 2, 0L) - m_scroll.x, (std::max)(rest.cy / 2, 0L) - m_scroll.y), size);
}

void CZoBitmapWnd::OnDraw(CDC* dc, const CRect& dirty)
{
    const COLORREF back = GetShownBackColor();
    CRect seen;
    bool isDrawn = false;
    if (HasPicture()) {
        const COLORREF transparent = m_crTransparent == CLR_DEFAULT ? m_pPicture->GetTopLeftColor() : m_crTransparent;
        const BitmapDC source(nullptr, m_pPicture->GetBitmap(transparent, back));
        const bool isTiled = m_placing == Placing::kTiled;
        isDrawn = source.IsReady() && seen.IntersectRect(isTiled ? dirty : GetPlace(), &dirty);
        if (isDrawn && seen != dirty)
            dc->FillSolidRect(dirty, back);
        if (isDrawn)
            DrawPicture(dc, source, seen);
    }
    if (!isDrawn)
        dc->FillSolidRect(dirty, back);
    if (IsZoomable() && IsFocusShown()) {
        const SelectedColors colors(*dc, {::GetSysColor(COLOR_WINDOWTEXT), ::GetSysColor(COLOR_WINDOW)});
        ZoDrawFocus(*dc, GetClientArea());
    }
}

/// \param seen the part of the picture's place that is to be drawn
void CZoBitmapWnd::DrawPicture(CDC* dc, HDC source, CRect seen) const
{
    const CSize size = m_pPicture->GetSize();
    CRect place = GetPlace();
    const PlainLayout layout(*dc, {&seen, &place}); // the picture is never mirrored
    const int saved = dc->SaveDC();
    if (saved != 0) // without it, what is drawn beside falls outside of the window or of its buffer
        dc->IntersectClipRect(&seen);
    if (const HPALETTE palette = m_pPicture->GetPalette(*dc)) {
        ::SelectPalette(*dc, palette, TRUE); // a drawing does not change the system's colours
        dc->RealizePalette();
    }
    const CPoint from(seen.left - place.left, seen.top - place.top);
    if (m_placing == Placing::kTiled) {
        DrawTiles(*dc, source, size, place.TopLeft(), seen);
    } else if (place.Size() == size) {
        ::BitBlt(*dc, seen.left, seen.top, seen.Width(), seen.Height(), source, from.x, from.y, SRCCOPY);
    } else if (place.Width() % size.cx == 0 && place.Height() % size.cy == 0) {
        // Whole pixels, and those that are seen alone: all of them might be a million across.
        const CSize scale(place.Width() / size.cx, place.Height() / size.cy);
        const CRect part(from.x / scale.cx, from.y / scale.cy, (from.x + seen.Width() - 1) / scale.cx + 1,
                         (from.y + seen.Height() - 1) / scale.cy + 1);
        dc->SetStretchBltMode(COLORONCOLOR);
        ::StretchBlt(*dc, place.left + part.left * scale.cx, place.top + part.top * scale.cy, part.Width() * scale.cx,
                     part.Height() * scale.cy, source, part.left, part.top, part.Width(), part.Height(), SRCCOPY);
    } else {
        // From a copy in that size: a part that is scaled alone need not be as in the whole.
        const BitmapDC scaled(nullptr, m_pPicture->GetScaled(source, place.Size()));
        if (scaled.IsReady())
            ::BitBlt(*dc, seen.left, seen.top, seen.Width(), seen.Height(), scaled, from.x, from.y, SRCCOPY);
        else
            BitmapPicture::Scale(*dc, place, source, size);
    }
    if (saved != 0)
        dc->RestoreDC(saved);
}

/// \param isBackground FALSE: the window is in front, and its colours come first
void CZoBitmapWnd::RealizeColors(BOOL isBackground)
{
    const HDC dc = ::GetDC(m_hWnd);
    const HPALETTE palette = dc != nullptr && HasPicture() ? m_pPicture->GetPalette(dc) : nullptr;
    if (palette != nullptr) {
        const HPALETTE before = ::SelectPalette(dc, palette, isBackground);
        ::RealizePalette(dc);
        ::SelectPalette(dc, before, TRUE);
        Invalidate(FALSE);
    }
    ::ReleaseDC(m_hWnd, dc);
}

// Screen readers ------------------------------------------------------------------------------------------------------

BOOL CZoBitmapWnd::DescribePart(int part, ZoPart& description) const
{
    if (!CZoControl::DescribePart(part, description))
        return FALSE;
    description.role = ROLE_SYSTEM_GRAPHIC;
    CString format;
    if (HasPicture() && ZoGblLoadString(ZO_IDS_PICTURE_SIZE, format))
        description.description.Format(format, m_pPicture->GetSize().cx, m_pPicture->GetSize().cy);
    if (IsZoomable() && ZoGblLoadString(ZO_IDS_PERCENT, format))
        description.value.Format(format, m_nZoom);
    return TRUE;
}
