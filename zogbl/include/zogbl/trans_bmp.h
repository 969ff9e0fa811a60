/// \file
/// Bitmaps with a transparent colour, and strips and grids of images.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// A bitmap that draws itself: whole, one cell of the images it is made of, or with one colour left out.
///
///     CZoTransBmp lights(8, 1);                     // eight lights side by side
///     lights.LoadBitmap(IDB_LIGHTS);
///     lights.DrawCellTrans(&dc, x, y, isOn ? 1 : 0, 0);
///
/// The image is loaded, made or attached by what CBitmap has for it, before the first drawing. It belongs to the object,
/// as in every CBitmap, and must not be selected into a device context while it is drawn.
///
/// Sizes are measured once, at the first question or drawing after the image is there, and the mask of what is
/// transparent is made once, at the first transparent drawing. Both are kept for the object's life: use a new object for
/// another image.
///
/// Coordinates and sizes are logical units of the target, one of which is taken to be a pixel of the image. The target
/// keeps its selections, and unless it is said otherwise its colours and modes. When a call of the system fails, nothing is
/// drawn and nothing is left behind; the next drawing tries again.
class ZOGBL_API CZoTransBmp : public CBitmap {
public:
    /// \param cellsAcross, cellsDown number of images side by side and one below the other; below 1 counts as 1
    CZoTransBmp(int cellsAcross, int cellsDown);
    CZoTransBmp() : CZoTransBmp(1, 1) {}
    ~CZoTransBmp() override;

    /// Makes \p color the transparent one; without this it is the colour of the image's top-left pixel. To be called
    /// before the first transparent drawing: the colour of that one stays in force.
    void SetTransparentColor(COLORREF color);

    /// In pixels; 0 as long as there is no image. What the division of a size by the number of cells leaves over belongs
    /// to no cell.
    int GetWidth();
    int GetHeight();
    int GetCellWidth();
    int GetCellHeight();

    // Each of these also takes a CDC, whose handle it uses; null draws nothing. Cells are counted from 0; a number below
    // that counts as 0, one beyond the last cell is not checked.

    /// Copies the image to (x, y).
    void Draw(HDC dc, int x, int y);
    void Draw(CDC* dc, int x, int y) { Draw(HandleOf(dc), x, y); }
    /// Copies one cell.
    void DrawCell(HDC dc, int x, int y, int column, int row);
    void DrawCell(CDC* dc, int x, int y, int column, int row) { DrawCell(HandleOf(dc), x, y, column, row); }

    /// Draws the image without its transparent pixels, where the target stays as it was.
    ///
    /// A monochrome image that is no DIB section is its own mask, for its pixels are copied as they are: white is
    /// transparent, whatever the colour.
    void DrawTrans(HDC dc, int x, int y);
    void DrawTrans(CDC* dc, int x, int y) { DrawTrans(HandleOf(dc), x, y); }
    /// Draws one cell that way.
    void DrawCellTrans(HDC dc, int x, int y, int column, int row);
    void DrawCellTrans(CDC* dc, int x, int y, int column, int row) { DrawCellTrans(HandleOf(dc), x, y, column, row); }

    /// Fills a rectangle with a two-coloured stencil of the image: a pixel that is transparent, or white, takes the
    /// target's background colour, any other one its text colour. The target's own pixels do not show through, its stretch
    /// mode becomes COLORONCOLOR and its background colour white. All of this is prescribed.
    void DrawStretchTrans(HDC dc, int x, int y, int width, int height);
    void DrawStretchTrans(CDC* dc, int x, int y, int width, int height)
    {
        DrawStretchTrans(HandleOf(dc), x, y, width, height);
    }

private:
    static HDC HandleOf(const CDC* dc) { return dc != nullptr ? dc->GetSafeHdc() : nullptr; }

    void GetMetrics();
    void CreateMask(HDC dc);
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
};
