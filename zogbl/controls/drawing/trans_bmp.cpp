#include <zogbl/trans_bmp.h>

#include "bitmap_dc.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);

/// Puts the image on what is in \p work, except where the mask is white: exclusive-or, and with the mask, exclusive-or.
bool Merge(HDC work, int width, int height, HDC image, HDC mask, int sourceX, int sourceY)
{
    const auto blit = [=](HDC source, DWORD operation) {
        return BitBlt(work, 0, 0, width, height, source, sourceX, sourceY, operation) != FALSE;
    };
    return blit(image, SRCINVERT) && blit(mask, SRCAND) && blit(image, SRCINVERT);
}

/// Where a cell begins. Cells beyond the image are the system's business; they only must not overflow here.
int CellOrigin(int cellSize, int index)
{
    return static_cast<int>(static_cast<unsigned>(cellSize) * static_cast<unsigned>((std::max)(index, 0)));
}

} // namespace

CZoTransBmp::CZoTransBmp(int cellsAcross, int cellsDown)
    : m_nWidth(0), m_nHeight(0), m_nCellWidth(0), m_nCellHeight(0), m_nCellsAcross((std::max)(cellsAcross, 1)),
      m_nCellsDown((std::max)(cellsDown, 1)), m_hMask(nullptr), m_bUseTopLeftPixel(TRUE), m_crTransparent(kWhite),
      m_pMaskDC(nullptr), m_nMaskTechnology(DT_RASDISPLAY)
{
}

CZoTransBmp::~CZoTransBmp()
{
    delete m_pMaskDC; // before the bitmap that is in it
    if (m_hMask != nullptr)
        ::DeleteObject(m_hMask);
}

void CZoTransBmp::SetTransparentColor(COLORREF color)
{
    m_crTransparent = color;
    m_bUseTopLeftPixel = FALSE; // a mask that was made already stays: see the header
}

// Sizes ---------------------------------------------------------------------------------------------------------------

void CZoTransBmp::GetMetrics()
{
    BITMAP description;
    if (GetObject(sizeof description, &description) == 0)
        return;
    m_nWidth = description.bmWidth;
    m_nHeight = description.bmHeight;
    m_nCellWidth = m_nWidth / m_nCellsAcross;
    m_nCellHeight = m_nHeight / m_nCellsDown;
}

int CZoTransBmp::Measured(const int& size)
{
    if (size == 0)
        GetMetrics();
    return size;
}

int CZoTransBmp::GetWidth() { return Measured(m_nWidth); }
int CZoTransBmp::GetHeight() { return Measured(m_nHeight); }
int CZoTransBmp::GetCellWidth() { return Measured(m_nCellWidth); }
int CZoTransBmp::GetCellHeight() { return Measured(m_nCellHeight); }

// Opaque drawing ------------------------------------------------------------------------------------------------------

void CZoTransBmp::Draw(HDC dc, int x, int y) { DrawArea(dc, x, y, GetWidth(), GetHeight(), 0, 0); }

void CZoTransBmp::DrawCell(HDC dc, int x, int y, int column, int row)
{
    const int width = GetCellWidth();
    const int height = GetCellHeight();
    DrawArea(dc, x, y, width, height, CellOrigin(width, column), CellOrigin(height, row));
}

void CZoTransBmp::DrawArea(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY)
{
    const BitmapDC image(dc, *this);
    if (image.IsReady())
        BitBlt(dc, x, y, width, height, image, sourceX, sourceY, SRCCOPY);
}

// Transparent drawing -------------------------------------------------------------------------------------------------

void CZoTransBmp::CreateMask(HDC dc)
{
    const int width = GetWidth();
    const int height = GetHeight();
    BitmapHolder mask(::CreateBitmap(width, height, 1, 1, nullptr));
    if (!mask)
        return;
    const BitmapDC target(dc, mask.get());
    const BitmapDC image(dc, *this);
    if (!target.IsReady() || !image.IsReady())
        return;
    const COLORREF transparent = m_bUseTopLeftPixel ? GetPixel(image, 0, 0) : m_crTransparent;
    // In a monochrome copy, what has the background colour becomes white and all else black.
    if (transparent != CLR_INVALID && SetBkColor(image, transparent) != CLR_INVALID &&
        BitBlt(target, 0, 0, width, height, image, 0, 0, SRCCOPY))
        m_hMask = mask.release();
}

