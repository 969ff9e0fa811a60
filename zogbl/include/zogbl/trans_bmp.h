/// \file
/// Bitmaps with a transparent colour, and strips and grids of images.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

class BitmapDC;

/// A bitmap that draws itself: the whole image, one cell of a grid of images, or without one colour.
///
///     CZoTransBmp lights(8, 1);                     // eight lights side by side
///     lights.LoadBitmap(IDB_LIGHTS);
///     lights.DrawCellTrans(&dc, x, y, isOn ? 1 : 0, 0);
///
/// Load, make or attach the image with CBitmap's functions before the first drawing. It belongs to the object, as in
/// every CBitmap. It must not be selected into a device context while it is drawn.
///
/// The sizes are measured once, when they are first needed. The mask of the transparent pixels is made once, at the
/// first transparent drawing; a memory context with the mask in it is kept for the next drawings. All of this stays for
/// the object's life: use a new object for another image.
///
/// Coordinates and sizes are logical units of the target; one unit counts as one pixel of the image. The target keeps
/// its selections and, unless said otherwise, its colours and modes. If a call of the system fails, nothing is drawn
/// and nothing is left behind; the next drawing tries again.
class ZOGBL_API CZoTransBmp : public CBitmap {
public:
    /// \param cellsAcross, cellsDown number of images side by side, and one below the other; less than 1 counts as 1
    CZoTransBmp(int cellsAcross, int cellsDown);
    CZoTransBmp() : CZoTransBmp(1, 1) {}
    ~CZoTransBmp() override;

    /// Makes \p color transparent. Without this call it is the colour of the top-left pixel. Call it before the first
    /// transparent drawing: later it has no effect.
    void SetTransparentColor(COLORREF color);

    /// In pixels; 0 while there is no image. If a size is no multiple of the number of cells, the rest belongs to no
    /// cell.
    int GetWidth();
    int GetHeight();
    int GetCellWidth();
    int GetCellHeight();

    // Each of these also takes a CDC and uses its handle; null draws nothing. Cells are counted from 0. A lower number
    // counts as 0; a number beyond the last cell is not checked.

    /// Copies the image to (x, y).
    void Draw(HDC dc, int x, int y);
    void Draw(CDC* dc, int x, int y) { Draw(HandleOf(dc), x, y); }
    /// Copies one cell.
    void DrawCell(HDC dc, int x, int y, int column, int row);
    void DrawCell(CDC* dc, int x, int y, int column, int row) { DrawCell(HandleOf(dc), x, y, column, row); }

    /// Draws the image without its transparent pixels; there the target stays as it was.
    ///
    /// The pixels of a monochrome image that is no DIB section are copied into the mask as they are: white is
    /// transparent, whatever the colour.
    void DrawTrans(HDC dc, int x, int y);
    void DrawTrans(CDC* dc, int x, int y) { DrawTrans(HandleOf(dc), x, y); }
    /// Draws one cell in the same way.
    void DrawCellTrans(HDC dc, int x, int y, int column, int row);
    void DrawCellTrans(CDC* dc, int x, int y, int column, int row) { DrawCellTrans(HandleOf(dc), x, y, column, row); }

    /// Fills a rectangle with a stencil of the image in two colours of the target: the background colour for
    /// transparent and white pixels, the text colour for all others. The target's own pixels do not show through. Its
    /// stretch mode becomes COLORONCOLOR and its background colour white. All of this is prescribed.
    void DrawStretchTrans(HDC dc, int x, int y, int width, int height);
    void DrawStretchTrans(CDC* dc, int x, int y, int width, int height)
    {
        DrawStretchTrans(HandleOf(dc), x, y, width, height);
    }

private:
    static HDC HandleOf(const CDC* dc) { return dc != nullptr ? dc->GetSafeHdc() : nullptr; }

    void GetMetrics();
    int Measured(const int& size); // of the four below
    void CreateMask(HDC dc);
    const BitmapDC* GetMask(HDC dc);
    void DrawArea(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY);
    void DrawAreaTrans(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY);

    int m_nWidth; // pixels; these four are 0 until measured
    int m_nHeight;
    int m_nCellWidth;
    int m_nCellHeight;
    int m_nCellsAcross;
    int m_nCellsDown;
    HBITMAP m_hMask; // monochrome, white where transparent; null until the first transparent drawing
    BOOL m_bUseTopLeftPixel;
    COLORREF m_crTransparent; // unless the top-left pixel tells
    BitmapDC* m_pMaskDC;      // the mask in a context of its own; null until it is drawn with
    int m_nMaskTechnology;    // of the devices that the context is for
};
