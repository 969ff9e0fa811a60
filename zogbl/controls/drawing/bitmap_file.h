/// \file
/// Bitmap files, read without windows and drawing.
#pragma once

#include <windows.h>

/// The picture of a bitmap file that lies in memory. It allocates nothing. What the file says is checked against the
/// bytes that are there before it is used.
///
/// | the file                                                          | then                                 |
/// | ----------------------------------------------------------------- | ------------------------------------ |
/// | 1, 2, 4, 8, 16, 24, 32 bits; headers of 12, 16, 40, 52, 56, 64,   | read                                 |
/// | 108, 124 bytes; bottom-up or top-down; RLE 4 and 8; bit fields of |                                      |
/// | any width                                                         |                                      |
/// | says too many colours, or fewer than its pixels use               | read: what is missing is black       |
/// | has its pixels where colours would be                             | read, with the colours before them   |
/// | says a wrong file size or size of the picture                     | read: they are not looked at         |
/// | lacks the padding of its last row                                 | read                                 |
/// | RLE: has pixels to the right of the picture                       | read without them                    |
/// | RLE: skips pixels                                                 | read: they have the first colour     |
/// | RLE: lacks the end mark, all rows being there                     | read                                 |
/// | RLE: ends early, has pixels above the picture, or a jump out of it | ZoErrBadData                        |
/// | has no size, too few bytes, other planes than one, bits that its  | ZoErrBadData                         |
/// | compression does not have, masks that overlap or have gaps        |                                      |
/// | JPEG, PNG, Huffman, RLE 24, CMYK; 64 bits; several pictures;      | ERROR_NOT_SUPPORTED                  |
/// | wider or higher than 32,767 pixels; larger than 256 megabytes     |                                      |
///
/// A fourth channel is not looked at: the pictures are opaque.
class BitmapFile {
public:
    /// The bytes must stay as long as the object is used. \return 0 or a status; then nothing else may be called
    DWORD Open(const void* bytes, size_t size);
    /// The same without a file header: the pixels follow the colours. So are bitmaps in resources.
    DWORD OpenPacked(const void* bytes, size_t size);

    int GetWidth() const { return m_width; } ///< in pixels, as all here
    int GetHeight() const { return m_height; }
    /// Of a pixel as Decode gives it. 8: the number of a colour. 32: blue, green, red and 0.
    WORD GetDepth() const { return m_bits <= 8 ? 8 : 32; }
    const RGBQUAD* GetColors() const { return m_colors; } ///< 256, those that the file lacks are black
    int GetColorCount() const { return m_colorCount; }    ///< 0 for a depth of 32
    size_t GetRowSize() const;                            ///< of what Decode gives: bytes, a multiple of 4
    /// \param pixels GetRowSize() * GetHeight() bytes, all 0; gets the rows from top to bottom
    void Decode(BYTE* pixels) const;

    static constexpr int kMostPixels = 32767;                     ///< across and down
    static constexpr ULONGLONG kMostBytes = 256ULL * 1024 * 1024; ///< of what Decode gives

private:
    struct Channel {
        int shift = 0;
        DWORD most = 0;   // 0: the file has no such channel
        BYTE scaled[256]; // the value for the screen, by the one in the file
    };

    DWORD ReadHeader(DWORD pixelsAt);
    DWORD ReadCompression(DWORD compression);
    DWORD ReadMasks(DWORD compression);
    DWORD ReadColors(DWORD used, DWORD pixelsAt);
    DWORD CheckSize() const;
    bool SetChannel(Channel& channel, DWORD mask);
    BYTE* RowOf(BYTE* pixels, int fromBottom) const;
    bool Unpack(BYTE* pixels) const;
    void DecodeRow(const BYTE* source, BYTE* row) const;
    ULONGLONG GetPackedRowSize() const;

    const BYTE* m_bytes = nullptr; // from the picture's header on
    size_t m_size = 0;
    DWORD m_headerSize = 0;
    size_t m_colorsAt = 0;
    size_t m_pixelsAt = 0;
    int m_width = 0;
    int m_height = 0;
    WORD m_bits = 0;
    bool m_isTopDown = false;
    bool m_isRle = false;
    int m_colorCount = 0;
    RGBQUAD m_colors[256];
    Channel m_channels[3]; // blue, green, red
};
