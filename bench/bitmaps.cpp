// Transparent drawing beside the bare blits.
#include "families.h"
#include "harness.h"

#include <zogbl/trans_bmp.h>

#include <string>

namespace {

constexpr Limits kDrawLimits = {0, 1.2};
constexpr Limits kSmallLimits = {0, 1.0};
constexpr COLORREF kTransparent = RGB(255, 0, 255);

/// A memory context with a bitmap for the screen in it.
class Canvas {
public:
    Canvas(int width, int height) : m_dc(CreateCompatibleDC(nullptr))
    {
        const HDC screen = GetDC(nullptr);
        m_bitmap = CreateCompatibleBitmap(screen, width, height);
        ReleaseDC(nullptr, screen);
        m_old = SelectObject(m_dc, m_bitmap);
        PatBlt(m_dc, 0, 0, width, height, WHITENESS);
    }
    ~Canvas()
    {
        Release();
        DeleteObject(m_bitmap);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    operator HDC() const { return m_dc; }

    /// Gives the bitmap away.
    HBITMAP Detach()
    {
        Release();
        const HBITMAP bitmap = m_bitmap;
        m_bitmap = nullptr;
        return bitmap;
    }

private:
    void Release()
    {
        SelectObject(m_dc, m_old);
        DeleteDC(m_dc);
        m_dc = nullptr;
    }

    HDC m_dc;
    HBITMAP m_bitmap;
    HGDIOBJ m_old;
};

/// A disc in several colours on the transparent one.
HBITMAP MakeImage(int size)
{
    Canvas canvas(size, size);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const int fromMiddle = (2 * x - size) * (2 * x - size) + (2 * y - size) * (2 * y - size);
            SetPixel(canvas, x, y, fromMiddle < size * size ? RGB(x * 255 / size, y * 255 / size, 0) : kTransparent);
        }
    }
    return canvas.Detach();
}

/// The mask, made beforehand: white where the image is transparent.
HBITMAP MakeMask(HBITMAP image, int size)
{
    const HBITMAP mask = CreateBitmap(size, size, 1, 1, nullptr);
    const HDC from = CreateCompatibleDC(nullptr);
    const HDC to = CreateCompatibleDC(nullptr);
    const HGDIOBJ oldFrom = SelectObject(from, image);
    const HGDIOBJ oldTo = SelectObject(to, mask);
    SetBkColor(from, kTransparent);
    BitBlt(to, 0, 0, size, size, from, 0, 0, SRCCOPY);
    SelectObject(to, oldTo);
    SelectObject(from, oldFrom);
    DeleteDC(to);
    DeleteDC(from);
    return mask;
}

/// What is drawn by hand where nobody is to see how it comes about: three blits on a copy of the target.
void DrawByHand(HDC target, HBITMAP image, HBITMAP mask, int size)
{
    const HBITMAP block = CreateCompatibleBitmap(target, size, size);
    const HDC work = CreateCompatibleDC(target);
    const HDC from = CreateCompatibleDC(target);
    const HDC clear = CreateCompatibleDC(target);
    const HGDIOBJ oldWork = SelectObject(work, block);
    const HGDIOBJ oldFrom = SelectObject(from, image);
    const HGDIOBJ oldClear = SelectObject(clear, mask);
    BitBlt(work, 0, 0, size, size, target, 0, 0, SRCCOPY);
    BitBlt(work, 0, 0, size, size, from, 0, 0, SRCINVERT);
    BitBlt(work, 0, 0, size, size, clear, 0, 0, SRCAND);
    BitBlt(work, 0, 0, size, size, from, 0, 0, SRCINVERT);
    BitBlt(target, 0, 0, size, size, work, 0, 0, SRCCOPY);
    SelectObject(clear, oldClear);
    SelectObject(from, oldFrom);
    SelectObject(work, oldWork);
    DeleteDC(clear);
    DeleteDC(from);
    DeleteDC(work);
    DeleteObject(block);
}

/// Three blits on the target itself, which flickers.
void DrawInPlace(HDC target, HBITMAP image, HBITMAP mask, int size)
{
    const HDC from = CreateCompatibleDC(target);
    const HDC clear = CreateCompatibleDC(target);
    const HGDIOBJ oldFrom = SelectObject(from, image);
    const HGDIOBJ oldClear = SelectObject(clear, mask);
    BitBlt(target, 0, 0, size, size, from, 0, 0, SRCINVERT);
    BitBlt(target, 0, 0, size, size, clear, 0, 0, SRCAND);
    BitBlt(target, 0, 0, size, size, from, 0, 0, SRCINVERT);
    SelectObject(clear, oldClear);
    SelectObject(from, oldFrom);
    DeleteDC(clear);
    DeleteDC(from);
}

using TransparentBltFunction = BOOL(WINAPI*)(HDC, int, int, int, int, HDC, int, int, int, int, UINT);

} // namespace

void MeasureBitmaps(Harness& harness)
{
    const HMODULE library = LoadLibraryA("msimg32.dll");
    const auto transparentBlt =
        reinterpret_cast<TransparentBltFunction>(reinterpret_cast<void*>(GetProcAddress(library, "TransparentBlt")));
    Require(transparentBlt != nullptr, "TransparentBlt is missing");
    CWnd window;
    Require(window.CreateEx(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300, nullptr, nullptr),
            "there is no window to draw on");
    const CClientDC dc(&window);
    const HDC target = dc.m_hDC;
    for (const int size : {16, 64, 256}) {
        CZoTransBmp bitmap;
        bitmap.Attach(MakeImage(size));
        bitmap.DrawTrans(target, 0, 0); // makes the mask
        const HBITMAP image = bitmap;
        const HBITMAP mask = MakeMask(image, size);
        const Peer drawTrans = {"DrawTrans", [&] { bitmap.DrawTrans(target, 0, 0); }};
        const Peer system = {"TransparentBlt", [=] {
                                 const HDC source = CreateCompatibleDC(target);
                                 const HGDIOBJ old = SelectObject(source, image);
                                 transparentBlt(target, 0, 0, size, size, source, 0, 0, size, size, kTransparent);
                                 SelectObject(source, old);
                                 DeleteDC(source);
                             }};
        harness.Compare("bitmaps: " + std::to_string(size) + " by " + std::to_string(size) + " pixels drawn",
                        {drawTrans,
                         {"three blits on a copy, mask cached", [=] { DrawByHand(target, image, mask, size); }},
                         {"the same in place", [=] { DrawInPlace(target, image, mask, size); }},
                         system},
                        kDrawLimits);
        if (size == 16)
            harness.Compare("bitmaps: 16 by 16 pixels, the system's way", {drawTrans, system}, kSmallLimits);
        DeleteObject(mask);
    }
    FreeLibrary(library);
}