/// A context with the mask in it, for drawing on \p dc; null: there is none. Making one is a quarter of what drawing a
/// small image costs, so it is kept.
const BitmapDC* CZoTransBmp::GetMask(HDC dc)
{
    if (m_hMask == nullptr)
        CreateMask(dc);
    if (m_hMask == nullptr)
        return nullptr;
    const int technology = dc != nullptr ? GetDeviceCaps(dc, TECHNOLOGY) : DT_RASDISPLAY;
    if (technology != std::exchange(m_nMaskTechnology, technology))
        delete std::exchange(m_pMaskDC, nullptr); // one for the screen need not suit a printer
    if (m_pMaskDC == nullptr)
        m_pMaskDC = new (std::nothrow) BitmapDC(dc, m_hMask);
    if (m_pMaskDC != nullptr && !m_pMaskDC->IsReady())
        delete std::exchange(m_pMaskDC, nullptr);
    return m_pMaskDC;
}

void CZoTransBmp::DrawTrans(HDC dc, int x, int y) { DrawAreaTrans(dc, x, y, GetWidth(), GetHeight(), 0, 0); }

void CZoTransBmp::DrawCellTrans(HDC dc, int x, int y, int column, int row)
{
    const int width = GetCellWidth();
    const int height = GetCellHeight();
    DrawAreaTrans(dc, x, y, width, height, CellOrigin(width, column), CellOrigin(height, row));
}

void CZoTransBmp::DrawAreaTrans(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY)
{
    const BitmapDC* mask = GetMask(dc);
    if (mask == nullptr)
        return;
    const BitmapHolder block(::CreateBitmap(width, height, static_cast<BYTE>(GetDeviceCaps(dc, PLANES)),
                                            static_cast<BYTE>(GetDeviceCaps(dc, BITSPIXEL)), nullptr));
    const BitmapDC work(dc, block.get());
    const BitmapDC image(dc, *this);
    if (!work.IsReady() || !image.IsReady())
        return;
    // On a copy of the target, so that the target is seen only before and after.
    if (BitBlt(work, 0, 0, width, height, dc, x, y, SRCCOPY) && SetBkColor(work, kWhite) != CLR_INVALID &&
        Merge(work, width, height, image, *mask, sourceX, sourceY))
        BitBlt(dc, x, y, width, height, work, 0, 0, SRCCOPY);
}

void CZoTransBmp::DrawStretchTrans(HDC dc, int x, int y, int width, int height)
{
    const int ownWidth = GetWidth();
    const int ownHeight = GetHeight();
    const BitmapDC* mask = GetMask(nullptr);
    if (mask == nullptr)
        return;
    const BitmapHolder block(::CreateBitmap(ownWidth, ownHeight, 1, 1, nullptr)); // as a new context would have it
    const BitmapDC work(nullptr, block.get());
    const BitmapDC image(nullptr, *this);
    if (!work.IsReady() || !image.IsReady())
        return;
    const COLORREF topLeft = GetPixel(image, 0, 0);
    const COLORREF kept = topLeft != CLR_INVALID ? SetBkColor(work, topLeft) : CLR_INVALID;
    if (kept == CLR_INVALID || !PatBlt(work, 0, 0, ownWidth, ownHeight, WHITENESS) ||
        !Merge(work, ownWidth, ownHeight, image, *mask, 0, 0))
        return;
    if (SetStretchBltMode(work, COLORONCOLOR) != 0 && SetStretchBltMode(dc, COLORONCOLOR) != 0 &&
        StretchBlt(dc, x, y, width, height, work, 0, 0, ownWidth, ownHeight, SRCCOPY))
        SetBkColor(dc, kept); // the work context's, not the target's: see the header
}
