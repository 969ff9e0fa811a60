/// \file
/// The picture that a bitmap window shows.
#pragma once

#include <afxwin.h>

#include <memory>

class BitmapFile;

/// A picture in memory, with one colour that can be shown as another. It is drawn from the bitmap that it hands out.
///
/// Its pixels are its own. So a transparent colour needs no mask: a control whose background has one colour gives its
/// transparent pixels that colour, and they are scaled with the others.
class BitmapPicture {
public:
    ~BitmapPicture();
    BitmapPicture(const BitmapPicture&) = delete;
    BitmapPicture& operator=(const BitmapPicture&) = delete;

    /// \param status gets 0, or why there is none \return null then
    static std::unique_ptr<BitmapPicture> FromFile(const BitmapFile& file, DWORD& status);
    /// Copies the bitmap, which must not be selected into a device context.
    static std::unique_ptr<BitmapPicture> FromBitmap(HBITMAP bitmap, DWORD& status);

    CSize GetSize() const { return m_size; } ///< in pixels
    COLORREF GetTopLeftColor() const { return m_topLeft; }
    /// \param transparent CLR_NONE: none \param shownAs in its place
    HBITMAP GetBitmap(COLORREF transparent, COLORREF shownAs);
    /// A copy in that size, kept until another size or other colours are asked for. \param source a context with the
    /// bitmap \return null if there is no memory
    HBITMAP GetScaled(HDC source, CSize size);
    /// Scales it onto \p dc, mixing pixels where the system can do so.
    static void Scale(HDC dc, const CRect& place, HDC source, CSize size);
    /// Colours for displays that have 256 of them. \return null: the picture has none of its own, or no memory for them
    HPALETTE GetPalette(HDC dc);

private:
    BitmapPicture() = default;

    bool Make(CSize size, WORD depth);
    void Complete();
    void ForgetScaled();
    bool ShowColors(COLORREF transparent, COLORREF shownAs);
    DWORD* PixelAt(LONG i) const { return static_cast<DWORD*>(m_pixels) + i; }

    CSize m_size;
    WORD m_depth = 0; // 8: numbers of colours. 32: blue, green, red, and 1 where the pixel is transparent
    int m_colorCount = 0;
    RGBQUAD m_colors[256];
    COLORREF m_topLeft = 0;
    COLORREF m_transparent = CLR_NONE; // as it is shown now
    COLORREF m_shownAs = CLR_NONE;
    HBITMAP m_bitmap = nullptr;
    void* m_pixels = nullptr; // the bitmap's
    HBITMAP m_scaled = nullptr;
    CSize m_scaledSize;
    HPALETTE m_palette = nullptr;
};
